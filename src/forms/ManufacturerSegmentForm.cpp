#include "forms/ManufacturerSegmentForm.h"

#include "forms/ObjectRows.h"

namespace {

constexpr quint16 firstIndex = 0x2000;
constexpr quint16 lastIndex = 0x5FFF;

} // namespace

ManufacturerSegmentForm::ManufacturerSegmentForm(QWidget *parent)
    : RecordsForm({.records = tr("Objects"),
                   .noRecords = tr("This line has no objects in the manufacturer segment, 0x2000 to 0x5FFF."),
                   .note = tr("Objects cannot be added or edited in this version.")},
                  ObjectRows::objectColumns(), ObjectRows::subIndexColumns(), parent)
{
}

QList<RowsModel::Row> ManufacturerSegmentForm::readRecords(ObjectDataBase &store) const
{
    return ObjectRows::readObjects(store, line(), firstIndex, lastIndex);
}

QList<RowsModel::Row> ManufacturerSegmentForm::readParts(ObjectDataBase &store,
                                                         const ProjectLocation &record) const
{
    return ObjectRows::readSubIndices(store, record.line, record.index);
}

bool ManufacturerSegmentForm::lists(ProjectLocation::Kind kind) const
{
    return kind == ProjectLocation::Kind::Object;
}

bool ManufacturerSegmentForm::concernsRecords(int changeType) const
{
    return ObjectRows::isObjectChange(changeType);
}
