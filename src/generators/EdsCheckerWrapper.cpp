#include "generators/EdsCheckerWrapper.h"

#include <QDebug>
#include <QFileInfo>

using namespace Qt::StringLiterals;

EdsCheckerWrapper::EdsCheckerWrapper(QObject *parent) : QObject(parent)
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    connect(&m_process, &QProcess::finished, this, &EdsCheckerWrapper::processFinished);
}

EdsCheckerWrapper::~EdsCheckerWrapper()
{
    m_process.disconnect(this);
}

void EdsCheckerWrapper::setProgram(const QString &path)
{
    // The checker starts in its own folder, from which a relative path would lead elsewhere.
    const QFileInfo program(path);
    if (program.isFile())
        m_program = program.absoluteFilePath();
}

bool EdsCheckerWrapper::start(const QString &edsFile)
{
    if (m_program.isEmpty() || !QFileInfo(edsFile).isFile())
        return false;
    const QString folder = QFileInfo(m_program).absolutePath();
    m_process.setWorkingDirectory(folder);
    const QString profile = folder + "/v301.codb"_L1; // CiA 301
    m_process.start(m_program, {u"-e"_s, edsFile, u"-d"_s, profile}, QIODevice::ReadWrite);
    // A program that cannot be executed is told by an error only, never by an end.
    return m_process.waitForStarted();
}

QString EdsCheckerWrapper::output()
{
    return QString::fromLatin1(m_process.readAll());
}

void EdsCheckerWrapper::processFinished(int exitCode)
{
    qDebug() << Q_FUNC_INFO << exitCode;
    Q_EMIT finished();
}
