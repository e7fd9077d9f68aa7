#include "store/ObjectDataBase.h"
#include "store/ProjectConverter.h"
#include "store/StoreTest.h"

#include <QSettings>

namespace {

const char *const settingsName = "NodeSmith converter test";

/** A store with an empty project and its converter. */
struct Desk
{
    QSharedPointer<ObjectDataBase> store = QSharedPointer<ObjectDataBase>::create();
    ProjectConverter converter;

    Desk()
    {
        if (!store->createNewDataBase())
            qFatal("the store cannot make a new database");
        converter.setDataBase(store);
    }

    void set(const char *key, const QString &value) const
    {
        store->setGeneralSetting(QLatin1StringView(key), value);
    }
    QString get(const char *key) const { return store->getGeneralSetting(QLatin1StringView(key)); }
    void setBus(const char *key, const QString &value) const
    {
        store->setEnergyBusSetting(QLatin1StringView(key), value);
    }
    QString bus(const char *key) const { return store->getEnergyBusSetting(QLatin1StringView(key)); }
    QStringList rows(const QString &sql) const
    {
        store->executeSql(sql);
        QStringList trimmed;
        for (const QString &row : store->sqlResult())
            trimmed.append(row.trimmed());
        return trimmed;
    }
};

} // namespace

class tst_ProjectConverter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void withoutAStoreEveryCorrectionFails();
    void underTheWriteLockNothingChanges();
    void theOldGroupFilterBecomesADefine_data();
    void theOldGroupFilterBecomesADefine();
    void udsServerVersionFiveBecomesSix_data();
    void udsServerVersionFiveBecomesSix();
    void theStackPathComesFromTheUserSettings();
    void theStackPathOfTheProjectStays();
    void withoutAnyStackPathNoEntryIsMade();
    void formerMasterSettingsMoveToTheirLines_data();
    void formerMasterSettingsMoveToTheirLines();
    void usdoIsEnabledWhereItIsCounted_data();
    void usdoIsEnabledWhereItIsCounted();
    void theEmcyObjectBecomesAManagedVariable();
    void energyBusDevicesAreCorrected_data();
    void energyBusDevicesAreCorrected();
    void kindsOfDevicesThatHaveGoneAreRemoved();
    void devicesBehindAGapMoveWithTheirKind();
    void aListThatBeginsAtOneStaysOne();
    void aSenselessDeviceCountDoesNoHarm_data();
    void aSenselessDeviceCountDoesNoHarm();
    void repeatedRowsGoAndDifferentOnesStay();
    void mappingCountsAreThoseOfTheSignals();
    void missingBitPositionsFollowTheSizes();
    void deliberateBitPositionsStay();
    void unknownDirectionsAreLoggedAndStay();
    void rawCanTablesAreCorrectedLineByLine();
    void anOldFileWithDoubledRowsIsCorrectedAfterItsMigration();
    void linesWithoutProtocolTablesAreSkipped();
};

void tst_ProjectConverter::initTestCase()
{
    StoreTest::prepareApplication();
    qApp->setProperty("AppNameWithVersion", QLatin1StringView(settingsName));
}

void tst_ProjectConverter::init()
{
    QSettings(QStringLiteral("korvel"), QLatin1StringView(settingsName)).clear();
}

void tst_ProjectConverter::withoutAStoreEveryCorrectionFails()
{
    ProjectConverter converter;
    QVERIFY(!converter.doGenericCorrection());
    QVERIFY(!converter.doProjectCorrection());
    QVERIFY(!converter.doEnergyBusCorrection());
    QVERIFY(!converter.correctJ1939());
    QVERIFY(!converter.correctRawCan());
}

void tst_ProjectConverter::underTheWriteLockNothingChanges()
{
    Desk desk;
    desk.set("drv_group_filter", QStringLiteral("1"));
    desk.set("co_ml_ms", QStringLiteral("1"));
    desk.store->setWriteLock(true);
    QVERIFY(!desk.converter.doGenericCorrection());
    QVERIFY(!desk.converter.doProjectCorrection());
    desk.store->setWriteLock(false);
    QCOMPARE(desk.get("drv_group_filter"), QStringLiteral("1"));
    QCOMPARE(desk.get("co_ml_ms"), QStringLiteral("1"));
}

