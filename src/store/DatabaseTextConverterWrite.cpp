// From the working database to the text of a project.

#include "store/ConnectionGate.h"
#include "store/DatabaseTextConverter.h"
#include "store/DatabaseTextConverterShared.h"
#include "store/ObjectDataBasePrivate.h"

#include <QDebug>
#include <QHash>
#include <QSettings>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>

#include <algorithm>

struct DatabaseTextConverter::TextColumn
{
    enum class Kind { Plain, PoolText, Metadata };

    QString key;
    int position = 0;
    Kind kind = Kind::Plain;
};

/** How the rows of one kind of table become groups: the first columns are the path, the others the keys. */
struct DatabaseTextConverter::TableFormat
{
    QLatin1StringView kind;
    int pathColumns;
    bool isHexadecimal;
    QList<QLatin1StringView> poolColumns;
    QList<QLatin1StringView> leftOut;

    QString pathComponent(qint64 number) const
    {
        return isHexadecimal ? QStringLiteral("0x") + QString::number(number, 16) : QString::number(number);
    }
};

namespace {

using TextForm::quoted;

constexpr int canopenType = 1;
constexpr int j1939Type = 2;
constexpr int canopenAndJ1939Type = 5;

bool containsAny(const QString &text, const QStringList &parts)
{
    return std::any_of(parts.begin(), parts.end(),
                       [&](const QString &part) { return text.contains(part, Qt::CaseInsensitive); });
}

/** Runs a statement and logs what fails. */
bool run(QSqlQuery &query, const QString &text)
{
    if (query.exec(text))
        return true;
    qDebug().noquote() << Q_FUNC_INFO << "Line:" << __LINE__ << "failed:" << text << query.lastError().text();
    return false;
}

/** Columns are called as a new file declares them: migrated files have FD_DataId in another spelling. */
QString declaredName(const QString &column)
{
    static const QLatin1StringView dataId("FD_DataId");
    return column.compare(dataId, Qt::CaseInsensitive) == 0 ? QString(dataId) : column;
}

} // namespace

bool DatabaseTextConverter::convertSqlToText()
{
    if (!m_settings || !m_store || !m_gate)
        return false;
    m_losses.clear();
    m_lostGroups.clear();
    const QStringList tables = tableNames();
    replaceNulls(tables);
    const QStringList ignored = ignoredNames();
    for (const QString &table : tables) {
        const bool isIgnored = containsAny(table, ignored);
        if (isIgnored)
            qDebug().noquote() << Q_FUNC_INFO << "Line:" << __LINE__ << "Ignored table " << table;
        if (isIgnored || isForOtherProtocol(table))
            tellLostTable(table);
        else
            writeTable(table);
    }
    seal();
    return true;
}

QStringList DatabaseTextConverter::tableNames()
{
    const ConnectionGate::Lease lease(*m_gate);
    QStringList names;
    QSqlQuery query(m_database);
    run(query, QStringLiteral("SELECT name FROM sqlite_master WHERE type='table' ORDER BY name"));
    while (query.next())
        names.append(query.value(0).toString());
    return names;
}

// Straight on the connection: this is no edit that forms or undo should hear of.
void DatabaseTextConverter::replaceNulls(const QStringList &tables)
{
    const ConnectionGate::Lease lease(*m_gate);
    QSqlQuery query(m_database);
    for (const QString &table : tables) {
        if (!table.startsWith(QLatin1StringView("sqlite_")))
            replaceNulls(table, query);
    }
}

void DatabaseTextConverter::replaceNulls(const QString &table, QSqlQuery &query)
{
    query.prepare(QStringLiteral("SELECT name, lower(type) FROM PRAGMA_TABLE_INFO(?) ORDER BY name"));
    query.addBindValue(table);
    query.exec();
    QList<std::pair<QString, QString>> columns;
    while (query.next())
        columns.append({query.value(0).toString(), query.value(1).toString()});
    query.finish();
    for (const auto &[column, type] : std::as_const(columns)) {
        if (type != QLatin1StringView("integer") && type != QLatin1StringView("text"))
            continue;
        // A second NULL in a unique column stays what it is.
        run(query,
            QStringLiteral("UPDATE OR IGNORE %1 SET %2 = %3 WHERE %2 IS NULL")
                .arg(quoted(table), quoted(column),
                     type == QLatin1StringView("text") ? QStringLiteral("''") : QStringLiteral("0")));
    }
}

