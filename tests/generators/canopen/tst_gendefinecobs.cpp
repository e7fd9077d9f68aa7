#include "DefineDesk.h"

#include <span>

using namespace Qt::StringLiterals;

namespace {

/** A project of one CANopen line, and the CAN identifiers that it needs. */
struct Case
{
    const char *name;
    void (*build)(DefineDesk &desk);
    int cobs;
};

void enableUsdoServer(DefineDesk &desk)
{
    desk.set(u"usdo_server_enabled"_s, u"1"_s);
    desk.set(u"usdo_server_cnt"_s, u"1"_s);
}

void enableUsdoClient(DefineDesk &desk)
{
    desk.set(u"usdo_client_enabled"_s, u"1"_s);
    desk.set(u"usdo_client_cnt"_s, u"2"_s);
}

const Case canopenCases[] = {
    {"nothing", [](DefineDesk &) {}, 0},
    {"a USDO server", enableUsdoServer, 2},
    {"a USDO server beside a number of clients",
     [](DefineDesk &desk) {
         enableUsdoServer(desk);
         desk.set(u"usdo_client_cnt"_s, u"1"_s);
     },
     4},
    {"USDO clients alone", enableUsdoClient, 4},
    {"a number of USDO servers that are switched off",
     [](DefineDesk &desk) { desk.set(u"usdo_server_cnt"_s, u"1"_s); }, 0},
    {"a USDO server without a connection",
     [](DefineDesk &desk) { desk.set(u"usdo_server_enabled"_s, u"1"_s); }, 0},
    // the device type brings network management (2) and the default SDO server (2)
    {"0x1000", [](DefineDesk &desk) { desk.object(0, 0x1000); }, 4},
    {"0x1014", [](DefineDesk &desk) { desk.object(0, 0x1014); }, 1},
    {"0x1028 counts all its sub-indices", [](DefineDesk &desk) { desk.array(0, 0x1028, 3); }, 4},
    {"one SDO server", [](DefineDesk &desk) { desk.object(0, 0x1200); }, 2},
    {"an SDO server beside the device type",
     [](DefineDesk &desk) {
         desk.object(0, 0x1000);
         desk.object(0, 0x1200);
     },
     4},
    {"SDO servers at both ends of their range",
     [](DefineDesk &desk) {
         desk.object(0, 0x1200);
         desk.object(0, 0x127F);
     },
     4},
    {"0x1300", [](DefineDesk &desk) { desk.object(0, 0x1300); }, 2},
    {"SDO clients at both ends of their range",
     [](DefineDesk &desk) {
         desk.object(0, 0x1280);
         desk.object(0, 0x12FF);
     },
     4},
    {"TPDO mappings at both ends of their range",
     [](DefineDesk &desk) {
         desk.object(0, 0x1A00);
         desk.object(0, 0x1BFF);
     },
     2},
    {"RPDO mappings at both ends of their range",
     [](DefineDesk &desk) {
         desk.object(0, 0x1600);
         desk.object(0, 0x17FF);
     },
     2},
    {"PDO communication parameters count for nothing",
     [](DefineDesk &desk) {
         desk.object(0, 0x1400);
         desk.object(0, 0x1800);
         desk.object(0, 0x15FF);
         desk.object(0, 0x19FF);
     },
     0},
    {"0x1005", [](DefineDesk &desk) { desk.object(0, 0x1005); }, 1},
    {"0x1016 with three consumers", [](DefineDesk &desk) { desk.array(0, 0x1016, 3); }, 3},
    {"0x1016 with three consumers in buffers of their own",
     [](DefineDesk &desk) {
         desk.array(0, 0x1016, 3);
         desk.set(u"only_one_hb_buffer"_s, u"0"_s);
     },
     3},
    {"0x1016 with three consumers in one buffer",
     [](DefineDesk &desk) {
         desk.array(0, 0x1016, 3);
         desk.set(u"only_one_hb_buffer"_s, u"1"_s);
     },
     1},
    {"0x1016 without a consumer", [](DefineDesk &desk) { desk.array(0, 0x1016, 0); }, 0},
    {"0x1016 without a consumer and one buffer",
     [](DefineDesk &desk) {
         desk.array(0, 0x1016, 0);
         desk.set(u"only_one_hb_buffer"_s, u"1"_s);
     },
     0},
    {"0x1012", [](DefineDesk &desk) { desk.object(0, 0x1012); }, 2},
    {"LSS", [](DefineDesk &desk) { desk.set(u"lss_supported"_s, u"1"_s); }, 2},
    {"LSS of a master",
     [](DefineDesk &desk) {
         desk.set(u"lss_supported"_s, u"1"_s);
         desk.set(u"nmtmaster"_s, u"1"_s);
     },
     2},
    {"LSS with USDO",
     [](DefineDesk &desk) {
         desk.set(u"lss_supported"_s, u"1"_s);
         enableUsdoServer(desk);
     },
     4},
    {"LSS of a master with USDO",
     [](DefineDesk &desk) {
         desk.set(u"lss_supported"_s, u"1"_s);
         desk.set(u"nmtmaster"_s, u"1"_s);
         enableUsdoServer(desk);
     },
     5},
    {"node-ID negotiation", [](DefineDesk &desk) { desk.set(u"idnego_supported"_s, u"1"_s); }, 2},
    {"0x1F81 counts the nodes that are slaves",
     [](DefineDesk &desk) {
         desk.object(0, 0x1F81,
                     {{.number = 0, .value = u"0x7F"_s},
                      {.number = 1, .value = u"0x00000001"_s},
                      {.number = 2, .value = u"0"_s},
                      {.number = 3, .value = u"0x03E80309"_s},
                      {.number = 4, .value = u"6"_s}});
     },
     2},
    {"0x1F81 with a largest number of slaves",
     [](DefineDesk &desk) {
         desk.array(0, 0x1F81, 3, u"1"_s);
         desk.set(u"max_slave_assignment"_s, u" 20 "_s);
     },
     20},
    {"0x1F81 with a largest number of 0",
     [](DefineDesk &desk) {
         desk.array(0, 0x1F81, 3, u"1"_s);
         desk.set(u"max_slave_assignment"_s, u"0"_s);
     },
     3},
    {"a largest number of slaves without 0x1F81",
     [](DefineDesk &desk) { desk.set(u"max_slave_assignment"_s, u"20"_s); }, 0},
    {"sleep mode of CiA 447", [](DefineDesk &desk) { desk.set(u"sleep_mode_selection"_s, u"1"_s); }, 2},
    {"sleep mode of CiA 447 of a master",
     [](DefineDesk &desk) {
         desk.set(u"sleep_mode_selection"_s, u"1"_s);
         desk.set(u"nmtmaster"_s, u"1"_s);
     },
     16},
    {"sleep mode of CiA 454", [](DefineDesk &desk) { desk.set(u"sleep_mode_selection"_s, u"2"_s); }, 3},
    {"0x1F10", [](DefineDesk &desk) { desk.object(0, 0x1F10); }, 1},
    {"SRDOs at both ends of their range",
     [](DefineDesk &desk) {
         desk.object(0, 0x1301);
         desk.object(0, 0x137F);
         desk.object(0, 0x1381);
     },
     4},
    {"objects beside the ranges count for nothing",
     [](DefineDesk &desk) {
         for (const quint16 index :
              {0x11FF, 0x1380, 0x13FF, 0x15FF, 0x1800, 0x19FF, 0x1C00, 0x1010, 0x1017, 0x1F80})
             desk.object(0, index);
     },
     0},
    {"all of it adds up",
     [](DefineDesk &desk) {
         desk.object(0, 0x1000);
         desk.object(0, 0x1014);
         desk.objects(0, 0x1200, 2);
         desk.objects(0, 0x1A00, 4);
         desk.objects(0, 0x1600, 3);
         desk.array(0, 0x1016, 2);
         desk.object(0, 0x1005);
     },
     2 + 1 + 4 + 4 + 3 + 2 + 1},
};

const Case otherCases[] = {
    {"additional ones", [](DefineDesk &desk) { desk.set(u"additional_cob_count"_s, u"7"_s); }, 7},
    {"additional ones of 0", [](DefineDesk &desk) { desk.set(u"additional_cob_count"_s, u"0"_s); }, 0},
    {"additional ones that are no number",
     [](DefineDesk &desk) { desk.set(u"additional_cob_count"_s, u"many"_s); }, 0},
    {"ISO-TP clients and servers",
     [](DefineDesk &desk) {
         desk.set(u"isotp_supported"_s, u"1"_s);
         desk.set(u"isotp_client_con"_s, u"3"_s);
         desk.set(u"isotp_server_con"_s, u"2"_s);
     },
     10},
    {"ISO-TP that is switched off",
     [](DefineDesk &desk) {
         desk.set(u"isotp_client_con"_s, u"3"_s);
         desk.set(u"isotp_server_con"_s, u"2"_s);
     },
     0},
    {"a UDS server",
     [](DefineDesk &desk) {
         desk.set(u"udsserver_supported"_s, u"1"_s);
         desk.set(u"uds_server_active"_s, u"1"_s);
     },
     7},
    {"a UDS server that is not active",
     [](DefineDesk &desk) {
         desk.set(u"udsserver_supported"_s, u"1"_s);
         desk.set(u"uds_server_active"_s, u"0"_s);
     },
     0},
    {"a UDS server that is not supported", [](DefineDesk &desk) { desk.set(u"uds_server_active"_s, u"1"_s); },
     0},
    {"UDS clients",
     [](DefineDesk &desk) {
         desk.set(u"udsclient_supported"_s, u"1"_s);
         desk.set(u"uds_client_cnt"_s, u"2"_s);
     },
     6},
    {"UDS clients that are not supported", [](DefineDesk &desk) { desk.set(u"uds_client_cnt"_s, u"2"_s); },
     0},
};

/** What a line of any protocol has something to count for. */
void fill(DefineDesk &desk, quint8 line)
{
    desk.object(line, 0x1000);
    desk.object(line, 0x1014);
    desk.store->addPGN(line, 61444, StoreTest::samplePgn(ObjectDataBase::Transmit));
    desk.store->addPGN(line, 61443, StoreTest::samplePgn(ObjectDataBase::Receive));
    desk.store->addPGN(line, 65262, StoreTest::samplePgn(ObjectDataBase::Receive));
    desk.store->addCANID(line, 0x100, StoreTest::sampleCanId(ObjectDataBase::Transmit));
    desk.store->addCANID(line, 0x101, StoreTest::sampleCanId(ObjectDataBase::Transmit));
    desk.store->addCANID(line, 0x100, StoreTest::sampleCanId(ObjectDataBase::Receive));
}

constexpr int canopenPart = 5; // of such a line: 0x1000, 0x1014
constexpr int j1939Part = 9; // three parameter groups; address claim, request, acknowledgement
constexpr int rawPart = 3;

} // namespace

