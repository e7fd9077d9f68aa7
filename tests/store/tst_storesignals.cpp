#include "StoreTest.h"

#include <functional>

using namespace StoreTest;

using Operation = std::function<bool(ObjectDataBase &)>;
Q_DECLARE_METATYPE(Operation)

/** Which notification each operation sends, with which fields. */
class TestStoreSignals : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void anOperationSendsItsNotice_data();
    void anOperationSendsItsNotice();
    void anOperationWithoutTypeSendsNothing_data();
    void anOperationWithoutTypeSendsNothing();
    void aFailedAddIndexIsAnnouncedAllTheSame();
    void pasteAnnouncesEverySubIndex();
    void aNewProjectIsAnnouncedAsOne();
    void anOpenedProjectIsAnnouncedLast();
    void aFreshNoticeIsAllZero();

private:
    static void prepare(ObjectDataBase &store);
};

void TestStoreSignals::prepare(ObjectDataBase &store)
{
    QVERIFY(store.addNode(1, {}));
    QVERIFY(store.addIndex(1, 0x2000, sampleIndex()));
    QVERIFY(store.addSubIndex(1, 0x2000, 3, sampleSub()));
    QVERIFY(store.addPGN(1, 61444, samplePgn(85)));
    QVERIFY(store.addSPN(1, 61444, 85, 190, sampleSpn(0)));
    QVERIFY(store.addCANID(1, 0x123, sampleCanId(119)));
    QVERIFY(store.addDataElement(1, 0x123, 119, 7, sampleElement(0)));
    store.setDescriptionLine(1);
}

void TestStoreSignals::anOperationSendsItsNotice_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<ChangeSet>("expected");
    using Store = ObjectDataBase;
    const auto row = [](const char *name, const ChangeSet &expected, const Operation &operation) {
        QTest::newRow(name) << operation << expected;
    };
    row("1 addIndex", {.type = 1, .index = 0x2001, .line = 1},
        [](Store &s) { return s.addIndex(1, 0x2001, sampleIndex()); });
    row("1 addIndex, an update", {.type = 1, .index = 0x2000, .line = 1},
        [](Store &s) { return s.addIndex(1, 0x2000, sampleIndex(QStringLiteral("n"))); });
    row("2 addSubIndex", {.type = 2, .index = 0x2000, .subindex = 4, .line = 1},
        [](Store &s) { return s.addSubIndex(1, 0x2000, 4, sampleSub()); });
    row("3 removeIndex", {.type = 3, .index = 0x2000, .line = 1},
        [](Store &s) { return s.removeIndex(1, 0x2000); });
    row("4 removeSubIndex", {.type = 4, .index = 0x2000, .subindex = 3, .line = 1},
        [](Store &s) { return s.removeSubIndex(1, 0x2000, 3); });
    row("6 addNode", {.type = 6, .line = 9}, [](Store &s) { return s.addNode(9, {}); });
    row("7 removeLine", {.type = 7, .line = 1}, [](Store &s) { return s.removeLine(1); });
    row("9 setGeneralSetting", {.type = 9},
        [](Store &s) { return s.setGeneralSetting(QStringLiteral("k"), QStringLiteral("v")); });
    row("9 setGeneralSettingForLine", {.type = 9}, [](Store &s) {
        return s.setGeneralSettingForLine(QStringLiteral("co_node_id"), QStringLiteral("v"), 1);
    });
    row("10 setDescriptionSetting", {.type = 10, .line = 1},
        [](Store &s) { return s.setDescriptionSetting(QStringLiteral("k"), QStringLiteral("v")); });
    row("11 setEnergyBusSetting", {.type = 11},
        [](Store &s) { return s.setEnergyBusSetting(QStringLiteral("k"), QStringLiteral("v")); });
    row("12 setMiscSetting", {.type = 12},
        [](Store &s) { return s.setMiscSetting(QStringLiteral("k"), QStringLiteral("v")); });
    row("13 setJ1939Setting", {.type = 13, .line = 1},
        [](Store &s) { return s.setJ1939Setting(QStringLiteral("k"), QStringLiteral("v")); });
    row("15 addPGN", {.type = 15, .line = 1, .pgn = 61443},
        [](Store &s) { return s.addPGN(1, 61443, samplePgn(85)); });
    row("15 addPGN, an update", {.type = 15, .line = 1, .pgn = 61444},
        [](Store &s) { return s.addPGN(1, 61444, samplePgn(85)); });
    row("16 removePGN", {.type = 16, .line = 1, .pgn = 61444, .direction = 85},
        [](Store &s) { return s.removePGN(1, 61444, 85); });
    row("17 addCANID", {.type = 17, .line = 1, .canid = 0x124},
        [](Store &s) { return s.addCANID(1, 0x124, sampleCanId(85)); });
    row("18 removeCANID", {.type = 18, .line = 1, .canid = 0x123, .direction = 119},
        [](Store &s) { return s.removeCANID(1, 0x123, 119); });
    row("19 addSPN", {.type = 19, .line = 1, .pgn = 61444, .spn = 191},
        [](Store &s) { return s.addSPN(1, 61444, 85, 191, sampleSpn(1)); });
    row("20 removeSPN", {.type = 20, .line = 1, .pgn = 61444, .spn = 190, .direction = 85},
        [](Store &s) { return s.removeSPN(1, 61444, 85, 190); });
    row("20 removeDataElement", {.type = 20, .line = 1, .canid = 0x123, .element = 7, .direction = 119},
        [](Store &s) { return s.removeDataElement(1, 0x123, 119, 7); });
    row("21 addDataElement", {.type = 21, .line = 1, .canid = 0x123, .element = 8},
        [](Store &s) { return s.addDataElement(1, 0x123, 119, 8, sampleElement(1)); });
}

