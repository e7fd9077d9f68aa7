#include "canopen/CANTypes.h"
#include "importers/ImporterTest.h"
#include "importers/VEXPImporter.h"

#include <QDir>
#include <QRandomGenerator>
#include <QScopeGuard>

using namespace Qt::StringLiterals;
using ImporterTest::staging;

/** Objects of other projects: a project file in, rows of the staging line out. */
class TestVexpImporter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup() { m_store.reset(); }
    void theObjectsOfALineComeWhole();
    void theDefaultSourceLineIsTheFirst_data();
    void theDefaultSourceLineIsTheFirst();
    void aLineThatIsNotThereIsAnError();
    void theRangeChoosesTheObjects_data();
    void theRangeChoosesTheObjects();
    void implementationTypesAreKeptOrManaged_data();
    void implementationTypesAreKeptOrManaged();
    void anObjectThatIsThereIsReplaced();
    void backupsAreProjectsToo_data();
    void backupsAreProjectsToo();
    void textProjectsAreProjectsToo();
    void theSourceFileAndTheCurrentFolderStayAsTheyAre();
    void aFileThatIsNoProjectIsAnError_data();
    void aFileThatIsNoProjectIsAnError();
    void damagedProjectsNeverStopTheImport();
    void manyRowsArriveAndAreTold();

private:
    struct Outcome
    {
        QStringList errors;
        QList<int> percents;
    };
    static ObjectDataBase::SUBINDEX_DATA_T fullSub();
    Outcome import(VEXPImporter &importer, const QString &file) const;
    QString path(const QString &name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
    QString m_source;
    QSharedPointer<ObjectDataBase> m_store;
};

ObjectDataBase::SUBINDEX_DATA_T TestVexpImporter::fullSub()
{
    ObjectDataBase::SUBINDEX_DATA_T sub;
    sub.name = u"Geschwindigkeit 'v' µ"_s;
    sub.datatype = CAN::VisibleString;
    sub.accesstype = u"rw"_s;
    sub.defaultvalue = u"it's 5"_s;
    sub.currentvalue = u"6"_s;
    sub.pdomapping = PDOMapping(PDOMapping::TPDO);
    sub.lowlimit = u"1"_s;
    sub.uplimit = u"9"_s;
    sub.size = 12;
    sub.defaultineds = true;
    sub.limitineds = true;
    sub.refuseread = true;
    sub.refusewrite = true;
    sub.dcfcomponent = true;
    sub.cyclicread = true;
    sub.allowedaccesstypes = u"ro,rw"_s;
    sub.implementation = CANopen::ManagedConst;
    sub.description = u"line 1\nline 2"_s;
    sub.varname = u"speed"_s;
    sub.category = 2;
    sub.writedefaulttoeds = true;
    sub.changedbyuser = true;
    sub.wizardsource = 454;
    sub.sharedlines = true;
    sub.denotation = u"Speed of this axis"_s;
    sub.managedbylvx = true;
    sub.signalid = 3;
    sub.nvstorage = true;
    sub.metadata = {{u"unit"_s, u"m/s"_s}};
    return sub;
}

void TestVexpImporter::initTestCase()
{
    ImporterTest::prepareApplication();
    m_source = path(u"the source.vexp"_s);
    ObjectDataBase source;
    QVERIFY(source.createNewDataBase());
    QVERIFY(source.setGeneralSetting(u"line0type"_s, u"1"_s));
    QVERIFY(source.addNode(2, ObjectDataBase::NODE_DATA_T()));
    ObjectDataBase::INDEX_DATA_T object;
    object.name = u"First line"_s;
    object.objecttype = CANopen::Var;
    QVERIFY(source.addIndex(0, 0x6000, object));
    QVERIFY(source.addSubIndex(0, 0x6000, 0, fullSub()));
    object = {.name = u"Achse 'x' µ"_s,
              .datatype = 7,
              .objecttype = CANopen::Record,
              .description = u"what it is"_s,
              .category = 2,
              .device_class = u"drive"_s,
              .fwsupported = 1,
              .metadata = {{u"key"_s, u"value"_s}}};
    for (const quint16 index : {quint16(0x0040), quint16(0x2000), quint16(0x6000), quint16(0xF000)}) {
        QVERIFY(source.addIndex(2, index, object));
        ObjectDataBase::SUBINDEX_DATA_T count = fullSub();
        count.implementation = CANopen::VirtualObject;
        QVERIFY(source.addSubIndex(2, index, 0, count));
        QVERIFY(source.addSubIndex(2, index, 0x7F, fullSub()));
    }
    QVERIFY2(source.saveProject(m_source), qPrintable(source.lastError()));
}

