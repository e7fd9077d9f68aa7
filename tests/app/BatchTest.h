#pragma once

#include "app/TestProject.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/** The home folder of the test program itself; its children get one of their own for each test. */
class BatchHome
{
public:
    BatchHome();

private:
    QTemporaryDir m_folder;
};

/** Starts the programs as a build script does, each test in a folder and with a home of its own. */
class BatchTest : public QObject
{
    Q_OBJECT

protected:
    struct Result
    {
        bool ended = false;
        int exitCode = -1;
        QString log; ///< standard error
        QString output; ///< standard output
    };

    std::unique_ptr<QProcess> start(const QString &program, const QStringList &arguments) const;
    Result run(const QString &program, const QStringList &arguments) const;
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QString canopenProject(const QString &name) const;
    QStringList workingFiles() const;
    QStringList temporaryFiles() const;
    void switchCheckOff() const;
    static QString logUntil(QProcess &process, const QString &text);

    // A run takes about a second; sanitizers on a busy machine take far longer.
    static constexpr int runTimeoutMs = 60000;
    const QString canopen = QStringLiteral("canopen-nodesmith");
    const QString generated = QStringLiteral("Generation finished.");

    std::unique_ptr<QTemporaryDir> m_folder;
    QProcessEnvironment m_environment;

private Q_SLOTS:
    void init();
};
