#include "canopen/CANTypes.h"
#include "importers/DescriptionImport.h"
#include "importers/EDSImporter.h"

using namespace Qt::StringLiterals;
using Import = DescriptionImport<EDSImporter>;

/** Device descriptions: a file in, rows of the staging line out. */
class TestEdsImporter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { ImporterTest::prepareApplication(); }
    void aVariableIsAnObjectWithSubIndexZero();
    void aRecordBringsItsSubIndices();
    void objectsOutsideOfTheRangeAreIgnored();
    void aValueThatIsThereIsADefault_data();
    void aValueThatIsThereIsADefault();
    void theAccessTypeRefinesTheMapping_data();
    void theAccessTypeRefinesTheMapping();
    void limitsOfTheFileAreChecked();
    void anObjectWithoutLimitsGetsThoseOfItsTypeWithLimitCheckOff();
    void aDcfKeepsTheParameterValueWhereAnEdsKeepsTheDefault_data();
    void aDcfKeepsTheParameterValueWhereAnEdsKeepsTheDefault();
    void anEmptyParameterValueLeavesTheDefault();
    void denotationsComeAlong();
    void anArrayWithoutSubIndexZeroGetsOne();
    void aRecordWithoutSubIndexZeroGetsOne();
    void theSubIndexZeroOfTheFileIsKept();
    void aCountWithoutValueIsTheHighestSubIndex();
    void aCompactArrayGetsAllItsEntries();
    void theValuesOfACompactArrayCountInADcfOnly();
    void anArrayHasTheTypeOfItsElements();
    void valuesWithoutFixedSizeStayWithTheApplication_data();
    void valuesWithoutFixedSizeStayWithTheApplication();
    void aConstantCountIsAConstantOfTheCode();
    void objFlagsBecomeRefusals_data();
    void objFlagsBecomeRefusals();
    void dataTypesOfOtherTablesKeepTheirNumber_data();
    void dataTypesOfOtherTablesKeepTheirNumber();
    void anObjectOfTheLineIsReplaced();
    void otherObjectsOfTheLineStay();
    void descriptionsComeFromCommentLines_data();
    void descriptionsComeFromCommentLines();
    void theImporterReadsOneFileAfterAnother();
    void findingsAreTheLinesOfTheLog();
};

void TestEdsImporter::aVariableIsAnObjectWithSubIndexZero()
{
    Import device;
    QVERIFY(device.bytes("[1000]\nParameterName=Device type\nObjectType=0x7\nDataType=0x0007\nAccessType=ro\n"
                         "DefaultValue=0x00030191\nPDOMapping=0\n"));
    QCOMPARE(device.errors, QStringList());
    QCOMPARE(device.findings, QStringList());
    QCOMPARE(device.rows(), QStringList{u"1000:00"_s});
    QCOMPARE(device.object(0x1000).name, u"Device type"_s);
    QCOMPARE(device.object(0x1000).objecttype, 7);
    QCOMPARE(device.object(0x1000).datatype, 7);
    QCOMPARE(device.summary(0x1000, 0), u"Device type | 7 | ro | 0x00030191 |  | 0"_s);
    QCOMPARE(device.sub(0x1000, 0).allowedaccesstypes, u"const,ro,rw,wo,rww,rwr"_s);
    QCOMPARE(device.sub(0x1000, 0).varname, u" "_s);
}

void TestEdsImporter::aRecordBringsItsSubIndices()
{
    Import device;
    QVERIFY(
        device.bytes("[1018]\nParameterName=Identity\nObjectType=9\nSubNumber=2\n"
                     "[1018sub0]\nParameterName=Highest\nDataType=5\nAccessType=const\nDefaultValue=1\n"
                     "[1018sub1]\nParameterName=Vendor-ID\nDataType=7\nAccessType=ro\nDefaultValue=0x2B7\n"));
    QCOMPARE(device.rows(), (QStringList{u"1018:00"_s, u"1018:01"_s}));
    QCOMPARE(device.object(0x1018).objecttype, 9);
    QCOMPARE(device.summary(0x1018, 0), u"Highest | 5 | const | 1 |  | 0"_s);
    QCOMPARE(device.summary(0x1018, 1), u"Vendor-ID | 7 | ro | 0x2B7 |  | 0"_s);
}

