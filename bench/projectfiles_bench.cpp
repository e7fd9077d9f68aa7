// Open and save of whole projects against the least that SQLite and the disk need for the same.

#include "Pairs.h"
#include "Projects.h"

namespace {

constexpr int projectSize = 20'000;

Pairs::Seconds openSeconds(int subIndices)
{
    const QString project = Projects::saved(subIndices, QStringLiteral("vexp"));
    ObjectDataBase store;
    const Pairs::Seconds taken = Pairs::seconds([&] { Bare::require(store.openDataBase(project)); });
    Bare::require(!store.isExternallyModified());
    return taken;
}

/** Copy, compact, hash: what an open does at least. */
Pairs::Seconds bareOpenSeconds()
{
    const QString project = Projects::saved(projectSize, QStringLiteral("vexp"));
    const QString copy = Projects::path(QStringLiteral("opened"));
    std::unique_ptr<Bare::File> file;
    const Pairs::Seconds taken = Pairs::seconds([&] {
        Bare::copyFile(project, copy);
        file = std::make_unique<Bare::File>(copy);
        file->run("VACUUM");
        benchmark::DoNotOptimize(file->hash());
    });
    file.reset();
    QFile::remove(copy);
    return taken;
}

void openProject(benchmark::State &state)
{
    Pairs::compare(
        state, 2.5, [] { return openSeconds(projectSize); }, bareOpenSeconds, 15);
}
BENCHMARK(openProject)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

void openProjectOfFourTimesTheSize(benchmark::State &state)
{
    Pairs::compare(
        state, 4.5, [] { return openSeconds(40'000); }, [] { return openSeconds(10'000); });
}
BENCHMARK(openProjectOfFourTimesTheSize)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

void saveProject(benchmark::State &state)
{
    const QString project = Projects::saved(projectSize, QStringLiteral("vexp"));
    ObjectDataBase store;
    Bare::require(store.openDataBase(project));
    const QString working = Projects::path(QStringLiteral("working"));
    Bare::copyFile(project, working);
    Bare::File file(working);
    const auto storeSeconds = [&] {
        const QString target = Projects::path(QStringLiteral("target.vexp"));
        return Pairs::seconds([&] { Bare::require(store.saveProject(target)); });
    };
    const auto bareSeconds = [&] {
        const QString target = Projects::path(QStringLiteral("target"));
        const Pairs::Seconds taken = Pairs::seconds([&] {
            benchmark::DoNotOptimize(file.hash());
            Bare::copyFile(working, target, true);
        });
        QFile::remove(target);
        return taken;
    };
    Pairs::compare(state, 2.0, storeSeconds, bareSeconds, 15);
}
BENCHMARK(saveProject)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return Projects::run(argc, argv);
}
