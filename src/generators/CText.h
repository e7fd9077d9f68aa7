#pragma once

#include <QByteArray>
#include <QString>

/** Texts of the project in C source: string values, comments and names of application variables. */
namespace CText {

/**
 * The bytes of a string value. Behind the mark "|x" stand two hexadecimal digits per byte (a pair that is
 * none counts as 0, half a pair at the end as nothing); any other text is its UTF-8 bytes.
 */
QByteArray stringBytes(const QString &text);

/**
 * A string value as a C string literal, quotation marks included, whose bytes are those of stringBytes.
 *
 * Plain text stands as it is. Quotation marks, backslashes, line ends, control characters, trigraphs and
 * non-ASCII bytes are escaped, and the literal is split where a digit would prolong a hexadecimal escape.
 */
QString literal(const QString &text);

/** One byte as an element of an array: "0x0a". */
QString byteElement(quint8 byte);
/** As byteElement, for an array of char; "(char)0xff" where char may have a sign. */
QString charElement(char byte);

/**
 * A text that can stand anywhere in a C comment: one line that neither ends the comment nor opens another,
 * does not end in a backslash and holds no marks that turn the direction of writing.
 */
QString comment(const QString &text);

/** The name of a sub-index's application variable, its variables expanded; the key is an ObjectKey. */
QString variableName(const QString &varname, quint32 key);

/** How the address of an application variable is taken. */
enum class Pointer : quint8 {
    Variable, ///< of the variable, unless the name is an expression
    Address, ///< of the variable, whatever the name
    FirstElement, ///< of the first element of an array
};

/** True for a name that yields a pointer by itself, such as a macro call. */
bool isExpression(const QString &name);
/** The address of a variable: "&(name)", or the name where it yields a pointer by itself. */
QString address(const QString &name, Pointer kind = Pointer::Variable);
/** The row of a pointer table without what follows it: a tab and the address of a variable. */
QString pointer(const QString &name, Pointer kind = Pointer::Variable);

} // namespace CText
