// What older files lack is added; a failing step never stops the open.

#include "store/ObjectDataBasePrivate.h"
#include "store/RowIo.h"

#include <QDateTime>
#include <QDebug>
#include <QSqlError>
#include <QSqlQuery>

#include <algorithm>
#include <limits>

namespace {

constexpr int versionWithUniqueSubIndices = 101;
constexpr int versionWithDirections = 100;
constexpr int versionWithAuthentication = 107;

// The columns behind these stood in the very first files.
constexpr std::array nodeAdditions = {
    "dcfpath text",
    "tpdocnt integer",
    "rpdocnt integer",
    "ismaster integer",
    "issyncproducer integer",
    "issyncconsumer integer",
    "ishbconsumer integer",
    "isemergencyproducer integer",
    "isemergencyconsumer integer",
    "ismpdosupported integer",
    "iscanopengateway integer",
    "allpdosstatic integer",
    "excludegeneration integer",
    "generatedcf integer",
    "prefix text",
    "outputpath text",
    "iconpath text",
    "isbootupmanager integer",
    "isconfigmanager integer",
    "excludepdolinking integer",
    "multilinedata integer",
    "lssslave integer",
};
constexpr std::array signalAdditions = {"transmittype integer",   "transmittrigger integer",
                                        "eventtimer integer",     "syncvalue integer",
                                        "syncstartvalue integer", "routing integer"};
constexpr std::array objectAdditions = {"fwsupported integer", "device_class integer", "metadata blob"};
constexpr std::array subObjectAdditions = {
    "writedefaulttoeds integer", "cyclicread integer",   "dcfcomponent integer",
    "changedbyuser integer",     "wizardsource integer", "denotation integer",
    "sharedlines integer",       "nvstorage integer",    "metadata blob",
    "managedbylvx integer",      "signalid integer"};
constexpr std::array spnAdditions = {"pos integer", "bitsize integer", "direction integer", "slot_df integer",
                                     "bitposition integer"};
constexpr std::array pgnAdditions = {"issafe integer",
                                     "srvt_ms integer",
                                     "FD_TrailerFormat integer",
                                     "FD_AssuranceType integer",
                                     "FD_AssuranceDataSize integer",
                                     "multisourceaddress integer",
                                     "safetytype integer",
                                     "FD_DataID integer"};

/** The column as the new table takes it: a NULL that the new declaration forbids becomes 0 or empty. */
QString withoutNull(const Schema::Column<Schema::SubIndexData> &column)
{
    QString name = QLatin1StringView(column.name);
    if (!QByteArrayView(column.declaration).endsWith("not null"))
        return name;
    return QStringLiteral("coalesce(%1,%2)")
        .arg(name, column.storage == Schema::Storage::Text ? QStringLiteral("''") : QStringLiteral("0"));
}

/**
 * Numbers the positions of a message whose elements 0 and 1 are both at bit 0, as they are where positions
 * were never worked out: each element in order begins where the one before it ends.
 */
template <typename Element, typename Read, typename Write>
void numberPositions(const QList<quint32> &numbers, int Element::*position, const Read &read,
                     const Write &write)
{
    QList<Element> elements(numbers.size());
    for (qsizetype i = 0; i < numbers.size(); ++i)
        read(numbers.at(i), elements[i]);
    if (elements.size() < 2 || elements.at(0).*position != 0 || elements.at(1).*position != 0)
        return;
    int next = 0;
    for (qsizetype i = 0; i < numbers.size(); ++i) {
        elements[i].*position = next;
        next = int(
            std::clamp<qint64>(qint64(next) + elements.at(i).bitsize, 0, std::numeric_limits<int>::max()));
        write(numbers.at(i), elements.at(i));
    }
}

} // namespace

void ObjectDataBase::Private::migrationExec(QSqlQuery *query, const QString &text)
{
    if (execute(*query, text))
        return;
    const QString error = query->lastError().text();
    if (!error.contains(QStringLiteral("duplicate column name"), Qt::CaseInsensitive))
        qDebug() << Q_FUNC_INFO << "migration statement failed:" << text << error;
}

void ObjectDataBase::Private::addColumns(const QString &table, std::span<const char *const> columns)
{
    QSqlQuery query(db);
    for (const char *column : columns)
        migrationExec(&query, QStringLiteral("alter table %1 add %2").arg(table, QLatin1StringView(column)));
}

