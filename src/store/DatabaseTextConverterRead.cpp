// From the text of a project to the working database.

#include "store/ConnectionGate.h"
#include "store/DatabaseTextConverter.h"
#include "store/DatabaseTextConverterShared.h"
#include "store/ObjectDataBasePrivate.h"

#include <QDebug>
#include <QSettings>
#include <QSqlError>
#include <QSqlQuery>

#include <algorithm>
#include <limits>

namespace {

constexpr int highestIndex = 0xFFFF;
constexpr int highestSubIndex = 0xFF;
/** Ids behind this one are none that a project gave; a pool that reached them could not grow. */
constexpr int highestReservedId = 1 << 30;

constexpr QLatin1StringView nodesGroup("Nodes");

using TextForm::lineOf;

/** Number of a path component, "0x1f" or "31"; -1 when it is none or above the limit. */
qint64 pathNumber(const QString &component, int base, qint64 limit)
{
    bool isNumber = false;
    const qint64 number = component.toLongLong(&isNumber, base);
    return isNumber && number >= 0 && number <= limit ? number : -1;
}

template <typename Row>
void assignField(const Schema::Column<Row> &column, const QVariant &value, Row &row)
{
    std::visit(
        [&](auto member) {
            if constexpr (std::is_same_v<decltype(member), std::monostate>) {
                return;
            } else if constexpr (std::is_same_v<decltype(member), MetadataMap Row::*>) {
                const QVariantMap entries = value.toMap();
                for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry)
                    (row.*member).insert(entry.key(), entry.value().toString());
            } else if constexpr (std::is_same_v<decltype(member), PDOMapping Row::*>) {
                row.*member = PDOMapping(quint8(TextForm::entryText(value).toUInt()));
            } else if constexpr (std::is_same_v<decltype(member), QString Row::*>) {
                row.*member = TextForm::entryText(value);
            } else {
                using Field = std::remove_reference_t<decltype(row.*member)>;
                row.*member = static_cast<Field>(TextForm::entryText(value).toInt());
            }
        },
        column.member);
}

/** The record that the entries of one group make; entries that no column has are logged. */
template <typename Row, typename Values>
Row toRecord(const Values &values, const QString &group)
{
    Row row;
    for (const auto &[name, value] : values) {
        if (const auto *column = Schema::findColumn<Row>(name))
            assignField(*column, value, row);
        else
            qDebug().noquote() << Q_FUNC_INFO << "unhandled entry" << name << "of" << group;
    }
    return row;
}

