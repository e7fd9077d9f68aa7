#include "check/CheckTest.h"

using namespace CheckTest;
using namespace CheckTest::Texts;

/** Objects that CiA 301 and CiA 1301 want, lists without gaps, SYNC, USDO, store and restore. */
class TestMandatoryObjects : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void theDeviceTypeIsAVariableInClassicalCan_data();
    void theDeviceTypeIsAVariableInClassicalCan() { checkCANopenRow(); }
    void theDeviceTypeIsAnArrayInCanFd_data();
    void theDeviceTypeIsAnArrayInCanFd() { checkCANopenRow(); }
    void errorRegisterAndErrorControlExist_data();
    void errorRegisterAndErrorControlExist() { checkCANopenRow(); }
    void slaveAssignmentsFitTheObject_data();
    void slaveAssignmentsFitTheObject() { checkCANopenRow(); }
    void listsHaveNoGaps_data();
    void listsHaveNoGaps() { checkCANopenRow(); }
    void aSyncProducerHasACycle_data();
    void aSyncProducerHasACycle() { checkCANopenRow(); }
    void aUsdoServerHasConnections_data();
    void aUsdoServerHasConnections() { checkCANopenRow(); }
    void aUsdoServerOfALineIsMeant();
    void storeAndRestoreTakeFewValues_data();
    void storeAndRestoreTakeFewValues() { checkCANopenRow(); }
};

namespace {

const QString noVariable =
    "Object 0x1000 (Device Type) must be a VARIABLE according to the CANopen specification."_error;
const QString noArray =
    "Object 0x1000 (Device Type) must be an ARRAY according to the CANopen FD specification."_error;
const QString noDeviceType = "Object 0x1000 (Device Type) does not exist, but it is mandatory according to "
                             "CANopen specification."_error;

} // namespace

void TestMandatoryObjects::theDeviceTypeIsAVariableInClassicalCan_data()
{
    addRows({
        {"array", [](Project &p) { p.array(0x1000, {"0"}); }, {noVariable}},
        {"record",
         [](Project &p) {
             p.array(0x1000, {"0"});
             p.object(0x1000, CANopen::Record);
         },
         {noVariable}},
        {"missing", [](Project &p) { p.remove(0x1000); }, {noVariable, noDeviceType}},
        {"FD switched off",
         [](Project &p) {
             p.makeFd();
             p.set("canfd_supported", "0");
         },
         {noVariable}},
    });
}

void TestMandatoryObjects::theDeviceTypeIsAnArrayInCanFd_data()
{
    addRows({
        {"array", [](Project &p) { p.makeFd(); }, {}},
        {"variable", [](Project &p) { p.set("canfd_supported", "1"); }, {noArray}},
        {"record",
         [](Project &p) {
             p.makeFd();
             p.object(0x1000, CANopen::Record);
         },
         {noArray}},
        {"missing",
         [](Project &p) {
             p.makeFd();
             p.remove(0x1000);
         },
         {noArray, noDeviceType}},
    });
}

void TestMandatoryObjects::errorRegisterAndErrorControlExist_data()
{
    addRows({
        {"no error register",
         [](Project &p) { p.remove(0x1001); },
         {"Object 0x1001 (Error Register) does not exist, but it is mandatory according to CANopen "
          "specification."_error}},
        {"no error control",
         [](Project &p) { p.remove(0x1017); },
         {"Object 0x1017 (Producer Heartbeat) and 0x100C (Guard Time) do not exist, but one of them is "
          "mandatory."_error}},
        {"guarding alone",
         [](Project &p) {
             p.remove(0x1017);
             p.variable(0x100C, sub("Guard Time", CAN::Unsigned16, "rw", "100"));
         },
         {}},
        {"both", [](Project &p) { p.variable(0x100C, sub("Guard Time", CAN::Unsigned16, "rw", "100")); }, {}},
    });
}

