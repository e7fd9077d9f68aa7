#include "generators/RunDesk.h"

#include <QScopeGuard>

using namespace StoreTest;
using namespace Qt::StringLiterals;

namespace {

const QString canopenEdition = u"CANopen NodeSmith"_s;
const QString j1939Edition = u"J1939 NodeSmith"_s;
const QString canEdition = u"CAN NodeSmith"_s;
const QString energyBusEdition = u"EnergyBus NodeGuide"_s;

} // namespace

/** A project file that is opened for generation without a window. */
class TestOpenForGeneration : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void init()
    {
        m_current = QDir::currentPath();
        m_folder = std::make_unique<QTemporaryDir>();
        QSettings(u"korvel"_s, QCoreApplication::applicationName()).clear();
    }
    void cleanup()
    {
        QDir::setCurrent(m_current);
        QCoreApplication::setApplicationName(canopenEdition);
    }

    void aProjectFileIsOpened();
    void folderAndNameComeFromThePath();
    void aRelativePathIsMadeAbsolute();
    void aTextProjectIsOpened();
    void theEndOfThePathTellsATextProject();
    void aPathThatDoesNotExistIsRefused();
    void aFileThatIsNoProjectIsRefused_data();
    void aFileThatIsNoProjectIsRefused();
    void aRefusedFileLeavesTheFormerProject();
    void theNewerGeneratorsAreAlwaysUsed();
    void aFileModifiedOutsideIsOpened();
    void everyEditionGetsTheGeneralCorrections_data();
    void everyEditionGetsTheGeneralCorrections();
    void protocolCorrectionsFollowTheEdition_data();
    void protocolCorrectionsFollowTheEdition();
    void energyBusCorrectionsFollowTheEdition_data();
    void energyBusCorrectionsFollowTheEdition();
    void theOpenedProjectIsGeneratedIntoItsFolder();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    static QSharedPointer<NewStore> project(int type)
    {
        auto store = QSharedPointer<NewStore>::create();
        store->setGeneralSetting(u"line0type"_s, QString::number(type));
        return store;
    }
    static void editionRows()
    {
        QTest::addColumn<QString>("edition");
        for (const QString &edition : {canopenEdition, j1939Edition, canEdition, energyBusEdition})
            QTest::newRow(qPrintable(edition)) << edition;
    }

    QString m_current;
    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestOpenForGeneration::aProjectFileIsOpened()
{
    const auto store = project(1);
    store->setGeneralSetting(u"applicationheader"_s, u"mine.h"_s);
    QVERIFY(store->saveProject(path(u"a.vexp"_s)));
    GeneratorMainHandler handler;
    QVERIFY(handler.openProject(path(u"a.vexp"_s)));
    QCOMPARE(handler.database()->getGeneralSetting(u"applicationheader"_s), u"mine.h"_s);
}

void TestOpenForGeneration::folderAndNameComeFromThePath()
{
    QVERIFY(QDir(m_folder->path()).mkdir(u"sub"_s));
    const QString file = path(u"sub/my.device.v2.vexp"_s);
    QVERIFY(project(1)->saveProject(file));
    GeneratorMainHandler handler;
    QVERIFY(handler.openProject(file));
    QCOMPARE(handler.outputDir(), path(u"sub"_s));
    QCOMPARE(handler.projectName(), u"my.device.v2"_s);
    QCOMPARE(handler.projectFile(), file);
}

void TestOpenForGeneration::aRelativePathIsMadeAbsolute()
{
    QVERIFY(project(1)->saveProject(path(u"a.vexp"_s)));
    QVERIFY(QDir::setCurrent(m_folder->path()));
    const QString current = QDir::currentPath();
    GeneratorMainHandler handler;
    QVERIFY(handler.openProject(u"./a.vexp"_s));
    QCOMPARE(QDir::cleanPath(handler.outputDir()), current);
    QVERIFY(QDir::isAbsolutePath(handler.outputDir()));
    QCOMPARE(handler.projectName(), u"a"_s);
    QCOMPARE(handler.projectFile(), u"./a.vexp"_s);
}

