#pragma once

#include "store/ObjectDataBase.h"

#include <QSharedPointer>
#include <QTest>

/** Projects for the pages of the main window to show. */
namespace FormTest {

/** An open project with line 0 and nothing on it. */
inline QSharedPointer<ObjectDataBase> makeStore()
{
    auto store = QSharedPointer<ObjectDataBase>::create();
    if (!store->createNewDataBase() || !store->addNode(0, ObjectDataBase::NODE_DATA_T()))
        qFatal("no project for the test");
    return store;
}

inline bool addObject(ObjectDataBase &store, quint8 line, quint16 index, const QString &name,
                      int subIndices = 1)
{
    ObjectDataBase::INDEX_DATA_T object;
    object.name = name;
    object.objecttype = subIndices > 1 ? 9 : 7; // RECORD, VAR
    if (!store.addIndex(line, index, object))
        return false;
    QList<ObjectDataBase::SubEntry> entries;
    for (int sub = 0; sub < subIndices; ++sub) {
        ObjectDataBase::SubEntry entry{.line = line, .index = index, .subindex = quint8(sub), .data = {}};
        entry.data.name = QStringLiteral("Sub %1 of %2").arg(sub).arg(name);
        entry.data.datatype = 7; // UNSIGNED32
        entry.data.accesstype = QStringLiteral("rw");
        entry.data.defaultvalue = QStringLiteral("0x%1").arg(sub, 0, 16);
        entries.append(entry);
    }
    return store.addSubIndices(entries);
}

/** Many objects of one sub-index each; nobody is told of them. */
inline bool addObjects(ObjectDataBase &store, quint8 line, quint16 first, int count)
{
    const QSignalBlocker quiet(store);
    QList<ObjectDataBase::SubEntry> entries;
    ObjectDataBase::INDEX_DATA_T object;
    object.name = QStringLiteral("Object");
    object.objecttype = 7;
    for (int i = 0; i < count; ++i) {
        if (!store.addIndex(line, quint16(first + i), object))
            return false;
        entries.append({.line = line, .index = quint16(first + i), .subindex = 0, .data = {}});
    }
    return store.addSubIndices(entries);
}

/** The texts of a row of a model. */
inline QStringList rowTexts(const QAbstractItemModel &model, int row)
{
    QStringList texts;
    for (int column = 0; column < model.columnCount(); ++column)
        texts.append(model.index(row, column).data().toString());
    return texts;
}

inline QStringList columnTexts(const QAbstractItemModel &model, int column)
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row)
        texts.append(model.index(row, column).data().toString());
    return texts;
}

} // namespace FormTest
