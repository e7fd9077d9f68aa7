// PDO mapping objects (CiA 301): what they map, and whether it fits into a frame.

#include "canopen/COHelper.h"
#include "check/LineCheck.h"
#include "check/LineRules.h"
#include "check/MappingEntry.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView communicationMissing{
    "<strong>Error: </strong>Object 0x%1: The corresponding PDO communication parameter object 0x%2 does not "
    "exist."};
constexpr QLatin1StringView nothingMapped{
    "<strong>Error: </strong>Object 0x%1 of line %2: The PDO mapping table does not contain any mapped "
    "object."};
constexpr QLatin1StringView mixedAccess{
    "<strong>Error: </strong>Object 0x%1: All subindices of a PDO mapping object must have the same access "
    "type. (const for static mapping or rw for dynamic mapping"};
constexpr QLatin1StringView emptyEntry{
    "<strong>Error: </strong>Object 0x%1:%2 is an active mapping entry but maps no object (empty entry)."};
constexpr QLatin1StringView mappedMissing{
    "<strong>Error: </strong>Object 0x%1: The mapped object 0x%2:%3 does not exist."};
constexpr QLatin1StringView mappingForbidden{
    "<strong>Error: </strong>Object 0x%1: PDO mapping is not allowed for object 0x%2:%3."};
constexpr QLatin1StringView sizeTooSmall{
    "Warning: Object 0x%1: The size of the mapped object 0x%2:%3 is too small."};
constexpr QLatin1StringView sizeTooLarge{
    "<strong>Error: </strong>Object 0x%1: The size of the mapped object 0x%2:%3 is too large."};
constexpr QLatin1StringView noTpdoAccess{
    "<strong>Error: </strong>Object 0x%1: The access right of the mapped object 0x%2:%3 does not fit for a "
    "TPDO."};
constexpr QLatin1StringView noRpdoAccess{
    "<strong>Error: </strong>Object 0x%1: The access right of the mapped object 0x%2:%3 does not fit for an "
    "RPDO."};
constexpr QLatin1StringView pdoTooLong{
    "<strong>Error: </strong>Object 0x%1: Size of PDO exceeds the limit. "};
constexpr QLatin1StringView tooManyEntries{
    "<strong>Error: </strong>Object 0x%1:  Invalid number of mapping entries."};
constexpr QLatin1StringView pdoDisabled{
    "<i>Corrected: Object 0x%1</i>: The COB-ID of this PDO has been disabled (%2), because it does not "
    "contain active mapping entries."};
constexpr QLatin1StringView bitsInBytes{
    "<strong>Warning: </strong>Bitwise mapping cannot be used with a granularity of 8. Correct device "
    "description settings or PDO mapping."};
constexpr QLatin1StringView bitwiseDisabled{"<strong>Error: </strong>Bitwise mapping not enabled in general "
                                            "settings. Correct general settings or PDO "
                                            "mapping."};
constexpr QLatin1StringView dynamicWithoutGranularity{
    "<strong>Error: </strong>Dynamic mapping cannot be used with a granularity of 0. Correct device "
    "description settings or PDO mapping."};

constexpr std::array<std::pair<quint16, quint16>, 2> mappingObjects{{{0x1600, 0x17FF}, {0x1A00, 0x1BFF}}};
constexpr quint16 firstTransmitObject = 0x1800;
/** From a mapping object back to the communication object of its PDO. */
constexpr quint16 communicationDistance = 0x200;
constexpr quint8 cobIdSubIndex = 1;
/** Counts behind this one are no counts: 254 and 255 mean a multiplexed PDO (CiA 301). */
constexpr quint8 mostEntries = 64;
/** Objects below this one are data types: an RPDO maps them to skip bits. */
constexpr quint16 firstRealObject = 8;
constexpr quint8 bitsOfByte = 8;
/** The transmit PDOs of the pre-defined connection set, whose COB-IDs are valid by default. */
constexpr std::array<quint16, 4> correctedObjects{0x1A00, 0x1A01, 0x1A02, 0x1A03};
constexpr quint32 cobIdInvalid = 0x80000000;

