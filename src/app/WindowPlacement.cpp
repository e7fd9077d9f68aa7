#include "app/WindowPlacement.h"

#include "app/UserSettings.h"
#include "widgets/GuiHelper.h"

#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize defaultSize{400, 400};
constexpr QPoint defaultPosition{200, 200};
constexpr QPoint safePosition{100, 30}; // below a menu bar at the top of the first screen
constexpr QSize workingSize{1000, 740}; // shows the pages' headers and a page of some twenty rows
// About: a window that comes up does not know its frame yet.
constexpr int titleBarHeight = 40;
constexpr int frameWidth = 8;

} // namespace

void WindowPlacement::restore(QMainWindow &window, bool hiddenRun)
{
    const UserSettings settings;
    window.resize(settings.value(SettingsKeys::windowSize, defaultSize).toSize());
    window.move(settings.value(SettingsKeys::windowPosition, defaultPosition).toPoint());
    if (!hiddenRun && settings.value(SettingsKeys::windowMaximized, false).toBool())
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

void WindowPlacement::store(const QMainWindow &window)
{
    UserSettings settings;
    const bool maximized = window.isMaximized();
    settings.setValue(SettingsKeys::windowSize, maximized ? window.normalGeometry().size() : window.size());
    settings.setValue(SettingsKeys::windowPosition,
                      maximized ? window.normalGeometry().topLeft() : window.pos());
    settings.setValue(SettingsKeys::windowMaximized, maximized);
    // State of windows that other programs of the family read; it is kept as it was.
    for (const QLatin1StringView key : {SettingsKeys::tmpFloat, SettingsKeys::metadata})
        settings.write(key, settings.read(key));
}

void WindowPlacement::growAtFirstStart(QMainWindow &window)
{
    if (UserSettings().contains(SettingsKeys::windowSize))
        return;
    const QRect screen = window.screen()->availableGeometry().adjusted(0, 0, -frameWidth, -titleBarHeight);
    const QRect place = GuiHelper::fitted(QRect(window.pos(), workingSize), {screen});
    window.resize(place.size());
    window.move(place.topLeft());
}

bool WindowPlacement::isVisibleOn(const QList<QRect> &screens, QPoint position)
{
    return std::ranges::any_of(screens,
                               [position](const QRect &screen) { return screen.contains(position); });
}

void WindowPlacement::moveToConnectedScreen(QMainWindow &window)
{
    QList<QRect> areas;
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (const QScreen *screen : screens)
        areas.append(screen->availableGeometry());
    if (!isVisibleOn(areas, window.pos()))
        window.move(safePosition);
}
