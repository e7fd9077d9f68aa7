#include "store/StoreTest.h"
#include "templates/TemplateFile.h"
#include "templates/TemplateKeys.h"

using namespace Qt::StringLiterals;
using namespace TemplateFile;

namespace {

void addNewProjects()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("lineType");
    QTest::newRow("mt") << u"mt"_s << u"1"_s;
    QTest::newRow("mtj1939") << u"mtj1939"_s << u"2"_s;
}

} // namespace

class TemplateProjectsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }

    void newProjectsHaveAllGeneralSettings_data();
    void newProjectsHaveAllGeneralSettings();
    void newProjectsDescribeADevice_data();
    void newProjectsDescribeADevice();
    void theEmptyProjectHasTheMandatoryObjects();
    void theEmptyProjectHasTheValuesOfEachEntry_data();
    void theEmptyProjectHasTheValuesOfEachEntry();
    void theJ1939ProjectHasAllSettings();
    void theJ1939ProjectClaimsTheAddressOfItsSettings();
    void theJ1939ProjectHasOneMessageOfItsOwn();
};

void TemplateProjectsTest::newProjectsHaveAllGeneralSettings_data()
{
    addNewProjects();
}

void TemplateProjectsTest::newProjectsHaveAllGeneralSettings()
{
    QFETCH(QString, name);
    QFETCH(QString, lineType);
    QMap<QString, QString> expected = {
        {u"enable_dynamic"_s, u"1"_s},      {u"targetsettings_cnt"_s, u"1"_s},
        {u"line0type"_s, lineType},         {u"new_init_structure"_s, u"1"_s},
        {u"udsserver_version"_s, u"4"_s},   {u"receivebuffersize"_s, u"10"_s},
        {u"transmitbuffersize"_s, u"10"_s},
    };
    for (const char *key : TemplateKeys::switchedOff)
        expected.insert(QString::fromLatin1(key), u"0"_s);
    for (const char *key : TemplateKeys::unset)
        expected.insert(QString::fromLatin1(key), QString(u""_s));
    QCOMPARE(expected.size(), 167);

    Template store(name);
    const QStringList keys = store.getGeneralSettingKeys();
    QCOMPARE(keys.size(), 167);
    QMap<QString, QString> settings;
    for (const QString &key : keys)
        settings.insert(key, store.getGeneralSetting(key));
    QCOMPARE(settings, expected);
}

void TemplateProjectsTest::newProjectsDescribeADevice_data()
{
    addNewProjects();
}

void TemplateProjectsTest::newProjectsDescribeADevice()
{
    QFETCH(QString, name);
    QMap<QString, QString> expected = {
        {u"VendorName"_s, u"Korvel embedded communication GmbH"_s},
        {u"ProductName"_s, u"CANopen Device"_s},
        {u"OrderCode"_s, u"1004"_s},
        {u"FileVersion"_s, u"1"_s},
        {u"FileRevision"_s, u"1"_s},
        {u"BaudRate_125"_s, u"1"_s},
        {u"BaudRate_250"_s, u"1"_s},
    };
    for (const int rate : {10, 20, 50, 500, 800, 1000})
        expected.insert(u"BaudRate_%1"_s.arg(rate), u"0"_s);
    for (int dummy = 1; dummy <= 7; ++dummy)
        expected.insert(u"Dummy000%1"_s.arg(dummy), u"0"_s);
    for (const QString &key : {u"LSS_Supported"_s, u"SelfStarting"_s, u"Granularity"_s})
        expected.insert(key, u"0"_s);
    for (const QString &key : {u"CreatedBy"_s, u"ModifiedBy"_s, u"Comment"_s, u"AdditionalSections"_s})
        expected.insert(key, u""_s);

    Template store(name);
    QMap<QString, QString> settings;
    const QStringList keys = store.getDescriptionSettingKeys();
    for (const QString &key : keys)
        settings.insert(key, store.getDescriptionSetting(key));
    QCOMPARE(settings, expected);
}