constexpr QLatin1StringView dynamicAccess{"rw"};

/** A mapping object and what the walk over its entries adds up. */
struct MappingObject
{
    LineCheck &check;
    const quint16 index;
    const quint8 count; ///< entries in use, as sub-index 0 tells
    const QString access; ///< of sub-index 0
    const qsizetype subIndexCount;
    quint16 totalBits = 0;

    quint16 communication() const { return index - communicationDistance; }
    ProjectLocation where() const { return check.at(index); }
};

MappingObject mappingObject(LineCheck &check, quint16 index)
{
    ObjectDataBase::SUBINDEX_DATA_T count;
    check.read(index, 0, count);
    return {.check = check,
            .index = index,
            .count = static_cast<quint8>(unsignedValue(count.defaultvalue)),
            .access = count.accesstype,
            .subIndexCount = check.subIndices(index).size()};
}

void checkCommunicationObject(const MappingObject &object)
{
    if (!object.check.exists(object.communication()))
        object.check.findings.error(
            communicationMissing.arg(indexText(object.index), indexText(object.communication())),
            object.where());
}

void checkHasEntries(const MappingObject &object)
{
    if (object.count <= mostEntries && object.subIndexCount < 2)
        object.check.findings.error(
            nothingMapped.arg(indexText(object.index), QString::number(object.check.line)), object.where());
}

void checkEntryAccess(const MappingObject &object, quint8 subIndex)
{
    ObjectDataBase::SUBINDEX_DATA_T entry;
    if (object.check.read(object.index, subIndex, entry) && entry.accesstype != object.access)
        object.check.findings.error(mixedAccess.arg(indexText(object.index)),
                                    object.check.at(object.index, subIndex));
}

bool fitsDirection(quint16 mappingIndex, const QString &access)
{
    if (mappingIndex >= firstTransmitObject)
        return access != "wo"_L1 && access != "rww"_L1;
    return access != "ro"_L1 && access != "const"_L1 && access != "rwr"_L1;
}

// Entries behind the count are looked at too: they must name something real before they are switched on.
void checkMappedObject(const MappingObject &object, quint8 subIndex, MappingEntry entry)
{
    CheckFindings &findings = object.check.findings;
    const ProjectLocation where = object.check.at(object.index, subIndex);
    const auto text = [&](QLatin1StringView message) {
        return message.arg(indexText(object.index), indexText(entry.index()),
                           QString::number(entry.subIndex()));
    };
    ObjectDataBase::SUBINDEX_DATA_T mapped;
    if (!object.check.exists(entry.index(), entry.subIndex()))
        findings.error(text(mappedMissing), where);
    if (object.check.read(entry.index(), entry.subIndex(), mapped)) {
        if (mapped.pdomapping == PDOMapping::Forbidden)
            findings.error(text(mappingForbidden), where);
        const quint8 bits = COHelper::getDataLengthBits(static_cast<CAN::CANopenDataType>(mapped.datatype));
        if (entry.bits() < bits)
            findings.note(text(sizeTooSmall), where);
        if (entry.bits() > bits)
            findings.error(text(sizeTooLarge), where);
    }
    if (!fitsDirection(object.index, mapped.accesstype))
        findings.error(text(object.index >= firstTransmitObject ? noTpdoAccess : noRpdoAccess), where);
}