void tst_ProjectConverter::theOldGroupFilterBecomesADefine_data()
{
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QString>("defines");
    QTest::addColumn<QString>("expectedFilter");
    QTest::addColumn<QString>("expectedDefines");
    const QString added =
        QStringLiteral("\n\n /* old group filter setting */\n#define CO_DRV_GROUP_FILTER 1u\n");
    QTest::newRow("on") << QStringLiteral("1") << QString() << QStringLiteral("0") << added;
    QTest::newRow("on, beside other defines")
        << QStringLiteral("1") << QStringLiteral("#define A 'x'") << QStringLiteral("0")
        << QString(QStringLiteral("#define A 'x'") + added);
    QTest::newRow("off") << QStringLiteral("0") << QStringLiteral("a") << QStringLiteral("0")
                         << QStringLiteral("a");
    QTest::newRow("never set") << QString() << QString() << QString() << QString();
    QTest::newRow("other value") << QStringLiteral("2") << QString() << QStringLiteral("2") << QString();
}

void tst_ProjectConverter::theOldGroupFilterBecomesADefine()
{
    QFETCH(QString, filter);
    QFETCH(QString, defines);
    Desk desk;
    desk.set("drv_group_filter", filter);
    desk.set("hw_defines", defines);
    QVERIFY(desk.converter.doGenericCorrection());
    QVERIFY(desk.converter.doGenericCorrection());
    QTEST(desk.get("drv_group_filter"), "expectedFilter");
    QTEST(desk.get("hw_defines"), "expectedDefines");
}

void tst_ProjectConverter::udsServerVersionFiveBecomesSix_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("expected");
    QTest::newRow("five") << QStringLiteral("5") << QStringLiteral("6");
    QTest::newRow("four") << QStringLiteral("4") << QStringLiteral("4");
    QTest::newRow("six") << QStringLiteral("6") << QStringLiteral("6");
    QTest::newRow("never set") << QString() << QString();
}

void tst_ProjectConverter::udsServerVersionFiveBecomesSix()
{
    QFETCH(QString, version);
    Desk desk;
    desk.set("udsserver_version", version);
    QVERIFY(desk.converter.doGenericCorrection());
    QTEST(desk.get("udsserver_version"), "expected");
}

void tst_ProjectConverter::theStackPathComesFromTheUserSettings()
{
    QSettings(QStringLiteral("korvel"), QLatin1StringView(settingsName))
        .setValue(QStringLiteral("General/costackpath"), QStringLiteral("/opt/it's a stack"));
    Desk desk;
    QVERIFY(desk.converter.doProjectCorrection());
    QCOMPARE(desk.store->getMiscSetting(QStringLiteral("costackpath")), QStringLiteral("/opt/it's a stack"));
}

void tst_ProjectConverter::theStackPathOfTheProjectStays()
{
    QSettings(QStringLiteral("korvel"), QLatin1StringView(settingsName))
        .setValue(QStringLiteral("General/costackpath"), QStringLiteral("/opt/other"));
    Desk desk;
    desk.store->setMiscSetting(QStringLiteral("costackpath"), QStringLiteral("../stack"));
    QVERIFY(desk.converter.doProjectCorrection());
    QCOMPARE(desk.store->getMiscSetting(QStringLiteral("costackpath")), QStringLiteral("../stack"));
}

void tst_ProjectConverter::withoutAnyStackPathNoEntryIsMade()
{
    Desk desk;
    QVERIFY(desk.converter.doProjectCorrection());
    QVERIFY(!desk.store->miscSettingExists(QStringLiteral("costackpath")));
}

