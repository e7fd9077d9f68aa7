#include "generators/CppOutput.h"
#include "generators/DefineProps.h"
#include "generators/RunDesk.h"

using namespace StoreTest;
using namespace Qt::StringLiterals;

/** Files that a run writes or removes without a generator. */
class TestOutputFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }

    void aProjectWithoutVirtualObjectsLosesTheVirtualDictionary_data();
    void aProjectWithoutVirtualObjectsLosesTheVirtualDictionary();
    void aJ1939ProjectLosesItsIndicationHeader_data();
    void aJ1939ProjectLosesItsIndicationHeader();
    void aJ1939ProjectWithoutAdapterLosesAllAdapterFiles_data();
    void aJ1939ProjectWithoutAdapterLosesAllAdapterFiles();
    void staticUdsIndicationsOfAJ1939ProjectComeBehindTheRemoval();
    void aFolderOfThatNameIsNoOutdatedFile();
    void otherFilesStay();

    void theDictionaryGetsACppTwin();
    void theFormerCppTwinIsReplaced();
    void everyReturnTypeOfTheUserHeaderIsDeclaredC();
    void theUserHeaderKeepsItsBytes();
    void withoutAUserHeaderTheFormerTwinStays();
    void withoutADictionaryTheFormerTwinVanishes();
    void cppOutputNeedsASettingAndCanopen_data();
    void cppOutputNeedsASettingAndCanopen();
    void cppOutputIntoAMissingFolderDoesNothing();

    void everyDefineIsASymbolOnce_data();
    void everyDefineIsASymbolOnce();
    void bothPropsFilesAreWritten();
    void withoutTheHeaderOnlyTheImportIsWritten();
    void aHeaderWithoutDefinesGivesTheImportOnly();
    void propsThatCannotBeWrittenAreToldOf();
    void theRunWritesPropsOnRequest();
    void theRunTellsOfPropsThatAreNotWritten();
    void theRunWritesNoPropsUnasked();
};

// --- Files of former runs ------------------------------------------------------------------------

void TestOutputFiles::aProjectWithoutVirtualObjectsLosesTheVirtualDictionary_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("implementation");
    QTest::addColumn<bool>("stays");
    QTest::newRow("no virtual objects") << 1 << 0 << false;
    QTest::newRow("virtual objects") << 1 << 3 << true;
    QTest::newRow("a mixed line is not asked") << 5 << 0 << true;
    QTest::newRow("J1939 is not asked") << 2 << 0 << true;
}

void TestOutputFiles::aProjectWithoutVirtualObjectsLosesTheVirtualDictionary()
{
    QFETCH(int, type);
    QFETCH(int, implementation);
    RunDesk desk({type});
    desk.handler.setFactories({});
    desk.set(u"special_virtual_objects"_s, u"1"_s);
    desk.object(0, 0x2000, implementation);
    desk.write(u"gen_vobjdict.c"_s, "old");
    desk.run();
    QTEST(desk.exists(u"gen_vobjdict.c"_s), "stays");
}

void TestOutputFiles::aJ1939ProjectLosesItsIndicationHeader_data()
{
    QTest::addColumn<QList<int>>("types");
    QTest::addColumn<bool>("stays");
    QTest::newRow("J1939") << QList<int>{2} << false;
    QTest::newRow("two J1939 lines") << QList<int>{2, 2} << false;
    QTest::newRow("CANopen") << QList<int>{1} << true;
    QTest::newRow("raw CAN") << QList<int>{4} << true;
    QTest::newRow("J1939 and raw CAN") << QList<int>{7} << true;
    QTest::newRow("a J1939 and a CANopen line") << QList<int>{2, 1} << true;
}

void TestOutputFiles::aJ1939ProjectLosesItsIndicationHeader()
{
    QFETCH(QList<int>, types);
    RunDesk desk(types);
    desk.write(u"gen_indication.h"_s, "old");
    desk.run();
    QTEST(desk.exists(u"gen_indication.h"_s), "stays");
}

void TestOutputFiles::aJ1939ProjectWithoutAdapterLosesAllAdapterFiles_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("setting");
    QTest::addColumn<bool>("stay");
    QTest::newRow("switched off") << 2 << u"0"_s << false;
    QTest::newRow("never set") << 2 << QString() << false;
    QTest::newRow("another value") << 2 << u"2"_s << false;
    QTest::newRow("switched on") << 2 << u"1"_s << true;
    QTest::newRow("a mixed line") << 7 << u"0"_s << true;
}

