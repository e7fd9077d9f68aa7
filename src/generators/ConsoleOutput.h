#pragma once

#include <QString>

/** Messages as a build log and a text file show them. */
namespace ConsoleOutput {

/**
 * The text of a rich message in one line: the tags that messages use are dropped, entities become their
 * characters, line breaks inside become " | ". What merely looks like a tag, such as "<stdlib.h>", stays.
 */
QString plainText(const QString &richText);

} // namespace ConsoleOutput
