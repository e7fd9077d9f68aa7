#include "check/CheckProject.h"
#include "generators/canopen/GeneratedDevice.h"

#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

using CheckTest::Project;
using CheckTest::Sub;
using Build = std::function<void(Project &)>;
Q_DECLARE_METATYPE(Build)

namespace {

/** Arrays that get few rows, and arrays that only look as if they did. */
void addArrays(Project &project)
{
    project.array(0x2100, QStringList(254, u"0x12345678"_s));
    project.array(0x2101, {u"1"_s, u"2"_s, u"3"_s, u"3"_s, u"3"_s});
    project.array(0x2102, {u"1"_s, u"1"_s, u"2"_s});
    project.array(0x2103, {u"4"_s, u"4"_s, u"4"_s, u"4"_s});
    project.removeSub(0x2103, 2);
    project.array(0x2104, {u"5"_s, u"5"_s, u"5"_s});
    for (const quint8 number : {1, 2, 3}) {
        project.implementation(0x2104, number, CANopen::ApplicationVariable);
        project.varName(0x2104, number, u"variable_$s"_s);
    }
}

void addLimits(Project &project)
{
    project.set(u"limit_check"_s, u"1"_s);
    const auto limited = [&](quint16 index, int type, const QString &low, const QString &up) {
        project.variable(index, CheckTest::sub(u"Limited"_s, type, u"rw"_s, u"7"_s));
        project.limits(index, 0, low, up);
    };
    limited(0x2200, CAN::Integer8, u"-100"_s, u"100"_s);
    limited(0x2201, CAN::Unsigned16, u"0x7"_s, u"0xFFFF"_s);
    limited(0x2202, CAN::Integer32, u"-2147483648"_s, u"2147483647"_s);
    limited(0x2203, CAN::Real32, u"-1.5"_s, u"7.25"_s);
    limited(0x2204, CAN::Unsigned64, u"1"_s, u"0xFFFFFFFFFFFFFFFF"_s);
}

void addTexts(Project &project, const QString &more = {})
{
    const QStringList texts{
        more, u"plain"_s, u"say \"a\\b\" ?\?/ */"_s, u"two\nlines"_s, u"\u00e4\u20acZ"_s, u"|x00ff41"_s};
    quint16 index = 0x2300;
    for (const QString &text : texts)
        for (const int type : {CAN::VisibleString, CAN::OctetString, CAN::Utf8String})
            for (const int kind : {CANopen::ManagedConst, CANopen::ApplicationVariable}) {
                Sub data = CheckTest::sub(u"Text"_s, type, u"ro"_s, text);
                data.implementation = kind;
                data.varname = u"text_$I"_s;
                data.size = 40;
                project.variable(index++, data);
            }
}

/** As long as a literal may be for every compiler, one byte more, and more of bytes that are no text. */
void addLongTexts(Project &project)
{
    constexpr int longest = 4095; // ISO C99
    project.variable(0x2300, CheckTest::sub(u"Text"_s, CAN::VisibleString, u"ro"_s, QString(longest, u'a')));
    project.variable(0x2301,
                     CheckTest::sub(u"Text"_s, CAN::VisibleString, u"ro"_s, QString(longest + 1, u'b')));
    project.variable(0x2302,
                     CheckTest::sub(u"Text"_s, CAN::Utf8String, u"ro"_s, QString(longest, u'\u00e4')));
    project.variable(
        0x2303, CheckTest::sub(u"Bytes"_s, CAN::OctetString, u"ro"_s, u"|x"_s + u"0aff"_s.repeated(3000)));
    for (const quint16 index : {0x2300, 0x2301, 0x2302, 0x2303})
        project.implementation(index, 0, CANopen::ManagedConst);
}

/** Each type with each access type and each implementation. */
void addAllTypes(Project &project)
{
    quint16 index = 0x3000;
    for (const int type : {1,  2,  3,  4,  5,  6,  7,  8,   9,   10,  12,  13,  15,  16,
                           17, 21, 22, 24, 25, 26, 27, 100, 101, 102, 103, 104, 105, 124})
        for (const QString &access : {u"const"_s, u"ro"_s, u"wo"_s, u"rw"_s, u"rwr"_s, u"rww"_s})
            for (const int kind : {0, 1, 2, 3}) {
                Sub data = CheckTest::sub(u"Any"_s, type, access, QString::number(1 + index % 3));
                data.implementation = kind;
                data.varname = u"any_$I"_s;
                data.size = 12;
                project.object(index, type == CAN::Domain ? CANopen::Domain : CANopen::Var);
                project.put(index++, 0, data);
            }
}

/** Fixed and changeable mappings, equal ones, an empty one, variables of the stack and of the application. */
void addPdos(Project &project)
{
    project.pdo(0x1401, u"$NODEID+0x300"_s, {u"0x20000108"_s, u"0x20000208"_s, u"0x20010010"_s});
    project.pdo(0x1402, u"$NODEID+0x400"_s, {u"0x20000108"_s, u"0x20000208"_s, u"0x20010010"_s});
    project.pdo(0x1403, u"$NODEID+0x500"_s, {u"0x20010010"_s}, u"rw"_s);
    project.pdo(0x1801, u"$NODEID+0x280"_s, {u"0x20010010"_s, u"0x20000208"_s});
    project.pdo(0x1802, u"$NODEID+0x380"_s, {u"0x20000108"_s}, u"rw"_s);
    project.pdo(0x1810, u"0x345"_s, {u"0x20000108"_s});
}

void addWideExpression(Project &project)
{
    Sub data = CheckTest::sub(u"Wide"_s, CAN::Unsigned24, u"rw"_s, u"1"_s);
    data.implementation = CANopen::ApplicationVariable;
    data.varname = u"PLACE(wide)"_s;
    project.variable(0x2500, data);
    project.pdo(0x1801, u"$NODEID+0x280"_s, {u"0x25000018"_s});
}

void addLine1(Project &project)
{
    project.addLine(1, CheckTest::CANopenLine);
    project.varName(0x2001, 0, u"speed1"_s);
}

void addShared(Project &project)
{
    addLine1(project);
    for (const quint8 line : {0, 1}) {
        project.line = line;
        project.array(0x2400, {u"3"_s, u"4"_s});
        for (const quint8 number : {0, 1, 2})
            project.edit(0x2400, number, [](Sub &data) { data.sharedlines = true; });
        project.edit(0x2001, 0, [](Sub &data) {
            data.sharedlines = true;
            data.varname = u"speed"_s;
        });
    }
}

/** CiA 302: values that come in on one line go out on the other. */
void addRouting(Project &project)
{
    addShared(project);
    for (const quint8 line : {0, 1}) {
        project.line = line;
        project.pdo(0x1401, u"$NODEID+0x300"_s, {u"0x24000120"_s});
        project.pdo(0x1801, u"$NODEID+0x280"_s, {line == 0 ? u"0x24000220"_s : u"0x24000120"_s});
        project.array(0x1F2C, {u"0x24000120"_s});
    }
}

/** What the SDO server of a J1939 device offers (CiA 510). */
void addJ1939Server(Project &project)
{
    project.setJ1939(u"cia510serversupport"_s, u"1"_s);
    project.variable(0x1000, CheckTest::sub(u"Device type"_s, CAN::Unsigned32, u"const"_s, u"0"_s));
    addArrays(project);
}

void addJ1939Line(Project &project)
{
    project.addLine(1, CheckTest::J1939Line);
    addJ1939Server(project);
    project.array(0x2100, {u"8"_s, u"9"_s});
    addTexts(project);
}

/** A charger with its battery in the words of CiA 454. */
void addEnergyBus(Project &project)
{
    QCoreApplication::setApplicationName(u"EnergyBus NodeGuide"_s);
    project.store->setEnergyBusSetting(u"device_cnt"_s, u"2"_s);
    project.store->setEnergyBusSetting(u"device_0"_s, u"EnergyBus Controller"_s);
    project.store->setEnergyBusSetting(u"device_1"_s, u"Battery"_s);
    for (const quint16 index : {0x6000, 0x6001, 0x6070})
        project.array(index, {u"1"_s, u"2"_s, u"3"_s});
    project.pdo(0x1801, u"0x345"_s, {u"0x60000120"_s, u"0x60700320"_s});
}

/** Diagnosis beside CANopen (ISO 14229); the numbers of connections are those of a user who knows them. */
void addUds(Project &project)
{
    project.set(u"udsserver_supported"_s, u"1"_s);
    project.set(u"isotp_connection_cnt"_s, u"1"_s);
    project.set(u"user_defines"_s,
                u"#ifndef ISOTP_CLIENT_COUNTS\n#define ISOTP_CLIENT_COUNTS 1u\n"
                "#define ISOTP_SERVER_COUNTS 1u\n#endif"_s);
    addArrays(project);
}

/** The objects of CiA 301 and CiA 302 that services are known by. */
void addServices(Project &project)
{
    project.variable(0x1006, CheckTest::sub(u"Cycle"_s, CAN::Unsigned32, u"rw"_s, u"20000"_s));
    project.variable(0x1012, CheckTest::sub(u"Time"_s, CAN::Unsigned32, u"rw"_s, u"0x80000100"_s));
    project.variable(0x1014, CheckTest::sub(u"Emergency"_s, CAN::Unsigned32, u"rw"_s, u"$NODEID+0x80"_s));
    project.variable(0x1015, CheckTest::sub(u"Inhibit time"_s, CAN::Unsigned16, u"rw"_s, u"100"_s));
    project.variable(0x1019, CheckTest::sub(u"Overflow"_s, CAN::Unsigned8, u"rw"_s, u"8"_s));
    project.value(0x1017, 0, u"1000"_s);
    for (const quint16 index :
         {0x1003, 0x1010, 0x1011, 0x1016, 0x1028, 0x1029, 0x1200, 0x1201, 0x1202, 0x1280, 0x1281, 0x1F81})
        project.array(index, {u"1"_s, u"2"_s});
    project.set(u"lss_supported"_s, u"1"_s);
}

/** CiA 304: two safety-relevant objects, one with two variables and one with a variable of the stack. */
void addSrdos(Project &project)
{
    project.array(0x1301, {u"1"_s, u"50"_s, u"20"_s, u"254"_s, u"0x101"_s, u"0x102"_s});
    project.array(0x1302, {u"1"_s, u"50"_s, u"20"_s, u"254"_s, u"0x103"_s, u"0x104"_s});
    project.array(0x1381, {u"0x25000008"_s, u"0x25010008"_s, u"0x25020010"_s, u"0x25030010"_s});
    project.array(0x1382, {u"0x25040020"_s, u"0x25050020"_s});
    for (const quint16 index : {0x2500, 0x2501, 0x2502, 0x2503, 0x2504, 0x2505, 0x2506}) {
        const int type = index < 0x2502 ? CAN::Unsigned8 : index < 0x2504 ? CAN::Unsigned16 : CAN::Unsigned32;
        Sub data = CheckTest::sub(u"Safe"_s, type, u"rw"_s, u"9"_s);
        data.implementation = index == 0x2505 ? CANopen::ManagedVariable : CANopen::ApplicationVariable;
        data.varname = u"safe_$I"_s;
        project.variable(index, data);
    }
    project.variable(0x13FE, CheckTest::sub(u"Valid"_s, CAN::Unsigned8, u"rw"_s, u"0xA5"_s));
}

void setOlder(Project &project)
{
    project.set(u"use_core_headers"_s, u"V3"_s);
    project.set(u"new_init_structure"_s, u"0"_s);
}

} // namespace

