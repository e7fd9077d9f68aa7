#pragma once

#include "forms/SettingsForm.h"

/** The EnergyBus device of a project: the virtual devices it is composed of (CiA 454) and its options. */
class EBNodeGuide : public SettingsForm
{
    Q_OBJECT

public:
    explicit EBNodeGuide(QWidget *parent = nullptr);

protected:
    QList<RowsModel::Row> readRows(ObjectDataBase &store) const override;
    int changeType() const override;

private:
    QList<RowsModel::Row> readDevices(ObjectDataBase &store) const;
};
