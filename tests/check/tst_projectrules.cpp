#include "check/CheckTest.h"

#include <QCoreApplication>

using namespace CheckTest;
using namespace CheckTest::Texts;

/** What the check says about the project before it looks at the lines. */
class TestProjectRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void cleanup() { prepareApplication(); }
    void newStackFilesAreHintedAtAfterAnUpdate_data();
    void newStackFilesAreHintedAtAfterAnUpdate();
    void sdoBlocksHaveAtMost127Segments_data();
    void sdoBlocksHaveAtMost127Segments() { checkProjectRow(); }
    void theTimerIntervalIsSet_data();
    void theTimerIntervalIsSet() { checkProjectRow(); }
    void flyingMastersNeedAProjectOfOneProtocol_data();
    void flyingMastersNeedAProjectOfOneProtocol();
    void linesFrom32OnAreNotCounted();
};

namespace {

const QString twoFiles =
    "Add <font color='red'>co_common.c and co_memcpy.c</font> to your project or Makefile."_hint;
const QString threeFiles = "Add <font color='red'>co_common.c, co_memcpy.c and co_mapping.c</font> to your "
                           "project or Makefile."_hint;
const QString memcpyFile = "Add <font color='red'>co_memcpy.c</font> to your project or Makefile."_hint;
const QString memcpyAndMapping =
    "Add <font color='red'>co_memcpy.c and co_mapping.c</font> to your project or Makefile."_hint;
const QString udsFile = "Add <font color='red'>uds_init.c</font> to your project or Makefile."_hint;

} // namespace

void TestProjectRules::newStackFilesAreHintedAtAfterAnUpdate_data()
{
    QTest::addColumn<QString>("application");
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("udsSetting");
    QTest::addColumn<QStringList>("messages");
    const auto row = [](const QByteArray &name, const char *application, const char *version, const char *uds,
                        const QStringList &messages) {
        QTest::newRow(name.constData())
            << QString(application) << QString(version) << QString(uds) << messages;
    };
    const char *canopen = "CANopen NodeSmith";
    row("CANopen 3.6.1", canopen, "3.6.1", "", {twoFiles});
    row("CANopen 3.0", canopen, "3.0", "", {twoFiles});
    row("CANopen 3.6 with UDS", canopen, "3.6.1", "udsserver_supported", {twoFiles});
    row("CANopen 3.7", canopen, "3.7.0", "", {memcpyFile});
    row("CANopen 3.8", canopen, "3.8.12", "", {memcpyFile});
    row("CANopen 3.8 with UDS server", canopen, "3.8.12", "udsserver_supported", {memcpyFile, udsFile});
    row("CANopen 3.7 with UDS client", canopen, "3.7.0", "udsclient_supported", {memcpyFile, udsFile});
    row("CANopen 3.9", canopen, "3.9.0", "udsserver_supported", {});
    row("CANopen 3.10", canopen, "3.10.0", "", {});
    row("CANopen 2.6", canopen, "2.6.0", "", {});
    row("CANopen 4.3", canopen, "4.3.2", "", {});
    row("no former version", canopen, "", "udsserver_supported", {});
    for (const char *application :
         {"J1939 NodeSmith", "CAN NodeSmith", "EnergyBus NodeGuide", "canopen nodesmith"}) {
        const QByteArray name = application;
        row(name + " 3.6", application, "3.6.1", "", {threeFiles});
        row(name + " 3.7", application, "3.7.1", "", {memcpyAndMapping});
        row(name + " 3.8 with UDS", application, "3.8.1", "udsserver_supported", {memcpyAndMapping, udsFile});
        row(name + " 3.9", application, "3.9.1", "", {});
    }
}

void TestProjectRules::newStackFilesAreHintedAtAfterAnUpdate()
{
    QFETCH(QString, application);
    QFETCH(QString, version);
    QFETCH(QString, udsSetting);
    QFETCH(QStringList, messages);
    QCoreApplication::setApplicationName(application);
    Project project;
    project.setMisc("PreviousToolVersion", version);
    if (!udsSetting.isEmpty())
        project.set(udsSetting, "1");
    compare(Checker().checkProject(project), messages);
    QCOMPARE(project.store->getMiscSetting("PreviousToolVersion"), messages.isEmpty() ? version : QString());
    compare(Checker().checkProject(project), {});
}

