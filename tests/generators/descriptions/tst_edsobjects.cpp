#include "DescriptionDesk.h"

using namespace Qt::StringLiterals;

namespace {

using Sub = DescriptionDesk::Sub;

constexpr int var = 7;
constexpr int array = 8;
constexpr int record = 9;

Sub value(const QString &name, int dataType = 7)
{
    return DescriptionDesk::sub(name, dataType);
}

/** Words of four letters and a blank behind each. */
QString words(int characters)
{
    return u"word "_s.repeated(characters / 5);
}

} // namespace

/** How objects and sub-indices stand in an EDS file. */
class TestEdsObjects : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void aVariableHasItsEntryInTheObject();
    void aRecordHasSectionsForItsSubIndices();
    void hexadecimalNumbersAreInUpperCase();
    void theObjectTypeIsTheCode_data();
    void theObjectTypeIsTheCode();
    void subIndicesOfAVariableAreNotLost();
    void aVariableWithoutValueHasNoEntry();
    void theDataTypeIsDecimal_data();
    void theDataTypeIsDecimal();
    void theMappingIsBinary_data();
    void theMappingIsBinary();
    void theStorageDecidesOnTheDefault_data();
    void theStorageDecidesOnTheDefault();
    void aByteStringKeepsItsMark();
    void limitsStandOnlyWhereTheyAreChecked();
    void flagsStandOnlyWhereOneIsSet_data();
    void flagsStandOnlyWhereOneIsSet();
    void descriptionsAreCommentsBehindTheirEntry();
    void anObjectTellsItsOwnDescriptionWhereItsValueHasNone();
    void aDescriptionOf600CharactersGivesThreeComments();
    void commentsAreCutAtTheFirstBlankBehind250Characters_data();
    void commentsAreCutAtTheFirstBlankBehind250Characters();
    void anArrayOfDeviceTypesTellsTheDeviceType();
    void aVariantHoldsItsOwnObjectsAndThoseOfAll();
    void aStopEndsTheFileAtTheNextObject();
    void theProgressTellsHeadObjectsAndEnd();
};

void TestEdsObjects::aVariableHasItsEntryInTheObject()
{
    DescriptionDesk desk;
    Sub speed = DescriptionDesk::sub(u"not this name"_s, 6, u"0x10"_s, u"rww"_s);
    speed.pdomapping = PDOMapping(PDOMapping::RPDO);
    desk.object(0x2000, u"Speed"_s, var, {{0, speed}});
    QCOMPARE(desk.section(u"2000"_s),
             QStringList({u"ParameterName=Speed"_s, u"ObjectType=7"_s, u"DataType=6"_s, u"AccessType=rww"_s,
                          u"PDOMapping=1"_s, u"DefaultValue=0x10"_s}));
}