void TestVexpImporter::init()
{
    m_store = ImporterTest::newStore();
}

TestVexpImporter::Outcome TestVexpImporter::import(VEXPImporter &importer, const QString &file) const
{
    ImporterTest::Recorder recorder(importer);
    importer.setDatabase(m_store);
    if (!importer.setFile(file) || !ImporterTest::run(importer)
        || !QTest::qWaitFor([&] { return recorder.ends == 1; }, ImporterTest::waitMs))
        return {.errors = {u"did not run"_s}, .percents = {}};
    return {.errors = recorder.errors, .percents = recorder.percents};
}

void TestVexpImporter::theObjectsOfALineComeWhole()
{
    VEXPImporter importer;
    importer.setSourceLine(2);
    importer.setRange(0, 0xFFFF);
    const Outcome outcome = import(importer, m_source);
    QCOMPARE(outcome.errors, QStringList());
    QCOMPARE(outcome.percents.first(), 0);
    QCOMPARE(outcome.percents.last(), 100);
    QCOMPARE(ImporterTest::rows(*m_store, staging),
             (QStringList{u"0040:00"_s, u"0040:7f"_s, u"2000:00"_s, u"2000:7f"_s, u"6000:00"_s, u"6000:7f"_s,
                          u"f000:00"_s, u"f000:7f"_s}));
    const auto object = ImporterTest::object(*m_store, staging, 0x2000);
    QCOMPARE(object.name, u"Achse 'x' µ"_s);
    QCOMPARE(object.description, u"what it is"_s);
    QCOMPARE(object.device_class, u"drive"_s);
    QCOMPARE(object.objecttype, int(CANopen::Record));
    QCOMPARE(object.metadata.value(u"key"_s), u"value"_s);
    QCOMPARE(ImporterTest::sub(*m_store, staging, 0x2000, 0x7F), fullSub());
    QCOMPARE(importer.importedObjects().keys(), (QList<quint16>{0x0040, 0x2000, 0x6000, 0xF000}));
    QVERIFY(m_store->getIndexList(0).isEmpty());
}

void TestVexpImporter::theDefaultSourceLineIsTheFirst_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("name");
    QTest::newRow("not set") << 1000 << u"First line"_s;
    QTest::newRow("-1") << -1 << u"First line"_s;
    QTest::newRow("0") << 0 << u"First line"_s;
    QTest::newRow("2") << 2 << u"Achse 'x' µ"_s;
}

void TestVexpImporter::theDefaultSourceLineIsTheFirst()
{
    QFETCH(int, line);
    VEXPImporter importer;
    if (line != 1000)
        importer.setSourceLine(quint8(line));
    QCOMPARE(import(importer, m_source).errors, QStringList());
    QTEST(ImporterTest::object(*m_store, staging, 0x6000).name, "name");
}

void TestVexpImporter::aLineThatIsNotThereIsAnError()
{
    VEXPImporter importer;
    importer.setSourceLine(1);
    const Outcome outcome = import(importer, m_source);
    QCOMPARE(outcome.errors, QStringList{u"%1 has no line 1."_s.arg(m_source)});
    QCOMPARE(outcome.percents, (QList<int>{0, 100}));
    QVERIFY(m_store->getIndexList(staging).isEmpty());
}

