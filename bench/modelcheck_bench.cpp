// The check of a CANopen line against one pass that reads the line's sub-indices, and the growth of the check
// of CANopen and raw CAN lines.

#include "Pairs.h"
#include "Projects.h"
#include "canopen/CANTypes.h"
#include "canopen/CANopenTypes.h"
#include "check/ModelChecker.h"

#include <QSharedPointer>

namespace {

using Store = QSharedPointer<ObjectDataBase>;

constexpr int projectSize = 20'000;
constexpr int signalCount = 8'000;
constexpr int rounds = 15;
constexpr quint16 firstObject = 0x2000;
constexpr quint16 firstTpdo = 0x1800;
constexpr quint16 fromCommunicationToMapping = 0x200;
constexpr int rowsPerTpdo = 6;
/** One row in so many belongs to a PDO. */
constexpr int pdoShare = 16;

/** Collects a device without a single finding that counts. */
class Device
{
public:
    Device() : m_store(Store::create())
    {
        Bare::require(m_store->createNewDataBase());
        for (const char *key : {"co_node_id", "receivebuffersize", "transmitbuffersize", "overwrite_predef",
                                "limit_check", "line0type"})
            Bare::require(m_store->setGeneralSetting(QLatin1StringView(key), QStringLiteral("1")));
        object(0x1000, CANopen::Var);
        object(0x1001, CANopen::Var);
        object(0x1017, CANopen::Var);
        object(0x1018, CANopen::Record);
        row(0x1000, 0, value(CAN::Unsigned32, 0));
        row(0x1001, 0, value(CAN::Unsigned8, 0));
        row(0x1017, 0, value(CAN::Unsigned16, 0));
        row(0x1018, 0, constant(CAN::Unsigned8, 3));
        for (int subIndex = 1; subIndex <= 3; ++subIndex)
            row(0x1018, subIndex, constant(CAN::Unsigned32, subIndex));
    }

    /** Parameters with limits, some kept by the application in a variable of their own. */
    void parameters(int rows, int subIndicesPerObject)
    {
        for (int i = 0; i < rows; ++i) {
            const quint16 index = quint16(firstObject + i / subIndicesPerObject);
            const int subIndex = i % subIndicesPerObject;
            if (subIndex == 0)
                object(index, subIndicesPerObject == 1 ? CANopen::Var : CANopen::Array);
            if (subIndex == 0 && subIndicesPerObject > 1)
                row(index, 0, constant(CAN::Unsigned8, qMin(subIndicesPerObject, rows - i) - 1));
            else
                row(index, subIndex, parameter(i));
        }
    }

    /** Transmit PDOs that map the first parameter twice, each with an identifier of its own. */
    void tpdos(int count)
    {
        for (int i = 0; i < count; ++i) {
            const quint16 communication = quint16(firstTpdo + i);
            const quint16 mapping = quint16(communication + fromCommunicationToMapping);
            object(communication, CANopen::Record);
            row(communication, 0, constant(CAN::Unsigned8, 2));
            row(communication, 1, constant(CAN::Unsigned32, 0x20000000 + i));
            row(communication, 2, constant(CAN::Unsigned8, 254));
            object(mapping, CANopen::Record);
            row(mapping, 0, constant(CAN::Unsigned8, 2));
            for (int entry = 1; entry <= 2; ++entry)
                row(mapping, entry, constant(CAN::Unsigned32, firstObject * 0x10000 + 0x0100 + 32));
        }
    }

    Store store()
    {
        Bare::require(m_store->addSubIndices(m_rows));
        m_rows.clear();
        return m_store;
    }

private:
    using Row = ObjectDataBase::SUBINDEX_DATA_T;

    void object(quint16 index, CANopen::ObjectCode code)
    {
        ObjectDataBase::INDEX_DATA_T data;
        data.name = QStringLiteral("Object %1").arg(index);
        data.objecttype = code;
        Bare::require(m_store->addIndex(0, index, data));
    }
    void row(quint16 index, int subIndex, const Row &data)
    {
        m_rows.append({.line = 0, .index = index, .subindex = quint8(subIndex), .data = data});
    }
    static Row value(CAN::CANopenDataType type, int number)
    {
        Row data;
        data.name = QStringLiteral("Value of type %1").arg(type);
        data.datatype = type;
        data.accesstype = QStringLiteral("rw");
        data.defaultvalue = QString::number(number);
        data.defaultineds = true;
        data.writedefaulttoeds = true;
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
        Row data = value(CAN::Unsigned32, number);
        data.name = QStringLiteral("Application parameter %1").arg(number % 1000);
        data.description = QStringLiteral("Set point of drive %1, in increments per second").arg(number);
        data.denotation = QStringLiteral("Drive %1").arg(number % 200);
        data.defaultvalue = QStringLiteral("0x%1").arg(number, 8, 16, QLatin1Char('0'));
        data.lowlimit = QStringLiteral("0");
        data.uplimit = QStringLiteral("4294967295");
        data.limitineds = true;
        data.pdomapping = PDOMapping(PDOMapping::Allowed);
        data.implementation = CANopen::ApplicationVariable;
        data.varname = QStringLiteral("parameter_%1").arg(number);
        return data;
    }

