#include "generators/canopen/GenDefineGenerator.h"
#include "generators/canopen/StackInitDevices.h"
#include "generators/canopen/StackInitTexts.h"
#include "support/CCompiler.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace StackInitTexts;
using StackInitDevices::gateway;
using StackInitDevices::onCanFd;
using StackInitDevices::single;

using StackInitDevices::Build;
Q_DECLARE_METATYPE(Build)

namespace {

QString stackFile(const QString &name)
{
    return QStringLiteral(NODESMITH_TEST_GOLDEN "/../stack/") + name;
}

/** The prototypes of the functions that the devices name, as a stack for one line or several calls them. */
constexpr auto indications = R"(#include <co_canopen.h>
RET_T onLoad(CO_EVENT_PARA UNSIGNED8 subIndex);
void onGreen(CO_EVENT_PARA BOOL_T ledState);
void onCan(CO_EVENT_PARA CO_CAN_STATE_T canState);
RET_T onUsdoRead(CO_EVENT_PARA BOOL_T execute, UNSIGNED8 nodeId, UNSIGNED16 index, UNSIGNED8 subIndex);
)";
constexpr auto indicationBodies = R"(#include <gen_define.h>
#include <gen_indication.h>
#ifdef CAN_MULTI_LINE
#define IGNORE_LINE (void)canLine
#else
#define IGNORE_LINE
#endif
RET_T onLoad(CO_EVENT_PARA UNSIGNED8 subIndex)
{
    IGNORE_LINE;
    (void)subIndex;
    return RET_OK;
}
void onGreen(CO_EVENT_PARA BOOL_T ledState)
{
    IGNORE_LINE;
    (void)ledState;
}
void onCan(CO_EVENT_PARA CO_CAN_STATE_T canState)
{
    IGNORE_LINE;
    (void)canState;
}
RET_T onUsdoRead(CO_EVENT_PARA BOOL_T execute, UNSIGNED8 nodeId, UNSIGNED16 index, UNSIGNED8 subIndex)
{
    IGNORE_LINE;
    (void)execute;
    (void)nodeId;
    (void)index;
    (void)subIndex;
    return RET_OK;
}
)";

/** Builds the older stack for the form of the service structure that the project has; a newer one is told. */
void tellServiceStructure(DictionaryDesk &desk, bool v4)
{
    const bool hasVersion = desk.store.getGeneralSetting(u"new_init_structure"_s) == "1"_L1;
    desk.set(u"user_defines"_s, hasVersion && !v4 ? u"#define CO_SERVICES_HAVE_VERSION 1u"_s : QString());
}

Build with(const Build &build, const QString &key, const QString &value)
{
    return [=](DictionaryDesk &desk) {
        build(desk);
        desk.set(key, value);
    };
}

bool isMultiLine(const QString &text)
{
    return text.contains("canLineTable"_L1);
}

/** The application: starts the stack, loads the COB-IDs, prints the calls of both. */
QByteArray mainProgram(const QString &text)
{
    const bool isMulti = isMultiLine(text);
    const bool hasOptions = text.contains("coCanOpenStackInitPara("_L1);
    const bool isFd = text.contains("BOOL_T *pModes"_L1);
    const QString name = hasOptions ? u"coCanOpenStackInitPara"_s : u"coCanOpenStackInit"_s;
    QString program = u"#include <gen_define.h>\n#include \"od_runtime.h\"\n#include <stdio.h>\n"_s;
    program += u"RET_T %1(CO_EVENT_STORE_T pLoadFunction%2%3);\n"_s.arg(
        name, hasOptions ? u", CO_INIT_OPTION_T *pCoOptions"_s : QString(),
        isFd ? u", BOOL_T *pModes"_s : QString());
    const bool overwrites = text.contains("genLoadIndication"_L1);
    if (overwrites)
        program += u"RET_T genLoadIndication(CO_EVENT_PARA UNSIGNED8 subIndex);\n"_s;
    program += u"int main(void)\n{\n    RET_T result;\n"_s;
    if (hasOptions)
        program += u"    CO_INIT_OPTION_T options[] = { { 1 }, { 0 } };\n"_s;
    if (isFd)
        program += u"    BOOL_T modes[] = { CO_TRUE, CO_FALSE };\n"_s;
    program += u"    result = %1(NULL%2%3);\n"_s.arg(name, hasOptions ? u", options"_s : QString(),
                                                     isFd ? u", modes"_s : QString());
    if (overwrites)
        program += isMulti ? u"    if (result == RET_OK)\n        result = genLoadIndication(0, 1);\n"_s
                           : u"    if (result == RET_OK)\n        result = genLoadIndication(1);\n"_s;
    program += u"    printf(\"%sresult %d\\n\", odCalls(), (int)result);\n    return 0;\n}\n"_s;
    return program.toUtf8();
}

