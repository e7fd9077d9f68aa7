#include "app/BatchTest.h"

#include <QDirIterator>
#include <QSettings>

#include <csignal>

using namespace Qt::StringLiterals;

BatchHome::BatchHome()
{
    // A shell starts its background jobs with the interrupt switched off, which programs inherit.
    std::signal(SIGINT, SIG_DFL);
    qputenv("XDG_DATA_HOME", m_folder.path().toLocal8Bit());
}

void BatchTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_environment = QProcessEnvironment();
    m_environment.insert(u"HOME"_s, path(u"home"_s));
    m_environment.insert(u"TMPDIR"_s, path(u"tmp"_s));
    for (const QString &name : {u"home"_s, u"tmp"_s})
        QVERIFY(QDir(m_folder->path()).mkdir(name));
    const QProcessEnvironment own = QProcessEnvironment::systemEnvironment();
    for (const QString &name : {u"ASAN_OPTIONS"_s, u"LSAN_OPTIONS"_s, u"TSAN_OPTIONS"_s, u"UBSAN_OPTIONS"_s})
        if (own.contains(name))
            m_environment.insert(name, own.value(name));
    switchCheckOff();
}

/** The projects of these tests hold just what a test is about, which no generation would go on with. */
void BatchTest::switchCheckOff() const
{
    for (const QString &edition :
         {u"CANopen NodeSmith"_s, u"J1939 NodeSmith"_s, u"CAN NodeSmith"_s, u"EnergyBus NodeGuide"_s}) {
        QSettings settings(path(u"home/.config/korvel/%1 4.conf"_s.arg(edition)), QSettings::IniFormat);
        settings.setValue("General/disablecheck"_L1, true);
    }
}

std::unique_ptr<QProcess> BatchTest::start(const QString &program, const QStringList &arguments) const
{
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(m_environment);
    process->setWorkingDirectory(m_folder->path());
    process->start(QStringLiteral(NODESMITH_BIN_DIR "/") + program, arguments);
    return process;
}

BatchTest::Result BatchTest::run(const QString &program, const QStringList &arguments) const
{
    const auto process = start(program, arguments);
    Result result;
    result.ended = process->waitForFinished(runTimeoutMs) && process->exitStatus() == QProcess::NormalExit;
    result.exitCode = process->exitCode();
    result.log = QString::fromUtf8(process->readAllStandardError());
    result.output = QString::fromUtf8(process->readAllStandardOutput());
    return result;
}

QString BatchTest::canopenProject(const QString &name) const
{
    return TestProject::save(path(name), u"CANopen NodeSmith"_s, u"1"_s) ? path(name) : QString();
}

QStringList BatchTest::workingFiles() const
{
    QStringList found;
    QDirIterator files(path(u"home"_s), {u"wvxdatatemp*"_s}, QDir::Files | QDir::Hidden,
                       QDirIterator::Subdirectories);
    while (files.hasNext())
        found.append(files.next());
    return found;
}

/** Waits until the program has told the text on either channel; empty when it does not come. */
QString BatchTest::logUntil(QProcess &process, const QString &text)
{
    QString log;
    const auto told = [&] {
        process.waitForReadyRead(100);
        log += QString::fromUtf8(process.readAllStandardError());
        log += QString::fromUtf8(process.readAllStandardOutput());
        return log.contains(text);
    };
    return QTest::qWaitFor(told, runTimeoutMs) ? log : QString();
}

QStringList BatchTest::temporaryFiles() const
{
    return QDir(path(u"tmp"_s)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}
