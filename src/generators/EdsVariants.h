#pragma once

#include <QStringList>

class ObjectDataBase;

/**
 * The names of the device descriptions of a line: the empty name first, then each value of the metadata
 * key "eds_define" in the order in which objects and their sub-indices first name it.
 */
QStringList edsVariants(ObjectDataBase &store, quint8 line);