void TestOpenForGeneration::aTextProjectIsOpened()
{
    const auto store = project(1);
    store->setGeneralSetting(u"applicationheader"_s, u"mine.h"_s);
    QVERIFY(store->saveProject(path(u"a.vext"_s)));
    GeneratorMainHandler handler;
    QVERIFY(handler.openProject(path(u"a.vext"_s)));
    QCOMPARE(handler.database()->getGeneralSetting(u"applicationheader"_s), u"mine.h"_s);
    QCOMPARE(handler.projectName(), u"a"_s);
}

void TestOpenForGeneration::theEndOfThePathTellsATextProject()
{
    QVERIFY(project(1)->saveProject(path(u"a.vexp"_s)));
    QVERIFY(QFile::copy(path(u"a.vexp"_s), path(u"c.vext"_s)));
    GeneratorMainHandler handler;
    QVERIFY(!handler.openProject(path(u"c.vext"_s))); // a database is no text
    QVERIFY(QFile::copy(path(u"a.vexp"_s), path(u"avext"_s)));
    QVERIFY(!handler.openProject(path(u"avext"_s))); // the end of the path counts, not its suffix
    QVERIFY(project(1)->saveProject(path(u"d.vext"_s)));
    QVERIFY(QFile::copy(path(u"d.vext"_s), path(u"e.VEXT"_s)));
    QVERIFY(handler.openProject(path(u"e.VEXT"_s))); // the store knows a text by its name in any case
}

void TestOpenForGeneration::aPathThatDoesNotExistIsRefused()
{
    GeneratorMainHandler handler;
    QVERIFY(!handler.openProject(path(u"missing.vexp"_s)));
    QVERIFY(!handler.openProject(QString()));
    QVERIFY(handler.outputDir().isEmpty());
    QVERIFY(handler.projectFile().isEmpty());
}

void TestOpenForGeneration::aFileThatIsNoProjectIsRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << u"a.vexp"_s << QByteArray();
    QTest::newRow("text") << u"a.vexp"_s << QByteArray("no database");
    QTest::newRow("empty text project") << u"a.vext"_s << QByteArray();
    QTest::newRow("another name") << u"a.txt"_s << QByteArray("x");
}

void TestOpenForGeneration::aFileThatIsNoProjectIsRefused()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    GeneratorMainHandler handler;
    QVERIFY(!handler.openProject(path(name)));
    QVERIFY(!handler.openProject(m_folder->path())); // nor is a folder
}

