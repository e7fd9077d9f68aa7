#include "generators/canopen/UglyProjects.h"

#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;
using namespace UglyProjects;

using Build = std::function<void(Project &)>;
Q_DECLARE_METATYPE(Build)

/** Ugly shapes of projects, through a generation run and the compilers. */
class TestUglyProjects : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { StoreTest::prepareApplication(); }
    void everyShapeCompiles_data();
    void everyShapeCompiles();
    void anyNameOfAProjectCompiles();
    void aLoneLineIsStartedWhateverItsNumber();
    void whatLineSettingsSayOfALoneLineHolds();

private:
    static void addObjects();
    static void addLines();
    static void addVirtualObjects();
    static void addDevices();
};

void TestUglyProjects::addObjects()
{
    const auto add = [](const char *name, const Build &build) { QTest::newRow(name) << build; };
    add("valid", [](Project &) {});
    add("no objects", removeObjects);
    add("no objects, forced multi-line", [](Project &p) {
        removeObjects(p);
        p.setMisc(u"generateML"_s, u"true"_s);
    });
    add("one object", [](Project &p) {
        removeObjects(p);
        p.variable(0x1000, CheckTest::sub(u"Device type"_s, CAN::Unsigned32, u"const"_s, u"0"_s));
    });
    add("routing without an entry", [](Project &p) { p.array(0x1F2C, {}); });
    add("routing of another line", [](Project &p) {
        p.array(0x1F2C, {u"0x20000120"_s});
        addLine(p, 1);
    });
}

void TestUglyProjects::addLines()
{
    const auto add = [](const char *name, const Build &build) { QTest::newRow(name) << build; };
    add("no type of line", [](Project &p) { p.set(u"line0type"_s, QString()); });
    add("an unknown type of line", [](Project &p) { p.set(u"line0type"_s, u"9"_s); });
    add("a second line without a type", [](Project &p) {
        addLine(p, 1);
        p.set(u"line1type"_s, QString());
    });
    add("a first line without a type", [](Project &p) {
        addLine(p, 1);
        p.set(u"line0type"_s, QString());
    });
    add("a second line without objects", [](Project &p) {
        addLine(p, 1);
        removeObjects(p);
    });
    add("a first line without objects", [](Project &p) {
        addLine(p, 1);
        p.line = 0;
        removeObjects(p);
    });
    add("no objects on any line", [](Project &p) {
        addLine(p, 1);
        for (const quint8 line : {0, 1}) {
            p.line = line;
            removeObjects(p);
        }
    });
    add("a gap between the lines", [](Project &p) { addLine(p, 5); });
    add("no first line", [](Project &p) {
        addLine(p, 1);
        p.store->removeLine(0);
    });
    add("neither first nor second line", [](Project &p) {
        addLine(p, 3);
        p.store->removeLine(0);
    });
    add("objects that were shared with a deleted line", [](Project &p) {
        addLine(p, 1);
        const QList<quint16> indices = p.store->getIndexList(1, 0x2000, 0xFFFF);
        for (const quint16 index : indices)
            for (const quint8 number : p.store->getSubIndexList(1, index))
                p.edit(index, number, [](Sub &data) { data.sharedlines = true; });
        p.store->removeLine(0);
    });
    add("32 lines", [](Project &p) {
        for (int line = 1; line < 32; ++line)
            addLine(p, quint8(line));
    });
    add("lines behind the last", [](Project &p) {
        for (const quint8 line : {32, 100, 239, 240, 253})
            addLine(p, line);
    });
}

void TestUglyProjects::addVirtualObjects()
{
    const auto add = [](const char *name, const Build &build) { QTest::newRow(name) << build; };
    add("virtual objects", [](Project &p) { addVirtual(p, false); });
    add("virtual objects, compact", [](Project &p) {
        addVirtual(p, false);
        for (const QString &key : {u"compact_array_description"_s, u"limit_check"_s, u"dynod"_s})
            p.set(key, u"1"_s);
    });
    add("virtual objects on several lines", [](Project &p) {
        addVirtual(p, false);
        for (const quint8 line : {1, 2, 31}) {
            addLine(p, line);
            addVirtual(p, false);
        }
    });
    add("virtual objects that lines share", [](Project &p) {
        addVirtual(p, true);
        addLine(p, 1);
        addVirtual(p, true);
    });
    add("virtual objects that lines share with nobody", [](Project &p) {
        addLine(p, 1);
        addVirtual(p, true);
    });
    add("nothing but virtual objects", [](Project &p) {
        removeObjects(p);
        addVirtual(p, false);
        for (const quint16 index : p.store->getIndexList(0, 0x1000, 0xFFFF))
            p.implementation(index, 0, CANopen::VirtualObject);
    });
    add("virtual services", [](Project &p) {
        p.set(u"special_virtual_objects"_s, u"1"_s);
        addServices(p);
        const QList<quint16> indices = p.store->getIndexList(0, 0x1000, 0xFFFF);
        for (const quint16 index : indices)
            for (const quint8 number : p.store->getSubIndexList(0, index))
                p.implementation(index, number, CANopen::VirtualObject);
    });
}

