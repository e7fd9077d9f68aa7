#include "canopen/COHelper.h"

#include <QTest>

class TestCOHelper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyDataTypeComesBackFromItsName();
    void dataTypesHaveTheNamesOfCia301_data();
    void dataTypesHaveTheNamesOfCia301();
    void numbersOfOtherProtocolsKeepToTheirRanges();
    void shortNamesServeTheStackMacros_data();
    void shortNamesServeTheStackMacros();
    void dataTypeWordsAreReadTolerantly_data();
    void dataTypeWordsAreReadTolerantly();
    void dataTypesHaveTheirBitWidths_data();
    void dataTypesHaveTheirBitWidths();
    void integerTypesHaveTheirNaturalRange_data();
    void integerTypesHaveTheirNaturalRange();
    void typesWithoutRangeClearTheLimits_data();
    void typesWithoutRangeClearTheLimits();
    void everyNumberIsAnsweredWithoutHarm();
    void implementationsHaveTheirTexts();
    void objectCodesComeBackFromTheirWords_data();
    void objectCodesComeBackFromTheirWords();
    void objectCodeWordsAreReadTolerantly_data();
    void objectCodeWordsAreReadTolerantly();
    void pdoMappingsHaveTheirLabels();
    void categoriesAreReadFromWords_data();
    void categoriesAreReadFromWords();
    void accessTypesAndTheirLabelsComeBack();
    void accessWordsOfFilesAreNormalised_data();
    void accessWordsOfFilesAreNormalised();
    void profileNamesLoseSuperfluousBlanks();
    void energyBusWordsBecomeDataTypeNames_data();
    void energyBusWordsBecomeDataTypeNames();
};

void TestCOHelper::everyDataTypeComesBackFromItsName()
{
    QCOMPARE(COHelper::stringDataTypeIndexMap.size(), 49);
    const auto &map = COHelper::stringDataTypeIndexMap;
    for (auto type = map.begin(); type != map.end(); ++type) {
        QCOMPARE(COHelper::index2DataTypeString(type.key()), type.value());
        QCOMPARE(quint16(COHelper::mapDataTypeString(type.value())), type.key());
        QVERIFY(!COHelper::index2DataTypeShortString(type.key()).isEmpty());
    }
}

void TestCOHelper::dataTypesHaveTheNamesOfCia301_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("name");
    QTest::newRow("1") << 1 << "BOOLEAN";
    QTest::newRow("4") << 4 << "INTEGER32";
    QTest::newRow("5") << 5 << "UNSIGNED8";
    QTest::newRow("8") << 8 << "REAL32";
    QTest::newRow("9") << 9 << "VISIBLE_STRING";
    QTest::newRow("11") << 11 << "UNICODE_STRING";
    QTest::newRow("13") << 13 << "TIME_DIFFERENCE";
    QTest::newRow("15") << 15 << "DOMAIN";
    QTest::newRow("17") << 17 << "REAL64";
    QTest::newRow("20") << 20 << "INTEGER56";
    QTest::newRow("21") << 21 << "INTEGER64";
    QTest::newRow("22") << 22 << "UNSIGNED24";
    QTest::newRow("27") << 27 << "UNSIGNED64";
    QTest::newRow("J1939 width") << 109 << "UNSIGNED12";
    QTest::newRow("UTF-8") << 124 << "UTF8_STRING";
    QTest::newRow("no type") << 0 << "";
    QTest::newRow("reserved") << 14 << "";
    QTest::newRow("reserved too") << 23 << "";
    QTest::newRow("complex type") << 0x21 << "";
    QTest::newRow("highest") << 0xFFFF << "";
}

void TestCOHelper::dataTypesHaveTheNamesOfCia301()
{
    QFETCH(int, number);
    QTEST(COHelper::index2DataTypeString(quint16(number)), "name");
}

void TestCOHelper::numbersOfOtherProtocolsKeepToTheirRanges()
{
    const QList<quint16> numbers = COHelper::stringDataTypeIndexMap.keys();
    for (const quint16 number : numbers) {
        QVERIFY2((number >= 1 && number <= 27) || (number >= 50 && number <= 53)
                     || (number >= 100 && number <= 129),
                 qPrintable(QString::number(number)));
    }
    for (const quint16 number : {50, 51, 52, 53, 100, 129})
        QVERIFY(COHelper::stringDataTypeIndexMap.contains(number));
}

