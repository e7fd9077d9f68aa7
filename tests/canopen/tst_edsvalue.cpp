#include "canopen/CANTypes.h"
#include "canopen/EdsNumber.h"
#include "canopen/EdsValue.h"

#include <QTest>

class TestEdsValue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numbersOfAnEdsAreRead_data();
    void numbersOfAnEdsAreRead();
    void valuesTakeTheFormOfTheProject_data();
    void valuesTakeTheFormOfTheProject();
    void aRemarkNeedsSomethingBeforeIt();
};

void TestEdsValue::numbersOfAnEdsAreRead_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("number"); // -1 for no number
    QTest::newRow("decimal") << "12" << qint64(12);
    QTest::newRow("hexadecimal") << " 0x1F " << qint64(31);
    QTest::newRow("upper X") << "0X1f" << qint64(31);
    QTest::newRow("octal") << "010" << qint64(8);
    QTest::newRow("not octal") << "09" << qint64(9);
    QTest::newRow("zero") << "0" << qint64(0);
    QTest::newRow("word") << "VAR" << qint64(-1);
    QTest::newRow("negative") << "-1" << qint64(-1);
    QTest::newRow("plus") << "+1" << qint64(-1);
    QTest::newRow("suffix") << "12u" << qint64(-1);
    QTest::newRow("only a prefix") << "0x" << qint64(-1);
    QTest::newRow("too large") << "0x10000000000000000" << qint64(-1);
    QTest::newRow("empty") << "" << qint64(-1);
}

void TestEdsValue::numbersOfAnEdsAreRead()
{
    QFETCH(QString, text);
    const auto number = edsNumber(text);
    QTEST(number ? qint64(*number) : qint64(-1), "number");
}

