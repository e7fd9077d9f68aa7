#include "check/CheckTest.h"

using namespace CheckTest;
using namespace CheckTest::Texts;

/** What the check says about PDO mapping objects. */
class TestPdoMappingRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void cleanup() { disableCorrections(false); }
    void mappingsHaveTheirCommunicationObject_data();
    void mappingsHaveTheirCommunicationObject() { checkCANopenRow(); }
    void tablesMapSomething_data();
    void tablesMapSomething() { checkCANopenRow(); }
    void tablesOfASecondLineNameIt();
    void subIndicesHaveOneAccessType_data();
    void subIndicesHaveOneAccessType() { checkCANopenRow(); }
    void activeEntriesAreNotEmpty_data();
    void activeEntriesAreNotEmpty() { checkCANopenRow(); }
    void dummyEntriesMapADataType_data();
    void dummyEntriesMapADataType() { checkCANopenRow(); }
    void mappedObjectsExist_data();
    void mappedObjectsExist() { checkCANopenRow(); }
    void mappedObjectsAllowIt_data();
    void mappedObjectsAllowIt() { checkCANopenRow(); }
    void mappedObjectsHaveTheLengthOfTheEntry_data();
    void mappedObjectsHaveTheLengthOfTheEntry() { checkCANopenRow(); }
    void accessTypesFitTheDirection_data();
    void accessTypesFitTheDirection() { checkCANopenRow(); }
    void aPdoHasAtMost64Bits_data();
    void aPdoHasAtMost64Bits() { checkCANopenRow(); }
    void anFdPdoHasAtMost512Bits_data();
    void anFdPdoHasAtMost512Bits() { checkCANopenRow(); }
    void theNumberOfEntriesIsThatOfTheTable_data();
    void theNumberOfEntriesIsThatOfTheTable() { checkCANopenRow(); }
    void aStaticTableWith65EntriesIsNoTable();
};

namespace {

/** Replaces the mapping of the first receive or transmit PDO. */
Change mapped(quint16 index, const QStringList &entries, const char *access = "const", const char *count = "")
{
    return [=](Project &p) { p.mapping(index, entries, access, count); };
}

} // namespace

void TestPdoMappingRules::mappingsHaveTheirCommunicationObject_data()
{
    const auto missing = [](const char *mapping, const char *communication) {
        return QStringLiteral("<strong>Error: </strong>Object 0x%1: The corresponding PDO communication "
                              "parameter object 0x%2 does not exist.")
            .arg(QLatin1StringView(mapping), QLatin1StringView(communication));
    };
    addRows({
        {"receive", [](Project &p) { p.remove(0x1400); }, {missing("1600", "1400")}},
        {"transmit", [](Project &p) { p.remove(0x1800); }, {missing("1a00", "1800")}},
        {"last receive", mapped(0x17FF, {"0x20000108"}), {missing("17ff", "15ff")}},
        {"last transmit", mapped(0x1BFF, {"0x20010010"}), {missing("1bff", "19ff")}},
        {"no mapping object", [](Project &p) { p.array(0x1C00, {"5"}); }, {}},
    });
}

void TestPdoMappingRules::tablesMapSomething_data()
{
    const QString receive =
        "Object 0x1600 of line 0: The PDO mapping table does not contain any mapped object."_error;
    const auto disabled = [](quint16 index, const char *access) {
        return [=](Project &p) {
            p.pdo(index, "$NODEID+0x80000000", {}, access);
            p.set("overwrite_predef", "1");
        };
    };
    addRows({
        {"static, sub-index 0 alone", disabled(0x1400, "const"), {receive}},
        {"dynamic, sub-index 0 alone", disabled(0x1400, "rw"), {receive}},
        {"transmit",
         disabled(0x1800, "const"),
         {"Object 0x1a00 of line 0: The PDO mapping table does not contain any mapped object."_error}},
        {"dynamic, 64 entries claimed",
         [](Project &p) {
             p.pdo(0x1400, "$NODEID+0x200", {}, "rw");
             p.value(0x1600, 0, "64");
         },
         {receive, "Object 0x1600:  Invalid number of mapping entries."_error}},
        {"dynamic, 65 entries claimed",
         [](Project &p) {
             p.pdo(0x1400, "$NODEID+0x200", {}, "rw");
             p.value(0x1600, 0, "65");
         },
         {}},
        {"the number counts in its low 8 bits",
         [](Project &p) {
             p.pdo(0x1400, "$NODEID+0x80000200", {}, "rw");
             p.value(0x1600, 0, "0x100");
         },
         {receive}},
    });
}

