#include "canopen/CANopenTypes.h"
#include "importers/ImporterTest.h"
#include "store/commands/ImportHandler.h"

#include <QDir>
#include <QElapsedTimer>
#include <QRandomGenerator>

using namespace Qt::StringLiterals;

/** Import command files: a project and a command file in, objects of the project out. */
class TestImportHandler : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup() { m_store.reset(); }
    void filesThatAreNoCommandFileAreRefused_data();
    void filesThatAreNoCommandFileAreRefused();
    void aFileWithoutProjectsIsRefused_data();
    void aFileWithoutProjectsIsRefused();
    void deleteRemovesTheRange_data();
    void deleteRemovesTheRange();
    void copyMovesByTheOffset_data();
    void copyMovesByTheOffset();
    void importBringsTheObjectsOfTheSourceLine_data();
    void importBringsTheObjectsOfTheSourceLine();
    void importedSubIndicesComeWhole();
    void deleteObjectsRemovesWhatWasNotBrought();
    void aFailedActionStopsTheRun_data();
    void aFailedActionStopsTheRun();
    void aFailedImportDeletesNothing();
    void unknownCommandsAreDropped();
    void theScratchLineIsGoneAfterwards_data();
    void theScratchLineIsGoneAfterwards();
    void theLogTellsWhatIsApplied();
    void theExampleFileDoesItsWork();
    void hugeRangesAreFast();
    void theWriteLockIsReleased();
    void withoutStoreOrFileNothingIsApplied();
    void randomFilesDoNoHarm();

private:
    bool run(const QByteArray &actions, const QByteArray &options = {});
    bool runFile(const QByteArray &content);
    QStringList indices(quint8 line = 0) const;
    static bool addObject(ObjectDataBase &store, quint8 line, quint16 index, const QString &name);

    QTemporaryDir m_folder;
    QSharedPointer<ObjectDataBase> m_store;
    QString m_error;
};

bool TestImportHandler::addObject(ObjectDataBase &store, quint8 line, quint16 index, const QString &name)
{
    ObjectDataBase::INDEX_DATA_T object;
    object.name = name;
    object.objecttype = CANopen::Var;
    ObjectDataBase::SUBINDEX_DATA_T sub;
    sub.name = name;
    sub.accesstype = u"rw"_s;
    sub.defaultvalue = name;
    sub.implementation = CANopen::VirtualObject;
    sub.varname = u"variable"_s;
    return store.addIndex(line, index, object) && store.addSubIndex(line, index, 5, sub);
}

void TestImportHandler::initTestCase()
{
    ImporterTest::prepareApplication();
    ObjectDataBase source;
    QVERIFY(source.createNewDataBase());
    QVERIFY(source.setGeneralSetting(u"line0type"_s, u"1"_s));
    QVERIFY(source.addNode(1, ObjectDataBase::NODE_DATA_T()));
    for (const quint16 index : {quint16(0x0040), quint16(0x2000), quint16(0x2001), quint16(0xF000)})
        QVERIFY(addObject(source, 0, index, u"source 0"_s));
    QVERIFY(addObject(source, 1, 0x3000, u"source 1"_s));
    QVERIFY(QDir(m_folder.path()).mkpath(u"sources/with blank"_s));
    QVERIFY(source.saveProject(m_folder.filePath(u"sources/base.vexp"_s)));
}

void TestImportHandler::init()
{
    m_store.reset(new ObjectDataBase);
    QVERIFY(m_store->createNewDataBase());
    QVERIFY(m_store->addNode(1, ObjectDataBase::NODE_DATA_T()));
    for (const quint16 index :
         {quint16(0x0007), quint16(0x2000), quint16(0x2001), quint16(0x20FF), quint16(0x2100)})
        QVERIFY(addObject(*m_store, 0, index, u"own %1"_s.arg(index, 0, 16)));
}

bool TestImportHandler::runFile(const QByteArray &content)
{
    static int number = 0;
    const QString path = m_folder.filePath(u"commands %1.ini"_s.arg(++number));
    ImportHandler handler(m_store);
    const bool success =
        ImporterTest::write(path, content) && handler.setFile(path) && handler.applyImportFile();
    m_error = handler.errorString();
    return success;
}

