#include "StoreTest.h"

using namespace StoreTest;

/** Tables, columns and first content of a new project. */
class TestStoreSchema : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void twoLinesHaveFourteenPerLineTables();
    void aNewProjectHasTheGlobalTablesAndNoOther();
    void columnsStandInTheOrderOfTheFormat_data();
    void columnsStandInTheOrderOfTheFormat();
    void aRowIsUniqueWhereTheFormatSaysSo_data();
    void aRowIsUniqueWhereTheFormatSaysSo();
    void theConnectionHasItsPragmas_data();
    void theConnectionHasItsPragmas();
    void aNewLineHasSeventeenActiveServicesInOrder_data();
    void aNewLineHasSeventeenActiveServicesInOrder();
    void everyServiceTableHasAuthentication();
    void theFirstLineHasTheDefaultDescriptionSettings();
    void aNewProjectSaysWhoCreatedIt();
    void reservedLinesNeverReachASavedFile();
};

void TestStoreSchema::twoLinesHaveFourteenPerLineTables()
{
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    const Snapshot file(store);
    QStringList perLine = file->column(
        QStringLiteral("select name from sqlite_master where type = 'table' and name glob '*[0-9]'"));
    perLine.sort();
    QCOMPARE(perLine,
             QStringList({"CANIDs0", "CANIDs1", "DataElements0", "DataElements1", "Objects0", "Objects1",
                          "PGNs0", "PGNs1", "SPNs0", "SPNs1", "SubObjects0", "SubObjects1", "UDSSettings0",
                          "UDSSettings1"}));
}

void TestStoreSchema::aNewProjectHasTheGlobalTablesAndNoOther()
{
    NewStore store;
    const Snapshot file(store);
    QStringList global = file->column(
        QStringLiteral("select name from sqlite_master where type = 'table' and name not glob '*[0-9]'"));
    global.sort();
    QCOMPARE(global,
             QStringList({"Connections", "DescriptionSettings", "EnergyBusSettings", "GeneralSettings",
                          "Groups", "J1939Settings", "LockedMappings", "LockedPDOs", "MiscSettings", "Nodes",
                          "SignalGroups", "Signals", "Strings", "VirtualNodes"}));
    QCOMPARE(file->column(QStringLiteral("select nodeId from Nodes")), QStringList{"0"});
    QCOMPARE(file->value(QStringLiteral("PRAGMA encoding")).toString(), QStringLiteral("UTF-8"));
}

void TestStoreSchema::columnsStandInTheOrderOfTheFormat_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("columns"); // name and declared type, "!" for not null, "*" for primary key
    const auto row = [](const char *table, const char *columns) {
        QTest::newRow(table) << QString::fromLatin1(table) << QString::fromLatin1(columns);
    };
    row("Strings", "id integer*,string text");
    row("Nodes",
        "nodeId integer*,name text,edspath text,xddpath text,dcfpath text,tpdocnt integer,rpdocnt integer,"
        "ismaster integer,issyncproducer integer,issyncconsumer integer,ishbconsumer integer,"
        "isemergencyproducer integer,isemergencyconsumer integer,ismpdosupported integer,"
        "iscanopengateway integer,allpdosstatic integer,excludegeneration integer,generatedcf integer,"
        "prefix text,outputpath text,iconpath text,isbootupmanager integer,isconfigmanager integer,"
        "excludepdolinking integer,multilinedata integer,lssslave ");
    for (const char *settings :
         {"GeneralSettings", "DescriptionSettings", "EnergyBusSettings", "J1939Settings", "MiscSettings"})
        row(settings, "item text,value text");
    row("Connections",
        "prodnode integer,prodindex integer,prodsub integer,connode integer,conindex integer,consub integer,"
        "priority integer");
    row("LockedMappings", "node integer,pdoindex integer");
    row("LockedPDOs", "node integer,pdoindex integer");
    row("VirtualNodes", "virtualnodeid integer*,line integer,dbnodeid integer,name text");
    row("SignalGroups", "sigid integer*,name text");
    row("Signals",
        "sigid integer*,nodeid integer,name integer,datatype integer!,accesstype text!,defaultvalue text,"
        "signalgroup integer,ref integer,transmittype integer,transmittrigger integer,eventtimer integer,"
        "syncvalue integer,syncstartvalue integer,routing integer");
    row("Groups", "name text,nodeidlist text");
    row("Objects0",
        "objectindex integer*,name integer,datatype integer!,objecttype integer!,description integer,"
        "category integer,device_class integer,fwsupported integer,metadata blob");
    // The statement that writes a row counts its columns, so their order is part of the format.
    row("SubObjects0",
        "objectindex integer!,subindex integer!,name integer,datatype integer!,accesstype text!,"
        "defaultvalue text,currentvalue text,pdomapping integer,lowlimit text,uplimit text,size integer,"
        "defaultineds integer,limitineds integer,refuseread integer,refusewrite integer,"
        "allowedaccesstypes text,implementation integer!,varname text,description integer,category integer,"
        "writedefaulttoeds integer,cyclicread integer,dcfcomponent integer,changedbyuser integer,"
        "wizardsource integer,denotation integer,sharedlines integer,managedbylvx integer,signalid integer,"
        "nvstorage integer,metadata blob");
    row("PGNs0",
        "number integer!,edp_dp_key integer,priority integer,cycletime_ms integer,inhibittime_ms integer,"
        "mappingcount integer,direction integer,name integer,desc integer,issafe integer,srvt_ms integer,"
        "FD_TrailerFormat integer,FD_AssuranceType integer,FD_AssuranceDataSize integer,"
        "multisourceaddress integer,safetytype integer,FD_DataId integer");
    row("SPNs0",
        "pgnnumber integer!,spnnumber integer!,datatype integer,implementation integer,varname text,"
        "defaultvalue text,name integer,desc integer,pos integer,bitsize integer,direction integer,"
        "slot_df integer,bitposition integer");
    row("CANIDs0",
        "id integer!,cycletime_ms integer,inhibittime_ms integer,mappingcount integer,direction integer,"
        "name integer,desc integer");
    row("DataElements0",
        "canid integer!,number integer!,datatype integer,implementation integer,varname text,"
        "defaultvalue text,name integer,desc integer,pos integer,bitsize integer,direction integer,"
        "bitpos integer");
    row("UDSSettings0", "sid integer!,active integer,sessions text,userlevels text,authentication text");
}