void TestEdsImporter::objectsOutsideOfTheRangeAreIgnored()
{
    Import device;
    device.importer.setRange(0x6000, 0x9FFF);
    const QByteArray entries = "ParameterName=Value\nDataType=5\nAccessType=rw\n";
    QVERIFY(device.bytes("[1000]\n" + entries + "[6000]\n" + entries + "[9FFF]\n" + entries + "[A000]\n"
                         + entries + "[DeviceInfo]\nNrOfRXPDO=2\n"));
    QCOMPARE(device.rows(), (QStringList{u"6000:00"_s, u"9fff:00"_s}));
    QVERIFY(device.findings.contains(u"0: 2 objects outside of the range 0x6000 to 0x9fff are left out."_s));
}

void TestEdsImporter::aValueThatIsThereIsADefault_data()
{
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<bool>("present");
    QTest::newRow("value") << QByteArray("DefaultValue=0\n") << true;
    QTest::newRow("empty") << QByteArray("DefaultValue=\n") << false;
    QTest::newRow("missing") << QByteArray() << false;
}

void TestEdsImporter::aValueThatIsThereIsADefault()
{
    QFETCH(QByteArray, entry);
    QFETCH(bool, present);
    Import device;
    QVERIFY(device.bytes("[2000]\nParameterName=Value\nDataType=5\nAccessType=rw\n" + entry));
    QCOMPARE(device.sub(0x2000, 0).defaultineds, present);
    QCOMPARE(int(device.sub(0x2000, 0).writedefaulttoeds), int(present));
}

void TestEdsImporter::theAccessTypeRefinesTheMapping_data()
{
    QTest::addColumn<int>("mapping");
    QTest::newRow("ro") << int(PDOMapping::TPDO);
    QTest::newRow("rwr") << int(PDOMapping::TPDO);
    QTest::newRow("wo") << int(PDOMapping::RPDO);
    QTest::newRow("rww") << int(PDOMapping::RPDO);
    QTest::newRow("rw") << int(PDOMapping::Allowed);
    QTest::newRow("const") << int(PDOMapping::Allowed);
}

void TestEdsImporter::theAccessTypeRefinesTheMapping()
{
    const QByteArray section =
        QByteArray("]\nParameterName=Value\nDataType=5\nAccessType=") + QTest::currentDataTag();
    Import device;
    QVERIFY(device.bytes("[2000" + section + "\nPDOMapping=1\n[2001" + section + "\nPDOMapping=0\n[2002"
                         + section + '\n'));
    QTEST(int(device.sub(0x2000, 0).pdomapping.toUInt()), "mapping");
    QCOMPARE(int(device.sub(0x2001, 0).pdomapping.toUInt()), int(PDOMapping::Forbidden));
    QCOMPARE(int(device.sub(0x2002, 0).pdomapping.toUInt()), int(PDOMapping::Forbidden));
    QCOMPARE(device.sub(0x2000, 0).accesstype, QString::fromLatin1(QTest::currentDataTag()));
}

void TestEdsImporter::limitsOfTheFileAreChecked()
{
    Import device;
    QVERIFY(
        device.bytes("[2000]\nParameterName=Value\nDataType=5\nAccessType=rw\nLowLimit=0x1\nHighLimit=7\n"));
    const auto sub = device.sub(0x2000, 0);
    QCOMPARE(sub.lowlimit, u"0x1"_s);
    QCOMPARE(sub.uplimit, u"7"_s);
    QVERIFY(sub.limitineds);
}

void TestEdsImporter::anObjectWithoutLimitsGetsThoseOfItsTypeWithLimitCheckOff()
{
    Import device;
    QVERIFY(device.bytes("[2000]\nParameterName=Value\nDataType=3\nAccessType=rw\n"
                         "[2001]\nParameterName=Text\nDataType=9\nAccessType=rw\nLowLimit=\n"));
    QCOMPARE(device.sub(0x2000, 0).lowlimit, u"-32768"_s);
    QCOMPARE(device.sub(0x2000, 0).uplimit, u"32767"_s);
    QVERIFY(!device.sub(0x2000, 0).limitineds);
    QCOMPARE(device.sub(0x2001, 0).uplimit, QString());
    QVERIFY(!device.sub(0x2001, 0).limitineds);
}

