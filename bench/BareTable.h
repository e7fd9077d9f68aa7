#pragma once

#include "store/ObjectDataBase.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <sqlite3.h>
#include <string>
#include <vector>

/** The rows that both sides write, and an SQLite table that is filled without a store. */
namespace Bare {

/** Rows like those of a large device: names repeat, values mostly do not. */
inline QList<ObjectDataBase::SubEntry> entries(int count)
{
    QList<ObjectDataBase::SubEntry> rows;
    rows.reserve(count);
    for (int i = 0; i < count; ++i) {
        ObjectDataBase::SUBINDEX_DATA_T data;
        data.name = QStringLiteral("Application parameter %1").arg(i % 1000);
        data.datatype = 7;
        data.accesstype = QStringLiteral("rw");
        data.defaultvalue = QStringLiteral("0x%1").arg(i, 8, 16, QLatin1Char('0'));
        data.currentvalue = QString::number(i);
        data.pdomapping = PDOMapping(PDOMapping::Allowed);
        data.lowlimit = QStringLiteral("0");
        data.uplimit = QStringLiteral("4294967295");
        data.size = 4;
        data.allowedaccesstypes = QStringLiteral("const,ro,rw,wo,rww,rwr");
        data.implementation = 0;
        data.varname = QStringLiteral("parameter_%1").arg(i);
        data.description = QStringLiteral("Set point of drive %1, in increments per second").arg(i % 500);
        data.category = 1;
        data.writedefaulttoeds = true;
        data.denotation = QStringLiteral("Drive %1").arg(i % 200);
        rows.append(
            {.line = 0, .index = quint16(0x2000 + i / 200), .subindex = quint8(i % 200), .data = data});
    }
    return rows;
}

/** What one row binds: integers, and texts as UTF-8 that is ready to bind. */
struct Row
{
    std::vector<sqlite3_int64> numbers;
    std::vector<std::string> texts;
};

/** An SQLite connection with the pragmas of a working file, on the disk of the working files. */
class Table
{
public:
    static constexpr int columns = 31;

    explicit Table(ObjectDataBase &model)
    {
        const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
        QDir().mkpath(folder);
        m_path = (folder + QStringLiteral("/bare")).toUtf8();
        QFile::remove(QString::fromUtf8(m_path));
        check(sqlite3_open(m_path.constData(), &m_db) == SQLITE_OK);
        for (const char *pragma :
             {"PRAGMA page_size = 4096", "PRAGMA cache_size = 16384", "PRAGMA temp_store = MEMORY",
              "PRAGMA journal_mode = OFF", "PRAGMA locking_mode = EXCLUSIVE", "PRAGMA synchronous = OFF"})
            run(pragma);
        check(model.executeSql(QStringLiteral("select sql from sqlite_master where name = 'SubObjects0'")));
        run(model.sqlResult().constFirst().toUtf8().constData());
    }
    ~Table()
    {
        sqlite3_close(m_db);
        QFile::remove(QString::fromUtf8(m_path));
    }
    Q_DISABLE_COPY_MOVE(Table)

    /** The same values as the store binds; pool ids are taken from the store beforehand. */
    static std::vector<Row> rows(ObjectDataBase &model, const QList<ObjectDataBase::SubEntry> &entries)
    {
        std::vector<Row> result;
        for (const ObjectDataBase::SubEntry &entry : entries) {
            const ObjectDataBase::SUBINDEX_DATA_T &d = entry.data;
            const auto text = [](const QString &value) { return value.toUtf8().toStdString(); };
            result.push_back(
                {{entry.index,
                  entry.subindex,
                  model.addString(d.name),
                  d.datatype,
                  d.pdomapping.toUInt(),
                  d.size,
                  d.defaultineds,
                  d.limitineds,
                  d.refuseread,
                  d.refusewrite,
                  d.implementation,
                  model.addString(d.description),
                  d.category,
                  d.writedefaulttoeds,
                  d.cyclicread,
                  d.dcfcomponent,
                  d.changedbyuser,
                  d.wizardsource,
                  model.addString(d.denotation),
                  d.sharedlines,
                  d.managedbylvx,
                  d.signalid,
                  d.nvstorage},
                 {text(d.accesstype), text(d.defaultvalue), text(d.currentvalue), text(d.lowlimit),
                  text(d.uplimit), text(d.allowedaccesstypes), text(d.varname)}});
        }
        return result;
    }

    /** One prepared statement, one transaction. */
    void insert(const std::vector<Row> &rows)
    {
        std::string sql = "insert or replace into SubObjects0 values(?";
        for (int column = 1; column < columns; ++column)
            sql += ",?";
        sqlite3_stmt *statement = prepare((sql + ')').c_str());
        run("BEGIN");
        for (const Row &row : rows) {
            bind(statement, row);
            check(sqlite3_step(statement) == SQLITE_DONE);
            sqlite3_reset(statement);
        }
        run("COMMIT");
        sqlite3_finalize(statement);
    }

    /** Reads every column of every row once; gives something that depends on all of them. */
    sqlite3_int64 select()
    {
        sqlite3_stmt *statement = prepare(
            "select name,datatype,accesstype,allowedaccesstypes,currentvalue,defaultineds,defaultvalue,"
            "description,implementation,limitineds,lowlimit,pdomapping,refuseread,refusewrite,size,"
            "uplimit,varname,category,writedefaulttoeds,cyclicread,dcfcomponent,changedbyuser,"
            "wizardsource,denotation,sharedlines,managedbylvx,signalid,nvstorage,metadata,objectindex,"
            "subindex from SubObjects0");
        sqlite3_int64 sum = 0;
        while (sqlite3_step(statement) == SQLITE_ROW) {
            for (int column = 0; column < columns; ++column)
                sum += value(statement, column);
        }
        sqlite3_finalize(statement);
        return sum;
    }

private:
    static void check(bool success)
    {
        if (!success)
            std::abort();
    }
    void run(const char *sql) { check(sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr) == SQLITE_OK); }
    sqlite3_stmt *prepare(const char *sql)
    {
        sqlite3_stmt *statement = nullptr;
        check(sqlite3_prepare_v2(m_db, sql, -1, &statement, nullptr) == SQLITE_OK);
        return statement;
    }

    static bool isText(int column)
    {
        // accesstype, defaultvalue, currentvalue, lowlimit, uplimit, allowedaccesstypes, varname
        return (column >= 4 && column <= 6) || column == 8 || column == 9 || column == 15 || column == 17;
    }

    static void bind(sqlite3_stmt *statement, const Row &row)
    {
        size_t number = 0;
        size_t text = 0;
        for (int column = 0; column < columns - 1; ++column) {
            if (isText(column)) {
                const std::string &utf8 = row.texts[text++];
                sqlite3_bind_text(statement, column + 1, utf8.data(), int(utf8.size()), SQLITE_STATIC);
            } else {
                sqlite3_bind_int64(statement, column + 1, row.numbers[number++]);
            }
        }
        sqlite3_bind_null(statement, columns); // metadata
    }

    static sqlite3_int64 value(sqlite3_stmt *statement, int column)
    {
        if (sqlite3_column_type(statement, column) != SQLITE_TEXT)
            return sqlite3_column_int64(statement, column);
        benchmark::DoNotOptimize(sqlite3_column_text(statement, column));
        return sqlite3_column_bytes(statement, column);
    }

    QByteArray m_path;
    sqlite3 *m_db = nullptr;
};

} // namespace Bare