void TestPdoMappingRules::tablesOfASecondLineNameIt()
{
    Project project;
    project.addLine(1, CANopenLine);
    project.pdo(0x1400, "$NODEID+0x80000200", {});
    compare(Checker().checkCANopen(project),
            {"Object 0x1600 of line 1: The PDO mapping table does not contain any mapped object."_error});
}

void TestPdoMappingRules::subIndicesHaveOneAccessType_data()
{
    const QString differs = "Object 0x1600: All subindices of a PDO mapping object must have the same access "
                            "type. (const for static mapping or rw for dynamic mapping"_error;
    const auto access = [](const QStringList &types, const char *head) {
        return [=](Project &p) {
            p.mapping(0x1600, {"0x20000108", "0x20000208", "0x00050008"}, head);
            for (int i = 0; i < types.size(); ++i) {
                p.access(0x1600, quint8(i + 1), types.at(i));
                p.implementation(0x1600, quint8(i + 1), CANopen::ManagedVariable);
            }
        };
    };
    addRows({
        {"all static", access({"const", "const", "const"}, "const"), {}},
        {"all dynamic", access({"rw", "rw", "rw"}, "rw"), {}},
        {"all read only", access({"ro", "ro", "ro"}, "ro"), {}},
        {"one differs", access({"const", "rw", "const"}, "const"), {differs}},
        {"two differ", access({"rw", "const", "ro"}, "const"), {differs, differs}},
        {"sub-index 0 differs", access({"const", "const", "const"}, "rw"), {differs, differs, differs}},
    });
}

void TestPdoMappingRules::activeEntriesAreNotEmpty_data()
{
    const auto empty = [](int subIndex) {
        return QStringLiteral(
                   "<strong>Error: </strong>Object 0x1600:%1 is an active mapping entry but maps no "
                   "object (empty entry).")
            .arg(subIndex);
    };
    addRows({
        {"0", mapped(0x1600, {"0x20000108", "0"}), {empty(2)}},
        {"empty text", mapped(0x1600, {""}), {empty(1)}},
        {"0xFF20", mapped(0x1600, {"0xFF20"}), {empty(1)}},
        {"0xFFFF",
         mapped(0x1600, {"0xFFFF"}),
         {empty(1), "Object 0x1600: Size of PDO exceeds the limit. "_error}},
        {"no object, its length counts", mapped(0x1600, {"0x20", "0x20"}), {empty(1), empty(2)}},
        {"no object, its length counts above 64 bits",
         mapped(0x1600, {"0x20", "0x20", "0x08"}),
         {empty(1), empty(2), empty(3), "Object 0x1600: Size of PDO exceeds the limit. "_error}},
        {"transmit",
         mapped(0x1A00, {"0"}),
         {"Object 0x1a00:1 is an active mapping entry but maps no object (empty entry)."_error}},
        {"0x10000 is a dummy", mapped(0x1600, {"0x10000"}), {}},
        {"inactive", mapped(0x1600, {"0x20000108", "0"}, "rw", "1"), {}},
        {"inactive behind an active one", mapped(0x1600, {"0x20000108", "0", "0"}, "rw", "2"), {empty(2)}},
    });
}

void TestPdoMappingRules::dummyEntriesMapADataType_data()
{
    const QStringList bytes(7, "0x20000108");
    addRows({
        {"UNSIGNED8", mapped(0x1600, {"0x00050008", "0x20000108"}), {}},
        {"UNSIGNED32 with a sub-index", mapped(0x1600, {"0x00070420"}), {}},
        {"fills the PDO", mapped(0x1600, bytes + QStringList{"0x00050008"}), {}},
        {"is counted",
         mapped(0x1600, bytes + QStringList{"0x00060010"}),
         {"Object 0x1600: Size of PDO exceeds the limit. "_error}},
        {"in a transmit PDO", mapped(0x1A00, {"0x00050008"}), {}},
        {"8 is no dummy",
         mapped(0x1600, {"0x00080020"}),
         {"Object 0x1600: The mapped object 0x0008:0 does not exist."_error}},
    });
}

