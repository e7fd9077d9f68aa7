#include "widgets/TextFile.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestTextFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_folder.isValid()); }
    void aTextIsDecodedAndItsLineEndsAreTold_data();
    void aTextIsDecodedAndItsLineEndsAreTold();
    void aCharacterThatATextViewWouldMisreadIsReplaced_data();
    void aCharacterThatATextViewWouldMisreadIsReplaced();
    void anOverlongLineComesInPieces();
    void aPairOfSurrogatesIsNotTornApart();
    void aBinaryFileIsDumped();
    void aBigBinaryFileIsDumpedInPart();
    void aFileThatCannotBeReadSaysWhy_data();
    void aFileThatCannotBeReadSaysWhy();
    void aReadingCanBeCancelled();
    void aHugeFileEndsBehindAWholeLine();
    void aFileThatTellsNoSizeIsReadAnyway();

private:
    QString write(const QByteArray &bytes, const QString &name = u"a.txt"_s) const;

    QTemporaryDir m_folder;
};

QString TestTextFile::write(const QByteArray &bytes, const QString &name) const
{
    QFile file(m_folder.filePath(name));
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? file.fileName() : QString();
}

void TestTextFile::aTextIsDecodedAndItsLineEndsAreTold_data()
{
    using LineEnd = TextFile::LineEnd;
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::addColumn<LineEnd>("lineEnd");
    QTest::newRow("empty") << ""_ba << QString() << LineEnd::None;
    QTest::newRow("one line") << "abc"_ba << u"abc"_s << LineEnd::None;
    QTest::newRow("LF") << "a\nb\n"_ba << u"a\nb\n"_s << LineEnd::Lf;
    QTest::newRow("CR LF") << "a\r\nb\r\n"_ba << u"a\nb\n"_s << LineEnd::CrLf;
    QTest::newRow("CR") << "a\rb\r"_ba << u"a\nb\n"_s << LineEnd::Cr;
    QTest::newRow("mixed") << "a\nb\r\nc\rd"_ba << u"a\nb\nc\nd"_s << LineEnd::Mixed;
    QTest::newRow("UTF-8") << "gr\xC3\xBCn\n"_ba << u"gr\u00FCn\n"_s << LineEnd::Lf;
    QTest::newRow("UTF-8 with mark") << "\xEF\xBB\xBFgr\xC3\xBCn"_ba << u"gr\u00FCn"_s << LineEnd::None;
    QTest::newRow("Windows-1252") << "gr\xFCn \x80\n"_ba << u"gr\u00FCn \u20AC\n"_s << LineEnd::Lf;
    QTest::newRow("UTF-16") << QByteArray("\xFF\xFE"
                                          "a\0\r\0\n\0b\0",
                                          10)
                            << u"a\nb"_s << LineEnd::CrLf;
}

void TestTextFile::aTextIsDecodedAndItsLineEndsAreTold()
{
    QFETCH(const QByteArray, bytes);
    const TextFile file = TextFile::read(write(bytes));
    QCOMPARE(file.failure, TextFile::Failure::None);
    QCOMPARE(file.size, bytes.size());
    QVERIFY(file.isComplete());
    QVERIFY(!file.binary);
    QTEST(file.text, "text");
    QTEST(file.lineEnd, "lineEnd");
}

void TestTextFile::aCharacterThatATextViewWouldMisreadIsReplaced_data()
{
    QTest::addColumn<QString>("character");
    QTest::newRow("line separator") << QString(QChar(0x2028));
    QTest::newRow("paragraph separator") << QString(QChar(0x2029));
    QTest::newRow("beginning of a frame") << QString(QChar(0xFDD0));
    QTest::newRow("end of a frame") << QString(QChar(0xFDD1));
    QTest::newRow("object") << QString(QChar(0xFFFC));
}

void TestTextFile::aCharacterThatATextViewWouldMisreadIsReplaced()
{
    QFETCH(const QString, character);
    const TextFile file = TextFile::read(write(QString(u'a' + character + u'b').toUtf8()));
    QCOMPARE(file.text, u"a\uFFFDb"_s);
}

