#include "canopen/PDOMapping.h"

#include <QTest>

class TestPDOMapping : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsForbidden() { QCOMPARE(PDOMapping().toUInt(), quint8(0)); }

    void anEdsFlagIsForbiddenOrAllowed()
    {
        QVERIFY(PDOMapping(false).isEqualToType(PDOMapping::Forbidden));
        QVERIFY(PDOMapping(true).isEqualToType(PDOMapping::Allowed));
        QCOMPARE(PDOMapping(true).toBinary(), quint8(1));
    }

    void everyTypeButForbiddenIsOneInAnEds_data();
    void everyTypeButForbiddenIsOneInAnEds();
    void comparesByValue();
    void everyStoredByteComesBackFromItsCsvText();
    void csvTextIsReadWithoutRegardToCaseAndBlanks_data();
    void csvTextIsReadWithoutRegardToCaseAndBlanks();
    void hasTheWordsOfCia311_data();
    void hasTheWordsOfCia311();
};

void TestPDOMapping::everyTypeButForbiddenIsOneInAnEds_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("binary");
    QTest::newRow("Forbidden") << 0 << 0;
    QTest::newRow("Allowed") << 1 << 1;
    QTest::newRow("Default") << 2 << 1;
    QTest::newRow("RPDO") << 3 << 1;
    QTest::newRow("TPDO") << 4 << 1;
}

void TestPDOMapping::everyTypeButForbiddenIsOneInAnEds()
{
    QFETCH(int, type);
    QTEST(int(PDOMapping(PDOMapping::PDOMappingType(type)).toBinary()), "binary");
}

void TestPDOMapping::comparesByValue()
{
    PDOMapping mapping;
    mapping.setValue(PDOMapping::TPDO);
    QVERIFY(mapping.isEqualToType(PDOMapping::TPDO));
    QVERIFY(!mapping.isEqualToType(PDOMapping::RPDO));
    QVERIFY(mapping == PDOMapping(PDOMapping::TPDO));
    QVERIFY(mapping != PDOMapping());
}

void TestPDOMapping::everyStoredByteComesBackFromItsCsvText()
{
    QSet<QString> texts;
    for (int stored = 0; stored < 256; ++stored) {
        const PDOMapping mapping(stored);
        QCOMPARE(int(mapping.toUInt()), stored);
        QCOMPARE(PDOMapping::fromCSVString(mapping.getCSVStringValue()), mapping);
        texts.insert(mapping.getCSVStringValue());
    }
    QCOMPARE(texts.size(), 256);
    QCOMPARE(PDOMapping().getCSVStringValue(), QStringLiteral("NONE"));
}

void TestPDOMapping::csvTextIsReadWithoutRegardToCaseAndBlanks_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("type");
    QTest::newRow("lower case") << "rpdo" << 3;
    QTest::newRow("blanks") << "  Tpdo " << 4;
    QTest::newRow("a flag") << "yes" << 1;
    QTest::newRow("word of CiA 311") << "optional" << 1;
    QTest::newRow("label") << "Forbidden" << 0;
    QTest::newRow("number") << "2" << 2;
    QTest::newRow("empty") << "" << 0;
    QTest::newRow("unknown word") << "sometimes" << 0;
    QTest::newRow("number beyond a byte") << "260" << 0;
    QTest::newRow("negative") << "-1" << 0;
}

void TestPDOMapping::csvTextIsReadWithoutRegardToCaseAndBlanks()
{
    QFETCH(QString, text);
    QTEST(int(PDOMapping::fromCSVString(text).toUInt()), "type");
}

void TestPDOMapping::hasTheWordsOfCia311_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("word");
    QTest::newRow("Forbidden") << 0 << "no";
    QTest::newRow("Allowed") << 1 << "optional";
    QTest::newRow("Default") << 2 << "default";
    QTest::newRow("RPDO") << 3 << "RPDO";
    QTest::newRow("TPDO") << 4 << "TPDO";
    QTest::newRow("a number without meaning") << 77 << "no";
}

void TestPDOMapping::hasTheWordsOfCia311()
{
    QFETCH(int, type);
    QTEST(PDOMapping(type).getXDDStringValue(), "word");
}

QTEST_GUILESS_MAIN(TestPDOMapping)
#include "tst_pdomapping.moc"
