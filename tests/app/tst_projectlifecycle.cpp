#include "app/Edition.h"
#include "app/ProjectLifecycle.h"
#include "app/TestHome.h"
#include "app/TestProject.h"
#include "app/UnusableDataFolder.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using OpenResult = ProjectLifecycle::OpenResult;
using PrepareStore = void (*)(ObjectDataBase &);

/** New, open and save, and what each edition makes of them. */
class TestProjectLifecycle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void theEditionDecidesTheTypeOfTheFirstLine_data();
    void theEditionDecidesTheTypeOfTheFirstLine();
    void wholeNamesAndPartsOfNamesAreDifferentQuestions();
    void theReferenceStoreStartsWithLineZero();
    void anOpenedProjectIsCorrectedForItsEdition_data();
    void anOpenedProjectIsCorrectedForItsEdition();
    void aNewProjectHasOneLineOfTheEditionsType_data();
    void aNewProjectHasOneLineOfTheEditionsType();
    void onlyTheCanEditionAsksForTheProtocol_data();
    void onlyTheCanEditionAsksForTheProtocol();
    void aNewProjectComesFromTheTemplateWhereThereIsOne();
    void aLineWithoutCANopenLosesTheTemplatesCANopenObjects_data();
    void aLineWithoutCANopenLosesTheTemplatesCANopenObjects();
    void aBrokenTemplateIsReplacedByAnEmptyProject();
    void aFailedNewProjectLeavesNone();
    void withoutDataFolderAStoreIsToldOnceAndStaysClosed_data();
    void withoutDataFolderAStoreIsToldOnceAndStaysClosed();
    void openTakesProjectsByTheirEnding_data();
    void openTakesProjectsByTheirEnding();
    void aRelativePathMeansTheCurrentFolder();
    void anOpenedProjectKnowsItsPlace();
    void saveWritesTheProjectFileAndKeepsTheFormerOne();
    void aProjectWithoutFileCannotBeSavedWithoutName();
    void saveAsMovesTheProject();
    void aFailedSaveAsKeepsTheFormerPlace();
    void withoutStoreNothingSucceeds();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    static LineType noAnswer() { return LineType::CANopen; }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<ObjectDataBase> m_store;
    ProjectLifecycle m_project;
    QString m_startFolder = QDir::currentPath();
};

void TestProjectLifecycle::init()
{
    QCoreApplication::setApplicationName(u"CANopen NodeSmith"_s);
    QCoreApplication::setApplicationVersion(u"4.3.2"_s);
    m_folder = std::make_unique<QTemporaryDir>();
    m_store = std::make_unique<ObjectDataBase>();
    ProjectLifecycle::prepareProjectStore(*m_store);
    m_project = ProjectLifecycle();
    m_project.setDataBase(m_store.get());
}

void TestProjectLifecycle::cleanup()
{
    QVERIFY(QDir::setCurrent(m_startFolder)); // an open moves the current folder
    m_store.reset();
}

void TestProjectLifecycle::theEditionDecidesTheTypeOfTheFirstLine_data()
{
    QTest::addColumn<QString>("type");
    QTest::newRow("CANopen NodeSmith") << u"1"_s;
    QTest::newRow("J1939 NodeSmith") << u"2"_s;
    QTest::newRow("CAN NodeSmith") << QString();
    QTest::newRow("EnergyBus NodeGuide") << QString();
    QTest::newRow("My CANopen J1939 tool") << u"1"_s;
}

void TestProjectLifecycle::theEditionDecidesTheTypeOfTheFirstLine()
{
    QFETCH(const QString, type);
    QCoreApplication::setApplicationName(QString::fromLatin1(QTest::currentDataTag()));
    ObjectDataBase store;
    ProjectLifecycle::prepareProjectStore(store);
    QCOMPARE(store.getGeneralSetting(u"line0type"_s), type);
    QCOMPARE(store.getLines(), QList<quint8>{0});
    ObjectDataBase::NODE_DATA_T node;
    QVERIFY(store.getNode(0, node));
    QCOMPARE(node.prefix, u"_"_s);
    QCOMPARE(node.generatedcf, quint8(1));
}

