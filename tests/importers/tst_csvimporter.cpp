#include "canopen/CANTypes.h"
#include "importers/CsvDesk.h"

using namespace Qt::StringLiterals;

/** The table format: its header, and the columns of its rows. */
class TestCsvImporter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { ImporterTest::prepareApplication(); }
    void theHeaderIsReadInAnyOrderCaseAndSeparator_data();
    void theHeaderIsReadInAnyOrderCaseAndSeparator();
    void emptyLinesAndCommentsAreSkipped();
    void allColumnsReachTheSubIndex();
    void anAbsentColumnTakesItsDefault();
    void anEmptyFieldTakesItsDefault();
    void theAccessTypeIsReadInAnyCase_data();
    void theAccessTypeIsReadInAnyCase();
    void theImplementationFollowsWordAndAccess_data();
    void theImplementationFollowsWordAndAccess();
    void anApplicationVariableWithoutNameGetsOne_data();
    void anApplicationVariableWithoutNameGetsOne();
    void theDataTypeIsReadInAnyCase_data();
    void theDataTypeIsReadInAnyCase();
    void theMappingIsReadInAnyCase_data();
    void theMappingIsReadInAnyCase();
    void onlyYesSetsAFlag_data();
    void onlyYesSetsAFlag();
    void nonVolatileStorageIsAFlag_data();
    void nonVolatileStorageIsAFlag();
    void theDefaultFlagsHaveTheirOwnColumns_data();
    void theDefaultFlagsHaveTheirOwnColumns();
    void objectsGetANameFromTheRow_data();
    void objectsGetANameFromTheRow();
    void theObjectCodeOfTheRowMakesTheObject_data();
    void theObjectCodeOfTheRowMakesTheObject();
    void anObjectThatIsThereStaysAsItIs();
    void aHeadRowDescribesTheObjectAndNoSubIndex();
    void aHeadRowDescribesAnObjectThatIsThere();
    void arraysAndRecordsGetASubIndex0_data();
    void arraysAndRecordsGetASubIndex0();
    void theSubIndex0OfTheFileCounts_data();
    void theSubIndex0OfTheFileCounts();
    void aSubIndex0ThatIsThereStays();
    void aVirtualRowMakesAVirtualSubIndex0();
    void anArrayWithoutHeadRowHasTheTypeOfItsElements();
    void theRangeChoosesTheObjects();
    void aRowThatComesTwiceCountsWithItsLastValues();
    void decimalCommasOfRealValuesBecomePoints_data();
    void decimalCommasOfRealValuesBecomePoints();
    void theLineBreakMarkOfDescriptionsIsTurnedBack();
    void blanksBehindTypedSeparatorsAreNoData();
    void everyObjectIsToldOnce();
    void aRowForAnotherLineIsReadIntoTheImportsLine();
};

void TestCsvImporter::theHeaderIsReadInAnyOrderCaseAndSeparator_data()
{
    QTest::addColumn<QByteArray>("table");
    QTest::newRow("plain") << QByteArray("index,sub,edsname\n0x2000,1,Speed\n");
    QTest::newRow("upper case and semicolons") << QByteArray("Index;Sub;EDSName\n0x2000;1;Speed\n");
    QTest::newRow("other order") << QByteArray("edsname,index,sub\nSpeed,0x2000,1\n");
    QTest::newRow("unknown columns") << QByteArray("x,index,unit,sub,edsname\n9,0x2000,m/s,1,Speed\n");
    QTest::newRow("blanks around") << QByteArray(" Index , Sub , EDSname \n0x2000,1,Speed\n");
    QTest::newRow("decimal index") << QByteArray("index,sub,edsname\n8192,0x01,Speed\n");
    QTest::newRow("same column twice") << QByteArray("index,sub,edsname,edsname\n0x2000,1,Speed,Slow\n");
    QTest::newRow("quoted everywhere")
        << QByteArray("\"index\",\"sub\",\"edsname\"\n\"0x2000\",\"1\",\"Speed\"\n");
    QTest::newRow("told separator") << QByteArray("sep=;\nindex;sub;edsname\n0x2000;1;Speed\n");
}

