#include "check/CheckTest.h"

using namespace CheckTest;
using namespace CheckTest::Texts;

/** Settings that hold an entry for each line. */
class TestLineSettingRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void aLineHasANodeIdOrItsFunction_data();
    void aLineHasANodeIdOrItsFunction() { checkCANopenRow(); }
    void theFunctionForTheNodeIdIsANameOnly_data();
    void theFunctionForTheNodeIdIsANameOnly() { checkCANopenRow(); }
    void buffersHaveADecimalSizeForEachLine_data();
    void buffersHaveADecimalSizeForEachLine() { checkCANopenRow(); }
    void flyingMastersAreListedForEachLine_data();
    void flyingMastersAreListedForEachLine() { checkCANopenRow(); }
    void granularityIsThatOfTheLine();
};

namespace {

QString noNodeId(int line)
{
    return QStringLiteral("<strong>Error: </strong>CANopen basic Stack Settings: No Node-Id specified for "
                          "line %1: Specify a number between 1 and 127, or 255 for LSS or a function name "
                          "like e.g. readDipSwitch in the line below.")
        .arg(line);
}

const QString receiveSize =
    "Common Settings: CAN receive buffer size must be specified individually for each line."_error;
const QString transmitSize =
    "Common Settings: CAN transmit buffer size must be specified individually for each line."_error;

/** Makes the change of a row on a second line that is valid. */
Change onLine1(const Change &change)
{
    return [=](Project &p) {
        p.addLine(1, CANopenLine);
        change(p);
    };
}

Change setting(const char *key, const char *value)
{
    return [=](Project &p) { p.set(key, value); };
}

} // namespace

void TestLineSettingRules::aLineHasANodeIdOrItsFunction_data()
{
    addRows({
        {"none", setting("co_node_id", ""), {noNodeId(0)}},
        {"none for the second line", onLine1(setting("co_node_id", "5")), {noNodeId(1)}},
        {"empty for the second line", onLine1(setting("co_node_id", "5,")), {noNodeId(1)}},
        {"empty for the first line alone", onLine1(setting("co_node_id", ",5")), {}},
        {"of the second line", onLine1(setting("co_node_id", "5,255")), {}},
        {"function",
         [](Project &p) {
             p.set("co_node_id", "");
             p.set("co_node_id_fct", "readDipSwitch");
         },
         {}},
        {"function of the second line",
         onLine1([](Project &p) {
             p.set("co_node_id", "5");
             p.set("co_node_id_fct", ",readDipSwitch");
         }),
         {}},
        {"function of the first line alone",
         onLine1([](Project &p) {
             p.set("co_node_id", "5");
             p.set("co_node_id_fct", "readDipSwitch");
         }),
         {noNodeId(1)}},
    });
}

void TestLineSettingRules::theFunctionForTheNodeIdIsANameOnly_data()
{
    const QString opening =
        "CANopen basic Stack Settings: The name of the NodeId function may not include a (."_error;
    const QString closing =
        "CANopen basic Stack Settings: The name of the NodeId function may not include a )."_error;
    addRows({
        {"both brackets", setting("co_node_id_fct", "readDip()"), {opening, closing}},
        {"both the wrong way round", setting("co_node_id_fct", ")readDip("), {opening, closing}},
        {"opening bracket", setting("co_node_id_fct", "readDip("), {opening}},
        {"closing bracket", setting("co_node_id_fct", "readDip)"), {closing}},
        {"of another line", setting("co_node_id_fct", "readDip,readOther()"), {}},
        {"of the second line", onLine1(setting("co_node_id_fct", "readDip,readOther()")), {opening, closing}},
        {"square brackets", setting("co_node_id_fct", "read[0]"), {}},
    });
}

void TestLineSettingRules::buffersHaveADecimalSizeForEachLine_data()
{
    addRows({
        {"no receive size", setting("receivebuffersize", ""), {receiveSize}},
        {"no transmit size", setting("transmitbuffersize", ""), {transmitSize}},
        {"neither",
         [](Project &p) {
             p.set("transmitbuffersize", "");
             p.set("receivebuffersize", "");
         },
         {receiveSize, transmitSize}},
        {"not decimal", setting("receivebuffersize", "0x10"), {receiveSize}},
        {"negative", setting("receivebuffersize", "-1"), {receiveSize}},
        {"text", setting("transmitbuffersize", "ten"), {transmitSize}},
        {"one value for two lines", onLine1(setting("receivebuffersize", "10")), {receiveSize}},
        {"one transmit value for two lines", onLine1(setting("transmitbuffersize", "10")), {transmitSize}},
        {"two values for two lines", onLine1(setting("transmitbuffersize", "10,20")), {}},
        {"0", setting("receivebuffersize", "0"), {}},
        {"of another line", setting("receivebuffersize", "10,"), {}},
    });
}

void TestLineSettingRules::flyingMastersAreListedForEachLine_data()
{
    const QString list = "General Settings: The ML master/slave settings size must be specified individually "
                         "for each line. (e.g 0,1)"_error;
    const auto flying = [](const char *list) {
        return [=](Project &p) {
            p.set("nmtmaster", "2");
            p.set("co_ml_ms", list);
        };
    };
    addRows({
        {"second line, one value", onLine1(flying("0")), {list}},
        {"second line, empty", onLine1(flying("")), {list}},
        {"second line, list", onLine1(flying("0,1")), {}},
        {"second line, comma alone", onLine1(flying(",")), {}},
        {"first line", flying("0"), {}},
        {"second line, slave", onLine1(setting("nmtmaster", "0")), {}},
    });
}

void TestLineSettingRules::granularityIsThatOfTheLine()
{
    Project project;
    project.setDescription("Granularity", "0");
    project.mapping(0x1A00, {"0x20010010"}, "rw");
    project.addLine(1, CANopenLine);
    project.mapping(0x1A00, {"0x20010010"}, "rw");
    const QString dynamic = "Dynamic mapping cannot be used with a granularity of 0. Correct device "
                            "description settings or PDO mapping."_error;
    for (const quint8 descriptionLine : {0, 1}) {
        project.store->setDescriptionLine(descriptionLine);
        project.line = 1;
        compare(Checker().checkCANopen(project), {});
        project.line = 0;
        compare(Checker().checkCANopen(project), {dynamic});
        QCOMPARE(project.store->descriptionLine(), descriptionLine);
    }
}

QTEST_GUILESS_MAIN(TestLineSettingRules)
#include "tst_linesettingrules.moc"
