#include "canopen/COHelper.h"

#include "canopen/DataTypeTable.h"
#include "canopen/EdsNumber.h"
#include "canopen/EdsValue.h"

#include <QStringView>

#include <array>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

/** A word of a file or of a reader, and the number that stands for it. */
struct Word
{
    QLatin1StringView text;
    quint16 number;
};

template <std::size_t size>
std::optional<quint16> numberOf(QStringView text, const std::array<Word, size> &words)
{
    for (const Word &word : words)
        if (text.compare(word.text, Qt::CaseInsensitive) == 0)
            return word.number;
    return {};
}

/** The first word that stands for a number is the one that is written. */
template <std::size_t size>
QString textOf(quint16 number, const std::array<Word, size> &words)
{
    for (const Word &word : words)
        if (word.number == number)
            return word.text;
    return {};
}

constexpr std::array<Word, 10> objectCodes{{
    {"NULL"_L1, CANopen::Null},
    {"DOMAIN"_L1, CANopen::Domain},
    {"DEFTYPE"_L1, CANopen::Deftype},
    {"DEFSTRUCT"_L1, CANopen::Defstruct},
    {"VAR"_L1, CANopen::Var},
    {"ARRAY"_L1, CANopen::Array},
    {"RECORD"_L1, CANopen::Record},
    {"VARIABLE"_L1, CANopen::Var},
    {"REC"_L1, CANopen::Record},
    {"STRUCT"_L1, CANopen::Record},
}};

constexpr std::array<Word, 6> categories{{
    {"mandatory"_L1, CANopen::Mandatory},
    {"optional"_L1, CANopen::Optional},
    {"conditional"_L1, CANopen::Conditional},
    {"m"_L1, CANopen::Mandatory},
    {"o"_L1, CANopen::Optional},
    {"c"_L1, CANopen::Conditional},
}};

constexpr std::array<Word, 4> implementations{{
    {"Managed Variable"_L1, CANopen::ManagedVariable},
    {"Managed Const"_L1, CANopen::ManagedConst},
    {"Application Variable"_L1, CANopen::ApplicationVariable},
    {"Virtual Object"_L1, CANopen::VirtualObject},
}};

constexpr std::array<Word, 5> pdoMappings{{
    {"Forbidden"_L1, PDOMapping::Forbidden},
    {"Allowed"_L1, PDOMapping::Allowed},
    {"Default"_L1, PDOMapping::Default},
    {"RPDO"_L1, PDOMapping::RPDO},
    {"TPDO"_L1, PDOMapping::TPDO},
}};

struct AccessAlias
{
    QLatin1StringView alias;
    QLatin1StringView word;
};

constexpr std::array<AccessAlias, 10> accessAliases{{
    {"r"_L1, "ro"_L1},
    {"w"_L1, "wo"_L1},
    {"c"_L1, "const"_L1},
    {"read"_L1, "ro"_L1},
    {"readOnly"_L1, "ro"_L1},
    {"write"_L1, "wo"_L1},
    {"writeOnly"_L1, "wo"_L1},
    {"readWrite"_L1, "rw"_L1},
    {"readWriteInput"_L1, "rwr"_L1},
    {"readWriteOutput"_L1, "rww"_L1},
}};

constexpr std::array<Word, 30> energyBusTypes{{
    {"BOOL"_L1, CAN::Boolean},          {"U8"_L1, CAN::Unsigned8},        {"U16"_L1, CAN::Unsigned16},
    {"U24"_L1, CAN::Unsigned24},        {"U32"_L1, CAN::Unsigned32},      {"U64"_L1, CAN::Unsigned64},
    {"UINT8"_L1, CAN::Unsigned8},       {"UINT16"_L1, CAN::Unsigned16},   {"UINT24"_L1, CAN::Unsigned24},
    {"UINT32"_L1, CAN::Unsigned32},     {"UINT64"_L1, CAN::Unsigned64},   {"I8"_L1, CAN::Integer8},
    {"I16"_L1, CAN::Integer16},         {"I24"_L1, CAN::Integer24},       {"I32"_L1, CAN::Integer32},
    {"I64"_L1, CAN::Integer64},         {"INT8"_L1, CAN::Integer8},       {"INT16"_L1, CAN::Integer16},
    {"INT32"_L1, CAN::Integer32},       {"INT64"_L1, CAN::Integer64},     {"SINT8"_L1, CAN::Integer8},
    {"SINT16"_L1, CAN::Integer16},      {"SINT32"_L1, CAN::Integer32},    {"SINT64"_L1, CAN::Integer64},
    {"FLOAT"_L1, CAN::Real32},          {"DOUBLE"_L1, CAN::Real64},       {"STRING"_L1, CAN::VisibleString},
    {"VSTRING"_L1, CAN::VisibleString}, {"OSTRING"_L1, CAN::OctetString}, {"UTF8"_L1, CAN::Utf8String},
}};

