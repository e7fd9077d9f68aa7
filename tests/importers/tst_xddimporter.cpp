#include "canopen/CANTypes.h"
#include "importers/DescriptionImport.h"
#include "importers/XDDImporter.h"

#include <QDir>
#include <QElapsedTimer>
#include <QRandomGenerator>

using namespace Qt::StringLiterals;
using Import = DescriptionImport<XDDImporter>;

namespace {

QByteArray document(const QByteArray &objects)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ISO15745ProfileContainer>\n"
           "<ISO15745Profile><ProfileBody><ApplicationLayers><CANopenFDObjectList>\n"
        + objects
        + "</CANopenFDObjectList></ApplicationLayers></ProfileBody></ISO15745Profile>"
          "</ISO15745ProfileContainer>\n";
}

/** A variable 0x2000 whose one element has the attributes. */
QByteArray variable(const QByteArray &attributes)
{
    return document("<CANopenFDDataObject index=\"2000\" name=\"Value\" objectType=\"7\" dataType=\"0005\">\n"
                    "<CANopenFDDataElement subIndex=\"00\" name=\"Value\" dataType=\"0005\" "
                    + attributes + "/></CANopenFDDataObject>\n");
}

} // namespace

/** XML device descriptions of CANopen FD: a file in, rows of the staging line out. */
class TestXddImporter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { ImporterTest::prepareApplication(); }
    void objectsAndElementsBecomeRows();
    void attributesOfAnObjectMayBeMissing_data();
    void attributesOfAnObjectMayBeMissing();
    void objectsOutsideOfTheRangeAreIgnored();
    void accessIsRefinedByTheMapping_data();
    void accessIsRefinedByTheMapping();
    void unknownAccessWordsAreTold();
    void aValueThatIsThereIsADefault_data();
    void aValueThatIsThereIsADefault();
    void aSumWithTheNodeIdTakesTheFormOfTheProject_data();
    void aSumWithTheNodeIdTakesTheFormOfTheProject();
    void limitsOfTheFileAreChecked_data();
    void limitsOfTheFileAreChecked();
    void theProductNameGoesToTheDescriptionSettings_data();
    void theProductNameGoesToTheDescriptionSettings();
    void aFileWithoutFdObjectsIsAnError_data();
    void aFileWithoutFdObjectsIsAnError();
    void namespacesDoNotMatter();
    void aValueMayStandAtTheObjectItself();
    void anArrayWithoutSubIndexZeroGetsOne();
    void textsStayWithTheApplication();
    void theFirstOfTwoObjectsOrElementsCounts();
    void elementsWithoutObjectAreIgnored();
    void unusableNumbersAreTold_data();
    void unusableNumbersAreTold();
    void anObjectOfTheLineIsReplaced();
    void encodingsAreThoseThatTheFileTells_data();
    void encodingsAreThoseThatTheFileTells();
    void errorsOfTheXmlEndTheRead_data();
    void errorsOfTheXmlEndTheRead();
    void entitiesWithoutEndAreErrors_data();
    void entitiesWithoutEndAreErrors();
    void largeFilesAreBounded_data();
    void largeFilesAreBounded();
    void randomDamageNeverStopsTheImport();
    void filesOfTheFieldAreImportedOrRefused_data();
    void filesOfTheFieldAreImportedOrRefused();
};

void TestXddImporter::objectsAndElementsBecomeRows()
{
    Import device;
    QVERIFY(device.bytes(document(
        "<CANopenFDDataObject index=\"1018\" name=\"Identity\" objectType=\"9\" dataType=\"0023\">\n"
        "<CANopenFDDataElement subIndex=\"00\" name=\"Highest\" dataType=\"0005\" accessUSDO=\"const\" "
        "accessPDO=\"no\" defaultValue=\"1\"/>\n"
        "<CANopenFDDataElement subIndex=\"0A\" name=\"A &lt; B\" dataType=\"001B\" modification=\"x\" "
        "accessUSDO=\"ro\" accessPDO=\"t\" defaultValue=\"0x10\" lowLimit=\"1\" highLimit=\"0xFF\"/>\n"
        "</CANopenFDDataObject>\n")));
    QCOMPARE(device.errors, QStringList());
    QCOMPARE(device.findings, QStringList());
    QCOMPARE(device.rows(), (QStringList{u"1018:00"_s, u"1018:0a"_s}));
    QCOMPARE(device.object(0x1018).name, u"Identity"_s);
    QCOMPARE(device.object(0x1018).objecttype, 9);
    QCOMPARE(device.object(0x1018).datatype, 0x23);
    QCOMPARE(device.summary(0x1018, 0), u"Highest | 5 | const | 1 |  | 0"_s);
    QCOMPARE(device.summary(0x1018, 10), u"A < B | 27 | ro | 0x10 | 1..0xFF | 4"_s);
    QCOMPARE(device.sub(0x1018, 0).implementation, int(CANopen::ManagedConst));
}

