#pragma once

#include <QProxyStyle>

/** The same look on every desktop: Fusion with the system's palette, and tool bar icons of one size. */
class KorvelAppStyle : public QProxyStyle
{
    Q_OBJECT

public:
    KorvelAppStyle();

    int pixelMetric(PixelMetric metric, const QStyleOption *option = nullptr,
                    const QWidget *widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption *option = nullptr, const QWidget *widget = nullptr,
                  QStyleHintReturn *returnData = nullptr) const override;
};
