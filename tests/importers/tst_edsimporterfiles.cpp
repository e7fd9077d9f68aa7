#include "importers/DescriptionImport.h"
#include "importers/EDSImporter.h"

#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>

#include <sys/resource.h>

using namespace Qt::StringLiterals;
using Import = DescriptionImport<EDSImporter>;

namespace {

constexpr qint64 megabyte = 1024 * 1024;
constexpr qint64 mostMemory = 1500 * megabyte; ///< of the whole test program
constexpr int longestMs = 30000;

/** The most memory that the process has ever had, in bytes. */
qint64 peakMemory()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss * 1024;
}

QByteArray device(int objects)
{
    QByteArray text = "[DeviceInfo]\nVendorName=Korvel\n";
    for (int object = 0; object < objects; ++object)
        text += '[' + QByteArray::number(0x2000 + object, 16)
            + "]\nParameterName=Value\nObjectType=7\nDataType=5\nAccessType=rw\nDefaultValue=1\n";
    return text;
}

} // namespace

/** Files that are no device descriptions, or damaged ones: a clear word, in bounded memory and time. */
class TestEdsImporterFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { ImporterTest::prepareApplication(); }
    void aFileThatCannotBeLoadedEndsTheImportWithNothingRead_data();
    void aFileThatCannotBeLoadedEndsTheImportWithNothingRead();
    void aFileWithoutObjectsIsAnError();
    void aVanishedFileIsAnError();
    void aCutFileGivesWhatStandsInIt();
    void aFileThatIsFarTooLargeIsRefused();
    void aFileWithFarTooManyEntriesIsRefused();
    void anEndlessLineIsSurvived_data();
    void anEndlessLineIsSurvived();
    void deviationsWithoutEndAreBounded();
    void objectsThatReferToEachOtherAreNoProblem();
    void aHugeCompactObjectIsBounded();
    void theWholeIndexRangeIsImported();
    void randomDamageNeverStopsTheImport();
    void anImportThatIsDeletedEnds();

private:
    QTemporaryDir m_folder;
};

void TestEdsImporterFiles::aFileThatCannotBeLoadedEndsTheImportWithNothingRead_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("error");
    QTest::newRow("empty") << QByteArray() << u"The file holds no section."_s;
    QTest::newRow("text") << QByteArray("Dear reader,\nthis is no device.\n")
                          << u"The file holds no section."_s;
    QTest::newRow("binary") << QByteArray("\x7F"
                                          "ELF\x02\x01\x01\0\0\0\xFF\xFE",
                                          12)
                            << u"The file holds no section."_s;
    QTest::newRow("zeros") << QByteArray(100000, '\0') << u"The file holds no section."_s;
}

void TestEdsImporterFiles::aFileThatCannotBeLoadedEndsTheImportWithNothingRead()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, error);
    Import device;
    device.importer.setImportFileInfo(true);
    const QString before = device.store->contentHash();
    QVERIFY(device.bytes(file));
    QCOMPARE(device.errors, QStringList{device.importer.fileName() + u": " + error});
    QCOMPARE(device.store->contentHash(), before);
}

void TestEdsImporterFiles::aFileWithoutObjectsIsAnError()
{
    Import device;
    device.importer.setImportFileInfo(true);
    const QString before = device.store->contentHash();
    QVERIFY(device.bytes("[DeviceInfo]\nVendorName=Korvel\n[14XX]\nParameterName=Form\n"));
    QCOMPARE(device.errors, QStringList{u"File %1 describes no object."_s.arg(device.importer.fileName())});
    QCOMPARE(device.store->contentHash(), before);
}

void TestEdsImporterFiles::aVanishedFileIsAnError()
{
    const QString path = m_folder.filePath(u"vanished.eds"_s);
    QVERIFY(ImporterTest::write(path, device(1)));
    Import device;
    const ImporterTest::Recorder recorder(device.importer);
    QVERIFY(device.importer.setFile(path));
    QVERIFY(QFile::remove(path));
    QVERIFY(ImporterTest::run(device.importer));
    QTRY_COMPARE(recorder.errors.size(), 1);
    QVERIFY2(recorder.errors.constFirst().startsWith(path + u": The file cannot be opened"),
             qPrintable(recorder.errors.constFirst()));
}

void TestEdsImporterFiles::aCutFileGivesWhatStandsInIt()
{
    const QByteArray whole = device(3);
    qsizetype former = 0;
    for (qsizetype size = 31; size < whole.size(); size += 7) {
        Import device;
        QVERIFY(device.bytes(whole.first(size)));
        const qsizetype objects = device.importer.importedObjects().size();
        QVERIFY(objects >= former && objects <= 3);
        QCOMPARE(device.errors.isEmpty(), objects > 0);
        former = objects;
    }
    QCOMPARE(former, 3);
}

void TestEdsImporterFiles::aFileThatIsFarTooLargeIsRefused()
{
    const QString path = m_folder.filePath(u"large.eds"_s);
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        const QByteArray piece = device(5000);
        while (file.size() < 100 * megabyte)
            QVERIFY(file.write(piece) > 0);
    }
    QElapsedTimer timer;
    timer.start();
    Import device;
    QVERIFY(device.file(path));
    QCOMPARE(device.errors, QStringList{path + u": The file is too large for a device description."});
    QCOMPARE(device.rows(), QStringList());
    QVERIFY(timer.elapsed() < longestMs);
    QVERIFY(peakMemory() < mostMemory);
    QFile::remove(path);
}

