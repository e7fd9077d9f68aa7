#include "tools/DiffColours.h"

#include "widgets/GuiHelper.h"

#include <QColor>
#include <QPalette>

namespace {

struct Row
{
    QRgb onLight;
    QRgb onDark;
};

// In the order of the states; an equal item has the palette's own colour.
constexpr std::array rows{
    Row{0, 0}, Row{0xFF8A4B00, 0xFFFFC266}, // different: amber
    Row{0xFF0B5CAD, 0xFF8AB4F8}, // only in the current project: blue
    Row{0xFF1B6E2E, 0xFF81C995}, // only in the other project: green
};

constexpr Row differing{0xFFFFEFC7, 0xFF4A3A14};

} // namespace

QColor DiffColours::text(ProjectDiff::State state, const QPalette &palette)
{
    if (state == ProjectDiff::State::Equal)
        return palette.color(QPalette::Text);
    const Row &row = rows.at(size_t(state));
    return QColor::fromRgb(GuiHelper::isDark(palette) ? row.onDark : row.onLight);
}

QColor DiffColours::differingRow(const QPalette &palette)
{
    return QColor::fromRgb(GuiHelper::isDark(palette) ? differing.onDark : differing.onLight);
}
