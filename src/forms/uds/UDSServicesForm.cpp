#include "forms/uds/UDSServicesForm.h"

using namespace Qt::StringLiterals;

UDSServicesForm::UDSServicesForm(QWidget *parent)
    : RecordsForm({.records = tr("Active services"),
                   .noRecords = tr("No diagnostic service is active on this line."),
                   .note = tr("Services cannot be edited in this version.")},
                  {{.title = tr("SID"), .sample = u"0x00/000"_s},
                   {.title = tr("Name")},
                   {.title = tr("Sessions"), .sample = u"1,2,3,4,0x40"_s},
                   {.title = tr("Security Levels"), .sample = u"2,4,6"_s},
                   {.title = tr("Authentication"), .sample = u"0x00"_s}},
                  {}, parent)
{
}

QList<RowsModel::Row> UDSServicesForm::readRecords(ObjectDataBase &store) const
{
    const QMap<UDS::SID, QString> names = UDSSIDDefinitions::getSIDNames();
    const QList<UDS::SID> services = store.getUDSActiveServices(line());
    QList<RowsModel::Row> rows;
    for (const UDS::SID service : services) {
        const auto number = quint8(service);
        rows.append({.cells = {u"0x%1/%2"_s.arg(number, 2, 16, '0'_L1).arg(number), names.value(service),
                               store.getUDSServiceSessions(line(), service),
                               store.getUDSServiceUserLevels(line(), service),
                               store.getUDSAuthentication(line(), service)}});
    }
    return rows;
}

bool UDSServicesForm::lists(ProjectLocation::Kind kind) const
{
    Q_UNUSED(kind)
    return false;
}

bool UDSServicesForm::concernsRecords(int changeType) const
{
    return changeType == ObjectDataBase::NodeChanged;
}

void UDSServicesForm::showEvent(QShowEvent *event)
{
    requestRefresh();
    RecordsForm::showEvent(event);
}
