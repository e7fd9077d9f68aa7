#include "forms/BaseMainForm.h"
#include "forms/FormTest.h"

using namespace Qt::StringLiterals;

namespace {

/** Counts how often it reads, and may do something while it does. */
class CountingForm : public BaseMainForm
{
public:
    int reads = 0;
    bool concerned = true;
    std::function<void()> whileReading;

    void readNow() { refreshNow(); }
    bool knowsExpert() const { return isExpertMode(); }

protected:
    void refresh() override
    {
        ++reads;
        if (whileReading)
            whileReading();
    }
    bool isConcernedBy(const ObjectDataBase::ChangeSet &) const override { return concerned; }
};

constexpr int longerThanDelay = 150;

} // namespace

/** When the pages of the main window read the project. */
class tst_BaseMainForm : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aShownPageReadsTheStoreItIsGiven();
    void aHiddenPageReadsWhenItIsShown();
    void aPageThatIsShownAgainReadsOnlyWhatHasChanged();
    void aBurstOfChangesIsReadOnce();
    void aChangeThatDoesNotConcernThePageIsNotRead();
    void aChangeOfTheWholeProjectIsAlwaysRead();
    void theSameLineIsReadAgainOnlyByForce();
    void aFormerStoreIsNoLongerHeard();
    void withoutStoreThePageIsReadToBecomeEmpty();
    void aLockedStoreIsReadWhenItIsReleased();
    void aReadThatCausesAChangeDoesNotRunInsideItself();
    void theStoreOutlivesItsReading();
    void expertModeIsKept();
};

void tst_BaseMainForm::aShownPageReadsTheStoreItIsGiven()
{
    CountingForm form;
    form.show();
    const int before = form.reads;
    form.setDataBase(FormTest::makeStore());
    QCOMPARE(form.reads, before + 1);
}

void tst_BaseMainForm::aHiddenPageReadsWhenItIsShown()
{
    CountingForm form;
    const auto store = FormTest::makeStore();
    form.setDataBase(store);
    QVERIFY(store->setGeneralSetting(u"co_node_id"_s, u"3"_s));
    QTest::qWait(longerThanDelay);
    QCOMPARE(form.reads, 0);
    form.show();
    QCOMPARE(form.reads, 1);
}

void tst_BaseMainForm::aPageThatIsShownAgainReadsOnlyWhatHasChanged()
{
    CountingForm form;
    const auto store = FormTest::makeStore();
    form.setDataBase(store);
    form.show();
    form.hide();
    form.show();
    QCOMPARE(form.reads, 1);
    form.hide();
    QVERIFY(store->setGeneralSetting(u"co_node_id"_s, u"3"_s));
    form.show();
    QCOMPARE(form.reads, 2);
}

void tst_BaseMainForm::aBurstOfChangesIsReadOnce()
{
    CountingForm form;
    const auto store = FormTest::makeStore();
    form.setDataBase(store);
    form.show();
    QCOMPARE(form.reads, 1);
    for (int i = 0; i < 200; ++i)
        QVERIFY(store->setGeneralSetting(u"co_node_id"_s, QString::number(i)));
    QCOMPARE(form.reads, 1);
    QTRY_COMPARE(form.reads, 2);
    QTest::qWait(longerThanDelay);
    QCOMPARE(form.reads, 2);
}

void tst_BaseMainForm::aChangeThatDoesNotConcernThePageIsNotRead()
{
    CountingForm form;
    form.concerned = false;
    const auto store = FormTest::makeStore();
    form.setDataBase(store);
    form.show();
    QVERIFY(store->setGeneralSetting(u"co_node_id"_s, u"3"_s));
    QTest::qWait(longerThanDelay);
    QCOMPARE(form.reads, 1);
}

void tst_BaseMainForm::aChangeOfTheWholeProjectIsAlwaysRead()
{
    CountingForm form;
    form.concerned = false;
    form.setDataBase(FormTest::makeStore());
    form.show();
    ObjectDataBase::ChangeSet wholeProject;
    wholeProject.type = ObjectDataBase::ProjectChanged;
    form.updateData(wholeProject);
    QTRY_COMPARE(form.reads, 2);
}

void tst_BaseMainForm::theSameLineIsReadAgainOnlyByForce()
{
    CountingForm form;
    form.setDataBase(FormTest::makeStore());
    form.show();
    form.showLine(0, false);
    QCOMPARE(form.reads, 1);
    form.showLine(0, true);
    QCOMPARE(form.reads, 2);
    form.showLine(4, false);
    QCOMPARE(form.reads, 3);
    QCOMPARE(form.line(), 4);
}

void tst_BaseMainForm::aFormerStoreIsNoLongerHeard()
{
    CountingForm form;
    const auto former = FormTest::makeStore();
    form.setDataBase(former);
    form.show();
    form.setDataBase(FormTest::makeStore());
    QCOMPARE(form.reads, 2);
    QVERIFY(former->setGeneralSetting(u"co_node_id"_s, u"3"_s));
    QTest::qWait(longerThanDelay);
    QCOMPARE(form.reads, 2);
}

void tst_BaseMainForm::withoutStoreThePageIsReadToBecomeEmpty()
{
    CountingForm form;
    form.setDataBase(FormTest::makeStore());
    form.show();
    form.setDataBase({});
    QCOMPARE(form.reads, 2);
}

void tst_BaseMainForm::aLockedStoreIsReadWhenItIsReleased()
{
    CountingForm form;
    const auto store = FormTest::makeStore();
    form.setDataBase(store);
    form.show();
    store->setWriteLock(true);
    form.showLine(1, false);
    QTest::qWait(longerThanDelay);
    QCOMPARE(form.reads, 1);
    store->setWriteLock(false);
    QTRY_COMPARE(form.reads, 2);
}

void tst_BaseMainForm::aReadThatCausesAChangeDoesNotRunInsideItself()
{
    CountingForm form;
    const auto store = FormTest::makeStore();
    form.setDataBase(store);
    int depth = 0;
    int deepest = 0;
    form.whileReading = [&] {
        deepest = qMax(deepest, ++depth);
        if (form.reads == 1) {
            store->setGeneralSetting(u"co_node_id"_s, u"3"_s);
            form.readNow();
        }
        --depth;
    };
    form.show();
    QCOMPARE(deepest, 1);
    QTRY_COMPARE(form.reads, 2);
}

void tst_BaseMainForm::theStoreOutlivesItsReading()
{
    CountingForm form;
    auto store = FormTest::makeStore();
    const QPointer<ObjectDataBase> watched = store.get();
    form.setDataBase(store);
    store.reset();
    bool alive = false;
    form.whileReading = [&] {
        if (form.reads > 1)
            return;
        form.setDataBase({});
        alive = !watched.isNull();
    };
    form.show();
    QVERIFY(alive);
    QVERIFY(watched.isNull());
}

void tst_BaseMainForm::expertModeIsKept()
{
    CountingForm form;
    QVERIFY(form.knowsExpert());
    form.expertModeChanged(false);
    QVERIFY(!form.knowsExpert());
}

QTEST_MAIN(tst_BaseMainForm)

#include "tst_basemainform.moc"
