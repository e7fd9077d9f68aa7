#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

/** Clicks the wished button of each message box that comes up, and keeps what it showed. */
class BoxAnswerer : public QObject
{
public:
    explicit BoxAnswerer(QMessageBox::StandardButton answer) : m_answer(answer)
    {
        connect(&m_timer, &QTimer::timeout, this, &BoxAnswerer::answer);
        m_timer.start(5);
    }

    QStringList titles;
    QStringList texts;
    QStringList informativeTexts;
    QList<QMessageBox::Icon> icons;
    bool waitCursorSeen = false;

private:
    void answer()
    {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box || !box->button(m_answer))
            return;
        titles.append(box->windowTitle());
        texts.append(box->text());
        informativeTexts.append(box->informativeText());
        icons.append(box->icon());
        waitCursorSeen = waitCursorSeen || QApplication::overrideCursor();
        box->button(m_answer)->click();
    }

    QMessageBox::StandardButton m_answer;
    QTimer m_timer;
};
