#pragma once

#include "forms/SettingsForm.h"

/** What stack and generators need beyond the object dictionary, for all protocols. */
class GeneralSettingsForm3 : public SettingsForm
{
    Q_OBJECT

public:
    explicit GeneralSettingsForm3(QWidget *parent = nullptr);

protected:
    QList<RowsModel::Row> readRows(ObjectDataBase &store) const override;
    int changeType() const override;
};