/** The column as its table spells it; empty when the table has none of that name. */
QString columnOf(const QStringList &columns, const QString &name)
{
    const auto found = std::find_if(columns.begin(), columns.end(), [&](const QString &column) {
        return column.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == columns.end() ? QString() : *found;
}

template <typename Values>
QVariant valueOf(const Values &values, QLatin1StringView name)
{
    const auto found =
        std::find_if(values.begin(), values.end(), [&](const auto &entry) { return entry.first == name; });
    return found == values.end() ? QVariant() : found->second;
}

} // namespace

bool DatabaseTextConverter::convertTextToSql()
{
    if (!m_settings || !m_store || !m_gate)
        return false;
    QStringList groups = m_settings->childGroups();
    if (groups.isEmpty())
        return false;
    reservePoolIds(groups);
    const bool hasNodes = groups.removeOne(QString(nodesGroup));
    createLines((hasNodes ? importNodes() : QList<int>()) + linesOfText(groups, hasNodes));
    dropDefaultServices();
    for (const QString &group : std::as_const(groups))
        importGroup(group);
    return true;
}

// "SubObjects" stands before "Objects", which it contains.
void DatabaseTextConverter::importGroup(const QString &group)
{
    struct Kind
    {
        QLatin1StringView part;
        void (*import)(DatabaseTextConverter &, const QString &);
    };
    using Self = DatabaseTextConverter;
    static const QList<Kind> kinds = {
        {QLatin1StringView("DescriptionSettings"),
         [](Self &self, const QString &name) {
             self.m_store->setDescriptionLine(0);
             self.importSettings(name, &ObjectDataBase::setDescriptionSetting);
         }},
        {QLatin1StringView("GeneralSettings"),
         [](Self &self, const QString &name) {
             self.importSettings(name, &ObjectDataBase::setGeneralSetting);
         }},
        {QLatin1StringView("MiscSettings"),
         [](Self &self, const QString &name) { self.importSettings(name, &ObjectDataBase::setMiscSetting); }},
        {QLatin1StringView("SubObjects"),
         [](Self &self, const QString &name) { self.importSubObjects(name); }},
        {QLatin1StringView("Objects"), [](Self &self, const QString &name) { self.importObjects(name); }},
        {QLatin1StringView("UDSSettings"),
         [](Self &self, const QString &name) { self.importUDSSettings(name); }},
        {QLatin1StringView("J1939Settings"),
         [](Self &self, const QString &name) {
             self.importSettings(name, &ObjectDataBase::setJ1939Setting);
         }},
        {QLatin1StringView("PGNs"), [](Self &self, const QString &name) { self.importPGNs(name); }},
        {QLatin1StringView("SPNs"), [](Self &self, const QString &name) { self.importSPNs(name); }},
    };
    const auto kind = std::find_if(kinds.begin(), kinds.end(),
                                   [&](const Kind &candidate) { return group.contains(candidate.part); });
    if (kind != kinds.end())
        kind->import(*this, group);
    else
        qDebug().noquote() << Q_FUNC_INFO << "Line:" << __LINE__ << "unhandled group" << group;
}

void DatabaseTextConverter::forEachRow(const QString &group, int pathLength, const RowUse &use) const
{
    QString path;
    Values values;
    const auto finish = [&] {
        if (!values.isEmpty())
            use(path.split(u'/'), values);
        values.clear();
    };
    m_settings->beginGroup(group);
    // Sorted, so that the entries of one row stand together.
    const QStringList keys = m_settings->allKeys();
    for (const QString &key : keys) {
        qsizetype slash = key.indexOf(u'/');
        for (int component = 1; component < pathLength && slash >= 0; ++component)
            slash = key.indexOf(u'/', slash + 1);
        if (slash < 0) {
            qDebug().noquote() << Q_FUNC_INFO << "unhandled entry" << key << "of" << group;
            continue;
        }
        if (QStringView(key).first(slash) != path) {
            finish();
            path = key.first(slash);
        }
        values.append({key.mid(slash + 1), m_settings->value(key)});
    }
    m_settings->endGroup();
    finish();
}

QList<int> DatabaseTextConverter::importNodes()
{
    QList<int> lines;
    forEachRow(nodesGroup, 1, [&](const QStringList &path, const Values &values) {
        const qint64 line = pathNumber(path.first(), 10, ObjectDataBase::ClipboardLine - 1);
        if (line < 0) {
            qDebug().noquote() << "DatabaseTextConverter: no line number:" << path.first();
            return;
        }
        lines.append(int(line));
        importNode(quint8(line), values);
    });
    return lines;
}

// An update of an existing node, which line 0 always is, leaves the columns behind the icon as they are.
void DatabaseTextConverter::importNode(quint8 line, const Values &values)
{
    const bool exists = m_store->nodeExists(line);
    m_store->addNode(line, toRecord<ProjectRecords::NodeData>(values, nodesGroup));
    for (const auto &[name, value] : values) {
        const auto *column = Schema::findColumn<ProjectRecords::NodeData>(name);
        if (exists && column && !Schema::Table<ProjectRecords::NodeData>::updates(*column))
            m_store->setNodeSqlValue(line, name, TextForm::entryText(value).toInt());
    }
}

// The columns desc and device_class carry ids of a pool that is gone. Each such id becomes an empty text:
// better no description than one that belongs to something else.
void DatabaseTextConverter::reservePoolIds(const QStringList &groups)
{
    const ConnectionGate::Lease lease(*m_gate);
    QSqlQuery query(m_database);
    query.prepare(QStringLiteral("INSERT OR IGNORE INTO Strings VALUES(?,'')"));
    const auto reserve = [&](const QVariant &value) {
        const int id = TextForm::entryText(value).toInt();
        if (id <= 0 || id > highestReservedId)
            return;
        query.addBindValue(id);
        query.exec();
    };
    m_database.transaction();
    for (const QString &group : groups) {
        const bool isSpns = group.startsWith(QLatin1StringView("SPNs"));
        if (group.startsWith(QLatin1StringView("Objects"))) {
            forEachRow(group, 1, [&](const QStringList &, const Values &values) {
                reserve(valueOf(values, QLatin1StringView("device_class")));
            });
        } else if (isSpns || group.startsWith(QLatin1StringView("PGNs"))) {
            forEachRow(group, isSpns ? 2 : 1, [&](const QStringList &, const Values &values) {
                reserve(valueOf(values, QLatin1StringView("desc")));
            });
        }
    }
    m_database.commit();
    m_store->loadStrings();
}

void DatabaseTextConverter::importSettings(const QString &group,
                                           bool (ObjectDataBase::*set)(const QString &, const QString &))
{
    m_settings->beginGroup(group);
    const QStringList keys = m_settings->allKeys();
    for (const QString &key : keys)
        (m_store->*set)(TextForm::fromEntryKey(key), TextForm::entryText(m_settings->value(key)));
    m_settings->endGroup();
}

void DatabaseTextConverter::importObjects(const QString &group)
{
    const int line = lineOf(group);
    const QString table = QStringLiteral("Objects%1").arg(line);
    forEachRow(group, 1, [&](const QStringList &path, const Values &values) {
        const qint64 index = pathNumber(path.first(), 16, highestIndex);
        if (line < 0 || index < 0) {
            qDebug().noquote() << "DatabaseTextConverter: no object:" << group << path.first();
            return;
        }
        // The device class is the number of a pool id and no text for the pool.
        auto record = toRecord<ProjectRecords::IndexData>(values, group);
        record.device_class.clear();
        m_store->addIndex(quint8(line), quint16(index), record);
        const QVariant deviceClass = valueOf(values, QLatin1StringView("device_class"));
        m_store->setObjectIndexSqlValue(table, quint16(index), QStringLiteral("device_class"),
                                        deviceClass.isValid() ? QVariant(TextForm::entryText(deviceClass))
                                                              : QVariant(QStringLiteral("0")));
    });
}

// All rows at once: a project has tens of thousands of sub-indices with two dozen entries each.
void DatabaseTextConverter::importSubObjects(const QString &group)
{
    const int line = lineOf(group);
    QList<ObjectDataBase::SubEntry> entries;
    forEachRow(group, 2, [&](const QStringList &path, const Values &values) {
        const qint64 index = pathNumber(path.at(0), 16, highestIndex);
        const qint64 subindex = pathNumber(path.at(1), 16, highestSubIndex);
        if (line < 0 || index < 0 || subindex < 0) {
            qDebug().noquote() << "DatabaseTextConverter: no sub-index:" << group << path.join(u'/');
            return;
        }
        entries.append({quint8(line), quint16(index), quint8(subindex),
                        toRecord<ProjectRecords::SubIndexData>(values, group)});
    });
    m_store->addSubIndices(entries);
}

QStringList DatabaseTextConverter::columnsOf(const QString &table) const
{
    QStringList columns;
    QSqlQuery query(m_database);
    query.prepare(QStringLiteral("SELECT name FROM PRAGMA_TABLE_INFO(?)"));
    query.addBindValue(table);
    query.exec();
    while (query.next())
        columns.append(query.value(0).toString());
    return columns;
}

// Names of columns come from the table itself, never from the file.
void DatabaseTextConverter::insertRow(QSqlQuery &query, const QString &table, const QStringList &known,
                                      QStringList columns, QVariantList bound, const Values &values)
{
    for (const auto &[name, value] : values) {
        const QString column = columnOf(known, name);
        if (column.isEmpty() || columns.contains(column)) {
            qDebug().noquote() << Q_FUNC_INFO << "unhandled entry" << name << "of" << table;
            continue;
        }
        const QString text = TextForm::entryText(value);
        columns.append(column);
        if (column == QLatin1StringView("name"))
            bound.append(m_store->addString(text));
        else
            bound.append(text.isNull() ? QStringLiteral("") : text);
    }
    const QStringList places(columns.size(), QStringLiteral("?"));
    const QString text = QStringLiteral("INSERT OR REPLACE INTO %1 (%2) VALUES (%3)")
                             .arg(table, columns.join(u','), places.join(u','));
    // Neighbouring rows have the same entries and share the prepared statement.
    if (query.lastQuery() != text)
        query.prepare(text);
    for (const QVariant &value : std::as_const(bound))
        query.addBindValue(value);
    if (!query.exec())
        qDebug().noquote() << Q_FUNC_INFO << "Line:" << __LINE__ << "failed:" << text
                           << query.lastError().text();
}

void DatabaseTextConverter::importRows(const QString &group, QLatin1StringView kind, const QStringList &keys)
{
    const int line = lineOf(group);
    if (line < 0 || !m_store || !m_settings || !m_gate) {
        qDebug().noquote() << Q_FUNC_INFO << "Line:" << __LINE__ << "unhandled group" << group;
        return;
    }
    const QString table = kind + QString::number(line);
    const ConnectionGate::Lease lease(*m_gate);
    const QStringList known = columnsOf(table);
    QSqlQuery query(m_database);
    m_database.transaction();
    forEachRow(group, int(keys.size()), [&](const QStringList &path, const Values &values) {
        QVariantList numbers;
        for (const QString &component : path) {
            if (const qint64 number = pathNumber(component, 10, std::numeric_limits<quint32>::max());
                number >= 0)
                numbers.append(number);
        }
        if (numbers.size() == keys.size())
            insertRow(query, table, known, keys, numbers, values);
        else
            qDebug().noquote() << "DatabaseTextConverter: no number:" << group << path.join(u'/');
    });
    m_database.commit();
}

void DatabaseTextConverter::importPGNs(const QString &group)
{
    importRows(group, QLatin1StringView("PGNs"), {QStringLiteral("number")});
}

void DatabaseTextConverter::importSPNs(const QString &group)
{
    importRows(group, QLatin1StringView("SPNs"), {QStringLiteral("pgnnumber"), QStringLiteral("spnnumber")});
}

void DatabaseTextConverter::importUDSSettings(const QString &group)
{
    importRows(group, TextForm::udsTable, {QStringLiteral("sid")});
}
