#include "StoreTest.h"

#include <functional>

using namespace StoreTest;

using Operation = std::function<void(ObjectDataBase &)>;
Q_DECLARE_METATYPE(Operation)

/** Copies of objects within a store, between stores and through the clipboard line. */
class TestStoreCopy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void copyIndexTakesTheObjectWithAllItsFields_data();
    void copyIndexTakesTheObjectWithAllItsFields();
    void copyIndexOntoItselfIsTrueAndChangesNothing();
    void copyIndexReplacesTheTarget();
    void copyIndexOfAMissingObjectLeavesTheTarget();
    void copyIndexAnnouncesEverySubIndexAfterTheObject();
    void copyIndexLeavesTheSignalsUnblocked();
    void copyIndexReadsTheTableNotAnOldCache();
    void copyIndexFromTakesTheObjectFromAnotherStore_data();
    void copyIndexFromTakesTheObjectFromAnotherStore();
    void copyIndexFromAMissingObjectIsFalse();
    void mergeKeepsTheTextsThatTheTargetHas();
    void mergeFillsTheTextsThatTheTargetLacks();
    void theClipboardBringsAnObjectToAnotherPlace();
    void theClipboardHoldsTheLastCopy();
    void pasteAndPeekNeedACopiedObject();
    void copyToClipboardOfAMissingObjectIsFalse();
    void aCopyOntoItselfLosesNothing_data();
    void aCopyOntoItselfLosesNothing();
};

using Index = ObjectDataBase::INDEX_DATA_T;
using Sub = ObjectDataBase::SUBINDEX_DATA_T;

namespace {

Index fullIndex()
{
    Index index = sampleIndex(QStringLiteral("Object's name"));
    index.metadata = {{QStringLiteral("unit"), QStringLiteral("rpm")}};
    return index;
}

Sub fullSub(int number)
{
    Sub sub = sampleSub(QStringLiteral("sub %1").arg(number));
    sub.defaultineds = sub.limitineds = sub.refuseread = sub.refusewrite = true;
    sub.dcfcomponent = sub.cyclicread = sub.writedefaulttoeds = sub.changedbyuser = true;
    sub.sharedlines = sub.managedbylvx = sub.nvstorage = true;
    sub.category = 2;
    sub.wizardsource = 454;
    sub.signalid = number;
    sub.metadata = {{QStringLiteral("n"), QString::number(number)}};
    return sub;
}

bool addFullObject(ObjectDataBase &store, quint8 line, quint16 index)
{
    bool added = store.addIndex(line, index, fullIndex());
    for (const int sub : {0, 1, 17, 255})
        added = added && store.addSubIndex(line, index, quint8(sub), fullSub(sub));
    return added;
}

void compareFullObject(ObjectDataBase &store, quint8 line, quint16 index)
{
    Index object;
    QVERIFY(store.getIndex(line, index, object));
    QCOMPARE(object, fullIndex());
    QCOMPARE(store.getSubIndexList(line, index), QList<quint8>({0, 1, 17, 255}));
    for (const int number : {0, 1, 17, 255}) {
        Sub sub;
        QVERIFY(store.getSubIndex(line, index, quint8(number), sub));
        QCOMPARE(sub, fullSub(number));
    }
}

} // namespace

void TestStoreCopy::copyIndexTakesTheObjectWithAllItsFields_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("index");
    QTest::newRow("other index") << 0 << 0x3000;
    QTest::newRow("other line, same index") << 1 << 0x2000;
    QTest::newRow("other line and index") << 1 << 0xFFFF;
}

void TestStoreCopy::copyIndexTakesTheObjectWithAllItsFields()
{
    QFETCH(int, line);
    QFETCH(int, index);
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    QVERIFY(addFullObject(store, 0, 0x2000));
    QVERIFY(store.copyIndex(0, 0x2000, quint8(line), quint16(index)));
    compareFullObject(store, quint8(line), quint16(index));
    compareFullObject(store, 0, 0x2000);
}

