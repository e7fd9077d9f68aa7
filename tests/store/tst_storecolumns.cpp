#include "StoreTest.h"

using namespace StoreTest;

/** Writing one column by its name, as command files do. */
class TestStoreColumns : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void setObjectIndexSqlValueWritesOneColumn_data();
    void setObjectIndexSqlValueWritesOneColumn();
    void setSubindexSqlValueWritesOneColumn_data();
    void setSubindexSqlValueWritesOneColumn();
    void anInvalidValueIsNotWritten();
    void metadataIsWrittenAsABlob();
};

using Index = ObjectDataBase::INDEX_DATA_T;
using Sub = ObjectDataBase::SUBINDEX_DATA_T;

void TestStoreColumns::setObjectIndexSqlValueWritesOneColumn_data()
{
    QTest::addColumn<bool>("rowExists");
    QTest::addColumn<QString>("column");
    QTest::addColumn<QVariant>("value");
    for (const bool exists : {true, false}) {
        const char *row = exists ? "existing row" : "missing row";
        QTest::addRow("%s: name", row) << exists << "name" << QVariant(QStringLiteral("it's new"));
        QTest::addRow("%s: description", row) << exists << "description" << QVariant(QStringLiteral("text"));
        QTest::addRow("%s: datatype", row) << exists << "datatype" << QVariant(QStringLiteral("5"));
        QTest::addRow("%s: objecttype", row) << exists << "objecttype" << QVariant(8);
    }
}

void TestStoreColumns::setObjectIndexSqlValueWritesOneColumn()
{
    QFETCH(bool, rowExists);
    QFETCH(QString, column);
    QFETCH(QVariant, value);
    NewStore store;
    Index expected;
    if (rowExists) {
        expected = sampleIndex();
        QVERIFY(store.addIndex(0, 0x2000, expected));
    }
    store.setObjectIndexSqlValue(QStringLiteral("Objects0"), 0x2000, column, value);
    if (column == QStringLiteral("name"))
        expected.name = value.toString();
    else if (column == QStringLiteral("description"))
        expected.description = value.toString();
    else if (column == QStringLiteral("datatype"))
        expected.datatype = value.toInt();
    else
        expected.objecttype = value.toInt();
    Index read;
    QVERIFY(store.getIndex(0, 0x2000, read));
    QCOMPARE(read, expected);
}

void TestStoreColumns::setSubindexSqlValueWritesOneColumn_data()
{
    QTest::addColumn<bool>("rowExists");
    QTest::addColumn<QString>("column");
    QTest::addColumn<QVariant>("value");
    for (const bool exists : {true, false}) {
        const char *row = exists ? "existing row" : "missing row";
        QTest::addRow("%s: name", row) << exists << "name" << QVariant(QStringLiteral("it's new"));
        QTest::addRow("%s: description", row) << exists << "description" << QVariant(QStringLiteral("text"));
        QTest::addRow("%s: defaultvalue", row) << exists << "defaultvalue" << QVariant(QStringLiteral("'7'"));
        QTest::addRow("%s: uplimit", row) << exists << "uplimit" << QVariant(255);
        QTest::addRow("%s: size", row) << exists << "size" << QVariant(QStringLiteral("9"));
        QTest::addRow("%s: accesstype", row) << exists << "accesstype" << QVariant(QStringLiteral("ro"));
    }
}

void TestStoreColumns::setSubindexSqlValueWritesOneColumn()
{
    QFETCH(bool, rowExists);
    QFETCH(QString, column);
    QFETCH(QVariant, value);
    NewStore store;
    if (rowExists)
        QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    Sub before;
    store.getSubIndex(0, 0x2000, 1, before);
    store.setSubindexSqlValue(QStringLiteral("SubObjects0"), 0x2000, 1, column, value);
    const QMap<QString, QString Sub::*> texts{{"name", &Sub::name},
                                              {"description", &Sub::description},
                                              {"defaultvalue", &Sub::defaultvalue},
                                              {"uplimit", &Sub::uplimit},
                                              {"accesstype", &Sub::accesstype}};
    Sub read;
    QVERIFY(store.getSubIndex(0, 0x2000, 1, read));
    if (texts.contains(column))
        QCOMPARE(read.*texts.value(column), value.toString());
    else
        QCOMPARE(read.size, value.toInt());
    if (rowExists) {
        if (texts.contains(column))
            before.*texts.value(column) = value.toString();
        else
            before.size = value.toInt();
        QCOMPARE(read, before);
    }
}

void TestStoreColumns::anInvalidValueIsNotWritten()
{
    NewStore store;
    store.setObjectIndexSqlValue(QStringLiteral("Objects0"), 0x2000, QStringLiteral("name"), QVariant());
    store.setSubindexSqlValue(QStringLiteral("SubObjects0"), 0x2000, 1, QStringLiteral("name"), QVariant());
    QVERIFY(!store.indexExists(0, 0x2000));
    QVERIFY(!store.subIndexExists(0, 0x2000, 1));
}

void TestStoreColumns::metadataIsWrittenAsABlob()
{
    NewStore store;
    const MetadataMap map{{"unit", "rpm"}};
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
    QVERIFY(store.setObjectMetadata(0, 0x2000, map));
    const QVariant value = QVariant::fromValue(map);
    store.setObjectIndexSqlValue(QStringLiteral("Objects0"), 0x2001, QStringLiteral("metadata"), value);
    store.setSubindexSqlValue(QStringLiteral("SubObjects0"), 0x2001, 3, QStringLiteral("metadata"), value);
    QCOMPARE(Snapshot(store)->count(QStringLiteral("(select distinct metadata from Objects0)")), 1);
    QCOMPARE(store.getObjectMetadata(0, 0x2001), map);
    QCOMPARE(store.getAllSubMetadata(0).value({0x2001, 3}), map);
}

QTEST_GUILESS_MAIN(TestStoreColumns)
#include "tst_storecolumns.moc"