void TestStoreSignals::anOperationSendsItsNotice()
{
    QFETCH(Operation, operation);
    QFETCH(ChangeSet, expected);
    NewStore store;
    prepare(store);
    RecordedChanges changes(store);
    QVERIFY(operation(store));
    QCOMPARE(changes.ofType(expected.type), QList<ChangeSet>{expected});
    QCOMPARE(changes.all().constLast(), expected);
}

void TestStoreSignals::anOperationWithoutTypeSendsNothing_data()
{
    QTest::addColumn<Operation>("operation");
    using Store = ObjectDataBase;
    const auto row = [](const char *name, const Operation &operation) { QTest::newRow(name) << operation; };
    row("addSubIndices", [](Store &s) {
        return s.addSubIndices({{.line = 1, .index = 0x2000, .subindex = 9, .data = sampleSub()}});
    });
    row("setObjectIndexSqlValue", [](Store &s) {
        s.setObjectIndexSqlValue(QStringLiteral("Objects1"), 0x2000, QStringLiteral("name"),
                                 QStringLiteral("n"));
        return true;
    });
    row("setSubindexSqlValue", [](Store &s) {
        s.setSubindexSqlValue(QStringLiteral("SubObjects1"), 0x2000, 3, QStringLiteral("name"),
                              QStringLiteral("n"));
        return true;
    });
    row("executeSql", [](Store &s) { return s.executeSql(QStringLiteral("delete from Objects1")); });
    row("addString", [](Store &s) { return s.addString(QStringLiteral("new text")) > 0; });
    row("reads and caches", [](Store &s) {
        s.cacheAllSubs(1);
        s.cacheSubNames(1);
        s.cacheAllSpns(1);
        ObjectDataBase::SUBINDEX_DATA_T sub;
        return s.getSubIndex(1, 0x2000, 3, sub) && s.getLines().size() == 2;
    });
}

void TestStoreSignals::anOperationWithoutTypeSendsNothing()
{
    QFETCH(Operation, operation);
    NewStore store;
    prepare(store);
    RecordedChanges changes(store);
    QVERIFY(operation(store));
    QCOMPARE(changes.all(), QList<ChangeSet>{});
}

void TestStoreSignals::aFailedAddIndexIsAnnouncedAllTheSame()
{
    NewStore store;
    RecordedChanges changes(store);
    QVERIFY(!store.addIndex(17, 0x2000, sampleIndex())); // there is no line 17
    QCOMPARE(changes.all(),
             QList<ChangeSet>({{.type = ObjectDataBase::IndexChanged, .index = 0x2000, .line = 17}}));
}

void TestStoreSignals::pasteAnnouncesEverySubIndex()
{
    NewStore store;
    prepare(store);
    QVERIFY(store.addSubIndex(1, 0x2000, 0, sampleSub()));
    QVERIFY(store.copyToClipboard(1, 0x2000));
    RecordedChanges changes(store);
    QVERIFY(store.pasteFromClipboard(0, 0x3000));
    QList<ChangeSet> expected;
    for (const quint8 sub : {0, 3})
        expected.append(
            {.type = ObjectDataBase::SubIndexChanged, .index = 0x3000, .subindex = sub, .line = 0});
    QCOMPARE(changes.ofType(ObjectDataBase::SubIndexChanged), expected);
}

void TestStoreSignals::aNewProjectIsAnnouncedAsOne()
{
    ObjectDataBase store;
    RecordedChanges changes(store);
    QVERIFY(store.createNewDataBase());
    QCOMPARE(changes.ofType(ObjectDataBase::ProjectChanged),
             QList<ChangeSet>({{.type = ObjectDataBase::ProjectChanged}}));
}

void TestStoreSignals::anOpenedProjectIsAnnouncedLast()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("p.vexp"));
    NewStore store;
    QVERIFY(store.saveProject(path));
    RecordedChanges changes(store);
    QVERIFY(store.openDataBase(path));
    QCOMPARE(changes.ofType(ObjectDataBase::ProjectChanged),
             QList<ChangeSet>({{.type = ObjectDataBase::ProjectChanged}}));
    QCOMPARE(changes.all().constLast().type, int(ObjectDataBase::ProjectChanged));
}

void TestStoreSignals::aFreshNoticeIsAllZero()
{
    const ChangeSet expected{0, 0, 0, 0, 0, 0, 0, 0, 0};
    QCOMPARE(ChangeSet(), expected);
}

QTEST_GUILESS_MAIN(TestStoreSignals)
#include "tst_storesignals.moc"
