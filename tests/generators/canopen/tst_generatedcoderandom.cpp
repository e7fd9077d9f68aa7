#include "generators/canopen/GeneratedDevice.h"
#include "generators/canopen/RandomDictionary.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 firstSeed = 20260600;
constexpr int projects = 10;

/** More of them when the environment asks: every one costs two compilers' time. */
int projectCount()
{
    const int asked = qEnvironmentVariableIntValue("NODESMITH_RANDOM_PROJECTS");
    return asked > 0 ? asked : projects;
}

} // namespace

/** Devices that nobody would draw, generated, compiled, run and asked for what their project says. */
class TestGeneratedCodeRandom : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void runningCodeHasWhatTheProjectSays_data();
    void runningCodeHasWhatTheProjectSays();
};

void TestGeneratedCodeRandom::runningCodeHasWhatTheProjectSays_data()
{
    QTest::addColumn<quint32>("seed");
    for (int i = 0; i < projectCount(); ++i)
        QTest::addRow("seed %u", firstSeed + quint32(i)) << firstSeed + quint32(i);
}

void TestGeneratedCodeRandom::runningCodeHasWhatTheProjectSays()
{
    QFETCH(quint32, seed);
    const CheckTest::Project project = RandomDictionary(seed).make();
    GeneratedDevice device(project.store);
    QCOMPARE(device.generate(true), RunDesk::Result::Completed);
    const QString fault = device.firstFault();
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
}

QTEST_GUILESS_MAIN(TestGeneratedCodeRandom)
#include "tst_generatedcoderandom.moc"