void TestCsvImporter::theHeaderIsReadInAnyOrderCaseAndSeparator()
{
    QFETCH(QByteArray, table);
    CsvDesk desk;
    QVERIFY(desk.importBytes(table));
    QCOMPARE(desk.rows(), QStringList{u"2000:01"_s});
    QCOMPARE(desk.sub(0x2000, 1).name, u"Speed"_s);
    QCOMPARE(desk.errors(), QStringList());
    QCOMPARE(desk.remarks(), QStringList());
}

void TestCsvImporter::emptyLinesAndCommentsAreSkipped()
{
    CsvDesk desk;
    QVERIFY(
        desk.importBytes("\n# a comment, before the header\n\n#\nindex,sub\n\n#0x2000,0\n0x2001,0\n   \n,,,\n"
                         "#x\n0x2002,0"));
    QCOMPARE(desk.rows(), (QStringList{u"2001:00"_s, u"2002:00"_s}));
    QCOMPARE(desk.remarks(), QStringList());
}

void TestCsvImporter::allColumnsReachTheSubIndex()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes(
        "index,sub,objectcode,datatype,edsname,varname,access,mapable,hasdefault,defaultineds,value,"
        "description,size,implementation,haslimit,lowlimit,uplimit,nvstorage,refuseread,refusewrite\n"
        "0x2000,0,VARIABLE,UNSIGNED16,Speed,speed,rww,RPDO,yes,yes,0x10,How fast,2,Variable,yes,1,99,yes,yes,"
        "yes\n"));
    const ObjectDataBase::SUBINDEX_DATA_T expected{
        .name = u"Speed"_s,
        .datatype = CAN::Unsigned16,
        .accesstype = u"rww"_s,
        .defaultvalue = u"0x10"_s,
        .pdomapping = PDOMapping(PDOMapping::RPDO),
        .lowlimit = u"1"_s,
        .uplimit = u"99"_s,
        .size = 2,
        .defaultineds = true,
        .limitineds = true,
        .refuseread = true,
        .refusewrite = true,
        .allowedaccesstypes = u"const,ro,rw,wo,rww,rwr"_s,
        .implementation = CANopen::ApplicationVariable,
        .description = u"How fast"_s,
        .varname = u"speed"_s,
        .writedefaulttoeds = 1,
        .nvstorage = true,
    };
    QVERIFY(desk.sub(0x2000) == expected);
    const auto object = desk.object(0x2000);
    QCOMPARE(object.name, u"Speed"_s);
    QCOMPARE(object.objecttype, int(CANopen::Var));
    QCOMPARE(object.datatype, int(CAN::Unsigned16));
}

void TestCsvImporter::anAbsentColumnTakesItsDefault()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes("index\n0x2000\n"));
    QCOMPARE(desk.rows(), QStringList{u"2000:00"_s});
    const ObjectDataBase::SUBINDEX_DATA_T expected{
        .accesstype = u"ro"_s,
        .allowedaccesstypes = u"const,ro,rw,wo,rww,rwr"_s,
        .implementation = CANopen::ManagedVariable,
    };
    QVERIFY(desk.sub(0x2000) == expected);
    QCOMPARE(desk.object(0x2000).objecttype, int(CANopen::Var));
    QCOMPARE(desk.remarks(), QStringList());
}

