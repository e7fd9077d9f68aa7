#pragma once

#include "store/ConnectionGate.h"
#include "store/SqlStatements.h"

#include <QByteArray>
#include <QString>

#include <atomic>

class ObjectDataBase;

/** What one connection's queries share: the gate, the prepared statements and who is told of writes. */
struct StoreConnection
{
    ConnectionGate gate;
    SqlStatements statements;
    ObjectDataBase *store = nullptr;
    std::atomic<bool> trackWrites = false;

    /** Tells the store's listeners of a successful writing statement, once the lease has ended. */
    void noteWrite();
};

/** Text of a column: unlike QString::fromUtf8 it keeps a leading byte order mark, which is data here. */
QString textFromUtf8(QByteArrayView bytes);

/**
 * One run of a prepared statement: holds the connection from its construction to its end.
 *
 * Values are bound from left to right. A failure is logged with the operation's name, the statement and
 * SQLite's message; next() and exec() then give false.
 */
class StoreQuery
{
public:
    /** `sql` must live as long as the program; "%1" in it stands for the line number. */
    StoreQuery(StoreConnection &connection, const char *sql, int line = 0,
               const char *operation = __builtin_FUNCTION());
    ~StoreQuery();
    Q_DISABLE_COPY_MOVE(StoreQuery)

    StoreQuery &bind(qint64 value);
    StoreQuery &bind(const QString &text);
    StoreQuery &bind(const QByteArray &blob);
    StoreQuery &bindNull();

    /** Steps to the next row of a select. */
    bool next();
    /** True when the statement did not fit the schema or broke off: what was read is not all. */
    bool failed() const { return m_failed; }
    /** Runs a writing statement to its end and gives the connection back; true on success. */
    bool exec();

    qint64 number(int column) const;
    /** Whether the column holds a whole number that is one of the type; other programs write anything. */
    template <typename Number>
    bool holds(int column) const
    {
        return isInteger(column) && number(column) == qint64(static_cast<Number>(number(column)));
    }
    QString text(int column) const;
    QByteArrayView utf8(int column) const;
    /** The bytes of a blob; anything else than a blob gives an empty array. */
    QByteArray blob(int column) const;
    bool isNull(int column) const;
    bool isInteger(int column) const;

    /** Reads the first column of the first row. */
    qint64 firstNumber(qint64 otherwise = 0) { return next() ? number(0) : otherwise; }
    QString firstText() { return next() ? text(0) : QString(); }

private:
    void finish();
    void logFailure();

    StoreConnection &m_connection;
    SqlStatements::Prepared *m_prepared = nullptr;
    const char *m_sql;
    const char *m_operation;
    int m_line;
    int m_bound = 0;
    bool m_failed = false;
    bool m_leased = true;
};
