// Reading device descriptions: the parser against cutting the file into lines, the import against its parts.

#include "Pairs.h"
#include "Projects.h"
#include "canopen/EdsParser.h"
#include "importers/EDSImporter.h"

namespace {

constexpr int ordinarySubIndices = 1'500; ///< about 300 kB of text
constexpr int manySubIndices = 25'000;
constexpr double linearGoal = 2.3;

/** Records of 20 sub-indices each, written as configuration tools write them. */
QByteArray text(int subIndices)
{
    constexpr int perObject = 20;
    constexpr int firstIndex = 0x2000;
    QByteArray text = "[DeviceInfo]\nVendorName=Korvel\n\n";
    for (int sub = 0; sub < subIndices; ++sub) {
        const QByteArray index = QByteArray::number(firstIndex + sub / perObject, 16).toUpper();
        if (sub % perObject == 0)
            text +=
                "[" + index + "]\nParameterName=Drive object " + index + "\nObjectType=9\nSubNumber=20\n\n";
        text += "[" + index + "sub" + QByteArray::number(sub % perObject, 16) + "]\nParameterName=Parameter "
            + QByteArray::number(sub % perObject) + " of drive object " + index
            + "\nObjectType=7\nDataType=0x0007\nAccessType=rw\nDefaultValue="
            + (sub % perObject == 0 ? QByteArray("19") : "0x" + QByteArray::number(0x1000 + sub, 16))
            + "\nPDOMapping=1\nLowLimit=0\nHighLimit=0xFFFFFFFF\n\n";
    }
    return text;
}

QString eds(int subIndices)
{
    const QString path = Projects::path(QStringLiteral("%1.eds").arg(subIndices));
    if (!QFile::exists(path)) {
        QFile file(path);
        Bare::require(file.open(QIODevice::WriteOnly));
        file.write(text(subIndices));
    }
    return path;
}

Pairs::Seconds parseSeconds(const QString &path)
{
    return Pairs::seconds([&] {
        EdsParser parser;
        Bare::require(parser.LoadEds(path) && parser.findings().isEmpty());
    });
}

Pairs::Seconds importSeconds(const QString &path)
{
    const auto store = QSharedPointer<ObjectDataBase>::create();
    Bare::require(store->createNewDataBase());
    EDSImporter importer;
    importer.setLine(0);
    importer.setDatabase(store);
    Bare::require(importer.setFile(path));
    const Pairs::Seconds taken = Pairs::seconds([&] { importer.doImport(); });
    Bare::require(!importer.importedObjects().isEmpty() && importer.findings().isEmpty());
    return taken;
}

QList<ObjectDataBase::SubEntry> importedRows(const QString &path)
{
    const auto store = QSharedPointer<ObjectDataBase>::create();
    Bare::require(store->createNewDataBase());
    EDSImporter importer;
    importer.setLine(0);
    importer.setDatabase(store);
    Bare::require(importer.setFile(path));
    importer.doImport();
    QList<ObjectDataBase::SubEntry> rows;
    for (const quint16 index : store->getIndexList(0)) {
        for (const quint8 sub : store->getSubIndexList(0, index)) {
            ObjectDataBase::SubEntry row{.line = 0, .index = index, .subindex = sub};
            Bare::require(store->getSubIndex(0, index, sub, row.data));
            rows.append(row);
        }
    }
    return rows;
}

void parse(benchmark::State &state)
{
    const QString path = eds(ordinarySubIndices);
    const auto lines = [&path] {
        return Pairs::seconds([&] {
            QFile file(path);
            Bare::require(file.open(QIODevice::ReadOnly));
            const QList<QByteArray> cut = file.readAll().split('\n');
            Bare::require(cut.size() > ordinarySubIndices);
        });
    };
    Pairs::compare(
        state, 20, [&] { return parseSeconds(path); }, lines, 31);
}
BENCHMARK(parse)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

void import(benchmark::State &state)
{
    const QString path = eds(ordinarySubIndices);
    const QList<ObjectDataBase::SubEntry> rows = importedRows(path);
    const auto parts = [&] {
        ObjectDataBase store;
        Bare::require(store.createNewDataBase());
        return Pairs::seconds([&] {
            EdsParser parser;
            Bare::require(parser.LoadEds(path));
            Bare::require(store.addSubIndices(rows));
        });
    };
    Pairs::compare(
        state, 3, [&] { return importSeconds(path); }, parts, 15);
}
BENCHMARK(import)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

void parseTwice(benchmark::State &state)
{
    Pairs::compare(
        state, linearGoal, [] { return parseSeconds(eds(2 * manySubIndices)); },
        [] { return parseSeconds(eds(manySubIndices)); });
}
BENCHMARK(parseTwice)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

void importTwice(benchmark::State &state)
{
    Pairs::compare(
        state, linearGoal, [] { return importSeconds(eds(2 * manySubIndices)); },
        [] { return importSeconds(eds(manySubIndices)); }, 5);
}
BENCHMARK(importTwice)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return Projects::run(argc, argv);
}
