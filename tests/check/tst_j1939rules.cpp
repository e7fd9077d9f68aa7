#include "check/CheckTest.h"

#include <array>

using namespace CheckTest;
using namespace CheckTest::Texts;

/** NAME and services of a J1939 line (SAE J1939-81). */
class TestJ1939Rules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void canopenSettingsDoNotFitJ1939_data();
    void canopenSettingsDoNotFitJ1939() { checkJ1939Row(); }
    void dynamicGroupsNeedCobs_data();
    void dynamicGroupsNeedCobs() { checkJ1939Row(); }
    void everyPartOfTheNameIsSet_data();
    void everyPartOfTheNameIsSet();
    void theManufacturerOfTheToolIsNotForProduction_data();
    void theManufacturerOfTheToolIsNotForProduction() { checkJ1939Row(); }
    void theStartAddressIsMoreThanBlanks_data();
    void theStartAddressIsMoreThanBlanks() { checkJ1939Row(); }
    void missingSettingsAreToldInTheirOrder();
};

namespace {

struct NamePart
{
    const char *key;
    const char *message; ///< with the line number as %1
};

constexpr std::array nameParts = std::to_array<NamePart>({
    {"identitynumber", "Identity number not defined in J1939 configuration tab for line %1."},
    {"manufacturercode", "Manufacturer code not defined in J1939 configuration tab for line %1."},
    {"ecuinstance", "ECU instance not defined in J1939 configuration tab for line %1."},
    {"functioninstance", "Function instance not defined in J1939 configuration tab for line %1"},
    {"function", "Function not defined in J1939 configuration tab for line %1."},
    {"vehiclesystem", "Vehicle system not defined in J1939 configuration tab for line %1."},
    {"vehicleinstance", "Vehicle instance not defined in J1939 configuration tab for line %1."},
    {"industrygroup", "Industry Group not defined in J1939 configuration tab for line %1."},
    {"startaddress", "An address needs to defined in the J1939 configuration for line %1."},
});

QString missing(const QString &message, int line)
{
    return QStringLiteral("<strong>Error: </strong>") + message.arg(line);
}

Change j1939(const char *key, const char *value)
{
    return [=](Project &p) { p.setJ1939(key, value); };
}

} // namespace

void TestJ1939Rules::canopenSettingsDoNotFitJ1939_data()
{
    const auto setting = [](const char *key, const char *value) {
        return [=](Project &p) { p.set(key, value); };
    };
    const QString sorted = "Sorted COB list may not used with J1939 projects."_error;
    const QString filter = "Group filter is only useful for CANopen or mixed projects."_strong;
    addRows({
        {"sorted COB list", setting("sorted_coblist", "1"), {sorted}},
        {"sorted COB list 2", setting("sorted_coblist", "2"), {sorted}},
        {"unsorted COB list", setting("sorted_coblist", "0"), {}},
        {"sorted COB list that is no number", setting("sorted_coblist", "yes"), {}},
        {"group filter", setting("drv_group_filter", "1"), {filter}},
        {"no group filter", setting("drv_group_filter", "0"), {}},
        {"both",
         [](Project &p) {
             p.set("drv_group_filter", "1");
             p.set("sorted_coblist", "1");
         },
         {sorted, filter}},
    });
}

void TestJ1939Rules::dynamicGroupsNeedCobs_data()
{
    const QString none = "Additional COBs need to be specific with dynamic PGN support."_error;
    const auto dynamic = [](const char *support, const char *count) {
        return [=](Project &p) {
            p.setJ1939("dynsupport", support);
            p.set("additional_cob_count", count);
        };
    };
    addRows({
        {"0", dynamic("1", "0"), {none}},
        {"empty", dynamic("1", ""), {none}},
        {"5", dynamic("1", "5"), {}},
        {"not supported", dynamic("0", "0"), {}},
        {"never supported", dynamic("", ""), {}},
    });
}

void TestJ1939Rules::everyPartOfTheNameIsSet_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("message");
    for (const NamePart &part : nameParts)
        QTest::newRow(part.key) << QString(part.key) << QString(part.message);
}

void TestJ1939Rules::everyPartOfTheNameIsSet()
{
    QFETCH(QString, key);
    QFETCH(QString, message);
    Project project(J1939Line);
    project.setJ1939(key, "");
    compare(Checker().checkJ1939(project), {missing(message, 0)});
    project.addLine(1, J1939Line);
    project.setJ1939(key, "5,");
    compare(Checker().checkJ1939(project), {missing(message, 1)});
    project.setJ1939(key, ",5");
    compare(Checker().checkJ1939(project), {});
    project.setJ1939(key, "5");
    compare(Checker().checkJ1939(project), {}); // a shorter list gives its last entry
    project.line = 0;
    project.setJ1939(key, ",5");
    compare(Checker().checkJ1939(project), {missing(message, 0)});
    project.setJ1939(key, "0x5,0");
    compare(Checker().checkJ1939(project), {});
}

void TestJ1939Rules::theManufacturerOfTheToolIsNotForProduction_data()
{
    const QString reserved =
        "<strong>Warning: The manufacturer code 1207 (Korvel embedded communication GmbH) "
        "may not be used for production. </strong>";
    addRows({
        {"1207", j1939("manufacturercode", "1207"), {reserved}},
        {"1206", j1939("manufacturercode", "1206"), {}},
        {"1207 of another line", j1939("manufacturercode", "1,1207"), {}},
        {"1207 of this line",
         [](Project &p) {
             p.addLine(1, J1939Line);
             p.setJ1939("manufacturercode", "1,1207");
         },
         {reserved}},
    });
}

void TestJ1939Rules::theStartAddressIsMoreThanBlanks_data()
{
    addRows({
        {"blanks",
         j1939("startaddress", "  "),
         {"An address needs to defined in the J1939 configuration for line 0."_error}},
        {"blanks for the second line",
         [](Project &p) {
             p.addLine(1, J1939Line);
             p.setJ1939("startaddress", "84, ");
         },
         {"An address needs to defined in the J1939 configuration for line 1."_error}},
        {"0", j1939("startaddress", "0"), {}},
        {"with a blank", j1939("startaddress", " 0x54"), {}},
    });
}

void TestJ1939Rules::missingSettingsAreToldInTheirOrder()
{
    Project project(J1939Line);
    project.set("sorted_coblist", "1");
    project.set("drv_group_filter", "1");
    project.setJ1939("dynsupport", "1");
    QStringList messages = {"Sorted COB list may not used with J1939 projects."_error,
                            "Group filter is only useful for CANopen or mixed projects."_strong,
                            "Additional COBs need to be specific with dynamic PGN support."_error};
    for (const NamePart &part : nameParts) {
        project.setJ1939(part.key, "");
        messages += missing(part.message, 0);
    }
    project.pgn(65000, ObjectDataBase::Receive);
    messages += "PG (65000/0xfde8) does not contain any SPNs."_error;
    compare(Checker().checkJ1939(project), messages);
}

QTEST_GUILESS_MAIN(TestJ1939Rules)
#include "tst_j1939rules.moc"