/** Generated code, compiled, run and asked for everything that the project says. */
class TestGeneratedCode : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { StoreTest::prepareApplication(); }
    void runningCodeHasWhatTheProjectSays_data();
    void runningCodeHasWhatTheProjectSays();
    void j1939ServersHaveTheirObjects_data();
    void j1939ServersHaveTheirObjects();

private:
    static void addForms();
    static void addContents();
    static void addServiceRows();
};

void TestGeneratedCode::addForms()
{
    const auto add = [](const char *name, const Build &build) { QTest::newRow(name) << build; };
    add("single line", [](Project &) {});
    add("multi-line", addLine1);
    add("forced multi-line", [](Project &project) { project.setMisc(u"generateML"_s, u"true"_s); });
    add("CAN FD", [](Project &project) { project.makeFd(); });
    add("CAN FD multi-line", [](Project &project) {
        project.makeFd();
        addLine1(project);
        project.makeFd();
    });
    add("older stack", setOlder);
    add("older stack, multi-line", [](Project &project) {
        setOlder(project);
        addLine1(project);
    });
    add("older structures", [](Project &project) { project.set(u"new_init_structure"_s, u"0"_s); });
    add("older structures, multi-line", [](Project &project) {
        project.set(u"new_init_structure"_s, u"0"_s);
        addLine1(project);
    });
    add("older stack, CAN FD", [](Project &project) {
        setOlder(project);
        project.makeFd();
    });
}

