#include "app/UserMessages.h"

#include <QCoreApplication>
#include <QDebug>

using namespace Qt::StringLiterals;

UserMessages::UserMessages(QWidget *parent, bool hiddenRun) : m_parent(parent), m_hiddenRun(hiddenRun) { }

void UserMessages::warning(const QString &text, const QString &informativeText) const
{
    show(QMessageBox::Warning, text, informativeText, QMessageBox::Ok, QMessageBox::Ok);
}

QMessageBox::StandardButton UserMessages::question(const QString &text, const QString &informativeText,
                                                   QMessageBox::StandardButtons buttons,
                                                   QMessageBox::StandardButton defaultButton) const
{
    return show(QMessageBox::Question, text, informativeText, buttons, defaultButton);
}

QMessageBox::StandardButton UserMessages::show(QMessageBox::Icon icon, const QString &text,
                                               const QString &informativeText,
                                               QMessageBox::StandardButtons buttons,
                                               QMessageBox::StandardButton defaultButton) const
{
    if (m_hiddenRun)
        qWarning().noquote() << text << informativeText;
    const QString title =
        QCoreApplication::applicationName() + "  "_L1 + QCoreApplication::applicationVersion();
    QMessageBox box(icon, title, text, buttons, m_parent);
    box.setInformativeText(informativeText);
    box.setDefaultButton(defaultButton);
    return QMessageBox::StandardButton(box.exec());
}
