#pragma once

#include <QList>
#include <QString>
#include <QStringView>

/** Names of C defines made from texts of the project. */
namespace DefineNames {

/** A define that asks for a name. */
struct Request
{
    QString name; ///< a C identifier
    quint32 number = 0; ///< what the name stands for
    QString value; ///< the number as the file has it
    QString place; ///< tells it from others of the same name: digits, letters and underscores
};

/** A define as it is written. */
struct Define
{
    QString name;
    QString value;

    bool operator==(const Define &) const = default;
};

/**
 * A C identifier: the prefix and the text, where every run of characters that a C name cannot hold, and of
 * underscores, becomes one underscore.
 */
QString identifier(QStringView prefix, QStringView text);

/**
 * Gives every define a name of its own, in the order of the requests.
 *
 * A name that is asked for one number only is written once. A name that is asked for several numbers would
 * mean now this and now that one: all of these defines bear their places behind the name. Code that uses
 * such a name without a place therefore does not compile, whichever object came last. A reserved name
 * counts as asked for its number and is not written.
 */
QList<Define> resolve(const QList<Request> &requests, const Request &reserved = {});

} // namespace DefineNames
