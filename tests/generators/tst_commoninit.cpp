#include "generators/CommonGeneratorHelper.h"
#include "store/StoreTest.h"
#include "support/CCompiler.h"

#include <QMap>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

/** A project as far as the common initialisation depends on it. */
struct Project
{
    QMap<int, QString> lineTypes; ///< by line
    bool isoTp = false;
    bool udsServer = false;
    bool udsClient = false;
    QString canFd = u"0"_s;
    QString bootloader;
};

QString flag(bool on)
{
    return on ? u"1"_s : u"0"_s;
}

std::unique_ptr<StoreTest::NewStore> storeOf(const Project &project)
{
    auto store = std::make_unique<StoreTest::NewStore>();
    if (!project.lineTypes.contains(0))
        store->removeLine(0);
    for (auto line = project.lineTypes.cbegin(); line != project.lineTypes.cend(); ++line) {
        if (line.key() != 0)
            store->addNode(quint8(line.key()), {});
        store->setGeneralSetting(u"line%1type"_s.arg(line.key()), line.value());
    }
    store->setGeneralSetting(u"isotp_supported"_s, flag(project.isoTp));
    store->setGeneralSetting(u"udsserver_supported"_s, flag(project.udsServer));
    store->setGeneralSetting(u"udsclient_supported"_s, flag(project.udsClient));
    store->setGeneralSetting(u"canfd_supported"_s, project.canFd);
    if (!project.bootloader.isNull())
        store->setGeneralSetting(u"uds_bl_setting"_s, project.bootloader);
    return store;
}

QString blockOf(const Project &project, bool v4)
{
    const auto store = storeOf(project);
    QString text;
    if (v4)
        CommonGeneratorHelperV4(store.get()).commonInitBlock(text);
    else
        CommonGeneratorHelper(store.get()).commonInitBlock(text);
    return text;
}

/** The text between the braces of the protocol list. */
QString protocolsOf(const Project &project, bool v4)
{
    const QString line = blockOf(project, v4).section(u'\n', 6, 6);
    return line.startsWith(u"\t{ "_s) ? line.sliced(3).section(u'}', 0, 0) : u"no list: "_s + line;
}

/** The defines of the stack's configuration that the structure and its type need. */
QByteArray genDefine(const Project &project)
{
    const auto lines = project.lineTypes.size();
    const QString counts = QStringList(lines, u"5u"_s).join(u", "_s);
    QString text =
        u"#define CORE_REC_BUFFER_COUNTS %1\n#define CORE_TR_BUFFER_COUNTS %1\n#define CORE_COB_COUNTS %1\n"
        "#define CO_REC_BUFFER_COUNTS %1\n#define CO_TR_BUFFER_COUNTS %1\n#define CO_COB_COUNTS %1\n"_s.arg(
            counts);
    if (lines > 1)
        text += u"#define CAN_MULTI_LINE_CNT %1u\n"_s.arg(lines);
    if (project.isoTp || project.udsServer)
        text += u"#define ISOTP_CLIENT_COUNTS %1\n#define ISOTP_SERVER_COUNTS %1\n"_s.arg(counts);
    if (project.canFd.toInt() > 0)
        text += u"#define CORE_CANFD_SUPPORTED 1u\n"_s;
    return text.toLatin1();
}

} // namespace

/** The common initialisation structure of the stack, in both dialects. */
class TestCommonInit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void theStructureOfAClassicalLine();
    void theStructureForTheOlderStack();
    void isoTpAndFdGroupsFollow();
    void theFdGroupStandsWithoutIsoTpToo();
    void theFdGroupHasOneModePerLine();
    void isoTpCountsStandForAUdsServerToo_data();
    void isoTpCountsStandForAUdsServerToo();
    void fdIsOnAboveZero_data();
    void fdIsOnAboveZero();
    void lineTypesHaveTheirProtocols_data();
    void lineTypesHaveTheirProtocols();
    void everyLineHasItsProtocols();
    void udsJoinsTheProtocols_data();
    void udsJoinsTheProtocols();
    void aBootloaderProjectOfOneLineHasItsOwnRule_data();
    void aBootloaderProjectOfOneLineHasItsOwnRule();
    void linesAboveTheStacksNumberHaveNoProtocol();
    void onlyLinesAboveTheStacksNumberGiveAnEmptyList();
    void theClipboardIsNoLine();
    void theTextIsAppended();
    void withoutAStoreNothingIsWritten();
    void everyCombinationCompiles_data();
    void everyCombinationCompiles();

