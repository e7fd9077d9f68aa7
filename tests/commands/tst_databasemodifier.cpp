#include "importers/ImporterTest.h"
#include "store/commands/DatabaseModifier.h"

using namespace Qt::StringLiterals;

/** Modifier files: a text file in, settings of the project out. */
class TestDatabaseModifier : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { ImporterTest::prepareApplication(); }
    void init() { m_store = ImporterTest::newStore(); }
    void cleanup() { m_store.reset(); }
    void linesSetSettings_data();
    void linesSetSettings();
    void otherLinesAreSkipped_data();
    void otherLinesAreSkipped();
    void lineEndsAndEncodingsDoNotMatter_data();
    void lineEndsAndEncodingsDoNotMatter();
    void everyLineIsLogged();
    void theWriteLockIsReleased();
    void aRefusedSettingStopsTheFile_data();
    void aRefusedSettingStopsTheFile();
    void aFileThatCannotBeReadFails_data();
    void aFileThatCannotBeReadFails();
    void anErrorDoesNotOutliveTheNextRun();
    void aLongFileIsNoTrouble();

private:
    bool apply(const QByteArray &content);

    QTemporaryDir m_folder;
    QSharedPointer<ObjectDataBase> m_store;
    QString m_error;
};

bool TestDatabaseModifier::apply(const QByteArray &content)
{
    const QString path = m_folder.filePath(u"my settings.txt"_s);
    DatabaseModifier modifier(m_store);
    modifier.setFile(path);
    const bool success = ImporterTest::write(path, content) && modifier.applyModifierFile();
    m_error = modifier.errorString();
    return success;
}

void TestDatabaseModifier::linesSetSettings_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::newRow("known key") << u"General"_s << u"co_node_id"_s << u"5"_s;
    QTest::newRow("new key") << u"General"_s << u"no_such_key_before"_s << u"a value with blanks"_s;
    QTest::newRow("J1939") << u"J1939"_s << u"manufacturercode"_s << u"0x4B7"_s;
    QTest::newRow("empty value") << u"General"_s << u"emptied"_s << QString();
    QTest::newRow("letters and quotes") << u"General"_s << u"umlaut"_s << u"Größe 'µ'"_s;
}

void TestDatabaseModifier::linesSetSettings()
{
    QFETCH(QString, table);
    QFETCH(QString, key);
    QVERIFY(m_store->setGeneralSetting(u"emptied"_s, u"full"_s));
    DatabaseModifier modifier(m_store);
    modifier.setFile(QStringLiteral(COMMAND_DATA "/settings.dbmod"));
    QVERIFY(modifier.applyModifierFile());
    QCOMPARE(modifier.errorString(), QString());
    QTEST(table == u"General" ? m_store->getGeneralSetting(key) : m_store->getJ1939Setting(key), "value");
}

void TestDatabaseModifier::otherLinesAreSkipped_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("unknown table") << QByteArray("Foo:bar:1");
    QTest::newRow("value with a colon") << QByteArray("GeneralSettings:bar:C:/path");
    QTest::newRow("two fields") << QByteArray("GeneralSettings:bar");
    QTest::newRow("one field") << QByteArray("GeneralSettings");
    QTest::newRow("table in other letters") << QByteArray("generalsettings:bar:1");
    QTest::newRow("comment") << QByteArray("#GeneralSettings:bar:1");
    QTest::newRow("blank before the comment mark") << QByteArray(" #GeneralSettings:bar:1");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("blanks") << QByteArray("   ");
    QTest::newRow("only colons") << QByteArray("::");
}

void TestDatabaseModifier::otherLinesAreSkipped()
{
    QFETCH(QByteArray, line);
    const QStringList keys = m_store->getGeneralSettingKeys();
    QVERIFY(apply(line + "\nJ1939Settings:behind:1\n"));
    QCOMPARE(m_store->getGeneralSettingKeys(), keys);
    QCOMPARE(m_store->getJ1939Setting(u"behind"_s), u"1"_s);
}

