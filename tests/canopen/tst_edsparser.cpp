#include "canopen/COHelper.h"
#include "canopen/EdsParser.h"

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestEdsParser : public QObject
{
    Q_OBJECT

private:
    struct Result
    {
        bool loaded = false;
        QList<CANopen::CANopenIndex> objects;
        QList<CANopenSubindex> subIndices;
        QStringList order; ///< "1018" and "1018sub1" as they came
        QStringList findings; ///< "line: text"
    };

    static Result load(const QByteArray &bytes)
    {
        QBuffer buffer;
        buffer.setData(bytes);
        buffer.open(QIODevice::ReadOnly);
        EdsParser parser;
        Result result;
        connect(&parser, &EdsParser::newIndex, &parser, [&](const CANopen::CANopenIndex &object) {
            result.objects.append(object);
            result.order.append(QString::number(object.index, 16));
        });
        connect(&parser, &EdsParser::newSubIndex, &parser, [&](const CANopenSubindex &sub) {
            result.subIndices.append(sub);
            result.order.append(QStringLiteral("%1sub%2").arg(sub.index, 0, 16).arg(sub.subIndex, 0, 16));
        });
        result.loaded = parser.LoadEds(buffer, QStringLiteral("memory"));
        for (const EdsFinding &finding : parser.findings())
            result.findings.append(QStringLiteral("%1: %2").arg(finding.line).arg(finding.text));
        return result;
    }

private Q_SLOTS:
    void aVariableIsAnObjectWithSubIndexZero();
    void aRecordComesWithItsSubIndicesInOrder();
    void aFileIsReadFromDisk();
    void filesThatAreNoDeviceDescriptionAreRefused();
    void aDeviceWithoutEndIsRefused();
    void oddObjectTypesAreUnderstood_data();
    void oddObjectTypesAreUnderstood();
    void oddEntriesAreUnderstood_data();
    void oddEntriesAreUnderstood();
    void sectionNamesOfObjectsAreReadTolerantly_data();
    void sectionNamesOfObjectsAreReadTolerantly();
    void theFirstOfTwoSpellingsOfASectionCounts();
    void limitsArePresentWhereOneOfThemIs_data();
    void limitsArePresentWhereOneOfThemIs();
    void aCommissionedDeviceKeepsItsParameterValues();
    void aCompactArrayBringsItsEntries();
    void aCompactObjectWithoutNamesCountsThem();
    void namesOfACompactObjectAreToldBySubIndex();
    void aDomainNeedsNeitherTypeNorAccess();
    void subIndicesWithoutObjectMakeARecord();
    void wrongNumbersOfSubIndicesAreTold_data();
    void wrongNumbersOfSubIndicesAreTold();
    void listsOfObjectsAreComparedWithTheSections();
    void aFlatFileHasNoFindings();
    void aParserReadsOneFileAfterAnother();
    void aVariableWithSubIndicesKeepsItsOwnValue();
    void aValueThatStandsTwiceIsTold();
    void unknownEntriesOfObjectsAreToldOnce();
    void listsOfObjectsThatAreNotCompactAreTold();
    void theValueOfAnObjectWithSubIndicesIsTold();
    void entriesBeyondACompactObjectAreTold();
    void valuesOfACompactObjectTakeTheFormOfTheProject();
    void placeMarkersInTextsStayAsTheyAre();
    void aVariableWithoutNameIsToldOnce();
    void recordsTellWhereTheyStand();
    void aFileWithTooManyEntriesIsRefused();
};

void TestEdsParser::aVariableIsAnObjectWithSubIndexZero()
{
    const Result result = load("[1000]\nParameterName=Device type\nObjectType=0x7\nDataType=0x0007\n"
                               "AccessType=ro\nDefaultValue=0x000F0191\nPDOMapping=0\nObjFlags=0x3\n");
    QVERIFY(result.loaded);
    QCOMPARE(result.order, (QStringList{"1000", "1000sub0"}));
    const CANopen::CANopenIndex object = result.objects.first();
    QCOMPARE(object.index, quint16(0x1000));
    QCOMPARE(object.name, QStringLiteral("Device type"));
    QCOMPARE(object.objectCode, CANopen::Var);
    QCOMPARE(object.dataType, quint16(7));
    QCOMPARE(object.subIndexCount, quint8(0));
    const CANopenSubindex sub = result.subIndices.first();
    QCOMPARE(sub.name, QStringLiteral("Device type"));
    QCOMPARE(sub.dataType, quint16(7));
    QCOMPARE(sub.accessType, QStringLiteral("ro"));
    QCOMPARE(sub.defaultValue, QStringLiteral("0x000F0191"));
    QCOMPARE(sub.objFlags, 3u);
    QVERIFY(!sub.pdoMapping);
    QVERIFY(!sub.hasLimits);
    QVERIFY(result.findings.isEmpty());
}

