#include "importers/DescriptionImport.h"
#include "importers/EDSImporter.h"

using namespace Qt::StringLiterals;
using Import = DescriptionImport<EDSImporter>;

namespace {

const char plain[] = "[2000]\nParameterName=Value\nDataType=5\nAccessType=rw\n";

} // namespace

/** What device descriptions of the field have beside the standard, each in a small file of its own. */
class TestEdsImporterOddities : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { ImporterTest::prepareApplication(); }
    void oddFilesAreUnderstood_data();
    void oddFilesAreUnderstood();
    void everyDeviationIsToldOnce_data();
    void everyDeviationIsToldOnce();
    void countsThatAreMissingAreAdded();
    void everyRowIsExpected();
    void lineEndsDoNotMatter_data();
    void lineEndsDoNotMatter();
    void encodingsAreRecognised_data();
    void encodingsAreRecognised();
    void foreignCharactersDoNoHarm_data();
    void foreignCharactersDoNoHarm();
    void namesOfSectionsAndKeysAreReadInAnyCase();

private:
    static void expect(const char *file, int index, int subIndex, const char *summary);
};

void TestEdsImporterOddities::expect(const char *file, int index, int subIndex, const char *summary)
{
    QTest::addRow("%s %x:%d", file, index, subIndex)
        << QString::fromLatin1(file) << index << subIndex << QString::fromUtf8(summary);
}

