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

inline QString text(const Object &object)
{
    return QStringLiteral(
               "name '%1' type %2 code %3 description '%4' category %5 class '%6' fw %7 metadata %8")
        .arg(object.name)
        .arg(object.datatype)
        .arg(object.objecttype)
        .arg(object.description)
        .arg(object.category)
        .arg(object.device_class)
        .arg(object.fwsupported)
        .arg(object.metadata.keys().join(u' ') + u'=' + object.metadata.values().join(u' '));
}

inline QString text(const Sub &sub)
{
    const QList<int> numbers{sub.datatype,
                             sub.pdomapping.toUInt(),
                             sub.size,
                             sub.defaultineds,
                             sub.writedefaulttoeds,
                             sub.limitineds,
                             sub.refuseread,
                             sub.refusewrite,
                             sub.dcfcomponent,
                             sub.cyclicread,
                             sub.implementation,
                             sub.category,
                             sub.changedbyuser,
                             sub.wizardsource,
                             sub.sharedlines,
                             sub.managedbylvx,
                             sub.signalid,
                             sub.nvstorage};
    QStringList texts{sub.name,        sub.accesstype, sub.defaultvalue,       sub.currentvalue,
                      sub.lowlimit,    sub.uplimit,    sub.allowedaccesstypes, sub.varname,
                      sub.description, sub.denotation};
    texts += sub.metadata.keys() + sub.metadata.values();
    for (const int number : numbers)
        texts.prepend(QString::number(number));
    return texts.join(QStringLiteral("' '"));
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