void TestEdsImporter::aDcfKeepsTheParameterValueWhereAnEdsKeepsTheDefault_data()
{
    QTest::addColumn<bool>("dcf");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("told");
    QTest::newRow("dcf") << true << u"$NODEID+0x200"_s << false;
    QTest::newRow("eds") << false << u"0x80000000"_s << true;
}

void TestEdsImporter::aDcfKeepsTheParameterValueWhereAnEdsKeepsTheDefault()
{
    QFETCH(bool, dcf);
    QFETCH(bool, told);
    Import device;
    device.importer.setDcfMode(dcf);
    QVERIFY(device.bytes("[1400]\nParameterName=RPDO 1\nObjectType=9\nSubNumber=2\n"
                         "[1400sub0]\nParameterName=Highest\nDataType=5\nAccessType=ro\nDefaultValue=2\n"
                         "[1400sub1]\nParameterName=COB-ID\nDataType=7\nAccessType=rw\n"
                         "DefaultValue=0x80000000\nParameterValue=$NODEID+0x200\n"));
    QTEST(device.sub(0x1400, 1).defaultvalue, "value");
    QVERIFY(device.sub(0x1400, 1).defaultineds);
    QCOMPARE(device.findings.contains(u"10: The ParameterValue is left out, as the file is no DCF."_s), told);
}

void TestEdsImporter::anEmptyParameterValueLeavesTheDefault()
{
    Import device;
    device.importer.setDcfMode(true);
    QVERIFY(device.bytes(
        "[2000]\nParameterName=Value\nDataType=5\nAccessType=rw\nDefaultValue=3\nParameterValue=\n"));
    QCOMPARE(device.sub(0x2000, 0).defaultvalue, u"3"_s);
}

void TestEdsImporter::denotationsComeAlong()
{
    Import device;
    device.importer.setDcfMode(true);
    QVERIFY(device.bytes("[2000]\nParameterName=Value\nDataType=5\nAccessType=rw\nDenotation=Left valve\n"));
    QCOMPARE(device.sub(0x2000, 0).denotation, u"Left valve"_s);
    QCOMPARE(device.sub(0x2000, 0).name, u"Value"_s);
}

void TestEdsImporter::anArrayWithoutSubIndexZeroGetsOne()
{
    Import device;
    QVERIFY(device.bytes("[2000]\nParameterName=Values\nObjectType=8\nSubNumber=3\n"
                         "[2000sub1]\nParameterName=A\nDataType=6\nAccessType=rw\n"
                         "[2000sub2]\nParameterName=B\nDataType=6\nAccessType=rw\n"
                         "[2001]\nParameterName=Values\nObjectType=8\nSubNumber=4\n"
                         "[2002]\nParameterName=Values\nObjectType=8\n"));
    QCOMPARE(device.summary(0x2000, 0), u"Highest subindex supported | 5 | ro | 2 |  | 0"_s);
    QVERIFY(device.sub(0x2000, 0).defaultineds);
    QVERIFY(device.findings.contains(u"1: The object 0x2000 gets a sub-index 0 with the value 2."_s));
    QCOMPARE(device.summary(0x2001, 0), u"Highest subindex supported | 5 | ro | 4 |  | 0"_s);
    QCOMPARE(device.rows().filter(u"2002"_s), QStringList());
}

void TestEdsImporter::aRecordWithoutSubIndexZeroGetsOne()
{
    Import device;
    QVERIFY(device.bytes("[2000]\nParameterName=Values\nObjectType=9\nSubNumber=2\n"
                         "[2000sub5]\nParameterName=A\nDataType=6\nAccessType=rw\n"
                         "[2000subFF]\nParameterName=Structure\nDataType=7\nAccessType=ro\n"));
    QCOMPARE(device.rows(), (QStringList{u"2000:00"_s, u"2000:05"_s, u"2000:ff"_s}));
    QCOMPARE(device.sub(0x2000, 0).defaultvalue, u"5"_s);
}

void TestEdsImporter::theSubIndexZeroOfTheFileIsKept()
{
    Import device;
    QVERIFY(device.bytes(
        "[1600]\nParameterName=Mapping\nObjectType=9\nSubNumber=2\n"
        "[1600sub0]\nParameterName=Number of entries\nDataType=5\nAccessType=rw\nDefaultValue=0\n"
        "[1600sub1]\nParameterName=Entry 1\nDataType=7\nAccessType=rw\nDefaultValue=0x62000108\n"
        "[2000]\nParameterName=Values\nObjectType=8\nSubNumber=2\n"
        "[2000sub0]\nParameterName=Count\nDataType=5\nAccessType=const\nDefaultValue=0x09\n"
        "[2000sub1]\nParameterName=A\nDataType=5\nAccessType=rw\n"));
    QCOMPARE(device.summary(0x1600, 0), u"Number of entries | 5 | rw | 0 |  | 0"_s);
    QCOMPARE(device.summary(0x2000, 0), u"Count | 5 | const | 0x09 |  | 0"_s);
}

