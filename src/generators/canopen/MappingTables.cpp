#include "generators/canopen/MappingTables.h"

#include "canopen/CANTypes.h"
#include "check/MappingEntry.h"
#include "generators/CText.h"
#include "generators/ObjectKey.h"
#include "generators/canopen/ObjectDictionaryView.h"
#include "generators/canopen/VariablePointers.h"

#include <QHash>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/** CiA 301: where the parameters of PDOs of one direction stand. */
struct PdoObjects
{
    quint16 first;
    quint16 last;
    QStringView tableName;

    quint16 number(quint16 index) const { return quint16(index - first + 1); }
};

constexpr PdoObjects receivePdos{0x1400, 0x15FF, u"mapTableRPDO"};
constexpr PdoObjects transmitPdos{0x1800, 0x19FF, u"mapTableTPDO"};
constexpr quint16 mappingOffset = 0x200; // from the communication to the mapping object
constexpr quint16 networkRouting = 0x1F2C;

constexpr quint32 mostEntries = 64; // more in sub-index 0 mark a multiplexed PDO, which maps one object
constexpr int bitsPerByte = 8;

/** The mapping object of a PDO as numbers. */
struct Mapping
{
    bool isStatic = true;
    quint32 count = 0; ///< as sub-index 0 has it
    QList<quint32> entries; ///< that are in use
};

Mapping readMapping(const DictionaryLine &line, quint16 mappingIndex)
{
    Mapping mapping;
    const DictionaryObject *object = line.object(mappingIndex);
    const DictionarySubIndex *first = object ? object->subIndex(0) : nullptr;
    if (!first)
        return mapping;
    mapping.isStatic = first->accessType != "rw"_L1;
    mapping.count = MappingEntry::fromText(first->defaultValue).value;
    const quint32 used = mapping.count > mostEntries ? 1 : mapping.count;
    for (quint32 i = 1; i <= used; ++i) {
        const DictionarySubIndex *sub = object->subIndex(quint8(i));
        mapping.entries.append(sub ? MappingEntry::fromText(sub->defaultValue).value : 0);
    }
    return mapping;
}

/** Which TPDO of a line sends a mapped object. */
class RoutingTable
{
public:
    explicit RoutingTable(const ObjectDictionaryView &view) : m_lines(view.projectLines)
    {
        for (const DictionaryLine &line : view.lines)
            for (const DictionaryObject &object :
                 line.objectRange(transmitPdos.first + mappingOffset, transmitPdos.last + mappingOffset))
                add(line, object.index);
    }

    /** By line of the project; a variable of one line only goes nowhere. */
    QList<int> routing(quint32 entry, const DictionarySubIndex *variable) const
    {
        QList<int> numbers(m_lines.size(), 0);
        if (variable && variable->isShared)
            std::ranges::transform(m_lines, numbers.begin(),
                                   [&](quint8 line) { return m_senders.value(key(line, entry)); });
        return numbers;
    }

private:
    static quint64 key(quint8 line, quint32 entry) { return quint64(line) << 32 | entry; }

    void add(const DictionaryLine &line, quint16 mappingIndex)
    {
        const quint16 number = transmitPdos.number(quint16(mappingIndex - mappingOffset));
        const QList<quint32> entries = readMapping(line, mappingIndex).entries;
        for (const quint32 entry : entries)
            if (const quint64 sender = key(line.number, entry); !m_senders.contains(sender))
                m_senders.insert(sender, number);
    }

    const QList<quint8> &m_lines;
    QHash<quint64, int> m_senders;
};

QString element(QStringView kind, const TablePosition &place)
{
    return u"&od_%1%2[%3]"_s.arg(kind, CValues::form(place.table).name).arg(place.position);
}

QString address(const DictionarySubIndex &sub)
{
    constexpr auto none = "NULL"_L1;
    switch (sub.storage) {
    case StorageClass::Managed:
        return sub.variablePosition ? element({}, *sub.variablePosition) : none;
    case StorageClass::Constant:
        return sub.constantPosition ? element(u"const_", *sub.constantPosition) : none;
    case StorageClass::Application:
        return CText::address(sub.variable, pointerKind(sub.table));
    case StorageClass::None:
        break;
    }
    return none;
}

/** Writes the mappings of one line into its tables. */
class LineMappings
{
public:
    LineMappings(const ObjectDictionaryView &view, const RoutingTable *routing, DictionaryLine &line)
        : m_view(view), m_routing(routing), m_line(line), m_hasTables(hasTables(view, line.number))
    {
    }

    void addAll()
    {
        for (const DictionaryObject &object : m_line.objectRange(transmitPdos.first, transmitPdos.last))
            addTransmit(object.index);
        for (const DictionaryObject &object : m_line.objectRange(receivePdos.first, receivePdos.last))
            addReceive(object.index);
    }

private:
    /** Only a line that a function starts has a use for tables. */
    static bool hasTables(const ObjectDictionaryView &view, quint8 line)
    {
        if (view.settings.forJ1939Server)
            return false;
        return view.settings.isMultiLineForm() ? view.generatorLines.contains(line) : line == view.onlyLine();
    }

