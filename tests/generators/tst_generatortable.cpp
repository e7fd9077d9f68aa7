#include "generators/RunDesk.h"

using namespace StoreTest;
using namespace Qt::StringLiterals;

using Settings = QMap<QString, QString>;
Q_DECLARE_METATYPE(Settings)

/** Which generators run, and in which order. */
class TestGeneratorTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }

    void theOrderFollowsLineTypesAndSettings_data();
    void theOrderFollowsLineTypesAndSettings();
    void highLineNumbersSayNothingAboutTheProtocols();
    void reservedLinesAreNotGeneratedFor();
    void aProjectWithoutLinesHasItsDefinitionsOnly();
    void aGeneratorThatIsMissingIsLeftOutWithoutAWord();
    void srdoObjectsOfAnyLineAskForTheSrdoGenerator_data();
    void srdoObjectsOfAnyLineAskForTheSrdoGenerator();
    void theSrdoGeneratorIsLeftOutOnRequest();
    void virtualObjectsAskForTheVirtualDictionary_data();
    void virtualObjectsAskForTheVirtualDictionary();

private:
    static void lineTypeRows();
    static void severalLineRows();
    static void settingRows();
    static void row(const char *name, const QList<int> &types, const QString &expected,
                    const Settings &general = {}, const Settings &j1939 = {})
    {
        QTest::newRow(name) << types << general << j1939 << expected;
    }
};

void TestGeneratorTable::theOrderFollowsLineTypesAndSettings_data()
{
    QTest::addColumn<QList<int>>("types");
    QTest::addColumn<Settings>("general");
    QTest::addColumn<Settings>("j1939");
    QTest::addColumn<QString>("expected");
    lineTypeRows();
    severalLineRows();
    settingRows();
}

void TestGeneratorTable::lineTypeRows()
{
    row("CANopen", {1}, u"Indices:0 TextDoc:0 Html:0 ObjDict:0 Define:0 Indication:0 Csv:0 Icsv:0 Eds:0"_s);
    row("J1939", {2}, u"Indices:0 Define:0 Pgn:0 J1939TextDoc:0 J1939Html:0 Dbc:0 ExtDecl:0"_s);
    row("raw CAN", {4}, u"Indices:0 MultiPro:0 RawCanTextDoc:0 RawCanDbc:0 Define:0 ExtDecl:0"_s);
    row("CANopen and J1939", {5},
        u"Indices:0 TextDoc:0 Html:0_co MultiPro:0 J1939TextDoc:0 J1939Html:0_j1939 Dbc:0 Define:0 "
        "ExtDecl:0 Indication:0 Csv:0 Icsv:0 Eds:0"_s);
    row("CANopen and raw CAN", {6},
        u"Indices:0 TextDoc:0 Html:0_co MultiPro:0 RawCanTextDoc:0 RawCanDbc:0 Define:0 ExtDecl:0 "
        "Indication:0 Csv:0 Icsv:0 Eds:0"_s);
    row("J1939 and raw CAN", {7},
        u"Indices:0 MultiPro:0 J1939TextDoc:0 RawCanTextDoc:0 RawCanDbc:0 J1939Html:0_j1939 Dbc:0 Define:0 "
        "ExtDecl:0"_s);
    row("no type", {0}, u"Define:0"_s);
    row("an unknown type", {3}, u"Define:0"_s);
    row("a type above the known ones", {8}, u"Define:0"_s);
}

