#include "StoreTest.h"

#include <array>
#include <functional>

using namespace StoreTest;

namespace {

/** One of the five key/value tables. */
struct Family
{
    const char *table;
    QString (ObjectDataBase::*get)(const QString &);
    bool (ObjectDataBase::*set)(const QString &, const QString &);
    QStringList (ObjectDataBase::*keys)();
    bool (ObjectDataBase::*exists)(const QString &);
    int changeType;
};

using Store = ObjectDataBase;
constexpr QLatin1StringView key("some_key");
constexpr std::array<Family, 5> families{{
    {"GeneralSettings", &Store::getGeneralSetting, &Store::setGeneralSetting, &Store::getGeneralSettingKeys,
     &Store::generalSettingExists, 9},
    {"DescriptionSettings", &Store::getDescriptionSetting, &Store::setDescriptionSetting,
     &Store::getDescriptionSettingKeys, &Store::descriptionSettingExists, 10},
    {"EnergyBusSettings", &Store::getEnergyBusSetting, &Store::setEnergyBusSetting,
     &Store::getEnergyBusSettingKeys, &Store::energyBusSettingExists, 11},
    {"MiscSettings", &Store::getMiscSetting, &Store::setMiscSetting, &Store::getMiscSettingKeys,
     &Store::miscSettingExists, 12},
    {"J1939Settings", &Store::getJ1939Setting, &Store::setJ1939Setting, &Store::getJ1939SettingKeys,
     &Store::j1939SettingExists, 13},
}};

/** The values that the file holds under the key of these tests. */
QStringList valuesInFile(ObjectDataBase &store, const Family &family)
{
    return StoreTest::Snapshot(store)->column(
        QStringLiteral("select value from %1 where item = 'some_key'").arg(QLatin1StringView(family.table)));
}

} // namespace

/** The five settings tables. */
class TestStoreSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void anAbsentKeyIsEmptyAndDoesNotExist_data() { familyRows(); }
    void anAbsentKeyIsEmptyAndDoesNotExist();
    void aNewKeyIsInsertedAndAnnounced_data() { familyRows(); }
    void aNewKeyIsInsertedAndAnnounced();
    void aChangedValueIsUpdatedAndAnnounced_data() { familyRows(); }
    void aChangedValueIsUpdatedAndAnnounced();
    void anUnchangedValueSendsNothing_data() { familyRows(); }
    void anUnchangedValueSendsNothing();
    void anEmptyValueMakesTheKeyExist_data() { familyRows(); }
    void anEmptyValueMakesTheKeyExist();
    void everyKeyIsListedOnce_data() { familyRows(); }
    void everyKeyIsListedOnce();
    void aValueWithQuotesIsStoredAsItIs_data() { familyRows(); }
    void aValueWithQuotesIsStoredAsItIs();
    void tablesAreApart();
    void descriptionKeysCarryTheLineUnlessItIs0_data();
    void descriptionKeysCarryTheLineUnlessItIs0();
    void descriptionChangesNameTheirLine();
    void j1939ChangesNameTheDescriptionLine();
    void removeEnergyBusSettingRemovesOneKey();
    void replaceSettingsFromTakesGeneralAndDescriptionSettings();

private:
    static void familyRows();
};

void TestStoreSettings::familyRows()
{
    QTest::addColumn<int>("number");
    for (int i = 0; i < int(families.size()); ++i)
        QTest::newRow(families.at(size_t(i)).table) << i;
}

#define FETCH_FAMILY()                                                                                       \
    QFETCH(int, number);                                                                                     \
    const Family family = families.at(size_t(number));                                                       \
    NewStore store

void TestStoreSettings::anAbsentKeyIsEmptyAndDoesNotExist()
{
    FETCH_FAMILY();
    QCOMPARE((store.*family.get)(key), QString());
    QVERIFY(!(store.*family.exists)(key));
    QCOMPARE(valuesInFile(store, family), QStringList{});
}

