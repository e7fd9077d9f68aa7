#pragma once

#include <QString>

class Dialect;

/**
 * The stack's macro of a data type ("CORE_DTYPE_U8").
 *
 * The bit string types are bytes there. A type without a name, which the stack cannot serve, is the one
 * without numbers.
 */
QString typeMacro(int dataType, const Dialect &dialect);
