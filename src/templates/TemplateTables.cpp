// The table sections of a template source: objects with their sub-indices, PGNs with their signals.

#include "canopen/COHelper.h"
#include "templates/TemplateColumns.h"
#include "templates/TemplateParser.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr QChar separator = u'|';
constexpr quint32 lastPgn = 0x3FFFF; // 18 bits: EDP, DP, PDU format and group extension
constexpr quint32 lastSpn = 0x7FFFF; // 19 bits
constexpr quint32 lastPriority = 7;
constexpr quint32 longestMessage = 1785 * 8; // bits; the longest message of the transport protocol
constexpr int pagesShift = 16; // EDP and DP stand above the 16 bits of the group

constexpr std::array objectCodes = std::to_array<TemplateWord>({
    {"VAR", CANopen::Var},
    {"ARRAY", CANopen::Array},
    {"RECORD", CANopen::Record},
});

constexpr std::array accessWords = std::to_array<TemplateWord>({
    {"const", 0},
    {"ro", 1},
    {"rw", 2},
    {"wo", 3},
    {"rww", 4},
    {"rwr", 5},
});

// The words of the CiA 311 attribute PDOmapping.
constexpr std::array mappingWords = std::to_array<TemplateWord>({
    {"no", PDOMapping::Forbidden},
    {"optional", PDOMapping::Allowed},
    {"default", PDOMapping::Default},
    {"RPDO", PDOMapping::RPDO},
    {"TPDO", PDOMapping::TPDO},
});

constexpr std::array storageWords = std::to_array<TemplateWord>({
    {"managed", CANopen::ManagedVariable},
    {"const", CANopen::ManagedConst},
    {"application", CANopen::ApplicationVariable},
    {"virtual", CANopen::VirtualObject},
});

constexpr std::array directionWords = std::to_array<TemplateWord>({
    {"transmit", ObjectDataBase::Transmit},
    {"receive", ObjectDataBase::Receive},
});

enum SubIndexFlag {
    DefaultInCode = 1,
    DefaultInEds = 2,
    LimitsInCode = 4,
    RefuseRead = 8,
    RefuseWrite = 16,
    NonVolatile = 32,
};

constexpr std::array flagWords = std::to_array<TemplateWord>({
    {"default", DefaultInCode},
    {"eds", DefaultInEds},
    {"limit", LimitsInCode},
    {"noread", RefuseRead},
    {"nowrite", RefuseWrite},
    {"store", NonVolatile},
});

bool isIndented(const QString &row)
{
    return row.front().isSpace();
}

QString hex(quint32 number)
{
    return u"0x"_s + QString::number(number, 16).toUpper();
}

/** "application <variable>" or one of the other storage words; a single blank is the name of none. */
void readStorage(TemplateColumns &columns, qsizetype cell, int &implementation, QString &varname)
{
    const QString text = columns.optionalText(cell);
    const bool isApplication = text.startsWith("application "_L1);
    implementation =
        isApplication ? int(CANopen::ApplicationVariable) : columns.word(cell, u"storage"_s, storageWords);
    varname = isApplication ? text.section(u' ', 1).trimmed() : u" "_s;
    if (implementation == CANopen::ApplicationVariable && !isApplication)
        columns.fail(cell, u"the storage application needs the name of a variable behind it"_s);
}

int sizeInBytes(CAN::CANopenDataType type, const QString &value)
{
    constexpr int bitsPerByte = 8;
    const int bits = COHelper::getDataLengthBits(type);
    return bits > 0 ? (bits + bitsPerByte - 1) / bitsPerByte : int(value.toUtf8().size());
}

void readLimits(TemplateColumns &columns, qsizetype low, qsizetype up, ObjectDataBase::SUBINDEX_DATA_T &data)
{
    COHelper::getDefaultLimits(CAN::CANopenDataType(data.datatype), data.lowlimit, data.uplimit);
    if (!columns.isBlank(low))
        data.lowlimit = columns.optionalText(low);
    if (!columns.isBlank(up))
        data.uplimit = columns.optionalText(up);
}

