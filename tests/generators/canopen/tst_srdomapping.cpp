#include "SrdoDesk.h"

using namespace Qt::StringLiterals;

namespace {

/** The text of a case between its label and its end. */
QString caseOf(const QString &block, const QString &label)
{
    return block.section(u"\tcase %1u:\n"_s.arg(label), 1).section(u"\t\tbreak;\n\tdefault:"_s, 0, 0);
}

} // namespace

/** The blocks of gen_srdo.c that move values, to the letter. */
class TestSrdoMapping : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void valuesAreTransmitted_data();
    void valuesAreTransmitted();
    void normalDataAreRead_data();
    void normalDataAreRead();
    void invertedDataAreCompared_data();
    void invertedDataAreCompared();
    void valuesStandBehindEachOther();
    void theOlderStackHasItsOwnWords();
    void srdosAreChosenByNumber();
    void srdosAreChosenByLineAndNumber();
    void invertedEntriesTakeNoPlace_data();
    void invertedEntriesTakeNoPlace();
    void anInvertedObjectIsTransmittedAsItIs_data();
    void anInvertedObjectIsTransmittedAsItIs();
    void transmittingChangesNoVariable();
    void aReceivedInvertedObjectIsTheComplement();
    void twoObjectsOfOneVariableAreNoPair();
    void whatCannotBeMovedIsToldAndRefused_data();
    void whatCannotBeMovedIsToldAndRefused();
};

void TestSrdoMapping::valuesAreTransmitted_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("expected");
    QTest::newRow("UNSIGNED8") << int(CAN::Unsigned8) << u"0x20000008"_s
                               << uR"(		pBufferNormal[0]   = (UNSIGNED8)(x & 0xffu);
		pBufferInverted[0] = (UNSIGNED8)((UNSIGNED8)~x & 0xffu);
)"_s;
    QTest::newRow("UNSIGNED16") << int(CAN::Unsigned16) << u"0x20000010"_s
                                << uR"(		pBufferNormal[0]   = (UNSIGNED8)(x & 0xffu);
		pBufferInverted[0] = (UNSIGNED8)((UNSIGNED16)~x & 0xffu);
		pBufferNormal[1]   = (UNSIGNED8)(x >> 8u) & 0xffu;
		pBufferInverted[1] = (UNSIGNED8)((UNSIGNED16)~x >> 8u) & 0xffu;
)"_s;
    QTest::newRow("INTEGER16") << int(CAN::Integer16) << u"0x20000010"_s
                               << uR"(		pBufferNormal[0]   = (UNSIGNED8)((UNSIGNED16)x & 0xffu);
		pBufferInverted[0] = (UNSIGNED8)((UNSIGNED16)~x & 0xffu);
		pBufferNormal[1]   = (UNSIGNED8)((UNSIGNED16)x >> 8u) & 0xffu;
		pBufferInverted[1] = (UNSIGNED8)((UNSIGNED16)~x >> 8u) & 0xffu;
)"_s;
    QTest::newRow("REAL32") << int(CAN::Real32) << u"0x20000020"_s
                            << uR"(		tmp = *(UNSIGNED32 *)&x; /*lint !e929 !e740 */
		pBufferNormal[0]   = (UNSIGNED8)(tmp & 0xffu);
		pBufferInverted[0] = (UNSIGNED8)(~tmp & 0xffu);
		pBufferNormal[1]   = (UNSIGNED8)(tmp >> 8u) & 0xffu;
		pBufferInverted[1] = (UNSIGNED8)(~tmp >> 8u) & 0xffu;
		pBufferNormal[2]   = (UNSIGNED8)(tmp >> 16u) & 0xffu;
		pBufferInverted[2] = (UNSIGNED8)(~tmp >> 16u) & 0xffu;
		pBufferNormal[3]   = (UNSIGNED8)(tmp >> 24u) & 0xffu;
		pBufferInverted[3] = (UNSIGNED8)(~tmp >> 24u) & 0xffu;
)"_s;
    QTest::newRow("UNSIGNED24") << int(CAN::Unsigned24) << u"0x20000018"_s
                                << uR"(		pBufferNormal[0]   = (UNSIGNED8)(x.val[0] & 0xffu);
		pBufferInverted[0] = (UNSIGNED8)((UNSIGNED8)~x.val[0] & 0xffu);
		pBufferNormal[1]   = (UNSIGNED8)(x.val[1] & 0xffu);
		pBufferInverted[1] = (UNSIGNED8)((UNSIGNED8)~x.val[1] & 0xffu);
		pBufferNormal[2]   = (UNSIGNED8)(x.val[2] & 0xffu);
		pBufferInverted[2] = (UNSIGNED8)((UNSIGNED8)~x.val[2] & 0xffu);
)"_s;
}

