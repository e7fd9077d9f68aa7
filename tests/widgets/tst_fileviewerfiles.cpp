#include "widgets/FileViewerTest.h"

#include <QAction>
#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTimer>

using namespace Qt::StringLiterals;

/** What the files may do to the viewer: change, go, be big, be no text. */
class TestFileViewerFiles : public FileViewerTest
{
    Q_OBJECT

private Q_SLOTS:
    void aChangedFileIsReadAgainAtTheSamePlace();
    void aFileThatHasBecomeShorterIsShownAtItsEnd();
    void aReplacedFileIsReadAgainEveryTime();
    void anotherFileOfTheFolderChangesNothing();
    void aFileThatGoesLeavesItsLastText();
    void aMissingFileIsToldAndShownOnceItComes();
    void aFolderIsToldAndNoText();
    void aBinaryFileIsShownAsBytes();
    void anOverlongLineIsOneLine();
    void anOverlongLineIsCopiedInOnePiece();
    void aBigFileLeavesTheWindowResponsive();
    void aBigSourceGoesWithoutColours();
    void aViewerMayBeClosedWhileItReads();

private:
    QString page() const { return child<QStackedWidget>("stackedWidget")->currentWidget()->objectName(); }
    QString notice() const
    {
        return child<QWidget>("lblNotice")->isVisible() ? label("lblNotice") : QString();
    }
    bool replace(const QString &name, const QByteArray &bytes) const;
    struct Times
    {
        qint64 total = 0;
        qint64 longestPause = 0; ///< between two events of the window
    };
    /** How long (ms) it takes to show a file, and what that does to the window. */
    Times showTimed(const QString &name);

    QElapsedTimer m_sinceBeat;
    qint64 m_longestPause = 0;
};

/** As the generators save: the new content comes by another file's renaming. */
bool TestFileViewerFiles::replace(const QString &name, const QByteArray &bytes) const
{
    return write(name + u".new"_s, bytes) && QFile::remove(path(name))
        && QFile::rename(path(name + u".new"_s), path(name));
}

TestFileViewerFiles::Times TestFileViewerFiles::showTimed(const QString &name)
{
    m_longestPause = 0;
    QTimer beat;
    connect(&beat, &QTimer::timeout, this,
            [this] { m_longestPause = qMax(m_longestPause, m_sinceBeat.restart()); });
    QElapsedTimer total;
    total.start();
    m_sinceBeat.start();
    beat.start(5);
    show(name);
    return {.total = total.elapsed(), .longestPause = qMax(m_longestPause, m_sinceBeat.elapsed())};
}

void TestFileViewerFiles::aChangedFileIsReadAgainAtTheSamePlace()
{
    const QByteArray lines = QByteArray("some text\n").repeated(300);
    QVERIFY(write(u"a.txt"_s, lines));
    show(u"a.txt"_s);
    view()->goToLine(200);
    const int scrolled = view()->verticalScrollBar()->value();
    QVERIFY(scrolled > 0);
    QVERIFY(write(u"a.txt"_s, lines + "the end\n"));
    waitForText();
    QVERIFY(view()->toPlainText().endsWith("the end\n"_L1));
    QCOMPARE(view()->currentLine(), 200);
    QCOMPARE(view()->verticalScrollBar()->value(), scrolled);
}

void TestFileViewerFiles::aFileThatHasBecomeShorterIsShownAtItsEnd()
{
    QVERIFY(write(u"a.txt"_s, QByteArray("some text\n").repeated(300)));
    show(u"a.txt"_s);
    view()->goToLine(200);
    QTest::keyClick(view(), Qt::Key_End);
    QVERIFY(write(u"a.txt"_s, "one\ntwo"));
    waitForText();
    QCOMPARE(view()->currentLine(), 2);
    QCOMPARE(view()->currentColumn(), 4);
}

void TestFileViewerFiles::aReplacedFileIsReadAgainEveryTime()
{
    QVERIFY(write(u"a.txt"_s, "0"));
    show(u"a.txt"_s);
    for (const QByteArray &content : {"first"_ba, "second one"_ba, "third"_ba}) {
        QVERIFY(replace(u"a.txt"_s, content));
        QTRY_COMPARE(view()->toPlainText(), QString::fromLatin1(content));
        QCOMPARE(notice(), QString());
    }
}

void TestFileViewerFiles::anotherFileOfTheFolderChangesNothing()
{
    QVERIFY(write(u"a.txt"_s, "0"));
    show(u"a.txt"_s);
    const QSignalSpy shown(m_viewer.get(), &FileViewerDialog::shown);
    QVERIFY(write(u"b.txt"_s, "1"));
    QTest::qWait(400);
    QCOMPARE(shown.count(), 0);
}

void TestFileViewerFiles::aFileThatGoesLeavesItsLastText()
{
    QVERIFY(write(u"a.txt"_s, "last words"));
    show(u"a.txt"_s);
    QVERIFY(QFile::remove(path(u"a.txt"_s)));
    QTRY_COMPARE(notice(), u"The file no longer exists. This is its last content."_s);
    QCOMPARE(view()->toPlainText(), u"last words"_s);
    QVERIFY(write(u"a.txt"_s, "back"));
    QTRY_COMPARE(view()->toPlainText(), u"back"_s);
    QCOMPARE(notice(), QString());
}

