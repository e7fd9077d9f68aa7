#include "StoreTest.h"

using namespace StoreTest;

/** Lines, their nodes, connections and copies of whole lines. */
class TestStoreLines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void aDefaultNodeHasItsStandardValues();
    void linesAreListedWithTheReservedOnes();
    void aNewLineGetsItsOwnDescription();
    void anExistingNodeIsUpdatedUpToTheIconPath();
    void anUpdateOfANodeLeavesItsTables();
    void setNodeSqlValueWritesOneColumnOfOneNode();
    void removeLineTakesTablesNodeAndConnections();
    void removeLineGoesOnWhenATableIsMissing();
    void aRemovedLineCanBeMadeAgainEmpty();
    void copyLineTakesTheObjectsOfTheRange_data();
    void copyLineTakesTheObjectsOfTheRange();
    void copyLineNamesAnUnnamedObject();
    void copyLineTakesAllPgnsOfBothDirections();
    void copyLineTakesTheServicesWithinOneStore();
    void copyLineForgetsTheSourcesCache();
    void removeConsumerConnectionLeavesTheProducerSide();
    void removeConnectionsTakesBothSidesOfAnObject();
};

using Index = ObjectDataBase::INDEX_DATA_T;
using Node = ObjectDataBase::NODE_DATA_T;
using Sub = ObjectDataBase::SUBINDEX_DATA_T;

namespace {

bool addConnection(ObjectDataBase &store, int number, const char *producer, const char *consumer)
{
    return store.executeSql(QStringLiteral("insert into Connections values(%1,%2,%3)")
                                .arg(QLatin1StringView(producer), QLatin1StringView(consumer))
                                .arg(number));
}

QStringList connections(ObjectDataBase &store)
{
    return Snapshot(store)->column(QStringLiteral("select priority from Connections order by priority"));
}

} // namespace

void TestStoreLines::aDefaultNodeHasItsStandardValues()
{
    Node expected;
    expected.outputpath = QStringLiteral("C:/");
    expected.prefix = QStringLiteral("_");
    expected.generatedcf = 1;
    NewStore store;
    Node node;
    QVERIFY(store.getNode(0, node));
    QCOMPARE(node, expected);
    const Snapshot file(store);
    QCOMPARE(file->rows(QStringLiteral("select * from Nodes")).constFirst(),
             QVariantList({0ll, "",  "",  "",  "",  0ll, 0ll,   0ll, 0ll, 0ll, 0ll, 0ll, 0ll,
                           0ll, 0ll, 0ll, 0ll, 1ll, "_", "C:/", "",  0ll, 0ll, 0ll, 0ll, 0ll}));
}

void TestStoreLines::linesAreListedWithTheReservedOnes()
{
    NewStore store;
    QCOMPARE(store.getLines(), QList<quint8>{0});
    for (const quint8 line : {255, 3, 254, 1})
        QVERIFY(store.addNode(line, {}));
    QCOMPARE(store.getLines(), QList<quint8>({0, 1, 3, 254, 255}));
    QVERIFY(store.nodeExists(3));
    QVERIFY(!store.nodeExists(2));
}

void TestStoreLines::aNewLineGetsItsOwnDescription()
{
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    QCOMPARE(store.descriptionLine(), quint8(1));
    QCOMPARE(store.getDescriptionSetting(QStringLiteral("OrderCode")), QStringLiteral("0815-BUY-ME"));
    QCOMPARE(Snapshot(store)->value(QStringLiteral("select value from DescriptionSettings where item = "
                                                   "'BaudRate_125_1'")),
             QVariant(QStringLiteral("1")));
    QVERIFY(store.setDescriptionSetting(QStringLiteral("OrderCode"), QStringLiteral("mine")));
    store.addDefaultDescriptionSettings(1);
    QCOMPARE(store.getDescriptionSetting(QStringLiteral("OrderCode")), QStringLiteral("mine"));
    QVERIFY(store.executeSql(QStringLiteral("delete from DescriptionSettings where item = 'Comment_1'")));
    store.addDefaultDescriptionSettings(1);
    QVERIFY(store.descriptionSettingExists(QStringLiteral("Comment")));
}

void TestStoreLines::anExistingNodeIsUpdatedUpToTheIconPath()
{
    NewStore store;
    Node node;
    node.name = QStringLiteral("first");
    node.isbootupmanager = node.isconfigmanager = node.excludepdolinking = 1;
    node.multilinedata = 5;
    node.lssslave = 1;
    QVERIFY(store.addNode(1, node));
    Node changed;
    changed.name = QStringLiteral("it's second");
    changed.iconpath = QStringLiteral("icon.png");
    changed.tpdocnt = 512;
    changed.ismaster = 1;
    changed.generatedcf = 0;
    QVERIFY(store.addNode(1, changed));
    Node expected = changed;
    expected.isbootupmanager = expected.isconfigmanager = expected.excludepdolinking = 1;
    expected.multilinedata = 5;
    expected.lssslave = 1;
    Node read;
    QVERIFY(store.getNode(1, read));
    QCOMPARE(read, expected);
}

