#include "forms/output/MessageColours.h"

#include <QColor>
#include <QPalette>

#include <array>

namespace {

struct Row
{
    QRgb onLight;
    QRgb onDark;
};

// In the order of the levels; information has the palette's own colour.
constexpr std::array rows{
    Row{0, 0},
    Row{0xFF1B6E2E, 0xFF81C995}, // correction: green
    Row{0xFF0B5CAD, 0xFF8AB4F8}, // hint: blue
    Row{0xFF8A4B00, 0xFFFFC266}, // warning: amber
    Row{0xFFB00020, 0xFFFF8A80}, // error: red
};

constexpr qreal dimming = 0.35; // share of the background in a dimmed text
constexpr int middleLightness = 128;

} // namespace

QColor MessageColours::text(MessageLevel level, const QPalette &palette)
{
    if (level == MessageLevel::Info)
        return palette.color(QPalette::Text);
    const Row &row = rows.at(size_t(level));
    const bool isDark = palette.color(QPalette::Base).lightness() < middleLightness;
    return QColor::fromRgb(isDark ? row.onDark : row.onLight);
}

QColor MessageColours::dimmedText(const QPalette &palette)
{
    const QColor text = palette.color(QPalette::Text);
    const QColor base = palette.color(QPalette::Base);
    const auto mix = [](int front, int back) { return int(front * (1 - dimming) + back * dimming); };
    return {mix(text.red(), base.red()), mix(text.green(), base.green()), mix(text.blue(), base.blue())};
}
