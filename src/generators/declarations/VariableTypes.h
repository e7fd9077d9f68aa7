#pragma once

#include <QString>

/** C types of the variables that an application owns. */
namespace VariableTypes {

/**
 * The type of a variable of the object dictionary, to which the tables of gen_objdict.c point; empty for
 * data types that have no such table, and for blocks of data, which are found at run time.
 */
QString ofObject(int dataType);

/**
 * The type of a J1939 or raw CAN signal: the next one that holds it, as the stack moves its values in whole
 * bytes; of a text or block of data the type of one element. Empty where there is no such type.
 */
QString ofSignal(int dataType);

/** Whether variables are arrays whose size belongs to the project. */
bool isArray(int dataType);

} // namespace VariableTypes
