#include "generators/canopen/StackInitTexts.h"

#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;
using namespace StackInitTexts;

using Build = std::function<void(DictionaryDesk &, quint8)>;
Q_DECLARE_METATYPE(Build)

namespace {

Entry number(int type, const QString &value)
{
    return {.type = type, .value = value};
}

Build variable(quint16 index, int type, const QString &value)
{
    return [=](DictionaryDesk &desk, quint8 line) { desk.variable(index, number(type, value), line); };
}

Build array(quint16 index, const QStringList &entries)
{
    return [=](DictionaryDesk &desk, quint8 line) {
        QList<Entry> elements;
        for (const QString &entry : entries)
            elements.append(number(CAN::Unsigned32, entry));
        desk.array(index, elements, line);
    };
}

Build setting(const QString &key, const QString &value)
{
    return [=](DictionaryDesk &desk, quint8) { desk.set(key, value); };
}

Build all(const QList<Build> &builds)
{
    return [=](DictionaryDesk &desk, quint8 line) {
        for (const Build &build : builds)
            build(desk, line);
    };
}

QString sdoServer(const QString &arguments)
{
    return u"    /* initialize sdo server(s) */\n"_s + checked(u"coSdoServerInit(%1)"_s.arg(arguments));
}

/** The services of a device of one line that are written behind the SDO server and before the load function.
 */
QString singleLine(const Build &build)
{
    DictionaryDesk desk;
    addUsualObjects(desk, 0);
    build(desk, 0);
    return singleLineServices(desk.generate());
}

QString singleLineWith(const QString &services)
{
    return singleLineTables() + sdoServer(u"1u"_s) + services + loadFunction() + nmtSlave(u"0u"_s);
}

/** The services of line 1, whose objects stand behind those of line 0. */
QString multiLine(const Build &build)
{
    DictionaryDesk desk;
    addUsualObjects(desk, 0);
    addUsualObjects(desk, 1);
    build(desk, 1);
    return lineServices(desk.generate(), 1);
}

QString multiLineWith(const QString &services, int objects)
{
    return lineTables(usualObjects, usualObjects + objects) + sdoServer(u"canLine, 1u"_s) + services
        + nmtSlave(u"canLine, 0u"_s);
}

} // namespace

/** Which services of CANopen are started, by which calls. */
class TestStackInitServices : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void aServiceOfTheDeviceIsStarted_data();
    void aServiceOfTheDeviceIsStarted();
    void withoutHeartbeatAndGuardingNoErrorControlIsStarted();
    void guardingGivesWayToTheHeartbeat();
    void theFirstSdoServerNeedsNoObject();
    void everyFurtherSdoServerIsStarted();
    void everySdoClientIsStarted();
    void clientsNeedTheFirstOne();
    void ledsHaveACallWithoutResult_data();
    void ledsHaveACallWithoutResult();
    void idNegotiationHasACallWithoutResult();
    void pdosAreStartedWithTheirParameters();
    void parametersThatAPdoLacksAreZero();
    void pdosThatCanBeMappedHaveNoTable();
    void aFixedMappingOfNothingHasNoTable();
    void equalReceiveMappingsShareATable();
    void linesHaveTablesOfTheirOwn();
    void aDefaultThatIsNoNumberInCIsZero();
    void theTimeStampTellsItsDirections_data();
    void theTimeStampTellsItsDirections();
    void tablesWithoutAPlaceAreNamedOnce();
    void theOlderStackHasItsWatchdog();

private:
    static void addErrorRows();
    static void addSafetyAndTransportRows();
};

