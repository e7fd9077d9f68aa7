// Functions refer to local variables that outlive their senders. clazy:excludeall=lambda-in-connect

#include "importers/ImporterTest.h"

#include <QElapsedTimer>
#include <QSemaphore>
#include <QThread>
#include <QTimer>

using namespace Qt::StringLiterals;
using ImporterTest::staging;

/** An importer whose read the test holds up and fills as it likes. */
class SteeredImporter : public BaseDataImporter
{
    Q_OBJECT

public:
    SteeredImporter() = default;
    ~SteeredImporter() override { endWorker(); }

    void doImport() override
    {
        readThread = QThread::currentThread();
        priority = QThread::currentThread()->priority();
        const Session session(*this);
        wasOpen = session.isOpen();
        begun.release();
        if (waits)
            mayGoOn.acquire();
        for (int wait = 0; untilCancelled && !isCancelled() && wait < 10000; ++wait)
            QThread::msleep(1);
        wasCancelled = isCancelled();
        if (!wasOpen)
            return;
        for (int i = 0; i < objects; ++i) {
            const auto index = quint16(0x2000 + i);
            ObjectDataBase::INDEX_DATA_T data;
            data.name = u"object %1"_s.arg(i);
            data.objecttype = CANopen::Var;
            addObject(index, data);
            ObjectDataBase::SUBINDEX_DATA_T sub;
            sub.name = u"value"_s;
            sub.accesstype = u"rw"_s;
            addSubIndex(index, 0, sub);
            reportProgress(i + 1, objects);
        }
        if (fails)
            Q_EMIT importError(u"damaged"_s);
    }

    QSemaphore begun;
    QSemaphore mayGoOn;
    bool waits = false;
    bool untilCancelled = false;
    bool fails = false;
    int objects = 1;
    std::atomic<QThread *> readThread = nullptr;
    std::atomic<QThread::Priority> priority = QThread::NormalPriority;
    std::atomic<bool> wasOpen = false;
    std::atomic<bool> wasCancelled = false;
};

/** What all importers share: set-up, worker thread, store, signals. */
class TestBaseDataImporter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { ImporterTest::prepareApplication(); }
    void init();
    void cleanup() { m_store.reset(); }
    void settersTellWhetherTheyTookTheirValue();
    void aFileThatCannotBeReadClearsTheName_data();
    void aFileThatCannotBeReadClearsTheName();
    void widthsMapToDataTypes_data();
    void widthsMapToDataTypes();
    void anImporterAtRestIsFinished();
    void theReadRunsOnAThreadThatEnds();
    void aSecondStartIsRefusedWhileTheFirstRuns();
    void anImporterReadsAgain();
    void anImporterWithParentDoesNotStart();
    void progressGoesFromZeroToHundred();
    void theProgressEndsWithHundredAfterAFailureToo();
    void rowsAndObjectsAreToldAndKept();
    void theStoreIsSilentDuringTheImport_data();
    void theStoreIsSilentDuringTheImport();
    void otherThreadsWaitInTheStoreMeanwhile();
    void deletingARunningImporterEndsTheRead();
    void deletingAnImporterRightAfterItsStart();
    void anImportNeedsWhatItReadsInto_data();
    void anImportNeedsWhatItReadsInto();
    void aLockedStoreStaysAsItIs();
    void doImportMayRunInTheCallersThread();

private:
    void prepare(SteeredImporter &importer) const;

    QTemporaryDir m_folder;
    QString m_file;
    QSharedPointer<ObjectDataBase> m_store;
};

void TestBaseDataImporter::init()
{
    m_file = m_folder.filePath(u"input.txt"_s);
    QVERIFY(ImporterTest::write(m_file, "content"));
    m_store = ImporterTest::newStore();
}

void TestBaseDataImporter::prepare(SteeredImporter &importer) const
{
    QVERIFY(importer.setDatabase(m_store));
    QVERIFY(importer.setFile(m_file));
}