void tst_ProjectConverter::formerMasterSettingsMoveToTheirLines_data()
{
    QTest::addColumn<QString>("former");
    QTest::addColumn<QString>("master");
    QTest::addColumn<QString>("expected");
    QTest::newRow("one for all") << QStringLiteral("1") << QStringLiteral("0") << QStringLiteral("1,1,1");
    QTest::newRow("one for each") << QStringLiteral("0,1,2") << QString() << QStringLiteral("0,1,2");
    QTest::newRow("short list") << QStringLiteral("0,1") << QStringLiteral("5,5,5")
                                << QStringLiteral("0,1,1");
    QTest::newRow("empty") << QString() << QStringLiteral("2,1,0") << QStringLiteral("2,1,0");
    QTest::newRow("empty element") << QStringLiteral("1,,2") << QStringLiteral("0,7,0")
                                   << QStringLiteral("1,7,2");
    QTest::newRow("blank element") << QStringLiteral("1, ,2") << QStringLiteral("0,7,0")
                                   << QStringLiteral("1,7,2");
}

void tst_ProjectConverter::formerMasterSettingsMoveToTheirLines()
{
    QFETCH(QString, former);
    QFETCH(QString, master);
    Desk desk;
    desk.store->addNode(1, ObjectDataBase::NODE_DATA_T());
    desk.store->addNode(2, ObjectDataBase::NODE_DATA_T());
    desk.store->addNode(ObjectDataBase::ReferenceLine, ObjectDataBase::NODE_DATA_T());
    desk.set("co_ml_ms", former);
    desk.set("nmtmaster", master);
    QVERIFY(desk.converter.doProjectCorrection());
    QTEST(desk.get("nmtmaster"), "expected");
    QCOMPARE(desk.get("co_ml_ms"), QString());
    QVERIFY(desk.converter.doProjectCorrection());
    QTEST(desk.get("nmtmaster"), "expected");
}

void tst_ProjectConverter::usdoIsEnabledWhereItIsCounted_data()
{
    QTest::addColumn<QString>("enabled");
    QTest::addColumn<QString>("count");
    QTest::addColumn<QString>("expected");
    QTest::newRow("unset and counted") << QString() << QStringLiteral("2") << QStringLiteral("1");
    QTest::newRow("unset and not counted") << QString() << QStringLiteral("0") << QString();
    QTest::newRow("both unset") << QString() << QString() << QString();
    QTest::newRow("off") << QStringLiteral("0") << QStringLiteral("2") << QStringLiteral("0");
    QTest::newRow("no number") << QString() << QStringLiteral("many") << QString();
}

void tst_ProjectConverter::usdoIsEnabledWhereItIsCounted()
{
    QFETCH(QString, enabled);
    QFETCH(QString, count);
    for (const char *side : {"server", "client"}) {
        Desk desk;
        const QByteArray enabledKey = QByteArrayLiteral("usdo_") + side + "_enabled";
        const QByteArray countKey = QByteArrayLiteral("usdo_") + side + "_cnt";
        desk.set(enabledKey.constData(), enabled);
        desk.set(countKey.constData(), count);
        QVERIFY(desk.converter.doProjectCorrection());
        QTEST(desk.get(enabledKey.constData()), "expected");
    }
}

void tst_ProjectConverter::theEmcyObjectBecomesAManagedVariable()
{
    Desk desk;
    desk.store->addNode(1, ObjectDataBase::NODE_DATA_T());
    auto sub = StoreTest::sampleSub();
    sub.implementation = 1;
    desk.store->addSubIndex(0, 0x1032, 0, sub);
    desk.store->addSubIndex(0, 0x1032, 1, sub);
    desk.store->addSubIndex(0, 0x1033, 0, sub);
    desk.store->addSubIndex(1, 0x1032, 0, sub);
    QVERIFY(desk.converter.doProjectCorrection());
    const auto implementation = [&desk](quint8 line, quint16 index, quint8 subindex) {
        ObjectDataBase::SUBINDEX_DATA_T data;
        desk.store->getSubIndex(line, index, subindex, data);
        return data.implementation;
    };
    QCOMPARE(implementation(0, 0x1032, 0), 0);
    QCOMPARE(implementation(1, 0x1032, 0), 0);
    QCOMPARE(implementation(0, 0x1032, 1), 1);
    QCOMPARE(implementation(0, 0x1033, 0), 1);
    sub.implementation = 2;
    desk.store->addSubIndex(0, 0x1032, 0, sub);
    QVERIFY(desk.converter.doProjectCorrection());
    QCOMPARE(implementation(0, 0x1032, 0), 2);
}

