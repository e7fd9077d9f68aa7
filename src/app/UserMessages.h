#pragma once

#include <QMessageBox>
#include <QPointer>

/**
 * The program's message boxes, all with the same title.
 *
 * In a hidden run nobody may be there to see a box, so its text also goes to the log as a warning.
 */
class UserMessages
{
public:
    UserMessages(QWidget *parent, bool hiddenRun);

    void warning(const QString &text, const QString &informativeText = {}) const;
    QMessageBox::StandardButton question(const QString &text, const QString &informativeText,
                                         QMessageBox::StandardButtons buttons,
                                         QMessageBox::StandardButton defaultButton) const;

private:
    QMessageBox::StandardButton show(QMessageBox::Icon icon, const QString &text,
                                     const QString &informativeText, QMessageBox::StandardButtons buttons,
                                     QMessageBox::StandardButton defaultButton) const;

    QPointer<QWidget> m_parent;
    bool m_hiddenRun;
};
