#include "widgets/FileViewerTest.h"
#include "widgets/UrlCatcher.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QInputDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

/** What the user does in the viewer. */
class TestFileViewerDialog : public FileViewerTest
{
    Q_OBJECT

private Q_SLOTS:
    void aFileIsShownWithItsPathAndFacts();
    void cSourcesAreColouredAndOthersAreNot_data();
    void cSourcesAreColouredAndOthersAreNot();
    void theTextCannotBeChanged();
    void ctrlFFindsWhileTheUserTypes();
    void f3AndShiftF3GoToTheNextAndFormerPlace();
    void theSearchGoesOnAtTheOtherEndAndSaysSo();
    void whatIsNotThereIsTold();
    void caseAndWholeWordsAreMinded();
    void f3WithoutAnythingToFindAsksForIt();
    void theSelectedTextIsOfferedForFinding();
    void allVisiblePlacesAreMarked();
    void escapeClosesTheFindBarBeforeTheViewer();
    void enterInTheTextDoesNotCloseTheViewer();
    void ctrlGGoesToALine();
    void theZoomFollowsKeysAndWheelAndIsKept();
    void theZoomHasLimits();
    void ctrlCCopiesTheSelection();
    void ctrlEOpensTheFileInTheOtherProgram();
    void theViewerGoesToAWantedLineOnceTheTextIsThere();
    void aSecondViewOfAFileIsTheFirstOne();
    void aClosedViewerIsDeletedAndItsPlaceKept();
    void aResourceIsShown();
    void everyToolSaysWhatItDoes();

private:
    void type(QWidget *widget, const QString &text) const { QTest::keyClicks(widget, text); }
    void wheel(int notches) const;
};

void TestFileViewerDialog::wheel(int notches) const
{
    const QPointF middle = view()->viewport()->rect().center();
    QWheelEvent event(middle, view()->viewport()->mapToGlobal(middle), QPoint(), QPoint(0, 120 * notches),
                      Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(view()->viewport(), &event);
}

void TestFileViewerDialog::aFileIsShownWithItsPathAndFacts()
{
    QVERIFY(write(u"gr\u00FCn.txt"_s, "one\r\ntwo\r\n"));
    show(u"gr\u00FCn.txt"_s);
    QCOMPARE(view()->toPlainText(), u"one\ntwo\n"_s);
    QCOMPARE(label("lblPath"), path(u"gr\u00FCn.txt"_s));
    QVERIFY(m_viewer->windowTitle().startsWith(u"gr\u00FCn.txt"_s));
    QVERIFY(label("lblFacts").startsWith("10 bytes  |  ASCII  |  CR LF"_L1));
    QCOMPARE(label("lblPosition"), u"Line 1 of 3, column 1"_s);
    QVERIFY(!child<QWidget>("lblNotice")->isVisible());
    QVERIFY(!child<QWidget>("progressBar")->isVisible());
}

void TestFileViewerDialog::cSourcesAreColouredAndOthersAreNot_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("coloured");
    QTest::newRow("c") << u"a.c"_s << true;
    QTest::newRow("h") << u"a.h"_s << true;
    QTest::newRow("text") << u"a.txt"_s << false;
    QTest::newRow("eds") << u"a.eds"_s << false;
}

void TestFileViewerDialog::cSourcesAreColouredAndOthersAreNot()
{
    QFETCH(const QString, name);
    QVERIFY(write(name, "return 1;\n"));
    show(name);
    QTEST(view()->isHighlighted(), "coloured");
}

void TestFileViewerDialog::theTextCannotBeChanged()
{
    QVERIFY(write(u"a.txt"_s, "one\n"));
    show(u"a.txt"_s);
    type(view(), u"xyz"_s);
    QTest::keyClick(view(), Qt::Key_Delete);
    QCOMPARE(view()->toPlainText(), u"one\n"_s);
}

void TestFileViewerDialog::ctrlFFindsWhileTheUserTypes()
{
    QVERIFY(write(u"a.txt"_s, "one two\nthree twice\n"));
    show(u"a.txt"_s);
    QVERIFY(!child<QWidget>("findBar")->isVisible());
    QTest::keyClick(m_viewer.get(), Qt::Key_F, Qt::ControlModifier);
    auto *find = child<QLineEdit>("leFind");
    QVERIFY(find->isVisible());
    QTRY_VERIFY(find->hasFocus());
    type(find, u"tw"_s);
    QCOMPARE(selected(), u"tw"_s);
    QCOMPARE(view()->currentLine(), 1);
    type(find, u"i"_s);
    QCOMPARE(selected(), u"twi"_s);
    QCOMPARE(label("lblPosition"), u"Line 2 of 3, column 10"_s);
}

