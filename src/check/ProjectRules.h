#pragma once

#include <QList>

class CheckFindings;
class ObjectDataBase;

/** Lines of a project by what they carry; a line of two protocols counts under both heads. */
struct LineCounts
{
    int all = 0;
    int canopen = 0; ///< types 1 and 6
    int j1939 = 0; ///< types 2 and 7
    int mixed = 0; ///< type 5
    int rawCan = 0; ///< types 4, 6 and 7
};

/** The lines of the project in ascending order, without those that the store keeps for itself. */
QList<quint8> projectLines(ObjectDataBase &store);
LineCounts countLines(ObjectDataBase &store);

// Rules of the pass over the whole project, in the order of the console.
void checkUds(ObjectDataBase &store, CheckFindings &findings);
/** Clears the version that the hint was about, so that it is given once. */
void hintAtStackFiles(ObjectDataBase &store, CheckFindings &findings);
void checkProjectSettings(ObjectDataBase &store, CheckFindings &findings, const LineCounts &lines);
void checkNumericSettings(ObjectDataBase &store, CheckFindings &findings);

// Lines without CANopen.
void checkJ1939Settings(ObjectDataBase &store, CheckFindings &findings, quint8 line);
/** The groups of the list are the stack's own and may not be defined by a project. */
void checkParameterGroups(ObjectDataBase &store, CheckFindings &findings, quint8 line,
                          const QList<quint32> &reservedPgns);
void checkRawCanMessages(ObjectDataBase &store, CheckFindings &findings, quint8 line);
