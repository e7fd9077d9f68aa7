#include "canopen/CANErrorMap.h"
#include "canopen/CANopenMessageKinds.h"
#include "canopen/UDSSIDDefinitions.h"

#include <QSet>
#include <QTest>

class TestCANopenTables : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void errorNumbersHaveTheirTexts();
    void messageKindsStandInOrder();
    void diagnosticServicesHaveTheNamesOfTheStandard_data();
    void diagnosticServicesHaveTheNamesOfTheStandard();
    void servicesOfANewProjectAllHaveNames();
    void serviceNamesAreUniqueAndWithinTheRangesOfTheStandard();
};

void TestCANopenTables::errorNumbersHaveTheirTexts()
{
    QStringList texts;
    for (quint8 number = 1; number <= 8; ++number)
        texts.append(canErrorText(number));
    QCOMPARE(texts,
             (QStringList{"Stuff error", "Form error", "Acknowledgment error", "Bit error",
                          "Fast data bit error", "CRC error", "Data length error", "unspecified error"}));
    QVERIFY(canErrorText(0).isEmpty());
    QVERIFY(canErrorText(9).isEmpty());
    QVERIFY(canErrorText(255).isEmpty());
}

void TestCANopenTables::messageKindsStandInOrder()
{
    QStringList names;
    for (const char *name : canOpenMessageKindMap)
        names.append(QString::fromLatin1(name));
    QCOMPARE(names.join(u' '),
             QStringLiteral(
                 "UNKNOWN SDO_REQ SDO_RES SDO_SEGSTARTSTOP SDO_ABORT SYNC SRDO EMCY NMT_EC NMT_EC_BOOTUP "
                 "TIME LSS_REQ LSS_RES SDO_DYN_REQ FLYMA INFO Sleep"));
    QCOMPARE(canOpenMessageKindName(16), QStringLiteral("Sleep"));
    QCOMPARE(canOpenMessageKindName(17), QStringLiteral("UNKNOWN"));
    QCOMPARE(canOpenMessageKindName(255), QStringLiteral("UNKNOWN"));
}

void TestCANopenTables::diagnosticServicesHaveTheNamesOfTheStandard_data()
{
    QTest::addColumn<int>("sid");
    QTest::addColumn<QString>("name");
    QTest::newRow("first") << 0x10 << "DiagnosticSessionControl";
    QTest::newRow("reset") << 0x11 << "ECUReset";
    QTest::newRow("periodic") << 0x2A << "ReadDataByPeriodicIdentifier";
    QTest::newRow("io control") << 0x2F << "InputOutputControlByIdentifier";
    QTest::newRow("file transfer") << 0x38 << "RequestFileTransfer";
    QTest::newRow("last of the lower range") << 0x3E << "TesterPresent";
    QTest::newRow("first of the upper range") << 0x83 << "AccessTimingParameter";
    QTest::newRow("last") << 0x87 << "LinkControl";
    QTest::newRow("manufacturer-specific") << 0xBA << "";
    QTest::newRow("zero") << 0 << "";
}

void TestCANopenTables::diagnosticServicesHaveTheNamesOfTheStandard()
{
    QFETCH(int, sid);
    QTEST(UDSSIDDefinitions::getSIDNames().value(UDS::SID(sid)), "name");
}

void TestCANopenTables::servicesOfANewProjectAllHaveNames()
{
    const QMap<UDS::SID, QString> names = UDSSIDDefinitions::getSIDNames();
    for (const int sid : {0x10, 0x11, 0x3E, 0x22, 0x2E, 0x23, 0x31, 0x19, 0x14, 0x3D, 0x27, 0x28, 0x2F, 0x34,
                          0x35, 0x36, 0x37})
        QVERIFY2(!names.value(UDS::SID(sid)).isEmpty(), qPrintable(QString::number(sid, 16)));
}

void TestCANopenTables::serviceNamesAreUniqueAndWithinTheRangesOfTheStandard()
{
    const QMap<UDS::SID, QString> names = UDSSIDDefinitions::getSIDNames();
    QCOMPARE(names.size(), 27);
    const QStringList texts = names.values();
    QCOMPARE(QSet<QString>(texts.begin(), texts.end()).size(), names.size());
    for (auto name = names.begin(); name != names.end(); ++name) {
        const int sid = name.key();
        QVERIFY((sid >= 0x10 && sid <= 0x3E) || (sid >= 0x83 && sid <= 0x87));
    }
}

QTEST_GUILESS_MAIN(TestCANopenTables)
#include "tst_canopentables.moc"