void TestProjectLifecycle::wholeNamesAndPartsOfNamesAreDifferentQuestions()
{
    QCoreApplication::setApplicationName(u"J1939 NodeSmith beta"_s);
    QVERIFY(!Edition::isJ1939());
    QCOMPARE(Edition::startLineType(), u"2"_s);
    QCOMPARE(Edition::referenceProfile(), u":/codb/v301.codb"_s);
    QCoreApplication::setApplicationName(u"J1939 NodeSmith"_s);
    QVERIFY(Edition::isJ1939());
    QCOMPARE(Edition::referenceProfile(), u":/codb/v302.codb"_s);
    QCOMPARE(Edition::projectTemplate(), u":/databases/data/mtj1939.data"_s);
    QCoreApplication::setApplicationName(u"CAN NodeSmith"_s);
    QVERIFY(Edition::isCan());
    QVERIFY(!Edition::isCANopen());
    QCOMPARE(Edition::projectTemplate(),
             QString(QCoreApplication::applicationDirPath() + "/data/mt.data"_L1));
}

void TestProjectLifecycle::theReferenceStoreStartsWithLineZero()
{
    ObjectDataBase store;
    ProjectLifecycle::prepareReferenceStore(store);
    QCOMPARE(store.getLines(), QList<quint8>{0});
    QCOMPARE(store.getGeneralSetting(u"line0type"_s), QString());
}

void TestProjectLifecycle::anOpenedProjectIsCorrectedForItsEdition_data()
{
    QTest::addColumn<QString>("edition");
    QTest::addColumn<int>("groupCount");
    QTest::newRow("CANopen") << u"CANopen NodeSmith"_s << 0;
    QTest::newRow("J1939") << u"J1939 NodeSmith"_s << 1;
    QTest::newRow("CAN") << u"CAN NodeSmith"_s << 1;
}

/** The UDS server version is every edition's, the count of a group's signals that of the J1939 tables. */
void TestProjectLifecycle::anOpenedProjectIsCorrectedForItsEdition()
{
    QFETCH(const QString, edition);
    QFETCH(const int, groupCount);
    QCoreApplication::setApplicationName(edition);
    const auto store = QSharedPointer<ObjectDataBase>::create();
    QVERIFY(TestProject::fill(*store, {0}, u"2"_s));
    QVERIFY(store->setGeneralSetting(u"udsserver_version"_s, u"5"_s));
    QVERIFY(store->addPGN(0, 65280, TestProject::pgn(u"group"_s, ObjectDataBase::Transmit)));
    QVERIFY(store->addSPN(0, 65280, ObjectDataBase::Transmit, 1, {}));
    QVERIFY(store->setPGNMappingCount(0, 65280, ObjectDataBase::Transmit, 0));
    ProjectLifecycle::correctProject(store);
    QCOMPARE(store->getGeneralSetting(u"udsserver_version"_s), u"6"_s);
    QCOMPARE(store->getPGNMappingCount(0, 65280, ObjectDataBase::Transmit), groupCount);
}

void TestProjectLifecycle::aNewProjectHasOneLineOfTheEditionsType_data()
{
    QTest::addColumn<QString>("type");
    QTest::newRow("CANopen NodeSmith") << u"1"_s;
    QTest::newRow("J1939 NodeSmith") << u"2"_s;
    QTest::newRow("CAN NodeSmith") << u"4"_s;
    QTest::newRow("EnergyBus NodeGuide") << u"1"_s;
}

