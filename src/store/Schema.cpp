#include "store/Schema.h"

#include <vector>

namespace Schema {

namespace {

template <typename Row>
QByteArray list(bool (*wanted)(const Column<Row> &), const char *format, const char *separator)
{
    QByteArray text;
    for (const Column<Row> &column : Table<Row>::columns) {
        if (!wanted(column))
            continue;
        if (!text.isEmpty())
            text += separator;
        text += QByteArray(format).replace("$c", column.name).replace("$d", column.declaration);
    }
    return text;
}

template <typename Row>
TableSql makeSql()
{
    const auto all = [](const Column<Row> &) { return true; };
    const auto keys = [](const Column<Row> &column) { return column.storage == Storage::Key; };
    const auto fields = [](const Column<Row> &column) { return column.storage != Storage::Key; };
    const auto updated = [](const Column<Row> &column) {
        return column.storage != Storage::Key && Table<Row>::updates(column);
    };
    const QByteArray name = Table<Row>::name;
    const QByteArray where = QByteArray(" where ") + Table<Row>::identity;
    const QByteArray into =
        " into " + name + " (" + list<Row>(all, "$c", ",") + ") values (" + list<Row>(all, "?", ",") + ")";
    TableSql sql;
    sql.create = "create table if not exists " + name + " (" + list<Row>(all, "$d", ", ")
        + Table<Row>::constraint + ")";
    sql.exists = "select 1 from " + name + where;
    sql.insert = "insert" + into;
    sql.replace = "insert or replace" + into;
    sql.update = "update " + name + " set " + list<Row>(updated, "$c = ?", ", ") + where;
    sql.select = "select " + list<Row>(fields, "$c", ",") + " from " + name + where;
    sql.selectAll = "select " + list<Row>(keys, "$c", ",") + "," + list<Row>(fields, "$c", ",") + " from "
        + name + " order by " + Table<Row>::order;
    sql.remove = "delete from " + name + where;
    return sql;
}

} // namespace

template <typename Row>
const TableSql &sql()
{
    static const TableSql statements = makeSql<Row>();
    return statements;
}

template const TableSql &sql<IndexData>();
template const TableSql &sql<SubIndexData>();
template const TableSql &sql<NodeData>();
template const TableSql &sql<Pgn>();
template const TableSql &sql<Spn>();
template const TableSql &sql<CanId>();
template const TableSql &sql<DataElement>();

template <typename Row>
const ColumnSql &columnSql(const Column<Row> &column)
{
    static const std::vector<ColumnSql> statements = [] {
        std::vector<ColumnSql> made;
        const auto isKey = [](const Column<Row> &candidate) { return candidate.storage == Storage::Key; };
        const QByteArray name = Table<Row>::name;
        const QByteArray keys = list<Row>(isKey, "$c", ",");
        for (const Column<Row> &each : Table<Row>::columns) {
            made.push_back({"select " + keys + " from " + name + " where " + each.name + " = ? order by "
                                + Table<Row>::order,
                            "update " + name + " set " + each.name + " = ? where " + Table<Row>::identity});
        }
        return made;
    }();
    return statements[size_t(&column - Table<Row>::columns.data())];
}

template const ColumnSql &columnSql<IndexData>(const Column<IndexData> &);
template const ColumnSql &columnSql<SubIndexData>(const Column<SubIndexData> &);
template const ColumnSql &columnSql<NodeData>(const Column<NodeData> &);

std::span<const GlobalTable> globalTables()
{
    static const QByteArray createNodes = sql<NodeData>().create;
    static const std::array tables = std::to_array<GlobalTable>({
        {"Strings", "create table if not exists Strings (id integer primary key, string text)"},
        {"Nodes", createNodes.constData()},
        {"GeneralSettings", "create table if not exists GeneralSettings (item text unique, value text)"},
        {"DescriptionSettings",
         "create table if not exists DescriptionSettings (item text unique, value text)"},
        {"EnergyBusSettings", "create table if not exists EnergyBusSettings (item text unique, value text)"},
        {"J1939Settings", "create table if not exists J1939Settings (item text unique, value text)"},
        {"MiscSettings", "create table if not exists MiscSettings (item text unique, value text)"},
        {"Connections",
         "create table if not exists Connections (prodnode integer, prodindex integer, prodsub integer, "
         "connode integer, conindex integer, consub integer, priority integer)"},
        {"LockedMappings", "create table if not exists LockedMappings (node integer, pdoindex integer)"},
        {"LockedPDOs", "create table if not exists LockedPDOs (node integer, pdoindex integer)"},
        {"VirtualNodes",
         "create table if not exists VirtualNodes (virtualnodeid integer primary key, line integer, "
         "dbnodeid integer, name text)"},
        {"SignalGroups", "create table if not exists SignalGroups (sigid integer primary key, name text)"},
        {"Signals",
         "create table if not exists Signals (sigid integer primary key, nodeid integer, name integer, "
         "datatype integer not null, accesstype text not null, defaultvalue text, signalgroup integer, "
         "ref integer, transmittype integer, transmittrigger integer, eventtimer integer, syncvalue integer, "
         "syncstartvalue integer, routing integer)"},
        {"Groups", "create table if not exists Groups (name text, nodeidlist text)"},
    });
    return tables;
}

const char *const createUdsSettings =
    "create table if not exists UDSSettings%1 (sid integer not null, active integer, sessions text, "
    "userlevels text, authentication text, UNIQUE(sid))";

} // namespace Schema
