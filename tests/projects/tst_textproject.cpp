#include "projects/ProjectTexts.h"

#include <QSignalSpy>

using namespace ProjectTexts;

class tst_TextProject : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void theEndOfThePathChoosesTheForm();
    void anEmptyPathMeansTheOpenedText();
    void aTextIsSavedWithoutBackupAndWithoutLeftovers();
    void indicesAndSubIndicesAreLowerCaseHexadecimalGroups();
    void poolTextsAndMetadataAreWrittenInClear();
    void internalColumnsOfSubIndicesAreReset();
    void aNodeNameIsPlainText();
    void lineTypesChooseTheTables_data();
    void lineTypesChooseTheTables();
    void nullsBecomeZeroAndEmptyText();
    void savingTwiceGivesTheSameFile();
    void aWholeProjectGoesThereAndBackWithoutAWarning();
    void tablesOfOthersAreWrittenAndLeftOutOnReading();
    void loadingAnnouncesTheProjectOnce();
    void savingIsNoEditOfTheProject();
    void aLockedStoreNeitherSavesNorLoads();
    void reservedLinesStayOutOfTheText();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_TextProject::initTestCase()
{
    StoreTest::prepareApplication();
}

void tst_TextProject::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void tst_TextProject::theEndOfThePathChoosesTheForm()
{
    Store store;
    setLineType(store, 0, 1);
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vexp"))));
    QVERIFY(read(path(QStringLiteral("a.vext"))).startsWith("[DescriptionSettings]\n"));
    QVERIFY(read(path(QStringLiteral("a.vexp"))).startsWith("SQLite format 3"));
    ObjectDataBase reopened;
    QVERIFY(reopened.openDataBase(path(QStringLiteral("a.vext"))));
    QCOMPARE(reopened.projectPath(), path(QStringLiteral("a.vext")));
    QCOMPARE(reopened.getMiscSetting(QStringLiteral("SaveToolType")), QStringLiteral("CANopen NodeSmith"));
    QCOMPARE(reopened.getMiscSetting(QStringLiteral("DatabaseVersion")), QStringLiteral("107"));
    QVERIFY(reopened.openDataBase(path(QStringLiteral("a.vexp"))));
}

void tst_TextProject::anEmptyPathMeansTheOpenedText()
{
    Store store;
    setLineType(store, 0, 1);
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase reopened;
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    reopened.setGeneralSetting(QStringLiteral("co_node_id"), QStringLiteral("42"));
    QVERIFY(reopened.saveProject(QString()));
    QCOMPARE(
        Text(path(QStringLiteral("a.vext"))).value(QStringLiteral("GeneralSettings/co_node_id")).toString(),
        QStringLiteral("42"));
}

void tst_TextProject::aTextIsSavedWithoutBackupAndWithoutLeftovers()
{
    Store store;
    setLineType(store, 0, 1);
    store.setGeneralSetting(QStringLiteral("gone"), QStringLiteral("1"));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    QVERIFY(store.executeSql(QStringLiteral("delete from GeneralSettings where item = 'gone'")));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    QVERIFY(!Text(path(QStringLiteral("a.vext"))).contains(QStringLiteral("GeneralSettings/gone")));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden),
             QStringList{QStringLiteral("a.vext")});
    QVERIFY(!store.saveProject(path(QStringLiteral("missing/a.vext"))));
    QVERIFY(!store.lastError().isEmpty());
    QVERIFY(!store.saveProject(m_folder->path() + QStringLiteral("/.vext/")));
}

void tst_TextProject::indicesAndSubIndicesAreLowerCaseHexadecimalGroups()
{
    Store store;
    setLineType(store, 0, 1);
    store.addIndex(0, 0x1000, StoreTest::sampleIndex());
    store.addIndex(0, 0x5, StoreTest::sampleIndex());
    store.addIndex(0, 0xABCD, StoreTest::sampleIndex());
    store.addSubIndex(0, 0x1000, 10, StoreTest::sampleSub());
    store.addSubIndex(0, 0x1000, 255, StoreTest::sampleSub());
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    Text text(path(QStringLiteral("a.vext")));
    QCOMPARE(text.childGroups(QStringLiteral("Objects0")),
             (QStringList{QStringLiteral("0x1000"), QStringLiteral("0x5"), QStringLiteral("0xabcd")}));
    QCOMPARE(text.childGroups(QStringLiteral("SubObjects0/0x1000")),
             (QStringList{QStringLiteral("0xa"), QStringLiteral("0xff")}));
}