void TestSrdoMapping::valuesAreTransmitted()
{
    QFETCH(int, type);
    QFETCH(QString, entry);
    SrdoDesk desk;
    desk.mapped(0x2000, type, u"x"_s);
    desk.srdo(1, {entry});
    QTEST(caseOf(desk.block(u"__GEN_SRDO_TRANSMIT_MAPPING__"_s), u"1"_s), "expected");
}

void TestSrdoMapping::normalDataAreRead_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("expected");
    QTest::newRow("UNSIGNED8") << int(CAN::Unsigned8) << u"0x20000008"_s
                               << u"\t\tx_temp = (UNSIGNED8)pData[0]; /*lint !e960 */\n"_s;
    QTest::newRow("UNSIGNED16") << int(CAN::Unsigned16) << u"0x20000010"_s
                                << u"\t\tx_temp = (UNSIGNED16)pData[0]; /*lint !e960 */\n"
                                   "\t\tx_temp |= (UNSIGNED16)pData[1] << 8u; /*lint !e960 */\n"_s;
    QTest::newRow("INTEGER8") << int(CAN::Integer8) << u"0x20000008"_s
                              << u"\t\ttmpU8 = (UNSIGNED8)pData[0]; /*lint !e960 */\n"
                                 "\t\tx_temp = (INTEGER8)tmpU8;\n"_s;
    QTest::newRow("INTEGER32") << int(CAN::Integer32) << u"0x20000020"_s
                               << u"\t\ttmpU32 = (UNSIGNED32)pData[0]; /*lint !e960 */\n"
                                  "\t\ttmpU32 |= (UNSIGNED32)pData[1] << 8u; /*lint !e960 */\n"
                                  "\t\ttmpU32 |= (UNSIGNED32)pData[2] << 16u; /*lint !e960 */\n"
                                  "\t\ttmpU32 |= (UNSIGNED32)pData[3] << 24u; /*lint !e960 */\n"
                                  "\t\tx_temp = (INTEGER32)tmpU32;\n"_s;
    QTest::newRow("REAL32") << int(CAN::Real32) << u"0x20000020"_s
                            << u"\t\tx_temp = (UNSIGNED32)pData[0]; /*lint !e960 */\n"
                               "\t\tx_temp |= (UNSIGNED32)pData[1] << 8u; /*lint !e960 */\n"
                               "\t\tx_temp |= (UNSIGNED32)pData[2] << 16u; /*lint !e960 */\n"
                               "\t\tx_temp |= (UNSIGNED32)pData[3] << 24u; /*lint !e960 */\n"_s;
    QTest::newRow("INTEGER24") << int(CAN::Integer24) << u"0x20000018"_s
                               << u"\t\tx_temp.val[0] = (UNSIGNED8)pData[0]; /*lint !e960 */\n"
                                  "\t\tx_temp.val[1] = (UNSIGNED8)pData[1]; /*lint !e960 */\n"
                                  "\t\tx_temp.val[2] = (UNSIGNED8)pData[2]; /*lint !e960 */\n"_s;
}

void TestSrdoMapping::normalDataAreRead()
{
    QFETCH(int, type);
    QFETCH(QString, entry);
    SrdoDesk desk;
    desk.mapped(0x2000, type, u"x"_s);
    desk.srdo(1, {entry});
    QTEST(caseOf(desk.block(u"__GEN_SRDO_RECEIVE_MAPPING1__"_s), u"1"_s), "expected");
}

