#pragma once

#include "forms/RecordsForm.h"

/** The object dictionary of a line: its objects and the sub-indices of the selected one. */
class ObjectDictionaryForm : public RecordsForm
{
    Q_OBJECT

public:
    explicit ObjectDictionaryForm(QWidget *parent = nullptr);

    /** True when the profile with the predefined objects has been read into the reference store. */
    bool importDone() const { return m_importDone; }
    void setImportDone(bool done) { m_importDone = done; }

public Q_SLOTS:
    void gotoIndex(ushort index);
    void gotoSubIndex(ushort index, uchar subindex);

protected:
    QList<RowsModel::Row> readRecords(ObjectDataBase &store) const override;
    QList<RowsModel::Row> readParts(ObjectDataBase &store, const ProjectLocation &record) const override;
    bool lists(ProjectLocation::Kind kind) const override;
    bool concernsRecords(int changeType) const override;

private:
    bool m_importDone = false;
};