void TestXddImporter::attributesOfAnObjectMayBeMissing_data()
{
    QTest::addColumn<QByteArray>("attributes");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("type");
    QTest::newRow("all") << QByteArray() << u"unnamed object"_s << 7 << 0;
    QTest::newRow("empty name") << QByteArray("name=\"\" objectType=\"8\"") << u"unnamed object"_s << 8 << 0;
    QTest::newRow("type in hexadecimal") << QByteArray("name=\"A\" dataType=\"0x1b\"") << u"A"_s << 7 << 27;
}

void TestXddImporter::attributesOfAnObjectMayBeMissing()
{
    QFETCH(QByteArray, attributes);
    Import device;
    QVERIFY(device.bytes(document("<CANopenFDDataObject index=\"2000\" " + attributes + "/>")));
    QCOMPARE(device.errors, QStringList());
    QTEST(device.object(0x2000).name, "name");
    QTEST(device.object(0x2000).objecttype, "code");
    QTEST(device.object(0x2000).datatype, "type");
}

void TestXddImporter::objectsOutsideOfTheRangeAreIgnored()
{
    Import device;
    device.importer.setRange(0x6000, 0x9FFF);
    QByteArray objects;
    for (const char *index : {"5FFF", "6000", "0x9fff", "A000"})
        objects += QByteArray("<CANopenFDDataObject index=\"") + index
            + "\"><CANopenFDDataElement subIndex=\"0\" accessUSDO=\"ro\"/></CANopenFDDataObject>\n";
    QVERIFY(device.bytes(document(objects)));
    QCOMPARE(device.errors, QStringList());
    QCOMPARE(device.rows(), (QStringList{u"6000:00"_s, u"9fff:00"_s}));
    QVERIFY(device.findings.contains(u"0: 2 objects outside of the range 0x6000 to 0x9fff are left out."_s));
}

void TestXddImporter::accessIsRefinedByTheMapping_data()
{
    QTest::addColumn<QByteArray>("sdo");
    QTest::addColumn<QByteArray>("pdo");
    QTest::addColumn<QString>("access");
    QTest::addColumn<int>("mapping");
    const auto add = [](const char *sdo, const char *pdo, const char *access, int mapping) {
        QTest::addRow("%s %s", sdo, pdo)
            << QByteArray(sdo) << QByteArray(pdo) << QString::fromLatin1(access) << mapping;
    };
    add("ro", "no", "ro", PDOMapping::Forbidden);
    add("ro", "t", "ro", PDOMapping::TPDO);
    add("ro", "tr", "ro", PDOMapping::Allowed);
    add("wo", "r", "wo", PDOMapping::RPDO);
    add("rw", "no", "rw", PDOMapping::Forbidden);
    add("rw", "t", "rwr", PDOMapping::TPDO);
    add("rw", "r", "rww", PDOMapping::RPDO);
    add("rw", "tr", "rw", PDOMapping::Allowed);
    add("const", "no", "const", PDOMapping::Forbidden);
    add("const", "t", "const", PDOMapping::TPDO);
}

void TestXddImporter::accessIsRefinedByTheMapping()
{
    QFETCH(QByteArray, sdo);
    QFETCH(QByteArray, pdo);
    Import device;
    QVERIFY(device.bytes(variable("accessUSDO=\"" + sdo + "\" accessPDO=\"" + pdo + '"')));
    QTEST(device.sub(0x2000, 0).accesstype, "access");
    QTEST(int(device.sub(0x2000, 0).pdomapping.toUInt()), "mapping");
    QCOMPARE(device.findings, QStringList());
}

