#include "FieldCases.h"

#include <limits>

using namespace StoreTest;

using Operation = std::function<void(ObjectDataBase &, quint8)>;
Q_DECLARE_METATYPE(Operation)

/** Numbers that mean nothing, rows and lines that are not there, a store that is not open. */
class TestStoreBadInput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void anyNumberComesBackUnchanged_data();
    void anyNumberComesBackUnchanged();
    void theWholeRangeOfKeysIsUsable_data();
    void theWholeRangeOfKeysIsUsable();
    void missingRowsAreFalseAndLeaveTheRecord();
    void missingRowsReadAsEmptyTexts();
    void everyOperationOnAMissingLineIsHarmless_data() { missingLineRows(); }
    void everyOperationOnAMissingLineIsHarmless();
    void writesIntoAMissingLineAreFalse();
    void everyOperationOnAClosedStoreIsHarmless_data();
    void everyOperationOnAClosedStoreIsHarmless();
    void aClosedStoreCanBeUsedAgain();
    void namesOfTablesAndColumnsAreNoStatements();

private:
    static void missingLineRows();
};

void TestStoreBadInput::anyNumberComesBackUnchanged_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("unknown data type") << 99;
    QTest::newRow("data type of another protocol family") << 129;
    QTest::newRow("zero") << 0;
    QTest::newRow("negative") << -1;
    QTest::newRow("largest") << std::numeric_limits<int>::max();
    QTest::newRow("smallest") << std::numeric_limits<int>::min();
}

void TestStoreBadInput::anyNumberComesBackUnchanged()
{
    QFETCH(int, number);
    ObjectDataBase::INDEX_DATA_T index = sampleIndex();
    index.datatype = index.objecttype = index.category = index.fwsupported = number;
    ObjectDataBase::SUBINDEX_DATA_T sub = sampleSub();
    sub.datatype = sub.size = sub.implementation = sub.category = sub.signalid = number;
    ObjectDataBase::SPN spn = sampleSpn(number);
    spn.datatype = spn.implementation = spn.bitsize = spn.slot_df = spn.bitposition = number;
    ObjectDataBase::DataElement element = sampleElement(number);
    element.datatype = element.implementation = element.bitsize = element.bitpos = number;
    NewStore store;
    QVERIFY(store.addIndex(0, 0x2000, index));
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sub));
    QVERIFY(store.addSPN(0, 1, 85, 1, spn));
    QVERIFY(store.addDataElement(0, 1, 85, 1, element));
    ObjectDataBase::INDEX_DATA_T readIndex;
    ObjectDataBase::SUBINDEX_DATA_T readSub;
    ObjectDataBase::SPN readSpn;
    ObjectDataBase::DataElement readElement;
    QVERIFY(store.getIndex(0, 0x2000, readIndex));
    QVERIFY(store.getSubIndex(0, 0x2000, 1, readSub));
    QVERIFY(store.getSPN(0, 1, 85, 1, readSpn));
    QVERIFY(store.getDataElement(0, 1, 85, 1, readElement));
    QCOMPARE(readIndex, index);
    QCOMPARE(readSub, sub);
    QCOMPARE(readSpn, spn);
    QCOMPARE(readElement, element);
    QCOMPARE(store.getSubIndexDatatype(0, 0x2000, 1), number);
    QCOMPARE(store.getSPNDatatype(0, 1, 85, 1), number);
}

void TestStoreBadInput::theWholeRangeOfKeysIsUsable_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("subindex");
    QTest::newRow("lowest") << 0 << 0;
    QTest::newRow("highest") << 0xFFFF << 0xFF;
    QTest::newRow("highest sub-index of index 0") << 0 << 0xFF;
    QTest::newRow("the clipboard's index") << 0xF000 << 1;
    QTest::newRow("the one that is logged") << 0x1000 << 1;
}

void TestStoreBadInput::theWholeRangeOfKeysIsUsable()
{
    QFETCH(int, index);
    QFETCH(int, subindex);
    NewStore store;
    QVERIFY(store.addIndex(0, quint16(index), sampleIndex()));
    QVERIFY(store.addSubIndex(0, quint16(index), quint8(subindex), sampleSub()));
    for (const bool cached : {false, true}) {
        if (cached)
            store.cacheAllSubs(0);
        ObjectDataBase::SUBINDEX_DATA_T sub;
        QVERIFY(store.getSubIndex(0, quint16(index), quint8(subindex), sub));
        QCOMPARE(sub, sampleSub());
    }
    QCOMPARE(store.getIndexList(0), QList<quint16>{quint16(index)});
    QCOMPARE(store.getSubIndexList(0, quint16(index)), QList<quint8>{quint8(subindex)});
}

