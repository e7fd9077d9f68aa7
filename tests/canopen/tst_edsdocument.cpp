#include "canopen/EdsDocument.h"

#include <QTest>

class TestEdsDocument : public QObject
{
    Q_OBJECT

private:
    /** One line per finding: "3 warning: text". */
    static QStringList lines(const EdsFindings &findings)
    {
        const QStringList severities{QStringLiteral("note"), QStringLiteral("warning"),
                                     QStringLiteral("error")};
        QStringList result;
        for (const EdsFinding &finding : findings.list())
            result.append(QStringLiteral("%1 %2: %3")
                              .arg(finding.line)
                              .arg(severities[int(finding.severity)], finding.text));
        return result;
    }

    static QString dump(const EdsDocument &document)
    {
        QString result;
        for (const EdsDocument::Section &section : document.sections()) {
            result += QStringLiteral("[%1]@%2").arg(section.name).arg(section.line);
            for (const EdsDocument::Entry &entry : section.entries)
                result += QStringLiteral(" %1=%2@%3").arg(entry.key, entry.value).arg(entry.line);
            result += u'\n';
        }
        return result;
    }

private Q_SLOTS:
    void sectionsAndEntriesKeepTheirOrderAndLines_data();
    void sectionsAndEntriesKeepTheirOrderAndLines();
    void namesAreFoundWithoutRegardToCase();
    void deviationsAreTold_data();
    void deviationsAreTold();
    void aSecondReadForgetsTheFirst();
    void theListOfFindingsIsBounded();
    void commentLinesDescribeTheSectionBelow_data();
    void commentLinesDescribeTheSectionBelow();
    void generatedFilesDescribeTheSectionAbove_data();
    void generatedFilesDescribeTheSectionAbove();
    void sectionsOfAnySizeFindTheirKeys_data();
    void sectionsOfAnySizeFindTheirKeys();
    void aFileWithTooManyItemsIsRefused();
};

void TestEdsDocument::sectionsAndEntriesKeepTheirOrderAndLines_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("result");
    QTest::newRow("LF") << QByteArray("[A]\nx=1\n\n[B]\ny=2\n") << "[A]@1 x=1@2\n[B]@4 y=2@5\n";
    QTest::newRow("CR LF") << QByteArray("[A]\r\nx=1\r\n\r\n[B]\r\ny=2") << "[A]@1 x=1@2\n[B]@4 y=2@5\n";
    QTest::newRow("CR") << QByteArray("[A]\rx=1\r\r[B]\ry=2\r") << "[A]@1 x=1@2\n[B]@4 y=2@5\n";
    QTest::newRow("blanks") << QByteArray("  [ A ] \n\t x = 1 2 \t\n") << "[A]@1 x=1 2@2\n";
    QTest::newRow("comments") << QByteArray(";c\n[A]\n ;x=1\ny=2 ; stays\n") << "[A]@2 y=2 ; stays@4\n";
    QTest::newRow("equals sign in a value") << QByteArray("[A]\nx=a=b\n") << "[A]@1 x=a=b@2\n";
    QTest::newRow("empty value") << QByteArray("[A]\nx=\n") << "[A]@1 x=@2\n";
    QTest::newRow("empty section") << QByteArray("[A]\n[]\n") << "[A]@1\n[]@2\n";
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF[A]\nx=1\n") << "[A]@1 x=1@2\n";
    QTest::newRow("end of text") << QByteArray("[A]\nx=1\n\x1A") << "[A]@1 x=1@2\n";
    QTest::newRow("zero bytes") << QByteArray("[A]\nx=\0001\n", 9) << "[A]@1 x=1@2\n";
    QTest::newRow("empty") << QByteArray() << "";
}

void TestEdsDocument::sectionsAndEntriesKeepTheirOrderAndLines()
{
    QFETCH(QByteArray, bytes);
    EdsDocument document;
    EdsFindings findings;
    document.read(bytes, findings);
    QTEST(dump(document), "result");
}

void TestEdsDocument::namesAreFoundWithoutRegardToCase()
{
    EdsDocument document;
    EdsFindings findings;
    document.read("[DeviceInfo]\nVendorName=Korvel\n", findings);
    const EdsDocument::Section *section = document.section(QStringLiteral("DEVICEINFO"));
    QVERIFY(section);
    QCOMPARE(section->value(QStringLiteral("vendorname")), QStringLiteral("Korvel"));
    QCOMPARE(section->lineOf(QStringLiteral("VENDORNAME")), 2);
    QVERIFY(!section->find(QStringLiteral("ProductName")));
    QVERIFY(section->value(QStringLiteral("ProductName")).isEmpty());
    QCOMPARE(section->lineOf(QStringLiteral("ProductName")), 1);
    QVERIFY(!document.section(QStringLiteral("FileInfo")));
}

