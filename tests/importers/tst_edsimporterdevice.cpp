#include "importers/DescriptionImport.h"
#include "importers/EDSImporter.h"

using namespace Qt::StringLiterals;
using Import = DescriptionImport<EDSImporter>;

namespace {

const char variable[] = "[1000]\nParameterName=Device type\nDataType=7\nAccessType=ro\n";

QByteArray record(const char *index)
{
    return QByteArray("[") + index + "]\nParameterName=PDO\nObjectType=9\nSubNumber=1\n[" + index
        + "sub0]\nParameterName=Highest\nDataType=5\nAccessType=ro\nDefaultValue=0\n";
}

} // namespace

/** Device descriptions: the PDOs that are only counted, and what describes the device as a whole. */
class TestEdsImporterDevice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { ImporterTest::prepareApplication(); }
    void aFileThatCountsTwoReceivePdosGetsThem();
    void aFileThatCountsATransmitPdoGetsIt();
    void pdosOfTheFileCount_data();
    void pdosOfTheFileCount();
    void theNumberOfTheProjectCountsWhereTheFileHasNone();
    void aNumberOfPdosIsBounded_data();
    void aNumberOfPdosIsBounded();
    void completedPdosAreToldOnce();
    void deviceInformationGoesToTheDescriptionSettings_data();
    void deviceInformationGoesToTheDescriptionSettings();
    void deviceInformationIsNotTakenWithoutTheOption();
    void theFourthDummyTypeIsSpelledWithOneZeroLess();
    void settingsThatTheFileDoesNotChangeAreTold();
    void aMissingKeyLeavesItsSetting();
    void aFlagThatIsNoNumberIsToldAndLeftOut();
    void commentLinesAreJoined_data();
    void commentLinesAreJoined();
    void theSettingsAreThoseOfTheLine();
    void unknownSectionsAreKept();
    void theSectionsOfADcfAreNoAdditions();
    void tooManyAdditionsAreLeftOut();
};

void TestEdsImporterDevice::aFileThatCountsTwoReceivePdosGetsThem()
{
    Import device;
    QVERIFY(device.bytes(QByteArray(variable) + "[DeviceInfo]\nNrOfRXPDO=2\nNrOfTXPDO=0\n"));
    QCOMPARE(device.store->getIndexList(ImporterTest::staging, 0x1000),
             (QList<quint16>{0x1000, 0x1400, 0x1401, 0x1600, 0x1601}));
    QCOMPARE(device.object(0x1400).name, u"Receive PDO parameter 1"_s);
    QCOMPARE(device.object(0x1401).name, u"Receive PDO parameter 2"_s);
    QCOMPARE(device.object(0x1400).objecttype, 9);
    QCOMPARE(device.rows().filter(u"1400"_s), (QStringList{u"1400:00"_s, u"1400:01"_s, u"1400:02"_s}));
    QCOMPARE(device.summary(0x1400, 0), u"Number of Entries | 5 | ro | 2 |  | 0"_s);
    QCOMPARE(device.summary(0x1400, 1), u"COB-ID | 7 | rw | 0x80000000 |  | 0"_s);
    QCOMPARE(device.summary(0x1400, 2), u"Transmission Type | 5 | rw | 0xFF |  | 0"_s);
    QCOMPARE(device.object(0x1601).name, u"Mapping Parameter"_s);
    QCOMPARE(device.object(0x1601).objecttype, 9);
    QCOMPARE(device.rows().filter(u"1601"_s).size(), 9);
    QCOMPARE(device.summary(0x1601, 0), u"Number of Entries | 5 | rw | 0 |  | 0"_s);
    QCOMPARE(device.summary(0x1601, 8), u"Mappping Entry 8 | 7 | rw | 0x00000000 |  | 0"_s);
    QVERIFY(device.sub(0x1601, 8).defaultineds);
}

void TestEdsImporterDevice::aFileThatCountsATransmitPdoGetsIt()
{
    Import device;
    QVERIFY(device.bytes(QByteArray(variable) + "[DeviceInfo]\nNrOfTxPDO=0x1\n"));
    QCOMPARE(device.store->getIndexList(ImporterTest::staging, 0x1001), (QList<quint16>{0x1800, 0x1A00}));
    QCOMPARE(device.object(0x1800).name, u"Transmit PDO parameter 1"_s);
    QCOMPARE(device.rows().filter(u"1800"_s),
             (QStringList{u"1800:00"_s, u"1800:01"_s, u"1800:02"_s, u"1800:03"_s, u"1800:05"_s}));
    QCOMPARE(device.sub(0x1800, 0).defaultvalue, u"5"_s);
    QCOMPARE(device.summary(0x1800, 3), u"Inhibit Time | 6 | rw |  |  | 0"_s);
    QCOMPARE(device.summary(0x1800, 5), u"Event Timer | 6 | rw |  |  | 0"_s);
}

