#include "app/UserMessages.h"

#include "widgets/WaitCursor.h"

#include <QDebug>
#include <QGuiApplication>
#include <QPushButton>

using namespace Qt::StringLiterals;

UserMessages::UserMessages(QWidget *parent, bool hiddenRun) : m_parent(parent), m_hiddenRun(hiddenRun) { }

QMessageBox::StandardButton UserMessages::warning(const QString &text, const QString &informativeText,
                                                  QMessageBox::StandardButtons buttons,
                                                  QMessageBox::StandardButton defaultButton) const
{
    return show(QMessageBox::Warning, text, informativeText, buttons, defaultButton);
}

void UserMessages::information(const QString &text) const
{
    show(QMessageBox::Information, text, QString(), QMessageBox::Ok, QMessageBox::Ok);
}

QMessageBox::StandardButton UserMessages::question(const QString &text, const QString &informativeText,
                                                   QMessageBox::StandardButtons buttons,
                                                   QMessageBox::StandardButton defaultButton,
                                                   const QString &extraButton) const
{
    return show(QMessageBox::Question, text, informativeText, buttons, defaultButton, extraButton);
}

void UserMessages::logWaiting(const QString &text) const
{
    if (!m_hiddenRun)
        return;
    qWarning().noquote() << text;
    if (QGuiApplication::platformName() == "offscreen"_L1)
        qWarning("the program waits for an answer to this box, which no display shows");
    else
        qWarning("the program waits for an answer to this box");
}

QMessageBox::StandardButton UserMessages::show(QMessageBox::Icon icon, const QString &text,
                                               const QString &informativeText,
                                               QMessageBox::StandardButtons buttons,
                                               QMessageBox::StandardButton defaultButton,
                                               const QString &extraButton) const
{
    logWaiting(informativeText.isEmpty() ? text : QString(text + u' ' + informativeText));
    const QString title =
        QCoreApplication::applicationName() + "  "_L1 + QCoreApplication::applicationVersion();
    QMessageBox box(icon, title, text, buttons, m_parent);
    box.setInformativeText(informativeText);
    box.setDefaultButton(defaultButton);
    const QAbstractButton *extra =
        extraButton.isEmpty() ? nullptr : box.addButton(extraButton, QMessageBox::ActionRole);
    const NormalCursor cursor;
    const auto answer = QMessageBox::StandardButton(box.exec());
    return extra && box.clickedButton() == extra ? QMessageBox::NoButton : answer;
}
