#include "importers/CsvLine.h"

#include <QTest>

using namespace Qt::StringLiterals;
using CsvLine::Quoting;

/** Fields of the lines of a table. */
class TestCsvLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLineSplitsAtEverySeparator_data();
    void aLineSplitsAtEverySeparator();
    void quotesEncloseWhatNeedsThem_data();
    void quotesEncloseWhatNeedsThem();
    void anOpenQuoteIsToldAndText_data();
    void anOpenQuoteIsToldAndText();
    void aQuotedTextGoesOnInLaterLines_data();
    void aQuotedTextGoesOnInLaterLines();
    void theHeaderChoosesTheSeparator_data();
    void theHeaderChoosesTheSeparator();
    void paddingIsEmptyFieldsToTheEnd();
};

void TestCsvLine::aLineSplitsAtEverySeparator_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QChar>("separator");
    QTest::addColumn<QStringList>("fields");
    const auto row = [](const char *name, const QString &line, const QStringList &fields,
                        char16_t separator) { QTest::newRow(name) << line << QChar(separator) << fields; };
    row("plain", u"a,b,c"_s, {u"a"_s, u"b"_s, u"c"_s}, u',');
    row("empty fields stay", u",a,,"_s, {QString(), u"a"_s, QString(), QString()}, u',');
    row("empty line", QString(), {QString()}, u',');
    row("blanks stay", u" a , b"_s, {u" a "_s, u" b"_s}, u',');
    row("the other separator is text", u"a,b;c"_s, {u"a,b"_s, u"c"_s}, u';');
    row("only separators", u";;"_s, {QString(), QString(), QString()}, u';');
}

void TestCsvLine::aLineSplitsAtEverySeparator()
{
    QFETCH(QString, line);
    QFETCH(QChar, separator);
    QTEST(CsvLine::split(line, separator, Quoting::WhereNeeded).texts, "fields");
    QTEST(CsvLine::split(line, separator, Quoting::Everywhere).texts, "fields");
}

void TestCsvLine::quotesEncloseWhatNeedsThem_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("whereNeeded");
    QTest::addColumn<QStringList>("everywhere");
    const auto same = [](const char *name, const QString &line, const QStringList &fields) {
        QTest::newRow(name) << line << fields << fields;
    };
    same("separator inside", u"1,\"a, b\",2"_s, {u"1"_s, u"a, b"_s, u"2"_s});
    same("doubled quote", u"\"5\"\" pipe\",2"_s, {u"5\" pipe"_s, u"2"_s});
    same("line break inside", u"\"a\nb\""_s, {u"a\nb"_s});
    same("last field", u"1,\"a,b\""_s, {u"1"_s, u"a,b"_s});
    same("quote inside of a text", u"5\" pipe,x"_s, {u"5\" pipe"_s, u"x"_s});
    same("text behind the closing quote", u"\"a\" b,c"_s, {u"\"a\" b"_s, u"c"_s});
    same("blank before the quote", u"1, \"a,b\""_s, {u"1"_s, u" \"a"_s, u"b\""_s});
    same("only a quote pair and a quote", u"\"\"\"\""_s, {u"\""_s});
    QTest::newRow("a text with its quotes")
        << u"\"abc\",2"_s << QStringList{u"\"abc\""_s, u"2"_s} << QStringList{u"abc"_s, u"2"_s};
    QTest::newRow("empty quotes") << u"\"\",2"_s << QStringList{u"\"\""_s, u"2"_s}
                                  << QStringList{QString(), u"2"_s};
}

void TestCsvLine::quotesEncloseWhatNeedsThem()
{
    QFETCH(QString, line);
    const CsvLine::Fields needed = CsvLine::split(line, u',', Quoting::WhereNeeded);
    const CsvLine::Fields all = CsvLine::split(line, u',', Quoting::Everywhere);
    QTEST(needed.texts, "whereNeeded");
    QTEST(all.texts, "everywhere");
    QVERIFY(!needed.hasOpenQuote && !all.hasOpenQuote);
}

void TestCsvLine::anOpenQuoteIsToldAndText_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("fields");
    QTest::newRow("last field") << u"1,\"abc"_s << QStringList{u"1"_s, u"\"abc"_s};
    QTest::newRow("fields behind it") << u"\"a,b"_s << QStringList{u"\"a"_s, u"b"_s};
    QTest::newRow("several") << u"\"a,\"b"_s << QStringList{u"\"a"_s, u"\"b"_s};
    QTest::newRow("alone") << u"\""_s << QStringList{u"\""_s};
    QTest::newRow("behind a quoted one") << u"\"a,b\",\"c"_s << QStringList{u"a,b"_s, u"\"c"_s};
}

void TestCsvLine::anOpenQuoteIsToldAndText()
{
    QFETCH(QString, line);
    const CsvLine::Fields fields = CsvLine::split(line, u',', Quoting::WhereNeeded);
    QTEST(fields.texts, "fields");
    QVERIFY(fields.hasOpenQuote);
}

void TestCsvLine::aQuotedTextGoesOnInLaterLines_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("end");
    QTest::newRow("no quote") << u"text, more"_s << int(CsvLine::QuoteEnd::None);
    QTest::newRow("doubled quote") << u"a \"\"b\"\" c"_s << int(CsvLine::QuoteEnd::None);
    QTest::newRow("closed at the end") << u"text\""_s << int(CsvLine::QuoteEnd::Closed);
    QTest::newRow("closed before a field") << u"text\",5"_s << int(CsvLine::QuoteEnd::Closed);
    QTest::newRow("quote before text") << u"a \"b"_s << int(CsvLine::QuoteEnd::Broken);
}

void TestCsvLine::aQuotedTextGoesOnInLaterLines()
{
    QFETCH(QString, line);
    QTEST(int(CsvLine::quoteEnd(line, u',')), "end");
}

void TestCsvLine::theHeaderChoosesTheSeparator_data()
{
    QTest::addColumn<QString>("header");
    QTest::addColumn<QChar>("separator");
    QTest::newRow("comma") << u"index,sub"_s << QChar(u',');
    QTest::newRow("semicolon") << u"index;sub"_s << QChar(u';');
    QTest::newRow("a comma wins") << u"index;sub,value"_s << QChar(u',');
    QTest::newRow("neither") << u"index"_s << QChar(u',');
}

void TestCsvLine::theHeaderChoosesTheSeparator()
{
    QFETCH(QString, header);
    QTEST(CsvLine::separatorOf(header), "separator");
}

void TestCsvLine::paddingIsEmptyFieldsToTheEnd()
{
    const QStringList fields{u"a"_s, QString(), u"b"_s, QString(), QString()};
    QVERIFY(CsvLine::isPadding(fields, 3));
    QVERIFY(CsvLine::isPadding(fields, 9));
    QVERIFY(!CsvLine::isPadding(fields, 1));
    QVERIFY(CsvLine::isPadding({}, 0));
}

QTEST_GUILESS_MAIN(TestCsvLine)
#include "tst_csvline.moc"
