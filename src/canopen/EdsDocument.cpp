#include "canopen/EdsDocument.h"

#include "canopen/LegacyText.h"

using namespace Qt::StringLiterals;

namespace {

/** CiA 306 allows no longer lines. */
constexpr qsizetype longestLine = 255;

/** End of a text file in CP/M and DOS. */
constexpr QChar endOfText(0x1A);

bool isComment(QStringView text)
{
    return text.startsWith(u';') || text.startsWith(u'#');
}

} // namespace

const EdsDocument::Entry *EdsDocument::Section::find(const QString &key) const
{
    const auto position = m_positions.constFind(key.toLower());
    return position == m_positions.constEnd() ? nullptr : &entries[*position];
}

QString EdsDocument::Section::value(const QString &key) const
{
    const Entry *entry = find(key);
    return entry ? entry->value : QString();
}

int EdsDocument::Section::lineOf(const QString &key) const
{
    const Entry *entry = find(key);
    return entry ? entry->line : line;
}

const EdsDocument::Section *EdsDocument::section(const QString &name) const
{
    const auto position = m_positions.constFind(name.toLower());
    return position == m_positions.constEnd() ? nullptr : &m_sections[*position];
}

void EdsDocument::read(const QByteArray &bytes, EdsFindings &findings)
{
    m_sections.clear();
    m_positions.clear();
    m_current = -1;
    const QString content = text(bytes, findings);
    int number = 0;
    qsizetype start = 0;
    while (start < content.size()) {
        qsizetype end = start;
        while (end < content.size() && content[end] != u'\n' && content[end] != u'\r')
            ++end;
        readLine(QStringView(content).sliced(start, end - start), ++number, findings);
        const bool pair = end + 1 < content.size() && content[end] == u'\r' && content[end + 1] == u'\n';
        start = end + (pair ? 2 : 1);
    }
}

QString EdsDocument::text(const QByteArray &bytes, EdsFindings &findings) const
{
    LegacyText::Decoded decoded = LegacyText::decode(bytes);
    if (decoded.encoding != LegacyText::Encoding::Ascii) {
        findings.note(0,
                      u"The file is not plain ASCII text; read as %1."_s.arg(
                          LegacyText::encodingName(decoded.encoding)));
    }
    if (decoded.text.contains(QChar(0))) {
        findings.warn(0, u"Zero bytes in the text are left out."_s);
        decoded.text.remove(QChar(0));
    }
    const qsizetype end = decoded.text.indexOf(endOfText);
    if (end >= 0) {
        if (!QStringView(decoded.text).sliced(end + 1).trimmed().isEmpty())
            findings.warn(0, u"Text behind an end-of-file character (0x1A) is left out."_s);
        decoded.text.truncate(end);
    }
    return decoded.text;
}

void EdsDocument::readLine(QStringView line, int number, EdsFindings &findings)
{
    if (line.size() > longestLine)
        findings.note(number, u"The line is longer than 255 characters."_s);
    const QStringView content = line.trimmed();
    if (content.isEmpty() || content.startsWith(u';'))
        return;
    if (content.startsWith(u'#'))
        findings.note(number, u"A line that begins with \"#\" is taken as a comment."_s);
    else if (content.startsWith(u'['))
        readHeader(content, number, findings);
    else
        readEntry(content, number, findings);
}

void EdsDocument::readHeader(QStringView line, int number, EdsFindings &findings)
{
    qsizetype end = line.indexOf(u']');
    if (end < 0) {
        findings.warn(number, u"The closing bracket of the section is missing."_s);
        end = line.size();
    }
    const QString name = line.sliced(1, end - 1).trimmed().toString();
    const QStringView rest = line.sliced(qMin(end + 1, line.size())).trimmed();
    if (!rest.isEmpty() && !isComment(rest))
        findings.warn(number, u"The text behind the section [%1] is left out."_s.arg(name));
    else if (!rest.isEmpty())
        findings.note(number, u"The remark behind the section [%1] is left out."_s.arg(name));

    const QString key = name.toLower();
    const auto known = m_positions.constFind(key);
    if (known != m_positions.constEnd()) {
        m_current = *known;
        findings.warn(number,
                      u"The section [%1] exists already in line %2; both are read as one."_s.arg(name).arg(
                          m_sections[m_current].line));
        return;
    }
    m_current = m_sections.size();
    m_positions.insert(key, m_current);
    m_sections.emplaceBack();
    m_sections.last().name = name;
    m_sections.last().line = number;
}

void EdsDocument::readEntry(QStringView line, int number, EdsFindings &findings)
{
    const qsizetype equals = line.indexOf(u'=');
    if (equals <= 0) {
        findings.error(number, u"The line is neither a section nor an entry."_s);
        return;
    }
    if (m_current < 0) {
        findings.error(number, u"The entry stands before the first section."_s);
        return;
    }
    Section &section = m_sections[m_current];
    const QString key = line.first(equals).trimmed().toString();
    const QString value = line.sliced(equals + 1).trimmed().toString();
    const QString lower = key.toLower();
    if (const auto known = section.m_positions.constFind(lower); known != section.m_positions.constEnd()) {
        if (section.entries[*known].value != value)
            findings.warn(number,
                          u"%1 exists already in line %2; this value is left out."_s.arg(key).arg(
                              section.entries[*known].line));
        else
            findings.note(number,
                          u"%1 exists already in line %2."_s.arg(key).arg(section.entries[*known].line));
        return;
    }
    section.m_positions.insert(lower, section.entries.size());
    section.entries.append({key, value, number});
}