void TestEdsImporterDevice::pdosOfTheFileCount_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<int>("count");
    QTest::addColumn<QList<quint16>>("indices");
    QTest::newRow("all there") << record("1400") + record("1600") << 1 << QList<quint16>{0x1400, 0x1600};
    QTest::newRow("more than counted") << record("1400") + record("1405") + record("1600") + record("1605")
                                       << 1 << QList<quint16>{0x1400, 0x1405, 0x1600, 0x1605};
    QTest::newRow("first missing") << record("1401") + record("1601") << 2
                                   << QList<quint16>{0x1400, 0x1401, 0x1600, 0x1601};
    QTest::newRow("higher numbers") << record("1400") + record("1405") + record("1600") + record("1605") << 3
                                    << QList<quint16>{0x1400, 0x1401, 0x1405, 0x1600, 0x1601, 0x1605};
    QTest::newRow("mapping missing") << record("1400") << 1 << QList<quint16>{0x1400, 0x1600};
    QTest::newRow("mapping there") << record("1600") << 1 << QList<quint16>{0x1400, 0x1600};
    QTest::newRow("none counted") << record("1400") << 0 << QList<quint16>{0x1400};
}

void TestEdsImporterDevice::pdosOfTheFileCount()
{
    QFETCH(QByteArray, file);
    QFETCH(int, count);
    Import device;
    QVERIFY(device.bytes("[DeviceInfo]\nNrOfRXPDO=" + QByteArray::number(count) + '\n' + file));
    QTEST(device.store->getIndexList(ImporterTest::staging, 0x1000), "indices");
}

void TestEdsImporterDevice::theNumberOfTheProjectCountsWhereTheFileHasNone()
{
    Import device;
    QVERIFY(device.store->setDescriptionSetting(u"NrOfRXPDO"_s, u"1"_s));
    QVERIFY(device.store->setDescriptionSetting(u"NrOfTXPDO"_s, u"1"_s));
    QVERIFY(device.bytes(QByteArray(variable) + "[DeviceInfo]\nNrOfTXPDO=0\n"));
    QCOMPARE(device.store->getIndexList(ImporterTest::staging, 0x1001), (QList<quint16>{0x1400, 0x1600}));
}

void TestEdsImporterDevice::aNumberOfPdosIsBounded_data()
{
    QTest::addColumn<QByteArray>("number");
    QTest::addColumn<int>("pdos");
    QTest::newRow("more than CiA 301 allows") << QByteArray("4000000000") << 512;
    QTest::newRow("no number") << QByteArray("many") << 0;
    QTest::newRow("negative") << QByteArray("-1") << 0;
}

void TestEdsImporterDevice::aNumberOfPdosIsBounded()
{
    QFETCH(QByteArray, number);
    Import device;
    QVERIFY(device.bytes(QByteArray(variable) + "[DeviceInfo]\nNrOfRXPDO=" + number + '\n'));
    QTEST(int(device.store->getIndexList(ImporterTest::staging, 0x1400, 0x15FF).size()), "pdos");
}

void TestEdsImporterDevice::completedPdosAreToldOnce()
{
    Import device;
    QVERIFY(device.bytes(QByteArray(variable) + "[DeviceInfo]\nNrOfRXPDO=1\n"));
    QCOMPARE(
        device.findings,
        (QStringList{
            u"0: The object 0x1400 is declared, but not described; it is made as that of an unused PDO."_s,
            u"0: The object 0x1600 is declared, but not described; it is made as that of an unused PDO."_s}));
}

void TestEdsImporterDevice::deviceInformationGoesToTheDescriptionSettings_data()
{
    QTest::addColumn<QByteArray>("section");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("setting");
    const auto add = [](const char *section, const char *key, const char *value, const char *setting) {
        QTest::newRow(key) << QByteArray(section) << QByteArray(value) << QString::fromLatin1(setting);
    };
    add("FileInfo", "FileVersion", "1.0.2", "1.0.2");
    add("FileInfo", "FileRevision", "-", "-");
    add("FileInfo", "CreatedBy", "O'Neill", "O'Neill");
    add("FileInfo", "ModifiedBy", "", "");
    add("DeviceInfo", "VendorName", "\"Korvel\"", "Korvel");
    add("DeviceInfo", "ProductName", "I/O = 16", "I/O = 16");
    add("DeviceInfo", "OrderCode", "3150.69A", "3150.69A");
    add("DeviceInfo", "LSS_Supported", "0x01", "1");
    add("DeviceInfo", "NrOfRXPDO", "0x0", "0");
    add("DeviceInfo", "NrOfTXPDO", "0", "0");
    for (const char *rate : {"10", "20", "50", "125", "250", "500", "800", "1000"})
        QTest::newRow(rate) << QByteArray("DeviceInfo") << QByteArray("1 ; kbit/s") << u"1"_s;
    for (const char *key :
         {"Dummy0001", "Dummy0002", "Dummy0003", "Dummy004", "Dummy0005", "Dummy0006", "Dummy0007"})
        add("DummyUsage", key, "1", "1");
}

