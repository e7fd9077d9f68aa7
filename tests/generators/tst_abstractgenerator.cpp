#include "generators/GeneratorTest.h"

#include <QSignalSpy>

using namespace StoreTest;
using namespace Qt::StringLiterals;

/** What a generator lets be set, asked and stopped. */
class TestAbstractGenerator : public GeneratorTest
{
    Q_OBJECT

private Q_SLOTS:
    void theVersionIsThatOfTheApplication();
    void aFolderThatDoesNotExistIsTold();
    void aFileIsNoOutputFolder();
    void thePathIsTakenEvenWhereItIsNoFolder();
    void aMissingDatabaseIsTold();
    void aDatabaseWithoutLinesIsTold();
    void aLineThatTheProjectDoesNotHaveIsRefused();
    void aLineNeedsTheDatabase();
    void settersChangeNothingWhileTheJobRuns();
    void aSecondStartIsRefusedWhileTheJobRuns();
    void aStopIsAskedForOnlyWhileTheJobRuns();
    void aTargetThatDoesNotExistIsWritable();
    void aTargetThatIsAFileIsWritable();
    void theObjectNameIsTheFileName();
    void theFailureIsKnownWhenTheJobHasEnded();
    void theMultiLineFormIsReadFromTheProject_data();
    void theMultiLineFormIsReadFromTheProject();
    void aMultiLineProjectHasTheMultiLineForm();
};

void TestAbstractGenerator::theVersionIsThatOfTheApplication()
{
    QCOMPARE(FakeGenerator().version(), u"4.3.2"_s);
}

void TestAbstractGenerator::aFolderThatDoesNotExistIsTold()
{
    FakeGenerator generator;
    QCOMPARE(generator.setOutputDir(m_folder->filePath(u"missing"_s)), GeneratorStatus::NoOutputDir);
    QCOMPARE(generator.setOutputDir(QString()), GeneratorStatus::NoOutputDir);
}

