#pragma once

#include "templates/TemplateProject.h"

/** Turns template sources that have been read into a database, through the store that will open it. */
namespace TemplateWriter {

/**
 * Writes the project to `path` as the store saves a template: all entries unchanged by the user, the
 * empty text first in the string pool. One source gives the same bytes each time.
 *
 * The saving application counts as the project's edition, so the application's name changes. False with
 * the reason in `error` when the store refuses something or the file cannot be written; a file that was
 * there is then as it was.
 */
bool write(const TemplateProject &project, const QString &path, QString *error);

} // namespace TemplateWriter
