#pragma once

#include <QHash>
#include <QString>

#include <functional>
#include <optional>

class CodeWriter;

/** The C text of gen_srdo.c without what depends on the project, which is named by markers. */
namespace SrdoTemplate {

/** What is written in the place of a marker. */
using Block = std::function<void(CodeWriter &)>;

/**
 * The template of the stack installation that the user's settings name, if it has one, otherwise the
 * program's own; nothing where neither can be read. A relative path starts at the project's folder.
 */
std::optional<QString> read(bool multiLine, const QString &projectFolder);

/**
 * The text with every marker replaced by its block. Markers without a block stay as they are.
 *
 * In the multi-line form the word CAN_LINE becomes the argument that tells the line. A block that ends in a
 * line end does not double the one behind its marker, and one that writes nothing takes the line of a marker
 * that is alone on it away.
 */
QString filled(const QString &text, const QHash<QString, Block> &blocks, bool multiLine);

} // namespace SrdoTemplate
