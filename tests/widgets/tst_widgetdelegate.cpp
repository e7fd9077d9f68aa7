#include "widgets/WidgetDelegate.h"
#include "widgets/WidgetTest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTableView>

#include <memory>

using namespace Qt::StringLiterals;
using EditorKind = WidgetDelegate::EditorKind;

class TestWidgetDelegate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_view.reset(); }
    void theKindOfTheCellDecidesTheEditor();
    void aLineEditIsFilledAndCommittedOnReturn();
    void aComboBoxShowsTheModelsTextAndCommitsEachChange();
    void aTextThatIsNoChoiceShowsNoChoice();
    void aCheckBoxShowsTheModelsStateAndCommitsEachChange_data();
    void aCheckBoxShowsTheModelsStateAndCommitsEachChange();
    void aChangeOfTheModelReachesTheEditorWithoutComingBack();
    void aCellOfNoKindHasTheUsualEditor();

private:
    QModelIndex setCell(EditorKind kind, const QVariant &value);
    template <class Editor>
    Editor *open(const QModelIndex &index) const
    {
        m_view->openPersistentEditor(index);
        return qobject_cast<Editor *>(m_view->indexWidget(index));
    }

    QStandardItemModel m_model;
    std::unique_ptr<QTableView> m_view;
};

void TestWidgetDelegate::init()
{
    m_model.clear();
    m_model.setRowCount(1);
    m_model.setColumnCount(1);
    m_view = std::make_unique<QTableView>();
    m_view->setModel(&m_model);
    m_view->setItemDelegate(new WidgetDelegate(m_view.get()));
    m_view->show();
}

QModelIndex TestWidgetDelegate::setCell(EditorKind kind, const QVariant &value)
{
    const QModelIndex index = m_model.index(0, 0);
    m_model.setData(index, int(kind), WidgetDelegate::EditorKindRole);
    m_model.setData(
        index,
        QVariant::fromValue(WidgetDelegate::Choices{{u"no"_s, 0}, {u"as defaultvalue"_s, 1}, {u"yes"_s, 2}}),
        WidgetDelegate::ChoicesRole);
    m_model.setData(index, value);
    return index;
}

void TestWidgetDelegate::theKindOfTheCellDecidesTheEditor()
{
    QCOMPARE(int(EditorKind::LineEdit), 1);
    QCOMPARE(int(EditorKind::ComboBox), 2);
    QCOMPARE(int(EditorKind::CheckBox), 3);
    QVERIFY(open<QLineEdit>(setCell(EditorKind::LineEdit, u"a"_s)));
    init();
    QVERIFY(open<QComboBox>(setCell(EditorKind::ComboBox, u"no"_s)));
    init();
    QVERIFY(open<QCheckBox>(setCell(EditorKind::CheckBox, true)));
}

void TestWidgetDelegate::aLineEditIsFilledAndCommittedOnReturn()
{
    const QModelIndex index = setCell(EditorKind::LineEdit, u"0x10"_s);
    auto *edit = open<QLineEdit>(index);
    QVERIFY(edit);
    QCOMPARE(edit->styleSheet(), u"QLineEdit { border: none; }"_s);
    QCOMPARE(edit->text(), u"0x10"_s);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, u"0x20"_s);
    QCOMPARE(index.data().toString(), u"0x10"_s);
    QTest::keyClick(edit, Qt::Key_Return);
    QTRY_COMPARE(index.data().toString(), u"0x20"_s);
}

void TestWidgetDelegate::aComboBoxShowsTheModelsTextAndCommitsEachChange()
{
    const QModelIndex index = setCell(EditorKind::ComboBox, u"as defaultvalue"_s);
    auto *box = open<QComboBox>(index);
    QVERIFY(box);
    QCOMPARE(box->count(), 3);
    QCOMPARE(box->currentText(), u"as defaultvalue"_s);
    QTest::keyClick(box, Qt::Key_Down);
    QCOMPARE(index.data(Qt::EditRole).toString(), u"yes"_s);
    QCOMPARE(index.data(WidgetDelegate::ChoiceValueRole).toInt(), 2);
    QTest::keyClick(box, Qt::Key_Home);
    QCOMPARE(index.data(Qt::EditRole).toString(), u"no"_s);
    QCOMPARE(index.data(WidgetDelegate::ChoiceValueRole).toInt(), 0);
}

void TestWidgetDelegate::aTextThatIsNoChoiceShowsNoChoice()
{
    const QModelIndex index = setCell(EditorKind::ComboBox, u"of a later version"_s);
    QCOMPARE(open<QComboBox>(index)->currentIndex(), -1);
    QCOMPARE(index.data().toString(), u"of a later version"_s);
}

void TestWidgetDelegate::aCheckBoxShowsTheModelsStateAndCommitsEachChange_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QVariant>("afterClick");
    QTest::newRow("true") << QVariant(true) << QVariant(false);
    QTest::newRow("false") << QVariant(false) << QVariant(true);
    QTest::newRow("text 0") << QVariant(u"0"_s) << QVariant(u"1"_s);
    QTest::newRow("text 1") << QVariant(u"1"_s) << QVariant(u"0"_s);
}

void TestWidgetDelegate::aCheckBoxShowsTheModelsStateAndCommitsEachChange()
{
    QFETCH(const QVariant, stored);
    const QModelIndex index = setCell(EditorKind::CheckBox, stored);
    auto *box = open<QCheckBox>(index);
    QCOMPARE(box->isChecked(), stored.toBool());
    QTest::keyClick(box, Qt::Key_Space);
    QTEST(index.data(Qt::EditRole), "afterClick");
}

void TestWidgetDelegate::aChangeOfTheModelReachesTheEditorWithoutComingBack()
{
    const QModelIndex index = setCell(EditorKind::ComboBox, u"no"_s);
    const auto *box = open<QComboBox>(index);
    const QSignalSpy committed(m_view->itemDelegate(), &QAbstractItemDelegate::commitData);
    m_model.setData(index, u"yes"_s);
    QCOMPARE(box->currentText(), u"yes"_s);
    QCOMPARE(committed.count(), 0);
}

void TestWidgetDelegate::aCellOfNoKindHasTheUsualEditor()
{
    const QModelIndex index = setCell(EditorKind::None, u"a"_s);
    const auto *edit = open<QLineEdit>(index);
    QVERIFY(edit);
    QCOMPARE(edit->text(), u"a"_s);
    QVERIFY(edit->styleSheet().isEmpty());
}

int main(int argc, char **argv)
{
    return runWidgetTest<TestWidgetDelegate>(argc, argv);
}

#include "tst_widgetdelegate.moc"
