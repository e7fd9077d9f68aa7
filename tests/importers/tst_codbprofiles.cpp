#include "canopen/COHelper.h"
#include "importers/CODBImporter.h"
#include "importers/ImporterTest.h"
#include "importers/ProfileRows.h"

#include <span>

using namespace Qt::StringLiterals;
using ImporterTest::staging;

/** The profile databases that come with the program, as they stand in a project after the import. */
class TestCodbProfiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void theCommunicationProfileIsWhole();
    void theCommunicationProfileHasItsCopies_data();
    void theCommunicationProfileHasItsCopies();
    void communicationObjectsAreThoseOfCiA301_data();
    void communicationObjectsAreThoseOfCiA301();
    void communicationValuesAreThoseOfCiA301_data();
    void communicationValuesAreThoseOfCiA301();
    void furtherValuesAreThoseOfTheirStandards_data();
    void furtherValuesAreThoseOfTheirStandards();
    void allProfilesReadWithoutDoubt_data();
    void allProfilesReadWithoutDoubt();

private:
    static bool import(const QSharedPointer<ObjectDataBase> &store, const QString &profile, quint32 first,
                       quint32 last, bool copies);

    QSharedPointer<ObjectDataBase> m_plain; ///< v301.codb without copies
    QSharedPointer<ObjectDataBase> m_copied; ///< v301.codb with copies
    QMap<QString, QSharedPointer<ObjectDataBase>> m_further; ///< the other profiles with copies
};

constexpr quint32 firstCommunicationIndex = 0x1000;
constexpr quint32 lastCommunicationIndex = 0x1FFF;

bool TestCodbProfiles::import(const QSharedPointer<ObjectDataBase> &store, const QString &profile,
                              quint32 first, quint32 last, bool copies)
{
    CODBImporter importer;
    importer.setDatabase(store);
    importer.setRange(first, last);
    importer.setIncludeCopies(copies);
    return importer.setFile(QStringLiteral(PROFILE_FOLDER "/") + profile) && ImporterTest::run(importer);
}

void TestCodbProfiles::initTestCase()
{
    ImporterTest::prepareApplication();
    m_plain = ImporterTest::newStore();
    m_copied = ImporterTest::newStore();
    QVERIFY(import(m_plain, u"v301.codb"_s, firstCommunicationIndex, lastCommunicationIndex, false));
    QVERIFY(import(m_copied, u"v301.codb"_s, firstCommunicationIndex, lastCommunicationIndex, true));
    for (const QString &profile : {u"v302"_s, u"v401"_s, u"v402"_s}) {
        m_further[profile] = ImporterTest::newStore();
        QVERIFY(import(m_further[profile], profile + u".codb"_s, firstCommunicationIndex, 0xFFFF, true));
    }
}

void TestCodbProfiles::cleanupTestCase()
{
    m_further.clear();
    m_plain.reset();
    m_copied.reset();
}

void TestCodbProfiles::theCommunicationProfileIsWhole()
{
    // The file's object rows and sub-index rows.
    QCOMPARE(m_plain->getIndexList(staging).size(), 49);
    QCOMPARE(ImporterTest::rows(*m_plain, staging).size(), 356);
    // Its object rows and copy lines; all rows of each copied object.
    QCOMPARE(m_copied->getIndexList(staging).size(), 49 + 2383);
    QCOMPARE(ImporterTest::rows(*m_copied, staging).size(),
             356 + (126 + 127) * 4 + 2 * 507 * 6 + 2 * 511 * 65 + 2 * 47 * 17);
}

void TestCodbProfiles::theCommunicationProfileHasItsCopies_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<int>("subs");
    QTest::newRow("SDO servers") << 0x1201 << 0x127F << 4;
    QTest::newRow("SDO clients") << 0x1280 << 0x12FF << 4;
    QTest::newRow("RPDO communication") << 0x1400 << 0x15FF << 6;
    QTest::newRow("RPDO mapping") << 0x1600 << 0x17FF << 65;
    QTest::newRow("TPDO communication") << 0x1800 << 0x19FF << 6;
    QTest::newRow("TPDO mapping") << 0x1A00 << 0x1BFF << 65;
    QTest::newRow("scanner lists") << 0x1FA0 << 0x1FCF << 17;
    QTest::newRow("dispatching lists") << 0x1FD0 << 0x1FFF << 17;
}

void TestCodbProfiles::theCommunicationProfileHasItsCopies()
{
    QFETCH(int, first);
    QFETCH(int, last);
    QFETCH(int, subs);
    QCOMPARE(m_copied->getIndexList(staging, quint16(first), quint16(last)).size(), last - first + 1);
    for (int index = first; index <= last; ++index)
        QCOMPARE(m_copied->getSubIndexList(staging, quint16(index)).size(), subs);
}

void TestCodbProfiles::communicationObjectsAreThoseOfCiA301_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("category");
    QTest::newRow("device type") << 0x1000 << 7 << 1;
    QTest::newRow("error register") << 0x1001 << 7 << 1;
    QTest::newRow("pre-defined error field") << 0x1003 << 8 << 2;
    QTest::newRow("COB-ID SYNC") << 0x1005 << 7 << 3;
    QTest::newRow("store parameters") << 0x1010 << 8 << 2;
    QTest::newRow("consumer heartbeat time") << 0x1016 << 8 << 2;
    QTest::newRow("identity object") << 0x1018 << 9 << 1;
    QTest::newRow("OS command") << 0x1023 << 9 << 2;
    QTest::newRow("error behaviour") << 0x1029 << 8 << 2;
    QTest::newRow("SDO server") << 0x1200 << 9 << 2;
    QTest::newRow("SDO client") << 0x1280 << 9 << 3;
    QTest::newRow("RPDO communication") << 0x1400 << 9 << 3;
    QTest::newRow("TPDO mapping") << 0x1A00 << 9 << 3;
}