void TestXddImporter::unknownAccessWordsAreTold()
{
    Import device;
    QVERIFY(device.bytes(variable("accessUSDO=\"readWrite\" accessPDO=\"optional\"")));
    QCOMPARE(device.sub(0x2000, 0).accesstype, u"const"_s);
    QCOMPARE(int(device.sub(0x2000, 0).pdomapping.toUInt()), int(PDOMapping::Forbidden));
    QCOMPARE(device.findings,
             (QStringList{u"5: accessPDO is \"optional\"; it is read as \"no\"."_s,
                          u"5: accessUSDO is \"readwrite\"; it is read as \"const\"."_s}));
}

void TestXddImporter::aValueThatIsThereIsADefault_data()
{
    QTest::addColumn<QByteArray>("attribute");
    QTest::addColumn<bool>("present");
    QTest::newRow("value") << QByteArray("defaultValue=\"0\"") << true;
    QTest::newRow("empty") << QByteArray("defaultValue=\"\"") << false;
    QTest::newRow("missing") << QByteArray() << false;
}

void TestXddImporter::aValueThatIsThereIsADefault()
{
    QFETCH(QByteArray, attribute);
    QFETCH(bool, present);
    Import device;
    QVERIFY(device.bytes(variable("accessUSDO=\"rw\" accessPDO=\"no\" " + attribute)));
    QCOMPARE(device.sub(0x2000, 0).defaultineds, present);
    QCOMPARE(int(device.sub(0x2000, 0).writedefaulttoeds), int(present));
}

void TestXddImporter::aSumWithTheNodeIdTakesTheFormOfTheProject_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("told");
    QTest::newRow("good form") << QByteArray("0007") << QByteArray("$NODEID+0x180") << u"$NODEID+0x180"_s
                               << false;
    QTest::newRow("node-ID behind") << QByteArray("0007") << QByteArray(" 0x80000180+$NodeID ")
                                    << u"$NODEID+0x80000180"_s << true;
    QTest::newRow("not understood") << QByteArray("0007") << QByteArray("2*$NODEID") << u"2*$NODEID"_s
                                    << true;
    QTest::newRow("text") << QByteArray("0009") << QByteArray("&quot;1+$NODEID&quot;") << u"\"1+$NODEID\""_s
                          << false;
    QTest::newRow("other value") << QByteArray("0007") << QByteArray("F ") << u"F "_s << false;
}

void TestXddImporter::aSumWithTheNodeIdTakesTheFormOfTheProject()
{
    QFETCH(QByteArray, type);
    QFETCH(QByteArray, value);
    QFETCH(QString, text);
    const QByteArray attributes = "subIndex=\"00\" accessUSDO=\"rw\" accessPDO=\"no\" dataType=\"" + type
        + "\" defaultValue=\"" + value + "\" lowLimit=\"" + value + "\"";
    Import device;
    QVERIFY(device.bytes(document("<CANopenFDDataObject index=\"2000\" name=\"Value\" dataType=\"0007\">"
                                  "<CANopenFDDataElement "
                                  + attributes + "/></CANopenFDDataObject>\n")));
    QCOMPARE(device.sub(0x2000, 0).defaultvalue, text);
    QCOMPARE(device.sub(0x2000, 0).lowlimit, text);
    QTEST(device.findings.size() == 2, "told");
}

void TestXddImporter::limitsOfTheFileAreChecked_data()
{
    QTest::addColumn<QByteArray>("attributes");
    QTest::addColumn<QString>("limits");
    QTest::addColumn<bool>("checked");
    QTest::newRow("both") << QByteArray("lowLimit=\"1\" highLimit=\"0x7\"") << u"1..0x7"_s << true;
    QTest::newRow("one") << QByteArray("lowLimit=\"1\"") << u"1..255"_s << true;
    QTest::newRow("empty") << QByteArray("lowLimit=\"\"") << u"0..255"_s << false;
    QTest::newRow("none") << QByteArray() << u"0..255"_s << false;
}

void TestXddImporter::limitsOfTheFileAreChecked()
{
    QFETCH(QByteArray, attributes);
    Import device;
    QVERIFY(device.bytes(variable("accessUSDO=\"rw\" accessPDO=\"no\" " + attributes)));
    const auto sub = device.sub(0x2000, 0);
    QTEST(QString(sub.lowlimit + u".."_s + sub.uplimit), "limits");
    QTEST(sub.limitineds, "checked");
}

