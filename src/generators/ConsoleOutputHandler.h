#pragma once

#include "generators/GeneratorMainHandler.h"
#include "generators/OutputHandlerBase.h"

#include <QPointer>
#include <QStringList>

#include <cstdio>

/**
 * Tells a build log the whole story of a run: each message as one line of plain text, errors on standard
 * error, everything else on standard output. A message without text is no line.
 *
 * It may stand before another handler, which then gets every message too and whose log counts.
 */
class ConsoleOutputHandler : public OutputHandlerBase
{
    Q_OBJECT

public:
    explicit ConsoleOutputHandler(OutputHandlerBase *next = nullptr, QObject *parent = nullptr);

    /** Other streams than the process's own; the caller closes them. */
    void setStreams(std::FILE *output, std::FILE *errors);

    void writeMessage(const QVariant &message) override;
    void writeRaw(const QVariant &message) override;
    QString getLogging() const override;

public Q_SLOTS:
    /** The last line of a run: its result, on standard output. */
    void writeResult(GeneratorMainHandler::GeneratorResult result);

private:
    void print(const QVariant &message);
    static void printLine(std::FILE *stream, const QString &line);

    QPointer<OutputHandlerBase> m_next;
    QStringList m_log; ///< without another handler
    std::FILE *m_output = stdout;
    std::FILE *m_errors = stderr;
};