void tst_ProjectConverter::energyBusDevicesAreCorrected_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("expected");
    QTest::newRow("misspelt") << QStringLiteral("ecurity 1") << QStringLiteral("security 1");
    QTest::newRow("right") << QStringLiteral("security 1") << QStringLiteral("security 1");
    QTest::newRow("capital") << QStringLiteral("Security Device/Extension 1")
                             << QStringLiteral("Security Device/Extension 1");
    QTest::newRow("within a text") << QStringLiteral("my ecurity, my security")
                                   << QStringLiteral("my security, my security");
    QTest::newRow("another device") << QStringLiteral("Battery 1") << QStringLiteral("Battery 1");
}

void tst_ProjectConverter::energyBusDevicesAreCorrected()
{
    QFETCH(QString, device);
    QFETCH(QString, expected);
    Desk desk;
    desk.setBus("device_cnt", QStringLiteral("1"));
    desk.setBus("device_0", device);
    if (device != expected)
        QTest::ignoreMessage(
            QtDebugMsg, QRegularExpression(QStringLiteral("correct +") + QRegularExpression::escape(device)));
    QVERIFY(desk.converter.doEnergyBusCorrection());
    QCOMPARE(desk.bus("device_0"), expected);
    QCOMPARE(desk.bus("device_cnt"), QStringLiteral("1"));
}

void tst_ProjectConverter::kindsOfDevicesThatHaveGoneAreRemoved()
{
    Desk desk;
    desk.setBus("device_cnt", QStringLiteral("3"));
    desk.setBus("device_0", QStringLiteral("Battery 1"));
    desk.setBus("device_1", QStringLiteral("security 1"));
    desk.setBus("device_2", QString());
    desk.setBus("sec_1_kind", QStringLiteral("4"));
    desk.setBus("sec_2_kind", QStringLiteral("5"));
    desk.setBus("sec_7_kind", QStringLiteral("6"));
    desk.setBus("sec_x_kind", QStringLiteral("7"));
    QVERIFY(desk.converter.doEnergyBusCorrection());
    QCOMPARE(desk.bus("sec_1_kind"), QStringLiteral("4"));
    QVERIFY(!desk.store->energyBusSettingExists(QStringLiteral("sec_2_kind")));
    QVERIFY(!desk.store->energyBusSettingExists(QStringLiteral("sec_7_kind")));
    QCOMPARE(desk.bus("sec_x_kind"), QStringLiteral("7"));
    QCOMPARE(desk.bus("device_cnt"), QStringLiteral("2"));
}

void tst_ProjectConverter::devicesBehindAGapMoveWithTheirKind()
{
    Desk desk;
    desk.setBus("device_cnt", QStringLiteral("4"));
    desk.setBus("device_0", QStringLiteral("Battery 1"));
    desk.setBus("device_2", QStringLiteral("security 1"));
    desk.setBus("device_3", QStringLiteral("Display 1"));
    desk.setBus("sec_2_kind", QStringLiteral("4"));
    QVERIFY(desk.converter.doEnergyBusCorrection());
    QCOMPARE(desk.bus("device_0"), QStringLiteral("Battery 1"));
    QCOMPARE(desk.bus("device_1"), QStringLiteral("security 1"));
    QCOMPARE(desk.bus("device_2"), QStringLiteral("Display 1"));
    QVERIFY(!desk.store->energyBusSettingExists(QStringLiteral("device_3")));
    QCOMPARE(desk.bus("sec_1_kind"), QStringLiteral("4"));
    QVERIFY(!desk.store->energyBusSettingExists(QStringLiteral("sec_2_kind")));
    QCOMPARE(desk.bus("device_cnt"), QStringLiteral("3"));
}

