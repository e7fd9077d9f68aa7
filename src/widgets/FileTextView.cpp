#include "widgets/FileTextView.h"

#include "widgets/GuiHelper.h"

#include <QElapsedTimer>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QWheelEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype pieceLength = 64LL * 1024; // characters
constexpr int pieceTimeMs = 25; // how long the window's events may wait for the text
constexpr int tabColumns = 4;
constexpr int lineNumberMargin = 6; // pixels on both sides
constexpr int minimumDigits = 3;
constexpr int currentLineAlpha = 24;
constexpr int matchAlpha = 90;
constexpr QRgb matchColour = 0xffe0a030;
constexpr int wheelStep = 120; // eighths of a degree, one notch of a usual wheel

bool isWordCharacter(const QString &line, qsizetype at)
{
    return at >= 0 && at < line.size() && line[at].isLetterOrNumber();
}

/** Where a text stands in a line, by the rules of QTextDocument::find(). */
QList<int> matchesIn(const QString &line, const QString &text, QTextDocument::FindFlags flags)
{
    const auto sensitivity =
        flags.testFlag(QTextDocument::FindCaseSensitively) ? Qt::CaseSensitive : Qt::CaseInsensitive;
    QList<int> places;
    for (qsizetype at = line.indexOf(text, 0, sensitivity); at >= 0;
         at = line.indexOf(text, at + text.size(), sensitivity)) {
        const bool isWord = !isWordCharacter(line, at - 1) && !isWordCharacter(line, at + text.size());
        if (isWord || !flags.testFlag(QTextDocument::FindWholeWords))
            places.append(int(at));
    }
    return places;
}

/** The strip beside the text; what it shows is known to the text view alone. */
class LineNumberArea : public QWidget
{
public:
    explicit LineNumberArea(FileTextView *view) : QWidget(view), m_view(view) { }

    QSize sizeHint() const override { return {m_view->lineNumberWidth(), 0}; }

protected:
    void paintEvent(QPaintEvent *event) override { m_view->paintLineNumbers(event); }

private:
    FileTextView *m_view;
};

} // namespace

FileTextView::FileTextView(QWidget *parent) : QPlainTextEdit(parent), m_lineNumbers(new LineNumberArea(this))
{
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setUndoRedoEnabled(false);
    setLineWrapMode(NoWrap);
    setFont(GuiHelper::monospacedFont());
    setAccessibleName(tr("Text of the file"));
    m_loadTimer.setInterval(0);
    connect(&m_loadTimer, &QTimer::timeout, this, &FileTextView::insertPieces);
    connect(this, &QPlainTextEdit::blockCountChanged, this, &FileTextView::updateLineNumberArea);
    connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect &rect, int scrolled) {
        if (scrolled != 0)
            m_lineNumbers->scroll(0, scrolled);
        else
            m_lineNumbers->update(0, rect.y(), m_lineNumbers->width(), rect.height());
    });
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &FileTextView::updateMarks);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] {
        if (!m_markedText.isEmpty())
            updateMarks();
    });
    updateLineNumberArea();
    updateMarks();
}

void FileTextView::showFile(const TextFile &file, bool keepPlace)
{
    if (!isLoading()) // else the former text has not come to the wanted place yet
        m_wantedPlace = keepPlace ? place() : Place();
    m_loadTimer.stop();
    setHighlighting(false); // it would look at each line of the text that goes
    clear();
    m_file = file;
    m_inserted = 0;
    setHighlighting(!file.binary && AnsiCHighlighter::isSource(file.path)
                    && file.text.size() <= maximumHighlighted);
    m_loadTimer.start();
    insertPieces();
}

void FileTextView::setHighlighting(bool on)
{
    delete m_highlighter;
    if (!on)
        return;
    m_highlighter = new AnsiCHighlighter(document());
    m_highlighter->setPalette(palette());
}