void TestStoreCopy::copyIndexOntoItselfIsTrueAndChangesNothing()
{
    NewStore store;
    QVERIFY(addFullObject(store, 0, 0x2000));
    const QString before = store.contentHash();
    RecordedChanges changes(store);
    QVERIFY(store.copyIndex(0, 0x2000, 0, 0x2000));
    QCOMPARE(store.contentHash(), before);
    QCOMPARE(changes.all(), QList<ChangeSet>{});
    compareFullObject(store, 0, 0x2000);
}

void TestStoreCopy::copyIndexReplacesTheTarget()
{
    NewStore store;
    QVERIFY(addFullObject(store, 0, 0x2000));
    QVERIFY(store.addIndex(0, 0x3000, sampleIndex(QStringLiteral("old"))));
    QVERIFY(store.addSubIndex(0, 0x3000, 99, sampleSub()));
    QVERIFY(store.copyIndex(0, 0x2000, 0, 0x3000));
    compareFullObject(store, 0, 0x3000);
}

void TestStoreCopy::copyIndexOfAMissingObjectLeavesTheTarget()
{
    NewStore store;
    QVERIFY(addFullObject(store, 0, 0x3000));
    QVERIFY(!store.copyIndex(0, 0x2000, 0, 0x3000));
    compareFullObject(store, 0, 0x3000);
}

void TestStoreCopy::copyIndexAnnouncesEverySubIndexAfterTheObject()
{
    NewStore store;
    QVERIFY(addFullObject(store, 0, 0x2000));
    RecordedChanges changes(store);
    QVERIFY(store.copyIndex(0, 0x2000, 0, 0x3000));
    QList<ChangeSet> expected;
    for (const quint8 sub : {0, 1, 17, 255})
        expected.append(
            {.type = ObjectDataBase::SubIndexChanged, .index = 0x3000, .subindex = sub, .line = 0});
    QCOMPARE(changes.ofType(ObjectDataBase::SubIndexChanged), expected);
    QCOMPARE(changes.all().mid(changes.all().size() - 4), expected);
    QCOMPARE(changes.ofType(ObjectDataBase::IndexChanged),
             QList<ChangeSet>({{.type = ObjectDataBase::IndexChanged, .index = 0x3000, .line = 0}}));
}

void TestStoreCopy::copyIndexLeavesTheSignalsUnblocked()
{
    NewStore store;
    QVERIFY(addFullObject(store, 0, 0x2000));
    QVERIFY(store.copyIndex(0, 0x2000, 0, 0x3000));
    QVERIFY(!store.signalsBlocked());
    // A window that silenced the store during a generation finds it silenced still.
    store.blockSignals(true);
    QVERIFY(store.copyIndex(0, 0x2000, 0, 0x3001));
    QVERIFY(store.signalsBlocked());
}

void TestStoreCopy::copyIndexReadsTheTableNotAnOldCache()
{
    NewStore store;
    QVERIFY(addFullObject(store, 0, 0x2000));
    store.cacheAllSubs(0);
    QVERIFY(store.executeSql(QStringLiteral("update SubObjects0 set defaultvalue = 'outside'")));
    QVERIFY(store.copyIndex(0, 0x2000, 0, 0x3000));
    QCOMPARE(Snapshot(store)->column(QStringLiteral("select distinct defaultvalue from SubObjects0")),
             QStringList{QStringLiteral("outside")});
}

void TestStoreCopy::copyIndexFromTakesTheObjectFromAnotherStore_data()
{
    QTest::addColumn<bool>("withSubs");
    QTest::newRow("with its sub-indices") << true;
    QTest::newRow("the object alone") << false;
}

