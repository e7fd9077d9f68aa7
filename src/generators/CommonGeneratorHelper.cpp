#include "generators/CommonGeneratorHelper.h"

#include "generators/CodeWriter.h"
#include "generators/LineProtocols.h"
#include "store/ObjectDataBase.h"

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/** The protocols that run on a line of one type, as the stack's flags. */
struct ProtocolFlags
{
    int lineType;
    QStringView flags;
    bool isRawCanMixture = false;
};

constexpr std::array<ProtocolFlags, 6> protocolFlags{{
    {LineProtocols::CANopen, u"CORE_PROT_TYPE_CANOPEN"},
    {LineProtocols::J1939, u"CORE_PROT_TYPE_J1939"},
    {LineProtocols::RawCan, u"CORE_PROT_TYPE_RAWCAN"},
    {LineProtocols::CANopenAndJ1939, u"CORE_PROT_TYPE_J1939 | CORE_PROT_TYPE_CANOPEN"},
    {LineProtocols::CANopenAndRawCan, u"CORE_PROT_TYPE_CANOPEN | CORE_PROT_TYPE_RAWCAN", true},
    {LineProtocols::J1939AndRawCan, u"CORE_PROT_TYPE_J1939 | CORE_PROT_TYPE_RAWCAN", true},
}};

QString flagsOfLineType(int type, const Dialect &dialect)
{
    const auto found = std::find_if(protocolFlags.begin(), protocolFlags.end(), [&](const auto &row) {
        return row.lineType == type && (!row.isRawCanMixture || dialect.hasRawCanMixtures());
    });
    return dialect.text(found == protocolFlags.end() ? u"CORE_PROT_TYPE_UNKNOWN"_s : found->flags.toString());
}

bool isOn(ObjectDataBase &store, const QString &setting)
{
    return store.getGeneralSetting(setting).toInt() == 1;
}

QString flagsOfLine(ObjectDataBase &store, quint8 line, bool multiLine, const Dialect &dialect)
{
    const int type = store.getGeneralSetting(u"line%1type"_s.arg(line)).toInt();
    const bool bootloader = !multiLine && store.getGeneralSetting(u"uds_bl_setting"_s) == "1"_L1;
    if (bootloader)
        return type == LineProtocols::RawCan ? dialect.text(u"CORE_PROT_TYPE_UDS"_s)
                                             : flagsOfLineType(type, dialect);
    const bool uds = isOn(store, u"udsserver_supported"_s) || isOn(store, u"udsclient_supported"_s);
    return flagsOfLineType(type, dialect) + (uds ? dialect.udsProtocol() : QStringView());
}

/** What the common initialisation tells of a project. */
struct CommonInit
{
    QStringList protocols; ///< by line
    bool hasIsoTp = false;
    bool hasCanFd = false;
};

CommonInit commonInit(ObjectDataBase &store, const Dialect &dialect)
{
    QList<quint8> lines = store.getLines();
    lines.removeIf([](quint8 line) { return line >= ObjectDataBase::ClipboardLine; });
    const bool multiLine = lines.size() > 1;
    CommonInit result{.hasIsoTp = isOn(store, u"isotp_supported"_s) || isOn(store, u"udsserver_supported"_s),
                      .hasCanFd = store.getGeneralSetting(u"canfd_supported"_s).toInt() > 0};
    for (const quint8 line : std::as_const(lines))
        if (line < ObjectDataBase::MaximumLines)
            result.protocols.append(flagsOfLine(store, line, multiLine, dialect));
    return result;
}

} // namespace

GeneratorTextBlocks::GeneratorTextBlocks(ObjectDataBase *database, const Dialect &dialect, QObject *parent)
    : QObject(parent), m_database(database), m_dialect(dialect)
{
}

void GeneratorTextBlocks::commonInitBlock(QString &text) const
{
    static const DialectTemplate block(uR"(/* core initialization settings */
CORE_COMMON_INIT_VAL_T    commonInitVars = {
	1u,
	{ CORE_REC_BUFFER_COUNTS },
	{ CORE_TR_BUFFER_COUNTS },
	{ CORE_COB_COUNTS }, 
	{ $protocols$}$comma$
$isoTpCounts$
$fdModes$
};

)"_s);
    static const TemplateText isoTpCounts(uR"(	{ ISOTP_CLIENT_COUNTS },
	{ ISOTP_SERVER_COUNTS },
)"_s);
    if (!m_database)
        return;
    const CommonInit init = commonInit(*m_database, m_dialect);
    const auto writeIsoTpCounts = [&](CodeWriter &out) {
        if (init.hasIsoTp)
            out.fill(isoTpCounts);
    };
    const auto writeFdModes = [&](CodeWriter &out) {
        if (init.hasCanFd)
            out << u"\t{ " << u"CO_TRUE, "_s.repeated(init.protocols.size()) << u"}";
    };
    CodeWriter(text).fill(block.in(m_dialect),
                          {{u"protocols", init.protocols.join(u", "_s)},
                           {u"comma", init.hasIsoTp || init.hasCanFd ? u"," : u""},
                           {u"isoTpCounts", writeIsoTpCounts},
                           {u"fdModes", writeFdModes}});
}
