#pragma once

#include "app/UserMessages.h"
#include "generators/PostGenProgressHandler.h"

#include <QPointer>

class QProgressDialog;

/** Shows the steps behind a generation in a progress dialog over the main window. */
class GUIPostGenProgressHandler : public PostGenProgressHandler
{
    Q_OBJECT

public:
    /** Makes the dialog, which the window then owns. In a hidden run messages also go to the log. */
    explicit GUIPostGenProgressHandler(QWidget *window, bool hiddenRun = false);

    void show() override;
    void setLabelText(const QString &text) override;
    void setCancelButtonText(const QString &text) override;
    void adjustSize() override;
    void hide() override;
    int showMessage(QObject *parent, const QString &title, const QString &text,
                    const QString &detail) override;

private:
    QPointer<QWidget> m_window;
    QPointer<QProgressDialog> m_dialog;
    UserMessages m_messages;
};
