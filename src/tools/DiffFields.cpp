#include "tools/DiffFields.h"

#include "canopen/COHelper.h"

#include <QCoreApplication>

#include <algorithm>
#include <span>
#include <vector>

using namespace Qt::StringLiterals;
using namespace ProjectRecords;

namespace {

using NumberWords = QString (*)(int);

template <typename Row>
struct Field
{
    const char *title;
    Schema::Member<Row> member;
    NumberWords words = nullptr; ///< what a number means; without it the number is shown
};

QString text(const char *source)
{
    return QCoreApplication::translate("DiffFields", source);
}

QString orNumber(const QString &words, int number)
{
    return words.isEmpty() ? QString::number(number) : words;
}

QString dataTypeWords(int number)
{
    return orNumber(COHelper::index2DataTypeString(quint16(number)), number);
}

QString objectTypeWords(int number)
{
    return orNumber(COHelper::objectCode2String(CANopen::ObjectCode(number)), number);
}

QString implementationWords(int number)
{
    return orNumber(COHelper::implementation2String(quint8(number)), number);
}

QString categoryWords(int number)
{
    const size_t place = size_t(number) - CANopen::Mandatory;
    return place < CANopen::categoryLabels.size()
        ? QCoreApplication::translate("CANopen", CANopen::categoryLabels.at(place))
        : QString::number(number);
}

QString edsDefaultWords(int number)
{
    static constexpr std::array words{QT_TRANSLATE_NOOP("DiffFields", "no"),
                                      QT_TRANSLATE_NOOP("DiffFields", "as defaultvalue"),
                                      QT_TRANSLATE_NOOP("DiffFields", "yes")};
    return size_t(number) < words.size() ? text(words.at(size_t(number))) : QString::number(number);
}

constexpr std::array objectFields = std::to_array<Field<IndexData>>({
    {QT_TRANSLATE_NOOP("DiffFields", "Name"), &IndexData::name},
    {QT_TRANSLATE_NOOP("DiffFields", "DataType"), &IndexData::datatype, dataTypeWords},
    {QT_TRANSLATE_NOOP("DiffFields", "ObjectType"), &IndexData::objecttype, objectTypeWords},
    {QT_TRANSLATE_NOOP("DiffFields", "Category"), &IndexData::category, categoryWords},
    {QT_TRANSLATE_NOOP("DiffFields", "Device Class"), &IndexData::device_class},
    {QT_TRANSLATE_NOOP("DiffFields", "Description"), &IndexData::description},
});

constexpr std::array subIndexFields = std::to_array<Field<SubIndexData>>({
    {QT_TRANSLATE_NOOP("DiffFields", "Name"), &SubIndexData::name},
    {QT_TRANSLATE_NOOP("DiffFields", "DataType"), &SubIndexData::datatype, dataTypeWords},
    {QT_TRANSLATE_NOOP("DiffFields", "AccessType"), &SubIndexData::accesstype},
    {QT_TRANSLATE_NOOP("DiffFields", "DefaultValue"), &SubIndexData::defaultvalue},
    {QT_TRANSLATE_NOOP("DiffFields", "PdoMapping"), &SubIndexData::pdomapping},
    {QT_TRANSLATE_NOOP("DiffFields", "LowerLimit"), &SubIndexData::lowlimit},
    {QT_TRANSLATE_NOOP("DiffFields", "UpperLimit"), &SubIndexData::uplimit},
    {QT_TRANSLATE_NOOP("DiffFields", "Size"), &SubIndexData::size},
    {QT_TRANSLATE_NOOP("DiffFields", "Implementation"), &SubIndexData::implementation, implementationWords},
    {QT_TRANSLATE_NOOP("DiffFields", "VariableName"), &SubIndexData::varname},
    {QT_TRANSLATE_NOOP("DiffFields", "Category"), &SubIndexData::category, categoryWords},
    {QT_TRANSLATE_NOOP("DiffFields", "WizardSource"), &SubIndexData::wizardsource},
    {QT_TRANSLATE_NOOP("DiffFields", "ChangedByUser"), &SubIndexData::changedbyuser},
    {QT_TRANSLATE_NOOP("DiffFields", "HasDefault"), &SubIndexData::defaultineds},
    {QT_TRANSLATE_NOOP("DiffFields", "DefaultInEDS"), &SubIndexData::writedefaulttoeds, edsDefaultWords},
    {QT_TRANSLATE_NOOP("DiffFields", "LimitCheck"), &SubIndexData::limitineds},
    {QT_TRANSLATE_NOOP("DiffFields", "Description"), &SubIndexData::description},
    {QT_TRANSLATE_NOOP("DiffFields", "Managed by LVX"), &SubIndexData::managedbylvx},
    {QT_TRANSLATE_NOOP("DiffFields", "In all lines"), &SubIndexData::sharedlines},
    {QT_TRANSLATE_NOOP("DiffFields", "non-volatile storage"), &SubIndexData::nvstorage},
});

constexpr std::array pgnFields = std::to_array<Field<Pgn>>({
    {QT_TRANSLATE_NOOP("DiffFields", "Name"), &Pgn::name},
    {QT_TRANSLATE_NOOP("DiffFields", "Prority"), &Pgn::priority},
    {QT_TRANSLATE_NOOP("DiffFields", "Cycle Time"), &Pgn::cycletime_ms},
    {QT_TRANSLATE_NOOP("DiffFields", "Inhibit Time"), &Pgn::inhibittime_ms},
    {QT_TRANSLATE_NOOP("DiffFields", "Description"), &Pgn::desc},
});

constexpr std::array canIdFields = std::to_array<Field<CanId>>({
    {QT_TRANSLATE_NOOP("DiffFields", "Name"), &CanId::name},
    {QT_TRANSLATE_NOOP("DiffFields", "Cycle Time"), &CanId::cycletime_ms},
    {QT_TRANSLATE_NOOP("DiffFields", "Inhibit Time"), &CanId::inhibittime_ms},
    {QT_TRANSLATE_NOOP("DiffFields", "Description"), &CanId::desc},
});

/** A signal of a J1939 group and one of a raw CAN message have the same fields. */
template <typename Row>
constexpr std::array signalFields = std::to_array<Field<Row>>({
    {QT_TRANSLATE_NOOP("DiffFields", "Name"), &Row::name},
    {QT_TRANSLATE_NOOP("DiffFields", "Data Type"), &Row::datatype, dataTypeWords},
    {QT_TRANSLATE_NOOP("DiffFields", "Implementation Type"), &Row::implementation, implementationWords},
    {QT_TRANSLATE_NOOP("DiffFields", "Variable Name"), &Row::varname},
    {QT_TRANSLATE_NOOP("DiffFields", "Description"), &Row::desc},
});

/** What differs between the row types: the level and the titled fields. */
template <typename Row>
struct Fields;
template <>
struct Fields<IndexData>
{
    static constexpr DiffLevel level = DiffLevel::Object;
    static constexpr std::span<const Field<IndexData>> titled = objectFields;
};
template <>
struct Fields<SubIndexData>
{
    static constexpr DiffLevel level = DiffLevel::SubIndex;
    static constexpr std::span<const Field<SubIndexData>> titled = subIndexFields;
};
template <>
struct Fields<Pgn>
{
    static constexpr DiffLevel level = DiffLevel::Pgn;
    static constexpr std::span<const Field<Pgn>> titled = pgnFields;
};
template <>
struct Fields<Spn>
{
    static constexpr DiffLevel level = DiffLevel::Spn;
    static constexpr std::span<const Field<Spn>> titled = signalFields<Spn>;
};
template <>
struct Fields<CanId>
{
    static constexpr DiffLevel level = DiffLevel::CanId;
    static constexpr std::span<const Field<CanId>> titled = canIdFields;
};
template <>
struct Fields<DataElement>
{
    static constexpr DiffLevel level = DiffLevel::DataElement;
    static constexpr std::span<const Field<DataElement>> titled = signalFields<DataElement>;
};

/** The columns without a title; their names are those of the file format. */
template <typename Row>
const std::vector<Field<Row>> &internalFields()
{
    static const std::vector<Field<Row>> fields = [] {
        std::vector<Field<Row>> result;
        for (const Schema::Column<Row> &column : Schema::Table<Row>::columns) {
            const auto isColumn = [&](const Field<Row> &field) { return field.member == column.member; };
            if (column.storage != Schema::Storage::Key && std::ranges::none_of(Fields<Row>::titled, isColumn))
                result.push_back({column.name, column.member});
        }
        return result;
    }();
    return fields;
}

template <typename Row>
bool isEqual(const Field<Row> &field, const Row &first, const Row &second)
{
    return std::visit(
        [&](auto member) {
            if constexpr (std::is_same_v<decltype(member), std::monostate>)
                return true;
            else
                return first.*member == second.*member;
        },
        field.member);
}

QString metadataText(const MetadataMap &metadata)
{
    QStringList lines;
    for (auto entry = metadata.cbegin(); entry != metadata.cend(); ++entry)
        lines.append(entry.key() + ": "_L1 + entry.value());
    return lines.join(u'\n');
}

template <typename Row>
QString valueText(const Field<Row> &field, const Row &row)
{
    return std::visit(
        [&](auto member) -> QString {
            if constexpr (std::is_same_v<decltype(member), std::monostate>) {
                return {};
            } else {
                using Value = std::remove_cvref_t<decltype(row.*member)>;
                const Value &value = row.*member;
                if constexpr (std::is_same_v<Value, QString>)
                    return value;
                else if constexpr (std::is_same_v<Value, MetadataMap>)
                    return metadataText(value);
                else if constexpr (std::is_same_v<Value, PDOMapping>)
                    return COHelper::pdoMapping2String(value);
                else if constexpr (std::is_same_v<Value, bool>)
                    return value ? text("yes") : text("no");
                else
                    return field.words ? field.words(int(value)) : QString::number(value);
            }
        },
        field.member);
}

template <typename Row>
DiffFields::Detail detail(const Field<Row> &field, const QString &title, const Row *current, const Row *other)
{
    return {.title = title,
            .current = current ? valueText(field, *current) : QString(),
            .other = other ? valueText(field, *other) : QString(),
            .differs = current && other && !isEqual(field, *current, *other)};
}

template <typename Row>
QStringList titlesOf()
{
    QStringList titles;
    for (const Field<Row> &field : Fields<Row>::titled)
        titles.append(text(field.title));
    return titles;
}

} // namespace