void TestBaseDataImporter::settersTellWhetherTheyTookTheirValue()
{
    SteeredImporter importer;
    QVERIFY(importer.setLine(3));
    QVERIFY(importer.setLine(quint8(-1)));
    QVERIFY(!importer.setDatabase(nullptr));
    QVERIFY(importer.setDatabase(m_store));
    QVERIFY(importer.setFile(m_file));
    QCOMPARE(importer.fileName(), m_file);
}

void TestBaseDataImporter::aFileThatCannotBeReadClearsTheName_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("missing") << m_folder.filePath(u"no such file"_s);
    QTest::newRow("folder") << m_folder.path();
    QTest::newRow("empty") << QString();
}

void TestBaseDataImporter::aFileThatCannotBeReadClearsTheName()
{
    QFETCH(QString, path);
    SteeredImporter importer;
    QVERIFY(importer.setFile(m_file));
    QVERIFY(!importer.setFile(path));
    QCOMPARE(importer.fileName(), QString());
}

void TestBaseDataImporter::widthsMapToDataTypes_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("asUnsigned");
    QTest::addColumn<int>("asSigned");
    const int expected[][3] = {
        {0, 121, 121},  {1, 1, 1},      {2, 100, 100},  {3, 101, 101},  {4, 102, 102},  {5, 103, 103},
        {6, 104, 104},  {7, 105, 105},  {8, 5, 2},      {9, 0, 0},      {10, 107, 107}, {11, 108, 108},
        {12, 109, 109}, {13, 110, 110}, {14, 111, 111}, {15, 0, 0},     {16, 6, 3},     {17, 0, 0},
        {18, 118, 118}, {19, 117, 117}, {20, 0, 0},     {21, 119, 119}, {24, 22, 16},   {29, 129, 129},
        {32, 7, 4},     {33, 0, 0},     {40, 24, 18},   {48, 25, 19},   {56, 26, 20},   {64, 27, 21},
        {65, 10, 10},   {4096, 10, 10}, {-1, 0, 0},
    };
    for (const auto &row : expected)
        QTest::addRow("%d bits", row[0]) << row[0] << row[1] << row[2];
}

void TestBaseDataImporter::widthsMapToDataTypes()
{
    QFETCH(int, bits);
    QTEST(int(BaseDataImporter::dataTypeOfWidth(bits, false)), "asUnsigned");
    QTEST(int(BaseDataImporter::dataTypeOfWidth(bits, true)), "asSigned");
}

void TestBaseDataImporter::anImporterAtRestIsFinished()
{
    const SteeredImporter importer;
    QVERIFY(importer.isFinished());
    QVERIFY(!importer.isBusy());
    QVERIFY(importer.importedObjects().isEmpty());
}

void TestBaseDataImporter::theReadRunsOnAThreadThatEnds()
{
    SteeredImporter importer;
    prepare(importer);
    importer.waits = true;
    QVERIFY(importer.startImport());
    importer.begun.acquire();
    QVERIFY(importer.isBusy());
    QVERIFY(!importer.isFinished());
    QVERIFY(importer.readThread != QThread::currentThread());
    QCOMPARE(int(importer.priority.load()), 7);
    importer.mayGoOn.release();
    QTRY_VERIFY_WITH_TIMEOUT(importer.isFinished(), ImporterTest::waitMs);
    QVERIFY(!importer.isBusy());
    QCOMPARE(importer.thread(), QThread::currentThread());
}

void TestBaseDataImporter::aSecondStartIsRefusedWhileTheFirstRuns()
{
    SteeredImporter importer;
    prepare(importer);
    importer.waits = true;
    QVERIFY(importer.startImport());
    QVERIFY(!importer.startImport());
    importer.begun.acquire();
    QVERIFY(!importer.startImport());
    importer.mayGoOn.release();
    QTRY_VERIFY_WITH_TIMEOUT(importer.isFinished(), ImporterTest::waitMs);
    QCOMPARE(importer.begun.available(), 0);
}

void TestBaseDataImporter::anImporterReadsAgain()
{
    SteeredImporter importer;
    prepare(importer);
    ImporterTest::Recorder recorder(importer);
    for (int round = 1; round <= 3; ++round) {
        importer.objects = round;
        QVERIFY(ImporterTest::run(importer));
        QCOMPARE(importer.importedObjects().size(), round);
        QTRY_COMPARE(recorder.ends, round);
    }
    QCOMPARE(m_store->getIndexList(staging).size(), 3);
}