void TestStoreSettings::aNewKeyIsInsertedAndAnnounced()
{
    FETCH_FAMILY();
    RecordedChanges changes(store);
    QVERIFY((store.*family.set)(key, QStringLiteral("value")));
    QCOMPARE((store.*family.get)(key), QStringLiteral("value"));
    QVERIFY((store.*family.exists)(key));
    QCOMPARE(valuesInFile(store, family), QStringList{QStringLiteral("value")});
    QCOMPARE(changes.all(), QList<ChangeSet>({{.type = family.changeType}}));
}

void TestStoreSettings::aChangedValueIsUpdatedAndAnnounced()
{
    FETCH_FAMILY();
    QVERIFY((store.*family.set)(key, QStringLiteral("value")));
    RecordedChanges changes(store);
    QVERIFY((store.*family.set)(key, QStringLiteral("other")));
    QCOMPARE((store.*family.get)(key), QStringLiteral("other"));
    QCOMPARE(valuesInFile(store, family), QStringList{QStringLiteral("other")});
    QCOMPARE(changes.all(), QList<ChangeSet>({{.type = family.changeType}}));
}

void TestStoreSettings::anUnchangedValueSendsNothing()
{
    FETCH_FAMILY();
    QVERIFY((store.*family.set)(key, QStringLiteral("value")));
    RecordedChanges changes(store);
    (store.*family.set)(key, QStringLiteral("value"));
    QCOMPARE(changes.all(), QList<ChangeSet>{});
    QCOMPARE((store.*family.get)(key), QStringLiteral("value"));
}

void TestStoreSettings::anEmptyValueMakesTheKeyExist()
{
    FETCH_FAMILY();
    QVERIFY((store.*family.set)(key, QString()));
    QVERIFY((store.*family.exists)(key));
    QCOMPARE((store.*family.get)(key), QString());
    QCOMPARE(
        Snapshot(store)->count(
            QStringLiteral("%1 where item = 'some_key' and value = ''").arg(QLatin1StringView(family.table))),
        1);
}

void TestStoreSettings::everyKeyIsListedOnce()
{
    FETCH_FAMILY();
    QStringList expected = (store.*family.keys)();
    for (const char *name : {"zebra", "ant", "Monkey", "it's", ""}) {
        QVERIFY((store.*family.set)(QString::fromLatin1(name), QStringLiteral("1")));
        QVERIFY((store.*family.set)(QString::fromLatin1(name), QStringLiteral("2")));
        expected.append(QString::fromLatin1(name));
    }
    QStringList keys = (store.*family.keys)();
    keys.sort();
    expected.sort();
    QCOMPARE(keys, expected);
}

void TestStoreSettings::aValueWithQuotesIsStoredAsItIs()
{
    FETCH_FAMILY();
    const QString value = QStringLiteral("the 'value' isn''t \"one\"; drop table Nodes");
    QVERIFY((store.*family.set)(key, value));
    QVERIFY((store.*family.set)(QStringLiteral("it's a key"), value));
    QCOMPARE((store.*family.get)(key), value);
    QCOMPARE((store.*family.get)(QStringLiteral("it's a key")), value);
    QCOMPARE(valuesInFile(store, family), QStringList{value});
    RecordedChanges changes(store);
    (store.*family.set)(key, value);
    QCOMPARE(changes.all(), QList<ChangeSet>{});
}

void TestStoreSettings::tablesAreApart()
{
    NewStore store;
    for (const Family &family : families)
        QVERIFY((store.*family.set)(QStringLiteral("k"), QString::fromLatin1(family.table)));
    for (const Family &family : families)
        QCOMPARE((store.*family.get)(QStringLiteral("k")), QString::fromLatin1(family.table));
}

void TestStoreSettings::descriptionKeysCarryTheLineUnlessItIs0_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("item");
    QTest::newRow("line 0") << 0 << "OwnKey";
    QTest::newRow("line 1") << 1 << "OwnKey_1";
    QTest::newRow("line 31") << 31 << "OwnKey_31";
}

