#include "FieldCases.h"

using namespace StoreTest;
using FieldCases::FieldCase;

/** Every column of every row type comes back as it was written. */
class TestStoreFields : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void everyColumnIsCovered();
    void everyColumnRoundTrips_data() { fieldRows(); }
    void everyColumnRoundTrips();
    void everyColumnSurvivesSaveAndOpen();
    void everySubIndexColumnRoundTripsThroughTheManyRowsRoad_data() { fieldRows("SubObjects0."); }
    void everySubIndexColumnRoundTripsThroughTheManyRowsRoad();
    void everySubIndexColumnIsReadFromTheCache_data() { fieldRows("SubObjects0."); }
    void everySubIndexColumnIsReadFromTheCache();

private:
    static void fieldRows(const char *prefix = "");
};

void TestStoreFields::fieldRows(const char *prefix)
{
    QTest::addColumn<int>("field");
    for (int i = 0; i < FieldCases::all().size(); ++i) {
        const QByteArray &name = FieldCases::all().at(i).name;
        if (name.startsWith(prefix))
            QTest::newRow(name.constData()) << i;
    }
}

// The columns without a case are the identifying ones, which every case uses, and the metadata.
void TestStoreFields::everyColumnIsCovered()
{
    const QSet<QByteArray> identifying{
        "Objects0.objectindex",   "Objects0.metadata",    "SubObjects0.objectindex",
        "SubObjects0.subindex",   "SubObjects0.metadata", "Nodes.nodeId",
        "PGNs0.number",           "PGNs0.direction",      "SPNs0.pgnnumber",
        "SPNs0.spnnumber",        "SPNs0.direction",      "CANIDs0.id",
        "CANIDs0.direction",      "DataElements0.canid",  "DataElements0.number",
        "DataElements0.direction"};
    QSet<QByteArray> covered;
    for (const FieldCase &field : FieldCases::all())
        covered.insert(field.name.toLower());
    NewStore store;
    const Snapshot file(store);
    for (const char *table :
         {"Objects0", "SubObjects0", "Nodes", "PGNs0", "SPNs0", "CANIDs0", "DataElements0"}) {
        for (const QVariantList &row :
             file->rows(QStringLiteral("PRAGMA table_info(%1)").arg(QLatin1StringView(table)))) {
            const QByteArray name = QByteArray(table) + '.' + row.at(1).toString().toUtf8();
            QVERIFY2(identifying.contains(name) || covered.contains(name.toLower()), name.constData());
        }
    }
}

void TestStoreFields::everyColumnRoundTrips()
{
    QFETCH(int, field);
    const FieldCase &column = FieldCases::all().at(field);
    NewStore store;
    QVERIFY(column.write(store, column.sample));
    QCOMPARE(column.read(store), column.sample);
    const Snapshot file(store);
    QCOMPARE(file->value(column.select).toString(), column.sample.toString());
}

void TestStoreFields::everyColumnSurvivesSaveAndOpen()
{
    QTemporaryDir folder;
    for (const FieldCase &column : FieldCases::all()) {
        // An open works this column out anew from the signals of the group.
        if (column.name == "PGNs0.mappingcount")
            continue;
        const QString path = folder.filePath(QStringLiteral("p.vexp"));
        NewStore store;
        QVERIFY2(column.write(store, column.sample), column.name.constData());
        QVERIFY(store.saveProject(path));
        ObjectDataBase opened;
        QVERIFY2(opened.openDataBase(path), qPrintable(opened.lastError()));
        QVERIFY2(column.read(opened) == column.sample, column.name.constData());
    }
}

void TestStoreFields::everySubIndexColumnRoundTripsThroughTheManyRowsRoad()
{
    QFETCH(int, field);
    const FieldCase &column = FieldCases::all().at(field);
    NewStore source;
    QVERIFY(column.write(source, column.sample));
    ObjectDataBase::SubEntry entry{.line = 0, .index = 0x2000, .subindex = 3, .data = {}};
    QVERIFY(source.getSubIndex(0, 0x2000, 3, entry.data));

    NewStore store;
    QVERIFY(store.addSubIndices({entry}));
    QCOMPARE(column.read(store), column.sample);
    const Snapshot file(store);
    QCOMPARE(file->value(column.select).toString(), column.sample.toString());
}

void TestStoreFields::everySubIndexColumnIsReadFromTheCache()
{
    QFETCH(int, field);
    const FieldCase &column = FieldCases::all().at(field);
    NewStore store;
    QVERIFY(column.write(store, column.sample));
    store.cacheAllSubs(0);
    QVERIFY(store.executeSql(QStringLiteral("delete from SubObjects0")));
    QCOMPARE(column.read(store), column.sample);
}

QTEST_GUILESS_MAIN(TestStoreFields)
#include "tst_storefields.moc"
