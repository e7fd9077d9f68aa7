// The clean-up of the string pool must grow with the number of strings, not with its square.

#include "BareTable.h"
#include "Pairs.h"

namespace {

Pairs::Seconds cleanUpSeconds(int unused)
{
    ObjectDataBase db;
    db.createNewDataBase();
    db.addSubIndices(Bare::entries(5'000));
    db.executeSql(
        QStringLiteral("with recursive c(n) as (select 1 union all select n + 1 from c where n < %1) "
                       "insert into Strings(string) select 'text that nothing refers to ' || n from c")
            .arg(unused));
    db.loadStrings();
    return Pairs::seconds([&] { db.removeUnusedStrings(); });
}

void removeUnusedStrings(benchmark::State &state)
{
    Pairs::compare(
        state, 2.2, [] { return cleanUpSeconds(100'000); }, [] { return cleanUpSeconds(50'000); });
}
BENCHMARK(removeUnusedStrings)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
