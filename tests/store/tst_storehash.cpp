#include "StoreTest.h"

#include <QCryptographicHash>

using namespace StoreTest;

/** FileHash: a checksum over the content that another program can work out as well. */
class TestStoreHash : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void theHashOfASavedFileIsTheIndependentOne_data();
    void theHashOfASavedFileIsTheIndependentOne();
    void theHashIgnoresItselfAndTheTamperLog();
    void theHashSeesEveryOtherChange_data();
    void theHashSeesEveryOtherChange();
    void anUntouchedFileOpensWithoutNotice();
    void aTouchedFileIsNoticedAndTheLogKeptOverASave();
    void aFileWithoutHashOpensWithoutNotice();

private:
    static QString independentHash(const DatabaseFile &file);
};

QString TestStoreHash::independentHash(const DatabaseFile &file)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const QString &table :
         file.column(QStringLiteral("SELECT name FROM sqlite_master WHERE type='table' ORDER BY name"))) {
        hash.addData(table.toUtf8());
        hash.addData("\n");
        const QString filter = table == QStringLiteral("MiscSettings")
            ? QStringLiteral("WHERE item NOT IN ('FileHash','TamperLog') ")
            : QString();
        for (const QVariantList &row :
             file.rows(QStringLiteral("SELECT * FROM \"%1\" %2ORDER BY rowid").arg(table, filter))) {
            for (const QVariant &value : row) {
                hash.addData(value.toString().toUtf8());
                hash.addData("|");
            }
            hash.addData("\n");
        }
    }
    return QString::fromLatin1(hash.result().toHex());
}

void TestStoreHash::theHashOfASavedFileIsTheIndependentOne_data()
{
    QTest::addColumn<QString>("statement");
    QTest::newRow("a new project") << "select 1";
    QTest::newRow("null") << "update Nodes set name = NULL";
    QTest::newRow("real numbers") << "update Nodes set lssslave = 1.5, multilinedata = -0.1";
    QTest::newRow("large and small reals") << "update Nodes set lssslave = 1e300, multilinedata = 1.0e-7";
    QTest::newRow("a real without fraction") << "update Nodes set lssslave = 4.0e17";
    QTest::newRow("large integers") << "update Nodes set lssslave = 9223372036854775807, multilinedata = -1";
    QTest::newRow("text beyond ASCII")
        << QString::fromUtf8("update Nodes set name = 'Größe \xF0\x9F\x94\x8B'");
    QTest::newRow("byte order mark") << QString::fromUtf8("update Nodes set name = '\xEF\xBB\xBFname'");
    QTest::newRow("separators inside a text") << "update Nodes set name = 'a|b' || char(10) || 'c'";
    QTest::newRow("embedded NUL") << "update Nodes set name = 'a' || char(0) || 'b'";
    QTest::newRow("blob") << "update Objects0 set metadata = x'000000010000000200410000000200FF'";
    QTest::newRow("blob that is no UTF-8") << "update Objects0 set metadata = x'FFFE80C1'";
    QTest::newRow("text that is no UTF-8") << "update Nodes set name = cast(x'41FF80' as text)";
    QTest::newRow("a table of another tool") << "create table \"odd \"\"name\" (a)";
}

void TestStoreHash::theHashOfASavedFileIsTheIndependentOne()
{
    QFETCH(QString, statement);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("p.vexp"));
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    ObjectDataBase::INDEX_DATA_T index = sampleIndex();
    index.metadata.insert(QStringLiteral("k"), QStringLiteral("v"));
    QVERIFY(store.addIndex(0, 0x1000, index));
    QVERIFY(store.addSubIndex(0, 0x1000, 0, sampleSub()));
    QVERIFY(store.addPGN(1, 61444, samplePgn(85)));
    QVERIFY2(store.executeSql(statement), qPrintable(store.sqlResult().join(u' ')));
    QVERIFY(store.saveProject(path));
    const DatabaseFile file(path);
    const QString written =
        file.value(QStringLiteral("select value from MiscSettings where item = 'FileHash'")).toString();
    QCOMPARE(written.size(), 64);
    // A name with a quote cannot be read by the statement that the hash is defined with.
    if (!statement.contains(QStringLiteral("odd")))
        QCOMPARE(written, independentHash(file));
    QCOMPARE(store.contentHash(), written);
    ObjectDataBase opened;
    QVERIFY(opened.openDataBase(path));
    QVERIFY(!opened.isExternallyModified());
}