void TestBaseDataImporter::anImporterWithParentDoesNotStart()
{
    QObject parent;
    auto *importer = new SteeredImporter;
    importer->setParent(&parent);
    prepare(*importer);
    QVERIFY(!importer->startImport());
}

void TestBaseDataImporter::progressGoesFromZeroToHundred()
{
    SteeredImporter importer;
    prepare(importer);
    importer.objects = 250;
    ImporterTest::Recorder recorder(importer);
    QVERIFY(ImporterTest::run(importer));
    QTRY_COMPARE(recorder.ends, 1);
    QCOMPARE(recorder.percents.first(), 0);
    QCOMPARE(recorder.percents.last(), 100);
    QVERIFY(recorder.percents.contains(50));
    QVERIFY(std::adjacent_find(recorder.percents.cbegin(), recorder.percents.cend(), std::greater_equal<>())
            == recorder.percents.cend());
}

void TestBaseDataImporter::theProgressEndsWithHundredAfterAFailureToo()
{
    SteeredImporter importer;
    prepare(importer);
    importer.fails = true;
    importer.objects = 0;
    ImporterTest::Recorder recorder(importer);
    QVERIFY(ImporterTest::run(importer));
    QTRY_COMPARE(recorder.ends, 1);
    QCOMPARE(recorder.errors, QStringList{u"damaged"_s});
    QCOMPARE(recorder.percents, (QList<int>{0, 100}));
}

void TestBaseDataImporter::rowsAndObjectsAreToldAndKept()
{
    SteeredImporter importer;
    prepare(importer);
    importer.objects = 5000; // more than one transaction
    ImporterTest::Recorder recorder(importer);
    QVERIFY(ImporterTest::run(importer));
    QTRY_COMPARE(recorder.ends, 1);
    QCOMPARE(recorder.objects.size(), 5000);
    QCOMPARE(recorder.subs.size(), 5000);
    QCOMPARE(recorder.objects.last().index, 0x2000 + 4999);
    QCOMPARE(recorder.objects.last().name, u"object 4999"_s);
    QCOMPARE(recorder.subs.last().accessType, u"rw"_s);
    QCOMPARE(importer.importedObjects().value(0x2001).name, u"object 1"_s);
    QCOMPARE(ImporterTest::rows(*m_store, staging).size(), 5000);
    QCOMPARE(ImporterTest::sub(*m_store, staging, 0x2000 + 4999, 0).name, u"value"_s);
}

void TestBaseDataImporter::theStoreIsSilentDuringTheImport_data()
{
    QTest::addColumn<bool>("silentBefore");
    QTest::addColumn<bool>("fails");
    QTest::newRow("a store that tells, good file") << false << false;
    QTest::newRow("a store that tells, failed read") << false << true;
    QTest::newRow("a silent store, good file") << true << false;
    QTest::newRow("a silent store, failed read") << true << true;
}

void TestBaseDataImporter::theStoreIsSilentDuringTheImport()
{
    QFETCH(bool, silentBefore);
    QFETCH(bool, fails);
    std::atomic<int> notices = 0;
    const auto count = [&notices] { ++notices; };
    connect(m_store.get(), &ObjectDataBase::updateNotify, this, count, Qt::DirectConnection);
    connect(m_store.get(), &ObjectDataBase::databaseWriteExecuted, this, count, Qt::DirectConnection);
    m_store->setTrackWrites(true);
    m_store->blockSignals(silentBefore);
    SteeredImporter importer;
    prepare(importer);
    importer.fails = fails;
    QVERIFY(ImporterTest::run(importer));
    QCOMPARE(notices, 0);
    QCOMPARE(m_store->signalsBlocked(), silentBefore);
    QVERIFY(m_store->setMiscSetting(u"key"_s, u"value"_s));
    QCOMPARE(notices > 0, !silentBefore);
}

