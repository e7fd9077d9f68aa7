#include "StoreTest.h"

#include <QFileInfo>
#include <QSignalSpy>

using namespace StoreTest;

/** How a project file becomes a working database and goes back. */
class TestStoreProject : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void twoSavesLeaveTheFormerFileAsBackup();
    void anOpenNeverWritesTheFile();
    void aReadOnlyFileOpens();
    void anEmptyPathGivesFalseAndChangesNothing();
    void aFileThatIsNoProjectGivesFalse_data();
    void aFileThatIsNoProjectGivesFalse();
    void aSaveWithoutPathGoesToTheProjectsOwn();
    void aSaveWritesToolAndVersion();
    void aFailedSaveLeavesTheFormerContent();
    void aTemplateHasNothingChangedByTheUser();
    void aFileOfAnotherEditionIsRefused_data();
    void aFileOfAnotherEditionIsRefused();
    void anOldProjectIsMigrated();
    void listsAreCutBehindTheHighestLine();
    void theEmptyTextOfATemplateKeepsItsId1();
    void workingFilesGoWithTheStore();
};

namespace {

QString generalSetting(const QString &path, const char *key)
{
    return DatabaseFile(path)
        .value(
            QStringLiteral("select value from GeneralSettings where item = '%1'").arg(QLatin1StringView(key)))
        .toString();
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<no file>");
}

} // namespace

void TestStoreProject::twoSavesLeaveTheFormerFileAsBackup()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("p.vexp"));
    NewStore store;
    for (const char *state : {"first", "second", "third"}) {
        QVERIFY(store.setGeneralSetting(QStringLiteral("state"), QString::fromLatin1(state)));
        QVERIFY(store.saveProject(path));
        QCOMPARE(generalSetting(path, "state"), QString::fromLatin1(state));
    }
    QCOMPARE(generalSetting(path + QStringLiteral(".bak"), "state"), QStringLiteral("second"));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList({"p.vexp", "p.vexp.bak"}));
}

void TestStoreProject::anOpenNeverWritesTheFile()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("p.vexp"));
    NewStore().saveProject(path);
    const QByteArray before = contentOf(path);
    ObjectDataBase store;
    QVERIFY(store.openDataBase(path));
    QCOMPARE(store.projectPath(), path);
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
    QVERIFY(contentOf(path) == before);
}

void TestStoreProject::aReadOnlyFileOpens()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("p.vexp"));
    NewStore().saveProject(path);
    QVERIFY(QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::ReadUser));
    ObjectDataBase store;
    QVERIFY2(store.openDataBase(path), qPrintable(store.lastError()));
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
}

void TestStoreProject::anEmptyPathGivesFalseAndChangesNothing()
{
    NewStore store;
    QVERIFY(store.addIndex(0, 0x2000, sampleIndex()));
    const QString before = store.contentHash();
    RecordedChanges changes(store);
    QVERIFY(!store.openDataBase(QString()));
    QCOMPARE(changes.all(), QList<ChangeSet>{});
    QVERIFY(store.isOpen());
    QCOMPARE(store.contentHash(), before);
}

void TestStoreProject::aFileThatIsNoProjectGivesFalse_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("text") << QByteArray("no database at all\n");
    QTest::newRow("cut header") << QByteArray("SQLite format 3");
    QTest::newRow("broken pages") << QByteArray("SQLite format 3\0\x10\0\1\1\0\x40\x20\x20", 24)
            + QByteArray(8000, 'x');
}

void TestStoreProject::aFileThatIsNoProjectGivesFalse()
{
    QFETCH(QByteArray, content);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("p.vexp"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
    file.close();
    ObjectDataBase store;
    RecordedChanges changes(store);
    QVERIFY(!store.openDataBase(path));
    QVERIFY(!store.openDataBase(folder.filePath(QStringLiteral("missing.vexp"))));
    QCOMPARE(changes.ofType(ObjectDataBase::ProjectChanged), QList<ChangeSet>{});
    QVERIFY(contentOf(path) == content);
}

void TestStoreProject::aSaveWithoutPathGoesToTheProjectsOwn()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("p.vexp"));
    NewStore store;
    QVERIFY(store.saveProject(path));
    QCOMPARE(store.projectPath(), path);
    QVERIFY(store.setGeneralSetting(QStringLiteral("state"), QStringLiteral("second")));
    QVERIFY(store.saveProject(QString()));
    QCOMPARE(generalSetting(path, "state"), QStringLiteral("second"));
}