void TestEdsImporterOddities::oddFilesAreUnderstood_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("subIndex");
    QTest::addColumn<QString>("summary");
    expect("nodeid.eds", 0x2000, 0, "Plain | 7 | rw | $NODEID+0x80 |  | 0");
    expect("nodeid.eds", 0x2001, 0, "Number first | 7 | rw | $NODEID+0x80 |  | 0");
    expect("nodeid.eds", 0x2002, 0, "Blanks and lower case | 7 | rw | $NODEID+0x80 |  | 0");
    expect("nodeid.eds", 0x2003, 0, "Bare | 5 | rw | $NODEID |  | 0");
    expect("nodeid.eds", 0x2004, 0, "Decimal | 7 | rw | $NODEID+512 |  | 0");
    expect("nodeid.eds", 0x2005, 0, "Decimal first | 7 | rw | $NODEID+1280 |  | 0");
    expect("nodeid.eds", 0x2006, 0, "High bits | 7 | rw | $NODEID+0xC0000480 |  | 0");
    expect("nodeid.eds", 0x2007, 0,
           "In limits | 7 | rw | $NODEID+0x80000640 | $NODEID+0x640..$NODEID+0x80000640 | 0");
    expect("nodeid.eds", 0x2008, 0, "Not understood | 7 | rw | $NODEID*2 |  | 0");
    expect("numbers.eds", 0x2000, 0, "Decimal | 5 | rw |  |  | 1");
    expect("numbers.eds", 0x2001, 0, "Hexadecimal | 5 | rw |  |  | 1");
    expect("numbers.eds", 0x2002, 0, "Short hexadecimal | 5 | rw |  |  | 0");
    expect("numbers.eds", 0x2003, 0, "Words | 5 | rw |  |  | 0");
    expect("numbers.eds", 0x2004, 0, "No object type | 5 | rw |  |  | 0");
    expect("numbers.eds", 0x2005, 0, "Instructions to the reader | 7 | ro | 0x0000 |  | 0");
    expect("numbers.eds", 0x2006, 0, "Profile | 7 | ro | 0 or profile-specific |  | 0");
    expect("numbers.eds", 0x2007, 0, "Manufacturer | 9 | const | Manufacturer-specific |  | 0");
    expect("values.eds", 0x2000, 0, "Suffix of C | 27 | rw | 0x1234567890ABCDEF |  | 0");
    expect("values.eds", 0x2001, 0, "Bare hexadecimal | 5 | rw |  | 0..0xF | 0");
    expect("values.eds", 0x2002, 0, "Looks like a number | 9 | const | 4147.1-0 |  | 0");
    expect("values.eds", 0x2003, 0, "Looks like a number too | 9 | const | 3150.69A |  | 0");
    expect("values.eds", 0x2004, 0,
           "Negative hexadecimal | 4 | rw | -0x80000000 | -0x80000000..0x7FFFFFFF | 0");
    expect("values.eds", 0x2005, 0, "Two's complement | 2 | rw | -1 | -128..0x7F | 0");
    expect("values.eds", 0x2006, 0, "Leading zeros | 10 | rw | 00000000000000000000 |  | 0");
    expect("values.eds", 0x2007, 0, "Octal | 5 | rw | 001 |  | 0");
    expect("values.eds", 0x2008, 0, "Quoted | 9 | rw | Hello, World! |  | 0");
    expect("values.eds", 0x2009, 0, "Blanks inside | 9 | rw | a  b ; c # d |  | 0");
    expect("values.eds", 0x200A, 0, "Real | 8 | rw | 1.5e-3 |  | 0");
    expect("values.eds", 0x200B, 0, " | 5 | rw |  |  | 0");
    expect("values.eds", 0x200C, 0, "Trailing tabs | 5 | rw | 7 |  | 0");
    expect("structure.eds", 0x1018, 0, "Highest | 5 | ro | 1 |  | 0");
    expect("structure.eds", 0x1018, 1, "Vendor-ID | 7 | ro | 0x2B7 |  | 0");
    expect("structure.eds", 0x2000, 0, "Highest | 5 | ro | 5 |  | 0");
    expect("structure.eds", 0x2000, 5, "Last | 5 | rw |  |  | 0");
    expect("structure.eds", 0x2001, 0, "Highest subindex supported | 5 | ro | 1 |  | 0");
    expect("structure.eds", 0x2001, 1, "First | 5 | rw |  |  | 0");
    expect("structure.eds", 0x2002, 0, "Without object | 5 | ro | 0 |  | 0");
    expect("structure.eds", 0x2003, 0, "Variable with sections | 5 | rw | 3 |  | 0");
    expect("structure.eds", 0x2003, 1, "Odd | 5 | rw |  |  | 0");
    expect("compact.dcf", 0x1601, 0, "Highest subindex supported | 5 | ro | 4 |  | 0");
    expect("compact.dcf", 0x1601, 1, "RPDO mapping 1 | 7 | rw | 0x60000008 |  | 0");
    expect("compact.dcf", 0x1601, 2, "RPDO mapping 2 | 7 | rw | 0x60010008 |  | 0");
    expect("compact.dcf", 0x1601, 3, "RPDO mapping 3 | 7 | rw |  |  | 0");
    expect("compact.dcf", 0x1601, 4, "RPDO mapping 4 | 7 | rw |  |  | 0");
    expect("compact.dcf", 0x1016, 0, "Highest subindex supported | 5 | ro | 2 |  | 0");
    expect("compact.dcf", 0x1016, 1, "Consumer 1 | 7 | rw |  |  | 0");
    expect("compact.dcf", 0x1016, 2, "Drive | 7 | rw |  |  | 0");
    expect("parametervalue.dcf", 0x2000, 0, "Empty | 5 | rw | 1 |  | 0");
    expect("parametervalue.dcf", 0x2001, 0, "Given | 5 | rw | 0x02 |  | 0");
    expect("access.eds", 0x2000, 0, "Capitals | 5 | ro |  |  | 0");
    expect("access.eds", 0x2001, 0, "One capital | 5 | const |  |  | 0");
    expect("access.eds", 0x2002, 0, "Remark | 5 | rw |  |  | 0");
    expect("access.eds", 0x2003, 0, "Other remark | 5 | rw |  |  | 0");
    expect("access.eds", 0x2004, 0, "Empty | 5 | ro |  |  | 0");
    expect("access.eds", 0x2005, 0, "One letter | 5 | ro |  |  | 0");
    expect("access.eds", 0x2006, 0, "Flags | 5 | rwr |  |  | 4");
    expect("access.eds", 0x2007, 0, "Flags | 5 | wo |  |  | 3");
    expect("remarks.eds", 0x2000, 0, "Remarks behind values | 5 | rw | 3 | 1..255 | 1");
    expect("remarks.eds", 0x2002, 0, "Blanks around | 6 | ro |  |  | 0");
    expect("duplicates.eds", 0x2000, 0, "First | 5 | rw | 1 |  | 1");
    expect("duplicates.eds", 0x2001, 0, "Other | 5 | ro |  |  | 0");
    expect("names.eds", 0x607C, 0, "Home offset | 4 | rw |  |  | 0");
    expect("names.eds", 0x1010, 0, "Highest | 5 | ro | 1 |  | 0");
    expect("names.eds", 0x1010, 1, "All | 7 | rw |  |  | 0");
    expect("names.eds", 0x3010, 0, "Highest | 5 | ro | 0 |  | 0");
    expect("unknown.eds", 0x2000, 0, "Speed | 5 | rw |  |  | 0");
    expect("unknown.eds", 0x2001, 0, "Torque | 5 | rw |  |  | 0");
    expect("lists.eds", 0x1000, 0, "Device type | 7 | ro |  |  | 0");
    expect("lists.eds", 0x2000, 0, "In no list | 7 | ro |  |  | 0");
}