void TestEdsImporter::aCountWithoutValueIsTheHighestSubIndex()
{
    QByteArray file;
    for (const char *index : {"1003", "1600", "1A00", "2000"})
        file += QByteArray("[") + index + "]\nParameterName=Values\nObjectType=9\nSubNumber=2\n[" + index
            + "sub0]\nParameterName=Count\nDataType=5\nAccessType=rw\n[" + index
            + "sub3]\nParameterName=Entry\nDataType=7\nAccessType=rw\n";
    Import device;
    QVERIFY(device.bytes(file));
    QCOMPARE(device.summary(0x2000, 0), u"Count | 5 | rw | 3 |  | 0"_s);
    QVERIFY(device.findings.contains(u"37: Sub-index 0 of the object 0x2000 has no value; 3 is assumed."_s));
    for (const int index : {0x1003, 0x1600, 0x1A00}) // what is in use at run time
        QCOMPARE(device.summary(index, 0), u"Count | 5 | rw |  |  | 0"_s);
}

void TestEdsImporter::aCompactArrayGetsAllItsEntries()
{
    Import device;
    QVERIFY(
        device.bytes("[2000]\nParameterName=Cell\nObjectType=8\nDataType=6\nAccessType=rww\nPDOMapping=1\n"
                     "DefaultValue=0x10\nLowLimit=1\nHighLimit=99\nCompactSubObj=3\n"
                     "[2000Name]\nNrOfEntries=1\n2=Middle\n"));
    QCOMPARE(device.rows(), (QStringList{u"2000:00"_s, u"2000:01"_s, u"2000:02"_s, u"2000:03"_s}));
    QCOMPARE(device.summary(0x2000, 0), u"Highest subindex supported | 5 | ro | 3 |  | 0"_s);
    QCOMPARE(device.summary(0x2000, 1), u"Cell 1 | 6 | rww | 0x10 | 1..99 | 3"_s);
    QCOMPARE(device.summary(0x2000, 2), u"Middle | 6 | rww | 0x10 | 1..99 | 3"_s);
    QCOMPARE(device.summary(0x2000, 3), u"Cell 3 | 6 | rww | 0x10 | 1..99 | 3"_s);
    QCOMPARE(device.object(0x2000).datatype, 6);
}

void TestEdsImporter::theValuesOfACompactArrayCountInADcfOnly()
{
    const QByteArray file = "[1016]\nParameterName=Consumer\nObjectType=8\nDataType=7\nAccessType=rw\n"
                            "DefaultValue=0\nCompactSubObj=2\n[1016Value]\nNrOfEntries=1\n2=0x000103E8\n";
    for (const bool dcf : {false, true}) {
        Import device;
        device.importer.setDcfMode(dcf);
        QVERIFY(device.bytes(file));
        QCOMPARE(device.sub(0x1016, 1).defaultvalue, u"0"_s);
        QCOMPARE(device.sub(0x1016, 2).defaultvalue, dcf ? u"0x000103E8"_s : u"0"_s);
    }
}

void TestEdsImporter::anArrayHasTheTypeOfItsElements()
{
    Import device;
    QVERIFY(device.bytes("[2000]\nParameterName=Values\nObjectType=8\nSubNumber=2\n"
                         "[2000sub0]\nParameterName=Count\nDataType=5\nAccessType=ro\nDefaultValue=1\n"
                         "[2000sub1]\nParameterName=A\nDataType=4\nAccessType=rw\n"
                         "[2001]\nParameterName=Values\nObjectType=9\nSubNumber=1\n"
                         "[2001sub1]\nParameterName=A\nDataType=4\nAccessType=rw\n"));
    QCOMPARE(device.object(0x2000).datatype, 4);
    QCOMPARE(device.object(0x2001).datatype, 0);
}

