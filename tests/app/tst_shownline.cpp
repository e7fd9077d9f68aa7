#include "app/BoxAnswerer.h"
#include "app/LinesComboBox.h"
#include "app/SelectProtocolDialog.h"
#include "app/TestHome.h"
#include "app/WindowTest.h"
#include "support/DialogUser.h"
#include "widgets/KorvelBaseApplication.h"

#include <QAbstractItemView>
#include <QLabel>
#include <QSignalSpy>
#include <QToolBox>
#include <QToolButton>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

/** The line that the window shows: how the user chooses it, and what happens when it is not there. */
class TestShownLine : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void aProjectWithoutLineZeroShowsItsFirstLine();
    void undoOfAnAddedLineShowsALineThatIsThere();
    void linesThatComeAndGoByOtherRoadsAreFollowed();
    void whatAnImportStagesIsNoLine();
    void whatIsEnteredIsStoredBeforeAnotherLineIsShown();
    void theTitlesNameTheLine();
    void theProtocolIsAskedForByTheNumberOfTheLine();
    void aJ1939SettingOfTheShownLineReadsItsTypeAgain_data();
    void aJ1939SettingOfTheShownLineReadsItsTypeAgain();

    void keysOpenTheListInsteadOfRunningCommands_data();
    void keysOpenTheListInsteadOfRunningCommands();
    void aLineIsChosenByKeysInTheList();
    void theWheelChoosesNothing();
    void theListShowsItsEntriesWhole();
    void deletingIsNotWhatEnterAnswers();

private:
    std::unique_ptr<VexMainWindow> openLines(const QList<quint8> &lines);
    static LinesComboBox *box(const VexMainWindow &window) { return window.findChild<LinesComboBox *>(); }
    static void choose(const VexMainWindow &window, const QString &entry)
    {
        Q_EMIT box(window)->activated(box(window)->findText(entry));
    }
};

std::unique_ptr<VexMainWindow> TestShownLine::openLines(const QList<quint8> &lines)
{
    ObjectDataBase project;
    if (!TestProject::fill(project, lines, u"1"_s) || !project.saveProject(path(u"lines.vexp"_s)))
        qFatal("no project for the test");
    auto window = makeWindow();
    window->openProject(path(u"lines.vexp"_s));
    QTest::qWait(20); // all signs of the opening have gone
    return window;
}

void TestShownLine::aProjectWithoutLineZeroShowsItsFirstLine()
{
    ObjectDataBase project;
    QVERIFY(TestProject::fill(project, {2, 5}, u"1"_s));
    QVERIFY(project.removeLine(0));
    QVERIFY(project.setGeneralSetting(u"line2type"_s, u"6"_s));
    QVERIFY(project.saveProject(path(u"late.vexp"_s)));
    const auto window = makeWindow();
    window->openProject(path(u"late.vexp"_s));
    QCOMPARE(m_store->getLines(), QList<quint8>({2, 5}));
    QCOMPARE(window->currentLine(), quint8(2));
    QCOMPARE(box(*window)->currentText(), u"Line 2"_s);
    QCOMPARE(window->findChild<QToolButton *>(u"protocolButton"_s)->text(), u"CANopen + CAN"_s);
}

void TestShownLine::undoOfAnAddedLineShowsALineThatIsThere()
{
    const auto window = openLines({0});
    window->show();
    const BoxAnswerer answerer(QMessageBox::Yes);
    choose(*window, u"Add line..."_s);
    QCOMPARE(window->currentLine(), quint8(1));
    QTRY_VERIFY(action(*window, u"actionUndo"_s)->isEnabled());
    action(*window, u"actionUndo"_s)->trigger();
    QCOMPARE(m_store->getLines(), QList<quint8>{0});
    QCOMPARE(window->currentLine(), quint8(0));
    QCOMPARE(box(*window)->currentText(), u"Line 0"_s);
    QCOMPARE(box(*window)->findText(u"Line 1"_s), -1);
}

void TestShownLine::linesThatComeAndGoByOtherRoadsAreFollowed()
{
    const auto window = openLines({0, 1});
    QVERIFY(m_store->addNode(4, ObjectDataBase::NODE_DATA_T()));
    QVERIFY(box(*window)->findText(u"Line 4"_s) >= 0);
    QCOMPARE(window->currentLine(), quint8(0));
    choose(*window, u"Line 4"_s);
    QVERIFY(m_store->removeLine(4));
    QCOMPARE(box(*window)->findText(u"Line 4"_s), -1);
    QCOMPARE(window->currentLine(), quint8(0));
    QCOMPARE(box(*window)->currentText(), u"Line 0"_s);
}

void TestShownLine::whatAnImportStagesIsNoLine()
{
    const auto window = openLines({0});
    const int entries = box(*window)->count();
    for (const quint8 line : {ObjectDataBase::ClipboardLine, ObjectDataBase::ReferenceLine})
        QVERIFY(m_store->addNode(line, ObjectDataBase::NODE_DATA_T()));
    window->updateLinesComboBox();
    QCOMPARE(box(*window)->count(), entries);
}

void TestShownLine::whatIsEnteredIsStoredBeforeAnotherLineIsShown()
{
    const auto window = openLines({0, 7});
    QList<int> linesAtCommit;
    connect(window.get(), &VexMainWindow::saveRequest, this,
            [&] { linesAtCommit.append(window->currentLine()); });
    choose(*window, u"Line 7"_s);
    QCOMPARE(linesAtCommit, QList<int>{0});
    window->handleGotoIndex(0, 0x1000);
    QCOMPARE(linesAtCommit, QList<int>({0, 7}));
    QCOMPARE(window->currentLine(), quint8(0));
}

