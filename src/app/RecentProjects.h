#pragma once

#include <QStringList>

/** The projects that the user opened or saved last, kept in the user's settings. */
namespace RecentProjects {

inline constexpr int maximum = 10;

/** Puts the path at the head of the list; the oldest one behind the maximum is forgotten. */
void add(const QString &path);
/** The remembered files that are still there, the newest first. */
QStringList existing();

} // namespace RecentProjects
