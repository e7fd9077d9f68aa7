#include "store/StoreQuery.h"

#include "store/ObjectDataBase.h"

#include <QDebug>

#include <sqlite3.h>

void StoreConnection::noteWrite()
{
    if (trackWrites)
        gate.afterLease([this] { Q_EMIT store->databaseWriteExecuted(); });
}

QString textFromUtf8(QByteArrayView bytes)
{
    static constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");
    if (bytes.startsWith(byteOrderMark))
        return QChar(QChar::ByteOrderMark) + QString::fromUtf8(bytes.sliced(byteOrderMark.size()));
    return QString::fromUtf8(bytes);
}

StoreQuery::StoreQuery(StoreConnection &connection, const char *sql, int line, const char *operation)
    : m_connection(connection), m_sql(sql), m_operation(operation), m_line(line)
{
    m_connection.gate.enter();
    m_prepared = m_connection.statements.acquire(sql, line);
    if (!m_prepared)
        logFailure();
}

StoreQuery::~StoreQuery()
{
    finish();
}

void StoreQuery::finish()
{
    if (m_prepared)
        m_connection.statements.release(m_prepared);
    m_prepared = nullptr;
    if (m_leased)
        m_connection.gate.leave();
    m_leased = false;
}

StoreQuery &StoreQuery::bind(qint64 value)
{
    if (m_prepared)
        sqlite3_bind_int64(m_prepared->statement, ++m_bound, value);
    return *this;
}

// A null text is stored as an empty one: NULL never came out of a quoted value.
StoreQuery &StoreQuery::bind(const QString &text)
{
    if (m_prepared) {
        const QByteArray utf8 = text.toUtf8();
        sqlite3_bind_text(m_prepared->statement, ++m_bound, utf8.constData(), int(utf8.size()),
                          SQLITE_TRANSIENT);
    }
    return *this;
}

StoreQuery &StoreQuery::bind(const QByteArray &blob)
{
    if (m_prepared)
        sqlite3_bind_blob(m_prepared->statement, ++m_bound, blob.constData(), int(blob.size()),
                          SQLITE_TRANSIENT);
    return *this;
}

StoreQuery &StoreQuery::bindNull()
{
    if (m_prepared)
        sqlite3_bind_null(m_prepared->statement, ++m_bound);
    return *this;
}

bool StoreQuery::next()
{
    if (!m_prepared)
        return false;
    const int result = sqlite3_step(m_prepared->statement);
    if (result == SQLITE_ROW)
        return true;
    if (result != SQLITE_DONE)
        logFailure();
    return false;
}

bool StoreQuery::exec()
{
    if (!m_prepared)
        return false;
    int result = SQLITE_ROW;
    while (result == SQLITE_ROW)
        result = sqlite3_step(m_prepared->statement);
    if (result != SQLITE_DONE)
        logFailure();
    if (result == SQLITE_DONE && m_prepared->writes)
        m_connection.noteWrite();
    finish();
    return result == SQLITE_DONE;
}

qint64 StoreQuery::number(int column) const
{
    return sqlite3_column_int64(m_prepared->statement, column);
}

QByteArrayView StoreQuery::utf8(int column) const
{
    const auto *bytes = reinterpret_cast<const char *>(sqlite3_column_text(m_prepared->statement, column));
    return {bytes, bytes ? sqlite3_column_bytes(m_prepared->statement, column) : 0};
}

QString StoreQuery::text(int column) const
{
    return textFromUtf8(utf8(column));
}

QByteArray StoreQuery::blob(int column) const
{
    if (sqlite3_column_type(m_prepared->statement, column) != SQLITE_BLOB)
        return {};
    return {static_cast<const char *>(sqlite3_column_blob(m_prepared->statement, column)),
            sqlite3_column_bytes(m_prepared->statement, column)};
}

bool StoreQuery::isNull(int column) const
{
    return sqlite3_column_type(m_prepared->statement, column) == SQLITE_NULL;
}

bool StoreQuery::isInteger(int column) const
{
    return sqlite3_column_type(m_prepared->statement, column) == SQLITE_INTEGER;
}

void StoreQuery::logFailure()
{
    m_failed = true;
    qDebug().nospace() << "ObjectDataBase::" << m_operation << "() " << SqlStatements::text(m_sql, m_line)
                       << ": " << m_connection.statements.lastError();
}