void TestEdsParser::aRecordComesWithItsSubIndicesInOrder()
{
    const Result result =
        load("[1018sub1]\nParameterName=Vendor-ID\nDataType=7\nAccessType=ro\n"
             "[1018]\nParameterName=Identity\nObjectType=9\nSubNumber=2\n"
             "[1018sub0]\nParameterName=Highest sub-index\nDataType=5\nAccessType=const\nDefaultValue=1\n"
             "[1001]\nParameterName=Error register\nObjectType=7\nDataType=5\nAccessType=ro\nPDOMapping=1\n");
    QCOMPARE(result.order, (QStringList{"1001", "1001sub0", "1018", "1018sub0", "1018sub1"}));
    QCOMPARE(result.objects[1].objectCode, CANopen::Record);
    QCOMPARE(result.objects[1].subIndexCount, quint8(2));
    QVERIFY(!result.objects[1].compact);
    QVERIFY(result.subIndices[0].pdoMapping);
    QCOMPARE(result.subIndices[1].accessType, QStringLiteral("const"));
    QCOMPARE(result.subIndices[2].name, QStringLiteral("Vendor-ID"));
    QVERIFY(result.findings.isEmpty());
}

void TestEdsParser::aFileIsReadFromDisk()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("device.eds"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[DeviceInfo]\r\nVendorName=Korvel\r\n[2000]\r\nParameterName=Value\r\nDataType="
               "9000\r\nAccessType=rw\r\n");
    file.close();
    EdsParser parser;
    int objects = 0;
    connect(&parser, &EdsParser::newIndex, &parser, [&] { ++objects; });
    QVERIFY(parser.LoadEds(path));
    QCOMPARE(objects, 1);
    QCOMPARE(parser.document().section(QStringLiteral("deviceinfo"))->value(QStringLiteral("VendorName")),
             QStringLiteral("Korvel"));
    QCOMPARE(parser.findings().size(), 1);
    QCOMPARE(parser.findings().first().file, path);
    QCOMPARE(parser.findings().first().line, 5);
}

void TestEdsParser::filesThatAreNoDeviceDescriptionAreRefused()
{
    EdsParser parser;
    QVERIFY(!parser.LoadEds(QStringLiteral("/nonexistent/device.eds")));
    QCOMPARE(parser.findings().size(), 1);
    QCOMPARE(parser.findings().first().severity, EdsFinding::Severity::Error);
    QVERIFY(!parser.LoadEds(QDir::tempPath()));
    QVERIFY(!load(QByteArray()).loaded);
    QVERIFY(!load("VendorName=Korvel\n").loaded);
    const Result binary = load(QByteArray("\x7F"
                                          "ELF\x02\x01\x01\0\0\0\0",
                                          11));
    QVERIFY(!binary.loaded);
    QVERIFY(binary.objects.isEmpty());
}

void TestEdsParser::aDeviceWithoutEndIsRefused()
{
    EdsParser parser;
    QVERIFY(!parser.LoadEds(QStringLiteral("/dev/zero")));
    QCOMPARE(parser.findings().size(), 1);
    QCOMPARE(parser.findings().first().text,
             QStringLiteral("The file is too large for a device description."));
}

