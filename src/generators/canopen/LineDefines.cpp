// Lines of the project: their buffers, and how many objects each of them has.

#include "canopen/Helper.h"
#include "generators/canopen/DefineSections.h"
#include "generators/canopen/DefineView.h"
#include "generators/canopen/DefineWriter.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

struct LineList
{
    QStringView macro;
    quint32 DefineLine::*number;
};

constexpr std::array<LineList, 6> serviceCounts{{
    {u"CO_TXPDO_COUNTS", &DefineLine::transmitPdos},
    {u"CO_RXPDO_COUNTS", &DefineLine::receivePdos},
    {u"CO_SSDO_COUNTS", &DefineLine::sdoServers},
    {u"CO_CSDO_COUNTS", &DefineLine::sdoClients},
    {u"CO_ASSIGN_COUNTS", &DefineLine::slaveAssignments},
    {u"CO_MAX_ASSIGN_COUNTS", &DefineLine::maxSlaveAssignments},
}};

constexpr std::array<LineList, 3> errorCounts{{
    {u"CO_ERR_HIST_COUNTS", &DefineLine::errorHistory},
    {u"CO_ACT_ERR_HIST_COUNTS", &DefineLine::activeErrors},
    {u"CO_EMCY_CONS_COUNTS", &DefineLine::emcyConsumers},
}};

template <std::size_t size>
void writeLists(DefineWriter &out, const DefineView &view, const std::array<LineList, size> &lists)
{
    for (const LineList &list : lists)
        out.list(list.macro, view, list.number);
}

template <typename Value>
QString joined(const DefineView &view, const Value &value)
{
    QStringList values;
    for (const DefineLine &line : view.lines)
        values.append(value(line));
    return values.join(", "_L1);
}

void writeBuffers(DefineWriter &out, const DefineView &view)
{
    out.text(u"/* Number of receive/transmit buffer entries per line */\n"_s);
    out.list(u"CORE_REC_BUFFER_COUNTS", view, &DefineLine::receiveBuffers);
    out.list(u"CORE_TR_BUFFER_COUNTS", view, &DefineLine::transmitBuffers);
}

void writeObjects(DefineWriter &out, const DefineView &view)
{
    const auto name = [](const DefineLine &line) { return u"CO_OBJECTS_LINE_%1_CNT"_s.arg(line.number); };
    out.text(u"/* Number of objects per line */\n"_s);
    for (const DefineLine &line : view.lines)
        out.number(name(line), line.objects);
    out.define(u"CO_OBJECT_COUNTS", joined(view, name));
}

/** A line without a node-ID has the 0 that an empty element would have; C knows no empty ones. */
void writeNodes(DefineWriter &out, const DefineView &view)
{
    const auto nodeId = [&](const DefineLine &line) {
        const QString id = view.general.entry(u"co_node_id"_s, line.number);
        return id.isEmpty() ? u"0u"_s : Helper::addLowerCaseUtoNumberLists(id);
    };
    const auto nodeIdFunction = [&](const DefineLine &line) {
        const QString function = view.general.entry(u"co_node_id_fct"_s, line.number);
        return function.isEmpty() ? u"NULL"_s : function;
    };
    out.define(u"CO_NODE_IDS", joined(view, nodeId));
    out.define(u"CO_NODE_ID_FUNCTIONS", joined(view, nodeIdFunction));
    const QString networkId = view.general.text(u"co_network_id"_s);
    if (!networkId.isEmpty())
        out.define(u"CO_NETWORK_ID", Helper::addLowerCaseUtoNumberLists(networkId));
}

} // namespace

// The older stack's sources ask for the number of lines by a name of their own.
void DefineSections::multiLine(DefineWriter &out, const DefineView &view)
{
    if (!view.isMultiLineForm())
        return;
    const QString lines = QString::number(view.lines.size());
    out.flag(u"CAN_MULTI_LINE");
    out.plain(u"#define CAN_MULTI_LINE_CNT\t"_s + lines + u"u\n"_s);
    if (!out.isV4())
        out.plain(u"#define CO_MULTI_LINE_CNT\t"_s + lines + u"u\n"_s);
}

void DefineSections::lineSettings(DefineWriter &out, const DefineView &view)
{
    if (!view.hasCANopen)
        return;
    out.text(u"/* Line Settings */\n"_s);
    multiLine(out, view);
    out.flag(u"CANOPEN_SUPPORTED");
    writeBuffers(out, view);
    writeObjects(out, view);
    writeLists(out, view, serviceCounts);
    out.define(u"CO_GUARDING_COUNTS", u"CO_MAX_ASSIGN_COUNTS"_s);
    out.list(u"CO_ERR_CTRL_COUNTS", view, &DefineLine::heartbeatConsumers);
    out.count(u"CO_STORE_CNT_MAX", view.largest(&DefineLine::storeEntries));
    writeLists(out, view, errorCounts);
    writeNodes(out, view);
}
