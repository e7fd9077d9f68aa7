#pragma once

#include <QString>

#include <span>

/** Removes files of the folder that an earlier run has left; what is not there, or no file, is passed over.
 */
void removeStaleFiles(const QString &folder, std::span<const char *const> names);