void TestShownLine::theTitlesNameTheLine()
{
    const auto window = openLines({0, 7});
    choose(*window, u"Line 7"_s);
    const auto *pages = window->findChild<QToolBox *>(u"tbMain"_s);
    const auto title = [&](const QString &form) {
        return pages->itemText(pages->indexOf(window->findChild<QWidget *>(form)));
    };
    QCOMPARE(title(u"objectDictionaryForm"_s), u"CANopen Object Dictionary - line 7"_s);
    QCOMPARE(title(u"deviceDescriptionForm"_s), u"CANopen Device Description - line 7"_s);
    QCOMPARE(title(u"j1939SignalForm"_s), u"J1939 Signal Definition - line 7"_s);
}

void TestShownLine::theProtocolIsAskedForByTheNumberOfTheLine()
{
    const auto window = openLines({0, 1, 3});
    const BoxAnswerer answerer(QMessageBox::Yes);
    QString question;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&question] {
        auto *dialog = qobject_cast<SelectProtocolDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        question = dialog->findChild<QLabel *>(u"lblQuestion"_s)->text();
        dialog->reject();
    });
    timer.start(5);
    choose(*window, u"Add line..."_s);
    QCOMPARE(question, u"Select CAN protocol for line 2:"_s);
    choose(*window, u"Change type of this line..."_s);
    QCOMPARE(question, u"Select CAN protocol for line 0:"_s);
    QVERIFY(!window->isModified());
}

void TestShownLine::aJ1939SettingOfTheShownLineReadsItsTypeAgain_data()
{
    QTest::addColumn<quint8>("line");
    QTest::addColumn<QString>("shown");
    QTest::newRow("shown line") << quint8(0) << u"both"_s;
    QTest::newRow("other line") << quint8(1) << u"CANopen"_s;
}

void TestShownLine::aJ1939SettingOfTheShownLineReadsItsTypeAgain()
{
    QFETCH(const quint8, line);
    QFETCH(const QString, shown);
    const auto window = openLines({0, 1});
    m_store->blockSignals(true);
    QVERIFY(m_store->setGeneralSetting(u"line0type"_s, u"5"_s));
    m_store->blockSignals(false);
    QVERIFY(!window->isModified());
    ObjectDataBase::ChangeSet change;
    change.type = ObjectDataBase::J1939SettingChanged;
    change.line = line;
    Q_EMIT m_store->updateNotify(change);
    QVERIFY(window->isModified());
    QCOMPARE(window->findChild<QToolButton *>(u"protocolButton"_s)->text(), shown);
}

void TestShownLine::keysOpenTheListInsteadOfRunningCommands_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("down") << Qt::Key_Down;
    QTest::newRow("up") << Qt::Key_Up;
    QTest::newRow("page down") << Qt::Key_PageDown;
    QTest::newRow("end") << Qt::Key_End;
    QTest::newRow("first letter of a command") << Qt::Key_A;
    QTest::newRow("space") << Qt::Key_Space;
}

void TestShownLine::keysOpenTheListInsteadOfRunningCommands()
{
    QFETCH(const Qt::Key, key);
    const auto window = openLines({0});
    window->show();
    box(*window)->setFocus();
    const QSignalSpy activated(box(*window), &QComboBox::activated);
    const BoxAnswerer answerer(QMessageBox::No);
    QTest::keyClick(box(*window), key);
    QVERIFY(box(*window)->view()->isVisible());
    box(*window)->hidePopup();
    QCOMPARE(activated.count(), 0);
    QCOMPARE(box(*window)->currentText(), u"Line 0"_s);
    QVERIFY(answerer.texts.isEmpty());
}

void TestShownLine::aLineIsChosenByKeysInTheList()
{
    const auto window = openLines({0, 3});
    window->show();
    box(*window)->setFocus();
    QTest::keyClick(box(*window), Qt::Key_Down);
    QAbstractItemView *list = box(*window)->view();
    QTRY_VERIFY(list->isVisible());
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    QTRY_COMPARE(window->currentLine(), quint8(3));
}

void TestShownLine::theWheelChoosesNothing()
{
    const auto window = openLines({0, 3});
    window->show();
    box(*window)->setFocus();
    const BoxAnswerer answerer(QMessageBox::No);
    for (const int notch : {-120, -120, -120, 120}) {
        QWheelEvent wheel(QPointF(5, 5), box(*window)->mapToGlobal(QPointF(5, 5)), {}, {0, notch},
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(box(*window), &wheel);
    }
    QCOMPARE(window->currentLine(), quint8(0));
    QCOMPARE(box(*window)->currentText(), u"Line 0"_s);
    QVERIFY(answerer.texts.isEmpty());
}

void TestShownLine::theListShowsItsEntriesWhole()
{
    const auto window = openLines({0});
    window->show();
    box(*window)->showPopup();
    const QAbstractItemView *list = box(*window)->view();
    QVERIFY2(list->viewport()->width() >= list->sizeHintForColumn(0),
             qPrintable(u"%1 %2"_s.arg(list->viewport()->width()).arg(list->sizeHintForColumn(0))));
    box(*window)->hidePopup();
}

void TestShownLine::deletingIsNotWhatEnterAnswers()
{
    const auto window = openLines({0, 1});
    bool asked = false;
    const DialogUser<QMessageBox> user([&asked](QMessageBox &question) {
        asked = true;
        QTest::keyClick(&question, Qt::Key_Return);
    });
    choose(*window, u"Delete this line..."_s);
    QVERIFY(asked);
    QCOMPARE(m_store->getLines(), QList<quint8>({0, 1}));
}

int main(int argc, char **argv)
{
    const TestHome home;
    KorvelBaseApplication application(argc, argv, u"CANopen NodeSmith"_s, u"4.3.2"_s);
    QCoreApplication::setOrganizationName(u"korvel"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    TestShownLine test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_shownline.moc"
