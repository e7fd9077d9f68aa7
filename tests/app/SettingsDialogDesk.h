#pragma once

#include "app/SettingsDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>

/** A user at the settings dialog. */
namespace SettingsDialogDesk {

template <typename Widget>
Widget *find(const SettingsDialog &dialog, const char *name)
{
    return dialog.findChild<Widget *>(QString::fromLatin1(name));
}

/** Brings up the page that a widget is on. */
inline void showPageOf(const SettingsDialog &dialog, const QWidget *widget)
{
    const auto *pages = find<QStackedWidget>(dialog, "swPages");
    for (int page = 0; page < pages->count(); ++page)
        if (pages->widget(page)->isAncestorOf(widget))
            find<QListWidget>(dialog, "lwPages")->setCurrentRow(page);
}

inline void press(const SettingsDialog &dialog, QDialogButtonBox::StandardButton button)
{
    QTest::mouseClick(find<QDialogButtonBox>(dialog, "buttonBox")->button(button), Qt::LeftButton);
}

inline void toggle(QWidget *widget)
{
    widget->setFocus();
    QTest::keyClick(widget, Qt::Key_Space);
}

/** Gives a widget the value as a user does, by keys. */
inline void enter(const SettingsDialog &dialog, const char *name, const QVariant &value)
{
    auto *widget = find<QWidget>(dialog, name);
    QVERIFY(widget);
    showPageOf(dialog, widget);
    QVERIFY2(widget->isVisible(), name);
    if (auto *line = qobject_cast<QLineEdit *>(widget)) {
        line->selectAll();
        QTest::keyClick(line, Qt::Key_Delete);
        QTest::keyClicks(line, value.toString());
    } else if (auto *box = qobject_cast<QComboBox *>(widget)) {
        while (box->currentIndex() != value.toInt())
            QTest::keyClick(box, box->currentIndex() < value.toInt() ? Qt::Key_Down : Qt::Key_Up);
    } else if (widget->property("checked").toBool() != value.toBool()) {
        toggle(widget);
    }
}

inline QVariant shown(const SettingsDialog &dialog, const char *name)
{
    const auto *widget = find<QWidget>(dialog, name);
    if (const auto *line = qobject_cast<const QLineEdit *>(widget))
        return line->text();
    if (const auto *box = qobject_cast<const QComboBox *>(widget))
        return box->currentIndex();
    return widget->property("checked");
}

} // namespace SettingsDialogDesk
