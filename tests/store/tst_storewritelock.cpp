#include "StoreTest.h"
#include "support/Worker.h"

#include <QSemaphore>
#include <QSignalSpy>

#include <functional>
#include <memory>

using namespace StoreTest;

using Operation = std::function<bool(ObjectDataBase &)>;
Q_DECLARE_METATYPE(Operation)

/** A store whose write lock is set changes nothing, whatever is called. */
class TestStoreWriteLock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void aLockedStoreRefusesToWrite_data() { operationRows(); }
    void aLockedStoreRefusesToWrite();
    void theSameOperationWritesWhenTheLockIsGone_data() { operationRows(); }
    void theSameOperationWritesWhenTheLockIsGone();
    void aRefusedWriteComesBackAtOnceWhileAWorkerHoldsTheLock_data() { operationRows(); }
    void aRefusedWriteComesBackAtOnceWhileAWorkerHoldsTheLock();
    void addSubIndexWhileLockedGivesFalseNoRowNoSignal();
    void cachesStayAsTheyAreWhileLocked();
    void readsGoOnInTheLockingThread();
    void theLockIsTheBlockStateToo();

private:
    static void operationRows();
    static void prepare(ObjectDataBase &store);
    static void objectRows();
    static void settingRows();
    static void protocolRows();
    static void row(const char *name, const Operation &operation) { QTest::newRow(name) << operation; }
    static ObjectDataBase &otherStore();
};

using Store = ObjectDataBase;

// A source for the operations that copy from another store.
ObjectDataBase &TestStoreWriteLock::otherStore()
{
    static NewStore *store = [] {
        auto *other = new NewStore;
        other->setParent(QCoreApplication::instance());
        other->addIndex(0, 0x2000, sampleIndex(QStringLiteral("from the other store")));
        other->addSubIndex(0, 0x2000, 1, sampleSub(QStringLiteral("from the other store")));
        other->addPGN(0, 100, samplePgn(85));
        other->addCANID(0, 100, sampleCanId(85));
        other->setGeneralSetting(QStringLiteral("from the other store"), QStringLiteral("v"));
        return other;
    }();
    return *store;
}

void TestStoreWriteLock::prepare(ObjectDataBase &store)
{
    QVERIFY(store.addNode(1, {}));
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sampleSub()));
    QVERIFY(store.addIndex(0, 0x2002, sampleIndex(QStringLiteral("second"))));
    QVERIFY(store.copyToClipboard(0, 0x2002));
    QVERIFY(store.addPGN(0, 61444, samplePgn(85)));
    QVERIFY(store.addSPN(0, 61444, 85, 190, sampleSpn(0)));
    QVERIFY(store.addCANID(0, 0x123, sampleCanId(85)));
    QVERIFY(store.addDataElement(0, 0x123, 85, 7, sampleElement(0)));
    QVERIFY(store.setGeneralSetting(QStringLiteral("co_node_id"), QStringLiteral("1,2,3")));
    QVERIFY(store.setEnergyBusSetting(QStringLiteral("device_1"), QStringLiteral("bat")));
    QVERIFY(store.executeSql(QStringLiteral("insert into Connections values(0,8192,1,1,12288,1,0)")));
    QVERIFY(store.executeSql(QStringLiteral("delete from DescriptionSettings where item = 'Comment'")));
    store.addString(QStringLiteral("unused text"));
    store.setDescriptionLine(0);
    otherStore();
}

void TestStoreWriteLock::operationRows()
{
    QTest::addColumn<Operation>("operation");
    objectRows();
    settingRows();
    protocolRows();
}

