#include "StoreTest.h"

using namespace StoreTest;

/** The pool that holds each repeated text once. */
class TestStoreStrings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void aTextHasOneId_data();
    void aTextHasOneId();
    void theEmptyTextHasId1InANewProject();
    void aTextWithAQuoteGetsAFurtherRowPerCallAndTheLowestId();
    void aTextWithAQuoteIsStoredWithOneQuote();
    void anUnknownIdGivesTheEmptyText_data();
    void anUnknownIdGivesTheEmptyText();
    void aKnownTextIsReadFromTheCacheUntilTheStringsAreLoadedAgain();
    void loadStringsKnowsEveryTextOfTheFile();
    void anyIdOfAFileIsFound_data();
    void anyIdOfAFileIsFound();
    void removeUnusedStringsDeletesWhatNothingRefersTo();
    void aReferenceKeepsItsText_data();
    void aReferenceKeepsItsText();
    void aReferenceOfAnotherLineKeepsItsText();
    void textsAreUsableAfterTheCleanUp();
    void aSaveCleansThePool();
};

void TestStoreStrings::aTextHasOneId_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("word") << "Device type";
    QTest::newRow("empty") << "";
    QTest::newRow("blank") << " ";
    QTest::newRow("double quote") << "a \"b\"";
    QTest::newRow("backslash") << "C:\\temp\\";
    QTest::newRow("percent") << "100 %1 %2";
    QTest::newRow("4-byte UTF-8") << QString::fromUtf8("\xF0\x9F\x94\x8B battery");
}

void TestStoreStrings::aTextHasOneId()
{
    QFETCH(QString, text);
    NewStore store;
    const int id = store.addString(text);
    QVERIFY(id > 0);
    QCOMPARE(store.addString(text), id);
    QCOMPARE(store.getString(id), text);
    QVERIFY(store.addString(text + u'x') != id);
    store.loadStrings();
    QCOMPARE(store.addString(text), id);
    const Snapshot file(store);
    QCOMPARE(file->value(QStringLiteral("select string from Strings where id = %1").arg(id)).toString(),
             text);
}

// The templates hold the empty text as id 1; so does a project that starts from nothing.
void TestStoreStrings::theEmptyTextHasId1InANewProject()
{
    NewStore store;
    QCOMPARE(store.addString(QString()), 1);
    QCOMPARE(store.addString(QLatin1String("")), 1);
    QCOMPARE(Snapshot(store)->column(QStringLiteral("select id from Strings where string = ''")),
             QStringList{QStringLiteral("1")});
}

void TestStoreStrings::aTextWithAQuoteGetsAFurtherRowPerCallAndTheLowestId()
{
    NewStore store;
    const QString text = QStringLiteral("the node's 'id'");
    const int first = store.addString(text);
    for (int call = 2; call <= 4; ++call) {
        QCOMPARE(store.addString(text), first);
        QCOMPARE(Snapshot(store)->count(QStringLiteral("Strings where string = 'the node''s ''id'''")), call);
    }
    QCOMPARE(
        Snapshot(store)->value(QStringLiteral("select min(id) from Strings where string like 'the node%'")),
        QVariant(qlonglong(first)));
}

void TestStoreStrings::aTextWithAQuoteIsStoredWithOneQuote()
{
    NewStore store;
    const int id = store.addString(QStringLiteral("it's"));
    QCOMPARE(store.getString(id), QStringLiteral("it's"));
    store.loadStrings();
    QCOMPARE(store.getString(id), QStringLiteral("it's"));
    // Two quotes in a row are a different text and must not be taken for the escaped one.
    const int doubled = store.addString(QStringLiteral("it''s"));
    QVERIFY(doubled != id);
    QCOMPARE(store.getString(doubled), QStringLiteral("it''s"));
}

void TestStoreStrings::anUnknownIdGivesTheEmptyText_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("never given") << 4711;
    QTest::newRow("zero") << 0;
    QTest::newRow("the id of a failure") << -1;
}

void TestStoreStrings::anUnknownIdGivesTheEmptyText()
{
    QFETCH(int, id);
    NewStore store;
    store.addString(QStringLiteral("text"));
    QCOMPARE(store.getString(id), QString());
}

void TestStoreStrings::aKnownTextIsReadFromTheCacheUntilTheStringsAreLoadedAgain()
{
    NewStore store;
    const int id = store.addString(QStringLiteral("old"));
    store.loadStrings();
    QVERIFY(store.executeSql(QStringLiteral("update Strings set string = 'new' where id = %1").arg(id)));
    QCOMPARE(store.getString(id), QStringLiteral("old"));
    store.loadStrings();
    QCOMPARE(store.getString(id), QStringLiteral("new"));
}

void TestStoreStrings::loadStringsKnowsEveryTextOfTheFile()
{
    NewStore store;
    QVERIFY(store.executeSql(QStringLiteral("insert into Strings values(500,'five hundred')")));
    store.loadStrings();
    QCOMPARE(store.addString(QStringLiteral("five hundred")), 500);
    QCOMPARE(store.getString(500), QStringLiteral("five hundred"));
}

