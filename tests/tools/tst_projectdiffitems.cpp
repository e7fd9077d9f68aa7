#include "app/BoxAnswerer.h"
#include "tools/DiffDialogFixture.h"
#include "widgets/GuiHelper.h"
#include "widgets/WidgetTest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QTabWidget>

using namespace Qt::StringLiterals;
using namespace DiffTest;
using namespace DiffDialogTest;

/** What the dialog shows of an item, and how items are carried across. */
class TestProjectDiffItems : public DiffDialogFixture
{
    Q_OBJECT

private Q_SLOTS:
    void aClickedItemShowsItsFields();
    void aNameWithBlanksDoesNotDisturbTheNumber();
    void itemsOfOneSideShowThatSideOnly();
    void messagesAndSignalsShowTheirFields();
    void theTickAddsInternalFields();
    void theKeyboardShowsDetailsToo();
    void theMenuOffersWhatTheStateAllows();
    void anObjectIsImported();
    void aSubIndexIsImported();
    void theCompleteImportTakesAnObject();
    void anObjectIsDeleted();
    void severalItemsAreImportedAtOnce();
    void whatIsOpenStaysOpenBehindAChange();
    void nothingIsCarriedIntoAMissingLine();
    void aRefusedChangeIsTold();
    void aSettingIsTakenOver();
    void takenOutFieldsDoNotCount();
    void differencesCanBeReadOnLightAndDark();
};

void TestProjectDiffItems::aClickedItemShowsItsFields()
{
    for (const auto &store : {m_current, m_other})
        QVERIFY(addObject(*store, 0x2000, u"Object"_s, 2));
    auto changed = sub(u"Sub 1"_s, u"5"_s);
    changed.uplimit = u"99"_s;
    QVERIFY(m_other->addSubIndex(0, 0x2000, 1, changed));
    compare();
    const auto &table = widget<QTableWidget>(*m_dialog, "tblObjects");
    QCOMPARE(table.rowCount(), 0);
    clickItem(item(*m_dialog, u"0x2000 - Object"_s));
    QCOMPARE(table.rowCount(), 6);
    QCOMPARE(rowTexts(table, 2), QStringList({u"ObjectType"_s, u"RECORD"_s, u"RECORD"_s}));
    QCOMPARE(emphasisedRows(table), QStringList());
    clickItem(item(*m_dialog, u"1 - Sub 1 - different"_s));
    QCOMPARE(table.rowCount(), 20);
    QCOMPARE(rowTexts(table, 3), QStringList({u"DefaultValue"_s, u"0"_s, u"5"_s}));
    QCOMPARE(emphasisedRows(table), QStringList({u"DefaultValue"_s, u"UpperLimit"_s}));
    QVERIFY(table.item(3, 1)->background() != table.item(4, 1)->background());
    QCOMPARE(table.item(3, 1)->toolTip(), u"5"_s);
}

void TestProjectDiffItems::aNameWithBlanksDoesNotDisturbTheNumber()
{
    QVERIFY(addObject(*m_current, 0x2000, u"17 - 0x18 of 0x19 - other"_s, 1));
    QVERIFY(addObject(*m_current, 0x2001, u"Decoy"_s, 1));
    compare();
    clickItem(item(*m_dialog, u"0x2000 - 17 - 0x18 of 0x19 - other - current"_s));
    const auto &table = widget<QTableWidget>(*m_dialog, "tblObjects");
    QCOMPARE(rowTexts(table, 0), QStringList({u"Name"_s, u"17 - 0x18 of 0x19 - other"_s, QString()}));
}

void TestProjectDiffItems::itemsOfOneSideShowThatSideOnly()
{
    QVERIFY(addObject(*m_other, 0x2000, u"Yours"_s, 1));
    compare();
    clickItem(item(*m_dialog, u"0x2000 - Yours - other"_s));
    const auto &table = widget<QTableWidget>(*m_dialog, "tblObjects");
    QCOMPARE(rowTexts(table, 0), QStringList({u"Name"_s, QString(), u"Yours"_s}));
    QCOMPARE(emphasisedRows(table), QStringList());
}

