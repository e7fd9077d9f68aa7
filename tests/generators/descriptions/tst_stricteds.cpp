#include "generators/descriptions/DescriptionDesk.h"
#include "generators/descriptions/StrictEds.h"

using namespace Qt::StringLiterals;

/** The strict reader of the tests finds what is wrong in a file. */
class TestStrictEds : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        StoreTest::prepareApplication();
        DescriptionDesk desk;
        desk.mandatoryObjects();
        desk.var(0x2000, DescriptionDesk::sub(u"Value"_s, 6, u"0x10"_s));
        m_file = desk.edsText();
    }
    void aGoodFileHasNoErrors() { QCOMPARE(StrictEds(m_file.toUtf8()).errors(), QStringList()); }
    void everyFlawIsFound_data();
    void everyFlawIsFound();

private:
    QString m_file;
};

void TestStrictEds::everyFlawIsFound_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QString>("error");
    QTest::newRow("unknown line") << u"\nProductName="_s << u"\nwhat is this\nProductName="_s
                                  << u"no entry: what is this"_s;
    QTest::newRow("line with blanks") << u"Granularity=0"_s << u"Granularity=0 "_s << u"no entry"_s;
    QTest::newRow("unknown key") << u"OrderCode="_s << u"OrderKode="_s << u"[DeviceInfo] has the keys"_s;
    QTest::newRow("unknown key of an object")
        << u"[2000]\n"_s << u"[2000]\nUnit=m\n"_s << u"[2000] has the keys"_s;
    QTest::newRow("key twice") << u"[2000]\n"_s << u"[2000]\nObjectType=7\n"_s << u"ObjectType comes again"_s;
    QTest::newRow("section twice") << u"[2000]"_s << u"[1001]"_s << u"[1001] comes again"_s;
    QTest::newRow("section missing") << u"[DummyUsage]"_s << u"[Dummies]"_s << u"the file begins with"_s;
    QTest::newRow("section unknown") << u"[2000]"_s << u"[Object]"_s << u"[Object] is unknown"_s;
    QTest::newRow("flag") << u"LSS_Supported=0"_s << u"LSS_Supported=2"_s << u"LSS_Supported of"_s;
    QTest::newRow("empty number") << u"BaudRate_10=0"_s << u"BaudRate_10="_s << u"BaudRate_10 of"_s;
    QTest::newRow("count of objects") << u"SupportedObjects=1"_s << u"SupportedObjects=2"_s
                                      << u"SupportedObjects of [ManufacturerObjects] is 2, not 1"_s;
    QTest::newRow("object not listed") << u"1=0x2000"_s << u"1=0x2001"_s << u"the lists name"_s;
    QTest::newRow("object in the wrong list") << u"1=0x2000"_s << u"1=0x6000"_s << u"no object of the"_s;
    QTest::newRow("SubNumber") << u"SubNumber=4"_s << u"SubNumber=3"_s
                               << u"SubNumber of [1018] is 3, not 4"_s;
    QTest::newRow("sub-index of another object")
        << u"[1018sub3]"_s << u"[1019sub3]"_s << u"[1019sub3] belongs to no object"_s;
    QTest::newRow("access type") << u"AccessType=rw"_s << u"AccessType=RW"_s << u"has the access RW"_s;
    QTest::newRow("data type") << u"DataType=6"_s << u"DataType=UNSIGNED16"_s << u"DataType of [2000]"_s;
    QTest::newRow("octal number") << u"DefaultValue=0x10"_s << u"DefaultValue=010"_s
                                  << u"DefaultValue of [2000] is 010"_s;
    QTest::newRow("one limit") << u"DefaultValue=0x10"_s << u"LowLimit=1"_s << u"one limit only"_s;
    QTest::newRow("comment lines") << u"Lines=1"_s << u"Lines=2"_s << u"[Comments] has the keys"_s;
    QTest::newRow("time") << u"CreationTime=10:13PM"_s << u"CreationTime=22:13"_s
                          << u"CreationTime is none"_s;
    QTest::newRow("date") << u"ModificationDate=11-14-23"_s << u"ModificationDate=2023-11-14"_s
                          << u"ModificationDate is none"_s;
    QTest::newRow("name") << u"ParameterName=Value"_s << u"ParameterName="_s << u"[2000] has no name"_s;
    QTest::newRow("object type") << u"ObjectType=9"_s << u"ObjectType=0x9"_s << u"has the object type"_s;
    QTest::newRow("carriage return") << u"[2000]\n"_s << u"[2000]\r\n"_s << u"control character"_s;
}

void TestStrictEds::everyFlawIsFound()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(QString, error);
    QString broken = m_file;
    QVERIFY2(broken.contains(from), "the flaw has no place");
    broken.replace(broken.lastIndexOf(from), from.size(), to);
    const QStringList errors = StrictEds(broken.toUtf8()).errors();
    QVERIFY2(!errors.filter(error).isEmpty(), qPrintable(errors.join(u'\n')));
}

QTEST_GUILESS_MAIN(TestStrictEds)
#include "tst_stricteds.moc"
