#include "generators/RunDesk.h"

using namespace StoreTest;
using namespace Qt::StringLiterals;

/** What a generation run tells its user, to the letter. */
class TestGenerationMessages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }

    void everyStartIsTold_data() { rows(); }
    void everyStartIsTold();
    void everyTargetThatCannotBeWrittenIsTold_data() { rows(); }
    void everyTargetThatCannotBeWrittenIsTold();
    void aPercentInTheFolderNameIsNoPlaceHolder();
    void anyFolderNameIsToldAsItIs_data();
    void anyFolderNameIsToldAsItIs();
    void aStartIsToldBeforeTheEndOfTheJob();
    void theEndOfAJobIsToldOnce();
    void onlyTheEndOfAJobIsTold();
    void aFailedJobIsToldWithItsReason();
    void onlyTheSafetyFileTellsMoreAboutItsResult();
    void theUserSectionOfTheFormerFileIsTold();
    void anEmptyUserSectionIsNotTold();
    void theUserSectionOfAFailedJobIsNotTold();
    void aMessageOfTheCheckKnowsItsPlace();
    void theLinesOfAProjectHaveHeadsInTheCheck();
    void theOnlyLineOfAProjectHasNoHead();
    void aLineWithoutTypeIsWarnedOf();

private:
    static void rows();
    static void canopenRows();
    static void otherRows();
    static void row(const char *name, GeneratorKind kind, const QList<int> &types, const QString &started,
                    const QString &notWritable)
    {
        QTest::newRow(name) << kind << types << started << notWritable;
    }
    static void prepare(RunDesk &desk);
};

// Everything that some row of the table needs.
void TestGenerationMessages::prepare(RunDesk &desk)
{
    desk.set(u"special_virtual_objects"_s, u"1"_s);
    desk.object(0, 0x1301);
    desk.object(0, 0x2000, 3, u"small"_s);
    desk.setJ1939(u"cia510serversupport"_s, u"1"_s);
    desk.setJ1939(u"safetysupport"_s, u"1"_s);
    desk.setJ1939(u"j1939adapter"_s, u"1"_s);
    desk.set(u"canfd_supported"_s, u"1"_s);
}

void TestGenerationMessages::rows()
{
    QTest::addColumn<GeneratorKind>("kind");
    QTest::addColumn<QList<int>>("types");
    QTest::addColumn<QString>("started");
    QTest::addColumn<QString>("notWritable");
    canopenRows();
    otherRows();
}

void TestGenerationMessages::canopenRows()
{
    const QList<int> types{1};
    using Kind = GeneratorKind;
    row("indices", Kind::Indices, types, u"Generation of gen_indices.h in DIR started"_s,
        u"The file in gen_indices.h in DIR is not writable"_s);
    row("text", Kind::TextDoc, types,
        u"Generation of textual object dictionary documentation in DIR started"_s,
        u"The file in project_doc.txt in DIR is not writable"_s);
    row("HTML", Kind::Html, types, u"Generation of HTML object dictionary documentation in DIR started"_s,
        u"The file in project.html in DIR is not writable"_s);
    row("object dictionary", Kind::ObjDict, types, u"Generation of gen_objdict.c in DIR started"_s,
        u"The file gen_objdict.c in DIR is not writable"_s);
    row("virtual dictionary", Kind::VobjDict, types, u"Generation of gen_vobjdict.c in DIR started"_s,
        u"The file gen_vobjdict.c in DIR is not writable"_s);
    row("SRDO", Kind::Srdo, types, u"Generation of gen_srdo.c in DIR started"_s,
        u"The file gen_srdo.c in DIR is not writable"_s);
    row("definitions", Kind::Define, types, u"Generation of gen_define.h in DIR started"_s,
        u"The file gen_define.h in DIR is not writable"_s);
    row("indication", Kind::Indication, types, u"Generation of gen_indication in DIR started"_s,
        u"The file gen_indication.h in DIR is not writable"_s);
    row("CSV", Kind::Csv, types, u"Generation of CSV file (deprecated) in DIR started"_s,
        u"The file project.csv in DIR is not writable"_s);
    row("ICSV", Kind::Icsv, types, u"Generation of ICSV file in DIR started"_s,
        u"The file project.icsv in DIR is not writable"_s);
    row("EDS", Kind::Eds, types,
        u"Generation of  EDS file in DIR started;Generation of  classical EDS file in DIR started;"
        "Generation of small EDS file in DIR started;Generation of small classical EDS file in DIR started"_s,
        u"The EDS file project.eds in DIR is not writable;"
        "The EDS file project_classical.eds in DIR is not writable;"
        "The EDS file project.eds in DIR is not writable;"
        "The EDS file project_classical.eds in DIR is not writable"_s);
    row("XDD", Kind::Xdd, types, u"Generation of XDD file in DIR started"_s,
        u"The XDD file project.xdd in DIR is not writable"_s);
}

