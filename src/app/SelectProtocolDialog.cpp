#include "app/SelectProtocolDialog.h"

#include "ui_SelectProtocolDialog.h"

SelectProtocolDialog::SelectProtocolDialog(const QString &question, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::SelectProtocolDialog>())
{
    m_ui->setupUi(this);
    m_ui->lblQuestion->setText(question);
    const QList<LineType> types = LineTypes::all();
    for (const LineType type : types)
        m_ui->cbProtocol->addItem(LineTypes::description(type), int(type));
}

SelectProtocolDialog::~SelectProtocolDialog() = default;

void SelectProtocolDialog::setLineType(LineType type)
{
    m_ui->cbProtocol->setCurrentIndex(m_ui->cbProtocol->findData(int(type)));
}

LineType SelectProtocolDialog::lineType() const
{
    return result() == Accepted ? LineType(m_ui->cbProtocol->currentData().toInt()) : LineType::CANopen;
}
