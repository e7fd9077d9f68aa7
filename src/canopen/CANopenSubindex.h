#pragma once

#include "canopen/CANopenTypes.h"

#include <QMetaType>
#include <QString>

/**
 * One sub-index as a device description tells it.
 *
 * Texts of values and limits are those of the file, brought into the form that projects use (see
 * normalizedEdsValue). The data type is the file's number, also where it has no name.
 */
class CANopenSubindex
{
public:
    quint16 index = 0;
    quint8 subIndex = 0;
    QString name;
    quint16 dataType = 0;
    QString accessType; ///< one of the words of CANopen::accessTypes
    QString defaultValue;
    QString parameterValue; ///< DCF only: the value of the commissioned device
    QString denotation; ///< DCF only: the name that the network's designer gave
    QString description; ///< from comment lines
    QString lowLimit;
    QString highLimit;
    quint32 objFlags = 0; ///< ObjFlags of CiA 306
    bool pdoMapping = false;
    bool hasLimits = false; ///< the file gives at least one limit; both are filled then
    int line = 0; ///< of its section in the file, for findings
};

namespace CANopen {

/** One object as a device description tells it. */
struct CANopenIndex
{
    quint16 index = 0;
    ObjectCode objectCode = Var;
    QString name;
    quint16 dataType = 0; ///< 0 where only the sub-indices have one
    /** SubNumber, sub-index 0 included; for a compact object the number of entries behind sub-index 0. */
    quint8 subIndexCount = 0;
    bool compact = false; ///< declared by CompactSubObj, without sections for its sub-indices
    quint32 objFlags = 0;
    QString denotation;
    QString description; ///< from comment lines; that of a variable is the one of its sub-index 0 too
    int line = 0; ///< of its section in the file, for findings
};

} // namespace CANopen

Q_DECLARE_METATYPE(CANopenSubindex)
Q_DECLARE_METATYPE(CANopen::CANopenIndex)