void tst_TextProject::poolTextsAndMetadataAreWrittenInClear()
{
    Store store;
    setLineType(store, 0, 1);
    auto object = StoreTest::sampleIndex(QStringLiteral("The name"));
    object.metadata = {{QStringLiteral("k"), QStringLiteral("v")}};
    store.addIndex(0, 0x2000, object);
    auto sub = StoreTest::sampleSub(QStringLiteral("Sub name"));
    store.addSubIndex(0, 0x2000, 0, sub);
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    Text text(path(QStringLiteral("a.vext")));
    const QString base = QStringLiteral("Objects0/0x2000/");
    QCOMPARE(text.value(base + QStringLiteral("name")).toString(), object.name);
    QCOMPARE(text.value(base + QStringLiteral("description")).toString(), object.description);
    QCOMPARE(text.value(base + QStringLiteral("objecttype")).toString(), QStringLiteral("9"));
    QCOMPARE(text.value(base + QStringLiteral("device_class")).toInt(), store.addString(object.device_class));
    QCOMPARE(text.value(base + QStringLiteral("metadata")).toMap(),
             (QVariantMap{{QStringLiteral("k"), QStringLiteral("v")}}));
    QVERIFY(!text.contains(base + QStringLiteral("objectindex")));
    const QString subBase = QStringLiteral("SubObjects0/0x2000/0x0/");
    QCOMPARE(text.value(subBase + QStringLiteral("name")).toString(), sub.name);
    QCOMPARE(text.value(subBase + QStringLiteral("uplimit")).toString(), sub.uplimit);
    QCOMPARE(text.value(subBase + QStringLiteral("metadata")).toMap(), QVariantMap());
    QCOMPARE(text.childKeys(subBase.chopped(1)).size(), 23);
}

void tst_TextProject::internalColumnsOfSubIndicesAreReset()
{
    Store store;
    setLineType(store, 0, 1);
    auto sub = StoreTest::sampleSub();
    sub.cyclicread = sub.changedbyuser = sub.dcfcomponent = true;
    sub.wizardsource = 454;
    sub.signalid = 7;
    store.addIndex(0, 0x2000, StoreTest::sampleIndex());
    store.addSubIndex(0, 0x2000, 1, sub);
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    const QStringList keys =
        Text(path(QStringLiteral("a.vext"))).childKeys(QStringLiteral("SubObjects0/0x2000/0x1"));
    for (const char *column : {"objectindex", "subindex", "cyclicread", "changedbyuser", "dcfcomponent",
                               "wizardsource", "signalid", "denotation"})
        QVERIFY2(!keys.contains(QLatin1StringView(column)), column);
    ObjectDataBase reopened;
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase::SUBINDEX_DATA_T back;
    QVERIFY(reopened.getSubIndex(0, 0x2000, 1, back));
    sub.cyclicread = sub.changedbyuser = sub.dcfcomponent = false;
    sub.wizardsource = 0;
    sub.signalid = 0;
    sub.denotation.clear();
    QVERIFY(back == sub);
}

void tst_TextProject::aNodeNameIsPlainText()
{
    Store store;
    setLineType(store, 0, 1);
    for (int text = 0; text < 9; ++text)
        store.addString(QStringLiteral("pool %1").arg(text));
    ObjectDataBase::NODE_DATA_T node;
    node.name = QStringLiteral("3");
    store.addNode(0, node);
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    QCOMPARE(Text(path(QStringLiteral("a.vext"))).value(QStringLiteral("Nodes/0/name")).toString(),
             QStringLiteral("3"));
    ObjectDataBase reopened;
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    QVERIFY(reopened.getNode(0, node));
    QCOMPARE(node.name, QStringLiteral("3"));
}

