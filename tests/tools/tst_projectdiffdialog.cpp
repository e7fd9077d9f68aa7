#include "app/BoxAnswerer.h"
#include "support/DialogUser.h"
#include "tools/DiffDialogFixture.h"
#include "widgets/WidgetTest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QTabWidget>

using namespace Qt::StringLiterals;
using namespace DiffTest;
using namespace DiffDialogTest;

/** What the dialog compares, and how it shows the differences. */
class TestProjectDiffDialog : public DiffDialogFixture
{
    Q_OBJECT

private Q_SLOTS:
    void pagesAndColumnsHaveTheirTitles();
    void theFileLineHasItsTexts();
    void aFileIsSelectedAmongProjectsAndBackups();
    void twoIdenticalProjectsShowNothing();
    void anObjectWithOnlyADifferentSubIndexShowsOneDifferentChild();
    void itemsOfOneSideTellIt();
    void pgnsStandBelowTheirDirections();
    void canIdsStandBelowTheirDirections();
    void differentSettingsAreListed();
    void theNextComparisonReplacesTheLast();
    void linesAreComparedTogetherAndShownOneByOne();
    void aFileWithFewerLinesGivesItsObjectsAsCurrent();
    void theFirstPageWithDifferencesIsShown();
    void aProjectThatCannotBeOpenedLeavesTheDialogAsItWas();
    void aProjectNeverSavedIsNotCompared_data();
    void aProjectNeverSavedIsNotCompared();
    void aHiddenDialogCountsTheDifferencesFromAFile();
    void textsAndBackupsAreProjectsToo_data();
    void textsAndBackupsAreProjectsToo();
    void marksThatATextCannotHoldDoNotCount_data();
    void marksThatATextCannotHoldDoNotCount();
    void comparingKeepsTheCurrentFolder();
    void withoutAnOpenProjectEverythingIsOther();
    void withoutAPathThereIsNothingToCompare();
};

void TestProjectDiffDialog::pagesAndColumnsHaveTheirTitles()
{
    const auto &pages = widget<QTabWidget>(*m_dialog, "tabWidget");
    QStringList titles;
    for (int place = 0; place < pages.count(); ++place)
        titles.append(pages.tabText(place).replace("&&"_L1, "&"_L1)); // "&&" shows one
    QCOMPARE(titles,
             QStringList({u"CANopen Objects"_s, u"PGNs & SPNs"_s, u"CAN-IDs & Signals"_s,
                          u"General Settings"_s, u"J1939 Settings"_s}));
    for (const auto &[name, title] :
         {std::pair("treeWidget", u"CANopen Objects"_s), std::pair("treePGN", u"J1939 PGNs"_s),
          std::pair("treeCANID", u"raw CAN-IDs"_s)})
        QCOMPARE(widget<QTreeWidget>(*m_dialog, name).headerItem()->text(0), title);
    for (const char *name : {"tblObjects", "tblPGN", "tblCANID"}) {
        const auto &table = widget<QTableWidget>(*m_dialog, name);
        QCOMPARE(table.columnCount(), 2);
        QCOMPARE(table.horizontalHeaderItem(0)->text(), u"Current Value"_s);
        QCOMPARE(table.horizontalHeaderItem(1)->text(), u"Other Value"_s);
    }
    for (const char *name : {"lblHead", "btnAccept", "btnReject", "btnExpert"})
        QVERIFY2(!widget<QWidget>(*m_dialog, name).isVisible(), name);
}

void TestProjectDiffDialog::theFileLineHasItsTexts()
{
    QCOMPARE(widget<QGroupBox>(*m_dialog, "gbProject").title(), u"Load project file to compare with ..."_s);
    QCOMPARE(widget<QLabel>(*m_dialog, "lblProject").text(), u"Project:"_s);
    QCOMPARE(widget<QCheckBox>(*m_dialog, "cbInternal").text(), u"internal properties"_s);
}

