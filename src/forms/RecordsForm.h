#pragma once

#include "forms/BaseMainForm.h"
#include "forms/RowsModel.h"

#include <memory>

class QSortFilterProxyModel;
namespace Ui {
class RecordsForm;
}

/**
 * A page that lists the records of a line (objects, parameter groups, messages) and, beside them, the parts
 * of the selected one (sub-indices, signals). Nothing is edited here.
 */
class RecordsForm : public BaseMainForm
{
    Q_OBJECT

public:
    ~RecordsForm() override;

    bool goTo(const ProjectLocation &location) override;

protected:
    struct Texts
    {
        QString records; ///< what the records are called, for the counter: "Objects"
        QString noRecords; ///< in place of the tables of a line without records
        QString note; ///< what can and cannot be done here
    };

    /** Without columns for the parts there is only the list of records. */
    RecordsForm(const Texts &texts, const QList<RowsModel::Column> &records,
                const QList<RowsModel::Column> &parts, QWidget *parent);

    /** All records of the shown line, each with its place. */
    virtual QList<RowsModel::Row> readRecords(ObjectDataBase &store) const = 0;
    /** The parts of a record, each with its place. */
    virtual QList<RowsModel::Row> readParts(ObjectDataBase &store, const ProjectLocation &record) const;
    /** Whether the page lists records of the kind. */
    virtual bool lists(ProjectLocation::Kind kind) const = 0;
    /** The kinds of changes that alter a record or part; changes of other lines never do. */
    virtual bool concernsRecords(int changeType) const = 0;

    bool isConcernedBy(const ObjectDataBase::ChangeSet &change) const override;
    void refresh() override;

private:
    void setUpTables(const QList<RowsModel::Column> &parts);
    void setUpFilter();
    void showRecords(bool any);
    void showParts();
    void showCount();
    ProjectLocation currentRecord() const;
    QString title(const RowsModel::Row &record) const;
    void selectRecord(int row);

    std::unique_ptr<Ui::RecordsForm> m_ui;
    Texts m_texts;
    RowsModel *m_records;
    RowsModel *m_parts;
    QSortFilterProxyModel *m_filter;
};