void ObjectDataBase::Private::migrateSchema()
{
    QSqlQuery query(db);
    execute(query,
            QStringLiteral("create table if not exists Groups (groupid integer primary key, name text, "
                           "nodeidlist text)"));
    createGlobalTables();
    addColumns(QStringLiteral("Nodes"), nodeAdditions);
    addColumns(QStringLiteral("Signals"), signalAdditions);
    const int version = fileVersion();
    const QList<quint8> lines = q->getLines();
    for (const quint8 line : lines)
        migrateLine(line, version);
    static constexpr std::array connectionAdditions = {"priority integer"};
    addColumns(QStringLiteral("Connections"), connectionAdditions);
    createMissingLine0Tables();
    for (const quint8 line : lines)
        createLineTables(line);
}

void ObjectDataBase::Private::migrateLine(quint8 line, int version)
{
    QSqlQuery query(db);
    addColumns(QStringLiteral("Objects%1").arg(line), objectAdditions);
    addColumns(QStringLiteral("SubObjects%1").arg(line), subObjectAdditions);
    if (version < versionWithUniqueSubIndices)
        addUniqueColumnsToSubDatabase(line, query);
    addColumns(QStringLiteral("SPNs%1").arg(line), spnAdditions);
    static constexpr std::array dataElementAdditions = {"bitpos integer"};
    addColumns(QStringLiteral("DataElements%1").arg(line), dataElementAdditions);
    if (version < versionWithAuthentication
        && tableNames().contains(QStringLiteral("UDSSettings%1").arg(line)))
        migrationExec(&query, QStringLiteral("alter table UDSSettings%1 add authentication text").arg(line));
    if (columnNames(QStringLiteral("PGNs%1").arg(line)).size() < qsizetype(Schema::pgnColumns.size()))
        addColumns(QStringLiteral("PGNs%1").arg(line), pgnAdditions);
}

QStringList ObjectDataBase::Private::columnNames(const QString &table)
{
    QStringList names;
    StoreQuery query(connection, "SELECT name FROM PRAGMA_TABLE_INFO(?) ORDER BY name");
    query.bind(table);
    while (query.next())
        names.append(query.text(0));
    return names;
}

// Line 0's signal table is made with a misspelt column, which stays beside the right one that is added at
// once; other programs know files of this kind.
void ObjectDataBase::Private::createMissingLine0Tables()
{
    QSqlQuery query(db);
    const QStringList present = tableNames();
    const auto create = [&](const QByteArray &sql, const QString &table) {
        if (!present.contains(table) && !execute(query, QString::fromLatin1(sql).arg(0)))
            qDebug().noquote() << "create table" << table << query.lastError().text();
    };
    create(Schema::sql<PGN>().create, QStringLiteral("PGNs0"));
    create(QByteArray(Schema::sql<SPN>().create).replace("bitposition", "bitpostion"),
           QStringLiteral("SPNs0"));
    create(Schema::sql<CANID>().create, QStringLiteral("CANIDs0"));
    create(Schema::sql<DataElement>().create, QStringLiteral("DataElements0"));
    if (!present.contains(QStringLiteral("SPNs0")))
        addColumns(QStringLiteral("SPNs0"), spnAdditions);
}

// Columns are named, not counted: files that grew by "alter table" have them in another order.
bool ObjectDataBase::Private::addUniqueColumnsToSubDatabase(int line, QSqlQuery &query)
{
    const QString table = QStringLiteral("SubObjects%1").arg(line);
    const QString old = table + QStringLiteral("_old");
    execute(query, QStringLiteral("DROP TABLE %1").arg(old));
    if (!execute(query, QStringLiteral("ALTER TABLE %1 RENAME TO %2").arg(table, old))) {
        qDebug() << QDateTime::currentDateTime().toString(Qt::ISODate) << query.lastError().text();
        return false;
    }
    const bool created = createSubObjectsTable(line, query);
    QStringList columns;
    QStringList values;
    const QStringList oldColumns = columnNames(old);
    for (const auto &column : Schema::subObjectColumns) {
        const QString name = QLatin1StringView(column.name);
        if (!oldColumns.contains(name, Qt::CaseInsensitive))
            continue;
        columns.append(name);
        values.append(withoutNull(column));
    }
    const bool copied = execute(query,
                                QStringLiteral("INSERT OR REPLACE INTO %1 (%2) SELECT %3 FROM %4")
                                    .arg(table, columns.join(u','), values.join(u','), old));
    if (!copied) {
        qDebug() << Q_FUNC_INFO << query.lastError().text();
        execute(query, QStringLiteral("DROP TABLE %1").arg(table));
        execute(query, QStringLiteral("ALTER TABLE %1 RENAME TO %2").arg(old, table));
        return false;
    }
    return execute(query, QStringLiteral("DROP TABLE %1").arg(old)) && created;
}

