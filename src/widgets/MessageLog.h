#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

class QDateTime;

/**
 * The program's log on standard error, made for the reader of a build log.
 *
 * Each message is exactly one line: local time with milliseconds, kind, text. Information, warnings
 * and errors are always written. Debug lines are written when the environment variable
 * NODESMITH_DEBUG is set to anything but "0". While timing is on, every line also tells the
 * milliseconds since it was switched on.
 */
namespace MessageLog {

/** The line for one message, line end included; line breaks inside the text become " | ". */
QByteArray line(QtMsgType kind, const QString &text, const QDateTime &time, qint64 elapsedMs = -1);

/** Takes over Qt's messages, reading NODESMITH_DEBUG; may be called again. */
void install();
/** Gives Qt's messages back to the handler that was there before install(). */
void uninstall();

/** Starts or stops the time count; gives the milliseconds counted when it stops, otherwise -1. */
qint64 setTiming(bool on);

} // namespace MessageLog
