#include "forms/ManufacturerSegmentForm.h"
#include "forms/ObjectDictionaryForm.h"
#include "forms/RecordsDesk.h"

#include <QAbstractItemModelTester>
#include <QElapsedTimer>
#include <QLineEdit>

using namespace Qt::StringLiterals;
using namespace RecordsDesk;

/** The pages that list the objects of a line. */
class tst_ObjectForms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theObjectsOfALineAreListed();
    void theSubIndicesOfTheSelectedObjectAreListed();
    void variableNamesOfANetworkAreShownAsStored();
    void aLineWithoutObjectsSaysSo();
    void withoutProjectNothingIsListed();
    void anotherLineShowsItsOwnObjects();
    void aNewObjectAppearsAndTheSelectionStays();
    void aChangeOfAnotherLineIsNotRead();
    void theFilterShowsRowsThatHoldTheText();
    void gotoIndexSelectsTheObject();
    void gotoSubIndexSelectsBoth();
    void goToAFilteredObjectDropsTheFilter();
    void placesOfOtherKindsAndLinesAreRefused();
    void twentyThousandObjectsAreReadSoon();
    void theManufacturerSegmentIsPartOfTheDictionary();
};

void tst_ObjectForms::theObjectsOfALineAreListed()
{
    const auto store = FormTest::makeStore();
    QVERIFY(FormTest::addObject(*store, 0, 0x1018, u"Identity Object"_s, 5));
    QVERIFY(FormTest::addObject(*store, 0, 0x1000, u"Device Type"_s));
    QVERIFY(FormTest::addObject(*store, 0, 0x2000, u"Value $I"_s));
    ObjectDictionaryForm form;
    const QAbstractItemModelTester tester(&recordsOf(form),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    form.setDataBase(store);
    form.show();
    QCOMPARE(recordsOf(form).rowCount(), 3);
    QCOMPARE(FormTest::rowTexts(recordsOf(form), 0),
             (QStringList{u"0x1000"_s, u"Device Type"_s, u"VAR"_s, u"1"_s}));
    QCOMPARE(FormTest::rowTexts(recordsOf(form), 1),
             (QStringList{u"0x1018"_s, u"Identity Object"_s, u"RECORD"_s, u"5"_s}));
    QCOMPARE(recordsOf(form).index(2, 1).data().toString(), u"Value 2000"_s);
    QCOMPARE(labelText(form, u"lblCount"_s), u"Objects: 3"_s);
}

void tst_ObjectForms::theSubIndicesOfTheSelectedObjectAreListed()
{
    const auto store = FormTest::makeStore();
    QVERIFY(FormTest::addObject(*store, 0, 0x1000, u"Device Type"_s));
    QVERIFY(FormTest::addObject(*store, 0, 0x1018, u"Identity"_s, 3));
    ObjectDictionaryForm form;
    const QAbstractItemModelTester tester(&partsOf(form),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    form.setDataBase(store);
    form.show();
    QCOMPARE(partsOf(form).rowCount(), 1);
    QTest::keyClick(form.findChild<QTableView *>(u"tvRecords"_s), Qt::Key_Down);
    QCOMPARE(partsOf(form).rowCount(), 3);
    QCOMPARE(FormTest::rowTexts(partsOf(form), 2),
             (QStringList{u"2"_s, u"Sub 2 of Identity"_s, u"UNSIGNED32"_s, u"Read Write"_s, u"0x2"_s}));
    QCOMPARE(labelText(form, u"lblRecord"_s), u"0x1018  Identity"_s);
}

void tst_ObjectForms::variableNamesOfANetworkAreShownAsStored()
{
    const auto store = FormTest::makeStore();
    QVERIFY(FormTest::addObject(*store, 0, 0x9FFF, u"Last $I"_s));
    QVERIFY(FormTest::addObject(*store, 0, 0xA000, u"Network $I"_s));
    QVERIFY(FormTest::addObject(*store, 0, 0xBFFF, u"Gateway $I"_s));
    QVERIFY(FormTest::addObject(*store, 0, 0xC000, u"Behind $I"_s));
    ObjectDictionaryForm form;
    form.setDataBase(store);
    form.show();
    QCOMPARE(FormTest::columnTexts(recordsOf(form), 1),
             (QStringList{u"Last 9fff"_s, u"Network $I"_s, u"Gateway $I"_s, u"Behind c000"_s}));
}

void tst_ObjectForms::aLineWithoutObjectsSaysSo()
{
    ObjectDictionaryForm form;
    form.setDataBase(FormTest::makeStore());
    form.show();
    QVERIFY(form.findChild<QLabel *>(u"lblNoRecords"_s)->isVisible());
    QCOMPARE(labelText(form, u"lblNoRecords"_s), u"This line has no objects."_s);
    QVERIFY(!form.findChild<QTableView *>(u"tvRecords"_s)->isVisible());
}

void tst_ObjectForms::withoutProjectNothingIsListed()
{
    const auto store = FormTest::makeStore();
    QVERIFY(FormTest::addObject(*store, 0, 0x1000, u"Device Type"_s, 3));
    ObjectDictionaryForm form;
    form.setDataBase(store);
    form.show();
    QCOMPARE(recordsOf(form).rowCount(), 1);
    form.setDataBase({});
    QCOMPARE(recordsOf(form).rowCount(), 0);
    QCOMPARE(partsOf(form).rowCount(), 0);
    form.setDataBase(QSharedPointer<ObjectDataBase>::create());
    QCOMPARE(recordsOf(form).rowCount(), 0);
}

void tst_ObjectForms::anotherLineShowsItsOwnObjects()
{
    const auto store = FormTest::makeStore();
    QVERIFY(store->addNode(1, ObjectDataBase::NODE_DATA_T()));
    QVERIFY(FormTest::addObject(*store, 0, 0x1000, u"Of line 0"_s));
    QVERIFY(FormTest::addObject(*store, 1, 0x1000, u"Of line 1"_s));
    ObjectDictionaryForm form;
    form.setDataBase(store);
    form.show();
    form.showLine(1, false);
    QCOMPARE(FormTest::columnTexts(recordsOf(form), 1), QStringList{u"Of line 1"_s});
}

void tst_ObjectForms::aNewObjectAppearsAndTheSelectionStays()
{
    const auto store = FormTest::makeStore();
    QVERIFY(FormTest::addObject(*store, 0, 0x1018, u"Identity"_s, 3));
    QVERIFY(FormTest::addObject(*store, 0, 0x2000, u"Value"_s));
    ObjectDictionaryForm form;
    form.setDataBase(store);
    form.show();
    form.gotoIndex(0x2000);
    QVERIFY(FormTest::addObject(*store, 0, 0x1000, u"Device Type"_s));
    QTRY_COMPARE(recordsOf(form).rowCount(), 3);
    QCOMPARE(selectedText(form, u"tvRecords"_s), u"0x2000"_s);
    QVERIFY(store->removeIndex(0, 0x2000));
    QTRY_COMPARE(recordsOf(form).rowCount(), 2);
    QVERIFY(!selectedText(form, u"tvRecords"_s).isEmpty());
}

void tst_ObjectForms::aChangeOfAnotherLineIsNotRead()
{
    const auto store = FormTest::makeStore();
    QVERIFY(store->addNode(1, ObjectDataBase::NODE_DATA_T()));
    QVERIFY(FormTest::addObject(*store, 0, 0x1000, u"Device Type"_s));
    ObjectDictionaryForm form;
    form.setDataBase(store);
    form.show();
    // Told of another line the page must not even look: what it would find has changed in silence.
    store->blockSignals(true);
    QVERIFY(FormTest::addObject(*store, 0, 0x1001, u"Error Register"_s));
    store->blockSignals(false);
    QVERIFY(FormTest::addObject(*store, 1, 0x1000, u"Of line 1"_s));
    QTest::qWait(100);
    QCOMPARE(recordsOf(form).rowCount(), 1);
    QVERIFY(FormTest::addObject(*store, 0, 0x1002, u"Status"_s));
    QTRY_COMPARE(recordsOf(form).rowCount(), 3);
}

void tst_ObjectForms::theFilterShowsRowsThatHoldTheText()
{
    const auto store = FormTest::makeStore();
    QVERIFY(FormTest::addObject(*store, 0, 0x1000, u"Device Type"_s));
    QVERIFY(FormTest::addObject(*store, 0, 0x1018, u"Identity"_s, 3));
    ObjectDictionaryForm form;
    form.setDataBase(store);
    form.show();
    auto *filter = form.findChild<QLineEdit *>(u"leFilter"_s);
    QCOMPARE(filter->placeholderText(), u"Type here to filter"_s);
    QTest::keyClicks(filter, u"IDENT"_s);
    QCOMPARE(FormTest::columnTexts(recordsOf(form), 0), QStringList{u"0x1018"_s});
    QCOMPARE(labelText(form, u"lblCount"_s), u"Objects: 1 of 2"_s);
    QTest::keyClicks(filter, u"x"_s);
    QCOMPARE(recordsOf(form).rowCount(), 0);
    QCOMPARE(partsOf(form).rowCount(), 0);
    filter->clear();
    QCOMPARE(recordsOf(form).rowCount(), 2);
}

void tst_ObjectForms::gotoIndexSelectsTheObject()
{
    const auto store = FormTest::makeStore();
    QVERIFY(FormTest::addObject(*store, 0, 0x1000, u"Device Type"_s));
    QVERIFY(FormTest::addObject(*store, 0, 0x1018, u"Identity"_s, 3));
    ObjectDictionaryForm form;
    form.setDataBase(store);
    form.gotoIndex(0x1018); // hidden pages, too: the window shows the page afterwards
    QCOMPARE(selectedText(form, u"tvRecords"_s), u"0x1018"_s);
    QCOMPARE(partsOf(form).rowCount(), 3);
}

void tst_ObjectForms::gotoSubIndexSelectsBoth()
{
    const auto store = FormTest::makeStore();
    QVERIFY(FormTest::addObject(*store, 0, 0x1000, u"Device Type"_s));
    QVERIFY(FormTest::addObject(*store, 0, 0x1018, u"Identity"_s, 3));
    ObjectDictionaryForm form;
    form.setDataBase(store);
    form.gotoSubIndex(0x1018, 2);
    QCOMPARE(selectedText(form, u"tvRecords"_s), u"0x1018"_s);
    QCOMPARE(selectedText(form, u"tvParts"_s), u"2"_s);
    QVERIFY(form.goTo(ProjectLocation::ofSubIndex(0, 0x1000, 77))); // the object is there, that part is not
    QCOMPARE(selectedText(form, u"tvRecords"_s), u"0x1000"_s);
}

void tst_ObjectForms::goToAFilteredObjectDropsTheFilter()
{
    const auto store = FormTest::makeStore();
    QVERIFY(FormTest::addObject(*store, 0, 0x1000, u"Device Type"_s));
    QVERIFY(FormTest::addObject(*store, 0, 0x1018, u"Identity"_s));
    ObjectDictionaryForm form;
    form.setDataBase(store);
    form.show();
    auto *filter = form.findChild<QLineEdit *>(u"leFilter"_s);
    filter->setText(u"Device"_s);
    form.gotoIndex(0x1018);
    QVERIFY(filter->text().isEmpty());
    QCOMPARE(selectedText(form, u"tvRecords"_s), u"0x1018"_s);
    filter->setText(u"Identity"_s);
    form.gotoIndex(0x1018);
    QCOMPARE(filter->text(), u"Identity"_s);
}

void tst_ObjectForms::placesOfOtherKindsAndLinesAreRefused()
{
    const auto store = FormTest::makeStore();
    QVERIFY(FormTest::addObject(*store, 0, 0x1000, u"Device Type"_s));
    ObjectDictionaryForm form;
    form.setDataBase(store);
    QVERIFY(form.goTo(ProjectLocation::ofObject(0, 0x1000)));
    QVERIFY(!form.goTo(ProjectLocation::ofObject(0, 0x1001)));
    QVERIFY(!form.goTo(ProjectLocation::ofObject(1, 0x1000)));
    QVERIFY(!form.goTo(ProjectLocation::ofPgn(0, 0x1000, ObjectDataBase::Transmit)));
    QVERIFY(!form.goTo(ProjectLocation::ofSetting(u"co_node_id"_s)));
    QVERIFY(!form.goTo({}));
}

void tst_ObjectForms::twentyThousandObjectsAreReadSoon()
{
    constexpr int count = 20000;
    constexpr int generousMs = 2000; // a tenth of this on a machine of today; sanitizers need the rest
    const auto store = FormTest::makeStore();
    QVERIFY(FormTest::addObjects(*store, 0, 0x1000, count));
    ObjectDictionaryForm form;
    form.setDataBase(store);
    QElapsedTimer timer;
    timer.start();
    form.show();
    const qint64 firstMs = timer.restart();
    QCOMPARE(recordsOf(form).rowCount(), count);
    form.showLine(0, true);
    const qint64 againMs = timer.restart();
    form.findChild<QLineEdit *>(u"leFilter"_s)->setText(u"0x1ff"_s);
    const qint64 filterMs = timer.elapsed();
    QCOMPARE(recordsOf(form).rowCount(), 16);
    qInfo("20,000 objects: first %lld ms, again %lld ms, filter %lld ms", firstMs, againMs, filterMs);
    QVERIFY2(firstMs < generousMs && againMs < generousMs && filterMs < generousMs, "too slow");
}

void tst_ObjectForms::theManufacturerSegmentIsPartOfTheDictionary()
{
    const auto store = FormTest::makeStore();
    for (const int index : {0x1FFF, 0x2000, 0x5FFF, 0x6000})
        QVERIFY(FormTest::addObject(*store, 0, quint16(index), u"Object"_s));
    ManufacturerSegmentForm form;
    form.setDataBase(store);
    form.show();
    QCOMPARE(FormTest::columnTexts(recordsOf(form), 0), (QStringList{u"0x2000"_s, u"0x5fff"_s}));
    QVERIFY(!form.goTo(ProjectLocation::ofObject(0, 0x6000)));
    QVERIFY(form.goTo(ProjectLocation::ofObject(0, 0x5FFF)));
}

QTEST_MAIN(tst_ObjectForms)

#include "tst_objectforms.moc"
