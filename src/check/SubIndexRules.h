#pragma once

class LineCheck;
struct SubIndexEntry;

/** All rules of one sub-index of an object with that object code, in the order of the console. */
void checkSubIndex(const LineCheck &check, const SubIndexEntry &entry, int objectCode);
