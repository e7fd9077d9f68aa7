#include "projects/ProjectTexts.h"
#include "store/Schema.h"

using namespace ProjectTexts;

class tst_TextRoundTrip : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void thereAndBackTwiceGivesTheSameText();
    void anOldFileGoesThereAndBack();
    void objectsComeBack();
    void protocolTablesComeBack();
    void nodesComeBackWithAllTheirFlags();
    void settingsOfAllLinesComeBack();
    void removedServicesStayRemoved();
    void aLineWithoutAnyServiceComesBackWithoutAny();
    void aJ1939LineWithoutAnyRowComesBack();
    void aProjectWithoutLine0ComesBackWithoutIt_data();
    void aProjectWithoutLine0ComesBackWithoutIt();
    void onlyLinesThatAProjectCanHaveAreMade();
    void lostDescriptionsDoNotBecomeOtherTexts();
    void aJ1939LineComesBackWithoutANodeGroup();
    void furtherJ1939LinesComeBackWithTheirTables();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_TextRoundTrip::initTestCase()
{
    StoreTest::prepareApplication();
}

void tst_TextRoundTrip::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void tst_TextRoundTrip::thereAndBackTwiceGivesTheSameText()
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
void tst_TextRoundTrip::anOldFileGoesThereAndBack()
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

void tst_TextRoundTrip::objectsComeBack()
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

void tst_TextRoundTrip::protocolTablesComeBack()
{
    Store store;
    fillMixedProject(store);
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    Text text(path(QStringLiteral("a.vext")));
    QCOMPARE(text.childGroups(QStringLiteral("PGNs1")).value(0), QStringLiteral("61440"));
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

void tst_TextRoundTrip::nodesComeBackWithAllTheirFlags()
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

void tst_TextRoundTrip::settingsOfAllLinesComeBack()
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

void tst_TextRoundTrip::removedServicesStayRemoved()
{
    Store store;
    setLineType(store, 0, 1);
    QVERIFY(store.executeSql(QStringLiteral("delete from UDSSettings0 where sid <> 62")));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase reopened;
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    QCOMPARE(reopened.getUDSActiveServices(0), QList<UDS::SID>{UDS::SID(62)});
}

void tst_TextRoundTrip::aLineWithoutAnyServiceComesBackWithoutAny()
{
    Store store;
    store.addNode(1, ObjectDataBase::NODE_DATA_T());
    setLineType(store, 0, 1);
    setLineType(store, 1, 2);
    for (const int line : {0, 1})
        QVERIFY(store.executeSql(QStringLiteral("delete from UDSSettings%1").arg(line)));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase reopened;
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    QCOMPARE(reopened.getLines(), (QList<quint8>{0, 1}));
    QVERIFY(reopened.getUDSActiveServices(0).isEmpty());
    QVERIFY(reopened.getUDSActiveServices(1).isEmpty());
    QVERIFY(reopened.setUDSServiceActive(1, UDS::SID(16), true));
}

void tst_TextRoundTrip::aJ1939LineWithoutAnyRowComesBack()
{
    Store store;
    store.addNode(1, ObjectDataBase::NODE_DATA_T());
    for (const quint8 line : {0, 1}) {
        setLineType(store, line, 2);
        QVERIFY(store.executeSql(QStringLiteral("delete from UDSSettings%1").arg(line)));
    }
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase reopened;
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    QCOMPARE(reopened.getLines(), (QList<quint8>{0, 1}));
    QVERIFY(reopened.addPGN(1, 1, StoreTest::samplePgn(ObjectDataBase::Receive)));
}

void tst_TextRoundTrip::aProjectWithoutLine0ComesBackWithoutIt_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("CANopen") << 1;
    QTest::newRow("J1939") << 2;
    QTest::newRow("raw CAN") << 4;
    QTest::newRow("both") << 5;
}

void tst_TextRoundTrip::aProjectWithoutLine0ComesBackWithoutIt()
{
    QFETCH(int, type);
    Store store;
    store.addNode(1, ObjectDataBase::NODE_DATA_T());
    setLineType(store, 1, type);
    fillCanopen(store, 1);
    fillJ1939(store, 1);
    QVERIFY(store.removeLine(0));
    store.removeLineSettings(0);
    QVERIFY(store.saveProject(path(QStringLiteral("a.vexp"))));
    ObjectDataBase first;
    QVERIFY(first.openDataBase(path(QStringLiteral("a.vexp"))));
    QVERIFY(first.saveProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase reopened;
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    QCOMPARE(reopened.getLines(), QList<quint8>{1});
    QVERIFY(reopened.saveProject(path(QStringLiteral("b.vexp"))));
    ObjectDataBase third;
    QVERIFY(third.openDataBase(path(QStringLiteral("b.vexp"))));
    QCOMPARE(third.getLines(), QList<quint8>{1});
    QVERIFY(third.saveProject(path(QStringLiteral("b.vext"))));
    QCOMPARE(read(path(QStringLiteral("b.vext"))), read(path(QStringLiteral("a.vext"))));
}

void tst_TextRoundTrip::onlyLinesThatAProjectCanHaveAreMade()
{
    const QString name = path(QStringLiteral("a.vext"));
    const QByteArray settings =
        "[GeneralSettings]\nline0type=2\nline31type=2\nline32type=2\nline99999999999type=2\nlinextype=2\n"
        "[MiscSettings]\nDatabaseVersion=107\n";
    QVERIFY(write(name, settings));
    ObjectDataBase store;
    QVERIFY(store.loadTextProject(name));
    QCOMPARE(store.getLines(), (QList<quint8>{0, 31}));
    // Nodes name the lines themselves; a type may be left of a line that is gone.
    QVERIFY(write(name, settings + "[Nodes]\n0\\name=a\n2\\name=b\n"));
    QVERIFY(store.loadTextProject(name));
    QCOMPARE(store.getLines(), (QList<quint8>{0, 2}));
}

// The text carries the description's number in a pool that does not come along.
void tst_TextRoundTrip::lostDescriptionsDoNotBecomeOtherTexts()
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

void tst_TextRoundTrip::aJ1939LineComesBackWithoutANodeGroup()
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

void tst_TextRoundTrip::furtherJ1939LinesComeBackWithTheirTables()
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

QTEST_GUILESS_MAIN(tst_TextRoundTrip)
#include "tst_textroundtrip.moc"
