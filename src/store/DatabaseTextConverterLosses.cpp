// What the text form of a project has no room for.

#include "store/ConnectionGate.h"
#include "store/DatabaseTextConverter.h"
#include "store/DatabaseTextConverterShared.h"
#include "store/ObjectDataBase.h"

#include <QDebug>
#include <QSqlQuery>

#include <algorithm>
#include <array>

namespace {

struct TableContent
{
    QLatin1StringView table;
    QLatin1StringView content;
};

constexpr std::array tableContents = {
    TableContent{QLatin1StringView("CANIDs"), QLatin1StringView("raw CAN messages")},
    TableContent{QLatin1StringView("Connections"), QLatin1StringView("connections between objects")},
    TableContent{QLatin1StringView("DataElements"), QLatin1StringView("raw CAN signals")},
    TableContent{QLatin1StringView("EnergyBusSettings"), QLatin1StringView("EnergyBus settings")},
    TableContent{QLatin1StringView("Groups"), QLatin1StringView("node groups")},
    TableContent{QLatin1StringView("J1939Settings"), QLatin1StringView("J1939 settings")},
    TableContent{QLatin1StringView("LockedMappings"), QLatin1StringView("locked mappings")},
    TableContent{QLatin1StringView("LockedPDOs"), QLatin1StringView("locked PDOs")},
    TableContent{QLatin1StringView("Objects"), QLatin1StringView("objects")},
    TableContent{QLatin1StringView("PGNs"), QLatin1StringView("PGNs")},
    TableContent{QLatin1StringView("SignalGroups"), QLatin1StringView("signal groups")},
    TableContent{QLatin1StringView("Signals"), QLatin1StringView("network signals")},
    TableContent{QLatin1StringView("SPNs"), QLatin1StringView("SPNs")},
    TableContent{QLatin1StringView("SubObjects"), QLatin1StringView("sub-indices")},
    TableContent{QLatin1StringView("VirtualNodes"), QLatin1StringView("virtual nodes")},
};

struct LostColumn
{
    QLatin1StringView table;
    QLatin1StringView column;
    QLatin1StringView content;
};

/** Columns of tables in the text whose texts are not in it: their pool ids mean nothing to a reader. */
constexpr std::array lostColumns = {
    LostColumn{QLatin1StringView("Objects"), QLatin1StringView("device_class"),
               QLatin1StringView("device classes of objects")},
    LostColumn{QLatin1StringView("PGNs"), QLatin1StringView("desc"),
               QLatin1StringView("descriptions of PGNs")},
    LostColumn{QLatin1StringView("SPNs"), QLatin1StringView("desc"),
               QLatin1StringView("descriptions of SPNs")},
    LostColumn{QLatin1StringView("SubObjects"), QLatin1StringView("denotation"),
               QLatin1StringView("denotations of sub-indices")},
};

/** "raw CAN messages of line 0" for "CANIDs0"; a table of others keeps its name. */
QString contentOf(const QString &table)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\D+)(\\d*)$"));
    const QRegularExpressionMatch match = pattern.match(table);
    const auto known =
        std::find_if(tableContents.begin(), tableContents.end(),
                     [&](const TableContent &entry) { return match.captured(1) == entry.table; });
    if (known == tableContents.end())
        return QStringLiteral("rows of the table %1").arg(table);
    if (match.captured(2).isEmpty())
        return known->content;
    return QStringLiteral("%1 of line %2").arg(known->content, match.captured(2));
}

QString directionName(int direction)
{
    if (direction == ObjectDataBase::Transmit)
        return QStringLiteral("transmit");
    return direction == ObjectDataBase::Receive ? QStringLiteral("receive")
                                                : QStringLiteral("direction %1").arg(direction);
}

/** "SPN 190 of PGN 61444 of line 0" for "SPNs0/61444/190/". */
QString rowName(const QString &path)
{
    const QStringList parts = path.split(u'/', Qt::SkipEmptyParts);
    const int line = TextForm::trailingNumber(parts.value(0));
    if (parts.size() > 2)
        return QStringLiteral("SPN %1 of PGN %2 of line %3").arg(parts.at(2), parts.at(1)).arg(line);
    return QStringLiteral("PGN %1 of line %2").arg(parts.value(1)).arg(line);
}

