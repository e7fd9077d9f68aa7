#include "StoreTest.h"

using namespace StoreTest;

/** Settings that hold one value per line in a comma list. */
class TestStorePerLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void elevenKeysHoldAValuePerLineInThisOrder();
    void readingALineTakesItsElementOrTheLast_data();
    void readingALineTakesItsElementOrTheLast();
    void writingALineFillsTheListUpToIt_data();
    void writingALineFillsTheListUpToIt();
    void writingALineSendsOneNoticeAndAnUnchangedOneSendsNone();
    void aNewLineInheritsTheValueOfTheLineBeforeIt_data();
    void aNewLineInheritsTheValueOfTheLineBeforeIt();
    void removeLineSettingsMovesLaterElementsDown_data();
    void removeLineSettingsMovesLaterElementsDown();
    void removeLineSettingsRemovesTheLineTypeAlone();
    void removeLineSettingsRemovesTheDescriptionOfTheLine();
};

void TestStorePerLine::elevenKeysHoldAValuePerLineInThisOrder()
{
    QCOMPARE(
        ObjectDataBase::perLineSettingKeys(),
        QStringList({"nmtmaster", "co_node_id", "co_node_id_fct", "overwrite_predef", "receivebuffersize",
                     "transmitbuffersize", "isotp_client_con", "isotp_server_con", "uds_physical_request_id",
                     "uds_physical_response_id", "uds_functional_request_id"}));
}

void TestStorePerLine::readingALineTakesItsElementOrTheLast_data()
{
    QTest::addColumn<QString>("list");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("expected");
    QTest::newRow("5,7 line 0") << "5,7" << 0 << "5";
    QTest::newRow("5,7 line 1") << "5,7" << 1 << "7";
    QTest::newRow("5,7 line 2 is behind the end") << "5,7" << 2 << "7";
    QTest::newRow("1,2 line 5 is behind the end") << "1,2" << 5 << "2";
    QTest::newRow("one value") << "9" << 31 << "9";
    QTest::newRow("empty value") << "" << 0 << "";
    QTest::newRow("empty value, later line") << "" << 3 << "";
    QTest::newRow("largest line") << "1,2" << 255 << "2";
}

void TestStorePerLine::readingALineTakesItsElementOrTheLast()
{
    QFETCH(QString, list);
    QFETCH(int, line);
    NewStore store;
    QVERIFY(store.setGeneralSetting(QStringLiteral("co_node_id"), list));
    QTEST(store.getGeneralSettingForLine(QStringLiteral("co_node_id"), quint8(line)), "expected");
    QCOMPARE(store.getGeneralSetting(QStringLiteral("co_node_id")), list);
}

void TestStorePerLine::writingALineFillsTheListUpToIt_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("after");
    QTest::newRow("line 3 into one element") << "5" << 3 << "5, , ,new";
    QTest::newRow("line 0 of one") << "5" << 0 << "new";
    QTest::newRow("line 1 of three") << "5,6,7" << 1 << "5,new,7";
    QTest::newRow("line behind the last") << "5,6" << 2 << "5,6,new";
    QTest::newRow("absent key, line 0") << QString() << 0 << "new";
}

void TestStorePerLine::writingALineFillsTheListUpToIt()
{
    QFETCH(QString, before);
    QFETCH(int, line);
    NewStore store;
    const QString key = QStringLiteral("co_node_id");
    if (!before.isNull())
        QVERIFY(store.setGeneralSetting(key, before));
    QVERIFY(store.setGeneralSettingForLine(key, QStringLiteral("new"), quint8(line)));
    QTEST(store.getGeneralSetting(key), "after");
    QCOMPARE(store.getGeneralSettingForLine(key, quint8(line)), QStringLiteral("new"));
}

void TestStorePerLine::writingALineSendsOneNoticeAndAnUnchangedOneSendsNone()
{
    NewStore store;
    const QString key = QStringLiteral("co_node_id");
    RecordedChanges changes(store);
    QVERIFY(store.setGeneralSettingForLine(key, QStringLiteral("4"), 2));
    QCOMPARE(changes.all(), QList<ChangeSet>({{.type = ObjectDataBase::GeneralSettingChanged}}));
    changes.clear();
    store.setGeneralSettingForLine(key, QStringLiteral("4"), 2);
    QCOMPARE(changes.all(), QList<ChangeSet>{});
}

