// The private copy that a text is read from, freed of what QSettings would stumble over.

#include "store/DatabaseTextConverter.h"

#include <QDebug>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include <algorithm>
#include <array>

namespace {

constexpr int loggedBadLines = 20;
constexpr qsizetype loggedLength = 80;

bool isLineEnd(char byte)
{
    return byte == '\n' || byte == '\r';
}

/** The marks that version control leaves around the two sides of a conflict, seven of a sign each. */
bool isMergeMark(QByteArrayView line)
{
    static constexpr std::array marks = {QByteArrayView("<<<<<<<"), QByteArrayView("======="),
                                         QByteArrayView(">>>>>>>"), QByteArrayView("|||||||")};
    return std::any_of(marks.begin(), marks.end(), [line](QByteArrayView mark) {
        return line.startsWith(mark) && (line.size() == mark.size() || line.at(mark.size()) == ' ');
    });
}

/** An entry has its equals sign before any quote or comment. */
bool isEntry(QByteArrayView line)
{
    for (qsizetype at = 0; at < line.size(); ++at) {
        if (line.at(at) == '=')
            return true;
        if (line.at(at) == '"' || line.at(at) == ';')
            return false;
        if (line.at(at) == '\\')
            ++at;
    }
    return false;
}

/** Copies a text line by line; what is neither a group nor an entry stays behind. */
class LineFilter
{
public:
    explicit LineFilter(QByteArrayView text) : m_text(text) { m_kept.reserve(text.size()); }

    void run()
    {
        while (m_at < m_text.size() && m_mergeMark == 0)
            takeLine();
        if (m_badLines > loggedBadLines)
            qWarning() << "DatabaseTextConverter:" << m_badLines - loggedBadLines << "more bad lines";
    }

    const QByteArray &kept() const { return m_kept; }
    int badLines() const { return m_badLines; }
    /** Number of the line that marks a conflict; 0 when there is none. */
    int mergeMark() const { return m_mergeMark; }

private:
    void takeLine()
    {
        ++m_number;
        qsizetype end = m_at;
        while (end < m_text.size() && !isLineEnd(m_text.at(end)))
            ++end;
        const QByteArrayView line = m_text.sliced(m_at, end - m_at);
        const QByteArrayView content = line.trimmed();
        if (isMergeMark(content))
            m_mergeMark = m_number;
        else if (content.isEmpty() || content.startsWith(';'))
            keep(line);
        else if (content.startsWith('['))
            takeGroup(content);
        else if (isEntry(content))
            end = takeEntry();
        else
            noteBadLine("is neither a group nor an entry:", content);
        m_at = end;
        takeLineEnd();
    }

    /** Signs that QSettings takes for a quote, a comment or an escape are in no name that it wrote. */
    void takeGroup(QByteArrayView line)
    {
        const qsizetype end = line.indexOf(']');
        QByteArray name = line.sliced(1, (end < 0 ? line.size() : end) - 1).toByteArray();
        const qsizetype length = name.size();
        for (const char sign : {'"', ';', '\\'})
            name.replace(sign, QByteArrayView());
        if (end < 0 || name.size() != length)
            noteBadLine("is no whole group:", line);
        m_kept += '[' + name + ']';
    }

    /** An entry reaches over a line end behind a backslash; a quote that is left open ends with its line. */
    qsizetype takeEntry()
    {
        bool isQuoted = false;
        bool endsEscaping = false;
        qsizetype end = m_at;
        for (; end < m_text.size() && !isLineEnd(m_text.at(end)); ++end) {
            const char byte = m_text.at(end);
            if (byte == ';' && !isQuoted) {
                while (end < m_text.size() && !isLineEnd(m_text.at(end)))
                    ++end;
                break;
            }
            if (byte == '"')
                isQuoted = !isQuoted;
            else if (byte == '\\' && end + 1 < m_text.size())
                skipEscaped(end);
            else if (byte == '\\')
                endsEscaping = true;
        }
        const QByteArrayView entry = m_text.sliced(m_at, end - m_at - (endsEscaping ? 1 : 0));
        keep(entry);
        if (isQuoted) {
            noteBadLine("leaves a quote open:", entry);
            m_kept += '"';
        }
        return end;
    }

    void skipEscaped(qsizetype &at)
    {
        ++at;
        if (!isLineEnd(m_text.at(at)))
            return;
        ++m_number;
        if (m_text.at(at) == '\r' && at + 1 < m_text.size() && m_text.at(at + 1) == '\n')
            ++at;
    }

    void takeLineEnd()
    {
        if (m_at == m_text.size())
            return;
        const bool isPair =
            m_text.at(m_at) == '\r' && m_at + 1 < m_text.size() && m_text.at(m_at + 1) == '\n';
        m_at += isPair ? 2 : 1;
        m_kept += '\n';
    }

    void keep(QByteArrayView line) { m_kept.append(line.data(), line.size()); }

    void noteBadLine(const char *reason, QByteArrayView line)
    {
        if (++m_badLines <= loggedBadLines)
            qWarning().noquote() << "DatabaseTextConverter: line" << m_number << reason
                                 << QString::fromUtf8(line.first(std::min(line.size(), loggedLength)));
    }

    QByteArrayView m_text;
    QByteArray m_kept;
    qsizetype m_at = 0;
    int m_number = 0;
    int m_badLines = 0;
    int m_mergeMark = 0;
};

} // namespace

void DatabaseTextConverter::setInputFile(const QString &path)
{
    m_settings.reset();
    m_inputDefect.clear();
    QFile source(path);
    if (!source.open(QIODevice::ReadOnly)) {
        m_inputDefect = QStringLiteral("it cannot be read");
        return;
    }
    const QByteArray text = source.readAll();
    static constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");
    const bool isMarked = text.startsWith(byteOrderMark);
    LineFilter filter(QByteArrayView(text).sliced(isMarked ? byteOrderMark.size() : 0));
    filter.run();
    m_badLines = filter.badLines();
    m_endsWithinLine = text.isEmpty() || !isLineEnd(text.back());
    if (filter.mergeMark() > 0) {
        m_inputDefect = QStringLiteral("line %1 marks a merge that is not settled").arg(filter.mergeMark());
        return;
    }
    m_inputFolder = std::make_unique<QTemporaryDir>();
    QFile copy(m_inputFolder->filePath(QStringLiteral("project.vext")));
    if (!copy.open(QIODevice::WriteOnly) || copy.write(filter.kept()) != filter.kept().size()
        || !copy.flush()) {
        m_inputDefect = QStringLiteral("it cannot be copied to %1").arg(copy.fileName());
        return;
    }
    copy.close();
    m_settings.reset(new QSettings(copy.fileName(), QSettings::IniFormat));
}