void TestGeneratedCode::addContents()
{
    const auto add = [](const char *name, const Build &build) { QTest::newRow(name) << build; };
    add("arrays", addArrays);
    add("compact arrays", [](Project &project) {
        addArrays(project);
        project.set(u"compact_array_description"_s, u"1"_s);
    });
    add("limits", addLimits);
    add("texts", [](Project &project) { addTexts(project); });
    add("texts with a hex digit behind a byte that is no character",
        [](Project &project) { addTexts(project, u"\u20acF"_s); });
    add("default values of texts", [](Project &project) {
        addTexts(project);
        project.set(u"generate_string_defaults"_s, u"1"_s);
    });
    add("long texts", addLongTexts);
    add("initialised variables", [](Project &project) {
        addArrays(project);
        project.set(u"init_static_variables"_s, u"1"_s);
    });
    add("all types", addAllTypes);
    add("all types, initialised", [](Project &project) {
        addAllTypes(project);
        project.set(u"init_static_variables"_s, u"1"_s);
    });
    add("PDOs", addPdos);
    add("PDOs by bits", [](Project &project) {
        addPdos(project);
        project.set(u"bitwise_mapping"_s, u"1"_s);
    });
    add("PDO with an expression of a wide type", addWideExpression);
}

void TestGeneratedCode::addServiceRows()
{
    const auto add = [](const char *name, const Build &build) { QTest::newRow(name) << build; };
    add("services", addServices);
    add("services of a master", [](Project &project) {
        addServices(project);
        project.set(u"nmtmaster"_s, u"1"_s);
    });
    add("node guarding", [](Project &project) {
        project.remove(0x1017);
        project.variable(0x100C, CheckTest::sub(u"Guard time"_s, CAN::Unsigned16, u"rw"_s, u"100"_s));
        project.variable(0x100D, CheckTest::sub(u"Life time"_s, CAN::Unsigned8, u"rw"_s, u"3"_s));
    });
    add("shared objects", addShared);
    add("routing", addRouting);
    add("SRDOs", addSrdos);
    add("SRDOs with data of their own", [](Project &project) {
        addSrdos(project);
        project.set(u"static_srdo_data"_s, u"1"_s);
    });
    add("EnergyBus", addEnergyBus);
    add("UDS", addUds);
    add("UDS on the older stack", [](Project &project) {
        setOlder(project);
        addUds(project);
    });
}

