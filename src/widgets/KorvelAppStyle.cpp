#include "widgets/KorvelAppStyle.h"

#include "widgets/GuiHelper.h"

#include <QPainter>
#include <QPalette>
#include <QStyleOption>

using namespace Qt::StringLiterals;

namespace {

constexpr int toolBarIconPixels = 22; // the size that the icons are drawn for
constexpr double readableContrast = 3.0; // WCAG 2.1, what large text needs
constexpr QRgb linkOnDark = 0xff62aeea;
constexpr QRgb visitedLinkOnDark = 0xffb491de;
constexpr int placeholderAlpha = 128;
constexpr int headerShadePercent = 107;
constexpr int openPageMarkPixels = 3;

/** Exchanges a colour that cannot be read on the background of input fields. */
void makeReadable(QPalette &palette, QPalette::ColorRole role, const QColor &replacement)
{
    if (GuiHelper::contrast(palette.color(role), palette.color(QPalette::Base)) < readableContrast)
        palette.setColor(role, replacement);
}

/**
 * The header of a page of a tool box: flat, with a mark at the page that is open. The palette is that of the
 * box: some headers keep a colour of their own when the desktop turns dark.
 */
void drawToolBoxTab(const QStyleOption &option, const QPalette &palette, QPainter &painter)
{
    const bool dark = GuiHelper::isDark(palette);
    const auto shaded = [dark](const QColor &colour) {
        return dark ? colour.lighter(headerShadePercent) : colour.darker(headerShadePercent);
    };
    QColor ground = shaded(palette.color(QPalette::Window));
    if (option.state & QStyle::State_MouseOver && option.state & QStyle::State_Enabled)
        ground = shaded(ground);
    const QRect header = option.rect.adjusted(0, 1, 0, -1);
    painter.fillRect(header, ground);
    if (option.state & QStyle::State_Selected)
        painter.fillRect(header.x(), header.y(), openPageMarkPixels, header.height(),
                         palette.color(QPalette::Highlight));
    if (option.state & QStyle::State_HasFocus) {
        painter.setPen(palette.color(QPalette::Highlight));
        painter.drawRect(header.adjusted(0, 0, -1, -1));
    }
}

} // namespace

KorvelAppStyle::KorvelAppStyle() : QProxyStyle(u"Fusion"_s) { }

void KorvelAppStyle::polish(QPalette &palette)
{
    QProxyStyle::polish(palette);
    if (!GuiHelper::isDark(palette))
        return;
    makeReadable(palette, QPalette::Link, QColor(linkOnDark));
    makeReadable(palette, QPalette::LinkVisited, QColor(visitedLinkOnDark));
    QColor placeholder = palette.color(QPalette::Text);
    placeholder.setAlpha(placeholderAlpha);
    makeReadable(palette, QPalette::PlaceholderText, placeholder);
}

void KorvelAppStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                                 const QWidget *widget) const
{
    if (element == CE_ToolBoxTabShape)
        drawToolBoxTab(*option, widget ? widget->palette() : option->palette, *painter);
    else
        QProxyStyle::drawControl(element, option, painter, widget);
}

int KorvelAppStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    return metric == PM_ToolBarIconSize ? toolBarIconPixels
                                        : QProxyStyle::pixelMetric(metric, option, widget);
}

int KorvelAppStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                              QStyleHintReturn *returnData) const
{
    switch (hint) {
    case SH_ItemView_ActivateItemOnSingleClick: // some desktops do, which turns every selection into an edit
    case SH_DialogButtonBox_ButtonsHaveIcons: // Fusion's own are black, also on dark buttons
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}
