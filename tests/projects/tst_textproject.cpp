#include "projects/ProjectTexts.h"
#include "store/Schema.h"

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
    void rawCanBesideCanopenLosesOnlyItsOwnTables();
    void aJ1939LineComesBackWithoutANodeGroup();
    void furtherJ1939LinesComeBackWithTheirTables();
    void nullsBecomeZeroAndEmptyText();
    void savingTwiceGivesTheSameFile();
    void thereAndBackTwiceGivesTheSameText();
    void anOldFileGoesThereAndBack();
    void objectsComeBack();
    void protocolTablesComeBack();
    void nodesComeBackWithAllTheirFlags();
    void settingsOfAllLinesComeBack();
    void removedServicesStayRemoved();
    void lostDescriptionsDoNotBecomeOtherTexts();
    void aNumberInBothDirectionsIsToldOf();
    void textsComeBack_data();
    void textsComeBack();
    void keysComeBack_data();
    void keysComeBack();
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
    const QString both = QStringLiteral("J1939Settings Nodes Objects%1 SubObjects%1 PGNs%2 SPNs%2");
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

void tst_TextProject::rawCanBesideCanopenLosesOnlyItsOwnTables()
{
    Store store;
    store.addNode(1, ObjectDataBase::NODE_DATA_T());
    setLineType(store, 0, 6);
    setLineType(store, 1, 1);
    fillCanopen(store, 0);
    fillCanopen(store, 1);
    store.addCANID(0, 5, StoreTest::sampleCanId(ObjectDataBase::Transmit));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase reopened;
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    QCOMPARE(reopened.getIndexList(0).size(), 16);
    QCOMPARE(reopened.getIndexList(1).size(), 16);
    QVERIFY(reopened.getCANIDList(0, ObjectDataBase::BothDirections).isEmpty());
    QVERIFY(reopened.addCANID(0, 6, StoreTest::sampleCanId(ObjectDataBase::Receive)));
}

void tst_TextProject::aJ1939LineComesBackWithoutANodeGroup()
{
    Store store;
    setLineType(store, 0, 2);
    fillJ1939(store, 0);
    store.addIndex(0, 0x1000, StoreTest::sampleIndex());
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase reopened;
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    QCOMPARE(reopened.getLines(), QList<quint8>{0});
    QCOMPARE(reopened.getPGNList(0, ObjectDataBase::BothDirections).size(), 5);
    QVERIFY(reopened.getIndexList(0).isEmpty());
}

