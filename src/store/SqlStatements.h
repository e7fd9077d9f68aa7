#pragma once

#include <QByteArray>
#include <QString>

#include <unordered_map>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

/**
 * Prepared statements of one SQLite connection, each prepared once.
 *
 * A statement is known by the address of its text (a literal or a text that lives as long as the
 * program) and the line number that stands for %1 in it, so that a look-up never builds the text.
 */
class SqlStatements
{
public:
    struct Prepared
    {
        sqlite3_stmt *statement = nullptr;
        bool writes = false; ///< begins with a word that changes the database
        bool inUse = false;
        bool cached = true;
    };

    SqlStatements() = default;
    ~SqlStatements();
    Q_DISABLE_COPY_MOVE(SqlStatements)

    /** From now on statements are made for this connection; nullptr after a close. */
    void attach(sqlite3 *connection);
    sqlite3 *connection() const { return m_connection; }
    /** SQLite's message on the last failure. */
    QString lastError() const;

    /** A statement ready to bind, or nullptr when the text does not fit the schema. Give it back. */
    Prepared *acquire(const char *sql, int line);
    void release(Prepared *prepared);

    /** The text that acquire prepares: %1 replaced by the line number. */
    static QByteArray text(const char *sql, int line);
    /** True when the text begins with a word that changes the database. */
    static bool isWriting(QByteArrayView sql);

private:
    struct Key
    {
        const char *sql;
        int line;
        bool operator==(const Key &) const = default;
    };
    struct KeyHash
    {
        size_t operator()(const Key &key) const
        {
            return std::hash<const void *>()(key.sql) ^ (static_cast<size_t>(key.line) << 1);
        }
    };

    sqlite3_stmt *prepare(const QByteArray &sql) const;
    void finalizeAll();

    sqlite3 *m_connection = nullptr;
    std::unordered_map<Key, Prepared, KeyHash> m_prepared;
};