void tst_ProjectConverter::aListThatBeginsAtOneStaysOne()
{
    Desk desk;
    desk.setBus("device_cnt", QStringLiteral("2"));
    desk.setBus("device_1", QStringLiteral("Battery 1"));
    desk.setBus("device_2", QStringLiteral("ecurity 1"));
    desk.setBus("sec_2_kind", QStringLiteral("4"));
    QVERIFY(desk.converter.doEnergyBusCorrection());
    QCOMPARE(desk.bus("device_1"), QStringLiteral("Battery 1"));
    QCOMPARE(desk.bus("device_2"), QStringLiteral("security 1"));
    QCOMPARE(desk.bus("sec_2_kind"), QStringLiteral("4"));
    QCOMPARE(desk.bus("device_cnt"), QStringLiteral("2"));
}

void tst_ProjectConverter::aSenselessDeviceCountDoesNoHarm_data()
{
    QTest::addColumn<QString>("count");
    QTest::addColumn<QString>("expected");
    QTest::newRow("huge") << QStringLiteral("2147483647") << QStringLiteral("1");
    QTest::newRow("larger than any number") << QStringLiteral("99999999999") << QStringLiteral("1");
    QTest::newRow("negative") << QStringLiteral("-1") << QStringLiteral("1");
    QTest::newRow("no number") << QStringLiteral("x") << QStringLiteral("1");
    QTest::newRow("missing") << QString() << QStringLiteral("1");
    QTest::newRow("zero") << QStringLiteral("0") << QStringLiteral("0");
}

void tst_ProjectConverter::aSenselessDeviceCountDoesNoHarm()
{
    QFETCH(QString, count);
    Desk desk;
    desk.setBus("device_cnt", count);
    desk.setBus("device_0", QStringLiteral("Battery 1"));
    desk.setBus("device_99999999999", QStringLiteral("x"));
    QVERIFY(desk.converter.doEnergyBusCorrection());
    QTEST(desk.bus("device_cnt"), "expected");
    QCOMPARE(desk.bus("device_0"), QStringLiteral("Battery 1"));
}

void tst_ProjectConverter::repeatedRowsGoAndDifferentOnesStay()
{
    Desk desk;
    desk.store->addPGN(0, 61444, StoreTest::samplePgn(ObjectDataBase::Receive));
    desk.store->addSPN(0, 61444, ObjectDataBase::Receive, 190, StoreTest::sampleSpn(1));
    for (const char *sql : {"insert into PGNs0 select * from PGNs0", "insert into SPNs0 select * from SPNs0",
                            "insert into SPNs0 select * from SPNs0"})
        QVERIFY(desk.store->executeSql(QLatin1StringView(sql)));
    QVERIFY(desk.store->executeSql(QStringLiteral("insert into PGNs0 select * from PGNs0 limit 1")));
    QVERIFY(desk.store->executeSql(
        QStringLiteral("update PGNs0 set priority = 7 where rowid = (select max(rowid) from PGNs0)")));
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("several different rows of message 61444 119")));
    QVERIFY(desk.converter.correctJ1939());
    QCOMPARE(desk.rows(QStringLiteral("select priority from PGNs0 order by rowid")),
             (QStringList{QStringLiteral("3"), QStringLiteral("7")}));
    QCOMPARE(desk.rows(QStringLiteral("select count(*) from SPNs0")), QStringList{QStringLiteral("1")});
}

void tst_ProjectConverter::mappingCountsAreThoseOfTheSignals()
{
    Desk desk;
    for (const quint8 direction : {ObjectDataBase::Receive, ObjectDataBase::Transmit}) {
        auto pgn = StoreTest::samplePgn(direction);
        pgn.mappingcount = 9;
        desk.store->addPGN(0, 61444, pgn);
        desk.store->addPGN(0, 61445, pgn);
    }
    for (quint32 spn = 1; spn < 4; ++spn)
        desk.store->addSPN(0, 61444, ObjectDataBase::Transmit, spn, StoreTest::sampleSpn(int(spn)));
    desk.store->addSPN(0, 61444, ObjectDataBase::Receive, 1, StoreTest::sampleSpn(1));
    desk.store->cacheAllSpns(0);
    QVERIFY(desk.converter.correctJ1939());
    QCOMPARE(desk.store->getPGNMappingCount(0, 61444, ObjectDataBase::Transmit), 3);
    QCOMPARE(desk.store->getPGNMappingCount(0, 61444, ObjectDataBase::Receive), 1);
    QCOMPARE(desk.store->getPGNMappingCount(0, 61445, ObjectDataBase::Transmit), 0);
}

