#include "canopen/EdsValue.h"

#include "canopen/DataTypeTable.h"
#include "canopen/EdsNumber.h"

#include <QRegularExpression>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr int bitsOfByte = 8;
constexpr int widestType = 64; // bits

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

/**
 * Without the zeros before decimal digits that cannot be octal: "089" is 89, but whoever reads the project
 * takes a leading zero as the mark of an octal number, and this one for none.
 */
QString withoutFalseOctal(const QString &value)
{
    const qsizetype first = value.startsWith(u'-') ? 1 : 0;
    if (value.size() < first + 2 || value[first] != u'0' || !value[first + 1].isDigit())
        return value;
    const QStringView digits = QStringView(value).sliced(first);
    if (std::ranges::none_of(digits, [](QChar c) { return c == u'8' || c == u'9'; }))
        return value;
    const auto begin = std::ranges::find_if(digits, [](QChar c) { return c != u'0'; });
    return value.first(first) + digits.sliced(begin - digits.begin());
}

EdsValue number(const QString &value)
{
    if (isPlainNumber(value)) {
        const QString plain = withoutFalseOctal(value);
        return {plain, plain == value ? QString() : u"\"%1\" is read as %2"_s.arg(value, plain)};
    }
    static const QRegularExpression plain(QStringLiteral("^" EDS_NUMBER "$"));
    static const QRegularExpression digits(QStringLiteral("^([0-9A-Fa-f]+)[hH]?$"));
    QString result;
    if (const auto match = plain.match(value); match.hasMatch())
        result = withoutFalseOctal(match.captured(1));
    else if (const auto bare = digits.match(value); bare.hasMatch())
        result = u"0x"_s + bare.captured(1);
    else
        return {value, u"\"%1\" is not a number"_s.arg(value), false};
    return {result, result == value ? QString() : u"\"%1\" is read as %2"_s.arg(value, result)};
}

#undef EDS_NUMBER

/**
 * A hexadecimal number that sets the sign bit of a signed type is the bit pattern of a negative value. It
 * may have as many digits as a wider type; one that fits in no way stays as it is.
 */
EdsValue signedNumber(const QString &value, const DataTypeRow &type)
{
    if (!value.startsWith(u"0x", Qt::CaseInsensitive))
        return {value, {}};
    const auto pattern = edsNumber(value);
    if (!pattern || (*pattern >> (type.bits - 1)) == 0)
        return {value, {}};
    for (int bits = type.bits; bits <= widestType; bits += bitsOfByte) {
        const int unused = widestType - bits;
        const qint64 result = qint64(*pattern << unused) >> unused;
        const bool fits = bits == widestType || (*pattern >> bits) == 0;
        if (fits && (result >> (type.bits - 1)) == -1)
            return {QString::number(result), u"\"%1\" is read as %2"_s.arg(value).arg(result)};
    }
    return {value, {}};
}

template <typename Real, typename Pattern>
EdsValue realOfPattern(const QString &value, Pattern pattern)
{
    const auto result = std::bit_cast<Real>(pattern);
    if (!std::isfinite(result))
        return {value, u"\"%1\" is not a number"_s.arg(value), false};
    const QString text = QString::number(double(result), 'g', std::numeric_limits<Real>::max_digits10);
    return {text, u"\"%1\" is read as %2"_s.arg(value, text)};
}

/** A floating-point number, told in decimal or by the bit pattern of IEEE 754. */
EdsValue real(const QString &value, int bits)
{
    if (value.startsWith(u"0x", Qt::CaseInsensitive)) {
        const auto pattern = edsNumber(value);
        if (pattern && bits == widestType)
            return realOfPattern<double>(value, *pattern);
        if (pattern && *pattern <= std::numeric_limits<quint32>::max())
            return realOfPattern<float>(value, quint32(*pattern));
        return {value, u"\"%1\" is not a number"_s.arg(value), false};
    }
    bool ok = false;
    const bool isNumber = std::isfinite(value.toDouble(&ok)) && ok;
    return {value, isNumber ? QString() : u"\"%1\" is not a number"_s.arg(value), isNumber};
}

EdsValue numberOfType(const QString &value, const DataTypeRow &type)
{
    if (type.number == CAN::Real32 || type.number == CAN::Real64)
        return real(value, type.bits);
    if (value.contains(u"nodeid", Qt::CaseInsensitive))
        return nodeIdSum(value);
    EdsValue plain = number(value);
    if (!plain.usable || type.range != DataTypeRange::Signed)
        return plain;
    const EdsValue result = signedNumber(plain.text, type);
    return result.remark.isEmpty() ? plain : result;
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
    const bool isReal = dataType == CAN::Real32 || dataType == CAN::Real64;
    if (!type || (type->range == DataTypeRange::None && !isReal))
        return {value, {}};
    const QString bare = withoutEdsRemark(value);
    EdsValue result = numberOfType(bare, *type);
    if (!result.usable)
        result.text = value;
    else if (result.remark.isEmpty() && bare.size() != value.size())
        result.remark = u"the remark behind the value is left out"_s;
    return result;
}