QMap<quint16, QString> namesByNumber()
{
    QMap<quint16, QString> names;
    for (const DataTypeRow &row : dataTypeTable)
        names.insert(row.number, QString::fromLatin1(row.name));
    return names;
}

} // namespace

const QMap<quint16, QString> COHelper::stringDataTypeIndexMap // clazy:exclude=non-pod-global-static
    = namesByNumber();

QString COHelper::index2DataTypeString(quint16 dataType)
{
    const DataTypeRow *row = dataTypeRow(dataType);
    return row ? QString::fromLatin1(row->name) : QString();
}

QString COHelper::index2DataTypeShortString(quint16 dataType)
{
    const DataTypeRow *row = dataTypeRow(dataType);
    return row ? QString::fromLatin1(row->shortName) : QString();
}

CAN::CANopenDataType COHelper::mapDataTypeString(const QString &text)
{
    const QString word = text.trimmed();
    for (const DataTypeRow &row : dataTypeTable)
        if (word.compare(QLatin1StringView(row.name), Qt::CaseInsensitive) == 0)
            return CAN::CANopenDataType(row.number);
    const auto number = edsNumber(word);
    const bool known = number && *number <= 0xFFFF && dataTypeRow(quint16(*number));
    return known ? CAN::CANopenDataType(*number) : CAN::NoDataType;
}

quint8 COHelper::getDataLengthBits(CAN::CANopenDataType dataType)
{
    const DataTypeRow *row = dataTypeRow(dataType);
    return row ? row->bits : 0;
}

bool COHelper::getDefaultLimits(CAN::CANopenDataType dataType, QString &low, QString &up)
{
    low.clear();
    up.clear();
    const DataTypeRow *row = dataTypeRow(dataType);
    if (!row || row->range == DataTypeRange::None)
        return false;
    const quint64 all = ~quint64(0) >> (64 - row->bits);
    if (row->range == DataTypeRange::Unsigned) {
        low = u"0"_s;
        up = QString::number(all);
    } else {
        const auto highest = qint64(all >> 1);
        low = QString::number(-highest - 1);
        up = QString::number(highest);
    }
    return true;
}

QString COHelper::implementation2String(quint8 implementation)
{
    return textOf(implementation, implementations);
}

QString COHelper::objectCode2String(CANopen::ObjectCode code)
{
    return textOf(code, objectCodes);
}

CANopen::ObjectCode COHelper::string2objectCode(const QString &text)
{
    const QString word = text.trimmed();
    if (const auto code = numberOf(word, objectCodes))
        return CANopen::ObjectCode(*code);
    const auto number = edsNumber(word);
    const bool known = number && *number <= 0xFF && !textOf(quint16(*number), objectCodes).isEmpty();
    return known ? CANopen::ObjectCode(*number) : CANopen::Null;
}

QString COHelper::pdoMapping2String(PDOMapping mapping)
{
    return textOf(mapping.toUInt(), pdoMappings);
}

CANopen::ObjectCategory COHelper::convertCategory(const QString &text)
{
    return CANopen::ObjectCategory(numberOf(QStringView(text).trimmed(), categories).value_or(0));
}

QString COHelper::normalizeAccessType(const QString &text)
{
    const QString word = withoutEdsRemark(text).trimmed();
    for (const CANopen::AccessType &access : CANopen::accessTypes)
        if (word.compare(QLatin1StringView(access.word), Qt::CaseInsensitive) == 0
            || word.compare(QLatin1StringView(access.label), Qt::CaseInsensitive) == 0)
            return QString::fromLatin1(access.word);
    for (const AccessAlias &access : accessAliases)
        if (word.compare(access.alias, Qt::CaseInsensitive) == 0)
            return access.word;
    return {};
}

QString COHelper::convertDbNames(const QString &name)
{
    return name.simplified();
}

QString COHelper::convertEBType(const QString &type)
{
    const QStringView word = QStringView(type).trimmed();
    if (const auto number = numberOf(word, energyBusTypes))
        return index2DataTypeString(*number);
    return index2DataTypeString(mapDataTypeString(type));
}
