#pragma once

#include "store/ObjectDataBase.h"

#include <QStringList>

/** The content of a line as text, to compare two projects row by row. */
namespace ProjectRows {

using Object = ObjectDataBase::INDEX_DATA_T;
using Sub = ObjectDataBase::SUBINDEX_DATA_T;

/** Takes out of a row what a format cannot carry. */
struct Reduction
{
    void (*object)(Object &) = nullptr;
    void (*sub)(Sub &) = nullptr;
};

inline QString text(const MetadataMap &metadata)
{
    QStringList entries;
    for (auto entry = metadata.begin(); entry != metadata.end(); ++entry)
        entries.append(entry.key() + u'=' + entry.value());
    return entries.join(u',');
}

inline QString text(const QList<int> &numbers, const QStringList &texts)
{
    QStringList all;
    for (const int number : numbers)
        all.append(QString::number(number));
    return (all + texts).join(QStringLiteral("' '"));
}

inline QString text(const Object &object)
{
    return text({object.datatype, object.objecttype, object.category, object.fwsupported},
                {object.name, object.description, object.device_class, text(object.metadata)});
}

inline QString text(const Sub &sub)
{
    return text({sub.datatype, sub.pdomapping.toUInt(), sub.size, sub.defaultineds, sub.writedefaulttoeds,
                 sub.limitineds, sub.refuseread, sub.refusewrite, sub.dcfcomponent, sub.cyclicread,
                 sub.implementation, sub.category, sub.changedbyuser, sub.wizardsource, sub.sharedlines,
                 sub.managedbylvx, sub.signalid, sub.nvstorage},
                {sub.name, sub.accesstype, sub.defaultvalue, sub.currentvalue, sub.lowlimit, sub.uplimit,
                 sub.allowedaccesstypes, sub.varname, sub.description, sub.denotation, text(sub.metadata)});
}

/** One text for each object and sub-index of line 0, in their order. */
inline QStringList all(ObjectDataBase &store, Reduction reduction = {})
{
    QStringList rows;
    const QList<quint16> indices = store.getIndexList(0, 0x1000);
    for (const quint16 index : indices) {
        Object object;
        store.getIndex(0, index, object);
        if (reduction.object)
            reduction.object(object);
        const QString place = QString::number(index, 16);
        rows.append(place + QStringLiteral(": ") + text(object));
        const QList<quint8> numbers = store.getSubIndexList(0, index);
        for (const quint8 number : numbers) {
            Sub sub;
            store.getSubIndex(0, index, number, sub);
            if (reduction.sub)
                reduction.sub(sub);
            rows.append(place + QStringLiteral("sub%1: ").arg(number, 0, 16) + text(sub));
        }
    }
    return rows;
}

/** The first row that differs; empty where none does. */
inline QString difference(const QStringList &first, const QStringList &second)
{
    for (qsizetype row = 0; row < qMax(first.size(), second.size()); ++row)
        if (first.value(row) != second.value(row))
            return QStringLiteral("row %1\n  before: %2\n  after:  %3")
                .arg(row)
                .arg(first.value(row, QStringLiteral("<none>")), second.value(row, QStringLiteral("<none>")));
    return {};
}

} // namespace ProjectRows
