#include "app/BoxAnswerer.h"
#include "app/GUIOutputHandler.h"
#include "app/GUIPostGenProgressHandler.h"
#include "app/TestHome.h"
#include "forms/output/GeneratorOutputForm.h"
#include "widgets/KorvelBaseApplication.h"

#include <QLabel>
#include <QProgressDialog>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

using namespace Qt::StringLiterals;

/** The ways of a run to the user: messages and progress. */
class TestOutputHandlers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void messagesReachThePageWithTheirPlace();
    void withoutPageMessagesGoNowhere();
    void aPageThatHasGoneIsForgotten();

    void theProgressDialogComesOnlyWhenItIsShown();
    void itIsShownOverTheMiddleOfTheWindow();
    void textsAreHandedOn();
    void cancelIsHandedOn();
    void aMessageIsABoxWithItsDetail();
    void aHiddenRunAlsoTellsTheLog();

private:
    static QProgressDialog *dialogOf(const QWidget &window) { return window.findChild<QProgressDialog *>(); }
};

void TestOutputHandlers::messagesReachThePageWithTheirPlace()
{
    GeneratorOutputForm form;
    GUIOutputHandler handler;
    handler.setOutputForm(&form);
    const ProjectLocation place = ProjectLocation::ofSubIndex(0, 0x1018, 1);
    handler.writeMessage(
        QVariant::fromValue(OutputMessage{.text = u"<strong>Error: </strong>x"_s, .location = place}));
    handler.writeRaw(u"raw"_s);
    QCOMPARE(handler.getLogging(), u"Error: x\nraw\n"_s);
    const QAbstractItemModel *model = form.findChild<QTableView *>(u"tvMessages"_s)->model();
    QCOMPARE(model->index(0, 0).data(OutputModel::PlaceRole).value<ProjectLocation>(), place);
    QVERIFY(model->index(0, 0).data(OutputModel::TimeRole).isValid());
    QVERIFY(!model->index(1, 0).data(OutputModel::TimeRole).isValid());
}

void TestOutputHandlers::withoutPageMessagesGoNowhere()
{
    GUIOutputHandler handler;
    handler.writeMessage(u"x"_s);
    handler.writeRaw(u"y"_s);
    QCOMPARE(handler.getLogging(), QString());
}

void TestOutputHandlers::aPageThatHasGoneIsForgotten()
{
    GUIOutputHandler handler;
    {
        GeneratorOutputForm form;
        handler.setOutputForm(&form);
    }
    handler.writeMessage(u"x"_s);
    QCOMPARE(handler.getLogging(), QString());
}

void TestOutputHandlers::theProgressDialogComesOnlyWhenItIsShown()
{
    QWidget window;
    window.show();
    GUIPostGenProgressHandler handler(&window);
    QVERIFY(dialogOf(window));
    dialogOf(window)->setMinimumDuration(10); // a waiting progress dialog would come up by now
    QTest::qWait(100);
    QVERIFY(!dialogOf(window)->isVisible());
    handler.show();
    QVERIFY(dialogOf(window)->isVisible());
    handler.hide();
    QVERIFY(!dialogOf(window)->isVisible());
}

void TestOutputHandlers::itIsShownOverTheMiddleOfTheWindow()
{
    QWidget window;
    window.setGeometry(100, 100, 600, 500);
    window.show();
    GUIPostGenProgressHandler handler(&window);
    handler.setLabelText(u"Generation in progress..."_s);
    handler.show();
    const QPoint distance = dialogOf(window)->geometry().center() - window.frameGeometry().center();
    QVERIFY2(distance.manhattanLength() < 5, qPrintable(u"%1 %2"_s.arg(distance.x()).arg(distance.y())));
}

void TestOutputHandlers::textsAreHandedOn()
{
    QWidget window;
    GUIPostGenProgressHandler handler(&window);
    handler.setLabelText(u"EDS Checker running"_s);
    handler.setCancelButtonText(u"Cancel process"_s);
    handler.adjustSize();
    QCOMPARE(dialogOf(window)->labelText(), u"EDS Checker running"_s);
    QCOMPARE(dialogOf(window)->findChild<QPushButton *>()->text(), u"Cancel process"_s);
}

void TestOutputHandlers::cancelIsHandedOn()
{
    QWidget window;
    window.show();
    GUIPostGenProgressHandler handler(&window);
    handler.setCancelButtonText(u"Cancel process"_s);
    handler.show();
    const QSignalSpy cancelled(&handler, &PostGenProgressHandler::cancelProcess);
    QTest::mouseClick(dialogOf(window)->findChild<QPushButton *>(), Qt::LeftButton);
    QCOMPARE(cancelled.count(), 1);
    handler.show(); // a second run begins as the first
    QVERIFY(dialogOf(window)->isVisible());
    QTest::mouseClick(dialogOf(window)->findChild<QPushButton *>(), Qt::LeftButton);
    QCOMPARE(cancelled.count(), 2);
}

void TestOutputHandlers::aMessageIsABoxWithItsDetail()
{
    QWidget window;
    GUIPostGenProgressHandler handler(&window);
    const BoxAnswerer answerer(QMessageBox::Ok);
    const int answer = handler.showMessage(&handler, u"CANopen NodeSmith"_s,
                                           u"Could not start post gen process."_s, u"No such file"_s);
    QCOMPARE(answer, int(QMessageBox::Ok));
    QCOMPARE(answerer.titles, QStringList{u"CANopen NodeSmith"_s});
    QCOMPARE(answerer.texts, QStringList{u"Could not start post gen process."_s});
    QCOMPARE(answerer.informativeTexts, QStringList{u"No such file"_s});
}

void TestOutputHandlers::aHiddenRunAlsoTellsTheLog()
{
    QWidget window;
    GUIPostGenProgressHandler handler(&window, true);
    const BoxAnswerer answerer(QMessageBox::Ok);
    static const QRegularExpression told(u"Could not start post gen process.*No such file"_s);
    static const QRegularExpression waits(u"waits for an answer"_s);
    QTest::ignoreMessage(QtWarningMsg, told);
    QTest::ignoreMessage(QtWarningMsg, waits);
    handler.showMessage(nullptr, u"title"_s, u"Could not start post gen process."_s, u"No such file"_s);
    QCOMPARE(answerer.texts.size(), 1);
}

int main(int argc, char **argv)
{
    const TestHome home;
    KorvelBaseApplication application(argc, argv, u"CANopen NodeSmith"_s, u"4.3.2"_s);
    QCoreApplication::setOrganizationName(u"korvel"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    TestOutputHandlers test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_outputhandlers.moc"
