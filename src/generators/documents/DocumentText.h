#pragma once

#include <QString>

struct ListedObject;
struct ListedSubIndex;

/** The values of documents that people read. */
namespace DocumentText {

/** Four hexadecimal digits. */
QString index(quint16 index);
/** Two hexadecimal digits. */
QString subIndex(quint8 number);
/** The name of a data type, or its number where it has none. */
QString dataType(int dataType);
/** The name of an object, its variables expanded. */
QString name(const ListedObject &object, quint8 line);
/** The name of a sub-index, its variables expanded. */
QString name(const ListedObject &object, const ListedSubIndex &sub, quint8 line);
/** A text with one kind of line break, "\n". */
QString lines(const QString &text);

} // namespace DocumentText