void TestStoreLines::anUpdateOfANodeLeavesItsTables()
{
    NewStore store;
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
    QVERIFY(store.setUDSServiceActive(0, UDS::ECUReset, false));
    RecordedChanges changes(store);
    QVERIFY(store.addNode(0, {}));
    QVERIFY(store.indexExists(0, 0x2000));
    QVERIFY(!store.isUDSServiceActive(0, UDS::ECUReset));
    QCOMPARE(changes.all(), QList<ChangeSet>({{.type = ObjectDataBase::NodeChanged, .line = 0}}));
}

void TestStoreLines::setNodeSqlValueWritesOneColumnOfOneNode()
{
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    store.setNodeSqlValue(1, QStringLiteral("name"), QStringLiteral("O'Brien"));
    store.setNodeSqlValue(1, QStringLiteral("tpdocnt"), 12);
    Node expected;
    Node node;
    QVERIFY(store.getNode(0, node));
    QCOMPARE(node, expected);
    expected.name = QStringLiteral("O'Brien");
    expected.tpdocnt = 12;
    QVERIFY(store.getNode(1, node));
    QCOMPARE(node, expected);
}

void TestStoreLines::removeLineTakesTablesNodeAndConnections()
{
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
    QVERIFY(addConnection(store, 1, "1,1,1", "0,1,1"));
    QVERIFY(addConnection(store, 2, "0,1,1", "1,1,1"));
    QVERIFY(addConnection(store, 3, "0,1,1", "2,1,1"));
    QVERIFY(store.removeLine(1));
    QCOMPARE(store.getLines(), QList<quint8>{0});
    QCOMPARE(Snapshot(store)->count(QStringLiteral("sqlite_master where type = 'table' and name glob '*1'")),
             0);
    QCOMPARE(connections(store), QStringList{QStringLiteral("3")});
    QVERIFY(store.indexExists(0, 0x2000));
}

void TestStoreLines::removeLineGoesOnWhenATableIsMissing()
{
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    QVERIFY(store.executeSql(QStringLiteral("drop table Objects1")));
    QVERIFY(store.executeSql(QStringLiteral("drop table SPNs1")));
    store.removeLine(1);
    QVERIFY(!store.nodeExists(1));
    QCOMPARE(Snapshot(store)->count(QStringLiteral("sqlite_master where type = 'table' and name glob '*1'")),
             0);
}

void TestStoreLines::aRemovedLineCanBeMadeAgainEmpty()
{
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    QVERIFY(store.addIndex(1, 0x2000, sampleIndex()));
    QVERIFY(store.addSubIndex(1, 0x2000, 1, sampleSub()));
    store.cacheAllSubs(1);
    store.cacheSubNames(1);
    QVERIFY(store.removeLine(1));
    QVERIFY(store.addNode(1, {}));
    Sub sub;
    QVERIFY(!store.getSubIndex(1, 0x2000, 1, sub));
    QCOMPARE(store.getSubIndexName(1, 0x2000, 1), QString());
    QCOMPARE(store.getIndexList(1), QList<quint16>{});
}

void TestStoreLines::copyLineTakesTheObjectsOfTheRange_data()
{
    QTest::addColumn<bool>("sameStore");
    QTest::newRow("within one store") << true;
    QTest::newRow("from another store") << false;
}

void TestStoreLines::copyLineTakesTheObjectsOfTheRange()
{
    QFETCH(bool, sameStore);
    NewStore source;
    NewStore other;
    ObjectDataBase &target = sameStore ? static_cast<ObjectDataBase &>(source) : other;
    target.addString(QStringLiteral("so that pool ids differ"));
    for (const quint16 index : {0x1FFF, 0x2000, 0x2001, 0x2100, 0x2101}) {
        QVERIFY(source.addIndex(0, index, sampleIndex(QStringLiteral("object %1").arg(index))));
        QVERIFY(source.addSubIndex(0, index, 0, sampleSub(QStringLiteral("count"))));
        QVERIFY(source.addSubIndex(0, index, 1, sampleSub(QStringLiteral("value %1").arg(index))));
    }
    QVERIFY(target.addNode(1, {}));
    QVERIFY(target.addIndex(1, 0x2000, sampleIndex(QStringLiteral("replaced"))));
    QVERIFY(target.addSubIndex(1, 0x2000, 9, sampleSub()));
    QVERIFY(target.addIndex(1, 0x5000, sampleIndex(QStringLiteral("stays"))));
    QVERIFY(target.copyLine(source, 0, 1, 0x2000, 0x2100));
    QCOMPARE(target.getIndexList(1), QList<quint16>({0x2000, 0x2001, 0x2100, 0x5000}));
    for (const quint16 index : {0x2000, 0x2001, 0x2100}) {
        Index object;
        QVERIFY(target.getIndex(1, index, object));
        QCOMPARE(object, sampleIndex(QStringLiteral("object %1").arg(index)));
        QCOMPARE(target.getSubIndexList(1, index), QList<quint8>({0, 1}));
        Sub sub;
        QVERIFY(target.getSubIndex(1, index, 1, sub));
        QCOMPARE(sub, sampleSub(QStringLiteral("value %1").arg(index)));
    }
}

