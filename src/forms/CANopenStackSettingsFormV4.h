#pragma once

#include "forms/SettingsForm.h"

/** The settings of the CANopen stack itself: node identity, optional services, indications, USDO. */
class CANopenStackSettingsFormV4 : public SettingsForm
{
    Q_OBJECT

public:
    explicit CANopenStackSettingsFormV4(QWidget *parent = nullptr);

protected:
    QList<RowsModel::Row> readRows(ObjectDataBase &store) const override;
    int changeType() const override;
};
