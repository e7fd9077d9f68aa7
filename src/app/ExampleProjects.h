#pragma once

#include <QList>
#include <QString>

/** The example projects that come with an installed protocol stack. */
namespace ExampleProjects {

struct Example
{
    QString title; ///< folder of the example and file name
    QString path;
};

/**
 * The project files of the stack's example folders, in the order of the folders and by name in each. Of
 * a multi-line example only the first slave's project is listed, which holds all lines. A folder that is
 * not there is passed over.
 */
QList<Example> find(const QString &stackPath);

} // namespace ExampleProjects
