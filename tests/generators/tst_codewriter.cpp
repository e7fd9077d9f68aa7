#include "generators/CodeWriter.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>
#include <QTextStream>

#include <functional>
#include <limits>

using namespace Qt::StringLiterals;

using Misuse = std::function<void()>;

namespace {

/** What a template gives for the values. */
QString filled(const QString &text, std::initializer_list<TemplateValue> values = {})
{
    const TemplateText parsed(text);
    QString result;
    CodeWriter(result).fill(parsed, values);
    return result;
}

/** Mistakes in a generator's source that must end the program, by their names. */
const QList<QPair<QString, Misuse>> &misuses()
{
    static const QList<QPair<QString, Misuse>> list{
        {u"flawed"_s, [] { const TemplateText text(u"a $b"_s); }},
        {u"missing"_s,
         [] {
             filled(u"$a$ $b$"_s, {{u"a", 1}});
         }},
        {u"unknown"_s,
         [] {
             filled(u"$a$"_s, {{u"a", 1}, {u"c", 1}});
         }},
        {u"twice"_s,
         [] {
             filled(u"$a$ $b$"_s, {{u"a", 1}, {u"a", 2}});
         }},
    };
    return list;
}

} // namespace

/** Templates of generated text and the writer that fills them. */
class TestCodeWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fixedTextStandsAsItIs_data();
    void fixedTextStandsAsItIs();
    void valuesStandAtTheirPlaceholders();
    void numbersOfAllWidthsAreDecimal();
    void aPlaceholderMayAppearTwice();
    void twoDollarsAreOne();
    void valuesAreNoTemplates();
    void aBlockStandsWhereItsPlaceholderDoes();
    void anEmptyBlockTakesItsLineAway_data();
    void anEmptyBlockTakesItsLineAway();
    void anEmptyValueLeavesItsLine();
    void aBlockMayLeaveItsLastLineOpen();
    void linesOfABlockAreIndented();
    void blocksNestTheirIndents();
    void aBlockInsideALineDoesNotIndent();
    void blocksMayFillTemplates();
    void elementsAreJoined();
    void textIsAppended();
    void aStreamTakesTheSameText();
    void theWriterCountsWhatItWrote();
    void flawsOfTemplatesAreFound_data();
    void flawsOfTemplatesAreFound();
    void mismatchesOfValuesAreFound_data();
    void mismatchesOfValuesAreFound();
    void aMistakeEndsTheProgram_data();
    void aMistakeEndsTheProgram();
};

void TestCodeWriter::fixedTextStandsAsItIs_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("tabs and double blanks") << u"\t\t{  a,\t b }"_s;
    QTest::newRow("blanks at line ends") << u"a \n b \t\n  \n"_s;
    QTest::newRow("empty lines") << u"\n\n\na\n\n"_s;
    QTest::newRow("no line end") << u"#endif"_s;
    QTest::newRow("percent signs and braces") << u"%1 {} \\n %s"_s;
    QTest::newRow("non-ASCII") << u"\u00e4\U0001F600"_s;
}

void TestCodeWriter::fixedTextStandsAsItIs()
{
    QFETCH(QString, text);
    QCOMPARE(filled(text), text);
}

void TestCodeWriter::valuesStandAtTheirPlaceholders()
{
    const QString name = u"speed"_s;
    QCOMPARE(filled(u"static $type$\tod_$name$[$count$] = {\n"_s,
                    {{u"type", u"UNSIGNED8"}, {u"name", name}, {u"count", 3}}),
             u"static UNSIGNED8\tod_speed[3] = {\n"_s);
    QCOMPARE(filled(u"$b$$a$"_s, {{u"a", u"1"}, {u"b", u"2"}}), u"21"_s);
    QCOMPARE(filled(u"$sum$"_s, {{u"sum", name + u'+' + name}}), u"speed+speed"_s);
}

