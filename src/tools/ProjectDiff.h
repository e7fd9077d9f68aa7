#pragma once

#include "tools/DiffFields.h"

#include <QList>
#include <QString>

#include <optional>

class ObjectDataBase;

/**
 * The comparison of two projects: a pure function of two stores, which writes to neither.
 *
 * Both sides are read in order and merged, so that the work grows with the number of records. What agrees
 * is left out of the result.
 */
namespace ProjectDiff {

enum class State {
    Equal, ///< its own fields agree; it stands in the result for a differing child only
    Different,
    OnlyCurrent,
    OnlyOther,
};

/** An object, PGN or CAN-ID with its differing sub-indices, SPNs or data elements as children. */
struct Item
{
    quint32 number = 0;
    quint8 direction = 0; ///< of a PGN or CAN-ID and of their children; 0 for objects
    QString name; ///< of the current project where both have the item
    State state = State::Equal;
    QList<Item> children;

    /** Not defaulted: g++ would ask whether children can be compared before it knows that they can. */
    bool operator==(const Item &other) const;
};

/** The place of an item: the number and direction of its parent, or its own when it is one. */
struct Address
{
    quint32 number = 0;
    quint8 direction = 0;
    std::optional<quint32> child;

    bool operator==(const Address &) const = default;
};

struct LineDifferences
{
    QList<Item> objects; ///< in ascending order of their indices
    QList<Item> pgns; ///< the transmitted ones in ascending order of their numbers, then the received ones
    QList<Item> canIds; ///< likewise

    bool operator==(const LineDifferences &) const = default;
};

struct Setting
{
    QString key;
    QString current;
    QString other; ///< empty where the other project lacks the key

    bool operator==(const Setting &) const = default;
};

struct Options
{
    DiffSelection selection;
    /**
     * The other project is what the EnergyBus configuration makes of the current one: only what that
     * configuration manages is compared.
     */
    bool isAfterApply = false;
};

/** The lines that at least one of the projects has, in ascending order; reserved ones do not count. */
QList<quint8> lines(ObjectDataBase &current, ObjectDataBase &other);

/** A line that one project lacks gives all its items as standing on the other side only. */
LineDifferences compareLine(ObjectDataBase &current, ObjectDataBase &other, quint8 line,
                            const Options &options);

/** The settings of the current project that have another value in the other one, by key. */
QList<Setting> compareGeneralSettings(ObjectDataBase &current, ObjectDataBase &other);
QList<Setting> compareJ1939Settings(ObjectDataBase &current, ObjectDataBase &other);

/** Every item in the lists counts, children and the parents that hold them alike. */
int count(const QList<Item> &items);
int count(const LineDifferences &line);

} // namespace ProjectDiff
