// Objects that CiA 301 and CiA 1301 ask for, lists without gaps, and objects that need one another.

#include "canopen/CANopenTypes.h"
#include "check/LineCheck.h"
#include "check/LineRules.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView deviceTypeNotArray{"<strong>Error: </strong>Object 0x%1 (Device Type) must be an "
                                               "ARRAY according to the CANopen FD specification."};
constexpr QLatin1StringView deviceTypeNotVariable{"<strong>Error: </strong>Object 0x%1 (Device Type) must be "
                                                  "a VARIABLE according to the CANopen specification."};
constexpr QLatin1StringView deviceTypeMissing{
    "<strong>Error: </strong>Object 0x%1 (Device Type) does not exist, but it is mandatory according to "
    "CANopen specification."};
constexpr QLatin1StringView errorRegisterMissing{
    "<strong>Error: </strong>Object 0x%1 (Error Register) does not exist, but it is mandatory according to "
    "CANopen specification."};
constexpr QLatin1StringView errorControlMissing{
    "<strong>Error: </strong>Object 0x%1 (Producer Heartbeat) and 0x100C (Guard Time) do not exist, but one "
    "of them is mandatory."};
constexpr QLatin1StringView tooManySlaves{
    "<strong>Error: </strong>Object 0x1f81: Value of 'max slave Assigment count' may not exceed number of "
    "subindices of object 0x1f81."};
constexpr QLatin1StringView listIsEmpty{
    "<strong>Error: </strong>Object 0x%1 does not contain any sub-indices."};
constexpr QLatin1StringView listHasGaps{"<strong>Error: </strong>Object 0x%1 may not have gaps."};
constexpr QLatin1StringView syncPeriodMissing{
    "<strong>Error: </strong>Object 0x1006 must be present, if SYNC producer bit is set in object 0x1005."};
constexpr QLatin1StringView noUsdoServer{
    "<strong>Error: </strong>Number of USDO server connections must be at least 1."};
constexpr QLatin1StringView storeValueAboveThree{
    "<strong>Error: </strong>Object 0x%1:%2 only default values between 0 and 3 are supported."};
constexpr QLatin1StringView storeValueAboveOne{
    "<strong>Error: </strong>Object 0x%1:%2 only default values between 0 and 1 are supported. Enable "
    "CO_AUTO_STORE_HANDLED_BY_APPLICATION to support other values"};

enum Index : quint16 {
    DeviceType = 0x1000,
    ErrorRegister = 0x1001,
    SyncCobId = 0x1005,
    SyncPeriod = 0x1006,
    GuardTime = 0x100C,
    StoreParameters = 0x1010,
    RestoreParameters = 0x1011,
    ConsumerHeartbeat = 0x1016,
    ProducerHeartbeat = 0x1017,
    EmergencyConsumer = 0x1028,
    SlaveAssignment = 0x1F81,
};

constexpr quint64 syncProducerBit = 1U << 30;

/** Sub-indices behind sub-index 0. */
QList<quint8> entries(const LineCheck &check, quint16 index)
{
    QList<quint8> subIndices = check.subIndices(index);
    subIndices.removeAll(0);
    return subIndices;
}

void checkDeviceType(LineCheck &check)
{
    ObjectDataBase::INDEX_DATA_T object;
    check.store.getIndex(check.line, DeviceType, object);
    if (object.objecttype != (check.canFd ? CANopen::Array : CANopen::Var))
        check.findings.error(
            (check.canFd ? deviceTypeNotArray : deviceTypeNotVariable).arg(indexText(DeviceType)),
            check.at(DeviceType));
    if (!check.exists(DeviceType))
        check.findings.error(deviceTypeMissing.arg(indexText(DeviceType)), check.at(DeviceType));
}

void checkErrorRegister(LineCheck &check)
{
    if (!check.exists(ErrorRegister))
        check.findings.error(errorRegisterMissing.arg(indexText(ErrorRegister)), check.at(ErrorRegister));
}

void checkErrorControl(LineCheck &check)
{
    if (!check.exists(ProducerHeartbeat) && !check.exists(GuardTime))
        check.findings.error(errorControlMissing.arg(indexText(ProducerHeartbeat)),
                             check.at(ProducerHeartbeat));
}

void checkSlaveAssignment(LineCheck &check)
{
    if (!check.exists(SlaveAssignment))
        return;
    const quint64 slaves = check.store.getGeneralSetting(u"max_slave_assignment"_s).trimmed().toULongLong();
    if (slaves > quint64(entries(check, SlaveAssignment).size()))
        check.findings.error(tooManySlaves, check.at(SlaveAssignment));
}

void checkListForGaps(LineCheck &check, quint16 index)
{
    const QList<quint8> subIndices = entries(check, index);
    if (subIndices.isEmpty())
        check.findings.error(listIsEmpty.arg(indexText(index)), check.at(index));
    else if (subIndices.last() != subIndices.size())
        check.findings.error(listHasGaps.arg(indexText(index)), check.at(index));
}

void checkSyncProducer(LineCheck &check)
{
    if ((unsignedValue(check.value(SyncCobId, 0)) & syncProducerBit) && !check.exists(SyncPeriod))
        check.findings.error(syncPeriodMissing, check.at(SyncCobId, 0));
}

void checkUsdoServer(LineCheck &check)
{
    const auto setting = [&](const QString &key) {
        return check.store.getGeneralSettingForLine(key, check.line);
    };
    const QString count = u"usdo_server_cnt"_s;
    if (check.canFd && setting(u"usdo_server_enabled"_s) == "1"_L1 && unsignedValue(setting(count)) == 0)
        check.findings.error(noUsdoServer, ProjectLocation::ofSetting(count));
}

void checkStoreValue(LineCheck &check, bool isAutoStoredByApplication, quint16 index, quint8 subIndex)
{
    // CiA 301, bits 0 and 1: saves on command, saves on its own. An empty text reads as 0.
    const quint64 allowed = isAutoStoredByApplication ? 3 : 1;
    if (unsignedValue(check.value(index, subIndex)) > allowed)
        check.findings.error((isAutoStoredByApplication ? storeValueAboveThree : storeValueAboveOne)
                                 .arg(indexText(index), QString::number(subIndex)),
                             check.at(index, subIndex));
}

void checkStoreAndRestore(LineCheck &check)
{
    const bool byApplication = check.store.getGeneralSetting(u"1010autostore_by_application"_s).toInt() != 0;
    for (const quint16 index : {StoreParameters, RestoreParameters})
        for (const quint8 subIndex : {1, 2, 3})
            checkStoreValue(check, byApplication, index, subIndex);
}

} // namespace

void checkMandatoryObjects(LineCheck &check)
{
    checkDeviceType(check);
    checkErrorRegister(check);
    checkErrorControl(check);
    checkSlaveAssignment(check);
}

void checkGaps(LineCheck &check)
{
    for (const quint16 index : {ConsumerHeartbeat, EmergencyConsumer, SlaveAssignment})
        if (check.exists(index))
            checkListForGaps(check, index);
}

void checkSyncUsdoAndStore(LineCheck &check)
{
    checkSyncProducer(check);
    checkUsdoServer(check);
    checkStoreAndRestore(check);
}