void TestStoreHash::theHashIgnoresItselfAndTheTamperLog()
{
    NewStore store;
    const QString before = store.contentHash();
    QVERIFY(store.setMiscSetting(QStringLiteral("FileHash"), QStringLiteral("0000")));
    QVERIFY(store.setMiscSetting(QStringLiteral("TamperLog"), QStringLiteral("2026-01-01T00:00:00")));
    QCOMPARE(store.contentHash(), before);
    QVERIFY(
        store.setMiscSetting(QStringLiteral("TamperLog"), QStringLiteral("2026-01-01T00:00:00;2026-01-02")));
    QCOMPARE(store.contentHash(), before);
}

void TestStoreHash::theHashSeesEveryOtherChange_data()
{
    QTest::addColumn<QString>("statement");
    for (const char *statement :
         {"insert into MiscSettings values('filehash','other key')",
          "update MiscSettings set value = '108' where item = 'DatabaseVersion'",
          "insert into GeneralSettings values('FileHash','same key, other table')", "create table Empty (a)",
          "insert into Strings values(NULL,'text')", "update UDSSettings0 set active = 0 where sid = 55",
          "delete from DescriptionSettings where item = 'Comment'", "update Nodes set name = ' '"})
        QTest::newRow(statement) << QString::fromLatin1(statement);
}

void TestStoreHash::theHashSeesEveryOtherChange()
{
    QFETCH(QString, statement);
    NewStore store;
    const QString before = store.contentHash();
    QVERIFY(store.executeSql(statement));
    QVERIFY(store.contentHash() != before);
}

void TestStoreHash::anUntouchedFileOpensWithoutNotice()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("p.vexp"));
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    QVERIFY(store.saveProject(path));
    for (int round = 0; round < 2; ++round) {
        ObjectDataBase opened;
        QVERIFY(opened.openDataBase(path));
        QVERIFY(!opened.isExternallyModified());
        QVERIFY(!opened.miscSettingExists(QStringLiteral("TamperLog")));
        QVERIFY(opened.saveProject(path));
    }
}

void TestStoreHash::aTouchedFileIsNoticedAndTheLogKeptOverASave()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("p.vexp"));
    NewStore().saveProject(path);
    QVERIFY(DatabaseFile(path).execute(QStringLiteral("insert into GeneralSettings values('by hand','1')")));
    ObjectDataBase store;
    QVERIFY(store.openDataBase(path));
    QVERIFY(store.isExternallyModified());
    const QString log = store.getMiscSetting(QStringLiteral("TamperLog"));
    QVERIFY2(QDateTime::fromString(log, Qt::ISODate).isValid(), qPrintable(log));
    QVERIFY(store.saveProject(path));
    QVERIFY(store.openDataBase(path));
    QVERIFY(!store.isExternallyModified());
    QCOMPARE(store.getMiscSetting(QStringLiteral("TamperLog")), log);
    store.closeDataBase();
    QVERIFY(DatabaseFile(path).execute(QStringLiteral("delete from GeneralSettings where item = 'by hand'")));
    QVERIFY(store.openDataBase(path));
    QVERIFY(store.isExternallyModified());
    const QStringList entries = store.getMiscSetting(QStringLiteral("TamperLog")).split(u';');
    QCOMPARE(entries.size(), 2);
    QCOMPARE(entries.constFirst(), log);
}

void TestStoreHash::aFileWithoutHashOpensWithoutNotice()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("p.vexp"));
    NewStore().saveProject(path);
    QVERIFY(DatabaseFile(path).execute(QStringLiteral("delete from MiscSettings where item = 'FileHash'")));
    ObjectDataBase store;
    QVERIFY(store.openDataBase(path));
    QVERIFY(!store.isExternallyModified());
    QVERIFY(!store.miscSettingExists(QStringLiteral("TamperLog")));
}

QTEST_GUILESS_MAIN(TestStoreHash)
#include "tst_storehash.moc"
