#pragma once

#include "tools/DiffDialogTest.h"

#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>

#include <memory>

/** Two projects, the second of which is compared by its file, and the dialog that does so. */
class DiffDialogFixture : public QObject
{
    Q_OBJECT

protected:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    std::unique_ptr<ProjectDiffDialog> makeDialog() const
    {
        auto dialog = std::make_unique<ProjectDiffDialog>();
        dialog->setDataBase(m_current);
        return dialog;
    }
    /** Saves the other project and compares with its file, as a user does. */
    void compare()
    {
        QVERIFY(m_other->saveProject(path(QStringLiteral("other.vexp"))));
        DiffDialogTest::widget<QLineEdit>(*m_dialog, "leProject").setText(path(QStringLiteral("other.vexp")));
        QTest::mouseClick(&DiffDialogTest::widget<QPushButton>(*m_dialog, "btnCompare"), Qt::LeftButton);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QSharedPointer<ObjectDataBase> m_current;
    QSharedPointer<ObjectDataBase> m_other;
    std::unique_ptr<ProjectDiffDialog> m_dialog;

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_current = DiffTest::makeStore();
        m_other = DiffTest::makeStore();
        m_dialog = makeDialog();
        m_dialog->show();
    }
    void cleanup()
    {
        m_dialog.reset();
        QVERIFY(QDir::setCurrent(m_startFolder));
    }

private:
    QString m_startFolder = QDir::currentPath();
};