void TestEdsImporterFiles::aFileWithFarTooManyEntriesIsRefused()
{
    QByteArray file = "[Numbers]\n";
    for (int number = 0; number < 1'100'000; ++number)
        file += QByteArray::number(number) + "=\n";
    QElapsedTimer timer;
    timer.start();
    Import device;
    QVERIFY(device.bytes(file));
    QCOMPARE(device.errors,
             QStringList{device.importer.fileName()
                         + u": The file has more entries than a device description can have."});
    QVERIFY(timer.elapsed() < longestMs);
    QVERIFY(peakMemory() < mostMemory);
}

void TestEdsImporterFiles::anEndlessLineIsSurvived_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::newRow("value") << QByteArray("DefaultValue=");
    QTest::newRow("comment") << QByteArray(";;");
    QTest::newRow("section") << QByteArray("[");
    QTest::newRow("no entry") << QByteArray();
}

void TestEdsImporterFiles::anEndlessLineIsSurvived()
{
    QFETCH(QByteArray, before);
    QElapsedTimer timer;
    timer.start();
    Import device;
    QVERIFY(device.bytes("[2000]\nParameterName=Value\nDataType=5\nAccessType=rw\n" + before
                         + QByteArray(10 * megabyte, 'x')));
    QCOMPARE(device.rows(), QStringList{u"2000:00"_s});
    QVERIFY(device.findings.contains(u"5: The line is longer than 255 characters."_s));
    QVERIFY(timer.elapsed() < longestMs);
    QVERIFY(peakMemory() < mostMemory);
}

void TestEdsImporterFiles::deviationsWithoutEndAreBounded()
{
    Import device;
    QVERIFY(device.bytes("[2000]\nParameterName=Value\nDataType=5\nAccessType=rw\n"
                         + QByteArray("what\n").repeated(100'000)));
    QCOMPARE(device.rows(), QStringList{u"2000:00"_s});
    QCOMPARE(device.findings.size(), EdsFindings::limit + 1);
    QVERIFY(device.findings.constLast().endsWith(u"More findings are not listed."_s));
}

void TestEdsImporterFiles::objectsThatReferToEachOtherAreNoProblem()
{
    Import device;
    device.importer.setImportFileInfo(true);
    QVERIFY(device.bytes("[2000]\nParameterName=[2001]\nDataType=0x2001\nAccessType=rw\n"
                         "[2001]\nParameterName=[2000]\nDataType=0x2000\nAccessType=rw\nCompactSubObj=1\n"
                         "[2000ObjectLinks]\nObjectLinks=1\n1=0x2001\n"
                         "[2001ObjectLinks]\nObjectLinks=1\n1=0x2000\n[2001Name]\n1=[2001Name]\n"));
    QCOMPARE(device.rows(), (QStringList{u"2000:00"_s, u"2001:00"_s, u"2001:01"_s}));
    QCOMPARE(device.sub(0x2001, 1).name, u"[2001Name]"_s);
}

void TestEdsImporterFiles::aHugeCompactObjectIsBounded()
{
    Import device;
    QVERIFY(device.bytes(
        "[2000]\nParameterName=V\nObjectType=8\nDataType=5\nAccessType=rw\nCompactSubObj=255\n"
        "[2001]\nParameterName=V\nObjectType=8\nDataType=5\nAccessType=rw\nCompactSubObj=4000000000\n"));
    QCOMPARE(device.rows().filter(u"2000:"_s).size(), 255);
    QVERIFY(device.findings.contains(
        u"12: CompactSubObj is \"4000000000\", which is no number up to 255; it is left out."_s));
}

void TestEdsImporterFiles::theWholeIndexRangeIsImported()
{
    Import device;
    QVERIFY(device.bytes(::device(0xA000)));
    QCOMPARE(device.store->getIndexList(ImporterTest::staging, 0x1000).size(), 0xA000);
    QCOMPARE(device.findings, QStringList());
}

void TestEdsImporterFiles::randomDamageNeverStopsTheImport()
{
    QRandomGenerator random(306);
    const QByteArray whole = device(20) + "[3000]\nParameterName=V\nObjectType=8\nCompactSubObj=3\n";
    for (int round = 0; round < 100; ++round) {
        QByteArray damaged = whole;
        for (int hit = 0; hit < 30; ++hit) {
            const auto place = qsizetype(random.bounded(quint32(damaged.size())));
            switch (random.bounded(3)) {
            case 0:
                damaged[place] = char(random.bounded(256));
                break;
            case 1:
                damaged.remove(place, 1 + random.bounded(20));
                break;
            default:
                damaged.insert(place, damaged.mid(qsizetype(random.bounded(quint32(damaged.size()))), 30));
            }
        }
        Import device;
        device.importer.setImportFileInfo(true);
        QVERIFY(device.bytes(damaged));
        QCOMPARE(device.store->getIndexList(ImporterTest::staging), device.importer.importedObjects().keys());
    }
}

void TestEdsImporterFiles::anImportThatIsDeletedEnds()
{
    const QString path = m_folder.filePath(u"deleted.eds"_s);
    QVERIFY(ImporterTest::write(path, device(20'000)));
    const auto store = ImporterTest::newStore();
    QElapsedTimer timer;
    timer.start();
    {
        EDSImporter importer;
        importer.setDatabase(store);
        QVERIFY(importer.setFile(path));
        QVERIFY(importer.startImport());
    }
    QVERIFY(timer.elapsed() < longestMs);
    QVERIFY(store->addIndex(ImporterTest::staging, 0x5FFF, {.name = u"the store is free"_s}));
}

QTEST_GUILESS_MAIN(TestEdsImporterFiles)
#include "tst_edsimporterfiles.moc"
