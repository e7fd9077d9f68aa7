#include "forms/FormTest.h"
#include "forms/output/GeneratorOutputForm.h"
#include "generators/OutputHandlerBase.h"
#include "widgets/FindBar.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalSpy>
#include <QTableView>
#include <QTemporaryDir>
#include <QToolBar>

using namespace Qt::StringLiterals;

namespace {

QTableView &viewOf(const QWidget &form)
{
    return *form.findChild<QTableView *>(u"tvMessages"_s);
}

QAction &action(const QWidget &form, const QString &name)
{
    return *form.findChild<QAction *>(name);
}

QStringList shownTexts(const QWidget &form)
{
    return FormTest::columnTexts(*viewOf(form).model(), 0);
}

QVariant placed(const QString &text, const ProjectLocation &place)
{
    return QVariant::fromValue(OutputMessage{.text = text, .location = place});
}

void select(QTableView &view, const QList<int> &rows)
{
    view.clearSelection();
    for (const int row : rows)
        view.selectionModel()->select(view.model()->index(row, 0), QItemSelectionModel::Select);
}

} // namespace

/** The output page as its user works with it. */
class tst_GeneratorOutputForm : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void messagesComeInBatches();
    void onlyWriteMessageHasATime();
    void theLogKnowsMessagesThatAreNotShownYet();
    void doubleClickAndEnterAskForThePlace();
    void aMessageWithoutPlaceAsksForNothing();
    void levelButtonsCountAndHide();
    void onANarrowPageLevelButtonsShowTheirCountOnly();
    void whenAllIsHiddenThePageSaysSo();
    void controlFOpensTheFindBarAlthoughTheWindowHasThatShortcut();
    void findGoesThroughTheMatches();
    void findTellsWhenThereIsNothing();
    void selectedMessagesAreCopiedInTheirOrder();
    void theEditMenuCopiesWhatIsSelected();
    void messagesAreSavedWithTheirTimes();
    void aFileThatCannotBeWrittenIsToldAndNothingIsLost();
    void clearEmptiesThePage();
    void theViewFollowsTheEndUnlessTheUserLooksElsewhere();
    void theLongestMessageCanBeScrolledTo();
    void aChangeOfTheProjectKeepsTheMessages();
    void fiftyThousandMessagesStayFast();
};

void tst_GeneratorOutputForm::messagesComeInBatches()
{
    GeneratorOutputForm form;
    form.show();
    QVERIFY(form.findChild<QLabel *>(u"lblNoMessages"_s)->isVisible());
    const QSignalSpy inserted(viewOf(form).model(), &QAbstractItemModel::rowsInserted);
    for (int i = 0; i < 100; ++i)
        form.writeMessage(u"message %1"_s.arg(i));
    QCOMPARE(inserted.count(), 0);
    QTRY_COMPARE(viewOf(form).model()->rowCount(), 100);
    QCOMPARE(inserted.count(), 1);
    QVERIFY(viewOf(form).isVisible());
    QVERIFY(!form.findChild<QLabel *>(u"lblNoMessages"_s)->isVisible());
}

void tst_GeneratorOutputForm::onlyWriteMessageHasATime()
{
    GeneratorOutputForm form;
    form.writeMessage(u"with"_s);
    form.writeRaw(u"without"_s);
    QCOMPARE(form.getLogging(), u"with\nwithout\n"_s);
    const QAbstractItemModel &model = *viewOf(form).model();
    const QTime time = model.index(0, 0).data(OutputModel::TimeRole).toTime();
    QVERIFY(time.isValid());
    QVERIFY(qAbs(time.secsTo(QTime::currentTime())) < 60);
    QVERIFY(!model.index(1, 0).data(OutputModel::TimeRole).isValid());
}

