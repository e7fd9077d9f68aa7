#include "canopen/EdsObjects.h"

#include "canopen/COHelper.h"
#include "canopen/EdsNumber.h"
#include "canopen/EdsObjectName.h"
#include "canopen/EdsValue.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/** Static data types end here; above stand complex and manufacturer-specific
 * types. */
constexpr quint16 lastStaticDataType = CAN::Unsigned64;

/** Entries of the sections of objects and sub-indices. */
constexpr QLatin1StringView objectKeys[] = {
    "ParameterName"_L1, "ObjectType"_L1,    "DataType"_L1,       "AccessType"_L1, "PDOMapping"_L1,
    "DefaultValue"_L1,  "LowLimit"_L1,      "HighLimit"_L1,      "ObjFlags"_L1,   "SubNumber"_L1,
    "Denotation"_L1,    "CompactSubObj"_L1, "ParameterValue"_L1,
};

/** Entries of a DCF for the value of a DOMAIN. */
constexpr QLatin1StringView fileKeys[] = {"UploadFile"_L1, "DownloadFile"_L1};

/** Entries that describe a value, which an object with sub-indices has not. */
constexpr QLatin1StringView valueKeys[] = {
    "AccessType"_L1, "PDOMapping"_L1, "DefaultValue"_L1,   "LowLimit"_L1,
    "HighLimit"_L1,  "ObjFlags"_L1,   "ParameterValue"_L1,
};

template <std::size_t Count>
bool isOneOf(const QString &key, const QLatin1StringView (&keys)[Count])
{
    return std::ranges::any_of(keys, [&key](QLatin1StringView known) {
        return key.size() == known.size() && key.compare(known, Qt::CaseInsensitive) == 0;
    });
}

} // namespace

QString EdsObjects::hex(quint16 index)
{
    return u"0x%1"_s.arg(index, 4, 16, '0'_L1);
}

EdsObjects::EdsObjects(const EdsDocument &document, EdsFindings &findings)
    : m_document(document), m_findings(findings)
{
    for (const Section &section : document.sections())
        enter(section);
}

void EdsObjects::enter(const Section &section)
{
    const auto name = edsObjectName(section.name);
    if (!name) {
        static const QRegularExpression similar(u"^[0-9][0-9a-fx]{3}sub"_s,
                                                QRegularExpression::CaseInsensitiveOption);
        if (similar.match(section.name).hasMatch())
            m_findings.warn(section.line, u"The section [%1] names no object."_s.arg(section.name));
        return;
    }
    if (name->subIndex > 0xFFu) {
        m_findings.error(section.line, u"The sub-index of [%1] is higher than 0xFF."_s.arg(section.name));
        return;
    }
    tellUnknownKeys(section);
    Place &place = m_places[name->index];
    const Section *&target = name->subIndex ? place.subIndices[quint8(*name->subIndex)] : place.object;
    if (target) {
        m_findings.warn(
            section.line,
            u"What [%1] describes stands in line %2 already; this section is left out."_s.arg(section.name)
                .arg(target->line));
        return;
    }
    target = &section;
}

void EdsObjects::tellUnknownKeys(const Section &section)
{
    for (const EdsDocument::Entry &entry : section.entries) {
        if (isOneOf(entry.key, objectKeys) || m_toldKeys.contains(entry.key))
            continue;
        m_toldKeys.insert(entry.key);
        const QString finding = isOneOf(entry.key, fileKeys)
            ? u"%1 names a file, which a project does not hold; it is left out everywhere."_s
            : u"%1 is no entry of an object; it is left out everywhere."_s;
        m_findings.note(entry.line, finding.arg(entry.key));
    }
}