void TestStoreBadInput::missingRowsAreFalseAndLeaveTheRecord()
{
    NewStore store;
    ObjectDataBase::INDEX_DATA_T index = sampleIndex();
    ObjectDataBase::SUBINDEX_DATA_T sub = sampleSub();
    ObjectDataBase::NODE_DATA_T node;
    ObjectDataBase::PGN pgn = samplePgn(85);
    ObjectDataBase::SPN spn = sampleSpn(1);
    ObjectDataBase::CANID canid = sampleCanId(85);
    ObjectDataBase::DataElement element = sampleElement(1);
    node.name = QStringLiteral("own");
    QVERIFY(!store.getIndex(0, 1, index));
    QVERIFY(!store.getSubIndex(0, 1, 1, sub));
    QVERIFY(!store.getNode(9, node));
    QVERIFY(!store.getPGN(0, 1, 85, pgn));
    QVERIFY(!store.getSPN(0, 1, 85, 1, spn));
    QVERIFY(!store.getCANID(0, 1, 85, canid));
    QVERIFY(!store.getDataElement(0, 1, 85, 1, element));
    QCOMPARE(index, sampleIndex());
    QCOMPARE(sub, sampleSub());
    QCOMPARE(node.name, QStringLiteral("own"));
    QCOMPARE(pgn, samplePgn(85));
    QCOMPARE(spn, sampleSpn(1));
    QCOMPARE(canid, sampleCanId(85));
    QCOMPARE(element, sampleElement(1));
}

void TestStoreBadInput::missingRowsReadAsEmptyTexts()
{
    NewStore store;
    QCOMPARE(store.getIndexName(0, 1), QString());
    QCOMPARE(store.getSubIndexName(0, 1, 1), QString());
    QCOMPARE(store.getSubIndexName(0, 1, 1, true), QString());
    QCOMPARE(store.getSubIndexDefault(0, 1, 1), QString());
    QCOMPARE(store.getPGNName(0, 1, 85), QString());
    QCOMPARE(store.getSPNName(0, 1, 85, 1), QString());
    QCOMPARE(store.getCANIDName(0, 1, 85), QString());
    QCOMPARE(store.getDataElementName(0, 1, 85, 1), QString());
}