void TestStoreProject::aSaveWritesToolAndVersion()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("p.vexp"));
    NewStore store;
    QVERIFY(store.setMiscSetting(QStringLiteral("DatabaseVersion"), QStringLiteral("99")));
    QVERIFY(store.saveProject(path));
    const DatabaseFile file(path);
    const auto misc = [&file](const char *key) {
        return file
            .value(QStringLiteral("select value from MiscSettings where item = '%1'")
                       .arg(QLatin1StringView(key)))
            .toString();
    };
    QCOMPARE(misc("SaveToolType"), QStringLiteral("CANopen NodeSmith"));
    QCOMPARE(misc("SaveToolVersion"), QStringLiteral("4.3.2"));
    QCOMPARE(misc("DatabaseVersion"), QStringLiteral("107"));
}

void TestStoreProject::aFailedSaveLeavesTheFormerContent()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("p.vexp"));
    NewStore store;
    QVERIFY(store.saveProject(path));
    QVERIFY(!store.saveProject(folder.filePath(QStringLiteral("no/such/folder/p.vexp"))));
    QCOMPARE(store.projectPath(), path);
    QVERIFY(DatabaseFile(path).count(QStringLiteral("Nodes")) == 1);
    QVERIFY(store.isOpen());
}

void TestStoreProject::aTemplateHasNothingChangedByTheUser()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("template.data"));
    NewStore store;
    ObjectDataBase::SUBINDEX_DATA_T sub = sampleSub();
    sub.changedbyuser = true;
    QVERIFY(store.addSubIndex(0, 0x2000, 0, sub));
    sub.changedbyuser = false;
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sub));
    QVERIFY(store.saveProject(path));
    const DatabaseFile file(path);
    QCOMPARE(file.count(QStringLiteral("SubObjects0 where changedbyuser = 0 and wizardsource = 454")), 2);
}

void TestStoreProject::aFileOfAnotherEditionIsRefused_data()
{
    QTest::addColumn<QString>("edition");
    QTest::addColumn<QString>("savedBy");
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("opens");
    const QString canopen = QStringLiteral("CANopen NodeSmith");
    const QString j1939 = QStringLiteral("J1939 NodeSmith");
    const QString can = QStringLiteral("CAN NodeSmith");
    const QString energyBus = QStringLiteral("EnergyBus NodeGuide");
    QTest::newRow("CANopen opens its own, whatever the lines") << canopen << canopen << "2" << true;
    QTest::newRow("CANopen opens a CANopen line") << canopen << can << "1" << true;
    QTest::newRow("CANopen refuses a J1939 line") << canopen << j1939 << "2" << false;
    QTest::newRow("CANopen refuses a raw CAN line") << canopen << can << "4" << false;
    QTest::newRow("CANopen refuses a line of both") << canopen << can << "5" << false;
    QTest::newRow("J1939 opens a J1939 line") << j1939 << can << "2" << true;
    QTest::newRow("J1939 refuses a CANopen line") << j1939 << canopen << "1" << false;
    QTest::newRow("CAN takes all") << can << j1939 << "5" << true;
    QTest::newRow("EnergyBus takes all") << energyBus << j1939 << "2" << true;
    QTest::newRow("a file that names no tool") << canopen << QString() << "2" << true;
}

void TestStoreProject::aFileOfAnotherEditionIsRefused()
{
    QFETCH(QString, edition);
    QFETCH(QString, savedBy);
    QFETCH(QString, type);
    QFETCH(bool, opens);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("p.vexp"));
    {
        NewStore store;
        QVERIFY(store.setGeneralSetting(QStringLiteral("line0type"), type));
        QVERIFY(store.saveProject(path));
    }
    QVERIFY(DatabaseFile(path).execute(
        QStringLiteral("update MiscSettings set value = '%1' where item = 'SaveToolType'").arg(savedBy)));
    QCoreApplication::setApplicationName(edition);
    ObjectDataBase store;
    QSignalSpy wrongTool(&store, &ObjectDataBase::wrongTool);
    const bool opened = store.openDataBase(path);
    prepareApplication();
    QCOMPARE(opened, opens);
    QCOMPARE(wrongTool.count(), opens ? 0 : 1);
    QCOMPARE(store.lastError(), opens ? QString() : QStringLiteral("File was not created with this tool."));
}