void TestEdsObjects::aRecordHasSectionsForItsSubIndices()
{
    DescriptionDesk desk;
    desk.object(0x1018, u"Identity"_s, record,
                {{0, DescriptionDesk::sub(u"Number"_s, 5, u"1"_s, u"ro"_s)},
                 {1, DescriptionDesk::sub(u"Vendor ID"_s, 7, {}, u"const"_s)}});
    QVERIFY(desk.edsText().endsWith(uR"([1018]
ParameterName=Identity
ObjectType=9
SubNumber=2

[1018sub0]
ParameterName=Number
ObjectType=7
DataType=5
AccessType=ro
PDOMapping=0
DefaultValue=1

[1018sub1]
ParameterName=Vendor ID
ObjectType=7
DataType=7
AccessType=const
PDOMapping=0

)"_s));
}

void TestEdsObjects::hexadecimalNumbersAreInUpperCase()
{
    DescriptionDesk desk;
    desk.object(0x2ABC, u"Array"_s, array,
                {{0, value(u"n"_s)}, {0x0A, value(u"a"_s)}, {0xFE, value(u"b"_s)}});
    const QStringList headers = desk.edsText().split(u'\n').filter(u"[2"_s);
    QCOMPARE(headers, QStringList({u"[2ABC]"_s, u"[2ABCsub0]"_s, u"[2ABCsubA]"_s, u"[2ABCsubFE]"_s}));
}

void TestEdsObjects::theObjectTypeIsTheCode_data()
{
    QTest::addColumn<int>("code");
    QTest::newRow("VAR") << 7;
    QTest::newRow("ARRAY") << 8;
    QTest::newRow("RECORD") << 9;
    QTest::newRow("DOMAIN") << 2;
}

void TestEdsObjects::theObjectTypeIsTheCode()
{
    QFETCH(int, code);
    DescriptionDesk desk;
    desk.object(0x2000, u"Object"_s, code, {{0, value(u"Value"_s)}});
    QCOMPARE(desk.section(u"2000"_s).value(1), u"ObjectType=%1"_s.arg(code));
}

void TestEdsObjects::subIndicesOfAVariableAreNotLost()
{
    DescriptionDesk desk;
    desk.object(0x2000, u"Odd"_s, var, {{0, value(u"a"_s)}, {1, value(u"b"_s)}});
    QCOMPARE(desk.section(u"2000"_s),
             QStringList({u"ParameterName=Odd"_s, u"ObjectType=7"_s, u"SubNumber=2"_s}));
    QCOMPARE(desk.section(u"2000sub1"_s).constFirst(), u"ParameterName=b"_s);
}

void TestEdsObjects::aVariableWithoutValueHasNoEntry()
{
    DescriptionDesk desk;
    desk.object(0x2000, u"Empty"_s, var, {});
    QCOMPARE(desk.section(u"2000"_s), QStringList({u"ParameterName=Empty"_s, u"ObjectType=7"_s}));
}

void TestEdsObjects::theDataTypeIsDecimal_data()
{
    QTest::addColumn<int>("stored");
    QTest::addColumn<QString>("metadata");
    QTest::addColumn<int>("written");
    QTest::newRow("UNSIGNED64") << 27 << QString() << 27;
    QTest::newRow("the last below 100") << 99 << QString() << 99;
    QTest::newRow("100 counts as UNSIGNED8") << 100 << QString() << 5;
    QTest::newRow("UTF-8 string counts as UNSIGNED8") << 124 << QString() << 5;
    QTest::newRow("metadata gives another number") << 7 << u"9"_s << 9;
    QTest::newRow("metadata in hexadecimal") << 7 << u"0x000A"_s << 10;
    QTest::newRow("metadata instead of a stand-in") << 124 << u"9"_s << 9;
    QTest::newRow("metadata may name a type of its own") << 7 << u"0x0040"_s << 64;
    QTest::newRow("metadata with a name") << 7 << u"VISIBLE_STRING"_s << 9;
    QTest::newRow("metadata that is no type") << 7 << u"whatever"_s << 7;
}

void TestEdsObjects::theDataTypeIsDecimal()
{
    QFETCH(int, stored);
    QFETCH(QString, metadata);
    QFETCH(int, written);
    DescriptionDesk desk;
    desk.var(0x2000, value(u"Value"_s, stored));
    if (!metadata.isEmpty())
        desk.setMetadata(0x2000, 0, u"eds_datatype"_s, metadata);
    QCOMPARE(desk.section(u"2000"_s).value(2), u"DataType=%1"_s.arg(written));
}

void TestEdsObjects::theMappingIsBinary_data()
{
    QTest::addColumn<int>("mapping");
    QTest::newRow("Forbidden") << 0;
    QTest::newRow("Allowed") << 1;
    QTest::newRow("Default") << 2;
    QTest::newRow("RPDO") << 3;
    QTest::newRow("TPDO") << 4;
}

void TestEdsObjects::theMappingIsBinary()
{
    QFETCH(int, mapping);
    DescriptionDesk desk;
    Sub sub = value(u"Value"_s);
    sub.pdomapping = PDOMapping(mapping);
    desk.var(0x2000, sub);
    QCOMPARE(desk.section(u"2000"_s).value(4), mapping == 0 ? u"PDOMapping=0"_s : u"PDOMapping=1"_s);
}

void TestEdsObjects::theStorageDecidesOnTheDefault_data()
{
    QTest::addColumn<int>("implementation");
    QTest::addColumn<bool>("isSet");
    QTest::addColumn<int>("inDescription");
    QTest::addColumn<bool>("expected");
    QTest::newRow("managed variable") << 0 << true << 0 << false;
    QTest::newRow("constant with default") << 1 << true << 0 << true;
    QTest::newRow("constant without default") << 1 << false << 0 << false;
    QTest::newRow("application variable") << 2 << false << 0 << true;
    QTest::newRow("virtual object") << 3 << true << 0 << false;
    QTest::newRow("asked for as the default is") << 0 << true << 1 << true;
    QTest::newRow("asked for as the default is not") << 0 << false << 1 << false;
    QTest::newRow("asked for always") << 3 << false << 2 << true;
}

void TestEdsObjects::theStorageDecidesOnTheDefault()
{
    QFETCH(int, implementation);
    QFETCH(bool, isSet);
    QFETCH(int, inDescription);
    QFETCH(bool, expected);
    DescriptionDesk desk;
    Sub sub = value(u"Value"_s);
    sub.defaultvalue = u"$NODEID+0x180"_s;
    sub.implementation = implementation;
    sub.defaultineds = isSet;
    sub.writedefaulttoeds = quint8(inDescription);
    desk.var(0x2000, sub);
    QCOMPARE(desk.section(u"2000"_s).contains(u"DefaultValue=$NODEID+0x180"_s), expected);
    QCOMPARE(desk.edsText().contains(u"DefaultValue="_s), expected);
}

void TestEdsObjects::aByteStringKeepsItsMark()
{
    DescriptionDesk desk;
    desk.var(0x2000, DescriptionDesk::sub(u"Bytes"_s, 10, u"|x00fFA1"_s));
    QCOMPARE(desk.section(u"2000"_s).constLast(), u"DefaultValue=|x00fFA1"_s);
}

void TestEdsObjects::limitsStandOnlyWhereTheyAreChecked()
{
    DescriptionDesk desk;
    Sub sub = value(u"Value"_s);
    sub.lowlimit = u"-5"_s;
    sub.uplimit = u"0x7F"_s;
    desk.var(0x2000, sub);
    sub.limitineds = true;
    desk.var(0x2001, sub);
    QCOMPARE(desk.section(u"2000"_s).filter(u"Limit"_s), QStringList());
    QCOMPARE(desk.section(u"2001"_s).mid(5), QStringList({u"LowLimit=-5"_s, u"HighLimit=0x7F"_s}));
}

void TestEdsObjects::flagsStandOnlyWhereOneIsSet_data()
{
    QTest::addColumn<bool>("read");
    QTest::addColumn<bool>("write");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("none") << false << false << QStringList();
    QTest::newRow("read") << true << false << QStringList(u"ObjFlags=1"_s);
    QTest::newRow("write") << false << true << QStringList(u"ObjFlags=2"_s);
    QTest::newRow("both") << true << true << QStringList(u"ObjFlags=3"_s);
}

void TestEdsObjects::flagsStandOnlyWhereOneIsSet()
{
    QFETCH(bool, read);
    QFETCH(bool, write);
    QFETCH(QStringList, lines);
    DescriptionDesk desk;
    Sub sub = value(u"Value"_s);
    sub.refuseread = read;
    sub.refusewrite = write;
    desk.var(0x2000, sub);
    QCOMPARE(desk.section(u"2000"_s).mid(5), lines);
}

void TestEdsObjects::descriptionsAreCommentsBehindTheirEntry()
{
    DescriptionDesk desk;
    Sub sub = DescriptionDesk::sub(u"Value"_s, 5, u"1"_s);
    sub.description = u"of the value\nin two lines"_s;
    desk.object(0x2000, u"Array"_s, array, {{0, sub}}, u"of the object"_s);
    desk.object(0x2001, u"Variable"_s, var, {{0, sub}}, u"of the object"_s);
    QCOMPARE(desk.section(u"2000"_s).mid(2), QStringList({u"SubNumber=1"_s, u";of the object"_s}));
    const QStringList comments{u"DefaultValue=1"_s, u";of the value"_s, u";in two lines"_s};
    QCOMPARE(desk.section(u"2000sub0"_s).mid(5), comments);
    QCOMPARE(desk.section(u"2001"_s).mid(5), comments);
}

void TestEdsObjects::anObjectTellsItsOwnDescriptionWhereItsValueHasNone()
{
    DescriptionDesk desk;
    desk.object(0x2000, u"Variable"_s, var, {{0, value(u"Value"_s)}}, u"of the object"_s);
    QCOMPARE(desk.section(u"2000"_s).constLast(), u";of the object"_s);
}

void TestEdsObjects::aDescriptionOf600CharactersGivesThreeComments()
{
    DescriptionDesk desk;
    Sub sub = value(u"Value"_s);
    sub.description = words(600).trimmed() + u'.';
    QCOMPARE(sub.description.size(), 600);
    desk.var(0x2000, sub);
    const QStringList comments = desk.section(u"2000"_s).filter(u";"_s);
    QCOMPARE(comments.size(), 3);
    QStringList texts;
    for (const QString &comment : comments)
        texts.append(comment.sliced(1));
    QCOMPARE(texts.join(u' '), sub.description);
}

void TestEdsObjects::commentsAreCutAtTheFirstBlankBehind250Characters_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<int>>("lengths");
    QTest::newRow("250 characters") << QString(250, u'a') << QList<int>{250};
    QTest::newRow("blank behind 250") << QString(QString(250, u'a') + u" b"_s) << QList<int>{250, 1};
    QTest::newRow("blank before 250") << QString(QString(249, u'a') + u" b"_s) << QList<int>{251};
    QTest::newRow("no blank at all") << QString(900, u'a') << QList<int>{900};
    QTest::newRow("the first blank counts")
        << QString(QString(260, u'a') + u' ' + QString(10, u'b') + u" c"_s) << QList<int>{260, 12};
}

