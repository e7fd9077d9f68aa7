#include "check/CheckTest.h"

#include <QTimer>

using namespace CheckTest;
using namespace CheckTest::Texts;

/** The check serves events: what happens there to the project must neither crash it nor pass as checked. */
class TestProjectGone : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void aProjectThatGoesDuringTheCheckIsAnError_data();
    void aProjectThatGoesDuringTheCheckIsAnError();
    void aProjectThatComesDuringTheCheckIsNotCorrected();
    void aClosedProjectIsAnError();
    void objectsThatGoDuringTheCheckAreNotCorrected();
};

namespace {

const QString gone = "The project was closed or replaced while it was checked."_error;

/** Runs the action when the check serves events for that time, from 1 on. */
Outcome checkWith(const Project &project, int time, const std::function<void()> &action)
{
    int served = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        if (++served == time)
            action();
    });
    timer.start(0);
    return Checker().checkCANopen(project);
}

int objectCount(const Project &project)
{
    return int(project.store->getIndexList(project.line).size());
}

} // namespace

void TestProjectGone::aProjectThatGoesDuringTheCheckIsAnError_data()
{
    QTest::addColumn<bool>("inTheObjects");
    QTest::addColumn<bool>("another");
    QTest::newRow("closed in the walk over the values") << false << false;
    QTest::newRow("closed in the walk over the objects") << true << false;
    QTest::newRow("another in the walk over the values") << false << true;
    QTest::newRow("another in the walk over the objects") << true << true;
}

void TestProjectGone::aProjectThatGoesDuringTheCheckIsAnError()
{
    QFETCH(bool, inTheObjects);
    QFETCH(bool, another);
    const Project project;
    const auto go = [&] {
        another ? void(project.store->createNewDataBase()) : project.store->closeDataBase();
    };
    compare(checkWith(project, inTheObjects ? objectCount(project) + 2 : 2, go), {gone});
}

void TestProjectGone::aProjectThatComesDuringTheCheckIsNotCorrected()
{
    const Project project;
    project.value(0x2000, 0, "9");
    QString hash;
    const auto replace = [&] {
        QVERIFY(project.store->createNewDataBase());
        project.array(0x2000, {"1", "2", "3"});
        project.value(0x2000, 0, "9");
        hash = project.store->contentHash();
    };
    compare(checkWith(project, objectCount(project) + 1, replace), {gone});
    QVERIFY(!hash.isEmpty());
    QCOMPARE(project.store->contentHash(), hash);
}

void TestProjectGone::aClosedProjectIsAnError()
{
    const Project project;
    project.store->closeDataBase();
    compare(Checker().checkCANopen(project), {gone});
}

void TestProjectGone::objectsThatGoDuringTheCheckAreNotCorrected()
{
    const Project project;
    project.value(0x2000, 0, "9");
    const int objects = objectCount(project);
    const auto remove = [&] { project.remove(0x2000); };
    const Outcome outcome = checkWith(project, objects + 1, remove);
    QVERIFY(!outcome.changed);
    QVERIFY(!project.store->indexExists(0, 0x2000));
    QVERIFY(!project.store->subIndexExists(0, 0x2000, 0));
}

QTEST_GUILESS_MAIN(TestProjectGone)
#include "tst_projectgone.moc"