void TemplateProjectsTest::theEmptyProjectHasTheMandatoryObjects()
{
    Template store(u"mt"_s);
    QCOMPARE(store.getIndexList(0), (QList<quint16>{0x1000, 0x1001, 0x1017, 0x1018, 0x1200}));
    QMap<QString, int> codes;
    for (const quint16 index : {0x1000, 0x1001, 0x1017, 0x1018, 0x1200}) {
        ObjectDataBase::INDEX_DATA_T object;
        QVERIFY(store.getIndex(0, index, object));
        QCOMPARE(object.category, 1);
        codes.insert(object.name, object.objecttype);
    }
    QCOMPARE(codes,
             (QMap<QString, int>{{u"Device type"_s, 7},
                                 {u"Error register"_s, 7},
                                 {u"Producer heartbeat time"_s, 7},
                                 {u"Identity object"_s, 9},
                                 {u"SDO server parameter"_s, 9}}));
    QCOMPARE(store.getJ1939SettingKeys(), QStringList());
    QCOMPARE(store.getPGNList(0, ObjectDataBase::BothDirections), QList<quint32>());
}

void TemplateProjectsTest::theEmptyProjectHasTheValuesOfEachEntry_data()
{
    addValueColumns();
    addValue(0x1000, 0, 7, "ro", "0x00000000", "0..4294967295", 0, 1);
    addValue(0x1001, 0, 5, "ro", "0x00", "0..255", 4, 0);
    addValue(0x1017, 0, 6, "rw", "0", "0..65535", 0, 0);
    addValue(0x1018, 0, 5, "const", "4", "1..4", 0, 1);
    addValue(0x1018, 1, 7, "ro", "0x000002B7", "0..4294967295", 0, 1);
    addValue(0x1018, 2, 7, "ro", "0x00000000", "0..4294967295", 0, 1);
    addValue(0x1018, 3, 7, "ro", "0x00000000", "0..4294967295", 0, 1);
    addValue(0x1018, 4, 7, "ro", "0x00000000", "0..4294967295", 0, 0);
    addValue(0x1200, 0, 5, "const", "2", "2..2", 0, 1);
    addValue(0x1200, 1, 7, "ro", "$NODEID+0x600", "0..4294967295", 0, 0);
    addValue(0x1200, 2, 7, "ro", "$NODEID+0x580", "0..4294967295", 0, 0);
}

void TemplateProjectsTest::theEmptyProjectHasTheValuesOfEachEntry()
{
    compareValue(u"mt"_s);
}

void TemplateProjectsTest::theJ1939ProjectHasAllSettings()
{
    QMap<QString, QString> expected = {
        {u"identitynumber"_s, u"0x123456"_s}, {u"manufacturercode"_s, u"1207"_s},
        {u"ecuinstance"_s, u"3"_s},           {u"functioninstance"_s, u"14"_s},
        {u"function"_s, u"0xff"_s},           {u"vehiclesystem"_s, u"0x55"_s},
        {u"vehicleinstance"_s, u"1"_s},       {u"industrygroup"_s, u"2"_s},
        {u"startaddress"_s, u"84"_s},         {u"cmdtpackets"_s, u"3"_s},
        {u"txindication_cnt"_s, u"1"_s},      {u"rxindication_cnt"_s, u"1"_s},
        {u"canindication_cnt"_s, u"1"_s},     {u"dm_receivesize"_s, u"200"_s},
        {u"dm_transmitsize"_s, u"200"_s},     {u"dmtool_receivesize"_s, u"200"_s},
        {u"dmtool_transmitsize"_s, u"200"_s}, {u"bamcycletime"_s, u"50"_s},
        {u"sdm_loop_counter"_s, u""_s},       {u"sdm_timer_interval"_s, u""_s},
        {u"j1939fd_multipgbuffer"_s, u"3"_s},
    };
    for (const char *key : TemplateKeys::j1939SwitchedOff)
        expected.insert(QString::fromLatin1(key), u"0"_s);
    for (int message = 1; message <= 32; ++message) {
        if (message != 9)
            expected.insert(u"diagsupport_dm%1"_s.arg(message), u"0"_s);
    }
    QCOMPARE(expected.size(), 75);

    Template store(u"mtj1939"_s);
    QMap<QString, QString> settings;
    const QStringList keys = store.getJ1939SettingKeys();
    QCOMPARE(keys.size(), 75);
    for (const QString &key : keys)
        settings.insert(key, store.getJ1939Setting(key));
    QCOMPARE(settings, expected);
}

