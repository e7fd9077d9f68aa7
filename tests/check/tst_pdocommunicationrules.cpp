#include "check/CheckTest.h"

using namespace CheckTest;
using namespace CheckTest::Texts;
using namespace Qt::StringLiterals;

/** What the check says about PDO communication objects and their COB-IDs. */
class TestPdoCommunicationRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void communicationObjectsHaveTheirMapping_data();
    void communicationObjectsHaveTheirMapping() { checkCANopenRow(); }
    void defaultsBelongIntoTheDeviceDescription_data();
    void defaultsBelongIntoTheDeviceDescription() { checkCANopenRow(); }
    void anEnabledPdoMapsSomething_data();
    void anEnabledPdoMapsSomething() { checkCANopenRow(); }
    void cobIdsAreUsedOnce_data();
    void cobIdsAreUsedOnce() { checkCANopenRow(); }
    void cobIdsThatDoNotCollide_data();
    void cobIdsThatDoNotCollide() { checkCANopenRow(); }
    void eventTimersAreLongerThanInhibitTimes_data();
    void eventTimersAreLongerThanInhibitTimes() { checkCANopenRow(); }
    void thePredefinedConnectionSetIsFollowed_data();
    void thePredefinedConnectionSetIsFollowed() { checkCANopenRow(); }
    void allFormsOfThePredefinedCobIdsAreKnown();
    void overwritingTheConnectionSetIsAMatterOfTheLine();
};

namespace {

const QString overwriteHint =
    u"Enable CANopen Stack Settings -> Overwrite pre-defined connection set and call "
    u"userOverwriteCobIdSettings() to use these COB-ID settings.\n\n"_s;

QString notPredefined(const QString &index)
{
    return QStringLiteral(
               "Warning: Object 0x%1-0x01: The COB-ID for this PDO does not follow the pre-defined "
               "connection set.")
        .arg(index);
}

QString collision(const char *index, const char *value, const char *owner)
{
    return QStringLiteral("<strong>Error: </strong>Object 0x%1: COB-ID '%2' is already used by PDO object "
                          "0x%3.")
        .arg(QLatin1StringView(index), QLatin1StringView(value), QLatin1StringView(owner));
}

/** COB-IDs of receive PDOs 2 and 3, with the rule of the connection set switched off. */
Change cobIds(const char *second, const char *third)
{
    return [=](Project &p) {
        p.set("overwrite_predef", "1");
        p.pdo(0x1401, second, {"0x20000108"});
        p.pdo(0x1402, third, {"0x20000108"});
    };
}

} // namespace

void TestPdoCommunicationRules::communicationObjectsHaveTheirMapping_data()
{
    const auto missing = [](const char *communication, const char *mapping) {
        return QStringLiteral(
                   "<strong>Error: </strong>Object 0x%1: The corresponding PDO mapping object 0x%2 "
                   "does not exist.")
            .arg(QLatin1StringView(communication), QLatin1StringView(mapping));
    };
    const auto alone = [](quint16 index) { return [=](Project &p) { p.pdoCommunication(index, "0x301"); }; };
    addRows({
        {"receive", [](Project &p) { p.remove(0x1600); }, {missing("1400", "1600")}},
        {"transmit", [](Project &p) { p.remove(0x1A00); }, {missing("1800", "1a00")}},
        {"last receive", alone(0x15FF), {missing("15ff", "17ff")}},
        {"last transmit", alone(0x19FF), {missing("19ff", "1bff")}},
        {"no PDO", alone(0x1300), {}},
    });
}

void TestPdoCommunicationRules::defaultsBelongIntoTheDeviceDescription_data()
{
    const auto hint = [](int subIndex, const char *index) {
        return QStringLiteral(
                   "<strong>Hint: </strong>Subindex %1 of 0x%2 should have its default value in the "
                   "EDS file.")
            .arg(subIndex)
            .arg(QLatin1StringView(index));
    };
    const auto flags = [](quint8 subIndex, WriteDefault when, bool hasDefault) {
        return [=](Project &p) {
            p.edit(0x1400, subIndex, [=](Sub &s) { s.defaultineds = hasDefault; });
            p.writeDefault(0x1400, subIndex, when);
        };
    };
    addRows({
        {"COB-ID, never", flags(1, Never, true), {hint(1, "1400")}},
        {"COB-ID, with a default that is not", flags(1, WithDefault, false), {hint(1, "1400")}},
        {"COB-ID, with default", flags(1, WithDefault, true), {}},
        {"COB-ID, always", flags(1, Always, false), {}},
        {"COB-ID, always and with default", flags(1, Always, true), {}},
        {"transmission type", flags(2, Never, true), {hint(2, "1400")}},
        {"inhibit time", flags(3, Never, false), {}},
        {"transmit PDO, both",
         [](Project &p) {
             p.writeDefault(0x1800, 1, Never);
             p.writeDefault(0x1800, 2, Never);
         },
         {hint(1, "1800"), hint(2, "1800")}},
    });
}