void TestStoreCopy::copyIndexFromTakesTheObjectFromAnotherStore()
{
    QFETCH(bool, withSubs);
    NewStore source;
    QVERIFY(addFullObject(source, 0, 0x2000));
    NewStore target;
    // Other texts first, so that pool ids of the two stores differ.
    target.addString(QStringLiteral("shift"));
    target.addString(QStringLiteral("the ids"));
    QVERIFY(target.copyIndexFrom(source, 0, 0x2000, 0, 0x3000, withSubs));
    if (withSubs) {
        compareFullObject(target, 0, 0x3000);
    } else {
        Index object;
        QVERIFY(target.getIndex(0, 0x3000, object));
        QCOMPARE(object, fullIndex());
        QCOMPARE(target.getSubIndexList(0, 0x3000), QList<quint8>{});
    }
    compareFullObject(source, 0, 0x2000);
}

void TestStoreCopy::copyIndexFromAMissingObjectIsFalse()
{
    NewStore source;
    NewStore target;
    QVERIFY(!target.copyIndexFrom(source, 0, 0x2000, 0, 0x3000, true));
    QVERIFY(!target.mergeIndexFrom(source, 0, 0x2000, 0, 0x3000));
    QVERIFY(!target.indexExists(0, 0x3000));
}

void TestStoreCopy::mergeKeepsTheTextsThatTheTargetHas()
{
    NewStore source;
    NewStore target;
    QVERIFY(addFullObject(source, 0, 0x2000));
    QVERIFY(target.addIndex(0, 0x2000, sampleIndex(QStringLiteral("own name"))));
    Sub own = sampleSub(QStringLiteral("own sub"));
    own.description = QStringLiteral("own description");
    own.denotation = QStringLiteral("own denotation");
    own.datatype = 5;
    QVERIFY(target.addSubIndex(0, 0x2000, 1, own));
    QVERIFY(target.mergeIndexFrom(source, 0, 0x2000, 0, 0x2000));
    Index object;
    Sub sub;
    QVERIFY(target.getIndex(0, 0x2000, object));
    QVERIFY(target.getSubIndex(0, 0x2000, 1, sub));
    QCOMPARE(object.name, QStringLiteral("own name"));
    QCOMPARE(object.description, sampleIndex().description);
    QCOMPARE(sub.name, own.name);
    QCOMPARE(sub.description, own.description);
    QCOMPARE(sub.denotation, own.denotation);
    // What is no text follows the source.
    QCOMPARE(sub.datatype, fullSub(1).datatype);
    QCOMPARE(target.getSubIndexList(0, 0x2000), QList<quint8>({0, 1, 17, 255}));
}

void TestStoreCopy::mergeFillsTheTextsThatTheTargetLacks()
{
    NewStore source;
    NewStore target;
    QVERIFY(addFullObject(source, 0, 0x2000));
    QVERIFY(target.addIndex(0, 0x2000, {}));
    QVERIFY(target.addSubIndex(0, 0x2000, 1, {}));
    QVERIFY(target.mergeIndexFrom(source, 0, 0x2000, 0, 0x2000));
    compareFullObject(target, 0, 0x2000);
}

void TestStoreCopy::theClipboardBringsAnObjectToAnotherPlace()
{
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    QVERIFY(addFullObject(store, 0, 0x2000));
    QVERIFY(store.copyToClipboard(0, 0x2000));
    QVERIFY(store.nodeExists(ObjectDataBase::ClipboardLine));
    QCOMPARE(store.getIndexList(ObjectDataBase::ClipboardLine), QList<quint16>{0xF000});
    compareFullObject(store, 254, 0xF000);
    Index peeked;
    QVERIFY(store.peekClipboard(peeked));
    QCOMPARE(peeked, fullIndex());
    QVERIFY(store.removeIndex(0, 0x2000));
    QVERIFY(store.pasteFromClipboard(1, 0x4000));
    compareFullObject(store, 1, 0x4000);
    QVERIFY(store.pasteFromClipboard(1, 0x4001)); // the copy stays
    compareFullObject(store, 1, 0x4001);
}