void TestEdsObjects::commentsAreCutAtTheFirstBlankBehind250Characters()
{
    QFETCH(QString, text);
    QFETCH(QList<int>, lengths);
    DescriptionDesk desk;
    Sub sub = value(u"Value"_s);
    sub.description = text;
    desk.var(0x2000, sub);
    QList<int> found;
    const QStringList comments = desk.section(u"2000"_s).filter(u";"_s);
    for (const QString &comment : comments)
        found.append(int(comment.size()) - 1);
    QCOMPARE(found, lengths);
}

void TestEdsObjects::anArrayOfDeviceTypesTellsTheDeviceType()
{
    DescriptionDesk desk;
    desk.object(0x1000, u"Device types"_s, array,
                {{0, DescriptionDesk::sub(u"Number"_s, 5, u"2"_s)},
                 {1, DescriptionDesk::sub(u"First"_s, 7, u"0x00020192"_s)}});
    desk.object(0x1001, u"Other array"_s, array, {{0, DescriptionDesk::sub(u"Value"_s, 7, u"1"_s)}});
    QCOMPARE(desk.section(u"1000"_s),
             QStringList({u"; Device type: 0x00020192"_s, u"ParameterName=Device types"_s, u"ObjectType=8"_s,
                          u"SubNumber=2"_s}));
    QCOMPARE(desk.edsText().count(u"Device type:"_s), 1);
}

