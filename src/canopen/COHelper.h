#pragma once

#include "canopen/CANTypes.h"
#include "canopen/CANopenTypes.h"
#include "canopen/PDOMapping.h"

#include <QMap>
#include <QString>

/**
 * Names and properties of data types, object codes, access types and categories.
 *
 * An unknown number gives an empty text and 0 bits, an unknown word the zero value of its type. All words
 * are read without regard to case and to blanks around them.
 */
class COHelper
{
public:
    /** Data type number to long name, for boxes that offer the types. */
    static const QMap<quint16, QString> stringDataTypeIndexMap;

    /** The long name: "UNSIGNED8", "VISIBLE_STRING". */
    static QString index2DataTypeString(quint16 dataType);
    /**
     * The name behind "CO_DTYPE_" in the stack's macros, in upper case: "U8", "I24", "R32", "B", "U2".
     * Its lower-case form names the value tables ("od_const_u8").
     */
    static QString index2DataTypeShortString(quint16 dataType);
    /** From a long name, or from a number as EDS files hold it ("7", "0x0007"). */
    static CAN::CANopenDataType mapDataTypeString(const QString &text);
    /** Width in bits; 0 for texts, DOMAIN and unknown types. */
    static quint8 getDataLengthBits(CAN::CANopenDataType dataType);
    /** Natural range of an integer type as decimal text; false and empty texts for types without range. */
    static bool getDefaultLimits(CAN::CANopenDataType dataType, QString &low, QString &up);

    static QString implementation2String(quint8 implementation);

    /** The word of CiA 306: "VAR", "ARRAY", "RECORD", "DOMAIN", "DEFTYPE", "DEFSTRUCT", "NULL". */
    static QString objectCode2String(CANopen::ObjectCode code);
    /** From a word or from a number ("0x7"); "VARIABLE" is VAR too. */
    static CANopen::ObjectCode string2objectCode(const QString &text);

    /** The label for documents: "Forbidden", "Allowed", "Default", "RPDO", "TPDO". */
    static QString pdoMapping2String(PDOMapping mapping);
    static CANopen::ObjectCategory convertCategory(const QString &text);
    /**
     * One of the words of CANopen::accessTypes, or an empty text.
     *
     * Takes the words of CiA 306, those of CiA 311 ("readWriteOutput"), the labels, and the short "R" and
     * "W" of some vendors; a remark behind ";" or "#" does not matter.
     */
    static QString normalizeAccessType(const QString &text);
    /** A name of a profile database in the form of the project: one blank between words, none around. */
    static QString convertDbNames(const QString &name);
    /** Long name of the data type that an EnergyBus table calls "UINT8", "SINT16", "BOOL", "STRING". */
    static QString convertEBType(const QString &type);
};