void DiffSelection::setCounting(DiffLevel level, qsizetype field, bool counting)
{
    quint32 &ignoredFields = m_ignored.at(size_t(level));
    const quint32 bit = 1U << field;
    ignoredFields = counting ? ignoredFields & ~bit : ignoredFields | bit;
}

QStringList DiffFields::titles(DiffLevel level)
{
    switch (level) {
    case DiffLevel::Object:
        return titlesOf<IndexData>();
    case DiffLevel::SubIndex:
        return titlesOf<SubIndexData>();
    case DiffLevel::Pgn:
        return titlesOf<Pgn>();
    case DiffLevel::Spn:
        return titlesOf<Spn>();
    case DiffLevel::CanId:
        return titlesOf<CanId>();
    case DiffLevel::DataElement:
        return titlesOf<DataElement>();
    }
    return {};
}

DiffSelection DiffFields::fieldsOfTextForm()
{
    DiffSelection selection;
    for (size_t number = 0; number < subIndexFields.size(); ++number) {
        const Schema::Member<SubIndexData> &member = subIndexFields.at(number).member;
        if (member == Schema::Member<SubIndexData>(&SubIndexData::wizardsource)
            || member == Schema::Member<SubIndexData>(&SubIndexData::changedbyuser))
            selection.setCounting(DiffLevel::SubIndex, qsizetype(number), false);
    }
    return selection;
}

