#pragma once

#include "store/commands/ImportHandler.h"

#include <QMap>
#include <QString>

#include <optional>

/** The text side of import command files. */
namespace ImportCommands {

/** Paths of the source projects by their numbers. */
using ProjectMap = QMap<uint, QString>;

struct CommandFile
{
    bool hasKeys = false; ///< at least one key stands in one of the sections
    bool deleteObjects = false;
    ProjectMap projects;
    QList<ImportHandler::actionSetting> actions; ///< without the values that are no command
};

/**
 * Reads a command file.
 *
 * Single backslashes, which an INI file takes for escapes, may stand in project paths: of the readings
 * of a path the one that names a file counts.
 */
CommandFile read(const QString &path);

/**
 * Reads one command; nothing for a text of no known form, with a number that is none or with one that
 * its place cannot hold. Numbers are in C notation, letter case does not matter.
 */
std::optional<ImportHandler::actionSetting> parseAction(const QString &text, const ProjectMap &projects);

} // namespace ImportCommands
