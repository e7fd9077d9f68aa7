#include "generators/CText.h"
#include "generators/ObjectKey.h"

#include <QTest>

using CText::Pointer;

/** Texts of the project in C source. What compilers make of the literals is told by tst_compiledc. */
class TestCText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stringValuesAreBytes_data();
    void stringValuesAreBytes();
    void stringValuesAreLiterals_data();
    void stringValuesAreLiterals();
    void bytesAreElementsOfTwoDigits();
    void textsBecomeHarmlessInComments_data();
    void textsBecomeHarmlessInComments();
    void variableNamesAreSubstituted();
    void variablesBecomePointers_data();
    void variablesBecomePointers();
};

void TestCText::stringValuesAreBytes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QString() << QByteArray();
    QTest::newRow("plain") << QStringLiteral("abc") << QByteArray("abc");
    QTest::newRow("UTF-8") << QStringLiteral("a\u00e4\u20ac") << QByteArray("a\xc3\xa4\xe2\x82\xac");
    QTest::newRow("hexadecimal") << QStringLiteral("|x0102fF") << QByteArray("\x01\x02\xff");
    QTest::newRow("hexadecimal with a zero") << QStringLiteral("|x0041") << QByteArray("\0A", 2);
    QTest::newRow("no digits behind the mark") << QStringLiteral("|x") << QByteArray();
    QTest::newRow("half a pair") << QStringLiteral("|x414") << QByteArray("A");
    QTest::newRow("no hexadecimal digits") << QStringLiteral("|xZZ41") << QByteArray("\0A", 2);
    QTest::newRow("a capital is no mark") << QStringLiteral("|X41") << QByteArray("|X41");
    QTest::newRow("the mark stands at the start only") << QStringLiteral("a|x41") << QByteArray("a|x41");
    QTest::newRow("a bar alone") << QStringLiteral("|") << QByteArray("|");
}

void TestCText::stringValuesAreBytes()
{
    QFETCH(QString, text);
    QTEST(CText::stringBytes(text), "bytes");
}

void TestCText::stringValuesAreLiterals_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("literal");
    const auto row = [](const char *name, const QString &text, const char *literal) {
        QTest::newRow(name) << text << QString::fromLatin1(literal);
    };
    row("empty", QString(), R"("")");
    row("plain", QStringLiteral("My Device 1.0 %s 100%"), R"("My Device 1.0 %s 100%")");
    row("hexadecimal", QStringLiteral("|x0102FF"), R"("\x01\x02\xff")");
    row("hexadecimal without digits", QStringLiteral("|x"), R"("")");
    row("quotation marks", QStringLiteral("a \"b\""), R"("a \"b\"")");
    row("apostrophe", QStringLiteral("it's"), R"("it's")");
    row("backslash", QStringLiteral("C:\\n"), R"("C:\\n")");
    row("line ends", QStringLiteral("a\r\nb"), R"("a\r\nb")");
    row("a tab stays", QStringLiteral("a\tb"), "\"a\tb\"");
    row("control character", QStringLiteral("a\x01z"), R"("a\x01z")");
    row("control character before a digit", QStringLiteral("a\x01") + u'2', R"("a\x01" "2")");
    row("delete character", QStringLiteral("\x7f"), R"("\x7f")");
    row("zero", QString(QChar(0)), R"("\x00")");
    row("umlaut", QStringLiteral("Ger\u00e4t"), R"("Ger\xc3\xa4t")");
    row("umlaut before a hexadecimal digit", QStringLiteral("\u00e4b"), R"("\xc3\xa4" "b")");
    row("umlaut before a capital digit", QStringLiteral("\u00e4F\u00e4"), R"("\xc3\xa4" "F\xc3\xa4")");
    row("umlaut before a letter behind f", QStringLiteral("\u00e4g"), R"("\xc3\xa4g")");
    row("umlaut before a quotation mark", QStringLiteral("\u00e4\"1"), R"("\xc3\xa4\"1")");
    row("beyond the basic plane", QStringLiteral("\U0001F600"), R"("\xf0\x9f\x98\x80")");
    row("trigraph", QStringLiteral("?\?=?\?/"), R"("?\?=?\?/")");
    row("many question marks", QStringLiteral("?\?\?\?"), R"("?\?\?\?")");
    row("question marks apart", QStringLiteral("? ?"), R"("? ?")");
    row("end of a comment", QStringLiteral("*/"), R"("*/")");
}