void TestStoreProject::anOldProjectIsMigrated()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("p.vexp"));
    {
        NewStore store;
        QVERIFY(store.setGeneralSetting(QStringLiteral("line0type"), QStringLiteral("2")));
        QVERIFY(store.addPGN(0, 61444, samplePgn(85)));
        QVERIFY(store.addPGN(0, 61443, samplePgn(119)));
        QVERIFY(store.addSPN(0, 61444, 85, 190, sampleSpn(0)));
        QVERIFY(store.addSPN(0, 61443, 119, 91, sampleSpn(0)));
        QVERIFY(store.addSubIndex(0, 0x1000, 0, sampleSub(QStringLiteral("kept"))));
        QVERIFY(store.saveProject(path));
    }
    {
        const DatabaseFile file(path);
        for (const char *statement :
             {"update MiscSettings set value = '99' where item = 'DatabaseVersion'",
              "update MiscSettings set value = '' where item in ('SaveToolType', 'FileHash')",
              "update SPNs0 set direction = NULL", "alter table UDSSettings0 drop column authentication",
              "create table Old as select * from SubObjects0", "drop table SubObjects0",
              "alter table Old rename to SubObjects0"})
            QVERIFY2(file.execute(QString::fromLatin1(statement)), statement);
    }
    ObjectDataBase store;
    QVERIFY2(store.openDataBase(path), qPrintable(store.lastError()));
    QCOMPARE(store.getSPNList(0, 61444, 85), QList<quint32>{190});
    QCOMPARE(store.getSPNList(0, 61443, 119), QList<quint32>{91});
    QCOMPARE(store.getPGNMappingCount(0, 61444, 85), 1);
    const Snapshot file(store);
    QCOMPARE(file->count(QStringLiteral("pragma_table_info('UDSSettings0') where name = 'authentication'")),
             1);
    QCOMPARE(file->count(QStringLiteral("pragma_index_list('SubObjects0') where \"unique\"")), 1);
    QCOMPARE(file->count(QStringLiteral("sqlite_master where name like '%old'")), 0);
    ObjectDataBase::SUBINDEX_DATA_T sub;
    QVERIFY(store.getSubIndex(0, 0x1000, 0, sub));
    QCOMPARE(sub, sampleSub(QStringLiteral("kept")));
}

void TestStoreProject::listsAreCutBehindTheHighestLine()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("p.vexp"));
    NewStore store;
    QVERIFY(store.addNode(1, {}));
    QVERIFY(store.setGeneralSetting(QStringLiteral("co_node_id"), QStringLiteral("1,2,3,4")));
    QVERIFY(store.setGeneralSetting(QStringLiteral("user_defines"), QStringLiteral("1,2,3,4")));
    QVERIFY(store.saveProject(path));
    QVERIFY(store.openDataBase(path));
    QCOMPARE(store.getGeneralSetting(QStringLiteral("co_node_id")), QStringLiteral("1,2"));
    QCOMPARE(store.getGeneralSetting(QStringLiteral("user_defines")), QStringLiteral("1,2,3,4"));
    QCOMPARE(store.descriptionLine(), quint8(1));
}

void TestStoreProject::theEmptyTextOfATemplateKeepsItsId1()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("template.data"));
    {
        NewStore store;
        store.addString(QString());
        QVERIFY(store.addIndex(0, 0x1000, sampleIndex()));
        QVERIFY(store.addIndex(0, 0x1001, {}));
        QVERIFY(store.saveProject(path));
    }
    ObjectDataBase store;
    QVERIFY(store.openDataBase(path));
    QCOMPARE(store.addString(QString()), 1);
    QCOMPARE(store.addString(QLatin1String("")), 1);
}

void TestStoreProject::workingFilesGoWithTheStore()
{
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation));
    const auto workingFiles = [&folder] {
        return QDir(folder.path()).entryList({QStringLiteral("wvxdatatemp_*_*")}, QDir::Files);
    };
    const QStringList before = workingFiles();
    {
        NewStore store;
        QVERIFY(store.createNewDataBase());
        QCOMPARE(workingFiles().size(), before.size() + 2); // the former one stays until the end
    }
    QCOMPARE(workingFiles(), before);
}

QTEST_GUILESS_MAIN(TestStoreProject)
#include "tst_storeproject.moc"
