#include "check/CheckTest.h"

using namespace CheckTest;
using namespace CheckTest::Texts;

/** What the check says about safety-relevant data objects (EN 50325-5). */
class TestSrdoRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void communicationObjectsHaveTheirMapping_data();
    void communicationObjectsHaveTheirMapping() { checkCANopenRow(); }
    void mappedObjectsExist_data();
    void mappedObjectsExist() { checkCANopenRow(); }
    void mappedObjectsAreApplicationVariables_data();
    void mappedObjectsAreApplicationVariables() { checkCANopenRow(); }
    void mappedObjectsAllowMapping_data();
    void mappedObjectsAllowMapping() { checkCANopenRow(); }
};

namespace {

Change mapped(quint16 index, const QStringList &entries)
{
    return [=](Project &p) { p.array(index, entries); };
}

} // namespace

void TestSrdoRules::communicationObjectsHaveTheirMapping_data()
{
    const auto missing = [](const char *communication, const char *mapping) {
        return QStringLiteral(
                   "<strong>Error: </strong>Object 0x%1: The corresponding SRDO mapping object 0x%2 "
                   "does not exist.")
            .arg(QLatin1StringView(communication), QLatin1StringView(mapping));
    };
    addRows({
        {"first", mapped(0x1301, {"1"}), {missing("1301", "1381")}},
        {"last", mapped(0x1340, {"1"}), {missing("1340", "13c0")}},
        {"several",
         [](Project &p) {
             p.array(0x1310, {"1"});
             p.array(0x1302, {"1"});
         },
         {missing("1302", "1382"), missing("1310", "1390")}},
        {"with mapping",
         [](Project &p) {
             p.array(0x1301, {"1"});
             p.array(0x1381, {"0x20010010"});
         },
         {}},
        {"last with mapping",
         [](Project &p) {
             p.array(0x1340, {"1"});
             p.array(0x13C0, {"0x20010010"});
         },
         {}},
        {"mapping alone", mapped(0x1381, {"0x20010010"}), {}},
        {"GFC parameter", mapped(0x1300, {"1"}), {}},
        {"behind the last", mapped(0x1341, {"1"}), {}},
    });
}

void TestSrdoRules::mappedObjectsExist_data()
{
    addRows({
        {"no object",
         mapped(0x1381, {"0x25550108"}),
         {"Object 0x1381: The object 0x2555:1 mapped into an SRDO does not exist."_error}},
        {"no sub-index",
         mapped(0x13BF, {"0x20010110"}),
         {"Object 0x13bf: The object 0x2001:1 mapped into an SRDO does not exist."_error}},
        {"empty",
         mapped(0x1381, {"0x20010010", ""}),
         {"Object 0x1381: The object 0x0000:0 mapped into an SRDO does not exist."_error}},
        {"0x13C0 is not walked", mapped(0x13C0, {"0x25550108"}), {}},
        {"0x1380 is not walked", mapped(0x1380, {"0x25550108"}), {}},
        {"sub-index 0 is no entry", mapped(0x1381, {}), {}},
    });
}

void TestSrdoRules::mappedObjectsAreApplicationVariables_data()
{
    const auto kind = [](int implementation) {
        return [=](Project &p) {
            p.array(0x1381, {"0x20010010"});
            p.edit(0x2001, 0, [=](Sub &s) {
                s.implementation = implementation;
                s.accesstype = "ro";
            });
        };
    };
    const QString noVariable =
        "Object 0x1381: The object 0x2001:0 mapped into an SRDO must be an application variable."_error;
    addRows({
        {"managed variable", kind(CANopen::ManagedVariable), {noVariable}},
        {"constant", kind(CANopen::ManagedConst), {noVariable}},
        {"virtual object", kind(CANopen::VirtualObject), {noVariable}},
        {"application variable", kind(CANopen::ApplicationVariable), {}},
    });
}

void TestSrdoRules::mappedObjectsAllowMapping_data()
{
    const auto mapping = [](PDOMapping::PDOMappingType type, int implementation) {
        return [=](Project &p) {
            p.array(0x1381, {"0x20000108"});
            p.mapping(0x1600, {"0x20000208"});
            p.edit(0x2000, 1, [=](Sub &s) {
                s.implementation = implementation;
                s.varname = "safe";
                s.pdomapping = PDOMapping(type);
            });
        };
    };
    const QString forbidden =
        "Object 0x1381: The PDO mapping must be enabled for object 0x2000:1 to use it in an SRDO."_error;
    addRows({
        {"forbidden", mapping(PDOMapping::Forbidden, CANopen::ApplicationVariable), {forbidden}},
        {"forbidden managed variable",
         mapping(PDOMapping::Forbidden, CANopen::ManagedVariable),
         {"Object 0x1381: The object 0x2000:1 mapped into an SRDO must be an application variable."_error,
          forbidden}},
        {"allowed", mapping(PDOMapping::Allowed, CANopen::ApplicationVariable), {}},
        {"transmit", mapping(PDOMapping::TPDO, CANopen::ApplicationVariable), {}},
    });
}

QTEST_GUILESS_MAIN(TestSrdoRules)
#include "tst_srdorules.moc"
