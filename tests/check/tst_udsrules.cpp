#include "check/CheckTest.h"

using namespace CheckTest;
using namespace CheckTest::Texts;

/** UDS server, client and statically bound callbacks (ISO 14229). */
class TestUdsRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void aLineIsServerOrClient_data();
    void aLineIsServerOrClient();
    void staticIndicationNeedsAFunction_data();
    void staticIndicationNeedsAFunction() { checkProjectRow(); }
    void eachServiceHasItsOwnFunction_data();
    void eachServiceHasItsOwnFunction() { checkProjectRow(); }
};

namespace {

const char *const functionKeys[] = {
    "uds_fct_check_req_session", "uds_fct_clear_dtc_info",    "uds_fct_dtc_info",
    "uds_fct_id_data_transmit",  "uds_fct_mem_data_transmit", "uds_fct_sec_access_req_key",
    "uds_fct_req_commgt",        "uds_fct_authent_req",       "uds_fct_ioctrl",
    "uds_fct_routine_ctrl",      "uds_fct_data_transfer",     "uds_fct_generic"};

const QString noFunction = "Static UDS indication is enabled but no service has a function name; no callback "
                           "will be wired up."_strong;

QString usedTwice(const char *name)
{
    return QStringLiteral(
               "<strong><font color='red'>Error: </font></strong>The function name '%1' is used for "
               "more than one UDS static indication service; each service needs its own callback "
               "(different signature).")
        .arg(QLatin1StringView(name));
}

} // namespace

void TestUdsRules::aLineIsServerOrClient_data()
{
    QTest::addColumn<int>("lines");
    QTest::addColumn<QString>("server");
    QTest::addColumn<QString>("clients");
    QTest::addColumn<bool>("isError");
    QTest::newRow("both") << 1 << "1"
                          << "1" << true;
    QTest::newRow("server and several clients") << 1 << "1"
                                                << "3" << true;
    QTest::newRow("both on the second line") << 2 << "0,1"
                                             << "0,1" << true;
    QTest::newRow("both on the first line") << 2 << "1,0"
                                            << "1,0" << true;
    QTest::newRow("each on its line") << 2 << "1,0"
                                      << "0,1" << false;
    QTest::newRow("each on its line, the other way round") << 2 << "0,1"
                                                           << "2,0" << false;
    QTest::newRow("server alone") << 1 << "1"
                                  << "0" << false;
    QTest::newRow("server alone, no count") << 1 << "1"
                                            << "" << false;
    QTest::newRow("clients alone") << 1 << "0"
                                   << "1" << false;
    QTest::newRow("neither") << 1 << ""
                             << "" << false;
}

void TestUdsRules::aLineIsServerOrClient()
{
    QFETCH(int, lines);
    QFETCH(QString, server);
    QFETCH(QString, clients);
    QFETCH(bool, isError);
    Project project(RawCanLine);
    for (int line = 1; line < lines; ++line)
        project.addLine(quint8(line), RawCanLine);
    for (const char *key : {"udsserver_supported", "udsclient_supported"})
        project.set(key, "1");
    project.set("uds_server_active", server);
    project.set("uds_client_cnt", clients);
    const QString both = "UDS server and UDS client together on one line is not possible."_red;
    compare(Checker().checkProject(project), isError ? QStringList{both} : QStringList());
}

void TestUdsRules::staticIndicationNeedsAFunction_data()
{
    const auto indication = [](const char *value) {
        return [=](Project &p) { p.set("uds_static_indication", value); };
    };
    QList<Row> rows = {
        {"no function", indication("1"), {noFunction}},
        {"blanks are no name",
         [=](Project &p) {
             indication("1")(p);
             p.set("uds_fct_generic", "  ");
             p.set("uds_fct_ioctrl", "  ");
         },
         {noFunction}},
        {"not static", indication("0"), {}},
        {"never set", indication(""), {}},
        {"functions of other services",
         [=](Project &p) {
             indication("1")(p);
             p.set("uds_fct_other", "other");
         },
         {noFunction}},
    };
    for (const char *key : functionKeys)
        rows.append({key,
                     [=](Project &p) {
                         indication("1")(p);
                         p.set(key, "function");
                     },
                     {}});
    addRows(rows);
}

void TestUdsRules::eachServiceHasItsOwnFunction_data()
{
    const auto functions = [](const char *first, const char *second, const char *isStatic = "1") {
        return [=](Project &p) {
            p.set("uds_static_indication", isStatic);
            p.set("uds_fct_generic", first);
            p.set("uds_fct_check_req_session", second);
        };
    };
    QList<Row> rows = {
        {"the same", functions("callback", "callback"), {usedTwice("callback")}},
        {"different", functions("callback1", "callback2"), {}},
        {"different by case", functions("callback", "Callback"), {}},
        {"empty names are not the same", functions("", ""), {noFunction}},
        {"one empty", functions("callback", ""), {}},
        {"not static", functions("callback", "callback", "0"), {}},
        {"a name with a placeholder", functions("%1", "%1"), {usedTwice("%1")}},
    };
    for (const char *key : functionKeys)
        rows.append({QByteArray(key) + " and another",
                     [=](Project &p) {
                         const bool isGeneric = QByteArray(key) == "uds_fct_generic";
                         p.set("uds_static_indication", "1");
                         p.set(key, "callback");
                         p.set(isGeneric ? "uds_fct_ioctrl" : "uds_fct_generic", "callback");
                     },
                     {usedTwice("callback")}});
    addRows(rows);
}

QTEST_GUILESS_MAIN(TestUdsRules)
#include "tst_udsrules.moc"