void TestOutputFiles::aJ1939ProjectWithoutAdapterLosesAllAdapterFiles()
{
    QFETCH(int, type);
    QFETCH(QString, setting);
    QFETCH(bool, stay);
    RunDesk desk({type});
    desk.setJ1939(u"j1939adapter"_s, setting);
    const QStringList files{u"gen_j1939_adapter.c"_s, u"gen_j1939_adapter.cs"_s, u"j1939_adapter.cs"_s,
                            u"j1939_adapter.c"_s};
    for (const QString &file : files)
        desk.write(file, "old");
    desk.run();
    for (const QString &file : files)
        QVERIFY2(desk.exists(file) == stay, qPrintable(file));
}

void TestOutputFiles::staticUdsIndicationsOfAJ1939ProjectComeBehindTheRemoval()
{
    RunDesk desk({2});
    desk.set(u"uds_static_indication"_s, u"1"_s);
    desk.fakes.plan(GeneratorKind::Indication) = {.fileName = u"gen_indication.h"_s, .writesFile = true};
    desk.write(u"gen_indication.h"_s, "old");
    desk.run();
    QCOMPARE(desk.read(u"gen_indication.h"_s), QByteArray("generated\n"));
}

void TestOutputFiles::aFolderOfThatNameIsNoOutdatedFile()
{
    RunDesk desk({2});
    QVERIFY(QDir(desk.folder.path()).mkdir(u"gen_indication.h"_s));
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    QVERIFY(desk.exists(u"gen_indication.h"_s));
}

void TestOutputFiles::otherFilesStay()
{
    RunDesk desk({2});
    const QStringList files{u"gen_pgn.c"_s, u"gen_define.h"_s, u"gen_user.h"_s, u"gen_objdict.cpp"_s};
    for (const QString &file : files)
        desk.write(file, "own");
    desk.run();
    for (const QString &file : files)
        QCOMPARE(desk.read(file), QByteArray("own"));
}

// --- C++ output ----------------------------------------------------------------------------------

void TestOutputFiles::theDictionaryGetsACppTwin()
{
    RunDesk desk({1});
    desk.write(u"gen_objdict.c"_s, "tables");
    writeCppOutput(desk.folder.path());
    QCOMPARE(desk.read(u"gen_objdict.cpp"_s), QByteArray("tables"));
    QCOMPARE(desk.read(u"gen_objdict.c"_s), QByteArray("tables"));
    QVERIFY(!desk.exists(u"gen_user.hpp"_s));
}

void TestOutputFiles::theFormerCppTwinIsReplaced()
{
    RunDesk desk({1});
    desk.write(u"gen_objdict.cpp"_s, "a far longer former text");
    desk.write(u"gen_objdict.c"_s, "tables");
    writeCppOutput(desk.folder.path());
    QCOMPARE(desk.read(u"gen_objdict.cpp"_s), QByteArray("tables"));
}

void TestOutputFiles::everyReturnTypeOfTheUserHeaderIsDeclaredC()
{
    RunDesk desk({1});
    desk.write(u"gen_user.hpp"_s, "a far longer former text, which is replaced as a whole");
    desk.write(u"gen_user.h"_s, "RET_T a(void);\n\tRET_T b(RET_T c);\nMY_RET_T d;\n");
    writeCppOutput(desk.folder.path());
    QCOMPARE(desk.read(u"gen_user.hpp"_s),
             QByteArray("extern \"C\" RET_T a(void);\n\textern \"C\" RET_T b(extern \"C\" RET_T c);\n"
                        "MY_extern \"C\" RET_T d;\n"));
    QVERIFY(desk.read(u"gen_user.h"_s).startsWith("RET_T a"));
}

void TestOutputFiles::theUserHeaderKeepsItsBytes()
{
    RunDesk desk({1});
    desk.write(u"gen_user.h"_s,
               "/* Gr\xf6\xdf"
               "e */\r\nRET_T x;\r\n");
    writeCppOutput(desk.folder.path());
    QCOMPARE(desk.read(u"gen_user.hpp"_s),
             QByteArray("/* Gr\xf6\xdf"
                        "e */\r\nextern \"C\" RET_T x;\r\n"));
}