private:
    static QList<Project> allProjects();
    static const QSet<QByteArray> &allSources(bool v4);
};

void TestCommonInit::theStructureOfAClassicalLine()
{
    QCOMPARE(blockOf({.lineTypes = {{0, u"1"_s}}}, true),
             u"/* core initialization settings */\n"
             "CORE_COMMON_INIT_VAL_T    commonInitVars = {\n"
             "\t1u,\n"
             "\t{ CORE_REC_BUFFER_COUNTS },\n"
             "\t{ CORE_TR_BUFFER_COUNTS },\n"
             "\t{ CORE_COB_COUNTS }, \n"
             "\t{ CORE_PROT_TYPE_CANOPEN}\n"
             "};\n\n"_s);
}

void TestCommonInit::theStructureForTheOlderStack()
{
    QCOMPARE(blockOf({.lineTypes = {{0, u"5"_s}}, .udsServer = true, .canFd = u"1"_s}, false),
             u"/* core initialization settings */\n"
             "CO_COMMON_INIT_VAL_T    commonInitVars = {\n"
             "\t1u,\n"
             "\t{ CO_REC_BUFFER_COUNTS },\n"
             "\t{ CO_TR_BUFFER_COUNTS },\n"
             "\t{ CO_COB_COUNTS }, \n"
             "\t{ MP_PROT_TYPE_J1939 | MP_PROT_TYPE_CANOPEN| MP_PROT_TYPE_UDS},\n"
             "\t{ ISOTP_CLIENT_COUNTS },\n"
             "\t{ ISOTP_SERVER_COUNTS },\n"
             "\t{ CO_TRUE, }\n"
             "};\n\n"_s);
}

void TestCommonInit::isoTpAndFdGroupsFollow()
{
    const QString text = blockOf({.lineTypes = {{0, u"2"_s}}, .isoTp = true, .canFd = u"1"_s}, true);
    QCOMPARE(text.section(u'\n', 6),
             u"\t{ CORE_PROT_TYPE_J1939},\n"
             "\t{ ISOTP_CLIENT_COUNTS },\n"
             "\t{ ISOTP_SERVER_COUNTS },\n"
             "\t{ CO_TRUE, }\n"
             "};\n\n"_s);
    QCOMPARE(blockOf({.lineTypes = {{0, u"2"_s}}, .isoTp = true}, true).section(u'\n', 6),
             u"\t{ CORE_PROT_TYPE_J1939},\n"
             "\t{ ISOTP_CLIENT_COUNTS },\n"
             "\t{ ISOTP_SERVER_COUNTS },\n"
             "};\n\n"_s);
}

void TestCommonInit::theFdGroupStandsWithoutIsoTpToo()
{
    QCOMPARE(blockOf({.lineTypes = {{0, u"1"_s}}, .canFd = u"1"_s}, true).section(u'\n', 6),
             u"\t{ CORE_PROT_TYPE_CANOPEN},\n\t{ CO_TRUE, }\n};\n\n"_s);
}

void TestCommonInit::theFdGroupHasOneModePerLine()
{
    const QString text =
        blockOf({.lineTypes = {{0, u"1"_s}, {1, u"4"_s}, {2, u"2"_s}, {40, u"1"_s}}, .canFd = u"1"_s}, true);
    QCOMPARE(text.section(u'\n', 7, 7), u"\t{ CO_TRUE, CO_TRUE, CO_TRUE, }"_s);
}

