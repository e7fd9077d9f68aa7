#pragma once

#include <QString>

/**
 * The private database files that projects are edited in.
 *
 * They lie in the application's local data folder under random names. A process deletes its own at its
 * end; those of a crashed one stay until they are stale.
 */
namespace WorkingFiles {

/** A working file nobody has touched for this many days may be a left-over. */
constexpr int staleAfterDays = 7;

/** Makes an empty file of a name that no other store has; an empty text when the folder cannot be written. */
QString create();

/**
 * Deletes left-overs of crashed processes; a file that a running process has open stays, however old.
 * To be called before the first store opens: a process does not see its own locks.
 */
void removeStale();

/** True when another process holds SQLite's lock on the file. */
bool isInUse(const QString &path);

} // namespace WorkingFiles