void TestEdsObjects::aVariantHoldsItsOwnObjectsAndThoseOfAll()
{
    DescriptionDesk desk;
    desk.var(0x2000, value(u"of all"_s));
    desk.var(0x2001, value(u"of north"_s));
    desk.setMetadata(0x2001, u"eds_define"_s, u"north"_s);
    desk.object(0x2002, u"mixed"_s, record, {{0, value(u"n"_s)}, {1, value(u"a"_s)}, {2, value(u"b"_s)}});
    desk.setMetadata(0x2002, 1, u"eds_define"_s, u"north"_s);
    desk.setMetadata(0x2002, 2, u"eds_define"_s, u"North"_s);
    const auto listed = [&desk](const QString &variant) {
        return desk.section(u"ManufacturerObjects"_s, variant).mid(1);
    };
    QCOMPARE(listed({}), QStringList({u"1=0x2000"_s, u"2=0x2002"_s}));
    QCOMPARE(listed(u"north"_s), QStringList({u"1=0x2000"_s, u"2=0x2001"_s, u"3=0x2002"_s}));
    QCOMPARE(desk.section(u"2002"_s).constLast(), u"SubNumber=1"_s);
    QCOMPARE(desk.section(u"2002"_s, u"north"_s).constLast(), u"SubNumber=2"_s);
    QVERIFY(desk.edsText(u"north"_s).contains(u"[2002sub1]"_s));
    QVERIFY(!desk.edsText(u"north"_s).contains(u"[2002sub2]"_s));
    QCOMPARE(desk.section(u"2001"_s), QStringList(u"<no section>"_s));
}

void TestEdsObjects::aStopEndsTheFileAtTheNextObject()
{
    DescriptionDesk desk;
    desk.var(0x2000, value(u"Value"_s));
    desk.store->setMiscSetting(u"AdditionalSections"_s, u"[Extra]"_s);
    const auto generator = desk.generator(DescriptionDesk::eds());
    QCOMPARE(generator->requestStop(), GeneratorStatus::NotRunning);
    QObject::connect(
        generator.get(), &AbstractGenerator::progress, generator.get(),
        [&generator](quint8 percent) {
            if (percent == 25)
                generator->requestStop();
        },
        Qt::DirectConnection);
    QTest::ignoreMessage(QtDebugMsg, "Generation aborted");
    QCOMPARE(generator->startGeneration(), GeneratorStatus::Success);
    generator->waitForEnd();
    QVERIFY(!generator->isFailed());
    const QByteArray text = desk.read(u"pump.eds"_s);
    QVERIFY(text.contains("1=0x2000\n"));
    QVERIFY(!text.contains("[2000]"));
    QVERIFY(!text.contains("[Extra]"));
}

void TestEdsObjects::theProgressTellsHeadObjectsAndEnd()
{
    DescriptionDesk desk;
    desk.var(0x2000, value(u"Value"_s));
    const auto generator = desk.generator(DescriptionDesk::eds());
    QList<int> percents;
    QObject::connect(
        generator.get(), &AbstractGenerator::progress, generator.get(),
        [&percents](quint8 percent) { percents.append(percent); }, Qt::DirectConnection);
    QCOMPARE(generator->startGeneration(), GeneratorStatus::Success);
    generator->waitForEnd();
    QCOMPARE(percents, QList<int>({25, 98, 100}));
    QCOMPARE(generator->objectName(), u"pump.eds"_s);
}

QTEST_GUILESS_MAIN(TestEdsObjects)
#include "tst_edsobjects.moc"
