#include "check/CheckTest.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

using namespace CheckTest;
using namespace CheckTest::Texts;

/** The order of the console: steps of a line, rules of an object and of a sub-index, rules of the project. */
class TestCheckOrder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void cleanup() { disableCorrections(false); }
    void rulesOfAnObjectStandInTheirOrder();
    void rulesOfASubIndexStandInTheirOrder();
    void objectsAndSubIndicesAscend();
    void rulesOfAMappingEntryStandInTheirOrder();
    void receiveMappingsStandBeforeTransmitMappings();
    void settingsOfALineStandBeforeItsObjects();
    void identityRulesStandBeforeTheObjects();
    void communicationRulesStandBehindTheObjects();
    void rulesOfTheProjectStandInTheirOrder();
    void linesFollowTheProject();
    void eventsAreServedOncePerObject();
};

void TestCheckOrder::rulesOfAnObjectStandInTheirOrder()
{
    Project project;
    project.edit(0x2000, 0, [](Sub &s) {
        s.defaultvalue = "7";
        s.defaultineds = false;
        s.implementation = CANopen::ManagedVariable;
        s.name.clear();
    });
    project.rename(0x2000, "");
    project.writeDefault(0x2000, 0, Never);
    compare(Checker().checkCANopen(project),
            {"Object 0x2000</i>: The value of subindex 0 does not fit to the highest subindex."_corrected,
             "Object 0x2000-0:The 'default value' flag must be set for this subindex."_error,
             "Object 0x2000-0</i>:'Managed Const' is used as implementation type for this "
             "subindex."_corrected,
             "Object 0x2000-0:The defaultvalue of this subindex should be written into the EDS/XDD "
             "file."_warning,
             "Object 0x2000: The object does not have a name. (Required for EDS)"_error,
             "Object 0x2000-0x00: The object does not have a name. (Required for EDS)"_error});
}

void TestCheckOrder::rulesOfASubIndexStandInTheirOrder()
{
    Project project;
    project.array(0x2100, {"20", "20"});
    for (const quint8 subIndex : {1, 2}) {
        project.type(0x2100, subIndex, CAN::NoDataType, "20");
        project.limits(0x2100, subIndex, "0", "10");
        project.edit(0x2100, subIndex, [](Sub &s) { s.name.clear(); });
        project.access(0x2100, subIndex, "%3w");
    }
    project.implementation(0x2100, 1, CANopen::ApplicationVariable);
    project.implementation(0x2100, 2, CANopen::ManagedConst);
    const auto object = [](int subIndex, const char *text) -> QString {
        return QStringLiteral("Object 0x2100-0x0%1: ").arg(subIndex) + QLatin1StringView(text);
    };
    const auto error = [=](int subIndex, const char *text) -> QString {
        return "<strong>Error: </strong>" + object(subIndex, text);
    };
    const auto both = [=](int subIndex, const QString &middle, const QString &last) {
        QStringList messages{
            "Warning: "
                + object(subIndex, "Limit Check is activated, but it is deactivated in the global settings."),
            error(subIndex, "The object does not have a name. (Required for EDS)")};
        messages += middle;
        messages += error(subIndex,
                          "The access type '%3w' is invalid. Use ro, rw, const, wo, rww or rwr "
                          "instead.");
        messages += last;
        messages += error(subIndex, "Unknown or unsupported datatype.");
        messages += error(subIndex, "The defaultvalue is not in the range of the limits.");
        messages.removeAll(QString());
        return messages;
    };
    compare(Checker().checkCANopen(project),
            both(1, error(1, "The variable name is missing."), QString())
                + both(2, QString(),
                       error(2,
                             "The implementation type is Managed Const, but the access type allows write "
                             "access.")));
}

