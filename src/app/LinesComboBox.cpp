#include "app/LinesComboBox.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QWheelEvent>

#include <algorithm>
#include <array>

namespace {

/** Keys with which a usual box takes another entry without showing the others. */
bool walksOverEntries(const QKeyEvent &event)
{
    constexpr std::array keys{Qt::Key_Up,       Qt::Key_Down, Qt::Key_PageUp,
                              Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End};
    const bool isTyped = !event.text().isEmpty() && event.text().front().isPrint()
        && (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0;
    return isTyped || std::ranges::find(keys, event.key()) != keys.end();
}

} // namespace

void LinesComboBox::showPopup()
{
    const int frame = 2 * view()->frameWidth();
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + frame);
    QComboBox::showPopup();
}

void LinesComboBox::keyPressEvent(QKeyEvent *event)
{
    if (walksOverEntries(*event))
        showPopup();
    else
        QComboBox::keyPressEvent(event);
}

void LinesComboBox::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}
