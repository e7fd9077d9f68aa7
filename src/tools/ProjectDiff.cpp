#include "tools/ProjectDiff.h"

#include "tools/DiffRecords.h"

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;
using namespace ProjectDiff;

namespace {

// CiA 301: the manufacturer's own objects, which the EnergyBus configuration never touches.
constexpr quint32 firstManufacturerIndex = 0x2000;
constexpr quint32 lastManufacturerIndex = 0x5FFE;
// CiA 301: communication and mapping parameters of all PDOs.
constexpr quint32 firstPdoIndex = 0x1400;
constexpr quint32 lastPdoIndex = 0x1BFF;
// Classes of the PDOs that an EnergyBus device brings along.
constexpr QLatin1StringView receivePdoClass{"rpdo"};
constexpr QLatin1StringView transmitPdoClass{"tpdo"};

constexpr auto reservedLine = [](quint8 line) {
    return line == ObjectDataBase::ClipboardLine || line == ObjectDataBase::ReferenceLine;
};

/** One side of the comparison: a line of a store, with the cache of its children for the time of it. */
template <class Records>
class Side
{
public:
    Side(ObjectDataBase &store, quint8 line, quint8 direction)
        : m_store(store), m_line(line), m_direction(direction), m_hasLine(store.nodeExists(line))
    {
        if (m_hasLine)
            Records::fillCache(store, line);
    }
    ~Side()
    {
        if (m_hasLine)
            Records::clearCache(m_store);
    }
    Q_DISABLE_COPY_MOVE(Side)

    QList<quint32> numbers() const
    {
        return m_hasLine ? sorted(Records::numbers(m_store, m_line, m_direction)) : QList<quint32>();
    }
    QList<quint32> childNumbers(quint32 number) const
    {
        return sorted(Records::childNumbers(m_store, m_line, number, m_direction));
    }
    typename Records::Parent read(quint32 number) const
    {
        typename Records::Parent record;
        Records::read(m_store, m_line, number, m_direction, record);
        return record;
    }
    typename Records::Child readChild(quint32 number, quint32 child) const
    {
        typename Records::Child record;
        Records::readChild(m_store, m_line, number, m_direction, child, record);
        return record;
    }

private:
    template <class List>
    static QList<quint32> sorted(const List &list)
    {
        QList<quint32> numbers(list.cbegin(), list.cend());
        std::ranges::sort(numbers); // signals come in the order of their positions
        numbers.resize(std::unique(numbers.begin(), numbers.end()) - numbers.begin());
        return numbers;
    }

    ObjectDataBase &m_store;
    quint8 m_line;
    quint8 m_direction;
    bool m_hasLine;
};

/** Visits the numbers of two sorted lists once each, in ascending order. */
template <class Visitor>
void merge(const QList<quint32> &current, const QList<quint32> &other, const Visitor &visit)
{
    auto first = current.cbegin();
    auto second = other.cbegin();
    while (first != current.cend() || second != other.cend()) {
        if (second == other.cend() || (first != current.cend() && *first < *second))
            visit(*first++, State::OnlyCurrent);
        else if (first == current.cend() || *second < *first)
            visit(*second++, State::OnlyOther);
        else {
            visit(*first++, State::Equal);
            ++second;
        }
    }
}

template <class Records>
class Comparison
{
public:
    using Parent = typename Records::Parent;
    using Child = typename Records::Child;
    /** Gets the record of the current side, or of the other one where that is the only one. */
    using Filter = std::function<bool(quint32 number, const Parent &record, const Parent &otherRecord)>;

    Comparison(ObjectDataBase &current, ObjectDataBase &other, quint8 line, quint8 direction,
               const DiffSelection &selection)
        : m_current(current, line, direction), m_other(other, line, direction), m_direction(direction),
          m_selection(selection)
    {
    }

    /** Appends what differs; items that the filter refuses are left out. */
    void run(QList<Item> &items, const Filter &isCompared = {}) const
    {
        merge(m_current.numbers(), m_other.numbers(), [&](quint32 number, State state) {
            const Parent current = state == State::OnlyOther ? Parent() : m_current.read(number);
            const Parent other = state == State::OnlyCurrent ? Parent() : m_other.read(number);
            if (isCompared && !isCompared(number, current, other))
                return;
            Item item = compared(number, state, current, other, m_selection);
            item.children = children(number, state);
            if (item.state != State::Equal || !item.children.isEmpty())
                items.append(item);
        });
    }

private:
    template <typename Row>
    Item compared(quint32 number, State state, const Row &current, const Row &other,
                  const DiffSelection &selection) const
    {
        if (state == State::Equal && DiffFields::differ(current, other, selection))
            state = State::Different;
        return {.number = number,
                .direction = m_direction,
                .name = state == State::OnlyOther ? other.name : current.name,
                .state = state,
                .children = {}};
    }