/** CORE_COB_COUNTS: how many CAN identifiers the stack has to handle on each line. */
class TestGenDefineCobs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void everyServiceHasItsIdentifiers_data() { addRows(canopenCases); }
    void everyServiceHasItsIdentifiers();
    void whatAnyLineMayHaveIsAdded_data() { addRows(otherCases); }
    void whatAnyLineMayHaveIsAdded();
    void theLineTypeDecidesWhichProtocolsCount_data();
    void theLineTypeDecidesWhichProtocolsCount();
    void aLineOfCANopenAndJ1939HasTheSumOfBoth();
    void aLineWithoutAnSdoServerObjectHasTheDefaultServer();
    void everyLineHasItsOwnNumber();
    void onlyTheMasterLineHasAMastersIdentifiers();
    void anEntryOfTheLineWins_data();
    void anEntryOfTheLineWins();
    void j1939CountsGroupsManagementAndTransport_data();
    void j1939CountsGroupsManagementAndTransport();
    void theFormIsTheOneTold();

private:
    static void addRows(std::span<const Case> cases);
    static void check(std::span<const Case> cases);
};

void TestGenDefineCobs::addRows(std::span<const Case> cases)
{
    QTest::addColumn<int>("number");
    for (std::size_t i = 0; i < cases.size(); ++i)
        QTest::newRow(cases[i].name) << int(i);
}