void tst_GeneratorOutputForm::theLogKnowsMessagesThatAreNotShownYet()
{
    GeneratorOutputForm form;
    form.writeMessage(u"<strong>Error: </strong>Object 0x1000\nis missing"_s);
    form.writeRaw(placed(u"<i>Corrected: x</i>"_s, ProjectLocation::ofLine(0)));
    QCOMPARE(form.getLogging(), u"Error: Object 0x1000 | is missing\nCorrected: x\n"_s);
}

void tst_GeneratorOutputForm::doubleClickAndEnterAskForThePlace()
{
    GeneratorOutputForm form;
    form.resize(600, 400);
    form.show();
    const ProjectLocation object = ProjectLocation::ofObject(0, 0x1018);
    const ProjectLocation group = ProjectLocation::ofPgn(1, 65226, ObjectDataBase::Transmit);
    form.writeMessage(placed(u"<strong>Error: </strong>of an object"_s, object));
    form.writeMessage(placed(u"Warning: of a group"_s, group));
    QTRY_COMPARE(viewOf(form).model()->rowCount(), 2);
    QVERIFY(form.findChild<QLabel *>(u"lblState"_s)->isVisible());
    QSignalSpy wishes(&form, &GeneratorOutputForm::locationActivated);
    QTableView &view = viewOf(form);
    const QPoint first = view.visualRect(view.model()->index(0, 0)).center();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, first);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, first);
    QCOMPARE(wishes.count(), 1);
    QCOMPARE(wishes.takeFirst().constFirst().value<ProjectLocation>(), object);
    QTest::keyClick(&view, Qt::Key_Down);
    QTest::keyClick(&view, Qt::Key_Return);
    QCOMPARE(wishes.count(), 1);
    QCOMPARE(wishes.takeFirst().constFirst().value<ProjectLocation>(), group);
    action(form, u"actionOpenPlace"_s).trigger();
    QCOMPARE(wishes.count(), 1);
}

void tst_GeneratorOutputForm::aMessageWithoutPlaceAsksForNothing()
{
    GeneratorOutputForm form;
    form.show();
    form.writeMessage(u"Generation finished."_s);
    QTRY_COMPARE(viewOf(form).model()->rowCount(), 1);
    const QSignalSpy wishes(&form, &GeneratorOutputForm::locationActivated);
    viewOf(form).setCurrentIndex(viewOf(form).model()->index(0, 0));
    QTest::keyClick(&viewOf(form), Qt::Key_Return);
    QCOMPARE(wishes.count(), 0);
    QVERIFY(!action(form, u"actionOpenPlace"_s).isEnabled());
}

void tst_GeneratorOutputForm::levelButtonsCountAndHide()
{
    GeneratorOutputForm form;
    form.show();
    for (const QString &text : {u"<strong>Error: </strong>a"_s, u"Warning: b"_s,
                                u"<strong>Hint: </strong>c"_s, u"<i>Corrected: d</i>"_s, u"e"_s, u"f"_s})
        form.writeMessage(text);
    QTRY_COMPARE(viewOf(form).model()->rowCount(), 6);
    QCOMPARE(action(form, u"actionShowErrors"_s).text(), u"Errors (1)"_s);
    QCOMPARE(action(form, u"actionShowWarnings"_s).text(), u"Warnings (1)"_s);
    QCOMPARE(action(form, u"actionShowHints"_s).text(), u"Hints (1)"_s);
    QCOMPARE(action(form, u"actionShowCorrections"_s).text(), u"Corrections (1)"_s);
    QCOMPARE(action(form, u"actionShowInformation"_s).text(), u"Information (2)"_s);
    action(form, u"actionShowInformation"_s).trigger();
    action(form, u"actionShowHints"_s).trigger();
    QCOMPARE(shownTexts(form), (QStringList{u"Error: a"_s, u"Warning: b"_s, u"Corrected: d"_s}));
    QCOMPARE(form.getLogging().count(u'\n'), 6); // the log is whole whatever is shown
    action(form, u"actionShowInformation"_s).trigger();
    QCOMPARE(viewOf(form).model()->rowCount(), 5);
}