void TestCsvImporter::anEmptyFieldTakesItsDefault()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes("index,sub,objectcode,datatype,access,mapable,value,size,implementation\n"
                             "0x2000,,,,,,,,\n0x2001\n"));
    for (const quint16 index : {quint16(0x2000), quint16(0x2001)}) {
        const auto sub = desk.sub(index);
        QCOMPARE(sub.accesstype, u"rw"_s);
        QCOMPARE(sub.datatype, 0);
        QCOMPARE(sub.size, 0);
        QCOMPARE(sub.implementation, int(CANopen::ManagedVariable));
        QCOMPARE(sub.pdomapping.toUInt(), quint8(PDOMapping::Forbidden));
        QCOMPARE(desk.object(index).objecttype, int(CANopen::Var));
    }
    QCOMPARE(desk.remarks(), QStringList());
}

void TestCsvImporter::theAccessTypeIsReadInAnyCase_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("access");
    QTest::addColumn<int>("remarks");
    for (const char *word : {"const", "ro", "rw", "wo", "rww", "rwr"})
        QTest::newRow(word) << QByteArray(word).toUpper() << QString::fromLatin1(word) << 0;
    QTest::newRow("blanks") << QByteArray(" Ro ") << u"ro"_s << 0;
    QTest::newRow("none") << QByteArray() << u"rw"_s << 0;
    QTest::newRow("unknown") << QByteArray("sometimes") << u"rw"_s << 1;
}

void TestCsvImporter::theAccessTypeIsReadInAnyCase()
{
    QFETCH(QByteArray, text);
    QFETCH(int, remarks);
    CsvDesk desk;
    QVERIFY(desk.importBytes("index,access\n0x2000," + text + "\n"));
    QTEST(desk.sub(0x2000).accesstype, "access");
    QCOMPARE(desk.remarks().size(), remarks);
}

void TestCsvImporter::theImplementationFollowsWordAndAccess_data()
{
    QTest::addColumn<QByteArray>("word");
    QTest::addColumn<QByteArray>("access");
    QTest::addColumn<int>("implementation");
    const auto row = [](const char *word, const char *access, int implementation) {
        QTest::addRow("%s %s", word, access) << QByteArray(word) << QByteArray(access) << implementation;
    };
    row("virtualobject", "rw", CANopen::VirtualObject);
    row("VirtualObject", "ro", CANopen::VirtualObject);
    row("Virtual Object", "ro", CANopen::VirtualObject);
    row("Variable", "rw", CANopen::ApplicationVariable);
    row("Application Variable", "rw", CANopen::ApplicationVariable);
    row("ManagedVariable", "rw", CANopen::ManagedVariable);
    row("ManagedConst", "ro", CANopen::ManagedConst);
    row("none", "rw", CANopen::ManagedVariable);
    row("none", "const", CANopen::ManagedConst);
    row("Variable", "CONST", CANopen::ManagedConst);
    row("VirtualObject", "const", CANopen::ManagedConst);
    row("somehow", "rw", CANopen::ManagedVariable);
}

void TestCsvImporter::theImplementationFollowsWordAndAccess()
{
    QFETCH(QByteArray, word);
    QFETCH(QByteArray, access);
    CsvDesk desk;
    QVERIFY(desk.importBytes("index,access,implementation\n0x2000," + access + "," + word + "\n"));
    QTEST(desk.sub(0x2000).implementation, "implementation");
    QCOMPARE(desk.remarks().size(), word == "somehow" ? 1 : 0);
}

void TestCsvImporter::anApplicationVariableWithoutNameGetsOne_data()
{
    QTest::addColumn<QByteArray>("fields");
    QTest::addColumn<QString>("variable");
    QTest::newRow("empty") << QByteArray("0x201A,0x0B,,Variable") << u"v_201a0b"_s;
    QTest::newRow("blank") << QByteArray("0x201A,0x0B, ,Variable") << u"v_201a0b"_s;
    QTest::newRow("given") << QByteArray("0x201A,0x0B,speed,Variable") << u"speed"_s;
    QTest::newRow("managed variable") << QByteArray("0x201A,0x0B,,ManagedVariable") << QString();
    QTest::newRow("virtual") << QByteArray("0x201A,0x0B,,VirtualObject") << QString();
}

