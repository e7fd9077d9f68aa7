// gen_objdict.c and gen_define.h against one pass that reads the line's sub-indices and writes as many bytes,
// their growth with the number of sub-indices and of PDOs, and the memory of a whole run.

#include "Pairs.h"
#include "Projects.h"
#include "canopen/CANTypes.h"
#include "canopen/CANopenTypes.h"
#include "generators/GeneratorMainHandler.h"
#include "generators/canopen/CanopenGenerators.h"

#include <QSharedPointer>
#include <QTemporaryDir>

#include <sys/resource.h>

namespace {

using Store = QSharedPointer<ObjectDataBase>;

constexpr int projectSize = 20'000;
constexpr int rounds = 15;
constexpr quint16 firstParameter = 0x2000;
constexpr quint16 fromCommunicationToMapping = 0x200;
constexpr int mostPdos = 512; // of one direction on one line (CiA 301)

/** Collects the objects of a device. */
class Device
{
public:
    Device() : m_store(Store::create())
    {
        Bare::require(m_store->createNewDataBase());
        set(QStringLiteral("line0type"), QStringLiteral("1"));
        set(QStringLiteral("limit_check"), QStringLiteral("1"));
        set(QStringLiteral("init_static_variables"), QStringLiteral("1"));
        set(QStringLiteral("new_init_structure"), QStringLiteral("1"));
    }

    /** Parameters of several types; most have values of their own, some are variables of the application. */
    void parameters(int rows, int subIndicesPerObject)
    {
        for (int i = 0; i < rows; ++i) {
            const quint16 index = quint16(firstParameter + i / subIndicesPerObject);
            const int subIndex = i % subIndicesPerObject;
            if (subIndex == 0)
                object(0, index, subIndicesPerObject == 1 ? CANopen::Var : CANopen::Array);
            row(0, index, subIndex, parameter(i));
        }
    }

    /** Arrays whose elements differ in nothing, so that every one is compared with its neighbour. */
    void equalArrays(int rows, int subIndicesPerObject)
    {
        parameters(rows, subIndicesPerObject);
        const ObjectDataBase::SUBINDEX_DATA_T equal = parameter(0);
        for (ObjectDataBase::SubEntry &entry : m_rows)
            entry.data = equal;
    }

    /** As many PDOs of both directions as a line can have, all with mappings of their own. */
    void pdos(quint8 line)
    {
        constexpr quint16 firstReceive = 0x1400;
        constexpr quint16 firstTransmit = 0x1800;
        if (!m_store->nodeExists(line))
            Bare::require(m_store->addNode(line, {}));
        for (int i = 0; i < mostPdos; ++i) {
            pdo(line, quint16(firstReceive + i), i);
            pdo(line, quint16(firstTransmit + i), mostPdos - i);
        }
        object(line, 0x2000, CANopen::Array);
        for (int sub = 0; sub < 200; ++sub) {
            ObjectDataBase::SUBINDEX_DATA_T data = value(CAN::Unsigned8, sub);
            data.sharedlines = true;
            row(line, 0x2000, sub, data);
        }
    }
    void networkRouting()
    {
        object(0, 0x1F2C, CANopen::Array);
        row(0, 0x1F2C, 0, value(CAN::Unsigned8, 1));
    }

    /** The device with its read caches filled, as a run fills them. */
    Store store()
    {
        Bare::require(m_store->addSubIndices(m_rows));
        m_rows.clear();
        const QList<quint8> lines = m_store->getLines();
        for (const quint8 line : lines)
            m_store->cacheAllSubs(line);
        return m_store;
    }

private:
    using Row = ObjectDataBase::SUBINDEX_DATA_T;