void TestMandatoryObjects::slaveAssignmentsFitTheObject_data()
{
    const QString tooMany = "Object 0x1f81: Value of 'max slave Assigment count' may not exceed number of "
                            "subindices of object 0x1f81."_error;
    const auto assign = [](const char *value) {
        return [=](Project &p) {
            p.array(0x1F81, {"1", "1"});
            p.set("max_slave_assignment", value);
        };
    };
    addRows({
        {"one more", assign("3"), {tooMany}},
        {"one more, with blanks", assign(" 3 "), {tooMany}},
        {"many more", assign("127"), {tooMany}},
        {"as many", assign("2"), {}},
        {"fewer", assign("1"), {}},
        {"0", assign(" 0 "), {}},
        {"empty", assign("  "), {}},
        {"not decimal", assign("0x9"), {}},
        {"no such object", [](Project &p) { p.set("max_slave_assignment", "9"); }, {}},
    });
}

void TestMandatoryObjects::listsHaveNoGaps_data()
{
    const auto list = [](quint16 index, const QList<quint8> &subIndices) {
        return [=](Project &p) {
            p.array(index, {});
            for (const quint8 subIndex : subIndices)
                p.put(index, subIndex, sub("Entry", CAN::Unsigned32, "rw", "1"));
            p.value(index, 0, QString::number(subIndices.isEmpty() ? 0 : subIndices.last()));
        };
    };
    QList<Row> rows;
    for (const quint16 index : {0x1016, 0x1028, 0x1F81}) {
        const QByteArray name = QByteArray::number(index, 16);
        const QString head = QStringLiteral("<strong>Error: </strong>Object 0x%1 ").arg(index, 0, 16);
        const QString empty = head + QStringLiteral("does not contain any sub-indices.");
        const QString gaps = head + QStringLiteral("may not have gaps.");
        rows += {
            {name + " without entries", list(index, {}), {empty}},
            {name + " with gap", list(index, {1, 3}), {gaps}},
            {name + " that begins with 2", list(index, {2}), {gaps}},
            {name + " without gap", list(index, {1, 2, 3}), {}},
            {name + " without gap or sub-index 0",
             [=](Project &p) {
                 list(index, {1, 2})(p);
                 p.removeSub(index, 0);
                 p.object(index, CANopen::Var);
             },
             {QStringLiteral("<strong>Error: </strong>Object 0x%1: The object is a VARIABLE but has "
                             "multiple subindices.")
                  .arg(index, 0, 16)}},
        };
    }
    rows += {"no sub-indices at all",
             [](Project &p) { p.object(0x1016, CANopen::Array); },
             {"Object 0x1016 does not contain any sub-indices."_error,
              "Object 0x1016: This array does not contain any sub-indices"_error}};
    rows += {"gap elsewhere", list(0x1012, {1, 3}), {}};
    addRows(rows);
}

void TestMandatoryObjects::aSyncProducerHasACycle_data()
{
    const QString missing =
        "Object 0x1006 must be present, if SYNC producer bit is set in object 0x1005."_error;
    const auto sync = [](const char *value) { return [=](Project &p) { p.value(0x1005, 0, value); }; };
    addRows({
        {"bit 30", sync("0x40000080"), {missing}},
        {"bit 30, decimal", sync("1073741952"), {missing}},
        {"bits 30 and 31", sync("0xC0000080"), {missing}},
        {"bit 30 of 64", sync("0x140000080"), {missing}},
        {"bit 31", sync("0x80000080"), {}},
        {"bit 29", sync("0x20000080"), {}},
        {"empty", sync(""), {}},
        {"expression", sync("$NODEID+0x40000080"), {}},
        {"with cycle",
         [=](Project &p) {
             sync("0x40000080")(p);
             p.variable(0x1006, sub("Communication Cycle", CAN::Unsigned32, "rw", "0"));
         },
         {}},
        {"no 0x1005", [](Project &p) { p.remove(0x1005); }, {}},
    });
}