void tst_TextProject::lineTypesChooseTheTables_data()
{
    QTest::addColumn<QList<int>>("types");
    QTest::addColumn<QString>("groups");
    QTest::newRow("CANopen") << QList<int>{1} << QStringLiteral("Nodes Objects0 SubObjects0");
    QTest::newRow("J1939") << QList<int>{2} << QStringLiteral("J1939Settings PGNs0 SPNs0");
    QTest::newRow("raw CAN") << QList<int>{4} << QString();
    QTest::newRow("both") << QList<int>{5}
                          << QStringLiteral("J1939Settings Nodes Objects0 PGNs0 SPNs0 SubObjects0");
    QTest::newRow("CANopen and raw CAN") << QList<int>{6} << QString();
    QTest::newRow("J1939 and raw CAN") << QList<int>{7} << QString();
    QTest::newRow("not set") << QList<int>{-1} << QString();
    QTest::newRow("CANopen beside J1939")
        << QList<int>{1, 2} << QStringLiteral("J1939Settings Nodes Objects0 PGNs1 SPNs1 SubObjects0");
    QTest::newRow("CANopen beside 6")
        << QList<int>{6, 1} << QStringLiteral("Nodes Objects0 Objects1 SubObjects0 SubObjects1");
    QTest::newRow("J1939 beside 7") << QList<int>{7, 2}
                                    << QStringLiteral("J1939Settings PGNs0 PGNs1 SPNs0 SPNs1");
}

void tst_TextProject::lineTypesChooseTheTables()
{
    QFETCH(QList<int>, types);
    QFETCH(QString, groups);
    Store store;
    QStringList expected = groups.split(u' ', Qt::SkipEmptyParts)
        + QStringList{QStringLiteral("DescriptionSettings"), QStringLiteral("GeneralSettings"),
                      QStringLiteral("MiscSettings")};
    store.setGeneralSetting(QStringLiteral("any"), QStringLiteral("1"));
    for (int line = 0; line < types.size(); ++line) {
        store.addNode(quint8(line), ObjectDataBase::NODE_DATA_T());
        fillCanopen(store, quint8(line));
        fillJ1939(store, quint8(line));
        store.addCANID(quint8(line), 5, StoreTest::sampleCanId(ObjectDataBase::Transmit));
        store.addDataElement(quint8(line), 5, ObjectDataBase::Transmit, 0, StoreTest::sampleElement(0));
        if (types.at(line) >= 0)
            setLineType(store, quint8(line), types.at(line));
        expected.append(QStringLiteral("UDSSettings%1").arg(line));
    }
    store.setEnergyBusSetting(QStringLiteral("device_cnt"), QStringLiteral("1"));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    expected.sort();
    QCOMPARE(Text(path(QStringLiteral("a.vext"))).groups(), expected);
}

void tst_TextProject::nullsBecomeZeroAndEmptyText()
{
    Store store;
    setLineType(store, 0, 1);
    store.addIndex(0, 0x2000, StoreTest::sampleIndex());
    store.addSubIndex(0, 0x2000, 1, StoreTest::sampleSub());
    QVERIFY(store.executeSql(QStringLiteral("update SubObjects0 set currentvalue = NULL, size = NULL")));
    QVERIFY(store.executeSql(QStringLiteral("insert into Connections (prodnode) values (1)")));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    const Text text(path(QStringLiteral("a.vext")));
    QCOMPARE(text.value(QStringLiteral("SubObjects0/0x2000/0x1/currentvalue")), QVariant(QString()));
    QCOMPARE(text.value(QStringLiteral("SubObjects0/0x2000/0x1/size")).toString(), QStringLiteral("0"));
    const StoreTest::Snapshot working(store);
    QCOMPARE(working->value(QStringLiteral("select typeof(currentvalue) || typeof(size) from SubObjects0"))
                 .toString(),
             QStringLiteral("textinteger"));
    QCOMPARE(working->value(QStringLiteral("select conindex from Connections")), QVariant(0));
    ObjectDataBase reopened;
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    const StoreTest::Snapshot back(reopened);
    QCOMPARE(back->value(QStringLiteral("select typeof(currentvalue) from SubObjects0")).toString(),
             QStringLiteral("text"));
}