void TestCommonInit::isoTpCountsStandForAUdsServerToo_data()
{
    QTest::addColumn<bool>("isoTp");
    QTest::addColumn<bool>("server");
    QTest::addColumn<bool>("client");
    QTest::addColumn<bool>("counts");
    QTest::newRow("nothing") << false << false << false << false;
    QTest::newRow("ISO-TP") << true << false << false << true;
    QTest::newRow("UDS server") << false << true << false << true;
    QTest::newRow("both") << true << true << false << true;
    QTest::newRow("UDS client") << false << false << true << false;
}

void TestCommonInit::isoTpCountsStandForAUdsServerToo()
{
    QFETCH(bool, isoTp);
    QFETCH(bool, server);
    QFETCH(bool, client);
    const Project project{
        .lineTypes = {{0, u"1"_s}}, .isoTp = isoTp, .udsServer = server, .udsClient = client};
    QTEST(blockOf(project, true).contains(u"\t{ ISOTP_CLIENT_COUNTS },\n\t{ ISOTP_SERVER_COUNTS },\n"_s),
          "counts");
}

void TestCommonInit::fdIsOnAboveZero_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<bool>("fd");
    QTest::newRow("0") << u"0"_s << false;
    QTest::newRow("1") << u"1"_s << true;
    QTest::newRow("2") << u"2"_s << true;
    QTest::newRow("-1") << u"-1"_s << false;
    QTest::newRow("empty") << QString() << false;
    QTest::newRow("a word") << u"yes"_s << false;
}

void TestCommonInit::fdIsOnAboveZero()
{
    QFETCH(QString, setting);
    QTEST(blockOf({.lineTypes = {{0, u"1"_s}}, .canFd = setting}, true).contains(u"CO_TRUE"_s), "fd");
}

void TestCommonInit::lineTypesHaveTheirProtocols_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("v4");
    QTest::addColumn<QString>("older");
    const auto row = [](const char *type, const char *v4, const char *older) {
        QTest::newRow(*type ? type : "empty")
            << QString::fromLatin1(type) << QString::fromLatin1(v4) << QString::fromLatin1(older);
    };
    row("1", "CORE_PROT_TYPE_CANOPEN", "MP_PROT_TYPE_CANOPEN");
    row("2", "CORE_PROT_TYPE_J1939", "MP_PROT_TYPE_J1939");
    row("4", "CORE_PROT_TYPE_RAWCAN", "MP_PROT_TYPE_RAWCAN");
    row("5", "CORE_PROT_TYPE_J1939 | CORE_PROT_TYPE_CANOPEN", "MP_PROT_TYPE_J1939 | MP_PROT_TYPE_CANOPEN");
    row("6", "CORE_PROT_TYPE_CANOPEN | CORE_PROT_TYPE_RAWCAN", "MP_PROT_TYPE_UNKNOWN");
    row("7", "CORE_PROT_TYPE_J1939 | CORE_PROT_TYPE_RAWCAN", "MP_PROT_TYPE_UNKNOWN");
    for (const char *other : {"0", "3", "8", "", "x"})
        row(other, "CORE_PROT_TYPE_UNKNOWN", "MP_PROT_TYPE_UNKNOWN");
}

void TestCommonInit::lineTypesHaveTheirProtocols()
{
    QFETCH(QString, type);
    QTEST(protocolsOf({.lineTypes = {{0, type}}}, true), "v4");
    QTEST(protocolsOf({.lineTypes = {{0, type}}}, false), "older");
}

void TestCommonInit::everyLineHasItsProtocols()
{
    QCOMPARE(
        protocolsOf({.lineTypes = {{0, u"1"_s}, {1, u"2"_s}, {31, u"6"_s}}}, true),
        u"CORE_PROT_TYPE_CANOPEN, CORE_PROT_TYPE_J1939, CORE_PROT_TYPE_CANOPEN | CORE_PROT_TYPE_RAWCAN"_s);
}

