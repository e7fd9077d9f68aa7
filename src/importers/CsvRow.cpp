#include "importers/CsvRow.h"

#include "canopen/COHelper.h"
#include "canopen/Helper.h"
#include "importers/CsvLine.h"
#include "importers/CsvNumber.h"
#include "importers/ImplementationRules.h"
#include "importers/ImportedRows.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView virtualWord = "virtualobject"_L1;

struct ImplementationWord
{
    QLatin1StringView word; ///< in lower case and without blanks
    CANopen::ImplementationKind kind;
};

constexpr ImplementationWord implementationWords[] = {
    {"managedvariable"_L1, CANopen::ManagedVariable},
    {"managedconst"_L1, CANopen::ManagedConst},
    {"variable"_L1, CANopen::ApplicationVariable},
    {"applicationvariable"_L1, CANopen::ApplicationVariable},
    {virtualWord, CANopen::VirtualObject},
};

/** A mapping that is none of these and reads as one of them was not understood. */
constexpr QLatin1StringView forbiddenWords[] = {"none"_L1, "forbidden"_L1, "false"_L1, "no"_L1, "0"_L1};

/** As much of a field as a line of the log has room for. */
QString shown(const QString &field)
{
    constexpr qsizetype mostCharacters = 100;
    return field.size() <= mostCharacters ? field : QString(field.left(mostCharacters) + u"..."_s);
}

/** "1,5" as spreadsheets of many countries write it; any other text stays. */
QString withDecimalPoint(const QString &text)
{
    QString number = text;
    bool isNumber = false;
    if (number.count(u',') == 1)
        number.replace(u',', u'.').toDouble(&isNumber);
    return isNumber ? number : text;
}

} // namespace

std::optional<CsvRow> CsvRow::read(const CsvHeader &header, const QStringList &fields, QString &obstacle)
{
    CsvRow row(header, fields);
    obstacle = CsvLine::isPadding(fields, header.width()) ? row.readNumbers()
                                                          : u"there are more fields than columns"_s;
    if (!obstacle.isEmpty())
        return {};
    row.readTypes();
    if (row.text(CsvColumn::Sub).trimmed().isEmpty() && ImplementationRules::hasCount(row.m_objectCode))
        row.m_subIndex.reset();
    return row;
}

// What is wrong with the index or the sub-index; empty when both are good.
QString CsvRow::readNumbers()
{
    const auto index = csvNumber<quint16>(text(CsvColumn::Index));
    if (!index)
        return u"\"%1\" is no index"_s.arg(shown(text(CsvColumn::Index)));
    m_index = *index;
    const QString subIndex = text(CsvColumn::Sub);
    m_subIndex = subIndex.trimmed().isEmpty() ? quint8(0) : csvNumber<quint8>(subIndex);
    return m_subIndex ? QString() : u"\"%1\" is no sub-index"_s.arg(shown(subIndex));
}

void CsvRow::readTypes()
{
    const QString code = text(CsvColumn::ObjectCode);
    m_objectCode = COHelper::string2objectCode(code);
    if (m_objectCode == CANopen::Null) {
        m_objectCode = CANopen::Var;
        remark(CsvColumn::ObjectCode, u"VARIABLE"_s);
    }
    m_dataType = COHelper::mapDataTypeString(text(CsvColumn::DataType));
    if (m_dataType == CAN::NoDataType)
        remark(CsvColumn::DataType, u"no data type"_s);
}

void CsvRow::remark(CsvColumn column, const QString &instead)
{
    const QString found = text(column);
    if (!found.trimmed().isEmpty())
        m_remarks.append(u"\"%1\" is not understood, %2 was taken"_s.arg(shown(found), instead));
}

QString CsvRow::objectName() const
{
    if (!m_header->has(CsvColumn::EdsName))
        return u"unnamed object"_s;
    const QString own = name();
    return own.isEmpty() ? u"Object_%1"_s.arg(m_index, 4, 16, QLatin1Char('0')) : own;
}