void TestCheckOrder::objectsAndSubIndicesAscend()
{
    Project project;
    for (const quint16 index : {0xFFFF, 0x3000, 0x2000, 0x1018})
        if (project.store->indexExists(0, index))
            project.rename(index, "");
        else
            project.object(index, CANopen::Var, "");
    for (const quint8 subIndex : {2, 1})
        project.edit(0x2000, subIndex, [](Sub &s) { s.name.clear(); });
    const QString unnamed = "<strong>Error: </strong>Object 0x%1: The object does not have a name. (Required "
                            "for EDS)";
    compare(Checker().checkCANopen(project),
            {unnamed.arg("1018"), unnamed.arg("2000"), unnamed.arg("2000-0x01"), unnamed.arg("2000-0x02"),
             unnamed.arg("3000"), unnamed.arg("ffff")});
}

void TestCheckOrder::rulesOfAMappingEntryStandInTheirOrder()
{
    Project project;
    project.remove(0x1800);
    project.edit(0x2000, 1, [](Sub &s) {
        s.pdomapping = PDOMapping(PDOMapping::Forbidden);
        s.accesstype = "wo";
    });
    project.mapping(0x1600, {"0x20000208"});
    project.mapping(0x1A00, {"0x2000013F", "0x20000104", "0"}, "rw", "9");
    for (const quint8 subIndex : {1, 2})
        project.access(0x1A00, subIndex, "ro");
    const QString differs = "Object 0x1a00: All subindices of a PDO mapping object must have the same access "
                            "type. (const for static mapping or rw for dynamic mapping"_error;
    const QString forbidden = "Object 0x1a00: PDO mapping is not allowed for object 0x2000:1."_error;
    const QString access =
        "Object 0x1a00: The access right of the mapped object 0x2000:1 does not fit for a TPDO."_error;
    compare(Checker().checkCANopen(project),
            {"Object 0x1a00: The corresponding PDO communication parameter object 0x1800 does not "
             "exist."_error,
             differs, forbidden, "Object 0x1a00: The size of the mapped object 0x2000:1 is too large."_error,
             access, differs, forbidden,
             "Object 0x1a00: The size of the mapped object 0x2000:1 is too small."_warning, access,
             "Object 0x1a00:3 is an active mapping entry but maps no object (empty entry)."_error,
             "Object 0x1a00: Size of PDO exceeds the limit. "_error,
             "Object 0x1a00:  Invalid number of mapping entries."_error,
             "Bitwise mapping cannot be used with a granularity of 8. Correct device description settings or "
             "PDO mapping."_strong,
             "Bitwise mapping not enabled in general settings. Correct general settings or PDO "
             "mapping."_error});
}

void TestCheckOrder::receiveMappingsStandBeforeTransmitMappings()
{
    Project project;
    project.set("overwrite_predef", "1");
    for (const quint16 index : {0x1900, 0x1801, 0x1500, 0x1401})
        project.pdo(index, "0x301", {"0x2FFF0008"});
    const auto missing = [](const char *object) {
        return QStringLiteral("<strong>Error: </strong>Object 0x%1: The mapped object 0x2fff:0 does not "
                              "exist.")
            .arg(QLatin1StringView(object));
    };
    const auto used = [](const char *object) {
        return QStringLiteral("<strong>Error: </strong>Object 0x%1: COB-ID '0x301' is already used by PDO "
                              "object 0x1401.")
            .arg(QLatin1StringView(object));
    };
    compare(Checker().checkCANopen(project),
            {missing("1601"), missing("1700"), missing("1a01"), missing("1b00"), used("1500"), used("1801"),
             used("1900")});
}

