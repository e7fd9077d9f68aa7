#include "check/ProjectRules.h"

#include "check/CheckFindings.h"
#include "check/LineCheck.h"
#include "store/ObjectDataBase.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView blockTooLarge{
    "<strong><font color='red'>Error: </font></strong>CANopen SDO block size may not exceed 127."};
constexpr QLatin1StringView timerMissing{
    "<strong><font color='red'>Error: </font></strong>Timer interval not set in Common Settings -> "
    "Hardware/Target."};
constexpr QLatin1StringView masterOrSlaveMixed{
    "<strong><font color='red'>Error: </font></strong>The CANopen setting 'NMT Master or Slave' is not "
    "supported in multi-protocol projects."};

/** Segments of one block of an SDO block transfer (CiA 301). */
constexpr quint64 largestBlock = 127;
/** The choice "master or slave" among the lines' NMT functions. */
constexpr QChar masterOrSlave = u'2';

/** Where the lines of a type count besides all lines. */
struct LineTypeCount
{
    int type;
    int LineCounts::*count;
};

constexpr std::array<LineTypeCount, 8> lineTypeCounts{{
    {1, &LineCounts::canopen},
    {6, &LineCounts::canopen},
    {2, &LineCounts::j1939},
    {7, &LineCounts::j1939},
    {5, &LineCounts::mixed},
    {4, &LineCounts::rawCan},
    {6, &LineCounts::rawCan},
    {7, &LineCounts::rawCan},
}};

void checkBlockSize(ObjectDataBase &store, CheckFindings &findings)
{
    const QString key = u"sdo_blocktransfer_block_size"_s;
    if (unsignedValue(store.getGeneralSetting(key)) > largestBlock)
        findings.error(blockTooLarge, ProjectLocation::ofSetting(key));
}

void checkTimerInterval(ObjectDataBase &store, CheckFindings &findings)
{
    const QString key = u"co_timer_interval"_s;
    if (store.getGeneralSetting(key).isEmpty())
        findings.error(timerMissing, ProjectLocation::ofSetting(key));
}

void checkMasterChoice(ObjectDataBase &store, CheckFindings &findings, const LineCounts &lines)
{
    const bool multiProtocol =
        lines.all >= 2 && lines.canopen > 0 && lines.rawCan + lines.mixed + lines.j1939 > 0;
    const QString key = u"nmtmaster"_s;
    if (multiProtocol && store.getGeneralSetting(key).contains(masterOrSlave))
        findings.error(masterOrSlaveMixed, ProjectLocation::ofSetting(key));
}

} // namespace

QList<quint8> projectLines(ObjectDataBase &store)
{
    QList<quint8> lines = store.getLines();
    lines.removeIf([](quint8 line) { return line >= ObjectDataBase::MaximumLines; });
    return lines;
}

LineCounts countLines(ObjectDataBase &store)
{
    LineCounts counts;
    const QList<quint8> lines = projectLines(store);
    for (const quint8 line : lines) {
        const int type = store.getGeneralSetting(u"line%1type"_s.arg(line)).toInt();
        ++counts.all;
        for (const LineTypeCount &row : lineTypeCounts)
            if (row.type == type)
                ++(counts.*row.count);
    }
    return counts;
}

void checkProjectSettings(ObjectDataBase &store, CheckFindings &findings, const LineCounts &lines)
{
    checkBlockSize(store, findings);
    checkTimerInterval(store, findings);
    checkMasterChoice(store, findings, lines);
}
