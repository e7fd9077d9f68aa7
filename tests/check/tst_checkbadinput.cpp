#include "check/CheckTest.h"
#include "check/RandomProject.h"

#include <QElapsedTimer>
#include <QTimer>

#include <limits>

using namespace CheckTest;
using namespace CheckTest::Texts;

/** Projects as no form would make them: findings, never a crash or an endless loop. */
class TestCheckBadInput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void anyTextInAnyFieldIsSurvived_data();
    void anyTextInAnyFieldIsSurvived();
    void brokenRecordsAreSurvived_data();
    void brokenRecordsAreSurvived();
    void mappingsThatPointAtThemselvesAreFindings_data();
    void mappingsThatPointAtThemselvesAreFindings() { checkCANopenRow(); }
    void objectsWithoutSubIndexZeroAreFindings_data();
    void objectsWithoutSubIndexZeroAreFindings();
    void objectsWithAllSubIndicesAreChecked();
    void everyPdoOfTheStandardIsChecked();
    void signalsOfAnySizeDoNotOverflow();
    void anyTextInSettingsIsSurvived_data();
    void anyTextInSettingsIsSurvived();
    void aLineThatIsMissingHasFindings();
    void aStoreWithoutProjectIsSurvived();
    void aProjectThatIsClosedMeanwhileIsSurvived();
    void aSecondCheckSeesWhatChangedMeanwhile();

private:
    static void compareCounts(const Outcome &outcome);
};

namespace {

constexpr quint8 Receive = ObjectDataBase::Receive;
constexpr quint8 Transmit = ObjectDataBase::Transmit;

QList<QString> strangeTexts()
{
    return {"",
            " ",
            "-1",
            "0x",
            "$NODEID",
            "$NODEID+",
            "$nodeid+$nodeid+0x",
            "0xFFFFFFFFFFFFFFFFFFFF",
            "99999999999999999999999999",
            "1e400",
            "nan",
            "%1%2%3%4%5",
            "%",
            "<b>",
            "a,b;c d",
            ",,,,",
            "\n",
            QString(QChar(0)),
            QString(QChar(0xD800)),
            "\U0001F600",
            QString(65536, u'x'),
            QString(65536, u'9'),
            QString("$NODEID+").repeated(8192),
            QString(65536, u' '),
            QString(65536, u','),
            "0x" + QString(65536, u'F')};
}

} // namespace

/** The count is what the messages say, and no message has a placeholder that nothing filled. */
void TestCheckBadInput::compareCounts(const Outcome &outcome)
{
    QCOMPARE(outcome.errors, countedErrors(outcome.messages));
    for (const QString &message : outcome.messages)
        QVERIFY2(!message.contains("0x%"), qPrintable(message.left(200)));
}

void TestCheckBadInput::anyTextInAnyFieldIsSurvived_data()
{
    QTest::addColumn<QString>("text");
    int number = 0;
    for (const QString &text : strangeTexts())
        QTest::addRow("text %d, %d characters", ++number, int(text.size())) << text;
}

void TestCheckBadInput::anyTextInAnyFieldIsSurvived()
{
    QFETCH(QString, text);
    for (QString Sub::*field :
         {&Sub::defaultvalue, &Sub::accesstype, &Sub::lowlimit, &Sub::uplimit, &Sub::varname, &Sub::name}) {
        Project project;
        project.set("limit_check", "1");
        const QList<quint16> indices = project.store->getIndexList(0);
        for (const quint16 index : indices) {
            const QList<quint8> subIndices = project.store->getSubIndexList(0, index);
            for (const quint8 subIndex : subIndices)
                project.edit(index, subIndex, [&](Sub &s) {
                    s.limitineds = true;
                    s.implementation = CANopen::ApplicationVariable;
                    s.*field = text;
                });
        }
        compareCounts(Checker().checkAll(project));
        compareCounts(Checker().checkAll(project));
    }
}

