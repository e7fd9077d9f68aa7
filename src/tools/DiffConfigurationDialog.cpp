#include "tools/DiffConfigurationDialog.h"

#include "ui_DiffConfigurationDialog.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype fieldsPerColumn = 10;

} // namespace

DiffConfigurationDialog::DiffConfigurationDialog(QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::DiffConfigurationDialog>())
{
    m_ui->setupUi(this);
    for (const DiffLevel level : diffLevels)
        addFields(level);
    setUpTabOrder();
    setSelection({});
    connect(m_ui->buttonBox->button(QDialogButtonBox::RestoreDefaults), &QPushButton::clicked, this,
            [this] { setSelection({}); });
}

DiffConfigurationDialog::~DiffConfigurationDialog() = default;

QWidget *DiffConfigurationDialog::box(DiffLevel level) const
{
    const std::array<QWidget *, diffLevels.size()> boxes{
        m_ui->gbObject, m_ui->gbSubIndex, m_ui->gbPGN, m_ui->gbSPN, m_ui->gbCANID, m_ui->gbDataElement};
    return boxes.at(size_t(level));
}

void DiffConfigurationDialog::addFields(DiffLevel level)
{
    QWidget *parent = box(level);
    auto *layout = new QGridLayout(parent);
    const QStringList titles = DiffFields::titles(level);
    for (qsizetype number = 0; number < titles.size(); ++number) {
        auto *field = new QCheckBox(titles[number], parent);
        layout->addWidget(field, int(number % fieldsPerColumn), int(number / fieldsPerColumn));
        m_fields.at(size_t(level)).append(field);
    }
    layout->setRowStretch(layout->rowCount(), 1);
}

/** The fields were made behind the buttons, but come before them. */
void DiffConfigurationDialog::setUpTabOrder()
{
    QWidget *previous = m_fields.front().first();
    previous->setFocus();
    for (const QList<QCheckBox *> &fields : std::as_const(m_fields))
        for (QCheckBox *field : fields) {
            setTabOrder(previous, field);
            previous = field;
        }
    setTabOrder(previous, m_ui->buttonBox);
}

void DiffConfigurationDialog::setSelection(const DiffSelection &selection)
{
    for (const DiffLevel level : diffLevels) {
        const QList<QCheckBox *> &fields = m_fields.at(size_t(level));
        for (qsizetype number = 0; number < fields.size(); ++number)
            fields[number]->setChecked(selection.counts(level, number));
    }
}

DiffSelection DiffConfigurationDialog::selection() const
{
    DiffSelection selection;
    for (const DiffLevel level : diffLevels) {
        const QList<QCheckBox *> &fields = m_fields.at(size_t(level));
        for (qsizetype number = 0; number < fields.size(); ++number)
            selection.setCounting(level, number, fields[number]->isChecked());
    }
    return selection;
}
