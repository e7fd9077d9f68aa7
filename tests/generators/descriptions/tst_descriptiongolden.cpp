#include "generators/descriptions/DescriptionDesk.h"
#include "support/GoldenFile.h"

using namespace Qt::StringLiterals;

namespace {

using Sub = DescriptionDesk::Sub;

/** A small I/O module: every kind of object, access, storage and description. */
void makeModule(DescriptionDesk &desk)
{
    desk.mandatoryObjects();
    desk.describe(u"VendorName"_s, u"Example Works"_s);
    desk.describe(u"ProductName"_s, u"Valve terminal, 8 channels"_s);
    desk.describe(u"CreatedBy"_s, u"Ann"_s);
    desk.describe(u"ModifiedBy"_s, u"Ben"_s);
    desk.describe(u"BaudRate_1000"_s, u"1"_s);
    desk.describe(u"LSS_Supported"_s, u"1"_s);
    desk.describe(u"Granularity"_s, u"8"_s);
    desk.describe(u"Dummy0005"_s, u"1"_s);
    desk.describe(u"Comment"_s, u"Eight valves\nin one row"_s);
    const QString ro = u"ro"_s;
    desk.object(0x1400, u"RPDO communication parameter"_s, 9,
                {{0, DescriptionDesk::sub(u"Highest sub-index supported"_s, 5, u"2"_s, ro)},
                 {1, DescriptionDesk::sub(u"COB-ID"_s, 7, u"$NODEID+0x200"_s)},
                 {2, DescriptionDesk::sub(u"Transmission type"_s, 5, u"255"_s)}});
    desk.object(0x1600, u"RPDO mapping parameter"_s, 9,
                {{0, DescriptionDesk::sub(u"Number of mapped objects"_s, 5, u"1"_s)},
                 {1, DescriptionDesk::sub(u"Mapping entry 1"_s, 7, u"0x62000108"_s)}});
    Sub name = DescriptionDesk::sub(u"Device name"_s, 9, u"valve; \"V8\" = 8 [ch]"_s, u"const"_s);
    name.implementation = CANopen::ManagedConst;
    name.writedefaulttoeds = 0;
    desk.var(0x1008, name);
    Sub temperature = DescriptionDesk::sub(u"Temperature"_s, 3, u"-10"_s, ro);
    temperature.pdomapping = PDOMapping(PDOMapping::TPDO);
    temperature.limitineds = true;
    temperature.lowlimit = u"-400"_s;
    temperature.uplimit = u"1250"_s;
    temperature.refusewrite = true;
    temperature.description = u"Of the housing, in tenths of a degree.\nThe sensor sits beside the supply."_s;
    desk.var(0x2000, temperature);
    desk.var(0x200A, DescriptionDesk::sub(u"Firmware"_s, 15, {}, u"wo"_s));
    Sub outputs = DescriptionDesk::sub(u"Outputs 1 to 8"_s, 5, u"0"_s, u"rww"_s);
    outputs.pdomapping = PDOMapping(PDOMapping::RPDO);
    desk.object(0x6200, u"Write output 8 bit"_s, 8,
                {{0, DescriptionDesk::sub(u"Number of outputs"_s, 5, u"1"_s, ro)}, {1, outputs}},
                u"One bit per valve. "_s.repeated(30).trimmed());
    desk.store->setMiscSetting(u"AdditionalSections"_s, u"[SupportedModules]\nNrOfEntries=0"_s);
}

} // namespace

/** Whole device descriptions of one small device. */
class TestDescriptionGolden : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void theEdsIsTheGoldenOne();
    void theEdsOfAVariantIsTheGoldenOne();
    void theXddIsTheGoldenOne();
};

void TestDescriptionGolden::theEdsIsTheGoldenOne()
{
    DescriptionDesk desk;
    makeModule(desk);
    const QString difference =
        GoldenFile::difference(u"eds-valve-terminal/pump.eds"_s, desk.edsText().toUtf8());
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void TestDescriptionGolden::theEdsOfAVariantIsTheGoldenOne()
{
    DescriptionDesk desk;
    makeModule(desk);
    desk.setMetadata(0x1008, u"eds_define"_s, u"other"_s);
    desk.setMetadata(0x2000, u"eds_define"_s, u"heated"_s);
    desk.setMetadata(0x6200, 1, u"eds_define"_s, u"other"_s);
    const QString difference =
        GoldenFile::difference(u"eds-variant/pump_heated.eds"_s, desk.edsText(u"heated"_s).toUtf8());
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void TestDescriptionGolden::theXddIsTheGoldenOne()
{
    DescriptionDesk desk;
    makeModule(desk);
    const QString difference =
        GoldenFile::difference(u"xdd-valve-terminal/pump_0.xdd"_s, desk.xddText().toUtf8());
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

QTEST_GUILESS_MAIN(TestDescriptionGolden)
#include "tst_descriptiongolden.moc"
