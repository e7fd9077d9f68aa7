// Documents of a line against one pass that reads the line's sub-indices and writes as many bytes, and their
// growth with the number of sub-indices.

#include "Pairs.h"
#include "Projects.h"
#include "canopen/CANopenTypes.h"
#include "generators/GeneratorFactories.h"
#include "generators/documents/DocumentGenerators.h"

#include <QSharedPointer>
#include <QTemporaryDir>

namespace {

using Store = QSharedPointer<ObjectDataBase>;

constexpr int projectSize = 20'000;
constexpr int rounds = 15;

/** A device of so many sub-indices, its read caches filled as a run fills them. */
Store device(int subIndices, int subIndicesPerObject)
{
    constexpr quint16 firstIndex = 0x2000;
    const auto store = Store::create();
    Bare::require(store->createNewDataBase());
    QList<ObjectDataBase::SubEntry> rows = Projects::entries(subIndices);
    for (int i = 0; i < subIndices; ++i) {
        ObjectDataBase::SubEntry &row = rows[i];
        row.index = quint16(firstIndex + i / subIndicesPerObject);
        row.subindex = quint8(i % subIndicesPerObject);
        if (row.subindex != 0)
            continue;
        ObjectDataBase::INDEX_DATA_T object;
        object.name = QStringLiteral("Drive object %1").arg(row.index);
        object.description = QStringLiteral("What drive object %1 is for").arg(row.index);
        object.objecttype = subIndicesPerObject == 1 ? CANopen::Var : CANopen::Array;
        Bare::require(store->addIndex(0, row.index, object));
    }
    Bare::require(store->addSubIndices(rows));
    store->cacheAllSubs(0);
    return store;
}

QString outputFolder()
{
    static const QTemporaryDir folder(Projects::path(QStringLiteral("documents-XXXXXX")));
    return folder.path();
}

/** Runs the job of a generator here, without a thread of its own. */
Pairs::Seconds documentSeconds(const Store &store, GeneratorKind kind)
{
    static const GeneratorFactories factories = [] {
        GeneratorFactories all;
        addDocumentGenerators(all);
        return all;
    }();
    return Pairs::seconds([&] {
        const auto generator = factories.create({.kind = kind});
        generator->setDatabase(store.get());
        generator->setOutputDir(outputFolder());
        generator->setProjectName(QStringLiteral("device"));
        generator->doJob();
        Bare::require(!generator->isFailed());
    });
}

QByteArray content(const QString &name)
{
    QFile file(outputFolder() + u'/' + name);
    Bare::require(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

/** One pass over the line and the bytes of the document. */
Pairs::Seconds passSeconds(const Store &store, const QByteArray &document)
{
    return Pairs::seconds([&] {
        store->cacheAllSubs(0);
        QFile file(outputFolder() + QStringLiteral("/copy"));
        Bare::require(file.open(QIODevice::WriteOnly) && file.write(document) == document.size());
    });
}

constexpr double goal = 3.0;
constexpr double fourfoldGoal = 4.5;

void writeLine(benchmark::State &state, GeneratorKind kind, const char *fileName, int subIndicesPerObject)
{
    const Store store = device(projectSize, subIndicesPerObject);
    documentSeconds(store, kind);
    const QByteArray document = content(QString::fromLatin1(fileName));
    state.counters["kilobytes"] = double(document.size()) / 1024;
    Pairs::compare(
        state, goal, [&] { return documentSeconds(store, kind); },
        [&] { return passSeconds(store, document); }, rounds);
}

void growLine(benchmark::State &state, GeneratorKind kind)
{
    constexpr int subIndicesPerObject = 20;
    const Store small = device(projectSize / 2, subIndicesPerObject);
    const Store large = device(2 * projectSize, subIndicesPerObject);
    Pairs::compare(
        state, fourfoldGoal, [&] { return documentSeconds(large, kind); },
        [&] { return documentSeconds(small, kind); }, rounds);
}

void once(benchmark::internal::Benchmark *run)
{
    run->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(writeLine, HTML with arrays of 20, GeneratorKind::Html, "device.html", 20)->Apply(once);
BENCHMARK_CAPTURE(writeLine, text with arrays of 20, GeneratorKind::TextDoc, "device_doc.txt", 20)
    ->Apply(once);
BENCHMARK_CAPTURE(writeLine, ICSV with arrays of 20, GeneratorKind::Icsv, "device.icsv", 20)->Apply(once);
BENCHMARK_CAPTURE(writeLine, CSV with arrays of 20, GeneratorKind::Csv, "device.csv", 20)->Apply(once);
BENCHMARK_CAPTURE(writeLine, HTML with variables alone, GeneratorKind::Html, "device.html", 1)->Apply(once);
BENCHMARK_CAPTURE(writeLine, text with variables alone, GeneratorKind::TextDoc, "device_doc.txt", 1)
    ->Apply(once);
BENCHMARK_CAPTURE(growLine, HTML from 10000 to 40000, GeneratorKind::Html)->Apply(once);

} // namespace

int main(int argc, char **argv)
{
    return Projects::run(argc, argv);
}
