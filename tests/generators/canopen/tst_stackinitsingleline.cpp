#include "generators/canopen/StackInitTexts.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace StackInitTexts;

namespace {

/** A device of one line with the settings of a new project. */
class Device : public DictionaryDesk
{
public:
    Device()
    {
        addUsualObjects(*this, 0);
        set(u"line0type"_s, u"1"_s);
        set(u"new_init_structure"_s, u"1"_s);
    }
};

QString sdoServer()
{
    return u"    /* initialize sdo server(s) */\n"_s + checked(u"coSdoServerInit(1u)"_s);
}

QString commonVariables()
{
    return u"/* core initialization settings */\n"
           "CORE_COMMON_INIT_VAL_T    commonInitVars = {\n"
           "\t1u,\n"
           "\t{ CORE_REC_BUFFER_COUNTS },\n"
           "\t{ CORE_TR_BUFFER_COUNTS },\n"
           "\t{ CORE_COB_COUNTS }, \n"
           "\t{ CORE_PROT_TYPE_CANOPEN}\n"
           "};\n\n"_s;
}

/** The structure of the services, whose first and last members differ from project to project. */
QString serviceVariables(const QString &version, const QString &lastMembers)
{
    return u"/* CANopen service initialization variables */\n"
           "CO_SERVICE_INIT_VAL_T\tserviceInitVars = {\n"_s
        + version
        + u"   { CO_OBJECT_COUNTS },\n"
          "   { CO_TXPDO_COUNTS },\n"
          "   { CO_RXPDO_COUNTS },\n"
          "#ifdef CO_SRDO_SUPPORTED\n"
          "   { CO_SRDO_COUNTS },\n"
          "#endif /* CO_SRDO_SUPPORTED */\n"
          "   { CO_SSDO_COUNTS },\n"
          "   { CO_CSDO_COUNTS },\n"
          "#ifdef CO_USDO_SERVER_MAX_CONN_CNT\n"
          "   { CO_USDO_SERVER_MAX_CONN_COUNTS },\n"
          "#endif /* CO_USDO_SERVER_MAX_CONN_CNT */\n"
          "#ifdef CO_USDO_CLIENT_MAX_CONN_CNT\n"
          "   { CO_USDO_CLIENT_MAX_CONN_COUNTS },\n"
          "#endif /* CO_USDO_CLIENT_MAX_CONN_CNT */\n"
          "   { CO_ERR_CTRL_COUNTS },\n"
          "   { CO_ERR_HIST_COUNTS },\n"
          "   { CO_ACT_ERR_HIST_COUNTS },\n"
          "   { CO_EMCY_CONS_COUNTS },\n"
          "#ifdef CO_NETWORK_ROUTING_CNT\n"
          "   { CO_NETWORK_ROUTING_COUNTS }, \n"
          "#endif /* CO_NETWORK_ROUTING_CNT */\n"
          "   { CO_ASSIGN_COUNTS },\n"
          "   { CO_GUARDING_COUNTS },\n"
          "   { CO_NODE_IDS }, \n"_s
        + lastMembers + u"};\n\n"_s;
}

QString classicalFunctions()
{
    return u"   { CO_NODE_ID_FUNCTIONS } \n"_s;
}

QString fdFunctions()
{
    return u"   { CO_NODE_ID_FUNCTIONS }, \n   { CO_TRUE }\n"_s;
}

QString commonInit()
{
    return u"    /* common initialization */\n"_s + checked(u"coreStackInit(&commonInitVars)"_s);
}

QString variableInit()
{
    return u"    /* variable initialization */\n"_s + checked(u"coCanOpenStackVarInit(&serviceInitVars)"_s);
}

/** From the function's name up to its first statement. */
QString head(const QString &text)
{
    const qsizetype begin = text.indexOf(u"RET_T coCanOpenStackInit"_s);
    return begin < 0 ? u"no function"_s : text.sliced(begin).section(u"    RET_T retVal;\n\n\n"_s, 0, 0);
}

/** The comments of the services, in their order. */
QStringList comments(const QString &services)
{
    QStringList found;
    const QStringList lines = services.split(u'\n');
    for (const QString &line : lines)
        if (line.startsWith("    /* "_L1))
            found.append(line.trimmed());
    return found;
}

} // namespace

