#include "generators/GeneratorTable.h"

#include "generators/LineProtocols.h"

namespace {

using Kind = GeneratorKind;

// --- Conditions ----------------------------------------------------------------------------------

bool always(const RunFacts &)
{
    return true;
}

bool anyProtocol(const RunFacts &facts)
{
    return facts.hasAnyProtocol() && !facts.bootloader;
}

bool canopen(const RunFacts &facts)
{
    return facts.hasCANopen;
}

bool canopenOnly(const RunFacts &facts)
{
    return facts.isCANopenOnly();
}

bool noVirtualObjects(const RunFacts &facts)
{
    return facts.isCANopenOnly() && !facts.hasVirtualObjects;
}

bool virtualObjects(const RunFacts &facts)
{
    return facts.isCANopenOnly() && facts.hasVirtualObjects;
}

// A project of J1939 lines only has its own source and documents further down.
bool mixedOrRawCan(const RunFacts &facts)
{
    return (facts.hasJ1939 || facts.hasRawCan) && !facts.isJ1939Only();
}

bool srdo(const RunFacts &facts)
{
    return facts.hasSrdo && facts.generateSrdo;
}

bool csharpProps(const RunFacts &facts)
{
    return facts.csharpProps;
}

bool j1939Only(const RunFacts &facts)
{
    return facts.isJ1939Only();
}

bool j1939SdoServer(const RunFacts &facts)
{
    return facts.isJ1939Only() && facts.j1939SdoServer;
}

bool j1939Adapter(const RunFacts &facts)
{
    return facts.isJ1939Only() && facts.j1939Adapter;
}

bool noJ1939Adapter(const RunFacts &facts)
{
    return facts.isJ1939Only() && !facts.j1939Adapter;
}

bool externalDeclarations(const RunFacts &facts)
{
    return (facts.hasJ1939 || facts.hasRawCan) && !facts.bootloader;
}

bool safetyMessages(const RunFacts &facts)
{
    return externalDeclarations(facts) && facts.safetyMessages;
}

bool indications(const RunFacts &facts)
{
    return facts.hasCANopen || facts.udsStaticIndication;
}

bool canFd(const RunFacts &facts)
{
    return indications(facts) && facts.canFd;
}

bool cppOutput(const RunFacts &facts)
{
    return indications(facts) && facts.cppOutput;
}

// --- Files of former runs ------------------------------------------------------------------------

constexpr const char *virtualDictionaryFiles[] = {"gen_vobjdict.c"};
constexpr const char *adapterFiles[] = {"gen_j1939_adapter.c", "gen_j1939_adapter.cs", "j1939_adapter.cs",
                                        "j1939_adapter.c"};
constexpr const char *indicationFiles[] = {"gen_indication.h"};

// --- Texts that more than one row has ------------------------------------------------------------

constexpr const char *objDictStarted = "Generation of gen_objdict.c in %1 started";
constexpr const char *objDictNotWritable = "The file gen_objdict.c in %1 is not writable";
constexpr const char *pgnTextStarted = "Generation of textual PGN documentation in %1 started";
constexpr const char *pgnHtmlStarted = "Generation of HTML pgn documentation in %1 started";
constexpr const char *dbcStarted = "Generation of DBC_file in %1 started";
constexpr const char *docNotWritable = "The file %2_doc.txt in %1 is not writable";
constexpr const char *htmlNotWritable = "The file %2.html in %1 is not writable";
constexpr const char *dbcNotWritable = "The file %2.dbc in %1 is not writable";
constexpr const char *edsNotWritable = "The EDS file %2.eds in %1 is not writable";

constexpr GeneratorRow rows[] = {
    {.step = "A",
     .applies = anyProtocol,
     .kind = Kind::Indices,
     .started = "Generation of gen_indices.h in %1 started",
     .notWritable = "The file in gen_indices.h in %1 is not writable"},

    {.step = "B1",
     .applies = canopen,
     .pass = RowPass::CANopenLines,
     .kind = Kind::TextDoc,
     .started = "Generation of textual object dictionary documentation in %1 started",
     .notWritable = "The file in %2_doc.txt in %1 is not writable"},
    {.step = "B2",
     .applies = canopen,
     .pass = RowPass::CANopenLines,
     .kind = Kind::Html,
     .started = "Generation of HTML object dictionary documentation in %1 started",
     .notWritable = "The file in %2.html in %1 is not writable",
     .mixedLineSuffix = "_co"},
    {.step = "B3",
     .applies = canopenOnly,
     .kind = Kind::ObjDict,
     .started = objDictStarted,
     .notWritable = objDictNotWritable},
    {.step = "B4",
     .applies = noVirtualObjects,
     .task = RowTask::RemoveFiles,
     .files = virtualDictionaryFiles},
    {.step = "B4",
     .applies = virtualObjects,
     .kind = Kind::VobjDict,
     .started = "Generation of gen_vobjdict.c in %1 started",
     .notWritable = "The file gen_vobjdict.c in %1 is not writable"},

    {.step = "C1",
     .applies = mixedOrRawCan,
     .kind = Kind::MultiPro,
     .started = "Generation of gen_mp.c in %1 started",
     .notWritable = "The file gen_mp.c in %1 is not writable"},
    {.step = "C2",
     .applies = mixedOrRawCan,
     .pass = RowPass::J1939Lines,
     .kind = Kind::J1939TextDoc,
     .started = pgnTextStarted,
     .notWritable = docNotWritable},
    {.step = "C2",
     .applies = mixedOrRawCan,
     .pass = RowPass::RawCanLines,
     .kind = Kind::RawCanTextDoc,
     .started = "Generation of raw CAN text documentation in %1 started",
     .notWritable = docNotWritable},
    {.step = "C2",
     .applies = mixedOrRawCan,
     .pass = RowPass::RawCanLines,
     .kind = Kind::RawCanDbc,
     .started = "Generation of raw CAN DBC file in %1 started",
     .notWritable = dbcNotWritable},
    {.step = "C3",
     .applies = mixedOrRawCan,
     .pass = RowPass::J1939Lines,
     .kind = Kind::J1939Html,
     .started = pgnHtmlStarted,
     .notWritable = htmlNotWritable,
     .mixedLineSuffix = "_j1939"},
    {.step = "C4",
     .applies = mixedOrRawCan,
     .pass = RowPass::J1939Lines,
     .kind = Kind::Dbc,
     .started = dbcStarted,
     .notWritable = dbcNotWritable},

    {.step = "D",
     .applies = srdo,
     .kind = Kind::Srdo,
     .started = "Generation of gen_srdo.c in %1 started",
     .notWritable = "The file gen_srdo.c in %1 is not writable",
     .endsRunOnFailure = true},
    {.step = "E",
     .applies = always,
     .kind = Kind::Define,
     .started = "Generation of gen_define.h in %1 started",
     .notWritable = "The file gen_define.h in %1 is not writable"},
    {.step = "F",
     .applies = csharpProps,
     .task = RowTask::WriteDefineProps,
     .started = "Generation of gen_define.props and Directory.Build.props in %1 finished",
     .notWritable = "The files gen_define.props and Directory.Build.props in %1 are not writable"},

    {.step = "G1",
     .applies = j1939Only,
     .kind = Kind::Pgn,
     .started = "Generation of gen_pgn.c in %1 started",
     .notWritable = "The file gen_pgn.c in %1 is not writable"},
    {.step = "G2",
     .applies = j1939SdoServer,
     .kind = Kind::ObjDict,
     .started = "Generation of gen_objdict.c for CAM11/CAM21 SDO server in %1 started",
     .notWritable = objDictNotWritable,
     .forJ1939SdoServer = true},
    {.step = "G3",
     .applies = j1939SdoServer,
     .kind = Kind::Eds,
     .started = "Generation of %2 EDS file in %1 started (for CAM11/CAM21 SDO Server)",
     .notWritable = edsNotWritable},
    {.step = "G4 text",
     .applies = j1939Only,
     .pass = RowPass::EveryLine,
     .kind = Kind::J1939TextDoc,
     .started = pgnTextStarted,
     .notWritable = docNotWritable},
    {.step = "G4 HTML",
     .applies = j1939Only,
     .pass = RowPass::EveryLine,
     .kind = Kind::J1939Html,
     .started = pgnHtmlStarted,
     .notWritable = htmlNotWritable},
    {.step = "G4 DBC",
     .applies = j1939Only,
     .pass = RowPass::J1939Lines,
     .kind = Kind::Dbc,
     .started = dbcStarted,
     .notWritable = dbcNotWritable},
    {.step = "G5", .applies = noJ1939Adapter, .task = RowTask::RemoveFiles, .files = adapterFiles},
    {.step = "G5",
     .applies = j1939Adapter,
     .kind = Kind::J1939Adapter,
     .started = "Generation of gen_j1939_adapter.c in %1 started",
     .notWritable = "The file gen_j1939_adapter.c in %1 is not writable"},
    {.step = "G6", .applies = j1939Only, .task = RowTask::RemoveFiles, .files = indicationFiles},

    {.step = "H1",
     .applies = externalDeclarations,
     .kind = Kind::ExtDecl,
     .started = "Generation of gen_extern_decl.h in %1 started",
     .notWritable = "The file gen_extern_decl.h in %1 is not writable"},
    {.step = "H2",
     .applies = safetyMessages,
     .kind = Kind::Sdm,
     .started = "Generation of file in %1 started",
     .notWritable = "The file in %1 is not writable"},

    {.step = "I1",
     .applies = indications,
     .kind = Kind::Indication,
     .started = "Generation of gen_indication in %1 started",
     .notWritable = "The file gen_indication.h in %1 is not writable"},
    {.step = "I2",
     .applies = indications,
     .pass = RowPass::CANopenLines,
     .kind = Kind::Csv,
     .started = "Generation of CSV file (deprecated) in %1 started",
     .notWritable = "The file %2.csv in %1 is not writable"},
    {.step = "I3",
     .applies = indications,
     .pass = RowPass::CANopenLines,
     .kind = Kind::Icsv,
     .started = "Generation of ICSV file in %1 started",
     .notWritable = "The file %2.icsv in %1 is not writable"},
    {.step = "I4",
     .applies = indications,
     .pass = RowPass::CANopenLines,
     .task = RowTask::GenerateEdsVariants,
     .kind = Kind::Eds,
     .started = "Generation of %2 EDS file in %1 started",
     .notWritable = edsNotWritable},
    {.step = "I5",
     .applies = canFd,
     .pass = RowPass::CANopenLines,
     .kind = Kind::Xdd,
     .started = "Generation of XDD file in %1 started",
     .notWritable = "The XDD file %2.xdd in %1 is not writable"},
    {.step = "I6", .applies = cppOutput, .task = RowTask::WriteCppOutput},
};

} // namespace

bool GeneratorRow::includes(int lineType) const
{
    switch (pass) {
    case RowPass::Once:
    case RowPass::EveryLine:
        return true;
    case RowPass::CANopenLines:
        return LineProtocols::hasCANopen(lineType);
    case RowPass::J1939Lines:
        return LineProtocols::hasJ1939(lineType);
    case RowPass::RawCanLines:
        return LineProtocols::hasRawCan(lineType);
    }
    return false;
}

std::span<const GeneratorRow> generatorTable()
{
    return rows;
}
