#include "generators/AbstractGenerator.h"

#include "store/ObjectDataBase.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

constexpr quint8 progressAtEnd = 100;

} // namespace

AbstractGenerator::AbstractGenerator() : m_version(QCoreApplication::applicationVersion()) { }

AbstractGenerator::~AbstractGenerator()
{
    m_stopRequested = true;
    joinThread();
}

QString AbstractGenerator::resultInfo() const
{
    return {};
}

GeneratorStatus AbstractGenerator::setOutputDir(const QString &path)
{
    if (m_running)
        return GeneratorStatus::Running;
    m_outputDir = path;
    const QFileInfo info(path);
    if (!info.isDir())
        return GeneratorStatus::NoOutputDir;
    return info.isReadable() ? GeneratorStatus::Success : GeneratorStatus::OutputDirNotReadable;
}

GeneratorStatus AbstractGenerator::setDatabase(ObjectDataBase *database)
{
    if (m_running)
        return GeneratorStatus::Running;
    m_database = database;
    const bool hasLines = database && !database->getLines().isEmpty();
    return hasLines ? GeneratorStatus::Success : GeneratorStatus::NoDatabase;
}

GeneratorStatus AbstractGenerator::setProjectName(const QString &name)
{
    if (m_running)
        return GeneratorStatus::Running;
    m_projectName = name;
    return GeneratorStatus::Success;
}

GeneratorStatus AbstractGenerator::setLine(quint8 line)
{
    if (m_running)
        return GeneratorStatus::Running;
    if (!m_database)
        return GeneratorStatus::NoDatabase;
    if (!m_database->nodeExists(line))
        return GeneratorStatus::UnknownLine;
    m_line = line;
    return GeneratorStatus::Success;
}

GeneratorStatus AbstractGenerator::startThread(const QString &fileName)
{
    if (m_running.exchange(true))
        return GeneratorStatus::Running;
    Q_ASSERT(!parent());
    joinThread();
    delete m_thread;
    setObjectName(fileName);
    m_stopRequested = false;
    m_failed = false;
    m_errorText.clear();
    m_home = thread();
    m_handedBack = false;
    m_thread = new QThread(this);
    // The thread object is a child and moves along, and comes back with the generator.
    moveToThread(m_thread);
    m_thread->start(QThread::InheritPriority);
    QMetaObject::invokeMethod(this, "runOnWorker", Qt::QueuedConnection);
    return GeneratorStatus::Success;
}

void AbstractGenerator::runOnWorker()
{
    QThread *const worker = QThread::currentThread();
    doJob();
    if (m_running) // a job without the frame must not leave its owner waiting
        endJob();
    moveToThread(m_home);
    worker->quit();
    // The last access of this thread: who starts or deletes the generator waits for the thread first.
    m_handedBack = true;
}

void AbstractGenerator::endJob()
{
    m_running = false;
    if (m_thread)
        m_thread->quit();
    Q_EMIT progress(progressAtEnd);
}

GeneratorStatus AbstractGenerator::stopThread()
{
    if (!m_running)
        return GeneratorStatus::NotRunning;
    m_stopRequested = true;
    return GeneratorStatus::Success;
}

void AbstractGenerator::waitForEnd()
{
    if (!m_thread)
        return;
    QEventLoop loop;
    connect(m_thread, &QThread::finished, &loop, &QEventLoop::quit);
    if (m_thread->isRunning())
        loop.exec();
    joinThread();
}

void AbstractGenerator::joinThread()
{
    if (m_thread)
        m_thread->wait();
    // Reading what the worker wrote last orders all its accesses before ours.
    Q_UNUSED(m_handedBack.load());
}

QString AbstractGenerator::targetPath(const QString &fileName) const
{
    return m_outputDir + u'/' + fileName;
}

bool AbstractGenerator::isTargetWritable(const QString &fileName) const
{
    const QFileInfo target(targetPath(fileName));
    return !target.exists() || target.isWritable();
}

void AbstractGenerator::fail(const QString &reason)
{
    m_failed = true;
    m_errorText = reason;
}

void AbstractGenerator::readMultiLineOption()
{
    m_forceMultiLine = false;
    if (m_database)
        m_forceMultiLine =
            m_database->getMiscSetting(u"generateML"_s).compare("true"_L1, Qt::CaseInsensitive) == 0;
}

AbstractGenerator::JobFrame::JobFrame(AbstractGenerator &generator)
    : m_generator(generator), m_store(generator.m_database)
{
    m_generator.m_running = true;
    if (m_store)
        m_store->setWriteLock(true);
}

AbstractGenerator::JobFrame::~JobFrame()
{
    if (m_store)
        m_store->setWriteLock(false);
    m_generator.endJob();
}