void checkEntry(MappingObject &object, quint8 subIndex)
{
    checkEntryAccess(object, subIndex);
    LineCheck &check = object.check;
    if (object.access == dynamicAccess)
        check.dynamicMappingFound = true;
    const auto entry = MappingEntry::fromText(check.value(object.index, subIndex));
    const bool active = subIndex <= object.count;
    if (active)
        object.totalBits += entry.bits();
    if (entry.bits() > 0 && entry.bits() < bitsOfByte)
        check.bitwiseMappingFound = true;
    if (active && !entry.mapsObject())
        check.findings.error(emptyEntry.arg(indexText(object.index), QString::number(subIndex)),
                             check.at(object.index, subIndex));
    else if (entry.index() >= firstRealObject)
        checkMappedObject(object, subIndex, entry);
}

void checkEntries(MappingObject &object)
{
    const QList<quint8> subIndices = object.check.subIndices(object.index);
    for (const quint8 subIndex : subIndices)
        if (subIndex != 0)
            checkEntry(object, subIndex);
}

void checkSize(const MappingObject &object)
{
    if (object.totalBits > object.check.pdoSizeLimit)
        object.check.findings.error(pdoTooLong.arg(indexText(object.index)), object.where());
}

void checkCount(const MappingObject &object)
{
    const QList<quint8> subIndices = object.check.subIndices(object.index);
    const qsizetype entries = subIndices.size() - subIndices.count(0);
    if (object.count > entries && object.count <= mostEntries)
        object.check.findings.error(tooManyEntries.arg(indexText(object.index)), object.where());
}

/** The COB-ID with its "PDO is not valid" bit set; a text that holds no COB-ID stays as it is. */
QString disabledCobId(const QString &text)
{
    static const QRegularExpression pattern(u"(\\$nodeid\\+)*(0x[0-9A-Fa-f]+)"_s,
                                            QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = pattern.match(text);
    bool isNumber = false;
    const quint32 cobId = match.captured(2).toUInt(&isNumber, 16);
    if (!isNumber)
        return text;
    const QString disabled =
        cobId & cobIdInvalid ? match.captured(2) : u"0x%1"_s.arg(cobId | cobIdInvalid, 8, 16, QChar(u'0'));
    return match.captured(0) == match.captured(2) ? disabled : QString(match.captured(1) + disabled);
}

void disableEmptyPdo(const MappingObject &object)
{
    LineCheck &check = object.check;
    if (std::find(correctedObjects.begin(), correctedObjects.end(), object.index) == correctedObjects.end()
        || !isDynamicMapping(check, object.index) || object.count != 0 || check.disableAutoCorrection)
        return;
    const QString present = check.value(object.communication(), cobIdSubIndex);
    const QString disabled = disabledCobId(present);
    if (disabled == present
        || !check.store.setSubIndexDefault(check.line, object.communication(), cobIdSubIndex, disabled))
        return;
    check.findings.corrected(pdoDisabled.arg(indexText(object.communication()), disabled.toHtmlEscaped()),
                             check.at(object.communication(), cobIdSubIndex));
}

void checkMappingObject(LineCheck &check, quint16 index)
{
    MappingObject object = mappingObject(check, index);
    checkCommunicationObject(object);
    checkHasEntries(object);
    checkEntries(object);
    checkSize(object);
    checkCount(object);
    disableEmptyPdo(object);
}

} // namespace

void checkPdoMapping(LineCheck &check)
{
    for (const auto &[first, last] : mappingObjects) {
        const QList<quint16> indices = check.indices(first, last);
        for (const quint16 index : indices)
            checkMappingObject(check, index);
    }
}

void checkMappingGranularity(LineCheck &check)
{
    if (check.bitwiseMappingFound && check.granularity == bitsOfByte)
        check.findings.note(bitsInBytes, ProjectLocation::ofLine(check.line));
    if (check.bitwiseMappingFound && !check.bitwiseMapping)
        check.findings.error(bitwiseDisabled, ProjectLocation::ofSetting(u"bitwise_mapping"_s));
    // Headed as an error, but told only: it does not stop the generation.
    if (check.dynamicMappingFound && check.granularity == 0)
        check.findings.note(dynamicWithoutGranularity, ProjectLocation::ofLine(check.line));
}