    Store m_store;
    QList<ObjectDataBase::SubEntry> m_rows;
};

Store device(int rows, int subIndicesPerObject)
{
    Device device;
    const int tpdos = rows / pdoShare / rowsPerTpdo;
    device.parameters(rows - tpdos * rowsPerTpdo, subIndicesPerObject);
    if (subIndicesPerObject > 1)
        device.tpdos(tpdos);
    return device.store();
}

/** Fills a table from the numbers 0 to count - 1, "n.i" in the values. */
void insertRows(const Store &store, const char *columns, const char *values, int count)
{
    Bare::require(store->executeSql(
        QStringLiteral("insert into %1 with recursive n(i) as (select 0 union all select i + 1 from n "
                       "where i + 1 < %3) select %2 from n")
            .arg(QLatin1StringView(columns), QLatin1StringView(values), QString::number(count))));
}

/** Transmitted messages of eight signals each, without a finding. Single writes would search all signals. */
Store signalLine(int count)
{
    Store store = Store::create();
    Bare::require(store->createNewDataBase());
    insertRows(store, "CANIDs0(id, direction)", "0x80000000 + n.i, 85", count / 8);
    insertRows(store, "DataElements0(canid, number, direction, datatype, implementation, varname, bitpos)",
               "0x80000000 + n.i / 8, n.i % 8, 85, 5, 2, 'signal_' || n.i, n.i % 8 * 8", count);
    return store;
}

Pairs::Seconds checkSeconds(const Store &store)
{
    bool changed = false;
    int errors = 0;
    const Pairs::Seconds taken =
        Pairs::seconds([&] { errors = ModelChecker().checkCANopenLine(0, store, &changed); });
    Bare::require(errors == 0 && !changed);
    return taken;
}

Pairs::Seconds checkSignalSeconds(const Store &store)
{
    int errors = 0;
    const Pairs::Seconds taken = Pairs::seconds([&] { errors = ModelChecker().checkRawCanLine(0, store); });
    Bare::require(errors == 0);
    return taken;
}

Pairs::Seconds readSeconds(const Store &store)
{
    return Pairs::seconds([&] { store->cacheAllSubs(0); });
}

void checkLine(benchmark::State &state, int subIndicesPerObject, double goal)
{
    const Store store = device(projectSize, subIndicesPerObject);
    Pairs::compare(
        state, goal, [&] { return checkSeconds(store); }, [&] { return readSeconds(store); }, rounds);
}

void checkLineOfDoubleSize(benchmark::State &state, int size)
{
    constexpr int subIndicesPerObject = 20;
    const Store small = device(size, subIndicesPerObject);
    const Store large = device(2 * size, subIndicesPerObject);
    Pairs::compare(
        state, 2.2, [&] { return checkSeconds(large); }, [&] { return checkSeconds(small); }, rounds);
}

void checkSignalsOfDoubleCount(benchmark::State &state)
{
    const Store small = signalLine(signalCount);
    const Store large = signalLine(2 * signalCount);
    Pairs::compare(
        state, 2.2, [&] { return checkSignalSeconds(large); }, [&] { return checkSignalSeconds(small); },
        rounds);
}

void once(benchmark::internal::Benchmark *run)
{
    run->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(checkLine, arrays of 20, 20, 3.0)->Apply(once);
BENCHMARK_CAPTURE(checkLine, arrays of 254, 254, 3.0)->Apply(once);
// Here each sub-index is an object of its own, for which the window is served twice.
BENCHMARK_CAPTURE(checkLine, variables alone, 1, 3.0)->Apply(once);
BENCHMARK_CAPTURE(checkLineOfDoubleSize, to 20000, projectSize / 2)->Apply(once);
BENCHMARK_CAPTURE(checkLineOfDoubleSize, to 40000, projectSize)->Apply(once);
BENCHMARK(checkSignalsOfDoubleCount)->Apply(once);

} // namespace

int main(int argc, char **argv)
{
    return Projects::run(argc, argv);
}