void TestStoreCopy::theClipboardHoldsTheLastCopy()
{
    NewStore store;
    QVERIFY(addFullObject(store, 0, 0x2000));
    QVERIFY(store.addIndex(0, 0x2001, sampleIndex(QStringLiteral("second"))));
    QVERIFY(store.copyToClipboard(0, 0x2000));
    QVERIFY(store.copyToClipboard(0, 0x2001));
    QCOMPARE(store.getSubIndexList(254, 0xF000), QList<quint8>{});
    QVERIFY(store.pasteFromClipboard(0, 0x2000));
    QCOMPARE(store.getIndexName(0, 0x2000), QStringLiteral("second"));
    QCOMPARE(store.getSubIndexList(0, 0x2000), QList<quint8>{});
}

void TestStoreCopy::pasteAndPeekNeedACopiedObject()
{
    NewStore store;
    QVERIFY(addFullObject(store, 0, 0x2000));
    Index peeked;
    QVERIFY(!store.peekClipboard(peeked));
    QVERIFY(!store.pasteFromClipboard(0, 0x2000));
    compareFullObject(store, 0, 0x2000);
}

void TestStoreCopy::copyToClipboardOfAMissingObjectIsFalse()
{
    NewStore store;
    QVERIFY(!store.copyToClipboard(0, 0x2000));
    QVERIFY(!store.nodeExists(ObjectDataBase::ClipboardLine));
}

void TestStoreCopy::aCopyOntoItselfLosesNothing_data()
{
    QTest::addColumn<Operation>("copy");
    using Store = ObjectDataBase;
    const auto row = [](const char *name, const Operation &copy) { QTest::newRow(name) << copy; };
    row("copyIndexFrom", [](Store &s) { s.copyIndexFrom(s, 0, 0x2000, 0, 0x2000, true); });
    row("mergeIndexFrom", [](Store &s) { s.mergeIndexFrom(s, 0, 0x2000, 0, 0x2000); });
    row("copyLine", [](Store &s) { s.copyLine(s, 0, 0, 0, 0xFFFF); });
    row("copyPGNs", [](Store &s) { s.copyPGNs(s, 0, 0, 0, 0x1FFFF, 85); });
    row("copyCANIDs", [](Store &s) { s.copyCANIDs(s, 0, 0, 0, 0x1FFFFFFF, 85); });
    row("replaceSettingsFrom", [](Store &s) { s.replaceSettingsFrom(s); });
    row("pasteFromClipboard", [](Store &s) { s.pasteFromClipboard(254, 0xF000); });
}

void TestStoreCopy::aCopyOntoItselfLosesNothing()
{
    QFETCH(Operation, copy);
    NewStore store;
    QVERIFY(addFullObject(store, 0, 0x2000));
    QVERIFY(store.copyToClipboard(0, 0x2000));
    QVERIFY(store.addPGN(0, 61444, samplePgn(85)));
    QVERIFY(store.addSPN(0, 61444, 85, 190, sampleSpn(1)));
    QVERIFY(store.addCANID(0, 0x123, sampleCanId(85)));
    QVERIFY(store.addDataElement(0, 0x123, 85, 7, sampleElement(1)));
    QVERIFY(store.setGeneralSetting(QStringLiteral("k"), QStringLiteral("v")));
    copy(store);
    compareFullObject(store, 0, 0x2000);
    compareFullObject(store, 254, 0xF000);
    QCOMPARE(store.getPGNList(0, 85), QList<quint32>{61444});
    QCOMPARE(store.getSPNList(0, 61444, 85), QList<quint32>{190});
    QCOMPARE(store.getCANIDList(0, 85), QList<quint32>{0x123});
    QCOMPARE(store.getDataElementList(0, 0x123, 85), QList<quint32>{7});
    QCOMPARE(store.getGeneralSetting(QStringLiteral("k")), QStringLiteral("v"));
    QCOMPARE(store.getUDSActiveServices(0).size(), 17);
    QCOMPARE(store.getDescriptionSetting(QStringLiteral("OrderCode")), QStringLiteral("0815-BUY-ME"));
}

QTEST_GUILESS_MAIN(TestStoreCopy)
#include "tst_storecopy.moc"
