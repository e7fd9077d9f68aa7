#include "generators/canopen/StackInitTexts.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace StackInitTexts;

namespace {

/** A gateway: lines 0 and 1 have objects. */
class Gateway : public DictionaryDesk
{
public:
    Gateway()
    {
        for (const quint8 line : {quint8(0), quint8(1)}) {
            addUsualObjects(*this, line);
            set(u"line%1type"_s.arg(line), u"1"_s);
        }
        set(u"new_init_structure"_s, u"1"_s);
    }
};

QString sdoServer()
{
    return u"    /* initialize sdo server(s) */\n"_s + checked(u"coSdoServerInit(canLine, 1u)"_s);
}

QString emptyFinish()
{
    return u"RET_T coCanOpenStackInit_finish(void)\n"
           "{\n"
           "/*\n"
           "* Currently this function is only required to initialize PDO Routing.\n"
           "* Without it the function is empty, but may be used later for additional\n"
           "* purposes.\n"
           "*/\n"
           "    return(RET_OK);\n"
           "}\n"_s;
}

/** The function of a line on classical CAN. */
QString lineFunction(int line, const QString &services)
{
    return u"\n/* ****************************************************************************************** "
           u"*/\n"
           "/* Initialize line <<%1>> */\n"
           "RET_T coCanOpenStackInit_line%1(\n"
           "    UNSIGNED8 canLine,\n"
           "    CO_INIT_OPTION_T *pCoOptions\n"
           ")\n"
           "{\n"
           "    RET_T retVal;\n"
           "    (void) pCoOptions; /* currently unused */\n\n"_s.arg(line)
        + services + u"    return(RET_OK);\n}\n"_s;
}

QString commonStart()
{
    return u"    /* common initialization */\n"
           "    retVal = coreStackInit(&commonInitVars);\n"
           "    if (retVal != RET_OK) {\n"
           "        return (retVal);\n"
           "    }\n"
           "    /* multi-line initialization */\n"
           "    retVal = coCanOpenStackVarInit(&serviceInitVars);\n"_s
        + loadFunction() + u"    return(retVal);\n}\n"_s;
}

/** Behind the structures. */
QString functions(const QString &text)
{
    return afterTables(text).section(u"};\n\n"_s, 2);
}

} // namespace

/** The start of the stack for several lines. */
class TestStackInitMultiLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void theWholeOfAGateway();
    void theLineTableOpensTheFunctions();
    void theStructuresAreThereWhateverTheirForm();
    void theOlderStackHasItsWords();
    void aProjectOfOneLineCanBeForcedIntoTheForm();
    void onCanFdEveryFunctionTakesTheModes();
    void theServerOnCanFdDependsOnTheModeOfTheLine();
    void usdoClientsBelongToALine();
    void aRoleChosenAtRunTimeNeedsOptions();
    void everyLineHasItsOwnRole();
    void lssIsStartedPerLine();
    void ledsFollowTheSrdos();
    void routingIsStartedAtTheEnd();
    void linesOfOneObjectHaveNoFunction();
    void withoutLinesThereIsNothingToChoose();
    void theJ1939ServerAsksForTheLine();
};

