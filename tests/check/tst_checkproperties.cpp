#include "check/CheckTest.h"
#include "check/RandomProject.h"

#include <QTemporaryDir>

using namespace CheckTest;

/** What holds for every project, shown on random ones. */
class TestCheckProperties : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void validProjectsAreSilent_data() { addSeeds(60); }
    void validProjectsAreSilent();
    void validProjectsAreNotTouched_data() { addSeeds(10); }
    void validProjectsAreNotTouched();
    void aSecondCheckCorrectsNothingAndTellsTheRest_data() { addSeeds(40); }
    void aSecondCheckCorrectsNothingAndTellsTheRest();
    void aSavedProjectHasTheSameFindings_data() { addSeeds(10); }
    void aSavedProjectHasTheSameFindings();

private:
    static void addSeeds(int count);
    static QStringList corrections(const QStringList &messages)
    {
        return messages.filter(QStringLiteral("<i>Corrected: "));
    }
};

void TestCheckProperties::addSeeds(int count)
{
    QTest::addColumn<quint32>("seed");
    for (int seed = 1; seed <= count; ++seed)
        QTest::addRow("seed %d", seed) << quint32(seed);
}

void TestCheckProperties::validProjectsAreSilent()
{
    QFETCH(quint32, seed);
    Project project = RandomProject(seed).make();
    compare(Checker().checkAll(project), {});
}

void TestCheckProperties::validProjectsAreNotTouched()
{
    QFETCH(quint32, seed);
    Project project = RandomProject(seed).make();
    const QString before = project.store->contentHash();
    Checker().checkAll(project);
    QCOMPARE(project.store->contentHash(), before);
}

void TestCheckProperties::aSecondCheckCorrectsNothingAndTellsTheRest()
{
    QFETCH(quint32, seed);
    RandomProject random(seed);
    Project project = random.make();
    const QList<quint8> lines = project.store->getLines();
    int expected = 0;
    for (const quint8 line : lines) {
        project.line = line;
        if (random.chance(50))
            random.spoil(project);
        expected += random.spoilCorrectably(project);
    }
    const Outcome first = Checker().checkAll(project);
    QCOMPARE(corrections(first.messages).size(), expected);
    QCOMPARE(first.changed, expected > 0);
    QStringList rest = first.messages;
    rest.removeIf(
        [](const QString &message) { return message.startsWith(QStringLiteral("<i>Corrected: ")); });
    const QString corrected = project.store->contentHash();
    compare(Checker().checkAll(project), rest);
    QCOMPARE(project.store->contentHash(), corrected);
}

void TestCheckProperties::aSavedProjectHasTheSameFindings()
{
    QFETCH(quint32, seed);
    RandomProject random(seed);
    Project project = random.make();
    const QList<quint8> lines = project.store->getLines();
    for (const quint8 line : lines) {
        project.line = line;
        random.spoil(project);
    }
    const QTemporaryDir folder;
    const QString path = folder.filePath("project.vexp");
    QVERIFY(project.store->saveProject(path));
    const Outcome outcome = Checker().checkAll(project);
    Project saved(path);
    compare(Checker().checkAll(saved), outcome.messages);
}

QTEST_GUILESS_MAIN(TestCheckProperties)
#include "tst_checkproperties.moc"