/** The start of the stack for one line. */
class TestStackInitSingleLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void theWholeOfASmallDevice();
    void theOlderStackHasItsWords();
    void withoutTheNewStructureNothingCommonIsStarted();
    void modesOfCanFdAreHandedOn();
    void withoutTheNewStructureTheServicesKnowTheMode();
    void theServerOnCanFdDependsOnTheMode();
    void usdoClientsAreStartedOnCanFd_data();
    void usdoClientsAreStartedOnCanFd();
    void theRoleDecidesOnTheHead_data();
    void theRoleDecidesOnTheHead();
    void networkManagementIsAlwaysStarted_data();
    void networkManagementIsAlwaysStarted();
    void aStaticLoadFunctionLeavesNoneToRefuse();
    void servicesStandInTheirOrder();
    void aDeviceWithoutObjectsHasNoTablesToHandOver();
    void theJ1939ServerHasItsDictionaryOnly();
};

void TestStackInitSingleLine::theWholeOfASmallDevice()
{
    Device device;
    QCOMPARE(afterTables(device.generate()),
             QString(commonVariables() + serviceVariables(u"   1u,\n"_s, classicalFunctions())
                     + u"RET_T coCanOpenStackInit(\n"
                       "         CO_EVENT_STORE_T pLoadFunction\n"
                       "    )\n"
                       "{\n"
                       "    RET_T retVal;\n"
                       "\n"
                       "\n"_s
                     + commonInit() + variableInit() + singleLineTables() + sdoServer() + loadFunction()
                     + nmtSlave(u"0u"_s) + u"    return(RET_OK);\n}\n"_s));
}

void TestStackInitSingleLine::theOlderStackHasItsWords()
{
    Device device;
    const QString v4 = device.generate();
    const QString older = device.generate(false);
    QVERIFY(older.contains("CO_COMMON_INIT_VAL_T    commonInitVars = {\n"_L1));
    QVERIFY(older.contains("    retVal = commonStackInit(&commonInitVars);\n"_L1));
    QString translated = definition(v4, u"RET_T coCanOpenStackInit("_s);
    translated.replace("coreStackInit"_L1, "commonStackInit"_L1)
        .replace("CORE_HANDLE_WATCHDOG"_L1, "CO_HANDLE_WATCHDOG"_L1)
        .replace("RET_PARAMETER_INVALID"_L1, "RET_INVALID_PARAMETER"_L1);
    QCOMPARE(definition(older, u"RET_T coCanOpenStackInit("_s), translated);
    QVERIFY(older.contains(serviceVariables(u"   1u,\n"_s, classicalFunctions())));
}

void TestStackInitSingleLine::withoutTheNewStructureNothingCommonIsStarted()
{
    Device device;
    device.set(u"new_init_structure"_s, u"0"_s);
    const QString text = device.generate();
    QVERIFY(!text.contains("commonInitVars"_L1));
    QVERIFY(!text.contains("coreStackInit"_L1));
    QVERIFY(afterTables(text).startsWith(
        QString(serviceVariables({}, classicalFunctions()) + u"RET_T coCanOpenStackInit(\n"_s)));
    QVERIFY(text.contains(QString(u"    RET_T retVal;\n\n\n"_s + variableInit())));
}