void TestGeneratorTable::severalLineRows()
{
    row("two CANopen lines", {1, 1},
        u"Indices:0 TextDoc:0 TextDoc:1 Html:0 Html:1 ObjDict:0 Define:0 Indication:0 Csv:0 Csv:1 Icsv:0 "
        "Icsv:1 Eds:0 Eds:1"_s);
    row("a CANopen line and a J1939 line", {1, 2},
        u"Indices:0 TextDoc:0 Html:0 MultiPro:0 J1939TextDoc:1 J1939Html:1 Dbc:1 Define:0 ExtDecl:0 "
        "Indication:0 Csv:0 Icsv:0 Eds:0"_s);
    row("a CANopen line and a raw CAN line", {1, 4},
        u"Indices:0 TextDoc:0 Html:0 MultiPro:0 RawCanTextDoc:1 RawCanDbc:1 Define:0 ExtDecl:0 "
        "Indication:0 Csv:0 Icsv:0 Eds:0"_s);
    row("a CANopen line and one without type", {1, 0},
        u"Indices:0 TextDoc:0 Html:0 ObjDict:0 Define:0 Indication:0 Csv:0 Icsv:0 Eds:0"_s);
    row("two J1939 lines", {2, 2},
        u"Indices:0 Define:0 Pgn:0 J1939TextDoc:0 J1939TextDoc:1 J1939Html:0 J1939Html:1 Dbc:0 Dbc:1 "
        "ExtDecl:0"_s);
    row("a J1939 line and one without type", {2, 0},
        u"Indices:0 Define:0 Pgn:0 J1939TextDoc:0 J1939TextDoc:1 J1939Html:0 J1939Html:1 Dbc:0 ExtDecl:0"_s);
    row("a J1939 line and a raw CAN line", {2, 4},
        u"Indices:0 MultiPro:0 J1939TextDoc:0 RawCanTextDoc:1 RawCanDbc:1 J1939Html:0 Dbc:0 Define:0 "
        "ExtDecl:0"_s);
    row("a line is served by all of a step before the next line", {7, 7},
        u"Indices:0 MultiPro:0 J1939TextDoc:0 RawCanTextDoc:0 RawCanDbc:0 J1939TextDoc:1 RawCanTextDoc:1 "
        "RawCanDbc:1 J1939Html:0_j1939 J1939Html:1_j1939 Dbc:0 Dbc:1 Define:0 ExtDecl:0"_s);
    row("all types", {1, 2, 4, 5, 6, 7},
        u"Indices:0 TextDoc:0 TextDoc:3 TextDoc:4 Html:0 Html:3_co Html:4_co MultiPro:0 J1939TextDoc:1 "
        "RawCanTextDoc:2 RawCanDbc:2 J1939TextDoc:3 RawCanTextDoc:4 RawCanDbc:4 J1939TextDoc:5 "
        "RawCanTextDoc:5 RawCanDbc:5 J1939Html:1 J1939Html:3_j1939 J1939Html:5_j1939 Dbc:1 Dbc:3 Dbc:5 "
        "Define:0 ExtDecl:0 Indication:0 Csv:0 Csv:3 Csv:4 Icsv:0 Icsv:3 Icsv:4 Eds:0 Eds:3 Eds:4"_s);
}