void TestCodeWriter::numbersOfAllWidthsAreDecimal()
{
    QCOMPARE(filled(u"$a$ $b$ $c$ $d$ $e$"_s,
                    {{u"a", quint8(200)},
                     {u"b", -5},
                     {u"c", std::numeric_limits<qint64>::min()},
                     {u"d", std::numeric_limits<quint64>::max()},
                     {u"e", 0U}}),
             u"200 -5 -9223372036854775808 18446744073709551615 0"_s);
    QString text;
    CodeWriter(text) << 12 << u'-' << quint16(65535);
    QCOMPARE(text, u"12-65535"_s);
}

void TestCodeWriter::aPlaceholderMayAppearTwice()
{
    QCOMPARE(filled(u"$n$: $n$, $m$, $n$"_s, {{u"n", 1}, {u"m", 2}}), u"1: 1, 2, 1"_s);
}

void TestCodeWriter::twoDollarsAreOne()
{
    QCOMPARE(filled(u"$$NODEID$$ $a$$$$b$"_s, {{u"a", 1}, {u"b", 2}}), u"$NODEID$ 1$2"_s);
}

void TestCodeWriter::valuesAreNoTemplates()
{
    QCOMPARE(filled(u"$a$ $b$"_s, {{u"a", u"$b$ %1"}, {u"b", u"$$"}}), u"$b$ %1 $$"_s);
}

void TestCodeWriter::aBlockStandsWhereItsPlaceholderDoes()
{
    const auto rows = [](CodeWriter &out) { out << u"\ta,\n" << u"\tb\n"; };
    QCOMPARE(filled(u"= {\n$rows$\n};\n"_s, {{u"rows", rows}}), u"= {\n\ta,\n\tb\n};\n"_s);
    const auto inLine = [](CodeWriter &out) { out << u"1, " << 2; };
    QCOMPARE(filled(u"{ $list$ };\n"_s, {{u"list", inLine}}), u"{ 1, 2 };\n"_s);
}

void TestCodeWriter::anEmptyBlockTakesItsLineAway_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("result");
    QTest::newRow("between lines") << u"a\n$block$\nb\n"_s << u"a\nb\n"_s;
    QTest::newRow("first line") << u"$block$\nb\n"_s << u"b\n"_s;
    QTest::newRow("last line") << u"a\n$block$\n"_s << u"a\n"_s;
    QTest::newRow("twice") << u"a\n$block$\n$block$\nb"_s << u"a\nb"_s;
    QTest::newRow("indented") << u"a\n \t$block$\nb"_s << u"a\nb"_s;
    QTest::newRow("empty lines around stay") << u"a\n\n$block$\n\nb"_s << u"a\n\n\nb"_s;
    QTest::newRow("not alone on its line") << u"a\n$block$;\nb"_s << u"a\n;\nb"_s;
    QTest::newRow("a blank behind it") << u"a\n$block$ \nb"_s << u"a\n \nb"_s;
    QTest::newRow("behind text") << u"a $block$\nb"_s << u"a \nb"_s;
    QTest::newRow("two on a line") << u"a\n$block$$block$\nb"_s << u"a\n\nb"_s;
    QTest::newRow("without line end") << u"a\n$block$"_s << u"a\n"_s;
}

void TestCodeWriter::anEmptyBlockTakesItsLineAway()
{
    QFETCH(QString, text);
    QTEST(filled(text, {{u"block", [](CodeWriter &) {}}}), "result");
}

void TestCodeWriter::anEmptyValueLeavesItsLine()
{
    QCOMPARE(filled(u"a\n$value$\nb\n"_s, {{u"value", u""}}), u"a\n\nb\n"_s);
    QCOMPARE(filled(u"a\n\t$value$\nb\n"_s, {{u"value", QString()}}), u"a\n\t\nb\n"_s);
    QCOMPARE(filled(u"a\n\t$value$\nb\n"_s, {{u"value", 0}}), u"a\n\t0\nb\n"_s);
}