void TestPdoCommunicationRules::anEnabledPdoMapsSomething_data()
{
    const auto empty = [](const char *communication, const char *mapping) {
        return QStringLiteral(
                   "<strong>Error: </strong>Object 0x%1: PDO is enabled but its mapping table (0x%2) "
                   "is empty (sub 0 = 0).")
            .arg(QLatin1StringView(communication), QLatin1StringView(mapping));
    };
    const auto dynamic = [](quint16 index, const char *cobId, const char *count) {
        return [=](Project &p) {
            p.set("overwrite_predef", "1");
            p.pdo(index, cobId, {"0x20000108"}, "rw");
            p.value(quint16(index + 0x200), 0, count);
        };
    };
    addRows({
        {"receive", dynamic(0x1400, "$NODEID+0x200", "0"), {empty("1400", "1600")}},
        {"receive, 0x00", dynamic(0x1400, "0x201", "0x00"), {empty("1400", "1600")}},
        {"fifth transmit", dynamic(0x1804, "$NODEID+0x1C0", "0"), {empty("1804", "1a04")}},
        {"bit 30", dynamic(0x1400, "$NODEID+0x40000200", "0"), {empty("1400", "1600")}},
        {"disabled", dynamic(0x1400, "$NODEID+0x80000200", "0"), {}},
        {"disabled without node-ID", dynamic(0x1400, "0xC0000200", "0"), {}},
        {"one entry", dynamic(0x1400, "$NODEID+0x200", "1"), {}},
        {"COB-ID that is no number", dynamic(0x1400, "$NODEID+x", "0"), {}},
        {"COB-ID beyond 32 bits", dynamic(0x1400, "0x100000200", "0"), {}},
        {"COB-ID missing",
         [=](Project &p) {
             dynamic(0x1804, "0x301", "0")(p);
             p.value(0x1804, 1, "");
         },
         {}},
    });
}

void TestPdoCommunicationRules::cobIdsAreUsedOnce_data()
{
    addRows({
        {"with node-ID", cobIds("$NODEID+0x200", "0x400"), {collision("1401", "$NODEID+0x200", "1400")}},
        {"all three",
         cobIds("$NODEID+0x200", "$NODEID+0x200"),
         {collision("1401", "$NODEID+0x200", "1400"), collision("1402", "$NODEID+0x200", "1400")}},
        {"numbers", cobIds("0x301", "0x301"), {collision("1402", "0x301", "1401")}},
        {"decimal", cobIds("0x301", "769"), {collision("1402", "769", "1401")}},
        {"zeros in front", cobIds("0x301", "0x00000301"), {collision("1402", "0x00000301", "1401")}},
        {"bits 29 and 30 do not matter",
         cobIds("0x20000301", "0x40000301"),
         {collision("1402", "0x40000301", "1401")}},
        {"blanks around",
         cobIds("$NODEID+0x301", " $NODEID+ 0x301 "),
         {collision("1402", " $NODEID+ 0x301 ", "1401")}},
        {"node-ID in lower case",
         cobIds("$NODEID+0x301", "$nodeid+0x301"),
         {"Value conversion failed with Object 0x1402-0x1."_error,
          collision("1402", "$nodeid+0x301", "1401")}},
        {"receive and transmit",
         [](Project &p) {
             p.set("overwrite_predef", "1");
             p.value(0x1800, 1, "$NODEID+0x200");
         },
         {collision("1800", "$NODEID+0x200", "1400")}},
        {"first and last",
         [](Project &p) { p.pdo(0x19FF, "$NODEID+0x200", {"0x20010010"}); },
         {collision("19ff", "$NODEID+0x200", "1400")}},
    });
}

void TestPdoCommunicationRules::cobIdsThatDoNotCollide_data()
{
    addRows({
        {"with and without node-ID", cobIds("0x200", "0x201"), {}},
        {"node-ID on one of them", cobIds("0x301", "$NODEID+0x301"), {}},
        {"second is disabled", cobIds("$NODEID+0x301", "$NODEID+0x80000301"), {}},
        {"first is disabled", cobIds("0x80000301", "0x301"), {}},
        {"both disabled", cobIds("0x80000301", "0x80000301"), {}},
        {"another 29-bit identifier", cobIds("0x20000301", "0x30000301"), {}},
        {"not numbers", cobIds("$NODEID", "$NODEID"), {}},
        {"node-ID behind", cobIds("0x301+$NODEID", "0x301+$NODEID"), {}},
        {"transmit PDO that is disabled", [](Project &p) { p.value(0x1800, 1, "$NODEID+0x80000180"); }, {}},
    });
}

