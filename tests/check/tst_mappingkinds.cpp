#include "check/CheckTest.h"

using namespace CheckTest;
using namespace CheckTest::Texts;

/** Bitwise and dynamic mapping against the granularity of the device, and the PDO callbacks. */
class TestMappingKinds : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void bitwiseMappingNeedsAFineGranularityAndTheSetting_data();
    void bitwiseMappingNeedsAFineGranularityAndTheSetting() { checkCANopenRow(); }
    void entriesOfOneToSevenBitsAreBitwise_data();
    void entriesOfOneToSevenBitsAreBitwise() { checkCANopenRow(); }
    void dynamicMappingNeedsAGranularity_data();
    void dynamicMappingNeedsAGranularity() { checkCANopenRow(); }
    void dynamicMappingWithoutGranularityDoesNotStopTheGeneration();
    void bothPdoCallbacksAreDefinedOrNone_data();
    void bothPdoCallbacksAreDefinedOrNone() { checkCANopenRow(); }
};

namespace {

const QString coarse = "Bitwise mapping cannot be used with a granularity of 8. Correct device description "
                       "settings or PDO mapping."_strong;
const QString disabled =
    "Bitwise mapping not enabled in general settings. Correct general settings or PDO mapping."_error;
const QString noGranularity = "Dynamic mapping cannot be used with a granularity of 0. Correct device "
                              "description settings or PDO mapping."_error;

Change kinds(const char *granularity, const char *bitwise, const QStringList &entries,
             const char *access = "const", const char *count = "")
{
    return [=](Project &p) {
        p.type(0x2000, 1, CAN::Unsigned4, "0");
        p.setDescription("Granularity", granularity);
        p.set("bitwise_mapping", bitwise);
        p.mapping(0x1600, entries, access, count);
    };
}

} // namespace

void TestMappingKinds::bitwiseMappingNeedsAFineGranularityAndTheSetting_data()
{
    const QStringList bits{"0x20000104"};
    addRows({
        {"granularity 8, not enabled", kinds("8", "0", bits), {coarse, disabled}},
        {"granularity 8, enabled", kinds("8", "1", bits), {coarse}},
        {"granularity 0x8", kinds("0x8", "1", bits), {coarse}},
        {"granularity 1, not enabled", kinds("1", "0", bits), {disabled}},
        {"granularity 1, never enabled", kinds("1", "", bits), {disabled}},
        {"granularity 1, enabled", kinds("1", "1", bits), {}},
        {"granularity 1, enabled by another number", kinds("1", "2", bits), {}},
        {"granularity 64", kinds("64", "1", bits), {}},
        {"bytes only", kinds("8", "0", {"0x20000208"}), {}},
        {"two tables are told once",
         [](Project &p) {
             kinds("8", "0", {"0x20000104"})(p);
             p.mapping(0x1A00, {"0x20000104"});
         },
         {coarse, disabled}},
    });
}

void TestMappingKinds::entriesOfOneToSevenBitsAreBitwise_data()
{
    addRows({
        {"dummy of 1 bit", kinds("1", "0", {"0x00010001"}), {disabled}},
        {"dummy of 7 bits", kinds("1", "0", {"0x00050007"}), {disabled}},
        {"dummy of 8 bits", kinds("1", "0", {"0x00050008"}), {}},
        {"dummy of 9 bits", kinds("1", "0", {"0x00050009"}), {}},
        {"dummy of no bits", kinds("1", "0", {"0x00050000"}), {}},
        {"behind the number of entries",
         kinds("1", "0", {"0x20000208", "0x20000104"}, "rw", "1"),
         {disabled}},
        {"empty entry behind the number of entries", kinds("1", "0", {"0x20000208", "0"}, "rw", "1"), {}},
        {"in an empty entry",
         kinds("1", "0", {"0x00000004"}),
         {"Object 0x1600:1 is an active mapping entry but maps no object (empty entry)."_error, disabled}},
    });
}

void TestMappingKinds::dynamicMappingNeedsAGranularity_data()
{
    const QStringList bytes{"0x20000208"};
    addRows({
        {"granularity 0", kinds("0", "0", bytes, "rw"), {noGranularity}},
        {"granularity 1", kinds("1", "0", bytes, "rw"), {}},
        {"granularity 8", kinds("8", "0", bytes, "rw"), {}},
        {"static", kinds("0", "0", bytes), {}},
        {"read only", kinds("0", "0", bytes, "ro"), {}},
        {"told behind bitwise mapping", kinds("0", "0", {"0x20000104"}, "rw"), {disabled, noGranularity}},
        {"two tables are told once",
         [=](Project &p) {
             kinds("0", "0", bytes, "rw")(p);
             p.mapping(0x1A00, bytes, "rw");
         },
         {noGranularity}},
        {"a table without entries has no dynamic mapping",
         [=](Project &p) {
             kinds("0", "0", bytes)(p);
             p.pdo(0x1400, "$NODEID+0x80000200", {}, "rw");
         },
         {"Object 0x1600 of line 0: The PDO mapping table does not contain any mapped object."_error}},
    });
}

void TestMappingKinds::dynamicMappingWithoutGranularityDoesNotStopTheGeneration()
{
    Project project;
    kinds("0", "0", {"0x20000208"}, "rw")(project);
    const Outcome outcome = Checker().checkCANopen(project);
    QCOMPARE(outcome.messages, QStringList{noGranularity});
    QCOMPARE(outcome.errors, 0);
}

void TestMappingKinds::bothPdoCallbacksAreDefinedOrNone_data()
{
    const QString both = "Both static RPDO and TPDO event indication functions have to be defined."_error;
    const auto callbacks = [](const char *send, const char *receive, const char *headers = "") {
        return [=](Project &p) {
            p.set("fct_pdo", send);
            p.set("fct_pdo_receive", receive);
            p.set("use_core_headers", headers);
        };
    };
    addRows({
        {"transmit alone", callbacks("sent", ""), {both}},
        {"receive alone", callbacks("", "received"), {both}},
        {"blanks are none", callbacks("sent", "  "), {both}},
        {"blanks for both", callbacks(" ", ""), {}},
        {"both", callbacks("sent", "received"), {}},
        {"none", callbacks("", ""), {}},
        {"V4 headers", callbacks("sent", "", "V4"), {}},
        {"V4 headers in lower case", callbacks("sent", "", "v4"), {both}},
        {"other headers", callbacks("sent", "", "V3"), {both}},
    });
}

QTEST_GUILESS_MAIN(TestMappingKinds)
#include "tst_mappingkinds.moc"
