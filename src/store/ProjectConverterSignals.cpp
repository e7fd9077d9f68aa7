// Repairs of the tables of messages and signals, J1939 and raw CAN alike.

#include "store/ObjectDataBase.h"
#include "store/ProjectConverter.h"
#include "store/Schema.h"

#include <QDebug>

namespace {

/** What a protocol calls the tables and columns; "%1" stands for the line. */
struct SignalTables
{
    QString messages;
    QString messageColumns;
    QString number; ///< of a message, in its own table
    QString signalRows;
    QString signalColumns;
    QString message; ///< number of a signal's message
    QString signal; ///< number of a signal
    QString order; ///< column that a message's signals are listed by
    QString position; ///< first bit in the message

    /** Replaces $messages and so on in a statement. */
    QString statement(QString text, quint8 line) const
    {
        return text.replace(QLatin1StringView("$messages"), messages.arg(line))
            .replace(QLatin1StringView("$signals"), signalRows.arg(line))
            .replace(QLatin1StringView("$number"), number)
            .replace(QLatin1StringView("$message"), message)
            .replace(QLatin1StringView("$signal"), signal)
            .replace(QLatin1StringView("$order"), order)
            .replace(QLatin1StringView("$position"), position);
    }
};

template <typename Row>
QString columnList()
{
    QStringList names;
    for (const auto &column : Schema::Table<Row>::columns)
        names.append(QLatin1StringView(column.name));
    return names.join(u',');
}

template <typename Message, typename Signal>
SignalTables describe(const char *number, const char *message, const char *signal, const char *order,
                      const char *position)
{
    return {.messages = QLatin1StringView(Schema::Table<Message>::name),
            .messageColumns = columnList<Message>(),
            .number = QLatin1StringView(number),
            .signalRows = QLatin1StringView(Schema::Table<Signal>::name),
            .signalColumns = columnList<Signal>(),
            .message = QLatin1StringView(message),
            .signal = QLatin1StringView(signal),
            .order = QLatin1StringView(order),
            .position = QLatin1StringView(position)};
}

bool tableExists(ObjectDataBase &store, const QString &table)
{
    return store.executeSql(
               QStringLiteral("SELECT 1 FROM sqlite_master WHERE type='table' AND name='%1'").arg(table))
        && !store.sqlResult().isEmpty();
}

bool hasTables(ObjectDataBase &store, const SignalTables &tables, quint8 line)
{
    return tableExists(store, tables.messages.arg(line)) && tableExists(store, tables.signalRows.arg(line));
}

/** Deletes rows that repeat another one in every column; rows that differ anywhere stay. */
bool dropRepeatedRows(ObjectDataBase &store, const QString &table, const QString &columns)
{
    const QString repeated =
        QStringLiteral("FROM %1 WHERE rowid NOT IN (SELECT min(rowid) FROM %1 GROUP BY %2)")
            .arg(table, columns);
    if (!store.executeSql(QStringLiteral("SELECT count(*) ") + repeated))
        return false;
    const int count = store.sqlResult().value(0).trimmed().toInt();
    if (count == 0)
        return true;
    qDebug().noquote() << "ProjectConverter:" << count << "repeated rows leave" << table;
    return store.executeSql(QStringLiteral("DELETE ") + repeated);
}

/** Logs what a query finds. It may be what a user entered, and stays. */
void logRows(ObjectDataBase &store, const char *finding, const QString &query)
{
    store.executeSql(query);
    const QStringList rows = store.sqlResult();
    for (const QString &row : rows)
        qWarning().noquote() << "ProjectConverter:" << finding << row.trimmed();
}

void logDoubtfulRows(ObjectDataBase &store, const SignalTables &tables, quint8 line)
{
    const auto text = [&](const char *sql) { return tables.statement(QLatin1StringView(sql), line); };
    logRows(store, "unknown direction of message",
            text("SELECT $number, ifnull(direction,'none') FROM $messages "
                 "WHERE ifnull(direction,0) NOT IN (85,119) ORDER BY rowid"));
    logRows(store, "unknown direction of signal",
            text("SELECT $message, $signal, ifnull(direction,'none') FROM $signals "
                 "WHERE ifnull(direction,0) NOT IN (85,119) ORDER BY rowid"));
    logRows(store, "several different rows of message",
            text("SELECT $number, direction FROM $messages GROUP BY $number, direction HAVING count(*) > 1"));
    logRows(store, "several different rows of signal",
            text("SELECT $message, $signal, direction FROM $signals "
                 "GROUP BY $message, $signal, direction HAVING count(*) > 1"));
}

/**
 * Positions of a message's signals that are all 0 were never worked out: the signals then follow each other
 * without gaps. A single 0 among others may be a deliberate overlap, as of multiplexed signals.
 */
bool fillPositions(ObjectDataBase &store, const SignalTables &tables, quint8 line)
{
    return store.executeSql(tables.statement(
        QStringLiteral(
            "UPDATE $signals SET $position = fixed.start FROM ("
            "SELECT rowid AS id, "
            "ifnull(sum(max(0, ifnull(bitsize,0))) OVER (PARTITION BY $message, direction "
            "ORDER BY $order, rowid ROWS BETWEEN UNBOUNDED PRECEDING AND 1 PRECEDING), 0) AS start, "
            "count(*) OVER (PARTITION BY $message, direction) AS members, "
            "max(abs(ifnull($position,0))) OVER (PARTITION BY $message, direction) AS highest "
            "FROM $signals WHERE direction IN (85,119)) AS fixed "
            "WHERE fixed.id = $signals.rowid AND fixed.members > 1 AND fixed.highest = 0"),
        line));
}

/** Raw CAN alone; the store itself counts the signals of J1939, with every open. */
bool updateCounts(ObjectDataBase &store, const SignalTables &tables, quint8 line)
{
    if (!hasTables(store, tables, line))
        return true;
    return store.executeSql(tables.statement(
        QStringLiteral("UPDATE $messages SET mappingcount = counted.members FROM ("
                       "SELECT own.rowid AS id, count(other.$message) AS members FROM $messages AS own "
                       "LEFT JOIN $signals AS other "
                       "ON other.$message = own.$number AND other.direction = own.direction "
                       "GROUP BY own.rowid) AS counted "
                       "WHERE counted.id = $messages.rowid AND mappingcount IS NOT counted.members"),
        line));
}

bool correctRows(ObjectDataBase &store, const SignalTables &tables, quint8 line)
{
    if (!hasTables(store, tables, line))
        return true;
    bool success = dropRepeatedRows(store, tables.messages.arg(line), tables.messageColumns);
    success = dropRepeatedRows(store, tables.signalRows.arg(line), tables.signalColumns) && success;
    logDoubtfulRows(store, tables, line);
    return fillPositions(store, tables, line) && success;
}

} // namespace

bool ProjectConverter::correctJ1939()
{
    static const SignalTables tables =
        describe<Schema::Pgn, Schema::Spn>("number", "pgnnumber", "spnnumber", "pos", "bitposition");
    if (!m_store)
        return false;
    bool success = true;
    const QList<quint8> lines = projectLines();
    for (const quint8 line : lines)
        success = correctRows(*m_store, tables, line) && success;
    return m_store->updateMappingCounts() && success;
}

bool ProjectConverter::correctRawCan()
{
    static const SignalTables tables =
        describe<Schema::CanId, Schema::DataElement>("id", "canid", "number", "number", "bitpos");
    if (!m_store)
        return false;
    bool success = true;
    const QList<quint8> lines = projectLines();
    for (const quint8 line : lines)
        success = correctRows(*m_store, tables, line) && updateCounts(*m_store, tables, line) && success;
    return success;
}
