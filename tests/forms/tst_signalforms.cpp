#include "forms/RecordsDesk.h"
#include "forms/j1939/J1939SignalForm.h"
#include "forms/rawcan/CANSignalForm.h"
#include "forms/uds/UDSServicesForm.h"

using namespace Qt::StringLiterals;
using namespace RecordsDesk;

namespace {

constexpr quint32 extendedFlag = 0x80000000;

} // namespace

/** The pages that list the parameter groups, messages and services of a line. */
class tst_SignalForms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void parameterGroupsAreListedByDirection();
    void theSignalsOfAGroupAreListedInTheirOrder();
    void rawMessagesTellExtendedFrames();
    void goToASignalSelectsItsMessage();
    void activeServicesAreListed();
    void servicesAreReadEachTimeThePageIsShown();
};

void tst_SignalForms::parameterGroupsAreListedByDirection()
{
    const auto store = FormTest::makeStore();
    const auto add = [&store](quint32 number, quint8 direction, const QString &name) {
        ObjectDataBase::PGN group;
        group.name = name;
        group.direction = direction;
        group.cycletime_ms = 100;
        return store->addPGN(0, number, group);
    };
    QVERIFY(add(65226, ObjectDataBase::Receive, u"DM1"_s));
    QVERIFY(add(65265, ObjectDataBase::Transmit, u"CCVS1"_s));
    QVERIFY(add(60928, ObjectDataBase::Transmit, u"Address Claimed"_s)); // the stack's own
    J1939SignalForm form;
    form.setDataBase(store);
    form.show();
    QCOMPARE(recordsOf(form).rowCount(), 2);
    QCOMPARE(FormTest::rowTexts(recordsOf(form), 0),
             (QStringList{u"65265"_s, u"0xfef1"_s, u"CCVS1"_s, u"Transmit"_s, u"0"_s, u"100"_s}));
    QCOMPARE(recordsOf(form).index(1, 3).data().toString(), u"Receive"_s);
    QVERIFY(store->removePGN(0, 65226, ObjectDataBase::Receive));
    QTRY_COMPARE(recordsOf(form).rowCount(), 1);
}

void tst_SignalForms::theSignalsOfAGroupAreListedInTheirOrder()
{
    const auto store = FormTest::makeStore();
    ObjectDataBase::PGN group;
    group.name = u"CCVS1"_s;
    group.direction = ObjectDataBase::Transmit;
    QVERIFY(store->addPGN(0, 65265, group));
    const auto add = [&store](quint32 number, int position, int type, int bits) {
        ObjectDataBase::SPN signal;
        signal.name = u"Signal %1"_s.arg(number);
        signal.pos = position;
        signal.bitposition = position * 8;
        signal.datatype = type;
        signal.bitsize = bits;
        signal.varname = u"var%1"_s.arg(number);
        return store->addSPN(0, 65265, ObjectDataBase::Transmit, number, signal);
    };
    QVERIFY(add(84, 2, 6, 0));
    QVERIFY(add(69, 1, 120, 40));
    J1939SignalForm form;
    form.setDataBase(store);
    form.show();
    QCOMPARE(partsOf(form).rowCount(), 2);
    const QStringList text = FormTest::rowTexts(partsOf(form), 0);
    QCOMPARE(text.first(2), (QStringList{u"69"_s, u"Signal 69"_s}));
    QCOMPARE(text.mid(3), (QStringList{u"var69"_s, u"8"_s, u"40"_s}));
    QCOMPARE(FormTest::rowTexts(partsOf(form), 1),
             (QStringList{u"84"_s, u"Signal 84"_s, u"UNSIGNED16"_s, u"var84"_s, u"16"_s, u"16"_s}));
    QVERIFY(form.goTo(ProjectLocation::ofSpn(0, 65265, ObjectDataBase::Transmit, 84)));
    QCOMPARE(selectedText(form, u"tvParts"_s), u"84"_s);
}

void tst_SignalForms::rawMessagesTellExtendedFrames()
{
    const auto store = FormTest::makeStore();
    const auto add = [&store](quint32 number, quint8 direction) {
        ObjectDataBase::CANID message;
        message.name = u"Message"_s;
        message.direction = direction;
        message.cycletime_ms = 20;
        return store->addCANID(0, number, message);
    };
    QVERIFY(add(0x123, ObjectDataBase::Receive));
    QVERIFY(add(0x18FEF100 | extendedFlag, ObjectDataBase::Transmit));
    CANSignalForm form;
    form.setDataBase(store);
    form.show();
    QCOMPARE(recordsOf(form).rowCount(), 2);
    QCOMPARE(FormTest::rowTexts(recordsOf(form), 0),
             (QStringList{u"419361024"_s, u"0x18fef100"_s, u"ext."_s, u"Message"_s, u"Transmit"_s, u"0"_s,
                          u"20"_s}));
    QCOMPARE(FormTest::rowTexts(recordsOf(form), 1).mid(0, 3),
             (QStringList{u"291"_s, u"0x123"_s, QString()}));
}

void tst_SignalForms::goToASignalSelectsItsMessage()
{
    const auto store = FormTest::makeStore();
    for (const quint32 number : {0x100U, 0x200U}) {
        ObjectDataBase::CANID message;
        message.direction = ObjectDataBase::Receive;
        QVERIFY(store->addCANID(0, number, message));
        for (const quint32 element : {1U, 2U}) {
            ObjectDataBase::DataElement signal;
            signal.name = u"Element"_s;
            signal.datatype = 5;
            signal.pos = int(element);
            QVERIFY(store->addDataElement(0, number, ObjectDataBase::Receive, element, signal));
        }
    }
    CANSignalForm form;
    form.setDataBase(store);
    form.show();
    QVERIFY(form.goTo(ProjectLocation::ofDataElement(0, 0x200, ObjectDataBase::Receive, 2)));
    QCOMPARE(selectedText(form, u"tvRecords"_s), u"512"_s);
    QCOMPARE(selectedText(form, u"tvParts"_s), u"2"_s);
    QVERIFY(!form.goTo(ProjectLocation::ofDataElement(0, 0x200, ObjectDataBase::Transmit, 2)));
}

void tst_SignalForms::activeServicesAreListed()
{
    const auto store = FormTest::makeStore();
    UDSServicesForm form;
    form.setDataBase(store);
    form.show();
    QVERIFY(recordsOf(form).rowCount() > 1);
    QCOMPARE(
        FormTest::rowTexts(recordsOf(form), 0).mid(0, 2),
        (QStringList{u"0x10/16"_s, UDSSIDDefinitions::getSIDNames().value(UDS::DiagnosticSessionControl)}));
    QCOMPARE(recordsOf(form).index(0, 2).data().toString(), u"1,2,3,4"_s);
    QVERIFY(!form.findChild<QTableView *>(u"tvParts"_s)->isVisible());
}

void tst_SignalForms::servicesAreReadEachTimeThePageIsShown()
{
    const auto store = FormTest::makeStore();
    UDSServicesForm form;
    form.setDataBase(store);
    form.show();
    const int before = recordsOf(form).rowCount();
    form.hide();
    QVERIFY(store->setUDSServiceActive(0, UDS::ECUReset, false));
    form.show();
    QCOMPARE(recordsOf(form).rowCount(), before - 1);
}

QTEST_MAIN(tst_SignalForms)

#include "tst_signalforms.moc"