void TestGenerationMessages::otherRows()
{
    using Kind = GeneratorKind;
    const QString text = u"Generation of textual PGN documentation in DIR started"_s;
    const QString html = u"Generation of HTML pgn documentation in DIR started"_s;
    const QString dbc = u"Generation of DBC_file in DIR started"_s;
    const QString textNotWritable = u"The file project_doc.txt in DIR is not writable"_s;
    const QString htmlNotWritable = u"The file project.html in DIR is not writable"_s;
    const QString dbcNotWritable = u"The file project.dbc in DIR is not writable"_s;
    row("several protocols", Kind::MultiPro, {7}, u"Generation of gen_mp.c in DIR started"_s,
        u"The file gen_mp.c in DIR is not writable"_s);
    row("J1939 text of a mixed line", Kind::J1939TextDoc, {7}, text, textNotWritable);
    row("raw CAN text", Kind::RawCanTextDoc, {7},
        u"Generation of raw CAN text documentation in DIR started"_s, textNotWritable);
    row("raw CAN DBC", Kind::RawCanDbc, {7}, u"Generation of raw CAN DBC file in DIR started"_s,
        dbcNotWritable);
    row("J1939 HTML of a mixed line", Kind::J1939Html, {7}, html, htmlNotWritable);
    row("DBC of a mixed line", Kind::Dbc, {7}, dbc, dbcNotWritable);
    row("PGN", Kind::Pgn, {2}, u"Generation of gen_pgn.c in DIR started"_s,
        u"The file gen_pgn.c in DIR is not writable"_s);
    row("dictionary of an SDO server", Kind::ObjDict, {2},
        u"Generation of gen_objdict.c for CAM11/CAM21 SDO server in DIR started"_s,
        u"The file gen_objdict.c in DIR is not writable"_s);
    row("EDS of an SDO server", Kind::Eds, {2},
        u"Generation of  EDS file in DIR started (for CAM11/CAM21 SDO Server)"_s,
        u"The EDS file project.eds in DIR is not writable"_s);
    row("J1939 text", Kind::J1939TextDoc, {2}, text, textNotWritable);
    row("J1939 HTML", Kind::J1939Html, {2}, html, htmlNotWritable);
    row("DBC", Kind::Dbc, {2}, dbc, dbcNotWritable);
    row("adapter", Kind::J1939Adapter, {2}, u"Generation of gen_j1939_adapter.c in DIR started"_s,
        u"The file gen_j1939_adapter.c in DIR is not writable"_s);
    row("declarations", Kind::ExtDecl, {2}, u"Generation of gen_extern_decl.h in DIR started"_s,
        u"The file gen_extern_decl.h in DIR is not writable"_s);
    row("safety messages", Kind::Sdm, {2}, u"Generation of file in DIR started"_s,
        u"The file in DIR is not writable"_s);
}

void TestGenerationMessages::everyStartIsTold()
{
    QFETCH(GeneratorKind, kind);
    QFETCH(QList<int>, types);
    QFETCH(QString, started);
    RunDesk desk(types);
    prepare(desk);
    desk.handler.setFactories(desk.fakes.factories({kind}));
    desk.run();
    const QStringList told = desk.messagesOfTheRun().filter(u" started"_s);
    QCOMPARE(told, started.replace(u"DIR"_s, desk.folder.path()).split(u';'));
    QCOMPARE(desk.messagesOfTheRun().filter(u"completed. "_s).size(), told.size());
}

void TestGenerationMessages::everyTargetThatCannotBeWrittenIsTold()
{
    QFETCH(GeneratorKind, kind);
    QFETCH(QList<int>, types);
    QFETCH(QString, notWritable);
    RunDesk desk(types);
    prepare(desk);
    desk.fakes.plan(kind).writable = false;
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    const QStringList expected = notWritable.replace(u"DIR"_s, desk.folder.path()).split(u';');
    QCOMPARE(desk.messagesOfTheRun().filter(u"not writable"_s), expected);
    // The others run on.
    const qsizetype told = desk.messagesOfTheRun().filter(u" started"_s).size();
    QCOMPARE(told, desk.fakes.requests().size() - expected.size());
}