void TestOpenForGeneration::aRefusedFileLeavesTheFormerProject()
{
    QVERIFY(project(1)->saveProject(path(u"a.vexp"_s)));
    QFile file(path(u"b.vexp"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("no database");
    file.close();
    GeneratorMainHandler handler;
    QVERIFY(handler.openProject(path(u"a.vexp"_s)));
    const auto store = handler.database();
    QVERIFY(!handler.openProject(path(u"b.vexp"_s)));
    QCOMPARE(handler.database(), store);
    QVERIFY(store->isOpen());
    QCOMPARE(handler.projectName(), u"a"_s);
}

void TestOpenForGeneration::theNewerGeneratorsAreAlwaysUsed()
{
    const auto store = project(1);
    store->setGeneralSetting(u"use_core_headers"_s, QString());
    store->setGeneralSetting(u"new_init_structure"_s, u"0"_s);
    QVERIFY(store->saveProject(path(u"a.vexp"_s)));
    GeneratorMainHandler handler;
    QVERIFY(handler.openProject(path(u"a.vexp"_s)));
    QCOMPARE(handler.database()->getGeneralSetting(u"use_core_headers"_s), u"V4"_s);
    QCOMPARE(handler.database()->getGeneralSetting(u"new_init_structure"_s), u"1"_s);
}

void TestOpenForGeneration::aFileModifiedOutsideIsOpened()
{
    QVERIFY(project(1)->saveProject(path(u"a.vexp"_s)));
    QVERIFY(DatabaseFile(path(u"a.vexp"_s)).execute(u"insert into GeneralSettings values('k','v')"_s));
    GeneratorMainHandler handler;
    QVERIFY(handler.openProject(path(u"a.vexp"_s)));
    QVERIFY(handler.database()->isExternallyModified());
}

void TestOpenForGeneration::everyEditionGetsTheGeneralCorrections_data()
{
    editionRows();
}

void TestOpenForGeneration::everyEditionGetsTheGeneralCorrections()
{
    QFETCH(QString, edition);
    QCoreApplication::setApplicationName(edition);
    const auto store = project(edition == j1939Edition ? 2 : 1);
    store->setGeneralSetting(u"udsserver_version"_s, u"5"_s);
    store->setGeneralSetting(u"usdo_server_enabled"_s, QString());
    store->setGeneralSetting(u"usdo_server_cnt"_s, u"2"_s);
    QVERIFY(store->saveProject(path(u"a.vexp"_s)));
    GeneratorMainHandler handler;
    QVERIFY(handler.openProject(path(u"a.vexp"_s)));
    QCOMPARE(handler.database()->getGeneralSetting(u"udsserver_version"_s), u"6"_s);
    QCOMPARE(handler.database()->getGeneralSetting(u"usdo_server_enabled"_s), u"1"_s);
}

void TestOpenForGeneration::protocolCorrectionsFollowTheEdition_data()
{
    QTest::addColumn<QString>("edition");
    QTest::addColumn<bool>("j1939");
    QTest::addColumn<bool>("rawCan");
    QTest::newRow("CANopen") << canopenEdition << false << false;
    QTest::newRow("J1939") << j1939Edition << true << false;
    QTest::newRow("CAN") << canEdition << true << true;
    QTest::newRow("EnergyBus") << energyBusEdition << false << false;
}

// A group that stands twice is what both corrections take away.
void TestOpenForGeneration::protocolCorrectionsFollowTheEdition()
{
    QFETCH(QString, edition);
    QFETCH(bool, j1939);
    QFETCH(bool, rawCan);
    QCoreApplication::setApplicationName(edition);
    const auto store = project(edition == j1939Edition ? 2 : 1);
    QVERIFY(store->addPGN(0, 61444, samplePgn(85)));
    QVERIFY(store->addCANID(0, 0x123, sampleCanId(85)));
    QVERIFY(store->executeSql(u"insert into PGNs0 select * from PGNs0"_s));
    QVERIFY(store->executeSql(u"insert into CANIDs0 select * from CANIDs0"_s));
    QVERIFY(store->saveProject(path(u"a.vexp"_s)));
    GeneratorMainHandler handler;
    QVERIFY(handler.openProject(path(u"a.vexp"_s)));
    const Snapshot snapshot(*handler.database());
    QCOMPARE(snapshot->count(u"PGNs0"_s), j1939 ? 1 : 2);
    QCOMPARE(snapshot->count(u"CANIDs0"_s), rawCan ? 1 : 2);
}

void TestOpenForGeneration::energyBusCorrectionsFollowTheEdition_data()
{
    editionRows();
}

void TestOpenForGeneration::energyBusCorrectionsFollowTheEdition()
{
    QFETCH(QString, edition);
    QCoreApplication::setApplicationName(edition);
    const auto store = project(edition == j1939Edition ? 2 : 1);
    store->setEnergyBusSetting(u"device_cnt"_s, u"1"_s);
    store->setEnergyBusSetting(u"device_1"_s, u"bat"_s);
    store->setEnergyBusSetting(u"sec_7_kind"_s, u"gone"_s); // of a device that is not there
    QVERIFY(store->saveProject(path(u"a.vexp"_s)));
    GeneratorMainHandler handler;
    QVERIFY(handler.openProject(path(u"a.vexp"_s)));
    QCOMPARE(handler.database()->energyBusSettingExists(u"sec_7_kind"_s), edition != energyBusEdition);
}

void TestOpenForGeneration::theOpenedProjectIsGeneratedIntoItsFolder()
{
    QVERIFY(project(1)->saveProject(path(u"a.vexp"_s)));
    RunDesk desk({0});
    QVERIFY(desk.handler.openProject(path(u"a.vexp"_s)));
    desk.fakes.plan(GeneratorKind::ObjDict) = {.fileName = u"gen_objdict.c"_s, .writesFile = true};
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    QVERIFY(QFile::exists(path(u"gen_objdict.c"_s)));
    QVERIFY(desk.fakes.requests().first().core);
}

QTEST_GUILESS_MAIN(TestOpenForGeneration)
#include "tst_openforgeneration.moc"