    QList<Item> children(quint32 number, State parent) const
    {
        const auto numbers = [number](const Side<Records> &side, bool hasParent) {
            return hasParent ? side.childNumbers(number) : QList<quint32>();
        };
        QList<Item> items;
        merge(numbers(m_current, parent != State::OnlyOther), numbers(m_other, parent != State::OnlyCurrent),
              [&](quint32 child, State state) {
                  const Child current =
                      state == State::OnlyOther ? Child() : m_current.readChild(number, child);
                  const Child other =
                      state == State::OnlyCurrent ? Child() : m_other.readChild(number, child);
                  const Item item = compared(child, state, current, other, m_selection);
                  if (item.state != State::Equal)
                      items.append(item);
              });
        return items;
    }

    Side<Records> m_current;
    Side<Records> m_other;
    quint8 m_direction;
    const DiffSelection &m_selection;
};

bool isPdoOfDevice(const QString &deviceClass)
{
    return deviceClass.contains(receivePdoClass) || deviceClass.contains(transmitPdoClass);
}

/** What the EnergyBus configuration manages: PDOs of another class are the user's own. */
bool isManaged(quint32 index, const ObjectRecords::Parent &current, const ObjectRecords::Parent &other)
{
    if (index >= firstPdoIndex && index <= lastPdoIndex)
        return isPdoOfDevice(current.device_class) || isPdoOfDevice(other.device_class);
    return index < firstManufacturerIndex || index > lastManufacturerIndex;
}

template <class Records>
QList<Item> compareMessages(ObjectDataBase &current, ObjectDataBase &other, quint8 line,
                            const DiffSelection &selection)
{
    QList<Item> items;
    for (const quint8 direction : {ObjectDataBase::Transmit, ObjectDataBase::Receive})
        Comparison<Records>(current, other, line, direction, selection).run(items);
    return items;
}

template <class Value>
QList<Setting> compareSettings(const QStringList &keys, ObjectDataBase &current, ObjectDataBase &other,
                               const Value &value)
{
    QList<Setting> settings;
    for (const QString &key : keys) {
        const Setting setting{.key = key, .current = value(current, key), .other = value(other, key)};
        if (setting.current != setting.other)
            settings.append(setting);
    }
    return settings;
}

} // namespace

bool Item::operator==(const Item &other) const
{
    return number == other.number && direction == other.direction && name == other.name
        && state == other.state && children == other.children;
}

QList<quint8> ProjectDiff::lines(ObjectDataBase &current, ObjectDataBase &other)
{
    QList<quint8> numbers = current.getLines() + other.getLines();
    numbers.removeIf(reservedLine);
    std::ranges::sort(numbers);
    numbers.resize(std::unique(numbers.begin(), numbers.end()) - numbers.begin());
    return numbers;
}

LineDifferences ProjectDiff::compareLine(ObjectDataBase &current, ObjectDataBase &other, quint8 line,
                                         const Options &options)
{
    LineDifferences differences;
    Comparison<ObjectRecords>(current, other, line, ObjectDataBase::BothDirections, options.selection)
        .run(differences.objects, options.isAfterApply ? isManaged : Comparison<ObjectRecords>::Filter());
    differences.pgns = compareMessages<PgnRecords>(current, other, line, options.selection);
    differences.canIds = compareMessages<CanIdRecords>(current, other, line, options.selection);
    return differences;
}

QList<Setting> ProjectDiff::compareGeneralSettings(ObjectDataBase &current, ObjectDataBase &other)
{
    return compareSettings(
        current.getGeneralSettingKeys(), current, other,
        [](ObjectDataBase &store, const QString &key) { return store.getGeneralSetting(key); });
}

QList<Setting> ProjectDiff::compareJ1939Settings(ObjectDataBase &current, ObjectDataBase &other)
{
    return compareSettings(
        current.getJ1939SettingKeys(), current, other,
        [](ObjectDataBase &store, const QString &key) { return store.getJ1939Setting(key); });
}

int ProjectDiff::count(const QList<Item> &items)
{
    int result = 0;
    for (const Item &item : items)
        result += 1 + count(item.children);
    return result;
}

int ProjectDiff::count(const LineDifferences &line)
{
    return count(line.objects) + count(line.pgns) + count(line.canIds);
}
