#include "generators/documents/DocumentDesk.h"
#include "importers/CsvDesk.h"

using namespace Qt::StringLiterals;

/** What the importer makes of documents whose texts hold separators, quotes and line breaks. */
class TestIcsvImported : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void textsSurviveTheWayThroughTheTable_data();
    void textsSurviveTheWayThroughTheTable();
    void rowsOfTheCsvFileStayRows_data() { textsSurviveTheWayThroughTheTable_data(); }
    void rowsOfTheCsvFileStayRows();
    void zeroCharactersDoNotHideARow();
};

void TestIcsvImported::textsSurviveTheWayThroughTheTable_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text :
         {"1,5", ",", ",,a,", "a, \"b\"", "\"a\", \"b\"", "\"", "\"\"", "\"open, and not closed", "a\"",
          "a;b", "c,0x2000,0x2001", "#, no comment", "größer, 大"})
        QTest::newRow(text) << QString::fromUtf8(text);
}

void TestIcsvImported::textsSurviveTheWayThroughTheTable()
{
    QFETCH(QString, text);
    DocumentDesk desk;
    const QString lines = text + u'\n' + text;
    desk.object(0x2000, {.name = text, .objecttype = CANopen::Array},
                {{.name = text,
                  .datatype = CAN::VisibleString,
                  .accesstype = u"rw"_s,
                  .defaultvalue = text,
                  .lowlimit = text,
                  .uplimit = text,
                  .implementation = CANopen::ApplicationVariable,
                  .description = lines,
                  .varname = text}});
    CsvDesk imported;
    QVERIFY(imported.importBytes(desk.icsv().toUtf8()));
    QCOMPARE(imported.remarks(), QStringList());
    QCOMPARE(imported.object(0x2000).name, text);
    const ObjectDataBase::SUBINDEX_DATA_T sub = imported.sub(0x2000);
    QCOMPARE(sub.name, text);
    QCOMPARE(sub.defaultvalue, text);
    QCOMPARE(sub.lowlimit, text);
    QCOMPARE(sub.uplimit, text);
    QCOMPARE(sub.varname, text);
    QCOMPARE(sub.description, lines);
}

void TestIcsvImported::rowsOfTheCsvFileStayRows()
{
    QFETCH(QString, text);
    DocumentDesk desk;
    desk.object(0x2000, {.name = u"Texts"_s, .objecttype = CANopen::Record},
                {{.name = text, .datatype = CAN::VisibleString, .defaultvalue = text + u"\r\n"_s + text},
                 {.name = u"Last"_s, .datatype = CAN::Unsigned8, .pdomapping = PDOMapping::TPDO}});
    CsvDesk imported;
    QVERIFY(imported.importBytes(desk.csv().toUtf8()));
    QCOMPARE(imported.object(0x2000).objecttype, int(CANopen::Record));
    const ObjectDataBase::SUBINDEX_DATA_T first = imported.sub(0x2000, 0);
    QString expected = QString(text).replace(u',', u';');
    if (expected.startsWith(u'"'))
        expected[0] = u'\'';
    QCOMPARE(first.name, expected);
    QCOMPARE(first.defaultvalue.size(), 2 * text.size());
    QCOMPARE(first.datatype, int(CAN::VisibleString));
    const ObjectDataBase::SUBINDEX_DATA_T last = imported.sub(0x2000, 1);
    QCOMPARE(last.name, u"Last"_s);
    QVERIFY(last.pdomapping.isEqualToType(PDOMapping::TPDO));
}

void TestIcsvImported::zeroCharactersDoNotHideARow()
{
    DocumentDesk desk;
    const QString text = QString(u'a') + QChar(QChar::Null) + u'b';
    desk.variable(0x2000, {.name = text, .datatype = CAN::Unsigned8, .description = text});
    for (const QString &table : {desk.csv(), desk.icsv()}) {
        CsvDesk imported;
        QVERIFY(imported.importBytes(table.toUtf8()));
        QCOMPARE(imported.sub(0x2000).name, u"ab"_s);
    }
}

QTEST_GUILESS_MAIN(TestIcsvImported)
#include "tst_icsvimported.moc"