void TestEdsParser::oddObjectTypesAreUnderstood_data()
{
    QTest::addColumn<QByteArray>("entries");
    QTest::addColumn<int>("code");
    QTest::addColumn<bool>("told");
    const QByteArray sub = "[2000sub0]\nParameterName=Count\nDataType=5\nAccessType=ro\n";
    QTest::newRow("decimal") << QByteArray("ObjectType=7\n") << 7 << false;
    QTest::newRow("hexadecimal") << QByteArray("ObjectType=0x07\n") << 7 << false;
    QTest::newRow("word") << QByteArray("ObjectType=VAR\n") << 7 << true;
    QTest::newRow("remark") << QByteArray("ObjectType=0x7 ; variable\n") << 7 << true;
    QTest::newRow("array") << "ObjectType=8\nSubNumber=1\n" + sub << 8 << false;
    QTest::newRow("missing") << QByteArray() << 7 << false;
    QTest::newRow("missing with sub-indices") << "SubNumber=1\n" + sub << 9 << true;
    QTest::newRow("missing with CompactSubObj") << QByteArray("CompactSubObj=3\n") << 8 << true;
    QTest::newRow("unknown word") << QByteArray("ObjectType=THING\n") << 7 << true;
    QTest::newRow("unknown number") << QByteArray("ObjectType=77\n") << 7 << true;
    QTest::newRow("null") << QByteArray("ObjectType=0\n") << 0 << false;
}

void TestEdsParser::oddObjectTypesAreUnderstood()
{
    QFETCH(QByteArray, entries);
    const Result result = load("[2000]\nParameterName=Thing\nDataType=5\nAccessType=rw\n" + entries);
    QCOMPARE(result.objects.size(), 1);
    QTEST(int(result.objects.first().objectCode), "code");
    QTEST(!result.findings.filter(QStringLiteral("ObjectType")).isEmpty(), "told");
}

void TestEdsParser::oddEntriesAreUnderstood_data()
{
    QTest::addColumn<QByteArray>("entries");
    QTest::addColumn<QString>("summary"); // type access pdo default
    QTest::addColumn<bool>("told");
    QTest::newRow("plain") << QByteArray("DataType=7\nAccessType=rw\nPDOMapping=1\nDefaultValue=3")
                           << "7 rw 1 3" << false;
    QTest::newRow("keys in any case")
        << QByteArray("datatype=0X07\nACCESSTYPE=RW\npdomapping=0x1\ndefaultvalue=3") << "7 rw 1 3" << false;
    QTest::newRow("data type word") << QByteArray("DataType=UNSIGNED32\nAccessType=rw") << "7 rw 0 " << true;
    QTest::newRow("data type with remark")
        << QByteArray("DataType=7 # U32\nAccessType=rw") << "7 rw 0 " << true;
    QTest::newRow("complex data type") << QByteArray("DataType=0x0021\nAccessType=rw") << "33 rw 0 " << true;
    QTest::newRow("unknown data type") << QByteArray("DataType=BYTE\nAccessType=rw") << "0 rw 0 " << true;
    QTest::newRow("data type missing") << QByteArray("AccessType=rw") << "0 rw 0 " << true;
    QTest::newRow("access with remark") << QByteArray("DataType=7\nAccessType=rw # rw;") << "7 rw 0 " << true;
    QTest::newRow("access in one letter") << QByteArray("DataType=7\nAccessType=R") << "7 ro 0 " << true;
    QTest::newRow("access empty") << QByteArray("DataType=7\nAccessType=") << "7 ro 0 " << true;
    QTest::newRow("access unknown") << QByteArray("DataType=7\nAccessType=maybe") << "7 ro 0 " << true;
    QTest::newRow("mapping as a word")
        << QByteArray("DataType=7\nAccessType=rw\nPDOMapping=No") << "7 rw 0 " << true;
    QTest::newRow("mapping yes") << QByteArray("DataType=7\nAccessType=rw\nPDOMapping=yes") << "7 rw 1 "
                                 << true;
    QTest::newRow("mapping 2") << QByteArray("DataType=7\nAccessType=rw\nPDOMapping=2") << "7 rw 1 " << true;
    QTest::newRow("flags too large") << QByteArray("DataType=7\nAccessType=rw\nObjFlags=0x100000000")
                                     << "7 rw 0 " << true;
    QTest::newRow("default in words")
        << QByteArray("DataType=7\nAccessType=rw\nDefaultValue=any") << "7 rw 0 any" << true;
    QTest::newRow("default of a text")
        << QByteArray("DataType=9\nAccessType=rw\nDefaultValue=a ; b") << "9 rw 0 a ; b" << false;
}

