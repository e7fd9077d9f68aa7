#include "app/BoxAnswerer.h"
#include "app/SelectProtocolDialog.h"
#include "app/TestHome.h"
#include "app/WindowTest.h"
#include "widgets/KorvelBaseApplication.h"

#include <QComboBox>
#include <QSignalSpy>
#include <QToolBox>
#include <QToolButton>

using namespace Qt::StringLiterals;

/** Adding, duplicating, deleting and changing lines through the lines box, and what the pages show then. */
class TestMainWindowLines : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void theBoxOffersTheCommandsOfTheEdition_data();
    void theBoxOffersTheCommandsOfTheEdition();
    void aSecondLineOfACANopenProjectIsACANopenOne();
    void aThirdLineOfACANopenProjectIsAskedFor();
    void theCanEditionAsksForEveryLine();
    void aCancelledProtocolAddsNoLine();
    void noToTheQuestionChangesNothing_data();
    void noToTheQuestionChangesNothing();
    void thirtyTwoLinesRefuseAFurtherOne_data();
    void thirtyTwoLinesRefuseAFurtherOne();
    void aDuplicatedLineIsShown();
    void aDeletedLineLeavesTheFirstOneShown();
    void aChangedTypeChangesThePages();
    void aPlainSelectionShowsTheLine();
    void thePagesFollowTheTypeOfTheLine_data();
    void thePagesFollowTheTypeOfTheLine();
    void titlesNameTheLineOnlyInProjectsOfSeveralLines();

private:
    std::unique_ptr<VexMainWindow> openLines(const QList<quint8> &lines, const QString &type = u"1"_s);
    static QComboBox *box(const VexMainWindow &window);
    static void runCommand(const VexMainWindow &window, const QString &text);
    static void acceptProtocol(VexMainWindow &window, LineType type);
    static QStringList entries(const VexMainWindow &window);
    static QStringList enabledPages(const VexMainWindow &window);
};

std::unique_ptr<VexMainWindow> TestMainWindowLines::openLines(const QList<quint8> &lines, const QString &type)
{
    ObjectDataBase project;
    if (!TestProject::fill(project, lines, type) || !project.saveProject(path(u"lines.vexp"_s)))
        return nullptr;
    auto window = makeWindow();
    window->openProject(path(u"lines.vexp"_s));
    QTest::qWait(20); // all signs of the opening have gone
    return window;
}

QComboBox *TestMainWindowLines::box(const VexMainWindow &window)
{
    return window.findChild<QComboBox *>(u"linesComboBox"_s);
}

QStringList TestMainWindowLines::entries(const VexMainWindow &window)
{
    QStringList texts;
    for (int row = 0; row < box(window)->count(); ++row)
        if (box(window)->itemData(row).isValid())
            texts.append(box(window)->itemText(row));
    return texts;
}

/** Chooses an entry as a user does: the box shows it and tells that it was activated. */
void TestMainWindowLines::runCommand(const VexMainWindow &window, const QString &text)
{
    const int row = box(window)->findText(text);
    QVERIFY2(row >= 0, qPrintable(text));
    box(window)->setCurrentIndex(row);
    Q_EMIT box(window)->activated(row);
}

/** Answers the protocol dialog behind the question that a BoxAnswerer answers. */
void TestMainWindowLines::acceptProtocol(VexMainWindow &window, LineType type)
{
    auto *timer = new QTimer(&window);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, type] {
        auto *dialog = qobject_cast<SelectProtocolDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        timer->deleteLater();
        dialog->setLineType(type);
        dialog->accept();
    });
    timer->start(5);
}

QStringList TestMainWindowLines::enabledPages(const VexMainWindow &window)
{
    const auto *pages = window.findChild<QToolBox *>(u"tbMain"_s);
    QStringList names;
    for (int index = 0; index < pages->count(); ++index) {
        if (pages->isItemEnabled(index)
            != pages->widget(index)->isEnabledTo(pages->widget(index)->parentWidget()))
            return {u"page and widget disagree"_s};
        if (pages->isItemEnabled(index))
            names.append(pages->widget(index)->objectName());
    }
    return names;
}

void TestMainWindowLines::theBoxOffersTheCommandsOfTheEdition_data()
{
    QTest::addColumn<QString>("edition");
    QTest::addColumn<QList<quint8>>("lines");
    QTest::addColumn<QStringList>("expected");
    const QString add = u"Add line..."_s;
    const QString duplicate = u"Duplicate last line..."_s;
    const QString remove = u"Delete this line..."_s;
    const QString change = u"Change type of this line..."_s;
    QTest::newRow("one CANopen line")
        << u"CANopen NodeSmith"_s << QList<quint8>{0} << QStringList{u"Line 0"_s, add, duplicate, change};
    QTest::newRow("two CANopen lines")
        << u"CANopen NodeSmith"_s << QList<quint8>{0, 3}
        << QStringList{u"Line 0"_s, u"Line 3"_s, add, duplicate, remove, change};
    QTest::newRow("J1939 lines have one type")
        << u"J1939 NodeSmith"_s << QList<quint8>{0} << QStringList{u"Line 0"_s, add, duplicate};
}

