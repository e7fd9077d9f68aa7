// Device descriptions against one pass that reads the line's sub-indices and writes as many bytes, and their
// growth with the number of sub-indices.

#include "Pairs.h"
#include "Projects.h"
#include "generators/GeneratorFactories.h"
#include "generators/descriptions/DescriptionGenerators.h"

#include <memory>

namespace {

using Store = std::unique_ptr<ObjectDataBase>;

constexpr int projectSize = 20'000;
constexpr int rounds = 15;
constexpr double passGoal = 3.0;
constexpr double fourfoldGoal = 4.5;

/** A project with its read caches filled, as a run fills them. */
Store device(int subIndices)
{
    auto store = std::make_unique<ObjectDataBase>();
    Projects::fill(*store, subIndices);
    store->cacheAllSubs(0);
    return store;
}

QString outputFolder()
{
    static const QTemporaryDir folder(Projects::path(QStringLiteral("output-XXXXXX")));
    return folder.path();
}

QString fileName(GeneratorKind kind)
{
    return outputFolder()
        + (kind == GeneratorKind::Eds ? QStringLiteral("/device.eds") : QStringLiteral("/device_0.xdd"));
}

/** Runs a generator here, without a thread of its own. */
Pairs::Seconds generateSeconds(ObjectDataBase &store, GeneratorKind kind)
{
    GeneratorFactories factories;
    addDescriptionGenerators(factories);
    const auto generator = factories.create({.kind = kind});
    generator->setDatabase(&store);
    generator->setOutputDir(outputFolder());
    generator->setProjectName(QStringLiteral("device"));
    const Pairs::Seconds taken = Pairs::seconds([&] { generator->doJob(); });
    Bare::require(!generator->isFailed());
    return taken;
}

QByteArray content(const QString &path)
{
    QFile file(path);
    Bare::require(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

Pairs::Seconds passSeconds(ObjectDataBase &store, const QByteArray &bytes)
{
    return Pairs::seconds([&] {
        store.cacheAllSubs(0);
        QFile file(outputFolder() + QStringLiteral("/copy"));
        Bare::require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    });
}

void describe(benchmark::State &state, GeneratorKind kind)
{
    const Store store = device(projectSize);
    generateSeconds(*store, kind);
    const QByteArray bytes = content(fileName(kind));
    state.counters["kilobytes"] = double(bytes.size()) / 1024;
    Pairs::compare(
        state, passGoal, [&] { return generateSeconds(*store, kind); },
        [&] { return passSeconds(*store, bytes); }, rounds);
}

void grow(benchmark::State &state, GeneratorKind kind)
{
    const Store small = device(projectSize / 2);
    const Store large = device(2 * projectSize);
    Pairs::compare(
        state, fourfoldGoal, [&] { return generateSeconds(*large, kind); },
        [&] { return generateSeconds(*small, kind); }, rounds);
}

void once(benchmark::internal::Benchmark *run)
{
    run->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(describe, EDS, GeneratorKind::Eds)->Apply(once);
BENCHMARK_CAPTURE(describe, XDD, GeneratorKind::Xdd)->Apply(once);
BENCHMARK_CAPTURE(grow, EDS from 10000 to 40000, GeneratorKind::Eds)->Apply(once);
BENCHMARK_CAPTURE(grow, XDD from 10000 to 40000, GeneratorKind::Xdd)->Apply(once);

} // namespace

int main(int argc, char **argv)
{
    return Projects::run(argc, argv);
}
