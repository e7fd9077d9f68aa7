#pragma once

#include <QString>

#include <functional>

class QFile;

/**
 * Replaces a file so that a killed process, a full disk or a power cut never costs its content.
 *
 * The new content is written to "<path>.new" beside the file and flushed to the disk. Only then the former
 * file is renamed to the backup name (if one is given), and the new one to the path. At every moment the
 * file or its backup is whole; after a failure the file is what it was.
 */
namespace SafeFile {

/** Writes through `write`, which gives false on failure. False with the reason in `error`. */
bool replace(const QString &path, const QString &backup, const std::function<bool(QFile &)> &write,
             QString *error);

} // namespace SafeFile
