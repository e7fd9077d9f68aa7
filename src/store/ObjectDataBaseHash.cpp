// The content hash that tells whether another program has changed a project file.

#include "store/ObjectDataBasePrivate.h"

#include <QCryptographicHash>
#include <QVariant>

#include <sqlite3.h>

namespace {

constexpr qsizetype bufferSize = 64 * 1024;

/** Collects small pieces: the digest is only called once per 64 KiB. */
class Feeder
{
public:
    void feed(QByteArrayView bytes)
    {
        m_buffer.append(bytes.data(), bytes.size());
        if (m_buffer.size() >= bufferSize)
            flush();
    }
    void feed(char byte) { m_buffer.append(byte); }
    QString result()
    {
        flush();
        return QString::fromLatin1(m_hash.result().toHex());
    }

private:
    void flush()
    {
        m_hash.addData(m_buffer);
        m_buffer.resize(0);
    }

    QCryptographicHash m_hash{QCryptographicHash::Sha256};
    QByteArray m_buffer;
};

QByteArrayView columnBytes(sqlite3_stmt *statement, int column)
{
    const auto *bytes = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
    return {bytes, bytes ? sqlite3_column_bytes(statement, column) : 0};
}

QByteArray blobBytes(sqlite3_stmt *statement, int column)
{
    return {static_cast<const char *>(sqlite3_column_blob(statement, column)),
            sqlite3_column_bytes(statement, column)};
}

/** Text that is no UTF-8, with the replacement characters that SQLite puts in and a Qt reader gets. */
QByteArray repairedText(sqlite3_stmt *statement, int column)
{
    const auto *text = static_cast<const char16_t *>(sqlite3_column_text16(statement, column));
    return QStringView(text, sqlite3_column_bytes16(statement, column) / qsizetype(sizeof(char16_t)))
        .toUtf8();
}

/** Feeds what QVariant::toString makes of the value. */
void feedValue(Feeder &feeder, sqlite3_stmt *statement, int column)
{
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_NULL:
        return;
    case SQLITE_INTEGER:
        feeder.feed(columnBytes(statement, column));
        return;
    case SQLITE_FLOAT:
        feeder.feed(QVariant(sqlite3_column_double(statement, column)).toString().toUtf8());
        return;
    case SQLITE_TEXT: {
        const QByteArrayView bytes = columnBytes(statement, column);
        feeder.feed(QUtf8StringView(bytes).isValidUtf8() ? bytes
                                                         : QByteArrayView(repairedText(statement, column)));
        return;
    }
    default:
        feeder.feed(QVariant(blobBytes(statement, column)).toString().toUtf8());
        return;
    }
}

} // namespace

QString ObjectDataBase::contentHash()
{
    const ConnectionGate::Lease lease(d->connection.gate);
    Feeder feeder;
    const QStringList tables = d->tableNames();
    for (const QString &table : tables) {
        feeder.feed(table.toUtf8());
        feeder.feed('\n');
        const QString filter = table == QStringLiteral("MiscSettings")
            ? QStringLiteral("WHERE item NOT IN ('FileHash','TamperLog') ")
            : QString();
        const QByteArray sql =
            QStringLiteral("SELECT * FROM \"%1\" %2ORDER BY rowid").arg(table, filter).toUtf8();
        sqlite3_stmt *statement = nullptr;
        if (sqlite3_prepare_v2(d->connection.statements.connection(), sql.constData(), -1, &statement,
                               nullptr)
            != SQLITE_OK)
            continue;
        const int columns = sqlite3_column_count(statement);
        while (sqlite3_step(statement) == SQLITE_ROW) {
            for (int column = 0; column < columns; ++column) {
                feedValue(feeder, statement, column);
                feeder.feed('|');
            }
            feeder.feed('\n');
        }
        sqlite3_finalize(statement);
    }
    return feeder.result();
}