void TestGeneratorTable::settingRows()
{
    const Settings bootloader{{u"uds_bl_setting"_s, u"1"_s}};
    row("a bootloader has no indices and declarations", {4},
        u"MultiPro:0 RawCanTextDoc:0 RawCanDbc:0 Define:0"_s, bootloader, {{u"safetysupport"_s, u"1"_s}});
    row("a bootloader on a CANopen line", {1},
        u"TextDoc:0 Html:0 ObjDict:0 Define:0 Indication:0 Csv:0 Icsv:0 Eds:0"_s, bootloader);
    row("a bootloader has one line", {4, 4},
        u"Indices:0 MultiPro:0 RawCanTextDoc:0 RawCanDbc:0 RawCanTextDoc:1 RawCanDbc:1 Define:0 ExtDecl:0"_s,
        bootloader);
    row("a bootloader setting other than 1", {4},
        u"Indices:0 MultiPro:0 RawCanTextDoc:0 RawCanDbc:0 Define:0 ExtDecl:0"_s,
        {{u"uds_bl_setting"_s, u"2"_s}});
    const Settings uds{{u"uds_static_indication"_s, u"1"_s}};
    row("static UDS indications on J1939", {2},
        u"Indices:0 Define:0 Pgn:0 J1939TextDoc:0 J1939Html:0 Dbc:0 ExtDecl:0 Indication:0"_s, uds);
    row("static UDS indications on raw CAN", {4},
        u"Indices:0 MultiPro:0 RawCanTextDoc:0 RawCanDbc:0 Define:0 ExtDecl:0 Indication:0"_s, uds);
    row("static UDS indications without a protocol", {0}, u"Define:0 Indication:0"_s, uds);
    const Settings canFd{{u"canfd_supported"_s, u"1"_s}};
    row("CAN FD", {1},
        u"Indices:0 TextDoc:0 Html:0 ObjDict:0 Define:0 Indication:0 Csv:0 Icsv:0 Eds(fd):0 "
        "Eds(classical):0 Xdd:0"_s,
        canFd);
    row("CAN FD on J1939 with static UDS indications", {2},
        u"Indices:0 Define:0 Pgn:0 J1939TextDoc:0 J1939Html:0 Dbc:0 ExtDecl:0 Indication:0"_s,
        {{u"canfd_supported"_s, u"2"_s}, {u"uds_static_indication"_s, u"1"_s}});
    row("the SDO server of a J1939 project", {2},
        u"Indices:0 Define:0 Pgn:0 ObjDict:0 Eds:0 J1939TextDoc:0 J1939Html:0 Dbc:0 ExtDecl:0"_s, canFd,
        {{u"cia510serversupport"_s, u"1"_s}});
    row("a mixed line needs no dictionary for the SDO server", {7},
        u"Indices:0 MultiPro:0 J1939TextDoc:0 RawCanTextDoc:0 RawCanDbc:0 J1939Html:0_j1939 Dbc:0 Define:0 "
        "ExtDecl:0"_s,
        {}, {{u"cia510serversupport"_s, u"1"_s}});
    row("safety messages", {2},
        u"Indices:0 Define:0 Pgn:0 J1939TextDoc:0 J1939Html:0 Dbc:0 ExtDecl:0 Sdm:0"_s, {},
        {{u"safetysupport"_s, u"2"_s}});
    row("safety messages switched off", {2},
        u"Indices:0 Define:0 Pgn:0 J1939TextDoc:0 J1939Html:0 Dbc:0 ExtDecl:0"_s, {},
        {{u"safetysupport"_s, u"0"_s}});
    row("safety messages without J1939 and raw CAN", {1},
        u"Indices:0 TextDoc:0 Html:0 ObjDict:0 Define:0 Indication:0 Csv:0 Icsv:0 Eds:0"_s, {},
        {{u"safetysupport"_s, u"1"_s}});
    row("the adapter of a J1939 project", {2},
        u"Indices:0 Define:0 Pgn:0 J1939TextDoc:0 J1939Html:0 Dbc:0 J1939Adapter:0 ExtDecl:0"_s, {},
        {{u"j1939adapter"_s, u"1"_s}});
    row("no adapter on a mixed line", {7},
        u"Indices:0 MultiPro:0 J1939TextDoc:0 RawCanTextDoc:0 RawCanDbc:0 J1939Html:0_j1939 Dbc:0 Define:0 "
        "ExtDecl:0"_s,
        {}, {{u"j1939adapter"_s, u"1"_s}});
}

void TestGeneratorTable::theOrderFollowsLineTypesAndSettings()
{
    QFETCH(QList<int>, types);
    QFETCH(Settings, general);
    QFETCH(Settings, j1939);
    RunDesk desk(types);
    for (auto it = general.cbegin(); it != general.cend(); ++it)
        desk.set(it.key(), it.value());
    for (auto it = j1939.cbegin(); it != j1939.cend(); ++it)
        desk.setJ1939(it.key(), it.value());
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    QTEST(desk.fakes.labels().join(u' '), "expected");
}

void TestGeneratorTable::highLineNumbersSayNothingAboutTheProtocols()
{
    RunDesk desk({2});
    desk.addLine(240, 1);
    desk.run();
    QCOMPARE(desk.fakes.labels().join(u' '),
             u"Indices:0 Define:0 Pgn:0 J1939TextDoc:0 J1939TextDoc:240 J1939Html:0 J1939Html:240 Dbc:0 "
             "ExtDecl:0"_s);
    desk.fakes.forget();
    desk.addLine(239, 1);
    desk.run();
    QVERIFY(desk.fakes.labels().contains(u"TextDoc:239"_s));
    QVERIFY(desk.fakes.labels().contains(u"TextDoc:240"_s));
}

void TestGeneratorTable::reservedLinesAreNotGeneratedFor()
{
    RunDesk desk({1});
    desk.addLine(253, 1);
    desk.addLine(254, 1);
    desk.addLine(255, 1);
    desk.run();
    QCOMPARE(desk.fakes.requests().first().lines, (QList<quint8>{0, 253}));
    QVERIFY(desk.fakes.labels().contains(u"Eds:253"_s));
    QVERIFY(!desk.fakes.labels().contains(u"Eds:254"_s));
}

