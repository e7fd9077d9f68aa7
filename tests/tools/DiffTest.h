#pragma once

#include "store/ObjectDataBase.h"

#include <QSharedPointer>

/** Projects to be compared. */
namespace DiffTest {

/** An open project with the lines given, CANopen lines all, and nothing on them but settings. */
inline QSharedPointer<ObjectDataBase> makeStore(const QList<quint8> &lines = {0})
{
    auto store = QSharedPointer<ObjectDataBase>::create();
    bool ok = store->createNewDataBase();
    for (const quint8 line : lines)
        ok = ok && store->addNode(line, ObjectDataBase::NODE_DATA_T())
            && store->setGeneralSetting(QStringLiteral("line%1type").arg(line), QStringLiteral("1"));
    if (!ok)
        qFatal("no project for the test");
    return store;
}

inline ObjectDataBase::SUBINDEX_DATA_T sub(const QString &name, const QString &value = QStringLiteral("0"))
{
    ObjectDataBase::SUBINDEX_DATA_T data;
    data.name = name;
    data.datatype = 7; // UNSIGNED32
    data.accesstype = QStringLiteral("rw");
    data.defaultvalue = value;
    return data;
}

/** An object with sub-indices "Sub 0" onward. */
inline bool addObject(ObjectDataBase &store, quint16 index, const QString &name, int subIndices = 1,
                      quint8 line = 0)
{
    ObjectDataBase::INDEX_DATA_T object;
    object.name = name;
    object.datatype = 7;
    object.objecttype = 9;
    bool ok = store.addIndex(line, index, object);
    for (int number = 0; number < subIndices; ++number)
        ok = ok && store.addSubIndex(line, index, quint8(number), sub(QStringLiteral("Sub %1").arg(number)));
    return ok;
}

inline bool addPgn(ObjectDataBase &store, quint32 number, quint8 direction, const QString &name,
                   const QList<quint32> &spns = {})
{
    ObjectDataBase::PGN pgn;
    pgn.name = name;
    pgn.direction = direction;
    pgn.priority = 6;
    bool ok = store.addPGN(0, number, pgn);
    int position = 0;
    for (const quint32 spn : spns) {
        ObjectDataBase::SPN data;
        data.name = QStringLiteral("Signal %1").arg(spn);
        data.pos = ++position;
        ok = ok && store.addSPN(0, number, direction, spn, data);
    }
    return ok;
}

inline bool addCanId(ObjectDataBase &store, quint32 id, quint8 direction, const QString &name,
                     const QList<quint32> &elements = {})
{
    ObjectDataBase::CANID canId;
    canId.name = name;
    canId.direction = direction;
    bool ok = store.addCANID(0, id, canId);
    for (const quint32 number : elements) {
        ObjectDataBase::DataElement data;
        data.name = QStringLiteral("Element %1").arg(number);
        ok = ok && store.addDataElement(0, id, direction, number, data);
    }
    return ok;
}

/** Changes the default value of a sub-index. */
inline bool setValue(ObjectDataBase &store, quint16 index, quint8 subindex, const QString &value,
                     quint8 line = 0)
{
    return store.setSubIndexDefault(line, index, subindex, value);
}

} // namespace DiffTest
