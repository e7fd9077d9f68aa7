#include "generators/canopen/GenDefineGenerator.h"
#include "generators/canopen/IndicationDesk.h"
#include "support/CCompiler.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace Indications;

namespace {

/** What the stack's sources do with functions that the object dictionary has no pointer for. */
constexpr auto otherPointers = R"(#include <gen_define.h>
#include <co_canopen.h>
#include <gen_indication.h>
#include <gen_indication.h>
CO_EVENT_SDO_SERVER_CHECK_WRITE_T const checkWrite = my_fct_sdo_server_check_write;
CO_EVENT_PDO_T const received = my_fct_pdo_receive;
CO_EVENT_PDO_T const synchronous = my_fct_pdo_sync;
CO_EVENT_USDO_SERVER_FINISHED_T const finished = my_usdo_server_read_finished_ind_function;
CO_EVENT_USDO_SERVER_CHECK_WRITE_T const checkUsdo = my_usdo_server_ind_check_write_function;
)";

/** One function for all lines, and a stack that calls it for each of them. */
constexpr auto gatewayProgram = R"(#include <gen_define.h>
#include <co_canopen.h>
#include <gen_indication.h>
#include <stdio.h>
void onSync(UNSIGNED8 canLine, UNSIGNED8 syncCounter)
{
    printf("%u/%u\n", (unsigned)canLine, (unsigned)syncCounter);
}
int main(void)
{
    CO_EVENT_SYNC_T const indication = onSync;
    UNSIGNED8 line;
    for (line = 0; line < CAN_MULTI_LINE_CNT; line++)
        indication(line, 7);
    return 0;
}
)";

void writeDefines(IndicationDesk &desk, bool v4)
{
    const std::unique_ptr<AbstractGenerator> defines =
        makeDefineGenerator({.kind = GeneratorKind::Define, .core = v4});
    defines->setDatabase(&desk.store);
    defines->setOutputDir(desk.folder.path());
    defines->setProjectName(u"Pump"_s);
    if (defines->startGeneration() == GeneratorStatus::Success)
        defines->waitForEnd();
}

} // namespace

/** What C compilers make of the prototypes and of the pointers that are set to the functions. */
class TestIndicationCompiled : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void everyFunctionFitsItsPointer_data();
    void everyFunctionFitsItsPointer();
    void aHeaderWithoutFunctionsCompiles();
    void oneFunctionOfSeveralItemsCompiles();
    void oneFunctionServesAllLines();
};

void TestIndicationCompiled::everyFunctionFitsItsPointer_data()
{
    QTest::addColumn<int>("lines");
    QTest::addColumn<bool>("forced");
    QTest::addColumn<bool>("v4");
    for (const bool v4 : {true, false}) {
        const char *const stack = v4 ? "V4" : "older";
        QTest::addRow("one line, %s", stack) << 1 << false << v4;
        QTest::addRow("one line in the form of several, %s", stack) << 1 << true << v4;
        QTest::addRow("two lines, %s", stack) << 2 << false << v4;
    }
}

void TestIndicationCompiled::everyFunctionFitsItsPointer()
{
    QFETCH(int, lines);
    QFETCH(bool, forced);
    QFETCH(bool, v4);
    IndicationDesk desk;
    nameEveryFunction(desk);
    for (int line = 0; line < lines; ++line) {
        desk.variable(0x1000, {.type = CAN::Unsigned32}, quint8(line));
        desk.variable(0x2000, {}, quint8(line));
        desk.set(u"line%1type"_s.arg(line), u"1"_s);
    }
    desk.set(u"new_init_structure"_s, v4 ? u"1"_s : u"0"_s);
    if (forced)
        desk.setMisc(u"generateML"_s, u"true"_s);
    writeDefines(desk, v4);
    QVERIFY(desk.header(v4).contains(u"my_fct_mpdo"_s));
    QVERIFY(desk.generate(v4).contains(u"coEventMPdoInd =my_fct_mpdo;\n"_s));
    desk.write(u"others.c"_s, otherPointers);
    for (const QString &compiler : CCompiler::programs()) {
        const QString messages =
            CCompiler(compiler, desk.folder.path()).check({u"gen_objdict.c"_s, u"others.c"_s});
        QVERIFY2(messages.isEmpty(), qPrintable(messages));
    }
}

void TestIndicationCompiled::aHeaderWithoutFunctionsCompiles()
{
    IndicationDesk desk;
    desk.header();
    desk.write(u"alone.c"_s, "#include <gen_indication.h>\n#include <gen_indication.h>\nint unit;\n");
    for (const QString &compiler : CCompiler::programs())
        QCOMPARE(CCompiler(compiler, desk.folder.path()).check({u"alone.c"_s}), QString());
}

void TestIndicationCompiled::oneFunctionOfSeveralItemsCompiles()
{
    IndicationDesk desk;
    desk.variable(0x1000, {.type = CAN::Unsigned32});
    desk.variable(0x2000, {});
    desk.set(u"line0type"_s, u"1"_s);
    for (const QString &key : {u"fct_store"_s, u"fct_store_clear"_s, u"fct_store_save"_s})
        desk.set(key, u"onStore"_s);
    desk.set(u"fct_led_green"_s, u"onLed"_s);
    desk.set(u"fct_led_red"_s, u"onLed"_s);
    desk.set(u"fct_time"_s, u"NULL"_s);
    writeDefines(desk, true);
    desk.header();
    desk.generate();
    for (const QString &compiler : CCompiler::programs()) {
        const QString messages = CCompiler(compiler, desk.folder.path()).check({u"gen_objdict.c"_s});
        QVERIFY2(messages.isEmpty(), qPrintable(messages));
    }
}

void TestIndicationCompiled::oneFunctionServesAllLines()
{
    IndicationDesk desk;
    for (const quint8 line : {quint8(0), quint8(1), quint8(2)}) {
        desk.addLine(line);
        desk.set(u"line%1type"_s.arg(line), u"1"_s);
    }
    desk.set(u"fct_sync"_s, u"onSync"_s);
    writeDefines(desk, true);
    desk.header();
    desk.write(u"main.c"_s, gatewayProgram);
    for (const QString &compiler : CCompiler::programs()) {
        const CCompiler c(compiler, desk.folder.path());
        QCOMPARE(c.build({u"main.c"_s}), QString());
        QCOMPARE(c.run(), (QByteArrayList{"0/7", "1/7", "2/7"}));
    }
}

QTEST_GUILESS_MAIN(TestIndicationCompiled)
#include "tst_indicationcompiled.moc"
