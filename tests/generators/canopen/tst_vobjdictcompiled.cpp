#include "generators/canopen/IndicationGenerator.h"
#include "generators/canopen/VirtualDevices.h"
#include "support/CCompiler.h"

#include <QRegularExpression>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

using Build = std::function<void(VirtualDesk &)>;
Q_DECLARE_METATYPE(Build)

namespace {

QString stackFile(const QString &name)
{
    return QStringLiteral(NODESMITH_TEST_GOLDEN "/../stack/") + name;
}

/** Writes all sources that the virtual dictionary stands beside; its text. */
QString generate(VirtualDesk &desk, bool v4)
{
    desk.set(u"new_init_structure"_s, v4 ? u"1"_s : u"0"_s);
    desk.defines(v4);
    desk.generate(v4);
    const std::unique_ptr<AbstractGenerator> indications =
        makeIndicationGenerator({.kind = GeneratorKind::Indication, .core = v4});
    desk.run(*indications, u"gen_indication.h"_s);
    return desk.dictionary(v4);
}

/** The application: fills every variable, prints its size, and then the dictionary. */
QByteArray program(const QString &dictionary)
{
    static const QRegularExpression definition(u"^(\\w+) CO_STORAGE_CLASS\t(\\w+);"_s,
                                               QRegularExpression::MultilineOption);
    QString declarations;
    QString statements;
    QRegularExpressionMatchIterator found = definition.globalMatch(dictionary);
    while (found.hasNext()) {
        const QRegularExpressionMatch match = found.next();
        declarations += u"extern %1 %2;\n"_s.arg(match.captured(1), match.captured(2));
        statements += u"    memset(&%1, 0xff, sizeof(%1));\n"
                      "    printf(\"%1 %u\\n\", (unsigned)sizeof(%1));\n"_s.arg(match.captured(2));
    }
    const QString text = u"#include \"vod_runtime.h\"\n#include <stdio.h>\n#include <string.h>\n"_s
        + declarations + u"int main(void)\n{\n"_s + statements + u"    vodPrint();\n    return 0;\n}\n"_s;
    return text.toUtf8();
}

// --- What the program prints of the devices --------------------------------------------------------

/** Lines of a log: suffix of its variables, place of its first variable of each type, attributes. */
QByteArrayList logVariables(const QByteArrayList &suffixes)
{
    QByteArrayList lines;
    const auto add = [&](const QByteArray &name, const QByteArray &size) {
        for (const QByteArray &suffix : suffixes)
            lines.append(name + suffix + ' ' + size);
    };
    add("V_2004_1", "1");
    add("V_2000_0", "2");
    for (const QByteArray &suffix : suffixes)
        for (const char sub : {'1', '2', '3', '4', '5'})
            lines.append(QByteArray("V_2003_") + sub + suffix + " 2");
    add("V_2001_0", "4");
    return lines;
}

QByteArrayList logRows(int line)
{
    QByteArrayList lines{"vod 2000:0 VAR 0 U16 VAR " + QByteArray::number(line) + " 0e7 2 1000 - -",
                         "vod 2001:0 VAR 0 R32 VAR " + QByteArray::number(line) + " 00b 4 00000000 - -",
                         "vod 2002:0 VAR 0 STRING_NULL VAR - 006 - - - -"};
    for (int sub = 1; sub <= 5; ++sub)
        lines.append("vod 2003:" + QByteArray::number(sub) + " ARRAY 5 I16 VAR "
                     + QByteArray::number(line * 5 + sub - 1) + " 007 2 -1 - -");
    lines.append("vod 2004:1 ARRAY 2 U8 VAR " + QByteArray::number(line) + " 007 1 2 - -");
    return lines;
}

QByteArrayList gatewayLines()
{
    const QByteArray shared = "vod 3000:0 VAR 0 U64 VAR 0 006 8 7 - -";
    QByteArrayList variables = logVariables({"_l0", "_l1"});
    variables.insert(4, "V_3000_0_l0 8"); // behind the types of 16 bits
    return variables + logRows(0) + QByteArrayList{shared} + logRows(1) + QByteArrayList{shared};
}

QByteArrayList compactLines()
{
    QByteArrayList lines = logVariables({""});
    lines +=
        {"vod 2000:0 VAR 0 U16 VAR 0 2e7 2 1000 10 60000", "vod 2001:0 VAR 0 R32 VAR 0 20b 4 00000000 - -",
         "vod 2002:0 VAR 0 STRING_NULL VAR - 206 - - - -"};
    for (int sub = 1; sub <= 5; ++sub)
        lines.append("vod 2003:" + QByteArray::number(sub) + " ARRAY 5 I16 VAR " + QByteArray::number(sub - 1)
                     + " 307 2 -1 - -");
    lines.append("vod 2004:1 ARRAY 2 U8 VAR 0 207 1 2 - -");
    return lines;
}

QByteArrayList everyTypeLines()
{
    return {"V_2000_0 1",
            "V_2000_4 1",
            "V_2000_14 1",
            "V_2000_5 2",
            "V_2000_9 3",
            "V_2000_6 4",
            "V_2000_10 5",
            "V_2000_11 6",
            "V_2000_13 6",
            "V_2000_12 8",
            "V_2000_1 1",
            "V_2000_2 2",
            "V_2000_8 3",
            "V_2000_3 4",
            "V_2000_7 4",
            "vod 2000:0 STRUCT 18 BOOL VAR 0 047 1 20 0 100",
            "vod 2000:1 STRUCT 18 I8 VAR 0 047 1 21 1 101",
            "vod 2000:2 STRUCT 18 I16 VAR 0 047 2 22 2 102",
            "vod 2000:3 STRUCT 18 I32 VAR 0 047 4 23 3 103",
            "vod 2000:4 STRUCT 18 U8 VAR 1 047 1 24 4 104",
            "vod 2000:5 STRUCT 18 U16 VAR 0 047 2 25 5 105",
            "vod 2000:6 STRUCT 18 U32 VAR 0 047 4 26 6 106",
            "vod 2000:7 STRUCT 18 R32 VAR 0 047 4 41d80000 40e00000 42d60000",
            "vod 2000:8 STRUCT 18 I24 VAR 0 046 3 - - -",
            "vod 2000:9 STRUCT 18 U24 VAR 0 047 3 29 9 109",
            "vod 2000:10 STRUCT 18 U40 VAR 0 046 5 30 10 110",
            "vod 2000:11 STRUCT 18 U48 VAR 0 046 6 31 11 111",
            "vod 2000:12 STRUCT 18 U64 VAR 0 046 8 32 12 112",
            "vod 2000:13 STRUCT 18 U48 VAR 1 046 6 33 13 113",
            "vod 2000:14 STRUCT 18 U8 VAR 2 046 1 34 14 114",
            "vod 2000:15 STRUCT 18 STRING_NULL VAR - 046 - - - -",
            "vod 2000:16 STRUCT 18 OCTET_STRING VAR - 046 - - - -",
            "vod 2000:17 STRUCT 18 UTF8 VAR - 046 - - - -",
            "vod 2000:18 STRUCT 18 DOMAIN VAR - 046 - - - -"};
}

} // namespace