void TestEdsImporterDevice::deviceInformationGoesToTheDescriptionSettings()
{
    QFETCH(QByteArray, section);
    QFETCH(QByteArray, value);
    QByteArray key = QTest::currentDataTag();
    if (key.at(0) >= '0' && key.at(0) <= '9')
        key.prepend("BaudRate_");
    Import device;
    device.importer.setImportFileInfo(true);
    QVERIFY(device.store->setDescriptionSetting(QString::fromLatin1(key), u"former"_s));
    QVERIFY(device.bytes(QByteArray(variable) + '[' + section + "]\n" + key + '=' + value + '\n'));
    QTEST(device.setting(key.constData()), "setting");
}

void TestEdsImporterDevice::deviceInformationIsNotTakenWithoutTheOption()
{
    Import device;
    QVERIFY(device.bytes(QByteArray(variable)
                         + "[FileInfo]\nCreatedBy=Someone\n[DeviceInfo]\nVendorName=Vendor\n"
                           "[Comments]\nLines=1\nLine1=Text\n[Tools]\nItems=1\n"));
    for (const char *key : {"CreatedBy", "VendorName", "Comment", "AdditionalSections"})
        QCOMPARE(device.setting(key), QString());
    QCOMPARE(device.findings, QStringList());
}

void TestEdsImporterDevice::theFourthDummyTypeIsSpelledWithOneZeroLess()
{
    Import device;
    device.importer.setImportFileInfo(true);
    QVERIFY(device.store->setDescriptionSetting(u"Dummy0004"_s, u"0"_s));
    QVERIFY(device.bytes(QByteArray(variable) + "[DummyUsage]\nDummy0004=1\nDummy0005=1\n"));
    QCOMPARE(device.setting("Dummy0004"), u"0"_s);
    QCOMPARE(device.setting("Dummy004"), QString());
    QCOMPARE(device.setting("Dummy0005"), u"1"_s);
    QVERIFY(device.bytes(QByteArray(variable) + "[DummyUsage]\nDummy004=1\n"));
    QCOMPARE(device.setting("Dummy004"), u"1"_s);
}

void TestEdsImporterDevice::settingsThatTheFileDoesNotChangeAreTold()
{
    Import device;
    device.importer.setImportFileInfo(true);
    for (const QString &key : {u"Granularity"_s, u"Dummy0004"_s})
        QVERIFY(device.store->setDescriptionSetting(key, u"0"_s));
    const QByteArray file = QByteArray(variable) + "[DeviceInfo]\nGranularity=8\n[DummyUsage]\nDummy0004=1\n";
    QVERIFY(device.bytes(file));
    QCOMPARE(device.setting("Granularity"), u"0"_s);
    QCOMPARE(device.findings,
             (QStringList{u"6: Granularity is \"8\"; the setting of the project, \"0\", is kept."_s,
                          u"8: Dummy0004 is \"1\"; the setting of the project, \"0\", is kept."_s}));
    QVERIFY(device.store->setDescriptionSetting(u"Granularity"_s, u"0x8"_s));
    QVERIFY(device.store->setDescriptionSetting(u"Dummy0004"_s, u"1"_s));
    QVERIFY(device.bytes(file));
    QCOMPARE(device.findings, QStringList());
}

void TestEdsImporterDevice::aMissingKeyLeavesItsSetting()
{
    Import device;
    device.importer.setImportFileInfo(true);
    QVERIFY(device.store->setDescriptionSetting(u"VendorName"_s, u"mine"_s));
    QVERIFY(device.store->setDescriptionSetting(u"Comment"_s, u"mine too"_s));
    QVERIFY(device.bytes(QByteArray(variable) + "[DeviceInfo]\nProductName=Product\n"));
    QCOMPARE(device.setting("VendorName"), u"mine"_s);
    QCOMPARE(device.setting("Comment"), u"mine too"_s);
}

void TestEdsImporterDevice::aFlagThatIsNoNumberIsToldAndLeftOut()
{
    Import device;
    device.importer.setImportFileInfo(true);
    QVERIFY(device.store->setDescriptionSetting(u"LSS_Supported"_s, u"1"_s));
    QVERIFY(device.bytes(QByteArray(variable) + "[DeviceInfo]\nLSS_Supported=No\n"));
    QCOMPARE(device.setting("LSS_Supported"), u"1"_s);
    QCOMPARE(device.findings,
             QStringList{u"6: LSS_Supported is \"No\", which is no number; it is left out."_s});
}

