#include "importers/CsvDesk.h"
#include "importers/TextLineReader.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QStringEncoder>

#include <sys/resource.h>

using namespace Qt::StringLiterals;

/** Files as they come: encodings, line ends, quoted texts, damage, and sizes beyond reason. */
class TestCsvImporterFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { ImporterTest::prepareApplication(); }
    void textsAreReadInTheirEncoding_data();
    void textsAreReadInTheirEncoding();
    void lineEndsDoNotMatter_data();
    void lineEndsDoNotMatter();
    void aQuotedTextMayHaveSeparatorsAndLineBreaks_data();
    void aQuotedTextMayHaveSeparatorsAndLineBreaks();
    void aQuoteThatNothingClosesTakesNoOtherRow_data();
    void aQuoteThatNothingClosesTakesNoOtherRow();
    void aRowThatDoesNotFitIsSkippedAndLogged_data();
    void aRowThatDoesNotFitIsSkippedAndLogged();
    void remarksNameTheLineOfTheFile();
    void aHeaderWithoutIndexReadsNothing_data();
    void aHeaderWithoutIndexReadsNothing();
    void aFileThatCannotBeOpenedIsAnError();
    void aLockedStoreIsAnError();
    void aLineWithoutEndCostsNoMemory();
    void aLongFileIsReadInBoundedTimeAndMemory();
    void quotesThatNothingClosesCostNoTime();
    void garbageIsToldInFewLines();
    void aLongFieldIsToldInPart();
    void commandsBeyondAllReasonAreRefused();
    void randomDamageNeverStopsTheImport();
};

void TestCsvImporterFiles::textsAreReadInTheirEncoding_data()
{
    QTest::addColumn<QByteArray>("content");
    const QString table = u"index,edsname\n0x2000,Größe µ €\n"_s;
    const QByteArray utf8 = table.toUtf8();
    QTest::newRow("UTF-8") << utf8;
    QTest::newRow("UTF-8 with mark") << "\xEF\xBB\xBF" + utf8;
    QTest::newRow("Windows-1252") << QByteArray("index,edsname\n0x2000,Gr\xF6\xDF"
                                                "e \xB5 \x80\n");
    using Converter = QStringConverter;
    const QStringEncoder::Flags withMark = QStringEncoder::Flag::WriteBom;
    QTest::newRow("UTF-16 LE") << QByteArray(QStringEncoder(Converter::Utf16LE, withMark).encode(table));
    QTest::newRow("UTF-16 BE") << QByteArray(QStringEncoder(Converter::Utf16BE, withMark).encode(table));
}

void TestCsvImporterFiles::textsAreReadInTheirEncoding()
{
    QFETCH(QByteArray, content);
    CsvDesk desk;
    QVERIFY(desk.importBytes(content));
    QCOMPARE(desk.sub(0x2000).name, u"Größe µ €"_s);
    QCOMPARE(desk.remarks(), QStringList());
}

void TestCsvImporterFiles::lineEndsDoNotMatter_data()
{
    QTest::addColumn<QByteArray>("end");
    QTest::newRow("LF") << QByteArray("\n");
    QTest::newRow("CR LF") << QByteArray("\r\n");
    QTest::newRow("CR") << QByteArray("\r");
}

void TestCsvImporterFiles::lineEndsDoNotMatter()
{
    QFETCH(QByteArray, end);
    CsvDesk desk;
    QVERIFY(
        desk.importBytes("index,edsname" + end + "0x2000,one" + end + end + "no index" + end + "0x2001,two"));
    QCOMPARE(desk.rows(), (QStringList{u"2000:00"_s, u"2001:00"_s}));
    QCOMPARE(desk.sub(0x2000).name, u"one"_s);
    QCOMPARE(desk.remarks(), QStringList{u"4: the row is skipped: \"no index\" is no index"_s});
}

void TestCsvImporterFiles::aQuotedTextMayHaveSeparatorsAndLineBreaks_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QString>("text");
    QTest::newRow("separator") << QByteArray("\"one, two\"") << u"one, two"_s;
    QTest::newRow("doubled quotes") << QByteArray("\"the \"\"one\"\"\"") << u"the \"one\""_s;
    QTest::newRow("line break") << QByteArray("\"one\ntwo\"") << u"one\ntwo"_s;
    QTest::newRow("CR LF and a separator") << QByteArray("\"one,\r\ntwo\"") << u"one,\ntwo"_s;
    QTest::newRow("a comment sign in it") << QByteArray("\"one\n# two\nd,3\"") << u"one\n# two\nd,3"_s;
    QTest::newRow("a text with its quotes") << QByteArray("\"one\"") << u"\"one\""_s;
    QTest::newRow("a quote inside") << QByteArray("5\" display") << u"5\" display"_s;
}