void ObjectDataBase::Private::migrateContent()
{
    QSqlQuery query(db);
    const int version = fileVersion();
    const QList<quint8> lines = q->getLines();
    for (const quint8 line : lines) {
        decideLineType(line);
        createUDSSettingsTable(line, query);
        insertDefaultServices(line);
        if (version < versionWithDirections
            && q->getGeneralSetting(QStringLiteral("line%1type").arg(line)) == QStringLiteral("2"))
            fillSpnDirections(line);
    }
}

void ObjectDataBase::Private::fillSpnDirections(quint8 line)
{
    QList<std::pair<qint64, qint64>> groups;
    {
        StoreQuery query(connection, "select number, direction from PGNs%1 order by rowid", line);
        while (query.next())
            groups.append({query.number(0), query.number(1)});
    }
    for (const auto &[number, direction] : std::as_const(groups))
        StoreQuery(connection, "update SPNs%1 SET direction = ? where pgnnumber = ?", line)
            .bind(direction)
            .bind(number)
            .exec();
}

void ObjectDataBase::Private::repairPositions()
{
    const QList<quint8> lines = q->getLines();
    for (const quint8 line : lines) {
        for (const quint8 direction : {Receive, Transmit})
            repairBitPositions(line, direction);
        for (const quint8 direction : {Receive, Transmit})
            repairSpnBitPositions(line, direction);
    }
}

void ObjectDataBase::Private::repairBitPositions(quint8 line, quint8 direction)
{
    const QList<quint32> ids = q->getCANIDList(line, direction);
    for (const quint32 id : ids) {
        numberPositions(
            q->getDataElementList(line, id, direction), &DataElement::bitpos,
            [&](quint32 number, DataElement &data) { q->getDataElement(line, id, direction, number, data); },
            [&](quint32 number, const DataElement &data) {
                q->addDataElement(line, id, direction, number, data);
            });
    }
}

void ObjectDataBase::Private::repairSpnBitPositions(quint8 line, quint8 direction)
{
    const QList<quint32> groups = q->getPGNList(line, direction);
    for (const quint32 group : groups) {
        numberPositions(
            q->getSPNList(line, group, direction), &SPN::bitposition,
            [&](quint32 number, SPN &data) { q->getSPN(line, group, direction, number, data); },
            [&](quint32 number, const SPN &data) { q->addSPN(line, group, direction, number, data); });
    }
}

// One statement per line: the tables have no key, so that a count per group would walk all signals each time.
bool ObjectDataBase::Private::updateMappingCounts()
{
    const QStringList present = tableNames();
    bool success = true;
    const QList<quint8> lines = q->getLines();
    for (const quint8 line : lines) {
        if (!present.contains(QStringLiteral("PGNs%1").arg(line))
            || !present.contains(QStringLiteral("SPNs%1").arg(line)))
            continue;
        success = run("UPDATE PGNs%1 SET mappingcount = counted.members FROM ("
                      "SELECT own.rowid AS id, count(other.pgnnumber) AS members FROM PGNs%1 AS own "
                      "LEFT JOIN SPNs%1 AS other "
                      "ON other.pgnnumber = own.number AND other.direction = own.direction "
                      "WHERE own.direction IN (85,119) GROUP BY own.rowid) AS counted "
                      "WHERE counted.id = PGNs%1.rowid AND mappingcount IS NOT counted.members",
                      line)
            && success;
    }
    q->clearSpnCache();
    return success;
}

bool ObjectDataBase::updateMappingCounts()
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    return lease && d->updateMappingCounts();
}