void TestCOHelper::shortNamesServeTheStackMacros_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("name");
    QTest::newRow("BOOLEAN") << 1 << "B";
    QTest::newRow("UNSIGNED8") << 5 << "U8";
    QTest::newRow("INTEGER24") << 16 << "I24";
    QTest::newRow("REAL32") << 8 << "R32";
    QTest::newRow("VISIBLE_STRING") << 9 << "VS";
    QTest::newRow("OCTET_STRING") << 10 << "OS";
    QTest::newRow("DOMAIN") << 15 << "DOMAIN";
    QTest::newRow("UNSIGNED48") << 25 << "U48";
    QTest::newRow("UNSIGNED2") << 100 << "U2";
    QTest::newRow("UNSIGNED7") << 105 << "U7";
    QTest::newRow("UNSIGNED29") << 129 << "U29";
    QTest::newRow("unknown") << 1000 << "";
}

void TestCOHelper::shortNamesServeTheStackMacros()
{
    QFETCH(int, number);
    QTEST(COHelper::index2DataTypeShortString(quint16(number)), "name");
}

void TestCOHelper::dataTypeWordsAreReadTolerantly_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");
    QTest::newRow("lower case") << "unsigned16" << 6;
    QTest::newRow("blanks") << " Visible_String\t" << 9;
    QTest::newRow("decimal") << "7" << 7;
    QTest::newRow("hexadecimal") << "0x07" << 7;
    QTest::newRow("upper X") << "0X1B" << 27;
    QTest::newRow("octal") << "0007" << 7;
    QTest::newRow("number without type") << "14" << 0;
    QTest::newRow("number beyond 16 bits") << "65543" << 0;
    QTest::newRow("negative") << "-7" << 0;
    QTest::newRow("empty") << "" << 0;
    QTest::newRow("unknown word") << "UNSIGNED9000" << 0;
}

void TestCOHelper::dataTypeWordsAreReadTolerantly()
{
    QFETCH(QString, text);
    QTEST(int(COHelper::mapDataTypeString(text)), "number");
}

void TestCOHelper::dataTypesHaveTheirBitWidths_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("bits");
    QTest::newRow("DOMAIN") << 15 << 0;
    QTest::newRow("BOOLEAN") << 1 << 1;
    QTest::newRow("INTEGER8") << 2 << 8;
    QTest::newRow("UNSIGNED8") << 5 << 8;
    QTest::newRow("UNSIGNED16") << 6 << 16;
    QTest::newRow("INTEGER24") << 16 << 24;
    QTest::newRow("UNSIGNED24") << 22 << 24;
    QTest::newRow("REAL32") << 8 << 32;
    QTest::newRow("UNSIGNED40") << 24 << 40;
    QTest::newRow("INTEGER48") << 19 << 48;
    QTest::newRow("TIME_OF_DAY") << 12 << 48;
    QTest::newRow("UNSIGNED56") << 26 << 56;
    QTest::newRow("INTEGER64") << 21 << 64;
    QTest::newRow("REAL64") << 17 << 64;
    QTest::newRow("VISIBLE_STRING") << 9 << 0;
    QTest::newRow("UTF8_STRING") << 124 << 0;
    QTest::newRow("2 bits") << 100 << 2;
    QTest::newRow("15 bits") << 112 << 15;
    QTest::newRow("19 bits") << 117 << 19;
    QTest::newRow("18 bits") << 118 << 18;
    QTest::newRow("21 bits") << 119 << 21;
    QTest::newRow("29 bits") << 129 << 29;
    QTest::newRow("no type") << 0 << 0;
    QTest::newRow("unknown") << 0x40 << 0;
}

void TestCOHelper::dataTypesHaveTheirBitWidths()
{
    QFETCH(int, number);
    QTEST(int(COHelper::getDataLengthBits(CAN::CANopenDataType(number))), "bits");
}

void TestCOHelper::integerTypesHaveTheirNaturalRange_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("low");
    QTest::addColumn<QString>("up");
    QTest::newRow("BOOLEAN") << 1 << "0"
                             << "1";
    QTest::newRow("UNSIGNED8") << 5 << "0"
                               << "255";
    QTest::newRow("UNSIGNED16") << 6 << "0"
                                << "65535";
    QTest::newRow("UNSIGNED32") << 7 << "0"
                                << "4294967295";
    QTest::newRow("UNSIGNED64") << 27 << "0"
                                << "18446744073709551615";
    QTest::newRow("INTEGER8") << 2 << "-128"
                              << "127";
    QTest::newRow("INTEGER16") << 3 << "-32768"
                               << "32767";
    QTest::newRow("INTEGER24") << 16 << "-8388608"
                               << "8388607";
    QTest::newRow("INTEGER32") << 4 << "-2147483648"
                               << "2147483647";
    QTest::newRow("INTEGER64") << 21 << "-9223372036854775808"
                               << "9223372036854775807";
    QTest::newRow("UNSIGNED2") << 100 << "0"
                               << "3";
}