void TestProjectDiffItems::messagesAndSignalsShowTheirFields()
{
    QVERIFY(addPgn(*m_current, 1, ObjectDataBase::Transmit, u"Sent"_s, {190}));
    QVERIFY(addPgn(*m_current, 1, ObjectDataBase::Receive, u"Got"_s));
    QVERIFY(addCanId(*m_other, 2, ObjectDataBase::Receive, u"Message"_s, {7}));
    compare();
    auto &pages = widget<QTabWidget>(*m_dialog, "tabWidget");
    const auto &pgns = widget<QTableWidget>(*m_dialog, "tblPGN");
    pages.setCurrentIndex(1);
    clickItem(item(*m_dialog, u"0x1 - Got Receive - current"_s, "treePGN"));
    QCOMPARE(rowTexts(pgns, 0), QStringList({u"Name"_s, u"Got"_s, QString()}));
    QCOMPARE(rowTexts(pgns, 1), QStringList({u"Prority"_s, u"6"_s, QString()}));
    QTreeWidgetItem &group = item(*m_dialog, u"0x1 - Sent Transmit - current"_s, "treePGN");
    group.setExpanded(true);
    clickItem(*group.child(0));
    QCOMPARE(rowTexts(pgns, 0), QStringList({u"Name"_s, u"Signal 190"_s, QString()}));
    clickItem(item(*m_dialog, u"Receive PGNs"_s, "treePGN"));
    QCOMPARE(pgns.rowCount(), 0);
    pages.setCurrentIndex(2);
    QTreeWidgetItem &message = item(*m_dialog, u"0x2 - Message Receive - other"_s, "treeCANID");
    message.setExpanded(true);
    clickItem(*message.child(0));
    QCOMPARE(rowTexts(widget<QTableWidget>(*m_dialog, "tblCANID"), 0),
             QStringList({u"Name"_s, QString(), u"Element 7"_s}));
}

void TestProjectDiffItems::theTickAddsInternalFields()
{
    for (const auto &store : {m_current, m_other})
        QVERIFY(addObject(*store, 0x2000, u"Object"_s, 1));
    QVERIFY(m_other->addSubIndex(0, 0x2000, 0, sub(u"Other name"_s)));
    compare();
    clickItem(item(*m_dialog, u"0 - Sub 0 - different"_s));
    const auto &table = widget<QTableWidget>(*m_dialog, "tblObjects");
    QCOMPARE(table.rowCount(), 20);
    QTest::mouseClick(&widget<QCheckBox>(*m_dialog, "cbInternal"), Qt::LeftButton);
    QVERIFY(widget<QCheckBox>(*m_dialog, "cbInternal").isChecked());
    QCOMPARE(table.rowCount(), 29);
    QCOMPARE(rowTexts(table, 20), QStringList({u"currentvalue"_s, QString(), QString()}));
}

void TestProjectDiffItems::theKeyboardShowsDetailsToo()
{
    QVERIFY(addObject(*m_current, 0x2000, u"First"_s, 1));
    QVERIFY(addObject(*m_current, 0x2001, u"Second"_s, 1));
    compare();
    clickItem(item(*m_dialog, u"0x2000 - First - current"_s));
    QTest::keyClick(&widget<QTreeWidget>(*m_dialog, "treeWidget"), Qt::Key_Down);
    QCOMPARE(rowTexts(widget<QTableWidget>(*m_dialog, "tblObjects"), 0).at(1), u"Second"_s);
}

