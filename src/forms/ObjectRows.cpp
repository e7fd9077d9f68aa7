#include "forms/ObjectRows.h"

#include "canopen/COHelper.h"
#include "canopen/Helper.h"
#include "store/ObjectDataBase.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

// Network variables (CiA 302-4) and the variables of a gateway; their names are the generator's own.
constexpr quint16 firstVariableIndex = 0xA000;
constexpr quint16 lastVariableIndex = 0xBFFF;

QString text(const char *source)
{
    return QCoreApplication::translate("ObjectRows", source);
}

QString indexText(quint16 index)
{
    return u"0x%1"_s.arg(index, 4, 16, '0'_L1);
}

QString objectName(const QString &name, quint16 index, quint8 line)
{
    const bool isVariable = index >= firstVariableIndex && index <= lastVariableIndex;
    return isVariable ? name : Helper::substituteVariables(name, index, 0, line);
}

QString accessText(const QString &word)
{
    for (const CANopen::AccessType &access : CANopen::accessTypes)
        if (word == QLatin1StringView(access.word))
            return QCoreApplication::translate("CANopen", access.label);
    return word;
}

} // namespace

QList<RowsModel::Column> ObjectRows::objectColumns()
{
    return {{.title = text(QT_TRANSLATE_NOOP("ObjectRows", "Index")), .sample = u"0x0000"_s},
            {.title = text(QT_TRANSLATE_NOOP("ObjectRows", "Name"))},
            {.title = text(QT_TRANSLATE_NOOP("ObjectRows", "Object code")), .sample = u"DEFSTRUCT"_s},
            {.title = text(QT_TRANSLATE_NOOP("ObjectRows", "Sub-indices")),
             .sample = u"255"_s,
             .alignment = Qt::AlignRight}};
}

QList<RowsModel::Column> ObjectRows::subIndexColumns()
{
    return {{.title = text(QT_TRANSLATE_NOOP("ObjectRows", "Sub")), .sample = u"000000"_s},
            {.title = text(QT_TRANSLATE_NOOP("ObjectRows", "Name"))},
            {.title = text(QT_TRANSLATE_NOOP("ObjectRows", "Data type")), .sample = u"UNSIGNED32"_s},
            {.title = text(QT_TRANSLATE_NOOP("ObjectRows", "Access")), .sample = u"Read Write"_s},
            {.title = text(QT_TRANSLATE_NOOP("ObjectRows", "Value")), .sample = u"$NODEID+0x00"_s}};
}

QList<RowsModel::Row> ObjectRows::readObjects(ObjectDataBase &store, quint8 line, quint16 from, quint16 to)
{
    QList<RowsModel::Row> rows;
    const QList<quint16> indices = store.getIndexList(line, from, to);
    rows.reserve(indices.size());
    for (const quint16 index : indices) {
        ObjectDataBase::INDEX_DATA_T object;
        store.getIndex(line, index, object);
        rows.append({.cells = {indexText(index), objectName(object.name, index, line),
                               COHelper::objectCode2String(CANopen::ObjectCode(object.objecttype)),
                               QString::number(store.getSubIndexList(line, index).size())},
                     .place = ProjectLocation::ofObject(line, index)});
    }
    return rows;
}

QList<RowsModel::Row> ObjectRows::readSubIndices(ObjectDataBase &store, quint8 line, quint16 index)
{
    QList<RowsModel::Row> rows;
    const QList<quint8> subIndices = store.getSubIndexList(line, index);
    for (const quint8 subIndex : subIndices) {
        ObjectDataBase::SUBINDEX_DATA_T data;
        store.getSubIndex(line, index, subIndex, data);
        rows.append({.cells = {QString::number(subIndex),
                               Helper::substituteVariables(data.name, index, subIndex, line),
                               COHelper::index2DataTypeString(quint16(data.datatype)),
                               accessText(data.accesstype), data.defaultvalue},
                     .place = ProjectLocation::ofSubIndex(line, index, subIndex)});
    }
    return rows;
}

bool ObjectRows::isObjectChange(int changeType)
{
    switch (changeType) {
    case ObjectDataBase::IndexChanged:
    case ObjectDataBase::SubIndexChanged:
    case ObjectDataBase::IndexRemoved:
    case ObjectDataBase::SubIndexRemoved:
        return true;
    default:
        return false;
    }
}
