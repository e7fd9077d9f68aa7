#include "forms/CANopenStackSettingsFormV4.h"
#include "forms/DeviceDescriptionForm.h"
#include "forms/FormTest.h"
#include "forms/GeneralSettingsForm3.h"
#include "forms/TargetSettingsForm.h"
#include "forms/energybus/EBNodeGuide.h"
#include "forms/j1939/J1939SettingsForm.h"
#include "forms/uds/UDSIndicationForm.h"

#include <QAbstractItemModelTester>
#include <QLabel>
#include <QTableView>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

using Setter = bool (ObjectDataBase::*)(const QString &, const QString &);

template <typename Form>
std::unique_ptr<BaseMainForm> make()
{
    return std::make_unique<Form>();
}

using Maker = std::unique_ptr<BaseMainForm> (*)();

QTableView &viewOf(const QWidget &form)
{
    return *form.findChild<QTableView *>(u"tvSettings"_s);
}

/** The value that the page shows beside a label; null when it has no such label. */
QString valueOf(const QWidget &form, const QString &label)
{
    const QAbstractItemModel &model = *viewOf(form).model();
    for (int row = 0; row < model.rowCount(); ++row)
        if (model.index(row, 0).data().toString() == label)
            return model.index(row, 1).data().toString();
    return {};
}

} // namespace

Q_DECLARE_METATYPE(Setter)
Q_DECLARE_METATYPE(Maker)

/** The pages that show settings of the project. */
class tst_SettingsForms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aStoredValueIsShownAsTheUserReadsIt_data();
    void aStoredValueIsShownAsTheUserReadsIt();
    void aChangeIsShown_data() { aStoredValueIsShownAsTheUserReadsIt_data(); }
    void aChangeIsShown();
    void everyPageHasGroupsAndSaysWhatItCannotDo_data();
    void everyPageHasGroupsAndSaysWhatItCannotDo();
    void noKeyStandsOnAPageTwice_data() { everyPageHasGroupsAndSaysWhatItCannotDo_data(); }
    void noKeyStandsOnAPageTwice();
    void withoutProjectThePageIsEmpty();
    void aPerLineValueIsThatOfTheShownLine();
    void descriptionsOfLinesDoNotMixAndTheChosenLineStays();
    void aPageGoesToItsSettingsOnly();
    void severalTargetsHaveSettingsOfTheirOwn();
    void aNonsensicalNumberOfTargetsIsBounded();
    void virtualDevicesAreListed();
    void aTextOfSeveralLinesIsShownInOne();
};

void tst_SettingsForms::aStoredValueIsShownAsTheUserReadsIt_data()
{
    QTest::addColumn<Maker>("maker");
    QTest::addColumn<Setter>("setter");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("shown");
    const Setter general = &ObjectDataBase::setGeneralSetting;
    const Setter description = &ObjectDataBase::setDescriptionSetting;
    const Setter j1939 = &ObjectDataBase::setJ1939Setting;
    const Setter energyBus = &ObjectDataBase::setEnergyBusSetting;
    QTest::newRow("text") << Maker(make<GeneralSettingsForm3>) << general << u"user_tx_cob"_s << u"7"_s
                          << u"Additional user transmit messages"_s << u"7"_s;
    QTest::newRow("tick set") << Maker(make<GeneralSettingsForm3>) << general << u"canfd_supported"_s
                              << u"1"_s << u"CAN FD supported"_s << u"yes"_s;
    QTest::newRow("tick not set") << Maker(make<GeneralSettingsForm3>) << general << u"isotp_supported"_s
                                  << u"0"_s << u"Enable ISO-TP"_s << u"no"_s;
    QTest::newRow("tick never set") << Maker(make<GeneralSettingsForm3>) << general << u"gen_csharp_props"_s
                                    << QString() << u"Generate MSBuild property files for the C# wrapper"_s
                                    << u"no"_s;
    QTest::newRow("tick of a strange value")
        << Maker(make<GeneralSettingsForm3>) << general << u"canfd_supported"_s << u"maybe"_s
        << u"CAN FD supported"_s << u"maybe"_s;
    QTest::newRow("choice") << Maker(make<CANopenStackSettingsFormV4>) << general << u"nmtmaster"_s << u"2"_s
                            << u"CANopen NMT functionality"_s << u"NMT master and slave"_s;
    QTest::newRow("choice out of range")
        << Maker(make<CANopenStackSettingsFormV4>) << general << u"nmtmaster"_s << u"9"_s
        << u"CANopen NMT functionality"_s << u"9"_s;
    QTest::newRow("description") << Maker(make<DeviceDescriptionForm>) << description << u"ProductName"_s
                                 << u"Pump"_s << u"Product name"_s << u"Pump"_s;
    QTest::newRow("bit rate") << Maker(make<DeviceDescriptionForm>) << description << u"BaudRate_800"_s
                              << u"1"_s << u"800 kbit/s"_s << u"yes"_s;
    QTest::newRow("j1939") << Maker(make<J1939SettingsForm>) << j1939 << u"startaddress"_s << u"84"_s
                           << u"Address (start address)"_s << u"84"_s;
    QTest::newRow("target") << Maker(make<TargetSettingsForm>) << general << u"endian"_s << u"1"_s
                            << u"Endianess (Byte-Order)"_s << u"Big Endian"_s;
    QTest::newRow("uds") << Maker(make<UDSIndicationForm>) << general << u"uds_fct_routine_ctrl"_s
                         << u"onRoutine"_s << u"Routine Control (31h)"_s << u"onRoutine"_s;
    QTest::newRow("energybus") << Maker(make<EBNodeGuide>) << energyBus << u"user_changeable"_s << u"1"_s
                               << u"Device changeable by end-user"_s << u"yes"_s;
}

