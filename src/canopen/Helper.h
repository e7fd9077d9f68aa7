#pragma once

#include <QByteArray>
#include <QString>

/** Text and file helpers of the generators and importers. */
class Helper
{
public:
    /** Stands for a line break inside a description of a CSV file. */
    static constexpr const char *csvDescLinebreak = "<br>";

    /**
     * Expands the variables of an object name or variable name.
     *
     * $i and $s are index and sub-index in decimal, $I and $S in lower-case hexadecimal digits without
     * prefix and padding, $z is the sub-index less 1, $l and $L the line number in decimal. Then each
     * innermost pair of braces that holds a calculation becomes its result in decimal (see
     * evaluateExpression); braces that hold anything else stay. "$NODEID" is no variable of a name and
     * stays, as does "$" before any other letter.
     */
    static QString substituteVariables(const QString &text, quint16 index, quint8 subindex, quint8 line);

    /**
     * Puts "u" behind every decimal or hexadecimal number of a comma-separated list, for unsigned C
     * literals (MISRA C). Elements that are no plain number, and blanks and braces, stay as they are.
     */
    static QString addLowerCaseUtoNumberLists(const QString &list);

    /** The UTF-8 bytes as elements of a C array: "0x47,0xc3,0xa4"; no terminating zero. */
    static QString UTF8String2ArrayString(const QString &text);
    static QByteArray UTF8String2ByteArray(const QString &text);

    /**
     * Gives all lines of a file one ending; CR LF, LF and CR all count as the end of a line.
     *
     * An empty ending changes nothing. A file whose content is right already is not written. False, with
     * the file as it was, where it does not exist or cannot be read or replaced.
     */
    static bool modifyLineEnding(const QString &file, const QString &ending);
};