void TestCsvImporterFiles::aQuotedTextMayHaveSeparatorsAndLineBreaks()
{
    QFETCH(QByteArray, field);
    CsvDesk desk;
    QVERIFY(desk.importBytes("index,description,size\n0x2000," + field + ",7\n0x2001,next,8\n"));
    QTEST(desk.sub(0x2000).description, "text");
    QCOMPARE(desk.sub(0x2000).size, 7);
    QCOMPARE(desk.sub(0x2001).description, u"next"_s);
    QCOMPARE(desk.rows().size(), 2);
    QVERIFY(desk.importer().deleteCommands().isEmpty());
}

void TestCsvImporterFiles::aQuoteThatNothingClosesTakesNoOtherRow_data()
{
    QTest::addColumn<QByteArray>("rows");
    QTest::newRow("rows behind it") << QByteArray("0x2000,\"one\n0x2001,two\n0x2002,\"three\n");
    QTest::newRow("a later quote before text")
        << QByteArray("0x2000,\"one\ntext \"more\" text\n0x2001,two\n0x2002,\"three\"\n");
    QTest::newRow("at the end of the file") << QByteArray("0x2001,two\n0x2002,three\n0x2000,\"one");
    QTest::newRow("many lines without a quote")
        << "0x2000,\"one\n" + QByteArray("text\n").repeated(50) + "0x2001,two\n0x2002,three\n";
}

void TestCsvImporterFiles::aQuoteThatNothingClosesTakesNoOtherRow()
{
    QFETCH(QByteArray, rows);
    CsvDesk desk;
    QVERIFY(desk.importBytes("index,edsname\n" + rows));
    QCOMPARE(desk.rows(), (QStringList{u"2000:00"_s, u"2001:00"_s, u"2002:00"_s}));
    QCOMPARE(desk.sub(0x2000).name, u"\"one"_s);
    QCOMPARE(desk.sub(0x2001).name, u"two"_s);
}

void TestCsvImporterFiles::aRowThatDoesNotFitIsSkippedAndLogged_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no number") << QByteArray("abc,0,x") << u"\"abc\" is no index"_s;
    QTest::newRow("empty index") << QByteArray(",0,x") << u"\"\" is no index"_s;
    QTest::newRow("index too large") << QByteArray("0x10000,0,x") << u"\"0x10000\" is no index"_s;
    QTest::newRow("negative index") << QByteArray("-1,0,x") << u"\"-1\" is no index"_s;
    QTest::newRow("endless index") << QByteArray("0x99999999999999999999,0,x")
                                   << u"\"0x99999999999999999999\" is no index"_s;
    QTest::newRow("sub-index too large") << QByteArray("0x2000,256,x") << u"\"256\" is no sub-index"_s;
    QTest::newRow("sub-index no number") << QByteArray("0x2000,one,x") << u"\"one\" is no sub-index"_s;
    QTest::newRow("too many fields") << QByteArray("0x2000,0,x,y") << u"there are more fields than columns"_s;
    QTest::newRow("broken UTF-8") << QByteArray("\xC3\x28,0,x") << u"\"Ã(\" is no index"_s;
}

void TestCsvImporterFiles::aRowThatDoesNotFitIsSkippedAndLogged()
{
    QFETCH(QByteArray, row);
    QFETCH(QString, reason);
    CsvDesk desk;
    QVERIFY(desk.importBytes("index,sub,edsname\n" + row + "\n0x2005,0,kept,\n"));
    QCOMPARE(desk.rows(), QStringList{u"2005:00"_s});
    QCOMPARE(desk.remarks(), QStringList{u"2: the row is skipped: "_s + reason});
    QCOMPARE(desk.errors(), QStringList());
}

void TestCsvImporterFiles::remarksNameTheLineOfTheFile()
{
    CsvDesk desk;
    QVERIFY(
        desk.importBytes("# one\r\n\r\nindex,sub,size\r\n\r\nbad\r\n0x2000,0,\"a,\r\nb\"\r\nc,1\r\n0x2001,"
                         + QByteArray(CsvImporter::longestRow, 'x') + "\r\nzero \0 bytes\r\n0x2002,0,x"_ba));
    QCOMPARE(desk.remarks(),
             (QStringList{u"5: the row is skipped: \"bad\" is no index"_s,
                          u"6: \"a,\nb\" is not understood, 0 was taken"_s, u"8: the command is refused"_s,
                          u"8: a line behind this one is too long and is skipped"_s,
                          u"10: the line holds zero bytes and is skipped"_s,
                          u"11: \"x\" is not understood, 0 was taken"_s}));
}

