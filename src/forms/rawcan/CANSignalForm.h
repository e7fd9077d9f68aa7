#pragma once

#include "forms/RecordsForm.h"

/** The raw CAN messages that a line sends and receives, and the signals of the selected one. */
class CANSignalForm : public RecordsForm
{
    Q_OBJECT

public:
    explicit CANSignalForm(QWidget *parent = nullptr);

protected:
    QList<RowsModel::Row> readRecords(ObjectDataBase &store) const override;
    QList<RowsModel::Row> readParts(ObjectDataBase &store, const ProjectLocation &record) const override;
    bool lists(ProjectLocation::Kind kind) const override;
    bool concernsRecords(int changeType) const override;

private:
    QList<RowsModel::Row> readMessages(ObjectDataBase &store, quint8 direction) const;
};