void TestStackInitSingleLine::modesOfCanFdAreHandedOn()
{
    Device device;
    device.set(u"canfd_supported"_s, u"1"_s);
    const QString text = device.generate();
    QVERIFY(text.contains(serviceVariables(u"   1u,\n"_s, fdFunctions())));
    QVERIFY(text.contains(QString(u"RET_T coCanOpenStackInit(\n"
                                  "         CO_EVENT_STORE_T pLoadFunction,\n"
                                  "         BOOL_T *pModes\n"
                                  "    )\n"
                                  "{\n"
                                  "    RET_T retVal;\n"
                                  "\n"
                                  "\n"
                                  "    if (pModes != NULL) {\n"
                                  "        commonInitVars.fdMode[0] = pModes[0];\n"
                                  "        serviceInitVars.fdMode[0] = pModes[0];\n"
                                  "    }\n"_s
                                  + commonInit())));
}

void TestStackInitSingleLine::withoutTheNewStructureTheServicesKnowTheMode()
{
    Device device;
    device.set(u"canfd_supported"_s, u"1"_s);
    device.set(u"new_init_structure"_s, u"0"_s);
    const QString text = device.generate();
    QVERIFY(!text.contains("commonInitVars"_L1));
    QVERIFY(text.contains(serviceVariables({}, fdFunctions())));
    QVERIFY(text.contains(QString(u"    if (pModes != NULL) {\n"
                                  "        serviceInitVars.fdMode[0] = pModes[0];\n"
                                  "    }\n"_s
                                  + variableInit())));
    QVERIFY(text.contains(
        "    if (serviceInitVars.fdMode[0] == CO_TRUE) {\n       retVal = coUsdoServerInit();\n"_L1));
}

void TestStackInitSingleLine::theServerOnCanFdDependsOnTheMode()
{
    Device device;
    device.set(u"canfd_supported"_s, u"1"_s);
    device.array(0x1201, {{.type = CAN::Unsigned32, .value = u"0x601"_s}}); // of classical CAN only
    QCOMPARE(singleLineServices(device.generate()),
             QString(singleLineTables()
                     + u"    /* initialize (u)sdo server(s) */\n"
                       "    if (commonInitVars.fdMode[0] == CO_TRUE) {\n"_s
                     + checked(u"coUsdoServerInit()"_s, 7)
                     + u"#ifdef CO_SDO_SERVER_CNT\n"
                       "    } else {\n"_s
                     + checked(u"coSdoServerInit(1)"_s, 8)
                     + u"#endif /* CO_SDO_SERVER_CNT */\n"
                       "    }\n"_s
                     + loadFunction() + nmtSlave(u"0u"_s)));
}

void TestStackInitSingleLine::usdoClientsAreStartedOnCanFd_data()
{
    QTest::addColumn<QString>("canFd");
    QTest::addColumn<QString>("enabled");
    QTest::addColumn<QString>("count");
    QTest::addColumn<bool>("isStarted");
    QTest::newRow("clients") << u"1"_s << u"1"_s << u"3"_s << true;
    QTest::newRow("switched off") << u"1"_s << u"0"_s << u"3"_s << false;
    QTest::newRow("none") << u"1"_s << u"1"_s << u"0"_s << false;
    QTest::newRow("no number") << u"1"_s << u"1"_s << QString() << false;
    QTest::newRow("classical CAN has no mode to ask") << u"0"_s << u"1"_s << u"3"_s << false;
}

void TestStackInitSingleLine::usdoClientsAreStartedOnCanFd()
{
    QFETCH(QString, canFd);
    QFETCH(QString, enabled);
    QFETCH(QString, count);
    QFETCH(bool, isStarted);
    Device device;
    device.set(u"canfd_supported"_s, canFd);
    device.set(u"usdo_client_enabled"_s, enabled);
    device.set(u"usdo_client_cnt"_s, count);
    device.array(0x1280, {{}});
    const QString services = singleLineServices(device.generate());
    const QString usdo = u"    /* initialize (u)sdo clients(s) */\n"
                         "    if (commonInitVars.fdMode[0] == CO_TRUE) {\n"_s
        + checked(u"coUsdoClientInit()"_s, 9) + u"    }\n"_s;
    const QString sdo = u"    /* initialize sdo clients(s) */\n"_s + checked(u"coSdoClientInit(1u)"_s);
    QVERIFY(services.contains(sdo));
    QCOMPARE(services.contains(QString(usdo + sdo)), isStarted);
    QCOMPARE(services.contains("coUsdoClientInit"_L1), isStarted);
}

