#include "widgets/MessageLog.h"

#include <QDateTime>
#include <QGuiApplication>

#include <atomic>
#include <chrono>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

// Messages come from every thread, so all state of the handler is atomic.
std::atomic<bool> debugWanted = false;
std::atomic<qint64> timingSinceMs = -1;
std::atomic<QtMessageHandler> formerHandler = nullptr;
std::atomic<bool> installed = false;

qint64 nowMs()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

qint64 elapsedMs()
{
    const qint64 since = timingSinceMs;
    return since < 0 ? -1 : nowMs() - since;
}

const char *kindName(QtMsgType kind)
{
    switch (kind) {
    case QtDebugMsg:
        return "debug";
    case QtInfoMsg:
        return "info";
    case QtWarningMsg:
        return "warning";
    case QtCriticalMsg:
        return "error";
    case QtFatalMsg:
        return "fatal";
    }
    return "message";
}

/** Qt's offscreen platform says so of every window, which tells the reader of a build log nothing. */
bool isOffscreenNoise(const QString &text)
{
    return text == "This plugin does not support propagateSizeHints()"_L1
        && QGuiApplication::platformName() == "offscreen"_L1;
}

void writeMessage(QtMsgType kind, const QMessageLogContext &, const QString &text)
{
    if ((kind == QtDebugMsg && !debugWanted) || isOffscreenNoise(text))
        return;
    const QByteArray bytes = MessageLog::line(kind, text, QDateTime::currentDateTime(), elapsedMs());
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
    std::fflush(stderr);
}

} // namespace

QByteArray MessageLog::line(QtMsgType kind, const QString &text, const QDateTime &time, qint64 elapsedMs)
{
    QString oneLine = text;
    oneLine.replace("\r\n"_L1, "\n"_L1).replace(u'\r', u'\n').replace("\n"_L1, " | "_L1);
    QByteArray result = time.toString(u"yyyy-MM-dd HH:mm:ss.zzz"_s).toLatin1();
    result += ' ';
    result += kindName(kind);
    if (elapsedMs >= 0)
        result += " +" + QByteArray::number(elapsedMs) + " ms";
    result += ": " + oneLine.toUtf8() + '\n';
    return result;
}

void MessageLog::install()
{
    const QByteArray wish = qgetenv("NODESMITH_DEBUG");
    debugWanted = !wish.isEmpty() && wish != "0";
    if (!installed.exchange(true))
        formerHandler = qInstallMessageHandler(writeMessage);
}

void MessageLog::uninstall()
{
    if (installed.exchange(false))
        qInstallMessageHandler(formerHandler);
    timingSinceMs = -1;
}

qint64 MessageLog::setTiming(bool on)
{
    const qint64 counted = elapsedMs();
    timingSinceMs = on ? nowMs() : -1;
    return on ? -1 : counted;
}
