#include "app/WindowPlacement.h"

#include "app/UserSettings.h"

#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView sizeKey{"Geometry/size"};
constexpr QLatin1StringView positionKey{"Geometry/pos"};
constexpr QLatin1StringView maximizedKey{"Geometry/maximized"};
constexpr QSize defaultSize{400, 400};
constexpr QPoint defaultPosition{200, 200};
constexpr QPoint safePosition{100, 30}; // below a menu bar at the top of the first screen

} // namespace

void WindowPlacement::restore(QMainWindow &window, bool hiddenRun)
{
    const UserSettings settings;
    window.resize(settings.value(sizeKey, defaultSize).toSize());
    window.move(settings.value(positionKey, defaultPosition).toPoint());
    if (!hiddenRun && settings.value(maximizedKey, false).toBool())
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

void WindowPlacement::store(const QMainWindow &window)
{
    UserSettings settings;
    const bool maximized = window.isMaximized();
    settings.setValue(sizeKey, maximized ? window.normalGeometry().size() : window.size());
    settings.setValue(positionKey, maximized ? window.normalGeometry().topLeft() : window.pos());
    settings.setValue(maximizedKey, maximized);
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
