#include "generators/RunDesk.h"

using namespace StoreTest;
using namespace Qt::StringLiterals;

/** What each generator of a run is told. */
class TestGeneratorRequests : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }

    void useCoreHeadersChoosesTheNewerTwins_data();
    void useCoreHeadersChoosesTheNewerTwins();
    void staticUdsIndicationsNeedTheNewerIndicationTwin();
    void theDefineGeneratorIsToldOfTheProtocols_data();
    void theDefineGeneratorIsToldOfTheProtocols();
    void generatorsAreToldWhatTheProjectAsksFor();
    void theObjectDictionaryOfAnSdoServerIsNeverCompact();
    void theCallersWishesReachTheGenerators();
    void everyGeneratorGetsTheProject();
};

void TestGeneratorRequests::useCoreHeadersChoosesTheNewerTwins_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("expected");
    QTest::newRow("V4") << u"V4"_s << true;
    QTest::newRow("lower case is another value") << u"v4"_s << false;
    QTest::newRow("empty") << QString() << false;
    QTest::newRow("a number") << u"1"_s << false;
}

void TestGeneratorRequests::useCoreHeadersChoosesTheNewerTwins()
{
    QFETCH(QString, value);
    QFETCH(bool, expected);
    RunDesk desk({1});
    desk.set(u"use_core_headers"_s, value);
    desk.run();
    QVERIFY(!desk.fakes.requests().isEmpty());
    for (const GeneratorRequest &request : desk.fakes.requests())
        QCOMPARE(request.core, expected);
}

void TestGeneratorRequests::staticUdsIndicationsNeedTheNewerIndicationTwin()
{
    RunDesk desk({1});
    desk.set(u"uds_static_indication"_s, u"1"_s);
    desk.run();
    for (const GeneratorRequest &request : desk.fakes.requests())
        QCOMPARE(request.core, request.kind == GeneratorKind::Indication);
}

void TestGeneratorRequests::theDefineGeneratorIsToldOfTheProtocols_data()
{
    QTest::addColumn<QList<int>>("types");
    QTest::addColumn<bool>("hasJ1939");
    QTest::addColumn<bool>("multiProtocol");
    QTest::newRow("CANopen") << QList<int>{1} << false << false;
    QTest::newRow("J1939") << QList<int>{2} << true << false;
    QTest::newRow("raw CAN") << QList<int>{4} << false << true;
    QTest::newRow("CANopen and J1939") << QList<int>{5} << true << true;
    QTest::newRow("CANopen and raw CAN") << QList<int>{6} << false << true;
    QTest::newRow("J1939 and raw CAN") << QList<int>{7} << true << true;
    QTest::newRow("a CANopen and a J1939 line") << QList<int>{1, 2} << true << true;
    QTest::newRow("no type") << QList<int>{0} << false << false;
}

void TestGeneratorRequests::theDefineGeneratorIsToldOfTheProtocols()
{
    QFETCH(QList<int>, types);
    RunDesk desk(types);
    desk.run();
    const GeneratorRequest request = desk.fakes.requests(GeneratorKind::Define).value(0);
    QTEST(request.hasJ1939, "hasJ1939");
    QTEST(request.multiProtocol, "multiProtocol");
}

void TestGeneratorRequests::generatorsAreToldWhatTheProjectAsksFor()
{
    RunDesk desk({1});
    desk.object(0, 0x1301);
    desk.run();
    const auto first = [&desk](GeneratorKind kind) { return desk.fakes.requests(kind).value(0); };
    QVERIFY(!first(GeneratorKind::ObjDict).compactArrays);
    QVERIFY(!first(GeneratorKind::Srdo).staticSrdoData);
    QVERIFY(!first(GeneratorKind::Icsv).disableDocu);
    desk.fakes.forget();
    desk.set(u"compact_array_description"_s, u"1"_s);
    desk.set(u"static_srdo_data"_s, u"1"_s);
    desk.setMisc(u"disableDocu"_s, u"true"_s);
    desk.run();
    QVERIFY(first(GeneratorKind::ObjDict).compactArrays);
    QVERIFY(!first(GeneratorKind::ObjDict).forJ1939SdoServer);
    QVERIFY(first(GeneratorKind::Srdo).staticSrdoData);
    QVERIFY(first(GeneratorKind::Icsv).disableDocu);
}

void TestGeneratorRequests::theObjectDictionaryOfAnSdoServerIsNeverCompact()
{
    RunDesk desk({2});
    desk.setJ1939(u"cia510serversupport"_s, u"1"_s);
    desk.set(u"compact_array_description"_s, u"1"_s);
    desk.run();
    const GeneratorRequest request = desk.fakes.requests(GeneratorKind::ObjDict).value(0);
    QVERIFY(!request.compactArrays);
    QVERIFY(request.forJ1939SdoServer);
    const GeneratorRequest eds = desk.fakes.requests(GeneratorKind::Eds).value(0);
    QCOMPARE(eds.edsVariant, QString());
    QVERIFY(!eds.canFd);
    QVERIFY(!eds.classical);
}

void TestGeneratorRequests::theCallersWishesReachTheGenerators()
{
    RunDesk desk({1});
    desk.set(u"special_virtual_objects"_s, u"1"_s);
    desk.object(0, 0x2000, 3);
    desk.run();
    QVERIFY(!desk.fakes.requests(GeneratorKind::VobjDict).value(0).generateVirtualObjects);
    desk.fakes.forget();
    desk.handler.setGenerateVirtualObjects(true);
    desk.run();
    QVERIFY(desk.fakes.requests(GeneratorKind::VobjDict).value(0).generateVirtualObjects);
}

void TestGeneratorRequests::everyGeneratorGetsTheProject()
{
    RunDesk desk({5, 2});
    QStringList lines;
    bool right = true;
    for (const GeneratorKind kind : FakeGenerators::kinds) {
        desk.fakes.plan(kind).started = [&](const FakeGenerator &generator) {
            right = right && generator.multiLine() && generator.store() == desk.store.get()
                && generator.folder() == desk.folder.path() && generator.project() == u"project"_s;
            lines.append(QString::number(generator.line()) + generator.suffix());
        };
    }
    desk.run();
    QVERIFY(right);
    QCOMPARE(lines.size(), desk.fakes.requests().size());
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const GeneratorRequest &request = desk.fakes.requests().at(i);
        QCOMPARE(lines[i], QString::number(request.line) + request.fileSuffix);
        QCOMPARE(request.lines, (QList<quint8>{0, 1}));
    }
}

QTEST_GUILESS_MAIN(TestGeneratorRequests)
#include "tst_generatorrequests.moc"
