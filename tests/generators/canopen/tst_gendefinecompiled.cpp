#include "DefineProjects.h"
#include "support/CCompiler.h"

using namespace Qt::StringLiterals;

namespace {

/** A C program that prints the values of macros, those of lists element by element. */
QByteArray readerOf(const QStringList &numbers, const QStringList &lists)
{
    QString text = u"#include <stddef.h>\n#include <stdio.h>\n#include \"gen_define.h\"\n"
                   "#include \"gen_define.h\"\n\nint main(void)\n{\n"_s;
    for (const QString &macro : numbers)
        text += u"    printf(\"%1 %lu\\n\", (unsigned long)(%1));\n"_s.arg(macro);
    for (const QString &macro : lists)
        text += u"    { const unsigned long list[] = { %1 }; size_t i; printf(\"%1\");\n"
                "      for (i = 0; i < sizeof(list) / sizeof(list[0]); ++i) { printf(\" %lu\", list[i]); }\n"
                "      printf(\"\\n\"); }\n"_s.arg(macro);
    return (text + u"    return 0;\n}\n"_s).toUtf8();
}

/** Splits the macros of a file into those of numbers and those of lists. */
void sortMacros(const QStringList &lines, QStringList &numbers, QStringList &lists, QStringList &values)
{
    for (const QString &line : lines) {
        if (!line.startsWith(u"#define "_s))
            continue;
        const QString macro = line.section(u' ', 1).section(u'\t', 0, 0).section(u' ', 0, 0);
        QString value = line.mid(8 + macro.size()).trimmed();
        if (macro == u"GEN_TOOL_NAME"_s || value.contains(u"NULL"_s))
            continue;
        const bool isList = value.contains(u',') || macro.contains(u"COUNTS"_s) || macro == u"CO_NODE_IDS"_s;
        (isList ? lists : numbers).append(macro);
        if (!value.contains(u"_CNT"_s) && !value.startsWith(u"CO_"_s))
            values.append(macro + u' ' + value.remove(u"ul"_s).remove(u'u').replace(u',', u' '));
    }
}

/** The blank-separated texts without those of a longer number form. */
QByteArray decimal(const QByteArray &line)
{
    QByteArrayList words = line.simplified().split(' ');
    for (QByteArray &word : words)
        if (word.startsWith("0x"))
            word = QByteArray::number(word.toULongLong(nullptr, 16));
    return words.join(' ');
}

} // namespace

/** What C compilers make of the file. */
class TestGenDefineCompiled : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void everyFormCompilesIncludedTwice_data() { addRows(); }
    void everyFormCompilesIncludedTwice();
    void everyValueReadsBack_data() { addRows(); }
    void everyValueReadsBack();
    void aTargetIsChosenByTheBuild();
    void theInitStructureTakesTheLists_data();
    void theInitStructureTakesTheLists();

private:
    static void addRows();
};

void TestGenDefineCompiled::addRows()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("compiler");
    QTest::addColumn<bool>("v4");
    for (std::size_t i = 0; i < std::size(DefineProjects::all); ++i)
        for (const QString &program : CCompiler::programs())
            for (const bool v4 : {true, false})
                QTest::addRow("%s, %s, %s", DefineProjects::all[i].name, qPrintable(program),
                              v4 ? "V4" : "older")
                    << int(i) << program << v4;
}

void TestGenDefineCompiled::everyFormCompilesIncludedTwice()
{
    QFETCH(int, number);
    QFETCH(QString, compiler);
    QFETCH(bool, v4);
    DefineDesk desk({0});
    DefineProjects::choose(number).build(desk);
    QVERIFY(desk.generate(v4).contains("#endif /* GEN_DEFINE_H */"));
    const CCompiler c(compiler, desk.folder.path());
    QVERIFY(c.write(u"twice.c"_s,
                    "#include \"gen_define.h\"\n#include \"gen_define.h\"\n"
                    "#ifndef GEN_DEFINE_H\n#error not there\n#endif\nint unit;\n"));
    QCOMPARE(c.check({u"twice.c"_s}), QString());
}