void TestGenDefineCobs::check(std::span<const Case> cases)
{
    QFETCH(int, number);
    const Case &row = cases[std::size_t(number)];
    DefineDesk desk;
    row.build(desk);
    QCOMPARE(desk.value(u"CORE_COB_COUNTS"_s), QString::number(row.cobs));
    QCOMPARE(desk.value(u"CORE_COB_CNT"_s), QString::number(row.cobs));
}

void TestGenDefineCobs::everyServiceHasItsIdentifiers()
{
    check(canopenCases);
}

void TestGenDefineCobs::whatAnyLineMayHaveIsAdded()
{
    check(otherCases);
}

void TestGenDefineCobs::theLineTypeDecidesWhichProtocolsCount_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("cobs");
    QTest::newRow("CANopen") << 1 << canopenPart;
    QTest::newRow("J1939") << 2 << j1939Part;
    QTest::newRow("raw CAN") << 4 << rawPart;
    QTest::newRow("CANopen and J1939") << 5 << canopenPart + j1939Part;
    QTest::newRow("CANopen and raw CAN") << 6 << canopenPart + rawPart;
    QTest::newRow("J1939 and raw CAN") << 7 << j1939Part + rawPart;
    for (const int other : {0, 3, 8})
        QTest::addRow("type %d", other) << other << 0;
}

void TestGenDefineCobs::theLineTypeDecidesWhichProtocolsCount()
{
    QFETCH(int, type);
    DefineDesk desk({type});
    fill(desk, 0);
    QTEST(desk.value(u"CORE_COB_COUNTS"_s).toInt(), "cobs");
}

void TestGenDefineCobs::aLineOfCANopenAndJ1939HasTheSumOfBoth()
{
    DefineDesk desk({1, 2, 5});
    for (const quint8 line : {0, 1, 2})
        fill(desk, line);
    const QStringList cobs = desk.value(u"CORE_COB_COUNTS"_s).split(u", "_s);
    QCOMPARE(cobs.size(), 3);
    QVERIFY(cobs.at(0).toInt() > 0 && cobs.at(1).toInt() > 0);
    QCOMPARE(cobs.at(2).toInt(), cobs.at(0).toInt() + cobs.at(1).toInt());
}

