#pragma once

#include <QString>
#include <QtGlobal>

#include <array>

namespace CANopen {

/** Object codes of CiA 301, in the numbers that EDS files and the project file hold. */
enum ObjectCode : quint8 {
    Null = 0,
    Domain = 2,
    Deftype = 5,
    Defstruct = 6,
    Var = 7,
    Array = 8,
    Record = 9,
};

/** Category of an object or sub-index (CiA 306-2); the stored number. */
enum ObjectCategory : quint8 {
    NoCategory = 0, ///< not given, or not understood
    Mandatory = 1,
    Optional = 2,
    Conditional = 3,
};

/** How the generated code holds the value of a sub-index, J1939 signal or raw CAN signal; the stored number.
 */
enum ImplementationKind : quint8 {
    ManagedVariable = 0, ///< the generated code owns a variable
    ManagedConst = 1, ///< the generated code owns a constant
    ApplicationVariable = 2, ///< the application owns the variable that is named
    VirtualObject = 3, ///< served by callbacks, no variable at all
};

/** An access type as the project stores it, and what a reader sees. */
struct AccessType
{
    const char *word;
    const char *label;
};

/** The access types of CiA 306; "rww" and "rwr" tell in which PDO direction a process value may go. */
inline constexpr std::array<AccessType, 6> accessTypes{{
    {"const", "Constant"},
    {"ro", "Read Only"},
    {"rw", "Read Write"},
    {"wo", "Write Only"},
    {"rww", "Read Write Write"},
    {"rwr", "Read Write Read"},
}};

/** What a reader sees of the categories Mandatory, Optional and Conditional, from the first number on. */
inline constexpr std::array<const char *, 3> categoryLabels{"Mandatory", "Optional", "Conditional"};

} // namespace CANopen