void TestStackInitSingleLine::theRoleDecidesOnTheHead_data()
{
    QTest::addColumn<QString>("role");
    QTest::addColumn<QString>("canFd");
    QTest::addColumn<QString>("expected");
    const QString plain = u"RET_T coCanOpenStackInit(\n         CO_EVENT_STORE_T pLoadFunction"_s;
    const QString dynamic = u"RET_T coCanOpenStackInitPara(\n         CO_EVENT_STORE_T pLoadFunction,\n"
                            "         CO_INIT_OPTION_T *pCoOptions"_s;
    const QString modes = u",\n         BOOL_T *pModes"_s;
    const QString end = u"\n    )\n{\n"_s;
    QTest::newRow("slave") << u"0"_s << u"0"_s << QString(plain + end);
    QTest::newRow("master") << u"1"_s << u"0"_s << QString(plain + end);
    QTest::newRow("either") << u"2"_s << u"0"_s << QString(dynamic + end);
    QTest::newRow("slave, FD") << u"0"_s << u"1"_s << QString(plain + modes + end);
    QTest::newRow("either, FD") << u"2"_s << u"1"_s << QString(dynamic + modes + end);
    QTest::newRow("another line's role") << u"0,2"_s << u"0"_s << QString(plain + end);
}

void TestStackInitSingleLine::theRoleDecidesOnTheHead()
{
    QFETCH(QString, role);
    QFETCH(QString, canFd);
    Device device;
    device.set(u"nmtmaster"_s, role);
    device.set(u"canfd_supported"_s, canFd);
    QTEST(head(device.generate()), "expected");
}

void TestStackInitSingleLine::networkManagementIsAlwaysStarted_data()
{
    QTest::addColumn<QString>("role");
    QTest::addColumn<QString>("lss");
    QTest::addColumn<QString>("expected");
    const auto side = [](const char *name, int lss, int indent) {
        const bool isMaster = QByteArray(name) == "master";
        const QString blanks(indent, u' ');
        QString text;
        if (lss)
            text = blanks
                + (isMaster ? u"/* initialize LSS Master */\n"_s : u"/* initialize LSS Slave */\n"_s)
                + checked(isMaster ? u"coLssMasterInit()"_s : u"coLssInit()"_s, indent);
        return QString(text + blanks + u"/* initialize NMT %1 */ \n"_s.arg(QLatin1StringView(name))
                       + checked(isMaster ? u"coNmtInit(1u)"_s : u"coNmtInit(0u)"_s, indent));
    };
    for (const int lss : {0, 1}) {
        const QString setting = QString::number(lss);
        const QString choice = u"    /* Check dynamic options for master flag */\n"
                               "    if (pCoOptions->master == 1) {\n"_s
            + side("master", lss, 8) + u"    } else {\n"_s + side("slave", lss, 8) + u"    }\n"_s;
        QTest::addRow("slave, LSS %d", lss) << u"0"_s << setting << side("slave", lss, 4);
        QTest::addRow("not set, LSS %d", lss) << QString() << setting << side("slave", lss, 4);
        QTest::addRow("master, LSS %d", lss) << u"1"_s << setting << side("master", lss, 4);
        QTest::addRow("either, LSS %d", lss) << u"2"_s << setting << choice;
    }
}

void TestStackInitSingleLine::networkManagementIsAlwaysStarted()
{
    QFETCH(QString, role);
    QFETCH(QString, lss);
    Device device;
    device.set(u"nmtmaster"_s, role);
    device.set(u"lss_supported"_s, lss);
    QTEST(singleLineServices(device.generate()).section(loadFunction(), 1), "expected");
}

