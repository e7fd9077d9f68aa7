#include "check/CheckTest.h"

using namespace CheckTest;
using namespace CheckTest::Texts;

/** What the check says about one object of the dictionary as a whole. */
class TestObjectRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void anObjectThatIsNoVariableNeedsSubIndices_data();
    void anObjectThatIsNoVariableNeedsSubIndices() { checkCANopenRow(); }
    void subIndexZeroIsTheHighestSubIndex_data();
    void subIndexZeroIsTheHighestSubIndex() { checkCANopenRow(); }
    void theErrorHistoryCountsItsEntriesByItself_data();
    void theErrorHistoryCountsItsEntriesByItself() { checkCANopenRow(); }
    void mappingTablesCountWhatIsMapped_data();
    void mappingTablesCountWhatIsMapped() { checkCANopenRow(); }
    void subIndexZeroNeedsItsDefaultValueFlag_data();
    void subIndexZeroNeedsItsDefaultValueFlag() { checkCANopenRow(); }
    void aConstantSubIndexZeroBecomesManagedConst_data();
    void aConstantSubIndexZeroBecomesManagedConst() { checkCANopenRow(); }
    void subIndexZeroBelongsIntoTheDeviceDescription_data();
    void subIndexZeroBelongsIntoTheDeviceDescription() { checkCANopenRow(); }
    void objectsNeedAName_data();
    void objectsNeedAName() { checkCANopenRow(); }
    void aVariableHasOneSubIndex_data();
    void aVariableHasOneSubIndex() { checkCANopenRow(); }
    void withoutAutomaticCorrectionAWrongCountIsNotTold_data();
    void withoutAutomaticCorrectionAWrongCountIsNotTold();
    void objectsBelow0x1000AreOnlyCheckedForTheirValues_data();
    void objectsBelow0x1000AreOnlyCheckedForTheirValues() { checkCANopenRow(); }
};

void TestObjectRules::anObjectThatIsNoVariableNeedsSubIndices_data()
{
    const QString empty = "Object 0x2100: This array does not contain any sub-indices"_error;
    addRows({
        {"array", [](Project &p) { p.object(0x2100, CANopen::Array); }, {empty}},
        {"record", [](Project &p) { p.object(0x2100, CANopen::Record); }, {empty}},
        {"domain object code", [](Project &p) { p.object(0x2100, CANopen::Domain); }, {empty}},
        {"no object code", [](Project &p) { p.object(0x2100, 0); }, {empty}},
        {"index in lower case",
         [](Project &p) { p.object(0xABCD, CANopen::Array); },
         {"Object 0xabcd: This array does not contain any sub-indices"_error}},
        {"the name is checked all the same",
         [](Project &p) { p.object(0x2100, CANopen::Array, ""); },
         {empty, "Object 0x2100: The object does not have a name. (Required for EDS)"_error}},
        {"variable without sub-indices", [](Project &p) { p.object(0x2100, CANopen::Var); }, {}},
        {"variable without sub-indices and name",
         [](Project &p) { p.object(0x2100, CANopen::Var, ""); },
         {"Object 0x2100: The object does not have a name. (Required for EDS)"_error}},
        {"array with sub-index 0 alone", [](Project &p) { p.array(0x2100, {}); }, {}},
    });
}