void readFlags(TemplateColumns &columns, qsizetype cell, ObjectDataBase::SUBINDEX_DATA_T &data)
{
    const int flags = columns.words(cell, u"flag"_s, flagWords);
    data.defaultineds = flags & DefaultInCode;
    data.writedefaulttoeds = (flags & DefaultInEds) ? 1 : 0;
    data.limitineds = flags & LimitsInCode;
    data.refuseread = flags & RefuseRead;
    data.refusewrite = flags & RefuseWrite;
    data.nvstorage = flags & NonVolatile;
}

} // namespace

std::optional<TemplateColumns> TemplateParser::splitColumns(const QString &row)
{
    const TemplateCells cells = TemplateCells::split(row, separator, 1);
    if (cells.error.isEmpty())
        return TemplateColumns(cells.cells, [this](int column, const QString &text) { fail(column, text); });
    fail(cells.errorColumn, cells.error);
    return {};
}

void TemplateParser::readObjectRow(const QString &row)
{
    auto columns = splitColumns(row);
    if (!isIndented(row))
        m_ownerKnown = columns && readObject(*columns);
    else if (columns && hasOwner(*columns, u"object"_s))
        readSubIndex(*columns);
}

void TemplateParser::readGroupRow(const QString &row)
{
    auto columns = splitColumns(row);
    if (!isIndented(row))
        m_ownerKnown = columns && readGroup(*columns);
    else if (columns && hasOwner(*columns, u"PGN"_s))
        readSignal(*columns);
}

// Rows behind an owner that could not be read are left out without a word: its message is enough.
bool TemplateParser::hasOwner(TemplateColumns &columns, const QString &what)
{
    if (!m_ownerSeen)
        columns.fail(0, u"an indented row needs a row of its %1 before it"_s.arg(what));
    return m_ownerKnown;
}

bool TemplateParser::readObject(TemplateColumns &columns)
{
    m_ownerSeen = true;
    if (!columns.hasColumns(4, 5, u"index | code | type | name | description"_s))
        return false;
    TemplateProject::Object object;
    object.line = m_canLine;
    object.index = quint16(columns.number(0, u"index"_s, 1, 0xFFFF));
    object.data.objecttype = columns.word(1, u"object code"_s, objectCodes);
    // A record has no type of its own.
    if (object.data.objecttype != CANopen::Record || !columns.isBlank(2))
        object.data.datatype = columns.dataType(2);
    object.data.name = columns.text(3, u"name"_s);
    object.data.description = columns.optionalText(4);
    object.data.category = CANopen::Mandatory;
    if (!columns.ok()
        || !isNew(u"object %1 %2"_s.arg(m_canLine).arg(object.index), columns.column(0),
                  u"the object %1 is given a second time"_s.arg(hex(object.index))))
        return false;
    m_project.objects.append(object);
    m_subIndexMissing.insert(
        m_project.objects.size(),
        {m_file, m_line, columns.column(0), u"the object %1 has no sub-index"_s.arg(hex(object.index))});
    return true;
}