void TestCsvImporter::anApplicationVariableWithoutNameGetsOne()
{
    QFETCH(QByteArray, fields);
    CsvDesk desk;
    QVERIFY(desk.importBytes("index,sub,varname,implementation\n" + fields + "\n"));
    QTEST(desk.sub(0x201A, 11).varname, "variable");
}

void TestCsvImporter::theDataTypeIsReadInAnyCase_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("remarks");
    QTest::newRow("upper case") << QByteArray("UNSIGNED8") << int(CAN::Unsigned8) << 0;
    QTest::newRow("lower case") << QByteArray("visible_string") << int(CAN::VisibleString) << 0;
    QTest::newRow("number") << QByteArray("0x0007") << int(CAN::Unsigned32) << 0;
    QTest::newRow("none") << QByteArray() << 0 << 0;
    QTest::newRow("unknown") << QByteArray("UNSIGNED9000") << 0 << 1;
}

void TestCsvImporter::theDataTypeIsReadInAnyCase()
{
    QFETCH(QByteArray, text);
    QFETCH(int, remarks);
    CsvDesk desk;
    QVERIFY(desk.importBytes("index,datatype\n0x2000," + text + "\n"));
    QTEST(desk.sub(0x2000).datatype, "type");
    QTEST(desk.object(0x2000).datatype, "type");
    QCOMPARE(desk.remarks().size(), remarks);
}

void TestCsvImporter::theMappingIsReadInAnyCase_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("mapping");
    QTest::addColumn<int>("remarks");
    for (int type = PDOMapping::Forbidden; type <= PDOMapping::TPDO; ++type) {
        const QByteArray word = PDOMapping(type).getCSVStringValue().toLatin1();
        QTest::newRow(word.constData()) << word << type << 0;
        QTest::newRow(word.toLower().constData()) << word.toLower() << type << 0;
    }
    QTest::newRow("empty") << QByteArray() << int(PDOMapping::Forbidden) << 0;
    QTest::newRow("unknown") << QByteArray("perhaps") << int(PDOMapping::Forbidden) << 1;
}

void TestCsvImporter::theMappingIsReadInAnyCase()
{
    QFETCH(QByteArray, text);
    QFETCH(int, remarks);
    CsvDesk desk;
    QVERIFY(desk.importBytes("index,mapable\n0x2000," + text + "\n"));
    QTEST(int(desk.sub(0x2000).pdomapping.toUInt()), "mapping");
    QCOMPARE(desk.remarks().size(), remarks);
}

void TestCsvImporter::onlyYesSetsAFlag_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("set");
    QTest::newRow("yes") << QByteArray("yes") << true;
    QTest::newRow("Yes") << QByteArray(" Yes") << true;
    QTest::newRow("no") << QByteArray("no") << false;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("1") << QByteArray("1") << false;
}

void TestCsvImporter::onlyYesSetsAFlag()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, set);
    CsvDesk desk;
    QVERIFY(desk.importBytes("index,hasdefault,defaultineds,haslimit\n0x2000," + text + ",,\n0x2001,," + text
                             + ",\n0x2002,,," + text + "\n"));
    QCOMPARE(desk.sub(0x2000).defaultineds, set);
    QCOMPARE(desk.sub(0x2001).writedefaulttoeds != 0, set);
    QCOMPARE(desk.sub(0x2002).limitineds, set);
    QVERIFY(!desk.sub(0x2001).defaultineds && !desk.sub(0x2002).defaultineds);
}

void TestCsvImporter::nonVolatileStorageIsAFlag_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("set");
    for (const char *word : {"yes", "1", "true", "YES"})
        QTest::newRow(word) << QByteArray(word) << true;
    for (const char *word : {"no", "0", "false", ""})
        QTest::addRow("not '%s'", word) << QByteArray(word) << false;
}

