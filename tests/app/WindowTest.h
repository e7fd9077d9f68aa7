#pragma once

#include "app/TestProject.h"
#include "app/UserSettings.h"
#include "app/VexMainWindow.h"

#include <QAction>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/** A window with its two stores, made in the order of the program's start, and a folder for projects. */
class WindowTest : public QObject
{
    Q_OBJECT

protected:
    std::unique_ptr<VexMainWindow> makeWindow(const QStringList &arguments = {});
    QString path(const QString &name) const { return m_folder->filePath(name); }
    /** Saves an empty CANopen project and gives its path. */
    QString saveProject(const QString &name = QStringLiteral("a.vexp"));
    void openAndChange(VexMainWindow &window);
    static QAction *action(const VexMainWindow &window, const QString &name)
    {
        return window.findChild<QAction *>(name);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QSharedPointer<ObjectDataBase> m_store;
    QSharedPointer<ObjectDataBase> m_reference;

private Q_SLOTS:
    void init();
    void cleanup();

private:
    QString m_startFolder = QDir::currentPath();
};
