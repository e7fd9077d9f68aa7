#pragma once

#include <QString>

/** A value of a device description in the form of the project. */
struct EdsValue
{
    QString text;
    QString remark; ///< what was assumed or does not fit; empty for a value in good form
    bool usable = true; ///< false where the text is no value of its type; it is kept as it stands
};

/**
 * Brings a default value, parameter value or limit into the form that the project holds.
 *
 * Values of integer types: a remark behind ";" or "#" goes; "12h", bare hexadecimal digits and numbers with
 * a C suffix become plain "0x" numbers; every spelling and order of a node-ID sum becomes "$NODEID+0x180".
 * Decimal digits that cannot be octal lose leading zeros. The bit patterns of negative and of floating-point
 * values become decimal numbers.
 * Values of texts lose quotation marks around the whole. Everything else stays as it is.
 */
EdsValue normalizedEdsValue(const QString &value, quint16 dataType);

/** The part of a value before a remark behind ";" or "#". */
QString withoutEdsRemark(const QString &value);
