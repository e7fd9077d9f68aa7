#include "importers/CsvHeader.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

struct ColumnName
{
    CsvColumn column;
    QLatin1StringView name;
    QLatin1StringView absentDefault = {};
};

constexpr ColumnName columnNames[] = {
    {CsvColumn::Index, "index"_L1},
    {CsvColumn::Sub, "sub"_L1, "0"_L1},
    {CsvColumn::ObjectCode, "objectcode"_L1, "VARIABLE"_L1},
    {CsvColumn::DataType, "datatype"_L1},
    {CsvColumn::EdsName, "edsname"_L1},
    {CsvColumn::VarName, "varname"_L1},
    {CsvColumn::Access, "access"_L1, "ro"_L1},
    {CsvColumn::Mapable, "mapable"_L1},
    {CsvColumn::HasDefault, "hasdefault"_L1},
    {CsvColumn::DefaultInEds, "defaultineds"_L1},
    {CsvColumn::Value, "value"_L1},
    {CsvColumn::Description, "description"_L1},
    {CsvColumn::Size, "size"_L1},
    {CsvColumn::Implementation, "implementation"_L1, "none"_L1},
    {CsvColumn::HasLimit, "haslimit"_L1},
    {CsvColumn::LowLimit, "lowlimit"_L1},
    {CsvColumn::UpLimit, "uplimit"_L1},
    {CsvColumn::NvStorage, "nvstorage"_L1},
    {CsvColumn::RefuseRead, "refuseread"_L1},
    {CsvColumn::RefuseWrite, "refusewrite"_L1},
    {CsvColumn::Line, "line"_L1},
};

consteval bool standInOrder()
{
    std::size_t place = 0;
    for (const ColumnName &entry : columnNames) {
        if (std::size_t(entry.column) != place++)
            return false;
    }
    return place == std::size_t(CsvColumn::Count);
}
static_assert(standInOrder());

const ColumnName *columnNamed(const QString &name)
{
    const auto column = std::find_if(std::begin(columnNames), std::end(columnNames),
                                     [&name](const ColumnName &entry) { return entry.name == name; });
    return column == std::end(columnNames) ? nullptr : column;
}

} // namespace

CsvHeader::CsvHeader(const QString &line) : m_separator(CsvLine::separatorOf(line))
{
    using CsvLine::Quoting;
    m_quoting = line.startsWith(u'"') ? Quoting::Everywhere : Quoting::WhereNeeded;
    const QStringList names = CsvLine::split(line.toLower(), m_separator, Quoting::Everywhere).texts;
    m_width = names.size();
    m_hasBlanks = m_width > 1 && std::all_of(names.begin() + 1, names.end(), [](const QString &name) {
                      return name.startsWith(u' ');
                  });
    for (qsizetype position = 0; position < m_width; ++position) {
        const ColumnName *const column = columnNamed(names[position].trimmed());
        if (column && !has(column->column))
            m_positions[std::size_t(column->column)] = position;
    }
}

QString CsvHeader::text(const QStringList &row, CsvColumn column) const
{
    if (!has(column))
        return columnNames[std::size_t(column)].absentDefault;
    const QString text = row.value(m_positions[std::size_t(column)]);
    return m_hasBlanks ? text.trimmed() : text;
}
