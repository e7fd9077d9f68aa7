#include "app/BoxAnswerer.h"
#include "app/FileDialogDesk.h"
#include "app/RecentProjects.h"
#include "app/SelectProtocolDialog.h"
#include "app/TestHome.h"
#include "app/WindowTest.h"
#include "support/DialogUser.h"
#include "widgets/KorvelBaseApplication.h"

#include <QDropEvent>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QSignalSpy>
#include <QToolButton>

using namespace Qt::StringLiterals;
using namespace FileDialogDesk;

/** That no work is lost, and nobody asked in vain, when a project is saved or makes room for another. */
class TestProjectWork : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void anUnmodifiedProjectNeverAsks_data();
    void anUnmodifiedProjectNeverAsks();
    void aSaveThatIsNotFinishedKeepsTheProject();
    void aFailedSaveNamesTheFileAndTheReason();
    void anUnappliedConfigurationIsToldAndSavedAllTheSame_data();
    void anUnappliedConfigurationIsToldAndSavedAllTheSame();
    void onlyASavedProjectIsCommittedBeforeANewOne();
    void theCanEditionAsksForTheProtocolOfANewProject();
};

void TestProjectWork::anUnmodifiedProjectNeverAsks_data()
{
    QTest::addColumn<QString>("way");
    for (const QString &way : {u"actionClose_Project"_s, u"actionNew_Project"_s, u"actionOpen_Project"_s,
                               u"actionQuit"_s, u"recent"_s, u"drop"_s})
        QTest::newRow(qPrintable(way)) << way;
}

void TestProjectWork::anUnmodifiedProjectNeverAsks()
{
    QFETCH(const QString, way);
    const QString other = saveProject(u"other.vexp"_s);
    RecentProjects::add(other);
    const auto window = makeWindow();
    window->openProject(saveProject());
    QTest::qWait(20);
    QVERIFY(!window->isModified());
    const BoxAnswerer answerer(QMessageBox::Cancel);
    if (way == "recent"_L1) {
        auto *recent = window->findChild<QMenu *>(u"menuRecent_Projects"_s);
        Q_EMIT recent->aboutToShow();
        recent->actions().constLast()->trigger();
    } else if (way == "drop"_L1) {
        QMimeData content;
        content.setUrls({QUrl::fromLocalFile(other)});
        QDragEnterEvent entered(QPoint(50, 50), Qt::CopyAction, &content, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &entered);
        QDropEvent dropped(QPointF(50, 50), Qt::CopyAction, &content, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &dropped);
    } else if (way == "actionOpen_Project"_L1) {
        accepted(action(*window, way), other);
    } else {
        action(*window, way)->trigger();
    }
    QVERIFY2(answerer.texts.isEmpty(), qPrintable(answerer.texts.join(u'\n')));
    const bool opensOther = way != "actionQuit"_L1 && !way.contains("Close"_L1) && !way.contains("New"_L1);
    if (opensOther)
        QCOMPARE(window->project().projectFile(), other);
    else if (way != "actionQuit"_L1)
        QCOMPARE(window->project().projectBaseName(), u"newproject"_s);
}

void TestProjectWork::aSaveThatIsNotFinishedKeepsTheProject()
{
    const auto window = makeWindow();
    window->doThingsAfterStartup();
    QVERIFY(m_store->setGeneralSetting(u"co_node_id"_s, u"3"_s));
    const BoxAnswerer answerer(QMessageBox::Save);
    QCOMPARE(cancelled(action(*window, u"actionClose_Project"_s)).count, 1); // the new project needs a name
    QCOMPARE(answerer.texts.size(), 1);
    QVERIFY(window->isModified());
    QCOMPARE(m_store->getGeneralSetting(u"co_node_id"_s), u"3"_s);
}