bool TestImportHandler::run(const QByteArray &actions, const QByteArray &options)
{
    return runFile("[Projects]\n1=sources/base.vexp\n2=no such project.vexp\n[Options]\n" + options
                   + "\n[Actions]\n" + actions + "\n");
}

QStringList TestImportHandler::indices(quint8 line) const
{
    QStringList result;
    const QList<quint16> list = m_store->getIndexList(line);
    for (const quint16 index : list)
        result.append(QString::number(index, 16));
    return result;
}

void TestImportHandler::filesThatAreNoCommandFileAreRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("error");
    QTest::newRow("empty") << QByteArray() << u"File too small"_s;
    QTest::newRow("10 bytes") << QByteArray("[Projects]") << u"File too small"_s;
    QTest::newRow("11 bytes without keys") << QByteArray("[Projects]\n") << u"Invalid file structure"_s;
    QTest::newRow("other sections") << QByteArray("[Other]\n1=a.vexp\n") << u"Invalid file structure"_s;
    QTest::newRow("text") << QByteArray("just some text that is no INI file\n")
                          << u"Invalid file structure"_s;
    QTest::newRow("keys without section")
        << QByteArray("Projects=1\nActions=2\n") << u"Invalid file structure"_s;
    QTest::newRow("zeros") << QByteArray(1000, '\0') << u"Invalid file structure"_s;
}

void TestImportHandler::filesThatAreNoCommandFileAreRefused()
{
    QFETCH(QByteArray, content);
    const QString path = m_folder.filePath(u"refused.ini"_s);
    QFile::remove(path);
    QVERIFY(ImporterTest::write(path, content));
    ImportHandler handler(m_store);
    QVERIFY(!handler.setFile(path));
    QTEST(handler.errorString(), "error");
    QVERIFY(!handler.applyImportFile());
    QTEST(handler.errorString(), "error");
}

void TestImportHandler::aFileWithoutProjectsIsRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty section") << QByteArray("[Projects]\n[Actions]\n1=delete 0:0x2000\n");
    QTest::newRow("no section") << QByteArray("[Actions]\n1=delete 0:0x2000\n");
    QTest::newRow("keys that are no numbers")
        << QByteArray("[Projects]\na=b.vexp\n[Actions]\n1=delete 0:0x2000\n");
    QTest::newRow("empty path") << QByteArray("[Projects]\n1=\n[Actions]\n1=delete 0:0x2000\n");
}

void TestImportHandler::aFileWithoutProjectsIsRefused()
{
    QFETCH(QByteArray, content);
    QVERIFY(!runFile(content));
    QCOMPARE(m_error, u"No projects found."_s);
    QVERIFY(m_store->indexExists(0, 0x2000));
}

void TestImportHandler::deleteRemovesTheRange_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QStringList>("left");
    const auto all = u"7 2000 2001 20ff 2100"_s;
    QTest::newRow("one") << QByteArray("delete 0:0x2000") << u"7 2001 20ff 2100"_s.split(u' ');
    QTest::newRow("range") << QByteArray("delete 0:0x2000-0x20ff") << u"7 2100"_s.split(u' ');
    QTest::newRow("all") << QByteArray("delete 0:0-65535") << QStringList();
    QTest::newRow("nothing there") << QByteArray("delete 0:0x5000-0x6000") << all.split(u' ');
    QTest::newRow("reversed range is empty") << QByteArray("delete 0:0x20ff-0x2000") << all.split(u' ');
    QTest::newRow("other line") << QByteArray("delete 1:0-65535") << all.split(u' ');
}

void TestImportHandler::deleteRemovesTheRange()
{
    QFETCH(QByteArray, command);
    QVERIFY(run("1=" + command));
    QCOMPARE(m_error, QString());
    QTEST(indices(), "left");
    const bool subsLeft = m_store->subIndexExists(0, 0x2000, 5);
    QCOMPARE(subsLeft, m_store->indexExists(0, 0x2000));
}