void TestEdsParser::oddEntriesAreUnderstood()
{
    QFETCH(QByteArray, entries);
    const Result result = load("[2000]\nParameterName=Value\nObjectType=7\n" + entries + '\n');
    QCOMPARE(result.subIndices.size(), 1);
    const CANopenSubindex sub = result.subIndices.first();
    QTEST(QStringLiteral("%1 %2 %3 %4")
              .arg(sub.dataType)
              .arg(sub.accessType)
              .arg(int(sub.pdoMapping))
              .arg(sub.defaultValue),
          "summary");
    QTEST(!result.findings.isEmpty(), "told");
}

void TestEdsParser::sectionNamesOfObjectsAreReadTolerantly_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QStringList>("order");
    QTest::newRow("lower case") << QByteArray("607c") << QStringList{"607c", "607csub0"};
    QTest::newRow("upper case") << QByteArray("1F80") << QStringList{"1f80", "1f80sub0"};
    QTest::newRow("prefix") << QByteArray("0x2000") << QStringList{"2000", "2000sub0"};
    QTest::newRow("Sub in capitals") << QByteArray("3010Sub0") << QStringList{"3010", "3010sub0"};
    QTest::newRow("padded sub-index") << QByteArray("1010sub01") << QStringList{"1010", "1010sub1"};
    QTest::newRow("hexadecimal sub-index") << QByteArray("1A03SUBfe") << QStringList{"1a03", "1a03subfe"};
    QTest::newRow("sub-index too high") << QByteArray("1A03sub100") << QStringList();
    QTest::newRow("placeholder") << QByteArray("14XXsub2") << QStringList();
    QTest::newRow("five digits") << QByteArray("12345") << QStringList();
    QTest::newRow("other section") << QByteArray("PreDefines") << QStringList();
    QTest::newRow("names") << QByteArray("2000Name") << QStringList();
}

void TestEdsParser::sectionNamesOfObjectsAreReadTolerantly()
{
    QFETCH(QByteArray, name);
    const Result result = load('[' + name + "]\nParameterName=Value\nDataType=5\nAccessType=rw\n");
    QVERIFY(result.loaded);
    QTEST(result.order, "order");
}

void TestEdsParser::theFirstOfTwoSpellingsOfASectionCounts()
{
    const QByteArray entries = "DataType=5\nAccessType=rw\n";
    const Result result =
        load("[2000]\nParameterName=A\nObjectType=9\nSubNumber=1\n[0x2000]\nParameterName=B\n"
             "[2000sub1]\nParameterName=C\n"
             + entries + "[2000Sub01]\nParameterName=D\n" + entries);
    QCOMPARE(result.order, (QStringList{"2000", "2000sub1"}));
    QCOMPARE(result.objects.first().name, QStringLiteral("A"));
    QCOMPARE(result.subIndices.first().name, QStringLiteral("C"));
    QVERIFY(result.findings.contains(
        QStringLiteral("5: What [0x2000] describes stands in line 1 already; this section is left out.")));
    QVERIFY(result.findings.contains(QStringLiteral(
        "11: What [2000Sub01] describes stands in line 7 already; this section is left out.")));
}

void TestEdsParser::limitsArePresentWhereOneOfThemIs_data()
{
    QTest::addColumn<QByteArray>("entries");
    QTest::addColumn<bool>("present");
    QTest::addColumn<QString>("low");
    QTest::addColumn<QString>("high");
    QTest::newRow("none") << QByteArray() << false << ""
                          << "";
    QTest::newRow("empty") << QByteArray("LowLimit=\nHighLimit=\n") << false << ""
                           << "";
    QTest::newRow("both") << QByteArray("LowLimit=1\nHighLimit=0xF0\n") << true << "1"
                          << "0xF0";
    QTest::newRow("low only") << QByteArray("LowLimit=1\n") << true << "1"
                              << "255";
    QTest::newRow("high only") << QByteArray("HighLimit=F\n") << true << "0"
                               << "0xF";
}

void TestEdsParser::limitsArePresentWhereOneOfThemIs()
{
    QFETCH(QByteArray, entries);
    const Result result = load("[2000]\nParameterName=Value\nDataType=5\nAccessType=rw\n" + entries);
    QTEST(result.subIndices.first().hasLimits, "present");
    QTEST(result.subIndices.first().lowLimit, "low");
    QTEST(result.subIndices.first().highLimit, "high");
}

