#pragma once

#include "store/ProjectRecords.h"

#include <QByteArray>
#include <QByteArrayView>

#include <array>
#include <span>
#include <string_view>
#include <variant>

/**
 * The tables of a project file, each row type described once.
 *
 * Order and declarations are those of the file format; the statements that create, insert, update and
 * read a table, the row readers and writers and the list of known columns are all made from these
 * descriptions. A new column is one new line here.
 */
namespace Schema {

enum class Storage {
    Key, ///< identifies the row, not a field of the record
    Text,
    Pool, ///< id of a row of Strings; the record holds the text
    Number,
    Metadata, ///< blob, written by a statement of its own where the record may be updated
};

template <typename Row>
using Member = std::variant<std::monostate, QString Row::*, int Row::*, bool Row::*, quint8 Row::*,
                            quint16 Row::*, PDOMapping Row::*, MetadataMap Row::*>;

template <typename Row>
struct Column
{
    const char *name;
    const char *declaration; ///< as "create table" has it, name included
    Storage storage;
    Member<Row> member = std::monostate();
};

/** What a fresh row without metadata holds: files have the number 0 in objects, NULL in sub-indices. */
template <typename Row>
inline constexpr bool emptyMetadataIsZero = false;
template <>
inline constexpr bool emptyMetadataIsZero<ProjectRecords::IndexData> = true;

/** Statements over one table, "%1" standing for the line number. */
struct TableSql
{
    QByteArray create;
    QByteArray exists; ///< binds the keys
    QByteArray insert; ///< binds all columns in order
    QByteArray replace; ///< likewise
    QByteArray update; ///< binds the updated columns, then the keys
    QByteArray select; ///< the record's columns; binds the keys
    QByteArray selectAll; ///< keys, then the record's columns, in key order
    QByteArray remove; ///< binds the keys
};

/** Statements over one column, "%1" standing for the line number. */
struct ColumnSql
{
    QByteArray find; ///< the keys of the rows that have the bound value
    QByteArray write; ///< binds the value, then the keys
};

using ProjectRecords::CanId;
using ProjectRecords::DataElement;
using ProjectRecords::IndexData;
using ProjectRecords::NodeData;
using ProjectRecords::Pgn;
using ProjectRecords::Spn;
using ProjectRecords::SubIndexData;

inline constexpr std::array objectColumns = std::to_array<Column<IndexData>>({
    {"objectindex", "objectindex integer primary key", Storage::Key},
    {"name", "name integer", Storage::Pool, &IndexData::name},
    {"datatype", "datatype integer not null", Storage::Number, &IndexData::datatype},
    {"objecttype", "objecttype integer not null", Storage::Number, &IndexData::objecttype},
    {"description", "description integer", Storage::Pool, &IndexData::description},
    {"category", "category integer", Storage::Number, &IndexData::category},
    {"device_class", "device_class integer", Storage::Pool, &IndexData::device_class},
    {"fwsupported", "fwsupported integer", Storage::Number, &IndexData::fwsupported},
    {"metadata", "metadata blob", Storage::Metadata, &IndexData::metadata},
});

inline constexpr std::array subObjectColumns = std::to_array<Column<SubIndexData>>({
    {"objectindex", "objectindex integer not null", Storage::Key},
    {"subindex", "subindex integer not null", Storage::Key},
    {"name", "name integer", Storage::Pool, &SubIndexData::name},
    {"datatype", "datatype integer not null", Storage::Number, &SubIndexData::datatype},
    {"accesstype", "accesstype text not null", Storage::Text, &SubIndexData::accesstype},
    {"defaultvalue", "defaultvalue text", Storage::Text, &SubIndexData::defaultvalue},
    {"currentvalue", "currentvalue text", Storage::Text, &SubIndexData::currentvalue},
    {"pdomapping", "pdomapping integer", Storage::Number, &SubIndexData::pdomapping},
    {"lowlimit", "lowlimit text", Storage::Text, &SubIndexData::lowlimit},
    {"uplimit", "uplimit text", Storage::Text, &SubIndexData::uplimit},
    {"size", "size integer", Storage::Number, &SubIndexData::size},
    {"defaultineds", "defaultineds integer", Storage::Number, &SubIndexData::defaultineds},
    {"limitineds", "limitineds integer", Storage::Number, &SubIndexData::limitineds},
    {"refuseread", "refuseread integer", Storage::Number, &SubIndexData::refuseread},
    {"refusewrite", "refusewrite integer", Storage::Number, &SubIndexData::refusewrite},
    {"allowedaccesstypes", "allowedaccesstypes text", Storage::Text, &SubIndexData::allowedaccesstypes},
    {"implementation", "implementation integer not null", Storage::Number, &SubIndexData::implementation},
    {"varname", "varname text", Storage::Text, &SubIndexData::varname},
    {"description", "description integer", Storage::Pool, &SubIndexData::description},
    {"category", "category integer", Storage::Number, &SubIndexData::category},
    {"writedefaulttoeds", "writedefaulttoeds integer", Storage::Number, &SubIndexData::writedefaulttoeds},
    {"cyclicread", "cyclicread integer", Storage::Number, &SubIndexData::cyclicread},
    {"dcfcomponent", "dcfcomponent integer", Storage::Number, &SubIndexData::dcfcomponent},
    {"changedbyuser", "changedbyuser integer", Storage::Number, &SubIndexData::changedbyuser},
    {"wizardsource", "wizardsource integer", Storage::Number, &SubIndexData::wizardsource},
    {"denotation", "denotation integer", Storage::Pool, &SubIndexData::denotation},
    {"sharedlines", "sharedlines integer", Storage::Number, &SubIndexData::sharedlines},
    {"managedbylvx", "managedbylvx integer", Storage::Number, &SubIndexData::managedbylvx},
    {"signalid", "signalid integer", Storage::Number, &SubIndexData::signalid},
    {"nvstorage", "nvstorage integer", Storage::Number, &SubIndexData::nvstorage},
    {"metadata", "metadata blob", Storage::Metadata, &SubIndexData::metadata},
});

inline constexpr std::array nodeColumns = std::to_array<Column<NodeData>>({
    {"nodeId", "nodeId integer primary key", Storage::Key},
    {"name", "name text", Storage::Text, &NodeData::name},
    {"edspath", "edspath text", Storage::Text, &NodeData::edspath},
    {"xddpath", "xddpath text", Storage::Text, &NodeData::xddpath},
    {"dcfpath", "dcfpath text", Storage::Text, &NodeData::dcfpath},
    {"tpdocnt", "tpdocnt integer", Storage::Number, &NodeData::tpdocnt},
    {"rpdocnt", "rpdocnt integer", Storage::Number, &NodeData::rpdocnt},
    {"ismaster", "ismaster integer", Storage::Number, &NodeData::ismaster},
    {"issyncproducer", "issyncproducer integer", Storage::Number, &NodeData::issyncproducer},
    {"issyncconsumer", "issyncconsumer integer", Storage::Number, &NodeData::issyncconsumer},
    {"ishbconsumer", "ishbconsumer integer", Storage::Number, &NodeData::ishbconsumer},
    {"isemergencyproducer", "isemergencyproducer integer", Storage::Number, &NodeData::isemergencyproducer},
    {"isemergencyconsumer", "isemergencyconsumer integer", Storage::Number, &NodeData::isemergencyconsumer},
    {"ismpdosupported", "ismpdosupported integer", Storage::Number, &NodeData::ismpdosupported},
    {"iscanopengateway", "iscanopengateway integer", Storage::Number, &NodeData::iscanopengateway},
    {"allpdosstatic", "allpdosstatic integer", Storage::Number, &NodeData::allpdosstatic},
    {"excludegeneration", "excludegeneration integer", Storage::Number, &NodeData::excludegeneration},
    {"generatedcf", "generatedcf integer", Storage::Number, &NodeData::generatedcf},
    {"prefix", "prefix text", Storage::Text, &NodeData::prefix},
    {"outputpath", "outputpath text", Storage::Text, &NodeData::outputpath},
    {"iconpath", "iconpath text", Storage::Text, &NodeData::iconpath},
    {"isbootupmanager", "isbootupmanager integer", Storage::Number, &NodeData::isbootupmanager},
    {"isconfigmanager", "isconfigmanager integer", Storage::Number, &NodeData::isconfigmanager},
    {"excludepdolinking", "excludepdolinking integer", Storage::Number, &NodeData::excludepdolinking},
    {"multilinedata", "multilinedata integer", Storage::Number, &NodeData::multilinedata},
    {"lssslave", "lssslave", Storage::Number, &NodeData::lssslave},
});

inline constexpr std::array pgnColumns = std::to_array<Column<Pgn>>({
    {"number", "number integer not null", Storage::Key},
    {"edp_dp_key", "edp_dp_key integer", Storage::Number, &Pgn::edp_dp_key},
    {"priority", "priority integer", Storage::Number, &Pgn::priority},
    {"cycletime_ms", "cycletime_ms integer", Storage::Number, &Pgn::cycletime_ms},
    {"inhibittime_ms", "inhibittime_ms integer", Storage::Number, &Pgn::inhibittime_ms},
    {"mappingcount", "mappingcount integer", Storage::Number, &Pgn::mappingcount},
    {"direction", "direction integer", Storage::Number, &Pgn::direction},
    {"name", "name integer", Storage::Pool, &Pgn::name},
    {"desc", "desc integer", Storage::Pool, &Pgn::desc},
    {"issafe", "issafe integer", Storage::Number, &Pgn::issafe},
    {"srvt_ms", "srvt_ms integer", Storage::Number, &Pgn::srvt_ms},
    {"FD_TrailerFormat", "FD_TrailerFormat integer", Storage::Number, &Pgn::FD_TrailerFormat},
    {"FD_AssuranceType", "FD_AssuranceType integer", Storage::Number, &Pgn::FD_AssuranceType},
    {"FD_AssuranceDataSize", "FD_AssuranceDataSize integer", Storage::Number, &Pgn::FD_AssuranceDataSize},
    {"multisourceaddress", "multisourceaddress integer", Storage::Number, &Pgn::multisourceaddress},
    {"safetytype", "safetytype integer", Storage::Number, &Pgn::safetytype},
    // SQLite does not tell the two spellings apart; files carry this one when they were made anew.
    {"FD_DataID", "FD_DataId integer", Storage::Number, &Pgn::FD_DataID},
});

inline constexpr std::array spnColumns = std::to_array<Column<Spn>>({
    {"pgnnumber", "pgnnumber integer not null", Storage::Key},
    {"spnnumber", "spnnumber integer not null", Storage::Key},
    {"datatype", "datatype integer", Storage::Number, &Spn::datatype},
    {"implementation", "implementation integer", Storage::Number, &Spn::implementation},
    {"varname", "varname text", Storage::Text, &Spn::varname},
    {"defaultvalue", "defaultvalue text", Storage::Text, &Spn::defaultvalue},
    {"name", "name integer", Storage::Pool, &Spn::name},
    {"desc", "desc integer", Storage::Pool, &Spn::desc},
    {"pos", "pos integer", Storage::Number, &Spn::pos},
    {"bitsize", "bitsize integer", Storage::Number, &Spn::bitsize},
    {"direction", "direction integer", Storage::Key},
    {"slot_df", "slot_df integer", Storage::Number, &Spn::slot_df},
    {"bitposition", "bitposition integer", Storage::Number, &Spn::bitposition},
});

inline constexpr std::array canIdColumns = std::to_array<Column<CanId>>({
    {"id", "id integer not null", Storage::Key},
    {"cycletime_ms", "cycletime_ms integer", Storage::Number, &CanId::cycletime_ms},
    {"inhibittime_ms", "inhibittime_ms integer", Storage::Number, &CanId::inhibittime_ms},
    {"mappingcount", "mappingcount integer", Storage::Number, &CanId::mappingcount},
    {"direction", "direction integer", Storage::Number, &CanId::direction},
    {"name", "name integer", Storage::Pool, &CanId::name},
    {"desc", "desc integer", Storage::Pool, &CanId::desc},
});

inline constexpr std::array dataElementColumns = std::to_array<Column<DataElement>>({
    {"canid", "canid integer not null", Storage::Key},
    {"number", "number integer not null", Storage::Key},
    {"datatype", "datatype integer", Storage::Number, &DataElement::datatype},
    {"implementation", "implementation integer", Storage::Number, &DataElement::implementation},
    {"varname", "varname text", Storage::Text, &DataElement::varname},
    {"defaultvalue", "defaultvalue text", Storage::Text, &DataElement::defaultvalue},
    {"name", "name integer", Storage::Pool, &DataElement::name},
    {"desc", "desc integer", Storage::Pool, &DataElement::desc},
    {"pos", "pos integer", Storage::Number, &DataElement::pos},
    {"bitsize", "bitsize integer", Storage::Number, &DataElement::bitsize},
    {"direction", "direction integer", Storage::Key},
    {"bitpos", "bitpos integer", Storage::Number, &DataElement::bitpos},
});

/** What generated statements need beside the columns of a table. */
template <typename Row>
struct Table;

template <>
struct Table<IndexData>
{
    static constexpr const char *name = "Objects%1";
    static constexpr std::span<const Column<IndexData>> columns = objectColumns;
    static constexpr const char *identity = "objectindex = ?";
    static constexpr const char *constraint = "";
    static constexpr const char *order = "objectindex";
    /** Metadata survives an update: it is written by its own statement when there is some. */
    static constexpr bool updates(const Column<IndexData> &column)
    {
        return column.storage != Storage::Metadata;
    }
};

template <>
struct Table<SubIndexData>
{
    static constexpr const char *name = "SubObjects%1";
    static constexpr std::span<const Column<SubIndexData>> columns = subObjectColumns;
    static constexpr const char *identity = "objectindex = ? and subindex = ?";
    static constexpr const char *constraint = ", UNIQUE(objectindex,subindex)";
    static constexpr const char *order = "objectindex, subindex";
    static constexpr bool updates(const Column<SubIndexData> &) { return true; }
};

template <>
struct Table<NodeData>
{
    static constexpr const char *name = "Nodes";
    static constexpr std::span<const Column<NodeData>> columns = nodeColumns;
    static constexpr const char *identity = "nodeId = ?";
    static constexpr const char *constraint = "";
    static constexpr const char *order = "nodeId";
    /** An update of a node reaches as far as the icon; the manager flags behind it stay as they are. */
    static constexpr bool updates(const Column<NodeData> &column)
    {
        const std::string_view columnName(column.name);
        return columnName != "isbootupmanager" && columnName != "isconfigmanager"
            && columnName != "excludepdolinking" && columnName != "multilinedata" && columnName != "lssslave";
    }
};

template <>
struct Table<Pgn>
{
    static constexpr const char *name = "PGNs%1";
    static constexpr std::span<const Column<Pgn>> columns = pgnColumns;
    static constexpr const char *identity = "number = ? and direction = ?";
    static constexpr const char *constraint = "";
    static constexpr const char *order = "number, rowid";
    static constexpr bool updates(const Column<Pgn> &) { return true; }
};

template <>
struct Table<Spn>
{
    static constexpr const char *name = "SPNs%1";
    static constexpr std::span<const Column<Spn>> columns = spnColumns;
    static constexpr const char *identity = "pgnnumber = ? and spnnumber = ? and direction = ?";
    static constexpr const char *constraint = "";
    static constexpr const char *order = "pgnnumber asc, pos asc, rowid";
    static constexpr bool updates(const Column<Spn> &) { return true; }
};

template <>
struct Table<CanId>
{
    static constexpr const char *name = "CANIDs%1";
    static constexpr std::span<const Column<CanId>> columns = canIdColumns;
    static constexpr const char *identity = "id = ? and direction = ?";
    static constexpr const char *constraint = "";
    static constexpr const char *order = "id, rowid";
    static constexpr bool updates(const Column<CanId> &) { return true; }
};

template <>
struct Table<DataElement>
{
    static constexpr const char *name = "DataElements%1";
    static constexpr std::span<const Column<DataElement>> columns = dataElementColumns;
    static constexpr const char *identity = "canid = ? and number = ? and direction = ?";
    static constexpr const char *constraint = "";
    static constexpr const char *order = "canid, number, rowid";
    static constexpr bool updates(const Column<DataElement> &) { return true; }
};

/** The statements of a row type's table; made once, valid as long as the program. */
template <typename Row>
const TableSql &sql();

extern template const TableSql &sql<IndexData>();
extern template const TableSql &sql<SubIndexData>();
extern template const TableSql &sql<NodeData>();
extern template const TableSql &sql<Pgn>();
extern template const TableSql &sql<Spn>();
extern template const TableSql &sql<CanId>();
extern template const TableSql &sql<DataElement>();

/** The statements over the column at that place in the table. */
template <typename Row>
const ColumnSql &columnSql(const Column<Row> &column);

extern template const ColumnSql &columnSql<IndexData>(const Column<IndexData> &);
extern template const ColumnSql &columnSql<SubIndexData>(const Column<SubIndexData> &);
extern template const ColumnSql &columnSql<NodeData>(const Column<NodeData> &);

/** The column of that name, letter case aside; nullptr when the table has none. */
template <typename Row>
const Column<Row> *findColumn(const QString &name)
{
    for (const Column<Row> &column : Table<Row>::columns) {
        if (name.compare(QLatin1StringView(column.name), Qt::CaseInsensitive) == 0)
            return &column;
    }
    return nullptr;
}

/** Tables that stand once in a project, with their "create table if not exists" statements. */
struct GlobalTable
{
    const char *name;
    const char *create;
};
std::span<const GlobalTable> globalTables();

/** The UDS settings table of a line. */
extern const char *const createUdsSettings;

} // namespace Schema
