// What does not belong to one protocol: buffers, virtual objects, defines of the user, CAN identifiers.

#include "generators/canopen/DefineSections.h"
#include "generators/canopen/DefineView.h"
#include "generators/canopen/DefineWriter.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

struct VirtualTypeRow
{
    QStringView macro;
    CValues::Table table;
};

constexpr std::array<VirtualTypeRow, 8> virtualTypes{{
    {u"CO_VIRTUAL_U8_CNT", CValues::Table::U8},
    {u"CO_VIRTUAL_U16_CNT", CValues::Table::U16},
    {u"CO_VIRTUAL_U32_CNT", CValues::Table::U32},
    {u"CO_VIRTUAL_I8_CNT", CValues::Table::I8},
    {u"CO_VIRTUAL_I16_CNT", CValues::Table::I16},
    {u"CO_VIRTUAL_I32_CNT", CValues::Table::I32},
    {u"CO_VIRTUAL_R32_CNT", CValues::Table::R32},
    {u"CO_VIRTUAL_U24_CNT", CValues::Table::U24},
}};

void writeUserMessages(DefineWriter &out, const SettingValues &settings)
{
    const quint32 transmitted = settings.number(u"user_tx_cob"_s);
    const quint32 received = settings.number(u"user_rx_cob"_s);
    if (transmitted == 0 && received == 0)
        return;
    out.number(u"USER_TRANSMIT_MSG_CNT", transmitted);
    out.number(u"USER_RECEIVE_MSG_CNT", received);
    out.flag(u"CORE_USER_EXTENSION_SUPPORTED");
}

bool overwritesConnectionSet(const DefineView &view)
{
    constexpr auto key = "overwrite_predef"_L1;
    return view.general.number(key) == 1 || view.any([&](const DefineLine &line) {
        return view.general.numberForLine(key, line.number) == 1;
    });
}

QString cobsByLine(const DefineView &view)
{
    QStringList cobs;
    for (const DefineLine &line : view.lines)
        cobs.append(QString::number(line.cobs));
    return cobs.join(", "_L1);
}

} // namespace

void DefineSections::buffers(DefineWriter &out, const DefineView &view)
{
    const SettingValues &settings = view.general;
    writeUserMessages(out, settings);
    if (settings.isOn(u"sorted_coblist"_s)) {
        out.text(u"/* Use of sorted COB list*/\n"_s);
        out.flag(u"CORE_COB_SORTED_LIST");
    }
    if (settings.isOn(u"only_one_hb_buffer"_s))
        out.flag(u"CO_ONE_HB_CONSUMER_COB");
    out.text(u"/* Definition of CAN queue sizes */\n"_s);
    out.number(u"CORE_CONFIG_REC_BUFFER_CNT", view.total(&DefineLine::receiveBuffers));
    out.number(u"CORE_CONFIG_TRANS_BUFFER_CNT", view.total(&DefineLine::transmitBuffers));
    if (settings.isOn(u"canfd_supported"_s))
        out.flag(u"CORE_CANFD_SUPPORTED");
}

void DefineSections::virtualObjects(DefineWriter &out, const DefineView &view)
{
    const VirtualDictionary &dictionary = view.virtualObjects;
    if (dictionary.objects == 0 && dictionary.subIndices == 0)
        return;
    out.text(u"/* number of virtual objects */\n"_s);
    out.number(u"CO_VIRTUAL_INDEX_CNT", dictionary.objects);
    for (const VirtualTypeRow &row : virtualTypes)
        out.number(row.macro, dictionary.types[row.table]);
    out.number(u"CO_VOD_ASSIGN_CNT", dictionary.objects);
    out.number(u"CO_VOBJ_DESC_CNT", dictionary.subIndices);
}

void DefineSections::userDefines(DefineWriter &out, const DefineView &view)
{
    const QString defines = view.general.value(u"user_defines"_s);
    if (!defines.isEmpty()) {
        out.text(u"/* application-specific defines as defined in NodeSmith */\n"_s);
        out.lines(defines);
        out.text(u"/* end of application-specific defines */\n"_s);
    }
    if (view.general.isOn(u"generate_generation_counter"_s))
        out.number(u"GEN_GENERATION_COUNT", view.general.number(u"lvx_generation_count"_s));
    if (overwritesConnectionSet(view))
        out.flag(u"GEN_OVERWRITE_PREDEF_CONN_SET");
}

void DefineSections::cobs(DefineWriter &out, const DefineView &view)
{
    out.text(u"/* COB Definitions */\n"_s);
    out.text(u"#define CORE_COB_COUNTS "_s + cobsByLine(view) + u"\n"_s);
    out.text(u"#define CORE_COB_CNT \t"_s + QString::number(view.total(&DefineLine::cobs)) + u"\n"_s);
}
