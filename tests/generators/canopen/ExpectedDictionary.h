#pragma once

#include <QStringList>

class ObjectDataBase;

/**
 * What the run-time of tests/stack has to print about a project, told from the project alone: nothing here
 * asks the generators or what they work with.
 */
namespace ExpectedDictionary {

/** The lines of all sub-indices, in the run-time's order and words (see od_runtime.h). */
QStringList objects(ObjectDataBase &store);
/** The calls that start the services and set COB-IDs, for a device without indications. */
QStringList calls(ObjectDataBase &store);
/** What becomes of a value written to every sub-index, and all variables behind that. */
QStringList writes(ObjectDataBase &store);

} // namespace ExpectedDictionary
