#pragma once

#include "forms/RecordsForm.h"

/** The parameter groups (SAE J1939-21) of a line in both directions, and the signals of the selected one. */
class J1939SignalForm : public RecordsForm
{
    Q_OBJECT

public:
    explicit J1939SignalForm(QWidget *parent = nullptr);

protected:
    QList<RowsModel::Row> readRecords(ObjectDataBase &store) const override;
    QList<RowsModel::Row> readParts(ObjectDataBase &store, const ProjectLocation &record) const override;
    bool lists(ProjectLocation::Kind kind) const override;
    bool concernsRecords(int changeType) const override;

private:
    QList<RowsModel::Row> readGroups(ObjectDataBase &store, quint8 direction) const;
};