void TestProjectLifecycle::aNewProjectHasOneLineOfTheEditionsType()
{
    QFETCH(const QString, type);
    QCoreApplication::setApplicationName(QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY(m_store->addNode(3, ObjectDataBase::NODE_DATA_T()));
    QVERIFY(m_project.newProject([] { return LineType::RawCan; }));
    QCOMPARE(m_store->getLines(), QList<quint8>{0});
    QCOMPARE(m_store->getGeneralSetting(u"line0type"_s), type);
    QCOMPARE(m_store->getGeneralSetting(u"new_init_structure"_s), u"1"_s);
    QCOMPARE(m_store->getMiscSetting(u"CreateToolVersion"_s), u"4.3.2"_s);
    QCOMPARE(m_project.projectBaseName(), u"newproject"_s);
    QCOMPARE(m_project.projectDir(), QString());
    QCOMPARE(m_project.projectFile(), QString());
}

void TestProjectLifecycle::onlyTheCanEditionAsksForTheProtocol_data()
{
    QTest::addColumn<int>("questions");
    QTest::newRow("CANopen NodeSmith") << 0;
    QTest::newRow("J1939 NodeSmith") << 0;
    QTest::newRow("CAN NodeSmith") << 1;
    QTest::newRow("EnergyBus NodeGuide") << 0;
}

void TestProjectLifecycle::onlyTheCanEditionAsksForTheProtocol()
{
    QFETCH(const int, questions);
    QCoreApplication::setApplicationName(QString::fromLatin1(QTest::currentDataTag()));
    int asked = 0;
    QVERIFY(m_project.newProject([&asked] {
        ++asked;
        return LineType::J1939;
    }));
    QCOMPARE(asked, questions);
}

void TestProjectLifecycle::aNewProjectComesFromTheTemplateWhereThereIsOne()
{
    ObjectDataBase source;
    QVERIFY(TestProject::fill(source, {0}, u"1"_s));
    ObjectDataBase::INDEX_DATA_T object;
    object.name = u"From the template"_s;
    QVERIFY(source.addIndex(0, 0x2000, object));
    QVERIFY(source.saveProject(path(u"mt.data"_s)));
    m_project.setTemplate(path(u"mt.data"_s));
    QVERIFY(m_project.newProject(noAnswer));
    QCOMPARE(m_store->getIndexName(0, 0x2000), u"From the template"_s);
    QCOMPARE(m_project.projectFile(), QString());
}

void TestProjectLifecycle::aLineWithoutCANopenLosesTheTemplatesCANopenObjects_data()
{
    using Indices = QList<quint16>;
    QTest::addColumn<LineType>("type");
    QTest::addColumn<Indices>("left");
    const Indices all{0x1000, 0x1001, 0x1017, 0x1018, 0x1200, 0x2000};
    QTest::newRow("CANopen") << LineType::CANopen << all;
    QTest::newRow("J1939") << LineType::J1939 << Indices{0x2000};
    QTest::newRow("raw CAN") << LineType::RawCan << Indices{0x2000};
    QTest::newRow("CANopen and J1939") << LineType::CANopenAndJ1939 << all;
    QTest::newRow("CANopen and raw CAN") << LineType::CANopenAndRawCan << all;
    QTest::newRow("J1939 and raw CAN") << LineType::J1939AndRawCan << Indices{0x2000};
}

void TestProjectLifecycle::aLineWithoutCANopenLosesTheTemplatesCANopenObjects()
{
    QFETCH(const LineType, type);
    QFETCH(const QList<quint16>, left);
    QCoreApplication::setApplicationName(u"CAN NodeSmith"_s);
    ObjectDataBase source;
    QVERIFY(TestProject::fill(source, {0}, u"1"_s));
    for (const quint16 index : {0x1000, 0x1001, 0x1017, 0x1018, 0x1200, 0x2000})
        QVERIFY(source.addIndex(0, index, ObjectDataBase::INDEX_DATA_T()));
    QVERIFY(source.saveProject(path(u"mt.data"_s)));
    m_project.setTemplate(path(u"mt.data"_s));
    QVERIFY(m_project.newProject([type] { return type; }));
    QCOMPARE(m_store->getIndexList(0), left);
    QCOMPARE(m_store->getGeneralSetting(u"line0type"_s), QString::number(int(type)));
}

void TestProjectLifecycle::aBrokenTemplateIsReplacedByAnEmptyProject()
{
    QFile file(path(u"mt.data"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("no database");
    file.close();
    QVERIFY(m_store->addNode(3, ObjectDataBase::NODE_DATA_T()));
    m_project.setTemplate(file.fileName());
    QTest::ignoreMessage(
        QtWarningMsg,
        QRegularExpression(u"^The template .*mt.data cannot be used, .*: .*mt.data is not a project file"_s));
    QVERIFY(m_project.newProject(noAnswer));
    QCOMPARE(m_store->getLines(), QList<quint8>{0});
    QCOMPARE(m_store->getGeneralSetting(u"line0type"_s), u"1"_s);
    QCOMPARE(m_project.projectBaseName(), u"newproject"_s);
}

void TestProjectLifecycle::aFailedNewProjectLeavesNone()
{
    QVERIFY(TestProject::save(path(u"a.vexp"_s), u"CANopen NodeSmith"_s, u"1"_s));
    QVERIFY(!m_project.hasProject());
    QCOMPARE(m_project.openProject(path(u"a.vexp"_s)), OpenResult::Opened);
    QVERIFY(m_project.hasProject());
    const UnusableDataFolder folder;
    QVERIFY(!m_project.newProject(noAnswer));
    QVERIFY(!m_project.hasProject());
    QCOMPARE(m_project.projectDir(), QString());
    QCOMPARE(m_project.projectFile(), QString());
    QVERIFY(!m_store->isOpen());
    QVERIFY(m_store->lastError().contains("data folder"_L1));
    QVERIFY(!m_project.save());
}

void TestProjectLifecycle::withoutDataFolderAStoreIsToldOnceAndStaysClosed_data()
{
    QTest::addColumn<PrepareStore>("prepare");
    QTest::newRow("project") << PrepareStore(&ProjectLifecycle::prepareProjectStore);
    QTest::newRow("reference project") << PrepareStore(&ProjectLifecycle::prepareReferenceStore);
}

void TestProjectLifecycle::withoutDataFolderAStoreIsToldOnceAndStaysClosed()
{
    QFETCH(const PrepareStore, prepare);
    const UnusableDataFolder folder;
    ObjectDataBase store;
    static QStringList messages;
    messages.clear();
    const QtMessageHandler former = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &, const QString &text) { messages.append(text); });
    prepare(store);
    qInstallMessageHandler(former);
    QVERIFY(!store.isOpen());
    const QString start = u"No %1 can be made in the data folder %2"_s.arg(
        QString::fromLatin1(QTest::currentDataTag()), UnusableDataFolder::path());
    QCOMPARE(messages.filter(start).size(), 1);
    QVERIFY(messages.last().startsWith(start));
    QVERIFY(messages.last().endsWith(store.lastError()));
    QVERIFY2(messages.filter(u"not open"_s).isEmpty(), qPrintable(messages.join(u'\n')));
}

void TestProjectLifecycle::openTakesProjectsByTheirEnding_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("saved");
    QTest::addColumn<OpenResult>("result");
    QTest::newRow("project") << u"a.vexp"_s << true << OpenResult::Opened;
    QTest::newRow("missing project") << u"a.vexp"_s << false << OpenResult::Failed;
    QTest::newRow("missing text project") << u"a.vext"_s << false << OpenResult::Failed;
    QTest::newRow("other ending") << u"a.db"_s << true << OpenResult::UnknownKind;
    QTest::newRow("ending in capitals") << u"a.VEXP"_s << true << OpenResult::UnknownKind;
    QTest::newRow("switch") << u"-g"_s << false << OpenResult::UnknownKind;
}

