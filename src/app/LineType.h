#pragma once

#include <QList>
#include <QString>

/** Protocols of a CAN line, as the setting "line<n>type" stores them. */
enum class LineType {
    CANopen = 1,
    J1939 = 2,
    RawCan = 4,
    CANopenAndJ1939 = 5,
    CANopenAndRawCan = 6,
    J1939AndRawCan = 7,
};

namespace LineTypes {

QList<LineType> all();
/** The type of a stored number; anything else counts as CANopen. */
LineType fromSetting(const QString &value);
QString toSetting(LineType type);
bool carriesCANopen(LineType type);
bool carriesJ1939(LineType type);
bool carriesRawCan(LineType type);
/** The short text of the tool bar. */
QString title(LineType type);
/** The text that names every protocol, for choices and tables. */
QString description(LineType type);

} // namespace LineTypes
