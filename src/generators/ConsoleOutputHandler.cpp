#include "generators/ConsoleOutputHandler.h"

#include "generators/ConsoleOutput.h"
#include "generators/MessageLevel.h"

using namespace Qt::StringLiterals;

namespace {

using Result = GeneratorMainHandler::GeneratorResult;

QString resultText(Result result)
{
    switch (result) {
    case Result::Completed:
        return u"Result: the generation is complete"_s;
    case Result::CheckFailed:
        return u"Result: the model check found errors, nothing was generated"_s;
    case Result::OutputNotWritable:
        return u"Result: the output folder is not writable, the generation is not complete"_s;
    case Result::SrdoFailed:
        return u"Result: gen_srdo.c could not be generated, the generation stopped there"_s;
    }
    return {};
}

} // namespace

ConsoleOutputHandler::ConsoleOutputHandler(OutputHandlerBase *next, QObject *parent)
    : OutputHandlerBase(parent), m_next(next)
{
}

void ConsoleOutputHandler::setStreams(std::FILE *output, std::FILE *errors)
{
    m_output = output;
    m_errors = errors;
}

void ConsoleOutputHandler::writeMessage(const QVariant &message)
{
    print(message);
    if (m_next)
        m_next->writeMessage(message);
}

void ConsoleOutputHandler::writeRaw(const QVariant &message)
{
    print(message);
    if (m_next)
        m_next->writeRaw(message);
}

QString ConsoleOutputHandler::getLogging() const
{
    return m_next ? m_next->getLogging() : m_log.join(u'\n');
}

void ConsoleOutputHandler::writeResult(GeneratorMainHandler::GeneratorResult result)
{
    printLine(m_output, resultText(result));
}

void ConsoleOutputHandler::print(const QVariant &message)
{
    const QString richText = OutputMessage::fromVariant(message).text;
    const QString line = ConsoleOutput::plainText(richText);
    if (line.isEmpty())
        return;
    printLine(messageLevel(richText) == MessageLevel::Error ? m_errors : m_output, line);
    if (!m_next)
        m_log.append(line);
}

// Flushed at once, so that the lines of both streams keep their order in one log.
void ConsoleOutputHandler::printLine(std::FILE *stream, const QString &line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream);
    std::fflush(stream);
}