void TestCheckBadInput::brokenRecordsAreSurvived_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 30; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void TestCheckBadInput::brokenRecordsAreSurvived()
{
    QFETCH(quint32, seed);
    RandomProject random(seed);
    Project project = random.make();
    const QList<QString> texts = strangeTexts();
    const QList<int> numbers = {
        -1, 0, 1, 7, 8, 9, 255, 65536, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
    const QList<quint8> lines = project.store->getLines();
    for (const quint8 line : lines) {
        project.line = line;
        const QList<quint16> indices = project.store->getIndexList(line);
        for (const quint16 index : indices) {
            if (random.chance(10))
                project.object(index, random.oneOf(numbers));
            const QList<quint8> subIndices = project.store->getSubIndexList(line, index);
            for (const quint8 subIndex : subIndices) {
                if (random.chance(5))
                    project.removeSub(index, subIndex);
                else if (random.chance(30))
                    project.edit(index, subIndex, [&](Sub &s) {
                        s.defaultvalue = random.oneOf(texts);
                        s.datatype = random.oneOf(numbers);
                        s.implementation = random.oneOf(numbers);
                        s.pdomapping = PDOMapping(random.oneOf(numbers));
                        s.writedefaulttoeds = random.oneOf(numbers);
                    });
            }
        }
    }
    compareCounts(Checker().checkAll(project));
    compareCounts(Checker().checkAll(project));
}

void TestCheckBadInput::mappingsThatPointAtThemselvesAreFindings_data()
{
    addRows({
        {"static receive table",
         [](Project &p) { p.mapping(0x1600, {"0x16000120"}); },
         {"Object 0x1600: The access right of the mapped object 0x1600:1 does not fit for an RPDO."_error}},
        {"dynamic transmit table", [](Project &p) { p.mapping(0x1A00, {"0x1A000120"}, "rw"); }, {}},
        {"its own number of entries", [](Project &p) { p.mapping(0x1A00, {"0x1A000008"}, "rw"); }, {}},
        {"each other",
         [](Project &p) {
             p.mapping(0x1600, {"0x1A000120"}, "rw");
             p.mapping(0x1A00, {"0x16000120"}, "rw");
         },
         {}},
        {"its communication object",
         [](Project &p) {
             p.mapping(0x1A00, {"0x18000120"}, "rw");
             p.edit(0x1800, 1, [](Sub &s) { s.pdomapping = PDOMapping(PDOMapping::Forbidden); });
         },
         {"Object 0x1a00: PDO mapping is not allowed for object 0x1800:1."_error}},
    });
}

void TestCheckBadInput::objectsWithoutSubIndexZeroAreFindings_data()
{
    QTest::addColumn<int>("index");
    for (const int index : {0x1018, 0x1400, 0x1600, 0x1800, 0x1A00, 0x2000})
        QTest::addRow("0x%x", index) << index;
}

void TestCheckBadInput::objectsWithoutSubIndexZeroAreFindings()
{
    QFETCH(int, index);
    const Project project;
    project.removeSub(quint16(index), 0);
    const Outcome outcome = Checker().checkCANopen(project);
    const QString flag =
        QStringLiteral("<strong>Error: </strong>Object 0x%1-0:The 'default value' flag must be "
                       "set for this subindex.")
            .arg(index, 0, 16);
    QVERIFY2(outcome.messages.contains(flag), qPrintable(outcome.messages.join(u'\n')));
    const QString written =
        QStringLiteral("Warning: Object 0x%1-0:The defaultvalue of this subindex should be "
                       "written into the EDS/XDD file.")
            .arg(index, 0, 16);
    QVERIFY(outcome.messages.contains(written));
    QVERIFY(!project.store->subIndexExists(0, quint16(index), 0));
    compareCounts(outcome);
}

void TestCheckBadInput::objectsWithAllSubIndicesAreChecked()
{
    Project project;
    QList<ObjectDataBase::SubEntry> entries;
    const QList<quint16> indices = project.store->getIndexList(0);
    for (const quint16 index : indices) {
        project.object(index, CANopen::Array);
        for (int subIndex = 1; subIndex <= 254; ++subIndex)
            entries.append({.line = 0,
                            .index = index,
                            .subindex = quint8(subIndex),
                            .data = sub("Entry", CAN::Unsigned8, "rw", "0x20000108")});
        entries.append({.line = 0, .index = index, .subindex = 0, .data = countSub(254)});
        entries.append({.line = 0, .index = index, .subindex = 255, .data = countSub(254)});
    }
    QVERIFY(project.store->addSubIndices(entries));
    QElapsedTimer timer;
    timer.start();
    const Outcome outcome = Checker().checkCANopen(project);
    QVERIFY(timer.elapsed() < 20000);
    compareCounts(outcome);
    QVERIFY(outcome.messages.contains("Object 0x1a00: Size of PDO exceeds the limit. "_error));
    QVERIFY(outcome.messages.contains(
        "Object 0x2001</i>: The value of subindex 0 does not fit to the highest subindex."_corrected));
}

void TestCheckBadInput::everyPdoOfTheStandardIsChecked()
{
    Project project;
    project.set("overwrite_predef", "1");
    for (const int first : {0x1401, 0x1801})
        for (int index = first; index < first + 0x1FF; ++index)
            project.pdo(quint16(index), "0x301", {"0x00050008"});
    const Outcome outcome = Checker().checkCANopen(project);
    QCOMPARE(outcome.messages.size(), 2 * 0x1FF - 1);
    QCOMPARE(outcome.messages.first(),
             "Object 0x1402: COB-ID '0x301' is already used by PDO object 0x1401."_error);
    QCOMPARE(outcome.messages.last(),
             "Object 0x19ff: COB-ID '0x301' is already used by PDO object 0x1401."_error);
}

void TestCheckBadInput::signalsOfAnySizeDoNotOverflow()
{
    constexpr int huge = std::numeric_limits<int>::max();
    Project project(J1939AndRawCan);
    project.canId(0x7FF, Transmit);
    for (const quint32 number : {1, 2, 3})
        project.element(0x7FF, Transmit, number, CAN::VisStringNull, huge, huge);
    project.element(0x7FF, Transmit, 4, CAN::VisStringNull, -huge, -huge);
    compare(Checker().checkRawCan(project),
            {" Signal '2' in CAN-ID 0x7ff overlaps with another signal in the same message."_red,
             " Signal '3' in CAN-ID 0x7ff overlaps with another signal in the same message."_red,
             " CAN-ID 0x7ff: signals require 6442450941 bits but the maximum payload is 64 bits."_red});
    project.pgn(61450, Receive);
    for (const quint32 number : {1, 2, 3})
        project.spn(61450, Receive, number, CAN::VisStringNull, huge, huge);
    compare(Checker().checkJ1939(project),
            {"Neither BAM nor TP.CMDT supported but PGNs with length > 64 bit defined."_error,
             "SPN 2 in PGN 61450 overlaps in bit position with another SPN in the same PGN."_strong,
             "SPN 3 in PGN 61450 overlaps in bit position with another SPN in the same PGN."_strong});
}

void TestCheckBadInput::anyTextInSettingsIsSurvived_data()
{
    anyTextInAnyFieldIsSurvived_data();
}

void TestCheckBadInput::anyTextInSettingsIsSurvived()
{
    QFETCH(QString, text);
    Project project(CANopenAndJ1939);
    project.addLine(1, CANopenAndRawCan);
    for (const char *key : {"limit_check",
                            "canfd_supported",
                            "bitwise_mapping",
                            "co_node_id",
                            "co_node_id_fct",
                            "receivebuffersize",
                            "transmitbuffersize",
                            "nmtmaster",
                            "co_ml_ms",
                            "max_slave_assignment",
                            "fct_pdo",
                            "fct_pdo_receive",
                            "use_core_headers",
                            "emcy_routing",
                            "sdo_blocktransfer_block_size",
                            "co_timer_interval",
                            "sorted_coblist",
                            "drv_group_filter",
                            "uds_bl_setting",
                            "overwrite_predef",
                            "usdo_server_enabled",
                            "usdo_server_cnt",
                            "uds_server_active",
                            "uds_client_cnt",
                            "uds_static_indication",
                            "uds_fct_generic",
                            "additional_cob_count",
                            "event_pdo"})
        project.set(key, text);
    for (const char *key : {"startaddress", "identitynumber", "manufacturercode", "bamsupport", "cmdtsupport",
                            "cmdtpackets", "safetysupport", "dynsupport"})
        project.setJ1939(key, text);
    project.setDescription("Granularity", text);
    project.setMisc("PreviousToolVersion", text);
    compareCounts(Checker().checkAll(project));
    if (!text.contains(QChar(0)))
        project.setMisc("costackpath", text);
    compareCounts(Checker().checkAll(project));
}

void TestCheckBadInput::aLineThatIsMissingHasFindings()
{
    Project project;
    project.line = 7;
    const Outcome outcome = Checker().checkCANopen(project);
    compareCounts(outcome);
    QVERIFY(outcome.messages.contains("Object 0x1001 (Error Register) does not exist, but it is mandatory "
                                      "according to CANopen specification."_error));
    compareCounts(Checker().checkJ1939(project));
    compare(Checker().checkRawCan(project), {});
}

void TestCheckBadInput::aStoreWithoutProjectIsSurvived()
{
    const Project project;
    project.store->closeDataBase();
    QVERIFY(Checker().checkProject(project).errors > 0);
    QVERIFY(Checker().checkCANopen(project).errors > 0);
    QVERIFY(Checker().checkJ1939(project).errors > 0);
    compare(Checker().checkRawCan(project), {});
}

void TestCheckBadInput::aProjectThatIsClosedMeanwhileIsSurvived()
{
    const Project project;
    QTimer::singleShot(0, project.store.data(), &ObjectDataBase::closeDataBase);
    QVERIFY(Checker().checkCANopen(project).errors > 0);
    QVERIFY(!project.store->isOpen());
}

// Command files write behind the back of the store's record caches.
void TestCheckBadInput::aSecondCheckSeesWhatChangedMeanwhile()
{
    Project project(CANopenAndJ1939);
    project.addLine(1, RawCanLine);
    Checker checker;
    compare(checker.checkAll(project), {});
    for (const char *sql : {"update SubObjects0 set accesstype = 'x' where objectindex = 4119",
                            "update SPNs0 set varname = '' where spnnumber = 190",
                            "update DataElements1 set varname = '' where canid = 292"})
        QVERIFY(project.store->executeSql(sql));
    compare(checker.checkAll(project),
            {"Object 0x1017-0x00: The access type 'x' is invalid. Use ro, rw, const, wo, rww or rwr "
             "instead."_error,
             "The SPN 190 in PGN 61444 needs a variable name."_error,
             " Variable name missing for signal # 1 in CAN-ID 0x124"_red});
}

QTEST_GUILESS_MAIN(TestCheckBadInput)
#include "tst_checkbadinput.moc"