void TestCommonInit::udsJoinsTheProtocols_data()
{
    QTest::addColumn<bool>("server");
    QTest::addColumn<bool>("client");
    QTest::addColumn<bool>("uds");
    QTest::newRow("none") << false << false << false;
    QTest::newRow("server") << true << false << true;
    QTest::newRow("client") << false << true << true;
    QTest::newRow("both") << true << true << true;
}

void TestCommonInit::udsJoinsTheProtocols()
{
    QFETCH(bool, server);
    QFETCH(bool, client);
    QFETCH(bool, uds);
    const Project one{.lineTypes = {{0, u"4"_s}}, .udsServer = server, .udsClient = client};
    QCOMPARE(protocolsOf(one, true),
             u"CORE_PROT_TYPE_RAWCAN"_s + (uds ? u" | CORE_PROT_TYPE_UDS"_s : QString()));
    QCOMPARE(protocolsOf(one, false), u"MP_PROT_TYPE_RAWCAN"_s + (uds ? u"| MP_PROT_TYPE_UDS"_s : QString()));
    const Project two{.lineTypes = {{0, u"1"_s}, {1, u"9"_s}}, .udsServer = server, .udsClient = client};
    QCOMPARE(
        protocolsOf(two, true),
        uds ? u"CORE_PROT_TYPE_CANOPEN | CORE_PROT_TYPE_UDS, CORE_PROT_TYPE_UNKNOWN | CORE_PROT_TYPE_UDS"_s
            : u"CORE_PROT_TYPE_CANOPEN, CORE_PROT_TYPE_UNKNOWN"_s);
}

void TestCommonInit::aBootloaderProjectOfOneLineHasItsOwnRule_data()
{
    QTest::addColumn<QString>("bootloader");
    QTest::addColumn<QString>("type");
    QTest::addColumn<int>("lines");
    QTest::addColumn<QString>("protocols");
    QTest::newRow("raw CAN") << u"1"_s << u"4"_s << 1 << u"CORE_PROT_TYPE_UDS"_s;
    QTest::newRow("another protocol has no UDS added")
        << u"1"_s << u"1"_s << 1 << u"CORE_PROT_TYPE_CANOPEN"_s;
    QTest::newRow("setting 0") << u"0"_s << u"4"_s << 1 << u"CORE_PROT_TYPE_RAWCAN | CORE_PROT_TYPE_UDS"_s;
    QTest::newRow("setting empty") << u""_s << u"4"_s << 1 << u"CORE_PROT_TYPE_RAWCAN | CORE_PROT_TYPE_UDS"_s;
    QTest::newRow("several lines do not know it")
        << u"1"_s << u"4"_s << 2
        << u"CORE_PROT_TYPE_RAWCAN | CORE_PROT_TYPE_UDS, CORE_PROT_TYPE_RAWCAN | CORE_PROT_TYPE_UDS"_s;
}

void TestCommonInit::aBootloaderProjectOfOneLineHasItsOwnRule()
{
    QFETCH(QString, bootloader);
    QFETCH(QString, type);
    QFETCH(int, lines);
    Project project{.udsServer = true, .bootloader = bootloader};
    for (int line = 0; line < lines; ++line)
        project.lineTypes.insert(line, type);
    QTEST(protocolsOf(project, true), "protocols");
}

void TestCommonInit::linesAboveTheStacksNumberHaveNoProtocol()
{
    QCOMPARE(protocolsOf({.lineTypes = {{0, u"1"_s}, {31, u"4"_s}, {32, u"2"_s}, {100, u"2"_s}}}, true),
             u"CORE_PROT_TYPE_CANOPEN, CORE_PROT_TYPE_RAWCAN"_s);
}

void TestCommonInit::onlyLinesAboveTheStacksNumberGiveAnEmptyList()
{
    QCOMPARE(blockOf({.lineTypes = {{32, u"1"_s}, {33, u"2"_s}}}, true).section(u'\n', 6),
             u"\t{ }\n};\n\n"_s);
    QCOMPARE(blockOf({.lineTypes = {{40, u"1"_s}}, .canFd = u"1"_s}, false).section(u'\n', 6),
             u"\t{ },\n\t{ }\n};\n\n"_s);
}

