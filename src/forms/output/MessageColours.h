#pragma once

#include "generators/MessageLevel.h"

class QColor;
class QPalette;

/** The colours of the message levels: readable on the palette's list background, light or dark. */
namespace MessageColours {

QColor text(MessageLevel level, const QPalette &palette);
/** The colour of what stands behind the message itself, such as its time. */
QColor dimmedText(const QPalette &palette);

} // namespace MessageColours
