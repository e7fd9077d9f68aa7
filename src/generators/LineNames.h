#pragma once

#include <QString>

/** What a line adds to the names of its tables, so that lines do not clash; nothing in a single-line form. */
namespace LineNames {

/** "l1_" */
inline QString prefix(quint8 line, bool multiLine)
{
    return multiLine ? QStringLiteral("l%1_").arg(line) : QString();
}

/** "_l1" */
inline QString suffix(quint8 line, bool multiLine)
{
    return multiLine ? QStringLiteral("_l%1").arg(line) : QString();
}

} // namespace LineNames
