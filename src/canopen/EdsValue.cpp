#include "canopen/EdsValue.h"

#include "canopen/DataTypeTable.h"
#include "canopen/EdsNumber.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// A number with the suffix of a C literal, and its digits without.
#define EDS_NUMBER "(-?(?:0[xX][0-9A-Fa-f]+|[0-9]+))[uUlL]*"

bool isText(quint16 dataType)
{
    switch (dataType) {
    case CAN::VisibleString:
    case CAN::OctetString:
    case CAN::UnicodeString:
    case CAN::Domain:
    case CAN::Utf8String:
        return true;
    default:
        return false;
    }
}

EdsValue text(const QString &value)
{
    const bool quoted = value.size() >= 2 && value.startsWith(u'"') && value.endsWith(u'"');
    if (!quoted)
        return {value, {}};
    return {value.sliced(1, value.size() - 2), u"the quotation marks around the text are left out"_s};
}

EdsValue nodeIdSum(const QString &value)
{
    static const QRegularExpression form(
        QStringLiteral("^(?:\\$NODEID\\s*(?:\\+\\s*" EDS_NUMBER ")?|" EDS_NUMBER "\\s*\\+\\s*\\$NODEID)$"),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = form.match(value);
    if (!match.hasMatch())
        return {value, u"the sum with the node-ID is not understood"_s, false};
    const QString number = match.captured(1) + match.captured(2);
    const QString sum = number.isEmpty() ? u"$NODEID"_s : u"$NODEID+"_s + number;
    return {sum, sum == value ? QString() : u"\"%1\" is read as %2"_s.arg(value, sum)};
}

/** Decimal digits, or "0x" and hexadecimal ones, behind a minus sign or not: what most values are. */
bool isPlainNumber(QStringView value)
{
    if (value.startsWith(u'-'))
        value = value.sliced(1);
    const bool isHex = value.startsWith("0x"_L1, Qt::CaseInsensitive);
    if (isHex)
        value = value.sliced(2);
    return !value.isEmpty() && std::all_of(value.begin(), value.end(), [isHex](QChar c) {
        return (c >= u'0' && c <= u'9') || (isHex && ((c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F')));
    });
}

EdsValue number(const QString &value)
{
    if (isPlainNumber(value))
        return {value, {}};
    static const QRegularExpression plain(QStringLiteral("^" EDS_NUMBER "$"));
    static const QRegularExpression digits(QStringLiteral("^([0-9A-Fa-f]+)[hH]?$"));
    QString result;
    if (const auto match = plain.match(value); match.hasMatch())
        result = match.captured(1);
    else if (const auto bare = digits.match(value); bare.hasMatch())
        result = u"0x"_s + bare.captured(1);
    else
        return {value, u"\"%1\" is not a number"_s.arg(value), false};
    return {result, result == value ? QString() : u"\"%1\" is read as %2"_s.arg(value, result)};
}

#undef EDS_NUMBER

/** A hexadecimal number that sets the sign bit of a signed type stands for a
 * negative value. */
bool isTwosComplement(const QString &value, const DataTypeRow &type)
{
    if (type.range != DataTypeRange::Signed || !value.startsWith(u"0x", Qt::CaseInsensitive))
        return false;
    const auto pattern = edsNumber(value);
    return pattern && (*pattern >> (type.bits - 1)) != 0;
}

} // namespace

QString withoutEdsRemark(const QString &value)
{
    for (qsizetype i = 1; i < value.size(); ++i)
        if (value[i] == u';' || value[i] == u'#')
            return value.first(i).trimmed();
    return value;
}

EdsValue normalizedEdsValue(const QString &value, quint16 dataType)
{
    if (value.isEmpty())
        return {};
    if (isText(dataType))
        return text(value);
    const DataTypeRow *type = dataTypeRow(dataType);
    if (!type || type->range == DataTypeRange::None)
        return {value, {}};
    const QString bare = withoutEdsRemark(value);
    const bool sum = bare.contains(u"nodeid", Qt::CaseInsensitive);
    EdsValue result = sum ? nodeIdSum(bare) : number(bare);
    if (!result.usable)
        result.text = value;
    else if (result.remark.isEmpty() && bare.size() != value.size())
        result.remark = u"the remark behind the value is left out"_s;
    else if (result.remark.isEmpty() && !sum && isTwosComplement(result.text, *type))
        result.remark = u"\"%1\" stands for a negative number"_s.arg(value);
    return result;
}
