// Raw CAN messages and their signals.

#include "canopen/CANopenTypes.h"
#include "check/CheckFindings.h"
#include "check/LineCheck.h"
#include "check/ProjectRules.h"
#include "check/SignalLayout.h"
#include "store/ObjectDataBase.h"

#include <QHash>
#include <QScopeGuard>
#include <QSet>

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView inBothDirections{
    u"<strong>Warning: </strong>CAN-ID 0x%1 appears in both TX and RX \u2014 this is unusual and may be a "
    u"configuration error."};
constexpr QLatin1StringView notExtended{"<strong><font color='red'>Error: </font></strong> CAN-ID 0x%1 is "
                                        "higher then 0x7ff, but extended flag is "
                                        "not set."};
constexpr QLatin1StringView variableMissing{
    "<strong><font color='red'>Error: </font></strong> Variable name missing for signal # %1 in CAN-ID 0x%2"};
constexpr QLatin1StringView overlapping{
    "<strong><font color='red'>Error: </font></strong> Signal '%1' in CAN-ID 0x%2 overlaps with another "
    "signal in the same message."};
constexpr QLatin1StringView tooLong{
    "<strong><font color='red'>Error: </font></strong> CAN-ID 0x%1: signals require %2 bits but the maximum "
    "payload is %3 bits."};
constexpr QLatin1StringView variableTaken{
    "<strong>Warning: </strong>Signal %1 in CAN-ID 0x%2: variable name '%3' is already used by signal %4 in "
    "CAN-ID 0x%5."};

constexpr qint64 classicalPayload = 64; ///< bits
constexpr qint64 fdPayload = 512; ///< bits
/** Marks an identifier of 29 bits; one without it has 11. */
constexpr quint32 extendedFlag = 0x80000000;
constexpr quint32 lastBaseIdentifier = 0x7FF;

using Signal = ObjectDataBase::DataElement;

struct RawCanLine
{
    ObjectDataBase &store;
    CheckFindings &findings;
    const quint8 line;
    const qint64 payload; ///< bits of a frame
    QHash<QString, SignalPlace> variables{}; ///< application variables and the first signal that uses each
};

struct Message
{
    quint32 canId = 0;
    quint8 direction = 0;
    QList<std::pair<quint32, Signal>> signalList{}; ///< by number
};

QString hexText(quint32 canId)
{
    return QString::number(canId, 16);
}

/** The name by which the overlap is told; a signal may have none. */
QString shownName(quint32 number, const Signal &data)
{
    return data.name.isEmpty() ? QString::number(number) : data.name;
}

ProjectLocation signalLocation(const RawCanLine &line, const Message &message, quint32 number)
{
    return ProjectLocation::ofDataElement(line.line, message.canId, message.direction, number);
}

Message readMessage(ObjectDataBase &store, quint8 line, quint32 canId, quint8 direction)
{
    Message message{.canId = canId, .direction = direction};
    const QList<quint32> numbers = store.getDataElementList(line, canId, direction);
    for (const quint32 number : numbers) {
        Signal data;
        store.getDataElement(line, canId, direction, number, data);
        message.signalList.append({number, data});
    }
    return message;
}

void checkDirections(const RawCanLine &line)
{
    const QList<quint32> transmitted = line.store.getCANIDList(line.line, ObjectDataBase::Transmit);
    const QList<quint32> received = line.store.getCANIDList(line.line, ObjectDataBase::Receive);
    const QSet<quint32> receivedIds(received.begin(), received.end());
    for (const quint32 canId : transmitted)
        if (receivedIds.contains(canId))
            line.findings.note(inBothDirections.arg(hexText(canId)),
                               ProjectLocation::ofCanId(line.line, canId, ObjectDataBase::Transmit));
}

void checkIdentifier(const RawCanLine &line, const Message &message)
{
    if (!(message.canId & extendedFlag) && message.canId > lastBaseIdentifier)
        line.findings.error(notExtended.arg(hexText(message.canId)),
                            ProjectLocation::ofCanId(line.line, message.canId, message.direction));
}

bool isApplicationVariable(const Signal &data)
{
    return data.implementation == CANopen::ApplicationVariable;
}

void checkVariableNames(const RawCanLine &line, const Message &message)
{
    for (const auto &[number, data] : message.signalList)
        if (isApplicationVariable(data) && data.varname.trimmed().isEmpty())
            line.findings.error(variableMissing.arg(QString::number(number), hexText(message.canId)),
                                signalLocation(line, message, number));
}

void checkOverlaps(const RawCanLine &line, const Message &message)
{
    OccupiedBits occupied;
    for (const auto &[number, data] : message.signalList)
        if (!occupied.take(data.bitpos, signalBits(data.datatype, data.bitsize)))
            line.findings.error(
                overlapping.arg(shownName(number, data).toHtmlEscaped(), hexText(message.canId)),
                signalLocation(line, message, number));
}

void checkLength(const RawCanLine &line, const Message &message)
{
    qint64 bits = 0;
    for (const auto &numbered : message.signalList)
        bits += signalBits(numbered.second.datatype, numbered.second.bitsize);
    if (bits > line.payload)
        line.findings.error(
            tooLong.arg(hexText(message.canId), QString::number(bits), QString::number(line.payload)),
            ProjectLocation::ofCanId(line.line, message.canId, message.direction));
}

void checkVariableUse(RawCanLine &line, const Message &message)
{
    for (const auto &[number, data] : message.signalList) {
        const QString name = data.varname.trimmed();
        if (!isApplicationVariable(data) || name.isEmpty())
            continue;
        const auto owner = line.variables.constFind(name);
        if (owner == line.variables.constEnd())
            line.variables.insert(name, {.message = message.canId, .signal = number});
        else
            line.findings.note(variableTaken.arg(QString::number(number), hexText(message.canId),
                                                 name.toHtmlEscaped(), QString::number(owner->signal),
                                                 hexText(owner->message)),
                               signalLocation(line, message, number));
    }
}

void checkMessage(RawCanLine &line, const Message &message)
{
    checkIdentifier(line, message);
    checkVariableNames(line, message);
    checkOverlaps(line, message);
    checkLength(line, message);
    checkVariableUse(line, message);
}

} // namespace

void checkRawCanMessages(ObjectDataBase &store, CheckFindings &findings, quint8 line)
{
    const bool canFd = unsignedValue(store.getGeneralSetting(u"canfd_supported"_s)) == 1;
    RawCanLine check{
        .store = store, .findings = findings, .line = line, .payload = canFd ? fdPayload : classicalPayload};
    checkDirections(check);
    store.cacheAllDataElements(line);
    const auto clear = qScopeGuard([&store] { store.clearDataElementCache(); });
    for (const quint8 direction : {ObjectDataBase::Receive, ObjectDataBase::Transmit}) {
        const QList<quint32> canIds = store.getCANIDList(line, direction);
        for (const quint32 canId : canIds)
            checkMessage(check, readMessage(store, line, canId, direction));
    }
}