void TestProjectDiffItems::theMenuOffersWhatTheStateAllows()
{
    for (const auto &store : {m_current, m_other}) {
        QVERIFY(addObject(*store, 0x2000, u"Holder current"_s, 3));
        QVERIFY(addObject(*store, 0x2003, u"Both"_s, 1));
    }
    QVERIFY(setValue(*m_current, 0x2000, 1, u"5"_s));
    QVERIFY(addObject(*m_current, 0x2001, u"Mine"_s));
    QVERIFY(addObject(*m_other, 0x2002, u"Yours"_s));
    QVERIFY(addObject(*m_current, 0x2003, u"Renamed"_s));
    compare();
    const QString take = u"Import from other project"_s;
    const QString complete = u"Import from other project (complete)"_s;
    const QString remove = u"Delete from local project"_s;
    QCOMPARE(useItemMenu(item(*m_dialog, u"0x2000 - Holder current"_s)), QStringList());
    QCOMPARE(useItemMenu(item(*m_dialog, u"1 - Sub 1 - different"_s)), QStringList{take});
    QCOMPARE(useItemMenu(item(*m_dialog, u"0x2001 - Mine - current"_s)), QStringList{remove});
    QCOMPARE(useItemMenu(item(*m_dialog, u"0x2002 - Yours - other"_s)), QStringList{take});
    QCOMPARE(useItemMenu(item(*m_dialog, u"0x2003 - Renamed - different"_s)), QStringList({take, complete}));
}

void TestProjectDiffItems::anObjectIsImported()
{
    QVERIFY(addObject(*m_other, 0x2002, u"Yours"_s, 2));
    compare();
    QCOMPARE(m_dialog->differenceCount(), 3);
    useItemMenu(item(*m_dialog, u"0x2002 - Yours - other"_s), u"Import from other project"_s);
    QCOMPARE(m_current->getIndexName(0, 0x2002), u"Yours"_s);
    QCOMPARE(m_current->getSubIndexList(0, 0x2002), QList<quint8>({0, 1}));
    QCOMPARE(treeTexts(*m_dialog), QStringList());
    QCOMPARE(m_dialog->differenceCount(), 0);
    QVERIFY(!widget<QLabel>(*m_dialog, "lblObjects").isHidden());
}

void TestProjectDiffItems::aSubIndexIsImported()
{
    for (const auto &store : {m_current, m_other})
        QVERIFY(addObject(*store, 0x2000, u"Object"_s, 3));
    QVERIFY(setValue(*m_other, 0x2000, 1, u"5"_s));
    QVERIFY(setValue(*m_other, 0x2000, 2, u"6"_s));
    compare();
    useItemMenu(item(*m_dialog, u"2 - Sub 2 - different"_s), u"Import from other project"_s);
    QCOMPARE(m_current->getSubIndexDefault(0, 0x2000, 1), u"0"_s);
    QCOMPARE(m_current->getSubIndexDefault(0, 0x2000, 2), u"6"_s);
    QCOMPARE(treeTexts(*m_dialog), QStringList({u"0x2000 - Object"_s, u" 1 - Sub 1 - different"_s}));
}

void TestProjectDiffItems::theCompleteImportTakesAnObject()
{
    QVERIFY(addObject(*m_current, 0x2000, u"Mine"_s, 1));
    QVERIFY(addObject(*m_other, 0x2000, u"Yours"_s, 1));
    QVERIFY(setValue(*m_other, 0x2000, 0, u"5"_s));
    compare();
    useItemMenu(item(*m_dialog, u"0x2000 - Mine - different"_s), u"Import from other project (complete)"_s);
    QCOMPARE(m_current->getIndexName(0, 0x2000), u"Yours"_s);
    QCOMPARE(m_current->getSubIndexDefault(0, 0x2000, 0), u"5"_s);
    QCOMPARE(m_dialog->differenceCount(), 0);
}