void TestVexpImporter::theRangeChoosesTheObjects_data()
{
    QTest::addColumn<quint32>("first");
    QTest::addColumn<quint32>("last");
    QTest::addColumn<QList<quint16>>("indices");
    using Indices = QList<quint16>;
    QTest::newRow("as at first") << 0x1000U << 0xBFFFU << Indices{0x2000, 0x6000};
    QTest::newRow("one") << 0x2000U << 0x2000U << Indices{0x2000};
    QTest::newRow("reversed") << 0xFFFFU << 0U << Indices{};
    QTest::newRow("beyond all indices") << 0x6000U << 0x12000U << Indices{0x6000, 0xF000};
    QTest::newRow("behind all indices") << 0x10000U << 0x12000U << Indices{};
}

void TestVexpImporter::theRangeChoosesTheObjects()
{
    QFETCH(quint32, first);
    QFETCH(quint32, last);
    VEXPImporter importer;
    importer.setSourceLine(2);
    importer.setRange(first, last);
    QCOMPARE(import(importer, m_source).errors, QStringList());
    QTEST(m_store->getIndexList(staging), "indices");
}

void TestVexpImporter::implementationTypesAreKeptOrManaged_data()
{
    QTest::addColumn<bool>("keep");
    QTest::addColumn<int>("countSub");
    QTest::addColumn<int>("valueSub");
    QTest::newRow("kept") << true << int(CANopen::VirtualObject) << int(CANopen::ManagedConst);
    // A count is not touched; a text that is written belongs to the application.
    QTest::newRow("managed") << false << int(CANopen::VirtualObject) << int(CANopen::ApplicationVariable);
}

void TestVexpImporter::implementationTypesAreKeptOrManaged()
{
    QFETCH(bool, keep);
    VEXPImporter importer;
    QVERIFY(importer.keepImplementation());
    importer.setKeepImplementation(keep);
    importer.setSourceLine(2);
    QCOMPARE(import(importer, m_source).errors, QStringList());
    QTEST(ImporterTest::sub(*m_store, staging, 0x6000, 0).implementation, "countSub");
    QTEST(ImporterTest::sub(*m_store, staging, 0x6000, 0x7F).implementation, "valueSub");
}

void TestVexpImporter::anObjectThatIsThereIsReplaced()
{
    QVERIFY(m_store->addIndex(staging, 0x6000, {}));
    QVERIFY(m_store->addSubIndex(staging, 0x6000, 3, fullSub()));
    VEXPImporter importer;
    importer.setSourceLine(2);
    importer.setRange(0x6000, 0x6000);
    QCOMPARE(import(importer, m_source).errors, QStringList());
    QCOMPARE(ImporterTest::rows(*m_store, staging), (QStringList{u"6000:00"_s, u"6000:7f"_s}));
}

void TestVexpImporter::backupsAreProjectsToo_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"copy.vexp", "copy.vexp.bak", "copy.bak", "COPY.VEXP", "mit Umlaut ä 100%.vexp", "o'clock.vexp"})
        QTest::newRow(name) << QString::fromUtf8(name);
}

void TestVexpImporter::backupsAreProjectsToo()
{
    QFETCH(QString, name);
    QFile::remove(path(name));
    QVERIFY(QFile::copy(m_source, path(name)));
    VEXPImporter importer;
    QCOMPARE(import(importer, path(name)).errors, QStringList());
    QCOMPARE(ImporterTest::object(*m_store, staging, 0x6000).name, u"First line"_s);
}