static bool import(Import &device, const QString &file)
{
    device.importer.setDcfMode(file.endsWith(u".dcf"_s));
    device.importer.setImportFileInfo(true);
    return device.file(QStringLiteral(IMPORTER_DATA "/eds/") + file);
}

void TestEdsImporterOddities::oddFilesAreUnderstood()
{
    QFETCH(QString, file);
    QFETCH(int, index);
    QFETCH(int, subIndex);
    Import device;
    QVERIFY(import(device, file));
    QCOMPARE(device.errors, QStringList());
    QTEST(device.summary(index, subIndex), "summary");
}

void TestEdsImporterOddities::everyDeviationIsToldOnce_data()
{
    QTest::addColumn<QStringList>("findings");
    QTest::newRow("nodeid.eds") << QStringList{
        u"11: DefaultValue: \"0x80+$NODEID\" is read as $NODEID+0x80."_s,
        u"17: DefaultValue: \"$NodeID + 0x80\" is read as $NODEID+0x80."_s,
        u"35: DefaultValue: \"1280+$NODEID\" is read as $NODEID+1280."_s,
        u"41: DefaultValue: \"0xC0000480+$NODEID\" is read as $NODEID+0xC0000480."_s,
        u"49: HighLimit: \"0x80000640+$NODEID\" is read as $NODEID+0x80000640."_s,
        u"55: DefaultValue: the sum with the node-ID is not understood."_s};
    QTest::newRow("numbers.eds") << QStringList{
        u"24: The ObjectType \"VAR\" is read as 7."_s, u"25: The DataType \"UNSIGNED8\" is read as 5."_s,
        u"27: PDOMapping is \"no\"; it is read as 0."_s, u"39: DefaultValue: \"0000h\" is read as 0x0000."_s,
        u"47: DefaultValue: \"0 or profile-specific\" is not a number."_s};
    QTest::newRow("values.eds") << QStringList{
        u"5: DefaultValue: \"0x1234567890ABCDEFLL\" is read as 0x1234567890ABCDEF."_s,
        u"12: HighLimit: \"F\" is read as 0xF."_s,
        u"38: DefaultValue: \"0xFF\" is read as -1."_s,
        u"39: LowLimit: \"0x80\" is read as -128."_s,
        u"58: DefaultValue: the quotation marks around the text are left out."_s,
        u"72: The object 0x200b has no name."_s};
    QTest::newRow("structure.eds") << QStringList{
        u"21: SubNumber of [2000] is 9, but 2 sub-indices are described."_s,
        u"34: [2001] has no SubNumber; 1 sub-indices are described."_s,
        u"34: The object 0x2001 has no sub-index 0."_s,
        u"43: The object 0x2002 has sub-indices but no section of its own; it is read as a RECORD."_s,
        u"49: [2003] has no SubNumber; 1 sub-indices are described."_s,
        u"34: The object 0x2001 gets a sub-index 0 with the value 1."_s};
    QTest::newRow("compact.dcf") << QStringList();
    QTest::newRow("parametervalue.dcf")
        << QStringList{u"16: [DeviceCommissioning] belongs to a DCF and is left out."_s};
    QTest::newRow("access.eds") << QStringList{
        u"14: The AccessType \"rw # rw;\" is read as \"rw\"."_s,
        u"19: The AccessType \"RW ; RO is allowed\" is read as \"rw\"."_s,
        u"24: [2004] has no AccessType; \"ro\" is assumed."_s,
        u"29: The AccessType \"R\" is read as \"ro\"."_s};
    QTest::newRow("remarks.eds") << QStringList{
        u"1: A line that begins with \"#\" is taken as a comment."_s,
        u"2: The remark behind the section [2000] is left out."_s,
        u"7: A line that begins with \"#\" is taken as a comment."_s,
        u"15: The remark behind the section [2002] is left out."_s,
        u"16: Blanks around a key are left out, here and further on."_s,
        u"4: ObjectType: the remark behind the value is left out."_s,
        u"5: DataType: the remark behind the value is left out."_s,
        u"10: PDOMapping: the remark behind the value is left out."_s,
        u"11: DefaultValue: the remark behind the value is left out."_s,
        u"13: LowLimit: the remark behind the value is left out."_s,
        u"2: [2000] gives one limit only; the other is that of its type."_s};
    QTest::newRow("duplicates.eds") << QStringList{
        u"6: DefaultValue exists already in line 5; this value is left out."_s,
        u"13: The section [2000] exists already in line 1; both are read as one."_s,
        u"14: DataType exists already in line 3; this value is left out."_s,
        u"17: What [0x2001] describes stands in line 8 already; this section is left out."_s};
    QTest::newRow("names.eds") << QStringList();
    QTest::newRow("unknown.eds") << QStringList{
        u"11: The section [14XXsub2] names no object."_s,
        u"20: Unit is no entry of an object; it is left out everywhere."_s,
        u"21: Factor is no entry of an object; it is left out everywhere."_s,
        u"22: MaskEnum is no entry of an object; it is left out everywhere."_s,
        u"29: 1_Sub0 is no entry of an object; it is left out everywhere."_s,
        u"4: [PreDefines] is kept among the additional sections."_s,
        u"7: [enum:Modes] is kept among the additional sections."_s,
        u"11: [14XXsub2] is kept among the additional sections."_s,
        u"31: [2000ObjectLinks] is kept among the additional sections."_s};
    QTest::newRow("lists.eds") << QStringList{
        u"18: The object 0x1018 is listed in [MandatoryObjects], but not described."_s,
        u"16: SupportedObjects of [MandatoryObjects] is 3, but 2 objects are listed."_s,
        u"31: The object 0x2000 stands in no list of objects."_s,
        u"11: [Comments] has 2 lines, which is not the number that it gives."_s};
}