void tst_GeneratorOutputForm::onANarrowPageLevelButtonsShowTheirCountOnly()
{
    GeneratorOutputForm form;
    form.resize(1200, 400);
    form.show();
    form.writeMessage(u"Warning: b"_s);
    form.getLogging();
    const QAction &warnings = action(form, u"actionShowWarnings"_s);
    QCOMPARE(warnings.iconText(), u"Warnings (1)"_s);
    form.resize(400, 400);
    QTRY_COMPARE(warnings.iconText(), u"1"_s);
    QCOMPARE(warnings.text(), u"Warnings (1)"_s);
    const auto *bar = form.findChild<QToolBar *>(u"outputToolBar"_s);
    QTRY_VERIFY(bar->widgetForAction(&action(form, u"actionClearMessages"_s))->isVisible());
    form.resize(1200, 400);
    QTRY_COMPARE(warnings.iconText(), u"Warnings (1)"_s);
}

void tst_GeneratorOutputForm::whenAllIsHiddenThePageSaysSo()
{
    GeneratorOutputForm form;
    form.show();
    form.writeMessage(u"a"_s);
    QTRY_COMPARE(viewOf(form).model()->rowCount(), 1);
    action(form, u"actionShowInformation"_s).trigger();
    const auto *state = form.findChild<QLabel *>(u"lblState"_s);
    QVERIFY(state->isVisible());
    QVERIFY(state->text().contains(u"hidden"_s));
    action(form, u"actionShowInformation"_s).trigger();
    QVERIFY(!state->isVisible());
}

void tst_GeneratorOutputForm::controlFOpensTheFindBarAlthoughTheWindowHasThatShortcut()
{
    QMainWindow window;
    auto *form = new GeneratorOutputForm;
    window.setCentralWidget(form);
    const QShortcut windowFind(QKeySequence::Find, &window);
    const QShortcut windowCopy(QKeySequence::Copy, &window);
    const QSignalSpy windowFinds(&windowFind, &QShortcut::activated);
    const QSignalSpy windowCopies(&windowCopy, &QShortcut::activated);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    form->writeMessage(u"message"_s);
    QTRY_COMPARE(viewOf(*form).model()->rowCount(), 1);
    viewOf(*form).setFocus();
    viewOf(*form).selectAll();
    QGuiApplication::clipboard()->clear();
    QTest::keyClick(&viewOf(*form), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), u"message"_s);
    QTest::keyClick(&viewOf(*form), Qt::Key_F, Qt::ControlModifier);
    auto *bar = form->findChild<FindBar *>(u"findBar"_s);
    QVERIFY(bar->isVisible());
    QVERIFY(bar->isAncestorOf(QApplication::focusWidget()));
    QCOMPARE(windowFinds.count(), 0);
    QCOMPARE(windowCopies.count(), 0);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QVERIFY(!bar->isVisible());
    QCOMPARE(QApplication::focusWidget(), &viewOf(*form));
}

