// The store's sub-index operations against a bare use of SQLite that moves the same values.

#include "BareTable.h"
#include "Pairs.h"

#include <algorithm>
#include <random>

namespace {

constexpr int rowCount = 50'000;

const QList<ObjectDataBase::SubEntry> &entries()
{
    static const QList<ObjectDataBase::SubEntry> rows = Bare::entries(rowCount);
    return rows;
}

Pairs::Seconds bareInsertSeconds()
{
    ObjectDataBase model;
    model.createNewDataBase();
    static const std::vector<Bare::Row> rows = Bare::Table::rows(model, entries());
    Bare::Table table(model);
    return Pairs::seconds([&] { table.insert(rows); });
}

void addSubIndices(benchmark::State &state)
{
    const auto store = [] {
        ObjectDataBase db;
        db.createNewDataBase();
        return Pairs::seconds([&] { db.addSubIndices(entries()); });
    };
    Pairs::compare(state, 2.0, store, bareInsertSeconds);
}
BENCHMARK(addSubIndices)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

void addSubIndexOneByOne(benchmark::State &state)
{
    const auto store = [] {
        ObjectDataBase db;
        db.createNewDataBase();
        return Pairs::seconds([&] {
            for (const ObjectDataBase::SubEntry &entry : entries())
                db.addSubIndex(entry.line, entry.index, entry.subindex, entry.data);
        });
    };
    Pairs::compare(state, 6.0, store, bareInsertSeconds);
}
BENCHMARK(addSubIndexOneByOne)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

void cacheAllSubs(benchmark::State &state)
{
    ObjectDataBase db;
    db.createNewDataBase();
    db.addSubIndices(entries());
    Bare::Table table(db);
    table.insert(Bare::Table::rows(db, entries()));
    const auto store = [&] {
        db.clearSubCache();
        return Pairs::seconds([&] { db.cacheAllSubs(0); });
    };
    const auto bare = [&] { return Pairs::seconds([&] { benchmark::DoNotOptimize(table.select()); }); };
    Pairs::compare(state, 2.0, store, bare, 15);
}
BENCHMARK(cacheAllSubs)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

/** Reads cached sub-indices in the given order; the goal is below a microsecond each. */
void getCachedSubIndex(benchmark::State &state, bool shuffled)
{
    ObjectDataBase db;
    db.createNewDataBase();
    db.addSubIndices(entries());
    db.cacheAllSubs(0);
    std::vector<std::pair<quint16, quint8>> order;
    for (const ObjectDataBase::SubEntry &entry : entries())
        order.emplace_back(entry.index, entry.subindex);
    if (shuffled)
        std::shuffle(order.begin(), order.end(), std::mt19937(1));
    size_t next = 0;
    ObjectDataBase::SUBINDEX_DATA_T sub;
    for ([[maybe_unused]] auto _ : state) {
        const auto [index, subindex] = order[next];
        if (!db.getSubIndex(0, index, subindex, sub))
            std::abort();
        benchmark::DoNotOptimize(sub);
        next = next + 1 == order.size() ? 0 : next + 1;
    }
    state.counters["goal_ns"] = 1000;
}
BENCHMARK_CAPTURE(getCachedSubIndex, sequential, false);
BENCHMARK_CAPTURE(getCachedSubIndex, random, true);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
