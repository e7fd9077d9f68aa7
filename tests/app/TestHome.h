#pragma once

#include <QDir>
#include <QTemporaryDir>

/** A home folder for one test program, so that it neither sees nor leaves anything in the user's own. */
class TestHome
{
public:
    TestHome()
    {
        qputenv("HOME", m_folder.path().toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", m_folder.filePath(QStringLiteral("config")).toLocal8Bit());
        qputenv("XDG_DATA_HOME", m_folder.filePath(QStringLiteral("data")).toLocal8Bit());
        qputenv("XDG_RUNTIME_DIR", m_folder.path().toLocal8Bit());
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
    }

private:
    QTemporaryDir m_folder;
};