void tst_GeneratorOutputForm::findGoesThroughTheMatches()
{
    GeneratorOutputForm form;
    form.show();
    for (const QString &text : {u"alpha one"_s, u"beta"_s, u"gamma ONE"_s, u"delta"_s})
        form.writeMessage(text);
    QTRY_COMPARE(viewOf(form).model()->rowCount(), 4);
    action(form, u"actionFindMessage"_s).trigger();
    auto *input = form.findChild<QLineEdit *>(u"leFind"_s);
    const auto *state = form.findChild<QLabel *>(u"lblState"_s);
    QTest::keyClicks(input, u"one"_s);
    QCOMPARE(viewOf(form).currentIndex().row(), 0);
    QCOMPARE(state->text(), u"Line 1 of 2 with this text"_s);
    QTest::keyClick(input, Qt::Key_Return);
    QCOMPARE(viewOf(form).currentIndex().row(), 2);
    QCOMPARE(state->text(), u"Line 2 of 2 with this text"_s);
    QTest::keyClick(input, Qt::Key_Return);
    QCOMPARE(viewOf(form).currentIndex().row(), 0);
    QTest::keyClick(&viewOf(form), Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(viewOf(form).currentIndex().row(), 2);
    QTest::keyClick(&viewOf(form), Qt::Key_F3);
    QCOMPARE(viewOf(form).currentIndex().row(), 0);
}

void tst_GeneratorOutputForm::findTellsWhenThereIsNothing()
{
    GeneratorOutputForm form;
    form.show();
    form.writeMessage(u"alpha"_s);
    QTRY_COMPARE(viewOf(form).model()->rowCount(), 1);
    action(form, u"actionFindMessage"_s).trigger();
    QTest::keyClicks(form.findChild<QLineEdit *>(u"leFind"_s), u"omega"_s);
    const auto *state = form.findChild<QLabel *>(u"lblState"_s);
    QVERIFY(state->isVisible());
    QCOMPARE(state->text(), u"Not found"_s);
}

void tst_GeneratorOutputForm::selectedMessagesAreCopiedInTheirOrder()
{
    GeneratorOutputForm form;
    form.show();
    for (const QString &text : {u"<b>one</b>"_s, u"two"_s, u"three"_s})
        form.writeMessage(text);
    QTRY_COMPARE(viewOf(form).model()->rowCount(), 3);
    QVERIFY(!action(form, u"actionCopyMessages"_s).isEnabled());
    select(viewOf(form), {2, 0});
    QVERIFY(action(form, u"actionCopyMessages"_s).isEnabled());
    action(form, u"actionCopyMessages"_s).trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), u"one\nthree"_s);
}

void tst_GeneratorOutputForm::theEditMenuCopiesWhatIsSelected()
{
    GeneratorOutputForm form;
    form.show();
    form.writeMessage(u"one"_s);
    QTRY_COMPARE(viewOf(form).model()->rowCount(), 1);
    const QSignalSpy changes(&form, &BaseMainForm::editStateChanged);
    QVERIFY(!form.canEdit(BaseMainForm::EditCommand::Copy));
    select(viewOf(form), {0});
    QVERIFY(changes.count() > 0);
    QVERIFY(form.canEdit(BaseMainForm::EditCommand::Copy));
    QVERIFY(!form.canEdit(BaseMainForm::EditCommand::Delete));
    QGuiApplication::clipboard()->clear();
    form.edit(BaseMainForm::EditCommand::Delete);
    QVERIFY(QGuiApplication::clipboard()->text().isEmpty());
    form.edit(BaseMainForm::EditCommand::Copy);
    QCOMPARE(QGuiApplication::clipboard()->text(), u"one"_s);
}

void tst_GeneratorOutputForm::messagesAreSavedWithTheirTimes()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"messages.txt"_s);
    GeneratorOutputForm form;
    form.writeMessage(u"<strong>Error: </strong>ä"_s);
    form.writeRaw(u"raw"_s);
    QString error;
    QVERIFY2(form.saveTo(path, &error), qPrintable(error));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString content = QString::fromUtf8(file.readAll());
    static const QRegularExpression expected(u"^\\d\\d:\\d\\d:\\d\\d Error: ä\nraw\n$"_s);
    QVERIFY2(expected.match(content).hasMatch(), qPrintable(content));
}

void tst_GeneratorOutputForm::aFileThatCannotBeWrittenIsToldAndNothingIsLost()
{
    GeneratorOutputForm form;
    form.writeMessage(u"one"_s);
    QString error;
    QVERIFY(!form.saveTo(u"/no/such/folder/messages.txt"_s, &error));
    QVERIFY(!error.isEmpty());
    QCOMPARE(form.getLogging(), u"one\n"_s);
}