void FileTextView::insertPieces()
{
    QElapsedTimer time;
    time.start();
    while (m_inserted < m_file.text.size() && time.elapsed() < pieceTimeMs)
        insertPiece();
    if (m_inserted >= m_file.text.size())
        endLoading();
    else
        Q_EMIT loadProgress(int(100 * m_inserted / m_file.text.size()));
}

void FileTextView::insertPiece()
{
    const bool isFirst = m_inserted == 0;
    const qsizetype lineEnd =
        m_file.text.indexOf(u'\n', std::min(m_inserted + pieceLength, m_file.text.size()));
    const qsizetype end = lineEnd < 0 ? m_file.text.size() : lineEnd + 1;
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(m_file.text.sliced(m_inserted, end - m_inserted));
    m_inserted = end;
    if (isFirst) // the view's own cursor has been pushed to the end
        setTextCursor(QTextCursor(document()));
}

void FileTextView::endLoading()
{
    m_loadTimer.stop();
    m_file.text.clear();
    m_inserted = 0;
    goTo(m_wantedPlace);
    updateMarks();
    Q_EMIT textShown();
}

FileTextView::Place FileTextView::place() const
{
    return {.line = currentLine(),
            .column = currentColumn(),
            .horizontalScroll = horizontalScrollBar()->value(),
            .verticalScroll = verticalScrollBar()->value()};
}

void FileTextView::goTo(const Place &place)
{
    const QTextBlock block = document()->findBlockByNumber(blockOfLine(place.line));
    QTextCursor cursor(block);
    cursor.setPosition(block.position() + std::clamp(place.column - 1, 0, block.length() - 1));
    setTextCursor(cursor);
    verticalScrollBar()->setValue(place.verticalScroll);
    horizontalScrollBar()->setValue(place.horizontalScroll);
}

bool FileTextView::isContinuation(int block) const
{
    return std::ranges::binary_search(std::as_const(m_file.continuations), block);
}

int FileTextView::lineOfBlock(int block) const
{
    const auto continued = std::ranges::upper_bound(m_file.continuations, block);
    return block + 1 - int(continued - m_file.continuations.cbegin());
}

/** The first block of a line; the rows that continue former lines have block numbers, too. */
int FileTextView::blockOfLine(int line) const
{
    int block = std::clamp(line, 1, lineCount()) - 1;
    for (const int continuation : std::as_const(m_file.continuations)) {
        if (continuation > block)
            break;
        ++block;
    }
    return block;
}

int FileTextView::lineCount() const
{
    return lineOfBlock(blockCount() - 1);
}

int FileTextView::currentLine() const
{
    return lineOfBlock(textCursor().blockNumber());
}

int FileTextView::currentColumn() const
{
    QTextBlock block = textCursor().block();
    int column = textCursor().positionInBlock() + 1;
    while (isContinuation(block.blockNumber())) {
        block = block.previous();
        column += block.length() - 1;
    }
    return column;
}

void FileTextView::goToLine(int line)
{
    setTextCursor(QTextCursor(document()->findBlockByNumber(blockOfLine(line))));
    centerCursor();
}

void FileTextView::setMarkedText(const QString &text, QTextDocument::FindFlags flags)
{
    m_markedText = text;
    m_markFlags = flags & ~QTextDocument::FindFlags(QTextDocument::FindBackward);
    updateMarks();
}

void FileTextView::updateMarks()
{
    QTextEdit::ExtraSelection line;
    QColor colour = palette().color(QPalette::Text);
    colour.setAlpha(currentLineAlpha);
    line.format.setBackground(colour);
    line.format.setProperty(QTextFormat::FullWidthSelection, true);
    line.cursor = textCursor();
    line.cursor.clearSelection();
    QList<QTextEdit::ExtraSelection> marks = visibleMatches();
    marks.prepend(line);
    setExtraSelections(marks);
    m_lineNumbers->update();
}

