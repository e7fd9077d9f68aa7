#pragma once

#include <QMessageBox>
#include <QPointer>

/**
 * The program's message boxes, all with the same title.
 *
 * In a hidden run nobody may be there to see a box, so its text and the fact that the program waits also
 * go to the log as warnings.
 */
class UserMessages
{
public:
    UserMessages(QWidget *parent, bool hiddenRun);

    QMessageBox::StandardButton warning(const QString &text, const QString &informativeText,
                                        QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                                        QMessageBox::StandardButton defaultButton = QMessageBox::Ok) const;
    /** A notice that the user only takes note of. */
    void information(const QString &text) const;
    /** An extra button (empty: none) answers nothing: when it is clicked the result is NoButton. */
    QMessageBox::StandardButton question(const QString &text, const QString &informativeText,
                                         QMessageBox::StandardButtons buttons,
                                         QMessageBox::StandardButton defaultButton,
                                         const QString &extraButton = QString()) const;
    /** Tells the log of a hidden run that a box or dialog with the given text comes up; otherwise nothing. */
    void logWaiting(const QString &text) const;

private:
    QMessageBox::StandardButton show(QMessageBox::Icon icon, const QString &text,
                                     const QString &informativeText, QMessageBox::StandardButtons buttons,
                                     QMessageBox::StandardButton defaultButton,
                                     const QString &extraButton = QString()) const;

    QPointer<QWidget> m_parent;
    bool m_hiddenRun;
};