void TestMainWindowLines::theBoxOffersTheCommandsOfTheEdition()
{
    QFETCH(const QString, edition);
    QFETCH(const QList<quint8>, lines);
    QFETCH(const QStringList, expected);
    QCoreApplication::setApplicationName(edition);
    const auto window = openLines(lines, edition.startsWith(u'J') ? u"2"_s : u"1"_s);
    QVERIFY(window);
    QCOMPARE(entries(*window), expected);
}

void TestMainWindowLines::aSecondLineOfACANopenProjectIsACANopenOne()
{
    const auto window = openLines({0});
    const BoxAnswerer answerer(QMessageBox::Yes);
    QSignalSpy changed(window.get(), &VexMainWindow::lineChanged);
    runCommand(*window, u"Add line..."_s);
    QCOMPARE(answerer.texts, QStringList{u"Do you want to add a new line?"_s});
    QCOMPARE(m_store->getLines(), QList<quint8>({0, 1}));
    QCOMPARE(m_store->getGeneralSetting(u"line1type"_s), u"1"_s);
    QCOMPARE(window->currentLine(), quint8(1));
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.first().first().toInt(), 1);
    QCOMPARE(box(*window)->currentText(), u"Line 1"_s);
    QVERIFY(window->isModified());
}

void TestMainWindowLines::aThirdLineOfACANopenProjectIsAskedFor()
{
    const auto window = openLines({0, 2});
    const BoxAnswerer answerer(QMessageBox::Yes);
    acceptProtocol(*window, LineType::J1939);
    runCommand(*window, u"Add line..."_s);
    QCOMPARE(m_store->getLines(), QList<quint8>({0, 1, 2}));
    QCOMPARE(m_store->getGeneralSetting(u"line1type"_s), u"2"_s);
}

void TestMainWindowLines::theCanEditionAsksForEveryLine()
{
    QCoreApplication::setApplicationName(u"CAN NodeSmith"_s);
    const auto window = openLines({0}, u"4"_s);
    const BoxAnswerer answerer(QMessageBox::Yes);
    acceptProtocol(*window, LineType::RawCan);
    runCommand(*window, u"Add line..."_s);
    QCOMPARE(m_store->getGeneralSetting(u"line1type"_s), u"4"_s);
}

void TestMainWindowLines::aCancelledProtocolAddsNoLine()
{
    const auto window = openLines({0, 1});
    const BoxAnswerer answerer(QMessageBox::Yes);
    auto *timer = new QTimer(window.get());
    connect(timer, &QTimer::timeout, timer, [timer] {
        if (auto *dialog = qobject_cast<SelectProtocolDialog *>(QApplication::activeModalWidget())) {
            timer->deleteLater();
            dialog->reject();
        }
    });
    timer->start(5);
    runCommand(*window, u"Add line..."_s);
    QCOMPARE(m_store->getLines(), QList<quint8>({0, 1}));
    QVERIFY(!window->isModified());
}

void TestMainWindowLines::noToTheQuestionChangesNothing_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("question");
    QTest::newRow("add") << u"Add line..."_s << u"Do you want to add a new line?"_s;
    QTest::newRow("duplicate") << u"Duplicate last line..."_s << u"Do you want to duplicate the last line?"_s;
    QTest::newRow("delete") << u"Delete this line..."_s << u"Do you want to delete this line?"_s;
    QTest::newRow("type") << u"Change type of this line..."_s
                          << u"Do you want to add change the type of line 0?"_s;
}

void TestMainWindowLines::noToTheQuestionChangesNothing()
{
    QFETCH(const QString, command);
    QFETCH(const QString, question);
    const auto window = openLines({0, 1});
    const BoxAnswerer answerer(QMessageBox::No);
    runCommand(*window, command);
    QCOMPARE(answerer.texts, QStringList{question});
    QCOMPARE(m_store->getLines(), QList<quint8>({0, 1}));
    QCOMPARE(box(*window)->currentText(), u"Line 0"_s);
    QVERIFY(!window->isModified());
}

void TestMainWindowLines::thirtyTwoLinesRefuseAFurtherOne_data()
{
    QTest::addColumn<QString>("command");
    QTest::newRow("add") << u"Add line..."_s;
    QTest::newRow("duplicate") << u"Duplicate last line..."_s;
}

void TestMainWindowLines::thirtyTwoLinesRefuseAFurtherOne()
{
    QFETCH(const QString, command);
    QList<quint8> lines;
    for (quint8 line = 0; line < 32; ++line)
        lines.append(line);
    const auto window = openLines(lines);
    QVERIFY(m_store->addNode(ObjectDataBase::ClipboardLine, ObjectDataBase::NODE_DATA_T()));
    QVERIFY(m_store->addNode(ObjectDataBase::ReferenceLine, ObjectDataBase::NODE_DATA_T()));
    const BoxAnswerer answerer(QMessageBox::Ok);
    runCommand(*window, command);
    QCOMPARE(answerer.texts, QStringList{u"The maximum number of 32 lines has been reached."_s});
    QCOMPARE(m_store->getLines().size(), 34);
}