void TestCOHelper::integerTypesHaveTheirNaturalRange()
{
    QFETCH(int, number);
    QString low;
    QString up;
    QVERIFY(COHelper::getDefaultLimits(CAN::CANopenDataType(number), low, up));
    QTEST(low, "low");
    QTEST(up, "up");
}

void TestCOHelper::typesWithoutRangeClearTheLimits_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("REAL32") << 8;
    QTest::newRow("VISIBLE_STRING") << 9;
    QTest::newRow("DOMAIN") << 15;
    QTest::newRow("TIME_OF_DAY") << 12;
    QTest::newRow("no type") << 0;
    QTest::newRow("unknown") << 5000;
}

void TestCOHelper::typesWithoutRangeClearTheLimits()
{
    QFETCH(int, number);
    QString low = QStringLiteral("1");
    QString up = QStringLiteral("2");
    QVERIFY(!COHelper::getDefaultLimits(CAN::CANopenDataType(number), low, up));
    QVERIFY(low.isEmpty());
    QVERIFY(up.isEmpty());
}

void TestCOHelper::everyNumberIsAnsweredWithoutHarm()
{
    QString low;
    QString up;
    for (int number = 0; number <= 0xFFFF; ++number) {
        const bool known = COHelper::stringDataTypeIndexMap.contains(quint16(number));
        QCOMPARE(!COHelper::index2DataTypeString(quint16(number)).isEmpty(), known);
        QCOMPARE(!COHelper::index2DataTypeShortString(quint16(number)).isEmpty(), known);
        const auto type = CAN::CANopenDataType(number);
        QVERIFY(known
                || (COHelper::getDataLengthBits(type) == 0 && !COHelper::getDefaultLimits(type, low, up)));
    }
}

void TestCOHelper::implementationsHaveTheirTexts()
{
    QCOMPARE(COHelper::implementation2String(0), QStringLiteral("Managed Variable"));
    QCOMPARE(COHelper::implementation2String(1), QStringLiteral("Managed Const"));
    QCOMPARE(COHelper::implementation2String(2), QStringLiteral("Application Variable"));
    QCOMPARE(COHelper::implementation2String(3), QStringLiteral("Virtual Object"));
    QVERIFY(COHelper::implementation2String(4).isEmpty());
    QVERIFY(COHelper::implementation2String(255).isEmpty());
}

void TestCOHelper::objectCodesComeBackFromTheirWords_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("word");
    QTest::newRow("0") << 0 << "NULL";
    QTest::newRow("2") << 2 << "DOMAIN";
    QTest::newRow("5") << 5 << "DEFTYPE";
    QTest::newRow("6") << 6 << "DEFSTRUCT";
    QTest::newRow("7") << 7 << "VAR";
    QTest::newRow("8") << 8 << "ARRAY";
    QTest::newRow("9") << 9 << "RECORD";
}

void TestCOHelper::objectCodesComeBackFromTheirWords()
{
    QFETCH(int, code);
    QTEST(COHelper::objectCode2String(CANopen::ObjectCode(code)), "word");
    QFETCH(QString, word);
    QCOMPARE(int(COHelper::string2objectCode(word)), code);
}

void TestCOHelper::objectCodeWordsAreReadTolerantly_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("code");
    QTest::newRow("lower case") << "var" << 7;
    QTest::newRow("word of a CSV file") << "VARIABLE" << 7;
    QTest::newRow("blanks") << " Array " << 8;
    QTest::newRow("hexadecimal") << "0x9" << 9;
    QTest::newRow("padded hexadecimal") << "0x07" << 7;
    QTest::newRow("decimal") << "8" << 8;
    QTest::newRow("number without meaning") << "3" << 0;
    QTest::newRow("number beyond a byte") << "0x107" << 0;
    QTest::newRow("unknown word") << "OBJECT" << 0;
    QTest::newRow("empty") << "" << 0;
}