void TestPdoMappingRules::mappedObjectsExist_data()
{
    addRows({
        {"no object",
         mapped(0x1600, {"0x25550108"}),
         {"Object 0x1600: The mapped object 0x2555:1 does not exist."_error}},
        {"no sub-index",
         mapped(0x1A00, {"0x20000308"}),
         {"Object 0x1a00: The mapped object 0x2000:3 does not exist."_error}},
        {"behind the number of entries",
         mapped(0x1600, {"0x20000108", "0x20000208", "0x2FFF0108"}, "rw", "2"),
         {"Object 0x1600: The mapped object 0x2fff:1 does not exist."_error}},
        {"behind the number of entries, its length does not count",
         mapped(0x1600, {"0x20000108", "0x2FFF01FF"}, "rw", "1"),
         {"Object 0x1600: The mapped object 0x2fff:1 does not exist."_error}},
        {"behind the number of entries, in a full PDO",
         [](Project &p) {
             p.mapping(0x1600, {"0x00070020", "0x00070020", "0x20000108"}, "rw", "2");
             p.removeSub(0x2000, 1);
         },
         {"Object 0x1600: The mapped object 0x2000:1 does not exist."_error}},
        {"both entries",
         mapped(0x1600, {"0x25550108", "0x20000308"}),
         {"Object 0x1600: The mapped object 0x2555:1 does not exist."_error,
          "Object 0x1600: The mapped object 0x2000:3 does not exist."_error}},
        {"object of another line",
         [](Project &p) {
             p.variable(0x2555, sub("Other", CAN::Unsigned8, "rw", "0"));
             p.addLine(1, CANopenLine);
             p.mapping(0x1600, {"0x25550008"});
         },
         {"Object 0x1600: The mapped object 0x2555:0 does not exist."_error}},
    });
}

void TestPdoMappingRules::mappedObjectsAllowIt_data()
{
    const auto allow = [](PDOMapping::PDOMappingType type) {
        return [=](Project &p) {
            p.edit(0x2000, 1, [&](Sub &s) { s.pdomapping = PDOMapping(type); });
            p.edit(0x2001, 0, [&](Sub &s) { s.pdomapping = PDOMapping(type); });
        };
    };
    addRows({
        {"forbidden",
         allow(PDOMapping::Forbidden),
         {"Object 0x1600: PDO mapping is not allowed for object 0x2000:1."_error,
          "Object 0x1a00: PDO mapping is not allowed for object 0x2001:0."_error}},
        {"allowed", allow(PDOMapping::Allowed), {}},
        {"default", allow(PDOMapping::Default), {}},
        {"receive", allow(PDOMapping::RPDO), {}},
        {"transmit", allow(PDOMapping::TPDO), {}},
        {"forbidden and inactive",
         [](Project &p) {
             p.edit(0x2000, 2, [](Sub &s) { s.pdomapping = PDOMapping(PDOMapping::Forbidden); });
             p.mapping(0x1600, {"0x20000108", "0x20000208"}, "rw", "1");
         },
         {"Object 0x1600: PDO mapping is not allowed for object 0x2000:2."_error}},
    });
}

void TestPdoMappingRules::mappedObjectsHaveTheLengthOfTheEntry_data()
{
    const auto length = [](int type, const char *entry) {
        return [=](Project &p) {
            p.type(0x2000, 1, type, "");
            p.set("bitwise_mapping", "1");
            p.setDescription("Granularity", "1");
            p.mapping(0x1600, {entry});
        };
    };
    const QString small = "Object 0x1600: The size of the mapped object 0x2000:1 is too small."_warning;
    const QString large = "Object 0x1600: The size of the mapped object 0x2000:1 is too large."_error;
    addRows({
        {"UNSIGNED8, 8", length(CAN::Unsigned8, "0x20000108"), {}},
        {"UNSIGNED8, 7", length(CAN::Unsigned8, "0x20000107"), {small}},
        {"UNSIGNED8, 9", length(CAN::Unsigned8, "0x20000109"), {large}},
        {"UNSIGNED8, 0", length(CAN::Unsigned8, "0x20000100"), {small}},
        {"BOOLEAN, 1", length(CAN::Boolean, "0x20000101"), {}},
        {"BOOLEAN, 8", length(CAN::Boolean, "0x20000108"), {large}},
        {"INTEGER24, 24", length(CAN::Integer24, "0x20000118"), {}},
        {"UNSIGNED24, 32", length(CAN::Unsigned24, "0x20000120"), {large}},
        {"UNSIGNED64, 64", length(CAN::Unsigned64, "0x20000140"), {}},
        {"UNSIGNED64, 32", length(CAN::Unsigned64, "0x20000120"), {small}},
        {"text has no length",
         [](Project &p) {
             p.edit(0x2002, 0, [](Sub &s) { s.accesstype = "ro"; });
             p.mapping(0x1A00, {"0x20020020"});
         },
         {"Object 0x1a00: The size of the mapped object 0x2002:0 is too large."_error}},
    });
}

