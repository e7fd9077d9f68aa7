#include "generators/documents/DocumentDesk.h"

using namespace Qt::StringLiterals;

/** The object dictionary as plain text. */
class TestTextDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void aProjectWithoutObjectsHasATitle();
    void objectsAndSubIndicesAreTold();
    void anObjectWithoutNameIsUnnamed();
    void variablesInNamesAreExpanded();
    void aTypeWithoutNameIsItsNumber();
    void aDescriptionOfSeveralLinesHangs();
    void noTextLooksLikeARowOfItsOwn();
    void everyLineHasItsFile();
};

void TestTextDocument::aProjectWithoutObjectsHasATitle()
{
    DocumentDesk desk;
    QCOMPARE(desk.text(), u"CANopen Object Dictionary Documenation for Pump\n"_s);
}

void TestTextDocument::objectsAndSubIndicesAreTold()
{
    DocumentDesk desk;
    desk.object(0x20A1,
                {.name = u"Speeds"_s,
                 .datatype = CAN::Unsigned16,
                 .objecttype = CANopen::Array,
                 .description = u"of all drives"_s},
                {{.name = u"Highest sub-index supported"_s,
                  .datatype = CAN::Unsigned8,
                  .accesstype = u"const"_s,
                  .defaultvalue = u"1"_s}});
    desk.store.addSubIndex(0, 0x20A1, 10,
                           {.name = u"Speed"_s,
                            .datatype = CAN::Unsigned16,
                            .accesstype = u"rww"_s,
                            .defaultvalue = u"$NODEID+5"_s,
                            .pdomapping = PDOMapping::Allowed,
                            .description = u"in 1/min"_s});
    QCOMPARE(desk.text(),
             u"CANopen Object Dictionary Documenation for Pump\n"
             "\n"
             "Index:       0x20a1 Speeds\n"
             "DataType:    UNSIGNED16\n"
             "ObjectCode:  ARRAY\n"
             "Description: of all drives\n"
             "\n"
             "Sub:          0x00 Highest sub-index supported\n"
             "DataType:     UNSIGNED8\n"
             "DefaultValue: 1\n"
             "AccessType:   const\n"
             "PDOMapping:   Forbidden\n"
             "Description:  \n"
             "\n"
             "Sub:          0x0a Speed\n"
             "DataType:     UNSIGNED16\n"
             "DefaultValue: $NODEID+5\n"
             "AccessType:   rww\n"
             "PDOMapping:   Allowed\n"
             "Description:  in 1/min\n"_s);
}

void TestTextDocument::anObjectWithoutNameIsUnnamed()
{
    DocumentDesk desk;
    desk.object(0x2000, {.objecttype = CANopen::Array}, {{}});
    const QString text = desk.text();
    QVERIFY(text.contains("\nIndex:       0x2000 unnamed object\n"_L1));
    QVERIFY(text.contains("\nSub:          0x00 \n"_L1));
}

void TestTextDocument::variablesInNamesAreExpanded()
{
    DocumentDesk desk;
    desk.object(0x2010, {.name = u"Block $I"_s, .objecttype = CANopen::Array},
                {{.name = u"Count"_s}, {.name = u"Output {$s + 0x40}"_s}});
    const QString text = desk.text();
    QVERIFY(text.contains("\nIndex:       0x2010 Block 2010\n"_L1));
    QVERIFY(text.contains("\nSub:          0x01 Output 65\n"_L1));
}

void TestTextDocument::aTypeWithoutNameIsItsNumber()
{
    DocumentDesk desk;
    desk.object(0x2000, {.objecttype = CANopen::Var}, {{.datatype = 4711}});
    QVERIFY(desk.text().contains("\nDataType:     4711\n"_L1));
    QVERIFY(desk.text().contains("\nDataType:    \n"_L1));
}

void TestTextDocument::aDescriptionOfSeveralLinesHangs()
{
    DocumentDesk desk;
    desk.object(0x2000, {.objecttype = CANopen::Var, .description = u"one\r\ntwo"_s},
                {{.description = u"one\n\nthree\rfour"_s}});
    const QString text = desk.text();
    QVERIFY(text.contains("\nDescription: one\n             two\n"_L1));
    QVERIFY(
        text.contains("\nDescription:  one\n              \n              three\n              four\n"_L1));
}

void TestTextDocument::noTextLooksLikeARowOfItsOwn()
{
    DocumentDesk desk;
    const QString text = u"a\r\nIndex:       0x9999\rSub:          0xff\nDataType:     none"_s;
    desk.object(0x2000, {.name = text, .objecttype = CANopen::Var, .description = text},
                {{.name = text, .accesstype = text, .defaultvalue = text, .description = text}});
    const QString document = desk.text();
    QVERIFY(!document.contains(u'\r'));
    QCOMPARE(document.count("\nIndex:"_L1), 1);
    QCOMPARE(document.count("\nSub:"_L1), 1);
    QCOMPARE(document.count("\nDataType:"_L1), 2);
    QCOMPARE(document.count("Index:       0x9999\n"_L1), 6);
}

void TestTextDocument::everyLineHasItsFile()
{
    DocumentDesk desk;
    desk.store.addNode(12, {});
    desk.object(0x2000, {.name = u"of line 12"_s}, {}, 12);
    QCOMPARE(desk.generate({.kind = GeneratorKind::TextDoc}, u"Pump_0.txt"_s),
             u"CANopen Object Dictionary Documenation for Pump\n"_s);
    QVERIFY(desk.generate({.kind = GeneratorKind::TextDoc, .line = 12}, u"Pump_12.txt"_s)
                .contains("Index:       0x2000 of line 12\n"_L1));
    QVERIFY(!QFile::exists(desk.folder.filePath(u"Pump_doc.txt"_s)));
}

QTEST_GUILESS_MAIN(TestTextDocument)
#include "tst_textdocument.moc"