void TestGenDefineCobs::aLineWithoutAnSdoServerObjectHasTheDefaultServer()
{
    DefineDesk bare;
    bare.object(0, 0x1000);
    DefineDesk full;
    full.object(0, 0x1000);
    full.object(0, 0x1200);
    QCOMPARE(bare.value(u"CORE_COB_COUNTS"_s), full.value(u"CORE_COB_COUNTS"_s));
}

void TestGenDefineCobs::everyLineHasItsOwnNumber()
{
    DefineDesk desk({1, 1, 4});
    desk.object(0, 0x1000);
    desk.objects(1, 0x1A00, 3);
    desk.store->addCANID(2, 0x100, StoreTest::sampleCanId(ObjectDataBase::Transmit));
    QCOMPARE(desk.define(u"CORE_COB_COUNTS"_s), u"#define CORE_COB_COUNTS 4, 3, 1"_s);
    QCOMPARE(desk.value(u"CORE_COB_CNT"_s), u"8"_s);
}

void TestGenDefineCobs::onlyTheMasterLineHasAMastersIdentifiers()
{
    DefineDesk desk({1, 1, 1});
    desk.set(u"nmtmaster"_s, u"0,1,2"_s);
    desk.set(u"sleep_mode_selection"_s, u"1"_s);
    QCOMPARE(desk.value(u"CORE_COB_COUNTS"_s), u"2, 16, 16"_s);
}

void TestGenDefineCobs::anEntryOfTheLineWins_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QString>("cobs");
    QTest::newRow("one for all") << u"5"_s << u"5, 5, 5"_s;
    QTest::newRow("one each") << u"5,0,7"_s << u"5, 0, 7"_s;
    QTest::newRow("blanks do not matter") << u" 5 , 0 , 7 "_s << u"5, 0, 7"_s;
    QTest::newRow("an empty one is none") << u"5,,7"_s << u"5, 0, 7"_s;
    QTest::newRow("the last one goes on") << u"5,6"_s << u"5, 6, 6"_s;
    QTest::newRow("hexadecimal is no number") << u"0x10,1"_s << u"0, 1, 1"_s;
    QTest::newRow("missing") << QString() << u"0, 0, 0"_s;
    QTest::newRow("negative") << u"-3"_s << u"0, 0, 0"_s;
}

void TestGenDefineCobs::anEntryOfTheLineWins()
{
    QFETCH(QString, setting);
    DefineDesk desk({1, 1, 1});
    desk.set(u"additional_cob_count"_s, setting);
    QTEST(desk.value(u"CORE_COB_COUNTS"_s), "cobs");
}

void TestGenDefineCobs::j1939CountsGroupsManagementAndTransport_data()
{
    QTest::addColumn<QString>("bam");
    QTest::addColumn<QString>("cmdt");
    QTest::addColumn<int>("cobs");
    QTest::newRow("no transport") << u"0"_s << u"0"_s << j1939Part;
    QTest::newRow("broadcast") << u"1"_s << u"0"_s << j1939Part + 4;
    QTest::newRow("connections") << u"0"_s << u"1"_s << j1939Part + 4;
    QTest::newRow("both") << u"1"_s << u"1"_s << j1939Part + 4;
}

void TestGenDefineCobs::j1939CountsGroupsManagementAndTransport()
{
    QFETCH(QString, bam);
    QFETCH(QString, cmdt);
    DefineDesk desk({2});
    fill(desk, 0);
    // The address claim is in the project or not, by the generator that ran before.
    desk.store->addPGN(0, 60928, StoreTest::samplePgn(ObjectDataBase::Transmit));
    desk.setJ1939(u"bamsupport"_s, bam);
    desk.setJ1939(u"cmdtsupport"_s, cmdt);
    QTEST(desk.value(u"CORE_COB_COUNTS"_s).toInt(), "cobs");
}

void TestGenDefineCobs::theFormIsTheOneTold()
{
    DefineDesk desk({1, 1});
    desk.object(0, 0x1000);
    desk.object(1, 0x1014);
    QVERIFY(desk.text().contains(
        u"/* COB Definitions */\n#define CORE_COB_COUNTS 4, 1\n#define CORE_COB_CNT \t5\n/* do not"_s));
    QVERIFY(desk.text(false).contains(
        u"/* COB Definitions */\n#define CO_COB_COUNTS 4, 1\n#define CO_COB_CNT \t5\n/* do not"_s));
}

QTEST_GUILESS_MAIN(TestGenDefineCobs)
#include "tst_gendefinecobs.moc"