QByteArray j1939Program(int lines)
{
    QString program = u"#include <gen_define.h>\n#include \"od_runtime.h\"\n#include <stdio.h>\n"
                      "RET_T j1939OdInit(CO_LINE_PARA);\nint main(void)\n{\n"_s;
    if (lines == 1)
        program += u"    j1939OdInit();\n"_s;
    else
        for (int line = 0; line < lines; ++line)
            program += u"    j1939OdInit(%1);\n"_s.arg(line);
    program += u"    printf(\"%s\", odCalls());\n    return 0;\n}\n"_s;
    return program.toUtf8();
}

/** Calls of a line on classical CAN behind its object dictionary; the role decides on the last ones. */
QStringList serviceCalls(int line, bool isMulti, const QStringList &servers, const QString &lss,
                         const QString &nmt)
{
    QStringList calls{u"coOdInitOdPtr"_s};
    if (!isMulti)
        calls += u"coLedInit"_s;
    calls += servers;
    calls += {u"coSdoClientInit 1"_s,      u"coErrorCtrlInit 1000 1"_s, u"coEmcyProducerInit"_s,
              u"coSyncInit 128 20000 0"_s, u"coEmcyConsumerInit 2"_s,   u"coTimeInit 1 0"_s};
    calls += {u"coPdoTransmitInit 1 0 30 50 60 20000010/2"_s, u"coPdoTransmitInit 4 0 0 0 0 dynamic"_s,
              u"coPdoTransmitInit 5 0 0 0 0 dynamic"_s, u"coPdoReceiveInit 1 0 0 0 20000010/2"_s,
              u"coPdoReceiveInit 2 0 0 0 20000010/2"_s};
    calls += {u"coSrdInit"_s, u"coGfcInit 1 1"_s, u"coSrdoInit 1"_s};
    if (isMulti)
        calls += u"coLedInit"_s;
    calls += {u"isoTpInit"_s, u"coIdNegoInit"_s, u"coGuardingInit"_s, lss, nmt};
    for (QString &call : calls)
        call = u"call %1 %2"_s.arg(line).arg(call);
    return calls;
}

/** The COB-IDs that the load function sets on line 0, whose node-ID is 1 in the stand-in. */
QStringList overwriteCalls()
{
    QStringList calls;
    for (const QString &cobId :
         {u"4609 1 1537"_s, u"4609 2 1409"_s, u"4736 1 1537"_s, u"4736 2 1409"_s, u"5120 1 385"_s,
          u"5121 1 385"_s, u"6144 1 385"_s, u"6147 1 385"_s, u"6148 1 385"_s})
        calls.append(u"call 0 coOdSetCobid "_s + cobId);
    return calls;
}

} // namespace

/** The functions that start the stack, compiled and run with services that tell of their calls. */
class TestStackInitCompiled : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void everyFormCallsItsServices_data();
    void everyFormCallsItsServices();
    void smallDevicesCompileToo_data();
    void smallDevicesCompileToo();
    void aJ1939ServerGetsItsDictionary_data();
    void aJ1939ServerGetsItsDictionary();

private:
    static QString generate(DictionaryDesk &desk, bool v4);
    static QString build(const DictionaryDesk &desk, const QString &compiler, const QByteArray &program);
    static QStringList run(const DictionaryDesk &desk, const QString &compiler);
};

/** Writes gen_objdict.c, gen_define.h and what an application adds to them; gives gen_objdict.c. */
QString TestStackInitCompiled::generate(DictionaryDesk &desk, bool v4)
{
    tellServiceStructure(desk, v4);
    const std::unique_ptr<AbstractGenerator> defines =
        makeDefineGenerator({.kind = GeneratorKind::Define, .core = v4});
    defines->setDatabase(&desk.store);
    defines->setOutputDir(desk.folder.path());
    defines->setProjectName(u"Pump"_s);
    if (defines->startGeneration() != GeneratorStatus::Success)
        return {};
    defines->waitForEnd();
    desk.write(u"gen_indication.h"_s, indications);
    desk.write(u"indications.c"_s, indicationBodies);
    return desk.generate(v4);
}

