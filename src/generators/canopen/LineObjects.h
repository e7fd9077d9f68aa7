#pragma once

#include <QList>

class ObjectDataBase;

/**
 * Which objects and sub-indices a line has, and how their values are held; read with a few queries over
 * the whole line. Data types (below 0x1000) are no objects here.
 */
class LineObjects
{
public:
    struct SubIndex
    {
        quint16 index;
        quint8 number;
        int implementation; ///< see CANopen::ImplementationKind
    };

    LineObjects(ObjectDataBase &store, quint8 line);

    /** Ascending. */
    const QList<quint16> &indices() const { return m_indices; }
    /** Ascending by index and number. */
    const QList<SubIndex> &allSubIndices() const { return m_subIndices; }

    bool has(quint16 index) const;
    bool has(quint16 index, quint8 subIndex) const;
    /** Objects from `first` to `last` inclusive, ascending. */
    QList<quint16> range(quint16 first, quint16 last) const;
    quint32 count(quint16 first, quint16 last) const { return quint32(range(first, last).size()); }

    /** All sub-indices of an object; none where it does not exist. */
    QList<quint8> subIndices(quint16 index) const;
    quint32 subIndexCount(quint16 index) const { return quint32(subIndices(index).size()); }
    /** The sub-indices of an object that hold its entries: all but sub-index 0, which counts them. */
    QList<quint8> entries(quint16 index) const;
    quint32 entryCount(quint16 index) const { return quint32(entries(index).size()); }

private:
    QList<quint16> m_indices;
    QList<SubIndex> m_subIndices;
};