void TestPdoCommunicationRules::eventTimersAreLongerThanInhibitTimes_data()
{
    const QString tooShort =
        "Subindex 3 and 5 of 0x1800: Event timer value should be greater than inhibit time value."_strong;
    const auto times = [](quint16 index, const char *inhibit, const char *event) {
        return [=](Project &p) {
            p.value(index, 3, inhibit);
            p.value(index, 5, event);
        };
    };
    addRows({
        {"equal", times(0x1800, "100", "10"), {tooShort}},
        {"shorter", times(0x1800, "1000", "10"), {tooShort}},
        {"whole milliseconds", times(0x1800, "109", "10"), {tooShort}},
        {"hexadecimal", times(0x1800, "0x64", "0xA"), {tooShort}},
        {"longer", times(0x1800, "100", "11"), {}},
        {"longer by part of a millisecond", times(0x1800, "99", "10"), {}},
        {"no event timer", times(0x1800, "1000", "0"), {}},
        {"empty event timer", times(0x1800, "1000", ""), {}},
        {"no inhibit time", times(0x1800, "", "1"), {}},
        {"receive PDO", times(0x1400, "1000", "1"), {}},
        {"last transmit PDO",
         [=](Project &p) {
             p.pdo(0x19FF, "0x301", {"0x20010010"});
             times(0x19FF, "10", "1")(p);
         },
         {"Subindex 3 and 5 of 0x19ff: Event timer value should be greater than inhibit time value."_strong}},
        {"without inhibit time",
         [=](Project &p) {
             times(0x1800, "1000", "1")(p);
             p.removeSub(0x1800, 3);
         },
         {}},
    });
}

void TestPdoCommunicationRules::thePredefinedConnectionSetIsFollowed_data()
{
    const auto cobId = [](quint16 index, const char *value) {
        return [=](Project &p) { p.value(index, 1, value); };
    };
    addRows({
        {"receive", cobId(0x1400, "$NODEID+0x201"), {notPredefined("1400"), overwriteHint}},
        {"transmit", cobId(0x1800, "$NODEID+0x181"), {notPredefined("1800"), overwriteHint}},
        {"number", cobId(0x1800, "0x180"), {notPredefined("1800"), overwriteHint}},
        {"decimal", cobId(0x1800, "$NODEID+384"), {notPredefined("1800"), overwriteHint}},
        {"other spelling", cobId(0x1800, "$NODEID+0x0180"), {notPredefined("1800"), overwriteHint}},
        {"bit 29", cobId(0x1800, "$NODEID+0x20000180"), {notPredefined("1800"), overwriteHint}},
        {"blank in front", cobId(0x1800, " $NODEID+0x180"), {notPredefined("1800"), overwriteHint}},
        {"empty", cobId(0x1400, ""), {notPredefined("1400"), overwriteHint}},
        {"capitals", cobId(0x1400, "$NODEID+0XC0000200"), {}},
        {"both, and one more line",
         [](Project &p) {
             p.value(0x1400, 1, "0x201");
             p.value(0x1800, 1, "0x181");
         },
         {notPredefined("1400"), notPredefined("1800"), overwriteHint}},
        {"COB-ID of another PDO",
         [](Project &p) { p.pdo(0x1803, "$NODEID+0x280", {"0x20010010"}); },
         {notPredefined("1803"), overwriteHint}},
        {"fifth PDO", [](Project &p) { p.pdo(0x1804, "0x301", {"0x20010010"}); }, {}},
        {"overwritten on purpose",
         [](Project &p) {
             p.value(0x1400, 1, "0x201");
             p.set("overwrite_predef", "1");
         },
         {}},
    });
}

void TestPdoCommunicationRules::allFormsOfThePredefinedCobIdsAreKnown()
{
    const QList<QPair<quint16, QString>> bases = {{0x1400, "200"}, {0x1401, "300"}, {0x1402, "400"},
                                                  {0x1403, "500"}, {0x1800, "180"}, {0x1801, "280"},
                                                  {0x1802, "380"}, {0x1803, "480"}};
    for (const char *form :
         {"$NODEID+0x", "$NODEID+0x00000", "$NODEID+0x80000", "$NODEID+0x40000", "$NODEID+0xC0000"}) {
        const Project project;
        for (const auto &[index, base] : bases)
            project.pdo(index, form + base, {index < 0x1800 ? "0x20000108" : "0x20010010"});
        compare(Checker().checkCANopen(project), {});
        QStringList messages;
        for (const auto &[index, base] : bases) {
            project.value(index, 1, form + base + "0");
            messages += notPredefined(QString::number(index, 16));
        }
        compare(Checker().checkCANopen(project), messages + QStringList{overwriteHint});
    }
}

void TestPdoCommunicationRules::overwritingTheConnectionSetIsAMatterOfTheLine()
{
    Project project;
    project.value(0x1400, 1, "0x201");
    project.addLine(1, CANopenLine);
    project.value(0x1400, 1, "0x201");
    const QStringList messages{notPredefined("1400"), overwriteHint};
    project.set("overwrite_predef", "1,0");
    compare(Checker().checkCANopen(project), messages);
    project.set("overwrite_predef", "0,1");
    compare(Checker().checkCANopen(project), {});
    project.set("overwrite_predef", "1");
    compare(Checker().checkCANopen(project), {});
    project.line = 0;
    project.set("overwrite_predef", "0,1");
    compare(Checker().checkCANopen(project), messages);
}

QTEST_GUILESS_MAIN(TestPdoCommunicationRules)
#include "tst_pdocommunicationrules.moc"
