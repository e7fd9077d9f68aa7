#pragma once

#include <QProxyStyle>

/** The same look on every desktop: Fusion with the system's palette, light or dark, and icons of one size. */
class KorvelAppStyle : public QProxyStyle
{
    Q_OBJECT

public:
    KorvelAppStyle();

    /** Makes links and hints readable on dark desktops whose palettes leave them in their dark defaults. */
    void polish(QPalette &palette) override;
    using QProxyStyle::polish;

    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget = nullptr) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption *option = nullptr,
                    const QWidget *widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption *option = nullptr, const QWidget *widget = nullptr,
                  QStyleHintReturn *returnData = nullptr) const override;
};
