#include "generators/declarations/DefineNames.h"

#include <QTest>

using namespace Qt::StringLiterals;

using DefineNames::Request;

namespace {

QStringList names(const QList<Request> &requests, const Request &reserved = {})
{
    QStringList result;
    const QList<DefineNames::Define> defines = DefineNames::resolve(requests, reserved);
    for (const DefineNames::Define &define : defines)
        result.append(define.name + u'=' + define.value);
    return result;
}

Request request(const QString &name, quint32 number, const QString &place)
{
    return {.name = name, .number = number, .value = QString::number(number), .place = place};
}

} // namespace

/** Names of C defines. */
class TestDefineNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTextBecomesAnIdentifier_data();
    void aTextBecomesAnIdentifier();
    void aNameOfOneNumberIsWrittenOnce();
    void aNameOfSeveralNumbersBearsItsPlaces();
    void anUnderscoreAtTheEndSeparatesThePlace();
    void aPlacedNameNeverMeetsAnother();
    void aReservedNameIsNotWritten();
};

void TestDefineNames::aTextBecomesAnIdentifier_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("name");
    QTest::newRow("letters and digits") << u"Channel1"_s << u"I_Channel1"_s;
    QTest::newRow("blanks and dashes") << u"Device - type   (0 - 7)"_s << u"I_Device_type_0_7_"_s;
    QTest::newRow("underscores") << u"a__b___c"_s << u"I_a_b_c"_s;
    QTest::newRow("symbol first") << u"(a)"_s << u"I_a_"_s;
    QTest::newRow("digit first") << u"3rd"_s << u"I_3rd"_s;
    QTest::newRow("keyword") << u"int"_s << u"I_int"_s;
    QTest::newRow("umlauts") << u"Größe"_s << u"I_Gr_e"_s;
    QTest::newRow("letters of other scripts") << u"转速"_s << u"I_"_s;
    QTest::newRow("beyond the first plane") << u"a\U0001F600b"_s << u"I_a_b"_s;
    QTest::newRow("symbols only") << u"%$&"_s << u"I_"_s;
    QTest::newRow("line break") << u"a\nb"_s << u"I_a_b"_s;
    QTest::newRow("empty") << QString() << u"I_"_s;
}

void TestDefineNames::aTextBecomesAnIdentifier()
{
    QFETCH(QString, text);
    QFETCH(QString, name);
    QCOMPARE(DefineNames::identifier(u"I_", text), name);
}

void TestDefineNames::aNameOfOneNumberIsWrittenOnce()
{
    QCOMPARE(names({request(u"S_Count"_s, 0, u"2000_0"_s), request(u"S_A"_s, 1, u"2000_1"_s),
                    request(u"S_Count"_s, 0, u"2001_0"_s)}),
             QStringList({u"S_Count=0"_s, u"S_A=1"_s}));
}

void TestDefineNames::aNameOfSeveralNumbersBearsItsPlaces()
{
    QCOMPARE(names({request(u"S_A"_s, 1, u"2000_1"_s), request(u"S_B"_s, 2, u"2000_2"_s),
                    request(u"S_A"_s, 1, u"2001_1"_s), request(u"S_A"_s, 7, u"2002_7"_s)}),
             QStringList({u"S_A_2000_1=1"_s, u"S_B=2"_s, u"S_A_2001_1=1"_s, u"S_A_2002_7=7"_s}));
}

void TestDefineNames::anUnderscoreAtTheEndSeparatesThePlace()
{
    QCOMPARE(names({request(u"I_"_s, 1, u"2000"_s), request(u"I_"_s, 2, u"2001"_s)}),
             QStringList({u"I_2000=1"_s, u"I_2001=2"_s}));
}

void TestDefineNames::aPlacedNameNeverMeetsAnother()
{
    QCOMPARE(
        names({request(u"I_A"_s, 0x2000, u"2000"_s), request(u"I_A"_s, 0x2001, u"2001"_s),
               request(u"I_A_2000"_s, 0x3000, u"3000"_s), request(u"I_A_2000_2"_s, 0x3001, u"3001"_s)}),
        QStringList({u"I_A_2000_3=8192"_s, u"I_A_2001=8193"_s, u"I_A_2000=12288"_s, u"I_A_2000_2=12289"_s}));
}

void TestDefineNames::aReservedNameIsNotWritten()
{
    const Request reserved{.name = u"S_LAST"_s};
    QCOMPARE(names({request(u"S_LAST"_s, 0, u"2000_0"_s)}, reserved), QStringList());
    QCOMPARE(names({request(u"S_LAST"_s, 3, u"2000_3"_s)}, reserved), QStringList(u"S_LAST_2000_3=3"_s));
}

QTEST_APPLESS_MAIN(TestDefineNames)
#include "tst_definenames.moc"