void TestSrdoMapping::invertedDataAreCompared_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("expected");
    QTest::newRow("UNSIGNED8") << int(CAN::Unsigned8) << u"0x20000008"_s
                               << uR"(		tmpU8 = (UNSIGNED8)pData[0]; /*lint !e960 */
		tmpU8 = (UNSIGNED8)~tmpU8;
		if (x_temp != tmpU8) {
			retVal = RET_MAP_ERROR;
		}
		if (retVal != RET_OK) {
			break;
		}
		x = x_temp;
)"_s;
    QTest::newRow("INTEGER16") << int(CAN::Integer16) << u"0x20000010"_s
                               << uR"(		tmpU16 = (UNSIGNED16)pData[0]; /*lint !e960 */
		tmpU16 |= (UNSIGNED16)pData[1] << 8u; /*lint !e960 */
		tmpU16 = (UNSIGNED16)~tmpU16;
		if (x_temp != (INTEGER16)tmpU16) {
			retVal = RET_MAP_ERROR;
		}
		if (retVal != RET_OK) {
			break;
		}
		x = x_temp;
)"_s;
    QTest::newRow("REAL32") << int(CAN::Real32) << u"0x20000020"_s
                            << uR"(		tmpU32 = (UNSIGNED32)pData[0]; /*lint !e960 */
		tmpU32 |= (UNSIGNED32)pData[1] << 8u; /*lint !e960 */
		tmpU32 |= (UNSIGNED32)pData[2] << 16u; /*lint !e960 */
		tmpU32 |= (UNSIGNED32)pData[3] << 24u; /*lint !e960 */
		tmpU32 = (UNSIGNED32)~tmpU32;
		if (x_temp != tmpU32) {
			retVal = RET_MAP_ERROR;
		}
		if (retVal != RET_OK) {
			break;
		}
		/* cast from pointer to pointer,
		 * as the bits are those of the value */
		x = *(REAL32 *)&x_temp; /*lint !e929 !e740 */
)"_s;
}

void TestSrdoMapping::invertedDataAreCompared()
{
    QFETCH(int, type);
    QFETCH(QString, entry);
    SrdoDesk desk;
    desk.mapped(0x2000, type, u"x"_s);
    desk.srdo(1, {entry});
    QTEST(caseOf(desk.block(u"__GEN_SRDO_RECEIVE_MAPPING2__"_s), u"1"_s), "expected");
}

void TestSrdoMapping::valuesStandBehindEachOther()
{
    SrdoDesk desk;
    desk.mapped(0x2000, CAN::Unsigned8, u"a"_s);
    desk.mapped(0x2001, CAN::Unsigned16, u"b"_s);
    desk.mapped(0x2002, CAN::Unsigned8, u"c"_s);
    desk.srdo(1, {u"0x20000008"_s, u"0x20010010"_s, u"0x20020008"_s});
    const QString transmit = desk.block(u"__GEN_SRDO_TRANSMIT_MAPPING__"_s);
    for (const QString &line : {u"\t\tpBufferNormal[0]   = (UNSIGNED8)(a & 0xffu);\n"_s,
                                u"\t\tpBufferNormal[1]   = (UNSIGNED8)(b & 0xffu);\n"_s,
                                u"\t\tpBufferNormal[2]   = (UNSIGNED8)(b >> 8u) & 0xffu;\n"_s,
                                u"\t\tpBufferNormal[3]   = (UNSIGNED8)(c & 0xffu);\n"_s})
        QVERIFY2(transmit.contains(line), qPrintable(line));
    // All values of a message are checked before the first one is taken.
    const QString inverted = desk.block(u"__GEN_SRDO_RECEIVE_MAPPING2__"_s);
    QVERIFY(inverted.indexOf(u"if (c_temp != "_s) < inverted.indexOf(u"\t\ta = a_temp;\n"_s));
    QVERIFY(inverted.contains(u"\t\ta = a_temp;\n\t\tb = b_temp;\n\t\tc = c_temp;\n"_s));
}

