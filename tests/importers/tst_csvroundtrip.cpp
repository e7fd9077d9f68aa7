#include "canopen/CANTypes.h"
#include "canopen/COHelper.h"
#include "generators/documents/CSVGenerator.h"
#include "generators/documents/ICSVGenerator.h"
#include "importers/CODBImporter.h"
#include "importers/CsvDesk.h"

#include <QRandomGenerator>

using namespace Qt::StringLiterals;

namespace {

using Store = ObjectDataBase;

/** Writes the table of line 0 and returns its bytes; empty when the generator failed. */
template <typename Generator, typename... Arguments>
QByteArray exported(Store &store, Arguments... arguments)
{
    const QTemporaryDir folder;
    Generator generator(arguments...);
    generator.setOutputDir(folder.path());
    generator.setDatabase(&store);
    generator.setProjectName(u"Device"_s);
    generator.setLine(0);
    if (generator.startGeneration() != GeneratorStatus::Success)
        return {};
    generator.waitForEnd();
    const QStringList files = QDir(folder.path()).entryList(QDir::Files);
    if (generator.isFailed() || files.size() != 1)
        return {};
    QFile file(folder.filePath(files.constFirst()));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QSharedPointer<Store> imported(const QByteArray &table, bool &success)
{
    auto store = ImporterTest::newStore();
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"device.icsv"_s);
    CsvImporter importer;
    importer.setDatabase(store);
    importer.setLine(0);
    importer.setRange(0x1000, 0xFFFF);
    success = ImporterTest::write(path, table) && importer.setFile(path) && ImporterTest::run(importer);
    return store;
}

/** Texts that a table can hold: what is special in one, but neither the separator nor a line break. */
QString randomText(QRandomGenerator &random)
{
    static const QStringList texts{QString(),      u"Speed"_s,  u" blanks "_s,   u"\"quoted\""_s,
                                   u"5\" pipe"_s,  u"\"open"_s, u"a;b"_s,        u"Größe µ €"_s,
                                   u"#5"_s,        u"it's"_s,   u"c"_s,          u"d;0x2000"_s,
                                   u"=1+1"_s,      u"<br>"_s,   u"\U0001F600"_s, u"tab\tinside"_s,
                                   u"$NODEID+1"_s, u"0x10"_s,   u"a \"b\" c"_s};
    return texts.at(random.bounded(texts.size()));
}

Store::SUBINDEX_DATA_T randomSub(QRandomGenerator &random, int dataType)
{
    static const QStringList access{u"ro"_s, u"rw"_s, u"wo"_s, u"rww"_s, u"rwr"_s, u"const"_s};
    Store::SUBINDEX_DATA_T sub;
    sub.name = randomText(random);
    sub.datatype = dataType;
    sub.accesstype = access.at(random.bounded(access.size()));
    sub.defaultvalue = randomText(random);
    sub.pdomapping = PDOMapping(random.bounded(5));
    sub.lowlimit = randomText(random);
    sub.uplimit = randomText(random);
    sub.size = random.bounded(100);
    sub.defaultineds = random.bounded(2);
    sub.limitineds = random.bounded(2);
    sub.refuseread = random.bounded(2);
    sub.refusewrite = random.bounded(2);
    // A constant is held as one.
    sub.implementation = sub.accesstype == u"const" ? int(CANopen::ManagedConst) : random.bounded(4);
    sub.description = randomText(random);
    sub.varname = sub.implementation == CANopen::ApplicationVariable ? u"speed"_s : randomText(random);
    sub.writedefaulttoeds = quint8(random.bounded(2));
    sub.nvstorage = random.bounded(2);
    return sub;
}

void fill(Store &store, quint32 seed)
{
    static const QList<quint16> types = COHelper::stringDataTypeIndexMap.keys();
    static const QList<int> codes{CANopen::Var, CANopen::Array, CANopen::Record};
    QRandomGenerator random(seed);
    for (quint16 index = 0x1000; index < 0x1000 + 60; ++index) {
        const int code = codes.at(random.bounded(codes.size()));
        const int type = types.at(random.bounded(types.size()));
        store.addIndex(0, index, {.name = randomText(random), .datatype = type, .objecttype = code});
        const int last = code == CANopen::Var ? 0 : random.bounded(1, 20);
        for (int sub = 0; sub <= last; sub += random.bounded(1, 3))
            store.addSubIndex(0, index, quint8(sub), randomSub(random, type));
    }
}

} // namespace

/** What the generators of tables write comes back the same. */
class TestCsvRoundTrip : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { ImporterTest::prepareApplication(); }
    void anIcsvTableComesBackTheSame_data();
    void anIcsvTableComesBackTheSame();
    void allThatAnIcsvTableTellsIsRead();
    void aProfileComesBackTheSame_data();
    void aProfileComesBackTheSame();
    void aCsvTableIsReadBack_data();
    void aCsvTableIsReadBack();
};

