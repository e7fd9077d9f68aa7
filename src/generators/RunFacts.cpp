#include "generators/RunFacts.h"

#include "generators/LineProtocols.h"
#include "generators/VirtualObjects.h"
#include "store/ObjectDataBase.h"

#include <QVariant>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/** Lines from here on are generated for, but say nothing about the protocols of the project. */
constexpr quint8 firstLineWithoutSay = 240;

// CiA 304: communication parameters of the SRDOs
constexpr quint16 firstSrdo = 0x1301;
constexpr quint16 lastSrdo = 0x137F;

bool isOne(const QString &value)
{
    return value.toInt() == 1;
}

bool anyLineHasSrdo(ObjectDataBase &store, const QList<quint8> &lines)
{
    return std::any_of(lines.begin(), lines.end(), [&store](quint8 line) {
        return !store.getIndexList(line, firstSrdo, lastSrdo).isEmpty();
    });
}

void readLines(ObjectDataBase &store, RunFacts &facts)
{
    facts.lines = RunFacts::projectLines(store);
    facts.multiLine = facts.lines.size() > 1;
    for (const quint8 line : std::as_const(facts.lines)) {
        const int type = RunFacts::lineType(store, line);
        facts.lineTypes.insert(line, type);
        if (line >= firstLineWithoutSay)
            continue;
        facts.hasCANopen = facts.hasCANopen || LineProtocols::hasCANopen(type);
        facts.hasJ1939 = facts.hasJ1939 || LineProtocols::hasJ1939(type);
        facts.hasRawCan = facts.hasRawCan || LineProtocols::hasRawCan(type);
    }
}

} // namespace

RunFacts RunFacts::read(ObjectDataBase &store)
{
    RunFacts facts;
    readLines(store, facts);
    facts.core = store.getGeneralSetting(u"use_core_headers"_s) == "V4"_L1;
    facts.bootloader = !facts.multiLine && store.getGeneralSetting(u"uds_bl_setting"_s) == "1"_L1;
    facts.canFd = store.getGeneralSetting(u"canfd_supported"_s).toInt() >= 1;
    facts.udsStaticIndication = isOne(store.getGeneralSetting(u"uds_static_indication"_s));
    facts.compactArrays = isOne(store.getGeneralSetting(u"compact_array_description"_s));
    facts.staticSrdoData = isOne(store.getGeneralSetting(u"static_srdo_data"_s));
    facts.cppOutput = isOne(store.getGeneralSetting(u"generate_cpp_output"_s));
    facts.csharpProps = isOne(store.getGeneralSetting(u"gen_csharp_props"_s));
    facts.j1939Adapter = isOne(store.getJ1939Setting(u"j1939adapter"_s));
    facts.j1939SdoServer = isOne(store.getJ1939Setting(u"cia510serversupport"_s));
    facts.safetyMessages = store.getJ1939Setting(u"safetysupport"_s).toInt() > 0;
    facts.disableDocu = QVariant(store.getMiscSetting(u"disableDocu"_s)).toBool();
    facts.hasSrdo = anyLineHasSrdo(store, facts.lines);
    facts.hasVirtualObjects = ::hasVirtualObjects(store, facts.lines);
    return facts;
}

QList<quint8> RunFacts::projectLines(ObjectDataBase &store)
{
    QList<quint8> lines = store.getLines();
    lines.removeIf([](quint8 line) { return line >= ObjectDataBase::ClipboardLine; });
    std::sort(lines.begin(), lines.end());
    return lines;
}

int RunFacts::lineType(ObjectDataBase &store, quint8 line)
{
    return store.getGeneralSetting(u"line%1type"_s.arg(line)).toInt();
}