void TestUglyProjects::addDevices()
{
    const auto add = [](const char *name, const Build &build) { QTest::newRow(name) << build; };
    add("a headline of C", [](Project &p) {
        p.rename(0x2000, u"*/ #error \"\n\\"_s);
        p.store->setGeneralSetting(u"lvx_generation_count"_s, u"-1"_s);
        p.set(u"generate_generation_counter"_s, u"1"_s);
    });
    add("virtual devices", [](Project &p) {
        QCoreApplication::setApplicationName(u"EnergyBus NodeGuide"_s);
        p.store->setEnergyBusSetting(u"device_cnt"_s, u"99999"_s);
        p.store->setEnergyBusSetting(u"device_0"_s, u"EnergyBus Controller */\n\""_s);
        p.store->setEnergyBusSetting(u"device_1"_s, u"Battery 0x1 \\"_s);
        p.store->setEnergyBusSetting(u"int_offset_bat"_s, u"-1\n"_s);
        p.store->setEnergyBusSetting(u"ebc_max_bat_number"_s, u"0x10 /*"_s);
        p.store->setEnergyBusSetting(u"ebc_tool_supported"_s, u"1"_s);
        p.store->setEnergyBusSetting(u"ext_start_pos_bat"_s, u"1,2"_s);
        p.store->setEnergyBusSetting(u"ext_start_pos_sec"_s, u"\"\""_s);
    });
    for (const quint8 lines : {1, 3})
        add(lines == 1 ? "SDO over J1939" : "SDO over J1939 on several lines", [lines](Project &p) {
            addVirtual(p, false);
            addServices(p);
            for (quint8 line = 1; line < lines; ++line)
                addLine(p, line);
            for (quint8 line = 0; line < lines; ++line)
                p.set(u"line%1type"_s.arg(line), u"2"_s);
            p.setJ1939(u"cia510serversupport"_s, u"1"_s);
            p.set(u"limit_check"_s, u" 1\n"_s);
        });
    for (const QString &all : {u"0"_s, u"1"_s})
        add(all == u"1"_s ? "targets" : "one of the targets", [all](Project &p) {
            p.set(u"targetsettings_cnt"_s, u"3"_s);
            p.set(u"all_targets"_s, all);
            p.set(u"targetsettings_active"_s, u"1"_s);
            p.set(u"targetsettings_0_name"_s, u"*/ #error\n\\"_s);
            p.set(u"targetsettings_0_targetid"_s, u"9 a-b*/"_s);
            p.set(u"targetsettings_1_targetid"_s, u"\u00e4 \" "_s);
            p.set(u"targetsettings_1_timer"_s, u" 500 "_s);
            p.set(u"targetsettings_1_defines"_s, u"#define A \\"_s);
            p.set(u"targetsettings_2_targetid"_s, u" "_s);
        });
}

void TestUglyProjects::everyShapeCompiles_data()
{
    QTest::addColumn<Build>("build");
    addObjects();
    addLines();
    addVirtualObjects();
    addDevices();
}

void TestUglyProjects::everyShapeCompiles()
{
    QFETCH(Build, build);
    for (const bool v4 : {true, false}) {
        Project project;
        chooseStack(project, v4);
        build(project);
        UglyDesk desk(project);
        QCOMPARE(desk.run(), RunDesk::Result::Completed);
        const QString messages = desk.messages();
        QVERIFY2(messages.isEmpty(), qPrintable(messages));
    }
}

void TestUglyProjects::anyNameOfAProjectCompiles()
{
    Project project;
    chooseStack(project, true);
    addServices(project);
    project.set(u"special_virtual_objects"_s, u"1"_s);
    for (const QString &name : {u"a */ \"b\" %1 %2 $head$"_s, u"two\nlines\\"_s, u"/*"_s, u"?\?/"_s, u""_s}) {
        UglyDesk desk(project);
        desk.handler.setProject(project.store, desk.folder.path(), name);
        QCOMPARE(desk.run(), RunDesk::Result::Completed);
        const QString messages = desk.messages();
        QVERIFY2(messages.isEmpty(), qPrintable(name + u": "_s + messages));
    }
}

// The first line of a project can be deleted.
void TestUglyProjects::aLoneLineIsStartedWhateverItsNumber()
{
    const auto start = [](quint8 line) {
        Project project;
        chooseStack(project, true);
        project.set(u"overwrite_predef"_s, u"1"_s);
        if (line > 0) {
            project.addLine(line, CheckTest::CANopenLine);
            project.varName(0x2001, 0, u"speed"_s);
            project.store->removeLine(0);
        }
        UglyDesk desk(project);
        desk.run();
        const QByteArray text = desk.read(u"gen_objdict.c"_s);
        return text.sliced(text.indexOf("/* number of objects */"));
    };
    const QByteArray usual = start(0);
    QVERIFY(usual.contains("retVal = coPdoTransmitInit(1u, "));
    QVERIFY(usual.contains("genLoadIndication("));
    for (const quint8 line : {1, 3, 31})
        QCOMPARE(start(line), usual);
}

void TestUglyProjects::whatLineSettingsSayOfALoneLineHolds()
{
    Project project;
    project.set(u"use_core_headers"_s, u"V4"_s);
    project.addLine(2, CheckTest::CANopenLine);
    project.store->removeLine(0);
    project.set(u"nmtmaster"_s, u"0,0,1"_s);
    UglyDesk desk(project);
    desk.run();
    QVERIFY(desk.read(u"gen_objdict.c"_s).contains("retVal = coNmtInit(1u);"));
    const QByteArray defines = desk.read(u"gen_define.h"_s);
    QVERIFY(defines.contains("#define CO_NMT_MASTER\t1u\n"));
    QVERIFY(!defines.contains("CAN_MULTI_LINE"));
    QVERIFY(defines.contains("#define CO_OBJECT_COUNTS\tCO_OBJECTS_LINE_2_CNT\n"));
}

QTEST_GUILESS_MAIN(TestUglyProjects)
#include "tst_uglyprojects.moc"