void TestProjectLifecycle::openTakesProjectsByTheirEnding()
{
    QFETCH(const QString, name);
    QFETCH(const bool, saved);
    QFETCH(const OpenResult, result);
    if (saved)
        QVERIFY(TestProject::save(path(name), u"CANopen NodeSmith"_s, u"1"_s));
    QCOMPARE(m_project.openProject(path(name)), result);
    QCOMPARE(m_project.projectFile().isEmpty(), result != OpenResult::Opened);
}

void TestProjectLifecycle::aRelativePathMeansTheCurrentFolder()
{
    QVERIFY(TestProject::save(path(u"a.vexp"_s), u"CANopen NodeSmith"_s, u"1"_s));
    QVERIFY(QDir::setCurrent(m_folder->path()));
    QCOMPARE(m_project.openProject(u"a.vexp"_s), OpenResult::Opened);
    QVERIFY(QDir::isAbsolutePath(m_project.projectFile()));
}

void TestProjectLifecycle::anOpenedProjectKnowsItsPlace()
{
    QVERIFY(TestProject::save(path(u"a.b.vexp"_s), u"CANopen NodeSmith"_s, u"1"_s));
    QCOMPARE(m_project.openProject(path(u"a.b.vexp"_s)), OpenResult::Opened);
    QCOMPARE(m_project.projectDir(), m_folder->path());
    QCOMPARE(m_project.projectBaseName(), u"a.b"_s);
    QCOMPARE(m_project.projectFile(), path(u"a.b.vexp"_s));
    QCOMPARE(m_store->getGeneralSetting(u"new_init_structure"_s), u"1"_s);
}

