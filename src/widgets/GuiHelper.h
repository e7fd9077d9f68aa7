#pragma once

#include "widgets/WaitCursor.h"

#include <QFont>
#include <QIcon>
#include <QList>
#include <QRect>
#include <QString>

#include <memory>

class QColor;
class QPalette;
class QSettings;
class QWidget;

/** Small things that every window of the program does in the same way. */
namespace GuiHelper {

/** The application's name, two blanks and its version: the title of all message boxes. */
QString productTitle();

/** The user's settings of this edition and major version, open for one reading or writing task. */
std::unique_ptr<QSettings> userSettings();

/** The system's font of fixed pitch, in its own size unless one is given (points). */
QFont monospacedFont(qreal pointSize = 0);

/** What of a text fits into a width (pixels) in the widget's font; a path keeps both of its ends. */
QString elided(const QString &text, const QWidget &widget, int width,
               Qt::TextElideMode mode = Qt::ElideMiddle);

/** True when the palette writes light text on dark windows. */
bool isDark(const QPalette &palette);
/** The contrast of two opaque colours as WCAG 2.1 counts it: 1 (the same) to 21 (black and white). */
double contrast(const QColor &first, const QColor &second);

/**
 * The icon of a name such as "file-open", which follows light and dark palettes by itself. An unknown
 * name is told in the log and gives a null icon.
 */
QIcon icon(const QString &name);
/**
 * Gives each action and button below `root` the icon that its dynamic property "iconName" names; a form
 * sets that property.
 */
void setIcons(const QWidget &root);

/**
 * A window's place on the screen that shows most of it, the first one when none does: moved and, if it is
 * too big, shrunk so that all of it is visible. Without any screen it stays as it is.
 */
QRect fitted(const QRect &window, const QList<QRect> &screens);
/** Moves a window that is not wholly visible onto a connected screen. */
void ensureVisible(QWidget &window);
/** Puts a window where storeGeometry() left it, visibly; false when nothing has been stored. */
bool restoreGeometry(QWidget &window, const QString &name);
void storeGeometry(const QWidget &window, const QString &name);

/**
 * The folder in which a file dialog begins. Each purpose ("import", "dbc") has a folder of its own;
 * before its first use, and when that folder has gone, it is the project folder, at last the home folder.
 */
QString dialogFolder(const QString &purpose);
/** Keeps the folder of the file that was chosen for dialogFolder(). */
void rememberDialogFolder(const QString &purpose, const QString &chosenFile);

} // namespace GuiHelper