/** gen_vobjdict.c beside the other generated sources, compiled and walked through. */
class TestVobjDictCompiled : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void everyVirtualSubIndexIsFound_data();
    void everyVirtualSubIndexIsFound();
    void rowsWithoutAnObjectCompile();
};

void TestVobjDictCompiled::everyVirtualSubIndexIsFound_data()
{
    QTest::addColumn<Build>("build");
    QTest::addColumn<bool>("v4");
    QTest::addColumn<QByteArrayList>("lines");
    const auto add = [](const char *name, const Build &build, const QByteArrayList &lines) {
        QTest::addRow("%s, V4", name) << build << true << lines;
        QTest::addRow("%s, older", name) << build << false << lines;
    };
    add("one line", VirtualDevices::logger, logVariables({""}) + logRows(0));
    add("one line in the form of several", VirtualDevices::forcedLogger, logVariables({""}) + logRows(0));
    add("two lines", VirtualDevices::gateway, gatewayLines());
    add("compact arrays and limits", VirtualDevices::compactLogger, compactLines());
    add("every type", VirtualDevices::everyType, everyTypeLines());
}

void TestVobjDictCompiled::everyVirtualSubIndexIsFound()
{
    QFETCH(Build, build);
    QFETCH(bool, v4);
    VirtualDesk desk;
    build(desk);
    desk.write(u"main.c"_s, program(generate(desk, v4)));
    for (const QString &compiler : CCompiler::programs()) {
        const CCompiler c(compiler, desk.folder.path());
        const QString messages =
            c.build({u"gen_vobjdict.c"_s, u"gen_objdict.c"_s, u"main.c"_s, stackFile(u"vod_runtime.c"_s),
                     stackFile(u"od_runtime.c"_s), stackFile(u"od_services.c"_s)});
        QVERIFY2(messages.isEmpty(), qPrintable(messages));
        QTEST(c.run(), "lines");
    }
}

// A shared object whose owner has nothing virtual.
void TestVobjDictCompiled::rowsWithoutAnObjectCompile()
{
    VirtualDesk desk;
    VirtualDevices::addLog(desk, 1);
    Entry shared = VirtualDesk::value(CAN::Unsigned8);
    shared.shared = true;
    VirtualDesk alone;
    alone.object(0x2000, {shared, VirtualDesk::value(CAN::Unsigned8)}, CANopen::Record, 1);
    desk.object(0x3000, {shared, VirtualDesk::value(CAN::Unsigned8)}, CANopen::Record, 1);
    for (VirtualDesk *project : {&desk, &alone}) {
        project->set(u"line0type"_s, u"1"_s);
        project->set(u"line1type"_s, u"1"_s);
        generate(*project, true);
        for (const QString &compiler : CCompiler::programs()) {
            const CCompiler c(compiler, project->folder.path());
            QCOMPARE(c.check({u"gen_vobjdict.c"_s, u"gen_objdict.c"_s}), QString());
        }
    }
}

QTEST_GUILESS_MAIN(TestVobjDictCompiled)
#include "tst_vobjdictcompiled.moc"
