#include "app/BoxAnswerer.h"
#include "app/FileDialogDesk.h"
#include "app/RecentProjects.h"
#include "app/TestHome.h"
#include "app/WindowTest.h"
#include "widgets/KorvelBaseApplication.h"

#include <QLabel>

using namespace Qt::StringLiterals;
using namespace FileDialogDesk;

/** Which file a project comes from and goes to: the file dialogs and the two forms of a project. */
class TestProjectFiles : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void openBeginsInTheFolderOfTheLastProject();
    void withoutAFolderTheDialogsBeginAtHome_data();
    void withoutAFolderTheDialogsBeginAtHome();
    void theChosenFileIsOpened();
    void openAsksForChangesBeforeTheFile();
    void aCancelledOpenKeepsTheProject();

    void saveAsOffersFolderNameAndBothForms();
    void theFormOfTheProjectIsOfferedFirst();
    void theChosenFormDecidesTheEnding();
    void aNameOfAnotherEndingGetsThatOfTheForm();
    void aFileOfTheCompletedNameIsReplacedOnlyWhenWished_data();
    void aFileOfTheCompletedNameIsReplacedOnlyWhenWished();
    void saveAsToATextNameKeepsWorkingWithTextSave();
    void whatTheTextFormLosesIsTold();

private:
    static bool isText(const QString &file);
};

bool TestProjectFiles::isText(const QString &file)
{
    QFile saved(file);
    return saved.open(QIODevice::ReadOnly) && !saved.readAll().startsWith("SQLite format 3");
}

void TestProjectFiles::openBeginsInTheFolderOfTheLastProject()
{
    const auto window = makeWindow();
    window->openProject(saveProject());
    QTest::qWait(20);
    const SeenDialog seen = cancelled(action(*window, u"actionOpen_Project"_s));
    QCOMPARE(seen.title, u"Open Project"_s);
    QCOMPARE(seen.folder, QDir(m_folder->path()).absolutePath());
    QCOMPARE(seen.filters,
             QStringList(
                 {u"VEX Projects (*.vexp)"_s, u"old project files (*.db)"_s, u"VEXT Projects (*.vext)"_s}));
    QCOMPARE(seen.filter, seen.filters.first());
}

void TestProjectFiles::withoutAFolderTheDialogsBeginAtHome_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("stored");
    for (const QString &action : {u"actionOpen_Project"_s, u"actionSave_Project_as"_s}) {
        QTest::addRow("%s, nothing stored", qPrintable(action)) << action << QString();
        QTest::addRow("%s, stored standard", qPrintable(action)) << action << u"~"_s;
        QTest::addRow("%s, folder has gone", qPrintable(action)) << action << u"/no/such/folder"_s;
    }
}

void TestProjectFiles::withoutAFolderTheDialogsBeginAtHome()
{
    QFETCH(const QString, action);
    QFETCH(const QString, stored);
    if (!stored.isEmpty())
        UserSettings().setValue("General/projectpath"_L1, stored);
    const auto window = makeWindow();
    window->doThingsAfterStartup();
    QCOMPARE(cancelled(WindowTest::action(*window, action)).folder, QDir::homePath());
}

void TestProjectFiles::theChosenFileIsOpened()
{
    const QString other = saveProject(u"other.vexp"_s);
    const auto window = makeWindow();
    window->doThingsAfterStartup();
    accepted(action(*window, u"actionOpen_Project"_s), other);
    QCOMPARE(window->project().projectFile(), other);
    QCOMPARE(UserSettings().value("General/projectpath"_L1).toString(), m_folder->path());
    QCOMPARE(RecentProjects::existing(), QStringList{other});
}

void TestProjectFiles::openAsksForChangesBeforeTheFile()
{
    const auto window = makeWindow();
    openAndChange(*window);
    const BoxAnswerer answerer(QMessageBox::Cancel);
    QCOMPARE(cancelled(action(*window, u"actionOpen_Project"_s)).count, 0);
    QCOMPARE(answerer.texts.size(), 1);
    QVERIFY(window->isModified());
}

void TestProjectFiles::aCancelledOpenKeepsTheProject()
{
    const auto window = makeWindow();
    openAndChange(*window);
    const BoxAnswerer answerer(QMessageBox::Discard);
    QCOMPARE(cancelled(action(*window, u"actionOpen_Project"_s)).count, 1);
    QCOMPARE(window->project().projectFile(), path(u"a.vexp"_s));
    QCOMPARE(m_store->getGeneralSetting(u"co_node_id"_s), u"3"_s);
    QVERIFY(window->isModified());
}

void TestProjectFiles::saveAsOffersFolderNameAndBothForms()
{
    const auto window = makeWindow();
    window->openProject(saveProject(u"pump.v2.vexp"_s));
    QTest::qWait(20);
    const SeenDialog seen = cancelled(action(*window, u"actionSave_Project_as"_s));
    QCOMPARE(seen.title, u"Save Project"_s);
    QCOMPARE(seen.folder, QDir(m_folder->path()).absolutePath());
    QCOMPARE(seen.name, u"pump.v2"_s);
    QCOMPARE(seen.filters, QStringList({u"VEX Projects (*.vexp)"_s, u"VEXT Projects (*.vext)"_s}));
    QCOMPARE(seen.filter, seen.filters.first());
    QVERIFY(!QFile::exists(path(u"pump.v2.vexp.bak"_s)));
}

