#include "forms/j1939/J1939SettingsForm.h"

#include <QCoreApplication>

namespace {

using Kind = SettingRow::Kind;

constexpr SettingRow settingRows[] = {
    {Kind::Heading, "", QT_TRANSLATE_NOOP("J1939SettingsForm", "Identity & Address (line-specific)")},
    {Kind::Text, "startaddress", QT_TRANSLATE_NOOP("J1939SettingsForm", "Address (start address)")},
    {Kind::Text, "identitynumber", QT_TRANSLATE_NOOP("J1939SettingsForm", "Identity Number")},
    {Kind::Text, "manufacturercode", QT_TRANSLATE_NOOP("J1939SettingsForm", "Manufacturer Code")},
    {Kind::Text, "ecuinstance", QT_TRANSLATE_NOOP("J1939SettingsForm", "ECU Instance")},
    {Kind::Text, "functioninstance", QT_TRANSLATE_NOOP("J1939SettingsForm", "Function Instance")},
    {Kind::Text, "function", QT_TRANSLATE_NOOP("J1939SettingsForm", "Function")},
    {Kind::Text, "vehiclesystem", QT_TRANSLATE_NOOP("J1939SettingsForm", "Vehicle System")},
    {Kind::Text, "vehicleinstance", QT_TRANSLATE_NOOP("J1939SettingsForm", "Vehicle Instance")},
    {Kind::Text, "industrygroup", QT_TRANSLATE_NOOP("J1939SettingsForm", "Industry Group")},
    {Kind::Tick, "addresscapable", QT_TRANSLATE_NOOP("J1939SettingsForm", "Address Claiming supported")},
    {Kind::Heading, "", QT_TRANSLATE_NOOP("J1939SettingsForm", "Services & Indications")},
    {Kind::Tick, "bamsupport", QT_TRANSLATE_NOOP("J1939SettingsForm", "BAM Support")},
    {Kind::Text, "bamcycletime", QT_TRANSLATE_NOOP("J1939SettingsForm", "BAM Cycle time (ms):")},
    {Kind::Tick, "cmdtsupport", QT_TRANSLATE_NOOP("J1939SettingsForm", "CMDT Support")},
    {Kind::Text, "cmdtpackets", QT_TRANSLATE_NOOP("J1939SettingsForm", "Max CMDT packets:")},
    {Kind::Tick, "nmea2000support", QT_TRANSLATE_NOOP("J1939SettingsForm", "NMEA2000 Support")},
    {Kind::Tick, "safetysupport", QT_TRANSLATE_NOOP("J1939SettingsForm", "SDG Support")},
    {Kind::Text, "sdm_loop_counter", QT_TRANSLATE_NOOP("J1939SettingsForm", "SDG Loop Counter:")},
    {Kind::Text, "sdm_timer_interval", QT_TRANSLATE_NOOP("J1939SettingsForm", "SDG Timer Interval (µs):")},
    {Kind::Text, "j1939fd_multipgbuffer",
     QT_TRANSLATE_NOOP("J1939SettingsForm", "Number of J1939 FD destination specific Multi-PG buffer:")},
    {Kind::Tick, "cia510serversupport",
     QT_TRANSLATE_NOOP("J1939SettingsForm", "CiA 510 (CAM11/CAM21) Server")},
    {Kind::Tick, "cia510clientsupport",
     QT_TRANSLATE_NOOP("J1939SettingsForm", "CiA 510 (CAM11/CAM21) Client")},
    {Kind::Tick, "requestsupport", QT_TRANSLATE_NOOP("J1939SettingsForm", "Request PGN Support")},
    {Kind::Tick, "propsupport", QT_TRANSLATE_NOOP("J1939SettingsForm", "Proprietary Support")},
    {Kind::Tick, "dynsupport", QT_TRANSLATE_NOOP("J1939SettingsForm", "Dynamic PGN Support")},
    {Kind::Tick, "bitwisemapping", QT_TRANSLATE_NOOP("J1939SettingsForm", "Support for bitwise mapping")},
    {Kind::Tick, "recalladdrclaims",
     QT_TRANSLATE_NOOP("J1939SettingsForm", "Indication of all address claimings supported")},
    {Kind::Text, "rxcheckindication_cnt",
     QT_TRANSLATE_NOOP("J1939SettingsForm", "No of Receive check indications:")},
    {Kind::Text, "txindication_cnt", QT_TRANSLATE_NOOP("J1939SettingsForm", "No of Transmit indications:")},
    {Kind::Text, "rxindication_cnt", QT_TRANSLATE_NOOP("J1939SettingsForm", "No of Receive indications:")},
    {Kind::Text, "requestindication_cnt",
     QT_TRANSLATE_NOOP("J1939SettingsForm", "No of Request indications:")},
    {Kind::Text, "acknowledgeindication_cnt",
     QT_TRANSLATE_NOOP("J1939SettingsForm", "No of Acknowledge indications:")},
    {Kind::Text, "canindication_cnt", QT_TRANSLATE_NOOP("J1939SettingsForm", "No of CAN indications:")},
    {Kind::Text, "nmea2000groupindication_cnt",
     QT_TRANSLATE_NOOP("J1939SettingsForm", "No of NMEA2000 Group indications:")},
    {Kind::Tick, "j1939fd_11bitmultipg", QT_TRANSLATE_NOOP("J1939SettingsForm", "J1939 FD 11 bit Multi-PG")},
    {Kind::Text, "sdm_rec_addr_cnt", QT_TRANSLATE_NOOP("J1939SettingsForm", "Rx Addr Cnt:")},
    {Kind::Tick, "j1939adapter", QT_TRANSLATE_NOOP("J1939SettingsForm", "J1939 adapter")},
    {Kind::Heading, "", QT_TRANSLATE_NOOP("J1939SettingsForm", "Diagnostic Messages")},
    {Kind::Tick, "diagsupport",
     QT_TRANSLATE_NOOP("J1939SettingsForm",
                       "Diagnostic Messages supported (DM) (Usage of J1939 Diagnostic Extension)")},
    {Kind::Text, "dm_transmitsize",
     QT_TRANSLATE_NOOP("J1939SettingsForm", "Diagnostic Transmit Buffer Size (bytes):")},
    {Kind::Text, "dm_receivesize",
     QT_TRANSLATE_NOOP("J1939SettingsForm", "Diagnostic Receive Buffer Size (bytes):")},
    {Kind::Heading, "", QT_TRANSLATE_NOOP("J1939SettingsForm", "Diagnostic Messages of a tool")},
    {Kind::Tick, "diagtoolsupport",
     QT_TRANSLATE_NOOP("J1939SettingsForm", "Diagnostic Messages of a tool supported (DM)")},
    {Kind::Text, "dmtool_transmitsize",
     QT_TRANSLATE_NOOP("J1939SettingsForm", "Diagnostic Transmit Buffer Size (bytes):")},
    {Kind::Text, "dmtool_receivesize",
     QT_TRANSLATE_NOOP("J1939SettingsForm", "Diagnostic Receive Buffer Size (bytes):")},
};

} // namespace

J1939SettingsForm::J1939SettingsForm(QWidget *parent) : SettingsForm(parent) { }

QList<RowsModel::Row> J1939SettingsForm::readRows(ObjectDataBase &store) const
{
    return readTable(store, settingRows, &ObjectDataBase::getJ1939Setting);
}

int J1939SettingsForm::changeType() const
{
    return ObjectDataBase::J1939SettingChanged;
}
