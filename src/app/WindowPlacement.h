#pragma once

#include <QList>
#include <QRect>

class QMainWindow;

/** Where the main window stands, from one start of the program to the next. */
namespace WindowPlacement {

/** Applies the stored size and position; a hidden window never becomes a maximized one. */
void restore(QMainWindow &window, bool hiddenRun);
void store(const QMainWindow &window);
/** Makes a window of which no size has been stored yet big enough to work in, as far as its screen is. */
void growAtFirstStart(QMainWindow &window);

bool isVisibleOn(const QList<QRect> &screens, QPoint position);
/** Moves a window whose screen has gone to a place that every first screen has. */
void moveToConnectedScreen(QMainWindow &window);

} // namespace WindowPlacement
