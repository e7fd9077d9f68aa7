#include "app/GUIPostGenProgressHandler.h"

#include <QCoreApplication>
#include <QProgressDialog>

using namespace Qt::StringLiterals;

GUIPostGenProgressHandler::GUIPostGenProgressHandler(QWidget *window, bool hiddenRun)
    : PostGenProgressHandler(window), m_window(window), m_dialog(new QProgressDialog(window)),
      m_messages(window, hiddenRun)
{
    m_dialog->setObjectName(u"generationProgress"_s);
    m_dialog->setWindowTitle(QCoreApplication::applicationName());
    m_dialog->setWindowModality(Qt::WindowModal); // what is being generated shall not be edited meanwhile
    m_dialog->setRange(0, 0); // nobody knows how long it takes
    m_dialog->setAutoClose(false);
    m_dialog->setAutoReset(false);
    m_dialog->reset(); // a progress dialog otherwise comes up by itself after a while
    connect(m_dialog, &QProgressDialog::canceled, this, &PostGenProgressHandler::cancelProcessTriggered);
}

void GUIPostGenProgressHandler::show()
{
    if (!m_dialog)
        return;
    if (!m_dialog->isVisible() && m_window) {
        m_dialog->adjustSize();
        QRect place = m_dialog->geometry();
        place.moveCenter(m_window->frameGeometry().center());
        m_dialog->move(place.topLeft());
    }
    m_dialog->show();
    m_dialog->raise();
}

void GUIPostGenProgressHandler::setLabelText(const QString &text)
{
    if (m_dialog)
        m_dialog->setLabelText(text);
}

void GUIPostGenProgressHandler::setCancelButtonText(const QString &text)
{
    if (m_dialog)
        m_dialog->setCancelButtonText(text);
}

void GUIPostGenProgressHandler::adjustSize()
{
    if (m_dialog)
        m_dialog->adjustSize();
}

void GUIPostGenProgressHandler::hide()
{
    if (m_dialog)
        m_dialog->hide();
}

int GUIPostGenProgressHandler::showMessage(QObject *parent, const QString &title, const QString &text,
                                           const QString &detail)
{
    m_messages.logWaiting(detail.isEmpty() ? text : QString(text + u' ' + detail));
    auto *owner = qobject_cast<QWidget *>(parent);
    QMessageBox box(QMessageBox::Warning, title, text, QMessageBox::Ok, owner ? owner : m_window.data());
    box.setInformativeText(detail);
    return box.exec();
}