// Operations without a result count as refused.
void TestStoreWriteLock::objectRows()
{
    const QString name = QStringLiteral("new name");
    row("addString", [=](Store &s) { return s.addString(name) > 0; });
    row("removeUnusedStrings", [](Store &s) { return s.removeUnusedStrings(), false; });
    row("addIndex", [](Store &s) { return s.addIndex(0, 0x2001, sampleIndex()); });
    row("addIndex, an update", [=](Store &s) { return s.addIndex(0, 0x2000, sampleIndex(name)); });
    row("removeIndex", [](Store &s) { return s.removeIndex(0, 0x2000); });
    row("renameIndex", [=](Store &s) { return s.renameIndex(0, 0x2000, name); });
    row("setObjectIndexSqlValue", [=](Store &s) {
        return s.setObjectIndexSqlValue(QStringLiteral("Objects0"), 0x2000, QStringLiteral("name"), name),
               false;
    });
    row("setObjectIndexSqlValue of a missing row", [=](Store &s) {
        return s.setObjectIndexSqlValue(QStringLiteral("Objects0"), 0x3000, QStringLiteral("datatype"), 5),
               false;
    });
    row("copyIndex", [](Store &s) { return s.copyIndex(0, 0x2000, 0, 0x3000); });
    row("copyIndexFrom", [](Store &s) { return s.copyIndexFrom(otherStore(), 0, 0x2000, 0, 0x3000, true); });
    row("mergeIndexFrom", [](Store &s) { return s.mergeIndexFrom(otherStore(), 0, 0x2000, 0, 0x3000); });
    row("copyToClipboard", [](Store &s) { return s.copyToClipboard(0, 0x2000); });
    row("pasteFromClipboard", [](Store &s) { return s.pasteFromClipboard(0, 0x3000); });
    row("addSubIndex", [](Store &s) { return s.addSubIndex(0, 0x2000, 2, sampleSub()); });
    row("addSubIndices", [](Store &s) {
        return s.addSubIndices({{.line = 0, .index = 0x2000, .subindex = 2, .data = sampleSub()}});
    });
    row("removeSubIndex", [](Store &s) { return s.removeSubIndex(0, 0x2000, 1); });
    row("renameSubIndex", [=](Store &s) { return s.renameSubIndex(0, 0x2000, 1, name); });
    row("setSubIndexDefault",
        [](Store &s) { return s.setSubIndexDefault(0, 0x2000, 1, QStringLiteral("9")); });
    row("setSubindexSqlValue", [=](Store &s) {
        return s.setSubindexSqlValue(QStringLiteral("SubObjects0"), 0x2000, 1, QStringLiteral("name"), name),
               false;
    });
    row("setObjectMetadata", [](Store &s) { return s.setObjectMetadata(0, 0x2000, {{"k", "v"}}); });
    row("setSubMetadata", [](Store &s) { return s.setSubMetadata(0, 0x2000, 1, {{"k", "v"}}); });
}

void TestStoreWriteLock::settingRows()
{
    const QString k = QStringLiteral("k");
    const QString v = QStringLiteral("v");
    const QString list = QStringLiteral("co_node_id");
    row("setGeneralSetting", [=](Store &s) { return s.setGeneralSetting(k, v); });
    row("setGeneralSetting, an update", [=](Store &s) { return s.setGeneralSetting(list, v); });
    row("setGeneralSettingForLine", [=](Store &s) { return s.setGeneralSettingForLine(list, v, 1); });
    row("setDescriptionSetting", [=](Store &s) { return s.setDescriptionSetting(k, v); });
    row("addDefaultDescriptionSettings", [](Store &s) { return s.addDefaultDescriptionSettings(0), false; });
    row("setEnergyBusSetting", [=](Store &s) { return s.setEnergyBusSetting(k, v); });
    row("removeEnergyBusSetting",
        [](Store &s) { return s.removeEnergyBusSetting(QStringLiteral("device_1")); });
    row("setJ1939Setting", [=](Store &s) { return s.setJ1939Setting(k, v); });
    row("setMiscSetting", [=](Store &s) { return s.setMiscSetting(k, v); });
    row("replaceSettingsFrom", [](Store &s) { return s.replaceSettingsFrom(otherStore()); });
    row("addNode", [](Store &s) { return s.addNode(5, {}); });
    row("addNode, an update", [](Store &s) { return s.addNode(0, {.name = QStringLiteral("n")}); });
    row("setNodeSqlValue", [=](Store &s) { return s.setNodeSqlValue(0, QStringLiteral("name"), v), false; });
    row("removeLine", [](Store &s) { return s.removeLine(1); });
    row("removeLineSettings", [](Store &s) { return s.removeLineSettings(1), false; });
    row("copyLine", [](Store &s) { return s.copyLine(s, 0, 1, 0, 0xFFFF); });
    row("copyLine from another store", [](Store &s) { return s.copyLine(otherStore(), 0, 1, 0, 0xFFFF); });
    row("removeConsumerConnection", [](Store &s) { return s.removeConsumerConnection(1, 12288, 1); });
    row("removeConnections", [](Store &s) { return s.removeConnections(0, 8192); });
}