    void set(const QString &key, const QString &setting)
    {
        Bare::require(m_store->setGeneralSetting(key, setting));
    }
    void object(quint8 line, quint16 index, CANopen::ObjectCode code)
    {
        ObjectDataBase::INDEX_DATA_T data;
        data.name = QStringLiteral("Object %1").arg(index);
        data.objecttype = code;
        Bare::require(m_store->addIndex(line, index, data));
    }
    void row(quint8 line, quint16 index, int subIndex, const Row &data)
    {
        m_rows.append({.line = line, .index = index, .subindex = quint8(subIndex), .data = data});
    }
    void pdo(quint8 line, quint16 communication, int number)
    {
        constexpr int mappedParameters = 199;
        constexpr int entries = 8;
        object(line, communication, CANopen::Record);
        row(line, communication, 0, constant(CAN::Unsigned8, 2));
        row(line, communication, 1, constant(CAN::Unsigned32, 0x20000000 + number));
        row(line, communication, 2, constant(CAN::Unsigned8, 254));
        const quint16 mapping = quint16(communication + fromCommunicationToMapping);
        object(line, mapping, CANopen::Record);
        row(line, mapping, 0, constant(CAN::Unsigned8, entries));
        for (int entry = 1; entry <= entries; ++entry) {
            const int sub = (number + entry * (1 + number / mappedParameters)) % mappedParameters;
            row(line, mapping, entry, constant(CAN::Unsigned32, (0x2000 << 16) | (sub << 8) | 8));
        }
    }
    static Row value(CAN::CANopenDataType type, int number)
    {
        Row data;
        data.name = QStringLiteral("Value of type %1").arg(type);
        data.datatype = type;
        data.accesstype = QStringLiteral("rw");
        data.defaultvalue = QString::number(number);
        data.defaultineds = true;
        return data;
    }
    static Row constant(CAN::CANopenDataType type, int number)
    {
        Row data = value(type, number);
        data.accesstype = QStringLiteral("const");
        data.implementation = CANopen::ManagedConst;
        return data;
    }
    static Row parameter(int number)
    {
        constexpr std::array types{CAN::Unsigned32, CAN::Unsigned16, CAN::Integer32, CAN::Unsigned8};
        Row data = value(types.at(std::size_t(number) % types.size()), number);
        data.description = QStringLiteral("Set point of drive %1, in increments per second").arg(number);
        data.lowlimit = QStringLiteral("0");
        data.uplimit = QString::number(1000 + number % 1000);
        data.limitineds = true;
        data.pdomapping = PDOMapping(PDOMapping::Allowed);
        data.implementation = number % 3 == 0 ? CANopen::ApplicationVariable : CANopen::ManagedVariable;
        data.varname = QStringLiteral("parameter_%1").arg(number);
        return data;
    }