void TestStoreBadInput::missingLineRows()
{
    QTest::addColumn<Operation>("operation");
    using Store = ObjectDataBase;
    const auto row = [](const char *name, const Operation &operation) { QTest::newRow(name) << operation; };
    row("objects", [](Store &s, quint8 line) {
        ObjectDataBase::INDEX_DATA_T index;
        s.addIndex(line, 1, sampleIndex());
        s.renameIndex(line, 1, QStringLiteral("n"));
        s.copyIndex(line, 1, line, 2);
        s.copyIndex(0, 0x2000, line, 2);
        s.copyToClipboard(line, 1);
        s.removeIndex(line, 1);
        QVERIFY(!s.getIndex(line, 1, index));
        QVERIFY(!s.indexExists(line, 1));
        QCOMPARE(s.getIndexList(line), QList<quint16>{});
        QCOMPARE(s.findIndices(line, QStringLiteral("datatype"), QStringLiteral("7")), QList<quint16>{});
    });
    row("sub-indices", [](Store &s, quint8 line) {
        ObjectDataBase::SUBINDEX_DATA_T sub;
        s.addSubIndex(line, 1, 1, sampleSub());
        s.addSubIndices({{.line = line, .index = 1, .subindex = 1, .data = sampleSub()}});
        s.cacheAllSubs(line);
        s.cacheSubNames(line);
        s.addSubIndex(line, 1, 1, sampleSub());
        s.setSubIndexDefault(line, 1, 1, QStringLiteral("1"));
        s.removeSubIndex(line, 1, 1);
        QVERIFY(!s.getSubIndex(line, 1, 1, sub));
        QCOMPARE(s.getSubIndexList(line, 1), QList<quint8>{});
        QVERIFY(s.getMappableSubs(line).isEmpty());
        QVERIFY(s.findSubIndices(line, QStringLiteral("varname"), QStringLiteral("x"), true).isEmpty());
    });
    row("metadata", [](Store &s, quint8 line) {
        s.setObjectMetadata(line, 1, {{"k", "v"}});
        s.setSubMetadata(line, 1, 1, {{"k", "v"}});
        QVERIFY(s.getObjectMetadata(line, 1).isEmpty());
        QVERIFY(s.getAllSubMetadata(line).isEmpty());
    });
    row("J1939", [](Store &s, quint8 line) {
        s.addPGN(line, 1, samplePgn(85));
        s.addSPN(line, 1, 85, 1, sampleSpn(1));
        s.cacheAllSpns(line);
        s.setPGNMappingCount(line, 1, 85, 3);
        s.removeSPN(line, 1, 85, 1);
        s.removePGN(line, 1, 85);
        s.copyPGNs(s, line, 0, 0, 0x1FFFF, 85);
        QVERIFY(s.getPGNList(line, 0).isEmpty());
        QVERIFY(s.getSPNList(line, 1, 85).isEmpty());
    });
    row("raw CAN", [](Store &s, quint8 line) {
        s.addCANID(line, 1, sampleCanId(85));
        s.addDataElement(line, 1, 85, 1, sampleElement(1));
        s.removeDataElement(line, 1, 85, 1);
        s.removeCANID(line, 1, 85);
        s.copyCANIDs(s, line, 0, 0, 0x1FFFF, 85);
        QVERIFY(s.getCANIDList(line, 0).isEmpty());
        QVERIFY(s.getDataElementList(line, 1, 85).isEmpty());
    });
    row("services", [](Store &s, quint8 line) {
        s.setUDSServiceActive(line, UDS::ECUReset, true);
        s.setUDSAuthentication(line, UDS::ECUReset, QStringLiteral("a"));
        QVERIFY(!s.isUDSServiceActive(line, UDS::ECUReset));
        QVERIFY(s.getUDSActiveServices(line).isEmpty());
        QCOMPARE(s.getUDSServiceSessions(line, UDS::ECUReset), QString());
    });
    row("lines and settings", [](Store &s, quint8 line) {
        s.setNodeSqlValue(line, QStringLiteral("name"), QStringLiteral("n"));
        s.removeLineSettings(line);
        s.removeLine(line);
        s.removeConnections(line, 1);
        s.removeConsumerConnection(line, 1, 1);
        s.copyLine(s, line, 0, 0, 0xFFFF);
        s.setDescriptionLine(line);
        QCOMPARE(s.getDescriptionSetting(QStringLiteral("VendorName")), QString());
        QVERIFY(!s.nodeExists(line));
    });
    row("columns", [](Store &s, quint8 line) {
        s.setObjectIndexSqlValue(QStringLiteral("Objects%1").arg(line), 1, QStringLiteral("name"), 1);
        s.setSubindexSqlValue(QStringLiteral("SubObjects%1").arg(line), 1, 1, QStringLiteral("name"), 1);
        QVERIFY(!s.indexExists(line, 1));
    });
}

void TestStoreBadInput::everyOperationOnAMissingLineIsHarmless()
{
    QFETCH(Operation, operation);
    for (const quint8 line : {1, 31, 32, 200, 254, 255}) {
        NewStore store;
        QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
        QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
        operation(store, line);
        // The line that is there has suffered nothing.
        ObjectDataBase::SUBINDEX_DATA_T sub;
        QVERIFY(store.getSubIndex(0, 0x2000, 1, sub));
        QCOMPARE(sub, sampleSub());
        QCOMPARE(store.getIndexName(0, 0x2000), sampleIndex().name);
        QCOMPARE(store.runningQueries(), 0);
        QCOMPARE(Snapshot(store)->count(QStringLiteral("sqlite_master where name = 'Objects%1'").arg(line)),
                 0);
    }
}

