#pragma once

#include "generators/ConsoleOutput.h"
#include "generators/OutputHandlerBase.h"
#include "generators/PostGenProgressHandler.h"

#include <QStringList>

/** Keeps every message; raw ones bear the mark "raw:" in `all`. */
class RecordingOutputHandler : public OutputHandlerBase
{
    Q_OBJECT

public:
    void writeMessage(const QVariant &message) override { take(message, QString()); }
    void writeRaw(const QVariant &message) override { take(message, QStringLiteral("raw:")); }
    QString getLogging() const override
    {
        QStringList lines;
        for (const OutputMessage &message : messages)
            lines.append(ConsoleOutput::plainText(message.text));
        return lines.join(u'\n');
    }

    bool has(const QString &text) const { return all.contains(text); }
    QStringList containing(const QString &part) const { return all.filter(part); }
    void clear()
    {
        all.clear();
        messages.clear();
    }

    QStringList all;
    QList<OutputMessage> messages;

private:
    void take(const QVariant &variant, const QString &mark)
    {
        const OutputMessage message = OutputMessage::fromVariant(variant);
        messages.append(message);
        all.append(mark + message.text);
    }
};

/** Keeps what a progress dialog would have been told. */
class RecordingProgressHandler : public PostGenProgressHandler
{
    Q_OBJECT

public:
    void show() override { calls.append(QStringLiteral("show")); }
    void setLabelText(const QString &text) override { calls.append(QStringLiteral("label ") + text); }
    void setCancelButtonText(const QString &text) override { calls.append(QStringLiteral("cancel ") + text); }
    void adjustSize() override { calls.append(QStringLiteral("adjust")); }
    void hide() override { calls.append(QStringLiteral("hide")); }
    int showMessage(QObject *, const QString &title, const QString &text, const QString &detail) override
    {
        calls.append(QStringLiteral("message ") + title + u'|' + text);
        details.append(detail);
        return 0;
    }

    QStringList calls;
    QStringList details;
};
