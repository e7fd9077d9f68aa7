#include "forms/TargetSettingsForm.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

using Kind = SettingRow::Kind;

/** A project without sense in its number of targets must not keep the page busy. */
constexpr int maximumTargets = 64;

// The settings of the one target of most projects.
constexpr SettingRow singleTarget[] = {
    {Kind::Heading, "", QT_TRANSLATE_NOOP("TargetSettingsForm", "Target")},
    {Kind::Text, "co_timer_interval", QT_TRANSLATE_NOOP("TargetSettingsForm", "Interval of CPU timer in µs")},
    {Kind::Choice, "endian", QT_TRANSLATE_NOOP("TargetSettingsForm", "Endianess (Byte-Order)"),
     QT_TRANSLATE_NOOP("TargetSettingsForm", "Little Endian|Big Endian")},
    {Kind::Tick, "drv_filter", QT_TRANSLATE_NOOP("TargetSettingsForm", "Enable CAN Filter (FullCAN)")},
    {Kind::Tick, "drv_group_filter", QT_TRANSLATE_NOOP("TargetSettingsForm", "Enable CAN Group Filter")},
    {Kind::Text, "target_id",
     QT_TRANSLATE_NOOP("TargetSettingsForm", "Target define (only if multiple targets are used)")},
    {Kind::Text, "hw_defines", QT_TRANSLATE_NOOP("TargetSettingsForm", "Target specific defines")},
};

// With several targets, each has its own; the key is the part behind "targetsettings_<number>_".
constexpr SettingRow oneOfSeveral[] = {
    {Kind::Text, "timer", QT_TRANSLATE_NOOP("TargetSettingsForm", "Interval of CPU timer in µs")},
    {Kind::Choice, "endianess", QT_TRANSLATE_NOOP("TargetSettingsForm", "Endianess (Byte-Order)"),
     QT_TRANSLATE_NOOP("TargetSettingsForm", "Little Endian|Big Endian")},
    {Kind::Tick, "fullcan", QT_TRANSLATE_NOOP("TargetSettingsForm", "Enable CAN Filter (FullCAN)")},
    {Kind::Tick, "groupfilter", QT_TRANSLATE_NOOP("TargetSettingsForm", "Enable CAN Group Filter")},
    {Kind::Text, "targetid",
     QT_TRANSLATE_NOOP("TargetSettingsForm", "Target define (only if multiple targets are used)")},
    {Kind::Text, "defines", QT_TRANSLATE_NOOP("TargetSettingsForm", "Target specific defines")},
};

constexpr SettingRow allTargets[] = {
    {Kind::Heading, "", QT_TRANSLATE_NOOP("TargetSettingsForm", "Generation")},
    {Kind::Tick, "all_targets",
     QT_TRANSLATE_NOOP("TargetSettingsForm", "Include all targets in gen_define.h")},
};

} // namespace

TargetSettingsForm::TargetSettingsForm(QWidget *parent) : SettingsForm(parent) { }

QList<RowsModel::Row> TargetSettingsForm::readRows(ObjectDataBase &store) const
{
    const int count = store.getGeneralSetting(u"targetsettings_cnt"_s).toInt();
    if (count < 2)
        return readTable(store, singleTarget, &ObjectDataBase::getGeneralSetting);
    QList<RowsModel::Row> rows = readTable(store, allTargets, &ObjectDataBase::getGeneralSetting);
    const int active = store.getGeneralSetting(u"targetsettings_active"_s).toInt();
    for (int number = 0; number < qMin(count, maximumTargets); ++number)
        rows.append(readTarget(store, number, number == active));
    return rows;
}

QList<RowsModel::Row> TargetSettingsForm::readTarget(ObjectDataBase &store, int number, bool isActive) const
{
    const QString prefix = u"targetsettings_%1_"_s.arg(number);
    const QString name = store.getGeneralSetting(prefix + "name"_L1);
    QString title = name.isEmpty() ? tr("Target %1").arg(number) : tr("Target %1: %2").arg(number).arg(name);
    if (isActive)
        title += tr(" - active");
    QList<RowsModel::Row> rows{headingRow(title)};
    for (const SettingRow &row : oneOfSeveral) {
        const QString key = prefix + QLatin1StringView(row.key);
        rows.append(settingRow(key, label(row.label), valueText(row, store.getGeneralSetting(key))));
    }
    return rows;
}

int TargetSettingsForm::changeType() const
{
    return ObjectDataBase::GeneralSettingChanged;
}
