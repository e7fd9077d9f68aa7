#include "widgets/AnsiCHighlighter.h"
#include "widgets/GuiHelper.h"
#include "widgets/WidgetTest.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

using namespace Qt::StringLiterals;
using AnsiCScanner::Kind;
using AnsiCScanner::State;
using AnsiCScanner::Token;

Q_DECLARE_METATYPE(QList<AnsiCScanner::Token>)

class TestAnsiCHighlighter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLineIsSplitIntoTokens_data();
    void aLineIsSplitIntoTokens();
    void aLineTellsTheNextWhatItLeavesOpen_data();
    void aLineTellsTheNextWhatItLeavesOpen();
    void aTokenIsFoundBehindAnOpenLine_data();
    void aTokenIsFoundBehindAnOpenLine();
    void aCommentIsColouredAcrossLines();
    void allColoursAreReadable_data();
    void allColoursAreReadable();
    void aDarkPaletteColoursTheTextAnew();
    void cAndCppFilesAreSources_data();
    void cAndCppFilesAreSources();
};

void TestAnsiCHighlighter::aLineIsSplitIntoTokens_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QList<Token>>("expected");
    const auto row = [](const char *line, const QList<Token> &tokens) {
        QTest::newRow(*line ? line : "empty") << QString::fromLatin1(line) << tokens;
    };
    row("", {});
    row("return x;", {{0, 6, Kind::Keyword}});
    row("returned x_return", {});
    row("static const UNSIGNED8 a", {{0, 6, Kind::Keyword}, {7, 5, Kind::Keyword}, {13, 9, Kind::Type}});
    row("uint32_t a; RET_T b;", {{0, 8, Kind::Type}, {12, 5, Kind::Type}});
    row("  # include <a.h> // x",
        {{2, 9, Kind::Preprocessor}, {12, 5, Kind::IncludeFile}, {18, 4, Kind::Comment}});
    row("#include \"a.h\"", {{0, 8, Kind::Preprocessor}, {9, 5, Kind::String}});
    row("#if 1 < 2", {{0, 3, Kind::Preprocessor}, {4, 1, Kind::Number}, {8, 1, Kind::Number}});
    row("#define A 0x1Fu", {{0, 7, Kind::Preprocessor}, {10, 5, Kind::Number}});
    row("a # b", {});
    row("1.5e-3f 0xE+1 .5",
        {{0, 7, Kind::Number}, {8, 3, Kind::Number}, {12, 1, Kind::Number}, {14, 2, Kind::Number}});
    row("0x1p-4", {{0, 6, Kind::Number}});
    row("a1b2", {});
    row("\"a\\\"b\" x", {{0, 6, Kind::String}});
    row("'\\'' 'a'", {{0, 4, Kind::Character}, {5, 3, Kind::Character}});
    row("\"/* no comment */\"", {{0, 18, Kind::String}});
    row("/* \"no string */ int", {{0, 16, Kind::Comment}, {17, 3, Kind::Type}});
    row("a /* b */ c /* d */", {{2, 7, Kind::Comment}, {12, 7, Kind::Comment}});
    row("/**/", {{0, 4, Kind::Comment}});
    row("/*/", {{0, 3, Kind::Comment}});
    row("a / b", {});
    row("// int", {{0, 6, Kind::Comment}});
    row("\"open", {{0, 5, Kind::String}});
    row("\\", {});
}

void TestAnsiCHighlighter::aLineIsSplitIntoTokens()
{
    QFETCH(const QString, line);
    State state = State::Code;
    const QList<Token> tokens = AnsiCScanner::scan(line, state);
    QTEST(tokens, "expected");
}

void TestAnsiCHighlighter::aLineTellsTheNextWhatItLeavesOpen_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    const auto row = [](const char *line, State before, State after) {
        QTest::newRow(qPrintable(QString::fromLatin1(line) + u' ' + QString::number(int(before))))
            << QString::fromLatin1(line) << int(before) << int(after);
    };
    row("int a; /* b", State::Code, State::BlockComment);
    row("still", State::BlockComment, State::BlockComment);
    row("end */ int", State::BlockComment, State::Code);
    row("end */ /* new", State::BlockComment, State::BlockComment);
    row("// a \\", State::Code, State::LineComment);
    row("b", State::LineComment, State::Code);
    row("b \\", State::LineComment, State::LineComment);
    row("\"a \\", State::Code, State::String);
    row("b\" c", State::String, State::Code);
    row("b \\", State::String, State::String);
    row("\"never closed", State::Code, State::Code);
    row("'a\\", State::Code, State::Code);
    row("#define A \\", State::Code, State::Code);
}