void TemplateProjectsTest::theJ1939ProjectClaimsTheAddressOfItsSettings()
{
    struct NamePart
    {
        quint32 spn;
        int datatype;
        int position;
        int bits;
        QString setting;
    };
    const QList<NamePart> parts = {
        {2837, 119, 0, 21, u"identitynumber"_s},  {2838, 108, 21, 11, u"manufacturercode"_s},
        {2840, 101, 32, 3, u"ecuinstance"_s},     {2839, 103, 35, 5, u"functioninstance"_s},
        {2841, 5, 40, 8, u"function"_s},          {2842, 105, 49, 7, u"vehiclesystem"_s},
        {2843, 102, 56, 4, u"vehicleinstance"_s}, {2846, 101, 60, 3, u"industrygroup"_s},
        {2844, 1, 63, 1, u"addresscapable"_s},
    };
    constexpr quint32 addressClaimed = 60928;
    Template store(u"mtj1939"_s);
    ObjectDataBase::PGN group;
    QVERIFY(store.getPGN(0, addressClaimed, ObjectDataBase::Transmit, group));
    QCOMPARE(group.name, u"Address Claiming"_s);
    QCOMPARE(group.priority, 6);
    QCOMPARE(group.cycletime_ms, 0);
    QCOMPARE(group.inhibittime_ms, 250);
    QCOMPARE(group.mappingcount, 9);
    QCOMPARE(store.getSPNList(0, addressClaimed, ObjectDataBase::Transmit).size(), 9);
    int order = 0;
    for (const NamePart &part : parts) {
        ObjectDataBase::SPN spn;
        QVERIFY(store.getSPN(0, addressClaimed, ObjectDataBase::Transmit, part.spn, spn));
        QCOMPARE(spn.datatype, part.datatype);
        QCOMPARE(spn.bitposition, part.position);
        QCOMPARE(spn.bitsize, part.bits);
        QCOMPARE(spn.implementation, 0);
        QCOMPARE(spn.pos, order++);
        QCOMPARE(spn.defaultvalue, store.getJ1939Setting(part.setting));
    }
}

void TemplateProjectsTest::theJ1939ProjectHasOneMessageOfItsOwn()
{
    constexpr quint32 proprietaryB = 65280;
    Template store(u"mtj1939"_s);
    QCOMPARE(store.getPGNList(0, ObjectDataBase::Transmit), (QList<quint32>{60928, proprietaryB}));
    QCOMPARE(store.getPGNList(0, ObjectDataBase::Receive), QList<quint32>());
    QCOMPARE(store.getSPNList(0, proprietaryB, ObjectDataBase::Transmit), QList<quint32>{520192});
    ObjectDataBase::SPN spn;
    QVERIFY(store.getSPN(0, proprietaryB, ObjectDataBase::Transmit, 520192, spn));
    QCOMPARE(spn.datatype, 5);
    QCOMPARE(spn.bitsize, 8);
    QCOMPARE(spn.implementation, 0);
    QCOMPARE(store.getIndexList(0), QList<quint16>());
}

QTEST_GUILESS_MAIN(TemplateProjectsTest)
#include "tst_templateprojects.moc"
