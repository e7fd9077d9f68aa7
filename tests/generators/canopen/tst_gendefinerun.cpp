#include "generators/RunDesk.h"
#include "generators/canopen/GenDefineGenerator.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto start = "/* user-specific section: start */\n";
constexpr auto end = "/* user-specific section: end */\n";

/** A desk whose runs have the real generator of gen_define.h. */
class DefineRunDesk : public RunDesk
{
public:
    explicit DefineRunDesk(const QList<int> &lineTypes) : RunDesk(lineTypes)
    {
        qputenv("SOURCE_DATE_EPOCH", "1700000000");
        GeneratorFactories factories;
        factories.add(GeneratorKind::Define, makeDefineGenerator);
        handler.setFactories(factories);
    }
};

} // namespace

/** gen_define.h as a step of a generation run. */
class TestGenDefineRun : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void theRunReportsTheUserSection_data();
    void theRunReportsTheUserSection();
    void theProjectChoosesTheDialect();
    void protocolsOfTheRunReachTheFile();
    void chosenLineEndsKeepTheSection_data();
    void chosenLineEndsKeepTheSection();
    void aDamagedSectionIsToldAndKept();
};

void TestGenDefineRun::theRunReportsTheUserSection_data()
{
    QTest::addColumn<QByteArray>("section");
    QTest::addColumn<QString>("message");
    QTest::newRow("none") << QByteArray() << QString();
    QTest::newRow("blanks only") << QByteArray("\n  \n") << QString();
    QTest::newRow("text") << QByteArray("\n  #define A 1\n#define B 2\n\n")
                          << u"gen_define.h contains user section:\n#define A 1\n#define B 2"_s;
}

void TestGenDefineRun::theRunReportsTheUserSection()
{
    QFETCH(QByteArray, section);
    QFETCH(QString, message);
    DefineRunDesk desk({1});
    const QByteArray marked = start + section + end;
    desk.write(u"gen_define.h"_s, marked);
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    QVERIFY(desk.read(u"gen_define.h"_s).contains(marked));
    QCOMPARE(desk.output.all.filter(u"user section"_s),
             message.isEmpty() ? QStringList() : QStringList(message));
}

void TestGenDefineRun::theProjectChoosesTheDialect()
{
    DefineRunDesk desk({1});
    desk.run();
    QVERIFY(desk.read(u"gen_define.h"_s).contains("#define CO_COB_COUNTS 0\n"));
    desk.set(u"use_core_headers"_s, u"V4"_s);
    desk.run();
    QVERIFY(desk.read(u"gen_define.h"_s).contains("#define CORE_COB_COUNTS 0\n"));
}

void TestGenDefineRun::protocolsOfTheRunReachTheFile()
{
    DefineRunDesk desk({1, 2});
    desk.set(u"use_core_headers"_s, u"V4"_s);
    desk.run();
    const QByteArray file = desk.read(u"gen_define.h"_s);
    QVERIFY(file.contains("/* J1939 Defines */\n"));
    QVERIFY(file.contains("#define GEN_J1939_INIT_STRUCT_VERSION \t1u\n"));
    QVERIFY(file.contains("#define CAN_MULTI_LINE_CNT\t2u\n"));
}

void TestGenDefineRun::chosenLineEndsKeepTheSection_data()
{
    QTest::addColumn<int>("choice");
    QTest::addColumn<QByteArray>("lineEnd");
    QTest::newRow("as they are") << 0 << QByteArray("\n");
    QTest::newRow("CR LF") << 1 << QByteArray("\r\n");
    QTest::newRow("LF") << 2 << QByteArray("\n");
    QTest::newRow("CR") << 3 << QByteArray("\r");
}

void TestGenDefineRun::chosenLineEndsKeepTheSection()
{
    QFETCH(int, choice);
    QFETCH(QByteArray, lineEnd);
    DefineRunDesk desk({1});
    RunDesk::setUser(u"General/line_ending_index"_s, choice);
    const QByteArray section = QByteArray(start) + "#define A 1\n\n#define B 2\n" + end;
    desk.write(u"gen_define.h"_s, section);
    desk.run();
    const QByteArray first = desk.read(u"gen_define.h"_s);
    QVERIFY(first.contains(QByteArray(section).replace("\n", lineEnd)));
    for (int run = 0; run < 3; ++run) {
        desk.run();
        QCOMPARE(desk.read(u"gen_define.h"_s), first);
    }
}

void TestGenDefineRun::aDamagedSectionIsToldAndKept()
{
    DefineRunDesk desk({1});
    const QByteArray damaged = QByteArray("#define A 1\n") + end;
    desk.write(u"gen_define.h"_s, damaged);
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    QCOMPARE(desk.read(u"gen_define.h"_s), damaged);
    QCOMPARE(desk.output.all.filter(u"ERROR - Generation of gen_define.h failed."_s).size(), 1);
}

QTEST_GUILESS_MAIN(TestGenDefineRun)
#include "tst_gendefinerun.moc"