void TestXddImporter::theProductNameGoesToTheDescriptionSettings_data()
{
    QTest::addColumn<QByteArray>("element");
    QTest::addColumn<QString>("name");
    QTest::newRow("lower case") << QByteArray("<productName>Valve &amp; co</productName>") << u"Valve & co"_s;
    QTest::newRow("upper case") << QByteArray("<ProductName> Valve </ProductName>") << u"Valve"_s;
    QTest::newRow("with prefix") << QByteArray("<q1:productName xmlns:q1=\"x\">Valve</q1:productName>")
                                 << u"Valve"_s;
    QTest::newRow("raw") << QByteArray("<productName><![CDATA[<Valve>]]></productName>") << u"<Valve>"_s;
    QTest::newRow("empty") << QByteArray("<productName/>") << QString();
    QTest::newRow("missing") << QByteArray("<vendorName>Korvel</vendorName>") << u"former"_s;
}

void TestXddImporter::theProductNameGoesToTheDescriptionSettings()
{
    QFETCH(QByteArray, element);
    Import device;
    QVERIFY(device.store->setDescriptionSetting(u"ProductName"_s, u"former"_s));
    QVERIFY(device.bytes(document(element + "<CANopenFDDataObject index=\"2000\"/>")));
    QCOMPARE(device.errors, QStringList());
    QTEST(device.setting("ProductName"), "name");
}

void TestXddImporter::aFileWithoutFdObjectsIsAnError_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::newRow("no objects") << document({});
    QTest::newRow("classical CANopen")
        << document("<productName>Valve</productName><CANopenObject index=\"1000\" name=\"Device type\" "
                    "objectType=\"7\" dataType=\"0007\" accessType=\"ro\"/>");
    QTest::newRow("elements only") << document("<CANopenFDDataElement subIndex=\"00\"/>");
    QTest::newRow("another document") << QByteArray("<html/>");
}

void TestXddImporter::aFileWithoutFdObjectsIsAnError()
{
    QFETCH(QByteArray, file);
    Import device;
    const QString before = device.store->contentHash();
    QVERIFY(device.bytes(file));
    QCOMPARE(device.errors,
             QStringList{u"%1 has is not in CiA 1311 XDD format."_s.arg(device.importer.fileName())});
    QVERIFY(device.log.contains(u"no cia 1311"_s));
    QCOMPARE(device.store->contentHash(), before);
}

void TestXddImporter::namespacesDoNotMatter()
{
    Import device;
    QVERIFY(device.bytes("<a:Root xmlns:a=\"http://example.org\"><a:CANopenFDDataObject index=\"2000\" "
                         "xmlns=\"\"><CANopenFDDataElement subIndex=\"00\" accessUSDO=\"ro\"/>"
                         "</a:CANopenFDDataObject></a:Root>"));
    QCOMPARE(device.rows(), QStringList{u"2000:00"_s});
}

void TestXddImporter::aValueMayStandAtTheObjectItself()
{
    const QByteArray object =
        "<CANopenFDDataObject index=\"2000\" name=\"Value\" objectType=\"7\" dataType=\"0005\" "
        "accessUSDO=\"rw\" accessPDO=\"r\" defaultValue=\"3\"";
    Import device;
    QVERIFY(device.bytes(document(object + "/>")));
    QCOMPARE(device.summary(0x2000, 0), u"Value | 5 | rww | 3 |  | 3"_s);
    QVERIFY(
        device.bytes(document(object
                              + "><CANopenFDDataElement subIndex=\"00\" name=\"Element\" dataType=\"0006\" "
                                "accessUSDO=\"ro\"/></CANopenFDDataObject>")));
    QCOMPARE(device.summary(0x2000, 0), u"Element | 6 | ro |  |  | 0"_s);
    QCOMPARE(device.findings, QStringList());
}

