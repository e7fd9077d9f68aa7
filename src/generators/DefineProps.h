#pragma once

#include <QString>
#include <QStringList>

/** The names that the text of a C header defines, in their order, each once. */
QStringList definedSymbols(const QString &header);

/**
 * Writes gen_define.props, the defines of the header as MSBuild properties, and Directory.Build.props, which
 * imports them, so that a C# wrapper compiles with the same symbols as the stack. Without the header, or
 * without a define in it, the second file alone. True when both were written.
 */
bool writeDefinePropsFiles(const QString &defineFile, const QString &outputDir);