void TestCheckOrder::settingsOfALineStandBeforeItsObjects()
{
    const QTemporaryDir stack;
    QFile file(stack.filePath("a_featureinfo_b.xml"));
    QVERIFY(file.open(QIODevice::WriteOnly)
            && file.write("<a><required_tool_version>0.0</required_tool_version></a>"));
    file.close();
    Project project;
    project.value(0x2001, 0, "?");
    project.setMisc("costackpath", stack.path());
    project.set("co_node_id_fct", "node()");
    project.set("receivebuffersize", "");
    project.set("transmitbuffersize", "");
    project.array(0x1000, {"0"});
    project.remove(0x1001);
    project.remove(0x1017);
    project.array(0x1F81, {});
    project.set("max_slave_assignment", "5");
    project.array(0x1016, {});
    project.value(0x1005, 0, "0x40000080");
    project.array(0x1010, {"2"});
    compare(
        Checker().checkCANopen(project),
        {"Value conversion failed with Object 0x2001-0x0."_error,
         "Version of installed stack does not fit. It requires an older version of the tool. Cannot generate "
         "files."_red,
         "CANopen basic Stack Settings: The name of the NodeId function may not include a (."_error,
         "CANopen basic Stack Settings: The name of the NodeId function may not include a )."_error,
         "Common Settings: CAN receive buffer size must be specified individually for each line."_error,
         "Common Settings: CAN transmit buffer size must be specified individually for each line."_error,
         "Object 0x1000 (Device Type) must be a VARIABLE according to the CANopen specification."_error,
         "Object 0x1001 (Error Register) does not exist, but it is mandatory according to CANopen "
         "specification."_error,
         "Object 0x1017 (Producer Heartbeat) and 0x100C (Guard Time) do not exist, but one of them is "
         "mandatory."_error,
         "Object 0x1f81: Value of 'max slave Assigment count' may not exceed number of subindices of object "
         "0x1f81."_error,
         "Object 0x1016 does not contain any sub-indices."_error,
         "Object 0x1f81 does not contain any sub-indices."_error,
         "Object 0x1006 must be present, if SYNC producer bit is set in object 0x1005."_error,
         "Object 0x1010:1 only default values between 0 and 1 are supported. Enable "
         "CO_AUTO_STORE_HANDLED_BY_APPLICATION to support other values"_error});
}

void TestCheckOrder::identityRulesStandBeforeTheObjects()
{
    Project project;
    project.array(0x1010, {"2"});
    project.set("nmtmaster", "1");
    project.value(0x1018, 1, "0x2B7");
    project.value(0x1018, 2, "");
    project.implementation(0x1018, 4, CANopen::ManagedConst);
    project.array(0x1003, {"0"});
    project.array(0x1028, {"0"});
    project.rename(0x1001, "");
    project.remove(0x1A00);
    const QString storeValue = "Object 0x1010:1 only default values between 0 and 1 are supported. Enable "
                               "CO_AUTO_STORE_HANDLED_BY_APPLICATION to support other values"_error;
    const QString inhibitTime =
        "Object 0x102a: The object 0x102A (NMT inhibit time) is highly recommended for masters. It may be "
        "added via 'Add Communication Service'."_warning;
    const QString vendor =
        "<strong>Warning: Object 0x1018-0x01: The vendor-ID 0x2B7 (Korvel embedded communication GmbH) may "
        "not be used for production. </strong>";
    const QString serialNumber =
        "<strong>Warning</strong>: Object 0x1018: The implementation type of subindex 4 (serial number) is "
        "'Managed Const'. This is not useful in most cases.";
    compare(Checker().checkCANopen(project),
            {storeValue, inhibitTime, vendor,
             "Object 0x1018-0x02: The value of subindex 2 (product code) is empty."_error, serialNumber,
             "Object 0x1003: This object can only be used, if object 0x1014 exists as well."_error,
             "Object 0x1028-1: The value of this sub index may not be 0x00000000."_error,
             "Object 0x1001: The object does not have a name. (Required for EDS)"_error,
             "Object 0x1800: The corresponding PDO mapping object 0x1a00 does not exist."_error});
}