void TestXddImporter::anArrayWithoutSubIndexZeroGetsOne()
{
    Import device;
    QVERIFY(
        device.bytes(document("<CANopenFDDataObject index=\"2000\" objectType=\"8\">"
                              "<CANopenFDDataElement subIndex=\"03\" dataType=\"0006\" accessUSDO=\"ro\"/>"
                              "</CANopenFDDataObject>")));
    QCOMPARE(device.summary(0x2000, 0), u"Highest subindex supported | 5 | ro | 3 |  | 0"_s);
    QCOMPARE(device.object(0x2000).datatype, 6);
}

void TestXddImporter::textsStayWithTheApplication()
{
    Import device;
    QVERIFY(
        device.bytes(document("<CANopenFDDataObject index=\"2000\">"
                              "<CANopenFDDataElement subIndex=\"00\" dataType=\"0009\" accessUSDO=\"rw\"/>"
                              "</CANopenFDDataObject>")));
    QCOMPARE(device.sub(0x2000, 0).implementation, int(CANopen::ApplicationVariable));
    QCOMPARE(device.sub(0x2000, 0).varname, u"v_200000"_s);
}

void TestXddImporter::theFirstOfTwoObjectsOrElementsCounts()
{
    const QByteArray object = "<CANopenFDDataObject index=\"2000\" name=\"%\">\n"
                              "<CANopenFDDataElement subIndex=\"00\" name=\"%0\" accessUSDO=\"ro\"/>\n"
                              "<CANopenFDDataElement subIndex=\"0\" name=\"%1\" accessUSDO=\"ro\"/>\n"
                              "</CANopenFDDataObject>\n";
    Import device;
    QVERIFY(
        device.bytes(document(QByteArray(object).replace('%', "A") + QByteArray(object).replace('%', "B"))));
    QCOMPARE(device.object(0x2000).name, u"A"_s);
    QCOMPARE(device.sub(0x2000, 0).name, u"A0"_s);
    QVERIFY(device.findings.contains(u"6: The sub-index 0x00 exists already; this one is left out."_s));
    QVERIFY(device.findings.contains(u"8: The object 0x2000 exists already; this one is left out."_s));
}

void TestXddImporter::elementsWithoutObjectAreIgnored()
{
    Import device;
    QVERIFY(device.bytes(document("<CANopenFDDataElement subIndex=\"00\" accessUSDO=\"ro\"/>"
                                  "<CANopenFDDataObject index=\"0\"/>"
                                  "<CANopenFDDataElement subIndex=\"00\" accessUSDO=\"ro\"/>")));
    QCOMPARE(device.errors, QStringList());
    QCOMPARE(device.rows(), QStringList());
}

void TestXddImporter::unusableNumbersAreTold_data()
{
    QTest::addColumn<QByteArray>("object");
    QTest::addColumn<QString>("finding");
    QTest::addColumn<int>("rows");
    QTest::newRow("no index") << QByteArray("<CANopenFDDataObject/>")
                              << u"index is \"\", which is no such number."_s << 0;
    QTest::newRow("index too high") << QByteArray("<CANopenFDDataObject index=\"10000\"/>")
                                    << u"index is \"10000\", which is no such number."_s << 0;
    QTest::newRow("object type") << QByteArray("<CANopenFDDataObject index=\"2000\" objectType=\"0x7\"/>")
                                 << u"objectType is \"0x7\", which is no such number."_s << 0;
    QTest::newRow("sub-index") << QByteArray("<CANopenFDDataObject index=\"2000\"><CANopenFDDataElement "
                                             "subIndex=\"100\"/></CANopenFDDataObject>")
                               << u"subIndex is \"100\", which is no such number."_s << 0;
    QTest::newRow("data type") << QByteArray("<CANopenFDDataObject index=\"2000\"><CANopenFDDataElement "
                                             "subIndex=\"00\" dataType=\"U8\" accessUSDO=\"ro\"/>"
                                             "</CANopenFDDataObject>")
                               << u"dataType is \"U8\", which is no such number."_s << 1;
    QTest::newRow("no data type") << QByteArray("<CANopenFDDataObject index=\"2000\"><CANopenFDDataElement "
                                                "subIndex=\"00\" accessUSDO=\"ro\"/></CANopenFDDataObject>")
                                  << u"The sub-index 0x00 has no data type."_s << 1;
}

