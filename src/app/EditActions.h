#pragma once

#include "forms/BaseMainForm.h"

#include <QHash>
#include <QObject>
#include <QPointer>

#include <functional>

class QAction;

/**
 * The actions of the edit menu.
 *
 * They mean the text field with the keyboard focus, or else the selection of the current form, and are
 * enabled only for what that can do.
 */
class EditActions : public QObject
{
    Q_OBJECT

public:
    using Command = BaseMainForm::EditCommand;
    using CurrentForm = std::function<BaseMainForm *()>;

    EditActions(CurrentForm currentForm, QObject *parent);

    void setAction(Command command, QAction *action);
    void run(Command command);

public Q_SLOTS:
    void updateEnabling();

private:
    bool isPossible(Command command) const;

    CurrentForm m_currentForm;
    QHash<int, QPointer<QAction>> m_actions;
};