void TestEdsParser::aCommissionedDeviceKeepsItsParameterValues()
{
    const Result result = load(
        "[1400]\nParameterName=RPDO 1\nObjectType=9\nSubNumber=2\n"
        "[1400sub0]\nParameterName=Highest\nDataType=5\nAccessType=const\nDefaultValue=2\nParameterValue=\n"
        "[1400sub1]\nParameterName=COB-ID\nDataType=7\nAccessType=rw\nDefaultValue=$NODEID+0x80000200\n"
        "ParameterValue=$NODEID+0x200\nDenotation=Speed command\n");
    QVERIFY(result.subIndices[0].parameterValue.isEmpty());
    QCOMPARE(result.subIndices[1].defaultValue, QStringLiteral("$NODEID+0x80000200"));
    QCOMPARE(result.subIndices[1].parameterValue, QStringLiteral("$NODEID+0x200"));
    QCOMPARE(result.subIndices[1].denotation, QStringLiteral("Speed command"));
    QVERIFY(result.findings.isEmpty());
}

void TestEdsParser::aCompactArrayBringsItsEntries()
{
    const Result result =
        load("[1016]\nParameterName=Consumer heartbeat\nObjectType=8\nDataType=7\nAccessType=rw\n"
             "DefaultValue=0\nPDOMapping=0\nCompactSubObj=0x3\n"
             "[1016Name]\nNrOfEntries=1\n2=Drive\n"
             "[1016Value]\nNrOfEntries=2\n1=0x000103E8\n0x3=50\n"
             "[1016Denotation]\nNrOfEntries=1\n3=Spare\n");
    QCOMPARE(result.order, (QStringList{"1016", "1016sub0", "1016sub1", "1016sub2", "1016sub3"}));
    QVERIFY(result.objects.first().compact);
    QCOMPARE(result.objects.first().subIndexCount, quint8(3));
    QCOMPARE(result.subIndices[0].dataType, quint16(CAN::Unsigned8));
    QCOMPARE(result.subIndices[0].defaultValue, QStringLiteral("3"));
    QCOMPARE(result.subIndices[1].name, QStringLiteral("Consumer heartbeat 1"));
    QCOMPARE(result.subIndices[1].parameterValue, QStringLiteral("0x000103E8"));
    QCOMPARE(result.subIndices[2].name, QStringLiteral("Drive"));
    QCOMPARE(result.subIndices[2].dataType, quint16(7));
    QCOMPARE(result.subIndices[2].accessType, QStringLiteral("rw"));
    QCOMPARE(result.subIndices[2].defaultValue, QStringLiteral("0"));
    QVERIFY(result.subIndices[2].parameterValue.isEmpty());
    QCOMPARE(result.subIndices[3].parameterValue, QStringLiteral("50"));
    QCOMPARE(result.subIndices[3].denotation, QStringLiteral("Spare"));
    QVERIFY(result.findings.isEmpty());
}

void TestEdsParser::aCompactObjectWithoutNamesCountsThem()
{
    const Result result =
        load("[2000]\nParameterName=Cell\nObjectType=8\nDataType=5\nAccessType=ro\nCompactSubObj=255\n"
             "[2000sub2]\nParameterName=Second\nDataType=6\nAccessType=rw\n");
    QCOMPARE(result.subIndices.size(), 255);
    QCOMPARE(result.subIndices.last().subIndex, quint8(254));
    QCOMPARE(result.subIndices.last().name, QStringLiteral("Cell 254"));
    QCOMPARE(result.subIndices[2].name, QStringLiteral("Second"));
    QCOMPARE(result.subIndices[2].dataType, quint16(6));
}

void TestEdsParser::namesOfACompactObjectAreToldBySubIndex()
{
    QBuffer buffer;
    buffer.setData(
        "[2000]\nCompactSubObj=5\n[2000NAME]\nNrOfEntries=2\n1=First\n0x05=Fifth\n0=Count\n300=Beyond\n");
    buffer.open(QIODevice::ReadOnly);
    EdsParser parser;
    QVERIFY(parser.getCompactSubObjNames(0x2000).isEmpty());
    QVERIFY(parser.LoadEds(buffer, QStringLiteral("memory")));
    QCOMPARE(parser.getCompactSubObjNames(0x2000),
             (QMap<QString, QString>{{QStringLiteral("1"), QStringLiteral("First")},
                                     {QStringLiteral("5"), QStringLiteral("Fifth")}}));
    QVERIFY(parser.getCompactSubObjNames(0x2001).isEmpty());
}