void TestStoreSchema::columnsStandInTheOrderOfTheFormat()
{
    QFETCH(QString, table);
    NewStore store;
    const Snapshot file(store);
    QStringList columns;
    for (const QVariantList &row : file->rows(QStringLiteral("PRAGMA table_info(%1)").arg(table))) {
        QString column = row.at(1).toString() + u' ' + row.at(2).toString().toLower();
        if (row.at(5).toBool())
            column += u'*';
        else if (row.at(3).toBool())
            column += u'!';
        columns.append(column);
    }
    QTEST(columns.join(u','), "columns");
}

void TestStoreSchema::aRowIsUniqueWhereTheFormatSaysSo_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("unique");
    for (const char *line : {"0", "1"}) {
        QTest::addRow("SubObjects%s", line) << QStringLiteral("SubObjects%1").arg(QLatin1StringView(line))
                                            << QStringLiteral("objectindex,subindex");
        QTest::addRow("UDSSettings%s", line)
            << QStringLiteral("UDSSettings%1").arg(QLatin1StringView(line)) << QStringLiteral("sid");
        for (const char *table : {"PGNs", "SPNs", "CANIDs", "DataElements"})
            QTest::addRow("%s%s", table, line)
                << QString::fromLatin1(table) + QLatin1StringView(line) << QString();
    }
    for (const char *table :
         {"GeneralSettings", "DescriptionSettings", "EnergyBusSettings", "J1939Settings", "MiscSettings"})
        QTest::newRow(table) << QString::fromLatin1(table) << QStringLiteral("item");
}

void TestStoreSchema::aRowIsUniqueWhereTheFormatSaysSo()
{
    QFETCH(QString, table);
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    const Snapshot file(store);
    QStringList unique;
    for (const QVariantList &index : file->rows(QStringLiteral("PRAGMA index_list(%1)").arg(table))) {
        QVERIFY(index.at(2).toBool());
        QStringList columns;
        for (const QVariantList &column :
             file->rows(QStringLiteral("PRAGMA index_info(%1)").arg(index.at(1).toString())))
            columns.append(column.at(2).toString());
        unique.append(columns.join(u','));
    }
    QTEST(unique.join(u';'), "unique");
}

void TestStoreSchema::theConnectionHasItsPragmas_data()
{
    QTest::addColumn<bool>("opened");
    QTest::addColumn<QString>("pragma");
    QTest::addColumn<QString>("value");
    for (const bool opened : {false, true}) {
        const char *how = opened ? "opened" : "new";
        const auto row = [=](const char *pragma, const char *value) {
            QTest::addRow("%s: %s", how, pragma)
                << opened << QString::fromLatin1(pragma) << QString::fromLatin1(value);
        };
        row("page_size", "4096");
        row("cache_size", opened ? "64000" : "16384");
        row("temp_store", "2"); // memory
        row("journal_mode", "off");
        row("locking_mode", "exclusive");
        row("synchronous", "0");
    }
}

void TestStoreSchema::theConnectionHasItsPragmas()
{
    QFETCH(bool, opened);
    QFETCH(QString, pragma);
    QFETCH(QString, value);
    QTemporaryDir folder;
    NewStore store;
    if (opened) {
        QVERIFY(store.saveProject(folder.filePath(QStringLiteral("p.vexp"))));
        QVERIFY2(store.openDataBase(folder.filePath(QStringLiteral("p.vexp"))),
                 qPrintable(store.lastError()));
    }
    QVERIFY(store.executeSql(QStringLiteral("PRAGMA ") + pragma));
    QCOMPARE(store.sqlResult(), QStringList{value + u' '});
}