void tst_GeneratorOutputForm::clearEmptiesThePage()
{
    GeneratorOutputForm form;
    form.show();
    form.writeMessage(u"shown"_s);
    QTRY_COMPARE(viewOf(form).model()->rowCount(), 1);
    form.writeMessage(u"not shown yet"_s);
    action(form, u"actionClearMessages"_s).trigger();
    QCOMPARE(form.getLogging(), QString());
    QCOMPARE(viewOf(form).model()->rowCount(), 0);
    QVERIFY(form.findChild<QLabel *>(u"lblNoMessages"_s)->isVisible());
    QCOMPARE(action(form, u"actionShowInformation"_s).text(), u"Information (0)"_s);
    QVERIFY(!action(form, u"actionSaveMessages"_s).isEnabled());
}

void tst_GeneratorOutputForm::theViewFollowsTheEndUnlessTheUserLooksElsewhere()
{
    GeneratorOutputForm form;
    form.resize(600, 300);
    form.show();
    const auto write = [&form](int count) {
        for (int i = 0; i < count; ++i)
            form.writeMessage(u"message"_s);
        form.getLogging(); // what is pending is taken over
        QCoreApplication::processEvents();
    };
    write(200);
    QScrollBar &bar = *viewOf(form).verticalScrollBar();
    QVERIFY(bar.maximum() > 0);
    QCOMPARE(bar.value(), bar.maximum());
    bar.setValue(10);
    write(200);
    QCOMPARE(bar.value(), 10);
}

void tst_GeneratorOutputForm::theLongestMessageCanBeScrolledTo()
{
    GeneratorOutputForm form;
    form.resize(400, 300);
    form.show();
    form.writeMessage(u"short"_s);
    form.getLogging();
    QCoreApplication::processEvents();
    QCOMPARE(viewOf(form).horizontalScrollBar()->maximum(), 0);
    form.writeMessage(QString(500, u'W'));
    form.getLogging();
    QCoreApplication::processEvents();
    const int needed = viewOf(form).fontMetrics().horizontalAdvance(QString(500, u'W'));
    QVERIFY(viewOf(form).columnWidth(0) >= needed);
    QVERIFY(viewOf(form).horizontalScrollBar()->maximum() > 0);
}

void tst_GeneratorOutputForm::aChangeOfTheProjectKeepsTheMessages()
{
    GeneratorOutputForm form;
    form.show();
    form.setDataBase(FormTest::makeStore());
    form.writeMessage(u"one"_s);
    form.showLine(1, true);
    form.setDataBase(FormTest::makeStore());
    QCOMPARE(form.getLogging(), u"one\n"_s);
}

void tst_GeneratorOutputForm::fiftyThousandMessagesStayFast()
{
    constexpr int count = 50000;
    constexpr int generousMs = 5000; // sanitizers need most of it
    GeneratorOutputForm form;
    form.resize(800, 600);
    form.show();
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < count; ++i) {
        form.writeMessage(
            placed(u"<strong>Warning: </strong>Object 0x%1: something is wrong with it"_s.arg(i),
                   ProjectLocation::ofObject(0, quint16(i))));
        if (i % 500 == 0)
            QCoreApplication::processEvents(); // a run serves events between its steps
    }
    QTRY_COMPARE(viewOf(form).model()->rowCount(), count);
    const qint64 writtenMs = timer.restart();
    const qsizetype length = form.getLogging().size();
    const qint64 logMs = timer.restart();
    action(form, u"actionShowWarnings"_s).trigger();
    action(form, u"actionShowWarnings"_s).trigger();
    QCoreApplication::processEvents();
    const qint64 filterMs = timer.elapsed();
    QVERIFY(length > count * 40);
    qInfo("50,000 messages: written %lld ms, log %lld ms, filter twice %lld ms", writtenMs, logMs, filterMs);
    QVERIFY2(writtenMs < generousMs && logMs < generousMs && filterMs < generousMs, "too slow");
}

QTEST_MAIN(tst_GeneratorOutputForm)

#include "tst_generatoroutputform.moc"