void TestProjectLifecycle::saveWritesTheProjectFileAndKeepsTheFormerOne()
{
    QVERIFY(TestProject::save(path(u"a.vexp"_s), u"CANopen NodeSmith"_s, u"1"_s));
    QCOMPARE(m_project.openProject(path(u"a.vexp"_s)), OpenResult::Opened);
    QVERIFY(m_store->setGeneralSetting(u"co_node_id"_s, u"7"_s));
    QVERIFY(m_project.save());
    QVERIFY(QFile::exists(path(u"a.vexp.bak"_s)));
    ObjectDataBase reader;
    QVERIFY(reader.openDataBase(path(u"a.vexp"_s)));
    QCOMPARE(reader.getGeneralSetting(u"co_node_id"_s), u"7"_s);
}

void TestProjectLifecycle::aProjectWithoutFileCannotBeSavedWithoutName()
{
    QVERIFY(m_project.newProject(noAnswer));
    QVERIFY(!m_project.save());
}

void TestProjectLifecycle::saveAsMovesTheProject()
{
    QVERIFY(m_project.newProject(noAnswer));
    QVERIFY(m_project.saveAs(path(u"b.vexp"_s)));
    QCOMPARE(m_project.projectFile(), path(u"b.vexp"_s));
    QVERIFY(m_store->setGeneralSetting(u"co_node_id"_s, u"9"_s));
    QVERIFY(m_project.save());
    ObjectDataBase reader;
    QVERIFY(reader.openDataBase(path(u"b.vexp"_s)));
    QCOMPARE(reader.getGeneralSetting(u"co_node_id"_s), u"9"_s);
}

void TestProjectLifecycle::aFailedSaveAsKeepsTheFormerPlace()
{
    QVERIFY(m_project.newProject(noAnswer));
    QVERIFY(m_project.saveAs(path(u"b.vexp"_s)));
    QVERIFY(!m_project.saveAs(path(u"no/such/folder/c.vexp"_s)));
    QCOMPARE(m_project.projectFile(), path(u"b.vexp"_s));
}

void TestProjectLifecycle::withoutStoreNothingSucceeds()
{
    ProjectLifecycle project;
    QVERIFY(!project.newProject(noAnswer));
    QCOMPARE(project.openProject(path(u"a.vexp"_s)), OpenResult::Failed);
    QVERIFY(!project.save());
    QVERIFY(!project.saveAs(path(u"a.vexp"_s)));
}

int main(int argc, char **argv)
{
    const TestHome home;
    const QCoreApplication application(argc, argv);
    TestProjectLifecycle test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_projectlifecycle.moc"