void TestProjectRules::sdoBlocksHaveAtMost127Segments_data()
{
    const QString tooLarge = "CANopen SDO block size may not exceed 127."_red;
    const auto size = [](const char *value) {
        return [=](Project &p) { p.set("sdo_blocktransfer_block_size", value); };
    };
    addRows({
        {"128", size("128"), {tooLarge}},
        {"0x80", size("0x80"), {tooLarge}},
        {"1000", size("1000"), {tooLarge}},
        {"127", size("127"), {}},
        {"0x7F", size("0x7F"), {}},
        {"empty", size(""), {}},
        {"no number",
         size("many"),
         {"\"SDO Block Transfer Block Size\" has non-numeric value \"many\"."_error}},
    });
}

void TestProjectRules::theTimerIntervalIsSet_data()
{
    const auto interval = [](const char *value) {
        return [=](Project &p) { p.set("co_timer_interval", value); };
    };
    addRows({
        {"empty", interval(""), {"Timer interval not set in Common Settings -> Hardware/Target."_red}},
        {"any text", interval("CO_TIMER"), {}},
        {"0", interval("0"), {}},
    });
}

void TestProjectRules::flyingMastersNeedAProjectOfOneProtocol_data()
{
    QTest::addColumn<QList<int>>("types");
    QTest::addColumn<QString>("master");
    QTest::addColumn<bool>("isError");
    QTest::newRow("CANopen and J1939") << QList<int>{1, 2} << "2" << true;
    QTest::newRow("J1939 and CANopen") << QList<int>{2, 1} << "2" << true;
    QTest::newRow("CANopen and raw CAN") << QList<int>{1, 4} << "2" << true;
    QTest::newRow("CANopen and mixed") << QList<int>{1, 5} << "2" << true;
    QTest::newRow("CANopen and J1939 with raw CAN") << QList<int>{1, 7} << "2" << true;
    QTest::newRow("CANopen with raw CAN counts twice") << QList<int>{6, 6} << "2" << true;
    QTest::newRow("CANopen with raw CAN, untyped") << QList<int>{6, 0} << "2" << true;
    QTest::newRow("list of masters") << QList<int>{1, 2} << "0,2" << true;
    QTest::newRow("a 2 anywhere") << QList<int>{1, 2} << "12" << true;
    QTest::newRow("master") << QList<int>{1, 2} << "1" << false;
    QTest::newRow("no master") << QList<int>{1, 2} << "" << false;
    QTest::newRow("CANopen alone") << QList<int>{1} << "2" << false;
    QTest::newRow("CANopen with raw CAN alone") << QList<int>{6} << "2" << false;
    QTest::newRow("two of CANopen") << QList<int>{1, 1} << "2" << false;
    QTest::newRow("two mixed lines are no CANopen lines") << QList<int>{5, 5} << "2" << false;
    QTest::newRow("mixed and J1939") << QList<int>{5, 2} << "2" << false;
    QTest::newRow("CANopen and untyped") << QList<int>{1, 0} << "2" << false;
    QTest::newRow("CANopen and unknown type") << QList<int>{1, 3} << "2" << false;
}

void TestProjectRules::flyingMastersNeedAProjectOfOneProtocol()
{
    QFETCH(QList<int>, types);
    QFETCH(QString, master);
    QFETCH(bool, isError);
    Project project(types.first());
    for (int line = 1; line < types.size(); ++line)
        project.addLine(quint8(line), types.at(line));
    project.set("nmtmaster", master);
    const QString error = "The CANopen setting 'NMT Master or Slave' is not supported in multi-protocol "
                          "projects."_red;
    compare(Checker().checkProject(project), isError ? QStringList{error} : QStringList());
}

void TestProjectRules::linesFrom32OnAreNotCounted()
{
    Project project(CANopenLine);
    project.addLine(32, J1939Line);
    project.set("nmtmaster", "2");
    compare(Checker().checkProject(project), {});
    project.addLine(31, J1939Line);
    project.set("nmtmaster", "2");
    compare(Checker().checkProject(project),
            {"The CANopen setting 'NMT Master or Slave' is not supported in multi-protocol projects."_red});
}

QTEST_GUILESS_MAIN(TestProjectRules)
#include "tst_projectrules.moc"
