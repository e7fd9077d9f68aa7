#pragma once

#include "forms/SettingsForm.h"

/** The functions of the application that serve the diagnostic services (ISO 14229-1). */
class UDSIndicationForm : public SettingsForm
{
    Q_OBJECT

public:
    explicit UDSIndicationForm(QWidget *parent = nullptr);

protected:
    QList<RowsModel::Row> readRows(ObjectDataBase &store) const override;
    int changeType() const override;
};
