#pragma once

#include "forms/SettingsForm.h"

/** What the device description files (EDS, XDD) of a line tell about the device as a whole. */
class DeviceDescriptionForm : public SettingsForm
{
    Q_OBJECT

public:
    explicit DeviceDescriptionForm(QWidget *parent = nullptr);

protected:
    QList<RowsModel::Row> readRows(ObjectDataBase &store) const override;
    int changeType() const override;
};