void TestEdsValue::valuesTakeTheFormOfTheProject_data()
{
    constexpr int u32 = CAN::Unsigned32;
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("remarked");
    QTest::addColumn<bool>("usable");
    QTest::newRow("decimal") << "12" << u32 << "12" << false << true;
    QTest::newRow("hexadecimal") << "0x1000" << u32 << "0x1000" << false << true;
    QTest::newRow("negative hexadecimal")
        << "-0x80000000" << int(CAN::Integer32) << "-0x80000000" << false << true;
    QTest::newRow("empty") << "" << u32 << "" << false << true;
    QTest::newRow("suffix h") << "0000h" << u32 << "0x0000" << true << true;
    QTest::newRow("bare hexadecimal") << "F" << int(CAN::Unsigned8) << "0xF" << true << true;
    QTest::newRow("C suffix") << "0x1234567890ABCDEFLL" << int(CAN::Unsigned64) << "0x1234567890ABCDEF"
                              << true << true;
    QTest::newRow("remark") << "5 ; seconds" << u32 << "5" << true << true;
    QTest::newRow("node-ID") << "$NODEID+0x180" << u32 << "$NODEID+0x180" << false << true;
    QTest::newRow("node-ID alone") << "$NODEID" << u32 << "$NODEID" << false << true;
    QTest::newRow("node-ID behind") << "0x180+$NODEID" << u32 << "$NODEID+0x180" << true << true;
    QTest::newRow("node-ID with blanks") << "$NodeID + 0x80" << u32 << "$NODEID+0x80" << true << true;
    QTest::newRow("node-ID in lower case") << "$nodeid+0x200" << u32 << "$NODEID+0x200" << true << true;
    QTest::newRow("node-ID decimal") << "1280+$NODEID" << u32 << "$NODEID+1280" << true << true;
    QTest::newRow("node-ID with high bits")
        << "0xC0000480+$NODEID" << u32 << "$NODEID+0xC0000480" << true << true;
    QTest::newRow("product with the node-ID") << "2*$NODEID" << u32 << "2*$NODEID" << true << false;
    QTest::newRow("words") << "0 or profile-specific" << u32 << "0 or profile-specific" << true << false;
    QTest::newRow("words and a remark") << "none; see manual" << u32 << "none; see manual" << true << false;
    QTest::newRow("octal") << "0017" << u32 << "0017" << false << true;
    QTest::newRow("zeros before what cannot be octal") << "0089" << u32 << "89" << true << true;
    QTest::newRow("negative with such zeros") << "-09" << int(CAN::Integer8) << "-9" << true << true;
    QTest::newRow("two's complement") << "0xFF" << int(CAN::Integer8) << "-1" << true << true;
    QTest::newRow("lowest of the type") << "0x8000" << int(CAN::Integer16) << "-32768" << true << true;
    QTest::newRow("all bits of the widest type")
        << "0xFFFFFFFFFFFFFFFF" << int(CAN::Integer64) << "-1" << true << true;
    QTest::newRow("two's complement of an odd width")
        << "0xFFFFFE" << int(CAN::Integer24) << "-2" << true << true;
    QTest::newRow("two's complement of a wider type")
        << "0xFFFFFFFE" << int(CAN::Integer8) << "-2" << true << true;
    QTest::newRow("two's complement of a wider odd type")
        << "0xFFFFFFFE" << int(CAN::Integer24) << "-2" << true << true;
    QTest::newRow("beyond the type") << "0x1FF" << int(CAN::Integer8) << "0x1FF" << false << true;
    QTest::newRow("two's complement without prefix") << "FFh" << int(CAN::Integer8) << "-1" << true << true;
    QTest::newRow("positive signed") << "0x7F" << int(CAN::Integer8) << "0x7F" << false << true;
    QTest::newRow("float") << "1.5e3" << int(CAN::Real32) << "1.5e3" << false << true;
    QTest::newRow("float with a remark") << "0.5 ; volts" << int(CAN::Real32) << "0.5" << true << true;
    QTest::newRow("bits of a float") << "0x3F800000" << int(CAN::Real32) << "1" << true << true;
    QTest::newRow("bits of pi") << "0x40490FDB" << int(CAN::Real32) << "3.14159274" << true << true;
    QTest::newRow("bits of a double") << "0xBFE0000000000000" << int(CAN::Real64) << "-0.5" << true << true;
    QTest::newRow("bits of an infinity") << "0x7F800000" << int(CAN::Real32) << "0x7F800000" << true << false;
    QTest::newRow("too many bits of a float")
        << "0x100000000" << int(CAN::Real32) << "0x100000000" << true << false;
    QTest::newRow("decimal comma") << "1,5" << int(CAN::Real64) << "1,5" << true << false;
    QTest::newRow("text like a number")
        << "4147.1-0" << int(CAN::VisibleString) << "4147.1-0" << false << true;
    QTest::newRow("text like hexadecimal") << "3150" << int(CAN::VisibleString) << "3150" << false << true;
    QTest::newRow("text with a semicolon")
        << "a; b # c" << int(CAN::VisibleString) << "a; b # c" << false << true;
    QTest::newRow("quoted text") << "\"Hello, World!\"" << int(CAN::VisibleString) << "Hello, World!" << true
                                 << true;
    QTest::newRow("one quotation mark") << "\"" << int(CAN::VisibleString) << "\"" << false << true;
    QTest::newRow("octets") << "00000000000000000000" << int(CAN::OctetString) << "00000000000000000000"
                            << false << true;
    QTest::newRow("unknown type") << "anything ; at all" << 0x40 << "anything ; at all" << false << true;
}

void TestEdsValue::valuesTakeTheFormOfTheProject()
{
    QFETCH(QString, value);
    QFETCH(int, type);
    const EdsValue result = normalizedEdsValue(value, quint16(type));
    QTEST(result.text, "text");
    QTEST(!result.remark.isEmpty(), "remarked");
    QTEST(result.usable, "usable");
}

void TestEdsValue::aRemarkNeedsSomethingBeforeIt()
{
    QCOMPARE(withoutEdsRemark(QStringLiteral("7 # VAR")), QStringLiteral("7"));
    QCOMPARE(withoutEdsRemark(QStringLiteral("7;VAR")), QStringLiteral("7"));
    QCOMPARE(withoutEdsRemark(QStringLiteral("#7")), QStringLiteral("#7"));
    QCOMPARE(withoutEdsRemark(QString()), QString());
}

QTEST_GUILESS_MAIN(TestEdsValue)
#include "tst_edsvalue.moc"
