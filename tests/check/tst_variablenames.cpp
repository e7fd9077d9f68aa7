#include "check/CheckTest.h"

using namespace CheckTest;
using namespace CheckTest::Texts;

/** Names of application variables that are used twice on a line, and what a line leaves for the next one. */
class TestVariableNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void aNameIsUsedOnce_data();
    void aNameIsUsedOnce() { checkCANopenRow(); }
    void linesMayUseTheSameNames_data();
    void linesMayUseTheSameNames();
    void emergencyRoutingNeedsProducersAndConsumers_data();
    void emergencyRoutingNeedsProducersAndConsumers();
    void emergencyRoutingIsToldOncePerRun();
    void linesFrom250OnDoNotTakePartInRouting_data();
    void linesFrom250OnDoNotTakePartInRouting();
};

namespace {

Change variables(const QStringList &names)
{
    return [=](Project &p) {
        for (int i = 0; i < names.size(); ++i) {
            p.variable(quint16(0x2100 + i), sub("Value", CAN::Unsigned8, "rw", "0"));
            p.implementation(quint16(0x2100 + i), 0, CANopen::ApplicationVariable);
            p.varName(quint16(0x2100 + i), 0, names.at(i));
        }
    };
}

QString used(const char *object, const char *name, const char *owner)
{
    return QStringLiteral("<strong>Warning: </strong>Object %1: Variable name '%2' is already used by object "
                          "%3.")
        .arg(QLatin1StringView(object), QLatin1StringView(name), QLatin1StringView(owner));
}

const QString routing =
    "Both EMCY producer objects and EMCY consumer objects must be present to use EMCY routing."_error;

void addEmergencyProducer(const Project &p)
{
    p.variable(0x1014, sub("COB-ID EMCY", CAN::Unsigned32, "rw", "$NODEID+0x80"));
}

} // namespace

void TestVariableNames::aNameIsUsedOnce_data()
{
    const QString invalid =
        "Object 0x%1-0x00: The variable name contains invalid characters like spaces or commas."_error;
    addRows({
        {"twice", variables({"a", "a"}), {used("0x2101-0x00", "a", "0x2100-0x00")}},
        {"the first user is named",
         variables({"a", "a", "b", "a"}),
         {used("0x2101-0x00", "a", "0x2100-0x00"), used("0x2103-0x00", "a", "0x2100-0x00")}},
        {"of another object", variables({"speed"}), {used("0x2100-0x00", "speed", "0x2001-0x00")}},
        {"different", variables({"a", "b"}), {}},
        {"different by case", variables({"a", "A"}), {}},
        {"in one array",
         [](Project &p) {
             for (const quint8 subIndex : {1, 2}) {
                 p.implementation(0x2000, subIndex, CANopen::ApplicationVariable);
                 p.varName(0x2000, subIndex, "speed");
             }
         },
         {used("0x2000-0x02", "speed", "0x2000-0x01"), used("0x2001-0x00", "speed", "0x2000-0x01")}},
        {"below 0x1000",
         [](Project &p) {
             p.variable(0x0040, sub("Type", CAN::Unsigned8, "rw", "0"));
             p.implementation(0x0040, 0, CANopen::ApplicationVariable);
             p.varName(0x0040, 0, "speed");
         },
         {used("0x2001-0x00", "speed", "0x0040-0x00")}},
        {"of a managed variable",
         [](Project &p) {
             variables({"a", "a"})(p);
             p.implementation(0x2101, 0, CANopen::ManagedVariable);
         },
         {}},
        {"blanks are no name", variables({" ", " "}), {invalid.arg("2100"), invalid.arg("2101")}},
    });
}

void TestVariableNames::linesMayUseTheSameNames_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("CANopen") << int(CANopenLine);
    QTest::newRow("J1939") << int(J1939Line);
    QTest::newRow("raw CAN") << int(RawCanLine);
    QTest::newRow("CANopen and J1939") << int(CANopenAndJ1939);
    QTest::newRow("CANopen and raw CAN") << int(CANopenAndRawCan);
    QTest::newRow("J1939 and raw CAN") << int(J1939AndRawCan);
}

void TestVariableNames::linesMayUseTheSameNames()
{
    QFETCH(int, type);
    Project project(type);
    project.addLine(1, type);
    compare(Checker().checkAll(project), {});
}

void TestVariableNames::emergencyRoutingNeedsProducersAndConsumers_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QList<int>>("producers");
    QTest::addColumn<QList<int>>("consumers");
    QTest::addColumn<bool>("isError");
    QTest::newRow("none") << "1" << QList<int>{} << QList<int>{} << true;
    QTest::newRow("other setting") << "2" << QList<int>{} << QList<int>{} << true;
    QTest::newRow("producer alone") << "1" << QList<int>{0, 1} << QList<int>{} << true;
    QTest::newRow("consumer alone") << "1" << QList<int>{} << QList<int>{1} << true;
    QTest::newRow("both on one line") << "1" << QList<int>{1} << QList<int>{1} << false;
    QTest::newRow("each on another line") << "1" << QList<int>{0} << QList<int>{1} << false;
    QTest::newRow("no routing") << "0" << QList<int>{} << QList<int>{} << false;
    QTest::newRow("routing never set") << "" << QList<int>{} << QList<int>{} << false;
}

void TestVariableNames::emergencyRoutingNeedsProducersAndConsumers()
{
    QFETCH(QString, setting);
    QFETCH(QList<int>, producers);
    QFETCH(QList<int>, consumers);
    QFETCH(bool, isError);
    Project project;
    project.addLine(1, CANopenLine);
    project.set("emcy_routing", setting);
    for (const int line : std::as_const(producers)) {
        project.line = quint8(line);
        addEmergencyProducer(project);
    }
    for (const int line : std::as_const(consumers)) {
        project.line = quint8(line);
        project.array(0x1028, {"0x81"});
    }
    for (const quint8 line : {0, 1}) {
        project.line = line;
        compare(Checker().checkCANopen(project), isError ? QStringList{routing} : QStringList());
    }
}

void TestVariableNames::emergencyRoutingIsToldOncePerRun()
{
    Project project;
    project.addLine(1, CANopenLine);
    project.set("emcy_routing", "1");
    Checker checker;
    project.line = 0;
    compare(checker.checkCANopen(project), {routing});
    project.line = 1;
    compare(checker.checkCANopen(project), {});
    project.line = 0;
    compare(checker.checkCANopen(project), {});
    compare(checker.checkProject(project), {});
    compare(checker.checkCANopen(project), {});
    compare(Checker().checkAll(project), {routing});
}

void TestVariableNames::linesFrom250OnDoNotTakePartInRouting_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<bool>("takesPart");
    QTest::newRow("249") << 249 << true;
    QTest::newRow("250") << 250 << false;
    QTest::newRow("reference line") << int(ObjectDataBase::ReferenceLine) << false;
}

void TestVariableNames::linesFrom250OnDoNotTakePartInRouting()
{
    QFETCH(int, line);
    QFETCH(bool, takesPart);
    Project project;
    project.set("emcy_routing", "1");
    addEmergencyProducer(project);
    QVERIFY(project.store->addNode(quint8(line), {}));
    project.line = quint8(line);
    project.array(0x1028, {"0x81"});
    project.line = 0;
    compare(Checker().checkCANopen(project), takesPart ? QStringList() : QStringList{routing});
}

QTEST_GUILESS_MAIN(TestVariableNames)
#include "tst_variablenames.moc"
