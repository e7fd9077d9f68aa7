#include "store/StoreTest.h"
#include "templates/TemplateFile.h"

using namespace Qt::StringLiterals;
using namespace TemplateFile;

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TemplatesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }

    void opensAsAProjectThatNobodyTouched_data() { addTemplates(); }
    void opensAsAProjectThatNobodyTouched();
    void isReadyWithoutChangesAtOpen_data() { addTemplates(); }
    void isReadyWithoutChangesAtOpen();
    void hasTheEmptyTextFirstInItsPool_data() { addTemplates(); }
    void hasTheEmptyTextFirstInItsPool();
    void hasEntriesUnchangedByTheUser_data() { addTemplates(); }
    void hasEntriesUnchangedByTheUser();
    void hasTheDefaultUdsServices_data();
    void hasTheDefaultUdsServices();
    void isTheSameBesideTheExecutable_data();
    void isTheSameBesideTheExecutable();

    void profilesAreAmongTheResources_data();
    void profilesAreAmongTheResources();

private:
    static void addTemplates()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("mt") << u"mt"_s;
        QTest::newRow("mtj1939") << u"mtj1939"_s;
        QTest::newRow("objects") << u"objects"_s;
    }
};

void TemplatesTest::opensAsAProjectThatNobodyTouched()
{
    QFETCH(QString, name);
    Template store(name);
    QVERIFY(!store.isExternallyModified());
    QCOMPARE(store.getLines(), QList<quint8>{0});
    QCOMPARE(store.getMiscSetting(u"DatabaseVersion"_s), u"107"_s);
    QCOMPARE(store.getMiscSetting(u"SaveToolVersion"_s), QStringLiteral(NODESMITH_VERSION));
    QCOMPARE(store.getMiscSetting(u"TamperLog"_s), QString());
    QCOMPARE(store.getMiscSetting(u"SaveToolType"_s), QCoreApplication::applicationName());
}

void TemplatesTest::isReadyWithoutChangesAtOpen()
{
    QFETCH(QString, name);
    Template store(name);
    const StoreTest::Snapshot opened(store);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"copy"_s);
    QVERIFY(QFile::copy(resourceFolder + name + ".data"_L1, path));
    const StoreTest::DatabaseFile file(path);
    const QStringList tables =
        file.column(u"SELECT name FROM sqlite_master WHERE type='table' ORDER BY name"_s);
    QCOMPARE(opened->column(u"SELECT name FROM sqlite_master WHERE type='table' ORDER BY name"_s), tables);
    for (const QString &table : tables)
        QCOMPARE(opened->rows(u"SELECT * FROM "_s + table), file.rows(u"SELECT * FROM "_s + table));
}

void TemplatesTest::hasTheEmptyTextFirstInItsPool()
{
    QFETCH(QString, name);
    Template store(name);
    const StoreTest::Snapshot content(store);
    QCOMPARE(content->column(u"select id from Strings where string = ''"_s), QStringList{u"1"_s});
    QCOMPARE(store.addString(QString()), 1);
}

void TemplatesTest::hasEntriesUnchangedByTheUser()
{
    QFETCH(QString, name);
    Template store(name);
    const StoreTest::Snapshot content(store);
    QCOMPARE(content->count(u"SubObjects0 where changedbyuser != 0 or wizardsource != 454"_s), 0);
    QCOMPARE(content->count(u"SubObjects0"_s), store.subIndices().size());
}

void TemplatesTest::hasTheDefaultUdsServices_data()
{
    addTemplates();
}

void TemplatesTest::hasTheDefaultUdsServices()
{
    QFETCH(QString, name);
    Template store(name);
    const StoreTest::Snapshot content(store);
    const QStringList services =
        content->column(u"select sid || ' ' || active || ' ' || sessions from UDSSettings0"_s);
    const QList<int> all = {16, 17, 62, 34, 46, 35, 61, 20, 25, 49};
    const QList<int> notInTheDefaultSession = {39, 40, 47, 52, 53, 54, 55};
    QStringList expected;
    for (const int sid : all)
        expected.append(u"%1 1 1,2,3,4"_s.arg(sid));
    for (const int sid : notInTheDefaultSession)
        expected.append(u"%1 1 2,3,4"_s.arg(sid));
    QCOMPARE(expected.size(), 17);
    QCOMPARE(services, expected);
}

void TemplatesTest::isTheSameBesideTheExecutable_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("mt") << u"mt.data"_s;
    QTest::newRow("objects") << u"objects.data"_s;
}

void TemplatesTest::isTheSameBesideTheExecutable()
{
    QFETCH(QString, name);
    const QByteArray beside = contentOf(QStringLiteral(NODESMITH_BIN_DIR) + u"/data/"_s + name);
    QVERIFY(beside.startsWith("SQLite format 3"));
    QCOMPARE(contentOf(resourceFolder + name), beside);
}

void TemplatesTest::profilesAreAmongTheResources_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"v301", "v302", "v401", "v402"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TemplatesTest::profilesAreAmongTheResources()
{
    QFETCH(QString, name);
    const QByteArray content = contentOf(u":/codb/%1.codb"_s.arg(name));
    QVERIFY(content.startsWith('#'));
    QVERIFY(content.contains("::"));
}

QTEST_GUILESS_MAIN(TemplatesTest)
#include "tst_templates.moc"
