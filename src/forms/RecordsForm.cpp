#include "forms/RecordsForm.h"

#include "ui_RecordsForm.h"

#include <QSortFilterProxyModel>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int recordsShare = 3; // of the page's height, to partsShare
constexpr int partsShare = 2;

/** The record that a place lies in. */
ProjectLocation recordOf(const ProjectLocation &place)
{
    switch (place.kind) {
    case ProjectLocation::Kind::SubIndex:
        return ProjectLocation::ofObject(place.line, place.index);
    case ProjectLocation::Kind::Spn:
        return ProjectLocation::ofPgn(place.line, place.number, place.direction);
    case ProjectLocation::Kind::DataElement:
        return ProjectLocation::ofCanId(place.line, place.number, place.direction);
    default:
        return place;
    }
}

} // namespace

RecordsForm::RecordsForm(const Texts &texts, const QList<RowsModel::Column> &records,
                         const QList<RowsModel::Column> &parts, QWidget *parent)
    : BaseMainForm(parent), m_ui(std::make_unique<Ui::RecordsForm>()), m_texts(texts),
      m_records(new RowsModel(records, this)), m_parts(new RowsModel(parts, this)),
      m_filter(new QSortFilterProxyModel(this))
{
    m_ui->setupUi(this);
    m_ui->lblNoRecords->setText(texts.noRecords);
    m_ui->lblNote->setText(texts.note);
    setUpTables(parts);
    setUpFilter();
    showRecords(false);
}

RecordsForm::~RecordsForm() = default;

void RecordsForm::setUpTables(const QList<RowsModel::Column> &parts)
{
    m_filter->setSourceModel(m_records);
    m_ui->tvRecords->setModel(m_filter);
    m_ui->tvRecords->setUpColumns(*m_records);
    m_ui->tvRecords->setAccessibleName(m_texts.records);
    m_ui->tvParts->setModel(m_parts);
    m_ui->tvParts->setUpColumns(*m_parts);
    m_ui->splitter->setStretchFactor(0, recordsShare);
    m_ui->splitter->setStretchFactor(1, partsShare);
    m_ui->partsPane->setHidden(parts.isEmpty());
    connect(m_ui->tvRecords->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &RecordsForm::showParts);
}

void RecordsForm::setUpFilter()
{
    m_filter->setFilterKeyColumn(-1);
    m_filter->setFilterCaseSensitivity(Qt::CaseInsensitive);
    connect(m_ui->leFilter, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_filter->setFilterFixedString(text);
        showCount();
        showParts();
    });
}

bool RecordsForm::isConcernedBy(const ObjectDataBase::ChangeSet &change) const
{
    return change.line == line()
        && (change.type == ObjectDataBase::LineRemoved || concernsRecords(change.type));
}

QList<RowsModel::Row> RecordsForm::readParts(ObjectDataBase &store, const ProjectLocation &record) const
{
    Q_UNUSED(store)
    Q_UNUSED(record)
    return {};
}

void RecordsForm::refresh()
{
    ObjectDataBase *project = openStore();
    QList<RowsModel::Row> rows = project ? readRecords(*project) : QList<RowsModel::Row>();
    const ProjectLocation selected = currentRecord();
    m_records->setRows(std::move(rows));
    showRecords(m_records->rowCount() > 0);
    const int row = m_records->rowOf(selected);
    selectRecord(qMax(0, row));
    showCount();
    showParts();
}

void RecordsForm::showRecords(bool any)
{
    m_ui->leFilter->setVisible(any);
    m_ui->splitter->setVisible(any);
    m_ui->lblCount->setVisible(any);
    m_ui->lblNoRecords->setVisible(!any);
}

void RecordsForm::showCount()
{
    const QString all = QString::number(m_records->rowCount());
    const int shown = m_filter->rowCount();
    m_ui->lblCount->setText(shown == m_records->rowCount()
                                ? tr("%1: %2").arg(m_texts.records, all)
                                : tr("%1: %2 of %3").arg(m_texts.records, QString::number(shown), all));
}

ProjectLocation RecordsForm::currentRecord() const
{
    const QModelIndex current = m_filter->mapToSource(m_ui->tvRecords->currentIndex());
    return current.isValid() ? m_records->rows().at(current.row()).place : ProjectLocation();
}

void RecordsForm::showParts()
{
    const ProjectLocation record = currentRecord();
    ObjectDataBase *project = openStore();
    const bool readable = project && !project->isWriteLocked() && record != ProjectLocation();
    if (project && project->isWriteLocked())
        requestRefresh();
    m_parts->setRows(readable ? readParts(*project, record) : QList<RowsModel::Row>());
    m_ui->lblRecord->setText(readable ? title(m_records->rows().at(m_records->rowOf(record))) : QString());
}

/** What a record is called above its parts: its number and its name. */
QString RecordsForm::title(const RowsModel::Row &record) const
{
    const auto name = std::ranges::find_if(m_records->columns(),
                                           [](const auto &column) { return column.sample.isEmpty(); });
    const qsizetype nameColumn = std::distance(m_records->columns().begin(), name);
    return record.cells.value(0) + u"  "_s + record.cells.value(nameColumn);
}

void RecordsForm::selectRecord(int row)
{
    const QModelIndex index = m_filter->mapFromSource(m_records->index(row, 0));
    if (index.isValid() && index.row() != m_ui->tvRecords->currentIndex().row())
        m_ui->tvRecords->selectOnly(index.row());
}

bool RecordsForm::goTo(const ProjectLocation &location)
{
    const ProjectLocation record = recordOf(location);
    if (!lists(record.kind) || location.line != line())
        return false;
    refreshNow();
    const int row = m_records->rowOf(record);
    if (row < 0)
        return false;
    if (!m_filter->mapFromSource(m_records->index(row, 0)).isValid())
        m_ui->leFilter->clear();
    selectRecord(row);
    const int part = m_parts->rowOf(location);
    if (part >= 0)
        m_ui->tvParts->selectOnly(part);
    return true;
}
