#include "generators/Dialect.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

/** What the older stack calls a word, or the beginning of a word, of the V4 stack. */
struct Word
{
    QStringView v4;
    QStringView older;
};

constexpr std::array<Word, 7> words{{
    {u"CORE_PROTOCOL_TYPE_T", u"MP_PROTOCOL_TYPE_T"},
    {u"CAN_LINE", u"CO_LINE"},
    {u"CAN_MULTI_LINE_CNT", u"CO_MULTI_LINE_CNT"},
    {u"coreStackInit", u"commonStackInit"},
    {u"core_isotp", u"iso_tp"}, // the header
    {u"RET_PARAMETER_INVALID", u"RET_INVALID_PARAMETER"},
    {u"RET_NOT_INITIALIZED", u"RET_SERVICE_NOT_INITIALIZED"},
}};

constexpr std::array<Word, 2> prefixes{{
    {u"CORE_PROT_TYPE_", u"MP_PROT_TYPE_"},
    {u"CORE_", u"CO_"},
}};

bool isWordCharacter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'_';
}

void appendOlderWord(QString &text, QStringView v4)
{
    for (const Word &word : words)
        if (v4 == word.v4) {
            text += word.older;
            return;
        }
    for (const Word &prefix : prefixes)
        if (v4.startsWith(prefix.v4)) {
            text += prefix.older;
            text += v4.sliced(prefix.v4.size());
            return;
        }
    text += v4;
}

QString olderText(QStringView v4Text)
{
    QString result;
    result.reserve(v4Text.size());
    for (qsizetype i = 0; i < v4Text.size();) {
        qsizetype end = i;
        while (end < v4Text.size() && isWordCharacter(v4Text[end]))
            ++end;
        if (end > i)
            appendOlderWord(result, v4Text.sliced(i, end - i));
        else
            result += v4Text[end++];
        i = end;
    }
    return result;
}

} // namespace

const Dialect &Dialect::v4()
{
    static constexpr Dialect dialect(true, u" | CORE_PROT_TYPE_UDS");
    return dialect;
}

const Dialect &Dialect::older()
{
    static constexpr Dialect dialect(false, u"| MP_PROT_TYPE_UDS");
    return dialect;
}

QString Dialect::text(const QString &v4Text) const
{
    return m_isV4 ? v4Text : olderText(v4Text);
}

QString Dialect::title(const QString &v4Title) const
{
    return m_isV4 ? v4Title : QString(v4Title).remove(" (V4)"_L1, Qt::CaseInsensitive);
}