void TestAbstractGenerator::aFileIsNoOutputFolder()
{
    QFile file(m_folder->filePath(u"file"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    FakeGenerator generator;
    QCOMPARE(generator.setOutputDir(file.fileName()), GeneratorStatus::NoOutputDir);
}

void TestAbstractGenerator::thePathIsTakenEvenWhereItIsNoFolder()
{
    FakeGenerator generator({.writesFile = true});
    generator.setDatabase(&m_store);
    const QString missing = m_folder->filePath(u"missing"_s);
    generator.setOutputDir(missing);
    QCOMPARE(generator.folder(), missing);
    QCOMPARE(generator.startGeneration(), GeneratorStatus::Success);
    generator.waitForEnd();
    QVERIFY(generator.isFailed());
    QVERIFY(!QFile::exists(u"/fake.c"_s));
}

void TestAbstractGenerator::aMissingDatabaseIsTold()
{
    QCOMPARE(FakeGenerator().setDatabase(nullptr), GeneratorStatus::NoDatabase);
}

void TestAbstractGenerator::aDatabaseWithoutLinesIsTold()
{
    NewStore store;
    QVERIFY(store.removeLine(0));
    FakeGenerator generator;
    QCOMPARE(generator.setDatabase(&store), GeneratorStatus::NoDatabase);
}

void TestAbstractGenerator::aLineThatTheProjectDoesNotHaveIsRefused()
{
    FakeGenerator generator;
    generator.setDatabase(&m_store);
    QCOMPARE(generator.setLine(0), GeneratorStatus::Success);
    QCOMPARE(generator.setLine(3), GeneratorStatus::UnknownLine);
    QCOMPARE(generator.line(), quint8(0));
}

void TestAbstractGenerator::aLineNeedsTheDatabase()
{
    QCOMPARE(FakeGenerator().setLine(0), GeneratorStatus::NoDatabase);
}

void TestAbstractGenerator::settersChangeNothingWhileTheJobRuns()
{
    Gate gate;
    FakeGenerator generator(gate.plan());
    prepare(generator);
    QCOMPARE(generator.startGeneration(), GeneratorStatus::Success);
    QVERIFY(gate.waitUntilReached());
    QCOMPARE(generator.setOutputDir(u"/tmp"_s), GeneratorStatus::Running);
    QCOMPARE(generator.setDatabase(nullptr), GeneratorStatus::Running);
    QCOMPARE(generator.setProjectName(u"other"_s), GeneratorStatus::Running);
    QCOMPARE(generator.setLine(0), GeneratorStatus::Running);
    gate.open();
    generator.waitForEnd();
    QCOMPARE(generator.folder(), m_folder->path());
    QCOMPARE(generator.store(), &m_store);
    QCOMPARE(generator.project(), u"project"_s);
}

void TestAbstractGenerator::aSecondStartIsRefusedWhileTheJobRuns()
{
    Gate gate;
    FakeGenerator generator(gate.plan());
    prepare(generator);
    QSignalSpy progress(&generator, &AbstractGenerator::progress);
    QCOMPARE(generator.startGeneration(), GeneratorStatus::Success);
    QCOMPARE(generator.startGeneration(), GeneratorStatus::Running);
    QVERIFY(gate.waitUntilReached());
    QCOMPARE(generator.startGeneration(), GeneratorStatus::Running);
    gate.open();
    generator.waitForEnd();
    QCOMPARE(progress.count(), 1);
}

void TestAbstractGenerator::aStopIsAskedForOnlyWhileTheJobRuns()
{
    Gate gate;
    FakeGenerator generator(gate.plan());
    prepare(generator);
    QCOMPARE(generator.requestStop(), GeneratorStatus::NotRunning);
    QVERIFY(!generator.isStopRequested());
    generator.startGeneration();
    QVERIFY(gate.waitUntilReached());
    QCOMPARE(generator.requestStop(), GeneratorStatus::Success);
    QVERIFY(generator.isStopRequested());
    gate.open();
    generator.waitForEnd();
    QCOMPARE(generator.requestStop(), GeneratorStatus::NotRunning);
}

void TestAbstractGenerator::aTargetThatDoesNotExistIsWritable()
{
    FakeGenerator generator;
    prepare(generator);
    QVERIFY(generator.isOutputWritable());
    QVERIFY(!QFile::exists(m_folder->filePath(u"fake.c"_s)));
}

void TestAbstractGenerator::aTargetThatIsAFileIsWritable()
{
    QFile file(m_folder->filePath(u"fake.c"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("former content");
    file.close();
    FakeGenerator generator;
    prepare(generator);
    QVERIFY(generator.isOutputWritable());
    QCOMPARE(file.size(), 14);
}

void TestAbstractGenerator::theObjectNameIsTheFileName()
{
    FakeGenerator generator({.fileName = u"gen_objdict.c"_s});
    prepare(generator);
    generator.startGeneration();
    QCOMPARE(generator.objectName(), u"gen_objdict.c"_s);
    generator.waitForEnd();
}

void TestAbstractGenerator::theFailureIsKnownWhenTheJobHasEnded()
{
    Gate gate;
    FakePlan plan = gate.plan();
    plan.failure = u"Template file not found."_s;
    FakeGenerator generator(plan);
    prepare(generator);
    generator.startGeneration();
    QVERIFY(gate.waitUntilReached());
    QVERIFY(!generator.isFailed());
    QCOMPARE(generator.errorString(), QString());
    gate.open();
    generator.waitForEnd();
    QVERIFY(generator.isFailed());
    QCOMPARE(generator.errorString(), u"Template file not found."_s);
}

void TestAbstractGenerator::theMultiLineFormIsReadFromTheProject_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("expected");
    QTest::newRow("true") << u"true"_s << true;
    QTest::newRow("any case") << u"TrUe"_s << true;
    QTest::newRow("false") << u"false"_s << false;
    QTest::newRow("a number is no true") << u"1"_s << false;
    QTest::newRow("absent") << QString() << false;
}

void TestAbstractGenerator::theMultiLineFormIsReadFromTheProject()
{
    QFETCH(QString, value);
    NewStore store;
    store.setMiscSetting(u"generateML"_s, value);
    FakeGenerator generator;
    prepare(generator);
    generator.setDatabase(&store);
    generator.startGeneration();
    generator.waitForEnd();
    QTEST(generator.multiLineForm(), "expected");
}

void TestAbstractGenerator::aMultiLineProjectHasTheMultiLineForm()
{
    FakeGenerator generator;
    prepare(generator);
    generator.setMultiLine(true);
    generator.startGeneration();
    generator.waitForEnd();
    QVERIFY(generator.multiLineForm());
}

QTEST_GUILESS_MAIN(TestAbstractGenerator)
#include "tst_abstractgenerator.moc"