/** Of an object with sub-indices; no flags and no mapping are the same as none at all. */
void EdsObjects::tellLostValue(const Place &place, CANopen::ObjectCode code) const
{
    const Section &section = *place.object;
    const bool structured = code == CANopen::Array || code == CANopen::Record;
    if (!structured && section.find(u"DataType"_s)) {
        m_findings.warn(
            section.line,
            u"[%1] describes a value that stands in line %2 too; that one counts."_s.arg(section.name)
                .arg(place.subIndices.value(0)->line));
        return;
    }
    for (const EdsDocument::Entry &entry : section.entries) {
        const bool isNothing = entry.value.isEmpty() || edsNumber(entry.value) == 0u;
        if (!isNothing && isOneOf(entry.key, valueKeys))
            m_findings.note(
                entry.line,
                u"[%1] has sub-indices and no value; its %2 is left out."_s.arg(section.name, entry.key));
    }
}

EdsObjects::Object EdsObjects::object(quint16 index) const
{
    const Place place = m_places.value(index);
    Object object{record(index, place), {}};
    const bool domain = object.record.objectCode == CANopen::Domain;
    if (object.record.compact)
        compactSubIndices(*place.object, object);
    else if (holdsSubIndexZero(place, object.record.objectCode))
        object.subIndices.append(subIndex(*place.object, index, 0, domain));
    else if (place.object && !place.subIndices.isEmpty())
        tellLostValue(place, object.record.objectCode);
    for (auto sub = place.subIndices.begin(); sub != place.subIndices.end(); ++sub) {
        const CANopenSubindex described = subIndex(**sub, index, sub.key(), domain);
        const auto known =
            std::find_if(object.subIndices.begin(), object.subIndices.end(),
                         [&](const CANopenSubindex &other) { return other.subIndex == sub.key(); });
        if (known == object.subIndices.end())
            object.subIndices.append(described);
        else
            *known = described;
    }
    return object;
}

/** Whether the object's section describes sub-index 0, as that of a variable does. */
bool EdsObjects::holdsSubIndexZero(const Place &place, CANopen::ObjectCode code) const
{
    if (!place.object || code == CANopen::Array || code == CANopen::Record)
        return false;
    if (place.subIndices.isEmpty())
        return true;
    const Section &section = *place.object;
    if (!section.find(u"DataType"_s))
        return false;
    return !place.subIndices.contains(0);
}

CANopen::CANopenIndex EdsObjects::record(quint16 index, const Place &place) const
{
    CANopen::CANopenIndex record;
    record.index = index;
    if (!place.object) {
        m_findings.warn(
            place.subIndices.first()->line,
            u"The object %1 has sub-indices but no section of its own; it is read as a RECORD."_s.arg(
                hex(index)));
        record.line = place.subIndices.first()->line;
        record.objectCode = CANopen::Record;
        record.subIndexCount = quint8(qMin<qsizetype>(place.subIndices.size(), 0xFF));
        return record;
    }
    const Section &section = *place.object;
    record.name = normalizedEdsValue(section.value(u"ParameterName"_s), CAN::VisibleString).text;
    record.denotation = section.value(u"Denotation"_s);
    record.description = section.description;
    record.line = section.line;
    record.objFlags = quint32(number(section, u"ObjFlags"_s, 0xFFFFFFFF));
    const auto compact = quint8(number(section, u"CompactSubObj"_s, 0xFF));
    record.compact = compact > 0;
    record.objectCode = objectCode(section, record.compact || !place.subIndices.isEmpty());
    if (section.find(u"DataType"_s))
        record.dataType = dataType(section, record.objectCode == CANopen::Domain);
    if (record.name.isEmpty())
        m_findings.note(section.line, u"The object %1 has no name."_s.arg(hex(index)));
    if (compact > edsHighestEntry)
        m_findings.note(
            section.lineOf(u"CompactSubObj"_s),
            u"CompactSubObj is %1; the object gets %2 entries."_s.arg(compact).arg(edsHighestEntry));
    if (record.compact)
        record.subIndexCount = qMin(compact, edsHighestEntry);
    else
        countSubIndices(place, record);
    return record;
}

/** The value of a key without a remark behind it, which is told. */
QString EdsObjects::plainValue(const Section &section, const QString &key) const
{
    const QString value = section.value(key);
    QString plain = withoutEdsRemark(value);
    if (plain.size() != value.size())
        m_findings.note(section.lineOf(key), u"%1: the remark behind the value is left out."_s.arg(key));
    return plain;
}