void TestEdsParser::aDomainNeedsNeitherTypeNorAccess()
{
    const Result result = load("[1F50]\nParameterName=Program\nObjectType=2\n");
    QCOMPARE(result.objects.first().objectCode, CANopen::Domain);
    QCOMPARE(result.subIndices.size(), 1);
    QCOMPARE(result.subIndices.first().dataType, quint16(CAN::Domain));
    QCOMPARE(result.subIndices.first().accessType, QStringLiteral("rw"));
    QVERIFY(result.findings.isEmpty());
}

void TestEdsParser::subIndicesWithoutObjectMakeARecord()
{
    const Result result = load("[2100sub0]\nParameterName=Count\nDataType=5\nAccessType=ro\n"
                               "[2100sub1]\nParameterName=First\nDataType=5\nAccessType=ro\n");
    QCOMPARE(result.order, (QStringList{"2100", "2100sub0", "2100sub1"}));
    QCOMPARE(result.objects.first().objectCode, CANopen::Record);
    QCOMPARE(result.objects.first().subIndexCount, quint8(2));
    QCOMPARE(result.findings,
             (QStringList{
                 "1: The object 0x2100 has sub-indices but no section of its own; it is read as a RECORD."}));
}

void TestEdsParser::wrongNumbersOfSubIndicesAreTold_data()
{
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("findings");
    QTest::newRow("right") << QByteArray("SubNumber=0x2\n") << 2 << QStringList();
    QTest::newRow("wrong") << QByteArray("SubNumber=9\n") << 9
                           << QStringList{"4: SubNumber of [2000] is 9, but 2 sub-indices are described."};
    QTest::newRow("missing") << QByteArray() << 2
                             << QStringList{"1: [2000] has no SubNumber; 2 sub-indices are described."};
    QTest::newRow("no number")
        << QByteArray("SubNumber=two\n") << 2
        << QStringList{"4: SubNumber is \"two\", which is no number up to 255; it is left out.",
                       "1: [2000] has no SubNumber; 2 sub-indices are described."};
}

void TestEdsParser::wrongNumbersOfSubIndicesAreTold()
{
    QFETCH(QByteArray, entry);
    const Result result = load("[2000]\nParameterName=Data\nObjectType=9\n" + entry
                               + "[2000sub0]\nParameterName=Count\nDataType=5\nAccessType=ro\n"
                                 "[2000sub5]\nParameterName=Fifth\nDataType=5\nAccessType=ro\n");
    QTEST(int(result.objects.first().subIndexCount), "count");
    QTEST(result.findings, "findings");
    QCOMPARE(result.subIndices.size(), 2);
}

void TestEdsParser::listsOfObjectsAreComparedWithTheSections()
{
    const Result result = load("[MandatoryObjects]\nSupportedObjects=2\n1=0x1000\n2=0x1001\n3=what\n"
                               "[OptionalObjects]\nSupportedObjects=0\n"
                               "[1000]\nParameterName=Device type\nDataType=7\nAccessType=ro\n"
                               "[2000]\nParameterName=Extra\nDataType=7\nAccessType=ro\n");
    QCOMPARE(result.order, (QStringList{"1000", "1000sub0", "2000", "2000sub0"}));
    QCOMPARE(result.findings,
             (QStringList{"4: The object 0x1001 is listed in [MandatoryObjects], but not described.",
                          "5: \"what\" in [MandatoryObjects] is no index.",
                          "12: The object 0x2000 stands in no list of objects."}));
}

void TestEdsParser::aFlatFileHasNoFindings()
{
    const Result result =
        load("; EDS file\n[FileInfo]\nFileName=a.eds\n[MandatoryObjects]\nSupportedObjects=1\n1=0x1000\n"
             "[1000]\nParameterName=Device type\nObjectType=7\nDataType=7\nAccessType=ro\nPDOMapping=0\n");
    QVERIFY(result.loaded);
    QCOMPARE(result.findings, QStringList());
}