void TestStackInitServices::addErrorRows()
{
    const auto add = [](const char *name, const Build &build, const QString &comment, const QString &function,
                        const QString &arguments, int objects) {
        QTest::newRow(name) << build << comment << function << arguments << objects;
    };
    add("heartbeat producer", variable(0x1017, CAN::Unsigned16, u"1000"_s),
        u"/* initialize error control */"_s, u"coErrorCtrlInit"_s, u"od_const_u16[0], 0"_s, 1);
    add("heartbeat producer and consumers",
        all({array(0x1016, {u"0x7f0064"_s, u"0x7e0064"_s}), variable(0x1017, CAN::Unsigned16, u"1000"_s)}),
        u"/* initialize error control */"_s, u"coErrorCtrlInit"_s, u"od_const_u16[0], 2"_s, 2);
    add("node guarding", variable(0x100C, CAN::Unsigned16, u"100"_s),
        u"/* initialize error control (Node Guarding) */"_s, u"coErrorCtrlInit"_s, u"0, 0"_s, 1);
    add("node guarding and heartbeat consumers",
        all({variable(0x100C, CAN::Unsigned16, u"100"_s), array(0x1016, {u"0x7f0064"_s})}),
        u"/* initialize error control (Node Guarding) */"_s, u"coErrorCtrlInit"_s, u"0, 1"_s, 2);
    add("emergency", variable(0x1014, CAN::Unsigned32, u"$NODEID+0x80"_s), u"/* initialize emergency */"_s,
        u"coEmcyProducerInit"_s, {}, 1);
    add("EMCY consumers", array(0x1028, {u"0x81"_s, u"0x82"_s, u"0x83"_s}),
        u"/* initialize EMCY consumer */"_s, u"coEmcyConsumerInit"_s, u"3"_s, 1);
}

void TestStackInitServices::addSafetyAndTransportRows()
{
    const auto add = [](const char *name, const Build &build, const QString &comment, const QString &function,
                        const QString &arguments, int objects) {
        QTest::newRow(name) << build << comment << function << arguments << objects;
    };
    add("SYNC", variable(0x1005, CAN::Unsigned32, u"0x80"_s), u"/* initialize sync */"_s, u"coSyncInit"_s,
        u"od_const_u32[1], 0, 0"_s, 1);
    add("SYNC with period and counter",
        all({variable(0x1005, CAN::Unsigned32, u"0x80"_s), variable(0x1006, CAN::Unsigned32, u"1000"_s),
             variable(0x1019, CAN::Unsigned8, u"10"_s)}),
        u"/* initialize sync */"_s, u"coSyncInit"_s, u"od_const_u32[1], od_const_u32[2], od_const_u8[1]"_s,
        3);
    add("SDO requesting device", array(0x1F10, {u"0"_s}), u"/* initialize SDO Requesting Device (SRD) */"_s,
        u"coSrdInit"_s, {}, 1);
    add("GFC", variable(0x1300, CAN::Unsigned8, u"1"_s), u"/* initialize  GFC Producer - Consumer */"_s,
        u"coGfcInit"_s, u"CO_TRUE, CO_TRUE"_s, 1);
    add("SRDOs", all({array(0x1301, {u"1"_s}), array(0x1340, {u"1"_s})}), u"/* initialize SRDO  */"_s,
        u"coSrdoInit"_s, u"2"_s, 2);
    add("ISO-TP", setting(u"isotp_connection_cnt"_s, u"2"_s), u"/* initialize ISO-TP */"_s, u"isoTpInit"_s,
        {}, 0);
    add("bootup manager", setting(u"bootup_manager"_s, u"1"_s),
        u"/* initialization of node guarding master*/"_s, u"coGuardingInit"_s, {}, 0);
    add("slave assignment", array(0x1F81, {u"1"_s}), u"/* initialization of node guarding master*/"_s,
        u"coGuardingInit"_s, {}, 1);
}

void TestStackInitServices::aServiceOfTheDeviceIsStarted_data()
{
    QTest::addColumn<Build>("build");
    QTest::addColumn<QString>("comment");
    QTest::addColumn<QString>("function");
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("objects");
    addErrorRows();
    addSafetyAndTransportRows();
}

void TestStackInitServices::aServiceOfTheDeviceIsStarted()
{
    QFETCH(Build, build);
    QFETCH(QString, comment);
    QFETCH(QString, function);
    QFETCH(QString, arguments);
    QFETCH(int, objects);
    QCOMPARE(singleLine(build),
             singleLineWith(service(comment, QString(function + u'(' + arguments + u')'))));
    const QString lineArguments = arguments.isEmpty() ? u"canLine"_s : QString(u"canLine, "_s + arguments);
    QCOMPARE(multiLine(build),
             multiLineWith(service(comment, QString(function + u'(' + lineArguments + u')')), objects));
}

void TestStackInitServices::withoutHeartbeatAndGuardingNoErrorControlIsStarted()
{
    const Build build = array(0x1016, {u"0x7f0064"_s});
    QCOMPARE(singleLine(build), singleLineWith({}));
    QCOMPARE(multiLine(build), multiLineWith({}, 1));
}