void TestStoreBadInput::writesIntoAMissingLineAreFalse()
{
    NewStore store;
    QVERIFY(!store.addIndex(9, 1, sampleIndex()));
    QVERIFY(!store.addSubIndex(9, 1, 1, sampleSub()));
    QVERIFY(!store.addPGN(9, 1, samplePgn(85)));
    QVERIFY(!store.addSPN(9, 1, 85, 1, sampleSpn(1)));
    QVERIFY(!store.addCANID(9, 1, sampleCanId(85)));
    QVERIFY(!store.addDataElement(9, 1, 85, 1, sampleElement(1)));
    QVERIFY(!store.setUDSServiceActive(9, UDS::ECUReset, true));
    QVERIFY(!store.setObjectMetadata(9, 1, {{"k", "v"}}));
    QVERIFY(!store.setSubMetadata(9, 1, 1, {{"k", "v"}}));
}

void TestStoreBadInput::everyOperationOnAClosedStoreIsHarmless_data()
{
    missingLineRows();
    QTest::newRow("settings") << Operation([](ObjectDataBase &s, quint8 line) {
        const QString k = QStringLiteral("k");
        QVERIFY(!s.setGeneralSetting(k, k));
        QVERIFY(!s.setGeneralSettingForLine(QStringLiteral("co_node_id"), k, line));
        QVERIFY(!s.setDescriptionSetting(k, k));
        QVERIFY(!s.setMiscSetting(k, k));
        QVERIFY(!s.setJ1939Setting(k, k));
        QVERIFY(!s.setEnergyBusSetting(k, k));
        QVERIFY(!s.generalSettingExists(k));
        QCOMPARE(s.getGeneralSetting(k), QString());
        QVERIFY(s.getGeneralSettingKeys().isEmpty());
        s.addDefaultDescriptionSettings(line);
    });
    QTest::newRow("the store itself") << Operation([](ObjectDataBase &s, quint8 line) {
        QTemporaryDir folder;
        QVERIFY(!s.addNode(line, {}));
        QVERIFY(s.getLines().isEmpty());
        QCOMPARE(s.addString(QStringLiteral("text")), -1);
        QCOMPARE(s.getString(1), QString());
        s.removeUnusedStrings();
        s.loadStrings();
        QVERIFY(!s.executeSql(QStringLiteral("select 1")));
        QCOMPARE(s.sqlResult().size(), 1);
        QVERIFY(!s.openDataBase(QString()));
        s.setTrackWrites(true);
        s.contentHash();
        s.closeDataBase();
    });
}

void TestStoreBadInput::everyOperationOnAClosedStoreIsHarmless()
{
    QFETCH(Operation, operation);
    ObjectDataBase neverOpened;
    QVERIFY(!neverOpened.isOpen());
    operation(neverOpened, 1);
    NewStore closed;
    closed.closeDataBase();
    QVERIFY(!closed.isOpen());
    operation(closed, 1);
    QCOMPARE(closed.runningQueries(), 0);
}

void TestStoreBadInput::aClosedStoreCanBeUsedAgain()
{
    NewStore store;
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
    store.closeDataBase();
    QVERIFY(!store.indexExists(0, 0x2000));
    QVERIFY(store.createNewDataBase());
    QVERIFY(store.isOpen());
    QCOMPARE(store.getLines(), QList<quint8>{0});
    QVERIFY(!store.indexExists(0, 0x2000));
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
}

void TestStoreBadInput::namesOfTablesAndColumnsAreNoStatements()
{
    const QStringList names{QString(),
                            QStringLiteral("Nowhere"),
                            QStringLiteral("Objects0; drop table Objects0"),
                            QStringLiteral("name = 1; drop table Objects0 --"),
                            QStringLiteral("'"),
                            QStringLiteral("name'"),
                            QString(QChar(0))};
    for (const QString &name : names) {
        NewStore store;
        QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
        QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
        const QString before = store.contentHash();
        store.setObjectIndexSqlValue(name, 0x2000, QStringLiteral("datatype"), 1);
        store.setObjectIndexSqlValue(QStringLiteral("Objects0"), 0x2000, name, 1);
        store.setSubindexSqlValue(name, 0x2000, 1, QStringLiteral("datatype"), 1);
        store.setSubindexSqlValue(QStringLiteral("SubObjects0"), 0x2000, 1, name, 1);
        store.setNodeSqlValue(0, name, 1);
        QVERIFY(store.findIndices(0, name, QStringLiteral("1")).isEmpty());
        QVERIFY(store.findSubIndices(0, name, QStringLiteral("1"), false).isEmpty());
        QVERIFY2(store.contentHash() == before, qPrintable(name));
    }
}

QTEST_GUILESS_MAIN(TestStoreBadInput)
#include "tst_storebadinput.moc"