QString CsvRow::description() const
{
    return text(CsvColumn::Description).replace(QLatin1StringView(Helper::csvDescLinebreak), "\n"_L1);
}

bool CsvRow::isVirtual() const
{
    return word(CsvColumn::Implementation) == virtualWord;
}

bool CsvRow::isYes(CsvColumn column) const
{
    return word(column) == "yes"_L1;
}

QString CsvRow::accessType()
{
    QString access = COHelper::normalizeAccessType(text(CsvColumn::Access));
    if (!access.isEmpty())
        return access;
    remark(CsvColumn::Access, u"rw"_s);
    return u"rw"_s;
}

int CsvRow::implementation(const QString &accessType)
{
    if (accessType == "const"_L1)
        return CANopen::ManagedConst;
    const QString found = word(CsvColumn::Implementation).remove(u' ');
    for (const ImplementationWord &known : implementationWords) {
        if (known.word == found)
            return known.kind;
    }
    if (found != "none"_L1)
        remark(CsvColumn::Implementation, u"a managed variable"_s);
    return CANopen::ManagedVariable;
}

PDOMapping CsvRow::mapping()
{
    const PDOMapping mapping = PDOMapping::fromCSVString(text(CsvColumn::Mapable));
    const QString found = word(CsvColumn::Mapable);
    const bool isKnown = std::any_of(std::begin(forbiddenWords), std::end(forbiddenWords),
                                     [&found](QLatin1StringView known) { return known == found; });
    if (mapping.isEqualToType(PDOMapping::Forbidden) && !isKnown)
        remark(CsvColumn::Mapable, u"no mapping"_s);
    return mapping;
}

// A table with semicolons comes from a country where the comma stands before the decimals.
QString CsvRow::number(CsvColumn column) const
{
    const bool mayHaveComma = m_dataType == CAN::Real32 || m_dataType == CAN::Real64;
    return mayHaveComma ? withDecimalPoint(text(column)) : text(column);
}

void CsvRow::readFlags(ProjectRecords::SubIndexData &sub) const
{
    constexpr quint8 writtenWithDefault = 1;
    const QString nonVolatile = word(CsvColumn::NvStorage);
    sub.nvstorage = nonVolatile == "1"_L1 || nonVolatile == "yes"_L1 || nonVolatile == "true"_L1;
    sub.limitineds = isYes(CsvColumn::HasLimit);
    sub.refuseread = isYes(CsvColumn::RefuseRead);
    sub.refusewrite = isYes(CsvColumn::RefuseWrite);
    sub.writedefaulttoeds = isYes(CsvColumn::DefaultInEds) ? writtenWithDefault : 0;
    // A default that stands in the EDS is one, unless a column of its own tells otherwise.
    sub.defaultineds =
        isYes(m_header->has(CsvColumn::HasDefault) ? CsvColumn::HasDefault : CsvColumn::DefaultInEds);
}

ProjectRecords::SubIndexData CsvRow::sub()
{
    ProjectRecords::SubIndexData sub = ImportedRows::blank();
    sub.name = name();
    sub.datatype = m_dataType;
    sub.accesstype = accessType();
    sub.pdomapping = mapping();
    sub.implementation = implementation(sub.accesstype);
    sub.defaultvalue = number(CsvColumn::Value);
    sub.lowlimit = number(CsvColumn::LowLimit);
    sub.uplimit = number(CsvColumn::UpLimit);
    sub.description = description();
    sub.varname = text(CsvColumn::VarName);
    if (sub.implementation == CANopen::ApplicationVariable && sub.varname.trimmed().isEmpty())
        sub.varname = ImportedRows::variableName(m_index, m_subIndex.value_or(0));
    const auto size = csvNumber<int>(text(CsvColumn::Size));
    sub.size = size.value_or(0);
    if (!size)
        remark(CsvColumn::Size, u"0"_s);
    readFlags(sub);
    return sub;
}