void DatabaseTextConverter::findLineTypes(bool &hasCanopen, bool &hasJ1939)
{
    for (int line = 0; line < ObjectDataBase::ReferenceLine && !(hasCanopen && hasJ1939); ++line) {
        const QString key = QStringLiteral("line%1type").arg(line);
        const int type = m_store->generalSettingExists(key) ? m_store->getGeneralSetting(key).toInt() : -1;
        hasCanopen = hasCanopen || type == canopenType || type == canopenAndJ1939Type;
        hasJ1939 = hasJ1939 || type == j1939Type || type == canopenAndJ1939Type;
    }
}

QStringList DatabaseTextConverter::ignoredNames()
{
    QStringList names = {QStringLiteral("CANIDs"),       QStringLiteral("Connections"),
                         QStringLiteral("DataElements"), QStringLiteral("EnergyBusSettings"),
                         QStringLiteral("Groups"),       QStringLiteral("SignalGroups"),
                         QStringLiteral("Signals"),      QStringLiteral("Strings"),
                         QStringLiteral("VirtualNodes"), QStringLiteral("LockedMappings"),
                         QStringLiteral("LockedPDOs")};
    bool hasCanopen = false;
    bool hasJ1939 = false;
    findLineTypes(hasCanopen, hasJ1939);
    if (!hasCanopen)
        names += {QStringLiteral("Objects"), QStringLiteral("Nodes"), QStringLiteral("SubObjects")};
    if (!hasJ1939)
        names += {QStringLiteral("PGNs"), QStringLiteral("SPNs"), QStringLiteral("J1939Settings")};
    return names;
}

bool DatabaseTextConverter::isForOtherProtocol(const QString &table)
{
    if (table.isEmpty() || !table.back().isDigit())
        return false;
    const int line = TextForm::trailingNumber(table);
    if (line < 0) {
        qWarning() << Q_FUNC_INFO << "Could not convert captured digits:" << table;
        return false;
    }
    const int type = m_store->getGeneralSetting(QStringLiteral("line%1type").arg(line)).toInt();
    if (type == canopenType)
        return containsAny(table,
                           {QStringLiteral("PGNs"), QStringLiteral("SPNs"), QStringLiteral("J1939Settings")});
    if (type == j1939Type)
        return containsAny(
            table, {QStringLiteral("Objects"), QStringLiteral("Nodes"), QStringLiteral("SubObjects")});
    return false;
}

void DatabaseTextConverter::writeTable(const QString &table)
{
    // Ids of other columns (desc, device_class) go as their number, and so does a node's name, as it is text.
    static const QLatin1StringView name("name");
    static const QList<TableFormat> formats = {
        {QLatin1StringView("SubObjects"),
         2,
         true,
         {name, QLatin1StringView("description")},
         {QLatin1StringView("cyclicread"), QLatin1StringView("changedbyuser"),
          QLatin1StringView("dcfcomponent"), QLatin1StringView("wizardsource"), QLatin1StringView("signalid"),
          QLatin1StringView("denotation")}},
        {QLatin1StringView("Objects"), 1, true, {name, QLatin1StringView("description")}, {}},
        {QLatin1StringView("Nodes"), 1, false, {}, {}},
        {QLatin1StringView("PGNs"), 1, false, {name}, {}},
        // The misspelt column of migrated files is used by nobody, and a new table does not have it.
        {QLatin1StringView("SPNs"), 2, false, {name}, {QLatin1StringView("bitpostion")}},
    };
    static const QStringList settingsTables = {
        QStringLiteral("DescriptionSettings"), QStringLiteral("GeneralSettings"),
        QStringLiteral("MiscSettings"), QStringLiteral("J1939Settings")};
    if (settingsTables.contains(table)) {
        writeSettings(table);
        return;
    }
    for (const TableFormat &format : formats) {
        if (table.contains(format.kind)) {
            writeRows(table, format);
            tellLostTexts(table);
            return;
        }
    }
    if (table.contains(QLatin1StringView("UDSSettings"))) {
        writeUniqueKeyTable(table);
        return;
    }
    qDebug().noquote() << Q_FUNC_INFO << "Line:" << __LINE__ << "unhandled table" << table;
    writeAnyTable(table);
}

