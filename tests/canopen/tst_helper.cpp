#include "canopen/Expression.h"
#include "canopen/Helper.h"

#include <QTest>

class TestHelper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void variablesAndCalculationsAreSubstituted_data();
    void variablesAndCalculationsAreSubstituted();
    void hugeTextsOfBracketsStayAsTheyAre_data();
    void hugeTextsOfBracketsStayAsTheyAre();
    void manyCalculationsInOneTextAreAllReplaced();
    void calculationsAreEvaluated_data();
    void calculationsAreEvaluated();
    void whatIsNoCalculationHasNoValue_data();
    void whatIsNoCalculationHasNoValue();
    void parenthesesMayNestToTheLimitOnly();
    void numbersInListsBecomeUnsignedLiterals_data();
    void numbersInListsBecomeUnsignedLiterals();
    void textsBecomeTheirUtf8Bytes_data();
    void textsBecomeTheirUtf8Bytes();
    void theCsvLineBreakMarkerFitsIntoOneField();
};

void TestHelper::variablesAndCalculationsAreSubstituted_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("sub");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("result");
    QTest::newRow("sum with the sub-index") << "Output {$s + 0x40}" << 0x2000 << 1 << 0 << "Output 65";
    QTest::newRow("element of a table")
        << "myData[{$i-0x100}].value" << 0x2000 << 0 << 0 << "myData[7936].value";
    QTest::newRow("index decimal") << "obj$i" << 0x2001 << 0 << 0 << "obj8193";
    QTest::newRow("index hexadecimal") << "obj$I" << 0x2ABC << 0 << 0 << "obj2abc";
    QTest::newRow("hexadecimal is not padded") << "$I:$S" << 0x20 << 10 << 0 << "20:a";
    QTest::newRow("sub-index decimal") << "v_$s" << 0x2000 << 255 << 0 << "v_255";
    QTest::newRow("sub-index hexadecimal") << "v_$S" << 0x2000 << 255 << 0 << "v_ff";
    QTest::newRow("sub-index less one") << "v[$z]" << 0x2000 << 5 << 0 << "v[4]";
    QTest::newRow("sub-index zero less one") << "v[$z]" << 0x2000 << 0 << 0 << "v[-1]";
    QTest::newRow("minus before a negative variable") << "{7-$z}" << 0x2000 << 0 << 0 << "8";
    QTest::newRow("line") << "$l/$L" << 0x2000 << 0 << 31 << "31/31";
    QTest::newRow("variable within a word") << "a$sb" << 0x2000 << 3 << 0 << "a3b";
    QTest::newRow("several") << "$i$I$s$S$z$l" << 0x1000 << 1 << 2 << "409610001102";
    QTest::newRow("node-ID") << "$NODEID+0x180" << 0x2000 << 1 << 0 << "$NODEID+0x180";
    QTest::newRow("node-ID in lower case") << "$nodeid+0x200" << 0x2000 << 1 << 0 << "$nodeid+0x200";
    QTest::newRow("node-ID in braces") << "{$NODEID+1}" << 0x2000 << 1 << 0 << "{$NODEID+1}";
    QTest::newRow("other letter") << "$x $Z $" << 0x2000 << 1 << 0 << "$x $Z $";
    QTest::newRow("two dollars") << "$$s" << 0x2000 << 1 << 0 << "$1";
    QTest::newRow("no variable") << "plain name" << 0x2000 << 1 << 0 << "plain name";
    QTest::newRow("empty") << "" << 0x2000 << 1 << 0 << "";
    QTest::newRow("empty braces") << "a{}b" << 0x2000 << 1 << 0 << "a{}b";
    QTest::newRow("no calculation") << "{low $s}" << 0x2000 << 1 << 0 << "{low 1}";
    QTest::newRow("division by zero") << "x{8/($s-1)}" << 0x2000 << 1 << 0 << "x{8/(1-1)}";
    QTest::newRow("too large") << "{9223372036854775807+$s}" << 0x2000 << 1 << 0 << "{9223372036854775807+1}";
    QTest::newRow("two calculations") << "{$s+1}/{$s*2}" << 0x2000 << 3 << 0 << "4/6";
    QTest::newRow("bad one before a good one") << "{?}{$s}" << 0x2000 << 3 << 0 << "{?}3";
    QTest::newRow("innermost braces") << "{{$s+1}" << 0x2000 << 3 << 0 << "{4";
    QTest::newRow("nested braces") << "{1+{$s}}" << 0x2000 << 3 << 0 << "{1+3}";
    QTest::newRow("open brace") << "a{$s" << 0x2000 << 3 << 0 << "a{3";
    QTest::newRow("closing brace") << "a}$s" << 0x2000 << 3 << 0 << "a}3";
    QTest::newRow("beyond the basic plane")
        << QStringLiteral("\U0001F600$s") << 0x2000 << 3 << 0 << QStringLiteral("\U0001F6003");
}