void TestImportHandler::copyMovesByTheOffset_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<int>("line");
    QTest::addColumn<QStringList>("objects"); // index and the object it is a copy of
    QTest::newRow("to another line") << QByteArray("copy 0:0x2000-0x20ff to 1") << 1
                                     << QStringList{u"2000 2000"_s, u"2001 2001"_s, u"20ff 20ff"_s};
    QTest::newRow("with offset") << QByteArray("copy 0:0x2000-0x2001 to 1 offset 0x4000") << 1
                                 << QStringList{u"6000 2000"_s, u"6001 2001"_s};
    QTest::newRow("one object") << QByteArray("copy 0:0x2100 to 1") << 1 << QStringList{u"2100 2100"_s};
    QTest::newRow("over each other in one line")
        << QByteArray("copy 0:0x2000-0x20ff to 0 offset 1") << 0
        << QStringList{u"7 7"_s,       u"2000 2000"_s, u"2001 2000"_s,
                       u"2002 2001"_s, u"20ff 20ff"_s, u"2100 20ff"_s};
    QTest::newRow("onto itself") << QByteArray("copy 0:0x2000-0x2001 to 0") << 0
                                 << QStringList{u"7 7"_s, u"2000 2000"_s, u"2001 2001"_s, u"20ff 20ff"_s,
                                                u"2100 2100"_s};
    QTest::newRow("reversed range") << QByteArray("copy 0:0x20ff-0x2000 to 1") << 1 << QStringList();
    QTest::newRow("whole range") << QByteArray("copy 0:0-0xffff to 1") << 1
                                 << QStringList{u"7 7"_s, u"2000 2000"_s, u"2001 2001"_s, u"20ff 20ff"_s,
                                                u"2100 2100"_s};
}

void TestImportHandler::copyMovesByTheOffset()
{
    QFETCH(QByteArray, command);
    QFETCH(int, line);
    QVERIFY(run("1=" + command));
    QStringList objects;
    const QList<quint16> list = m_store->getIndexList(quint8(line));
    for (const quint16 index : list) {
        const QString name = ImporterTest::sub(*m_store, quint8(line), index, 5).defaultvalue;
        QCOMPARE(ImporterTest::object(*m_store, quint8(line), index).name, name);
        objects.append(u"%1 %2"_s.arg(index, 0, 16).arg(name.section(u' ', 1)));
    }
    QTEST(objects, "objects");
}

void TestImportHandler::importBringsTheObjectsOfTheSourceLine_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QStringList>("objects");
    // Objects below 0x1000 are data types and stay where they are.
    QTest::newRow("first line") << QByteArray("import 1:0 to 1") << u"2000 2001 f000"_s.split(u' ');
    QTest::newRow("second line") << QByteArray("import 1:1 to 1") << u"3000"_s.split(u' ');
    QTest::newRow("with offset") << QByteArray("import 1:0 to 1 offset 0xFFF")
                                 << u"2fff 3000 ffff"_s.split(u' ');
    QTest::newRow("letter case") << QByteArray("IMPORT 0X1:0 INTO 1 OFFSET 1")
                                 << u"2001 2002 f001"_s.split(u' ');
}

void TestImportHandler::importBringsTheObjectsOfTheSourceLine()
{
    QFETCH(QByteArray, command);
    QVERIFY2(run("1=" + command), qPrintable(m_error));
    QTEST(indices(1), "objects");
    QCOMPARE(indices(0), u"7 2000 2001 20ff 2100"_s.split(u' '));
}

void TestImportHandler::importedSubIndicesComeWhole()
{
    QVERIFY(m_store->addSubIndex(0, 0x2000, 9, {}));
    QVERIFY(run("1=import 1:0 to 0"));
    const auto sub = ImporterTest::sub(*m_store, 0, 0x2000, 5);
    QCOMPARE(sub.name, u"source 0"_s);
    QCOMPARE(sub.implementation, int(CANopen::VirtualObject));
    QCOMPARE(sub.varname, u"variable"_s);
    QCOMPARE(m_store->getSubIndexList(0, 0x2000), QList<quint8>{5});
    QCOMPARE(indices(), u"7 2000 2001 20ff 2100 f000"_s.split(u' '));
    QCOMPARE(ImporterTest::object(*m_store, 0, 0x20FF).name, u"own 20ff"_s);
}