void TestOutputFiles::withoutAUserHeaderTheFormerTwinStays()
{
    RunDesk desk({1});
    desk.write(u"gen_user.hpp"_s, "former");
    writeCppOutput(desk.folder.path());
    QCOMPARE(desk.read(u"gen_user.hpp"_s), QByteArray("former"));
}

void TestOutputFiles::withoutADictionaryTheFormerTwinVanishes()
{
    RunDesk desk({1});
    desk.write(u"gen_objdict.cpp"_s, "former");
    writeCppOutput(desk.folder.path());
    QVERIFY(!desk.exists(u"gen_objdict.cpp"_s));
}

void TestOutputFiles::cppOutputNeedsASettingAndCanopen_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QString>("staticIndication");
    QTest::addColumn<bool>("expected");
    QTest::newRow("CANopen") << 1 << u"1"_s << u"0"_s << true;
    QTest::newRow("switched off") << 1 << u"0"_s << u"0"_s << false;
    QTest::newRow("never set") << 1 << QString() << u"0"_s << false;
    QTest::newRow("mixed line") << 6 << u"1"_s << u"0"_s << true;
    QTest::newRow("J1939") << 2 << u"1"_s << u"0"_s << false;
    QTest::newRow("J1939 with static UDS indications") << 2 << u"1"_s << u"1"_s << true;
}

void TestOutputFiles::cppOutputNeedsASettingAndCanopen()
{
    QFETCH(int, type);
    QFETCH(QString, setting);
    QFETCH(QString, staticIndication);
    RunDesk desk({type});
    desk.set(u"generate_cpp_output"_s, setting);
    desk.set(u"uds_static_indication"_s, staticIndication);
    // The last step: it sees what the generators of the run have written.
    desk.fakes.plan(GeneratorKind::Indication) = {.fileName = u"gen_objdict.c"_s, .writesFile = true};
    desk.write(u"gen_objdict.c"_s, "of a former run");
    desk.run();
    QTEST(desk.exists(u"gen_objdict.cpp"_s), "expected");
    if (desk.exists(u"gen_objdict.cpp"_s))
        QCOMPARE(desk.read(u"gen_objdict.cpp"_s), QByteArray("generated\n"));
}

void TestOutputFiles::cppOutputIntoAMissingFolderDoesNothing()
{
    RunDesk desk({1});
    writeCppOutput(desk.path(u"missing"_s));
    QVERIFY(!desk.exists(u"missing"_s));
}

// --- MSBuild properties --------------------------------------------------------------------------

void TestOutputFiles::everyDefineIsASymbolOnce_data()
{
    QTest::addColumn<QString>("header");
    QTest::addColumn<QString>("symbols");
    const auto row = [](const char *name, const QString &header, const QString &symbols) {
        QTest::newRow(name) << header << symbols;
    };
    row("include guard", u"#ifndef GEN_DEFINE_H\n#define GEN_DEFINE_H 1\n#endif /* GEN_DEFINE_H */\n"_s,
        u"GEN_DEFINE_H"_s);
    row("values and switches", u"#define A\n#define B\t1u\n#define C (1 << 2)\n"_s, u"A,B,C"_s);
    row("once", u"#define A 1\n#undef A\n#define A 2\n"_s, u"A"_s);
    row("letter case", u"#define A\n#define a\n"_s, u"A,a"_s);
    row("blanks", u"  #  define   A   1\n\t#\tdefine\tB\n"_s, u"A,B"_s);
    row("CR LF", u"#define A\r\n#define B\r\n"_s, u"A,B"_s);
    row("CR", u"#define A\r#define B\r"_s, u"A,B"_s);
    row("no line end", u"#define A"_s, u"A"_s);
    row("define of nothing", u"#define\n#define \n"_s, QString());
    row("other directives", u"#include <a.h>\n#if defined(A)\n#undef B\n"_s, QString());
    row("in a comment line", u"/* #define A */\n// #define B\n"_s, QString());
    row("empty", QString(), QString());
}

void TestOutputFiles::everyDefineIsASymbolOnce()
{
    QFETCH(QString, header);
    QTEST(definedSymbols(header).join(u','), "symbols");
}

namespace {

constexpr const char *importProps =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
    "<!-- Auto-imported by MSBuild. Pulls in the generated define -->\n"
    "<!-- symbols (gen_define.props) if present; no error if absent. -->\n"
    "<Project>\n"
    "  <Import Project=\"$(MSBuildThisFileDirectory)gen_define.props\"\n"
    "          Condition=\"Exists('$(MSBuildThisFileDirectory)gen_define.props')\""
    " />\n"
    "</Project>\n";

} // namespace