void TestEdsDocument::deviationsAreTold_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("findings");
    QTest::newRow("none") << QByteArray("; file\n[A]\nx=1\n") << QStringList();
    QTest::newRow("duplicate section")
        << QByteArray("[A]\nx=1\n[a]\ny=2\n")
        << QStringList{"3 warning: The section [a] exists already in line 1; both are read as one."};
    QTest::newRow("duplicate key") << QByteArray(
        "[A]\nx=1\nX=2\n") << QStringList{"3 warning: X exists already in line 2; this value is left out."};
    QTest::newRow("duplicate key, same value")
        << QByteArray("[A]\nx=1\nX=1\n") << QStringList{"3 note: X exists already in line 2."};
    QTest::newRow("number sign comment")
        << QByteArray("[A]\n#x=1\n")
        << QStringList{"2 note: A line that begins with \"#\" is taken as a comment."};
    QTest::newRow("remark behind a section")
        << QByteArray("[1400] # repeat until 15FF\n")
        << QStringList{"1 note: The remark behind the section [1400] is left out."};
    QTest::newRow("text behind a section")
        << QByteArray("[1400]x\n")
        << QStringList{"1 warning: The text behind the section [1400] is left out."};
    QTest::newRow("open bracket") << QByteArray("[1400\n")
                                  << QStringList{"1 warning: The closing bracket of the section is missing."};
    QTest::newRow("neither section nor entry")
        << QByteArray("[A]\nhello\n=1\n")
        << QStringList{"2 error: The line is neither a section nor an entry.",
                       "3 error: The line is neither a section nor an entry."};
    QTest::newRow("entry before a section")
        << QByteArray("x=1\n") << QStringList{"1 error: The entry stands before the first section."};
    QTest::newRow("long line") << QByteArray(";") + QByteArray(255, 'x')
                               << QStringList{"1 note: The line is longer than 255 characters."};
    QTest::newRow("encoding") << QByteArray("[A]\nx=K\x94ln\n")
                              << QStringList{
                                     "0 note: The file is not plain ASCII text; read as code page 850."};
    QTest::newRow("zero bytes") << QByteArray("[A]\0", 4)
                                << QStringList{"0 warning: Zero bytes in the text are left out."};
    QTest::newRow("text behind the end")
        << QByteArray("[A]\n\x1Ax=1\n")
        << QStringList{"0 warning: Text behind an end-of-file character (0x1A) is left out."};
}

void TestEdsDocument::deviationsAreTold()
{
    QFETCH(QByteArray, bytes);
    EdsDocument document;
    EdsFindings findings;
    findings.start(QStringLiteral("device.eds"));
    document.read(bytes, findings);
    QTEST(lines(findings), "findings");
    for (const EdsFinding &finding : findings.list())
        QCOMPARE(finding.file, QStringLiteral("device.eds"));
}

void TestEdsDocument::aSecondReadForgetsTheFirst()
{
    EdsDocument document;
    EdsFindings findings;
    document.read("[A]\nx=1\n", findings);
    document.read("[B]\n", findings);
    QCOMPARE(dump(document), QStringLiteral("[B]@1\n"));
    QVERIFY(!document.section(QStringLiteral("A")));
}

void TestEdsDocument::theListOfFindingsIsBounded()
{
    EdsDocument document;
    EdsFindings findings;
    document.read(QByteArray("[A]\n") + QByteArray("?\n").repeated(5000), findings);
    QCOMPARE(findings.list().size(), EdsFindings::limit + 1);
    QCOMPARE(findings.list().last().text, QStringLiteral("More findings are not listed."));
}

void TestEdsDocument::commentLinesDescribeTheSectionBelow_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("description");
    QTest::newRow("lines") << QByteArray(";;One\n;;  two \n[A]\nx=1\n") << "One\n  two ";
    QTest::newRow("empty line") << QByteArray(";;One\n;;\n;;two\n[A]\n") << "One\n\ntwo";
    QTest::newRow("indented") << QByteArray("  ;;One\n[A]\n") << "One";
    QTest::newRow("remark between") << QByteArray(";;One\n;remark\n;;two\n[A]\n") << "One\ntwo";
    QTest::newRow("two blocks") << QByteArray(";;One\n\n;;two\n\n[A]\n") << "two";
    QTest::newRow("entry between") << QByteArray("[B]\n;;One\ny=1\n[A]\n") << QString();
    QTest::newRow("entry that exists between") << QByteArray("[B]\ny=1\n;;One\ny=1\n[A]\n") << QString();
    QTest::newRow("behind the entries") << QByteArray("[A]\nx=1\n;;One\n") << QString();
    QTest::newRow("one mark") << QByteArray(";One\n[A]\nx=1\n;two\n") << QString();
    QTest::newRow("second part of a section") << QByteArray("[A]\nx=1\n[B]\n;;One\n[A]\n") << "One";
    QTest::newRow("both parts of a section") << QByteArray(";;One\n[A]\n[B]\n;;Two\n[A]\n") << "One";
}