void TestCsvImporter::nonVolatileStorageIsAFlag()
{
    QFETCH(QByteArray, text);
    CsvDesk desk;
    QVERIFY(desk.importBytes("index,nvstorage\n0x2000," + text + "\n"));
    QTEST(desk.sub(0x2000).nvstorage, "set");
}

void TestCsvImporter::theDefaultFlagsHaveTheirOwnColumns_data()
{
    QTest::addColumn<QByteArray>("table");
    QTest::addColumn<bool>("hasDefault");
    QTest::addColumn<int>("inEds");
    QTest::newRow("both") << QByteArray("index,hasdefault,defaultineds\n0x2000,yes,yes\n") << true << 1;
    QTest::newRow("default only") << QByteArray("index,hasdefault,defaultineds\n0x2000,yes,no\n") << true
                                  << 0;
    QTest::newRow("EDS only") << QByteArray("index,hasdefault,defaultineds\n0x2000,no,yes\n") << false << 1;
    QTest::newRow("no column of the default") << QByteArray("index,defaultineds\n0x2000,yes\n") << true << 1;
    QTest::newRow("no column of the EDS") << QByteArray("index,hasdefault\n0x2000,yes\n") << true << 0;
}

void TestCsvImporter::theDefaultFlagsHaveTheirOwnColumns()
{
    QFETCH(QByteArray, table);
    CsvDesk desk;
    QVERIFY(desk.importBytes(table));
    QTEST(desk.sub(0x2000).defaultineds, "hasDefault");
    QTEST(int(desk.sub(0x2000).writedefaulttoeds), "inEds");
}

void TestCsvImporter::objectsGetANameFromTheRow_data()
{
    QTest::addColumn<QByteArray>("table");
    QTest::addColumn<QString>("object");
    QTest::addColumn<QString>("sub");
    QTest::newRow("named") << QByteArray("index,edsname\n0x201F,Speed\n") << u"Speed"_s << u"Speed"_s;
    QTest::newRow("empty name") << QByteArray("index,edsname\n0x201F,\n") << u"Object_201f"_s << QString();
    QTest::newRow("short row") << QByteArray("index,edsname\n0x201F\n") << u"Object_201f"_s << QString();
    QTest::newRow("no column") << QByteArray("index,sub\n0x201F,0\n") << u"unnamed object"_s << QString();
}

void TestCsvImporter::objectsGetANameFromTheRow()
{
    QFETCH(QByteArray, table);
    CsvDesk desk;
    QVERIFY(desk.importBytes(table));
    QTEST(desk.object(0x201F).name, "object");
    QTEST(desk.sub(0x201F).name, "sub");
}

void TestCsvImporter::theObjectCodeOfTheRowMakesTheObject_data()
{
    QTest::addColumn<QByteArray>("code");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("remarks");
    QTest::newRow("VARIABLE") << QByteArray("VARIABLE") << int(CANopen::Var) << 0;
    QTest::newRow("VAR") << QByteArray("var") << int(CANopen::Var) << 0;
    QTest::newRow("ARRAY") << QByteArray("Array") << int(CANopen::Array) << 0;
    QTest::newRow("RECORD") << QByteArray("RECORD") << int(CANopen::Record) << 0;
    QTest::newRow("empty") << QByteArray() << int(CANopen::Var) << 0;
    QTest::newRow("unknown") << QByteArray("thing") << int(CANopen::Var) << 1;
}

void TestCsvImporter::theObjectCodeOfTheRowMakesTheObject()
{
    QFETCH(QByteArray, code);
    QFETCH(int, remarks);
    CsvDesk desk;
    QVERIFY(desk.importBytes("index,sub,objectcode\n0x2000,1," + code + "\n"));
    QTEST(desk.object(0x2000).objecttype, "type");
    QCOMPARE(desk.remarks().size(), remarks);
}

