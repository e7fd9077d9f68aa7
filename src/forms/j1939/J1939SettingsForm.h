#pragma once

#include "forms/SettingsForm.h"

/** NAME and start address of the device, the services of the J1939 stack and its indications. */
class J1939SettingsForm : public SettingsForm
{
    Q_OBJECT

public:
    explicit J1939SettingsForm(QWidget *parent = nullptr);

protected:
    QList<RowsModel::Row> readRows(ObjectDataBase &store) const override;
    int changeType() const override;
};