void TestStackInitMultiLine::theWholeOfAGateway()
{
    Gateway gateway;
    gateway.variable(0x1014, {.type = CAN::Unsigned32, .value = u"0x81"_s}, 1);
    const QString expected = u"RET_T coCanOpenStackInit_common(CO_EVENT_STORE_T pLoadFunction);\n"
                             "\n"
                             "RET_T coCanOpenStackInit(\n"
                             "         CO_EVENT_STORE_T pLoadFunction\n"
                             "    )\n"
                             "{\n"
                             "    CO_INIT_OPTION_T *pCoInitOpt = NULL;\n"
                             "    RET_T retVal;\n"
                             "    retVal = coCanOpenStackInit_common(pLoadFunction);\n"
                             "    if (retVal == RET_OK) {\n"
                             "        retVal = coCanOpenStackInit_line0(0, pCoInitOpt);\n"
                             "    }\n"
                             "    if (retVal == RET_OK) {\n"
                             "        retVal = coCanOpenStackInit_line1(1, pCoInitOpt);\n"
                             "    }\n"
                             "    retVal = coCanOpenStackInit_finish();\n"
                             "    return(retVal);\n"
                             "}\n"
                             "RET_T coCanOpenStackInit_common(\n"
                             "         CO_EVENT_STORE_T pLoadFunction\n"
                             "    )\n"
                             "{\n"
                             "    RET_T retVal = RET_OK;\n"_s
        + commonStart()
        + u"RET_T coCanOpenStackInit_line(\n"
          "    UNSIGNED8 canLine,\n"
          "    CO_INIT_OPTION_T *pCoOptions\n"
          ")\n"
          "{\n"
          "    RET_T retVal;\n"
          "switch(canLine) {\n"
          "\tcase 0:\n"
          "\t\tretVal = coCanOpenStackInit_line0(canLine, pCoOptions);\n"
          "\t\tbreak;\n"
          "\tcase 1:\n"
          "\t\tretVal = coCanOpenStackInit_line1(canLine, pCoOptions);\n"
          "\t\tbreak;\n"
          "\tdefault:\n"
          "\t\tretVal = RET_PARAMETER_INVALID;\n"
          "\tbreak;\n"
          "    }\n"
          "    return(retVal);\n"
          "}\n"_s
        + lineFunction(0, QString(lineTables(0, 2) + sdoServer() + nmtSlave(u"canLine, 0u"_s)))
        + lineFunction(1,
                       QString(lineTables(2, 3) + sdoServer()
                               + service(u"/* initialize emergency */"_s, u"coEmcyProducerInit(canLine)"_s)
                               + nmtSlave(u"canLine, 0u"_s)))
        + emptyFinish();
    QCOMPARE(functions(gateway.generate()), expected);
}

void TestStackInitMultiLine::theLineTableOpensTheFunctions()
{
    Gateway gateway;
    addUsualObjects(gateway, 7);
    QVERIFY(afterTables(gateway.generate())
                .startsWith(u"\nUNSIGNED8 canLineTable[CAN_LINE_ARRAY_DECL] = {0, 1, 7};\n"
                            "/* core initialization settings */\n"_s));
}

// The common part starts what all protocols share in any case.
void TestStackInitMultiLine::theStructuresAreThereWhateverTheirForm()
{
    Gateway gateway;
    const QString withVersion = gateway.generate();
    QVERIFY(withVersion.contains("serviceInitVars = {\n   1u,\n   { CO_OBJECT_COUNTS },\n"_L1));
    gateway.set(u"new_init_structure"_s, u"0"_s);
    const QString without = gateway.generate();
    QVERIFY(without.contains("commonInitVars = {\n"_L1));
    QVERIFY(without.contains("serviceInitVars = {\n   { CO_OBJECT_COUNTS },\n"_L1));
    QCOMPARE(functions(without), functions(withVersion));
}

void TestStackInitMultiLine::theOlderStackHasItsWords()
{
    Gateway gateway;
    gateway.set(u"canfd_supported"_s, u"1"_s);
    QString translated = functions(gateway.generate());
    translated.replace("coreStackInit"_L1, "commonStackInit"_L1)
        .replace("CORE_HANDLE_WATCHDOG"_L1, "CO_HANDLE_WATCHDOG"_L1)
        .replace("RET_PARAMETER_INVALID"_L1, "RET_INVALID_PARAMETER"_L1)
        .replace("    CAN_LINE;"_L1, "    CO_LINE;"_L1)
        .replace("CAN_LINE = 0; CAN_LINE < CAN_MULTI_LINE_CNT; CAN_LINE ++"_L1,
                 "CO_LINE = 0; CO_LINE < CO_MULTI_LINE_CNT; CO_LINE ++"_L1)
        .replace("[CAN_LINE]"_L1, "[CO_LINE]"_L1);
    const QString older = gateway.generate(false);
    QCOMPARE(older.sliced(older.indexOf(u"RET_T coCanOpenStackInit_common("_s)), translated);
}

