#pragma once

#include "check/ProjectLocation.h"

#include <QObject>
#include <QVariant>

/** A message that knows what it is about; it travels inside the QVariant of the output handler. */
struct OutputMessage
{
    QString text; ///< rich text
    ProjectLocation location;

    /** A plain text in the variant is a message without a place. */
    static OutputMessage fromVariant(const QVariant &message)
    {
        if (message.canConvert<OutputMessage>())
            return message.value<OutputMessage>();
        return {.text = message.toString()};
    }
};
Q_DECLARE_METATYPE(OutputMessage)

/**
 * The channel that checks and generators write their messages through.
 *
 * Messages are rich text. What stands for an error is told by the text itself: see MessageLevel.
 */
class OutputHandlerBase : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /** A message, or an OutputMessage; a time stamp may be put before it. */
    virtual void writeMessage(const QVariant &message) = 0;
    /** As writeMessage, without a time stamp. */
    virtual void writeRaw(const QVariant &message) = 0;
    /** All messages so far as plain text, one a line. */
    virtual QString getLogging() const = 0;
};
