#pragma once

#include "generators/canopen/DefineView.h"
#include "store/ObjectDataBase.h"

#include <array>

class SettingValues;

/** What the settings of a project say about the start of the stack, beside its object dictionary. */
struct StackInitSettings
{
    /** What may differ from line to line. */
    struct Line
    {
        NmtRole nmtRole = NmtRole::Slave;
        bool hasUsdoClient = false; ///< only on CAN FD
        bool hasIsoTp = false;
        bool overwritesCobIds = false; ///< the application may set the project's COB-IDs when it starts
    };

    std::array<Line, ObjectDataBase::MaximumLines> lines;
    bool hasLeds = false; ///< some function wants to know of the indicator LEDs
    bool hasLss = false;
    bool hasIdNegotiation = false;
    bool hasBootupManager = false;
    bool hasStaticLoadFunction = false; ///< fixed at compile time, so that the start function takes none

    static StackInitSettings read(const SettingValues &general, bool canFd);

    /** A number behind the stack's last line counts as a line without services. */
    Line line(quint8 number) const { return number < lines.size() ? lines[number] : Line(); }
};