void TestStackInitMultiLine::aProjectOfOneLineCanBeForcedIntoTheForm()
{
    DictionaryDesk device;
    addUsualObjects(device, 0);
    device.set(u"new_init_structure"_s, u"1"_s);
    device.setMisc(u"generateML"_s, u"true"_s);
    const QString text = device.generate();
    QVERIFY(text.contains("\nUNSIGNED8 canLineTable[CAN_LINE_ARRAY_DECL] = {0};\n"_L1));
    QCOMPARE(text.section(u"    return(retVal);\n}\n"_s, 3),
             QString(lineFunction(0, QString(lineTables(0, 2) + sdoServer() + nmtSlave(u"canLine, 0u"_s)))
                     + emptyFinish()));
}

void TestStackInitMultiLine::onCanFdEveryFunctionTakesTheModes()
{
    Gateway gateway;
    gateway.set(u"canfd_supported"_s, u"1"_s);
    const QString text = functions(gateway.generate());
    const QString modes = u"         CO_EVENT_STORE_T pLoadFunction, BOOL_T *pModes\n    )\n{\n"_s;
    const QString lineModes =
        u"    UNSIGNED8 canLine,\n    CO_INIT_OPTION_T *pCoOptions,\n    BOOL_T *pModes\n)\n{\n"
        "    RET_T retVal;\n"_s;
    QVERIFY(text.startsWith(
        QString(u"RET_T coCanOpenStackInit_common(CO_EVENT_STORE_T pLoadFunction, BOOL_T *pModes);\n\n"
                "RET_T coCanOpenStackInit(\n"_s
                + modes)));
    QVERIFY(text.contains("    retVal = coCanOpenStackInit_common(pLoadFunction, pModes);\n"_L1));
    QVERIFY(text.contains("        retVal = coCanOpenStackInit_line1(1, pCoInitOpt, pModes);\n"_L1));
    QVERIFY(text.contains(QString(u"RET_T coCanOpenStackInit_common(\n"_s + modes
                                  + u"    CAN_LINE_TYPE    CAN_LINE;\n"
                                    "    RET_T retVal = RET_OK;\n"
                                    "    for (CAN_LINE = 0; CAN_LINE < CAN_MULTI_LINE_CNT; CAN_LINE ++)\n"
                                    "    {\n"
                                    "        commonInitVars.fdMode[CAN_LINE] = CO_TRUE;\n"
                                    "        if (pModes != NULL) {\n"
                                    "            commonInitVars.fdMode[CAN_LINE] = pModes[CAN_LINE];\n"
                                    "        }\n"
                                    "        serviceInitVars.fdMode[CAN_LINE] = CO_TRUE;\n"
                                    "        if (pModes != NULL) {\n"
                                    "            serviceInitVars.fdMode[CAN_LINE] = pModes[CAN_LINE];\n"
                                    "        }\n"
                                    "    }\n"_s
                                  + commonStart())));
    QVERIFY(text.contains(QString(u"RET_T coCanOpenStackInit_line(\n"_s + lineModes)));
    QVERIFY(text.contains("\t\tretVal = coCanOpenStackInit_line1(canLine, pCoOptions, pModes);\n"_L1));
    QVERIFY(text.contains(QString(u"RET_T coCanOpenStackInit_line1(\n"_s + lineModes)));
    QVERIFY(gateway.read(u"gen_objdict.c"_s)
                .contains("   { CO_NODE_ID_FUNCTIONS }, \n   { CO_TRUE, CO_TRUE }\n};\n\n"_L1));
}

void TestStackInitMultiLine::theServerOnCanFdDependsOnTheModeOfTheLine()
{
    Gateway gateway;
    gateway.set(u"canfd_supported"_s, u"1"_s);
    QCOMPARE(lineServices(gateway.generate(), 1),
             QString(lineTables(2, 2)
                     + u"    /* initialize (u)sdo server(s) */\n"
                       "    if (pModes != NULL) {\n"
                       "    if (pModes[canLine] == CO_TRUE) {\n"_s
                     + checked(u"coUsdoServerInit(canLine)"_s, 7)
                     + u"#ifdef CO_SDO_SERVER_CNT\n"
                       "    } else {\n"_s
                     + checked(u"coSdoServerInit(canLine, 1)"_s, 8)
                     + u"#endif /* CO_SDO_SERVER_CNT */\n"
                       "    }\n"
                       "    }\n"_s
                     + nmtSlave(u"canLine, 0u"_s)));
}