void TestStoreSettings::descriptionKeysCarryTheLineUnlessItIs0()
{
    QFETCH(int, line);
    QFETCH(QString, item);
    NewStore store;
    store.setDescriptionLine(quint8(line));
    QCOMPARE(store.descriptionLine(), quint8(line));
    QVERIFY(store.setDescriptionSetting(QStringLiteral("OwnKey"), QStringLiteral("v")));
    QCOMPARE(
        Snapshot(store)->column(QStringLiteral("select item from DescriptionSettings where value = 'v'")),
        QStringList{item});
    QVERIFY(store.descriptionSettingExists(QStringLiteral("OwnKey")));
    QCOMPARE(store.getDescriptionSetting(QStringLiteral("OwnKey")), QStringLiteral("v"));
    store.setDescriptionLine(2);
    QVERIFY(!store.descriptionSettingExists(QStringLiteral("OwnKey")));
    QCOMPARE(store.getDescriptionSetting(QStringLiteral("OwnKey")), QString());
}

void TestStoreSettings::descriptionChangesNameTheirLine()
{
    NewStore store;
    store.setDescriptionLine(4);
    RecordedChanges changes(store);
    QVERIFY(store.setDescriptionSetting(QStringLiteral("OwnKey"), QStringLiteral("v")));
    QCOMPARE(changes.all(),
             QList<ChangeSet>({{.type = ObjectDataBase::DescriptionSettingChanged, .line = 4}}));
}

void TestStoreSettings::j1939ChangesNameTheDescriptionLine()
{
    NewStore store;
    store.setDescriptionLine(4);
    RecordedChanges changes(store);
    QVERIFY(store.setJ1939Setting(QStringLiteral("ecuinstance"), QStringLiteral("3")));
    QCOMPARE(changes.all(), QList<ChangeSet>({{.type = ObjectDataBase::J1939SettingChanged, .line = 4}}));
    QCOMPARE(Snapshot(store)->column(QStringLiteral("select item from J1939Settings")),
             QStringList{QStringLiteral("ecuinstance")});
}

void TestStoreSettings::removeEnergyBusSettingRemovesOneKey()
{
    NewStore store;
    QVERIFY(store.setEnergyBusSetting(QStringLiteral("device_1"), QStringLiteral("bat")));
    QVERIFY(store.setEnergyBusSetting(QStringLiteral("device_2"), QStringLiteral("hmi")));
    QVERIFY(store.removeEnergyBusSetting(QStringLiteral("device_1")));
    QCOMPARE(store.getEnergyBusSettingKeys(), QStringList{QStringLiteral("device_2")});
}

void TestStoreSettings::replaceSettingsFromTakesGeneralAndDescriptionSettings()
{
    NewStore source;
    QVERIFY(source.setGeneralSetting(QStringLiteral("taken"), QStringLiteral("it's new")));
    source.setDescriptionLine(1);
    QVERIFY(source.setDescriptionSetting(QStringLiteral("VendorName"), QStringLiteral("O'Neill")));
    source.setDescriptionLine(0);
    NewStore store;
    QVERIFY(store.setGeneralSetting(QStringLiteral("dropped"), QStringLiteral("old")));
    QVERIFY(store.setDescriptionSetting(QStringLiteral("dropped"), QStringLiteral("old")));
    QVERIFY(store.setMiscSetting(QStringLiteral("kept"), QStringLiteral("own")));
    QVERIFY(store.setJ1939Setting(QStringLiteral("kept"), QStringLiteral("own")));
    QVERIFY(store.replaceSettingsFrom(source));
    const Snapshot expected(source);
    const Snapshot actual(store);
    for (const char *table : {"GeneralSettings", "DescriptionSettings"}) {
        const QString sql =
            QStringLiteral("select item, value from %1 order by item").arg(QLatin1StringView(table));
        QCOMPARE(actual->rows(sql), expected->rows(sql));
    }
    QCOMPARE(store.getMiscSetting(QStringLiteral("kept")), QStringLiteral("own"));
    QCOMPARE(store.getJ1939Setting(QStringLiteral("kept")), QStringLiteral("own"));
    // The new tables still know a key only once.
    QVERIFY(store.setGeneralSetting(QStringLiteral("taken"), QStringLiteral("again")));
    QVERIFY(!store.executeSql(QStringLiteral("insert into GeneralSettings values('taken','twice')")));
}

QTEST_GUILESS_MAIN(TestStoreSettings)
#include "tst_storesettings.moc"