void TestGenerationMessages::aPercentInTheFolderNameIsNoPlaceHolder()
{
    RunDesk desk({1});
    const QString folder = desk.path(u"a%2b%1"_s);
    QVERIFY(QDir().mkpath(folder));
    desk.handler.setProject(desk.store, folder, u"project"_s);
    desk.fakes.plan(GeneratorKind::Csv).writable = false;
    desk.run();
    QVERIFY(desk.output.has(u"The file project.csv in %1 is not writable"_s.arg(folder)));
    QVERIFY(desk.output.has("Generation of  EDS file in "_L1 + folder + " started"_L1));
}

void TestGenerationMessages::anyFolderNameIsToldAsItIs_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("umlauts") << u"Gerät für Größen"_s;
    QTest::newRow("blanks") << u" two  blanks "_s;
    QTest::newRow("percent signs") << u"100% %1 %2 %L1 %%"_s;
    QTest::newRow("emoji") << u"\U0001F600"_s;
    QTest::newRow("placeholder of the project") << u"%2_doc.txt"_s;
}

void TestGenerationMessages::anyFolderNameIsToldAsItIs()
{
    QFETCH(QString, name);
    RunDesk desk({1});
    const QString folder = desk.path(name);
    QVERIFY(QDir().mkpath(folder));
    const QString project = u"Größe %1 \U0001F600"_s;
    desk.handler.setProject(desk.store, folder, project);
    desk.fakes.plan(GeneratorKind::Define) = {.fileName = u"gen_define.h"_s, .writesFile = true};
    desk.fakes.plan(GeneratorKind::Csv).writable = false;
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    QVERIFY(desk.output.has("Generation of gen_define.h in "_L1 + folder + " started"_L1));
    QVERIFY(desk.output.has("The file "_L1 + project + ".csv in "_L1 + folder + " is not writable"_L1));
    QVERIFY(QFile::exists(folder + "/gen_define.h"_L1));
    QVERIFY(QFile::exists(folder + "/__vexerrorlog.txt.bak"_L1));
}

void TestGenerationMessages::aStartIsToldBeforeTheEndOfTheJob()
{
    RunDesk desk({0});
    desk.fakes.plan(GeneratorKind::Define).fileName = u"gen_define.h"_s;
    desk.run();
    QCOMPARE(desk.messagesOfTheRun(),
             QStringList({"Generation of gen_define.h in "_L1 + desk.folder.path() + " started"_L1,
                          u"Generation of gen_define.h completed. "_s, u"Generation finished."_s,
                          u"Generation completed."_s, u"finished"_s}));
}

void TestGenerationMessages::theEndOfAJobIsToldOnce()
{
    RunDesk desk({1, 1, 5});
    desk.run();
    QCOMPARE(desk.output.containing(u" completed. "_s).size(), desk.fakes.requests().size());
}

void TestGenerationMessages::onlyTheEndOfAJobIsTold()
{
    RunDesk desk({0});
    AbstractGenerator *running = nullptr;
    const FakePlan plan{.job = [&running] {
        for (const quint8 percent : {quint8(25), quint8(50), quint8(75), quint8(99)})
            Q_EMIT running->progress(percent);
    }};
    GeneratorFactories factories;
    factories.add(GeneratorKind::Define, [&](const GeneratorRequest &) -> std::unique_ptr<AbstractGenerator> {
        auto generator = std::make_unique<FakeGenerator>(plan);
        running = generator.get();
        return generator;
    });
    desk.handler.setFactories(factories);
    desk.run();
    QVERIFY(running);
    QCOMPARE(desk.output.containing(u"Generation of fake.c"_s),
             QStringList{u"Generation of fake.c completed. "_s});
}

void TestGenerationMessages::aFailedJobIsToldWithItsReason()
{
    RunDesk desk({1});
    desk.fakes.plan(GeneratorKind::ObjDict) = {.failure = u"No %1 space left."_s,
                                               .fileName = u"gen_objdict.c"_s};
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    QVERIFY(desk.output.has(u"<b>ERROR - Generation of gen_objdict.c failed. No %1 space left.</b>"_s));
    QVERIFY(!desk.output.has(u"Generation of gen_objdict.c completed. "_s));
    QVERIFY(desk.fakes.labels().contains(u"Define:0"_s));
}

