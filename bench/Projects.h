#pragma once

#include "BareFile.h"
#include "BareTable.h"

#include <QLoggingCategory>
#include <QTemporaryDir>

/** Projects of a given size as files, on the disk of the working files. */
namespace Projects {

/** Objects of 20 sub-indices; every sub-index has a name and a description of its own in the pool. */
inline QList<ObjectDataBase::SubEntry> entries(int count)
{
    constexpr int subIndicesPerObject = 20;
    constexpr quint16 firstIndex = 0x2000;
    QList<ObjectDataBase::SubEntry> rows = Bare::entries(count);
    for (int i = 0; i < count; ++i) {
        ObjectDataBase::SubEntry &row = rows[i];
        row.index = quint16(firstIndex + i / subIndicesPerObject);
        row.subindex = quint8(i % subIndicesPerObject);
        row.data.name = QStringLiteral("Parameter %1 of drive object %2").arg(row.subindex).arg(row.index);
        row.data.description = QStringLiteral("Set point %1 of drive %2, in increments per second")
                                   .arg(row.subindex)
                                   .arg(row.index);
    }
    return rows;
}

inline void fill(ObjectDataBase &store, int subIndices)
{
    Bare::require(store.createNewDataBase());
    Bare::require(store.setGeneralSetting(QStringLiteral("line0type"), QStringLiteral("1")));
    const QList<ObjectDataBase::SubEntry> rows = entries(subIndices);
    for (const ObjectDataBase::SubEntry &row : rows) {
        if (row.subindex != 0)
            continue;
        ObjectDataBase::INDEX_DATA_T object;
        object.name = QStringLiteral("Drive object %1").arg(row.index);
        object.description = QStringLiteral("What drive object %1 is for").arg(row.index);
        Bare::require(store.addIndex(0, row.index, object));
    }
    Bare::require(store.addSubIndices(rows));
}

/** A folder for project files that lasts as long as the program. */
inline QString path(const QString &name)
{
    static const QTemporaryDir folder = [] {
        const QString data = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
        QDir().mkpath(data);
        return QTemporaryDir(data + QStringLiteral("/projects-XXXXXX"));
    }();
    return folder.filePath(name);
}

/** Path of a saved project of that size; made when it is first asked for. */
inline QString saved(int subIndices, const QString &suffix)
{
    const QString file = path(QStringLiteral("%1.%2").arg(subIndices).arg(suffix));
    if (!QFile::exists(file)) {
        ObjectDataBase store;
        fill(store, subIndices);
        Bare::require(store.saveProject(file));
    }
    return file;
}

/** Runs the benchmarks of a program, with working files of their own and without the log of the store. */
inline int run(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

} // namespace Projects