void TemplateParser::readSubIndex(TemplateColumns &columns)
{
    m_subIndexMissing.remove(m_project.objects.size());
    if (!columns.hasColumns(
            10, 11,
            u"sub | type | access | value | low | up | mapping | storage | flags | name | description"_s))
        return;
    TemplateProject::Object &object = m_project.objects.last();
    ObjectDataBase::SubEntry entry{.line = m_canLine, .index = object.index};
    ObjectDataBase::SUBINDEX_DATA_T &data = entry.data;
    entry.subindex = quint8(columns.number(0, u"sub-index"_s, 0, 0xFF));
    if (object.data.objecttype == CANopen::Var && entry.subindex > 0)
        columns.fail(0, u"a VAR has sub-index 0 only"_s);
    data.datatype = columns.dataType(1);
    data.accesstype = QString::fromLatin1(accessWords[columns.word(2, u"access type"_s, accessWords)].word);
    data.defaultvalue = columns.optionalText(3);
    readLimits(columns, 4, 5, data);
    data.pdomapping = PDOMapping(columns.word(6, u"PDO mapping"_s, mappingWords));
    readStorage(columns, 7, data.implementation, data.varname);
    readFlags(columns, 8, data);
    data.name = columns.text(9, u"name"_s);
    data.description = columns.optionalText(10);
    data.allowedaccesstypes = u"const,ro,rw,wo,rww,rwr"_s;
    data.category = CANopen::Mandatory;
    data.size = sizeInBytes(CAN::CANopenDataType(data.datatype), data.defaultvalue);
    if (columns.ok()
        && isNew(u"sub %1 %2 %3"_s.arg(m_canLine).arg(object.index).arg(entry.subindex), columns.column(0),
                 u"the sub-index %1 is given a second time"_s.arg(entry.subindex)))
        object.subIndices.append(entry);
}

bool TemplateParser::readGroup(TemplateColumns &columns)
{
    m_ownerSeen = true;
    if (!columns.hasColumns(6, 7, u"number | direction | priority | cycle | inhibit | name | description"_s))
        return false;
    TemplateProject::ParameterGroup group;
    group.line = m_canLine;
    group.number = columns.number(0, u"PGN"_s, 0, lastPgn);
    group.data.edp_dp_key = int(group.number >> pagesShift);
    group.data.direction = columns.word(1, u"direction"_s, directionWords);
    group.data.priority = int(columns.number(2, u"priority"_s, 0, lastPriority));
    group.data.cycletime_ms = int(columns.number(3, u"cycle time"_s, 0, INT_MAX));
    group.data.inhibittime_ms = int(columns.number(4, u"inhibit time"_s, 0, INT_MAX));
    group.data.name = columns.text(5, u"name"_s);
    group.data.desc = columns.optionalText(6);
    if (!columns.ok()
        || !isNew(u"PGN %1 %2 %3"_s.arg(m_canLine).arg(group.data.direction).arg(group.number),
                  columns.column(0), u"the PGN %1 is given a second time"_s.arg(group.number)))
        return false;
    m_project.groups.append(group);
    return true;
}

void TemplateParser::readSignal(TemplateColumns &columns)
{
    if (!columns.hasColumns(7, 8, u"SPN | type | position | bits | value | storage | name | description"_s))
        return;
    TemplateProject::ParameterGroup &group = m_project.groups.last();
    TemplateProject::Signal spn;
    spn.number = columns.number(0, u"SPN"_s, 0, lastSpn);
    spn.data.datatype = columns.dataType(1);
    spn.data.bitposition = int(columns.number(2, u"position"_s, 0, longestMessage - 1));
    spn.data.bitsize = columns.isBlank(3)
        ? int(COHelper::getDataLengthBits(CAN::CANopenDataType(spn.data.datatype)))
        : int(columns.number(3, u"number of bits"_s, 1, longestMessage));
    if (columns.ok() && spn.data.bitsize == 0)
        columns.fail(3, u"the type has no width of its own, the number of bits is missing"_s);
    spn.data.defaultvalue = columns.optionalText(4);
    readStorage(columns, 5, spn.data.implementation, spn.data.varname);
    spn.data.name = columns.text(6, u"name"_s);
    spn.data.desc = columns.optionalText(7);
    spn.data.pos = int(group.spns.size());
    if (columns.ok()
        && isNew(
            u"SPN %1 %2 %3 %4"_s.arg(m_canLine).arg(group.data.direction).arg(group.number).arg(spn.number),
            columns.column(0), u"the SPN %1 is given a second time"_s.arg(spn.number)))
        group.spns.append(spn);
}