void tst_SettingsForms::aStoredValueIsShownAsTheUserReadsIt()
{
    QFETCH(Maker, maker);
    QFETCH(Setter, setter);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QString, label);
    const auto store = FormTest::makeStore();
    if (!value.isEmpty())
        QVERIFY((*store.*setter)(key, value));
    const std::unique_ptr<BaseMainForm> form = maker();
    const QAbstractItemModelTester tester(viewOf(*form).model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    form->setDataBase(store);
    form->show();
    QTEST(valueOf(*form, label), "shown");
}

void tst_SettingsForms::aChangeIsShown()
{
    QFETCH(Maker, maker);
    QFETCH(Setter, setter);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QString, label);
    QFETCH(QString, shown);
    const auto store = FormTest::makeStore();
    const std::unique_ptr<BaseMainForm> form = maker();
    form->setDataBase(store);
    form->show();
    QVERIFY((*store.*setter)(key, value));
    QTRY_COMPARE(valueOf(*form, label), shown);
}

void tst_SettingsForms::everyPageHasGroupsAndSaysWhatItCannotDo_data()
{
    QTest::addColumn<Maker>("maker");
    QTest::newRow("general") << Maker(make<GeneralSettingsForm3>);
    QTest::newRow("stack") << Maker(make<CANopenStackSettingsFormV4>);
    QTest::newRow("description") << Maker(make<DeviceDescriptionForm>);
    QTest::newRow("target") << Maker(make<TargetSettingsForm>);
    QTest::newRow("j1939") << Maker(make<J1939SettingsForm>);
    QTest::newRow("uds") << Maker(make<UDSIndicationForm>);
    QTest::newRow("energybus") << Maker(make<EBNodeGuide>);
}

void tst_SettingsForms::everyPageHasGroupsAndSaysWhatItCannotDo()
{
    QFETCH(Maker, maker);
    const std::unique_ptr<BaseMainForm> form = maker();
    form->setDataBase(FormTest::makeStore());
    form->show();
    const QTableView &view = viewOf(*form);
    QCOMPARE(view.columnSpan(0, 0), 2); // the first row is the title of a group
    QVERIFY(!view.model()->flags(view.model()->index(0, 0)).testFlag(Qt::ItemIsSelectable));
    QCOMPARE(view.columnSpan(1, 0), 1);
    QCOMPARE(view.editTriggers(), QAbstractItemView::NoEditTriggers);
    QCOMPARE(form->findChild<QLabel *>(u"lblNote"_s)->text(),
             u"These settings cannot be edited in this version."_s);
}

void tst_SettingsForms::noKeyStandsOnAPageTwice()
{
    QFETCH(Maker, maker);
    const std::unique_ptr<BaseMainForm> form = maker();
    form->setDataBase(FormTest::makeStore());
    form->show();
    const auto *model = qobject_cast<const RowsModel *>(viewOf(*form).model());
    QVERIFY(model);
    QSet<QString> keys;
    for (const RowsModel::Row &row : model->rows()) {
        if (row.isHeading)
            continue;
        QVERIFY2(!keys.contains(row.place.setting), qPrintable(row.place.setting));
        keys.insert(row.place.setting);
    }
    QVERIFY(!keys.isEmpty());
}

void tst_SettingsForms::withoutProjectThePageIsEmpty()
{
    GeneralSettingsForm3 form;
    form.setDataBase(FormTest::makeStore());
    form.show();
    QVERIFY(viewOf(form).model()->rowCount() > 0);
    form.setDataBase({});
    QCOMPARE(viewOf(form).model()->rowCount(), 0);
}

