#pragma once

#include "widgets/AnsiCHighlighter.h"
#include "widgets/TextFile.h"

#include <QPlainTextEdit>
#include <QPointer>
#include <QTextDocument>
#include <QTimer>

/**
 * Shows the text of a file, read-only, with the numbers of its lines.
 *
 * A big text comes in pieces between the events of the window. Lines count as in the file, also where
 * an overlong one is shown in several rows.
 */
class FileTextView : public QPlainTextEdit
{
    Q_OBJECT

public:
    static constexpr qreal smallestFont = 5; ///< points
    static constexpr qreal biggestFont = 48;
    /** C colours cost time and memory for each line, so that bigger texts (characters) go without. */
    static constexpr qsizetype maximumHighlighted = 4LL * 1024 * 1024;

    explicit FileTextView(QWidget *parent = nullptr);

    /** Shows another text, at its beginning; `keepPlace` stays at the line and column of the former one. */
    void showFile(const TextFile &file, bool keepPlace);
    bool isLoading() const { return m_loadTimer.isActive(); }
    bool isHighlighted() const { return m_highlighter != nullptr; }

    int lineCount() const;
    /** The file's line that the cursor is in, from 1 on. */
    int currentLine() const;
    /** The cursor's place in that line, from 1 on; a tab counts as one. */
    int currentColumn() const;
    /** Puts the cursor at the beginning of a line and shows it in the middle; numbers beyond the text go
     * to its ends. */
    void goToLine(int line);

    /** Marks what is found in the part of the text that can be seen; an empty text marks nothing. */
    void setMarkedText(const QString &text, QTextDocument::FindFlags flags);

    void setFontPoints(qreal points);
    qreal fontPoints() const { return font().pointSizeF(); }
    void zoom(int steps) { setFontPoints(fontPoints() + steps); }

    /** For the widget beside the text that shows the line numbers. */
    int lineNumberWidth() const;
    void paintLineNumbers(QPaintEvent *event);

Q_SIGNALS:
    void loadProgress(int percent);
    void textShown();
    void fontPointsChanged(qreal points);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    QMimeData *createMimeDataFromSelection() const override;

private:
    struct Place
    {
        int line = 1;
        int column = 1;
        int horizontalScroll = 0;
        int verticalScroll = 0;
    };

    Place place() const;
    void goTo(const Place &place);
    void setHighlighting(bool on);
    void insertPieces();
    void insertPiece();
    void endLoading();
    bool isContinuation(int block) const;
    int lineOfBlock(int block) const;
    int blockOfLine(int line) const;
    void updateLineNumberArea();
    void updateMarks();
    QList<QTextEdit::ExtraSelection> visibleMatches() const;

    QWidget *m_lineNumbers;
    QPointer<AnsiCHighlighter> m_highlighter;
    TextFile m_file;
    qsizetype m_inserted = 0; ///< characters of the text that the document has already
    Place m_wantedPlace;
    QTimer m_loadTimer;
    QString m_markedText;
    QTextDocument::FindFlags m_markFlags;
};