void TestFileViewerFiles::aMissingFileIsToldAndShownOnceItComes()
{
    show(u"a.txt"_s);
    QCOMPARE(page(), u"pageMessage"_s);
    QVERIFY(label("lblMessage").contains(path(u"a.txt"_s)));
    QVERIFY(label("lblMessage").contains("does not exist"_L1));
    for (const char *action :
         {"actionFind", "actionFindNext", "actionGoToLine", "actionCopy", "actionOpenExternal"})
        QVERIFY2(!child<QAction>(action)->isEnabled(), action);
    QVERIFY(write(u"a.txt"_s, "here"));
    QTRY_COMPARE(page(), u"pageText"_s);
    QCOMPARE(view()->toPlainText(), u"here"_s);
    QVERIFY(child<QAction>("actionFind")->isEnabled());
}

void TestFileViewerFiles::aFolderIsToldAndNoText()
{
    QVERIFY(QDir(m_folder->path()).mkdir(u"folder.c"_s));
    show(u"folder.c"_s);
    QCOMPARE(page(), u"pageMessage"_s);
    QVERIFY(label("lblMessage").contains("is not a file"_L1));
    const QSignalSpy shown(m_viewer.get(), &FileViewerDialog::shown);
    QTest::mouseClick(child<QPushButton>("btnRetry"), Qt::LeftButton);
    QTRY_COMPARE(shown.count(), 1);
    QCOMPARE(page(), u"pageMessage"_s);
}

void TestFileViewerFiles::aBinaryFileIsShownAsBytes()
{
    QVERIFY(write(u"a.c"_s, QByteArray("\0\1\2", 3)));
    show(u"a.c"_s);
    QCOMPARE(notice(), u"This is not a text file. Its bytes are shown."_s);
    QVERIFY(view()->toPlainText().startsWith("00000000  00 01 02"_L1));
    QVERIFY(!view()->isHighlighted());
}

void TestFileViewerFiles::anOverlongLineIsOneLine()
{
    QVERIFY(write(u"a.txt"_s, "a\n" + QByteArray(10000, 'b') + "\nc"));
    show(u"a.txt"_s);
    QCOMPARE(view()->lineCount(), 3);
    QVERIFY(notice().contains("several rows"_L1));
    view()->goToLine(3);
    QCOMPARE(view()->textCursor().block().text(), u"c"_s);
    QCOMPARE(view()->currentLine(), 3);
    QTest::keyClick(view(), Qt::Key_Left); // to the end of the line before
    QCOMPARE(view()->currentLine(), 2);
    QCOMPARE(view()->currentColumn(), 10001);
}

void TestFileViewerFiles::anOverlongLineIsCopiedInOnePiece()
{
    const QByteArray text = "a\n" + QByteArray(10000, 'b') + "\n\nc";
    QVERIFY(write(u"a.txt"_s, text));
    show(u"a.txt"_s);
    QTest::keyClick(view(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(view(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QString::fromLatin1(text));
}

void TestFileViewerFiles::aBigFileLeavesTheWindowResponsive()
{
    const QByteArray line = "    static const unsigned int value = 0x12345678u; /* some text */\n";
    const int lines = int(50 * 1024 * 1024 / line.size());
    QVERIFY(write(u"big.txt"_s, line.repeated(lines)));
    const Times times = showTimed(u"big.txt"_s);
    QVERIFY2(times.longestPause * 4 < times.total, qPrintable(QString::number(times.longestPause)));
    QCOMPARE(view()->lineCount(), lines + 1);
    QCOMPARE(notice(), QString());
    QElapsedTimer time;
    time.start();
    view()->goToLine(lines);
    QCOMPARE(view()->currentLine(), lines);
    QVERIFY2(time.elapsed() * 4 < times.total, qPrintable(QString::number(time.elapsed())));
}

void TestFileViewerFiles::aBigSourceGoesWithoutColours()
{
    const QByteArray line = "int a; /* some text */\n";
    const auto limit = FileTextView::maximumHighlighted / line.size();
    QVERIFY(write(u"a.c"_s, line.repeated(limit)));
    const Times times = showTimed(u"a.c"_s);
    QVERIFY2(times.longestPause * 4 < times.total, qPrintable(QString::number(times.longestPause)));
    QVERIFY(view()->isHighlighted());
    QVERIFY(write(u"b.c"_s, line.repeated(limit + 1)));
    show(u"b.c"_s);
    QVERIFY(!view()->isHighlighted());
}

void TestFileViewerFiles::aViewerMayBeClosedWhileItReads()
{
    QVERIFY(write(u"a.txt"_s, QByteArray("a\n").repeated(10 * 1024 * 1024)));
    m_viewer = std::make_unique<FileViewerDialog>(path(u"a.txt"_s));
    m_viewer->show();
    QElapsedTimer time;
    time.start();
    m_viewer.reset();
    QVERIFY(time.elapsed() < 3000);
    m_viewer = std::make_unique<FileViewerDialog>(path(u"a.txt"_s));
    QTRY_VERIFY_WITH_TIMEOUT(view()->isLoading(), 10000);
    m_viewer.reset();
}

int main(int argc, char **argv)
{
    return runWidgetTest<TestFileViewerFiles>(argc, argv);
}

#include "tst_fileviewerfiles.moc"
