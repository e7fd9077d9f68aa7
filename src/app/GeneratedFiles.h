#pragma once

#include <QString>
#include <QStringList>

/** The files of a generation run that the file viewer offers. */
namespace GeneratedFiles {

/** Where the files of a project lie. */
struct Place
{
    QString outputDir;
    QString projectName;
    quint8 line = 0; ///< documents of a project with several lines carry its number
};

/** Object names of the viewer's actions, in the order of the menu. */
QStringList actionNames();
/** The names that an action's file may have; documents of the line come before those of a single line. */
QStringList fileNames(const QString &actionName, const Place &place);
/** The path of the first of an action's names that is there; empty when none is. */
QString existingFile(const QString &actionName, const Place &place);

} // namespace GeneratedFiles
