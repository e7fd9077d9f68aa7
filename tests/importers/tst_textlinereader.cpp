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
    void thePositionReachesTheSizeOfTheFile();
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

QTEST_GUILESS_MAIN(TestTextLineReader)
#include "tst_textlinereader.moc"