template <typename Row>
bool DiffFields::differ(const Row &current, const Row &other, const DiffSelection &selection)
{
    const std::span<const Field<Row>> fields = Fields<Row>::titled;
    for (size_t number = 0; number < fields.size(); ++number)
        if (!isEqual(fields[number], current, other)
            && selection.counts(Fields<Row>::level, qsizetype(number)))
            return true;
    return false;
}

template <typename Row>
QList<DiffFields::Detail> DiffFields::details(const Row *current, const Row *other, bool withInternal)
{
    QList<Detail> rows;
    for (const Field<Row> &field : Fields<Row>::titled)
        rows.append(detail(field, text(field.title), current, other));
    if (!withInternal)
        return rows;
    for (const Field<Row> &field : internalFields<Row>())
        rows.append(detail(field, QString::fromLatin1(field.title), current, other));
    return rows;
}

template bool DiffFields::differ(const IndexData &, const IndexData &, const DiffSelection &);
template bool DiffFields::differ(const SubIndexData &, const SubIndexData &, const DiffSelection &);
template bool DiffFields::differ(const Pgn &, const Pgn &, const DiffSelection &);
template bool DiffFields::differ(const Spn &, const Spn &, const DiffSelection &);
template bool DiffFields::differ(const CanId &, const CanId &, const DiffSelection &);
template bool DiffFields::differ(const DataElement &, const DataElement &, const DiffSelection &);
template QList<DiffFields::Detail> DiffFields::details(const IndexData *, const IndexData *, bool);
template QList<DiffFields::Detail> DiffFields::details(const SubIndexData *, const SubIndexData *, bool);
template QList<DiffFields::Detail> DiffFields::details(const Pgn *, const Pgn *, bool);
template QList<DiffFields::Detail> DiffFields::details(const Spn *, const Spn *, bool);
template QList<DiffFields::Detail> DiffFields::details(const CanId *, const CanId *, bool);
template QList<DiffFields::Detail> DiffFields::details(const DataElement *, const DataElement *, bool);
