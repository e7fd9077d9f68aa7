#include "store/SqlStatements.h"

#include <algorithm>
#include <array>
#include <sqlite3.h>

SqlStatements::~SqlStatements()
{
    finalizeAll();
}

void SqlStatements::attach(sqlite3 *connection)
{
    finalizeAll();
    m_connection = connection;
}

QString SqlStatements::lastError() const
{
    return m_connection ? QString::fromUtf8(sqlite3_errmsg(m_connection))
                        : QStringLiteral("the store is closed");
}

SqlStatements::Prepared *SqlStatements::acquire(const char *sql, int line)
{
    if (!m_connection)
        return nullptr;
    Prepared &known = m_prepared[{sql, line}];
    if (known.statement && !known.inUse) {
        known.inUse = true;
        return &known;
    }
    const QByteArray full = text(sql, line);
    sqlite3_stmt *statement = prepare(full);
    if (!statement)
        return nullptr;
    if (!known.statement) {
        known = {statement, isWriting(full), true, true};
        return &known;
    }
    // The same operation is under way further up the stack: it gets a statement of its own.
    return new Prepared{statement, isWriting(full), true, false};
}

void SqlStatements::release(Prepared *prepared)
{
    sqlite3_reset(prepared->statement);
    sqlite3_clear_bindings(prepared->statement);
    prepared->inUse = false;
    if (!prepared->cached) {
        sqlite3_finalize(prepared->statement);
        delete prepared;
    }
}

QByteArray SqlStatements::text(const char *sql, int line)
{
    QByteArray full(sql);
    full.replace("%1", QByteArray::number(line));
    return full;
}

bool SqlStatements::isWriting(QByteArrayView sql)
{
    static constexpr std::array words = {"insert", "update", "delete", "replace", "create", "drop", "alter"};
    const QByteArrayView trimmed = sql.trimmed();
    return std::any_of(words.begin(), words.end(), [trimmed](const char *word) {
        const qsizetype length = qsizetype(std::char_traits<char>::length(word));
        return trimmed.size() >= length && qstrnicmp(trimmed.data(), word, size_t(length)) == 0;
    });
}

sqlite3_stmt *SqlStatements::prepare(const QByteArray &sql) const
{
    sqlite3_stmt *statement = nullptr;
    sqlite3_prepare_v3(m_connection, sql.constData(), int(sql.size()) + 1, SQLITE_PREPARE_PERSISTENT,
                       &statement, nullptr);
    return statement;
}

void SqlStatements::finalizeAll()
{
    for (auto &entry : m_prepared)
        sqlite3_finalize(entry.second.statement);
    m_prepared.clear();
}