void TestMainWindowLines::aDuplicatedLineIsShown()
{
    const auto window = openLines({0, 4}, u"5"_s);
    const BoxAnswerer answerer(QMessageBox::Yes);
    runCommand(*window, u"Duplicate last line..."_s);
    QCOMPARE(m_store->getLines(), QList<quint8>({0, 1, 4}));
    QCOMPARE(m_store->getGeneralSetting(u"line1type"_s), u"5"_s);
    QCOMPARE(window->currentLine(), quint8(1));
}

void TestMainWindowLines::aDeletedLineLeavesTheFirstOneShown()
{
    const auto window = openLines({0, 1, 2});
    runCommand(*window, u"Line 2"_s);
    const BoxAnswerer answerer(QMessageBox::Yes);
    QSignalSpy changed(window.get(), &VexMainWindow::lineChanged);
    runCommand(*window, u"Delete this line..."_s);
    QCOMPARE(m_store->getLines(), QList<quint8>({0, 1}));
    QCOMPARE(window->currentLine(), quint8(0));
    QCOMPARE(changed.size(), 1);
}

void TestMainWindowLines::aChangedTypeChangesThePages()
{
    const auto window = openLines({0});
    const BoxAnswerer answerer(QMessageBox::Yes);
    acceptProtocol(*window, LineType::RawCan);
    runCommand(*window, u"Change type of this line..."_s);
    QCOMPARE(m_store->getGeneralSetting(u"line0type"_s), u"4"_s);
    QCOMPARE(window->findChild<QToolButton *>(u"protocolButton"_s)->text(), u"raw CAN"_s);
    QVERIFY(enabledPages(*window).contains(u"rawCanForm"_s));
    QVERIFY(!enabledPages(*window).contains(u"objectDictionaryForm"_s));
}

void TestMainWindowLines::aPlainSelectionShowsTheLine()
{
    const auto window = openLines({0, 7});
    QSignalSpy changed(window.get(), &VexMainWindow::lineChanged);
    runCommand(*window, u"Line 7"_s);
    QCOMPARE(window->currentLine(), quint8(7));
    QCOMPARE(changed.size(), 1);
    QVERIFY(!window->isModified());
}

void TestMainWindowLines::thePagesFollowTheTypeOfTheLine_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QStringList>("pages");
    const QStringList canopen{u"objectDictionaryForm"_s, u"manufacturerSegmentForm"_s,
                              u"deviceDescriptionForm"_s, u"stackSettingsForm"_s};
    const QStringList j1939{u"j1939SignalForm"_s, u"j1939SettingsForm"_s};
    const QStringList rawCan{u"rawCanForm"_s, u"udsServicesForm"_s, u"udsIndicationForm"_s};
    QTest::newRow("1") << u"1"_s << u"CANopen"_s << canopen;
    QTest::newRow("2") << u"2"_s << u"J1939"_s << j1939;
    QTest::newRow("4") << u"4"_s << u"raw CAN"_s << rawCan;
    QTest::newRow("5") << u"5"_s << u"both"_s << canopen + j1939;
    QTest::newRow("6") << u"6"_s << u"CANopen + CAN"_s << canopen + rawCan;
    QTest::newRow("7") << u"7"_s << u"J1939 + CAN"_s << j1939 + rawCan;
}

void TestMainWindowLines::thePagesFollowTheTypeOfTheLine()
{
    QFETCH(const QString, type);
    QFETCH(const QString, button);
    QFETCH(const QStringList, pages);
    const auto window = openLines({0}, type);
    const QStringList always{u"projectPage"_s, u"generalSettingsForm"_s, u"targetSettingsForm"_s,
                             u"generatorOutputForm"_s};
    QStringList enabled = enabledPages(*window);
    QStringList expected = pages + always;
    enabled.sort();
    expected.sort();
    QCOMPARE(enabled, expected);
    QCOMPARE(window->findChild<QToolButton *>(u"protocolButton"_s)->text(), button);
}

void TestMainWindowLines::titlesNameTheLineOnlyInProjectsOfSeveralLines()
{
    const auto window = openLines({0});
    const auto *pages = window->findChild<QToolBox *>(u"tbMain"_s);
    const int page = pages->indexOf(window->findChild<QWidget *>(u"objectDictionaryForm"_s));
    QCOMPARE(pages->itemText(page), u"CANopen Object Dictionary"_s);
    const BoxAnswerer answerer(QMessageBox::Yes);
    runCommand(*window, u"Add line..."_s);
    QCOMPARE(pages->itemText(page), u"CANopen Object Dictionary - line 1"_s);
    runCommand(*window, u"Line 0"_s);
    QCOMPARE(pages->itemText(page), u"CANopen Object Dictionary - line 0"_s);
}

int main(int argc, char **argv)
{
    const TestHome home;
    KorvelBaseApplication application(argc, argv, u"CANopen NodeSmith"_s, u"4.3.2"_s);
    QCoreApplication::setOrganizationName(u"korvel"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    TestMainWindowLines test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_mainwindowlines.moc"