void TestVexpImporter::textProjectsAreProjectsToo()
{
    {
        const auto folder = qScopeGuard([path = QDir::currentPath()] { QDir::setCurrent(path); });
        ObjectDataBase source;
        QVERIFY(source.openDataBase(m_source));
        QVERIFY(source.saveProject(path(u"copy.vext"_s)));
    }
    VEXPImporter importer;
    QCOMPARE(import(importer, path(u"copy.vext"_s)).errors, QStringList());
    QCOMPARE(ImporterTest::object(*m_store, staging, 0x6000).name, u"First line"_s);
    const auto sub = ImporterTest::sub(*m_store, staging, 0x6000, 0);
    QCOMPARE(sub.name, fullSub().name);
    QCOMPARE(sub.defaultvalue, fullSub().defaultvalue);
    QCOMPARE(sub.metadata, fullSub().metadata);
}

void TestVexpImporter::theSourceFileAndTheCurrentFolderStayAsTheyAre()
{
    QFile file(m_source);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    file.close();
    const QString folder = QDir::currentPath();
    VEXPImporter importer;
    QCOMPARE(import(importer, m_source).errors, QStringList());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll() == before);
    QCOMPARE(QDir::currentPath(), folder);
}

void TestVexpImporter::aFileThatIsNoProjectIsAnError_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("no project at all\n").repeated(100);
    QTest::newRow("header only") << QByteArray("SQLite format 3\0", 16);
}

void TestVexpImporter::aFileThatIsNoProjectIsAnError()
{
    QFETCH(QByteArray, content);
    const QString file = path(u"foreign.vexp"_s);
    QVERIFY(ImporterTest::write(file, content));
    VEXPImporter importer;
    const Outcome outcome = import(importer, file);
    QCOMPARE(outcome.errors.size(), 1);
    QVERIFY2(outcome.errors.first().contains(u"foreign.vexp"_s), qPrintable(outcome.errors.first()));
    QCOMPARE(outcome.percents, (QList<int>{0, 100}));
    QVERIFY(m_store->getIndexList(staging).isEmpty());
    QVERIFY(!m_store->signalsBlocked());
}

void TestVexpImporter::damagedProjectsNeverStopTheImport()
{
    QFile file(m_source);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray good = file.readAll();
    QRandomGenerator random(11);
    for (int round = 0; round < 20; ++round) {
        QByteArray bad = good;
        for (int hit = 0; hit < 200; ++hit)
            bad[random.bounded(int(bad.size()))] = char(random.bounded(256));
        QVERIFY(ImporterTest::write(path(u"damaged.vexp"_s), bad));
        VEXPImporter importer;
        QCOMPARE(import(importer, path(u"damaged.vexp"_s)).percents.last(), 100);
        QVERIFY(!m_store->signalsBlocked());
    }
    VEXPImporter importer;
    QCOMPARE(import(importer, m_source).errors, QStringList());
}

void TestVexpImporter::manyRowsArriveAndAreTold()
{
    constexpr int objects = 100;
    constexpr int subs = 200;
    ObjectDataBase source;
    QVERIFY(source.createNewDataBase());
    QList<ObjectDataBase::SubEntry> rows;
    for (int i = 0; i < objects; ++i) {
        const auto index = quint16(0x2000 + i);
        ObjectDataBase::INDEX_DATA_T object;
        object.name = u"object %1"_s.arg(i);
        QVERIFY(source.addIndex(0, index, object));
        for (int sub = 0; sub < subs; ++sub)
            rows.append({.line = 0, .index = index, .subindex = quint8(sub), .data = fullSub()});
    }
    QVERIFY(source.addSubIndices(rows));
    QVERIFY(source.saveProject(path(u"large.vexp"_s)));
    VEXPImporter importer;
    const Outcome outcome = import(importer, path(u"large.vexp"_s));
    QCOMPARE(outcome.errors, QStringList());
    QCOMPARE(ImporterTest::rows(*m_store, staging).size(), objects * subs);
    QCOMPARE(ImporterTest::sub(*m_store, staging, 0x2063, 199), fullSub());
    QVERIFY(outcome.percents.contains(50));
}

QTEST_GUILESS_MAIN(TestVexpImporter)
#include "tst_vexpimporter.moc"