void TestCText::stringValuesAreLiterals()
{
    QFETCH(QString, text);
    QTEST(CText::literal(text), "literal");
}

void TestCText::bytesAreElementsOfTwoDigits()
{
    QCOMPARE(CText::byteElement(0), QStringLiteral("0x00"));
    QCOMPARE(CText::byteElement(10), QStringLiteral("0x0a"));
    QCOMPARE(CText::byteElement(255), QStringLiteral("0xff"));
}

void TestCText::textsBecomeHarmlessInComments_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("comment");
    const auto row = [](const char *name, const QString &text, const QString &comment) {
        QTest::newRow(name) << text << comment;
    };
    row("empty", QString(), QString());
    row("plain", QStringLiteral("Speed [km/h] * 2"), QStringLiteral("Speed [km/h] * 2"));
    row("the end of a comment", QStringLiteral("a*/b"), QStringLiteral("a* /b"));
    row("the start of a comment", QStringLiteral("a/*b"), QStringLiteral("a/ *b"));
    row("both in one", QStringLiteral("*/*/"), QStringLiteral("* / * /"));
    row("many stars", QStringLiteral("**/"), QStringLiteral("** /"));
    row("only a star", QStringLiteral("*"), QStringLiteral("*"));
    row("a comment of C++", QStringLiteral("a // b"), QStringLiteral("a // b"));
    row("a backslash at the end", QStringLiteral("C:\\"), QStringLiteral("C:\\."));
    row("a backslash inside", QStringLiteral("C:\\x"), QStringLiteral("C:\\x"));
    row("the trigraph of a backslash at the end", QStringLiteral("a?\?/"), QStringLiteral("a?\?/."));
    row("line ends", QStringLiteral("a\nb\rc\r\nd"), QStringLiteral("a b c d"));
    row("a backslash before a line end", QStringLiteral("a\\\nb"), QStringLiteral("a\\ b"));
    row("a backslash and a line end at the end", QStringLiteral("a\\\n"), QStringLiteral("a\\ ."));
    row("a tab", QStringLiteral("a\tb"), QStringLiteral("a b"));
    row("a zero", QStringLiteral("a") + QChar(0) + u'b', QStringLiteral("a b"));
    row("a star and a slash on two lines", QStringLiteral("*\n/"), QStringLiteral("* /"));
    row("a hidden mark between star and slash", QStringLiteral("*\u202e/"), QStringLiteral("* /"));
    row("marks of direction", QStringLiteral("\u202aa\u2069b\u2066"), QStringLiteral("ab"));
    row("umlauts stay", QStringLiteral("Ger\u00e4t"), QStringLiteral("Ger\u00e4t"));
}

void TestCText::textsBecomeHarmlessInComments()
{
    QFETCH(QString, text);
    QTEST(CText::comment(text), "comment");
}

void TestCText::variableNamesAreSubstituted()
{
    const quint32 key = ObjectKey::make(2, 0x2001, 3);
    QCOMPARE(CText::variableName(QStringLiteral("l$l_var_$I[{$s-1}]"), key),
             QStringLiteral("l2_var_2001[2]"));
    QCOMPARE(CText::variableName(QStringLiteral("plain"), key), QStringLiteral("plain"));
}

void TestCText::variablesBecomePointers_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("row");
    const auto row = [](const char *title, const char *name, Pointer kind, const char *text) {
        QTest::newRow(title) << QString::fromLatin1(name) << int(kind) << QString::fromLatin1(text);
    };
    row("variable", "speed", Pointer::Variable, "\t&(speed)");
    row("member", "unit[2].speed", Pointer::Variable, "\t&(unit[2].speed)");
    row("expression", "getSpeedAddr()", Pointer::Variable, "\tgetSpeedAddr()");
    row("cast", "(UNSIGNED8 *)p", Pointer::Variable, "\t(UNSIGNED8 *)p");
    row("wide variable", "counter", Pointer::Address, "\t&(counter)");
    row("wide expression", "(counter)", Pointer::Address, "\t&((counter))");
    row("string", "name", Pointer::FirstElement, "\t&(name[0])");
    row("string in a structure", "device.name", Pointer::FirstElement, "\t&(device.name[0])");
}

void TestCText::variablesBecomePointers()
{
    QFETCH(QString, name);
    QFETCH(int, kind);
    QTEST(CText::pointer(name, Pointer(kind)), "row");
}

QTEST_APPLESS_MAIN(TestCText)
#include "tst_ctext.moc"
