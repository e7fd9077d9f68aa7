#pragma once

#include "forms/RowsModel.h"

/** What the signals of J1939 parameter groups and of raw CAN messages have in common as rows of a table. */
namespace SignalRows {

/** The title of a group of one direction: "Transmit", "Receive". */
QString directionText(quint8 direction);
/** Number of a group or message in hexadecimal digits: "0xfeca". */
QString hexText(quint32 number);
/** Name of a data type; the number of one that has no name. */
QString dataTypeText(int dataType);
/** Width of a signal: that of its type or, for texts, its own. */
int bitCount(int dataType, int ownBits);

} // namespace SignalRows
