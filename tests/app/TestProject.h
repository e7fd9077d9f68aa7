#pragma once

#include "store/ObjectDataBase.h"

#include <QCoreApplication>
#include <QFile>
#include <QScopeGuard>

/** Makes the project files that the tests open. */
namespace TestProject {

inline ObjectDataBase::PGN pgn(const QString &name, quint8 direction)
{
    ObjectDataBase::PGN result;
    result.name = name;
    result.direction = direction;
    result.priority = 6;
    return result;
}

/** Fills an empty store with the lines given, each of the type given. */
inline bool fill(ObjectDataBase &store, const QList<quint8> &lines, const QString &type)
{
    bool ok = store.createNewDataBase();
    for (const quint8 line : lines) {
        ok = ok && store.addNode(line, ObjectDataBase::NODE_DATA_T())
            && store.setGeneralSetting(QStringLiteral("line%1type").arg(line), type);
    }
    return ok;
}

/** Saves a project with line 0, as the edition of the given name does; no guess about its content else. */
inline bool save(const QString &path, const QString &editionName, const QString &type)
{
    const auto name = qScopeGuard(
        [former = QCoreApplication::applicationName()] { QCoreApplication::setApplicationName(former); });
    QCoreApplication::setApplicationName(editionName);
    ObjectDataBase store;
    return fill(store, {0}, type) && store.saveProject(path);
}

/** Writes a file of its own content, such as commands for an import. */
inline bool write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

} // namespace TestProject