void TestCOHelper::objectCodeWordsAreReadTolerantly()
{
    QFETCH(QString, text);
    QTEST(int(COHelper::string2objectCode(text)), "code");
    QVERIFY(COHelper::objectCode2String(CANopen::ObjectCode(200)).isEmpty());
}

void TestCOHelper::pdoMappingsHaveTheirLabels()
{
    QStringList labels;
    for (int type = 0; type < 6; ++type)
        labels.append(COHelper::pdoMapping2String(PDOMapping(type)));
    QCOMPARE(labels, (QStringList{"Forbidden", "Allowed", "Default", "RPDO", "TPDO", ""}));
}

void TestCOHelper::categoriesAreReadFromWords_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("category");
    QTest::newRow("mandatory") << "mandatory" << 1;
    QTest::newRow("optional") << "Optional" << 2;
    QTest::newRow("conditional") << " CONDITIONAL " << 3;
    QTest::newRow("letter") << "m" << 1;
    QTest::newRow("unknown") << "perhaps" << 0;
    QTest::newRow("empty") << "" << 0;
}

void TestCOHelper::categoriesAreReadFromWords()
{
    QFETCH(QString, text);
    QTEST(int(COHelper::convertCategory(text)), "category");
}

void TestCOHelper::accessTypesAndTheirLabelsComeBack()
{
    QStringList words;
    for (const CANopen::AccessType &access : CANopen::accessTypes) {
        words.append(access.word);
        QCOMPARE(COHelper::normalizeAccessType(access.word), QString(access.word));
        QCOMPARE(COHelper::normalizeAccessType(access.label), QString(access.word));
    }
    QCOMPARE(words.join(u' '), QStringLiteral("const ro rw wo rww rwr"));
}

void TestCOHelper::accessWordsOfFilesAreNormalised_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("access");
    QTest::newRow("upper case") << "RO"
                                << "ro";
    QTest::newRow("capital") << "Const"
                             << "const";
    QTest::newRow("blanks") << "  rwW\t"
                            << "rww";
    QTest::newRow("remark behind #") << "rw # rw;"
                                     << "rw";
    QTest::newRow("remark behind ;") << "RW ; RO is possible"
                                     << "rw";
    QTest::newRow("short read") << "R"
                                << "ro";
    QTest::newRow("short write") << "W"
                                 << "wo";
    QTest::newRow("CiA 311 readWrite") << "readWrite"
                                       << "rw";
    QTest::newRow("CiA 311 readWriteOutput") << "readWriteOutput"
                                             << "rww";
    QTest::newRow("CiA 311 readWriteInput") << "readWriteInput"
                                            << "rwr";
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("only a remark") << "; rw"
                                   << "";
    QTest::newRow("unknown") << "rx"
                             << "";
}

void TestCOHelper::accessWordsOfFilesAreNormalised()
{
    QFETCH(QString, text);
    QTEST(COHelper::normalizeAccessType(text), "access");
}

void TestCOHelper::profileNamesLoseSuperfluousBlanks()
{
    QCOMPARE(COHelper::convertDbNames(QStringLiteral("  Pre-defined   error\tfield ")),
             QStringLiteral("Pre-defined error field"));
    QCOMPARE(COHelper::convertDbNames(QStringLiteral("sdo_client_queue_size")),
             QStringLiteral("sdo_client_queue_size"));
    QVERIFY(COHelper::convertDbNames(QString()).isEmpty());
}

void TestCOHelper::energyBusWordsBecomeDataTypeNames_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("name");
    QTest::newRow("unsigned") << "UINT16"
                              << "UNSIGNED16";
    QTest::newRow("short unsigned") << "u8"
                                    << "UNSIGNED8";
    QTest::newRow("signed") << "SINT32"
                            << "INTEGER32";
    QTest::newRow("bool") << " Bool "
                          << "BOOLEAN";
    QTest::newRow("string") << "string"
                            << "VISIBLE_STRING";
    QTest::newRow("name as it is") << "UNSIGNED24"
                                   << "UNSIGNED24";
    QTest::newRow("unknown") << "CURRENT"
                             << "";
    QTest::newRow("empty") << ""
                           << "";
}

void TestCOHelper::energyBusWordsBecomeDataTypeNames()
{
    QFETCH(QString, word);
    QTEST(COHelper::convertEBType(word), "name");
}

QTEST_GUILESS_MAIN(TestCOHelper)
#include "tst_cohelper.moc"