void TestImportHandler::deleteObjectsRemovesWhatWasNotBrought()
{
    QVERIFY(run("1=import 1:0 to 0", "delete_objects=true"));
    QCOMPARE(indices(), u"7 2000 2001 f000"_s.split(u' '));
    QVERIFY(run("1=import 1:1 to 0 offset 1", "delete_objects=true"));
    QCOMPARE(indices(), u"7 3001"_s.split(u' '));
    QVERIFY(!m_store->subIndexExists(0, 0x2000, 5));
}

void TestImportHandler::aFailedActionStopsTheRun_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::newRow("project that is not there") << QByteArray("import 2:0 to 0");
    QTest::newRow("number without project") << QByteArray("import 9:0 to 0");
    QTest::newRow("source line that is not there") << QByteArray("import 1:5 to 0");
    QTest::newRow("target line that is not there") << QByteArray("import 1:0 to 5");
    QTest::newRow("import to the scratch line") << QByteArray("import 1:0 to 255");
    QTest::newRow("import behind the last index") << QByteArray("import 1:0 to 1 offset 0x1000");
    QTest::newRow("delete from no line") << QByteArray("delete 5:0-65535");
    QTest::newRow("copy from no line") << QByteArray("copy 5:0-65535 to 1");
    QTest::newRow("copy to no line") << QByteArray("copy 0:0-65535 to 5");
    QTest::newRow("copy behind the last index") << QByteArray("copy 0:0-65535 to 1 offset 0xE000");
}

void TestImportHandler::aFailedActionStopsTheRun()
{
    QFETCH(QByteArray, command);
    const ImporterTest::DebugLines lines;
    QVERIFY(!run("1=delete 0:0x2001\n2=" + command + "\n3=delete 0:0x2100"));
    QCOMPARE(indices(), u"7 2000 20ff 2100"_s.split(u' '));
    QCOMPARE(indices(1), QStringList());
    QVERIFY(m_error.endsWith(u" %1 failed"_s.arg(QString::fromLatin1(command))));
    QVERIFY(m_error.contains(u"ImportHandler::applyImportFile"_s));
    QVERIFY(ImporterTest::DebugLines::all().contains(m_error));
}

void TestImportHandler::aFailedImportDeletesNothing()
{
    QVERIFY(!run("1=import 2:0 to 0", "delete_objects=true"));
    QVERIFY(!run("1=import 1:7 to 0", "delete_objects=true"));
    QCOMPARE(indices(), u"7 2000 2001 20ff 2100"_s.split(u' '));
}

void TestImportHandler::unknownCommandsAreDropped()
{
    QVERIFY(run("1=rename 0:0x2000\n2=delete 0:nonsense\n3=delete 0:0x2100\n4=\n5=copy 0:1-2 to 256"));
    QCOMPARE(m_error, QString());
    QCOMPARE(indices(), u"7 2000 2001 20ff"_s.split(u' '));
}

void TestImportHandler::theScratchLineIsGoneAfterwards_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<bool>("works");
    QTest::newRow("good import") << QByteArray("import 1:0 to 0") << true;
    QTest::newRow("failed import") << QByteArray("import 1:7 to 0") << false;
}

void TestImportHandler::theScratchLineIsGoneAfterwards()
{
    QFETCH(QByteArray, command);
    // What an earlier import left there does not come along.
    QVERIFY(m_store->addNode(ImporterTest::staging, ObjectDataBase::NODE_DATA_T()));
    QVERIFY(addObject(*m_store, ImporterTest::staging, 0x5000, u"left over"_s));
    const QString folder = QDir::currentPath();
    QTEST(run("1=" + command), "works");
    QCOMPARE(m_store->getLines(), (QList<quint8>{0, 1}));
    QVERIFY(!m_store->indexExists(0, 0x5000));
    QVERIFY(!m_store->signalsBlocked());
    QCOMPARE(QDir::currentPath(), folder);
}

