#pragma once

#include "forms/RecordsForm.h"

/** The objects that the manufacturer of the device defines, 0x2000 to 0x5FFF (CiA 301). */
class ManufacturerSegmentForm : public RecordsForm
{
    Q_OBJECT

public:
    explicit ManufacturerSegmentForm(QWidget *parent = nullptr);

protected:
    QList<RowsModel::Row> readRecords(ObjectDataBase &store) const override;
    QList<RowsModel::Row> readParts(ObjectDataBase &store, const ProjectLocation &record) const override;
    bool lists(ProjectLocation::Kind kind) const override;
    bool concernsRecords(int changeType) const override;
};
