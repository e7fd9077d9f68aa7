#pragma once

#include <QString>

struct ListedObject;

/**
 * The fields of tables of objects, as CsvImporter reads them.
 *
 * A row is one line. A line break in a description becomes the mark that the importer turns back, in any
 * other field it goes, as zero characters do everywhere.
 */
namespace CsvText {

/** A text without line breaks and zero characters. */
QString oneLine(const QString &text);
/**
 * A text of the project as a field of a table without quotes: a comma becomes a semicolon, and a leading
 * quote an apostrophe, as it would open a quoted field.
 */
QString plain(const QString &text);
/** A text as a field that loses nothing: with a comma in it or a leading quote it is quoted (RFC 4180). */
QString quoted(const QString &text);
/** A description as a quoted field, its line breaks as marks. */
QString description(const QString &text);

/** "0x1000" */
QString index(quint16 index);
/** The name of a data type; empty for a number that has none. */
QString dataType(int dataType);
/** "yes" or "no" */
QString flag(bool value);
/** How the value is held: "Variable", "ManagedConst", "ManagedVariable" or "VirtualObject". */
QString implementation(int implementation);
/** "ARRAY", "RECORD" or "VARIABLE" */
QString objectCode(const ListedObject &object);

} // namespace CsvText