void TestGenerationMessages::onlyTheSafetyFileTellsMoreAboutItsResult()
{
    RunDesk desk({2});
    desk.setJ1939(u"safetysupport"_s, u"1"_s);
    desk.fakes.plan(GeneratorKind::Sdm) = {.info = u"3 SDGs"_s, .fileName = u"gen_sdg.c"_s};
    desk.fakes.plan(GeneratorKind::Pgn) = {.info = u"not told"_s, .fileName = u"gen_pgn.c"_s};
    desk.run();
    QVERIFY(desk.output.has(u"Generation of gen_sdg.c completed. (3 SDGs)"_s));
    QVERIFY(desk.output.has(u"Generation of gen_pgn.c completed. "_s));
}

void TestGenerationMessages::theUserSectionOfTheFormerFileIsTold()
{
    RunDesk desk({1});
    desk.fakes.plan(GeneratorKind::Define) = {.section = u"\n#define A 1\n#define B 2\n\n"_s,
                                              .fileName = u"gen_define.h"_s};
    desk.run();
    const QString told = u"gen_define.h contains user section:\n#define A 1\n#define B 2"_s;
    QCOMPARE(desk.output.all.indexOf(told),
             desk.output.all.indexOf(u"Generation of gen_define.h completed. "_s) + 1);
}

void TestGenerationMessages::anEmptyUserSectionIsNotTold()
{
    RunDesk desk({1});
    desk.fakes.plan(GeneratorKind::Define).section = u" \n\t\n"_s;
    desk.run();
    QVERIFY(desk.output.containing(u"user section"_s).isEmpty());
}

void TestGenerationMessages::theUserSectionOfAFailedJobIsNotTold()
{
    RunDesk desk({1});
    desk.fakes.plan(GeneratorKind::Define) = {.failure = u"x"_s, .section = u"#define A"_s};
    desk.run();
    QVERIFY(desk.output.containing(u"user section"_s).isEmpty());
}

void TestGenerationMessages::aMessageOfTheCheckKnowsItsPlace()
{
    RunDesk desk({1});
    ObjectDataBase::INDEX_DATA_T object = sampleIndex(QString());
    object.objecttype = 7;
    desk.store->addIndex(0, 0x2345, object);
    desk.run();
    const QString text = u"<strong>Error: </strong>Object 0x2345: The object does not have a name. "
                         "(Required for EDS)"_s;
    const auto message = std::find_if(desk.output.messages.cbegin(), desk.output.messages.cend(),
                                      [&text](const OutputMessage &m) { return m.text == text; });
    QVERIFY(message != desk.output.messages.cend());
    QCOMPARE(message->location, ProjectLocation::ofObject(0, 0x2345));
    // What is told outside the check is about no place.
    QCOMPARE(desk.output.messages.first().location, ProjectLocation());
    QCOMPARE(desk.output.messages.last().location, ProjectLocation());
}

void TestGenerationMessages::theLinesOfAProjectHaveHeadsInTheCheck()
{
    RunDesk desk({0, 0});
    desk.addLine(17, 0);
    desk.run();
    const QString head = u"raw:<strong>________________________________________ Checking line %1 "
                         "________________________________________</strong>"_s;
    for (const int line : {0, 1, 17}) {
        const qsizetype place = desk.output.all.indexOf(head.arg(line));
        QVERIFY(place > 0);
        QCOMPARE(desk.output.all.at(place - 1), u"raw:"_s);
        QCOMPARE(desk.output.all.at(place + 1), u"Warning line type not set for line %1."_s.arg(line));
    }
}

void TestGenerationMessages::theOnlyLineOfAProjectHasNoHead()
{
    RunDesk desk({1});
    desk.addLine(254, 1);
    desk.run();
    QVERIFY(desk.output.containing(u"Checking line"_s).isEmpty());
}

void TestGenerationMessages::aLineWithoutTypeIsWarnedOf()
{
    RunDesk desk({0});
    desk.set(u"co_timer_interval"_s, u"1000"_s);
    QCOMPARE(desk.runChecked(), RunDesk::Result::Completed);
    QVERIFY(desk.output.has(u"Warning line type not set for line 0."_s));
}

QTEST_GUILESS_MAIN(TestGenerationMessages)
#include "tst_generationmessages.moc"