void TestFileViewerDialog::f3AndShiftF3GoToTheNextAndFormerPlace()
{
    QVERIFY(write(u"a.txt"_s, "a x\nx\nx b\n"));
    show(u"a.txt"_s);
    QTest::keyClick(m_viewer.get(), Qt::Key_F, Qt::ControlModifier);
    type(child<QLineEdit>("leFind"), u"x"_s);
    QCOMPARE(view()->currentLine(), 1);
    QTest::keyClick(m_viewer.get(), Qt::Key_F3);
    QCOMPARE(view()->currentLine(), 2);
    QTest::mouseClick(child<QToolButton>("btnNext"), Qt::LeftButton);
    QCOMPARE(view()->currentLine(), 3);
    QTest::keyClick(m_viewer.get(), Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(view()->currentLine(), 2);
    QTest::keyClick(child<QLineEdit>("leFind"), Qt::Key_Return);
    QCOMPARE(view()->currentLine(), 3);
    QTest::keyClick(child<QLineEdit>("leFind"), Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(view()->currentLine(), 2);
    QTest::mouseClick(child<QToolButton>("btnPrevious"), Qt::LeftButton);
    QCOMPARE(view()->currentLine(), 1);
}

void TestFileViewerDialog::theSearchGoesOnAtTheOtherEndAndSaysSo()
{
    QVERIFY(write(u"a.txt"_s, "x\ny\nx\n"));
    show(u"a.txt"_s);
    QTest::keyClick(m_viewer.get(), Qt::Key_F, Qt::ControlModifier);
    type(child<QLineEdit>("leFind"), u"x"_s);
    QCOMPARE(label("lblResult"), QString());
    QTest::keyClick(m_viewer.get(), Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(view()->currentLine(), 3);
    QCOMPARE(label("lblResult"), u"Continued at the other end"_s);
    QTest::keyClick(m_viewer.get(), Qt::Key_F3);
    QCOMPARE(view()->currentLine(), 1);
    QCOMPARE(label("lblResult"), u"Continued at the other end"_s);
}

void TestFileViewerDialog::whatIsNotThereIsTold()
{
    QVERIFY(write(u"a.txt"_s, "one\n"));
    show(u"a.txt"_s);
    QTest::keyClick(m_viewer.get(), Qt::Key_F, Qt::ControlModifier);
    type(child<QLineEdit>("leFind"), u"two"_s);
    QCOMPARE(label("lblResult"), u"Not found"_s);
    QTest::keyClick(child<QLineEdit>("leFind"), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(child<QLineEdit>("leFind"), Qt::Key_Delete);
    QCOMPARE(label("lblResult"), QString());
}

void TestFileViewerDialog::caseAndWholeWordsAreMinded()
{
    QVERIFY(write(u"a.txt"_s, "line\nLines\nLine\n"));
    show(u"a.txt"_s);
    QTest::keyClick(m_viewer.get(), Qt::Key_F, Qt::ControlModifier);
    type(child<QLineEdit>("leFind"), u"Line"_s);
    QCOMPARE(view()->currentLine(), 1);
    QTest::keyClick(m_viewer.get(), Qt::Key_M, Qt::AltModifier); // "Match case"
    QTRY_COMPARE(view()->currentLine(), 2);
    QTest::keyClick(m_viewer.get(), Qt::Key_W, Qt::AltModifier); // "Whole words"
    QTRY_COMPARE(view()->currentLine(), 3);
}

void TestFileViewerDialog::f3WithoutAnythingToFindAsksForIt()
{
    QVERIFY(write(u"a.txt"_s, "one\n"));
    show(u"a.txt"_s);
    QTest::keyClick(m_viewer.get(), Qt::Key_F3);
    QVERIFY(child<QWidget>("findBar")->isVisible());
}

void TestFileViewerDialog::theSelectedTextIsOfferedForFinding()
{
    QVERIFY(write(u"a.txt"_s, "one two one\n"));
    show(u"a.txt"_s);
    QTest::keyClick(view(), Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyClick(view(), Qt::Key_Left, Qt::ShiftModifier);
    QCOMPARE(selected(), u"one"_s);
    QTest::keyClick(m_viewer.get(), Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(child<QLineEdit>("leFind")->text(), u"one"_s);
    QTest::keyClick(m_viewer.get(), Qt::Key_F3);
    QCOMPARE(view()->currentColumn(), 12);
}

void TestFileViewerDialog::allVisiblePlacesAreMarked()
{
    QVERIFY(write(u"a.txt"_s, "ab ab\nb\nab\n"));
    show(u"a.txt"_s);
    QCOMPARE(view()->extraSelections().size(), 1); // the line of the cursor
    QTest::keyClick(m_viewer.get(), Qt::Key_F, Qt::ControlModifier);
    type(child<QLineEdit>("leFind"), u"AB"_s);
    QCOMPARE(view()->extraSelections().size(), 4);
    QCOMPARE(view()->extraSelections()[2].cursor.selectedText(), u"ab"_s);
    QTest::keyClick(m_viewer.get(), Qt::Key_M, Qt::AltModifier);
    QTRY_COMPARE(view()->extraSelections().size(), 1);
}

void TestFileViewerDialog::escapeClosesTheFindBarBeforeTheViewer()
{
    QVERIFY(write(u"a.txt"_s, "one\n"));
    show(u"a.txt"_s);
    for (const char *focus : {"leFind", "textView"}) {
        QTest::keyClick(m_viewer.get(), Qt::Key_F, Qt::ControlModifier);
        child<QWidget>(focus)->setFocus();
        QTest::keyClick(child<QWidget>(focus), Qt::Key_Escape);
        QVERIFY(!child<QWidget>("findBar")->isVisible());
        QVERIFY(m_viewer->isVisible());
    }
    QTest::keyClick(view(), Qt::Key_Escape);
    QVERIFY(!m_viewer->isVisible());
}

void TestFileViewerDialog::enterInTheTextDoesNotCloseTheViewer()
{
    QVERIFY(write(u"a.txt"_s, "one\n"));
    show(u"a.txt"_s);
    QTest::keyClick(view(), Qt::Key_Return);
    QVERIFY(m_viewer->isVisible());
}

void TestFileViewerDialog::ctrlGGoesToALine()
{
    QVERIFY(write(u"a.txt"_s, "a\nb\nc\nd\n"));
    show(u"a.txt"_s);
    QTimer::singleShot(50, this, [] {
        auto *dialog = qobject_cast<QInputDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        QCOMPARE(dialog->objectName(), u"goToLineDialog"_s);
        QCOMPARE(dialog->intMaximum(), 5);
        QTest::keyClicks(QApplication::focusWidget(), u"3"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    });
    QTest::keyClick(m_viewer.get(), Qt::Key_G, Qt::ControlModifier);
    QCOMPARE(view()->currentLine(), 3);
    QCOMPARE(label("lblPosition"), u"Line 3 of 5, column 1"_s);
}

void TestFileViewerDialog::theZoomFollowsKeysAndWheelAndIsKept()
{
    QVERIFY(write(u"a.txt"_s, "one\n"));
    show(u"a.txt"_s);
    const qreal usual = view()->fontPoints();
    QTest::keyClick(m_viewer.get(), Qt::Key_Plus, Qt::ControlModifier);
    QCOMPARE(view()->fontPoints(), usual + 1);
    QTest::keyClick(m_viewer.get(), Qt::Key_Equal, Qt::ControlModifier);
    QCOMPARE(view()->fontPoints(), usual + 2);
    QTest::keyClick(m_viewer.get(), Qt::Key_Minus, Qt::ControlModifier);
    QCOMPARE(view()->fontPoints(), usual + 1);
    wheel(2);
    QCOMPARE(view()->fontPoints(), usual + 3);
    wheel(-1);
    QCOMPARE(view()->fontPoints(), usual + 2);
    show(u"a.txt"_s);
    QCOMPARE(view()->fontPoints(), usual + 2);
    QTest::keyClick(m_viewer.get(), Qt::Key_0, Qt::ControlModifier);
    QCOMPARE(view()->fontPoints(), usual);
}

void TestFileViewerDialog::theZoomHasLimits()
{
    QVERIFY(write(u"a.txt"_s, "one\n"));
    show(u"a.txt"_s);
    wheel(1000);
    QCOMPARE(view()->fontPoints(), FileTextView::biggestFont);
    wheel(-1000);
    QCOMPARE(view()->fontPoints(), FileTextView::smallestFont);
}

void TestFileViewerDialog::ctrlCCopiesTheSelection()
{
    QVERIFY(write(u"a.txt"_s, "one\ntwo\nthree\n"));
    show(u"a.txt"_s);
    auto *copy = child<QAction>("actionCopy");
    QVERIFY(!copy->isEnabled());
    QTest::keyClick(view(), Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(view(), Qt::Key_Down, Qt::ShiftModifier);
    QVERIFY(copy->isEnabled());
    QTest::keyClick(view(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), u"one\ntwo\n"_s);
    QTest::keyClick(view(), Qt::Key_A, Qt::ControlModifier);
    copy->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), u"one\ntwo\nthree\n"_s);
}

void TestFileViewerDialog::ctrlEOpensTheFileInTheOtherProgram()
{
    QVERIFY(write(u"a b.txt"_s, "one\n"));
    show(u"a b.txt"_s);
    const UrlCatcher desktop;
    QTest::keyClick(m_viewer.get(), Qt::Key_E, Qt::ControlModifier);
    QCOMPARE(desktop.urls, QList{QUrl::fromLocalFile(path(u"a b.txt"_s))});
}

void TestFileViewerDialog::theViewerGoesToAWantedLineOnceTheTextIsThere()
{
    QVERIFY(write(u"a.txt"_s, "a\nb\nc\n"));
    m_viewer = std::make_unique<FileViewerDialog>(path(u"a.txt"_s));
    m_viewer->goToLine(3);
    waitForText();
    QCOMPARE(view()->currentLine(), 3);
    m_viewer->goToLine(2);
    QCOMPARE(view()->currentLine(), 2);
    m_viewer->goToLine(1000);
    QCOMPARE(view()->currentLine(), 4);
}

void TestFileViewerDialog::aSecondViewOfAFileIsTheFirstOne()
{
    QVERIFY(write(u"a.txt"_s, "one\n"));
    QVERIFY(write(u"b.txt"_s, "two\n"));
    QWidget parent;
    parent.show();
    FileViewerDialog *first = FileViewerDialog::showFile(path(u"a.txt"_s), &parent);
    QVERIFY(first->isVisible());
    QVERIFY(!first->isModal());
    QCOMPARE(FileViewerDialog::showFile(path(u"./a.txt"_s), &parent), first);
    QVERIFY(FileViewerDialog::showFile(path(u"b.txt"_s), &parent) != first);
}

void TestFileViewerDialog::aClosedViewerIsDeletedAndItsPlaceKept()
{
    QVERIFY(write(u"a.txt"_s, "one\n"));
    QWidget parent;
    QPointer<FileViewerDialog> viewer = FileViewerDialog::showFile(path(u"a.txt"_s), &parent);
    viewer->resize(555, 444);
    QTest::keyClick(viewer, Qt::Key_Escape);
    QTRY_VERIFY(!viewer);
    show(u"a.txt"_s);
    QCOMPARE(m_viewer->size(), QSize(555, 444));
}

void TestFileViewerDialog::aResourceIsShown()
{
    m_viewer = std::make_unique<FileViewerDialog>(u":/licences/LICENSE"_s);
    waitForText();
    QVERIFY(view()->toPlainText().contains("Apache License"_L1));
    QVERIFY(!child<QAction>("actionOpenExternal")->isEnabled());
}

void TestFileViewerDialog::everyToolSaysWhatItDoes()
{
    QVERIFY(write(u"a.txt"_s, "one\n"));
    show(u"a.txt"_s);
    const QList<QAction *> actions = child<QToolBar>("toolBar")->actions();
    for (const QAction *action : actions) {
        if (action->isSeparator())
            continue;
        QVERIFY2(!action->icon().isNull(), qPrintable(action->objectName()));
        QVERIFY2(action->toolTip().size() > 10, qPrintable(action->objectName()));
    }
}

int main(int argc, char **argv)
{
    return runWidgetTest<TestFileViewerDialog>(argc, argv);
}

#include "tst_fileviewerdialog.moc"
