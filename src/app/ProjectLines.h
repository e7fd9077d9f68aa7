#pragma once

#include "app/LineType.h"

#include <QList>

#include <optional>

class ObjectDataBase;

/**
 * The CAN lines of a project as the user adds, duplicates and removes them.
 *
 * It asks nobody; which questions stand before an operation is the window's matter. The reserved lines
 * (clipboard, reference) do not count.
 */
class ProjectLines
{
public:
    explicit ProjectLines(ObjectDataBase &store) : m_store(store) { }

    /** Numbers of the lines in ascending order. */
    QList<quint8> numbers() const;
    bool isFull() const;
    /** The number that the next line gets; nothing when the project is full. */
    std::optional<quint8> nextNumber() const;
    LineType type(quint8 line) const;
    void setType(quint8 line, LineType type);

    /**
     * Adds a line. One with CANopen gets the communication objects of line 0, or, when line 0 has none,
     * the basic objects of the reference store. Nothing when the project is full or a write failed.
     */
    std::optional<quint8> add(LineType type, ObjectDataBase *reference);
    /** Adds a copy of the last line; nothing when the project is full, empty or a write failed. */
    std::optional<quint8> duplicateLast();
    /** Removes a line and its settings; the only line stays. Gives the line to be shown next. */
    std::optional<quint8> remove(quint8 line);

private:
    std::optional<quint8> addNode(LineType type);
    void copyBasicObjects(quint8 line, ObjectDataBase *reference);

    ObjectDataBase &m_store;
};