void TestDatabaseModifier::lineEndsAndEncodingsDoNotMatter_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("LF") << QByteArray("GeneralSettings:a:1\nGeneralSettings:b:Gr\xC3\xB6\xC3\x9F"
                                      "e\n");
    QTest::newRow("CR LF") << QByteArray("GeneralSettings:a:1\r\nGeneralSettings:b:Gr\xC3\xB6\xC3\x9F"
                                         "e\r\n");
    QTest::newRow("CR") << QByteArray("GeneralSettings:a:1\rGeneralSettings:b:Gr\xC3\xB6\xC3\x9F"
                                      "e");
    QTest::newRow("no last end") << QByteArray("GeneralSettings:a:1\nGeneralSettings:b:Gr\xC3\xB6\xC3\x9F"
                                               "e");
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF"
                                                   "GeneralSettings:a:1\nGeneralSettings:b:Gr\xC3\xB6\xC3\x9F"
                                                   "e");
    QTest::newRow("Windows-1252") << QByteArray("GeneralSettings:a:1\nGeneralSettings:b:Gr\xF6\xDF"
                                                "e\n");
}

void TestDatabaseModifier::lineEndsAndEncodingsDoNotMatter()
{
    QFETCH(QByteArray, content);
    QVERIFY(apply(content));
    QCOMPARE(m_store->getGeneralSetting(u"a"_s), u"1"_s);
    QCOMPARE(m_store->getGeneralSetting(u"b"_s), u"Größe"_s);
}

void TestDatabaseModifier::everyLineIsLogged()
{
    const ImporterTest::DebugLines lines;
    QVERIFY(apply("# note\nFoo:bar:1\nGeneralSettings:a:1\n"));
    QCOMPARE(ImporterTest::DebugLines::all(),
             (QStringList{u"Applying "_s + m_folder.filePath(u"my settings.txt"_s), u"# note"_s,
                          u"Foo:bar:1"_s, u"GeneralSettings:a:1"_s}));
}

void TestDatabaseModifier::theWriteLockIsReleased()
{
    m_store->setWriteLock(true);
    QVERIFY(apply("GeneralSettings:a:1\n"));
    QVERIFY(!m_store->isWriteLocked());
    QCOMPARE(m_store->getGeneralSetting(u"a"_s), u"1"_s);
}

void TestDatabaseModifier::aRefusedSettingStopsTheFile_data()
{
    QTest::addColumn<QString>("table");
    QTest::newRow("general") << u"GeneralSettings"_s;
    QTest::newRow("J1939") << u"J1939Settings"_s;
}

void TestDatabaseModifier::aRefusedSettingStopsTheFile()
{
    QFETCH(QString, table);
    QVERIFY(m_store->executeSql(u"drop table "_s + table));
    const QString other = table == u"GeneralSettings" ? u"J1939Settings"_s : u"GeneralSettings"_s;
    const QString content = u"%2:before:1\n%1:key:1\n%2:behind:1\n"_s.arg(table, other);
    QVERIFY(!apply(content.toUtf8()));
    QCOMPARE(m_error, table + u":key:1"_s);
    const auto setting = [&](const QString &key) {
        return table == u"GeneralSettings" ? m_store->getJ1939Setting(key) : m_store->getGeneralSetting(key);
    };
    QCOMPARE(setting(u"before"_s), u"1"_s);
    QCOMPARE(setting(u"behind"_s), QString());
}

void TestDatabaseModifier::aFileThatCannotBeReadFails_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("missing") << m_folder.filePath(u"no such file"_s);
    QTest::newRow("folder") << m_folder.path();
    QTest::newRow("empty") << QString();
}

void TestDatabaseModifier::aFileThatCannotBeReadFails()
{
    QFETCH(QString, path);
    DatabaseModifier modifier(m_store);
    modifier.setFile(path);
    QVERIFY(!modifier.applyModifierFile());
    QCOMPARE(modifier.errorString(), u"File %1 is not readable."_s.arg(path));
    DatabaseModifier withoutStore(nullptr);
    QVERIFY(!withoutStore.applyModifierFile());
    QVERIFY(!withoutStore.errorString().isEmpty());
}

void TestDatabaseModifier::anErrorDoesNotOutliveTheNextRun()
{
    DatabaseModifier modifier(m_store);
    QVERIFY(!modifier.applyModifierFile());
    modifier.setFile(QStringLiteral(COMMAND_DATA "/settings.dbmod"));
    QVERIFY(modifier.applyModifierFile());
    QCOMPARE(modifier.errorString(), QString());
}

void TestDatabaseModifier::aLongFileIsNoTrouble()
{
    const ImporterTest::DebugLines quiet;
    QVERIFY(apply(QByteArray(10'000'000, 'x') + "\n" + QByteArray("Foo:bar:1\n").repeated(20'000)
                  + "GeneralSettings:last:1"));
    QCOMPARE(m_store->getGeneralSetting(u"last"_s), u"1"_s);
}

QTEST_GUILESS_MAIN(TestDatabaseModifier)
#include "tst_databasemodifier.moc"