void TestProjectFiles::theFormOfTheProjectIsOfferedFirst()
{
    const auto window = makeWindow();
    window->openProject(saveProject(u"a.vext"_s));
    QTest::qWait(20);
    QCOMPARE(cancelled(action(*window, u"actionOpen_Project"_s)).filter, u"VEXT Projects (*.vext)"_s);
    QCOMPARE(cancelled(action(*window, u"actionSave_Project_as"_s)).filter, u"VEXT Projects (*.vext)"_s);
    accepted(action(*window, u"actionSave_Project_as"_s), path(u"b"_s));
    QCOMPARE(window->project().projectFile(), path(u"b.vext"_s));
}

void TestProjectFiles::theChosenFormDecidesTheEnding()
{
    const auto window = makeWindow();
    window->openProject(saveProject());
    accepted(action(*window, u"actionSave_Project_as"_s), path(u"b"_s), u"VEXT Projects (*.vext)"_s);
    QCOMPARE(window->project().projectFile(), path(u"b.vext"_s));
    QVERIFY(isText(path(u"b.vext"_s)));
    accepted(action(*window, u"actionSave_Project_as"_s), path(u"c"_s), u"VEX Projects (*.vexp)"_s);
    QCOMPARE(window->project().projectFile(), path(u"c.vexp"_s));
    QVERIFY(!isText(path(u"c.vexp"_s)));
}

void TestProjectFiles::aNameOfAnotherEndingGetsThatOfTheForm()
{
    const auto window = makeWindow();
    window->openProject(saveProject());
    accepted(action(*window, u"actionSave_Project_as"_s), path(u"pump.new"_s));
    QCOMPARE(window->project().projectFile(), path(u"pump.new.vexp"_s));
    QVERIFY(!QFile::exists(path(u"pump.new"_s)));
    window->openProject(path(u"pump.new.vexp"_s));
    QCOMPARE(window->project().projectBaseName(), u"pump.new"_s);
}

void TestProjectFiles::aFileOfTheCompletedNameIsReplacedOnlyWhenWished_data()
{
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    QTest::addColumn<bool>("replaced");
    QTest::newRow("yes") << QMessageBox::Yes << true;
    QTest::newRow("no") << QMessageBox::No << false;
}

void TestProjectFiles::aFileOfTheCompletedNameIsReplacedOnlyWhenWished()
{
    QFETCH(const QMessageBox::StandardButton, answer);
    QFETCH(const bool, replaced);
    QVERIFY(TestProject::write(path(u"pump.new.vexp"_s), "former"));
    const auto window = makeWindow();
    window->openProject(saveProject());
    const BoxAnswerer answerer(answer);
    accepted(action(*window, u"actionSave_Project_as"_s), path(u"pump.new"_s));
    QCOMPARE(answerer.texts, QStringList{u"The file %1 exists already."_s.arg(path(u"pump.new.vexp"_s))});
    QCOMPARE(QFileInfo(path(u"pump.new.vexp"_s)).size() == 6, !replaced);
    QCOMPARE(window->project().projectFile(), path(replaced ? u"pump.new.vexp"_s : u"a.vexp"_s));
}

void TestProjectFiles::saveAsToATextNameKeepsWorkingWithTextSave()
{
    const auto window = makeWindow();
    window->openProject(saveProject());
    accepted(action(*window, u"actionSave_Project_as"_s), path(u"b.vext"_s));
    QCOMPARE(window->findChild<QLabel *>(u"pathLabel"_s)->text(), path(u"b.vext"_s));
    QVERIFY(isText(path(u"b.vext"_s)));
    QVERIFY(m_store->setGeneralSetting(u"co_node_id"_s, u"77"_s));
    QVERIFY(window->isModified());
    action(*window, u"actionSave_Project"_s)->trigger();
    QVERIFY(!window->isModified());
    QVERIFY(isText(path(u"b.vext"_s)));
    window->openProject(path(u"a.vexp"_s));
    QCOMPARE(m_store->getGeneralSetting(u"co_node_id"_s), QString());
    window->openProject(path(u"b.vext"_s));
    QCOMPARE(m_store->getGeneralSetting(u"co_node_id"_s), u"77"_s);
    QCOMPARE(window->project().projectFile(), path(u"b.vext"_s));
}

void TestProjectFiles::whatTheTextFormLosesIsTold()
{
    const auto window = makeWindow();
    window->openProject(saveProject());
    QVERIFY(m_store->addPGN(0, 59904, TestProject::pgn(u"in"_s, ObjectDataBase::Receive)));
    QVERIFY(m_store->addPGN(0, 59904, TestProject::pgn(u"out"_s, ObjectDataBase::Transmit)));
    const BoxAnswerer answerer(QMessageBox::Ok);
    accepted(action(*window, u"actionSave_Project_as"_s), path(u"b.vext"_s));
    QCOMPARE(answerer.texts, QStringList{u"The text form does not hold everything of this project."_s});
    QCOMPARE(answerer.informativeTexts,
             QStringList{u"The text does not hold the PGNs of line 0 (count: 2)."_s});
    QVERIFY(!window->isModified());
}

int main(int argc, char **argv)
{
    const TestHome home;
    KorvelBaseApplication application(argc, argv, u"CANopen NodeSmith"_s, u"4.3.2"_s);
    QCoreApplication::setOrganizationName(u"korvel"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    TestProjectFiles test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_projectfiles.moc"
