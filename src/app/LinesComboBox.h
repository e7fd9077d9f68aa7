#pragma once

#include <QComboBox>

/**
 * The box of CAN lines in the tool bar, whose last entries are commands.
 *
 * An entry acts as soon as it is chosen. Keys that walk over the entries of other boxes therefore open the
 * list of this one, where Enter chooses, and the wheel does nothing at all.
 */
class LinesComboBox : public QComboBox
{
    Q_OBJECT

public:
    using QComboBox::QComboBox;

    /** The list is as wide as its longest entry, which may be wider than the box. */
    void showPopup() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
};
