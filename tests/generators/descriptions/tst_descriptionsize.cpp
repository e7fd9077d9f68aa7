#include "generators/descriptions/DescriptionDesk.h"
#include "generators/descriptions/StrictEds.h"

#include <ctime>

using namespace Qt::StringLiterals;

namespace {

constexpr int subIndicesPerObject = 20;

void makeObjects(DescriptionDesk &desk, int subIndices)
{
    desk.mandatoryObjects();
    QList<ObjectDataBase::SubEntry> rows;
    for (int i = 0; i < subIndices; ++i) {
        const quint16 index = quint16(0x2000 + i / subIndicesPerObject);
        const quint8 number = quint8(i % subIndicesPerObject);
        if (number == 0)
            desk.object(index, u"Array %1"_s.arg(index), CANopen::Array, {});
        DescriptionDesk::Sub sub =
            DescriptionDesk::sub(u"Parameter %1"_s.arg(number), CAN::Unsigned32, QString::number(i));
        sub.description = u"Set point of drive %1"_s.arg(i);
        rows.append({.line = 0, .index = index, .subindex = number, .data = sub});
    }
    QVERIFY(desk.store->addSubIndices(rows));
    desk.store->cacheAllSubs(0);
}

/** Processor time of this thread, in seconds. */
double seconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) + 1e-9 * double(now.tv_nsec);
}

/** The least of some runs, which is the one that was disturbed least. */
double secondsOfAFile(DescriptionDesk &desk, const GeneratorRequest &request)
{
    constexpr int runs = 3;
    double least = 0;
    for (int run = 0; run < runs; ++run) {
        const auto generator = desk.generator(request);
        const double start = seconds();
        generator->doJob();
        const double taken = seconds() - start;
        least = run == 0 ? taken : qMin(least, taken);
    }
    return least;
}

} // namespace

/** Descriptions of large devices. */
class TestDescriptionSize : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void aLargeDeviceIsWrittenWhole();
    void timeGrowsAsTheDeviceDoes_data();
    void timeGrowsAsTheDeviceDoes();
};

void TestDescriptionSize::aLargeDeviceIsWrittenWhole()
{
    constexpr int subIndices = 20000;
    DescriptionDesk desk;
    makeObjects(desk, subIndices);
    QCOMPARE(desk.run(DescriptionDesk::eds()), QString());
    const StrictEds file(desk.read(u"pump.eds"_s));
    QCOMPARE(file.errors(), QStringList());
    const QStringList names = file.sections().keys();
    QCOMPARE(names.filter(u"sub"_s).size(), subIndices + 4);
}

void TestDescriptionSize::timeGrowsAsTheDeviceDoes_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("EDS") << int(GeneratorKind::Eds);
    QTest::newRow("XDD") << int(GeneratorKind::Xdd);
}

void TestDescriptionSize::timeGrowsAsTheDeviceDoes()
{
    QFETCH(int, kind);
    constexpr int few = 5000;
    constexpr int growth = 4;
    const GeneratorRequest request{.kind = GeneratorKind(kind)};
    DescriptionDesk small;
    makeObjects(small, few);
    DescriptionDesk large;
    makeObjects(large, growth * few);
    const double factor = secondsOfAFile(large, request) / secondsOfAFile(small, request);
    // Twice the growth leaves room for caches; a step that looks at all pairs would give its square.
    QVERIFY2(factor < 2 * growth, qPrintable(QString::number(factor)));
}

QTEST_GUILESS_MAIN(TestDescriptionSize)
#include "tst_descriptionsize.moc"
