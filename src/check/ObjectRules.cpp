// Every object of a line, with its sub-indices.

#include "canopen/CANopenTypes.h"
#include "check/LineCheck.h"
#include "check/LineRules.h"
#include "check/SubIndexRules.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView noSubIndices{
    "<strong>Error: </strong>Object 0x%1: This array does not contain any sub-indices"};
constexpr QLatin1StringView highestSubIndexCorrected{
    "<i>Corrected: Object 0x%1</i>: The value of subindex 0 does not fit to the highest subindex."};
constexpr QLatin1StringView defaultFlagMissing{
    "<strong>Error: </strong>Object 0x%1-0:The 'default value' flag must be set for this subindex."};
constexpr QLatin1StringView implementationCorrected{
    "<i>Corrected: Object 0x%1-0</i>:'Managed Const' is used as implementation type for this subindex."};
constexpr QLatin1StringView notInEds{
    "Warning: Object 0x%1-0:The defaultvalue of this subindex should be written into the EDS/XDD file."};
constexpr QLatin1StringView objectNameMissing{
    "<strong>Error: </strong>Object 0x%1: The object does not have a name. (Required for EDS)"};
constexpr QLatin1StringView variableIsStructured{
    "<strong>Error: </strong>Object 0x%1: The object is a VARIABLE but has multiple subindices."};

constexpr quint16 firstObject = 0x1000; // below stand the data types of CiA 301
constexpr quint16 errorHistory = 0x1003;
// From here on sub-index 0 of a mapping counts nothing (CiA 301: 254 and 255 are multiplexed PDOs).
constexpr quint64 firstSpecialMapping = 253;

/** The object that the rules below are asked about. */
struct Subject
{
    LineCheck &check;
    const ObjectEntry &object;
    const quint16 index = object.index;
    const std::span<const SubIndexEntry> entries = check.entries(object);

    bool isVariable() const { return object.objectCode == CANopen::Var; }
    QString text(QLatin1StringView message) const { return message.arg(indexText(index)); }
    void error(QLatin1StringView message) const { check.findings.error(text(message), check.at(index)); }
    /** Tells of a correction of sub-index 0, after it was made. */
    void corrected(QLatin1StringView message) const
    {
        check.refresh(index, 0);
        check.findings.corrected(text(message), check.at(index, 0));
    }
};

bool isPdoMapping(quint16 index)
{
    return (index >= 0x1600 && index <= 0x17FF) || (index >= 0x1A00 && index <= 0x1BFF);
}

/** Whether sub-index 0 must hold the number of the highest sub-index. */
bool isSubZeroCounted(const LineCheck &check, quint16 index)
{
    if (index == errorHistory)
        return false;
    if (!isPdoMapping(index))
        return true;
    return !isDynamicMapping(check, index) && unsignedValue(check.value(index, 0)) < firstSpecialMapping;
}

void correctHighestSubIndex(const Subject &subject)
{
    LineCheck &check = subject.check;
    const quint8 highest = subject.entries.back().subIndex;
    ObjectDataBase::SUBINDEX_DATA_T count;
    if (check.disableAutoCorrection || !check.read(subject.index, 0, count)
        || unsignedValue(count.defaultvalue) == highest || !isSubZeroCounted(check, subject.index))
        return;
    if (check.store.setSubIndexDefault(check.line, subject.index, 0, QString::number(highest)))
        subject.corrected(highestSubIndexCorrected);
}

void checkDefaultFlag(const Subject &subject)
{
    ObjectDataBase::SUBINDEX_DATA_T count;
    subject.check.read(subject.index, 0, count);
    if (!count.defaultineds && isSubZeroCounted(subject.check, subject.index))
        subject.check.findings.error(subject.text(defaultFlagMissing), subject.check.at(subject.index, 0));
}

void correctConstImplementation(const Subject &subject)
{
    LineCheck &check = subject.check;
    ObjectDataBase::SUBINDEX_DATA_T count;
    if (check.disableAutoCorrection || !check.read(subject.index, 0, count) || count.accesstype != "const"_L1
        || count.implementation == CANopen::ManagedConst || count.implementation == CANopen::VirtualObject
        || !isSubZeroCounted(check, subject.index))
        return;
    count.implementation = CANopen::ManagedConst;
    if (check.store.addSubIndex(check.line, subject.index, 0, count))
        subject.corrected(implementationCorrected);
}

void checkCountInEds(const Subject &subject)
{
    if (!subject.check.isDefaultInEds(subject.index, 0))
        subject.check.findings.note(subject.text(notInEds), subject.check.at(subject.index, 0));
}

void checkStructured(const Subject &subject)
{
    if (subject.isVariable())
        return;
    if (subject.entries.empty()) {
        subject.error(noSubIndices);
        return;
    }
    correctHighestSubIndex(subject);
    checkDefaultFlag(subject);
    correctConstImplementation(subject);
    checkCountInEds(subject);
}

void checkName(const Subject &subject)
{
    if (!subject.object.isNamed)
        subject.error(objectNameMissing);
}

void checkVariable(const Subject &subject)
{
    if (subject.isVariable() && subject.entries.size() > 1)
        subject.error(variableIsStructured);
}

void checkObject(LineCheck &check, const ObjectEntry &object)
{
    const Subject subject{.check = check, .object = object};
    checkStructured(subject);
    checkName(subject);
    checkVariable(subject);
    for (const SubIndexEntry &entry : subject.entries)
        checkSubIndex(check, entry, object.objectCode);
}

} // namespace

void checkObjects(LineCheck &check)
{
    for (const ObjectEntry &object : check.objects(firstObject)) {
        if (!check.serveEvents())
            return;
        checkObject(check, object);
    }
}