bool holdsGroups(const QString &table)
{
    return table.startsWith(QLatin1StringView("PGNs"));
}

bool holdsSignals(const QString &table)
{
    return table.startsWith(QLatin1StringView("SPNs"));
}

} // namespace

void DatabaseTextConverter::tellLostTable(const QString &table)
{
    // The pool's texts stand where they are used.
    if (table == QLatin1StringView("Strings"))
        return;
    if (table == QLatin1StringView("Nodes")) {
        tellLostNodes();
        return;
    }
    const ConnectionGate::Lease lease(*m_gate);
    QSqlQuery query(m_database);
    query.exec(QStringLiteral("SELECT count(*) FROM %1").arg(TextForm::quoted(table)));
    if (const qint64 count = query.next() ? query.value(0).toLongLong() : 0; count > 0)
        m_losses.append(
            QStringLiteral("The text does not hold the %1 (count: %2).").arg(contentOf(table)).arg(count));
}

void DatabaseTextConverter::tellLostTexts(const QString &table)
{
    const ConnectionGate::Lease lease(*m_gate);
    const int line = TextForm::trailingNumber(table);
    for (const LostColumn &lost : lostColumns) {
        if (table != lost.table + QString::number(line))
            continue;
        QSqlQuery query(m_database);
        query.exec(QStringLiteral("SELECT count(*) FROM %1 AS own JOIN Strings ON Strings.id = own.%2 "
                                  "WHERE Strings.string <> ''")
                       .arg(TextForm::quoted(table), TextForm::quoted(lost.column)));
        if (const qint64 count = query.next() ? query.value(0).toLongLong() : 0; count > 0)
            m_losses.append(QStringLiteral("The text does not hold the %1 of line %2 (count: %3).")
                                .arg(lost.content)
                                .arg(line)
                                .arg(count));
    }
}

// A reader makes the node of each line anew; only what differs from such a node is lost.
void DatabaseTextConverter::tellLostNodes()
{
    const QList<quint8> lines = m_store->getLines();
    for (const quint8 line : lines) {
        ObjectDataBase::NODE_DATA_T node;
        if (m_store->getNode(line, node) && !(node == ObjectDataBase::NODE_DATA_T()))
            m_losses.append(QStringLiteral("The text does not hold the node data of line %1.").arg(line));
    }
}

void DatabaseTextConverter::tellLostRow(const QString &table, const QString &path, int direction)
{
    // A group or signal of both directions: the form has room for one of them.
    qWarning().noquote() << Q_FUNC_INFO << "an earlier row of the same number is lost:" << path;
    if (holdsGroups(table) || holdsSignals(table))
        m_losses.append(
            QStringLiteral("%1 is there more than once: the text does not hold its earlier %2 row.")
                .arg(rowName(path), directionName(direction)));
}

// Signals of a direction whose group is lost would come back as those of no group.
bool DatabaseTextConverter::isOfLostGroup(const QString &table, const QString &path, int direction)
{
    if (!holdsSignals(table) || m_lostGroups.empty()
        || !m_lostGroups.contains({TextForm::trailingNumber(table), path.section(u'/', 1, 1), direction}))
        return false;
    qWarning().noquote() << Q_FUNC_INFO << "a row is lost with its group:" << path;
    m_losses.append(QStringLiteral("%1 belongs to the %2 row of its PGN, which the text does not hold.")
                        .arg(rowName(path), directionName(direction)));
    return true;
}

void DatabaseTextConverter::noteGroup(const QString &table, const QString &path, int lost, int kept)
{
    if (!holdsGroups(table))
        return;
    const int line = TextForm::trailingNumber(table);
    const QString number = path.section(u'/', 1, 1);
    m_lostGroups.insert({line, number, lost});
    m_lostGroups.erase({line, number, kept});
}