void TestObjectRules::subIndexZeroIsTheHighestSubIndex_data()
{
    const QString corrected =
        "Object 0x2000</i>: The value of subindex 0 does not fit to the highest subindex."_corrected;
    addRows({
        {"too high", [](Project &p) { p.value(0x2000, 0, "3"); }, {corrected}},
        {"too low", [](Project &p) { p.value(0x2000, 0, "1"); }, {corrected}},
        {"empty", [](Project &p) { p.value(0x2000, 0, ""); }, {corrected}},
        {"no number",
         [](Project &p) { p.value(0x2000, 0, "two"); },
         {"Value conversion failed with Object 0x2000-0x0."_error, corrected}},
        {"highest after a gap",
         [](Project &p) {
             p.put(0x2000, 9, sub("Late", CAN::Unsigned8, "rw", "0"));
             p.value(0x2000, 0, "3");
         },
         {corrected}},
        {"a count of a gap's highest",
         [](Project &p) {
             p.put(0x2000, 9, sub("Late", CAN::Unsigned8, "rw", "0"));
             p.value(0x2000, 0, "9");
         },
         {}},
        {"hexadecimal", [](Project &p) { p.value(0x2000, 0, "0x2"); }, {}},
        {"padded hexadecimal", [](Project &p) { p.value(0x2000, 0, "0x02"); }, {}},
        {"record",
         [](Project &p) { p.value(0x1018, 0, "3"); },
         {"Object 0x1018</i>: The value of subindex 0 does not fit to the highest subindex."_corrected}},
        {"variable", [](Project &p) { p.value(0x2001, 0, "9"); }, {}},
    });
}

void TestObjectRules::theErrorHistoryCountsItsEntriesByItself_data()
{
    const auto withHistory = [](Project &p) {
        p.variable(0x1014, sub("COB-ID EMCY", CAN::Unsigned32, "rw", "$NODEID+0x80"));
        p.array(0x1003, {"0", "0", "0"});
    };
    addRows({
        {"value 0 with three entries",
         [=](Project &p) {
             withHistory(p);
             p.value(0x1003, 0, "0");
         },
         {}},
        {"no default value flag",
         [=](Project &p) {
             withHistory(p);
             p.edit(0x1003, 0, [](Sub &s) { s.defaultineds = false; });
             p.writeDefault(0x1003, 0, Always);
         },
         {}},
        {"managed variable",
         [=](Project &p) {
             withHistory(p);
             p.implementation(0x1003, 0, CANopen::ManagedVariable);
         },
         {}},
        {"its default is missed in the description all the same",
         [=](Project &p) {
             withHistory(p);
             p.writeDefault(0x1003, 0, Never);
         },
         {"Object 0x1003-0:The defaultvalue of this subindex should be written into the EDS/XDD "
          "file."_warning}},
    });
}

void TestObjectRules::mappingTablesCountWhatIsMapped_data()
{
    const QStringList three{"0x20010010", "0x20010010", "0x20010010"};
    addRows({
        {"dynamic: fewer than the entries", [=](Project &p) { p.mapping(0x1A00, three, "rw", "1"); }, {}},
        {"static: fewer than the entries",
         [=](Project &p) { p.mapping(0x1A00, three, "const", "1"); },
         {"Object 0x1a00</i>: The value of subindex 0 does not fit to the highest subindex."_corrected}},
        {"static receive table",
         [](Project &p) {
             p.mapping(0x1600, {"0x20000108", "0x20000208"}, "ro", "1");
         },
         {"Object 0x1600</i>: The value of subindex 0 does not fit to the highest subindex."_corrected}},
        {"static: 252 counts",
         [=](Project &p) { p.mapping(0x1A00, three, "const", "252"); },
         {"Object 0x1a00</i>: The value of subindex 0 does not fit to the highest subindex."_corrected}},
        {"static: 253 stays (SAM-MPDO)", [=](Project &p) { p.mapping(0x1A00, three, "const", "253"); }, {}},
        {"static: 254 stays (DAM-MPDO)", [=](Project &p) { p.mapping(0x1A00, three, "const", "254"); }, {}},
        {"static 253 needs no default value flag",
         [=](Project &p) {
             p.mapping(0x1A00, three, "const", "253");
             p.edit(0x1A00, 0, [](Sub &s) { s.defaultineds = false; });
             p.writeDefault(0x1A00, 0, Always);
         },
         {}},
        {"dynamic needs no default value flag",
         [=](Project &p) {
             p.mapping(0x1A00, three, "rw");
             p.edit(0x1A00, 0, [](Sub &s) { s.defaultineds = false; });
             p.writeDefault(0x1A00, 0, Always);
         },
         {}},
        {"last receive and transmit tables",
         [](Project &p) {
             p.pdo(0x15FF, "0x301", {"0x20000108", "0x20000208"}, "rw");
             p.value(0x17FF, 0, "1");
             p.pdo(0x19FF, "0x302", {"0x20000108", "0x20000208"}, "rw");
             p.value(0x1BFF, 0, "1");
         },
         {}},
        {"behind the last table",
         [](Project &p) {
             p.array(0x1C00, {"0", "0"});
             p.value(0x1C00, 0, "1");
         },
         {"Object 0x1c00</i>: The value of subindex 0 does not fit to the highest subindex."_corrected}},
        {"0x1800 is no mapping table",
         [](Project &p) { p.value(0x1800, 0, "253"); },
         {"Object 0x1800</i>: The value of subindex 0 does not fit to the highest subindex."_corrected}},
    });
}

