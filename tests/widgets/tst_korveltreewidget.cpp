#include "widgets/GuiHelper.h"
#include "widgets/KorvelTreeWidget.h"
#include "widgets/WidgetTest.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QSettings>
#include <QSignalSpy>
#include <QTimer>

#include <memory>

using namespace Qt::StringLiterals;

class TestKorvelTreeWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_tree.reset(); }
    void expandAndCollapseReachAllLevels();
    void theMenuPartHasItsTextsAndToolTip();
    void theOwnContextMenuWorks();
    void keysOpenItemsOnlyWithKeyboardNavigation_data();
    void keysOpenItemsOnlyWithKeyboardNavigation();
    void typedLettersOpenWhatTheySelect();
    void theMouseAndTheProgramSelectWithoutOpening();
    void movingTheCursorWithoutSelectingOpensNothing();
    void bothActivationSignalsAreSent();
    void theChoiceIsKeptUnderTheObjectName();

private:
    std::unique_ptr<KorvelTreeWidget> makeTree(const QString &name) const;

    std::unique_ptr<KorvelTreeWidget> m_tree;
    QStringList m_opened;
};

void TestKorvelTreeWidget::init()
{
    GuiHelper::userSettings()->clear();
    m_tree = makeTree(u"treeWidget"_s);
    m_tree->show();
    m_tree->setFocus();
}

std::unique_ptr<KorvelTreeWidget> TestKorvelTreeWidget::makeTree(const QString &name) const
{
    auto tree = std::make_unique<KorvelTreeWidget>();
    tree->setObjectName(name);
    for (const char *text : {"alpha", "beta", "gamma"}) {
        auto *item = new QTreeWidgetItem(tree.get(), {QString::fromLatin1(text)});
        auto *child = new QTreeWidgetItem(item, {u"child"_s});
        new QTreeWidgetItem(child, {u"grandchild"_s});
    }
    tree->setCurrentItem(tree->topLevelItem(0));
    return tree;
}

void TestKorvelTreeWidget::expandAndCollapseReachAllLevels()
{
    m_tree->expandTree(false);
    QVERIFY(m_tree->topLevelItem(2)->isExpanded());
    QVERIFY(m_tree->topLevelItem(2)->child(0)->isExpanded());
    m_tree->collapseTree(false);
    QVERIFY(!m_tree->topLevelItem(2)->isExpanded());
}

void TestKorvelTreeWidget::theMenuPartHasItsTextsAndToolTip()
{
    QMenu menu;
    menu.addAction(u"of the owner"_s);
    m_tree->addMenuPart(menu);
    const QList<QAction *> actions = menu.actions();
    QCOMPARE(actions.size(), 4);
    QCOMPARE(actions[1]->text(), u"Collapse all"_s);
    QCOMPARE(actions[2]->text(), u"Expand all"_s);
    QCOMPARE(actions[3]->text(), u"Keyboard navigation"_s);
    QCOMPARE(actions[3]->toolTip(), u"Navigate through the object browser with the keyboard."_s);
    QVERIFY(actions[3]->isCheckable());
    QVERIFY(!actions[1]->isCheckable());
    QVERIFY(menu.toolTipsVisible());
}

void TestKorvelTreeWidget::theOwnContextMenuWorks()
{
    QTimer::singleShot(50, this, [] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    const QPoint place = m_tree->viewport()->rect().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, m_tree->viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(m_tree->viewport(), &event);
    QVERIFY(m_tree->topLevelItem(1)->isExpanded());
}

void TestKorvelTreeWidget::keysOpenItemsOnlyWithKeyboardNavigation_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QStringList>("opened");
    QTest::newRow("on") << true << QStringList{u"beta"_s, u"gamma"_s, u"beta"_s};
    QTest::newRow("off") << false << QStringList{};
}

void TestKorvelTreeWidget::keysOpenItemsOnlyWithKeyboardNavigation()
{
    QFETCH(const bool, enabled);
    m_tree->enableKeyboardNav(enabled);
    m_opened.clear();
    connect(m_tree.get(), &QTreeWidget::itemActivated, this,
            [this](const QTreeWidgetItem *item) { m_opened.append(item->text(0)); });
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Up})
        QTest::keyClick(m_tree.get(), key);
    QTEST(m_opened, "opened");
}

void TestKorvelTreeWidget::typedLettersOpenWhatTheySelect()
{
    m_tree->enableKeyboardNav(true);
    const QSignalSpy activated(m_tree.get(), &QTreeWidget::itemActivated);
    QTest::keyClick(m_tree.get(), Qt::Key_G);
    QCOMPARE(m_tree->currentItem()->text(0), u"gamma"_s);
    QCOMPARE(activated.count(), 1);
}

void TestKorvelTreeWidget::theMouseAndTheProgramSelectWithoutOpening()
{
    m_tree->enableKeyboardNav(true);
    const QSignalSpy activated(m_tree.get(), &QTreeWidget::itemActivated);
    m_tree->setCurrentItem(m_tree->topLevelItem(1));
    QTest::mouseClick(m_tree->viewport(), Qt::LeftButton, {},
                      m_tree->visualItemRect(m_tree->topLevelItem(2)).center());
    QCOMPARE(m_tree->currentItem()->text(0), u"gamma"_s);
    QCOMPARE(activated.count(), 0);
}

void TestKorvelTreeWidget::movingTheCursorWithoutSelectingOpensNothing()
{
    m_tree->enableKeyboardNav(true);
    m_tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    const QSignalSpy activated(m_tree.get(), &QTreeWidget::itemActivated);
    QTest::keyClick(m_tree.get(), Qt::Key_Down, Qt::ControlModifier);
    QCOMPARE(activated.count(), 0);
    QTest::keyClick(m_tree.get(), Qt::Key_Down);
    QCOMPARE(activated.count(), 1);
}

void TestKorvelTreeWidget::bothActivationSignalsAreSent()
{
    m_tree->enableKeyboardNav(true);
    const QSignalSpy itemActivated(m_tree.get(), &QTreeWidget::itemActivated);
    const QSignalSpy activated(m_tree.get(), &QTreeWidget::activated);
    QTest::keyClick(m_tree.get(), Qt::Key_Down);
    QCOMPARE(itemActivated.count(), 1);
    QCOMPARE(activated.count(), 1);
    QCOMPARE(activated.constFirst().constFirst().toModelIndex(), m_tree->currentIndex());
}

void TestKorvelTreeWidget::theChoiceIsKeptUnderTheObjectName()
{
    QVERIFY(!m_tree->isKeyboardNavEnabled());
    m_tree->findChild<QAction *>(u"actionKeyboardNavigation"_s)->trigger();
    QVERIFY(m_tree->isKeyboardNavEnabled());
    QCOMPARE(GuiHelper::userSettings()->value("Env/treeWidget_KeyboardNav").toBool(), true);
    QVERIFY(makeTree(u"treeWidget"_s)->isKeyboardNavEnabled());
    QVERIFY(!makeTree(u"otherTree"_s)->isKeyboardNavEnabled());
}

int main(int argc, char **argv)
{
    return runWidgetTest<TestKorvelTreeWidget>(argc, argv);
}

#include "tst_korveltreewidget.moc"