void DatabaseTextConverter::writeSettings(const QString &table)
{
    const ConnectionGate::Lease lease(*m_gate);
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    run(query, QStringLiteral("SELECT * FROM %1 ORDER BY item").arg(quoted(table)));
    while (query.next()) {
        const QString key = table + u'/' + TextForm::toEntryKey(query.value(0).toString());
        m_settings->setValue(key, query.value(1).toString());
    }
}

QList<DatabaseTextConverter::TextColumn> DatabaseTextConverter::describe(const QSqlRecord &record,
                                                                         const TableFormat &format) const
{
    QList<TextColumn> columns;
    for (int position = format.pathColumns; position < record.count(); ++position) {
        const QString name = record.fieldName(position);
        if (format.leftOut.contains(name))
            continue;
        TextColumn column{declaredName(name), position};
        if (format.poolColumns.contains(name))
            column.kind = TextColumn::Kind::PoolText;
        else if (name == QLatin1StringView("metadata"))
            column.kind = TextColumn::Kind::Metadata;
        columns.append(column);
    }
    return columns;
}

QVariant DatabaseTextConverter::fieldText(const QSqlQuery &query, const TextColumn &column) const
{
    const QVariant value = query.value(column.position);
    if (column.kind == TextColumn::Kind::PoolText)
        return m_store->getString(value.toInt());
    if (column.kind == TextColumn::Kind::Plain)
        return value.toString();
    QVariantMap map;
    const MetadataMap metadata = Metadata::fromBlob(value.toByteArray());
    for (auto entry = metadata.cbegin(); entry != metadata.cend(); ++entry)
        map.insert(entry.key(), entry.value());
    return map;
}

void DatabaseTextConverter::writeRows(const QString &table, const TableFormat &format)
{
    const ConnectionGate::Lease lease(*m_gate);
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    if (!run(query, QStringLiteral("SELECT * FROM %1").arg(quoted(table))))
        return;
    const QList<TextColumn> columns = describe(query.record(), format);
    const int directionColumn = query.record().indexOf(QStringLiteral("direction"));
    QHash<QString, int> directions;
    while (query.next()) {
        QString path = table + u'/';
        for (int position = 0; position < format.pathColumns; ++position)
            path += format.pathComponent(query.value(position).toLongLong()) + u'/';
        const int direction = directionColumn < 0 ? 0 : query.value(directionColumn).toInt();
        if (isOfLostGroup(table, path, direction))
            continue;
        if (const auto former = directions.constFind(path); former != directions.constEnd()) {
            tellLostRow(table, path, *former);
            noteGroup(table, path, *former, direction);
        }
        directions.insert(path, direction);
        for (const TextColumn &column : columns) {
            const QString key = path + column.key;
            m_settings->setValue(key, fieldText(query, column));
        }
    }
}

void DatabaseTextConverter::writeUniqueKeyTable(const QString &table)
{
    const ConnectionGate::Lease lease(*m_gate);
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    run(query,
        QStringLiteral("SELECT ii.name AS Spaltenname FROM  pragma_index_list('%1') AS il, "
                       "pragma_index_info(il.name) AS ii WHERE il.\"unique\" = 1;")
            .arg(QString(table).replace(u'\'', QLatin1StringView("''"))));
    const QString unique = query.next() ? query.value(0).toString() : QStringLiteral("sid");
    if (!run(query, QStringLiteral("SELECT * FROM %1 ORDER BY %2").arg(quoted(table), quoted(unique))))
        return;
    const QSqlRecord record = query.record();
    const int uniqueColumn = record.indexOf(unique);
    while (query.next()) {
        const QString path = table + u'/' + query.value(uniqueColumn).toString() + u'/';
        for (int position = 0; position < record.count(); ++position) {
            const QString key = path + record.fieldName(position);
            if (position != uniqueColumn)
                m_settings->setValue(key, query.value(position).toString());
        }
    }
}

void DatabaseTextConverter::writeAnyTable(const QString &table)
{
    const ConnectionGate::Lease lease(*m_gate);
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    if (!run(query, QStringLiteral("SELECT * FROM %1").arg(quoted(table))))
        return;
    const QSqlRecord record = query.record();
    for (int row = 0; query.next(); ++row) {
        for (int position = 0; position < record.count(); ++position) {
            const QString key =
                QStringLiteral("%1/%2/%3").arg(table).arg(row).arg(record.fieldName(position));
            m_settings->setValue(key, query.value(position).toString());
        }
    }
}