void TestPdoMappingRules::accessTypesFitTheDirection_data()
{
    const QString receive =
        "Object 0x1600: The access right of the mapped object 0x2000:1 does not fit for an RPDO."_error;
    const QString transmit =
        "Object 0x1a00: The access right of the mapped object 0x2000:1 does not fit for a TPDO."_error;
    const auto access = [](const char *type, quint16 mapping) {
        return [=](Project &p) {
            p.access(0x2000, 1, type);
            p.mapping(0x1600, {"0x20000208"});
            p.mapping(mapping, {"0x20000108"});
        };
    };
    QList<Row> rows;
    for (const char *type : {"ro", "const", "rwr"}) {
        rows.append({QByteArray(type) + " received", access(type, 0x1600), {receive}});
        rows.append({QByteArray(type) + " sent", access(type, 0x1A00), {}});
    }
    for (const char *type : {"wo", "rww"}) {
        rows.append({QByteArray(type) + " received", access(type, 0x1600), {}});
        rows.append({QByteArray(type) + " sent", access(type, 0x1A00), {transmit}});
    }
    rows.append({"rw received", access("rw", 0x1600), {}});
    rows.append({"rw sent", access("rw", 0x1A00), {}});
    rows.append({"ro received behind the number of entries",
                 [](Project &p) {
                     p.access(0x2000, 1, "ro");
                     p.mapping(0x1600, {"0x20000208", "0x20000108"}, "rw", "1");
                 },
                 {receive}});
    addRows(rows);
}

void TestPdoMappingRules::aPdoHasAtMost64Bits_data()
{
    const QString tooLong = "Object 0x1600: Size of PDO exceeds the limit. "_error;
    addRows({
        {"64", mapped(0x1600, QStringList(8, "0x20000108")), {}},
        {"65", mapped(0x1600, {"0x00070020", "0x00050021"}), {tooLong}},
        {"72", mapped(0x1600, QStringList(9, "0x20000108")), {tooLong}},
        {"72 of which 64 are active", mapped(0x1600, QStringList(9, "0x20000108"), "rw", "8"), {}},
        {"transmit",
         mapped(0x1A00, QStringList(5, "0x20010010")),
         {"Object 0x1a00: Size of PDO exceeds the limit. "_error}},
        {"an entry behind the number of entries adds nothing",
         mapped(0x1600, {"0x00070020", "0x00070020", "0x20000108"}, "rw", "2"),
         {}},
    });
}

void TestPdoMappingRules::anFdPdoHasAtMost512Bits_data()
{
    const QString tooLong = "Object 0x1600: Size of PDO exceeds the limit. "_error;
    const auto fd = [](const QStringList &entries) {
        return [=](Project &p) {
            p.makeFd();
            p.mapping(0x1600, entries);
        };
    };
    const QStringList words(16, "0x00070020");
    addRows({
        {"512", fd(words), {}},
        {"513", fd(words.mid(1) + QStringList{"0x00050021"}), {tooLong}},
        {"520", fd(words + QStringList{"0x00050008"}), {tooLong}},
        {"72", fd(QStringList(9, "0x20000108")), {}},
        {"252 entries of 255 bits", fd(QStringList(252, "0x000500FF")), {tooLong}},
    });
}

void TestPdoMappingRules::theNumberOfEntriesIsThatOfTheTable_data()
{
    const QString invalid = "Object 0x1600:  Invalid number of mapping entries."_error;
    const QStringList two{"0x20000108", "0x20000208"};
    addRows({
        {"one more", mapped(0x1600, two, "rw", "3"), {invalid}},
        {"64", mapped(0x1600, two, "rw", "64"), {invalid}},
        {"65", mapped(0x1600, two, "rw", "65"), {}},
        {"as many", mapped(0x1600, two, "rw", "2"), {}},
        {"one fewer", mapped(0x1600, two, "rw", "1"), {}},
        {"a gap counts by its entries, not by its highest",
         [=](Project &p) {
             p.mapping(0x1600, two, "rw", "3");
             p.put(0x1600, 4, p.get(0x1600, 2));
             p.removeSub(0x1600, 2);
         },
         {invalid}},
    });
}

// CiA 301 has 254 (SAM) and 255 (DAM) for multiplexed PDOs; all numbers from 65 on mean no table here.
void TestPdoMappingRules::aStaticTableWith65EntriesIsNoTable()
{
    disableCorrections();
    Project project;
    project.mapping(0x1600, {}, "const", "65");
    project.mapping(0x1A00, {"0x20010010"}, "const", "65");
    compare(Checker().checkCANopen(project), {});
    project.value(0x1600, 0, "64");
    project.value(0x1A00, 0, "64");
    compare(Checker().checkCANopen(project),
            {"Object 0x1600 of line 0: The PDO mapping table does not contain any mapped object."_error,
             "Object 0x1600:  Invalid number of mapping entries."_error,
             "Object 0x1a00:  Invalid number of mapping entries."_error});
}

QTEST_GUILESS_MAIN(TestPdoMappingRules)
#include "tst_pdomappingrules.moc"