void TestGenDefineCompiled::everyValueReadsBack()
{
    QFETCH(int, number);
    QFETCH(QString, compiler);
    QFETCH(bool, v4);
    DefineDesk desk({0});
    DefineProjects::choose(number).build(desk);
    desk.set(u"all_targets"_s, u"0"_s);
    QStringList numbers;
    QStringList lists;
    QStringList values;
    sortMacros(desk.lines(v4), numbers, lists, values);
    QVERIFY(values.size() > 5);
    const CCompiler c(compiler, desk.folder.path());
    QVERIFY(c.write(u"reader.c"_s, readerOf(numbers, lists)));
    QCOMPARE(c.build({u"reader.c"_s}), QString());
    const QByteArrayList printed = c.run();
    QCOMPARE(printed.size(), numbers.size() + lists.size());
    for (const QString &value : std::as_const(values))
        QVERIFY2(printed.contains(decimal(value.toUtf8())), qPrintable(value));
}

void TestGenDefineCompiled::aTargetIsChosenByTheBuild()
{
    DefineDesk desk({0});
    DefineProjects::buildTargets(desk);
    QVERIFY(desk.generate().contains("#ifdef TARGET_1\n"));
    const CCompiler c(u"gcc"_s, desk.folder.path());
    QVERIFY(c.write(u"target.c"_s,
                    "#define TARGET_1\n#include \"gen_define.h\"\n#include <stdio.h>\n"
                    "int main(void) { printf(\"%u %u\\n\", CORE_TIMER_INTERVAL, "
                    "CORE_BIG_ENDIAN); return 0; }\n"
                    "#ifdef CORE_DRV_FILTER\n#error of the other target\n#endif\n"));
    QCOMPARE(c.build({u"target.c"_s}), QString());
    QCOMPARE(c.run(), QByteArrayList{"2000 1"});
}

void TestGenDefineCompiled::theInitStructureTakesTheLists_data()
{
    QTest::addColumn<QString>("ids");
    QTest::addColumn<QString>("functions");
    QTest::newRow("all") << u"1,2,3"_s << u"dip,dip,dip"_s;
    QTest::newRow("none") << QString() << QString();
    QTest::newRow("gaps") << u",2,"_s << u"dip,,dip"_s;
}

// A list with an empty element would be no initialiser.
void TestGenDefineCompiled::theInitStructureTakesTheLists()
{
    QFETCH(QString, ids);
    QFETCH(QString, functions);
    DefineDesk desk({1, 2, 1});
    desk.set(u"co_node_id"_s, ids);
    desk.set(u"co_node_id_fct"_s, functions);
    QVERIFY(desk.generate().contains("#define CAN_MULTI_LINE_CNT\t3u\n"));
    const QByteArray program = R"(#include <stddef.h>
#include "gen_define.h"

unsigned char dip(void);

typedef struct {
    unsigned char nodeIds[CAN_MULTI_LINE_CNT];
    unsigned char (*nodeIdFunctions[CAN_MULTI_LINE_CNT])(void);
    unsigned short objects[CAN_MULTI_LINE_CNT];
    unsigned short guarding[CAN_MULTI_LINE_CNT];
    unsigned short cobs[CAN_MULTI_LINE_CNT];
} INIT_T;

const INIT_T initVars = {
    { CO_NODE_IDS },
    { CO_NODE_ID_FUNCTIONS },
    { CO_OBJECT_COUNTS },
    { CO_GUARDING_COUNTS },
    { CORE_COB_COUNTS }
};
)";
    for (const QString &compiler : CCompiler::programs()) {
        const CCompiler c(compiler, desk.folder.path());
        QVERIFY(c.write(u"init.c"_s, program));
        QCOMPARE(c.check({u"init.c"_s}), QString());
    }
}

QTEST_GUILESS_MAIN(TestGenDefineCompiled)
#include "tst_gendefinecompiled.moc"