void TestStorePerLine::aNewLineInheritsTheValueOfTheLineBeforeIt_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("after");
    QTest::newRow("list shorter than the line") << "5" << 3 << "5, , ,5";
    QTest::newRow("last of several") << "1,2" << 4 << "1,2, , ,2";
    QTest::newRow("list that reaches the line") << "1,2,3,4" << 3 << "1,2,3,4";
    QTest::newRow("no value") << "" << 3 << "";
}

void TestStorePerLine::aNewLineInheritsTheValueOfTheLineBeforeIt()
{
    QFETCH(QString, before);
    QFETCH(int, line);
    QFETCH(QString, after);
    NewStore store;
    for (const QString &key : ObjectDataBase::perLineSettingKeys())
        QVERIFY(store.setGeneralSetting(key, before));
    QVERIFY(store.setGeneralSetting(QStringLiteral("user_defines"), QStringLiteral("5")));
    QVERIFY(store.addNode(quint8(line), {}));
    for (const QString &key : ObjectDataBase::perLineSettingKeys())
        QCOMPARE(store.getGeneralSetting(key), after);
    QCOMPARE(store.getGeneralSetting(QStringLiteral("user_defines")), QStringLiteral("5"));
}

void TestStorePerLine::removeLineSettingsMovesLaterElementsDown_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("after");
    QTest::newRow("3,4,5 without line 1") << "3,4,5" << 1 << "3,5";
    QTest::newRow("first line") << "3,4,5" << 0 << "4,5";
    QTest::newRow("last line") << "3,4,5" << 2 << "3,4";
    QTest::newRow("line behind the list") << "3,4,5" << 3 << "3,4,5";
    QTest::newRow("one value is not line 1's") << "3" << 1 << "3";
    QTest::newRow("blanks stay") << "3, , ,6" << 1 << "3, ,6";
}

void TestStorePerLine::removeLineSettingsMovesLaterElementsDown()
{
    QFETCH(QString, before);
    QFETCH(int, line);
    QFETCH(QString, after);
    NewStore store;
    // Any key loses an element, not just those that are known to be lists.
    for (const char *key : {"co_node_id", "some_other_key"})
        QVERIFY(store.setGeneralSetting(QString::fromLatin1(key), before));
    QVERIFY(store.setJ1939Setting(QStringLiteral("startaddress"), before));
    store.removeLineSettings(quint8(line));
    QCOMPARE(store.getGeneralSetting(QStringLiteral("co_node_id")), after);
    QCOMPARE(store.getGeneralSetting(QStringLiteral("some_other_key")), after);
    QCOMPARE(store.getJ1939Setting(QStringLiteral("startaddress")), after);
}

void TestStorePerLine::removeLineSettingsRemovesTheLineTypeAlone()
{
    NewStore store;
    for (const char *key : {"line0type", "line1type", "line2type", "line11type"})
        QVERIFY(store.setGeneralSetting(QString::fromLatin1(key), QStringLiteral("2")));
    store.removeLineSettings(1);
    QVERIFY(!store.generalSettingExists(QStringLiteral("line1type")));
    for (const char *key : {"line0type", "line2type", "line11type"})
        QCOMPARE(store.getGeneralSetting(QString::fromLatin1(key)), QStringLiteral("2"));
}

void TestStorePerLine::removeLineSettingsRemovesTheDescriptionOfTheLine()
{
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    QVERIFY(store.addNode(11, {}));
    const auto keysOf = [&store](const char *pattern) {
        return Snapshot(store)->count(
            QStringLiteral("DescriptionSettings where item glob '%1'").arg(QLatin1StringView(pattern)));
    };
    const int perLine = keysOf("*_1");
    QCOMPARE(perLine, keysOf("*_11"));
    QVERIFY(perLine >= 26);
    store.removeLineSettings(1);
    QCOMPARE(keysOf("*_1"), 0);
    QCOMPARE(keysOf("*_11"), perLine);
    QCOMPARE(keysOf("VendorName"), 1);
}

QTEST_GUILESS_MAIN(TestStorePerLine)
#include "tst_storeperline.moc"
