#pragma once

#include "store/StoreTest.h"

#include <QDir>
#include <QRegularExpression>

#include <algorithm>

/** Project files as former programs wrote them, made without the store's own code. */
namespace FormerFiles {

inline QStringList *caughtMessages = nullptr;

inline void catchMessage(QtMsgType, const QMessageLogContext &, const QString &text)
{
    if (caughtMessages)
        caughtMessages->append(text);
}

/** The debug lines of a scope. */
class CaughtMessages
{
public:
    CaughtMessages() : m_former(qInstallMessageHandler(catchMessage)) { caughtMessages = &m_messages; }
    ~CaughtMessages()
    {
        caughtMessages = nullptr;
        qInstallMessageHandler(m_former);
    }
    Q_DISABLE_COPY_MOVE(CaughtMessages)

    QStringList containing(const QString &part) const { return m_messages.filter(part); }

private:
    QStringList m_messages;
    QtMessageHandler m_former;
};

/** A file with the tables of the first released schema. */
inline bool makeFile(const QString &path, int version, const QList<int> &lines, const QStringList &statements)
{
    const StoreTest::DatabaseFile file(path);
    QStringList all = {
        QStringLiteral("create table Strings (id integer primary key, string text)"),
        QStringLiteral("insert into Strings values (1,''),(2,'Device'),(3,'Speed')"),
        QStringLiteral("create table Nodes (nodeId integer primary key, name text, edspath text, "
                       "xddpath text)"),
        QStringLiteral("create table Connections (prodnode integer, prodindex integer, prodsub integer, "
                       "connode integer, conindex integer, consub integer)"),
        QStringLiteral("create table GeneralSettings (item text unique, value text)"),
        QStringLiteral("create table MiscSettings (item text unique, value text)"),
        QStringLiteral("insert into MiscSettings values ('DatabaseVersion','%1')").arg(version)};
    const QStringList lineTables = {
        QStringLiteral("insert into Nodes values (%1,'node','','')"),
        QStringLiteral("create table Objects%1 (objectindex integer primary key, name integer, datatype "
                       "integer not null, objecttype integer not null, description integer, "
                       "category integer)"),
        QStringLiteral("create table SubObjects%1 (objectindex integer not null, subindex integer not null, "
                       "name integer, datatype integer not null, accesstype text, defaultvalue text, "
                       "currentvalue text, pdomapping integer, lowlimit integer, uplimit integer, "
                       "size integer, defaultineds integer, limitineds integer, refuseread integer, "
                       "refusewrite integer, allowedaccesstypes text, implementation integer, varname text, "
                       "description integer, category integer)"),
        QStringLiteral("create table PGNs%1 (number integer not null, edp_dp_key integer, priority integer, "
                       "cycletime_ms integer, inhibittime_ms integer, mappingcount integer, "
                       "direction integer, name integer, desc integer)"),
        QStringLiteral("create table SPNs%1 (pgnnumber integer not null, spnnumber integer not null, "
                       "datatype integer, implementation integer, varname text, defaultvalue text, "
                       "name integer, desc integer, pos integer, bitsize integer, direction integer, "
                       "slot_df integer, bitposition integer)"),
        QStringLiteral("create table CANIDs%1 (id integer not null, cycletime_ms integer, inhibittime_ms "
                       "integer, mappingcount integer, direction integer, name integer, desc integer)"),
        QStringLiteral("create table DataElements%1 (canid integer not null, number integer not null, "
                       "datatype integer, implementation integer, varname text, defaultvalue text, "
                       "name integer, desc integer, pos integer, bitsize integer, direction integer)")};
    for (const int line : lines) {
        for (const QString &statement : lineTables)
            all.append(statement.arg(line));
    }
    all += statements;
    return std::all_of(all.begin(), all.end(),
                       [&](const QString &statement) { return file.execute(statement); });
}

} // namespace FormerFiles
