#include "StoreTest.h"

#include <QDataStream>

using namespace StoreTest;

Q_DECLARE_METATYPE(MetadataMap)

/** Metadata of objects and sub-indices, and the bytes of its blob. */
class TestStoreMetadata : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void theBlobIsADataStreamOfVersion17_data() { mapRows(); }
    void theBlobIsADataStreamOfVersion17();
    void metadataIsPartOfTheRecords_data() { mapRows(); }
    void metadataIsPartOfTheRecords();
    void anObjectWithoutMetadataHasTheNumber0();
    void anUpdateWithoutMetadataKeepsTheObjectsOwn();
    void allSubMetadataListsTheSubIndicesThatHaveSome();
    void anEmptyMapClearsTheMetadata();
    void aTemplatesEmptyBlobReadsAsNothing();
    void aDamagedBlobIsReadWithoutHarm_data();
    void aDamagedBlobIsReadWithoutHarm();
    void metadataOfAMissingRowIsEmpty();

private:
    static void mapRows();
    static QByteArray expectedBlob(const MetadataMap &map);
};

// Count, then key and value as UTF-16 with their length in bytes; big endian.
QByteArray TestStoreMetadata::expectedBlob(const MetadataMap &map)
{
    QByteArray blob;
    QDataStream stream(&blob, QIODevice::WriteOnly);
    stream.setVersion(17);
    stream << quint32(map.size());
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry)
        stream << entry.key() << entry.value();
    return blob;
}

void TestStoreMetadata::mapRows()
{
    QTest::addColumn<MetadataMap>("map");
    QTest::newRow("one entry") << MetadataMap{{"unit", "rpm"}};
    QTest::newRow("in key order") << MetadataMap{{"z", "1"}, {"a", "2"}, {"M", "3"}};
    QTest::newRow("quotes and line ends") << MetadataMap{{"it's", "a \"b\"\r\n;--"}};
    QTest::newRow("empty texts") << MetadataMap{{QStringLiteral(""), QStringLiteral("")}};
    QTest::newRow("beyond the basic plane")
        << MetadataMap{{QString::fromUtf8("\xF0\x9F\x94\x8B"), "battery"}};
    QTest::newRow("embedded NUL") << MetadataMap{{QString(QChar(0)) + u'k', QString(3, QChar(0))}};
    MetadataMap many;
    for (int i = 0; i < 1000; ++i)
        many.insert(QStringLiteral("key %1").arg(i), QString(i, u'x'));
    QTest::newRow("a thousand entries") << many;
}

void TestStoreMetadata::theBlobIsADataStreamOfVersion17()
{
    QFETCH(MetadataMap, map);
    NewStore store;
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    QVERIFY(store.setObjectMetadata(0, 0x2000, map));
    QVERIFY(store.setSubMetadata(0, 0x2000, 1, map));
    const Snapshot file(store);
    QCOMPARE(file->value(QStringLiteral("select metadata from Objects0")).toByteArray(), expectedBlob(map));
    QCOMPARE(file->value(QStringLiteral("select metadata from SubObjects0")).toByteArray(),
             expectedBlob(map));
    QCOMPARE(file->value(QStringLiteral("select typeof(metadata) from SubObjects0")).toString(),
             QStringLiteral("blob"));
    QCOMPARE(store.getObjectMetadata(0, 0x2000), map);
}

void TestStoreMetadata::metadataIsPartOfTheRecords()
{
    QFETCH(MetadataMap, map);
    NewStore store;
    ObjectDataBase::INDEX_DATA_T index = sampleIndex();
    ObjectDataBase::SUBINDEX_DATA_T sub = sampleSub();
    index.metadata = sub.metadata = map;
    QVERIFY(store.addIndex(0, 0x2000, index));
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sub));
    QVERIFY(store.addSubIndices({{.line = 0, .index = 0x2000, .subindex = 2, .data = sub}}));
    ObjectDataBase::INDEX_DATA_T readIndex;
    QVERIFY(store.getIndex(0, 0x2000, readIndex));
    QCOMPARE(readIndex, index);
    for (const bool cached : {false, true}) {
        if (cached)
            store.cacheAllSubs(0);
        for (const quint8 subindex : {1, 2}) {
            ObjectDataBase::SUBINDEX_DATA_T read;
            QVERIFY(store.getSubIndex(0, 0x2000, subindex, read));
            QCOMPARE(read, sub);
        }
    }
    QCOMPARE(Snapshot(store)->column(QStringLiteral("select count(*) from SubObjects0 group by metadata")),
             QStringList{QStringLiteral("2")});
}

void TestStoreMetadata::anObjectWithoutMetadataHasTheNumber0()
{
    NewStore store;
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
    QCOMPARE(Snapshot(store)->value(QStringLiteral("select metadata from Objects0")), QVariant(0ll));
    QCOMPARE(store.getObjectMetadata(0, 0x2000), MetadataMap());
}

