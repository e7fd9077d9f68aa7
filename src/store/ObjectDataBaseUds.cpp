// UDS service settings (ISO 14229-1), one row per line and service.

#include "store/ObjectDataBasePrivate.h"

#include <QSqlError>
#include <QSqlQuery>

namespace {

constexpr std::array<quint8, 17> defaultServices = {16, 17, 62, 34, 46, 35, 61, 20, 25,
                                                    49, 39, 40, 47, 52, 53, 54, 55};
/** The services behind these are not for the default session. */
constexpr size_t servicesInAllSessions = 10;

} // namespace

bool ObjectDataBase::Private::createUDSSettingsTable(int line, QSqlQuery &query)
{
    const QString text = QString::fromLatin1(Schema::createUdsSettings).arg(line);
    if (execute(query, text))
        return true;
    qDebug() << Q_FUNC_INFO << text << query.lastError().text();
    return false;
}

void ObjectDataBase::Private::insertDefaultServices(quint8 line)
{
    if (StoreQuery(connection, "select 1 from UDSSettings%1", line).next())
        return;
    for (const quint8 sid : defaultServices)
        q->setUDSServiceActive(line, UDS::SID(sid), true);
    for (size_t service = 0; service < defaultServices.size(); ++service) {
        q->setUDSServiceSessions(line, UDS::SID(defaultServices[service]),
                                 service < servicesInAllSessions ? QStringLiteral("1,2,3,4")
                                                                 : QStringLiteral("2,3,4"));
    }
}

ObjectDataBase::Private::UdsService ObjectDataBase::Private::udsService(quint8 line, UDS::SID sid)
{
    StoreQuery query(connection,
                     "select active, sessions, userlevels, authentication from UDSSettings%1 where sid = ?",
                     line);
    query.bind(qint64(sid));
    if (!query.next())
        return {};
    return {query.number(0) != 0, query.text(1), query.text(2), query.text(3)};
}

// An upsert, so that a service keeps its place in the table when it is edited.
bool ObjectDataBase::Private::writeUdsService(quint8 line, UDS::SID sid, const UdsService &service)
{
    StoreQuery query(
        connection,
        "insert into UDSSettings%1 (sid,active,sessions,userlevels,authentication) values(?,?,?,?,?) "
        "on conflict(sid) do update set active = excluded.active, sessions = excluded.sessions, "
        "userlevels = excluded.userlevels, authentication = excluded.authentication",
        line);
    return query.bind(qint64(sid))
        .bind(qint64(service.active))
        .bind(service.sessions)
        .bind(service.userLevels)
        .bind(service.authentication)
        .exec();
}

bool ObjectDataBase::Private::copyUdsSettings(quint8 fromLine, quint8 toLine)
{
    struct Row
    {
        UDS::SID sid;
        UdsService service;
    };
    QList<Row> rows;
    {
        StoreQuery query(
            connection,
            "select sid, active, sessions, userlevels, authentication from UDSSettings%1 order by rowid",
            fromLine);
        while (query.next()) {
            rows.append({UDS::SID(query.number(0)),
                         {query.number(1) != 0, query.text(2), query.text(3), query.text(4)}});
        }
    }
    bool success = run("delete from UDSSettings%1", toLine);
    for (const Row &row : std::as_const(rows))
        success = writeUdsService(toLine, row.sid, row.service) && success;
    return success;
}

bool ObjectDataBase::isUDSServiceActive(quint8 line, UDS::SID sid)
{
    return d->udsService(line, sid).active;
}

QList<UDS::SID> ObjectDataBase::getUDSActiveServices(quint8 line)
{
    QList<UDS::SID> services;
    StoreQuery query(d->connection, "select active, sid from UDSSettings%1 order by rowid", line);
    while (query.next()) {
        if (query.number(0) != 0)
            services.append(UDS::SID(query.number(1)));
    }
    return services;
}

QString ObjectDataBase::getUDSServiceSessions(quint8 line, UDS::SID sid)
{
    return d->udsService(line, sid).sessions;
}

QString ObjectDataBase::getUDSServiceUserLevels(quint8 line, UDS::SID sid)
{
    return d->udsService(line, sid).userLevels;
}

QString ObjectDataBase::getUDSAuthentication(quint8 line, UDS::SID sid)
{
    return d->udsService(line, sid).authentication;
}

bool ObjectDataBase::setUDSServiceActive(quint8 line, UDS::SID sid, bool active)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    Private::UdsService service = d->udsService(line, sid);
    service.active = active;
    return d->writeUdsService(line, sid, service);
}

bool ObjectDataBase::setUDSServiceSessions(quint8 line, UDS::SID sid, const QString &sessions)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    Private::UdsService service = d->udsService(line, sid);
    service.sessions = sessions;
    return d->writeUdsService(line, sid, service);
}

bool ObjectDataBase::setUDSServiceUserLevels(quint8 line, UDS::SID sid, const QString &userLevels)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    Private::UdsService service = d->udsService(line, sid);
    service.userLevels = userLevels;
    return d->writeUdsService(line, sid, service);
}

bool ObjectDataBase::setUDSAuthentication(quint8 line, UDS::SID sid, const QString &authentication)
{
    const ConnectionGate::WriteLease lease(d->connection.gate);
    if (!lease)
        return false;
    Private::UdsService service = d->udsService(line, sid);
    service.authentication = authentication;
    return d->writeUdsService(line, sid, service);
}