void TestProjectDiffItems::anObjectIsDeleted()
{
    QVERIFY(addObject(*m_current, 0x2000, u"Mine"_s, 2));
    compare();
    item(*m_dialog, u"0x2000 - Mine - current"_s).setExpanded(true);
    useItemMenu(item(*m_dialog, u"1 - Sub 1 - current"_s), u"Delete from local project"_s);
    QCOMPARE(m_current->getSubIndexList(0, 0x2000), QList<quint8>{0});
    useItemMenu(item(*m_dialog, u"0x2000 - Mine - current"_s), u"Delete from local project"_s);
    QVERIFY(!m_current->indexExists(0, 0x2000));
    QCOMPARE(treeTexts(*m_dialog), QStringList());
}

void TestProjectDiffItems::severalItemsAreImportedAtOnce()
{
    QVERIFY(addObject(*m_other, 0x2000, u"One"_s));
    QVERIFY(addObject(*m_other, 0x2001, u"Two"_s));
    QVERIFY(addObject(*m_current, 0x2002, u"Mine"_s));
    compare();
    auto &tree = widget<QTreeWidget>(*m_dialog, "treeWidget");
    tree.selectAll();
    QTreeWidgetItem &under = item(*m_dialog, u"0x2001 - Two - other"_s);
    useMenu(tree, tree.visualItemRect(&under).center(), u"Import from other project"_s);
    QCOMPARE(m_current->getIndexList(0, 0x2000, 0x2FFF), QList<quint16>({0x2000, 0x2001, 0x2002}));
    QCOMPARE(treeTexts(*m_dialog).constFirst(), u"0x2002 - Mine - current"_s);
}

void TestProjectDiffItems::whatIsOpenStaysOpenBehindAChange()
{
    for (const auto &store : {m_current, m_other})
        QVERIFY(addObject(*store, 0x2000, u"Holder"_s, 3));
    QVERIFY(setValue(*m_other, 0x2000, 1, u"5"_s));
    QVERIFY(addObject(*m_other, 0x2001, u"Yours"_s, 1));
    QVERIFY(addObject(*m_other, 0x2002, u"Imported"_s, 1));
    compare();
    item(*m_dialog, u"0x2000 - Holder"_s).setExpanded(false);
    item(*m_dialog, u"0x2001 - Yours - other"_s).setExpanded(true);
    useItemMenu(item(*m_dialog, u"0x2002 - Imported - other"_s), u"Import from other project"_s);
    QVERIFY(!item(*m_dialog, u"0x2000 - Holder"_s).isExpanded());
    QVERIFY(item(*m_dialog, u"0x2001 - Yours - other"_s).isExpanded());
}

void TestProjectDiffItems::nothingIsCarriedIntoAMissingLine()
{
    m_other = makeStore({0, 1});
    QVERIFY(addObject(*m_other, 0x2000, u"Yours"_s, 1, 1));
    compare();
    widget<QComboBox>(*m_dialog, "cbLines").setCurrentIndex(1);
    QTreeWidgetItem &object = item(*m_dialog, u"0x2000 - Yours - other"_s);
    QCOMPARE(useItemMenu(object), QStringList());
    m_dialog->importItem();
    QCOMPARE(m_current->getLines(), QList<quint8>{0});
    QCOMPARE(treeTexts(*m_dialog).constFirst(), u"0x2000 - Yours - other"_s);
}

void TestProjectDiffItems::aRefusedChangeIsTold()
{
    QVERIFY(addObject(*m_other, 0x2000, u"Yours"_s));
    compare();
    m_current->setWriteLock(true);
    const BoxAnswerer answerer(QMessageBox::Ok);
    useItemMenu(item(*m_dialog, u"0x2000 - Yours - other"_s), u"Import from other project"_s);
    m_current->setWriteLock(false);
    QCOMPARE(answerer.texts, QStringList{u"The project could not be changed."_s});
    QVERIFY(!answerer.waitCursorSeen);
    QCOMPARE(treeTexts(*m_dialog).constFirst(), u"0x2000 - Yours - other"_s);
}