void TestCsvImporterFiles::aHeaderWithoutIndexReadsNothing_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("remarks");
    QTest::newRow("other columns") << QByteArray("name,sub\n0x2000,0\n") << 2;
    QTest::newRow("no header at all") << QByteArray("0x2000,0,UNSIGNED8\n0x2001,0,UNSIGNED8\n") << 2;
    QTest::newRow("tabs") << QByteArray("index\tsub\n0x2000\t0\n") << 2;
    QTest::newRow("empty") << QByteArray() << 0;
    QTest::newRow("comments only") << QByteArray("# index,sub\n#\n") << 0;
    QTest::newRow("binary") << QByteArray("\x7F"
                                          "ELF\0\0\1\2\xFF\xFE\n\0\n\xD0\xCF\x11\xE0,\n",
                                          19)
                            << 3;
}

void TestCsvImporterFiles::aHeaderWithoutIndexReadsNothing()
{
    QFETCH(QByteArray, content);
    CsvDesk desk;
    QVERIFY(desk.importBytes(content));
    QCOMPARE(desk.rows(), QStringList());
    QVERIFY(desk.importer().importedObjects().isEmpty());
    QTEST(int(desk.remarks().size()), "remarks");
    QCOMPARE(desk.errors(), QStringList());
}

void TestCsvImporterFiles::aFileThatCannotBeOpenedIsAnError()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes("index\n0x2000\nd,0x2000\n"));
    ImporterTest::Recorder recorder(desk.importer());
    QVERIFY(QFile::remove(desk.path()));
    QVERIFY(ImporterTest::run(desk.importer()));
    QTRY_COMPARE(recorder.ends, 1);
    QCOMPARE(recorder.errors, QStringList{u"File %1 is not readable."_s.arg(desk.path())});
    QCOMPARE(recorder.percents.constLast(), 100);
    QVERIFY(desk.importer().importedObjects().isEmpty());
    QVERIFY(desk.importer().deleteCommands().isEmpty());
}

void TestCsvImporterFiles::aLockedStoreIsAnError()
{
    CsvDesk desk;
    QVERIFY(ImporterTest::write(desk.path(), "index\n0x2000\nd,0x2000\n"));
    desk.store().setWriteLock(true);
    QVERIFY(desk.importFile(desk.path()));
    desk.store().setWriteLock(false);
    QCOMPARE(desk.errors(), QStringList{u"The project is locked by another operation."_s});
    QCOMPARE(desk.rows(), QStringList());
    QVERIFY(desk.importer().deleteCommands().isEmpty());
}

namespace {

/** Largest memory of this process so far, in bytes. */
qint64 peakMemory()
{
    rusage usage;
    getrusage(RUSAGE_SELF, &usage);
    return qint64(usage.ru_maxrss) * 1024;
}

constexpr qint64 megabyte = 1024 * 1024;

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define NODESMITH_KEEPS_FREED_MEMORY
#endif
#endif

/** Whether the process may have grown so much; a sanitizer keeps what was freed and proves nothing. */
bool hasGrownLess(qint64 before, qint64 limit)
{
#ifdef NODESMITH_KEEPS_FREED_MEMORY
    Q_UNUSED(before)
    Q_UNUSED(limit)
    return true;
#else
    return peakMemory() - before < limit;
#endif
}

bool writeRepeated(const QString &path, const QByteArray &head, const QByteArray &piece, qint64 size)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(head) != head.size())
        return false;
    const QByteArray block = piece.repeated(qsizetype(megabyte / piece.size()));
    while (file.size() < size) {
        if (file.write(block) != block.size())
            return false;
    }
    return true;
}

} // namespace

void TestCsvImporterFiles::aLineWithoutEndCostsNoMemory()
{
    CsvDesk desk;
    QVERIFY(writeRepeated(desk.path(), "index,edsname\n0x2000,", "x", 100 * megabyte));
    const qint64 before = peakMemory();
    QElapsedTimer time;
    time.start();
    QVERIFY(desk.importFile(desk.path()));
    QVERIFY(time.elapsed() < 10000);
    QVERIFY(hasGrownLess(before, 20 * megabyte));
    QCOMPARE(desk.rows(), QStringList());
    QCOMPARE(desk.remarks(), QStringList{u"1: a line behind this one is too long and is skipped"_s});
}