void TestStoreMetadata::anUpdateWithoutMetadataKeepsTheObjectsOwn()
{
    NewStore store;
    const MetadataMap map{{"unit", "V"}};
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
    QVERIFY(store.setObjectMetadata(0, 0x2000, map));
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex(QStringLiteral("renamed"))));
    QCOMPARE(store.getObjectMetadata(0, 0x2000), map);
}

void TestStoreMetadata::allSubMetadataListsTheSubIndicesThatHaveSome()
{
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    for (const quint8 subindex : {0, 1, 2})
        QVERIFY(store.addSubIndex(0, 0x2000, subindex, sampleSub()));
    QVERIFY(store.addSubIndex(1, 0x2000, 0, sampleSub()));
    QVERIFY(store.setSubMetadata(0, 0x2000, 0, {{"k", "0"}}));
    QVERIFY(store.setSubMetadata(0, 0x2000, 2, {{"k", "2"}}));
    QVERIFY(store.setSubMetadata(1, 0x2000, 0, {{"k", "other line"}}));
    const QMap<ObjectDataBase::SubAddress, MetadataMap> expected{{{0x2000, 0}, {{"k", "0"}}},
                                                                 {{0x2000, 2}, {{"k", "2"}}}};
    QCOMPARE(store.getAllSubMetadata(0), expected);
}

void TestStoreMetadata::anEmptyMapClearsTheMetadata()
{
    NewStore store;
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    QVERIFY(store.setObjectMetadata(0, 0x2000, {{"k", "v"}}));
    QVERIFY(store.setSubMetadata(0, 0x2000, 1, {{"k", "v"}}));
    QVERIFY(store.setObjectMetadata(0, 0x2000, {}));
    QVERIFY(store.setSubMetadata(0, 0x2000, 1, {}));
    QCOMPARE(store.getObjectMetadata(0, 0x2000), MetadataMap());
    ObjectDataBase::SUBINDEX_DATA_T sub;
    QVERIFY(store.getSubIndex(0, 0x2000, 1, sub));
    QCOMPARE(sub.metadata, MetadataMap());
}

void TestStoreMetadata::aTemplatesEmptyBlobReadsAsNothing()
{
    QCOMPARE(expectedBlob({}), QByteArray(4, '\0'));
    NewStore store;
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    QVERIFY(store.executeSql(QStringLiteral("update Objects0 set metadata = x'00000000'")));
    QVERIFY(store.executeSql(QStringLiteral("update SubObjects0 set metadata = x'00000000'")));
    QCOMPARE(store.getObjectMetadata(0, 0x2000), MetadataMap());
    QVERIFY(store.getAllSubMetadata(0).isEmpty());
}

void TestStoreMetadata::aDamagedBlobIsReadWithoutHarm_data()
{
    QTest::addColumn<QString>("literal");
    QTest::newRow("empty") << "x''";
    QTest::newRow("cut count") << "x'0000'";
    QTest::newRow("count without entries") << "x'00000001'";
    QTest::newRow("count of four thousand million") << "x'FFFFFFFF'";
    QTest::newRow("cut key") << "x'00000001000000080061'";
    QTest::newRow("key of two thousand million bytes") << "x'000000017FFFFFFE0061'";
    QTest::newRow("odd key length") << "x'0000000100000003006100'";
    QTest::newRow("text instead of a blob") << "'text'";
    QTest::newRow("number") << "12345";
    QTest::newRow("null") << "NULL";
}

void TestStoreMetadata::aDamagedBlobIsReadWithoutHarm()
{
    QFETCH(QString, literal);
    NewStore store;
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    QVERIFY(store.executeSql(QStringLiteral("update Objects0 set metadata = ") + literal));
    QVERIFY(store.executeSql(QStringLiteral("update SubObjects0 set metadata = ") + literal));
    QCOMPARE(store.getObjectMetadata(0, 0x2000), MetadataMap());
    store.getAllSubMetadata(0);
    ObjectDataBase::SUBINDEX_DATA_T sub;
    QVERIFY(store.getSubIndex(0, 0x2000, 1, sub));
    QCOMPARE(sub, sampleSub());
    store.cacheAllSubs(0);
    QVERIFY(store.getSubIndex(0, 0x2000, 1, sub));
    QCOMPARE(sub, sampleSub());
}

void TestStoreMetadata::metadataOfAMissingRowIsEmpty()
{
    NewStore store;
    QCOMPARE(store.getObjectMetadata(0, 0x2000), MetadataMap());
    QVERIFY(store.getAllSubMetadata(0).isEmpty());
    store.setObjectMetadata(0, 0x2000, {{"k", "v"}});
    QVERIFY(!store.indexExists(0, 0x2000));
}

QTEST_GUILESS_MAIN(TestStoreMetadata)
#include "tst_storemetadata.moc"
