#include "generators/canopen/GeneratedDevice.h"
#include "generators/canopen/RandomDictionary.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int firstSeed = 20260600;
constexpr int projects = 50;

/** Number of an environment variable, with which a longer run asks for more and other projects. */
int asked(const char *variable, int otherwise)
{
    const int number = qEnvironmentVariableIntValue(variable);
    return number > 0 ? number : otherwise;
}

/** One compiler for each project: half the time, and both have enough of them. */
QStringList compilerFor(quint32 seed)
{
    const QStringList compilers = CCompiler::programs();
    return {compilers.at(qsizetype(seed % quint32(compilers.size())))};
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
    const auto first = quint32(asked("NODESMITH_RANDOM_FIRST", firstSeed));
    const auto end = first + quint32(asked("NODESMITH_RANDOM_PROJECTS", projects));
    for (quint32 seed = first; seed < end; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void TestGeneratedCodeRandom::runningCodeHasWhatTheProjectSays()
{
    QFETCH(quint32, seed);
    const CheckTest::Project project = RandomDictionary(seed).make();
    GeneratedDevice device(project.store);
    QCOMPARE(device.generate(true), RunDesk::Result::Completed);
    const QString fault = device.firstFault(compilerFor(seed));
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
}

QTEST_GUILESS_MAIN(TestGeneratedCodeRandom)
#include "tst_generatedcoderandom.moc"