void TestCsvImporterFiles::aLongFileIsReadInBoundedTimeAndMemory()
{
    CsvDesk desk;
    QByteArray rows;
    constexpr int objects = 20;
    for (int object = 0; object < objects; ++object)
        rows +=
            "0x20" + QByteArray::number(object + 0x10, 16) + ",0,UNSIGNED32,A name of a usual length,rw\n";
    rows += "no row,0,UNSIGNED32,A name of a usual length,rw\n";
    QVERIFY(writeRepeated(desk.path(), "index,sub,datatype,edsname,access\n", rows, 20 * megabyte));
    const qint64 before = peakMemory();
    QElapsedTimer time;
    time.start();
    QVERIFY(desk.importFile(desk.path()));
    QVERIFY2(time.elapsed() < 60000, qPrintable(QString::number(time.elapsed())));
    QVERIFY(hasGrownLess(before, 60 * megabyte));
    QCOMPARE(desk.rows().size(), objects);
}

void TestCsvImporterFiles::quotesThatNothingClosesCostNoTime()
{
    CsvDesk desk;
    QElapsedTimer time;
    time.start();
    for (const char *piece : {",\"\n", "\",\"\n", ",\"\"\"\n", "0x2000,\"\n", "a\"b,\"\n"}) {
        QVERIFY(writeRepeated(desk.path(), "index,edsname\n", piece, 2 * megabyte));
        QVERIFY(desk.importFile(desk.path()));
    }
    QVERIFY2(time.elapsed() < 60000, qPrintable(QString::number(time.elapsed())));
}

void TestCsvImporterFiles::garbageIsToldInFewLines()
{
    CsvDesk desk;
    QVERIFY(writeRepeated(desk.path(), "index,edsname\n", "garbage\n", megabyte));
    QVERIFY(desk.importFile(desk.path()));
    const QStringList remarks = desk.remarks();
    QCOMPARE(remarks.size(), 101);
    QCOMPARE(remarks.constFirst(), u"2: the row is skipped: \"garbage\" is no index"_s);
    QCOMPARE(remarks.constLast(), u" %1 more remarks"_s.arg(megabyte / 8 - 100));
}

void TestCsvImporterFiles::aLongFieldIsToldInPart()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes("index,sub,access\n" + QByteArray(5000, 'i') + ",0,rw\n0x2000,"
                             + QByteArray(5000, 's') + ",rw\n0x2000,0," + QByteArray(5000, 'a') + "\n"));
    const auto part = [](QChar c) { return QString(QString(100, c) + u"..."_s); };
    QCOMPARE(desk.remarks(),
             (QStringList{u"2: the row is skipped: \"%1\" is no index"_s.arg(part(u'i')),
                          u"3: the row is skipped: \"%1\" is no sub-index"_s.arg(part(u's')),
                          u"4: \"%1\" is not understood, rw was taken"_s.arg(part(u'a'))}));
}

void TestCsvImporterFiles::commandsBeyondAllReasonAreRefused()
{
    CsvDesk desk;
    QVERIFY(writeRepeated(desk.path(), "index,sub\n", "d,0x2000\nc,0x2000,0x2001\n", 3 * megabyte));
    QVERIFY(desk.importFile(desk.path()));
    QCOMPARE(desk.importer().copyCommands().size(), CsvImporter::mostCommands / 2);
    QCOMPARE(desk.importer().deleteCommands().size(), CsvImporter::mostCommands / 2);
    QCOMPARE(desk.remarks().constFirst(),
             u"%1: there are too many commands"_s.arg(CsvImporter::mostCommands + 2));
}

void TestCsvImporterFiles::randomDamageNeverStopsTheImport()
{
    const QByteArray table("index,sub,objectcode,datatype,edsname,value\n0x2000,,ARRAY,UNSIGNED8,Array,\n"
                           "0x2000,0,VARIABLE,UNSIGNED8,\"Count, all\",2\n0x2000,1,VARIABLE,UNSIGNED8,One,1\n"
                           "c,0x2000,0x2001\nd,0x2000,1\n0x2010,0,VARIABLE,VISIBLE_STRING,Text,\"a\nb\"\n");
    constexpr quint32 seed = 0x5EED;
    QRandomGenerator random(seed);
    CsvDesk desk;
    for (int round = 0; round < 300; ++round) {
        QByteArray damaged = table;
        const int changes = random.bounded(1, 12);
        for (int change = 0; change < changes; ++change)
            damaged[random.bounded(damaged.size())] = char(random.bounded(256));
        damaged.truncate(random.bounded(damaged.size() / 2, damaged.size() + 1));
        QVERIFY(desk.importBytes(damaged));
        QCOMPARE(desk.errors(), QStringList());
        const ImporterTest::DebugLines lines;
        desk.importer().carryOutCommands(CsvDesk::line);
    }
}

QTEST_GUILESS_MAIN(TestCsvImporterFiles)
#include "tst_csvimporterfiles.moc"
