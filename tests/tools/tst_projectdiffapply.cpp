#include "tools/DiffDialogTest.h"
#include "widgets/WidgetTest.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace DiffTest;
using namespace DiffDialogTest;

/** The comparison of a project with what an Apply of the EnergyBus configuration makes of it. */
class TestProjectDiffApply : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dialog.reset(); }

    void theDialogSpeaksOfAnApply();
    void itemsSpeakOfAddingAndRemoving();
    void manufacturerObjectsAreLeftOut();
    void onlyTheExpertModeOffersMenus();
    void onlyTheExpertModeTakesSettings();
    void anImportedSubIndexKeepsItsValues();
    void theCompleteImportTakesTheValuesToo();
    void theButtonsTellWhatBecomesOfTheChanges_data();
    void theButtonsTellWhatBecomesOfTheChanges();
    void closingWithoutAnAnswerRejects();

private:
    void compare();
    void click(const char *button)
    {
        QTest::mouseClick(&widget<QPushButton>(*m_dialog, button), Qt::LeftButton);
    }

    QSharedPointer<ObjectDataBase> m_current;
    QSharedPointer<ObjectDataBase> m_applied;
    std::unique_ptr<ProjectDiffDialog> m_dialog;
};

void TestProjectDiffApply::init()
{
    m_current = makeStore();
    m_applied = makeStore();
    m_dialog = std::make_unique<ProjectDiffDialog>();
}

void TestProjectDiffApply::compare()
{
    m_dialog->setDataBase(m_current);
    m_dialog->compareAfterApply(m_applied);
    m_dialog->show();
}

void TestProjectDiffApply::theDialogSpeaksOfAnApply()
{
    compare();
    const auto &head = widget<QLabel>(*m_dialog, "lblHead");
    QVERIFY(head.isVisible());
    QCOMPARE(head.text(), u"Objects comparison after applying EnergyBus Node Guide settings."_s);
    for (const char *name : {"tblObjects", "tblPGN", "tblCANID"}) {
        const auto &table = widget<QTableWidget>(*m_dialog, name);
        QCOMPARE(table.horizontalHeaderItem(0)->text(), u"Current Value"_s);
        QCOMPARE(table.horizontalHeaderItem(1)->text(), u"New Value"_s);
    }
    for (const auto &[name, text] : {std::pair("btnAccept", u"Accept all Changes"_s),
                                     std::pair("btnReject", u"Reject all Changes (Undo Apply)"_s),
                                     std::pair("btnExpert", u"Selective Handling (Expert Mode)"_s)}) {
        QVERIFY2(widget<QPushButton>(*m_dialog, name).isVisible(), name);
        QCOMPARE(widget<QPushButton>(*m_dialog, name).text(), text);
    }
    QVERIFY(!widget<QGroupBox>(*m_dialog, "gbProject").isVisible());
    QVERIFY(!widget<QPushButton>(*m_dialog, "pushButton").isVisible());
}

void TestProjectDiffApply::itemsSpeakOfAddingAndRemoving()
{
    QVERIFY(addObject(*m_current, 0x6000, u"Old"_s, 1));
    QVERIFY(addObject(*m_applied, 0x6001, u"New"_s, 1));
    QVERIFY(addObject(*m_current, 0x6002, u"Both"_s));
    QVERIFY(addObject(*m_applied, 0x6002, u"Renamed"_s));
    compare();
    QCOMPARE(treeTexts(*m_dialog),
             QStringList({u"0x6000 - Old - to be removed"_s, u" 0 - Sub 0 - to be removed"_s,
                          u"0x6001 - New - to be added"_s, u" 0 - Sub 0 - to be added"_s,
                          u"0x6002 - Both - different"_s}));
    QCOMPARE(m_dialog->differenceCount(), 5);
}

void TestProjectDiffApply::manufacturerObjectsAreLeftOut()
{
    QVERIFY(addObject(*m_current, 0x2000, u"Mine"_s));
    QVERIFY(addObject(*m_current, 0x5FFE, u"Mine"_s));
    QVERIFY(addObject(*m_current, 0x5FFF, u"Device"_s, 0));
    compare();
    QCOMPARE(treeTexts(*m_dialog), QStringList{u"0x5fff - Device - to be removed"_s});
}