void TestStoreStrings::anyIdOfAFileIsFound_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("behind a gap") << 5000;
    QTest::newRow("0") << 0;
    QTest::newRow("negative") << -7;
    QTest::newRow("last of a million") << 0xFFFFF;
    QTest::newRow("behind a million") << 0x100000;
    QTest::newRow("largest") << 0x7FFFFFFF;
    QTest::newRow("smallest") << -0x7FFFFFFF - 1;
}

void TestStoreStrings::anyIdOfAFileIsFound()
{
    QFETCH(int, id);
    NewStore store;
    QVERIFY(store.executeSql(QStringLiteral("insert into Strings values(%1,'far away')").arg(id)));
    QCOMPARE(store.getString(id), QStringLiteral("far away"));
    QCOMPARE(store.getString(id), QStringLiteral("far away"));
    store.loadStrings();
    QCOMPARE(store.getString(id), QStringLiteral("far away"));
    // A negative number tells of a failure: no text is given one, whatever the file holds.
    if (id >= 0)
        QCOMPARE(store.addString(QStringLiteral("far away")), id);
    for (const int other : {id ^ 1, id ^ 0x200})
        QCOMPARE(store.getString(other), QString());
}

void TestStoreStrings::removeUnusedStringsDeletesWhatNothingRefersTo()
{
    NewStore store;
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex(QStringLiteral("kept"))));
    const int unused = store.addString(QStringLiteral("unused"));
    store.removeUnusedStrings();
    QCOMPARE(Snapshot(store)->count(QStringLiteral("Strings where string = 'unused'")), 0);
    QCOMPARE(store.getString(unused), QString());
    QCOMPARE(store.getIndexName(0, 0x2000), QStringLiteral("kept"));
}

void TestStoreStrings::aReferenceKeepsItsText_data()
{
    QTest::addColumn<QString>("statement");
    const auto row = [](const char *table, const char *column, const char *others, const char *values) {
        QTest::addRow("%s.%s", table, column)
            << QStringLiteral("insert into %1(%2,%3) values(%4,%5)")
                   .arg(QLatin1StringView(table), QLatin1StringView(others), QLatin1StringView(column),
                        QLatin1StringView(values), QStringLiteral("%1"));
    };
    for (const char *column : {"name", "description", "device_class"})
        row("Objects0", column, "objectindex,datatype,objecttype", "1,1,7");
    for (const char *column : {"name", "denotation", "description"})
        row("SubObjects0", column, "objectindex,subindex,datatype,accesstype,implementation", "1,1,1,'ro',0");
    row("Signals", "name", "sigid,datatype,accesstype", "1,1,'ro'");
    for (const char *column : {"name", "desc"}) {
        row("PGNs0", column, "number,direction", "1,85");
        row("CANIDs0", column, "id,direction", "1,85");
        row("SPNs0", column, "pgnnumber,spnnumber,direction", "1,1,85");
        row("DataElements0", column, "canid,number,direction", "1,1,85");
    }
}

void TestStoreStrings::aReferenceKeepsItsText()
{
    QFETCH(QString, statement);
    NewStore store;
    const int id = store.addString(QStringLiteral("referred to"));
    QVERIFY2(store.executeSql(statement.arg(id)), qPrintable(store.sqlResult().join(u' ')));
    store.removeUnusedStrings();
    QCOMPARE(Snapshot(store)->count(QStringLiteral("Strings where id = %1").arg(id)), 1);
    QCOMPARE(store.getString(id), QStringLiteral("referred to"));
}

void TestStoreStrings::aReferenceOfAnotherLineKeepsItsText()
{
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    QVERIFY(store.addNode(31, {}));
    QVERIFY(store.addSubIndex(1, 0x2000, 0, sampleSub(QStringLiteral("text of line 1"))));
    QVERIFY(store.addPGN(31, 100, samplePgn(119, QStringLiteral("text of line 31"))));
    store.removeUnusedStrings();
    QCOMPARE(store.getSubIndexName(1, 0x2000, 0), QStringLiteral("text of line 1"));
    QCOMPARE(store.getPGNName(31, 100, 119), QStringLiteral("text of line 31"));
}

void TestStoreStrings::textsAreUsableAfterTheCleanUp()
{
    NewStore store;
    store.addString(QStringLiteral("gone"));
    store.removeUnusedStrings();
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex(QStringLiteral("gone"))));
    QVERIFY(store.addIndex(0, 0x2001, sampleIndex(QStringLiteral("fresh"))));
    store.loadStrings();
    QCOMPARE(store.getIndexName(0, 0x2000), QStringLiteral("gone"));
    QCOMPARE(store.getIndexName(0, 0x2001), QStringLiteral("fresh"));
}

void TestStoreStrings::aSaveCleansThePool()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("p.vexp"));
    NewStore store;
    store.addString(QStringLiteral("unused"));
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex(QStringLiteral("it's used"))));
    QVERIFY(store.addIndex(0, 0x2001, sampleIndex(QStringLiteral("it's used"))));
    QVERIFY(store.saveProject(path));
    const DatabaseFile file(path);
    QCOMPARE(file.count(QStringLiteral("Strings where string = 'unused'")), 0);
    QCOMPARE(file.count(QStringLiteral("Strings where string = 'it''s used'")), 1);
}

QTEST_GUILESS_MAIN(TestStoreStrings)
#include "tst_storestrings.moc"
