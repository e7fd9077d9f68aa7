#include "importers/TextLineReader.h"

#include <QBuffer>
#include <QTest>

/** Lines of files of all kinds. */
class TestTextLineReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesEndInThreeWays_data();
    void linesEndInThreeWays();
    void aLineOverTheLimitIsLeftOut_data();
    void aLineOverTheLimitIsLeftOut();
    void theLimitIsTheReadersOwn();
    void thePositionReachesTheSizeOfTheFile();
    void linesAreCounted_data();
    void linesAreCounted();
    void linesThatAreLeftOutForTheirLengthAreCounted();
    void utf16IsDeliveredAsUtf8_data();
    void utf16IsDeliveredAsUtf8();
};

static QByteArrayList linesOf(const QByteArray &content)
{
    QBuffer buffer;
    buffer.setData(content);
    buffer.open(QIODevice::ReadOnly);
    TextLineReader reader(buffer);
    QByteArrayList lines;
    QByteArray line;
    while (reader.next(line))
        lines.append(line);
    return lines;
}

void TestTextLineReader::linesEndInThreeWays_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArrayList>("lines");
    const QByteArrayList two{"a b", "c"};
    QTest::newRow("LF") << QByteArray("a b\nc\n") << two;
    QTest::newRow("CR LF") << QByteArray("a b\r\nc\r\n") << two;
    QTest::newRow("CR") << QByteArray("a b\rc\r") << two;
    QTest::newRow("no end at the end") << QByteArray("a b\nc") << two;
    QTest::newRow("empty lines") << QByteArray("\n\n\r\n\ra b\n\n\nc\n\n") << two;
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF"
                                                   "a b\nc")
                                     << two;
    QTest::newRow("a mark in the middle stays") << QByteArray("a\n\xEF\xBB\xBF"
                                                              "b")
                                                << QByteArrayList{"a",
                                                                  "\xEF\xBB\xBF"
                                                                  "b"};
    QTest::newRow("zero bytes stay") << QByteArray("a\0b\n", 4) << QByteArrayList{QByteArray("a\0b", 3)};
    QTest::newRow("empty file") << QByteArray() << QByteArrayList();
    QTest::newRow("only ends") << QByteArray("\r\n\r\n\n") << QByteArrayList();
}

void TestTextLineReader::linesEndInThreeWays()
{
    QFETCH(QByteArray, content);
    QFETCH(QByteArrayList, lines);
    QCOMPARE(linesOf(content), lines);
}

void TestTextLineReader::aLineOverTheLimitIsLeftOut_data()
{
    QTest::addColumn<qsizetype>("length");
    QTest::addColumn<bool>("kept");
    QTest::newRow("at the limit") << TextLineReader::LongestLine << true;
    QTest::newRow("one more") << TextLineReader::LongestLine + 1 << false;
    QTest::newRow("twice") << TextLineReader::LongestLine * 2 << false;
    QTest::newRow("10 MB") << qsizetype(10'000'000) << false;
}

void TestTextLineReader::aLineOverTheLimitIsLeftOut()
{
    QFETCH(qsizetype, length);
    QFETCH(bool, kept);
    const QByteArray longLine(length, 'x');
    const QByteArrayList around = kept ? QByteArrayList{"a", longLine, "b"} : QByteArrayList{"a", "b"};
    QCOMPARE(linesOf("a\n" + longLine + "\nb\n"), around);
    QCOMPARE(linesOf("a\n" + longLine), kept ? QByteArrayList({"a", longLine}) : QByteArrayList{"a"});
}

void TestTextLineReader::theLimitIsTheReadersOwn()
{
    constexpr qsizetype limit = 3 * TextLineReader::LongestLine;
    const QByteArray kept(limit, 'x');
    QBuffer buffer;
    buffer.setData(kept + 'x' + '\n' + kept + '\n');
    buffer.open(QIODevice::ReadOnly);
    TextLineReader reader(buffer, limit);
    QByteArray line;
    QVERIFY(reader.next(line));
    QCOMPARE(line, kept);
    QCOMPARE(reader.lineNumber(), 2);
    QCOMPARE(reader.tooLongLines(), 1);
    QVERIFY(!reader.next(line));
}

void TestTextLineReader::thePositionReachesTheSizeOfTheFile()
{
    QBuffer buffer;
    buffer.setData("one\ntwo\nthree");
    buffer.open(QIODevice::ReadOnly);
    TextLineReader reader(buffer);
    QCOMPARE(reader.position(), 0);
    QByteArray line;
    while (reader.next(line)) { }
    QCOMPARE(reader.position(), buffer.size());
}

void TestTextLineReader::linesAreCounted_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QList<qint64>>("numbers");
    QTest::newRow("LF") << QByteArray("a\nb\nc") << QList<qint64>{1, 2, 3};
    QTest::newRow("CR LF") << QByteArray("a\r\nb\r\nc\r\n") << QList<qint64>{1, 2, 3};
    QTest::newRow("CR") << QByteArray("a\rb\rc") << QList<qint64>{1, 2, 3};
    QTest::newRow("empty lines") << QByteArray("\n\na\n\r\n\rb") << QList<qint64>{3, 6};
    QTest::newRow("CR LF over two pieces")
        << QByteArray(TextLineReader::LongestLine - 1, 'x') + "\r\nb" << QList<qint64>{1, 2};
    QTest::newRow("a line left out") << "a\n" + QByteArray(TextLineReader::LongestLine + 1, 'x') + "\nb"
                                     << QList<qint64>{1, 3};
}

void TestTextLineReader::linesAreCounted()
{
    QFETCH(QByteArray, content);
    QBuffer buffer(&content);
    buffer.open(QIODevice::ReadOnly);
    TextLineReader reader(buffer);
    QCOMPARE(reader.lineNumber(), 0);
    QList<qint64> numbers;
    QByteArray line;
    while (reader.next(line))
        numbers.append(reader.lineNumber());
    QTEST(numbers, "numbers");
}

void TestTextLineReader::linesThatAreLeftOutForTheirLengthAreCounted()
{
    const QByteArray longLine(3 * TextLineReader::LongestLine, 'x');
    QByteArray content = longLine + "\na\n" + longLine;
    QBuffer buffer(&content);
    buffer.open(QIODevice::ReadOnly);
    TextLineReader reader(buffer);
    QByteArray line;
    QVERIFY(reader.next(line));
    QCOMPARE(line, QByteArray("a"));
    QCOMPARE(reader.tooLongLines(), 1);
    QVERIFY(!reader.next(line));
    QCOMPARE(reader.tooLongLines(), 2);
}

void TestTextLineReader::utf16IsDeliveredAsUtf8_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("little endian") << QByteArray("\xFF\xFE\xE4\x00\n\x00\xAC\x20", 8);
    QTest::newRow("big endian") << QByteArray("\xFE\xFF\x00\xE4\x00\n\x20\xAC", 8);
}

void TestTextLineReader::utf16IsDeliveredAsUtf8()
{
    QFETCH(QByteArray, content);
    QCOMPARE(linesOf(content), (QByteArrayList{"\xC3\xA4", "\xE2\x82\xAC"}));
}

QTEST_GUILESS_MAIN(TestTextLineReader)
#include "tst_textlinereader.moc"