void TestCodeWriter::aBlockMayLeaveItsLastLineOpen()
{
    const auto open = [](CodeWriter &out) { out << u"x,\ny"; };
    QCOMPARE(filled(u"{\n$rows$\n}"_s, {{u"rows", open}}), u"{\nx,\ny\n}"_s);
    const auto emptyLine = [](CodeWriter &out) { out << u"x\n\n"; };
    QCOMPARE(filled(u"{\n$rows$\n}"_s, {{u"rows", emptyLine}}), u"{\nx\n\n}"_s);
}

void TestCodeWriter::linesOfABlockAreIndented()
{
    const auto check = [](CodeWriter &out) {
        out << u"if (retVal != RET_OK) {\n    return(retVal);\n"
            << u"}\n\n"
            << u"CORE_HANDLE_" << u"WATCHDOG\n";
    };
    QCOMPARE(
        filled(u"{\n    $check$\n}\n"_s, {{u"check", check}}),
        u"{\n    if (retVal != RET_OK) {\n        return(retVal);\n    }\n\n    CORE_HANDLE_WATCHDOG\n}\n"_s);
    QCOMPARE(filled(u"\t $check$\n}"_s, {{u"check", [](CodeWriter &out) { out << 1 << u"\n"
                                                                              << 2; }}}),
             u"\t 1\n\t 2\n}"_s);
}

void TestCodeWriter::blocksNestTheirIndents()
{
    static const TemplateText inner(u"b {\n\t$deep$\n}\n"_s);
    const auto deep = [](CodeWriter &out) { out << u"c\nd\n"; };
    const auto middle = [&](CodeWriter &out) {
        out.fill(inner, {{u"deep", deep}});
        out << u"e\n";
    };
    QCOMPARE(filled(u"a\n  $middle$\nf\n"_s, {{u"middle", middle}}),
             u"a\n  b {\n  \tc\n  \td\n  }\n  e\nf\n"_s);
}

void TestCodeWriter::aBlockInsideALineDoesNotIndent()
{
    const auto lines = [](CodeWriter &out) { out << u"1,\n2"; };
    QCOMPARE(filled(u"  x = $lines$;\n"_s, {{u"lines", lines}}), u"  x = 1,\n2;\n"_s);
}

void TestCodeWriter::blocksMayFillTemplates()
{
    static const TemplateText row(u"\t{ $index$, $count$u }"_s);
    const QList<int> counts{3, 1, 2};
    const auto rows = [&](CodeWriter &out) {
        int index = 0;
        out.join(counts, u",\n", [&](int count) { out.fill(row, {{u"index", index++}, {u"count", count}}); });
    };
    QCOMPARE(filled(u"table[$size$] = {\n$rows$\n};\n"_s, {{u"size", counts.size()}, {u"rows", rows}}),
             u"table[3] = {\n\t{ 0, 3u },\n\t{ 1, 1u },\n\t{ 2, 2u }\n};\n"_s);
}

void TestCodeWriter::elementsAreJoined()
{
    const auto joined = [](const QList<int> &list) {
        QString text;
        CodeWriter out(text);
        out.join(list, u", ", [&](int number) { out << number; });
        return text;
    };
    QCOMPARE(joined({}), QString());
    QCOMPARE(joined({1}), u"1"_s);
    QCOMPARE(joined({1, 2, 3}), u"1, 2, 3"_s);
}

void TestCodeWriter::textIsAppended()
{
    QString text = u"begun "_s;
    CodeWriter out(text);
    out << u"and " << u"went on"_s;
    out.fill(TemplateText(u".$end$"_s), {{u"end", u"\n"}});
    QCOMPARE(text, u"begun and went on.\n"_s);
}

void TestCodeWriter::aStreamTakesTheSameText()
{
    static const TemplateText text(u"a \t$n$\n\t$block$\n$gone$\n\u00e4$n$"_s);
    const auto write = [](CodeWriter &out) {
        out << u"before\n";
        out.fill(text,
                 {{u"n", -7},
                  {u"block", [](CodeWriter &block) { block << u"x\ny"; }},
                  {u"gone", [](CodeWriter &) {}}});
    };
    QString direct;
    CodeWriter directWriter(direct);
    write(directWriter);
    QByteArray bytes;
    QTextStream stream(&bytes);
    CodeWriter streamWriter(stream);
    write(streamWriter);
    stream.flush();
    QCOMPARE(direct, u"before\na \t-7\n\tx\n\ty\n\u00e4-7"_s);
    QCOMPARE(QString::fromUtf8(bytes), direct);
}

