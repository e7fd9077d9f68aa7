#include "importers/CodbLine.h"

#include "canopen/COHelper.h"

#include <QRegularExpression>
#include <QStringList>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

/** Positions of the fields; each value is followed by its qualifier. */
enum Field : qsizetype {
    IndexField = 0,
    SubIndexField = 1,
    NameField = 2,
    CategoryField = 3,
    ObjectTypeField = 5,
    DataTypeField = 7,
    AccessField = 9,
    LowLimitField = 15,
    HighLimitField = 17,
    DefaultField = 19,
    MappingField = 21,
};

template <typename Number>
std::optional<Number> hexNumber(const QString &text)
{
    bool ok = false;
    const uint number = text.trimmed().toUInt(&ok, 16);
    if (!ok || number > std::numeric_limits<Number>::max())
        return {};
    return Number(number);
}

bool isText(int dataType)
{
    return dataType == CAN::VisibleString || dataType == CAN::OctetString || dataType == CAN::UnicodeString
        || dataType == CAN::Utf8String;
}

/** The value that a field and its qualifier give together; empty where none is set. */
QString givenValue(const QStringList &fields, Field field)
{
    QString value = fields.value(field).trimmed();
    const QString qualifier = fields.value(field + 1).trimmed();
    if (qualifier == u"n")
        return {};
    if (!qualifier.startsWith(u"d["_s) || !qualifier.endsWith(u']'))
        return value;
    const QString bracketed = qualifier.sliced(2).chopped(1).trimmed();
    // "d[0x01...0xFF]" is a range within which the device chooses, no value.
    return bracketed.isEmpty() || bracketed.contains(u"..."_s) ? value : bracketed;
}

/** What depends on the node-ID stays whole; of another expression its first hexadecimal number counts. */
QString numberOf(const QString &value)
{
    static const QRegularExpression hexadecimal(u"0x[0-9A-Fa-f]+"_s);
    if (value.contains(u"NODEID"_s, Qt::CaseInsensitive))
        return value;
    const QRegularExpressionMatch match = hexadecimal.match(value);
    const bool isSignedNumber =
        value.startsWith(u'-') && match.capturedStart() == 1 && match.capturedEnd() == value.size();
    return match.hasMatch() && !isSignedNumber ? match.captured() : value;
}

bool isMappable(const QString &flag)
{
    const QString word = flag.trimmed();
    return !word.isEmpty() && word.compare(u"n"_s, Qt::CaseInsensitive) != 0
        && word.compare(u"no"_s, Qt::CaseInsensitive) != 0;
}

CodbLine::Line parseCopy(const QString &line)
{
    static const QRegularExpression pattern(u"^\\$([0-9A-Fa-f]{4})=([0-9A-Fa-f]{4})"_s);
    const QRegularExpressionMatch match = pattern.match(line);
    if (!match.hasMatch())
        return {};
    return CodbLine::Copy{.target = *hexNumber<quint16>(match.captured(1)),
                          .source = *hexNumber<quint16>(match.captured(2))};
}

CodbLine::Record readFields(const QStringList &fields)
{
    CodbLine::Record record;
    record.name = COHelper::convertDbNames(fields[NameField]);
    record.category = COHelper::convertCategory(fields[CategoryField]);
    record.objectCode = COHelper::string2objectCode(fields[ObjectTypeField]);
    record.dataType = COHelper::mapDataTypeString(fields.value(DataTypeField));
    record.accessType = COHelper::normalizeAccessType(fields.value(AccessField));
    if (record.accessType.isEmpty())
        record.accessType = u"ro"_s;
    const auto value = [&](Field field) {
        const QString given = givenValue(fields, field);
        return isText(record.dataType) ? given : numberOf(given);
    };
    record.lowLimit = value(LowLimitField);
    record.highLimit = value(HighLimitField);
    record.defaultValue = value(DefaultField);
    record.mappable = isMappable(fields.value(MappingField));
    return record;
}

} // namespace

CodbLine::Line CodbLine::parse(const QByteArray &bytes)
{
    const QString line = QString::fromLatin1(bytes).trimmed();
    if (line.isEmpty() || line.startsWith(u'#'))
        return {};
    if (line.startsWith(u'$'))
        return parseCopy(line);
    const QStringList fields = line.split(u':');
    const bool isObject = fields.value(SubIndexField).trimmed().isEmpty();
    if (fields.size() <= (isObject ? ObjectTypeField : DataTypeField))
        return {};
    const auto index = hexNumber<quint16>(fields[IndexField]);
    const auto subIndex = hexNumber<quint8>(fields[SubIndexField]);
    if (!index || (!isObject && !subIndex))
        return {};
    Record record = readFields(fields);
    if (isObject && record.objectCode == CANopen::Null)
        return {};
    record.index = *index;
    if (!isObject)
        record.subIndex = subIndex;
    return record;
}
