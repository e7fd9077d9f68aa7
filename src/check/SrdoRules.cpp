// Safety-relevant data objects (EN 50325-5).

#include "canopen/CANopenTypes.h"
#include "check/LineCheck.h"
#include "check/LineRules.h"
#include "check/MappingEntry.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView mappingMissing{
    "<strong>Error: </strong>Object 0x%1: The corresponding SRDO mapping object 0x%2 does not exist."};
constexpr QLatin1StringView mappedMissing{
    "<strong>Error: </strong>Object 0x%1: The object 0x%2:%3 mapped into an SRDO does not exist."};
constexpr QLatin1StringView notByApplication{
    "<strong>Error: </strong>Object 0x%1: The object 0x%2:%3 mapped into an SRDO must be an application "
    "variable."};
constexpr QLatin1StringView mappingForbidden{
    "<strong>Error: </strong>Object 0x%1: The PDO mapping must be enabled for object 0x%2:%3 to use it in an "
    "SRDO."};

constexpr quint16 firstCommunication = 0x1301;
constexpr quint16 lastCommunication = 0x1340;
/** From a communication object to the mapping object of its SRDO. */
constexpr quint16 mappingDistance = 0x80;
constexpr quint16 firstMapping = 0x1381;
/** The mapping of the last SRDO, 0x13C0, has always been left out. */
constexpr quint16 lastMapping = 0x13BF;

void checkEntry(const LineCheck &check, quint16 index, quint8 subIndex)
{
    const auto entry = MappingEntry::fromText(check.value(index, subIndex));
    const ProjectLocation where = check.at(index, subIndex);
    const auto text = [&](QLatin1StringView message) {
        return message.arg(indexText(index), indexText(entry.index()), QString::number(entry.subIndex()));
    };
    ObjectDataBase::SUBINDEX_DATA_T mapped;
    if (!check.read(entry.index(), entry.subIndex(), mapped)) {
        check.findings.error(text(mappedMissing), where);
        return;
    }
    if (mapped.implementation != CANopen::ApplicationVariable)
        check.findings.error(text(notByApplication), where);
    if (mapped.pdomapping == PDOMapping::Forbidden)
        check.findings.error(text(mappingForbidden), where);
}

void checkMappingObjects(const LineCheck &check)
{
    const QList<quint16> indices = check.indices(firstCommunication, lastCommunication);
    for (const quint16 index : indices) {
        const quint16 mapping = index + mappingDistance;
        if (!check.exists(mapping))
            check.findings.error(mappingMissing.arg(indexText(index), indexText(mapping)), check.at(index));
    }
}

void checkMappedObjects(const LineCheck &check)
{
    const QList<quint16> indices = check.indices(firstMapping, lastMapping);
    for (const quint16 index : indices) {
        const QList<quint8> subIndices = check.subIndices(index);
        for (const quint8 subIndex : subIndices)
            if (subIndex != 0)
                checkEntry(check, index, subIndex);
    }
}

} // namespace

void checkSrdo(LineCheck &check)
{
    checkMappingObjects(check);
    checkMappedObjects(check);
}
