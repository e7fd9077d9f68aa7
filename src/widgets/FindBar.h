#pragma once

#include "widgets/WaitCursor.h"

#include <QTextCursor>
#include <QTextDocument>
#include <QWidget>

#include <memory>

namespace Ui {
class FindBar;
}

/**
 * The bar below a text in which the user says what to find.
 *
 * The owner places it, connects `findRequested` and lets findIn() do the work on its text widget.
 */
class FindBar : public QWidget
{
    Q_OBJECT

public:
    enum class Result {
        Nothing, ///< no text to find was given
        Found,
        FoundFromOtherEnd, ///< there was none up to the end of the text
        NotFound,
    };

    explicit FindBar(QWidget *parent = nullptr);
    ~FindBar() override;

    /** Comes up ready for typing; a text in one line that is selected anyway is offered. */
    void activate(const QString &selectedText = QString());
    void setText(const QString &text);
    QString text() const;
    QTextDocument::FindFlags flags() const;

    /**
     * Finds the text in a QTextEdit or QPlainTextEdit, selects it and tells the user the result.
     * Behind the last match the search goes on at the other end. `fromHere` takes the present selection
     * for a match when it still is one, as it is wished while the user types.
     */
    template <class Edit>
    Result findIn(Edit &edit, bool backward, bool fromHere = false);

Q_SIGNALS:
    /** The user asks for the next or former match, or (`fromHere`) has changed what to find. */
    void findRequested(bool backward, bool fromHere);
    void closed();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void showResult(Result result);

    std::unique_ptr<Ui::FindBar> m_ui;
};

template <class Edit>
FindBar::Result FindBar::findIn(Edit &edit, bool backward, bool fromHere)
{
    const WaitCursor cursor; // a text of millions of lines takes its time
    QTextDocument::FindFlags wanted = flags();
    wanted.setFlag(QTextDocument::FindBackward, backward);
    QTextCursor start = edit.textCursor();
    if (fromHere)
        start.setPosition(start.selectionStart());
    Result result = Result::NotFound;
    QTextCursor found;
    if (text().isEmpty()) {
        result = Result::Nothing;
    } else if (found = edit.document()->find(text(), start, wanted); !found.isNull()) {
        result = Result::Found;
    } else {
        start.movePosition(backward ? QTextCursor::End : QTextCursor::Start);
        found = edit.document()->find(text(), start, wanted);
        result = found.isNull() ? Result::NotFound : Result::FoundFromOtherEnd;
    }
    if (!found.isNull())
        edit.setTextCursor(found);
    showResult(result);
    return result;
}
