#pragma once

#include <QString>
#include <QStringList>

/** Texts of a project in the form that a line of an EDS file can hold (CiA 306). */
namespace EdsText {

/** One line: line breaks and control characters, which would end or hide it, become blanks. */
QString line(const QString &text);

/** The lines of a text, each fit to stand behind a key; none for an empty text. */
QStringList lines(const QString &text);

/**
 * A name: of an object, a sub-index, the vendor. Quotation marks are put around it where a reader would drop
 * blanks at its ends or quotation marks of its own.
 */
QString name(const QString &text);

/**
 * A value of a data type. Texts are quoted as names are; a string with line breaks or control characters is
 * told by its bytes ("|x" and hexadecimal digits), as the project writes byte strings.
 */
QString value(const QString &text, int dataType);

/**
 * A text as comment lines without their line ends; lines are cut at the first blank behind 250 characters.
 */
QStringList comments(const QString &text);

/** Lines of a file of their own, with "\n" at the end of each but the last. */
QString section(const QString &text);

} // namespace EdsText