void TestStackInitServices::guardingGivesWayToTheHeartbeat()
{
    const Build build =
        all({variable(0x100C, CAN::Unsigned16, u"100"_s), variable(0x1017, CAN::Unsigned16, u"1000"_s)});
    QCOMPARE(singleLine(build),
             singleLineWith(
                 service(u"/* initialize error control */"_s, u"coErrorCtrlInit(od_const_u16[1], 0)"_s)));
}

void TestStackInitServices::theFirstSdoServerNeedsNoObject()
{
    const Build nothing = [](DictionaryDesk &, quint8) {};
    QCOMPARE(singleLine(nothing), singleLineWith({}));
    QCOMPARE(multiLine(nothing), multiLineWith({}, 0));
    QCOMPARE(singleLine(array(0x1200, {u"0x600"_s, u"0x580"_s})), singleLineWith({}));
}

void TestStackInitServices::everyFurtherSdoServerIsStarted()
{
    const Build build =
        all({array(0x1200, {u"0x600"_s}), array(0x1201, {u"0x601"_s}), array(0x127F, {u"0x602"_s})});
    QCOMPARE(
        singleLine(build),
        singleLineWith(QString(checked(u"coSdoServerInit(2u)"_s) + checked(u"coSdoServerInit(128u)"_s))));
    QCOMPARE(multiLine(build),
             multiLineWith(QString(checked(u"coSdoServerInit(canLine, 2u)"_s)
                                   + checked(u"coSdoServerInit(canLine, 128u)"_s)),
                           3));
}

void TestStackInitServices::everySdoClientIsStarted()
{
    const Build build =
        all({array(0x1280, {u"0x601"_s}), array(0x1282, {u"0x602"_s}), array(0x12FF, {u"0x603"_s})});
    const QString comment = u"    /* initialize sdo clients(s) */\n"_s;
    QCOMPARE(
        singleLine(build),
        singleLineWith(QString(comment + checked(u"coSdoClientInit(1u)"_s) + checked(u"coSdoClientInit(3u)"_s)
                               + checked(u"coSdoClientInit(128u)"_s))));
    QCOMPARE(multiLine(build),
             multiLineWith(QString(comment + checked(u"coSdoClientInit(canLine, 1u)"_s)
                                   + checked(u"coSdoClientInit(canLine, 3u)"_s)
                                   + checked(u"coSdoClientInit(canLine, 128u)"_s)),
                           3));
}

void TestStackInitServices::clientsNeedTheFirstOne()
{
    QCOMPARE(singleLine(array(0x1281, {u"0x601"_s})), singleLineWith({}));
}

void TestStackInitServices::ledsHaveACallWithoutResult_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("hasLeds");
    QTest::newRow("functions registered at run time") << u"event_led"_s << u"1"_s << true;
    QTest::newRow("no function") << u"event_led"_s << u"0"_s << false;
    QTest::newRow("green LED") << u"fct_led_green"_s << u"onGreen"_s << true;
    QTest::newRow("red LED") << u"fct_led_red"_s << u"onRed"_s << true;
    QTest::newRow("other functions only") << u"enable_dynamic"_s << u"1"_s << false;
}

void TestStackInitServices::ledsHaveACallWithoutResult()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(bool, hasLeds);
    const QString comment = u"    /* initialization of LED module */\n"_s;
    const QString single = hasLeds ? QString(comment + u"    coLedInit();\n\n"_s) : QString();
    const QString multi = hasLeds ? QString(comment + u"    coLedInit(canLine);\n\n"_s) : QString();
    QCOMPARE(singleLine(setting(key, value)),
             QString(singleLineTables() + single + sdoServer(u"1u"_s) + loadFunction() + nmtSlave(u"0u"_s)));
    QCOMPARE(multiLine(setting(key, value)), multiLineWith(multi, 0));
}

void TestStackInitServices::idNegotiationHasACallWithoutResult()
{
    const Build build = setting(u"idnego_supported"_s, u"1"_s);
    const QString comment = u"    /* initialization of ID negotiation module */\n"_s;
    QCOMPARE(singleLine(build), singleLineWith(QString(comment + u"    coIdNegoInit();\n"_s)));
    QCOMPARE(multiLine(build), multiLineWith(QString(comment + u"    coIdNegoInit(canLine);\n"_s), 0));
}