void TestStoreLines::copyLineNamesAnUnnamedObject()
{
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex(QString())));
    QVERIFY(store.copyLine(store, 0, 1, 0, 0xFFFF));
    QCOMPARE(store.getIndexName(1, 0x2000), QStringLiteral("unnamed object"));
    QCOMPARE(store.getIndexName(0, 0x2000), QString());
}

void TestStoreLines::copyLineTakesAllPgnsOfBothDirections()
{
    NewStore source;
    QVERIFY(source.addPGN(0, 0, samplePgn(85)));
    QVERIFY(source.addPGN(0, 0x1FFFF, samplePgn(119)));
    QVERIFY(source.addPGN(0, 0x20000, samplePgn(85))); // no PGN has more than 17 bits here
    QVERIFY(source.addSPN(0, 0x1FFFF, 119, 190, sampleSpn(1)));
    NewStore target;
    QVERIFY(target.addNode(1, {}));
    QVERIFY(target.copyLine(source, 0, 1, 0x2000, 0x2000));
    QCOMPARE(target.getPGNList(1, 85), QList<quint32>{0});
    QCOMPARE(target.getPGNList(1, 119), QList<quint32>{0x1FFFF});
    ObjectDataBase::SPN spn;
    QVERIFY(target.getSPN(1, 0x1FFFF, 119, 190, spn));
    QCOMPARE(spn, sampleSpn(1));
}

void TestStoreLines::copyLineTakesTheServicesWithinOneStore()
{
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    QVERIFY(store.setUDSServiceActive(0, UDS::DiagnosticSessionControl, false));
    QVERIFY(store.setUDSServiceSessions(0, UDS::LinkControl, QStringLiteral("2")));
    QVERIFY(store.copyLine(store, 0, 1, 0, 0xFFFF));
    const Snapshot file(store);
    const QString services = QStringLiteral("select * from UDSSettings%1 order by sid");
    QCOMPARE(file->rows(services.arg(1)), file->rows(services.arg(0)));
    QVERIFY(!store.isUDSServiceActive(1, UDS::DiagnosticSessionControl));
}

void TestStoreLines::copyLineForgetsTheSourcesCache()
{
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    QVERIFY(store.copyLine(store, 0, 1, 0, 0xFFFF));
    QVERIFY(store.executeSql(QStringLiteral("update SubObjects0 set defaultvalue = 'outside'")));
    Sub sub;
    QVERIFY(store.getSubIndex(0, 0x2000, 1, sub));
    QCOMPARE(sub.defaultvalue, QStringLiteral("outside"));
}

void TestStoreLines::removeConsumerConnectionLeavesTheProducerSide()
{
    NewStore store;
    QVERIFY(addConnection(store, 1, "0,100,1", "1,200,2"));
    QVERIFY(addConnection(store, 2, "1,200,2", "0,100,1"));
    QVERIFY(addConnection(store, 3, "0,100,1", "1,200,3"));
    QVERIFY(store.removeConsumerConnection(1, 200, 2));
    QCOMPARE(connections(store), QStringList({"2", "3"}));
}

void TestStoreLines::removeConnectionsTakesBothSidesOfAnObject()
{
    NewStore store;
    QVERIFY(addConnection(store, 1, "0,100,1", "1,200,2"));
    QVERIFY(addConnection(store, 2, "1,200,2", "0,100,1"));
    QVERIFY(addConnection(store, 3, "0,100,9", "1,200,3"));
    QVERIFY(addConnection(store, 4, "1,100,1", "2,200,2")); // other line
    QVERIFY(addConnection(store, 5, "0,101,1", "1,200,2")); // other object
    QVERIFY(store.removeConnections(0, 100));
    QCOMPARE(connections(store), QStringList({"4", "5"}));
}

QTEST_GUILESS_MAIN(TestStoreLines)
#include "tst_storelines.moc"
