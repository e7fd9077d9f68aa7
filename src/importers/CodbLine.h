#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <variant>

/**
 * One line of an object database in the colon-separated form of CiA 306-2.
 *
 * A line that is no record (empty, comment, damaged) is std::monostate.
 */
namespace CodbLine {

/** "$aaaa=bbbb": object aaaa has the structure of object bbbb. */
struct Copy
{
    quint16 target = 0;
    quint16 source = 0;
};

/** An object, or a sub-index where there is a number for one. Values are as the project holds them. */
struct Record
{
    quint16 index = 0;
    std::optional<quint8> subIndex;
    QString name;
    int category = 0;
    int objectCode = 0; ///< of the object, where the row describes one
    int dataType = 0;
    QString accessType; ///< "ro" where none is given
    QString lowLimit;
    QString highLimit;
    QString defaultValue;
    bool mappable = false;
};

using Line = std::variant<std::monostate, Copy, Record>;

/** Reads one line of Latin-1 bytes, without its line end. */
Line parse(const QByteArray &bytes);

} // namespace CodbLine
