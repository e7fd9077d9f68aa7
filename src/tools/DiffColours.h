#pragma once

#include "tools/ProjectDiff.h"

class QColor;
class QPalette;

/** The colours of differences: readable on the palette's list background, light or dark. */
namespace DiffColours {

/** An item that only holds differing ones has the palette's own colour. */
QColor text(ProjectDiff::State state, const QPalette &palette);
/** The background of a row whose values differ. */
QColor differingRow(const QPalette &palette);

} // namespace DiffColours
