#include "widgets/ElidedLabel.h"

#include "widgets/GuiHelper.h"

#include <QPainter>

QSize ElidedLabel::minimumSizeHint() const
{
    return {0, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    const QRect area = contentsRect().adjusted(margin(), margin(), -margin(), -margin());
    QPainter painter(this);
    painter.drawText(area, Qt::AlignVCenter | Qt::TextSingleLine,
                     GuiHelper::elided(text(), *this, area.width()));
}