void tst_TextProject::furtherJ1939LinesComeBackWithTheirTables()
{
    Store store;
    store.addNode(1, ObjectDataBase::NODE_DATA_T());
    store.addNode(2, ObjectDataBase::NODE_DATA_T());
    for (const quint8 line : {0, 1, 2}) {
        setLineType(store, line, 2);
        fillJ1939(store, line);
    }
    store.setGeneralSetting(QStringLiteral("receivebuffersize"), QStringLiteral("5"));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase reopened;
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    QCOMPARE(reopened.getLines(), (QList<quint8>{0, 1, 2}));
    QCOMPARE(reopened.getPGNList(2, ObjectDataBase::BothDirections).size(), 5);
    QCOMPARE(reopened.getGeneralSetting(QStringLiteral("receivebuffersize")), QStringLiteral("5"));
    QVERIFY(reopened.saveProject(path(QStringLiteral("b.vext"))));
    QCOMPARE(read(path(QStringLiteral("b.vext"))), read(path(QStringLiteral("a.vext"))));
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

void tst_TextProject::thereAndBackTwiceGivesTheSameText()
{
    const QString project = path(QStringLiteral("a.vexp"));
    const QString text = path(QStringLiteral("a.vext"));
    {
        Store store;
        fillMixedProject(store);
        QVERIFY(store.saveProject(project));
    }
    ObjectDataBase first;
    QVERIFY(first.openDataBase(project));
    QVERIFY(first.saveProject(text));
    ObjectDataBase second;
    QVERIFY(second.openDataBase(text));
    QVERIFY(second.saveProject(path(QStringLiteral("b.vexp"))));
    ObjectDataBase third;
    QVERIFY(third.openDataBase(path(QStringLiteral("b.vexp"))));
    QVERIFY(!third.isExternallyModified());
    QVERIFY(third.saveProject(path(QStringLiteral("b.vext"))));
    QCOMPARE(read(path(QStringLiteral("b.vext"))), read(text));
}

// A file of version 99 with two lines, as the first programs wrote it; other columns came later.
void tst_TextProject::anOldFileGoesThereAndBack()
{
    const QString project = path(QStringLiteral("old.vexp"));
    {
        const StoreTest::DatabaseFile file(project);
        const QString statements = QStringLiteral(
            "create table Strings (id integer primary key, string text);"
            "insert into Strings values (1,''),(2,'EEC1'),(3,'Speed'),(4,'Device'),(5,'what it does');"
            "create table Nodes (nodeId integer primary key, name text, edspath text, xddpath text);"
            "insert into Nodes values (0,'CAN','',NULL),(1,NULL,'','');"
            "create table GeneralSettings (item text unique, value text);"
            "insert into GeneralSettings values ('line0type','1'),('line1type','2'),('co_node_id','5');"
            "create table MiscSettings (item text unique, value text);"
            "insert into MiscSettings values ('DatabaseVersion','99'),('SaveToolVersion','3.6.0');"
            "create table Objects0 (objectindex integer primary key, name integer, datatype integer not "
            "null, "
            "objecttype integer not null, description integer, category integer);"
            "insert into Objects0 values (4096,4,7,7,5,0);"
            "create table SubObjects0 (objectindex integer not null, subindex integer not null, name "
            "integer, "
            "datatype integer not null, accesstype text not null, defaultvalue text, currentvalue text, "
            "pdomapping integer, lowlimit integer, uplimit integer, size integer, defaultineds integer, "
            "limitineds integer, refuseread integer, refusewrite integer, allowedaccesstypes text, "
            "implementation integer not null, varname text, description integer, category integer);"
            "insert into SubObjects0 values (4096,0,4,7,'ro','0x191',NULL,0,NULL,255,4,1,0,0,0,'ro',1,' "
            "',1,0);"
            "create table Objects1 (objectindex integer primary key, name integer, datatype integer not "
            "null, "
            "objecttype integer not null, description integer, category integer);"
            "create table SubObjects1 as select * from SubObjects0 where 0;"
            "create table PGNs1 (number integer not null, edp_dp_key integer, priority integer, "
            "cycletime_ms integer, inhibittime_ms integer, mappingcount integer, direction integer, "
            "name integer, desc integer);"
            "insert into PGNs1 values (61444,0,3,20,0,1,119,2,5);"
            "create table SPNs1 (pgnnumber integer not null, spnnumber integer not null, datatype integer, "
            "implementation integer, varname text, defaultvalue text, name integer, desc integer);"
            "insert into SPNs1 values (61444,190,6,0,'speed','',3,5)");
        for (const QString &statement : statements.split(u';'))
            QVERIFY2(file.execute(statement), qPrintable(statement));
    }
    ObjectDataBase first;
    QVERIFY2(first.openDataBase(project), qPrintable(first.lastError()));
    QVERIFY(first.saveProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase second;
    QVERIFY2(second.openDataBase(path(QStringLiteral("a.vext"))), qPrintable(second.lastError()));
    QVERIFY(!second.isExternallyModified());
    QCOMPARE(second.getIndexName(0, 0x1000), QStringLiteral("Device"));
    ObjectDataBase::SUBINDEX_DATA_T sub;
    QVERIFY(second.getSubIndex(0, 0x1000, 0, sub));
    QCOMPARE(sub.uplimit, QStringLiteral("255"));
    QCOMPARE(sub.lowlimit, QString());
    QCOMPARE(second.getSPNName(1, 61444, ObjectDataBase::Receive, 190), QStringLiteral("Speed"));
    QVERIFY(second.saveProject(path(QStringLiteral("b.vexp"))));
    ObjectDataBase third;
    QVERIFY(third.openDataBase(path(QStringLiteral("b.vexp"))));
    QVERIFY(third.saveProject(path(QStringLiteral("b.vext"))));
    QCOMPARE(read(path(QStringLiteral("b.vext"))), read(path(QStringLiteral("a.vext"))));
}

void tst_TextProject::objectsComeBack()
{
    Store store;
    fillMixedProject(store);
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase reopened;
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    for (const quint8 line : {0, 2}) {
        QCOMPARE(reopened.getIndexList(line), store.getIndexList(line));
        ObjectDataBase::INDEX_DATA_T before;
        ObjectDataBase::INDEX_DATA_T after;
        QVERIFY(store.getIndex(line, 0x2003, before) && reopened.getIndex(line, 0x2003, after));
        before.device_class.clear();
        QVERIFY(before == after);
        for (const quint8 sub : store.getSubIndexList(line, 0x2003)) {
            ObjectDataBase::SUBINDEX_DATA_T expected;
            ObjectDataBase::SUBINDEX_DATA_T actual;
            QVERIFY(store.getSubIndex(line, 0x2003, sub, expected));
            QVERIFY(reopened.getSubIndex(line, 0x2003, sub, actual));
            expected.denotation.clear();
            QVERIFY(expected == actual);
        }
    }
}

void tst_TextProject::protocolTablesComeBack()
{
    Store store;
    fillMixedProject(store);
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    Text text(path(QStringLiteral("a.vext")));
    QCOMPARE(text.childGroups(QStringLiteral("PGNs1")).first(), QStringLiteral("61440"));
    QCOMPARE(text.value(QStringLiteral("PGNs1/61440/name")).toString(), QStringLiteral("PGN 61440"));
    QCOMPARE(text.value(QStringLiteral("SPNs1/61440/2/name")).toString(), QStringLiteral("SPN 2"));
    QCOMPARE(text.value(QStringLiteral("PGNs1/61440/desc")).toInt(),
             store.addString(QStringLiteral("engine controller")));
    ObjectDataBase reopened;
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    for (const quint8 direction : {ObjectDataBase::Receive, ObjectDataBase::Transmit}) {
        QCOMPARE(reopened.getPGNList(1, direction), store.getPGNList(1, direction));
        for (const quint32 number : store.getPGNList(1, direction)) {
            ObjectDataBase::PGN expected;
            ObjectDataBase::PGN actual;
            QVERIFY(store.getPGN(1, number, direction, expected));
            QVERIFY(reopened.getPGN(1, number, direction, actual));
            expected.desc.clear();
            QVERIFY(expected == actual);
            QCOMPARE(reopened.getSPNList(1, number, direction), store.getSPNList(1, number, direction));
        }
    }
    QVERIFY(!reopened.isUDSServiceActive(0, UDS::SID(16)));
    QVERIFY(reopened.isUDSServiceActive(0, UDS::SID(17)));
    QCOMPARE(reopened.getUDSServiceUserLevels(1, UDS::SID(17)), QStringLiteral("3,4"));
    QCOMPARE(reopened.getUDSServiceSessions(1, UDS::SID(17)), QStringLiteral("1,2,3,4"));
}

void tst_TextProject::nodesComeBackWithAllTheirFlags()
{
    Store store;
    setLineType(store, 0, 1);
    for (const auto &column : Schema::nodeColumns) {
        if (column.storage == Schema::Storage::Number)
            store.setNodeSqlValue(0, QLatin1StringView(column.name), 1);
        else if (column.storage == Schema::Storage::Text)
            store.setNodeSqlValue(0, QLatin1StringView(column.name),
                                  QStringLiteral("text of %1").arg(QLatin1StringView(column.name)));
    }
    ObjectDataBase::NODE_DATA_T before;
    QVERIFY(store.getNode(0, before));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase reopened;
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase::NODE_DATA_T after;
    QVERIFY(reopened.getNode(0, after));
    QVERIFY(before == after);
    QCOMPARE(after.lssslave, 1);
    QCOMPARE(after.isbootupmanager, 1);
}

void tst_TextProject::settingsOfAllLinesComeBack()
{
    Store store;
    fillMixedProject(store);
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase reopened;
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    QCOMPARE(reopened.descriptionLine(), 0);
    QCOMPARE(reopened.getDescriptionSetting(QStringLiteral("VendorName")), QString());
    reopened.setDescriptionLine(1);
    QCOMPARE(reopened.getDescriptionSetting(QStringLiteral("VendorName")),
             QStringLiteral("Müller & \"Söhne\""));
    QCOMPARE(reopened.getGeneralSettingForLine(QStringLiteral("co_node_id"), 2), QStringLiteral("3"));
    QCOMPARE(reopened.getJ1939Setting(QStringLiteral("identitynumber")), QStringLiteral("0x123,7"));
    QCOMPARE(reopened.getMiscSetting(QStringLiteral("postgencmd")), QStringLiteral("C:\\tools\\x.exe"));
    QStringList before = store.getMiscSettingKeys();
    QStringList after = reopened.getMiscSettingKeys();
    before.sort();
    after.sort();
    QCOMPARE(after, before);
}

void tst_TextProject::removedServicesStayRemoved()
{
    Store store;
    setLineType(store, 0, 1);
    QVERIFY(store.executeSql(QStringLiteral("delete from UDSSettings0 where sid <> 62")));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase reopened;
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    QCOMPARE(reopened.getUDSActiveServices(0), QList<UDS::SID>{UDS::SID(62)});
}

// The text carries the description's number in a pool that does not come along.
void tst_TextProject::lostDescriptionsDoNotBecomeOtherTexts()
{
    Store store;
    setLineType(store, 0, 2);
    fillJ1939(store, 0);
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase reopened;
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    for (int text = 0; text < 20; ++text)
        reopened.addString(QStringLiteral("new text %1").arg(text));
    ObjectDataBase::PGN pgn;
    QVERIFY(reopened.getPGN(0, 61440, ObjectDataBase::Transmit, pgn));
    QCOMPARE(pgn.desc, QString());
    QCOMPARE(pgn.name, QStringLiteral("PGN 61440"));
    ObjectDataBase::SPN spn;
    QVERIFY(reopened.getSPN(0, 61440, ObjectDataBase::Transmit, 1, spn));
    QCOMPARE(spn.desc, QString());
}

void tst_TextProject::aNumberInBothDirectionsIsToldOf()
{
    Store store;
    setLineType(store, 0, 2);
    store.addPGN(0, 59904, StoreTest::samplePgn(ObjectDataBase::Receive, QStringLiteral("in")));
    store.addPGN(0, 59904, StoreTest::samplePgn(ObjectDataBase::Transmit, QStringLiteral("out")));
    QTest::ignoreMessage(
        QtWarningMsg,
        QRegularExpression(QStringLiteral("an earlier row of the same number is lost: PGNs0/59904")));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    QCOMPARE(Text(path(QStringLiteral("a.vext"))).value(QStringLiteral("PGNs0/59904/name")).toString(),
             QStringLiteral("out"));
}

void tst_TextProject::textsComeBack_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("quotes") << QStringLiteral("it's \"quoted\" `so`");
    QTest::newRow("statement") << QStringLiteral("'); drop table Nodes; --");
    QTest::newRow("lines") << QStringLiteral("a\nb\r\nc\rd\te");
    QTest::newRow("blanks") << QStringLiteral("  at both ends \t");
    QTest::newRow("only a blank") << QStringLiteral(" ");
    QTest::newRow("list") << QStringLiteral("a, b,c;d=e # f");
    QTest::newRow("backslashes") << QStringLiteral("C:\\new\\x41\\");
    QTest::newRow("percent") << QStringLiteral("100 %2f %U0041 %");
    QTest::newRow("brackets") << QStringLiteral("[Nodes]");
    QTest::newRow("Unicode") << QStringLiteral("äöü ß € Привет 漢字 \U0001F600 e\u0301 \u202E");
    QTest::newRow("control characters")
        << QString(QChar(1)) + QStringLiteral("f") + QChar(0x1f) + QStringLiteral("0a\x7f\u0085");
    QTest::newRow("NUL") << QString(QStringLiteral("a") + QChar(0) + QStringLiteral("9"));
    QTest::newRow("at sign") << QStringLiteral("@");
    QTest::newRow("like a byte array") << QStringLiteral("@ByteArray(ä)");
    QTest::newRow("like a variant") << QStringLiteral("@Variant(\\0\\0)");
    QTest::newRow("like an invalid") << QStringLiteral("@Invalid()");
    QTest::newRow("like a string") << QStringLiteral("@String(x)");
    QTest::newRow("a megabyte") << QStringLiteral("0123456789 äöü,\n").repeated(65536);
}

void tst_TextProject::textsComeBack()
{
    QFETCH(QString, text);
    Store store;
    setLineType(store, 0, 5);
    store.setGeneralSetting(QStringLiteral("user_defines"), text);
    auto object = StoreTest::sampleIndex(text);
    object.metadata = {{text, text}};
    store.addIndex(0, 0x2000, object);
    auto sub = StoreTest::sampleSub(text);
    sub.defaultvalue = sub.varname = sub.description = text;
    sub.metadata = {{QStringLiteral("k"), text}};
    store.addSubIndex(0, 0x2000, 1, sub);
    store.addPGN(0, 1, StoreTest::samplePgn(ObjectDataBase::Receive, text));
    auto spn = StoreTest::sampleSpn(0, text);
    spn.defaultvalue = text;
    store.addSPN(0, 1, ObjectDataBase::Receive, 2, spn);
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase reopened;
    QVERIFY2(reopened.loadTextProject(path(QStringLiteral("a.vext"))), qPrintable(reopened.lastError()));
    QVERIFY(!reopened.isExternallyModified());
    QVERIFY(reopened.getGeneralSetting(QStringLiteral("user_defines")) == text);
    ObjectDataBase::INDEX_DATA_T objectBack;
    QVERIFY(reopened.getIndex(0, 0x2000, objectBack));
    QVERIFY(objectBack.name == text && objectBack.metadata == object.metadata);
    ObjectDataBase::SUBINDEX_DATA_T subBack;
    QVERIFY(reopened.getSubIndex(0, 0x2000, 1, subBack));
    sub.denotation.clear();
    QVERIFY(subBack == sub);
    QVERIFY(reopened.getPGNName(0, 1, ObjectDataBase::Receive) == text);
    ObjectDataBase::SPN spnBack;
    QVERIFY(reopened.getSPN(0, 1, ObjectDataBase::Receive, 2, spnBack));
    QVERIFY(spnBack.name == text && spnBack.defaultvalue == text);
}

void tst_TextProject::keysComeBack_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("empty") << QStringLiteral("");
    QTest::newRow("slash") << QStringLiteral("a/b");
    QTest::newRow("outer slashes") << QStringLiteral("/a/");
    QTest::newRow("double slash") << QStringLiteral("a//b");
    QTest::newRow("only slashes") << QStringLiteral("//");
    QTest::newRow("backslash") << QStringLiteral("a\\b");
    QTest::newRow("percent") << QStringLiteral("%2f");
    QTest::newRow("percent inside") << QStringLiteral("a%20b");
    QTest::newRow("percent and slash") << QStringLiteral("%/%25/");
    QTest::newRow("equals sign") << QStringLiteral("a=b");
    QTest::newRow("brackets") << QStringLiteral("[Nodes]");
    QTest::newRow("blanks") << QStringLiteral(" a b ");
    QTest::newRow("lines") << QStringLiteral("a\nb");
    QTest::newRow("quotes") << QStringLiteral("it's \"a\"");
    QTest::newRow("semicolon") << QStringLiteral("; a");
    QTest::newRow("Unicode") << QStringLiteral("Schlüssel 漢 \U0001F600");
    QTest::newRow("general") << QStringLiteral("General");
    QTest::newRow("at sign") << QStringLiteral("@a");
}

void tst_TextProject::keysComeBack()
{
    QFETCH(QString, key);
    Store store;
    setLineType(store, 0, 5);
    store.setGeneralSetting(key, QStringLiteral("general"));
    store.setMiscSetting(key, QStringLiteral("misc"));
    store.setJ1939Setting(key, QStringLiteral("j1939"));
    store.setDescriptionSetting(key, QStringLiteral("description"));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase reopened;
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    QVERIFY(!reopened.isExternallyModified());
    QCOMPARE(reopened.getGeneralSetting(key), QStringLiteral("general"));
    QCOMPARE(reopened.getMiscSetting(key), QStringLiteral("misc"));
    QCOMPARE(reopened.getJ1939Setting(key), QStringLiteral("j1939"));
    QCOMPARE(reopened.getDescriptionSetting(key), QStringLiteral("description"));
    QCOMPARE(reopened.getGeneralSettingKeys().size(), store.getGeneralSettingKeys().size());
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
