#include "forms/SettingsForm.h"

#include "ui_SettingsForm.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

SettingsForm::SettingsForm(QWidget *parent)
    : BaseMainForm(parent), m_ui(std::make_unique<Ui::SettingsForm>()),
      m_rows(new RowsModel({{.title = tr("Setting")}, {.title = tr("Value")}}, this))
{
    m_ui->setupUi(this);
    m_ui->tvSettings->setModel(m_rows);
    m_ui->tvSettings->setUpColumns(*m_rows);
}

SettingsForm::~SettingsForm() = default;

bool SettingsForm::isConcernedBy(const ObjectDataBase::ChangeSet &change) const
{
    return change.type == changeType() || change.type == ObjectDataBase::LineRemoved
        || change.type == ObjectDataBase::NodeChanged;
}

void SettingsForm::refresh()
{
    ObjectDataBase *project = openStore();
    m_rows->setRows(project ? readRows(*project) : QList<RowsModel::Row>());
    m_ui->tvSettings->clearSpans();
    const QList<RowsModel::Row> &rows = m_rows->rows();
    for (int row = 0; row < rows.size(); ++row)
        if (rows.at(row).isHeading)
            m_ui->tvSettings->setSpan(row, 0, 1, m_rows->columnCount());
    if (!m_ui->tvSettings->currentIndex().isValid() && rows.size() > 1) // a heading is no place to begin
        m_ui->tvSettings->selectionModel()->setCurrentIndex(m_rows->index(1, 0),
                                                            QItemSelectionModel::NoUpdate);
}

bool SettingsForm::goTo(const ProjectLocation &location)
{
    if (location.kind != ProjectLocation::Kind::Setting)
        return false;
    refreshNow();
    const QList<RowsModel::Row> &rows = m_rows->rows();
    for (int row = 0; row < rows.size(); ++row) {
        if (rows.at(row).place.setting != location.setting || rows.at(row).isHeading)
            continue;
        m_ui->tvSettings->selectOnly(row);
        return true;
    }
    return false;
}

QList<RowsModel::Row> SettingsForm::readTable(ObjectDataBase &store, std::span<const SettingRow> table,
                                              Reader reader) const
{
    const QStringList &perLine = ObjectDataBase::perLineSettingKeys();
    QList<RowsModel::Row> rows;
    for (const SettingRow &row : table) {
        if (row.kind == SettingRow::Kind::Heading) {
            rows.append(headingRow(label(row.label)));
            continue;
        }
        const QString key = QString::fromLatin1(row.key);
        const bool isPerLine = reader == &ObjectDataBase::getGeneralSetting && perLine.contains(key);
        const QString value = isPerLine ? store.getGeneralSettingForLine(key, line()) : (store.*reader)(key);
        rows.append(settingRow(key, label(row.label), valueText(row, value)));
    }
    return rows;
}

RowsModel::Row SettingsForm::headingRow(const QString &title)
{
    return {.cells = {title}, .isHeading = true};
}

RowsModel::Row SettingsForm::settingRow(const QString &key, const QString &label, const QString &value) const
{
    QString oneLine = value;
    return {.cells = {label, oneLine.replace(u'\n', u' ')},
            .place = {.kind = ProjectLocation::Kind::Setting, .line = line(), .setting = key},
            .toolTip = label + u'\n' + (value.isEmpty() ? key : QString(key + u" = "_s + value))};
}

QString SettingsForm::label(const char *text) const
{
    return QCoreApplication::translate(metaObject()->className(), text);
}

QString SettingsForm::valueText(const SettingRow &row, const QString &value) const
{
    switch (row.kind) {
    case SettingRow::Kind::Tick:
        if (value.isEmpty() || value == "0"_L1)
            return tr("no");
        return value == "1"_L1 ? tr("yes") : value;
    case SettingRow::Kind::Choice:
        return label(row.choices).split(u'|').value(value.toInt(), value);
    default:
        return value;
    }
}