void TestMandatoryObjects::aUsdoServerHasConnections_data()
{
    const QString none = "Number of USDO server connections must be at least 1."_error;
    const auto server = [](const char *isEnabled, const char *count) {
        return [=](Project &p) {
            p.makeFd();
            p.set("usdo_server_enabled", isEnabled);
            p.set("usdo_server_cnt", count);
        };
    };
    addRows({
        {"0", server("1", "0"), {none}},
        {"empty", server("1", ""), {none}},
        {"no number", server("1", "many"), {none}},
        {"1", server("1", "1"), {}},
        {"not enabled", server("0", "0"), {}},
        {"never enabled", server("", "0"), {}},
        {"enabled with another text", server("01", "0"), {}},
        {"classical CAN",
         [](Project &p) {
             p.set("usdo_server_enabled", "1");
             p.set("usdo_server_cnt", "0");
         },
         {}},
    });
}

void TestMandatoryObjects::aUsdoServerOfALineIsMeant()
{
    Project project;
    project.makeFd();
    project.addLine(1, CANopenLine);
    project.makeFd();
    project.set("usdo_server_enabled", "1");
    project.set("usdo_server_cnt", "1,0");
    const QString none = "Number of USDO server connections must be at least 1."_error;
    compare(Checker().checkCANopen(project), {none});
    project.set("usdo_server_enabled", "1,0");
    compare(Checker().checkCANopen(project), {});
    project.line = 0;
    compare(Checker().checkCANopen(project), {});
    project.set("usdo_server_cnt", "0,1");
    compare(Checker().checkCANopen(project), {none});
}

void TestMandatoryObjects::storeAndRestoreTakeFewValues_data()
{
    const auto entry = [](quint16 index, quint8 subIndex, const char *value, const char *setting) {
        return [=](Project &p) {
            p.array(index, {"", "", "", ""});
            p.value(index, subIndex, value);
            p.set("1010autostore_by_application", setting);
        };
    };
    const auto byApplication = [](const char *object) {
        return QStringLiteral("<strong>Error: </strong>Object 0x%1 only default values between 0 and 3 are "
                              "supported.")
            .arg(QLatin1StringView(object));
    };
    const auto byStack = [](const char *object) {
        return QStringLiteral("<strong>Error: </strong>Object 0x%1 only default values between 0 and 1 are "
                              "supported. Enable CO_AUTO_STORE_HANDLED_BY_APPLICATION to support other "
                              "values")
            .arg(QLatin1StringView(object));
    };
    addRows({
        {"application, 4", entry(0x1010, 1, "4", "1"), {byApplication("1010:1")}},
        {"application, 4 in hexadecimal", entry(0x1010, 2, "0x4", "1"), {byApplication("1010:2")}},
        {"application, restore", entry(0x1011, 3, "100", "1"), {byApplication("1011:3")}},
        {"application, other setting", entry(0x1011, 3, "4", "2"), {byApplication("1011:3")}},
        {"application, 3", entry(0x1010, 1, "3", "1"), {}},
        {"stack, 2", entry(0x1010, 1, "2", "0"), {byStack("1010:1")}},
        {"stack, 4", entry(0x1010, 3, "4", "0"), {byStack("1010:3")}},
        {"stack, no setting", entry(0x1011, 2, "2", ""), {byStack("1011:2")}},
        {"stack, 1", entry(0x1010, 1, "1", "0"), {}},
        {"stack, 0", entry(0x1010, 1, "0", "0"), {}},
        {"sub-index 4 is not tested", entry(0x1010, 4, "9", "0"), {}},
        {"other object", entry(0x1012, 1, "9", "0"), {}},
        {"store before restore, sub-indices ascending",
         [](Project &p) {
             p.array(0x1011, {"2"});
             p.array(0x1010, {"1", "2", "3"});
         },
         {byStack("1010:2"), byStack("1010:3"), byStack("1011:1")}},
    });
}

QTEST_GUILESS_MAIN(TestMandatoryObjects)
#include "tst_mandatoryobjects.moc"
