// The hardware that the firmware runs on: one target, or several of which the firmware's build names one.

#include "canopen/Helper.h"
#include "generators/CText.h"
#include "generators/canopen/DefineSections.h"
#include "generators/canopen/DefineView.h"
#include "generators/canopen/DefineWriter.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

struct Target
{
    QString macro; ///< names the target to the compiler; empty for an only one
    QString name; ///< for a reader
    QString timerInterval; ///< microseconds; a number or what the compiler knows as one
    bool isBigEndian = false;
    bool hasFilter = false;
    bool hasGroupFilter = false;
    QString defines;
};

Target onlyTarget(const SettingValues &settings)
{
    return {.timerInterval = settings.text(u"co_timer_interval"_s),
            .isBigEndian = settings.isOn(u"endian"_s),
            .hasFilter = settings.isOn(u"drv_filter"_s),
            .defines = settings.value(u"hw_defines"_s)};
}

/** A name that C takes as one. */
QString macroName(const QString &name)
{
    static const QRegularExpression foreign(u"[^A-Za-z0-9_]"_s);
    QString macro = name;
    macro.replace(foreign, u"_"_s);
    return !macro.isEmpty() && macro.front().isDigit() ? QString(u'_' + macro) : macro;
}

/** One of several; what has no interval of its own runs with that of the project. */
Target target(const SettingValues &settings, quint32 number)
{
    const auto key = [=](const char *item) {
        return u"targetsettings_%1_%2"_s.arg(number).arg(QLatin1StringView(item));
    };
    const QString id = macroName(settings.text(key("targetid")));
    const QString interval = settings.text(key("timer"));
    return {.macro = id.isEmpty() ? u"TARGET_%1"_s.arg(number) : id,
            .name = settings.text(key("name")),
            .timerInterval = interval.isEmpty() ? settings.text(u"co_timer_interval"_s) : interval,
            .isBigEndian = settings.isOn(key("endianess")),
            .hasFilter = settings.isOn(key("fullcan")),
            .hasGroupFilter = settings.isOn(key("groupfilter")),
            .defines = settings.value(key("defines"))};
}

void writeSwitches(DefineWriter &out, const Target &target)
{
    out.define(u"CORE_TIMER_INTERVAL",
               target.timerInterval.isEmpty() ? u"0u"_s
                                              : Helper::addLowerCaseUtoNumberLists(target.timerInterval));
    if (target.isBigEndian)
        out.flag(u"CORE_BIG_ENDIAN");
    if (target.hasFilter)
        out.flag(u"CORE_DRV_FILTER");
    if (target.hasGroupFilter)
        out.flag(u"CORE_DRV_GROUP_FILTER");
}

void writeUnconditionally(DefineWriter &out, const Target &target)
{
    if (!target.macro.isEmpty())
        out.plain(u"#define "_s + target.macro + u"\t1u\n"_s);
    writeSwitches(out, target);
    if (target.defines.isEmpty())
        return;
    out.text(u"\n/* target-specific defines */\n"_s);
    out.lines(target.defines);
}

void writeIfNamed(DefineWriter &out, const Target &target)
{
    out.plain(u"#ifdef "_s + target.macro + u"\n/* "_s + CText::comment(target.name) + u" */\n"_s);
    writeSwitches(out, target);
    if (!target.defines.isEmpty())
        out.lines(target.defines);
    out.plain(u"#endif /* "_s + target.macro + u" */ \n\n"_s);
}

/** Several targets of which none is the active one count as one, with the project's own settings. */
void writeTargets(DefineWriter &out, const SettingValues &settings)
{
    constexpr quint32 mostTargets = 1000; // a number that no project comes near to
    const quint32 count = std::min(settings.number(u"targetsettings_cnt"_s), mostTargets);
    bool isActiveKnown = false;
    const quint32 active = settings.value(u"targetsettings_active"_s).toUInt(&isActiveKnown);
    if (count > 1 && settings.isOn(u"all_targets"_s)) {
        for (quint32 number = 0; number < count; ++number)
            writeIfNamed(out, target(settings, number));
    } else if (count > 1 && isActiveKnown && active < count) {
        writeUnconditionally(out, target(settings, active));
    } else {
        writeUnconditionally(out, onlyTarget(settings));
    }
}

} // namespace

void DefineSections::hardware(DefineWriter &out, const DefineView &view)
{
    out.text(u"/* Hardware settings */\n"_s);
    writeTargets(out, view.general);
    const QString srdoInterval = view.general.text(u"co_srdo_interval"_s);
    if (!srdoInterval.isEmpty())
        out.define(u"CO_SRDO_TIMER_INTERVAL", Helper::addLowerCaseUtoNumberLists(srdoInterval));
}
