#include "check/CheckTest.h"

using namespace CheckTest;
using namespace CheckTest::Texts;

/** Identity, error objects and the NMT inhibit time. */
class TestIdentityRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void mastersShouldHaveAnInhibitTime_data();
    void mastersShouldHaveAnInhibitTime() { checkCANopenRow(); }
    void identityNumbersHaveAValue_data();
    void identityNumbersHaveAValue() { checkCANopenRow(); }
    void theVendorOfTheToolIsNotForProduction_data();
    void theVendorOfTheToolIsNotForProduction() { checkCANopenRow(); }
    void aSerialNumberIsNoConstant_data();
    void aSerialNumberIsNoConstant() { checkCANopenRow(); }
    void anErrorHistoryNeedsEmergencies_data();
    void anErrorHistoryNeedsEmergencies() { checkCANopenRow(); }
    void emergencyConsumersHaveACobId_data();
    void emergencyConsumersHaveACobId() { checkCANopenRow(); }
};

void TestIdentityRules::mastersShouldHaveAnInhibitTime_data()
{
    const QString missing = "Object 0x102a: The object 0x102A (NMT inhibit time) is highly recommended for "
                            "masters. It may be added via 'Add Communication Service'."_warning;
    const auto master = [](const char *value) { return [=](Project &p) { p.set("nmtmaster", value); }; };
    addRows({
        {"master", master("1"), {missing}},
        {"slave", master("0"), {}},
        {"flying master", master("2"), {}},
        {"never set", master(""), {}},
        {"master with inhibit time",
         [=](Project &p) {
             master("1")(p);
             p.variable(0x102A, sub("NMT Inhibit Time", CAN::Unsigned16, "rw", "0"));
         },
         {}},
    });
}

void TestIdentityRules::identityNumbersHaveAValue_data()
{
    const QString vendor = "Object 0x1018-0x01: The value of subindex 1 (vendor-ID) is empty."_error;
    const QString product = "Object 0x1018-0x02: The value of subindex 2 (product code) is empty."_error;
    const QString revision = "Object 0x1018-0x03: The value of subindex 3 (revision number) is empty."_error;
    const auto empty = [](quint8 subIndex) { return [=](Project &p) { p.value(0x1018, subIndex, ""); }; };
    addRows({
        {"vendor", empty(1), {vendor}},
        {"product", empty(2), {product}},
        {"revision", empty(3), {revision}},
        {"serial number", empty(4), {}},
        {"0 is a value",
         [](Project &p) {
             for (const quint8 subIndex : {1, 2, 3})
                 p.value(0x1018, subIndex, "0");
         },
         {}},
        {"all",
         [=](Project &p) {
             for (const quint8 subIndex : {1, 2, 3})
                 empty(subIndex)(p);
         },
         {vendor, product, revision}},
        {"vendor alone exists",
         [](Project &p) {
             p.array(0x1018, {"1"});
             for (const quint8 subIndex : {2, 3, 4})
                 p.removeSub(0x1018, subIndex);
         },
         {}},
        {"no vendor", [](Project &p) { p.removeSub(0x1018, 1); }, {vendor}},
        {"no identity object", [](Project &p) { p.remove(0x1018); }, {vendor}},
    });
}

void TestIdentityRules::theVendorOfTheToolIsNotForProduction_data()
{
    const QString reserved =
        "<strong>Warning: Object 0x1018-0x01: The vendor-ID 0x2B7 (Korvel embedded communication GmbH) may "
        "not be used for production. </strong>";
    const auto vendor = [](const char *value) { return [=](Project &p) { p.value(0x1018, 1, value); }; };
    addRows({
        {"0x2B7", vendor("0x2B7"), {reserved}},
        {"0x000002b7", vendor("0x000002b7"), {reserved}},
        {"695", vendor("695"), {reserved}},
        {"0x2B6", vendor("0x2B6"), {}},
        {"0x2B8", vendor("0x2B8"), {}},
    });
}

void TestIdentityRules::aSerialNumberIsNoConstant_data()
{
    const auto kind = [](int implementation) {
        return [=](Project &p) { p.implementation(0x1018, 4, implementation); };
    };
    addRows({
        {"constant",
         kind(CANopen::ManagedConst),
         {"<strong>Warning</strong>: Object 0x1018: The implementation type of subindex 4 (serial number) is "
          "'Managed Const'. This is not useful in most cases."}},
        {"managed variable", kind(CANopen::ManagedVariable), {}},
        {"virtual object", kind(CANopen::VirtualObject), {}},
        {"product code as a constant",
         [](Project &p) { p.implementation(0x1018, 2, CANopen::ManagedConst); },
         {}},
        {"no serial number",
         [](Project &p) {
             p.removeSub(0x1018, 4);
             p.value(0x1018, 0, "3");
         },
         {}},
    });
}

void TestIdentityRules::anErrorHistoryNeedsEmergencies_data()
{
    const auto emergency = [](Project &p) {
        p.variable(0x1014, sub("COB-ID EMCY", CAN::Unsigned32, "rw", "$NODEID+0x80"));
    };
    addRows({
        {"history alone",
         [](Project &p) { p.array(0x1003, {"0"}); },
         {"Object 0x1003: This object can only be used, if object 0x1014 exists as well."_error}},
        {"both",
         [=](Project &p) {
             p.array(0x1003, {"0"});
             emergency(p);
         },
         {}},
        {"emergencies alone", emergency, {}},
    });
}

void TestIdentityRules::emergencyConsumersHaveACobId_data()
{
    const auto zero = [](int subIndex) {
        return QStringLiteral("<strong>Error: </strong>Object 0x1028-%1: The value of this sub index may not "
                              "be 0x00000000.")
            .arg(subIndex);
    };
    const auto consumers = [](const QStringList &values) {
        return [=](Project &p) { p.array(0x1028, values); };
    };
    QStringList many(128, "0x81");
    many.last() = "0";
    addRows({
        {"0", consumers({"0x81", "0"}), {zero(2)}},
        {"0x00000000", consumers({"0x00000000", "0x82"}), {zero(1)}},
        {"empty", consumers({"", "0x82"}), {zero(1)}},
        {"expression", consumers({"$NODEID+0x80"}), {zero(1)}},
        {"several", consumers({"0", "0x81", "0"}), {zero(1), zero(3)}},
        {"sub-index in decimal",
         consumers({"1", "1", "1", "1", "1", "1", "1", "1", "1", "1", "0"}),
         {zero(11)}},
        {"disabled", consumers({"0x80000081"}), {}},
        {"sub-index 128 is not tested", consumers(many), {}},
    });
}

QTEST_GUILESS_MAIN(TestIdentityRules)
#include "tst_identityrules.moc"
