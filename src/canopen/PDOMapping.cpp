#include "canopen/PDOMapping.h"

#include <array>

namespace {

struct Texts
{
    const char *csv;
    const char *xdd;
};

constexpr std::array<Texts, 5> texts{{
    {"NONE", "no"},
    {"ALLOWED", "optional"},
    {"DEFAULT", "default"},
    {"RPDO", "RPDO"},
    {"TPDO", "TPDO"},
}};

/** Words that hand-made tables use besides those that this program writes. */
struct Alias
{
    const char *word;
    PDOMapping::PDOMappingType type;
};

constexpr std::array<Alias, 5> aliases{{
    {"forbidden", PDOMapping::Forbidden},
    {"false", PDOMapping::Forbidden},
    {"yes", PDOMapping::Allowed},
    {"true", PDOMapping::Allowed},
    {"optional", PDOMapping::Allowed},
}};

} // namespace

QString PDOMapping::getCSVStringValue() const
{
    if (m_type < texts.size())
        return QString::fromLatin1(texts[m_type].csv);
    return QString::number(toUInt());
}

PDOMapping PDOMapping::fromCSVString(const QString &text)
{
    const QString word = text.trimmed();
    for (quint8 type = 0; type < texts.size(); ++type)
        if (word.compare(QLatin1StringView(texts[type].csv), Qt::CaseInsensitive) == 0)
            return PDOMapping(type);
    for (const Alias &alias : aliases)
        if (word.compare(QLatin1StringView(alias.word), Qt::CaseInsensitive) == 0)
            return alias.type;
    bool ok = false;
    const uint number = word.toUInt(&ok);
    return ok && number <= 0xFF ? PDOMapping(number) : PDOMapping(Forbidden);
}

QString PDOMapping::getXDDStringValue() const
{
    return QString::fromLatin1(texts[m_type < texts.size() ? m_type : Forbidden].xdd);
}