void TestCsvRoundTrip::anIcsvTableComesBackTheSame_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<bool>("disableDocu");
    for (quint32 seed = 1; seed <= 10; ++seed) {
        QTest::addRow("seed %u", seed) << seed << false;
        QTest::addRow("seed %u without documentation", seed) << seed << true;
    }
}

void TestCsvRoundTrip::anIcsvTableComesBackTheSame()
{
    QFETCH(quint32, seed);
    QFETCH(bool, disableDocu);
    const auto store = ImporterTest::newStore();
    fill(*store, seed);
    const QByteArray first = exported<ICSVGenerator>(*store, disableDocu);
    QVERIFY(first.count('\n') > 100);
    bool success = false;
    const auto copy = imported(first, success);
    QVERIFY(success);
    const QByteArray second = exported<ICSVGenerator>(*copy, disableDocu);
    QCOMPARE(second.split('\n'), first.split('\n'));
}

void TestCsvRoundTrip::allThatAnIcsvTableTellsIsRead()
{
    const auto store = ImporterTest::newStore();
    QVERIFY(store->addIndex(0, 0x2000, {.name = u"Motor"_s, .objecttype = CANopen::Record}));
    const Store::SUBINDEX_DATA_T count{.name = u"Count"_s,
                                       .datatype = CAN::Unsigned8,
                                       .accesstype = u"const"_s,
                                       .defaultvalue = u"1"_s,
                                       .implementation = CANopen::ManagedConst};
    const Store::SUBINDEX_DATA_T speed{
        .name = u"Speed"_s,
        .datatype = CAN::Integer16,
        .accesstype = u"rww"_s,
        .defaultvalue = u"-5"_s,
        .pdomapping = PDOMapping(PDOMapping::RPDO),
        .lowlimit = u"-100"_s,
        .uplimit = u"100"_s,
        .size = 2,
        .defaultineds = true,
        .limitineds = true,
        .implementation = CANopen::ApplicationVariable,
        .description = u"first line\nsecond line"_s,
        .varname = u"motor.speed"_s,
        .writedefaulttoeds = 1,
        .nvstorage = true,
    };
    QVERIFY(store->addSubIndex(0, 0x2000, 0, count));
    QVERIFY(store->addSubIndex(0, 0x2000, 1, speed));
    bool success = false;
    const auto copy = imported(exported<ICSVGenerator>(*store, false), success);
    QVERIFY(success);
    QVERIFY(ImporterTest::object(*copy, 0, 0x2000) == ImporterTest::object(*store, 0, 0x2000));
    for (const quint8 number : {quint8(0), quint8(1)}) {
        auto sub = ImporterTest::sub(*copy, 0, 0x2000, number);
        QCOMPARE(sub.allowedaccesstypes, u"const,ro,rw,wo,rww,rwr"_s);
        sub.allowedaccesstypes.clear();
        QVERIFY(sub == (number == 0 ? count : speed));
    }
}

void TestCsvRoundTrip::aProfileComesBackTheSame_data()
{
    QTest::addColumn<QString>("profile");
    const QStringList profiles = QDir(QStringLiteral(PROFILE_FOLDER)).entryList({u"*.codb"_s});
    QVERIFY(!profiles.isEmpty());
    for (const QString &profile : profiles)
        QTest::newRow(qPrintable(profile)) << QStringLiteral(PROFILE_FOLDER "/") + profile;
}

void TestCsvRoundTrip::aProfileComesBackTheSame()
{
    QFETCH(QString, profile);
    const auto store = ImporterTest::newStore();
    CODBImporter importer;
    importer.setDatabase(store);
    importer.setLine(0);
    importer.setRange(0x1000, 0xFFFF);
    QVERIFY(importer.setFile(profile) && ImporterTest::run(importer));
    const QByteArray first = exported<ICSVGenerator>(*store, false);
    bool success = false;
    const auto copy = imported(first, success);
    QVERIFY(success);
    QCOMPARE(copy->getIndexList(0), store->getIndexList(0));
    // A constant that a profile holds as a variable is held as a constant.
    QByteArrayList expected = first.split('\n');
    for (QByteArray &row : expected) {
        if (row.contains(",const,"))
            row.replace(",ManagedVariable,", ",ManagedConst,").replace(",Variable,", ",ManagedConst,");
    }
    QCOMPARE(exported<ICSVGenerator>(*copy, false).split('\n'), expected);
}

void TestCsvRoundTrip::aCsvTableIsReadBack_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 101; seed <= 110; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void TestCsvRoundTrip::aCsvTableIsReadBack()
{
    QFETCH(quint32, seed);
    const auto store = ImporterTest::newStore();
    fill(*store, seed);
    const QByteArray first = exported<CSVGenerator>(*store);
    QVERIFY(first.count('\n') > 100);
    bool success = false;
    const auto copy = imported(first, success);
    QVERIFY(success);
    QCOMPARE(exported<CSVGenerator>(*copy).split('\n'), first.split('\n'));
}

QTEST_GUILESS_MAIN(TestCsvRoundTrip)
#include "tst_csvroundtrip.moc"