void TestProjectDiffDialog::aFileIsSelectedAmongProjectsAndBackups()
{
    QVERIFY(m_other->saveProject(path(u"other.vexp"_s)));
    QString title;
    QStringList filters;
    const DialogUser<QFileDialog> user([&](QFileDialog &dialog) {
        title = dialog.windowTitle();
        filters = dialog.nameFilters();
        dialog.findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(path(u"other.vexp"_s));
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    QTest::mouseClick(&widget<QPushButton>(*m_dialog, "btnFileSelection"), Qt::LeftButton);
    QCOMPARE(title, u"Select project file"_s);
    QCOMPARE(filters,
             QStringList(
                 {u"Project Files (*.vexp)"_s, u"Project Files (*.vext)"_s, u"Backup Files (*.vexp.bak)"_s}));
    QCOMPARE(widget<QLineEdit>(*m_dialog, "leProject").text(), path(u"other.vexp"_s));
}

void TestProjectDiffDialog::twoIdenticalProjectsShowNothing()
{
    QVERIFY(addObject(*m_current, 0x2000, u"Object"_s, 2));
    QVERIFY(addPgn(*m_current, 1, ObjectDataBase::Transmit, u"Group"_s, {190}));
    QVERIFY(addCanId(*m_current, 1, ObjectDataBase::Receive, u"Message"_s, {1}));
    QVERIFY(m_current->saveProject(path(u"same.vexp"_s)));
    for (const char *name : {"lblObjects", "lblGeneralSettings", "lblJ1939Settings"})
        QVERIFY2(widget<QLabel>(*m_dialog, name).isHidden(), name);
    QVERIFY(m_dialog->compareWithFile(path(u"same.vexp"_s)));
    QCOMPARE(m_dialog->differenceCount(), 0);
    for (const char *name : {"treeWidget", "treePGN", "treeCANID"})
        QCOMPARE(treeTexts(*m_dialog, name), QStringList());
    for (const char *name : {"lblObjects", "lblPGN", "lblCANID", "lblGeneralSettings", "lblJ1939Settings"}) {
        QVERIFY2(!widget<QLabel>(*m_dialog, name).isHidden(), name);
        QCOMPARE(widget<QLabel>(*m_dialog, name).text(), u"No differences found."_s);
    }
    QCOMPARE(widget<QLabel>(*m_dialog, "lblSummary").text(), u"Differences in total: 0"_s);
}

void TestProjectDiffDialog::anObjectWithOnlyADifferentSubIndexShowsOneDifferentChild()
{
    for (const auto &store : {m_current, m_other})
        QVERIFY(addObject(*store, 0x2abc, u"Object"_s, 3));
    QVERIFY(setValue(*m_current, 0x2abc, 2, u"5"_s));
    compare();
    QCOMPARE(treeTexts(*m_dialog), QStringList({u"0x2abc - Object"_s, u" 2 - Sub 2 - different"_s}));
    QVERIFY(item(*m_dialog, u"0x2abc - Object"_s).isExpanded());
    QVERIFY(widget<QLabel>(*m_dialog, "lblObjects").isHidden());
}

void TestProjectDiffDialog::itemsOfOneSideTellIt()
{
    QVERIFY(addObject(*m_current, 0x2000, u"Mine"_s, 2));
    QVERIFY(addObject(*m_other, 0x2001, QString(), 1));
    QVERIFY(m_other->addSubIndex(0, 0x2001, 0, sub(QString())));
    QVERIFY(addObject(*m_current, 0x2002, u"Both"_s));
    QVERIFY(addObject(*m_other, 0x2002, u"Renamed"_s));
    compare();
    QCOMPARE(treeTexts(*m_dialog),
             QStringList({u"0x2000 - Mine - current"_s, u" 0 - Sub 0 - current"_s, u" 1 - Sub 1 - current"_s,
                          u"0x2001 - unnamed object - other"_s, u" 0 - unnamed subindex - other"_s,
                          u"0x2002 - Both - different"_s}));
}

void TestProjectDiffDialog::pgnsStandBelowTheirDirections()
{
    QVERIFY(addPgn(*m_current, 0xfeca, ObjectDataBase::Receive, u"DM1"_s, {190}));
    QVERIFY(addPgn(*m_other, 0xfeca, ObjectDataBase::Transmit, u"DM1"_s));
    for (const auto &store : {m_current, m_other})
        QVERIFY(addPgn(*store, 0xff00, ObjectDataBase::Transmit, u"Own"_s));
    ObjectDataBase::SPN signal;
    signal.name = u"Speed"_s;
    QVERIFY(m_current->addSPN(0, 0xff00, ObjectDataBase::Transmit, 84, signal));
    compare();
    QCOMPARE(treeTexts(*m_dialog, "treePGN"),
             QStringList({u"Transmit PGNs"_s, u" 0xfeca - DM1 Transmit - other"_s,
                          u" 0xff00 - Own Transmit"_s, u"  84 - Speed - current"_s, u"Receive PGNs"_s,
                          u" 0xfeca - DM1 Receive - current"_s, u"  190 - Signal 190 - current"_s}));
}

void TestProjectDiffDialog::canIdsStandBelowTheirDirections()
{
    QVERIFY(addCanId(*m_current, 0x1ffffff0, ObjectDataBase::Transmit, u"Mine"_s));
    QVERIFY(addCanId(*m_current, 0x123, ObjectDataBase::Receive, u"Both"_s, {1}));
    QVERIFY(addCanId(*m_other, 0x123, ObjectDataBase::Receive, u"Renamed"_s, {2}));
    compare();
    QCOMPARE(treeTexts(*m_dialog, "treeCANID"),
             QStringList({u"Transmit CAN-IDs"_s, u" 0x1ffffff0 - Mine Transmit - current"_s,
                          u"Receive CAN-IDs"_s, u" 0x123 - Both Receive - different"_s,
                          u"  1 - Element 1 - current"_s, u"  2 - Element 2 - other"_s}));
}

void TestProjectDiffDialog::differentSettingsAreListed()
{
    QVERIFY(m_current->setGeneralSetting(u"same"_s, u"1"_s));
    QVERIFY(m_other->setGeneralSetting(u"same"_s, u"1"_s));
    QVERIFY(m_current->setGeneralSetting(u" a  key "_s, u"mine"_s));
    QVERIFY(m_other->setGeneralSetting(u" a  key "_s, u"yours"_s));
    QVERIFY(m_current->setJ1939Setting(u"address"_s, u"7"_s));
    compare();
    const auto &general = widget<QTableWidget>(*m_dialog, "tblGeneralSettings");
    QCOMPARE(general.rowCount(), 1);
    QCOMPARE(rowTexts(general, 0), QStringList({u"a key"_s, u"mine"_s, u"yours"_s}));
    QCOMPARE(general.item(0, 0)->data(Qt::UserRole).toString(), u" a  key "_s);
    QVERIFY(widget<QLabel>(*m_dialog, "lblGeneralSettings").isHidden());
    const auto &j1939 = widget<QTableWidget>(*m_dialog, "tblJ1939Settings");
    QCOMPARE(j1939.rowCount(), 1);
    QCOMPARE(rowTexts(j1939, 0), QStringList({u"address"_s, u"7"_s, QString()}));
    QVERIFY(widget<QLabel>(*m_dialog, "lblJ1939Settings").isHidden());
    QCOMPARE(m_dialog->differenceCount(), 2);
}

void TestProjectDiffDialog::theNextComparisonReplacesTheLast()
{
    QVERIFY(addObject(*m_current, 0x2000, u"Mine"_s, 2));
    compare();
    QCOMPARE(m_dialog->differenceCount(), 3);
    QVERIFY(addObject(*m_other, 0x2000, u"Mine"_s, 2));
    compare();
    QCOMPARE(m_dialog->differenceCount(), 0);
    QCOMPARE(treeTexts(*m_dialog), QStringList());
}

void TestProjectDiffDialog::linesAreComparedTogetherAndShownOneByOne()
{
    m_current = makeStore({0, 1});
    m_other = makeStore({0, 1});
    QVERIFY(addObject(*m_current, 0x2000, u"First"_s, 1, 0));
    QVERIFY(addObject(*m_current, 0x2001, u"Second"_s, 1, 1));
    m_dialog->setDataBase(m_current);
    auto &lines = widget<QComboBox>(*m_dialog, "cbLines");
    QCOMPARE(lines.itemText(1), u"Line 1"_s);
    m_dialog->setLine(1);
    compare();
    QCOMPARE(m_dialog->line(), quint8(1));
    QCOMPARE(m_dialog->differenceCount(), 4);
    QCOMPARE(lines.itemText(0), u"Line 0 (differences: 2)"_s);
    QCOMPARE(treeTexts(*m_dialog).constFirst(), u"0x2001 - Second - current"_s);
    lines.setCurrentIndex(0);
    QCOMPARE(treeTexts(*m_dialog).constFirst(), u"0x2000 - First - current"_s);
    QCOMPARE(m_dialog->differenceCount(), 4);
    m_dialog->setLine(9); // there is none
    QCOMPARE(m_dialog->line(), quint8(0));
}

void TestProjectDiffDialog::aFileWithFewerLinesGivesItsObjectsAsCurrent()
{
    m_current = makeStore({0, 1});
    QVERIFY(addObject(*m_current, 0x2001, u"Second"_s, 1, 1));
    m_dialog->setDataBase(m_current);
    m_dialog->setLine(1);
    compare();
    QCOMPARE(treeTexts(*m_dialog), QStringList({u"0x2001 - Second - current"_s, u" 0 - Sub 0 - current"_s}));
    clickItem(item(*m_dialog, u"0x2001 - Second - current"_s));
    QCOMPARE(rowTexts(widget<QTableWidget>(*m_dialog, "tblObjects"), 0),
             QStringList({u"Name"_s, u"Second"_s, QString()}));
}

void TestProjectDiffDialog::theFirstPageWithDifferencesIsShown()
{
    auto &pages = widget<QTabWidget>(*m_dialog, "tabWidget");
    QVERIFY(m_current->setGeneralSetting(u"key"_s, u"mine"_s));
    QVERIFY(m_current->setJ1939Setting(u"key"_s, u"mine"_s));
    compare();
    QCOMPARE(pages.currentWidget()->objectName(), u"pageGeneralSettings"_s);
    pages.setCurrentIndex(4);
    compare();
    QCOMPARE(pages.currentWidget()->objectName(), u"pageJ1939Settings"_s);
}

void TestProjectDiffDialog::aProjectThatCannotBeOpenedLeavesTheDialogAsItWas()
{
    QVERIFY(addObject(*m_current, 0x2000, u"Mine"_s));
    QVERIFY(addObject(*m_other, 0x2000, u"Yours"_s));
    compare();
    const QStringList shown = treeTexts(*m_dialog);
    QFile broken(path(u"broken.vexp"_s));
    QVERIFY(broken.open(QIODevice::WriteOnly) && broken.write("no project") > 0);
    broken.close();
    widget<QLineEdit>(*m_dialog, "leProject").setText(path(u"broken.vexp"_s));
    {
        const BoxAnswerer answerer(QMessageBox::Ok);
        QTest::mouseClick(&widget<QPushButton>(*m_dialog, "btnCompare"), Qt::LeftButton);
        QCOMPARE(answerer.texts, QStringList{u"Cannot open project file."_s});
        QCOMPARE(answerer.titles, QStringList{u"CANopen NodeSmith"_s});
        QVERIFY(!answerer.waitCursorSeen);
    }
    QVERIFY(!m_dialog->compareWithFile(path(u"missing.vexp"_s)));
    QCOMPARE(treeTexts(*m_dialog), shown);
    QCOMPARE(m_dialog->differenceCount(), 1);
    // The former project is still there to be read from.
    useItemMenu(item(*m_dialog, u"0x2000 - Mine - different"_s), u"Import from other project"_s);
    QCOMPARE(m_current->getIndexName(0, 0x2000), u"Yours"_s);
}

void TestProjectDiffDialog::aProjectNeverSavedIsNotCompared_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("new project") << u"/newproject.vexp"_s;
    QTest::newRow("no path") << QString();
}

void TestProjectDiffDialog::aProjectNeverSavedIsNotCompared()
{
    QFETCH(const QString, path);
    QVERIFY(addObject(*m_current, 0x2000, u"Mine"_s));
    QVERIFY(!m_dialog->compareWithFile(path));
    QCOMPARE(m_dialog->differenceCount(), 0);
    QCOMPARE(treeTexts(*m_dialog), QStringList());
}

void TestProjectDiffDialog::aHiddenDialogCountsTheDifferencesFromAFile()
{
    QVERIFY(m_current->saveProject(path(u"a.vexp"_s)));
    const auto dialog = makeDialog();
    QVERIFY(dialog->compareWithFile(path(u"a.vexp"_s)));
    QCOMPARE(dialog->differenceCount(), 0);
    QVERIFY(m_current->setGeneralSetting(u"co_node_id"_s, u"3"_s));
    QVERIFY(addObject(*m_current, 0x2000, u"Mine"_s));
    QVERIFY(dialog->compareWithFile(path(u"a.vexp"_s)));
    QCOMPARE(dialog->differenceCount(), 3);
    QVERIFY(!dialog->isVisible());
    QVERIFY(!QApplication::overrideCursor());
}

void TestProjectDiffDialog::textsAndBackupsAreProjectsToo_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("text project") << u"other.vext"_s;
    QTest::newRow("backup") << u"other.vexp.bak"_s;
}