void TestAnsiCHighlighter::aLineTellsTheNextWhatItLeavesOpen()
{
    QFETCH(const QString, line);
    QFETCH(const int, before);
    auto state = State(before);
    AnsiCScanner::scan(line, state);
    QTEST(int(state), "after");
}

void TestAnsiCHighlighter::aTokenIsFoundBehindAnOpenLine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("before");
    QTest::addColumn<QList<Token>>("expected");
    QTest::newRow("comment") << u"b */ int"_s << int(State::BlockComment)
                             << QList<Token>{{0, 4, Kind::Comment}, {5, 3, Kind::Type}};
    QTest::newRow("string") << u"b\" int"_s << int(State::String)
                            << QList<Token>{{0, 2, Kind::String}, {3, 3, Kind::Type}};
    QTest::newRow("line comment") << u"int"_s << int(State::LineComment)
                                  << QList<Token>{{0, 3, Kind::Comment}};
    QTest::newRow("empty line") << QString() << int(State::BlockComment) << QList<Token>{};
}

void TestAnsiCHighlighter::aTokenIsFoundBehindAnOpenLine()
{
    QFETCH(const QString, line);
    QFETCH(const int, before);
    auto state = State(before);
    QTEST(AnsiCScanner::scan(line, state), "expected");
}

void TestAnsiCHighlighter::aCommentIsColouredAcrossLines()
{
    QTextDocument document(u"int a; /* b\nc\nd */ int e;"_s);
    AnsiCHighlighter highlighter(&document);
    highlighter.rehighlight();
    const auto formats = document.findBlockByNumber(1).layout()->formats();
    QCOMPARE(formats.size(), 1);
    QCOMPARE(formats[0].start, 0);
    QCOMPARE(formats[0].length, 1);
    QCOMPARE(formats[0].format.foreground(), highlighter.format(Kind::Comment).foreground());
    QCOMPARE(document.findBlockByNumber(2).layout()->formats().size(), 2);
}

void TestAnsiCHighlighter::allColoursAreReadable_data()
{
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("light") << QPalette(Qt::lightGray, Qt::lightGray);
    QTest::newRow("dark") << darkPalette();
}

void TestAnsiCHighlighter::allColoursAreReadable()
{
    QFETCH(QPalette, palette);
    if (!GuiHelper::isDark(palette))
        palette.setColor(QPalette::Base, Qt::white);
    QTextDocument document;
    AnsiCHighlighter highlighter(&document);
    highlighter.setPalette(palette);
    for (const Kind kind : {Kind::Keyword, Kind::Type, Kind::Preprocessor, Kind::IncludeFile, Kind::String,
                            Kind::Character, Kind::Number, Kind::Comment})
        QVERIFY2(
            GuiHelper::contrast(highlighter.format(kind).foreground().color(), palette.color(QPalette::Base))
                > 4.5,
            qPrintable(QString::number(int(kind))));
}

void TestAnsiCHighlighter::aDarkPaletteColoursTheTextAnew()
{
    QTextDocument document(u"return;"_s);
    AnsiCHighlighter highlighter(&document);
    highlighter.rehighlight();
    const QBrush light = document.firstBlock().layout()->formats().constFirst().format.foreground();
    highlighter.setPalette(darkPalette());
    const QBrush dark = document.firstBlock().layout()->formats().constFirst().format.foreground();
    QVERIFY(dark.color().lightness() > light.color().lightness());
}

void TestAnsiCHighlighter::cAndCppFilesAreSources_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("expected");
    QTest::newRow("c") << u"/a/gen_objdict.c"_s << true;
    QTest::newRow("h") << u"gen_define.h"_s << true;
    QTest::newRow("hpp") << u"a.hpp"_s << true;
    QTest::newRow("cpp") << u"a.cpp"_s << true;
    QTest::newRow("capital") << u"A.C"_s << true;
    QTest::newRow("eds") << u"a.eds"_s << false;
    QTest::newRow("html") << u"a.html"_s << false;
    QTest::newRow("only in the folder") << u"/a.c/b"_s << false;
    QTest::newRow("none") << QString() << false;
}

void TestAnsiCHighlighter::cAndCppFilesAreSources()
{
    QFETCH(const QString, path);
    QTEST(AnsiCHighlighter::isSource(path), "expected");
}

int main(int argc, char **argv)
{
    return runWidgetTest<TestAnsiCHighlighter>(argc, argv);
}

#include "tst_ansichighlighter.moc"