void TestObjectRules::subIndexZeroNeedsItsDefaultValueFlag_data()
{
    const QString flag = "Object 0x2000-0:The 'default value' flag must be set for this subindex."_error;
    const QString written = "Object 0x2000-0:The defaultvalue of this subindex should be written into the "
                            "EDS/XDD file."_warning;
    addRows({
        {"flag clear, written with the default",
         [](Project &p) { p.edit(0x2000, 0, [](Sub &s) { s.defaultineds = false; }); },
         {flag, written}},
        {"flag clear, always written",
         [](Project &p) {
             p.edit(0x2000, 0, [](Sub &s) { s.defaultineds = false; });
             p.writeDefault(0x2000, 0, Always);
         },
         {flag}},
        {"flag clear, never written",
         [](Project &p) {
             p.edit(0x2000, 0, [](Sub &s) { s.defaultineds = false; });
             p.writeDefault(0x2000, 0, Never);
         },
         {flag, written}},
        {"flag of another sub-index",
         [](Project &p) { p.edit(0x2000, 1, [](Sub &s) { s.defaultineds = false; }); },
         {}},
        {"flag of a variable",
         [](Project &p) {
             p.edit(0x2001, 0, [](Sub &s) { s.defaultineds = false; });
             p.writeDefault(0x2001, 0, Never);
         },
         {}},
    });
}

void TestObjectRules::aConstantSubIndexZeroBecomesManagedConst_data()
{
    const QString corrected = "Object 0x2000-0</i>:'Managed Const' is used as implementation type for this "
                              "subindex."_corrected;
    const auto kind = [](int implementation) {
        return [=](Project &p) { p.implementation(0x2000, 0, implementation); };
    };
    addRows({
        {"managed variable", kind(CANopen::ManagedVariable), {corrected}},
        {"application variable without a name", kind(CANopen::ApplicationVariable), {corrected}},
        {"virtual object", kind(CANopen::VirtualObject), {}},
        {"managed variable that is read only",
         [](Project &p) {
             p.edit(0x2000, 0, [](Sub &s) {
                 s.accesstype = "ro";
                 s.implementation = CANopen::ManagedVariable;
             });
         },
         {}},
        {"another sub-index",
         [](Project &p) {
             p.edit(0x2000, 1, [](Sub &s) { s.accesstype = "const"; });
             p.value(0x1600, 1, "0x20000208");
         },
         {}},
        {"access type in capitals",
         [](Project &p) {
             p.edit(0x2000, 0, [](Sub &s) {
                 s.accesstype = "Const";
                 s.implementation = CANopen::ManagedVariable;
             });
         },
         {"Object 0x2000-0x00: The access type 'Const' is invalid. Use ro, rw, const, wo, rww or rwr "
          "instead."_error}},
    });
}