void TestTextFile::anOverlongLineComesInPieces()
{
    const qsizetype length = 2 * TextFile::maximumLineLength + 10;
    const TextFile file = TextFile::read(write("x\n" + QByteArray(length, 'a') + "\ny"));
    const QStringList lines = file.text.split(u'\n');
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines[1].size(), TextFile::maximumLineLength);
    QCOMPARE(lines[3].size(), 10);
    QCOMPARE(lines[4], u"y"_s);
    QCOMPARE(file.continuations, QList({2, 3}));
    QCOMPARE(TextFile::read(write(QByteArray(TextFile::maximumLineLength, 'a'))).continuations, QList<int>());
}

void TestTextFile::aPairOfSurrogatesIsNotTornApart()
{
    const QString text = QString(TextFile::maximumLineLength - 1, u'a') + u"\U0001F600b"_s;
    const TextFile file = TextFile::read(write(text.toUtf8()));
    QCOMPARE(file.text.split(u'\n').constLast(), u"b"_s);
}

void TestTextFile::aBinaryFileIsDumped()
{
    const TextFile file = TextFile::read(write(QByteArray("\x7F"
                                                          "ELF\0\x01 0123456789AB",
                                                          19)));
    QVERIFY(file.binary);
    QVERIFY(file.isComplete());
    QCOMPARE(file.text,
             u"00000000  7f 45 4c 46 00 01 20 30  31 32 33 34 35 36 37 38  |.ELF.. 012345678|\n"
             "00000010  39 41 42                                          |9AB|"_s);
}

void TestTextFile::aBigBinaryFileIsDumpedInPart()
{
    const TextFile file = TextFile::read(write(QByteArray(TextFile::maximumDumpBytes + 100, '\0')));
    QVERIFY(file.binary);
    QVERIFY(!file.isComplete());
    QCOMPARE(file.shownSize, TextFile::maximumDumpBytes);
    QCOMPARE(file.size, TextFile::maximumDumpBytes + 100);
    QCOMPARE(file.text.count(u'\n') + 1, TextFile::maximumDumpBytes / 16);
}

void TestTextFile::aFileThatCannotBeReadSaysWhy_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<TextFile::Failure>("failure");
    QTest::newRow("missing") << m_folder.filePath(u"none"_s) << TextFile::Failure::Missing;
    QTest::newRow("folder") << m_folder.path() << TextFile::Failure::NotAFile;
    QTest::newRow("device") << u"/dev/zero"_s << TextFile::Failure::NotAFile;
    // Address 0 of a process is not mapped, so that this file opens but cannot be read, not even by root.
    QTest::newRow("unreadable") << u"/proc/self/mem"_s << TextFile::Failure::Unreadable;
}

void TestTextFile::aFileThatCannotBeReadSaysWhy()
{
    QFETCH(const QString, path);
    const TextFile file = TextFile::read(path);
    QTEST(file.failure, "failure");
    QCOMPARE(file.reason.isEmpty(), file.failure != TextFile::Failure::Unreadable);
    QVERIFY(file.text.isEmpty());
}

void TestTextFile::aReadingCanBeCancelled()
{
    const QString path = write(QByteArray(5 * 1024 * 1024, 'a'));
    int asked = 0;
    const TextFile file = TextFile::read(path, [&asked] { return ++asked == 3; });
    QCOMPARE(file.failure, TextFile::Failure::Cancelled);
    QCOMPARE(asked, 3);
}

void TestTextFile::aHugeFileEndsBehindAWholeLine()
{
    QFile source(m_folder.filePath(u"huge.txt"_s));
    QVERIFY(source.open(QIODevice::WriteOnly));
    const QByteArray line = QByteArray(98, 'a') + "\xC3\xBC\n";
    const QByteArray block = line.repeated(10000);
    while (source.size() <= TextFile::maximumBytes)
        QCOMPARE(source.write(block), block.size());
    source.close();
    const TextFile file = TextFile::read(source.fileName());
    QCOMPARE(file.size, source.size());
    QVERIFY(!file.isComplete());
    QCOMPARE(file.shownSize, TextFile::maximumBytes / line.size() * line.size());
    QVERIFY(file.text.endsWith(u"a\u00FC\n"_s));
    QVERIFY(source.remove());
}

void TestTextFile::aFileThatTellsNoSizeIsReadAnyway()
{
    const TextFile file = TextFile::read(u"/proc/self/status"_s);
    QVERIFY(file.text.startsWith("Name:"_L1));
    QVERIFY(file.isComplete());
}

QTEST_GUILESS_MAIN(TestTextFile)

#include "tst_textfile.moc"
