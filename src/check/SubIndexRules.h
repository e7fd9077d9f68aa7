#pragma once

#include "store/ObjectDataBase.h"

class LineCheck;
struct SubIndexEntry;

/** All rules of one sub-index of an object with that object code, in the order of the console. */
void checkSubIndex(const LineCheck &check, const SubIndexEntry &entry, int objectCode);

/** False when the upper limit is a number that bounds, and the default value is outside of the limits. */
bool isInLimits(const ObjectDataBase::SUBINDEX_DATA_T &data);
/** Whether the text is one of the words of CiA 306 for an access type, letter case included. */
bool isAccessType(const QString &text);
/** False for a text with a blank or with what separates names; an empty one is not judged. */
bool isVariableName(const QString &text);