void TestXddImporter::unusableNumbersAreTold()
{
    QFETCH(QByteArray, object);
    QFETCH(QString, finding);
    Import device;
    QVERIFY(device.bytes(document(object)));
    QCOMPARE(device.errors, QStringList());
    QVERIFY2(device.findings.contains(QString(u"4: "_s + finding)), qPrintable(device.findings.join(u'\n')));
    QTEST(int(device.rows().size()), "rows");
}

void TestXddImporter::anObjectOfTheLineIsReplaced()
{
    Import device;
    ObjectDataBase::SUBINDEX_DATA_T former;
    QVERIFY(device.store->addIndex(ImporterTest::staging, 0x2000, {.name = u"former"_s}));
    QVERIFY(device.store->addSubIndex(ImporterTest::staging, 0x2000, 7, former));
    QVERIFY(device.bytes(variable("accessUSDO=\"ro\"")));
    QCOMPARE(device.rows(), QStringList{u"2000:00"_s});
}

void TestXddImporter::encodingsAreThoseThatTheFileTells_data()
{
    QTest::addColumn<QByteArray>("encoding");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("readable");
    QTest::newRow("UTF-8") << QByteArray("UTF-8") << QByteArray("\xC3\xB6") << true;
    QTest::newRow("Latin-1") << QByteArray("ISO-8859-1") << QByteArray("\xF6") << true;
    QTest::newRow("wrong") << QByteArray("UTF-8") << QByteArray("\xF6") << false;
    QTest::newRow("unknown") << QByteArray("EBCDIC") << QByteArray("o") << false;
}

void TestXddImporter::encodingsAreThoseThatTheFileTells()
{
    QFETCH(QByteArray, encoding);
    QFETCH(QByteArray, text);
    QFETCH(bool, readable);
    Import device;
    QVERIFY(device.bytes("<?xml version=\"1.0\" encoding=\"" + encoding
                         + "\"?><a><CANopenFDDataObject index=\"2000\" name=\"" + text + "\"/></a>"));
    QCOMPARE(device.errors.isEmpty(), readable);
    if (readable)
        QCOMPARE(device.object(0x2000).name, u"ö"_s);
}

void TestXddImporter::errorsOfTheXmlEndTheRead_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("place");
    QTest::addColumn<int>("objects");
    const QByteArray whole = variable("accessUSDO=\"ro\"");
    QTest::newRow("empty") << QByteArray() << u":1:0: "_s << 0;
    QTest::newRow("text") << QByteArray("Dear reader") << u":1:"_s << 0;
    QTest::newRow("binary") << QByteArray("\x7F"
                                          "ELF\x02\x01\x01\0\0",
                                          9)
                            << u":1:"_s << 0;
    QTest::newRow("cut in an object")
        << whole.first(whole.indexOf("</CANopenFDDataObject>")) << u":5:"_s << 1;
    QTest::newRow("wrong end") << document("<CANopenFDDataObject index=\"2000\"/>\n</what>") << u":5:"_s << 1;
    QTest::newRow("two roots") << document("<CANopenFDDataObject index=\"2000\"/>") + "<b/>" << u":5:"_s << 1;
    QTest::newRow("attribute twice") << document(
        "<CANopenFDDataObject index=\"2000\"/>\n<b a=\"1\" a=\"2\"/>")
                                     << u":5:"_s << 1;
}

void TestXddImporter::errorsOfTheXmlEndTheRead()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, place);
    QFETCH(int, objects);
    Import device;
    QVERIFY(device.bytes(file));
    QVERIFY(!device.errors.isEmpty());
    QVERIFY2(device.errors.constFirst().startsWith(device.importer.fileName() + place),
             qPrintable(device.errors.constFirst()));
    QCOMPARE(int(device.importer.importedObjects().size()), objects);
    QCOMPARE(int(device.errors.size()), objects == 0 ? 2 : 1); // nothing tells that the format is right
}

void TestXddImporter::entitiesWithoutEndAreErrors_data()
{
    QTest::addColumn<QByteArray>("entities");
    QByteArray laughs = "<!ENTITY e0 \"ha\">";
    for (int level = 1; level < 30; ++level)
        laughs += "<!ENTITY e" + QByteArray::number(level) + " \"&e" + QByteArray::number(level - 1) + ";&e"
            + QByteArray::number(level - 1) + ";\">";
    QTest::newRow("growing") << laughs + "<!ENTITY e \"&e29;\">";
    QTest::newRow("cyclic") << QByteArray("<!ENTITY e \"&f;\"><!ENTITY f \"&e;\">");
    QTest::newRow("a file") << QByteArray("<!ENTITY e SYSTEM \"file:///etc/passwd\">");
}

