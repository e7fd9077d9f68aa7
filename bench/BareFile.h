#pragma once

#include <QByteArray>
#include <QCryptographicHash>
#include <QFile>
#include <QString>

#include <cstdlib>
#include <sqlite3.h>
#include <string>
#include <unistd.h>
#include <vector>

/** What must be done with a whole database file at least, without a store. */
namespace Bare {

inline void require(bool success)
{
    if (!success)
        std::abort();
}

/** A connection to an existing file, with the pragmas of a working file. */
class File
{
public:
    explicit File(const QString &path)
    {
        require(sqlite3_open(path.toUtf8().constData(), &m_db) == SQLITE_OK);
        for (const char *pragma :
             {"PRAGMA page_size = 4096", "PRAGMA cache_size = 64000", "PRAGMA temp_store = MEMORY",
              "PRAGMA journal_mode = OFF", "PRAGMA locking_mode = EXCLUSIVE", "PRAGMA synchronous = OFF"})
            run(pragma);
    }
    ~File() { sqlite3_close(m_db); }
    Q_DISABLE_COPY_MOVE(File)

    void run(const std::string &sql)
    {
        require(sqlite3_exec(m_db, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK);
    }

    /** SHA-256 over every value of every table. */
    QByteArray hash()
    {
        QCryptographicHash hash(QCryptographicHash::Sha256);
        QByteArray bytes;
        for (const std::string &table : tables()) {
            sqlite3_stmt *statement = prepare("select * from \"" + table + '"');
            const int columns = sqlite3_column_count(statement);
            while (sqlite3_step(statement) == SQLITE_ROW) {
                for (int column = 0; column < columns; ++column) {
                    if (const auto *text = sqlite3_column_text(statement, column))
                        bytes.append(reinterpret_cast<const char *>(text),
                                     sqlite3_column_bytes(statement, column));
                    bytes.append('|');
                }
                if (bytes.size() < hashedAtOnce)
                    continue;
                hash.addData(bytes);
                bytes.resize(0);
            }
            sqlite3_finalize(statement);
        }
        hash.addData(bytes);
        return hash.result();
    }

private:
    static constexpr qsizetype hashedAtOnce = 64 * 1024;

    std::vector<std::string> tables()
    {
        std::vector<std::string> names;
        sqlite3_stmt *statement =
            prepare("select name from sqlite_master where type = 'table' order by name");
        while (sqlite3_step(statement) == SQLITE_ROW)
            names.emplace_back(reinterpret_cast<const char *>(sqlite3_column_text(statement, 0)));
        sqlite3_finalize(statement);
        return names;
    }
    sqlite3_stmt *prepare(const std::string &sql)
    {
        sqlite3_stmt *statement = nullptr;
        require(sqlite3_prepare_v2(m_db, sql.c_str(), -1, &statement, nullptr) == SQLITE_OK);
        return statement;
    }

    sqlite3 *m_db = nullptr;
};

/** Reads and writes without more, which is quicker than QFile::copy with its file of a temporary name. */
inline void copyFile(const QString &from, const QString &to, bool reachesDisk = false)
{
    constexpr qsizetype copiedAtOnce = 1024 * 1024;
    QFile source(from);
    QFile target(to);
    require(source.open(QIODevice::ReadOnly | QIODevice::Unbuffered)
            && target.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    QByteArray bytes(copiedAtOnce, Qt::Uninitialized);
    while (const qint64 length = source.read(bytes.data(), bytes.size()))
        require(length > 0 && target.write(bytes.constData(), length) == length);
    require(!reachesDisk || fsync(target.handle()) == 0);
}

} // namespace Bare