void TestStoreWriteLock::protocolRows()
{
    row("addPGN", [](Store &s) { return s.addPGN(0, 1, samplePgn(85)); });
    row("removePGN", [](Store &s) { return s.removePGN(0, 61444, 85); });
    row("setPGNMappingCount", [](Store &s) { return s.setPGNMappingCount(0, 61444, 85, 3); });
    row("addSPN", [](Store &s) { return s.addSPN(0, 61444, 85, 1, sampleSpn(0)); });
    row("removeSPN", [](Store &s) { return s.removeSPN(0, 61444, 85, 190); });
    row("copyPGNs", [](Store &s) { return s.copyPGNs(otherStore(), 0, 0, 0, 0x1FFFF, 85); });
    row("addCANID", [](Store &s) { return s.addCANID(0, 1, sampleCanId(85)); });
    row("removeCANID", [](Store &s) { return s.removeCANID(0, 0x123, 85); });
    row("addDataElement", [](Store &s) { return s.addDataElement(0, 0x123, 85, 1, sampleElement(0)); });
    row("removeDataElement", [](Store &s) { return s.removeDataElement(0, 0x123, 85, 7); });
    row("copyCANIDs", [](Store &s) { return s.copyCANIDs(otherStore(), 0, 0, 0, 0x1FFFF, 85); });
    row("setUDSServiceActive", [](Store &s) { return s.setUDSServiceActive(0, UDS::ECUReset, false); });
    row("setUDSServiceSessions",
        [](Store &s) { return s.setUDSServiceSessions(0, UDS::ECUReset, QStringLiteral("9")); });
    row("setUDSServiceUserLevels",
        [](Store &s) { return s.setUDSServiceUserLevels(0, UDS::ECUReset, QStringLiteral("9")); });
    row("setUDSAuthentication",
        [](Store &s) { return s.setUDSAuthentication(0, UDS::ECUReset, QStringLiteral("9")); });
}

void TestStoreWriteLock::aLockedStoreRefusesToWrite()
{
    QFETCH(Operation, operation);
    NewStore store;
    prepare(store);
    const QString before = store.contentHash();
    QVERIFY(store.executeSql(QStringLiteral("select total_changes()")));
    const QStringList changesBefore = store.sqlResult();
    RecordedChanges changes(store);
    store.setTrackWrites(true);
    QSignalSpy writes(&store, &ObjectDataBase::databaseWriteExecuted);
    store.setWriteLock(true);
    const bool result = operation(store);
    QVERIFY(store.executeSql(QStringLiteral("select total_changes()")));
    const QStringList changesAfter = store.sqlResult();
    const QString after = store.contentHash();
    store.setWriteLock(false);
    QVERIFY(!result);
    QCOMPARE(after, before);
    QCOMPARE(changesAfter, changesBefore);
    QCOMPARE(changes.all(), QList<ChangeSet>{});
    QCOMPARE(writes.count(), 0);
}