void TestProjectWork::aFailedSaveNamesTheFileAndTheReason()
{
    const auto window = makeWindow();
    openAndChange(*window);
    const QString file = path(u"a.vexp"_s);
    m_folder.reset(); // the project's folder has gone
    const BoxAnswerer answerer(QMessageBox::Ok);
    action(*window, u"actionSave_Project"_s)->trigger();
    const QString reason = answerer.informativeTexts.value(0);
    QVERIFY2(reason.contains(file), qPrintable(reason));
    QVERIFY2(reason.size() > file.size() + 5, qPrintable(reason));
}

void TestProjectWork::anUnappliedConfigurationIsToldAndSavedAllTheSame_data()
{
    QTest::addColumn<QString>("edition");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("action");
    QTest::addColumn<bool>("told");
    const QString energyBus = u"EnergyBus NodeGuide"_s;
    QTest::newRow("save") << energyBus << u"1"_s << u"actionSave_Project"_s << true;
    QTest::newRow("save as") << energyBus << u"1"_s << u"actionSave_Project_as"_s << true;
    QTest::newRow("applied") << energyBus << u"0"_s << u"actionSave_Project"_s << false;
    QTest::newRow("other edition") << u"CANopen NodeSmith"_s << u"1"_s << u"actionSave_Project"_s << false;
}

void TestProjectWork::anUnappliedConfigurationIsToldAndSavedAllTheSame()
{
    QFETCH(const QString, edition);
    QFETCH(const QString, value);
    QFETCH(const QString, action);
    QFETCH(const bool, told);
    QCoreApplication::setApplicationName(edition);
    QVERIFY(TestProject::save(path(u"e.vexp"_s), edition, u"1"_s));
    const auto window = makeWindow();
    window->openProject(path(u"e.vexp"_s));
    QTest::qWait(20);
    QVERIFY(m_store->setGeneralSetting(u"modificationWithoutApply"_s, value));
    const BoxAnswerer answerer(QMessageBox::Ok);
    if (action == "actionSave_Project_as"_L1)
        accepted(WindowTest::action(*window, action), path(u"f.vexp"_s));
    else
        WindowTest::action(*window, action)->trigger();
    const QString text =
        u"The EnergyBus configuration has not yet been applied into the object dictionary."_s;
    QCOMPARE(answerer.texts, told ? QStringList{text} : QStringList());
    QVERIFY(!window->isModified());
}

void TestProjectWork::onlyASavedProjectIsCommittedBeforeANewOne()
{
    const auto window = makeWindow();
    window->doThingsAfterStartup();
    const QSignalSpy commits(window.get(), &VexMainWindow::saveRequest);
    action(*window, u"actionNew_Project"_s)->trigger();
    QCOMPARE(commits.count(), 0);
    window->openProject(saveProject());
    QTest::qWait(20);
    action(*window, u"actionNew_Project"_s)->trigger();
    QCOMPARE(commits.count(), 1);
}

void TestProjectWork::theCanEditionAsksForTheProtocolOfANewProject()
{
    QCoreApplication::setApplicationName(u"CAN NodeSmith"_s);
    const auto window = makeWindow();
    QString question;
    const DialogUser<SelectProtocolDialog> user([&question](SelectProtocolDialog &dialog) {
        question = dialog.findChild<QLabel *>(u"lblQuestion"_s)->text();
        dialog.setLineType(LineType::J1939AndRawCan);
        dialog.accept();
    });
    action(*window, u"actionNew_Project"_s)->trigger();
    QCOMPARE(question, u"Select CAN protocol for line 0:"_s);
    QCOMPARE(m_store->getGeneralSetting(u"line0type"_s), u"7"_s);
    QCOMPARE(window->findChild<QToolButton *>(u"protocolButton"_s)->text(), u"J1939 + CAN"_s);
    QVERIFY(window->findChild<QWidget *>(u"rawCanForm"_s)->isEnabled());
    QVERIFY(!window->findChild<QWidget *>(u"objectDictionaryForm"_s)->isEnabled());
}

int main(int argc, char **argv)
{
    const TestHome home;
    KorvelBaseApplication application(argc, argv, u"CANopen NodeSmith"_s, u"4.3.2"_s);
    QCoreApplication::setOrganizationName(u"korvel"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    TestProjectWork test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_projectwork.moc"