void TestCsvImporter::anObjectThatIsThereStaysAsItIs()
{
    CsvDesk desk;
    const ObjectDataBase::INDEX_DATA_T own{
        .name = u"own"_s, .datatype = CAN::Unsigned8, .objecttype = CANopen::Record, .category = 2};
    QVERIFY(desk.store().addIndex(CsvDesk::line, 0x2000, own));
    QVERIFY(desk.store().addSubIndex(CsvDesk::line, 0x2000, 1, {.name = u"old"_s, .size = 5}));
    QVERIFY(desk.store().addSubIndex(CsvDesk::line, 0x2000, 2, {.name = u"kept"_s}));
    QVERIFY(desk.importBytes("index,sub,edsname,objectcode\n0x2000,1,new,VARIABLE\n"));
    QVERIFY(desk.object(0x2000) == own);
    QCOMPARE(desk.sub(0x2000, 1).name, u"new"_s);
    QCOMPARE(desk.sub(0x2000, 1).size, 0);
    QCOMPARE(desk.sub(0x2000, 2).name, u"kept"_s);
    QVERIFY(desk.importer().importedObjects().contains(0x2000));
}

void TestCsvImporter::aHeadRowDescribesTheObjectAndNoSubIndex()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes("index,sub,objectcode,datatype,edsname,description\n"
                             "0x2000,,ARRAY,UNSIGNED16,Speeds,All speeds\n"
                             "0x2000,0,VARIABLE,UNSIGNED8,Count,\n"
                             "0x2000,1,VARIABLE,UNSIGNED16,First,\n"));
    QCOMPARE(desk.rows(), (QStringList{u"2000:00"_s, u"2000:01"_s}));
    const auto object = desk.object(0x2000);
    QCOMPARE(object.name, u"Speeds"_s);
    QCOMPARE(object.objecttype, int(CANopen::Array));
    QCOMPARE(object.datatype, int(CAN::Unsigned16));
    QCOMPARE(object.description, u"All speeds"_s);
    QCOMPARE(desk.sub(0x2000, 0).name, u"Count"_s);
    QCOMPARE(desk.sub(0x2000, 1).name, u"First"_s);
}

void TestCsvImporter::aHeadRowDescribesAnObjectThatIsThere()
{
    CsvDesk desk;
    QVERIFY(desk.store().addIndex(CsvDesk::line, 0x2000, {.name = u"old"_s, .objecttype = CANopen::Var}));
    QVERIFY(
        desk.importBytes("index,sub,objectcode,datatype,edsname\n0x2000,,RECORD,,Motor\n0x2000,1,,,Speed\n"));
    QCOMPARE(desk.object(0x2000).name, u"Motor"_s);
    QCOMPARE(desk.object(0x2000).objecttype, int(CANopen::Record));
    QCOMPARE(desk.rows(), (QStringList{u"2000:00"_s, u"2000:01"_s}));
}

void TestCsvImporter::arraysAndRecordsGetASubIndex0_data()
{
    QTest::addColumn<QByteArray>("rows");
    QTest::addColumn<QString>("count");
    QTest::newRow("record") << QByteArray("0x2000,1,RECORD\n0x2000,3,RECORD\n") << u"3"_s;
    QTest::newRow("array with head row") << QByteArray("0x2000,,ARRAY\n0x2000,2,\n") << u"2"_s;
    QTest::newRow("highest possible") << QByteArray("0x2000,255,ARRAY\n") << u"255"_s;
    QTest::newRow("head row only") << QByteArray("0x2000,,ARRAY\n") << u"0"_s;
}

void TestCsvImporter::arraysAndRecordsGetASubIndex0()
{
    QFETCH(QByteArray, rows);
    QFETCH(QString, count);
    CsvDesk desk;
    QVERIFY(desk.importBytes("index,sub,objectcode\n" + rows));
    const auto sub = desk.sub(0x2000);
    QCOMPARE(sub.name, u"Highest Subindex supported"_s);
    QCOMPARE(sub.datatype, int(CAN::Unsigned8));
    QCOMPARE(sub.accesstype, u"ro"_s);
    QCOMPARE(sub.defaultvalue, count);
    QVERIFY(sub.defaultineds);
    QCOMPARE(sub.implementation, int(CANopen::ManagedVariable));
}