void TestGeneratedCode::j1939ServersHaveTheirObjects_data()
{
    QTest::addColumn<Build>("build");
    QTest::newRow("plain") << Build([](Project &) {});
    QTest::newRow("limits") << Build(addLimits);
    QTest::newRow("older stack") << Build(setOlder);
    QTest::newRow("all types") << Build(addAllTypes);
    QTest::newRow("texts") << Build([](Project &project) { addTexts(project); });
    QTest::newRow("several lines") << Build(addJ1939Line);
    QTest::newRow("several lines with limits") << Build([](Project &project) {
        addJ1939Line(project);
        addLimits(project);
    });
    QTest::newRow("several lines, older stack") << Build([](Project &project) {
        setOlder(project);
        addJ1939Line(project);
    });
    QTest::newRow("forced multi-line")
        << Build([](Project &project) { project.setMisc(u"generateML"_s, u"true"_s); });
}

void TestGeneratedCode::j1939ServersHaveTheirObjects()
{
    QFETCH(Build, build);
    Project project(CheckTest::J1939Line);
    project.set(u"use_core_headers"_s, u"V4"_s);
    addJ1939Server(project);
    build(project);
    GeneratedDevice device(project.store);
    QCOMPARE(device.generate(true), RunDesk::Result::Completed);
    const QString fault = device.firstFault();
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
}

void TestGeneratedCode::runningCodeHasWhatTheProjectSays_data()
{
    QTest::addColumn<Build>("build");
    addForms();
    addContents();
    addServiceRows();
}

void TestGeneratedCode::runningCodeHasWhatTheProjectSays()
{
    QFETCH(Build, build);
    Project project;
    project.set(u"use_core_headers"_s, u"V4"_s);
    project.set(u"new_init_structure"_s, u"1"_s);
    build(project);
    GeneratedDevice device(project.store);
    QCOMPARE(device.generate(true), RunDesk::Result::Completed);
    const QString fault = device.firstFault();
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
}

QTEST_GUILESS_MAIN(TestGeneratedCode)
#include "tst_generatedcode.moc"