void TestEdsImporterOddities::everyDeviationIsToldOnce()
{
    Import device;
    QVERIFY(import(device, QString::fromLatin1(QTest::currentDataTag())));
    QTEST(device.findings, "findings");
}

void TestEdsImporterOddities::countsThatAreMissingAreAdded()
{
    Import device;
    QVERIFY(import(device, u"structure.eds"_s));
    QCOMPARE(device.object(0x1018).objecttype, 8);
    QCOMPARE(device.object(0x2002).objecttype, 9);
    QCOMPARE(device.object(0x2003).objecttype, 7);
    QCOMPARE(device.rows(),
             (QStringList{u"1018:00"_s, u"1018:01"_s, u"2000:00"_s, u"2000:05"_s, u"2001:00"_s, u"2001:01"_s,
                          u"2002:00"_s, u"2003:00"_s, u"2003:01"_s}));
}

// A row that nobody expects would be one that the importer has made up.
void TestEdsImporterOddities::everyRowIsExpected()
{
    const QHash<QString, qsizetype> counts{
        {u"nodeid.eds"_s, 9},         {u"numbers.eds"_s, 8}, {u"values.eds"_s, 13}, {u"compact.dcf"_s, 8},
        {u"parametervalue.dcf"_s, 2}, {u"access.eds"_s, 8},  {u"remarks.eds"_s, 2}, {u"duplicates.eds"_s, 2},
        {u"names.eds"_s, 4},          {u"unknown.eds"_s, 2}, {u"lists.eds"_s, 2},   {u"structure.eds"_s, 9},
    };
    const QStringList files = QDir(QStringLiteral(IMPORTER_DATA "/eds")).entryList(QDir::Files);
    QCOMPARE(files.size(), counts.size());
    for (const QString &file : files) {
        Import device;
        QVERIFY(import(device, file));
        QVERIFY2(device.rows().size() == counts.value(file), qPrintable(file));
    }
}