void TestHelper::variablesAndCalculationsAreSubstituted()
{
    QFETCH(QString, text);
    QFETCH(int, index);
    QFETCH(int, sub);
    QFETCH(int, line);
    QTEST(Helper::substituteVariables(text, quint16(index), quint8(sub), quint8(line)), "result");
}

void TestHelper::hugeTextsOfBracketsStayAsTheyAre_data()
{
    constexpr qsizetype size = 1024 * 1024;
    QTest::addColumn<QString>("text");
    QTest::newRow("open braces") << QString(size, u'{');
    QTest::newRow("closing braces") << QString(size, u'}');
    QTest::newRow("dollars") << QString(size, u'$');
    QTest::newRow("open parentheses in braces") << u'{' + QString(size, u'(') + u'}';
    QTest::newRow("minus signs in braces") << u'{' + QString(size, u'-') + u'}';
    QTest::newRow("digits in braces") << u'{' + QString(size, u'9') + u'}';
    QTest::newRow("blanks in braces") << u'{' + QString(size, u' ') + u'}';
}

void TestHelper::hugeTextsOfBracketsStayAsTheyAre()
{
    QFETCH(QString, text);
    QVERIFY(Helper::substituteVariables(text, 0x2000, 1, 0) == text);
}

void TestHelper::manyCalculationsInOneTextAreAllReplaced()
{
    const QString text = QStringLiteral("{$s+1},").repeated(100000);
    QVERIFY(Helper::substituteVariables(text, 0x2000, 1, 0) == QStringLiteral("2,").repeated(100000));
}

void TestHelper::calculationsAreEvaluated_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("value");
    QTest::newRow("number") << "42" << qint64(42);
    QTest::newRow("hexadecimal") << "0xFf" << qint64(255);
    QTest::newRow("leading zero is decimal") << "010" << qint64(10);
    QTest::newRow("blanks") << " \t1 + 2 " << qint64(3);
    QTest::newRow("ranks") << "1+2*3" << qint64(7);
    QTest::newRow("from left to right") << "10-4-3" << qint64(3);
    QTest::newRow("quotients from left to right") << "100/5/2" << qint64(10);
    QTest::newRow("parentheses") << "(1+2)*3" << qint64(9);
    QTest::newRow("sign") << "-5+2" << qint64(-3);
    QTest::newRow("signs") << "3--+-2" << qint64(1);
    QTest::newRow("sign of parentheses") << "-(2+3)" << qint64(-5);
    QTest::newRow("sign behind an operator") << "2*-3" << qint64(-6);
    QTest::newRow("quotient towards zero") << "-7/2" << qint64(-3);
    QTest::newRow("highest") << "9223372036854775807" << std::numeric_limits<qint64>::max();
    QTest::newRow("lowest") << "-9223372036854775807-1" << std::numeric_limits<qint64>::min();
}

void TestHelper::calculationsAreEvaluated()
{
    QFETCH(QString, text);
    const auto value = evaluateExpression(text);
    QVERIFY(value.has_value());
    QTEST(*value, "value");
}

