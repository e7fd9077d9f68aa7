#include "app/LineType.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace {

struct Row
{
    LineType type;
    bool canopen;
    bool j1939;
    bool rawCan;
    const char *title;
    const char *description;
};

constexpr std::array rows{
    Row{LineType::CANopen, true, false, false, QT_TRANSLATE_NOOP("LineTypes", "CANopen"),
        QT_TRANSLATE_NOOP("LineTypes", "CANopen")},
    Row{LineType::J1939, false, true, false, QT_TRANSLATE_NOOP("LineTypes", "J1939"),
        QT_TRANSLATE_NOOP("LineTypes", "J1939")},
    Row{LineType::RawCan, false, false, true, QT_TRANSLATE_NOOP("LineTypes", "raw CAN"),
        QT_TRANSLATE_NOOP("LineTypes", "Raw CAN")},
    Row{LineType::CANopenAndJ1939, true, true, false, QT_TRANSLATE_NOOP("LineTypes", "both"),
        QT_TRANSLATE_NOOP("LineTypes", "CANopen and J1939")},
    Row{LineType::CANopenAndRawCan, true, false, true, QT_TRANSLATE_NOOP("LineTypes", "CANopen + CAN"),
        QT_TRANSLATE_NOOP("LineTypes", "CANopen and raw CAN")},
    Row{LineType::J1939AndRawCan, false, true, true, QT_TRANSLATE_NOOP("LineTypes", "J1939 + CAN"),
        QT_TRANSLATE_NOOP("LineTypes", "J1939 and raw CAN")},
};

const Row &rowOf(LineType type)
{
    return *std::ranges::find(rows, type, &Row::type);
}

} // namespace

QList<LineType> LineTypes::all()
{
    QList<LineType> types;
    for (const Row &row : rows)
        types.append(row.type);
    return types;
}

LineType LineTypes::fromSetting(const QString &value)
{
    const int number = value.toInt();
    const auto *row = std::ranges::find(rows, number, [](const Row &r) { return int(r.type); });
    return row == rows.end() ? LineType::CANopen : row->type;
}

QString LineTypes::toSetting(LineType type)
{
    return QString::number(int(type));
}

bool LineTypes::carriesCANopen(LineType type)
{
    return rowOf(type).canopen;
}

bool LineTypes::carriesJ1939(LineType type)
{
    return rowOf(type).j1939;
}

bool LineTypes::carriesRawCan(LineType type)
{
    return rowOf(type).rawCan;
}

QString LineTypes::title(LineType type)
{
    return QCoreApplication::translate("LineTypes", rowOf(type).title);
}

QString LineTypes::description(LineType type)
{
    return QCoreApplication::translate("LineTypes", rowOf(type).description);
}
