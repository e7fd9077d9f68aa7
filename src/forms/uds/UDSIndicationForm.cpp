#include "forms/uds/UDSIndicationForm.h"

#include <QCoreApplication>

namespace {

using Kind = SettingRow::Kind;

constexpr SettingRow indicationRows[] = {
    {Kind::Heading, "", QT_TRANSLATE_NOOP("UDSIndicationForm", "Binding")},
    {Kind::Tick, "uds_static_indication",
     QT_TRANSLATE_NOOP("UDSIndicationForm", "Use static (compile-time) indication binding")},
    {Kind::Heading, "", QT_TRANSLATE_NOOP("UDSIndicationForm", "Application Function Name")},
    {Kind::Text, "uds_fct_clear_dtc_info",
     QT_TRANSLATE_NOOP("UDSIndicationForm", "Clear DTC Information (14h)")},
    {Kind::Text, "uds_fct_dtc_info", QT_TRANSLATE_NOOP("UDSIndicationForm", "Read DTC Information (19h)")},
    {Kind::Text, "uds_fct_id_data_transmit",
     QT_TRANSLATE_NOOP("UDSIndicationForm", "Read/Write Data by Identifier (22h/2Eh)")},
    {Kind::Text, "uds_fct_mem_data_transmit",
     QT_TRANSLATE_NOOP("UDSIndicationForm", "Read/Write Memory by Address (23h/3Dh)")},
    {Kind::Text, "uds_fct_sec_access_req_key",
     QT_TRANSLATE_NOOP("UDSIndicationForm", "Security Access (Seed/Key) (27h)")},
    {Kind::Text, "uds_fct_authent_req", QT_TRANSLATE_NOOP("UDSIndicationForm", "Authentication (29h)")},
    {Kind::Text, "uds_fct_ioctrl",
     QT_TRANSLATE_NOOP("UDSIndicationForm", "Input/Output Control by Identifier (2Fh)")},
    {Kind::Text, "uds_fct_routine_ctrl", QT_TRANSLATE_NOOP("UDSIndicationForm", "Routine Control (31h)")},
    {Kind::Text, "uds_fct_data_transfer",
     QT_TRANSLATE_NOOP("UDSIndicationForm", "Request Download/Upload, Transfer Data (34h-38h)")},
    {Kind::Text, "uds_fct_req_commgt",
     QT_TRANSLATE_NOOP("UDSIndicationForm", "Session Control / ECU Reset / Tester Present (10h/11h/3Eh)")},
    {Kind::Text, "uds_fct_check_req_session",
     QT_TRANSLATE_NOOP("UDSIndicationForm", "Application check: service allowed in session")},
    {Kind::Text, "uds_fct_generic",
     QT_TRANSLATE_NOOP("UDSIndicationForm", "Generic / manufacturer-specific services")},
};

} // namespace

UDSIndicationForm::UDSIndicationForm(QWidget *parent) : SettingsForm(parent) { }

QList<RowsModel::Row> UDSIndicationForm::readRows(ObjectDataBase &store) const
{
    return readTable(store, indicationRows, &ObjectDataBase::getGeneralSetting);
}

int UDSIndicationForm::changeType() const
{
    return ObjectDataBase::GeneralSettingChanged;
}
