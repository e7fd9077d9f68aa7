#pragma once

#include "widgets/FileTextView.h"
#include "widgets/FileViewerDialog.h"
#include "widgets/GuiHelper.h"
#include "widgets/WidgetTest.h"

#include <QFile>
#include <QLabel>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <memory>

/** A folder for files and the viewer of one of them, found by its object names. */
class FileViewerTest : public QObject
{
    Q_OBJECT

protected:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    bool write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(path(name));
        return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
    }

    /** Opens the viewer and waits for its text or message. */
    void show(const QString &name)
    {
        m_viewer = std::make_unique<FileViewerDialog>(path(name));
        m_viewer->show();
        waitForText();
        QVERIFY(QTest::qWaitForWindowActive(m_viewer.get()));
    }

    void waitForText() const
    {
        QSignalSpy shown(m_viewer.get(), &FileViewerDialog::shown);
        QVERIFY(shown.wait(20000));
    }

    template <class Widget>
    Widget *child(const char *name) const
    {
        return m_viewer->findChild<Widget *>(QString::fromLatin1(name));
    }
    FileTextView *view() const { return child<FileTextView>("textView"); }
    QString label(const char *name) const { return child<QLabel>(name)->text(); }
    QString selected() const { return view()->textCursor().selectedText(); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<FileViewerDialog> m_viewer;

private Q_SLOTS:
    void init()
    {
        GuiHelper::userSettings()->clear();
        m_folder = std::make_unique<QTemporaryDir>();
    }
    void cleanup() { m_viewer.reset(); }
};
