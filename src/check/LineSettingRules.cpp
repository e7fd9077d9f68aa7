// Settings that hold one entry per line: here a missing entry is a finding and inherits nothing.

#include "check/LineCheck.h"
#include "check/LineRules.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView nodeIdMissing{
    "<strong>Error: </strong>CANopen basic Stack Settings: No Node-Id specified for line %1: Specify a "
    "number "
    "between 1 and 127, or 255 for LSS or a function name like e.g. readDipSwitch in the line below."};
constexpr QLatin1StringView openingBracket{
    "<strong>Error: </strong>CANopen basic Stack Settings: The name of the NodeId function may not include a "
    "(."};
constexpr QLatin1StringView closingBracket{
    "<strong>Error: </strong>CANopen basic Stack Settings: The name of the NodeId function may not include a "
    ")."};
constexpr QLatin1StringView receiveBufferMissing{"<strong>Error: </strong>Common Settings: CAN receive "
                                                 "buffer size must be specified individually for each "
                                                 "line."};
constexpr QLatin1StringView transmitBufferMissing{
    "<strong>Error: </strong>Common Settings: CAN transmit buffer size must be specified individually for "
    "each line."};
constexpr QLatin1StringView masterChoiceMissing{
    "<strong>Error: </strong>General Settings: The ML master/slave settings size must be specified "
    "individually for each line. (e.g 0,1)"};

/** A project whose lines are master or slave as the application chooses at run time. */
constexpr quint64 masterOrSlave = 2;

/** The line's own entry. The store fills the entries before the first one written with blanks. */
QString entry(const LineCheck &check, const QString &key)
{
    return check.store.getGeneralSettingEntry(key, check.line).trimmed();
}

void checkNodeId(const LineCheck &check)
{
    const QString key = u"co_node_id"_s;
    if (entry(check, key).isEmpty() && entry(check, u"co_node_id_fct"_s).isEmpty())
        check.findings.error(nodeIdMissing.arg(QString::number(check.line)), ProjectLocation::ofSetting(key));
}

void checkNodeIdFunction(const LineCheck &check)
{
    const QString key = u"co_node_id_fct"_s;
    const QString name = entry(check, key);
    if (name.contains(u'('))
        check.findings.error(openingBracket, ProjectLocation::ofSetting(key));
    if (name.contains(u')'))
        check.findings.error(closingBracket, ProjectLocation::ofSetting(key));
}

void checkBufferSize(const LineCheck &check, const QString &key, QLatin1StringView message)
{
    bool isNumber = false;
    entry(check, key).toUInt(&isNumber);
    if (!isNumber)
        check.findings.error(message, ProjectLocation::ofSetting(key));
}

// The whole setting counts: a list means that each line has made its choice already.
void checkMasterChoice(const LineCheck &check)
{
    const QString key = u"co_ml_ms"_s;
    if (check.line != 0 && unsignedValue(check.store.getGeneralSetting(u"nmtmaster"_s)) == masterOrSlave
        && !check.store.getGeneralSetting(key).contains(u','))
        check.findings.error(masterChoiceMissing, ProjectLocation::ofSetting(key));
}

} // namespace

void checkLineSettings(LineCheck &check)
{
    checkNodeId(check);
    checkNodeIdFunction(check);
    checkBufferSize(check, u"receivebuffersize"_s, receiveBufferMissing);
    checkBufferSize(check, u"transmitbuffersize"_s, transmitBufferMissing);
    checkMasterChoice(check);
}
