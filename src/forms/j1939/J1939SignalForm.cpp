#include "forms/j1939/J1939SignalForm.h"

#include "forms/SignalRows.h"

using namespace Qt::StringLiterals;

namespace {

/** Address claimed (SAE J1939-81): the stack sends it, so it is none of the project's own groups. */
constexpr quint32 addressClaimed = 60928;

} // namespace

J1939SignalForm::J1939SignalForm(QWidget *parent)
    : RecordsForm({.records = tr("PGNs"),
                   .noRecords = tr("This line has no parameter groups."),
                   .note = tr("Parameter groups cannot be edited in this version.")},
                  {{.title = tr("PGN"), .sample = u"000000"_s},
                   {.title = tr("Hex"), .sample = u"0x00000"_s},
                   {.title = tr("Name")},
                   {.title = tr("Direction"), .sample = SignalRows::directionText(ObjectDataBase::Transmit)},
                   {.title = tr("SPNs"), .sample = u"00"_s, .alignment = Qt::AlignRight},
                   {.title = tr("Cycle (ms)"), .sample = u"00000"_s, .alignment = Qt::AlignRight}},
                  {{.title = tr("SPN"), .sample = u"000000"_s},
                   {.title = tr("Name")},
                   {.title = tr("Datatype"), .sample = u"UNSIGNED32"_s},
                   {.title = tr("Variable"), .sample = u"a_variable_name"_s},
                   {.title = tr("Position"), .sample = u"0000"_s, .alignment = Qt::AlignRight},
                   {.title = tr("Bits"), .sample = u"0000"_s, .alignment = Qt::AlignRight}},
                  parent)
{
}

QList<RowsModel::Row> J1939SignalForm::readRecords(ObjectDataBase &store) const
{
    return readGroups(store, ObjectDataBase::Transmit) + readGroups(store, ObjectDataBase::Receive);
}

QList<RowsModel::Row> J1939SignalForm::readGroups(ObjectDataBase &store, quint8 direction) const
{
    QList<RowsModel::Row> rows;
    const QList<quint32> numbers = store.getPGNList(line(), direction);
    for (const quint32 number : numbers) {
        if (number == addressClaimed && direction == ObjectDataBase::Transmit)
            continue;
        ObjectDataBase::PGN group;
        store.getPGN(line(), number, direction, group);
        rows.append({.cells = {QString::number(number), SignalRows::hexText(number), group.name,
                               SignalRows::directionText(direction),
                               QString::number(store.getSPNList(line(), number, direction).size()),
                               QString::number(group.cycletime_ms)},
                     .place = ProjectLocation::ofPgn(line(), number, direction),
                     .toolTip = group.desc});
    }
    return rows;
}

QList<RowsModel::Row> J1939SignalForm::readParts(ObjectDataBase &store, const ProjectLocation &record) const
{
    QList<RowsModel::Row> rows;
    const QList<quint32> numbers = store.getSPNList(record.line, record.number, record.direction);
    for (const quint32 number : numbers) {
        ObjectDataBase::SPN signal;
        store.getSPN(record.line, record.number, record.direction, number, signal);
        rows.append(
            {.cells = {QString::number(number), signal.name, SignalRows::dataTypeText(signal.datatype),
                       signal.varname, QString::number(signal.bitposition),
                       QString::number(SignalRows::bitCount(signal.datatype, signal.bitsize))},
             .place = ProjectLocation::ofSpn(record.line, record.number, record.direction, number),
             .toolTip = signal.desc});
    }
    return rows;
}

bool J1939SignalForm::lists(ProjectLocation::Kind kind) const
{
    return kind == ProjectLocation::Kind::Pgn;
}

bool J1939SignalForm::concernsRecords(int changeType) const
{
    switch (changeType) {
    case ObjectDataBase::PgnChanged:
    case ObjectDataBase::PgnRemoved:
    case ObjectDataBase::SpnChanged:
    case ObjectDataBase::SpnRemoved:
        return true;
    default:
        return false;
    }
}
