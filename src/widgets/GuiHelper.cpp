#include "widgets/GuiHelper.h"

#include "widgets/TintedIconEngine.h"

#include <QAbstractButton>
#include <QAction>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QPalette>
#include <QScreen>
#include <QSettings>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr const char *iconNameProperty = "iconName";

QString geometryKey(const QString &name)
{
    return "Windows/"_L1 + name;
}

QString folderKey(const QString &purpose)
{
    return "Folders/"_L1 + purpose;
}

qint64 area(const QRect &rect)
{
    return rect.isEmpty() ? 0 : qint64(rect.width()) * rect.height();
}

QList<QRect> screenAreas()
{
    QList<QRect> areas;
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (const QScreen *screen : screens)
        areas.append(screen->availableGeometry());
    return areas;
}

/** The relative luminance of WCAG 2.1, 0 (black) to 1 (white). */
double luminance(const QColor &colour)
{
    const auto linear = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
        + 0.0722 * linear(colour.blueF());
}

template <class Target>
void setIconsOf(const QWidget &root)
{
    const QList<Target *> targets = root.findChildren<Target *>();
    for (Target *target : targets) {
        const QString name = target->property(iconNameProperty).toString();
        if (!name.isEmpty())
            target->setIcon(GuiHelper::icon(name));
    }
}

} // namespace

QString GuiHelper::productTitle()
{
    return QCoreApplication::applicationName() + "  "_L1 + QCoreApplication::applicationVersion();
}

std::unique_ptr<QSettings> GuiHelper::userSettings()
{
    return std::make_unique<QSettings>(
        QCoreApplication::organizationName(),
        QCoreApplication::instance()->property("AppNameWithVersion").toString());
}

QFont GuiHelper::monospacedFont(qreal pointSize)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (pointSize > 0)
        font.setPointSizeF(pointSize);
    return font;
}

QString GuiHelper::elided(const QString &text, const QWidget &widget, int width, Qt::TextElideMode mode)
{
    return widget.fontMetrics().elidedText(text, mode, width);
}

bool GuiHelper::isDark(const QPalette &palette)
{
    return palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
}

double GuiHelper::contrast(const QColor &first, const QColor &second)
{
    constexpr double flare = 0.05;
    const auto [darker, lighter] = std::minmax({luminance(first), luminance(second)});
    return (lighter + flare) / (darker + flare);
}

QIcon GuiHelper::icon(const QString &name)
{
    const QString path = ":/icon/icon/"_L1 + name + ".svg"_L1;
    if (!QFile::exists(path)) {
        qWarning().noquote() << "There is no icon" << name;
        return {};
    }
    return QIcon(new TintedIconEngine(path));
}

void GuiHelper::setIcons(const QWidget &root)
{
    setIconsOf<QAction>(root);
    setIconsOf<QAbstractButton>(root);
}

QRect GuiHelper::fitted(const QRect &window, const QList<QRect> &screens)
{
    if (screens.isEmpty())
        return window;
    const auto shown = [&window](const QRect &screen) { return area(screen.intersected(window)); };
    const QRect screen = *std::ranges::max_element(screens, {}, shown);
    QRect result(window.topLeft(), window.size().boundedTo(screen.size()));
    result.moveRight(std::min(result.right(), screen.right()));
    result.moveBottom(std::min(result.bottom(), screen.bottom()));
    result.moveLeft(std::max(result.left(), screen.left()));
    result.moveTop(std::max(result.top(), screen.top()));
    return result;
}

void GuiHelper::ensureVisible(QWidget &window)
{
    const QRect frame = window.frameGeometry();
    const QRect place = fitted(frame, screenAreas());
    if (place == frame)
        return;
    window.resize(window.size() - (frame.size() - place.size()));
    window.move(place.topLeft());
}

bool GuiHelper::restoreGeometry(QWidget &window, const QString &name)
{
    const bool restored = window.restoreGeometry(userSettings()->value(geometryKey(name)).toByteArray());
    ensureVisible(window);
    return restored;
}

void GuiHelper::storeGeometry(const QWidget &window, const QString &name)
{
    userSettings()->setValue(geometryKey(name), window.saveGeometry());
}

QString GuiHelper::dialogFolder(const QString &purpose)
{
    const std::unique_ptr<QSettings> settings = userSettings();
    for (const QString &key : {folderKey(purpose), u"General/projectpath"_s}) {
        QString folder = settings->value(key).toString();
        if (!folder.isEmpty() && QFileInfo(folder).isDir())
            return folder;
    }
    return QDir::homePath();
}

void GuiHelper::rememberDialogFolder(const QString &purpose, const QString &chosenFile)
{
    userSettings()->setValue(folderKey(purpose), QFileInfo(chosenFile).absolutePath());
}
