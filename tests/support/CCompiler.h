#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QString>
#include <QStringList>

/** Compilers and runs generated C with the warnings that a careful firmware project has on. */
class CCompiler
{
public:
    /** Sources are named relative to the folder, which is on the include path before our stack headers. */
    CCompiler(const QString &program, const QString &folder) : m_program(program), m_folder(folder) { }

    /** The compilers that generated code has to suit. */
    static QStringList programs() { return {QStringLiteral("gcc"), QStringLiteral("clang")}; }

    bool write(const QString &name, const QByteArray &text) const
    {
        QFile file(m_folder.filePath(name));
        return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(text) == text.size();
    }

    /** Compiles without output; the compiler's messages, empty when it has none. */
    QString check(const QStringList &sources) const
    {
        return compile(QStringList{QStringLiteral("-fsyntax-only")} + sources);
    }

    /** Compiles and links; the compiler's messages, empty when it has none. */
    QString build(const QStringList &sources) const
    {
        return compile(QStringList{QStringLiteral("-o"), QStringLiteral("program")} + sources);
    }

    /** The lines that the built program prints; empty if it fails. */
    QByteArrayList run() const
    {
        QProcess process;
        process.start(m_folder.filePath(QStringLiteral("program")), QStringList());
        if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit
            || process.exitCode() != 0)
            return {};
        QByteArrayList lines = process.readAllStandardOutput().split('\n');
        lines.removeLast();
        return lines;
    }

private:
    QString compile(const QStringList &arguments) const
    {
        const QStringList options{QStringLiteral("-std=c99"),
                                  QStringLiteral("-Wall"),
                                  QStringLiteral("-Wextra"),
                                  QStringLiteral("-pedantic"),
                                  QStringLiteral("-Werror"),
                                  QStringLiteral("-I."),
                                  QStringLiteral("-I" NODESMITH_TEST_GOLDEN "/../stack")};
        QProcess process;
        process.setWorkingDirectory(m_folder.path());
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(m_program, options + arguments);
        constexpr int patience = 60000; // milliseconds
        if (!process.waitForFinished(patience))
            return m_program + QStringLiteral(": ") + process.errorString();
        QString messages = QString::fromUtf8(process.readAll());
        if (messages.isEmpty() && process.exitCode() != 0)
            return m_program + QStringLiteral(" failed without a message");
        return messages;
    }

    QString m_program;
    QDir m_folder;
};