void TestEdsParser::aParserReadsOneFileAfterAnother()
{
    EdsParser parser;
    QStringList names;
    connect(&parser, &EdsParser::newIndex, &parser,
            [&](const CANopen::CANopenIndex &object) { names.append(object.name); });
    for (const QByteArray &bytes : {QByteArray("[2000]\nParameterName=One\n?\n"),
                                    QByteArray("[2001]\nParameterName=Two\nDataType=5\nAccessType=ro\n")}) {
        QBuffer buffer;
        buffer.setData(bytes);
        QVERIFY(buffer.open(QIODevice::ReadOnly));
        QVERIFY(parser.LoadEds(buffer, QStringLiteral("memory")));
    }
    QCOMPARE(names, (QStringList{"One", "Two"}));
    QVERIFY(parser.findings().isEmpty());
    QVERIFY(!parser.LoadEds(QStringLiteral("/nonexistent/device.eds")));
    QVERIFY(parser.document().sections().isEmpty());
}

void TestEdsParser::aVariableWithSubIndicesKeepsItsOwnValue()
{
    const Result result =
        load("[2000]\nParameterName=Value\nObjectType=7\nDataType=5\nAccessType=rw\nDefaultValue=3\n"
             "[2000sub1]\nParameterName=Odd\nDataType=6\nAccessType=ro\n");
    QCOMPARE(result.order, (QStringList{"2000", "2000sub0", "2000sub1"}));
    QCOMPARE(result.subIndices.first().defaultValue, QStringLiteral("3"));
}

void TestEdsParser::aValueThatStandsTwiceIsTold()
{
    const Result result = load("[2000]\nParameterName=A\nObjectType=7\nDataType=5\nAccessType=rw\n"
                               "[2000sub0]\nParameterName=B\nDataType=6\nAccessType=ro\n");
    QCOMPARE(result.order, (QStringList{"2000", "2000sub0"}));
    QCOMPARE(result.subIndices.first().name, QStringLiteral("B"));
    QVERIFY(result.findings.contains(
        QStringLiteral("1: [2000] describes a value that stands in line 6 too; that one counts.")));
}

void TestEdsParser::unknownEntriesOfObjectsAreToldOnce()
{
    const QByteArray entries = "ParameterName=A\nDataType=5\nAccessType=rw\nUnit=rpm\n";
    const Result result =
        load("[2000]\n" + entries + "Factor=2\nDOWNLOADFILE=x\n[2001]\n" + entries + "[Tools]\nItems=1\n");
    QCOMPARE(result.findings,
             (QStringList{"5: Unit is no entry of an object; it is left out everywhere.",
                          "6: Factor is no entry of an object; it is left out everywhere.",
                          "7: DOWNLOADFILE names a file, which a project does not hold; it is left out "
                          "everywhere."}));
}

void TestEdsParser::listsOfObjectsThatAreNotCompactAreTold()
{
    const Result result = load("[2000]\nParameterName=A\nDataType=5\nAccessType=rw\n[2000name]\n1=B\n"
                               "[2001]\nParameterName=A\nObjectType=8\nDataType=5\nAccessType=rw\n"
                               "CompactSubObj=1\n[2001Name]\n1=B\n[2001Value]\n1=2\n[2002Denotation]\n1=C\n");
    QCOMPARE(result.findings,
             (QStringList{"5: [2000name] belongs to no object with CompactSubObj and is left out.",
                          "17: [2002Denotation] belongs to no object with CompactSubObj and is left out."}));
}

void TestEdsParser::theValueOfAnObjectWithSubIndicesIsTold()
{
    const Result result =
        load("[2000]\nParameterName=A\nObjectType=9\nSubNumber=1\nDataType=5\nAccessType=rw\n"
             "PDOMapping=0\nLowLimit=\nObjFlags=0x0\n[2000sub0]\nParameterName=B\nDataType=5\n"
             "AccessType=ro\n[2001]\nParameterName=A\nObjectType=8\nDataType=5\nSubNumber=1\n"
             "defaultvalue=7\nObjFlags=2\n[2001sub0]\nParameterName=B\nDataType=5\nAccessType=ro\n");
    QCOMPARE(result.findings,
             (QStringList{"6: [2000] has sub-indices and no value; its AccessType is left out.",
                          "19: [2001] has sub-indices and no value; its defaultvalue is left out.",
                          "20: [2001] has sub-indices and no value; its ObjFlags is left out."}));
}