void TestStackInitServices::pdosAreStartedWithTheirParameters()
{
    const auto communication = [](DictionaryDesk &desk, quint16 index, quint8 line) {
        desk.pdo(index, {u"0x10010008"_s}, u"const"_s, line);
        desk.sub(index, 3, number(CAN::Unsigned16, u"30"_s), line);
        desk.sub(index, 5, number(CAN::Unsigned16, u"50"_s), line);
        desk.sub(index, 6, number(CAN::Unsigned8, u"60"_s), line);
    };
    const Build build = [&](DictionaryDesk &desk, quint8 line) {
        communication(desk, 0x1400, line);
        communication(desk, 0x1801, line);
    };
    QCOMPARE(singleLine(build),
             singleLineWith(
                 QString(service(u"/* initialize TPDO 2 */"_s,
                                 u"coPdoTransmitInit(2u, od_const_u8[0], od_const_u16[0], od_const_u16[1], "
                                 "od_const_u8[2], &mapTableTPDO2)"_s)
                         + service(u"/* initialize RPDO 1 */"_s,
                                   u"coPdoReceiveInit(1u, od_const_u8[0], od_const_u16[0], od_const_u16[1], "
                                   "&mapTableRPDO1)"_s))));
    QCOMPARE(
        multiLine(build),
        multiLineWith(QString(service(u"/* initialize TPDO 2 */"_s,
                                      u"coPdoTransmitInit(canLine, 2u, od_const_u8[0], od_const_u16[0], "
                                      "od_const_u16[1], od_const_u8[2], &mapTableTPDOb2)"_s)
                              + service(u"/* initialize RPDO 1 */"_s,
                                        u"coPdoReceiveInit(canLine, 1u, od_const_u8[0], od_const_u16[0], "
                                        "od_const_u16[1], &mapTableRPDOb1)"_s)),
                      4));
}

void TestStackInitServices::parametersThatAPdoLacksAreZero()
{
    const Build build = [](DictionaryDesk &desk, quint8 line) {
        desk.pdo(0x1400, {u"0x10010008"_s}, u"const"_s, line); // transmission type only
        desk.array(0x1800, {number(CAN::Unsigned32, u"0x180"_s)}, line);
        desk.sub(0x1800, 5, number(CAN::Unsigned16, u"50"_s), line);
    };
    QCOMPARE(singleLine(build),
             singleLineWith(
                 QString(service(u"/* initialize TPDO 1 */"_s,
                                 u"coPdoTransmitInit(1u, 0u, 0u, od_const_u16[0], 0u, NULL)"_s)
                         + service(u"/* initialize RPDO 1 */"_s,
                                   u"coPdoReceiveInit(1u, od_const_u8[0], 0u, 0u, &mapTableRPDO1)"_s))));
}

void TestStackInitServices::pdosThatCanBeMappedHaveNoTable()
{
    const Build build = [](DictionaryDesk &desk, quint8 line) {
        desk.pdo(0x1402, {u"0x10010008"_s}, u"rw"_s, line);
        desk.pdo(0x19FF, {u"0x10010008"_s}, u"rw"_s, line);
    };
    QCOMPARE(singleLine(build),
             singleLineWith(QString(service(u"/* initialize TPDO 512 */"_s,
                                            u"coPdoTransmitInit(512u, od_const_u8[0], 0u, 0u, 0u, NULL)"_s)
                                    + service(u"/* initialize RPDO 3 */"_s,
                                              u"coPdoReceiveInit(3u, od_const_u8[0], 0u, 0u, NULL)"_s))));
}

void TestStackInitServices::aFixedMappingOfNothingHasNoTable()
{
    const Build build = [](DictionaryDesk &desk, quint8 line) { desk.pdo(0x1800, {}, u"const"_s, line); };
    QCOMPARE(singleLine(build),
             singleLineWith(service(u"/* initialize TPDO 1 */"_s,
                                    u"coPdoTransmitInit(1u, od_const_u8[0], 0u, 0u, 0u, NULL)"_s)));
}

void TestStackInitServices::equalReceiveMappingsShareATable()
{
    const Build build = [](DictionaryDesk &desk, quint8 line) {
        desk.pdo(0x1400, {u"0x10010008"_s}, u"const"_s, line);
        desk.pdo(0x1401, {u"0x10000020"_s}, u"const"_s, line);
        desk.pdo(0x1405, {u"0x10010008"_s}, u"const"_s, line);
    };
    const auto receive = [](int number, int table) {
        return service(
            u"/* initialize RPDO %1 */"_s.arg(number),
            u"coPdoReceiveInit(%1u, od_const_u8[0], 0u, 0u, &mapTableRPDO%2)"_s.arg(number).arg(table));
    };
    QCOMPARE(singleLine(build), singleLineWith(QString(receive(1, 1) + receive(2, 2) + receive(6, 1))));
}

