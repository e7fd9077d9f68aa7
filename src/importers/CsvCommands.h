#pragma once

#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

class ObjectDataBase;

/** The copy and delete commands that a table of objects may carry besides its rows. */
namespace CsvCommands {

/** An object, or one of its sub-indices. */
struct Address
{
    quint16 index = 0;
    std::optional<quint8> subIndex;

    bool operator==(const Address &) const = default;
};

using Copy = QPair<Address, Address>; ///< source and destination
using Delete = Address;

constexpr qsizetype mostFields = 4;

/** A refused line is std::monostate. */
using Command = std::variant<std::monostate, Copy, Delete>;

/** Whether a line is a command by its first character, a small "c" or "d"; data rows begin with an index. */
bool isCommand(QStringView line);

/**
 * Reads the fields of a command line.
 *
 * "c, source, destination" copies an object, "c, index, source, destination" a sub-index within its
 * object, "d, index" and "d, index, sub-index" delete. Any other number of fields, a number that does not
 * convert, the index 0 and a sub-index copied onto itself are refused.
 */
Command parse(const QStringList &fields);

/** False, with a line in the log, when the line has no such source or the store refuses. */
bool apply(ObjectDataBase &store, quint8 line, const Copy &copy);
/** False, with a line in the log, when there is nothing to delete or the store refuses. */
bool apply(ObjectDataBase &store, quint8 line, const Delete &address);

} // namespace CsvCommands