void TestSrdoMapping::theOlderStackHasItsOwnWords()
{
    SrdoDesk desk;
    desk.mapped(0x2000, CAN::Unsigned8, u"x"_s);
    desk.srdo(1, {u"0x20000008"_s, u"0x30000008"_s, u"0x20000008"_s});
    for (const QString &marker : {u"__GEN_SRDO_RECEIVE_MAPPING2__"_s, u"__GEN_SRDO_TRANSMIT_MAPPING__"_s}) {
        QString text = desk.block(marker);
        const QString older = desk.block(marker, false);
        QVERIFY(text.contains(u"\tdefault:\n\t\treturn(RET_PARAMETER_INVALID);\n"_s));
        QVERIFY(older.contains(u"\tdefault:\n\t\treturn(RET_INVALID_PARAMETER);\n"_s));
        QVERIFY(older.contains(u"retVal = RET_CO_MAP_ERROR;\n"_s));
        text.replace(u"RET_MAP_ERROR"_s, u"RET_CO_MAP_ERROR"_s);
        text.replace(u"RET_PARAMETER_INVALID"_s, u"RET_INVALID_PARAMETER"_s);
        QCOMPARE(older, text);
    }
}

void TestSrdoMapping::srdosAreChosenByNumber()
{
    SrdoDesk desk;
    desk.srdo(1, {});
    desk.srdo(64, {});
    QCOMPARE(desk.block(u"__GEN_SRDO_TRANSMIT_MAPPING__"_s), uR"(	switch (srdoNr) {
	case 1u:
		break;
	case 64u:
		break;
	default:
		return(RET_PARAMETER_INVALID);
	}
)"_s);
}

void TestSrdoMapping::srdosAreChosenByLineAndNumber()
{
    SrdoDesk desk;
    desk.srdo(1, {});
    desk.srdo(2, {}, 3);
    QCOMPARE(desk.block(u"__GEN_SRDO_RECEIVE_MAPPING1__"_s), uR"(	switch (canLine) {
	case 0u:
	switch (srdoNr) {
	case 1u:
		break;
	default:
		return(RET_PARAMETER_INVALID);
	}
	break;
	case 3u:
	switch (srdoNr) {
	case 2u:
		break;
	default:
		return(RET_PARAMETER_INVALID);
	}
	break;
	default:
		return(RET_PARAMETER_INVALID);
	}
)"_s);
}

void TestSrdoMapping::invertedEntriesTakeNoPlace_data()
{
    QTest::addColumn<QString>("entries");
    QTest::addColumn<int>("length");
    QTest::newRow("the same object twice") << u"0x20000008 0x20000008 0x20020010 0x20020010"_s << 3;
    QTest::newRow("objects of their own") << u"0x20000008 0x20010008 0x20020010 0x20030010"_s << 3;
    QTest::newRow("values alone: an odd number") << u"0x20000008 0x20010008 0x20020010"_s << 4;
    QTest::newRow("values alone: other widths") << u"0x20000008 0x20020010"_s << 3;
    QTest::newRow("values alone: other types") << u"0x20020010 0x20040010"_s << 4;
}

// Behind each entry stands that of the inverted copy (CiA 304), or none does.
void TestSrdoMapping::invertedEntriesTakeNoPlace()
{
    QFETCH(QString, entries);
    QFETCH(int, length);
    SrdoDesk desk;
    desk.mapped(0x2000, CAN::Unsigned8, u"a"_s);
    desk.mapped(0x2001, CAN::Unsigned8, u"aInverted"_s);
    desk.mapped(0x2002, CAN::Unsigned16, u"b"_s);
    desk.mapped(0x2003, CAN::Unsigned16, u"bInverted"_s);
    desk.mapped(0x2004, CAN::Integer16, u"c"_s);
    desk.srdo(1, entries.split(u' '));
    QVERIFY(desk.block(u"__GEN_SRDO_INIT__"_s).contains(u"\tsrdo1.mapLen = %1u;\n"_s.arg(length)));
    QCOMPARE(int(desk.block(u"__GEN_SRDO_TRANSMIT_MAPPING__"_s).count(u"pBufferInverted["_s)), length);
    QVERIFY(desk.block(u"__GEN_SRDO_INIT__"_s).contains(u"mapCnt = %1u;\n"_s.arg(entries.count(u' ') + 1)));
}