void tst_SettingsForms::aPerLineValueIsThatOfTheShownLine()
{
    const auto store = FormTest::makeStore();
    QVERIFY(store->setGeneralSetting(u"co_node_id"_s, u"3,7"_s));
    CANopenStackSettingsFormV4 form;
    form.setDataBase(store);
    form.show();
    QCOMPARE(valueOf(form, u"CANopen Default Node-ID"_s), u"3"_s);
    form.showLine(1, false);
    QCOMPARE(valueOf(form, u"CANopen Default Node-ID"_s), u"7"_s);
    form.showLine(5, false); // a shorter list gives its last element
    QCOMPARE(valueOf(form, u"CANopen Default Node-ID"_s), u"7"_s);
}

void tst_SettingsForms::descriptionsOfLinesDoNotMixAndTheChosenLineStays()
{
    const auto store = FormTest::makeStore();
    QVERIFY(store->addNode(1, ObjectDataBase::NODE_DATA_T()));
    for (const quint8 line : {0, 1}) {
        store->setDescriptionLine(line);
        QVERIFY(store->setDescriptionSetting(u"ProductName"_s, u"Of line %1"_s.arg(line)));
    }
    QCOMPARE(store->descriptionLine(), 1);
    DeviceDescriptionForm form;
    form.setDataBase(store);
    form.show();
    QCOMPARE(valueOf(form, u"Product name"_s), u"Of line 0"_s);
    QCOMPARE(store->descriptionLine(), 1);
    form.showLine(1, false);
    QCOMPARE(valueOf(form, u"Product name"_s), u"Of line 1"_s);
}

void tst_SettingsForms::aPageGoesToItsSettingsOnly()
{
    GeneralSettingsForm3 form;
    form.setDataBase(FormTest::makeStore());
    QVERIFY(form.goTo(ProjectLocation::ofSetting(u"user_tx_cob"_s)));
    QCOMPARE(viewOf(form).currentIndex().data().toString(), u"Additional user transmit messages"_s);
    QVERIFY(!form.goTo(ProjectLocation::ofSetting(u"no_such_key"_s)));
    QVERIFY(!form.goTo(ProjectLocation::ofSetting({})));
    QVERIFY(!form.goTo(ProjectLocation::ofObject(0, 0x1000)));
}

void tst_SettingsForms::severalTargetsHaveSettingsOfTheirOwn()
{
    const auto store = FormTest::makeStore();
    QVERIFY(store->setGeneralSetting(u"targetsettings_cnt"_s, u"2"_s));
    QVERIFY(store->setGeneralSetting(u"targetsettings_active"_s, u"1"_s));
    QVERIFY(store->setGeneralSetting(u"targetsettings_0_timer"_s, u"1000"_s));
    QVERIFY(store->setGeneralSetting(u"targetsettings_1_name"_s, u"Board B"_s));
    QVERIFY(store->setGeneralSetting(u"targetsettings_1_timer"_s, u"2000"_s));
    TargetSettingsForm form;
    form.setDataBase(store);
    form.show();
    const QStringList labels = FormTest::columnTexts(*viewOf(form).model(), 0);
    QVERIFY(labels.contains(u"Target 0"_s));
    QVERIFY(labels.contains(u"Target 1: Board B - active"_s));
    const QStringList values = FormTest::columnTexts(*viewOf(form).model(), 1);
    QVERIFY(values.contains(u"1000"_s));
    QVERIFY(values.contains(u"2000"_s));
}

void tst_SettingsForms::aNonsensicalNumberOfTargetsIsBounded()
{
    const auto store = FormTest::makeStore();
    QVERIFY(store->setGeneralSetting(u"targetsettings_cnt"_s, u"2000000000"_s));
    TargetSettingsForm form;
    form.setDataBase(store);
    form.show();
    QVERIFY(viewOf(form).model()->rowCount() < 1000);
}

void tst_SettingsForms::virtualDevicesAreListed()
{
    const auto store = FormTest::makeStore();
    EBNodeGuide form;
    form.setDataBase(store);
    form.show();
    QCOMPARE(valueOf(form, u"none"_s), QString(u""_s));
    QVERIFY(store->setEnergyBusSetting(u"device_cnt"_s, u"1"_s));
    QVERIFY(store->setEnergyBusSetting(u"device_1"_s, u"Battery 1"_s));
    QTRY_COMPARE(valueOf(form, u"Virtual device 1"_s), u"Battery 1"_s);
    QVERIFY(valueOf(form, u"none"_s).isNull());
}

void tst_SettingsForms::aTextOfSeveralLinesIsShownInOne()
{
    const auto store = FormTest::makeStore();
    QVERIFY(store->setGeneralSetting(u"user_defines"_s, u"#define A\n#define B"_s));
    GeneralSettingsForm3 form;
    form.setDataBase(store);
    form.show();
    QCOMPARE(valueOf(form, u"Additional application-specific defines:"_s), u"#define A #define B"_s);
}

QTEST_MAIN(tst_SettingsForms)

#include "tst_settingsforms.moc"