void TestBaseDataImporter::otherThreadsWaitInTheStoreMeanwhile()
{
    SteeredImporter importer;
    prepare(importer);
    importer.waits = true;
    QList<bool> states;
    connect(m_store.get(), &ObjectDataBase::blockStateChanged, this,
            [&states](bool blocked) { states.append(blocked); });
    QVERIFY(importer.startImport());
    importer.begun.acquire();
    // Only an event that is served while the read below waits lets the importer go on.
    bool served = false;
    QTimer release;
    release.setSingleShot(true);
    connect(&release, &QTimer::timeout, &release, [&] {
        served = true;
        importer.mayGoOn.release();
    });
    release.start(50);
    QCOMPARE(m_store->getIndexList(staging).size(), 1);
    QVERIFY(served);
    QTRY_COMPARE(states, (QList<bool>{true, false}));
    QTRY_VERIFY_WITH_TIMEOUT(importer.isFinished(), ImporterTest::waitMs);
}

void TestBaseDataImporter::deletingARunningImporterEndsTheRead()
{
    auto importer = std::make_unique<SteeredImporter>();
    prepare(*importer);
    importer->untilCancelled = true;
    QVERIFY(importer->startImport());
    importer->begun.acquire();
    QElapsedTimer time;
    time.start();
    importer.reset();
    QVERIFY(time.elapsed() < 5000);
    QVERIFY(!m_store->signalsBlocked());
    QCOMPARE(m_store->getIndexList(staging).size(), 1);
}

void TestBaseDataImporter::deletingAnImporterRightAfterItsStart()
{
    for (int round = 0; round < 50; ++round) {
        auto importer = std::make_unique<SteeredImporter>();
        prepare(*importer);
        QVERIFY(importer->startImport());
        importer.reset();
        QVERIFY(!m_store->signalsBlocked());
    }
    QVERIFY(m_store->addIndex(staging, 0x3000, {}));
}

void TestBaseDataImporter::anImportNeedsWhatItReadsInto_data()
{
    QTest::addColumn<bool>("hasStore");
    QTest::addColumn<bool>("hasFile");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("error");
    QTest::newRow("no project") << false << true << 0 << u"There is no project to import into."_s;
    QTest::newRow("no file") << true << false << 0 << u"There is no file to import."_s;
    QTest::newRow("no line") << true << true << 7 << u"The project has no line 7 to import into."_s;
}

void TestBaseDataImporter::anImportNeedsWhatItReadsInto()
{
    QFETCH(bool, hasStore);
    QFETCH(bool, hasFile);
    QFETCH(int, line);
    SteeredImporter importer;
    if (hasStore)
        importer.setDatabase(m_store);
    if (hasFile)
        importer.setFile(m_file);
    importer.setLine(quint8(line));
    ImporterTest::Recorder recorder(importer);
    QVERIFY(ImporterTest::run(importer));
    QTRY_COMPARE(recorder.ends, 1);
    QVERIFY(!importer.wasOpen);
    QTEST(recorder.errors.join(u'|'), "error");
    QCOMPARE(recorder.percents, (QList<int>{0, 100}));
    QVERIFY(!m_store->signalsBlocked());
    QVERIFY(m_store->addIndex(0, 0x3000, {}));
}

void TestBaseDataImporter::aLockedStoreStaysAsItIs()
{
    // As a generator holds it: its own thread is exempt, the importer's is not.
    m_store->setWriteLock(true);
    SteeredImporter importer;
    prepare(importer);
    ImporterTest::Recorder recorder(importer);
    QVERIFY(ImporterTest::run(importer));
    QTRY_COMPARE(recorder.ends, 1);
    QCOMPARE(recorder.errors, QStringList{u"The project is locked by another operation."_s});
    QVERIFY(m_store->isWriteLocked());
    m_store->setWriteLock(false);
    QVERIFY(m_store->getIndexList(staging).isEmpty());
}

void TestBaseDataImporter::doImportMayRunInTheCallersThread()
{
    SteeredImporter importer;
    prepare(importer);
    importer.doImport();
    QVERIFY(importer.isFinished());
    QCOMPARE(m_store->getIndexList(staging), QList<quint16>{0x2000});
    QVERIFY(!m_store->signalsBlocked());
}

QTEST_GUILESS_MAIN(TestBaseDataImporter)
#include "tst_basedataimporter.moc"