void TestEdsParser::entriesBeyondACompactObjectAreTold()
{
    const Result result = load("[2000]\nParameterName=A\nObjectType=8\nDataType=5\nAccessType=rw\n"
                               "CompactSubObj=0x2\n[2000Name]\nNrOfEntries=4\n0x2=\"B\"\n3=C\n%3=D\n"
                               "[2001]\nParameterName=E\nObjectType=8\nDataType=5\nAccessType=rw\n"
                               "CompactSubObj=255\n[2001Value]\nNrOfEntries=1\n255=1\n");
    QCOMPARE(
        result.findings,
        (QStringList{"17: CompactSubObj is 255; the object gets 254 entries.",
                     "10: \"3\" in [2000Name] is none of the object's 2 entries; it is left out.",
                     "11: \"%3\" in [2000Name] is none of the object's 2 entries; it is left out.",
                     "8: NrOfEntries of [2000Name] is 4, but 3 entries are listed.",
                     "20: \"255\" in [2001Value] is none of the object's 254 entries; it is left out."}));
    QCOMPARE(result.subIndices[2].name, QStringLiteral("B"));
}

void TestEdsParser::valuesOfACompactObjectTakeTheFormOfTheProject()
{
    const Result result = load("[1601]\nParameterName=A\nObjectType=8\nDataType=7\nAccessType=rw\n"
                               "CompactSubObj=3\n[1601Value]\nNrOfEntries=3\n1=0x10\n2=20h\n3=none\n");
    QCOMPARE(result.subIndices[1].parameterValue, QStringLiteral("0x10"));
    QCOMPARE(result.subIndices[2].parameterValue, QStringLiteral("0x20"));
    QCOMPARE(result.findings,
             (QStringList{"10: 2 of [1601Value]: \"20h\" is read as 0x20.",
                          "11: 3 of [1601Value]: \"none\" is not a number."}));
}

void TestEdsParser::placeMarkersInTextsStayAsTheyAre()
{
    const Result result = load("[2000]\nParameterName=Load %2\nObjectType=8\nDataType=5\nAccessType=rw\n"
                               "CompactSubObj=1\nPDOMapping=%2\nObjFlags=%3\n%2=1\n%2=2\n[%2]\n[%2]\n");
    QCOMPARE(result.subIndices[1].name, QStringLiteral("Load %2 1"));
    for (const char *finding : {"7: PDOMapping is \"%2\"; it is read as 0.",
                                "8: ObjFlags is \"%3\", which is no number up to 4294967295; it is left out.",
                                "10: %2 exists already in line 9; this value is left out.",
                                "12: The section [%2] exists already in line 11; both are read as one."})
        QVERIFY2(result.findings.contains(QLatin1StringView(finding)),
                 qPrintable(result.findings.join(QLatin1Char('\n'))));
}

void TestEdsParser::aVariableWithoutNameIsToldOnce()
{
    QCOMPARE(load("[2000]\nDataType=5\nAccessType=rw\n").findings,
             QStringList{"1: The object 0x2000 has no name."});
}

void TestEdsParser::recordsTellWhereTheyStand()
{
    const Result result =
        load("\n[2000]\nParameterName=A\nObjectType=9\nSubNumber=1\n\n;;Text\n[2000sub0]\n"
             "ParameterName=B\nDataType=5\nAccessType=ro\n;;Cells\n[2001]\nParameterName=C\n"
             "ObjectType=8\nDataType=5\nAccessType=ro\nCompactSubObj=1\n");
    QCOMPARE(result.objects.first().line, 2);
    QCOMPARE(result.subIndices.first().line, 8);
    QCOMPARE(result.objects.first().description, QString());
    QCOMPARE(result.subIndices.first().description, QStringLiteral("Text"));
    QCOMPARE(result.objects.last().description, QStringLiteral("Cells"));
    QCOMPARE(result.subIndices.last().line, 13);
    QCOMPARE(result.subIndices.last().description, QString());
}

void TestEdsParser::aFileWithTooManyEntriesIsRefused()
{
    QByteArray bytes = "[2000]\nParameterName=A\n";
    for (qsizetype entry = 0; entry <= EdsDocument::mostItems; ++entry)
        bytes += QByteArray::number(entry) + "=\n";
    const Result result = load(bytes + "[2001]\n");
    QVERIFY(!result.loaded);
    QCOMPARE(result.objects.size(), 0);
}

QTEST_GUILESS_MAIN(TestEdsParser)
#include "tst_edsparser.moc"