void TestHelper::whatIsNoCalculationHasNoValue_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"",
                             " ",
                             "+",
                             "1+",
                             "*2",
                             "1 2",
                             "(1",
                             "1)",
                             "()",
                             "1+()",
                             "0x",
                             "0xg",
                             "12ab",
                             "1.5",
                             "a",
                             "1/0",
                             "1/(2-2)",
                             "9223372036854775808",
                             "9223372036854775807+1",
                             "-9223372036854775807-2",
                             "4294967296*4294967296",
                             "(-9223372036854775807-1)/-1",
                             "-(-9223372036854775807-1)",
                             "0x8000000000000000",
                             "1,2",
                             "1%2",
                             "1<<2"})
        QTest::newRow(text) << text;
}

void TestHelper::whatIsNoCalculationHasNoValue()
{
    QFETCH(QString, text);
    QVERIFY(!evaluateExpression(text).has_value());
}

void TestHelper::parenthesesMayNestToTheLimitOnly()
{
    const auto nested = [](int depth) -> QString {
        return QString(depth, u'(') + u'7' + QString(depth, u')');
    };
    QCOMPARE(evaluateExpression(nested(maxExpressionDepth)), std::optional<qint64>(7));
    QVERIFY(!evaluateExpression(nested(maxExpressionDepth + 1)).has_value());
}

void TestHelper::numbersInListsBecomeUnsignedLiterals_data()
{
    QTest::addColumn<QString>("list");
    QTest::addColumn<QString>("result");
    QTest::newRow("numbers") << "1,2,30"
                             << "1u,2u,30u";
    QTest::newRow("one number") << "7"
                                << "7u";
    QTest::newRow("blanks stay") << "1, 2 ,\t3"
                                 << "1u, 2u ,\t3u";
    QTest::newRow("hexadecimal") << "0x1F,0XaB"
                                 << "0x1Fu,0XaBu";
    QTest::newRow("initialiser") << "{ 1, 2 }"
                                 << "{ 1u, 2u }";
    QTest::newRow("suffix stays") << "1u,2UL"
                                  << "1u,2UL";
    QTest::newRow("names stay") << "CO_MAX,3,a1"
                                << "CO_MAX,3u,a1";
    QTest::newRow("negative stays") << "-1,1.5,0x"
                                    << "-1,1.5,0x";
    QTest::newRow("empty elements") << ",1,,2,"
                                    << ",1u,,2u,";
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("only blanks") << "  "
                                 << "  ";
}

void TestHelper::numbersInListsBecomeUnsignedLiterals()
{
    QFETCH(QString, list);
    QTEST(Helper::addLowerCaseUtoNumberLists(list), "result");
}

void TestHelper::textsBecomeTheirUtf8Bytes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("array");
    QTest::addColumn<int>("length");
    QTest::newRow("ASCII") << "AZ"
                           << "0x41,0x5a" << 2;
    QTest::newRow("umlaut") << QStringLiteral("\u00E4") << "0xc3,0xa4" << 2;
    QTest::newRow("euro") << QStringLiteral("\u20AC") << "0xe2,0x82,0xac" << 3;
    QTest::newRow("surrogates") << QStringLiteral("\U0001F600") << "0xf0,0x9f,0x98,0x80" << 4;
    QTest::newRow("zero byte") << QString(1, QChar(0)) << "0x00" << 1;
    QTest::newRow("empty") << ""
                           << "" << 0;
}

void TestHelper::textsBecomeTheirUtf8Bytes()
{
    QFETCH(QString, text);
    QTEST(Helper::UTF8String2ArrayString(text), "array");
    QTEST(int(Helper::UTF8String2ByteArray(text).length()), "length");
    QCOMPARE(QString::fromUtf8(Helper::UTF8String2ByteArray(text)), text);
}

void TestHelper::theCsvLineBreakMarkerFitsIntoOneField()
{
    const QString marker = QString::fromLatin1(Helper::csvDescLinebreak);
    QVERIFY(!marker.isEmpty());
    for (const char separator : {',', ';', '\n', '\r', '"'})
        QVERIFY(!marker.contains(QLatin1Char(separator)));
}

QTEST_GUILESS_MAIN(TestHelper)
#include "tst_helper.moc"