void TestEdsImporter::valuesWithoutFixedSizeStayWithTheApplication_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("access");
    QTest::addColumn<int>("implementation");
    QTest::newRow("number") << 7 << QByteArray("rw") << 0;
    QTest::newRow("constant number") << 7 << QByteArray("const") << 0;
    QTest::newRow("domain") << 15 << QByteArray("rw") << 2;
    QTest::newRow("octet string") << 10 << QByteArray("ro") << 2;
    QTest::newRow("text") << 9 << QByteArray("rw") << 2;
    QTest::newRow("text, read-only") << 9 << QByteArray("ro") << 1;
    QTest::newRow("text, constant") << 9 << QByteArray("const") << 1;
}

void TestEdsImporter::valuesWithoutFixedSizeStayWithTheApplication()
{
    QFETCH(int, type);
    QFETCH(QByteArray, access);
    QFETCH(int, implementation);
    Import device;
    QVERIFY(device.bytes("[200A]\nParameterName=Value\nDataType=" + QByteArray::number(type)
                         + "\nAccessType=" + access + '\n'));
    const auto sub = device.sub(0x200A, 0);
    QCOMPARE(sub.implementation, implementation);
    QCOMPARE(sub.varname, implementation == 2 ? u"v_200a00"_s : u" "_s);
}

void TestEdsImporter::aConstantCountIsAConstantOfTheCode()
{
    const QByteArray element = "[2000sub1]\nParameterName=A\nDataType=5\nAccessType=const\n";
    for (const QByteArray &access : {QByteArray("const"), QByteArray("ro")}) {
        Import device;
        QVERIFY(device.bytes("[2000]\nParameterName=Values\nObjectType=9\nSubNumber=2\n[2000sub0]\n"
                             "ParameterName=Count\nDataType=5\nDefaultValue=1\nAccessType="
                             + access + '\n' + element));
        QCOMPARE(device.sub(0x2000, 0).implementation, access == "const" ? 1 : 0);
        QCOMPARE(device.sub(0x2000, 1).implementation, 0);
    }
}

void TestEdsImporter::objFlagsBecomeRefusals_data()
{
    QTest::addColumn<QByteArray>("flags");
    QTest::addColumn<bool>("read");
    QTest::addColumn<bool>("write");
    QTest::addColumn<QStringList>("findings");
    QTest::newRow("0") << QByteArray("0") << false << false << QStringList();
    QTest::newRow("1") << QByteArray("1") << true << false << QStringList();
    QTest::newRow("2") << QByteArray("0x00000002") << false << true << QStringList();
    QTest::newRow("3") << QByteArray("0x3") << true << true << QStringList();
    QTest::newRow("more bits") << QByteArray("0x12") << false << true
                               << QStringList{u"1: Of ObjFlags 0x12 only the lowest two bits are kept."_s};
}

void TestEdsImporter::objFlagsBecomeRefusals()
{
    QFETCH(QByteArray, flags);
    Import device;
    QVERIFY(device.bytes("[2000]\nParameterName=Value\nDataType=5\nAccessType=rw\nObjFlags=" + flags + '\n'));
    QTEST(device.sub(0x2000, 0).refuseread, "read");
    QTEST(device.sub(0x2000, 0).refusewrite, "write");
    QTEST(device.findings, "findings");
}

void TestEdsImporter::dataTypesOfOtherTablesKeepTheirNumber_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("metadata");
    QTest::newRow("static") << QByteArray("0x001B") << 27 << QString();
    QTest::newRow("PDO mapping record") << QByteArray("0x0021") << 33 << QString();
    QTest::newRow("manufacturer's") << QByteArray("0x0064") << 100 << u"100"_s;
    QTest::newRow("of an expanded device profile") << QByteArray("0x0A41") << 0xA41 << u"2625"_s;
}

void TestEdsImporter::dataTypesOfOtherTablesKeepTheirNumber()
{
    QFETCH(QByteArray, type);
    Import device;
    QVERIFY(device.bytes("[2000]\nParameterName=Value\nAccessType=rw\nDataType=" + type + '\n'));
    QTEST(device.sub(0x2000, 0).datatype, "number");
    QTEST(device.sub(0x2000, 0).metadata.value(u"eds_datatype"_s), "metadata");
}

