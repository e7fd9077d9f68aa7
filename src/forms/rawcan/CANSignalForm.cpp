#include "forms/rawcan/CANSignalForm.h"

#include "forms/SignalRows.h"

using namespace Qt::StringLiterals;

namespace {

/** Set in the stored number of a message whose identifier has 29 bits. */
constexpr quint32 extendedFlag = 0x80000000;

} // namespace

CANSignalForm::CANSignalForm(QWidget *parent)
    : RecordsForm({.records = tr("CAN-IDs"),
                   .noRecords = tr("This line has no raw CAN messages."),
                   .note = tr("Messages cannot be edited in this version.")},
                  {{.title = tr("CAN-ID"), .sample = u"000000000"_s},
                   {.title = tr("Hex"), .sample = u"0x00000000"_s},
                   {.title = tr("Frame"), .sample = tr("ext.")},
                   {.title = tr("Name")},
                   {.title = tr("Direction"), .sample = SignalRows::directionText(ObjectDataBase::Transmit)},
                   {.title = tr("Signals"), .sample = u"00"_s, .alignment = Qt::AlignRight},
                   {.title = tr("Cycle (ms)"), .sample = u"00000"_s, .alignment = Qt::AlignRight}},
                  {{.title = tr("Number"), .sample = u"000000"_s},
                   {.title = tr("Name")},
                   {.title = tr("Datatype"), .sample = u"UNSIGNED32"_s},
                   {.title = tr("Variable Name"), .sample = u"a_variable_name"_s},
                   {.title = tr("Position"), .sample = u"000"_s, .alignment = Qt::AlignRight},
                   {.title = tr("Bits"), .sample = u"000"_s, .alignment = Qt::AlignRight}},
                  parent)
{
}

QList<RowsModel::Row> CANSignalForm::readRecords(ObjectDataBase &store) const
{
    return readMessages(store, ObjectDataBase::Transmit) + readMessages(store, ObjectDataBase::Receive);
}

QList<RowsModel::Row> CANSignalForm::readMessages(ObjectDataBase &store, quint8 direction) const
{
    QList<RowsModel::Row> rows;
    const QList<quint32> numbers = store.getCANIDList(line(), direction);
    for (const quint32 number : numbers) {
        ObjectDataBase::CANID message;
        store.getCANID(line(), number, direction, message);
        const quint32 identifier = number & ~extendedFlag;
        rows.append({.cells = {QString::number(identifier), SignalRows::hexText(identifier),
                               number & extendedFlag ? tr("ext.") : QString(), message.name,
                               SignalRows::directionText(direction),
                               QString::number(store.getDataElementList(line(), number, direction).size()),
                               QString::number(message.cycletime_ms)},
                     .place = ProjectLocation::ofCanId(line(), number, direction),
                     .toolTip = message.desc});
    }
    return rows;
}

QList<RowsModel::Row> CANSignalForm::readParts(ObjectDataBase &store, const ProjectLocation &record) const
{
    QList<RowsModel::Row> rows;
    const QList<quint32> numbers = store.getDataElementList(record.line, record.number, record.direction);
    for (const quint32 number : numbers) {
        ObjectDataBase::DataElement signal;
        store.getDataElement(record.line, record.number, record.direction, number, signal);
        rows.append(
            {.cells = {QString::number(number), signal.name, SignalRows::dataTypeText(signal.datatype),
                       signal.varname, QString::number(signal.bitpos),
                       QString::number(SignalRows::bitCount(signal.datatype, signal.bitsize))},
             .place = ProjectLocation::ofDataElement(record.line, record.number, record.direction, number),
             .toolTip = signal.desc});
    }
    return rows;
}

bool CANSignalForm::lists(ProjectLocation::Kind kind) const
{
    return kind == ProjectLocation::Kind::CanId;
}

bool CANSignalForm::concernsRecords(int changeType) const
{
    switch (changeType) {
    case ObjectDataBase::CanIdChanged:
    case ObjectDataBase::CanIdRemoved:
    case ObjectDataBase::DataElementChanged:
        return true;
    default:
        return false;
    }
}
