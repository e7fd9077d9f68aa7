#include "app/BoxAnswerer.h"
#include "app/TestHome.h"
#include "app/WindowTest.h"
#include "support/DialogUser.h"
#include "tools/ProjectDiffDialog.h"
#include "widgets/KorvelBaseApplication.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTableWidget>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

/** The question about unsaved changes, its list of them, and the comparison with another project. */
class TestUnsavedChanges : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void changedObjectsAndSettingsAreCounted();
    void changesOfEveryLineAreCounted();
    void aNeverSavedProjectOnlyGetsTheQuestion();
    void changesThatNoListShowsGetTheQuestionAlone();
    void aProjectWhoseFileHasGoneGetsTheQuestionAlone();
    void theDetailsAreShownAndTheQuestionComesAgain();
    void whatIsTakenBackInTheDetailsCountsNoMore();
    void theDetailsBeginWithTheChangedLine();
    void theActionComparesTheShownLineWithAnotherProject();

private:
    /** A saved project with an object in each line, opened without anything left to be changed by that. */
    std::unique_ptr<VexMainWindow> openSaved(const QList<quint8> &lines = {0});
};

namespace {

QString question()
{
    return u"Do you want to save your changes?"_s;
}

QString counted(int count)
{
    return u"The current project contains %1 unsaved modifications."_s.arg(count);
}

/** Clicks "Show Details" in the first question, closes the details, and answers with Cancel. */
class DetailsReader : public QObject
{
public:
    explicit DetailsReader(const std::function<void(ProjectDiffDialog &)> &read) : m_read(read)
    {
        connect(&m_timer, &QTimer::timeout, this, &DetailsReader::answer);
        m_timer.start(5);
    }

    QStringList events;

private:
    void answer()
    {
        QWidget *modal = QApplication::activeModalWidget();
        if (auto *box = qobject_cast<QMessageBox *>(modal))
            answerBox(*box);
        else if (auto *details = qobject_cast<ProjectDiffDialog *>(modal))
            read(*details);
    }
    void answerBox(QMessageBox &box)
    {
        events.append(box.text());
        const QList<QAbstractButton *> buttons = box.buttons();
        for (QAbstractButton *button : buttons)
            if (button->text() == "Show Details"_L1 && !m_isRead) {
                button->click();
                return;
            }
        box.button(QMessageBox::Cancel)->click();
    }
    void read(ProjectDiffDialog &details)
    {
        events.append(details.windowTitle());
        m_isRead = true;
        m_read(details);
        details.close();
    }

    std::function<void(ProjectDiffDialog &)> m_read;
    QTimer m_timer;
    bool m_isRead = false;
};

QStringList topTexts(const ProjectDiffDialog &dialog)
{
    QStringList texts;
    const auto *tree = dialog.findChild<QTreeWidget *>(u"treeWidget"_s);
    for (int place = 0; place < tree->topLevelItemCount(); ++place)
        texts.append(tree->topLevelItem(place)->text(0));
    return texts;
}

bool hasDetailsButton(const QMessageBox &box)
{
    const QList<QAbstractButton *> buttons = box.buttons();
    return std::ranges::any_of(
        buttons, [](const QAbstractButton *button) { return button->text() == "Show Details"_L1; });
}

/** What a box shows before it is answered with Cancel. */
struct SeenBox
{
    QString title;
    QString text;
    QString informativeText;
    QMessageBox::StandardButtons buttons;
    bool hasDetails = false;
};

SeenBox cancelQuestion(QAction *action)
{
    SeenBox seen;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, action, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        seen = {box->windowTitle(), box->text(), box->informativeText(), box->standardButtons(),
                hasDetailsButton(*box)};
        box->button(QMessageBox::Cancel)->click();
    });
    timer.start(5);
    action->trigger();
    return seen;
}

} // namespace

std::unique_ptr<VexMainWindow> TestUnsavedChanges::openSaved(const QList<quint8> &lines)
{
    ObjectDataBase project;
    ObjectDataBase::INDEX_DATA_T object;
    object.name = u"Object"_s;
    bool ok = TestProject::fill(project, lines, u"1"_s);
    for (const quint8 line : lines)
        ok = ok && project.addIndex(line, 0x2000, object)
            && project.addSubIndex(line, 0x2000, 0, ObjectDataBase::SUBINDEX_DATA_T());
    ok = ok && project.setGeneralSetting(u"co_node_id"_s, u"1"_s) && project.saveProject(path(u"a.vexp"_s));
    auto window = makeWindow();
    window->openProject(path(u"a.vexp"_s));
    QTest::qWait(20);
    action(*window, u"actionSave_Project"_s)->trigger();
    if (!ok || window->isModified())
        qFatal("no project for the test");
    return window;
}