QString TestStackInitCompiled::build(const DictionaryDesk &desk, const QString &compiler,
                                     const QByteArray &program)
{
    desk.write(u"main.c"_s, program);
    const QStringList runtime{stackFile(u"od_runtime.c"_s), stackFile(u"od_services.c"_s)};
    return CCompiler(compiler, desk.folder.path())
        .build(QStringList{u"gen_objdict.c"_s, u"indications.c"_s, u"main.c"_s} + runtime);
}

QStringList TestStackInitCompiled::run(const DictionaryDesk &desk, const QString &compiler)
{
    QStringList lines;
    const QByteArrayList printed = CCompiler(compiler, desk.folder.path()).run();
    for (const QByteArray &line : printed)
        if (!line.startsWith("call coreStackInit") && !line.startsWith("call coCanOpenStackVarInit"))
            lines.append(QString::fromUtf8(line));
    return lines;
}

void TestStackInitCompiled::everyFormCallsItsServices_data()
{
    QTest::addColumn<Build>("device");
    QTest::addColumn<bool>("v4");
    QTest::addColumn<QStringList>("calls");
    const auto add = [](const char *name, const Build &device, QStringList calls) {
        calls += overwriteCalls();
        calls += u"result 0"_s;
        QTest::addRow("%s, V4", name) << device << true << calls;
        QTest::addRow("%s, older", name) << device << false << calls;
    };
    const QStringList classicalServers{u"coSdoServerInit 1"_s, u"coSdoServerInit 2"_s};
    const QStringList usdoBoth{u"coUsdoServerInit"_s, u"coUsdoClientInit"_s};
    const QStringList oneServer{u"coSdoServerInit 1"_s};
    const auto slave = [](int line, bool isMulti, const QStringList &servers) {
        return serviceCalls(line, isMulti, servers, u"coLssInit"_s, u"coNmtInit 0"_s);
    };
    const auto master = [](int line, bool isMulti, const QStringList &servers) {
        return serviceCalls(line, isMulti, servers, u"coLssMasterInit"_s, u"coNmtInit 1"_s);
    };
    const Build forced = [](DictionaryDesk &desk) {
        single(desk);
        desk.setMisc(u"generateML"_s, u"true"_s);
    };
    add("slave", single, slave(0, false, classicalServers));
    add("master", with(single, u"nmtmaster"_s, u"1"_s), master(0, false, classicalServers));
    add("either", with(single, u"nmtmaster"_s, u"2"_s), master(0, false, classicalServers));
    add("older structures", with(single, u"new_init_structure"_s, u"0"_s), slave(0, false, classicalServers));
    add("CAN FD", onCanFd(single), slave(0, false, usdoBoth));
    add("CAN FD, older structures", with(onCanFd(single), u"new_init_structure"_s, u"0"_s),
        slave(0, false, usdoBoth));
    add("CAN FD, either", with(onCanFd(single), u"nmtmaster"_s, u"2"_s), master(0, false, usdoBoth));
    add("forced", forced, slave(0, true, classicalServers));
    add("gateway", with(gateway, u"nmtmaster"_s, u"0,1"_s),
        slave(0, true, classicalServers) + master(1, true, classicalServers));
    add("gateway, either", with(gateway, u"nmtmaster"_s, u"2"_s),
        master(0, true, classicalServers) + slave(1, true, classicalServers));
    add("gateway, older structures", with(gateway, u"new_init_structure"_s, u"0"_s),
        slave(0, true, classicalServers) + slave(1, true, classicalServers));
    add("gateway on CAN FD", onCanFd(gateway), slave(0, true, usdoBoth) + slave(1, true, oneServer));
    add("gateway on CAN FD, either", with(onCanFd(gateway), u"nmtmaster"_s, u"2"_s),
        master(0, true, usdoBoth) + slave(1, true, oneServer));
}

void TestStackInitCompiled::everyFormCallsItsServices()
{
    QFETCH(Build, device);
    QFETCH(bool, v4);
    DictionaryDesk desk;
    device(desk);
    const QString text = generate(desk, v4);
    for (const QString &compiler : CCompiler::programs()) {
        const QString messages = build(desk, compiler, mainProgram(text));
        QVERIFY2(messages.isEmpty(), qPrintable(messages));
        QTEST(run(desk, compiler), "calls");
    }
}