/** Looks at the visible lines alone; a search through the document may run to its end. */
QList<QTextEdit::ExtraSelection> FileTextView::visibleMatches() const
{
    QList<QTextEdit::ExtraSelection> matches;
    if (m_markedText.isEmpty())
        return matches;
    const int end = cursorForPosition(viewport()->rect().bottomRight()).block().blockNumber();
    QColor colour(matchColour);
    colour.setAlpha(matchAlpha);
    QTextEdit::ExtraSelection match;
    match.format.setBackground(colour);
    for (QTextBlock block = firstVisibleBlock(); block.isValid() && block.blockNumber() <= end;
         block = block.next()) {
        const QList<int> places = matchesIn(block.text(), m_markedText, m_markFlags);
        for (const int place : places) {
            match.cursor = QTextCursor(block);
            match.cursor.setPosition(block.position() + place);
            match.cursor.setPosition(block.position() + place + int(m_markedText.size()),
                                     QTextCursor::KeepAnchor);
            matches.append(match);
        }
    }
    return matches;
}

void FileTextView::setFontPoints(qreal points)
{
    const qreal wanted = std::clamp(points, smallestFont, biggestFont);
    if (qFuzzyCompare(wanted, fontPoints()))
        return;
    setFont(GuiHelper::monospacedFont(wanted));
    Q_EMIT fontPointsChanged(wanted);
}

int FileTextView::lineNumberWidth() const
{
    const auto digits = std::max(minimumDigits, int(QString::number(blockCount()).size()));
    return fontMetrics().horizontalAdvance(u'9') * digits + 2 * lineNumberMargin;
}

void FileTextView::updateLineNumberArea()
{
    setViewportMargins(lineNumberWidth(), 0, 0, 0);
    const QRect area = contentsRect();
    m_lineNumbers->setGeometry(area.left(), area.top(), lineNumberWidth(), area.height());
}

void FileTextView::paintLineNumbers(QPaintEvent *event)
{
    QPainter painter(m_lineNumbers);
    painter.fillRect(event->rect(), palette().color(QPalette::AlternateBase));
    const int width = m_lineNumbers->width() - lineNumberMargin;
    const int current = textCursor().blockNumber();
    QColor plain = palette().color(QPalette::Text);
    plain.setAlphaF(0.6F);
    painter.setFont(font());
    for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
        const QRectF row = blockBoundingGeometry(block).translated(contentOffset());
        if (row.top() > event->rect().bottom())
            break;
        if (row.bottom() < event->rect().top() || isContinuation(block.blockNumber()))
            continue;
        painter.setPen(block.blockNumber() == current ? palette().color(QPalette::Text) : plain);
        painter.drawText(0, int(row.top()), width, fontMetrics().height(), Qt::AlignRight,
                         QString::number(lineOfBlock(block.blockNumber())));
    }
}

void FileTextView::resizeEvent(QResizeEvent *event)
{
    QPlainTextEdit::resizeEvent(event);
    updateLineNumberArea();
    updateMarks();
}

void FileTextView::changeEvent(QEvent *event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        if (m_highlighter)
            m_highlighter->setPalette(palette());
        updateMarks();
    } else if (event->type() == QEvent::FontChange) {
        setTabStopDistance(fontMetrics().horizontalAdvance(u' ') * tabColumns);
        updateLineNumberArea();
    }
}

void FileTextView::wheelEvent(QWheelEvent *event)
{
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QPlainTextEdit::wheelEvent(event);
        return;
    }
    setFontPoints(fontPoints() + qreal(event->angleDelta().y()) / wheelStep);
    event->accept();
}

/** Plain text, in which the pieces of an overlong line are one again. */
QMimeData *FileTextView::createMimeDataFromSelection() const
{
    const QString selected = textCursor().selectedText();
    int block = document()->findBlock(textCursor().selectionStart()).blockNumber();
    QString text;
    text.reserve(selected.size());
    const QList<QStringView> rows = QStringView(selected).split(QChar(QChar::ParagraphSeparator));
    for (const QStringView &row : rows) {
        if (&row != &rows.constFirst() && !isContinuation(block))
            text += u'\n';
        text += row;
        ++block;
    }
    auto *copied = new QMimeData;
    copied->setText(text);
    return copied;
}
