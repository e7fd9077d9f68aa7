// The text form of a project must grow with the number of sub-indices, not with its square.

#include "Pairs.h"
#include "Projects.h"

namespace {

constexpr int smallSize = 10'000;
constexpr int largeSize = 20'000;
constexpr double linearGoal = 2.3;

void writeText(benchmark::State &state)
{
    ObjectDataBase small;
    ObjectDataBase large;
    Projects::fill(small, smallSize);
    Projects::fill(large, largeSize);
    const auto writeSeconds = [](ObjectDataBase &store) {
        const QString target = Projects::path(QStringLiteral("written.vext"));
        QFile::remove(target);
        return Pairs::seconds([&] { Bare::require(store.saveDatabaseAsText(target)); });
    };
    Pairs::compare(
        state, linearGoal, [&] { return writeSeconds(large); }, [&] { return writeSeconds(small); });
}
BENCHMARK(writeText)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

void readText(benchmark::State &state)
{
    const auto readSeconds = [](int subIndices) {
        const QString text = Projects::saved(subIndices, QStringLiteral("vext"));
        ObjectDataBase store;
        const Pairs::Seconds taken = Pairs::seconds([&] { Bare::require(store.openDataBase(text)); });
        Bare::require(!store.isExternallyModified());
        return taken;
    };
    Pairs::compare(
        state, linearGoal, [&] { return readSeconds(largeSize); }, [&] { return readSeconds(smallSize); });
}
BENCHMARK(readText)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return Projects::run(argc, argv);
}
