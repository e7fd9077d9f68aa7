// The lines of a project whose text is read.

#include "store/ConnectionGate.h"
#include "store/DatabaseTextConverter.h"
#include "store/DatabaseTextConverterShared.h"

#include <QSettings>
#include <QSqlQuery>

namespace {

bool isLineTable(const QString &group)
{
    static const QRegularExpression table(QStringLiteral("^(Objects|SubObjects|PGNs|SPNs|UDSSettings)\\d+$"));
    return table.match(group).hasMatch();
}

} // namespace

// Without CANopen the text has no nodes. The lines are then those that have a type, as one without any row
// has no table in the text; tables of further lines need a line all the same.
QList<int> DatabaseTextConverter::linesOfText(const QStringList &groups, bool hasNodes) const
{
    QList<int> lines;
    for (const QString &group : groups) {
        if (isLineTable(group))
            lines.append(TextForm::lineOf(group));
    }
    if (hasNodes)
        return lines;
    static const QRegularExpression pattern(QStringLiteral("^GeneralSettings/line(\\d+)type$"));
    const QStringList keys = m_settings->allKeys();
    for (const QString &key : keys) {
        bool isNumber = false;
        const int line = pattern.match(key).captured(1).toInt(&isNumber);
        if (isNumber && line < ObjectDataBase::MaximumLines)
            lines.append(line);
    }
    return lines;
}

// Before the settings are read, as a new line extends the lists of the per-line settings. Line 0 is there
// already; a text that names others alone is that of a project which has lost it.
void DatabaseTextConverter::createLines(QList<int> lines)
{
    lines.removeIf([](int line) { return line < 0; });
    for (const int line : std::as_const(lines)) {
        if (!m_store->nodeExists(quint8(line)))
            m_store->addNode(quint8(line), ObjectDataBase::NODE_DATA_T());
    }
    if (!lines.isEmpty() && !lines.contains(0))
        m_store->removeLine(0);
}

// A new line has services of its own; the text holds all that the project has, be it none.
void DatabaseTextConverter::dropDefaultServices()
{
    const ConnectionGate::Lease lease(*m_gate);
    QSqlQuery query(m_database);
    const QList<quint8> lines = m_store->getLines();
    for (const quint8 line : lines)
        query.exec(QStringLiteral("DELETE FROM %1%2").arg(TextForm::udsTable).arg(line));
}