void TestSrdoMapping::anInvertedObjectIsTransmittedAsItIs_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("bits");
    QTest::addColumn<QString>("expected");
    QTest::newRow("UNSIGNED8") << int(CAN::Unsigned8) << u"08"_s
                               << uR"(		pBufferNormal[0]   = (UNSIGNED8)(x & 0xffu);
		/* inverted copy: 0x2001:0 */
		pBufferInverted[0] = (UNSIGNED8)(y & 0xffu);
)"_s;
    QTest::newRow("INTEGER16") << int(CAN::Integer16) << u"10"_s
                               << uR"(		pBufferNormal[0]   = (UNSIGNED8)((UNSIGNED16)x & 0xffu);
		pBufferNormal[1]   = (UNSIGNED8)((UNSIGNED16)x >> 8u) & 0xffu;
		/* inverted copy: 0x2001:0 */
		pBufferInverted[0] = (UNSIGNED8)((UNSIGNED16)y & 0xffu);
		pBufferInverted[1] = (UNSIGNED8)((UNSIGNED16)y >> 8u) & 0xffu;
)"_s;
    QTest::newRow("REAL32") << int(CAN::Real32) << u"20"_s
                            << uR"(		tmp = *(UNSIGNED32 *)&x; /*lint !e929 !e740 */
		pBufferNormal[0]   = (UNSIGNED8)(tmp & 0xffu);
		pBufferNormal[1]   = (UNSIGNED8)(tmp >> 8u) & 0xffu;
		pBufferNormal[2]   = (UNSIGNED8)(tmp >> 16u) & 0xffu;
		pBufferNormal[3]   = (UNSIGNED8)(tmp >> 24u) & 0xffu;
		/* inverted copy: 0x2001:0 */
		tmp = *(UNSIGNED32 *)&y; /*lint !e929 !e740 */
		pBufferInverted[0] = (UNSIGNED8)(tmp & 0xffu);
		pBufferInverted[1] = (UNSIGNED8)(tmp >> 8u) & 0xffu;
		pBufferInverted[2] = (UNSIGNED8)(tmp >> 16u) & 0xffu;
		pBufferInverted[3] = (UNSIGNED8)(tmp >> 24u) & 0xffu;
)"_s;
    QTest::newRow("UNSIGNED24") << int(CAN::Unsigned24) << u"18"_s
                                << uR"(		pBufferNormal[0]   = (UNSIGNED8)(x.val[0] & 0xffu);
		pBufferNormal[1]   = (UNSIGNED8)(x.val[1] & 0xffu);
		pBufferNormal[2]   = (UNSIGNED8)(x.val[2] & 0xffu);
		/* inverted copy: 0x2001:0 */
		pBufferInverted[0] = (UNSIGNED8)(y.val[0] & 0xffu);
		pBufferInverted[1] = (UNSIGNED8)(y.val[1] & 0xffu);
		pBufferInverted[2] = (UNSIGNED8)(y.val[2] & 0xffu);
)"_s;
}

// CiA 304: the second message carries the second object, so that a receiver sees when the two do not agree.
void TestSrdoMapping::anInvertedObjectIsTransmittedAsItIs()
{
    QFETCH(int, type);
    QFETCH(QString, bits);
    SrdoDesk desk;
    desk.mapped(0x2000, type, u"x"_s);
    desk.mapped(0x2001, type, u"y"_s);
    desk.srdo(1, {u"0x200000"_s + bits, u"0x200100"_s + bits});
    QTEST(caseOf(desk.block(u"__GEN_SRDO_TRANSMIT_MAPPING__"_s), u"1"_s), "expected");
}

// Two variables that are no copies of each other must not become ones behind the application's back.
void TestSrdoMapping::transmittingChangesNoVariable()
{
    SrdoDesk desk;
    desk.mapped(0x2000, CAN::Unsigned16, u"speed"_s);
    desk.mapped(0x2001, CAN::Unsigned16, u"torque"_s);
    desk.mapped(0x2002, CAN::Real32, u"force"_s);
    desk.mapped(0x2003, CAN::Real32, u"mass"_s);
    desk.srdo(1, {u"0x20000010"_s, u"0x20010010"_s, u"0x20020020"_s, u"0x20030020"_s});
    const QString text = desk.block(u"__GEN_SRDO_TRANSMIT_MAPPING__"_s);
    for (const QString &name : {u"speed"_s, u"torque"_s, u"force"_s, u"mass"_s})
        QVERIFY2(!text.contains(QString(name + u" ="_s)), qPrintable(text));
}