void TestXddImporter::entitiesWithoutEndAreErrors()
{
    QFETCH(QByteArray, entities);
    QElapsedTimer timer;
    timer.start();
    Import device;
    QVERIFY(device.bytes("<!DOCTYPE a [" + entities
                         + "]><a><productName>&e;</productName>"
                           "<CANopenFDDataObject index=\"2000\"/></a>"));
    QVERIFY(timer.elapsed() < 10000);
    QVERIFY(!device.setting("ProductName").contains(u"root"_s));
    QVERIFY(device.setting("ProductName").size() < 100'000);
}

void TestXddImporter::largeFilesAreBounded_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("piece");
    QTest::addColumn<int>("pieces");
    QTest::newRow("endless attribute") << QByteArray("<a b=\"") << QByteArray(1024, 'x') << 100 * 1024;
    QTest::newRow("endless text") << QByteArray("<a>") << QByteArray(1024, 'x') << 100 * 1024;
    QTest::newRow("endless comment") << QByteArray("<a><!--") << QByteArray(1024, 'x') << 100 * 1024;
    QTest::newRow("nested without end") << QByteArray() << QByteArray("<a>") << 1'000'000;
    QTest::newRow("many elements") << QByteArray("<a>") << QByteArray("<b>" + QByteArray(1017, 'x') + "</b>")
                                   << 100 * 1024;
    QTest::newRow("many attributes") << QByteArray("<a ") << QByteArray() << 20'000;
}

void TestXddImporter::largeFilesAreBounded()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, piece);
    QFETCH(int, pieces);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"large.xdd"_s);
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(before);
        for (int i = 0; i < pieces; ++i)
            file.write(piece.isEmpty() ? 'a' + QByteArray::number(i) + "='' " : piece);
        file.write(piece.isEmpty() ? "/>" : "");
    }
    QElapsedTimer timer;
    timer.start();
    Import device;
    QVERIFY(device.file(path));
    QCOMPARE(device.errors.size(), 2);
    QVERIFY2(timer.elapsed() < 30000, qPrintable(QString::number(timer.elapsed())));
}

void TestXddImporter::randomDamageNeverStopsTheImport()
{
    QRandomGenerator random(1311);
    QByteArray objects;
    for (int object = 0; object < 10; ++object)
        objects += "<CANopenFDDataObject index=\"" + QByteArray::number(0x2000 + object, 16)
            + "\" objectType=\"9\"><CANopenFDDataElement subIndex=\"01\" dataType=\"0005\" accessUSDO=\"rw\" "
              "accessPDO=\"t\" defaultValue=\"1\"/></CANopenFDDataObject>\n";
    const QByteArray whole = document(objects);
    for (int round = 0; round < 100; ++round) {
        QByteArray damaged = whole;
        for (int hit = 0; hit < 3; ++hit)
            damaged[qsizetype(random.bounded(quint32(damaged.size())))] = char(random.bounded(256));
        Import device;
        QVERIFY(device.bytes(damaged));
        QCOMPARE(device.store->getIndexList(ImporterTest::staging), device.importer.importedObjects().keys());
    }
}

void TestXddImporter::filesOfTheFieldAreImportedOrRefused_data()
{
    QTest::addColumn<QString>("path");
    const QDir folder(QStringLiteral(FIELD_FILES "/xdd"));
    if (!folder.exists())
        QSKIP("No device descriptions from the field beside the source tree.");
    const QStringList names = folder.entryList(QDir::Files);
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << folder.filePath(name);
}

void TestXddImporter::filesOfTheFieldAreImportedOrRefused()
{
    QFETCH(QString, path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const auto described = file.readAll().count("<CANopenFDDataObject ");
    Import device;
    QVERIFY(device.file(path));
    QCOMPARE(device.importer.importedObjects().size(), described);
    QCOMPARE(device.errors.filter(u"is not in CiA 1311 XDD format"_s).size(), described == 0 ? 1 : 0);
}

QTEST_GUILESS_MAIN(TestXddImporter)
#include "tst_xddimporter.moc"
