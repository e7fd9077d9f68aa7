// A step of undo: the copy that keeps a state, and the way back to it.

#include "Pairs.h"
#include "Projects.h"

namespace {

constexpr int projectSize = 20'000;
constexpr int rounds = 25;

void takeSnapshot(benchmark::State &state)
{
    const QString project = Projects::saved(projectSize, QStringLiteral("vexp"));
    ObjectDataBase store;
    Bare::require(store.openDataBase(project));
    const QString working = Projects::path(QStringLiteral("working"));
    Bare::copyFile(project, working);
    Bare::File file(working);
    const QString snapshot = Projects::path(QStringLiteral("snapshot"));
    const auto snapshotSeconds = [&](const std::function<void()> &job) {
        const Pairs::Seconds taken = Pairs::seconds(job);
        QFile::remove(snapshot);
        return taken;
    };
    const std::string sql = "VACUUM INTO '" + snapshot.toStdString() + '\'';
    Pairs::compare(
        state, 1.3, [&] { return snapshotSeconds([&] { Bare::require(store.vacuumInto(snapshot)); }); },
        [&] { return snapshotSeconds([&] { file.run(sql); }); }, rounds);
}
BENCHMARK(takeSnapshot)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

void restoreSnapshot(benchmark::State &state)
{
    ObjectDataBase store;
    Bare::require(store.openDataBase(Projects::saved(projectSize, QStringLiteral("vexp"))));
    const QString snapshot = Projects::path(QStringLiteral("snapshot"));
    Bare::require(store.vacuumInto(snapshot));
    const auto restoreSeconds = [&] {
        return Pairs::seconds([&] { Bare::require(store.restoreSnapshot(snapshot)); });
    };
    const auto copySeconds = [&] {
        const QString copy = Projects::path(QStringLiteral("copy"));
        const Pairs::Seconds taken = Pairs::seconds([&] { Bare::copyFile(snapshot, copy); });
        QFile::remove(copy);
        return taken;
    };
    Pairs::compare(state, 5.0, restoreSeconds, copySeconds, rounds);
    QFile::remove(snapshot);
}
BENCHMARK(restoreSnapshot)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return Projects::run(argc, argv);
}
