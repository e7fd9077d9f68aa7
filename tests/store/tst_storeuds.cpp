#include "StoreTest.h"

using namespace StoreTest;

/** Settings of the diagnostic services (ISO 14229-1) per line. */
class TestStoreUds : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void aNewLineHasItsServicesActiveInTableOrder();
    void oneColumnIsWrittenAndTheOthersStay_data() { columnRows(); }
    void oneColumnIsWrittenAndTheOthersStay();
    void aServiceWithoutRowGetsOneWithEmptyOtherColumns_data() { columnRows(); }
    void aServiceWithoutRowGetsOneWithEmptyOtherColumns();
    void anInactiveServiceIsNotListed();
    void aMissingServiceIsInactiveAndEmpty();
    void anyByteMayBeAService_data();
    void anyByteMayBeAService();
    void linesAreApart();

private:
    static void columnRows();
};

namespace {

bool setColumn(ObjectDataBase &store, const QString &column, UDS::SID sid)
{
    if (column == QStringLiteral("active"))
        return store.setUDSServiceActive(0, sid, true);
    if (column == QStringLiteral("sessions"))
        return store.setUDSServiceSessions(0, sid, QStringLiteral("4,'9'"));
    if (column == QStringLiteral("userlevels"))
        return store.setUDSServiceUserLevels(0, sid, QStringLiteral("1,2"));
    return store.setUDSAuthentication(0, sid, QStringLiteral("role"));
}

QVariantList row(ObjectDataBase &store, UDS::SID sid)
{
    return Snapshot(store)
        ->rows(QStringLiteral(
                   "select active, sessions, userlevels, authentication from UDSSettings0 where sid = %1")
                   .arg(int(sid)))
        .value(0);
}

} // namespace

void TestStoreUds::columnRows()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<int>("position");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("active") << "active" << 0 << QVariant(1ll);
    QTest::newRow("sessions") << "sessions" << 1 << QVariant(QStringLiteral("4,'9'"));
    QTest::newRow("userlevels") << "userlevels" << 2 << QVariant(QStringLiteral("1,2"));
    QTest::newRow("authentication") << "authentication" << 3 << QVariant(QStringLiteral("role"));
}

void TestStoreUds::aNewLineHasItsServicesActiveInTableOrder()
{
    NewStore store;
    const QList<int> numbers{16, 17, 62, 34, 46, 35, 61, 20, 25, 49, 39, 40, 47, 52, 53, 54, 55};
    QList<UDS::SID> expected;
    for (const int number : numbers)
        expected.append(UDS::SID(number));
    QCOMPARE(store.getUDSActiveServices(0), expected);
    QCOMPARE(store.getUDSServiceSessions(0, UDS::RoutineControl), QStringLiteral("1,2,3,4"));
    QCOMPARE(store.getUDSServiceSessions(0, UDS::SecurityAccess), QStringLiteral("2,3,4"));
}

void TestStoreUds::oneColumnIsWrittenAndTheOthersStay()
{
    QFETCH(QString, column);
    QFETCH(int, position);
    QFETCH(QVariant, value);
    NewStore store;
    QVERIFY(store.executeSql(QStringLiteral(
        "update UDSSettings0 set active = 0, sessions = 's', userlevels = 'u', authentication = 'a'")));
    QVERIFY(setColumn(store, column, UDS::ECUReset));
    QVariantList expected{0ll, "s", "u", "a"};
    const QVariantList others = expected;
    expected[position] = value;
    QCOMPARE(row(store, UDS::ECUReset), expected);
    QCOMPARE(row(store, UDS::TesterPresent), others);
    QCOMPARE(store.isUDSServiceActive(0, UDS::ECUReset), expected.at(0).toBool());
    QCOMPARE(store.getUDSServiceSessions(0, UDS::ECUReset), expected.at(1).toString());
    QCOMPARE(store.getUDSServiceUserLevels(0, UDS::ECUReset), expected.at(2).toString());
    QCOMPARE(store.getUDSAuthentication(0, UDS::ECUReset), expected.at(3).toString());
    QCOMPARE(Snapshot(store)->count(QStringLiteral("UDSSettings0")), 17);
}

void TestStoreUds::aServiceWithoutRowGetsOneWithEmptyOtherColumns()
{
    QFETCH(QString, column);
    QFETCH(int, position);
    QFETCH(QVariant, value);
    NewStore store;
    QVERIFY(setColumn(store, column, UDS::LinkControl));
    QVariantList expected{0ll, "", "", ""};
    expected[position] = value;
    QCOMPARE(row(store, UDS::LinkControl), expected);
}

void TestStoreUds::anInactiveServiceIsNotListed()
{
    NewStore store;
    QVERIFY(store.setUDSServiceActive(0, UDS::ECUReset, false));
    QVERIFY(!store.isUDSServiceActive(0, UDS::ECUReset));
    QVERIFY(!store.getUDSActiveServices(0).contains(UDS::ECUReset));
    QCOMPARE(store.getUDSActiveServices(0).size(), 16);
}

void TestStoreUds::aMissingServiceIsInactiveAndEmpty()
{
    NewStore store;
    QVERIFY(!store.isUDSServiceActive(0, UDS::LinkControl));
    QCOMPARE(store.getUDSServiceSessions(0, UDS::LinkControl), QString());
    QCOMPARE(store.getUDSServiceUserLevels(0, UDS::LinkControl), QString());
    QCOMPARE(store.getUDSAuthentication(0, UDS::LinkControl), QString());
}

void TestStoreUds::anyByteMayBeAService_data()
{
    QTest::addColumn<int>("sid");
    QTest::newRow("0") << 0;
    QTest::newRow("255") << 255;
    QTest::newRow("a manufacturer's") << 0xBA;
}

void TestStoreUds::anyByteMayBeAService()
{
    QFETCH(int, sid);
    NewStore store;
    QVERIFY(store.setUDSServiceActive(0, UDS::SID(sid), true));
    QVERIFY(store.isUDSServiceActive(0, UDS::SID(sid)));
    QCOMPARE(int(store.getUDSActiveServices(0).constLast()), sid);
}

void TestStoreUds::linesAreApart()
{
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    QVERIFY(store.setUDSServiceActive(1, UDS::ECUReset, false));
    QVERIFY(store.isUDSServiceActive(0, UDS::ECUReset));
    QVERIFY(!store.isUDSServiceActive(1, UDS::ECUReset));
}

QTEST_GUILESS_MAIN(TestStoreUds)
#include "tst_storeuds.moc"
