#pragma once

#include "store/ObjectDataBase.h"

#include <QRegularExpression>
#include <QString>
#include <QVariant>

/** What writing and reading of the text form have in common. */
namespace TextForm {

/** The number at the end of a table's name; -1 when there is none or it is too large for an int. */
inline int trailingNumber(const QString &name)
{
    static const QRegularExpression digits(QStringLiteral("(\\d+)$"));
    bool isNumber = false;
    const int number = digits.match(name).captured(1).toInt(&isNumber);
    return isNumber ? number : -1;
}

constexpr QLatin1StringView udsTable("UDSSettings");

/** Line of a group such as "Objects1"; -1 for a group of no line and for the reserved lines. */
inline int lineOf(const QString &group)
{
    const int line = TextForm::trailingNumber(group);
    return line >= 0 && line < ObjectDataBase::ClipboardLine ? line : -1;
}

/**
 * A settings key as QSettings can keep it: it takes "/" for the end of a group and drops superfluous ones.
 * Keys it would change are written with a "%" before them, "%" and "/" as "%25" and "%2f".
 */
inline QString toEntryKey(const QString &key)
{
    const bool survives = !key.isEmpty() && !key.startsWith(u'/') && !key.endsWith(u'/')
        && !key.contains(QLatin1StringView("//")) && !key.startsWith(u'%');
    if (survives)
        return key;
    QString escaped = key;
    escaped.replace(u'%', QLatin1StringView("%25")).replace(u'/', QLatin1StringView("%2f"));
    return u'%' + escaped;
}

inline QString fromEntryKey(const QString &entryKey)
{
    if (!entryKey.startsWith(u'%'))
        return entryKey;
    QString key = entryKey.mid(1);
    return key.replace(QLatin1StringView("%2f"), QLatin1StringView("/"))
        .replace(QLatin1StringView("%25"), QLatin1StringView("%"));
}

/** An entry's value; QSettings splits one with bare commas, as a text editor may leave it. */
inline QString entryText(const QVariant &value)
{
    return value.typeId() == QMetaType::QStringList ? value.toStringList().join(u',') : value.toString();
}

/** A name as SQL takes it, whatever signs it has. */
inline QString quoted(const QString &name)
{
    return u'"' + QString(name).replace(u'"', QLatin1StringView("\"\"")) + u'"';
}

} // namespace TextForm
