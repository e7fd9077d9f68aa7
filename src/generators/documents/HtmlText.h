#pragma once

#include <QString>

/** Texts of the project in HTML that is XML, too. */
namespace HtmlText {

/** A text between tags or in an attribute; its line breaks as tags, without what XML has no place for. */
QString escaped(const QString &text);
/** A text inside of a comment, which two hyphens would end. */
QString comment(const QString &text);

} // namespace HtmlText
