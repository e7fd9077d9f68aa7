#include "generators/canopen/DictionaryDesk.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/** The run of the object dictionary generator. */
class TestObjDictRun : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        StoreTest::prepareApplication();
        qputenv("SOURCE_DATE_EPOCH", "1700000000");
    }
    void progressIsTold();
    void theStoreIsWritableAfterTheRun();
    void theSameProjectGivesTheSameBytes();
    void anExistingFileIsReplaced();
    void writabilityIsThatOfTheFile();
    void withoutAProjectTheRunFails();
};

void TestObjDictRun::progressIsTold()
{
    DictionaryDesk desk;
    ObjDictGeneratorV4 generator(false);
    QSignalSpy progress(&generator, &AbstractGenerator::progress);
    desk.run(generator);
    QCoreApplication::processEvents();
    QList<int> percents;
    for (const QVariantList &told : std::as_const(progress))
        percents.append(told.constFirst().toInt());
    QCOMPARE(percents, (QList<int>{25, 50, 75, 100}));
    QCOMPARE(generator.objectName(), u"gen_objdict.c"_s);
}

void TestObjDictRun::theStoreIsWritableAfterTheRun()
{
    DictionaryDesk desk;
    desk.generate();
    QVERIFY(!desk.store.isWriteLocked());
    desk.variable(0x2000, {});
}

void TestObjDictRun::theSameProjectGivesTheSameBytes()
{
    DictionaryDesk desk;
    for (const quint8 line : {0, 1})
        for (quint16 index = 0x2000; index < 0x2040; ++index)
            desk.array(index, QList<Entry>(5, {.value = QString::number(index % 7)}), line);
    const QString first = desk.generate();
    QCOMPARE(desk.generate(), first);
}

void TestObjDictRun::anExistingFileIsReplaced()
{
    DictionaryDesk desk;
    desk.write(u"gen_objdict.c"_s, QByteArray(100'000, 'x'));
    QVERIFY(!desk.generate().contains(u'x' + QString(u"x"_s)));
}

void TestObjDictRun::writabilityIsThatOfTheFile()
{
    DictionaryDesk desk;
    ObjDictGeneratorV4 generator(false);
    generator.setOutputDir(desk.folder.path());
    QVERIFY(generator.isOutputWritable());
    QVERIFY(!desk.exists(u"gen_objdict.c"_s));
    desk.generate();
    QVERIFY(generator.isOutputWritable());
}

void TestObjDictRun::withoutAProjectTheRunFails()
{
    QTemporaryDir folder;
    ObjDictGenerator generator(false);
    generator.setOutputDir(folder.path());
    QVERIFY(generator.startGeneration() == GeneratorStatus::Success);
    generator.waitForEnd();
    QVERIFY(generator.isFailed());
    QVERIFY(!QFile::exists(folder.filePath(u"gen_objdict.c"_s)));
}

QTEST_GUILESS_MAIN(TestObjDictRun)
#include "tst_objdictrun.moc"