void TestImportHandler::theLogTellsWhatIsApplied()
{
    const ImporterTest::DebugLines lines;
    QVERIFY(run("1=delete 0:0x2000"));
    const QStringList log = ImporterTest::DebugLines::all();
    QVERIFY(log.value(0).startsWith(u"Applying "_s + m_folder.path()));
    QVERIFY(log.value(1).contains(m_folder.filePath(u"sources/base.vexp"_s)));
}

void TestImportHandler::theExampleFileDoesItsWork()
{
    QFile::remove(m_folder.filePath(u"merge.ini"_s));
    QVERIFY(QFile::copy(QStringLiteral(COMMAND_DATA "/merge.ini"), m_folder.filePath(u"merge.ini"_s)));
    ImportHandler handler(m_store);
    QVERIFY(handler.setFile(m_folder.filePath(u"merge.ini"_s)));
    QVERIFY2(handler.applyImportFile(), qPrintable(handler.errorString()));
    QCOMPARE(indices(0), u"7 2001 20ff 2100 2101 f100"_s.split(u' '));
    QCOMPARE(indices(1), u"2100 2101"_s.split(u' '));
    QCOMPARE(ImporterTest::object(*m_store, 1, 0x2100).name, u"source 0"_s);
}

void TestImportHandler::hugeRangesAreFast()
{
    QVERIFY(m_store->executeSql(
        u"with recursive n(i) as (select 0x3000 union all select i + 1 from n where i < 0x6fff) "
        "insert into Objects0 select i, 1, 7, 7, 1, 0, 1, 0, 0 from n"_s));
    QElapsedTimer time;
    time.start();
    QVERIFY(run("1=copy 0:0-65535 to 1\n2=delete 0:0-65535"));
    QVERIFY2(time.elapsed() < 20000, qPrintable(QString::number(time.elapsed())));
    QCOMPARE(indices(0).size(), 0);
    QCOMPARE(indices(1).size(), 0x4000 + 5);
}

void TestImportHandler::theWriteLockIsReleased()
{
    m_store->setWriteLock(true);
    QVERIFY(run("1=delete 0:0x2000"));
    QVERIFY(!m_store->isWriteLocked());
    QVERIFY(!m_store->indexExists(0, 0x2000));
}

void TestImportHandler::withoutStoreOrFileNothingIsApplied()
{
    ImportHandler withoutFile(m_store);
    QVERIFY(!withoutFile.applyImportFile());
    QVERIFY(!withoutFile.errorString().isEmpty());
    QVERIFY(!withoutFile.setFile(m_folder.filePath(u"no such file"_s)));
    QCOMPARE(withoutFile.errorString(),
             u"File %1 is not readable."_s.arg(m_folder.filePath(u"no such file"_s)));
    QVERIFY(!withoutFile.setFile(m_folder.path()));
    ImportHandler withoutStore(nullptr);
    QVERIFY(!withoutStore.applyImportFile());
    QVERIFY(!withoutStore.errorString().isEmpty());
}

void TestImportHandler::randomFilesDoNoHarm()
{
    const ImporterTest::DebugLines quiet;
    QFile file(QStringLiteral(COMMAND_DATA "/merge.ini"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray good = file.readAll().replace("[Actions]", "[Actionz]");
    QRandomGenerator random(3);
    for (int round = 0; round < 200; ++round) {
        QByteArray bad = good;
        for (int hit = 0; hit < 10; ++hit)
            bad[random.bounded(int(bad.size()))] = char(random.bounded(256));
        runFile(bad);
    }
    QCOMPARE(indices(), u"7 2000 2001 20ff 2100"_s.split(u' '));
    QVERIFY(run("1=delete 0:0x2000"));
}

QTEST_GUILESS_MAIN(TestImportHandler)
#include "tst_importhandler.moc"