void TestProjectDiffApply::onlyTheExpertModeOffersMenus()
{
    QVERIFY(addObject(*m_current, 0x6000, u"Old"_s, 1));
    QVERIFY(addObject(*m_applied, 0x6001, u"New"_s, 1));
    compare();
    QCOMPARE(useItemMenu(item(*m_dialog, u"0x6001 - New - to be added"_s)), QStringList());
    m_dialog->importItem();
    QVERIFY(!m_current->indexExists(0, 0x6001));
    click("btnExpert");
    QVERIFY(!widget<QPushButton>(*m_dialog, "btnExpert").isEnabled());
    QCOMPARE(useItemMenu(item(*m_dialog, u"0x6001 - New - to be added"_s), u"Import from other project"_s),
             QStringList{u"Import from other project"_s});
    QVERIFY(m_current->indexExists(0, 0x6001));
    QCOMPARE(useItemMenu(item(*m_dialog, u"0x6000 - Old - to be removed"_s), u"Delete from local project"_s),
             QStringList{u"Delete from local project"_s});
    QVERIFY(!m_current->indexExists(0, 0x6000));
    QCOMPARE(m_dialog->differenceCount(), 0);
}

void TestProjectDiffApply::onlyTheExpertModeTakesSettings()
{
    QVERIFY(m_current->setGeneralSetting(u"key"_s, u"old"_s));
    QVERIFY(m_applied->setGeneralSetting(u"key"_s, u"new"_s));
    compare();
    auto &table = widget<QTableWidget>(*m_dialog, "tblGeneralSettings");
    table.setCurrentCell(0, 0);
    const QPoint place = table.visualItemRect(table.item(0, 0)).center();
    QCOMPARE(useMenu(table, place), QStringList());
    m_dialog->takeOverSetting();
    QCOMPARE(m_current->getGeneralSetting(u"key"_s), u"old"_s);
    click("btnExpert");
    useMenu(table, place, u"Take setting from other project"_s);
    QCOMPARE(m_current->getGeneralSetting(u"key"_s), u"new"_s);
}

void TestProjectDiffApply::anImportedSubIndexKeepsItsValues()
{
    QVERIFY(addObject(*m_current, 0x6000, u"Object"_s, 1));
    QVERIFY(addObject(*m_applied, 0x6000, u"Object"_s, 1));
    QVERIFY(m_current->addSubIndex(0, 0x6000, 0, sub(u"old"_s, u"1"_s)));
    QVERIFY(m_applied->addSubIndex(0, 0x6000, 0, sub(u"new"_s, u"2"_s)));
    compare();
    click("btnExpert");
    useItemMenu(item(*m_dialog, u"0 - old - different"_s), u"Import from other project"_s);
    QCOMPARE(m_current->getSubIndexName(0, 0x6000, 0), u"new"_s);
    QCOMPARE(m_current->getSubIndexDefault(0, 0x6000, 0), u"1"_s);
    QCOMPARE(treeTexts(*m_dialog), QStringList({u"0x6000 - Object"_s, u" 0 - new - different"_s}));
}

void TestProjectDiffApply::theCompleteImportTakesTheValuesToo()
{
    QVERIFY(addObject(*m_current, 0x6000, u"Object"_s, 1));
    QVERIFY(addObject(*m_applied, 0x6000, u"Object"_s, 1));
    QVERIFY(setValue(*m_applied, 0x6000, 0, u"2"_s));
    compare();
    click("btnExpert");
    clickItem(item(*m_dialog, u"0 - Sub 0 - different"_s));
    m_dialog->importItemDefault();
    QCOMPARE(m_current->getSubIndexDefault(0, 0x6000, 0), u"2"_s);
    QCOMPARE(treeTexts(*m_dialog), QStringList());
}

void TestProjectDiffApply::theButtonsTellWhatBecomesOfTheChanges_data()
{
    QTest::addColumn<bool>("isExpert");
    QTest::addColumn<int>("result");
    QTest::newRow("btnAccept") << false << int(ProjectDiffDialog::ChangesAccepted);
    QTest::newRow("btnReject") << false << int(ProjectDiffDialog::ChangesRejected);
    QTest::newRow("pushButton") << true << int(ProjectDiffDialog::ChangesSelected);
}

void TestProjectDiffApply::theButtonsTellWhatBecomesOfTheChanges()
{
    QFETCH(const bool, isExpert);
    QFETCH(const int, result);
    compare();
    if (isExpert)
        click("btnExpert");
    click(QTest::currentDataTag());
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->result(), result);
}

void TestProjectDiffApply::closingWithoutAnAnswerRejects()
{
    compare();
    QTest::keyClick(m_dialog.get(), Qt::Key_Escape);
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->result(), int(ProjectDiffDialog::ChangesRejected));
}

int main(int argc, char **argv)
{
    return runWidgetTest<TestProjectDiffApply>(argc, argv);
}

#include "tst_projectdiffapply.moc"