void TestCsvImporter::theSubIndex0OfTheFileCounts_data()
{
    QTest::addColumn<QByteArray>("rows");
    QTest::newRow("first") << QByteArray("0x2000,0,ARRAY,Entries\n0x2000,1,ARRAY,One\n");
    QTest::newRow("last") << QByteArray("0x2000,1,ARRAY,One\n0x2000,0,ARRAY,Entries\n");
}

void TestCsvImporter::theSubIndex0OfTheFileCounts()
{
    QFETCH(QByteArray, rows);
    CsvDesk desk;
    QVERIFY(desk.importBytes("index,sub,objectcode,edsname\n" + rows));
    QCOMPARE(desk.sub(0x2000).name, u"Entries"_s);
    QCOMPARE(desk.rows().size(), 2);
}

void TestCsvImporter::aSubIndex0ThatIsThereStays()
{
    CsvDesk desk;
    QVERIFY(desk.store().addIndex(CsvDesk::line, 0x2000, {.objecttype = CANopen::Record}));
    QVERIFY(desk.store().addSubIndex(CsvDesk::line, 0x2000, 0, {.name = u"own count"_s}));
    QVERIFY(desk.importBytes("index,sub\n0x2000,1\n"));
    QCOMPARE(desk.sub(0x2000).name, u"own count"_s);
    QVERIFY(desk.store().removeSubIndex(CsvDesk::line, 0x2000, 0));
    QVERIFY(desk.store().addSubIndex(CsvDesk::line, 0x2000, 7, {}));
    QVERIFY(desk.importBytes("index,sub\n0x2000,1\n"));
    QCOMPARE(desk.sub(0x2000).name, u"Highest Subindex supported"_s);
    QCOMPARE(desk.sub(0x2000).defaultvalue, u"7"_s);
}

void TestCsvImporter::aVirtualRowMakesAVirtualSubIndex0()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes("index,sub,objectcode,implementation\n0x2000,1,RECORD,VirtualObject\n"
                             "0x2001,1,RECORD,Variable\n"));
    QCOMPARE(desk.sub(0x2000).implementation, int(CANopen::VirtualObject));
    QCOMPARE(desk.sub(0x2001).implementation, int(CANopen::ManagedVariable));
}

void TestCsvImporter::anArrayWithoutHeadRowHasTheTypeOfItsElements()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes("index,sub,objectcode,datatype\n0x2000,0,ARRAY,UNSIGNED8\n"
                             "0x2000,1,ARRAY,UNSIGNED32\n0x2001,1,RECORD,UNSIGNED32\n"));
    QCOMPARE(desk.object(0x2000).datatype, int(CAN::Unsigned32));
    QCOMPARE(desk.object(0x2001).datatype, 0);
}

void TestCsvImporter::theRangeChoosesTheObjects()
{
    CsvDesk desk;
    desk.importer().setRange(0x2000, 0x2002);
    QVERIFY(desk.importBytes("index\n0x1FFF\n0x2000\n0x2002\n0x2003\n0xFFFF\n0\n"));
    QCOMPARE(desk.rows(), (QStringList{u"2000:00"_s, u"2002:00"_s}));
    QCOMPARE(desk.remarks(), QStringList{u" 4 rows outside of the range 0x2000 to 0x2002 are left out"_s});
}

void TestCsvImporter::aRowThatComesTwiceCountsWithItsLastValues()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes("index,sub,edsname\n0x2000,1,one\n0x2000,2,x\n0x2000,1,two\n"));
    QCOMPARE(desk.rows(), (QStringList{u"2000:01"_s, u"2000:02"_s}));
    QCOMPARE(desk.sub(0x2000, 1).name, u"two"_s);
    QCOMPARE(desk.remarks(), QStringList{u"4: 0x2000:1 comes again, the last row counts"_s});
}

