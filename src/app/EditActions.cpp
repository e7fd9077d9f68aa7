#include "app/EditActions.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTextEdit>

using namespace Qt::StringLiterals;

namespace {

struct TextState
{
    bool isText = false;
    bool hasSelection = false;
    bool isWritable = false;
};

template <typename TextEdit>
TextState stateOf(const TextEdit *edit)
{
    return {
        .isText = true, .hasSelection = edit->textCursor().hasSelection(), .isWritable = !edit->isReadOnly()};
}

TextState textState(const QWidget *focus)
{
    if (const auto *line = qobject_cast<const QLineEdit *>(focus))
        return {.isText = true, .hasSelection = line->hasSelectedText(), .isWritable = !line->isReadOnly()};
    if (const auto *text = qobject_cast<const QTextEdit *>(focus))
        return stateOf(text);
    if (const auto *text = qobject_cast<const QPlainTextEdit *>(focus))
        return stateOf(text);
    return {};
}

bool clipboardHasText()
{
    const QMimeData *content = QGuiApplication::clipboard()->mimeData();
    return content && content->hasText();
}

bool canEditText(const TextState &text, EditActions::Command command)
{
    switch (command) {
    case EditActions::Command::Copy:
        return text.hasSelection;
    case EditActions::Command::Cut:
    case EditActions::Command::Delete:
        return text.hasSelection && text.isWritable;
    case EditActions::Command::Paste:
        return text.isWritable && clipboardHasText();
    case EditActions::Command::Duplicate:
        break;
    }
    return false;
}

void editText(QWidget *focus, EditActions::Command command)
{
    switch (command) {
    case EditActions::Command::Copy:
        QMetaObject::invokeMethod(focus, "copy");
        break;
    case EditActions::Command::Cut:
        QMetaObject::invokeMethod(focus, "cut");
        break;
    case EditActions::Command::Paste:
        QMetaObject::invokeMethod(focus, "paste");
        break;
    case EditActions::Command::Delete: {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier);
        QApplication::sendEvent(focus, &press);
        break;
    }
    case EditActions::Command::Duplicate:
        break;
    }
}

} // namespace

EditActions::EditActions(CurrentForm currentForm, QObject *parent)
    : QObject(parent), m_currentForm(std::move(currentForm))
{
    connect(qApp, &QApplication::focusChanged, this, &EditActions::updateEnabling);
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &EditActions::updateEnabling);
}

void EditActions::setAction(Command command, QAction *action)
{
    m_actions.insert(int(command), action);
    action->setEnabled(isPossible(command));
}

void EditActions::run(Command command)
{
    QWidget *focus = QApplication::focusWidget();
    if (textState(focus).isText)
        editText(focus, command);
    else if (BaseMainForm *form = m_currentForm(); form && form->canEdit(command))
        form->edit(command);
    updateEnabling();
}

void EditActions::updateEnabling()
{
    for (auto action = m_actions.cbegin(); action != m_actions.cend(); ++action)
        if (*action)
            (*action)->setEnabled(isPossible(Command(action.key())));
}

bool EditActions::isPossible(Command command) const
{
    const TextState text = textState(QApplication::focusWidget());
    if (text.isText)
        return canEditText(text, command);
    const BaseMainForm *form = m_currentForm();
    return form && form->canEdit(command);
}
