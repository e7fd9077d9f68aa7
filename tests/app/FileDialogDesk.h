#pragma once

#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

/** A user at the file dialogs that actions bring up. */
namespace FileDialogDesk {

/** What a dialog showed before it was cancelled. */
struct SeenDialog
{
    QString title;
    QString folder;
    QString name;
    QString filter;
    QStringList filters;
    int count = 0; ///< of dialogs that came up
};

/** Runs an action whose file dialog is looked at and then cancelled. */
inline SeenDialog cancelled(QAction *action)
{
    SeenDialog seen;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&seen] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        seen = {dialog->windowTitle(),
                dialog->directory().absolutePath(),
                dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->text(),
                dialog->selectedNameFilter(),
                dialog->nameFilters(),
                seen.count + 1};
        dialog->reject();
    });
    timer.start(5);
    action->trigger();
    return seen;
}

/** Runs an action whose file dialog gets a name, and before that maybe another filter. */
inline void accepted(QAction *action, const QString &name, const QString &filter = {})
{
    bool seen = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isActiveWindow())
            return; // before it is active, its field cannot have the focus
        seen = true;
        if (!filter.isEmpty()) {
            dialog->selectNameFilter(filter);
            Q_EMIT dialog->filterSelected(filter);
        }
        auto *field = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        field->setFocus(); // what is typed counts more than what the list has selected
        field->setText(name);
        QMetaObject::invokeMethod(dialog, "accept");
    });
    timer.start(5);
    action->trigger();
    QVERIFY(seen);
}

} // namespace FileDialogDesk