void TestObjectRules::subIndexZeroBelongsIntoTheDeviceDescription_data()
{
    const QString written = "Object 0x2000-0:The defaultvalue of this subindex should be written into the "
                            "EDS/XDD file."_warning;
    addRows({
        {"never", [](Project &p) { p.writeDefault(0x2000, 0, Never); }, {written}},
        {"as the default value", [](Project &p) { p.writeDefault(0x2000, 0, WithDefault); }, {}},
        {"always", [](Project &p) { p.writeDefault(0x2000, 0, Always); }, {}},
        {"dynamic mapping table",
         [](Project &p) {
             p.mapping(0x1A00, {"0x20010010"}, "rw");
             p.writeDefault(0x1A00, 0, Never);
         },
         {"Object 0x1a00-0:The defaultvalue of this subindex should be written into the EDS/XDD "
          "file."_warning}},
        {"another sub-index", [](Project &p) { p.writeDefault(0x2000, 1, Never); }, {}},
    });
}

void TestObjectRules::objectsNeedAName_data()
{
    addRows({
        {"variable",
         [](Project &p) { p.rename(0x2001, ""); },
         {"Object 0x2001: The object does not have a name. (Required for EDS)"_error}},
        {"array",
         [](Project &p) { p.rename(0x2000, ""); },
         {"Object 0x2000: The object does not have a name. (Required for EDS)"_error}},
        {"a short name", [](Project &p) { p.rename(0x2000, "a"); }, {}},
    });
}

void TestObjectRules::aVariableHasOneSubIndex_data()
{
    const QString several = "Object 0x2001: The object is a VARIABLE but has multiple subindices."_error;
    const Sub more = sub("More", CAN::Unsigned8, "rw", "0");
    addRows({
        {"two", [=](Project &p) { p.put(0x2001, 1, more); }, {several}},
        {"three",
         [=](Project &p) {
             p.put(0x2001, 1, more);
             p.put(0x2001, 2, more);
         },
         {several}},
        {"one, which is not 0",
         [=](Project &p) {
             p.put(0x2001, 1, more);
             p.removeSub(0x2001, 0);
             p.mapping(0x1A00, {"0x20010108"});
         },
         {}},
    });
}

void TestObjectRules::withoutAutomaticCorrectionAWrongCountIsNotTold_data()
{
    addRows({
        {"identity object", [](Project &p) { p.value(0x1018, 0, "2"); }, {}},
        {"implementation", [](Project &p) { p.implementation(0x2000, 0, CANopen::ManagedVariable); }, {}},
        {"other findings stay",
         [](Project &p) {
             p.value(0x2000, 0, "9");
             p.edit(0x2000, 0, [](Sub &s) { s.defaultineds = false; });
             p.writeDefault(0x2000, 0, Always);
         },
         {"Object 0x2000-0:The 'default value' flag must be set for this subindex."_error}},
    });
}

void TestObjectRules::withoutAutomaticCorrectionAWrongCountIsNotTold()
{
    disableCorrections();
    checkCANopenRow();
    disableCorrections(false);
}

void TestObjectRules::objectsBelow0x1000AreOnlyCheckedForTheirValues_data()
{
    addRows({
        {"array without sub-indices or name", [](Project &p) { p.object(0x0FFF, CANopen::Array, ""); }, {}},
        {"broken sub-index",
         [](Project &p) {
             p.object(0x0040, CANopen::Array);
             p.put(0x0040, 3, sub("", CAN::NoDataType, "", "text"));
         },
         {}},
        {"value that is no number",
         [](Project &p) { p.variable(0x0040, sub("Type", CAN::Unsigned8, "ro", "eight")); },
         {"Value conversion failed with Object 0x0040-0x0."_error}},
        {"0x1000 and above",
         [](Project &p) { p.rename(0x1000, ""); },
         {"Object 0x1000: The object does not have a name. (Required for EDS)"_error}},
    });
}

QTEST_GUILESS_MAIN(TestObjectRules)
#include "tst_objectrules.moc"