void tst_TextProject::savingTwiceGivesTheSameFile()
{
    Store store;
    fillMixedProject(store);
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    QVERIFY(store.saveProject(path(QStringLiteral("b.vext"))));
    QCOMPARE(read(path(QStringLiteral("a.vext"))), read(path(QStringLiteral("b.vext"))));
}

void tst_TextProject::aWholeProjectGoesThereAndBackWithoutAWarning()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    Store store;
    fillMixedProject(store);
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase reopened;
    QVERIFY(reopened.openDataBase(path(QStringLiteral("a.vext"))));
}

void tst_TextProject::tablesOfOthersAreWrittenAndLeftOutOnReading()
{
    Store store;
    setLineType(store, 0, 1);
    QVERIFY(store.executeSql(QStringLiteral("create table \"my \"\"table\" (a integer, b text)")));
    QVERIFY(store.executeSql(QStringLiteral("insert into \"my \"\"table\" values (1, NULL), (NULL, 'x')")));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    const Text text(path(QStringLiteral("a.vext")));
    QCOMPARE(text.value(QStringLiteral("my \"table/0/a")).toString(), QStringLiteral("1"));
    QCOMPARE(text.value(QStringLiteral("my \"table/0/b")), QVariant(QString()));
    QCOMPARE(text.value(QStringLiteral("my \"table/1/a")).toString(), QStringLiteral("0"));
    ObjectDataBase reopened;
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral("unhandled group my \"table")));
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    QVERIFY(!reopened.isExternallyModified());
}

void tst_TextProject::loadingAnnouncesTheProjectOnce()
{
    Store store;
    fillMixedProject(store);
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase reopened;
    reopened.setTrackWrites(true);
    QSignalSpy writes(&reopened, &ObjectDataBase::databaseWriteExecuted);
    const StoreTest::RecordedChanges changes(reopened);
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    QCOMPARE(changes.all(), QList<ChangeSet>{ChangeSet{.type = ObjectDataBase::ProjectChanged}});
    QCOMPARE(writes.size(), 0);
    QVERIFY(reopened.setGeneralSetting(QStringLiteral("co_node_id"), QStringLiteral("9")));
    QCOMPARE(writes.size(), 1);
}

void tst_TextProject::savingIsNoEditOfTheProject()
{
    Store store;
    fillMixedProject(store);
    const StoreTest::RecordedChanges changes(store);
    QVERIFY(store.executeSql(QStringLiteral("update SubObjects0 set currentvalue = NULL")));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    QCOMPARE(changes.all().size(), changes.ofType(ObjectDataBase::MiscSettingChanged).size());
    QVERIFY(store.saveProject(QString()));
    QCOMPARE(store.projectPath(), path(QStringLiteral("a.vext")));
}

void tst_TextProject::aLockedStoreNeitherSavesNorLoads()
{
    Store store;
    setLineType(store, 0, 1);
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    store.setGeneralSetting(QStringLiteral("co_node_id"), QStringLiteral("7"));
    store.setWriteLock(true);
    QVERIFY(!store.saveProject(path(QStringLiteral("b.vext"))));
    QVERIFY(!store.loadTextProject(path(QStringLiteral("a.vext"))));
    QVERIFY(!store.lastError().isEmpty());
    store.setWriteLock(false);
    QVERIFY(!QFile::exists(path(QStringLiteral("b.vext"))));
    QCOMPARE(store.getGeneralSetting(QStringLiteral("co_node_id")), QStringLiteral("7"));
}

void tst_TextProject::reservedLinesStayOutOfTheText()
{
    Store store;
    setLineType(store, 0, 1);
    store.addIndex(0, 0x2000, StoreTest::sampleIndex());
    QVERIFY(store.copyToClipboard(0, 0x2000));
    QVERIFY(store.addNode(ObjectDataBase::ReferenceLine, ObjectDataBase::NODE_DATA_T()));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    Text text(path(QStringLiteral("a.vext")));
    QCOMPARE(text.childGroups(QStringLiteral("Nodes")), QStringList{QStringLiteral("0")});
    QVERIFY(!text.groups().contains(QStringLiteral("Objects254")));
    QVERIFY(!text.groups().contains(QStringLiteral("UDSSettings255")));
}

QTEST_GUILESS_MAIN(tst_TextProject)
#include "tst_textproject.moc"