void TestEdsImporter::anObjectOfTheLineIsReplaced()
{
    Import device;
    ObjectDataBase::SUBINDEX_DATA_T former;
    former.name = u"former"_s;
    QVERIFY(device.store->addIndex(ImporterTest::staging, 0x2000, {.name = u"former"_s, .objecttype = 9}));
    for (const quint8 sub : {0, 1, 7})
        QVERIFY(device.store->addSubIndex(ImporterTest::staging, 0x2000, sub, former));
    QVERIFY(device.bytes("[2000]\nParameterName=Value\nDataType=5\nAccessType=rw\n"));
    QCOMPARE(device.rows(), QStringList{u"2000:00"_s});
    QCOMPARE(device.object(0x2000).name, u"Value"_s);
    QCOMPARE(device.object(0x2000).objecttype, 7);
}

void TestEdsImporter::otherObjectsOfTheLineStay()
{
    Import device;
    QVERIFY(device.store->addIndex(ImporterTest::staging, 0x2001, {.name = u"mine"_s}));
    QVERIFY(device.bytes("[2000]\nParameterName=Value\nDataType=5\nAccessType=rw\n"));
    QCOMPARE(device.object(0x2001).name, u"mine"_s);
}

void TestEdsImporter::descriptionsComeFromCommentLines_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QString>("description");
    QTest::newRow("one line") << QByteArray(";;Speed\n") << u"Speed"_s;
    QTest::newRow("two lines") << QByteArray(";;Speed\n;; in rpm\n") << u"Speed\n in rpm"_s;
    QTest::newRow("a remark") << QByteArray(";Speed\n") << QString();
    QTest::newRow("a blank line between") << QByteArray(";;Speed\n\n") << u"Speed"_s;
    QTest::newRow("another block before") << QByteArray(";;Axis 1\n\n;;Speed\n") << u"Speed"_s;
    QTest::newRow("of the section before") << QByteArray(";;Old\n[1001]\nParameterName=E\n") << QString();
    QTest::newRow("an entry between") << QByteArray("[1001]\n;;Old\nParameterName=E\n") << QString();
    QTest::newRow("CR LF") << QByteArray(";;Speed\r\n;;in rpm\r\n") << u"Speed\nin rpm"_s;
}

void TestEdsImporter::descriptionsComeFromCommentLines()
{
    QFETCH(QByteArray, before);
    Import device;
    QVERIFY(device.bytes(before + "[2000]\nParameterName=V\nObjectType=9\nSubNumber=2\n" + before
                         + "[2000sub0]\nParameterName=C\nDataType=5\nAccessType=ro\nDefaultValue=1\n"
                           "[2000sub1]\nParameterName=A\nDataType=5\nAccessType=rw\n"
                         + before + "[2001]\nParameterName=V\nDataType=5\nAccessType=rw\n"));
    QTEST(device.object(0x2000).description, "description");
    QTEST(device.sub(0x2000, 0).description, "description");
    QCOMPARE(device.sub(0x2000, 1).description, QString());
    // A variable has one section for the object and its value.
    QTEST(device.object(0x2001).description, "description");
    QTEST(device.sub(0x2001, 0).description, "description");
}

void TestEdsImporter::theImporterReadsOneFileAfterAnother()
{
    Import device;
    QVERIFY(device.bytes("[2000]\nParameterName=Value\nDataType=BYTE\nAccessType=rw\n"));
    QCOMPARE(device.findings.size(), 1);
    QVERIFY(device.bytes("[2001]\nParameterName=Value\nDataType=5\nAccessType=rw\n"));
    QCOMPARE(device.findings, QStringList());
    QCOMPARE(device.importer.importedObjects().keys(), QList<quint16>{0x2001});
    QCOMPARE(device.rows(), (QStringList{u"2000:00"_s, u"2001:00"_s}));
}

void TestEdsImporter::findingsAreTheLinesOfTheLog()
{
    Import device;
    QVERIFY(device.bytes("[2000]\nParameterName=Value\nDataType=BYTE\nAccessType=R\n"));
    QCOMPARE(device.findings,
             (QStringList{u"3: The DataType \"BYTE\" is not known."_s,
                          u"4: The AccessType \"R\" is read as \"ro\"."_s}));
    for (const QString &finding : std::as_const(device.findings))
        QCOMPARE(device.log.filter(device.importer.fileName() + u':' + finding).size(), 1);
}

QTEST_GUILESS_MAIN(TestEdsImporter)
#include "tst_edsimporter.moc"
