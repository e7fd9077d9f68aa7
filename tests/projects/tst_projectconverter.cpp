#include "projects/ConverterDesk.h"

using namespace ConverterDesk;

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
    QSettings settings(QStringLiteral("korvel"), QLatin1StringView(settingsName));
    settings.setValue(QStringLiteral("General/costackpath"), QStringLiteral("/opt/it's a stack"));
    settings.sync();
    Desk desk;
    QVERIFY(desk.converter.doProjectCorrection());
    QCOMPARE(desk.store->getMiscSetting(QStringLiteral("costackpath")), QStringLiteral("/opt/it's a stack"));
}

void tst_ProjectConverter::theStackPathOfTheProjectStays()
{
    QSettings settings(QStringLiteral("korvel"), QLatin1StringView(settingsName));
    settings.setValue(QStringLiteral("General/costackpath"), QStringLiteral("/opt/other"));
    settings.sync();
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

QTEST_GUILESS_MAIN(tst_ProjectConverter)
#include "tst_projectconverter.moc"