void TestOutputFiles::bothPropsFilesAreWritten()
{
    RunDesk desk({1});
    desk.write(u"gen_define.h"_s, "#define GEN_DEFINE_H 1\n#define CANOPEN_SUPPORTED\t1u\n");
    QVERIFY(writeDefinePropsFiles(desk.path(u"gen_define.h"_s), desk.folder.path()));
    QCOMPARE(desk.read(u"Directory.Build.props"_s), QByteArray(importProps));
    QCOMPARE(desk.read(u"gen_define.props"_s),
             QByteArray("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                        "<!-- Auto-generated from gen_define.h - do not edit. -->\n"
                        "<!-- C# conditional-compilation symbols that make the #if in the -->\n"
                        "<!-- generated wrapper match the compiled stack_wrapper DLL. -->\n"
                        "<!-- Imported automatically by Directory.Build.props when present. -->\n"
                        "<Project>\n"
                        "<PropertyGroup>\n"
                        "<DefineConstants>$(DefineConstants);GEN_DEFINE_H;CANOPEN_SUPPORTED"
                        "</DefineConstants>\n"
                        "</PropertyGroup>\n"
                        "</Project>\n"));
}

void TestOutputFiles::withoutTheHeaderOnlyTheImportIsWritten()
{
    RunDesk desk({1});
    QVERIFY(!writeDefinePropsFiles(desk.path(u"gen_define.h"_s), desk.folder.path()));
    QCOMPARE(desk.read(u"Directory.Build.props"_s), QByteArray(importProps));
    QVERIFY(!desk.exists(u"gen_define.props"_s));
}

void TestOutputFiles::aHeaderWithoutDefinesGivesTheImportOnly()
{
    RunDesk desk({1});
    desk.write(u"gen_define.h"_s, "/* nothing */\n");
    QVERIFY(!writeDefinePropsFiles(desk.path(u"gen_define.h"_s), desk.folder.path()));
    QVERIFY(desk.exists(u"Directory.Build.props"_s));
    QVERIFY(!desk.exists(u"gen_define.props"_s));
}

void TestOutputFiles::propsThatCannotBeWrittenAreToldOf()
{
    RunDesk desk({1});
    desk.write(u"gen_define.h"_s, "#define A\n");
    QVERIFY(QDir(desk.folder.path()).mkdir(u"gen_define.props"_s));
    QVERIFY(!writeDefinePropsFiles(desk.path(u"gen_define.h"_s), desk.folder.path()));
    QVERIFY(desk.exists(u"Directory.Build.props"_s));
    QVERIFY(!writeDefinePropsFiles(desk.path(u"gen_define.h"_s), desk.path(u"missing"_s)));
}

void TestOutputFiles::theRunWritesPropsOnRequest()
{
    RunDesk desk({1});
    desk.set(u"gen_csharp_props"_s, u"1"_s);
    desk.fakes.plan(GeneratorKind::Define).started = [&desk](const FakeGenerator &) {
        desk.write(u"gen_define.h"_s, "#define FROM_THIS_RUN 1\n");
    };
    desk.run();
    QVERIFY(desk.read(u"gen_define.props"_s).contains(";FROM_THIS_RUN<"));
    QVERIFY(desk.output.has("Generation of gen_define.props and Directory.Build.props in "_L1
                            + desk.folder.path() + " finished"_L1));
}

void TestOutputFiles::theRunTellsOfPropsThatAreNotWritten()
{
    RunDesk desk({1});
    desk.set(u"gen_csharp_props"_s, u"1"_s);
    desk.write(u"gen_define.h"_s, "#define A\n");
    QVERIFY(QDir(desk.folder.path()).mkdir(u"Directory.Build.props"_s));
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    QVERIFY(desk.output.has("The files gen_define.props and Directory.Build.props in "_L1 + desk.folder.path()
                            + " are not writable"_L1));
}

void TestOutputFiles::theRunWritesNoPropsUnasked()
{
    RunDesk desk({1});
    desk.write(u"gen_define.h"_s, "#define A\n");
    desk.run();
    QVERIFY(!desk.exists(u"gen_define.props"_s));
    QVERIFY(!desk.exists(u"Directory.Build.props"_s));
}

QTEST_GUILESS_MAIN(TestOutputFiles)
#include "tst_outputfiles.moc"
