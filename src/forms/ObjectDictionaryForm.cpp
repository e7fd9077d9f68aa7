#include "forms/ObjectDictionaryForm.h"

#include "forms/ObjectRows.h"

#include <limits>

ObjectDictionaryForm::ObjectDictionaryForm(QWidget *parent)
    : RecordsForm({.records = tr("Objects"),
                   .noRecords = tr("This line has no objects."),
                   .note = tr("Objects cannot be edited in this version.")},
                  ObjectRows::objectColumns(), ObjectRows::subIndexColumns(), parent)
{
}

void ObjectDictionaryForm::gotoIndex(ushort index)
{
    goTo(ProjectLocation::ofObject(line(), index));
}

void ObjectDictionaryForm::gotoSubIndex(ushort index, uchar subindex)
{
    goTo(ProjectLocation::ofSubIndex(line(), index, subindex));
}

QList<RowsModel::Row> ObjectDictionaryForm::readRecords(ObjectDataBase &store) const
{
    return ObjectRows::readObjects(store, line(), 0, std::numeric_limits<quint16>::max());
}

QList<RowsModel::Row> ObjectDictionaryForm::readParts(ObjectDataBase &store,
                                                      const ProjectLocation &record) const
{
    return ObjectRows::readSubIndices(store, record.line, record.index);
}

bool ObjectDictionaryForm::lists(ProjectLocation::Kind kind) const
{
    return kind == ProjectLocation::Kind::Object;
}

bool ObjectDictionaryForm::concernsRecords(int changeType) const
{
    return ObjectRows::isObjectChange(changeType);
}