void TestProjectDiffDialog::textsAndBackupsAreProjectsToo()
{
    QFETCH(const QString, name);
    for (const auto &store : {m_current, m_other})
        QVERIFY(addObject(*store, 0x2000, u"Object"_s, 2));
    QVERIFY(setValue(*m_other, 0x2000, 1, u"5"_s));
    QVERIFY(m_other->saveProject(path(name)));
    QVERIFY(m_dialog->compareWithFile(path(name)));
    QCOMPARE(treeTexts(*m_dialog), QStringList({u"0x2000 - Object"_s, u" 1 - Sub 1 - different"_s}));
}

void TestProjectDiffDialog::marksThatATextCannotHoldDoNotCount_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("count");
    QTest::newRow("text") << u"a.vext"_s << 0;
    QTest::newRow("database") << u"a.vexp"_s << 2;
}

void TestProjectDiffDialog::marksThatATextCannotHoldDoNotCount()
{
    QFETCH(const QString, name);
    QFETCH(const int, count);
    QVERIFY(addObject(*m_current, 0x2000, u"Object"_s));
    QVERIFY(m_current->saveProject(path(name)));
    auto marked = sub(u"Sub 0"_s);
    marked.changedbyuser = true;
    marked.wizardsource = 1;
    QVERIFY(m_current->addSubIndex(0, 0x2000, 0, marked));
    QVERIFY(m_dialog->compareWithFile(path(name)));
    QCOMPARE(m_dialog->differenceCount(), count);
}

