#include "generators/canopen/ValuePositions.h"

#include "canopen/CANTypes.h"
#include "generators/CText.h"
#include "generators/ObjectKey.h"
#include "generators/canopen/ObjectDictionaryView.h"
#include "generators/canopen/StackServices.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace {

using CValues::Bits;
using CValues::Table;

bool isNumber(Table table)
{
    return CValues::form(table).notation != CValues::Notation::None;
}

/** One variable serves all lines: that of line 0. */
bool isOwnedByLine0(const DictionarySubIndex &sub)
{
    return sub.isShared && ObjectKey::line(sub.key) != 0;
}

/** Calls `act` for every sub-index of all lines, in the order of their keys. */
template <typename Action>
void forEachSubIndex(ObjectDictionaryView &view, const Action &act)
{
    for (DictionaryLine &line : view.lines)
        for (DictionaryObject &object : line.objects)
            for (DictionarySubIndex &sub : object.subIndices)
                act(sub);
}

template <typename Row>
TablePosition append(ByTable<Row> &tables, Table table, Row row)
{
    QList<Row> &rows = tables[table];
    rows.append(std::move(row));
    return {.table = table, .position = quint32(rows.size() - 1)};
}

void addManaged(ObjectDictionaryView &view, DictionarySubIndex &sub)
{
    const quint16 index = ObjectKey::index(sub.key);
    if (sub.storage != StorageClass::Managed || !isNumber(sub.table) || isOwnedByLine0(sub)
        || StackServices::holdsValue(index, sub.number))
        return;
    sub.variablePosition =
        append(view.managed, sub.table, ManagedVariable{.key = sub.key, .initialValue = sub.defaultNumber()});
}

void addApplication(ObjectDictionaryView &view, DictionarySubIndex &sub)
{
    if (sub.storage != StorageClass::Application || sub.table == Table::None || sub.isMappedInSrdo)
        return;
    sub.variablePosition =
        append(view.application, sub.table,
               ApplicationVariable{.key = sub.key, .name = sub.variable, .size = sub.size});
}

/** The constant tables with their search for a value that is there already. */
class ConstantPool
{
public:
    explicit ConstantPool(ObjectDictionaryView &view) : m_view(view) { }

    void add(DictionarySubIndex &sub)
    {
        if (isNumber(sub.table))
            addNumbers(sub);
        else if (sub.storage == StorageClass::Constant)
            addText(sub);
    }

private:
    void addNumbers(DictionarySubIndex &sub)
    {
        sub.constantPosition = {.table = sub.table, .position = place(sub.table, sub.defaultNumber())};
        if (!m_view.settings.limitCheck || !sub.hasLimits || !sub.isWritable)
            return;
        sub.lowLimitPosition = place(sub.table, CValues::limitValue(sub.dataType, sub.lowLimit));
        sub.upLimitPosition = place(sub.table, CValues::limitValue(sub.dataType, sub.upLimit));
    }

    void addText(DictionarySubIndex &sub)
    {
        if (sub.table == Table::Utf8String)
            sub.constantPosition = append(m_view.constantTexts, sub.table, sub.defaultValue);
        else if (sub.table == Table::VisString || sub.table == Table::OctetString)
            sub.constantPosition = append(m_view.constantTexts, Table::VisString, sub.defaultValue);
    }

    quint32 place(Table table, Bits value)
    {
        QHash<Bits, quint32> &places = m_places[std::size_t(table)];
        if (const auto found = places.constFind(value); found != places.constEnd())
            return *found;
        const quint32 position = append(m_view.constants, table, value).position;
        places.insert(value, position);
        return position;
    }

    ObjectDictionaryView &m_view;
    std::array<QHash<Bits, quint32>, CValues::tableForms.size()> m_places;
};

void addStringDefaults(ObjectDictionaryView &view)
{
    quint32 offset = 0;
    forEachSubIndex(view, [&](const DictionarySubIndex &sub) {
        if (sub.storage != StorageClass::Application
            || (sub.dataType != CAN::VisibleString && sub.dataType != CAN::OctetString))
            return;
        const QByteArray bytes = CText::stringBytes(sub.defaultValue);
        view.stringDefaults.append({.key = sub.key, .name = sub.variable, .bytes = bytes, .offset = offset});
        offset += quint32(bytes.size());
    });
}

/** The lines above 0 use the variables that line 0 has. */
void shareVariables(ObjectDictionaryView &view)
{
    forEachSubIndex(view, [&](DictionarySubIndex &sub) {
        if (!isOwnedByLine0(sub))
            return;
        const DictionarySubIndex *owner = view.subIndex(0, ObjectKey::index(sub.key), sub.number);
        sub.variablePosition = owner ? owner->variablePosition : std::nullopt;
    });
}

// The stack's structure of all tables has no member for 24-bit signed values.
void listUnplacedTables(ObjectDictionaryView &view)
{
    if (!view.constants[Table::I24].isEmpty())
        view.unplacedTables.append(u"od_const_i24"_s);
    if (!view.managed[Table::I24].isEmpty())
        view.unplacedTables.append(u"od_i24"_s);
    if (!view.application[Table::I24].isEmpty())
        view.unplacedTables.append(u"od_ptr_i24"_s);
}

} // namespace

void assignValuePositions(ObjectDictionaryView &view)
{
    ConstantPool constants(view);
    forEachSubIndex(view, [&](DictionarySubIndex &sub) {
        addManaged(view, sub);
        constants.add(sub);
        addApplication(view, sub);
    });
    if (view.settings.stringDefaults && !view.settings.forJ1939Server)
        addStringDefaults(view);
    shareVariables(view);
    listUnplacedTables(view);
}
