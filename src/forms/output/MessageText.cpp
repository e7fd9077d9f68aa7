#include "forms/output/MessageText.h"

#include <QStringView>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

struct Entity
{
    QLatin1StringView name;
    char16_t character;
};

constexpr std::array entities{
    Entity{"lt"_L1, u'<'},   Entity{"gt"_L1, u'>'},    Entity{"amp"_L1, u'&'},
    Entity{"quot"_L1, u'"'}, Entity{"apos"_L1, u'\''}, Entity{"nbsp"_L1, u' '},
};

constexpr qsizetype longestEntity = 10; // "&#1114111;"
constexpr int decimal = 10;
constexpr int hexadecimal = 16;

/** What stands between "&" and ";" as a character; empty for what is no entity. */
QString characterOf(QStringView name)
{
    if (name.startsWith(u'#')) {
        const bool isHexadecimal = name.startsWith(u"#x", Qt::CaseInsensitive);
        bool ok = false;
        const char32_t code =
            name.sliced(isHexadecimal ? 2 : 1).toUInt(&ok, isHexadecimal ? hexadecimal : decimal);
        return ok && code != 0 && code <= QChar::LastValidCodePoint ? QString::fromUcs4(&code, 1) : QString();
    }
    const auto *entity =
        std::ranges::find_if(entities, [name](const Entity &known) { return name == known.name; });
    return entity == entities.end() ? QString() : QString(QChar(entity->character));
}

/** Reads a message from left to right, keeping count of the tags that are open. */
class RichTextReader
{
public:
    explicit RichTextReader(QStringView source) : m_source(source) { }

    MessageText read();

private:
    bool readTag();
    bool readEntity();
    void applyTag(QStringView name, int step);
    void closeSpan();

    QStringView m_source;
    qsizetype m_at = 0;
    qsizetype m_spanStart = 0;
    int m_bold = 0;
    int m_italic = 0;
    MessageText m_result;
};

MessageText RichTextReader::read()
{
    while (m_at < m_source.size())
        if (!readTag() && !readEntity())
            m_result.text += m_source[m_at++];
    closeSpan();
    return std::move(m_result);
}

bool isTag(QStringView name)
{
    static constexpr std::array names{"strong"_L1, "b"_L1, "em"_L1, "i"_L1, "font"_L1,
                                      "span"_L1,   "p"_L1, "u"_L1,  "br"_L1};
    return std::ranges::any_of(
        names, [name](QLatin1StringView known) { return name.compare(known, Qt::CaseInsensitive) == 0; });
}

bool RichTextReader::readTag()
{
    if (m_source[m_at] != u'<')
        return false;
    const qsizetype end = m_source.indexOf(u'>', m_at);
    if (end < 0)
        return false;
    QStringView name = m_source.sliced(m_at + 1, end - m_at - 1);
    const bool isClosing = name.startsWith(u'/');
    if (isClosing)
        name = name.sliced(1);
    const auto nameEnd = std::ranges::find_if(name, [](QChar c) { return !c.isLetter(); });
    const QStringView rest(nameEnd, name.end());
    name = QStringView(name.begin(), nameEnd);
    if (!isTag(name) || (!rest.isEmpty() && !rest[0].isSpace() && rest != u"/"))
        return false;
    applyTag(name, isClosing ? -1 : 1);
    m_at = end + 1;
    return true;
}

void RichTextReader::applyTag(QStringView name, int step)
{
    closeSpan();
    if (name.compare("br"_L1, Qt::CaseInsensitive) == 0)
        m_result.text += u'\n';
    else if (name.compare("b"_L1, Qt::CaseInsensitive) == 0
             || name.compare("strong"_L1, Qt::CaseInsensitive) == 0)
        m_bold = qMax(0, m_bold + step);
    else if (name.compare("i"_L1, Qt::CaseInsensitive) == 0
             || name.compare("em"_L1, Qt::CaseInsensitive) == 0)
        m_italic = qMax(0, m_italic + step);
}

bool RichTextReader::readEntity()
{
    const QStringView rest = m_source.sliced(m_at, qMin(longestEntity, m_source.size() - m_at));
    const qsizetype end = rest.indexOf(u';');
    if (rest[0] != u'&' || end < 2)
        return false;
    const QString character = characterOf(rest.sliced(1, end - 1));
    m_result.text += character;
    m_at += character.isEmpty() ? 0 : end + 1;
    return !character.isEmpty();
}

void RichTextReader::closeSpan()
{
    const qsizetype length = m_result.text.size() - m_spanStart;
    if (length > 0 && (m_bold > 0 || m_italic > 0))
        m_result.spans.append({int(m_spanStart), int(length), m_bold > 0, m_italic > 0});
    m_spanStart = m_result.text.size();
}

/** The spans of a text within a part of it, counted from the start of that part. */
QList<MessageText::Span> spansWithin(const QList<MessageText::Span> &spans, int start, int end)
{
    QList<MessageText::Span> result;
    for (MessageText::Span span : spans) {
        const int from = qMax(span.start, start);
        const int to = qMin(span.start + span.length, end);
        if (from >= to)
            continue;
        span.start = from - start;
        span.length = to - from;
        result.append(span);
    }
    return result;
}

} // namespace

MessageText MessageText::fromRichText(const QString &richText)
{
    QString source = richText;
    source.replace("\r\n"_L1, "\n"_L1).replace(u'\r', u'\n');
    return RichTextReader(source).read();
}

QList<MessageText> MessageText::lines() const
{
    QList<MessageText> result;
    const QStringList parts = text.split(u'\n');
    int start = 0;
    for (const QString &part : parts) {
        const int end = start + int(part.size());
        result.append({part, spansWithin(spans, start, end)});
        start = end + 1;
    }
    return result;
}