void TestCodbProfiles::communicationObjectsAreThoseOfCiA301()
{
    QFETCH(int, index);
    const auto object = ImporterTest::object(*m_plain, staging, quint16(index));
    QTEST(object.objecttype, "code");
    QTEST(object.category, "category");
}

void TestCodbProfiles::communicationValuesAreThoseOfCiA301_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("sub");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("access");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("mappable");
    for (const ProfileRow &row : communicationRows) {
        QTest::addRow("%04x:%02x", row.index, row.sub)
            << row.index << row.sub << QString::fromLatin1(row.type) << QString::fromLatin1(row.access)
            << QString::fromLatin1(row.value) << row.mappable;
    }
}

void TestCodbProfiles::communicationValuesAreThoseOfCiA301()
{
    QFETCH(int, index);
    QFETCH(int, sub);
    QFETCH(QString, type);
    const auto row = ImporterTest::sub(*m_plain, staging, quint16(index), quint8(sub));
    QCOMPARE(COHelper::index2DataTypeString(quint16(row.datatype)), type);
    QTEST(row.accesstype, "access");
    QTEST(row.defaultvalue, "value");
    QTEST(row.pdomapping.toBinary() == 1, "mappable");
    QCOMPARE(ImporterTest::sub(*m_copied, staging, quint16(index), quint8(sub)), row);
}

namespace {

void addRows(const QString &profile, std::span<const ProfileRow> rows)
{
    for (const ProfileRow &row : rows) {
        QTest::addRow("%s %04x:%02x", qPrintable(profile), row.index, row.sub)
            << profile << row.index << row.sub << QString::fromLatin1(row.type)
            << QString::fromLatin1(row.access) << QString::fromLatin1(row.value) << row.mappable;
    }
}

} // namespace

void TestCodbProfiles::furtherValuesAreThoseOfTheirStandards_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("sub");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("access");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("mappable");
    addRows(u"v302"_s, managerRows);
    addRows(u"v401"_s, ioRows);
    addRows(u"v402"_s, driveRows);
}

void TestCodbProfiles::furtherValuesAreThoseOfTheirStandards()
{
    QFETCH(QString, profile);
    QFETCH(int, index);
    QFETCH(int, sub);
    QFETCH(QString, type);
    const auto row = ImporterTest::sub(*m_further[profile], staging, quint16(index), quint8(sub));
    QCOMPARE(COHelper::index2DataTypeString(quint16(row.datatype)), type);
    QTEST(row.accesstype, "access");
    QTEST(row.defaultvalue, "value");
    QTEST(row.pdomapping.toBinary() == 1, "mappable");
}

void TestCodbProfiles::allProfilesReadWithoutDoubt_data()
{
    QTest::addColumn<quint32>("first");
    QTest::addColumn<int>("objects");
    QTest::newRow("v301.codb") << 0x1000U << 49 + 2383;
    QTest::newRow("v302.codb") << 0x1000U << 29;
    QTest::newRow("v401.codb") << 0x6000U << 79 + 77;
    QTest::newRow("v402.codb") << 0x6000U << 145 + 1015;
}

/** Error history, producer history and PDO mappings (CiA 301) count what is in them at the moment. */
static bool changesItsCount(quint16 index)
{
    return index == 0x1003 || (index >= 0x1600 && index <= 0x17FF) || (index >= 0x1A00 && index <= 0x1BFF);
}

// Every row is understood: a name, a type, and a count that fits the sub-indices.
void TestCodbProfiles::allProfilesReadWithoutDoubt()
{
    QFETCH(quint32, first);
    const auto store = ImporterTest::newStore();
    QVERIFY(import(store, QString::fromLatin1(QTest::currentDataTag()), first, 0xBFFF, true));
    const QList<quint16> indices = store->getIndexList(staging);
    QTEST(int(indices.size()), "objects");
    store->cacheAllSubs(staging, 0);
    for (const quint16 index : indices) {
        const auto object = ImporterTest::object(*store, staging, index);
        QVERIFY(!object.name.isEmpty() && object.category != CANopen::NoCategory);
        QVERIFY((object.datatype == 0) == (object.objecttype == CANopen::Record));
        const QList<quint8> subs = store->getSubIndexList(staging, index);
        QVERIFY(subs.size() > (object.objecttype == CANopen::Var ? 0 : 1));
        if (object.objecttype != CANopen::Var && !changesItsCount(index)) {
            const auto count = ImporterTest::sub(*store, staging, index, 0);
            QCOMPARE(count.defaultvalue.toUInt(nullptr, 0), uint(subs.last()));
            QCOMPARE(count.implementation == CANopen::ManagedConst, count.accesstype == u"const"_s);
        }
        for (const quint8 sub : subs) {
            const auto row = ImporterTest::sub(*store, staging, index, sub);
            QVERIFY2(row.datatype != 0 && !row.name.isEmpty(),
                     qPrintable(ImporterTest::subName({index, sub})));
        }
    }
}

QTEST_GUILESS_MAIN(TestCodbProfiles)
#include "tst_codbprofiles.moc"