void TestUnsavedChanges::changedObjectsAndSettingsAreCounted()
{
    const auto window = openSaved();
    QAction *newProject = action(*window, u"actionNew_Project"_s);
    QVERIFY(m_store->setGeneralSetting(u"co_node_id"_s, u"3"_s));
    const SeenBox seen = cancelQuestion(newProject);
    QCOMPARE(seen.title, u"CANopen NodeSmith  4.3.2"_s);
    QCOMPARE(seen.text, counted(1));
    QCOMPARE(seen.informativeText, question());
    QCOMPARE(seen.buttons, QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
    QVERIFY(seen.hasDetails);
    QVERIFY(m_store->renameIndex(0, 0x2000, u"Renamed"_s));
    QCOMPARE(cancelQuestion(newProject).text, counted(2));
    QVERIFY(m_store->removeIndex(0, 0x2000)); // the object and its sub-index
    QCOMPARE(cancelQuestion(newProject).text, counted(3));
    QVERIFY(!QApplication::overrideCursor());
}

void TestUnsavedChanges::changesOfEveryLineAreCounted()
{
    const auto window = openSaved({0, 1, 2});
    QVERIFY(m_store->removeSubIndex(1, 0x2000, 0));
    QVERIFY(m_store->removeSubIndex(2, 0x2000, 0));
    QCOMPARE(cancelQuestion(action(*window, u"actionNew_Project"_s)).text, counted(4));
}

void TestUnsavedChanges::aNeverSavedProjectOnlyGetsTheQuestion()
{
    const auto window = makeWindow();
    window->doThingsAfterStartup();
    QTest::qWait(20);
    QVERIFY(m_store->setGeneralSetting(u"co_node_id"_s, u"3"_s));
    QVERIFY(window->isModified());
    const SeenBox seen = cancelQuestion(action(*window, u"actionNew_Project"_s));
    QCOMPARE(seen.text, question());
    QCOMPARE(seen.informativeText, QString());
    QCOMPARE(seen.buttons, QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
    QVERIFY(!seen.hasDetails);
}

void TestUnsavedChanges::changesThatNoListShowsGetTheQuestionAlone()
{
    const auto window = openSaved();
    QVERIFY(m_store->setDescriptionSetting(u"VendorName"_s, u"Somebody"_s));
    QVERIFY(window->isModified());
    const SeenBox seen = cancelQuestion(action(*window, u"actionNew_Project"_s));
    QCOMPARE(seen.text, question());
    QVERIFY(!seen.hasDetails);
}

void TestUnsavedChanges::aProjectWhoseFileHasGoneGetsTheQuestionAlone()
{
    const auto window = openSaved();
    QVERIFY(m_store->setGeneralSetting(u"co_node_id"_s, u"3"_s));
    QVERIFY(QFile::remove(path(u"a.vexp"_s)));
    QCOMPARE(cancelQuestion(action(*window, u"actionNew_Project"_s)).text, question());
}

void TestUnsavedChanges::theDetailsAreShownAndTheQuestionComesAgain()
{
    const auto window = openSaved();
    QVERIFY(m_store->renameIndex(0, 0x2000, u"Renamed"_s));
    QVERIFY(m_store->setGeneralSetting(u"co_node_id"_s, u"3"_s));
    QStringList objects;
    QString file;
    int settings = 0;
    const DetailsReader reader([&](const ProjectDiffDialog &details) {
        objects = topTexts(details);
        file = details.findChild<QLineEdit *>(u"leProject"_s)->text();
        settings = details.findChild<QTableWidget *>(u"tblGeneralSettings"_s)->rowCount();
    });
    action(*window, u"actionNew_Project"_s)->trigger();
    QCOMPARE(reader.events, QStringList({counted(2), u"Project Diff"_s, counted(2)}));
    QCOMPARE(objects, QStringList{u"0x2000 - Renamed - different"_s});
    QCOMPARE(file, path(u"a.vexp"_s));
    QCOMPARE(settings, 1);
    QCOMPARE(window->project().projectFile(), path(u"a.vexp"_s));
    QVERIFY(window->isModified());
}

void TestUnsavedChanges::whatIsTakenBackInTheDetailsCountsNoMore()
{
    const auto window = openSaved();
    QVERIFY(m_store->renameIndex(0, 0x2000, u"Renamed"_s));
    QVERIFY(m_store->setGeneralSetting(u"co_node_id"_s, u"3"_s));
    const DetailsReader reader([](ProjectDiffDialog &details) {
        details.findChild<QTreeWidget *>(u"treeWidget"_s)->selectAll();
        details.importItem();
    });
    action(*window, u"actionNew_Project"_s)->trigger();
    QCOMPARE(reader.events, QStringList({counted(2), u"Project Diff"_s, counted(1)}));
    QCOMPARE(m_store->getIndexName(0, 0x2000), u"Object"_s);
}

void TestUnsavedChanges::theDetailsBeginWithTheChangedLine()
{
    const auto window = openSaved({0, 1, 2});
    QVERIFY(m_store->removeSubIndex(2, 0x2000, 0));
    int line = -1;
    const DetailsReader reader([&](const ProjectDiffDialog &details) { line = details.line(); });
    action(*window, u"actionNew_Project"_s)->trigger();
    QCOMPARE(line, 2);
}

void TestUnsavedChanges::theActionComparesTheShownLineWithAnotherProject()
{
    const auto window = openSaved({0, 1});
    auto *lines = window->findChild<QComboBox *>(u"linesComboBox"_s);
    lines->setCurrentIndex(1);
    Q_EMIT lines->activated(1);
    QVERIFY(action(*window, u"action_Project_Diff"_s)->isEnabled());
    bool shown = false;
    const DialogUser<ProjectDiffDialog> user([&](ProjectDiffDialog &dialog) {
        shown = true;
        QCOMPARE(dialog.line(), quint8(1));
        QVERIFY(m_store->renameIndex(1, 0x2000, u"Renamed"_s));
        QVERIFY(dialog.compareWithFile(path(u"a.vexp"_s)));
        QCOMPARE(topTexts(dialog), QStringList{u"0x2000 - Renamed - different"_s});
        dialog.close();
    });
    action(*window, u"action_Project_Diff"_s)->trigger();
    QVERIFY(shown);
}

int main(int argc, char **argv)
{
    const TestHome home;
    KorvelBaseApplication application(argc, argv, u"CANopen NodeSmith"_s, u"4.3.2"_s);
    QCoreApplication::setOrganizationName(u"korvel"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    TestUnsavedChanges test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_unsavedchanges.moc"