void tst_ProjectConverter::missingBitPositionsFollowTheSizes()
{
    Desk desk;
    desk.store->addPGN(0, 61444, StoreTest::samplePgn(ObjectDataBase::Receive));
    const QList<int> sizes = {16, 4, 8};
    for (int position = 2; position >= 0; --position) {
        auto spn = StoreTest::sampleSpn(position);
        spn.bitsize = sizes.at(position);
        desk.store->addSPN(0, 61444, ObjectDataBase::Receive, quint32(100 + position), spn);
    }
    QVERIFY(desk.store->executeSql(QStringLiteral("update SPNs0 set bitposition = NULL where pos = 1")));
    QVERIFY(desk.converter.correctJ1939());
    QCOMPARE(desk.rows(QStringLiteral("select bitposition from SPNs0 order by pos")),
             (QStringList{QStringLiteral("0"), QStringLiteral("16"), QStringLiteral("20")}));
}

void tst_ProjectConverter::deliberateBitPositionsStay()
{
    Desk desk;
    desk.store->addPGN(0, 1, StoreTest::samplePgn(ObjectDataBase::Receive));
    desk.store->addPGN(0, 2, StoreTest::samplePgn(ObjectDataBase::Receive));
    const QList<int> positions = {0, 0, 32};
    for (int position = 0; position < 3; ++position) {
        auto spn = StoreTest::sampleSpn(position);
        spn.bitposition = positions.at(position);
        desk.store->addSPN(0, 1, ObjectDataBase::Receive, quint32(position), spn);
    }
    desk.store->addSPN(0, 2, ObjectDataBase::Receive, 9, StoreTest::sampleSpn(0));
    QVERIFY(desk.converter.correctJ1939());
    QCOMPARE(
        desk.rows(QStringLiteral("select bitposition from SPNs0 order by pgnnumber, pos")),
        (QStringList{QStringLiteral("0"), QStringLiteral("0"), QStringLiteral("32"), QStringLiteral("0")}));
}

void tst_ProjectConverter::unknownDirectionsAreLoggedAndStay()
{
    Desk desk;
    desk.store->addPGN(0, 61444, StoreTest::samplePgn(3));
    desk.store->addSPN(0, 61444, 3, 190, StoreTest::sampleSpn(1));
    desk.store->addSPN(0, 61444, 3, 191, StoreTest::sampleSpn(2));
    QVERIFY(
        desk.store->executeSql(QStringLiteral("update SPNs0 set direction = NULL where spnnumber = 191")));
    for (const char *finding : {"message 61444 3$", "signal 61444 190 3$", "signal 61444 191 none$"})
        QTest::ignoreMessage(
            QtWarningMsg,
            QRegularExpression(QStringLiteral("unknown direction of ") + QLatin1StringView(finding)));
    QVERIFY(desk.converter.correctJ1939());
    QCOMPARE(desk.rows(QStringLiteral("select direction from PGNs0")), QStringList{QStringLiteral("3")});
    QCOMPARE(desk.rows(QStringLiteral("select bitposition from SPNs0")),
             (QStringList{QStringLiteral("0"), QStringLiteral("0")}));
}

