#pragma once

#include <QApplication>
#include <QObject>
#include <QTimer>

#include <functional>

/**
 * A user who waits for a modal dialog, however long the machine takes to bring it up, and deals with the
 * first one of that class. To live around the call that shows the dialog.
 */
template <typename Dialog>
class DialogUser : public QObject
{
public:
    explicit DialogUser(const std::function<void(Dialog &)> &deal) : m_deal(deal)
    {
        connect(&m_timer, &QTimer::timeout, this, &DialogUser::look);
        m_timer.start(5);
    }

private:
    void look()
    {
        auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isActiveWindow())
            return; // before it is active, its fields cannot have the focus
        m_timer.stop();
        m_deal(*dialog);
    }

    std::function<void(Dialog &)> m_deal;
    QTimer m_timer;
};