void TestStackInitServices::linesHaveTablesOfTheirOwn()
{
    DictionaryDesk desk;
    for (const quint8 line : {quint8(0), quint8(1)}) {
        addUsualObjects(desk, line);
        desk.pdo(0x1400, {u"0x10010008"_s}, u"const"_s, line);
    }
    const QString text = desk.generate();
    QVERIFY(lineServices(text, 0).contains("0u, 0u, &mapTableRPDOa1);"_L1));
    QVERIFY(lineServices(text, 1).contains("0u, 0u, &mapTableRPDOb1);"_L1));
}

void TestStackInitServices::aDefaultThatIsNoNumberInCIsZero()
{
    const Build build =
        all({variable(0x1017, CAN::Unsigned24, u"1000"_s), variable(0x1005, CAN::Unsigned64, u"0x80"_s)});
    QCOMPARE(singleLine(build),
             singleLineWith(QString(service(u"/* initialize error control */"_s, u"coErrorCtrlInit(0, 0)"_s)
                                    + service(u"/* initialize sync */"_s, u"coSyncInit(0, 0, 0)"_s))));
}

void TestStackInitServices::theTimeStampTellsItsDirections_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("arguments");
    QTest::newRow("neither") << u"0x100"_s << u"CO_FALSE, CO_FALSE"_s;
    QTest::newRow("consumer") << u"0x80000100"_s << u"CO_TRUE, CO_FALSE"_s;
    QTest::newRow("producer") << u"0x40000100"_s << u"CO_FALSE, CO_TRUE"_s;
    QTest::newRow("both, with the node") << u"$NODEID+0xC0000100"_s << u"CO_TRUE, CO_TRUE"_s;
    QTest::newRow("no number") << u"time"_s << u"CO_FALSE, CO_FALSE"_s;
}

void TestStackInitServices::theTimeStampTellsItsDirections()
{
    QFETCH(QString, value);
    QFETCH(QString, arguments);
    const Build build = variable(0x1012, CAN::Unsigned32, value);
    const QString comment = u"/* initialize Time service */"_s;
    QCOMPARE(singleLine(build), singleLineWith(service(comment, u"coTimeInit(%1)"_s.arg(arguments))));
    QCOMPARE(multiLine(build),
             multiLineWith(service(comment, u"coTimeInit(canLine, %1)"_s.arg(arguments)), 1));
}

// The structure of all tables has no member for signed values of 24 bits.
void TestStackInitServices::tablesWithoutAPlaceAreNamedOnce()
{
    const Build build = variable(0x2000, CAN::Integer24, u"-5"_s);
    const QString names = u"    (void)od_const_i24;\n    (void)od_i24;\n"_s;
    QCOMPARE(singleLine(build),
             QString(singleLineTables() + names + sdoServer(u"1u"_s) + loadFunction() + nmtSlave(u"0u"_s)));
    DictionaryDesk desk;
    addUsualObjects(desk, 0);
    addUsualObjects(desk, 1);
    build(desk, 1);
    const QString text = desk.generate();
    QCOMPARE(lineServices(text, 0),
             QString(lineTables(0, usualObjects) + names + sdoServer(u"canLine, 1u"_s)
                     + nmtSlave(u"canLine, 0u"_s)));
    QCOMPARE(text.count(u"(void)od_i24"_s), 1);
}

void TestStackInitServices::theOlderStackHasItsWatchdog()
{
    DictionaryDesk desk;
    addUsualObjects(desk, 0);
    const QString v4 = singleLineServices(desk.generate());
    const QString older =
        between(desk.generate(false), u"    /* initialize object"_s, u"    return(RET_OK)"_s);
    QCOMPARE(QString(u"    /* initialize object"_s + older),
             QString(v4)
                 .replace("CORE_"_L1, "CO_"_L1)
                 .replace("RET_PARAMETER_INVALID"_L1, "RET_INVALID_PARAMETER"_L1));
}

QTEST_GUILESS_MAIN(TestStackInitServices)
#include "tst_stackinitservices.moc"