void TestEdsImporterOddities::lineEndsDoNotMatter_data()
{
    QTest::addColumn<QByteArray>("file");
    const QByteArray text = plain;
    const auto with = [](QByteArray bytes, const char *end) { return bytes.replace('\n', end); };
    QTest::newRow("LF") << text;
    QTest::newRow("CR LF") << with(text, "\r\n");
    QTest::newRow("CR") << with(text, "\r");
    QTest::newRow("mixed") << with(text, "\r\n") + "[2001]\nParameterName=B\nDataType=5\nAccessType=ro\n";
    QTest::newRow("none at the end") << text.chopped(1);
    QTest::newRow("empty lines") << with(text, "\n\n\n");
}

void TestEdsImporterOddities::lineEndsDoNotMatter()
{
    QFETCH(QByteArray, file);
    Import device;
    QVERIFY(device.bytes(file));
    QCOMPARE(device.findings, QStringList());
    QCOMPARE(device.summary(0x2000, 0), u"Value | 5 | rw |  |  | 0"_s);
}

void TestEdsImporterOddities::encodingsAreRecognised_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("read");
    QTest::addColumn<QString>("finding");
    QTest::newRow("UTF-8") << QByteArray("Sch\xC3\xB6naich") << u"Schönaich"_s << u"UTF-8"_s;
    QTest::newRow("Windows-1252") << QByteArray("Sch\xF6naich") << u"Schönaich"_s << u"Windows-1252"_s;
    QTest::newRow("code page 850") << QByteArray("Sch\x94naich") << u"Schönaich"_s << u"code page 850"_s;
    QTest::newRow("cut UTF-8") << QByteArray("Sch\xC3") << u"SchÃ"_s << u"Windows-1252"_s;
}

void TestEdsImporterOddities::encodingsAreRecognised()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, finding);
    Import device;
    QVERIFY(device.bytes("[2000]\nParameterName=" + text + "\nDataType=9\nAccessType=rw\nDefaultValue=" + text
                         + '\n'));
    QTEST(device.sub(0x2000, 0).name, "read");
    QTEST(device.sub(0x2000, 0).defaultvalue, "read");
    QCOMPARE(device.findings,
             QStringList{u"0: The file is not plain ASCII text; read as %1."_s.arg(finding)});
}

void TestEdsImporterOddities::foreignCharactersDoNoHarm_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<int>("findings");
    const QByteArray text = plain;
    QByteArray utf16("\xFF\xFE");
    for (const char c : text)
        utf16.append(c).append('\0');
    QTest::newRow("byte order mark") << "\xEF\xBB\xBF" + text << 1;
    QTest::newRow("UTF-16") << utf16 << 1;
    QTest::newRow("zero bytes") << QByteArray("[2000]\0\n", 8) + text.mid(7) << 1;
    QTest::newRow("end of file") << text + '\x1A' << 0;
    QTest::newRow("text behind the end of file") << text + "\x1A[2001]\n" << 1;
}

void TestEdsImporterOddities::foreignCharactersDoNoHarm()
{
    QFETCH(QByteArray, file);
    QFETCH(int, findings);
    Import device;
    QVERIFY(device.bytes(file));
    QCOMPARE(device.rows(), QStringList{u"2000:00"_s});
    QCOMPARE(device.summary(0x2000, 0), u"Value | 5 | rw |  |  | 0"_s);
    QCOMPARE(int(device.findings.size()), findings);
}

void TestEdsImporterOddities::namesOfSectionsAndKeysAreReadInAnyCase()
{
    Import device;
    QVERIFY(device.bytes(QByteArray(plain).toUpper().replace("RW", "Rw").replace("VALUE", "Value")));
    QCOMPARE(device.summary(0x2000, 0), u"Value | 5 | rw |  |  | 0"_s);
    QVERIFY(device.bytes(QByteArray(plain).toLower().replace("value", "Value")));
    QCOMPARE(device.summary(0x2000, 0), u"Value | 5 | rw |  |  | 0"_s);
}

QTEST_GUILESS_MAIN(TestEdsImporterOddities)
#include "tst_edsimporteroddities.moc"
