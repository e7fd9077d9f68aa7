#include "widgets/KorvelAppStyle.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int toolBarIconPixels = 22; // the size that the icons are drawn for

} // namespace

KorvelAppStyle::KorvelAppStyle() : QProxyStyle(u"Fusion"_s) { }

int KorvelAppStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    return metric == PM_ToolBarIconSize ? toolBarIconPixels
                                        : QProxyStyle::pixelMetric(metric, option, widget);
}

int KorvelAppStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                              QStyleHintReturn *returnData) const
{
    // Some desktops open items on a single click, which would turn every selection into an edit.
    return hint == SH_ItemView_ActivateItemOnSingleClick
        ? 0
        : QProxyStyle::styleHint(hint, option, widget, returnData);
}