void TestProjectDiffDialog::comparingKeepsTheCurrentFolder()
{
    QVERIFY(QDir::setCurrent(QDir::rootPath()));
    compare();
    QCOMPARE(QDir::currentPath(), QDir::rootPath());
}

void TestProjectDiffDialog::withoutAnOpenProjectEverythingIsOther()
{
    QVERIFY(addObject(*m_other, 0x2000, u"Yours"_s, 1));
    m_current->closeDataBase();
    m_dialog->setDataBase(m_current);
    QCOMPARE(widget<QComboBox>(*m_dialog, "cbLines").count(), 0);
    compare();
    QCOMPARE(treeTexts(*m_dialog), QStringList({u"0x2000 - Yours - other"_s, u" 0 - Sub 0 - other"_s}));
}

void TestProjectDiffDialog::withoutAPathThereIsNothingToCompare()
{
    auto &path = widget<QLineEdit>(*m_dialog, "leProject");
    const auto &button = widget<QPushButton>(*m_dialog, "btnCompare");
    QVERIFY(!button.isEnabled());
    path.setText(u"a"_s);
    QVERIFY(button.isEnabled());
    path.setText(u"  "_s);
    QVERIFY(!button.isEnabled());
}

int main(int argc, char **argv)
{
    return runWidgetTest<TestProjectDiffDialog>(argc, argv);
}

#include "tst_projectdiffdialog.moc"