void TestCodeWriter::theWriterCountsWhatItWrote()
{
    QString text = u"before"_s;
    CodeWriter out(text);
    QCOMPARE(out.size(), 0);
    out << u"12345" << 67;
    QCOMPARE(out.size(), 7);
    out << u"";
    QCOMPARE(out.size(), 7);
}

void TestCodeWriter::flawsOfTemplatesAreFound_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("flaw");
    QTest::newRow("none") << u"a $b$ $$ $C_3$"_s << QString();
    QTest::newRow("not closed") << u"a\nb $c\nd"_s << u"line 2: a placeholder is not closed"_s;
    QTest::newRow("a dollar at the end") << u"a$"_s << u"line 1: a placeholder is not closed"_s;
    QTest::newRow("a blank in a name") << u"\n\n$NODEID + $x$"_s << u"line 3: \"NODEID + \" is no name"_s;
    QTest::newRow("a line end in a name") << u"$a\nb$"_s << u"line 1: \"a\nb\" is no name"_s;
    QTest::newRow("no letter of a name") << u"$\u00e4$"_s << u"line 1: \"\u00e4\" is no name"_s;
}

void TestCodeWriter::flawsOfTemplatesAreFound()
{
    QFETCH(QString, text);
    QTEST(TemplateText::flaw(text), "flaw");
}

void TestCodeWriter::mismatchesOfValuesAreFound_data()
{
    QTest::addColumn<QStringList>("values");
    QTest::addColumn<QString>("mismatch");
    QTest::newRow("none") << QStringList{u"b"_s, u"a"_s} << QString();
    QTest::newRow("no value") << QStringList{u"a"_s} << u"$b$ has no value"_s;
    QTest::newRow("no placeholder") << QStringList{u"a"_s, u"b"_s, u"c"_s}
                                    << u"there is no placeholder $c$"_s;
    QTest::newRow("two values") << QStringList{u"a"_s, u"b"_s, u"a"_s} << u"$a$ has two values"_s;
    QTest::newRow("misspelt") << QStringList{u"a"_s, u"B"_s}
                              << u"$b$ has no value; there is no placeholder $B$"_s;
}

void TestCodeWriter::mismatchesOfValuesAreFound()
{
    QFETCH(QStringList, values);
    const TemplateText text(u"$a$ $b$ $a$"_s);
    QTEST(text.mismatch(QList<QStringView>(values.cbegin(), values.cend())), "mismatch");
}

void TestCodeWriter::aMistakeEndsTheProgram_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("flawed template") << u"flawed"_s << QByteArray("line 1: a placeholder is not closed");
    QTest::newRow("missing value") << u"missing"_s << QByteArray("$b$ has no value");
    QTest::newRow("unknown value") << u"unknown"_s << QByteArray("there is no placeholder $c$");
    QTest::newRow("value given twice") << u"twice"_s << QByteArray("$a$ has two values");
}

void TestCodeWriter::aMistakeEndsTheProgram()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, message);
    QProcess self;
    self.start(QCoreApplication::applicationFilePath(), {u"--misuse"_s, name});
    QVERIFY(self.waitForFinished());
    QVERIFY2(self.exitStatus() == QProcess::CrashExit || self.exitCode() != 0, "it went on");
    const QByteArray told = self.readAllStandardError();
    QVERIFY2(told.contains(message), told.constData());
}

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "--misuse"_L1) {
        for (const auto &[name, misuse] : misuses())
            if (name == arguments.value(2))
                misuse();
        return 0;
    }
    TestCodeWriter test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_codewriter.moc"