    Store m_store;
    QList<ObjectDataBase::SubEntry> m_rows;
};

Store parameterDevice(int rows, int subIndicesPerObject)
{
    Device device;
    device.parameters(rows, subIndicesPerObject);
    return device.store();
}

Store compactDevice(int rows)
{
    constexpr int subIndicesPerObject = 250;
    Device device;
    device.equalArrays(rows, subIndicesPerObject);
    return device.store();
}

Store pdoDevice(int lines, bool isRouted)
{
    Device device;
    for (int line = 0; line < lines; ++line)
        device.pdos(quint8(line));
    if (isRouted)
        device.networkRouting();
    return device.store();
}

QString outputFolder()
{
    static const QTemporaryDir folder(Projects::path(QStringLiteral("output-XXXXXX")));
    return folder.path();
}

/** Runs the jobs of one kind of generator here, without a thread of their own. */
void generate(const Store &store, GeneratorKind kind, bool compactArrays)
{
    static const GeneratorFactories factories = [] {
        GeneratorFactories all;
        addCanopenGenerators(all);
        return all;
    }();
    const auto generator = factories.create({.kind = kind, .core = true, .compactArrays = compactArrays});
    generator->setDatabase(store.get());
    generator->setOutputDir(outputFolder());
    generator->setProjectName(QStringLiteral("device"));
    generator->doJob();
    Bare::require(!generator->isFailed());
}

Pairs::Seconds objectDictionarySeconds(const Store &store, bool compactArrays = false)
{
    return Pairs::seconds([&] { generate(store, GeneratorKind::ObjDict, compactArrays); });
}

Pairs::Seconds bothFilesSeconds(const Store &store)
{
    return Pairs::seconds([&] {
        generate(store, GeneratorKind::Define, false);
        generate(store, GeneratorKind::ObjDict, false);
    });
}

QByteArray content(const QString &path)
{
    QFile file(path);
    Bare::require(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    Bare::require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

/** One pass over the line and the bytes of both files. */
Pairs::Seconds passSeconds(const Store &store, const QByteArray &define, const QByteArray &dictionary)
{
    return Pairs::seconds([&] {
        store->cacheAllSubs(0);
        write(outputFolder() + QStringLiteral("/copy.h"), define);
        write(outputFolder() + QStringLiteral("/copy.c"), dictionary);
    });
}

void generateLine(benchmark::State &state, int subIndicesPerObject)
{
    const Store store = parameterDevice(projectSize, subIndicesPerObject);
    bothFilesSeconds(store);
    const QByteArray define = content(outputFolder() + QStringLiteral("/gen_define.h"));
    const QByteArray dictionary = content(outputFolder() + QStringLiteral("/gen_objdict.c"));
    state.counters["kilobytes"] = double(define.size() + dictionary.size()) / 1024;
    Pairs::compare(
        state, 5.0, [&] { return bothFilesSeconds(store); },
        [&] { return passSeconds(store, define, dictionary); }, rounds);
}

constexpr double fourfoldGoal = 4.5;

void growLine(benchmark::State &state, int subIndicesPerObject)
{
    const Store small = parameterDevice(projectSize / 2, subIndicesPerObject);
    const Store large = parameterDevice(2 * projectSize, subIndicesPerObject);
    Pairs::compare(
        state, fourfoldGoal, [&] { return bothFilesSeconds(large); }, [&] { return bothFilesSeconds(small); },
        rounds);
}

void growCompactArrays(benchmark::State &state)
{
    const Store small = compactDevice(projectSize / 2);
    const Store large = compactDevice(2 * projectSize);
    Pairs::compare(
        state, fourfoldGoal, [&] { return objectDictionarySeconds(large, true); },
        [&] { return objectDictionarySeconds(small, true); }, rounds);
}

void growPdos(benchmark::State &state, bool isRouted)
{
    const Store small = pdoDevice(1, isRouted);
    const Store large = pdoDevice(4, isRouted);
    Pairs::compare(
        state, fourfoldGoal, [&] { return objectDictionarySeconds(large); },
        [&] { return objectDictionarySeconds(small); }, rounds);
}

/** Opens a project, checks it and writes its files; first of all, as the process keeps its largest size. */
void peakMemoryOfARun(benchmark::State &state)
{
    const QString folder = outputFolder();
    const QString project = folder + QStringLiteral("/device.vexp");
    Bare::require(parameterDevice(projectSize, 20)->saveProject(project));
    for ([[maybe_unused]] auto _ : state) {
        const Pairs::Seconds taken = Pairs::seconds([&] {
            GeneratorFactories factories;
            addCanopenGenerators(factories);
            GeneratorMainHandler handler;
            handler.setFactories(factories);
            handler.setHidden(true);
            Bare::require(handler.openProject(project));
            handler.runGeneration(true);
        });
        Bare::require(QFile::exists(folder + QStringLiteral("/gen_objdict.c")));
        state.SetIterationTime(taken.wall);
    }
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    state.counters["megabytes"] = double(usage.ru_maxrss) / 1024;
    state.counters["goal"] = 300;
}

void once(benchmark::internal::Benchmark *run)
{
    run->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
}

BENCHMARK(peakMemoryOfARun)->Apply(once);
BENCHMARK_CAPTURE(generateLine, arrays of 20, 20)->Apply(once);
BENCHMARK_CAPTURE(generateLine, arrays of 250, 250)->Apply(once);
BENCHMARK_CAPTURE(generateLine, variables alone, 1)->Apply(once);
BENCHMARK_CAPTURE(growLine, from 10000 to 40000, 20)->Apply(once);
BENCHMARK(growCompactArrays)->Apply(once);
BENCHMARK_CAPTURE(growPdos, from one line to four, false)->Apply(once);
BENCHMARK_CAPTURE(growPdos, routed from one line to four, true)->Apply(once);

} // namespace

int main(int argc, char **argv)
{
    return Projects::run(argc, argv);
}
