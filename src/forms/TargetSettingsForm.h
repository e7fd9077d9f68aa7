#pragma once

#include "forms/SettingsForm.h"

/** The hardware targets of a project, each with the options of its driver. */
class TargetSettingsForm : public SettingsForm
{
    Q_OBJECT

public:
    explicit TargetSettingsForm(QWidget *parent = nullptr);

protected:
    QList<RowsModel::Row> readRows(ObjectDataBase &store) const override;
    int changeType() const override;

private:
    QList<RowsModel::Row> readTarget(ObjectDataBase &store, int number, bool isActive) const;
};