void TestCommonInit::theClipboardIsNoLine()
{
    const Project project{.lineTypes = {{0, u"4"_s}, {254, u"1"_s}, {255, u"1"_s}}, .bootloader = u"1"_s};
    QCOMPARE(protocolsOf(project, true), u"CORE_PROT_TYPE_UDS"_s);
}

void TestCommonInit::theTextIsAppended()
{
    const auto store = storeOf({.lineTypes = {{0, u"1"_s}}});
    QString text = u"before\n"_s;
    const CommonGeneratorHelperV4 helper(store.get());
    helper.commonInitBlock(text);
    QVERIFY(text.startsWith(u"before\n/* core"_s));
    const qsizetype once = text.size();
    helper.commonInitBlock(text);
    QCOMPARE(text.size(), 2 * once - qsizetype(u"before\n"_s.size()));
}

void TestCommonInit::withoutAStoreNothingIsWritten()
{
    QString text;
    CommonGeneratorHelper(nullptr).commonInitBlock(text);
    auto store = storeOf({.lineTypes = {{0, u"1"_s}}});
    const CommonGeneratorHelperV4 helper(store.get());
    store.reset();
    helper.commonInitBlock(text);
    QCOMPARE(text, QString());
}

QList<Project> TestCommonInit::allProjects()
{
    using Types = QMap<int, QString>;
    QList<Types> lineTypes{{{0, u"1"_s}, {1, u"4"_s}}, {{0, u"5"_s}, {1, u"6"_s}, {7, u"7"_s}, {31, u"2"_s}}};
    for (const QString &type : {u"1"_s, u"2"_s, u"4"_s, u"5"_s, u"6"_s, u"7"_s, u"0"_s})
        lineTypes.append(Types{{0, type}});
    constexpr int combinations = 32; // of five switches
    QList<Project> projects;
    for (const Types &types : std::as_const(lineTypes))
        for (int bits = 0; bits < combinations; ++bits)
            projects.append({.lineTypes = types,
                             .isoTp = (bits & 1) != 0,
                             .udsServer = (bits & 2) != 0,
                             .udsClient = (bits & 4) != 0,
                             .canFd = flag((bits & 8) != 0),
                             .bootloader = flag((bits & 16) != 0)});
    return projects;
}

void TestCommonInit::everyCombinationCompiles_data()
{
    QTest::addColumn<QString>("compiler");
    QTest::addColumn<bool>("v4");
    for (const QString &program : CCompiler::programs()) {
        QTest::addRow("%s, V4", qPrintable(program)) << program << true;
        QTest::addRow("%s, older", qPrintable(program)) << program << false;
    }
}

// Projects that give the same text are compiled once.
const QSet<QByteArray> &TestCommonInit::allSources(bool v4)
{
    static std::array<QSet<QByteArray>, 2> sources;
    QSet<QByteArray> &texts = sources.at(v4 ? 1 : 0);
    if (texts.isEmpty())
        for (const Project &project : allProjects())
            texts.insert(genDefine(project) + "#include <co_canopen.h>\n\n" + blockOf(project, v4).toUtf8());
    return texts;
}

void TestCommonInit::everyCombinationCompiles()
{
    QFETCH(QString, compiler);
    QFETCH(bool, v4);
    const QTemporaryDir folder;
    const CCompiler c(compiler, folder.path());
    QStringList names;
    for (const QByteArray &text : allSources(v4)) {
        names.append(u"gen_%1.c"_s.arg(names.size()));
        QVERIFY(c.write(names.constLast(), text));
    }
    QVERIFY2(names.size() > 40, "the projects hardly differ");
    QCOMPARE(c.check(names), QString());
}

QTEST_GUILESS_MAIN(TestCommonInit)
#include "tst_commoninit.moc"
