#include "widgets/ElidedLabel.h"

#include <QPainter>

QSize ElidedLabel::minimumSizeHint() const
{
    return {0, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    const QRect area = contentsRect();
    QPainter painter(this);
    painter.drawText(area, Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), Qt::ElideMiddle, area.width()));
}