void TestEdsImporterDevice::commentLinesAreJoined_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("comment");
    QTest::addColumn<int>("findings");
    QTest::newRow("two lines") << QByteArray("[Comments]\nLines=2\nLine1=A\nLine2=B") << u"A\nB"_s << 0;
    QTest::newRow("any order and case")
        << QByteArray("[comments]\nline2=B\nLINE1=A\nlines=0x2") << u"A\nB"_s << 0;
    QTest::newRow("fewer than counted")
        << QByteArray("[Comments]\nLines=9\nLine1=A\nline5=E") << u"A\nE"_s << 1;
    QTest::newRow("more than counted") << QByteArray("[Comments]\nLines=1\nLine1=A\nLine2=B") << u"A"_s << 1;
    QTest::newRow("not counted") << QByteArray("[Comments]\nLine1=A") << u"A"_s << 1;
    QTest::newRow("an empty line") << QByteArray("[Comments]\nLines=3\nLine1=A\nLine2=\nLine3=C")
                                   << u"A\n\nC"_s << 0;
    QTest::newRow("none") << QByteArray("[Comments]\nLines=0") << QString() << 0;
    QTest::newRow("billions") << QByteArray("[Comments]\nLines=4000000000\nLine1=A") << u"A"_s << 1;
    QTest::newRow("what this system writes without a comment")
        << QByteArray("[Comments]\nLines=1\nLine1=generated by CANopen NodeSmith") << u"former"_s << 0;
}

void TestEdsImporterDevice::commentLinesAreJoined()
{
    QFETCH(QByteArray, file);
    QFETCH(int, findings);
    Import device;
    device.importer.setImportFileInfo(true);
    QVERIFY(device.store->setDescriptionSetting(u"Comment"_s, u"former"_s));
    QVERIFY(device.bytes("; EDS file for x - generated by CANopen NodeSmith 4.3.2\n" + QByteArray(variable)
                         + file + '\n'));
    QTEST(device.setting("Comment"), "comment");
    QCOMPARE(device.findings.size(), findings);
}

void TestEdsImporterDevice::theSettingsAreThoseOfTheLine()
{
    Import device;
    device.importer.setImportFileInfo(true);
    device.store->setDescriptionLine(0);
    QVERIFY(device.bytes(QByteArray(variable) + "[DeviceInfo]\nVendorName=Vendor\n"));
    QCOMPARE(int(device.store->descriptionLine()), 0);
    QCOMPARE(device.setting("VendorName"), QString());
    device.store->setDescriptionLine(ImporterTest::staging);
    QCOMPARE(device.setting("VendorName"), u"Vendor"_s);
}

void TestEdsImporterDevice::unknownSectionsAreKept()
{
    const QByteArray known =
        "[FileInfo]\nFileName=a\n[MandatoryObjects]\nSupportedObjects=1\n1=0x1000\n"
        "[OptionalObjects]\nSupportedObjects=0\n[ManufacturerObjects]\nSupportedObjects=0\n";
    Import device;
    device.importer.setImportFileInfo(true);
    QVERIFY(
        device.bytes(known + variable
                     + "[Tools]\nItems=1\nTool1 = x \n[PreDefines]\n; remark\nA=B=C\n[1000ObjectLinks]\n1=2\n"
                       "[1000Name]\n1=a\n"));
    QCOMPARE(device.setting("AdditionalSections"),
             u"[Tools]\nItems=1\nTool1=x\n\n[PreDefines]\nA=B=C\n\n[1000ObjectLinks]\n1=2"_s);
    QCOMPARE(device.findings.filter(u"is kept among the additional sections"_s).size(), 3);
}

void TestEdsImporterDevice::theSectionsOfADcfAreNoAdditions()
{
    for (const char *name : {"DeviceComissioning", "DeviceCommissioning"}) {
        Import device;
        device.importer.setImportFileInfo(true);
        QVERIFY(device.bytes(QByteArray(variable) + '[' + name + "]\nNodeID=5\n"));
        QCOMPARE(device.setting("AdditionalSections"), QString());
        QCOMPARE(device.findings,
                 QStringList{u"5: [%1] belongs to a DCF and is left out."_s.arg(QLatin1StringView(name))});
    }
}

void TestEdsImporterDevice::tooManyAdditionsAreLeftOut()
{
    QByteArray file = variable;
    for (int section = 0; section < 2000; ++section)
        file += "[Extra" + QByteArray::number(section) + "]\nText=" + QByteArray(200, 'x') + '\n';
    Import device;
    device.importer.setImportFileInfo(true);
    QVERIFY(device.bytes(file));
    QCOMPARE(device.setting("AdditionalSections"), QString());
    QCOMPARE(device.findings.filter(u"There are too many sections"_s).size(), 1);
}

QTEST_GUILESS_MAIN(TestEdsImporterDevice)
#include "tst_edsimporterdevice.moc"
