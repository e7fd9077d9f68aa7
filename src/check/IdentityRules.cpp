// The identity object, the error objects and what an NMT master needs (CiA 301, CiA 302-2).

#include "canopen/CANopenTypes.h"
#include "check/LineCheck.h"
#include "check/LineRules.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView inhibitTimeMissing{
    "Warning: Object 0x%1: The object 0x102A (NMT inhibit time) is highly recommended for masters. It may be "
    "added via 'Add Communication Service'."};
constexpr QLatin1StringView vendorIdEmpty{
    "<strong>Error: </strong>Object 0x%1-0x01: The value of subindex 1 (vendor-ID) is empty."};
constexpr QLatin1StringView vendorIdBorrowed{
    "<strong>Warning: Object 0x%1-0x01: The vendor-ID 0x2B7 (Korvel embedded communication GmbH) may not be "
    "used for production. </strong>"};
constexpr QLatin1StringView productCodeEmpty{
    "<strong>Error: </strong>Object 0x%1-0x02: The value of subindex 2 (product code) is empty."};
constexpr QLatin1StringView revisionEmpty{
    "<strong>Error: </strong>Object 0x%1-0x03: The value of subindex 3 (revision number) is empty."};
constexpr QLatin1StringView serialNumberConstant{
    "<strong>Warning</strong>: Object 0x%1: The implementation type of subindex 4 (serial number) is "
    "'Managed Const'. This is not useful in most cases."};
constexpr QLatin1StringView emcyObjectMissing{
    "<strong>Error: </strong>Object 0x%1: This object can only be used, if object 0x1014 exists as well."};
constexpr QLatin1StringView emcyConsumerZero{
    "<strong>Error: </strong>Object 0x%1-%2: The value of this sub index may not be 0x00000000."};
constexpr QLatin1StringView emcyRoutingIncomplete{"<strong>Error: </strong>Both EMCY producer objects and "
                                                  "EMCY consumer objects must be present to use EMCY "
                                                  "routing."};

constexpr quint16 errorHistory = 0x1003;
constexpr quint16 emcyCobId = 0x1014;
constexpr quint16 identity = 0x1018;
constexpr quint16 emcyConsumers = 0x1028;
constexpr quint16 nmtInhibitTime = 0x102A;
constexpr quint8 vendorId = 1;
constexpr quint8 productCode = 2;
constexpr quint8 revisionNumber = 3;
constexpr quint8 serialNumber = 4;
constexpr quint8 lastNodeId = 127;
/** The vendor-ID of the examples, which belongs to the maker of the stack. */
constexpr quint64 stackVendorId = 0x2B7;
constexpr quint64 nmtMaster = 1;
/** Lines behind this number are the store's own. */
constexpr quint8 endOfRoutedLines = 250;

void checkNmtInhibitTime(const LineCheck &check)
{
    if (unsignedValue(check.store.getGeneralSettingForLine(u"nmtmaster"_s, check.line)) == nmtMaster
        && !check.exists(nmtInhibitTime))
        check.findings.note(inhibitTimeMissing.arg(indexText(nmtInhibitTime)), check.at(nmtInhibitTime));
}

void checkVendorId(const LineCheck &check)
{
    const QString value = check.value(identity, vendorId);
    const ProjectLocation where = check.at(identity, vendorId);
    if (value.isEmpty())
        check.findings.error(vendorIdEmpty.arg(indexText(identity)), where);
    if (unsignedValue(value) == stackVendorId)
        check.findings.note(vendorIdBorrowed.arg(indexText(identity)), where);
}

void checkNotEmpty(const LineCheck &check, quint8 subIndex, QLatin1StringView message)
{
    if (check.exists(identity, subIndex) && check.value(identity, subIndex).isEmpty())
        check.findings.error(message.arg(indexText(identity)), check.at(identity, subIndex));
}

void checkSerialNumber(const LineCheck &check)
{
    ObjectDataBase::SUBINDEX_DATA_T sub;
    if (check.read(identity, serialNumber, sub) && sub.implementation == CANopen::ManagedConst)
        check.findings.note(serialNumberConstant.arg(indexText(identity)), check.at(identity, serialNumber));
}

void checkErrorHistory(const LineCheck &check)
{
    if (check.exists(errorHistory) && !check.exists(emcyCobId))
        check.findings.error(emcyObjectMissing.arg(indexText(errorHistory)), check.at(errorHistory));
}

void checkEmcyConsumers(const LineCheck &check)
{
    const QList<quint8> subIndices = check.subIndices(emcyConsumers);
    for (const quint8 subIndex : subIndices)
        if (subIndex >= 1 && subIndex <= lastNodeId
            && unsignedValue(check.value(emcyConsumers, subIndex)) == 0)
            check.findings.error(emcyConsumerZero.arg(indexText(emcyConsumers), QString::number(subIndex)),
                                 check.at(emcyConsumers, subIndex));
}

bool isObjectOnAnyLine(ObjectDataBase &store, quint16 index)
{
    const QList<quint8> lines = store.getLines();
    return std::any_of(lines.begin(), lines.end(), [&](quint8 line) {
        return line < endOfRoutedLines && store.indexExists(line, index);
    });
}

} // namespace

void checkIdentity(LineCheck &check)
{
    checkNmtInhibitTime(check);
    checkVendorId(check);
    checkNotEmpty(check, productCode, productCodeEmpty);
    checkNotEmpty(check, revisionNumber, revisionEmpty);
    checkSerialNumber(check);
    checkErrorHistory(check);
    checkEmcyConsumers(check);
}

void checkEmcyRouting(LineCheck &check)
{
    const QString key = u"emcy_routing"_s;
    if (check.emcyRoutingReported || unsignedValue(check.store.getGeneralSetting(key)) == 0)
        return;
    if (isObjectOnAnyLine(check.store, emcyCobId) && isObjectOnAnyLine(check.store, emcyConsumers))
        return;
    check.findings.error(emcyRoutingIncomplete, ProjectLocation::ofSetting(key));
    check.emcyRoutingReported = true;
}