void TestCheckOrder::communicationRulesStandBehindTheObjects()
{
    Project project;
    project.rename(0x2001, "");
    project.mapping(0x1600, {"0x2FFF0104"}, "rw");
    project.setDescription("Granularity", "0");
    project.value(0x1400, 1, "0x301");
    project.writeDefault(0x1400, 2, Never);
    project.value(0x1800, 3, "100");
    project.value(0x1800, 5, "10");
    project.array(0x1301, {"1"});
    project.set("fct_pdo", "sent");
    project.set("emcy_routing", "1");
    project.variable(0x2100, project.get(0x2001, 0));
    const QString timer = "Subindex 3 and 5 of 0x1800: Event timer value should be greater than inhibit time "
                          "value."_strong;
    const QString bitwise =
        "Bitwise mapping not enabled in general settings. Correct general settings or PDO "
        "mapping."_error;
    const QString dynamic =
        "Dynamic mapping cannot be used with a granularity of 0. Correct device description settings or "
        "PDO mapping."_error;
    const QString routing =
        "Both EMCY producer objects and EMCY consumer objects must be present to use EMCY "
        "routing."_error;
    const QString cobId =
        "Object 0x1400-0x01: The COB-ID for this PDO does not follow the pre-defined connection "
        "set."_warning;
    const QString advice = "Enable CANopen Stack Settings -> Overwrite pre-defined connection set and call "
                           "userOverwriteCobIdSettings() to use these COB-ID settings.\n\n";
    compare(Checker().checkCANopen(project),
            {"Object 0x2001: The object does not have a name. (Required for EDS)"_error,
             "Object 0x1600: The mapped object 0x2fff:1 does not exist."_error,
             "Subindex 2 of 0x1400 should have its default value in the EDS file."_hint, timer,
             "Object 0x1301: The corresponding SRDO mapping object 0x1381 does not exist."_error, bitwise,
             dynamic, "Both static RPDO and TPDO event indication functions have to be defined."_error,
             routing, cobId, advice,
             "Object 0x2100-0x00: Variable name 'speed' is already used by object 0x2001-0x00."_strong});
}

namespace {

/** One finding of each group of rules about the project, and a CANopen and a J1939 line. */
void spoilProject(Project &project)
{
    project.addLine(1, J1939Line);
    project.set("nmtmaster", "2,0");
    project.set("co_timer_interval", "");
    project.set("sdo_blocktransfer_block_size", "200");
    project.set("event_led", "x");
    project.setMisc("PreviousToolVersion", "3.7.1");
    for (const char *key : {"udsserver_supported", "udsclient_supported", "uds_static_indication"})
        project.set(key, "1");
    project.set("uds_server_active", "1,0");
    project.set("uds_client_cnt", "1,0");
}

QStringList projectMessages()
{
    return {
        "UDS server and UDS client together on one line is not possible."_red,
        "Static UDS indication is enabled but no service has a function name; no callback will be wired up."_strong,
        "Add <font color='red'>co_memcpy.c</font> to your project or Makefile."_hint,
        "Add <font color='red'>uds_init.c</font> to your project or Makefile."_hint,
        "CANopen SDO block size may not exceed 127."_red,
        "Timer interval not set in Common Settings -> Hardware/Target."_red,
        "The CANopen setting 'NMT Master or Slave' is not supported in multi-protocol projects."_red,
        "\"LED Event\" has non-numeric value \"x\"."_error};
}

} // namespace

void TestCheckOrder::rulesOfTheProjectStandInTheirOrder()
{
    Project project;
    spoilProject(project);
    compare(Checker().checkProject(project), projectMessages());
}

void TestCheckOrder::linesFollowTheProject()
{
    Project project(CANopenAndJ1939);
    project.rename(0x2001, "");
    project.pgn(65000, ObjectDataBase::Receive);
    project.addLine(1, CANopenAndRawCan);
    project.rename(0x2000, "");
    project.canId(0x800, ObjectDataBase::Receive);
    project.set("event_led", "x");
    compare(Checker().checkAll(project),
            {"\"LED Event\" has non-numeric value \"x\"."_error,
             "Object 0x2001: The object does not have a name. (Required for EDS)"_error,
             "PG (65000/0xfde8) does not contain any SPNs."_error,
             "Object 0x2000: The object does not have a name. (Required for EDS)"_error,
             " CAN-ID 0x800 is higher then 0x7ff, but extended flag is not set."_red});
}

// The window repaints while a large dictionary is checked: in the walk over the values and in that over
// the objects.
void TestCheckOrder::eventsAreServedOncePerObject()
{
    Project project;
    project.variable(0x0040, sub("Type", CAN::Unsigned8, "ro", "0"));
    const int objects = int(project.store->getIndexList(0).size());
    int served = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] { ++served; });
    timer.start(0);
    compare(Checker().checkCANopen(project), {});
    QCOMPARE(served, objects + objects - 1);
}

QTEST_GUILESS_MAIN(TestCheckOrder)
#include "tst_checkorder.moc"