void TestSrdoMapping::aReceivedInvertedObjectIsTheComplement()
{
    SrdoDesk desk;
    desk.mapped(0x2000, CAN::Unsigned8, u"a"_s);
    desk.mapped(0x2001, CAN::Unsigned8, u"aInverted"_s);
    desk.srdo(1, {u"0x20000008"_s, u"0x20010008"_s});
    QVERIFY(caseOf(desk.block(u"__GEN_SRDO_RECEIVE_MAPPING2__"_s), u"1"_s)
                .endsWith(u"\t\ta = a_temp;\n\t\taInverted = (UNSIGNED8)~a;\n"_s));
    QVERIFY(!desk.block(u"__GEN_SRDO_OD_VARIABLES__"_s).contains(u"aInverted_temp"_s));
}

// One variable cannot be its own complement.
void TestSrdoMapping::twoObjectsOfOneVariableAreNoPair()
{
    SrdoDesk desk;
    desk.mapped(0x2000, CAN::Unsigned8, u"a"_s);
    desk.mapped(0x2001, CAN::Unsigned8, u"a"_s);
    desk.srdo(1, {u"0x20000008"_s, u"0x20010008"_s});
    const QString text = desk.block(u"__GEN_SRDO_TRANSMIT_MAPPING__"_s);
    QVERIFY2(text.contains(u"pBufferInverted[0] = (UNSIGNED8)((UNSIGNED8)~a & 0xffu);\n"_s),
             qPrintable(text));
}

void TestSrdoMapping::whatCannotBeMovedIsToldAndRefused_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("comment");
    QTest::newRow("a text") << u"0x21000008"_s << u"0x2100:0 of 8 bits"_s;
    QTest::newRow("a 64-bit float") << u"0x21010040"_s << u"0x2101:0 of 64 bits"_s;
    QTest::newRow("no object") << u"0x30000308"_s << u"0x3000:3 of 8 bits"_s;
    QTest::newRow("one bit") << u"0x21020001"_s << u"0x2102:0 of 1 bits"_s;
    QTest::newRow("half a value") << u"0x21030008"_s << u"0x2103:0 of 8 bits"_s;
    QTest::newRow("no number") << u"x"_s << u"0x0000:0 of 0 bits"_s;
    QTest::newRow("managed, which only the dictionary reaches") << u"0x21040008"_s << u"0x2104:0 of 8 bits"_s;
    QTest::newRow("an inverted copy that does not exist")
        << u"0x21050008 0x30000008"_s << u"0x3000:0 of 8 bits"_s;
    QTest::newRow("an inverted copy out of reach") << u"0x21050008 0x21040008"_s << u"0x2104:0 of 8 bits"_s;
}

void TestSrdoMapping::whatCannotBeMovedIsToldAndRefused()
{
    QFETCH(QString, entry);
    QFETCH(QString, comment);
    SrdoDesk desk;
    desk.mapped(0x2100, CAN::VisibleString, u"text"_s);
    desk.mapped(0x2101, CAN::Real64, u"precise"_s);
    desk.mapped(0x2102, CAN::Boolean, u"flag"_s);
    desk.mapped(0x2103, CAN::Unsigned16, u"wide"_s);
    desk.variable(0x2104, {});
    desk.mapped(0x2105, CAN::Unsigned8, u"good"_s);
    desk.srdo(1, entry.split(u' '));
    const QString expected = u"\t\t/* %1 is not supported */\n\t\tretVal = RET_MAP_ERROR;\n"_s.arg(comment);
    for (const QString &marker : {u"__GEN_SRDO_RECEIVE_MAPPING1__"_s, u"__GEN_SRDO_RECEIVE_MAPPING2__"_s,
                                  u"__GEN_SRDO_TRANSMIT_MAPPING__"_s})
        QCOMPARE(caseOf(desk.block(marker), u"1"_s), expected);
}

QTEST_GUILESS_MAIN(TestSrdoMapping)
#include "tst_srdomapping.moc"