void TestEdsDocument::commentLinesDescribeTheSectionBelow()
{
    QFETCH(QByteArray, bytes);
    EdsDocument document;
    EdsFindings findings;
    QVERIFY(document.read(bytes, findings));
    QVERIFY(!document.isGenerated());
    QTEST(document.section(QStringLiteral("A"))->description, "description");
}

void TestEdsDocument::generatedFilesDescribeTheSectionAbove_data()
{
    QTest::addColumn<QByteArray>("section");
    QTest::addColumn<QString>("description");
    const QByteArray longLine(250, 'a');
    QTest::newRow("line") << QByteArray("x=1\n;One\n") << "One";
    QTest::newRow("lines") << QByteArray("x=1\n;One\n;\n; two \n") << "One\n\n two ";
    QTest::newRow("cut line") << "x=1\n;" + longLine + "\n;b\n" << QString::fromLatin1(longLine + " b");
    QTest::newRow("looks like another form") << QByteArray("x=1\n;;One\n") << ";One";
    QTest::newRow("remark before the entries") << QByteArray("; remark\nx=1\n") << QString();
    QTest::newRow("remark behind a blank line") << QByteArray("x=1\n\n; remark\n") << QString();
    QTest::newRow("none") << QByteArray("x=1\n") << QString();
}

void TestEdsDocument::generatedFilesDescribeTheSectionAbove()
{
    QFETCH(QByteArray, section);
    EdsDocument document;
    EdsFindings findings;
    QVERIFY(document.read("; EDS file for pump - generated by CANopen NodeSmith 4.3.2\n[A]\n" + section
                              + "\n;;Below\n[B]\n",
                          findings));
    QVERIFY(document.isGenerated());
    QTEST(document.section(QStringLiteral("A"))->description, "description");
    QCOMPARE(document.section(QStringLiteral("B"))->description, QStringLiteral("Below"));
}

void TestEdsDocument::sectionsOfAnySizeFindTheirKeys_data()
{
    QTest::addColumn<int>("entries");
    for (const int entries : {0, 1, 15, 16, 17, 18, 500})
        QTest::addRow("%d entries", entries) << entries;
}

void TestEdsDocument::sectionsOfAnySizeFindTheirKeys()
{
    QFETCH(int, entries);
    QByteArray bytes = "[A]\n";
    for (int entry = 0; entry < entries; ++entry)
        bytes += "Key" + QByteArray::number(entry) + '=' + QByteArray::number(entry) + '\n';
    for (int entry = 0; entry < entries; ++entry)
        bytes += "KEY" + QByteArray::number(entry) + "=again\n";
    EdsDocument document;
    EdsFindings findings;
    QVERIFY(document.read(bytes, findings));
    const EdsDocument::Section *section = document.section(QStringLiteral("a"));
    QCOMPARE(section->entries.size(), entries);
    QCOMPARE(findings.list().size(), entries);
    for (int entry = 0; entry < entries; ++entry)
        QCOMPARE(section->value(QStringLiteral("kEY%1").arg(entry)), QString::number(entry));
    QVERIFY(!section->find(QStringLiteral("Key")));
    QVERIFY(!section->find(QStringLiteral("Key%1").arg(entries)));
}

void TestEdsDocument::aFileWithTooManyItemsIsRefused()
{
    QByteArray bytes;
    for (qsizetype item = 0; item <= EdsDocument::mostItems; item += 2)
        bytes += '[' + QByteArray::number(item) + "]\nx=1\n";
    EdsDocument document;
    EdsFindings findings;
    QVERIFY(!document.read(bytes + "[last]\n", findings));
    QCOMPARE(findings.list().size(), 1);
    QCOMPARE(findings.list().constFirst().severity, EdsFinding::Severity::Error);
}

QTEST_GUILESS_MAIN(TestEdsDocument)
#include "tst_edsdocument.moc"