void TestProjectDiffItems::aSettingIsTakenOver()
{
    for (const QString &key : {u"a"_s, u"b"_s}) {
        QVERIFY(m_current->setGeneralSetting(key, u"mine"_s));
        QVERIFY(m_other->setGeneralSetting(key, u"yours"_s));
    }
    compare();
    auto &table = widget<QTableWidget>(*m_dialog, "tblGeneralSettings");
    QVERIFY(useMenu(table, QPoint(5, table.viewport()->height() - 5)).isEmpty()); // below the rows
    table.setCurrentCell(1, 2);
    const QPoint place = table.visualItemRect(table.item(1, 2)).center();
    QCOMPARE(useMenu(table, place, u"Take setting from other project"_s),
             QStringList{u"Take setting from other project"_s});
    QCOMPARE(m_current->getGeneralSetting(u"a"_s), u"mine"_s);
    QCOMPARE(m_current->getGeneralSetting(u"b"_s), u"yours"_s);
    QCOMPARE(table.rowCount(), 1);
    QCOMPARE(m_dialog->differenceCount(), 1);
}

void TestProjectDiffItems::takenOutFieldsDoNotCount()
{
    for (const auto &store : {m_current, m_other})
        QVERIFY(addObject(*store, 0x2000, u"Object"_s, 2));
    QVERIFY(setValue(*m_other, 0x2000, 1, u"5"_s));
    compare();
    QCOMPARE(m_dialog->differenceCount(), 2);
    const auto configure = [this](bool accept) {
        QTimer::singleShot(0, m_dialog.get(), [accept] {
            auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            const QList<QCheckBox *> fields =
                widget<QGroupBox>(*dialog, "gbSubIndex").findChildren<QCheckBox *>();
            for (QCheckBox *field : fields)
                if (field->text() == "DefaultValue"_L1)
                    field->toggle();
            accept ? dialog->accept() : dialog->reject();
        });
        QTest::mouseClick(&widget<QPushButton>(*m_dialog, "btnSettings"), Qt::LeftButton);
    };
    configure(false);
    QCOMPARE(m_dialog->differenceCount(), 2);
    configure(true);
    QCOMPARE(m_dialog->differenceCount(), 0);
    QCOMPARE(treeTexts(*m_dialog), QStringList());
    configure(true);
    QCOMPARE(m_dialog->differenceCount(), 2);
}

void TestProjectDiffItems::differencesCanBeReadOnLightAndDark()
{
    for (const auto &store : {m_current, m_other})
        QVERIFY(addObject(*store, 0x2000, u"Holder"_s, 2));
    QVERIFY(setValue(*m_other, 0x2000, 1, u"5"_s));
    QVERIFY(addObject(*m_current, 0x2001, u"Mine"_s, 1));
    QVERIFY(addObject(*m_other, 0x2002, u"Yours"_s, 1));
    compare();
    clickItem(item(*m_dialog, u"1 - Sub 1 - different"_s));
    constexpr double readable = 4.5; // WCAG 2.1, AA
    const QPalette light = m_dialog->palette();
    for (const QPalette &palette : {darkPalette(), light}) {
        m_dialog->setPalette(palette);
        const QColor base = palette.color(QPalette::Base);
        for (const QString &text : {u"1 - Sub 1 - different"_s, u"0x2001 - Mine - current"_s,
                                    u"0x2002 - Yours - other"_s, u"0x2000 - Holder"_s}) {
            const QColor colour = item(*m_dialog, text).foreground(0).color();
            QVERIFY2(GuiHelper::contrast(colour, base) >= readable, qPrintable(text));
        }
        const QTableWidgetItem *value = widget<QTableWidget>(*m_dialog, "tblObjects").item(3, 0);
        QVERIFY(value->font().bold());
        QVERIFY(GuiHelper::contrast(value->background().color(), palette.color(QPalette::Text)) >= readable);
        QVERIFY(value->background().color() != base);
    }
}

int main(int argc, char **argv)
{
    return runWidgetTest<TestProjectDiffItems>(argc, argv);
}

#include "tst_projectdiffitems.moc"