void TestCsvImporter::decimalCommasOfRealValuesBecomePoints_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("value");
    QTest::newRow("REAL32") << QByteArray("REAL32") << QByteArray("-1,5") << u"-1.5"_s;
    QTest::newRow("REAL64 with exponent") << QByteArray("REAL64") << QByteArray("1,25E+3") << u"1.25E+3"_s;
    QTest::newRow("no number") << QByteArray("REAL32") << QByteArray("1,2,3") << u"1,2,3"_s;
    QTest::newRow("a point stays") << QByteArray("REAL32") << QByteArray("0.5") << u"0.5"_s;
    QTest::newRow("a text") << QByteArray("VISIBLE_STRING") << QByteArray("1,5") << u"1,5"_s;
}

void TestCsvImporter::decimalCommasOfRealValuesBecomePoints()
{
    QFETCH(QByteArray, type);
    QFETCH(QByteArray, text);
    CsvDesk desk;
    QVERIFY(desk.importBytes("index;datatype;value;lowlimit;uplimit\n0x2000;" + type + ";" + text + ";" + text
                             + ";" + text + "\n"));
    const auto sub = desk.sub(0x2000);
    QTEST(sub.defaultvalue, "value");
    QTEST(sub.lowlimit, "value");
    QTEST(sub.uplimit, "value");
}

void TestCsvImporter::theLineBreakMarkOfDescriptionsIsTurnedBack()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes("index,edsname,description\n0x2000,a<br>b,first<br>second\n"));
    QCOMPARE(desk.sub(0x2000).description, u"first\nsecond"_s);
    QCOMPARE(desk.sub(0x2000).name, u"a<br>b"_s);
}

void TestCsvImporter::blanksBehindTypedSeparatorsAreNoData()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes("index, sub, edsname, value\n0x2000, 1, Speed, 0x10\n"));
    QCOMPARE(desk.sub(0x2000, 1).name, u"Speed"_s);
    QCOMPARE(desk.sub(0x2000, 1).defaultvalue, u"0x10"_s);
    QVERIFY(desk.importBytes("index,sub,edsname\n0x2000,1, Speed \n"));
    QCOMPARE(desk.sub(0x2000, 1).name, u" Speed "_s);
}

void TestCsvImporter::everyObjectIsToldOnce()
{
    CsvDesk desk;
    QVERIFY(desk.importBytes("index,sub\n0x2001,0\n0x2000,0\n0x2001,1\n0x2000,1\n"));
    QCOMPARE(desk.newObjects().size(), 2);
    QCOMPARE(desk.newObjects().constFirst().index, 0x2000);
    QCOMPARE(desk.importer().importedObjects().keys(), (QList<quint16>{0x2000, 0x2001}));
    QVERIFY(desk.importBytes("index,sub\n0x2005,0\n"));
    QCOMPARE(desk.importer().importedObjects().keys(), QList<quint16>{0x2005});
}

void TestCsvImporter::aRowForAnotherLineIsReadIntoTheImportsLine()
{
    CsvDesk desk;
    const QByteArray table("index,line\n0x2000,1\n0x2001,\n0x2002,0\n");
    QVERIFY(desk.importBytes(table));
    QCOMPARE(desk.rows().size(), 3);
    QCOMPARE(desk.remarks(), QStringList());
    desk.importer().setLine(0);
    QVERIFY(desk.importBytes(table));
    QCOMPARE(ImporterTest::rows(desk.store(), 0), (QStringList{u"2000:00"_s, u"2001:00"_s, u"2002:00"_s}));
    QCOMPARE(desk.remarks(), QStringList{u"2: the row is for line \"1\" and is read into line 0"_s});
}

QTEST_GUILESS_MAIN(TestCsvImporter)
#include "tst_csvimporter.moc"
