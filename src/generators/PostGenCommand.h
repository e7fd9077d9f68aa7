#pragma once

#include <QString>
#include <QStringList>

class ObjectDataBase;

/** The user's command that follows a generation. */
struct PostGenCommand
{
    QString program; ///< empty: there is none
    QStringList arguments;
    bool wait = false; ///< the run ends with the command only

    /**
     * The project's own command where that is switched on, else the user's global one. In the arguments
     * "%P" stands for the project file, "%D" for its folder, "%N" for its file name; they are split at
     * blanks afterwards, two blanks hold an empty argument between them.
     */
    static PostGenCommand read(ObjectDataBase &store, const QString &outputDir, const QString &projectName);
};