CANopen::ObjectCode EdsObjects::objectCode(const Section &section, bool hasSubIndices) const
{
    const QString key = u"ObjectType"_s;
    const QString text = plainValue(section, key);
    const CANopen::ObjectCode code = COHelper::string2objectCode(text);
    if (code != CANopen::Null && !edsNumber(text))
        m_findings.note(section.lineOf(key),
                        u"The ObjectType \"%1\" is read as %2."_s.arg(text, QString::number(code)));
    if (code != CANopen::Null || edsNumber(text) == 0u)
        return code;
    const CANopen::ObjectCode assumed = !hasSubIndices ? CANopen::Var
        : section.find(u"CompactSubObj"_s)             ? CANopen::Array
                                                       : CANopen::Record;
    const QString word = COHelper::objectCode2String(assumed);
    if (!text.isEmpty())
        m_findings.warn(section.lineOf(key),
                        u"The ObjectType \"%1\" is not known; %2 is assumed."_s.arg(text, word));
    else if (hasSubIndices)
        m_findings.warn(section.line, u"[%1] has no ObjectType; %2 is assumed."_s.arg(section.name, word));
    return assumed;
}

void EdsObjects::countSubIndices(const Place &place, CANopen::CANopenIndex &record) const
{
    const QString key = u"SubNumber"_s;
    const Section &section = *place.object;
    const auto described = place.subIndices.size();
    const auto declared = qsizetype(number(section, key, 0xFF));
    const bool structured = record.objectCode == CANopen::Array || record.objectCode == CANopen::Record;
    // Sub-index 0xFF holds the structure of the object and does not count (CiA 306).
    const qsizetype counted = described - (place.subIndices.contains(0xFF) ? 1 : 0);
    if (declared == 0 && described > 0)
        m_findings.note(
            section.line,
            u"[%1] has no SubNumber; %2 sub-indices are described."_s.arg(section.name).arg(described));
    else if (structured && declared != described && declared != counted)
        m_findings.note(section.lineOf(key),
                        u"SubNumber of [%1] is %2, but %3 sub-indices are described."_s.arg(section.name)
                            .arg(declared)
                            .arg(described));
    if (structured && described > 0 && !place.subIndices.contains(0))
        m_findings.note(section.line, u"The object %1 has no sub-index 0."_s.arg(hex(record.index)));
    record.subIndexCount = quint8(qMin<qsizetype>(declared > 0 ? declared : described, 0xFF));
}

CANopenSubindex EdsObjects::subIndex(const Section &section, quint16 index, quint8 sub, bool domain) const
{
    CANopenSubindex result;
    result.index = index;
    result.subIndex = sub;
    const EdsValue name = normalizedEdsValue(section.value(u"ParameterName"_s), CAN::VisibleString);
    result.name = name.text;
    if (name.text.isEmpty() && m_places.value(index).object != &section) // else it is told of the object
        m_findings.note(section.line, u"[%1] has no name."_s.arg(section.name));
    else if (!name.remark.isEmpty())
        m_findings.note(section.lineOf(u"ParameterName"_s), u"ParameterName: %1."_s.arg(name.remark));
    result.dataType = dataType(section, domain);
    result.accessType = accessType(section, domain);
    result.pdoMapping = pdoMapping(section);
    result.defaultValue = value(section, u"DefaultValue"_s, result.dataType);
    result.parameterValue = value(section, u"ParameterValue"_s, result.dataType);
    result.denotation = section.value(u"Denotation"_s);
    result.description = section.description;
    result.line = section.line;
    result.objFlags = quint32(number(section, u"ObjFlags"_s, 0xFFFFFFFF));
    limits(section, result);
    return result;
}

