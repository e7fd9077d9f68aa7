#pragma once

#include "app/LineType.h"

/** What a page of the main window is about, and with that for which lines it can be used. */
enum class PageKind {
    Always,
    CANopen,
    J1939,
    RawCan, ///< raw CAN and UDS
};

/** Whether a line of the type has a use for pages of the kind. */
inline bool isPageEnabled(PageKind kind, LineType type)
{
    switch (kind) {
    case PageKind::CANopen:
        return LineTypes::carriesCANopen(type);
    case PageKind::J1939:
        return LineTypes::carriesJ1939(type);
    case PageKind::RawCan:
        return LineTypes::carriesRawCan(type);
    case PageKind::Always:
        break;
    }
    return true;
}
