#include "canopen/LegacyText.h"

#include <QTest>

class TestLegacyText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theEncodingIsFoundFromTheBytes_data();
    void theEncodingIsFoundFromTheBytes();
    void everyByteYieldsACharacter();
};

void TestLegacyText::theEncodingIsFoundFromTheBytes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("encoding");
    QTest::newRow("ASCII") << QByteArray("Motor") << "Motor"
                           << "ASCII";
    QTest::newRow("empty") << QByteArray() << ""
                           << "ASCII";
    QTest::newRow("UTF-8") << QByteArray("Gr\xC3\xB6\xC3\x9F"
                                         "e")
                           << QStringLiteral("Gr\u00F6\u00DFe") << "UTF-8";
    QTest::newRow("UTF-8 with mark") << QByteArray("\xEF\xBB\xBF[A]") << "[A]"
                                     << "UTF-8";
    QTest::newRow("UTF-16 little endian") << QByteArray("\xFF\xFE\x41\x00", 4) << "A"
                                          << "UTF-16";
    QTest::newRow("UTF-16 big endian") << QByteArray("\xFE\xFF\x00\x41", 4) << "A"
                                       << "UTF-16";
    QTest::newRow("umlaut of Windows") << QByteArray("Gr\xF6\xDF"
                                                     "e")
                                       << QStringLiteral("Gr\u00F6\u00DFe") << "Windows-1252";
    QTest::newRow("umlauts of DOS") << QByteArray("K\x94ln, Stra\xE1"
                                                  "e")
                                    << QStringLiteral("K\u00F6ln, Stra\u00DFe") << "code page 850";
    QTest::newRow("capital umlaut of DOS")
        << QByteArray("\x99l") << QStringLiteral("\u00D6l") << "code page 850";
    QTest::newRow("degrees") << QByteArray("25 \xB0"
                                           "C")
                             << QStringLiteral("25 \u00B0C") << "Windows-1252";
    QTest::newRow("Windows letter decides")
        << QByteArray("\x94Gr\xF6\xDF"
                      "e\x94")
        << QStringLiteral("\u201DGr\u00F6\u00DFe\u201D") << "Windows-1252";
    QTest::newRow("broken UTF-8") << QByteArray("a\xC3") << QStringLiteral("a\u00C3") << "Windows-1252";
}

void TestLegacyText::theEncodingIsFoundFromTheBytes()
{
    QFETCH(QByteArray, bytes);
    const LegacyText::Decoded decoded = LegacyText::decode(bytes);
    QTEST(decoded.text, "text");
    QTEST(LegacyText::encodingName(decoded.encoding), "encoding");
}

void TestLegacyText::everyByteYieldsACharacter()
{
    QByteArray bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes.append(char(byte));
    const LegacyText::Decoded decoded = LegacyText::decode(bytes);
    QCOMPARE(decoded.text.size(), 256);
    QVERIFY(!decoded.text.contains(QChar::ReplacementCharacter));
}

QTEST_GUILESS_MAIN(TestLegacyText)
#include "tst_legacytext.moc"
