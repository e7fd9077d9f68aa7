#pragma once

#include "forms/RecordsForm.h"

/**
 * The diagnostic services of a line (ISO 14229-1) that are active.
 *
 * The store does not tell when they change, so the page reads them each time that it is shown.
 */
class UDSServicesForm : public RecordsForm
{
    Q_OBJECT

public:
    explicit UDSServicesForm(QWidget *parent = nullptr);

protected:
    QList<RowsModel::Row> readRecords(ObjectDataBase &store) const override;
    bool lists(ProjectLocation::Kind kind) const override;
    bool concernsRecords(int changeType) const override;

    void showEvent(QShowEvent *event) override;
};