void tst_ProjectConverter::rawCanTablesAreCorrectedLineByLine()
{
    Desk desk;
    desk.store->addNode(1, ObjectDataBase::NODE_DATA_T());
    for (const quint8 line : {0, 1}) {
        desk.store->addCANID(line, 5, StoreTest::sampleCanId(ObjectDataBase::Transmit));
        for (quint32 number = 0; number < 3; ++number)
            desk.store->addDataElement(line, 5, ObjectDataBase::Transmit, number,
                                       StoreTest::sampleElement(0));
        QVERIFY(desk.store->executeSql(
            QStringLiteral("insert into DataElements%1 select * from DataElements%1").arg(line)));
        QVERIFY(
            desk.store->executeSql(QStringLiteral("insert into CANIDs%1 select * from CANIDs%1").arg(line)));
    }
    QVERIFY(desk.converter.correctRawCan());
    for (const int line : {0, 1}) {
        QCOMPARE(desk.rows(QStringLiteral("select mappingcount from CANIDs%1").arg(line)),
                 QStringList{QStringLiteral("3")});
        QCOMPARE(
            desk.rows(QStringLiteral("select number, bitpos from DataElements%1 order by number").arg(line)),
            (QStringList{QStringLiteral("0 0"), QStringLiteral("1 8"), QStringLiteral("2 16")}));
    }
}

// As the first programs made it: no direction of signals, no sizes, rows that an interrupted save doubled.
void tst_ProjectConverter::anOldFileWithDoubledRowsIsCorrectedAfterItsMigration()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("old.vexp"));
    {
        const StoreTest::DatabaseFile file(path);
        const QString statements = QStringLiteral(
            "create table Strings (id integer primary key, string text);"
            "insert into Strings values (1,''),(2,'EEC1'),(3,'Speed');"
            "create table Nodes (nodeId integer primary key, name text, edspath text, xddpath text);"
            "insert into Nodes values (0,'CAN','','');"
            "create table GeneralSettings (item text unique, value text);"
            "insert into GeneralSettings values ('line0type','2'),('udsserver_version','5');"
            "create table MiscSettings (item text unique, value text);"
            "insert into MiscSettings values ('DatabaseVersion','98');"
            "create table PGNs0 (number integer not null, edp_dp_key integer, priority integer, "
            "cycletime_ms integer, inhibittime_ms integer, mappingcount integer, direction integer, "
            "name integer, desc integer);"
            "insert into PGNs0 values (61444,0,3,20,0,9,119,2,1),(61444,0,3,20,0,9,119,2,1);"
            "create table SPNs0 (pgnnumber integer not null, spnnumber integer not null, datatype integer, "
            "implementation integer, varname text, defaultvalue text, name integer, desc integer);"
            "insert into SPNs0 values (61444,190,6,0,'speed','',3,1),(61444,190,6,0,'speed','',3,1)");
        for (const QString &statement : statements.split(u';'))
            QVERIFY2(file.execute(statement), qPrintable(statement));
    }
    const auto store = QSharedPointer<ObjectDataBase>::create();
    QVERIFY2(store->openDataBase(path), qPrintable(store->lastError()));
    ProjectConverter converter;
    converter.setDataBase(store);
    QVERIFY(converter.doGenericCorrection());
    QVERIFY(converter.doProjectCorrection());
    QVERIFY(converter.correctJ1939());
    QCOMPARE(store->getGeneralSetting(QStringLiteral("udsserver_version")), QStringLiteral("6"));
    QCOMPARE(store->getPGNList(0, ObjectDataBase::Receive), QList<quint32>{61444});
    QCOMPARE(store->getSPNList(0, 61444, ObjectDataBase::Receive), QList<quint32>{190});
    QCOMPARE(store->getPGNMappingCount(0, 61444, ObjectDataBase::Receive), 1);
}

void tst_ProjectConverter::linesWithoutProtocolTablesAreSkipped()
{
    Desk desk;
    desk.store->addNode(1, ObjectDataBase::NODE_DATA_T());
    QVERIFY(desk.store->executeSql(QStringLiteral("drop table CANIDs1")));
    QVERIFY(desk.store->executeSql(QStringLiteral("drop table SPNs1")));
    QVERIFY(desk.converter.correctJ1939());
    QVERIFY(desk.converter.correctRawCan());
}

QTEST_GUILESS_MAIN(tst_ProjectConverter)
#include "tst_projectconverter.moc"
