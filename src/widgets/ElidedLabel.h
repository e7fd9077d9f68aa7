#pragma once

#include <QLabel>

/** A label for one long line, such as a path: it shows what fits and never widens its window. */
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    using QLabel::QLabel;

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};