void TestStackInitSingleLine::aStaticLoadFunctionLeavesNoneToRefuse()
{
    Device device;
    device.set(u"fct_store"_s, u"loadValues"_s);
    const QString text = device.generate();
    QVERIFY(text.contains(QString(checked(u"coEventRegister_LOAD_PARA(pLoadFunction)"_s)
                                  + u"#else\n"
                                    "    (void)pLoadFunction;\n"
                                    "#endif /* CO_EVENT_DYNAMIC_STORE || CO_EVENT_PROFILE_STORE */\n"_s)));
    QVERIFY(!text.contains("RET_PARAMETER_INVALID"_L1));
}

void TestStackInitSingleLine::servicesStandInTheirOrder()
{
    Device device;
    for (const quint16 index : {0x1005, 0x100C, 0x1012, 0x1014, 0x1017, 0x1300, 0x1F81})
        device.variable(index, {});
    for (const quint16 index : {0x1028, 0x1280, 0x1301, 0x1F10})
        device.array(index, {{}});
    device.pdo(0x1800, {});
    device.pdo(0x1400, {});
    for (const QString &key : {u"event_led"_s, u"isotp_connection_cnt"_s, u"idnego_supported"_s,
                               u"lss_supported"_s, u"nmtmaster"_s})
        device.set(key, u"1"_s);
    QCOMPARE(comments(singleLineServices(device.generate())),
             QStringList({
                 u"/* initialize object dictionary variables and pointers */"_s,
                 u"/* initialization of LED module */"_s,
                 u"/* initialize sdo server(s) */"_s,
                 u"/* initialize sdo clients(s) */"_s,
                 u"/* initialize error control */"_s,
                 u"/* initialize emergency */"_s,
                 u"/* initialize sync */"_s,
                 u"/* initialize EMCY consumer */"_s,
                 u"/* initialize Time service */"_s,
                 u"/* initialize TPDO 1 */"_s,
                 u"/* initialize RPDO 1 */"_s,
                 u"/* initialize SDO Requesting Device (SRD) */"_s,
                 u"/* initialize  GFC Producer - Consumer */"_s,
                 u"/* initialize SRDO  */"_s,
                 u"/* initialize ISO-TP */"_s,
                 u"/* initialization of ID negotiation module */"_s,
                 u"/* initialization of node guarding master*/"_s,
                 u"/* initialize load parameter function */"_s,
                 u"/* initialize LSS Master */"_s,
                 u"/* initialize NMT master */"_s,
             }));
}

void TestStackInitSingleLine::aDeviceWithoutObjectsHasNoTablesToHandOver()
{
    DictionaryDesk device;
    const QString text = device.generate();
    QVERIFY(!text.contains("od_assign"_L1));
    QVERIFY(text.contains("    coOdInitOdPtr(NULL, CO_OD_ASSIGN_CNT, NULL, CO_OBJ_DESC_CNT, NULL, "
                          "&od_data_variables);\n"_L1));
}

void TestStackInitSingleLine::theJ1939ServerHasItsDictionaryOnly()
{
    Device device;
    device.forJ1939Server = true;
    device.set(u"overwrite_predef"_s, u"1"_s);
    QCOMPARE(afterTables(device.generate()),
             u"RET_T\tj1939OdInit(void)\n"
             "{\n"
             "\tcoOdInitOdPtr(&od_assign[0], CO_OD_ASSIGN_CNT, &od_description[0], CO_OBJ_DESC_CNT, NULL, "
             "&od_data_variables);\n"
             "\n\treturn(RET_OK);\n"
             "}\n"_s);
    device.variable(0x2000, {.type = CAN::Integer24, .value = u"7"_s});
    QVERIFY(device.generate().contains("&od_data_variables);\n"
                                       "\t(void)od_const_i24;\n"
                                       "\t(void)od_i24;\n"
                                       "\n\treturn(RET_OK);\n"_L1));
}

QTEST_GUILESS_MAIN(TestStackInitSingleLine)
#include "tst_stackinitsingleline.moc"
