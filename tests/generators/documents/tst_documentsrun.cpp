#include "generators/RunDesk.h"
#include "generators/documents/DocumentGenerators.h"

using namespace Qt::StringLiterals;

namespace {

/** A desk whose runs have the real generators of the documents. */
class DocumentRunDesk : public RunDesk
{
public:
    explicit DocumentRunDesk(const QList<int> &lineTypes) : RunDesk(lineTypes)
    {
        qputenv("SOURCE_DATE_EPOCH", "1700000000");
        GeneratorFactories factories;
        addDocumentGenerators(factories);
        handler.setFactories(factories);
    }

    QStringList files() const
    {
        return QDir(folder.path()).entryList({u"project*"_s}, QDir::Files, QDir::Name);
    }
};

} // namespace

/** The documents as steps of a generation run. */
class TestDocumentsRun : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void everyCANopenLineHasItsDocuments_data();
    void everyCANopenLineHasItsDocuments();
    void theRunTellsWhatItDoes();
    void aFileThatCannotBeWrittenStopsNothing();
    void theProjectCanDoWithoutDescriptions_data();
    void theProjectCanDoWithoutDescriptions();
    void aSecondRunGivesTheSameFiles();
};

void TestDocumentsRun::everyCANopenLineHasItsDocuments_data()
{
    QTest::addColumn<QList<int>>("types");
    QTest::addColumn<QStringList>("files");
    QTest::newRow("unset") << QList<int>{0} << QStringList();
    QTest::newRow("J1939") << QList<int>{2} << QStringList();
    QTest::newRow("raw CAN") << QList<int>{4} << QStringList();
    QTest::newRow("CANopen") << QList<int>{
        1} << QStringList({u"project.csv"_s, u"project.html"_s, u"project.icsv"_s, u"project_doc.txt"_s});
    for (const int mixed : {5, 6})
        QTest::addRow("mixed line of type %d", mixed)
            << QList<int>{mixed}
            << QStringList({u"project.csv"_s, u"project.icsv"_s, u"project_co.html"_s, u"project_doc.txt"_s});
    QTest::newRow("several lines") << QList<int>{1, 2, 5}
                                   << QStringList({u"project_0.csv"_s, u"project_0.html"_s,
                                                   u"project_0.icsv"_s, u"project_0.txt"_s,
                                                   u"project_2.csv"_s, u"project_2.icsv"_s,
                                                   u"project_2.txt"_s, u"project_2_co.html"_s});
}

void TestDocumentsRun::everyCANopenLineHasItsDocuments()
{
    QFETCH(QList<int>, types);
    QFETCH(QStringList, files);
    DocumentRunDesk desk(types);
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    QCOMPARE(desk.files(), files);
}

void TestDocumentsRun::theRunTellsWhatItDoes()
{
    DocumentRunDesk desk({1});
    desk.run();
    const QString folder = desk.folder.path();
    QCOMPARE(
        desk.messagesOfTheRun().filter(u"Generation of"_s),
        QStringList({u"Generation of textual object dictionary documentation in %1 started"_s.arg(folder),
                     u"Generation of project_doc.txt completed. "_s,
                     u"Generation of HTML object dictionary documentation in %1 started"_s.arg(folder),
                     u"Generation of project.html completed. "_s,
                     u"Generation of CSV file (deprecated) in %1 started"_s.arg(folder),
                     u"Generation of project.csv completed. "_s,
                     u"Generation of ICSV file in %1 started"_s.arg(folder),
                     u"Generation of project.icsv completed. "_s}));
}

void TestDocumentsRun::aFileThatCannotBeWrittenStopsNothing()
{
    DocumentRunDesk desk({1});
    QVERIFY(QDir(desk.folder.path()).mkdir(u"project.html"_s));
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    QVERIFY(desk.exists(u"project.icsv"_s));
    QCOMPARE(desk.output.all.filter(u"ERROR - Generation of project.html failed."_s).size(), 1);
}

void TestDocumentsRun::theProjectCanDoWithoutDescriptions_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<bool>("hasDescriptions");
    QTest::newRow("unset") << QString() << true;
    QTest::newRow("false") << u"false"_s << true;
    QTest::newRow("true") << u"true"_s << false;
}

void TestDocumentsRun::theProjectCanDoWithoutDescriptions()
{
    QFETCH(QString, setting);
    QFETCH(bool, hasDescriptions);
    DocumentRunDesk desk({1});
    desk.object(0, 0x2000);
    desk.setMisc(u"disableDocu"_s, setting);
    desk.run();
    const QByteArray text = desk.read(u"project.icsv"_s);
    QCOMPARE(text.contains(",description,"), hasDescriptions);
    QCOMPARE(text.contains(",the vendor's number,"), hasDescriptions);
}

void TestDocumentsRun::aSecondRunGivesTheSameFiles()
{
    DocumentRunDesk desk({1, 5});
    desk.object(0, 0x2000);
    desk.object(1, 0x2001);
    desk.run();
    const QStringList names = desk.files();
    QCOMPARE(names.size(), 8);
    QByteArrayList first;
    for (const QString &name : names)
        first.append(desk.read(name));
    desk.run();
    for (qsizetype i = 0; i < names.size(); ++i)
        QCOMPARE(desk.read(names.at(i)), first.at(i));
}

QTEST_GUILESS_MAIN(TestDocumentsRun)
#include "tst_documentsrun.moc"