void TestStackInitMultiLine::usdoClientsBelongToALine()
{
    Gateway gateway;
    gateway.set(u"canfd_supported"_s, u"1"_s);
    gateway.set(u"usdo_client_enabled"_s, u"0,1"_s);
    gateway.set(u"usdo_client_cnt"_s, u"2"_s);
    const QString text = gateway.generate();
    QVERIFY(!lineServices(text, 0).contains("coUsdoClientInit"_L1));
    QVERIFY(lineServices(text, 1).contains(QString(u"    /* initialize (u)sdo clients(s) */\n"
                                                   "    if (pModes != NULL) {\n"
                                                   "    if (pModes[canLine] == CO_TRUE) {\n"_s
                                                   + checked(u"coUsdoClientInit(canLine)"_s, 9)
                                                   + u"    }\n    }\n"_s)));
}

void TestStackInitMultiLine::aRoleChosenAtRunTimeNeedsOptions()
{
    Gateway gateway;
    gateway.set(u"nmtmaster"_s, u"0,2"_s);
    const QString text = functions(gateway.generate());
    const QString head = u"RET_T coCanOpenStackInitPara(\n"
                         "         CO_EVENT_STORE_T pLoadFunction,\n"
                         "         CO_INIT_OPTION_T *pCoOptions"_s;
    QVERIFY(text.contains(QString(head + u"\n    )\n{\n    CO_INIT_OPTION_T *pCoInitOpt = NULL;\n"_s)));
    QVERIFY(text.contains("    if (retVal == RET_OK) {\n"
                          "        pCoInitOpt = &pCoOptions[1];\n"
                          "        retVal = coCanOpenStackInit_line1(1, pCoInitOpt);\n"
                          "    }\n"_L1));
    QVERIFY(definition(text, u"RET_T coCanOpenStackInit_line0(\n"_s).contains("(void) pCoOptions;"_L1));
    QVERIFY(!definition(text, u"RET_T coCanOpenStackInit_line1(\n"_s).contains("(void) pCoOptions;"_L1));
    gateway.set(u"canfd_supported"_s, u"1"_s);
    QVERIFY(gateway.generate().contains(QString(head + u", BOOL_T *pModes\n    )\n{\n"_s)));
}

void TestStackInitMultiLine::everyLineHasItsOwnRole()
{
    Gateway gateway;
    addUsualObjects(gateway, 2);
    gateway.set(u"nmtmaster"_s, u"0,1,2"_s);
    const QString text = gateway.generate();
    const auto nmt = [&](int line) { return lineServices(text, line).section(sdoServer(), 1); };
    const auto master = [](int indent) {
        return QString(QString(indent, u' ') + u"/* initialize NMT master */ \n"_s
                       + checked(u"coNmtInit(canLine, 1u)"_s, indent));
    };
    QCOMPARE(nmt(0), nmtSlave(u"canLine, 0u"_s));
    QCOMPARE(nmt(1), master(4));
    QCOMPARE(nmt(2),
             QString(u"    /* Check dynamic options for master flag */\n"
                     "    if (pCoOptions->master == 1) {\n"_s
                     + master(8) + u"    } else {\n        /* initialize NMT slave */ \n"_s
                     + checked(u"coNmtInit(canLine, 0u)"_s, 8) + u"    }\n"_s));
}

void TestStackInitMultiLine::lssIsStartedPerLine()
{
    Gateway gateway;
    gateway.set(u"lss_supported"_s, u"1"_s);
    gateway.set(u"nmtmaster"_s, u"0,1"_s);
    const QString text = gateway.generate();
    QVERIFY(
        lineServices(text, 0).contains(service(u"/* initialize LSS Slave */"_s, u"coLssInit(canLine)"_s)));
    QVERIFY(lineServices(text, 1).contains(
        service(u"/* initialize LSS Master */"_s, u"coLssMasterInit(canLine)"_s)));
}