    void addTransmit(quint16 index)
    {
        const Mapping mapping = readMapping(m_line, index + mappingOffset);
        DictionaryPdo pdo{.index = index, .number = transmitPdos.number(index), .isStatic = mapping.isStatic};
        if (mapping.isStatic && m_hasTables) {
            m_line.transmitTables.append(table(mapping, transmitPdos, pdo.number));
            pdo.mappingTable = nameInUse(m_line.transmitTables.last());
        }
        m_line.transmitPdos.append(pdo);
    }

    void addReceive(quint16 index)
    {
        const Mapping mapping = readMapping(m_line, index + mappingOffset);
        DictionaryPdo pdo{.index = index, .number = receivePdos.number(index), .isStatic = mapping.isStatic};
        if (mapping.isStatic && m_hasTables)
            pdo.mappingTable = nameInUse(m_routing ? routed(mapping, pdo.number) : shared(mapping));
        m_line.receivePdos.append(pdo);
    }

    const MappingTable &routed(const Mapping &mapping, quint16 number)
    {
        m_line.receiveTables.append(table(mapping, receivePdos, number));
        return m_line.receiveTables.last();
    }

    const MappingTable &shared(const Mapping &mapping)
    {
        QList<quint32> content = mapping.entries;
        content.append(mapping.count);
        const auto known = m_shared.constFind(content);
        if (known != m_shared.constEnd())
            return m_line.receiveTables.at(*known);
        m_shared.insert(content, m_line.receiveTables.size());
        return routed(mapping, quint16(m_line.receiveTables.size() + 1));
    }

    /** A table without rows is not defined. */
    static QString nameInUse(const MappingTable &table)
    {
        return table.rows.isEmpty() ? QString() : table.name;
    }

    MappingTable table(const Mapping &mapping, const PdoObjects &kind, quint16 number) const
    {
        MappingTable result{.name = kind.tableName.toString() + infix() + QString::number(number),
                            .number = number,
                            .count = mapping.count};
        const auto rows = std::min<qsizetype>(mapping.entries.size(), m_view.mappingRows);
        for (qsizetype i = 0; i < rows; ++i)
            result.rows.append(row(mapping.entries.at(i), kind.first == receivePdos.first));
        return result;
    }

    MappingRow row(quint32 number, bool isReceived) const
    {
        const MappingEntry entry{number};
        const DictionarySubIndex *mapped = m_line.subIndex(entry.index(), entry.subIndex());
        const DictionarySubIndex *variable = owner(mapped);
        const bool inBits = m_view.settings.bitwiseMapping;
        return {.address = variable ? address(*variable) : u"NULL"_s,
                .length = quint32(inBits ? entry.bits() : entry.bits() / bitsPerByte),
                .dataType = variable ? variable->dataType : int(CAN::Unsigned8),
                .entry = number,
                .routing = m_routing && isReceived ? m_routing->routing(number, mapped) : QList<int>()};
    }

    /** One variable serves all lines that share it: that of line 0, whatever the others would call theirs. */
    const DictionarySubIndex *owner(const DictionarySubIndex *sub) const
    {
        const DictionarySubIndex *ofLine0 =
            sub && sub->isShared ? m_view.subIndex(0, ObjectKey::index(sub->key), sub->number) : nullptr;
        return ofLine0 ? ofLine0 : sub;
    }

    /** Lines have letters of their own, so that their tables do not clash. */
    QString infix() const
    {
        constexpr quint8 letters = 26;
        constexpr quint8 codeBehindLetters = 40; // line 26 has the capital B
        if (!m_view.settings.isMultiLineForm())
            return {};
        const quint8 line = m_line.number;
        return QString(QLatin1Char(char(line < letters ? 'a' + line : codeBehindLetters + line)));
    }

    const ObjectDictionaryView &m_view;
    const RoutingTable *m_routing;
    DictionaryLine &m_line;
    bool m_hasTables;
    QHash<QList<quint32>, qsizetype> m_shared;
};

/** Rows of every table: as many as the largest mapping object has entries. */
int mappingRows(const ObjectDictionaryView &view)
{
    qsizetype most = 0;
    for (const DictionaryLine &line : view.lines)
        for (const PdoObjects &kind : {receivePdos, transmitPdos})
            for (const DictionaryObject &object :
                 line.objectRange(kind.first + mappingOffset, kind.last + mappingOffset))
                most = std::max(most, object.subIndices.size() - 1);
    return int(most);
}

bool hasNetworkRouting(const ObjectDictionaryView &view)
{
    return std::ranges::any_of(view.lines, [](const DictionaryLine &line) {
        const DictionaryObject *object = line.object(networkRouting);
        return object && !object->subIndices.isEmpty();
    });
}

} // namespace

void addMappingTables(ObjectDictionaryView &view)
{
    view.mappingRows = mappingRows(view);
    view.settings.bitwiseMapping = view.settings.bitwiseMapping && view.mappingRows > 1;
    view.hasNetworkRouting = hasNetworkRouting(view);
    const RoutingTable routing(view);
    for (DictionaryLine &line : view.lines)
        LineMappings(view, view.hasNetworkRouting ? &routing : nullptr, line).addAll();
}