void TestStackInitCompiled::smallDevicesCompileToo_data()
{
    QTest::addColumn<Build>("device");
    QTest::addColumn<bool>("v4");
    const auto add = [](const char *name, const Build &device) {
        QTest::addRow("%s, V4", name) << device << true;
        QTest::addRow("%s, older", name) << device << false;
    };
    const Build small = [](DictionaryDesk &desk) {
        addUsualObjects(desk, 0);
        desk.set(u"line0type"_s, u"1"_s);
        desk.set(u"overwrite_predef"_s, u"1"_s); // of nothing
    };
    const Build smallGateway = [=](DictionaryDesk &desk) {
        small(desk);
        addUsualObjects(desk, 1);
        desk.set(u"line1type"_s, u"1"_s);
    };
    add("no objects", [](DictionaryDesk &desk) { desk.set(u"line0type"_s, u"1"_s); });
    add("two objects", small);
    add("two objects on CAN FD", with(small, u"canfd_supported"_s, u"1"_s));
    add("gateway", smallGateway);
    add("gateway on CAN FD", with(smallGateway, u"canfd_supported"_s, u"1"_s));
    add("static load function", with(small, u"fct_store"_s, u"onLoad"_s));
    add("load function in a gateway", with(smallGateway, u"fct_store"_s, u"onLoad"_s));
    add("load function registered at run time", with(small, u"event_store"_s, u"1"_s));
    add("routing", [=](DictionaryDesk &desk) {
        smallGateway(desk);
        desk.array(0x1F2C, {{.type = CAN::Unsigned32}});
    });
    add("lines of one object", [](DictionaryDesk &desk) {
        for (const quint8 line : {quint8(0), quint8(1)}) {
            desk.variable(0x1000, {.type = CAN::Integer24}, line);
            desk.set(u"line%1type"_s.arg(line), u"1"_s);
        }
    });
    add("fixed COB-IDs in a gateway", [=](DictionaryDesk &desk) {
        smallGateway(desk);
        desk.array(0x1400, {{.type = CAN::Unsigned32, .value = u"0x201"_s}}, 1);
    });
}

void TestStackInitCompiled::smallDevicesCompileToo()
{
    QFETCH(Build, device);
    QFETCH(bool, v4);
    DictionaryDesk desk;
    device(desk);
    generate(desk, v4);
    for (const QString &compiler : CCompiler::programs()) {
        const QString messages = CCompiler(compiler, desk.folder.path()).check({u"gen_objdict.c"_s});
        QVERIFY2(messages.isEmpty(), qPrintable(messages));
    }
}

void TestStackInitCompiled::aJ1939ServerGetsItsDictionary_data()
{
    QTest::addColumn<int>("lines");
    QTest::addColumn<bool>("v4");
    for (const bool v4 : {true, false}) {
        QTest::addRow("one line, %s", v4 ? "V4" : "older") << 1 << v4;
        QTest::addRow("two lines, %s", v4 ? "V4" : "older") << 2 << v4;
    }
}

void TestStackInitCompiled::aJ1939ServerGetsItsDictionary()
{
    QFETCH(int, lines);
    QFETCH(bool, v4);
    DictionaryDesk desk;
    QStringList calls;
    for (int line = 0; line < lines; ++line) {
        addUsualObjects(desk, quint8(line));
        desk.variable(0x3000, {.type = CAN::Integer24}, quint8(line));
        calls.append(u"call %1 coOdInitOdPtr"_s.arg(line));
    }
    desk.forJ1939Server = true;
    desk.set(u"fct_nmt"_s, u"onNmt"_s); // whose prototype the file does not include
    desk.generate(v4);
    desk.write(u"gen_define.h"_s,
               lines == 1 ? "/* one line */\n"
                          : "#define CAN_MULTI_LINE 1u\n#define CAN_MULTI_LINE_CNT 2u\n");
    desk.write(u"indications.c"_s, "typedef int NOTHING_T;\n");
    for (const QString &compiler : CCompiler::programs()) {
        const QString messages = build(desk, compiler, j1939Program(lines));
        QVERIFY2(messages.isEmpty(), qPrintable(messages));
        QCOMPARE(run(desk, compiler), calls);
    }
}

QTEST_GUILESS_MAIN(TestStackInitCompiled)
#include "tst_stackinitcompiled.moc"