void TestStackInitMultiLine::ledsFollowTheSrdos()
{
    Gateway gateway;
    gateway.set(u"event_led"_s, u"1"_s);
    gateway.set(u"isotp_connection_cnt"_s, u"1"_s);
    gateway.variable(0x1300, {});
    gateway.array(0x1301, {{}});
    QCOMPARE(lineServices(gateway.generate(), 0),
             QString(lineTables(0, 4) + sdoServer()
                     + service(u"/* initialize  GFC Producer - Consumer */"_s,
                               u"coGfcInit(canLine, CO_TRUE, CO_TRUE)"_s)
                     + service(u"/* initialize SRDO  */"_s, u"coSrdoInit(canLine, 1)"_s)
                     + u"    /* initialization of LED module */\n    coLedInit(canLine);\n\n"_s
                     + service(u"/* initialize ISO-TP */"_s, u"isoTpInit(canLine)"_s)
                     + nmtSlave(u"canLine, 0u"_s)));
}

void TestStackInitMultiLine::routingIsStartedAtTheEnd()
{
    Gateway gateway;
    gateway.array(0x1F2C, {{.type = CAN::Unsigned32}});
    QCOMPARE(definition(gateway.generate(), u"RET_T coCanOpenStackInit_finish(void)\n"_s),
             QString(u"RET_T coCanOpenStackInit_finish(void)\n"
                     "{\n"
                     "    RET_T retVal;\n"
                     "    /* initialize PDO routing */ \n"_s
                     + checked(u"coPdoNetworkRouting()"_s)
                     + u"    CORE_HANDLE_WATCHDOG\n"
                       "    return(RET_OK);\n"
                       "}\n"_s));
}

void TestStackInitMultiLine::linesOfOneObjectHaveNoFunction()
{
    DictionaryDesk gateway;
    addUsualObjects(gateway, 0);
    gateway.variable(0x1000, {}, 1);
    const QString text = gateway.generate();
    QVERIFY(text.contains("canLineTable[CAN_LINE_ARRAY_DECL] = {0};\n"_L1));
    QVERIFY(text.contains("coCanOpenStackInit_line0"_L1));
    QVERIFY(!text.contains("coCanOpenStackInit_line1"_L1));
}

// C has no empty lists, and compilers warn of variables and parameters that nothing uses.
void TestStackInitMultiLine::withoutLinesThereIsNothingToChoose()
{
    DictionaryDesk gateway;
    gateway.variable(0x1000, {.type = CAN::Integer24, .value = u"3"_s}, 0);
    gateway.variable(0x1000, {}, 1);
    const QString text = functions(gateway.generate());
    QVERIFY(gateway.read(u"gen_objdict.c"_s).contains("canLineTable[CAN_LINE_ARRAY_DECL] = {0};\n"_L1));
    QVERIFY(!text.contains("coCanOpenStackInit_line"_L1));
    QVERIFY(!text.contains("pCoInitOpt"_L1));
    QVERIFY(text.endsWith(u"*/\n    (void)od_const_i24;\n    (void)od_i24;\n    return(RET_OK);\n}\n"_s));
}

void TestStackInitMultiLine::theJ1939ServerAsksForTheLine()
{
    Gateway gateway;
    gateway.variable(0x2000, {}, 1);
    gateway.forJ1939Server = true;
    QCOMPARE(afterTables(gateway.generate()),
             u"RET_T\tj1939OdInit(\n"
             "\tUNSIGNED8 canLine\n"
             ")\n"
             "{\n"
             "\tswitch (canLine) {\n"
             "\t\tcase 0:\n"
             "\t\t/* initialize object dictionary variables and pointers */\n"
             "\t\tcoOdInitOdPtr(canLine, &od_assign[0], 2, od_description,2, NULL, &od_data_variables);\n"
             "\t\tbreak;\n"
             "\t\tcase 1:\n"
             "\t\t/* initialize object dictionary variables and pointers */\n"
             "\t\tcoOdInitOdPtr(canLine, &od_assign[2], 3, od_description,5, NULL, &od_data_variables);\n"
             "\t\tbreak;\n"
             "\tdefault:\n"
             "\tbreak;\n"
             "\t}\n"
             "\n\treturn(RET_OK);\n"
             "}\n"_s);
}

QTEST_GUILESS_MAIN(TestStackInitMultiLine)
#include "tst_stackinitmultiline.moc"