void TestGeneratorTable::aProjectWithoutLinesHasItsDefinitionsOnly()
{
    RunDesk desk({0});
    desk.set(u"co_timer_interval"_s, u"1000"_s);
    QVERIFY(desk.store->removeLine(0));
    QCOMPARE(desk.runChecked(), RunDesk::Result::Completed);
    QCOMPARE(desk.fakes.labels().join(u' '), u"Define:0"_s);
    QVERIFY(desk.output.containing(u"Warning line type"_s).isEmpty());
    QVERIFY(desk.output.has(u"Generation completed."_s));
}

void TestGeneratorTable::aGeneratorThatIsMissingIsLeftOutWithoutAWord()
{
    RunDesk desk({5});
    desk.handler.setFactories(desk.fakes.factories({GeneratorKind::Define, GeneratorKind::Html}));
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    QCOMPARE(desk.fakes.labels().join(u' '), u"Html:0_co Define:0"_s);
    QCOMPARE(desk.output.containing(u"started"_s).size(), 3); // the check and two generators
    QVERIFY(desk.output.containing(u"not writable"_s).isEmpty());
}

void TestGeneratorTable::srdoObjectsOfAnyLineAskForTheSrdoGenerator_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("expected");
    QTest::newRow("before the first") << 0 << 0x1300 << false;
    QTest::newRow("the first") << 0 << 0x1301 << true;
    QTest::newRow("the last") << 0 << 0x137F << true;
    QTest::newRow("a mapping object") << 0 << 0x1381 << false;
    QTest::newRow("on the second line") << 1 << 0x1301 << true;
}

void TestGeneratorTable::srdoObjectsOfAnyLineAskForTheSrdoGenerator()
{
    QFETCH(int, line);
    QFETCH(int, index);
    QFETCH(bool, expected);
    RunDesk desk({1, 1});
    desk.object(quint8(line), quint16(index));
    desk.run();
    const QStringList labels = desk.fakes.labels();
    QCOMPARE(labels.contains(u"Srdo:0"_s), expected);
    if (expected)
        QCOMPARE(labels.indexOf(u"Srdo:0"_s), labels.indexOf(u"Define:0"_s) - 1);
}

void TestGeneratorTable::theSrdoGeneratorIsLeftOutOnRequest()
{
    RunDesk desk({1});
    desk.object(0, 0x1301);
    desk.handler.setGenerateSrdo(false);
    desk.run();
    QVERIFY(desk.fakes.requests(GeneratorKind::Srdo).isEmpty());
    desk.handler.setGenerateSrdo(true);
    desk.run();
    QCOMPARE(desk.fakes.requests(GeneratorKind::Srdo).size(), 1);
}

void TestGeneratorTable::virtualObjectsAskForTheVirtualDictionary_data()
{
    QTest::addColumn<QList<int>>("types");
    QTest::addColumn<QString>("setting");
    QTest::addColumn<int>("implementation");
    QTest::addColumn<bool>("expected");
    QTest::newRow("a virtual object") << QList<int>{1} << u"1"_s << 3 << true;
    QTest::newRow("no virtual object") << QList<int>{1} << u"1"_s << 2 << false;
    QTest::newRow("switched off") << QList<int>{1} << u"0"_s << 3 << false;
    QTest::newRow("never switched on") << QList<int>{1} << QString() << 3 << false;
    QTest::newRow("on a mixed line") << QList<int>{5} << u"1"_s << 3 << false;
}

void TestGeneratorTable::virtualObjectsAskForTheVirtualDictionary()
{
    QFETCH(QList<int>, types);
    QFETCH(QString, setting);
    QFETCH(int, implementation);
    QFETCH(bool, expected);
    RunDesk desk(types);
    desk.set(u"special_virtual_objects"_s, setting);
    desk.object(0, 0x2000, implementation);
    desk.run();
    const QStringList labels = desk.fakes.labels();
    QCOMPARE(labels.contains(u"VobjDict:0"_s), expected);
    if (expected)
        QCOMPARE(labels.indexOf(u"VobjDict:0"_s), labels.indexOf(u"ObjDict:0"_s) + 1);
}

QTEST_GUILESS_MAIN(TestGeneratorTable)
#include "tst_generatortable.moc"