// Shows that the rows above do write when they may.
void TestStoreWriteLock::theSameOperationWritesWhenTheLockIsGone()
{
    QFETCH(Operation, operation);
    NewStore store;
    prepare(store);
    store.setWriteLock(true);
    store.setWriteLock(false);
    const QString before = store.contentHash();
    operation(store);
    QVERIFY(store.contentHash() != before);
}

void TestStoreWriteLock::aRefusedWriteComesBackAtOnceWhileAWorkerHoldsTheLock()
{
    QFETCH(Operation, operation);
    NewStore store;
    prepare(store);
    const QString before = store.contentHash();
    QSemaphore locked;
    QSemaphore tried;
    bool cameBackInTime = false;
    Worker worker([&] {
        store.setWriteLock(true);
        locked.release();
        cameBackInTime = tried.tryAcquire(1, 1000);
        store.setWriteLock(false);
    });
    locked.acquire();
    const bool result = operation(store);
    tried.release();
    QVERIFY(worker.wait());
    QVERIFY(cameBackInTime);
    QVERIFY(!result);
    QCOMPARE(store.contentHash(), before);
}

void TestStoreWriteLock::addSubIndexWhileLockedGivesFalseNoRowNoSignal()
{
    NewStore store;
    RecordedChanges changes(store);
    store.setWriteLock(true);
    QVERIFY(store.isWriteLocked());
    const bool added = store.addSubIndex(0, 0x2000, 1, sampleSub());
    const bool exists = store.subIndexExists(0, 0x2000, 1);
    store.setWriteLock(false);
    QVERIFY(!added);
    QVERIFY(!exists);
    QCOMPARE(changes.all(), QList<ChangeSet>{});
    // The value that was refused is dropped, not kept for later.
    QVERIFY(!store.subIndexExists(0, 0x2000, 1));
}

void TestStoreWriteLock::cachesStayAsTheyAreWhileLocked()
{
    NewStore store;
    prepare(store);
    store.cacheAllSubs(0);
    store.setWriteLock(true);
    store.addSubIndex(0, 0x2000, 1, sampleSub(QStringLiteral("refused")));
    store.removeSubIndex(0, 0x2000, 1);
    store.addString(QStringLiteral("refused"));
    ObjectDataBase::SUBINDEX_DATA_T sub;
    const bool found = store.getSubIndex(0, 0x2000, 1, sub);
    store.setWriteLock(false);
    QVERIFY(found);
    QCOMPARE(sub, sampleSub());
    const int id = store.addString(QStringLiteral("refused"));
    QCOMPARE(Snapshot(store)->value(QStringLiteral("select string from Strings where id = %1").arg(id)),
             QVariant(QStringLiteral("refused")));
}

void TestStoreWriteLock::readsGoOnInTheLockingThread()
{
    NewStore store;
    prepare(store);
    store.setWriteLock(true);
    ObjectDataBase::INDEX_DATA_T index;
    const bool read = store.getIndex(0, 0x2000, index);
    const QString setting = store.getGeneralSetting(QStringLiteral("co_node_id"));
    const QList<quint32> groups = store.getPGNList(0, 0);
    store.cacheAllSubs(0);
    store.setWriteLock(false);
    QVERIFY(read);
    QCOMPARE(index, sampleIndex());
    QCOMPARE(setting, QStringLiteral("1,2,3"));
    QCOMPARE(groups, QList<quint32>{61444});
}

void TestStoreWriteLock::theLockIsTheBlockStateToo()
{
    NewStore store;
    QSignalSpy states(&store, &ObjectDataBase::blockStateChanged);
    store.setWriteLock(true);
    store.setWriteLock(false);
    store.blockUpdates(true);
    QVERIFY(!store.isWriteLocked());
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex())); // blocking alone refuses nothing
    store.blockUpdates(false);
    QCOMPARE(states, QList<QVariantList>({{true}, {false}, {true}, {false}}));
}

QTEST_GUILESS_MAIN(TestStoreWriteLock)
#include "tst_storewritelock.moc"