quint16 EdsObjects::dataType(const Section &section, bool domain) const
{
    const QString key = u"DataType"_s;
    const QString text = plainValue(section, key);
    if (text.isEmpty()) {
        if (!domain)
            m_findings.warn(section.line, u"[%1] has no DataType."_s.arg(section.name));
        return domain ? CAN::Domain : CAN::NoDataType;
    }
    const auto number = edsNumber(text);
    const bool fits = number && *number <= 0xFFFF;
    const quint16 type = fits ? quint16(*number) : quint16(COHelper::mapDataTypeString(text));
    if (type == CAN::NoDataType)
        m_findings.warn(section.lineOf(key), u"The DataType \"%1\" is not known."_s.arg(text));
    else if (!number)
        m_findings.note(section.lineOf(key),
                        u"The DataType \"%1\" is read as %2."_s.arg(text, QString::number(type)));
    else if (fits && (type > lastStaticDataType || COHelper::index2DataTypeString(type).isEmpty()))
        m_findings.note(section.lineOf(key),
                        u"The DataType %1 is none of the static types of CiA 301."_s.arg(text));
    return type;
}

QString EdsObjects::accessType(const Section &section, bool domain) const
{
    const QString key = u"AccessType"_s;
    QString assumed = domain ? u"rw"_s : u"ro"_s;
    const QString text = section.value(key);
    if (text.isEmpty()) {
        if (!domain)
            m_findings.warn(section.lineOf(key),
                            u"[%1] has no AccessType; \"%2\" is assumed."_s.arg(section.name, assumed));
        return assumed;
    }
    QString access = COHelper::normalizeAccessType(text);
    if (access.isEmpty()) {
        m_findings.warn(section.lineOf(key),
                        u"The AccessType \"%1\" is not known; \"%2\" is assumed."_s.arg(text, assumed));
        return assumed;
    }
    if (access.compare(text, Qt::CaseInsensitive) != 0)
        m_findings.note(section.lineOf(key), u"The AccessType \"%1\" is read as \"%2\"."_s.arg(text, access));
    return access;
}

bool EdsObjects::pdoMapping(const Section &section) const
{
    const QString key = u"PDOMapping"_s;
    const QString text = plainValue(section, key).toLower();
    if (text.isEmpty())
        return false;
    if (const auto number = edsNumber(text)) {
        if (*number > 1)
            m_findings.note(section.lineOf(key), u"PDOMapping is %1; it is read as 1."_s.arg(text));
        return *number != 0;
    }
    const bool mapped = PDOMapping::fromCSVString(text).toBinary() != 0;
    m_findings.note(section.lineOf(key),
                    u"PDOMapping is \"%1\"; it is read as %2."_s.arg(text, QString::number(int(mapped))));
    return mapped;
}

QString EdsObjects::value(const Section &section, const QString &key, quint16 dataType) const
{
    const EdsValue value = normalizedEdsValue(section.value(key), dataType);
    if (!value.usable)
        m_findings.warn(section.lineOf(key), u"%1: %2."_s.arg(key, value.remark));
    else if (!value.remark.isEmpty())
        m_findings.note(section.lineOf(key), u"%1: %2."_s.arg(key, value.remark));
    return value.text;
}

void EdsObjects::limits(const Section &section, CANopenSubindex &subindex) const
{
    subindex.lowLimit = value(section, u"LowLimit"_s, subindex.dataType);
    subindex.highLimit = value(section, u"HighLimit"_s, subindex.dataType);
    subindex.hasLimits = !subindex.lowLimit.isEmpty() || !subindex.highLimit.isEmpty();
    if (!subindex.hasLimits)
        return;
    QString low;
    QString high;
    COHelper::getDefaultLimits(CAN::CANopenDataType(subindex.dataType), low, high);
    if (subindex.lowLimit.isEmpty())
        subindex.lowLimit = low;
    else if (subindex.highLimit.isEmpty())
        subindex.highLimit = high;
    else
        return;
    m_findings.note(section.line,
                    u"[%1] gives one limit only; the other is that of its type."_s.arg(section.name));
}

quint64 EdsObjects::number(const Section &section, const QString &key, quint64 highest) const
{
    const QString text = plainValue(section, key);
    if (text.isEmpty())
        return 0;
    const auto number = edsNumber(text);
    if (number && *number <= highest)
        return *number;
    m_findings.warn(section.lineOf(key),
                    u"%1 is \"%2\", which is no number up to %3; it is left out."_s.arg(
                        key, text, QString::number(highest)));
    return 0;
}