void TestStoreSchema::aNewLineHasSeventeenActiveServicesInOrder_data()
{
    QTest::addColumn<int>("line");
    QTest::newRow("line 0, made with the project") << 0;
    QTest::newRow("line 1, added") << 1;
}

void TestStoreSchema::aNewLineHasSeventeenActiveServicesInOrder()
{
    QFETCH(int, line);
    NewStore store;
    QVERIFY(line == 0 || store.addNode(quint8(line), {}));
    const Snapshot file(store);
    const QList<int> sids{16, 17, 62, 34, 46, 35, 61, 20, 25, 49, 39, 40, 47, 52, 53, 54, 55};
    QList<QVariantList> expected;
    for (int i = 0; i < sids.size(); ++i)
        expected.append({qlonglong(sids.at(i)), qlonglong(1), i < 10 ? "1,2,3,4" : "2,3,4", "", ""});
    QCOMPARE(file->rows(QStringLiteral("select sid, active, sessions, ifnull(userlevels, ''), "
                                       "ifnull(authentication, '') from UDSSettings%1 order by rowid")
                            .arg(line)),
             expected);
}

void TestStoreSchema::everyServiceTableHasAuthentication()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("p.vexp"));
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    QVERIFY(store.addNode(7, {}));
    QVERIFY(store.saveProject(path));
    const DatabaseFile file(path);
    QCOMPARE(file.value(QStringLiteral("select value from MiscSettings where item = 'DatabaseVersion'"))
                 .toString(),
             QStringLiteral("107"));
    for (const int line : {0, 1, 7})
        QCOMPARE(
            file.count(
                QStringLiteral("pragma_table_info('UDSSettings%1') where name = 'authentication'").arg(line)),
            1);
}

void TestStoreSchema::theFirstLineHasTheDefaultDescriptionSettings()
{
    QMap<QString, QString> expected;
    for (const char *rate : {"10", "20", "50", "500", "800", "1000"})
        expected.insert(QStringLiteral("BaudRate_") + QLatin1StringView(rate), QStringLiteral("0"));
    for (const char *rate : {"125", "250"})
        expected.insert(QStringLiteral("BaudRate_") + QLatin1StringView(rate), QStringLiteral("1"));
    for (int type = 1; type <= 7; ++type)
        expected.insert(QStringLiteral("Dummy000%1").arg(type), QStringLiteral("0"));
    for (const char *key : {"LSS_Supported", "SelfStarting", "Granularity"})
        expected.insert(QString::fromLatin1(key), QStringLiteral("0"));
    for (const char *key :
         {"VendorName", "ProductName", "CreatedBy", "ModifiedBy", "Comment", "AdditionalSections"})
        expected.insert(QString::fromLatin1(key), QString());
    for (const char *key : {"FileVersion", "FileRevision"})
        expected.insert(QString::fromLatin1(key), QStringLiteral("1"));
    expected.insert(QStringLiteral("OrderCode"), QStringLiteral("0815-BUY-ME"));

    NewStore store;
    const Snapshot file(store);
    QMap<QString, QString> actual;
    for (const QVariantList &row : file->rows(QStringLiteral("select item, value from DescriptionSettings")))
        actual.insert(row.at(0).toString(), row.at(1).toString());
    QCOMPARE(actual, expected);
}

void TestStoreSchema::aNewProjectSaysWhoCreatedIt()
{
    NewStore store;
    QCOMPARE(store.getMiscSetting(QStringLiteral("CreateToolVersion")), QStringLiteral("4.3.2"));
    QCOMPARE(store.getMiscSetting(QStringLiteral("CreateToolName")), QStringLiteral("CANopen NodeSmith"));
    QCOMPARE(store.getMiscSetting(QStringLiteral("DatabaseVersion")), QStringLiteral("107"));
}

void TestStoreSchema::reservedLinesNeverReachASavedFile()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("p.vexp"));
    NewStore store;
    QVERIFY(store.addNode(ObjectDataBase::ClipboardLine, {}));
    QVERIFY(store.addNode(ObjectDataBase::ReferenceLine, {}));
    QVERIFY(store.addIndex(ObjectDataBase::ReferenceLine, 0x1000, sampleIndex()));
    QVERIFY(store.addSubIndex(ObjectDataBase::ReferenceLine, 0x1000, 0, sampleSub()));
    QVERIFY(store.saveProject(path));
    const DatabaseFile file(path);
    QCOMPARE(file.count(QStringLiteral("sqlite_master where type = 'table' and name glob '*25[45]'")), 0);
    QCOMPARE(file.column(QStringLiteral("select nodeId from Nodes")), QStringList{"0"});
    QVERIFY(!store.nodeExists(ObjectDataBase::ClipboardLine));
    QVERIFY(!store.nodeExists(ObjectDataBase::ReferenceLine));
}

QTEST_GUILESS_MAIN(TestStoreSchema)
#include "tst_storeschema.moc"
