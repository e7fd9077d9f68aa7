#include "check/CheckTest.h"

using namespace CheckTest;
using namespace CheckTest::Texts;

/** Parameter groups of a J1939 line (SAE J1939-21). */
class TestParameterGroups : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void groupsOfTheStackAreNotDefined_data();
    void groupsOfTheStackAreNotDefined() { checkJ1939Row(); }
    void groupsHaveANameAndSignals_data();
    void groupsHaveANameAndSignals() { checkJ1939Row(); }
    void safetyMessagesHaveATypeThatFitsTheBus_data();
    void safetyMessagesHaveATypeThatFitsTheBus() { checkJ1939Row(); }
    void safetyMessagesHavePlainSignals_data();
    void safetyMessagesHavePlainSignals() { checkJ1939Row(); }
    void longGroupsNeedATransportProtocol_data();
    void longGroupsNeedATransportProtocol() { checkJ1939Row(); }
    void findingsOfOneGroupStandInTheirOrder();
};

namespace {

constexpr quint8 Receive = ObjectDataBase::Receive;
constexpr quint8 Transmit = ObjectDataBase::Transmit;

/** 65226 becomes a safety message that is in order, then the change is made. */
Change safe(const Change &change)
{
    return [=](Project &p) {
        p.setJ1939("safetysupport", "1");
        p.editPgn(65226, Transmit, [](Pgn &pgn) {
            pgn.issafe = true;
            pgn.safetytype = 2;
        });
        change(p);
    };
}

/** 65226 with signals of 32 bits. */
Change longGroup(int signalCount)
{
    return [=](Project &p) {
        p.removeSpn(65226, Transmit, 1213);
        for (int i = 0; i < signalCount; ++i)
            p.spn(65226, Transmit, quint32(100 + i), CAN::Unsigned32, 32, 32 * i);
    };
}

} // namespace

void TestParameterGroups::groupsOfTheStackAreNotDefined_data()
{
    const auto group = [](quint32 number, quint8 direction) {
        return [=](Project &p) {
            p.pgn(number, direction);
            p.spn(number, direction, 1, CAN::Unsigned8, 8, 0);
        };
    };
    const auto reserved = [](const char *number) {
        return QStringLiteral("<strong>Error: </strong>Special PGN %1 is handled by the J1939 stack directly "
                              "and may not be included in the signal definitions.\n")
            .arg(QLatin1StringView(number));
    };
    addRows({
        {"59904 request", group(59904, Receive), {reserved("59904/0xea00")}},
        {"60928 address claiming", group(60928, Receive), {reserved("60928/0xee00")}},
        {"60416 connection management", group(60416, Transmit), {reserved("60416/0xec00")}},
        {"60160 data transfer", group(60160, Transmit), {reserved("60160/0xeb00")}},
        {"59392 acknowledgement", group(59392, Receive), {reserved("59392/0xe800")}},
        {"3584 safety header", group(3584, Receive), {reserved("3584/0x0e00")}},
        {"65240 commanded address", group(65240, Transmit), {reserved("65240/0xfed8")}},
        {"9472 multi-PG", group(9472, Receive), {reserved("9472/0x2500")}},
        {"60928 is not exempt in transmit direction", group(60928, Transmit), {reserved("60928/0xee00")}},
        {"in both directions",
         [=](Project &p) {
             group(59904, Transmit)(p);
             group(59904, Receive)(p);
         },
         {reserved("59904/0xea00"), reserved("59904/0xea00")}},
        {"next number", group(59905, Receive), {}},
        {"17152 safety header 2", group(17152, Receive), {}},
    });
}

void TestParameterGroups::groupsHaveANameAndSignals_data()
{
    addRows({
        {"no name",
         [](Project &p) { p.editPgn(61444, Receive, [](Pgn &pgn) { pgn.name.clear(); }); },
         {"The PGN 61444 des not have a name."_strong}},
        {"no signals",
         [](Project &p) { p.pgn(65000, Receive); },
         {"PG (65000/0xfde8) does not contain any SPNs."_error}},
        {"signals in the other direction only",
         [](Project &p) {
             p.pgn(65000, Receive);
             p.pgn(65000, Transmit);
             p.spn(65000, Transmit, 1, CAN::Unsigned8, 8, 0);
         },
         {"PG (65000/0xfde8) does not contain any SPNs."_error}},
        {"large number",
         [](Project &p) { p.pgn(126992, Transmit); },
         {"PG (126992/0x1f010) does not contain any SPNs."_error}},
        {"receive before transmit, numbers ascending",
         [](Project &p) {
             p.pgn(65001, Receive);
             p.pgn(65000, Receive);
             p.pgn(61440, Transmit);
         },
         {"PG (65000/0xfde8) does not contain any SPNs."_error,
          "PG (65001/0xfde9) does not contain any SPNs."_error,
          "PG (61440/0xf000) does not contain any SPNs."_error}},
        {"neither",
         [](Project &p) { p.pgn(65000, Receive, ""); },
         {"The PGN 65000 des not have a name."_strong, "PG (65000/0xfde8) does not contain any SPNs."_error}},
    });
}

void TestParameterGroups::safetyMessagesHaveATypeThatFitsTheBus_data()
{
    const auto type = [](int safetyType, const char *fd) {
        return safe([=](Project &p) {
            p.editPgn(65226, Transmit, [=](Pgn &pgn) { pgn.safetytype = safetyType; });
            p.set("canfd_supported", fd);
        });
    };
    const QString none = "PG (65226/0xfeca) A safety type needs to be assigned to this PGN."_error;
    const QString classical = "PG (65226/0xfeca) This safety type is not supported with classical CAN."_error;
    addRows({
        {"none", type(0, "0"), {none}},
        {"none with FD", type(0, "1"), {none}},
        {"SHM1", type(1, "0"), {}},
        {"SHM2", type(2, "0"), {}},
        {"FD FuSa profile, classical CAN", type(3, "0"), {classical}},
        {"FD FuSa profile, never set", type(3, ""), {classical}},
        {"FD FuSa profile, FD", type(3, "1"), {}},
        {"no safety message",
         [](Project &p) { p.editPgn(65226, Transmit, [](Pgn &pgn) { pgn.safetytype = 3; }); },
         {}},
        {"received",
         [](Project &p) {
             p.setJ1939("safetysupport", "1");
             p.editPgn(61444, Receive, [](Pgn &pgn) { pgn.issafe = true; });
         },
         {"PG (61444/0xf004) A safety type needs to be assigned to this PGN."_error}},
        {"no support",
         safe([](Project &p) { p.setJ1939("safetysupport", "0"); }),
         {"PG (65226/0xfeca) shall be transmitted as SDM but SHM support is not activated."_strong}},
    });
}

void TestParameterGroups::safetyMessagesHavePlainSignals_data()
{
    const QString unsupported = "PG (65226/0xfeca) contains unsuppported data types."_error;
    const auto type = [](int dataType, int bits) {
        return safe([=](Project &p) {
            p.editSpn(65226, Transmit, 1213, [=](Spn &spn) {
                spn.datatype = dataType;
                spn.bitsize = bits;
            });
        });
    };
    const auto managed = [](Project &p) {
        p.editSpn(65226, Transmit, 1213, [](Spn &spn) { spn.implementation = CANopen::ManagedVariable; });
    };
    addRows({
        {"managed variable",
         safe(managed),
         {"PG (65226/0xfeca) transmitted as SDM may not contain managed variables."_error}},
        {"managed variable without safety", managed, {}},
        {"octet string", type(CAN::OctetString, 16), {unsupported}},
        {"text", type(CAN::VisStringNull, 16), {unsupported}},
        {"64 bits in one", type(CAN::Unsigned64, 64), {unsupported}},
        {"boolean", type(CAN::Boolean, 1), {}},
        {"2 bits", type(CAN::Unsigned2, 2), {}},
        {"3 bits", type(CAN::Unsigned3, 3), {}},
        {"4 bits", type(CAN::Unsigned4, 4), {}},
        {"8 bits", type(CAN::Unsigned8, 8), {}},
        {"16 bits", type(CAN::Unsigned16, 16), {}},
        {"32 bits", type(CAN::Unsigned32, 32), {}},
    });
}

void TestParameterGroups::longGroupsNeedATransportProtocol_data()
{
    const QString neither = "Neither BAM nor TP.CMDT supported but PGNs with length > 64 bit defined."_error;
    const auto with = [](int signalCount, const char *key, const char *value) {
        return [=](Project &p) {
            longGroup(signalCount)(p);
            p.setJ1939(key, value);
        };
    };
    const QString tooLong = "PG (65226/0xfeca) transmitted as SDM may not exceed 64 bit."_error;
    addRows({
        {"64 bits", longGroup(2), {}},
        {"96 bits", longGroup(3), {neither}},
        {"65 bits",
         [](Project &p) {
             longGroup(2)(p);
             p.spn(65226, Transmit, 200, CAN::Boolean, 1, 64);
         },
         {neither}},
        {"96 bits with BAM", with(3, "bamsupport", "1"), {}},
        {"96 bits with CMDT", with(3, "cmdtsupport", "1"), {}},
        {"safety message of 96 bits", safe(longGroup(3)), {tooLong, neither}},
        {"safety message of 96 bits with BAM", safe(with(3, "bamsupport", "1")), {tooLong}},
        {"safety message of 64 bits", safe(longGroup(2)), {}},
        {"CMDT without packets",
         [](Project &p) {
             p.removePgn(61444, Receive);
             p.setJ1939("cmdtsupport", "1");
             p.setJ1939("cmdtpackets", "0");
         },
         {"CMDT packet count should not be 0 in J1939 configuration."_error}},
        {"no CMDT, no packets", [](Project &p) { p.setJ1939("cmdtpackets", "0"); }, {}},
        {"CMDT with one packet",
         [](Project &p) {
             p.setJ1939("cmdtsupport", "1");
             p.setJ1939("cmdtpackets", "1");
         },
         {}},
    });
}

void TestParameterGroups::findingsOfOneGroupStandInTheirOrder()
{
    Project project(J1939Line);
    project.removePgn(61444, Receive);
    project.removePgn(65226, Transmit);
    project.pgn(65240, Receive, "");
    project.editPgn(65240, Receive, [](Pgn &pgn) { pgn.issafe = true; });
    project.spn(65240, Receive, 1, CAN::OctetString, 64, 8);
    project.spn(65240, Receive, 2, CAN::Unsigned8, 8, 0);
    project.spn(65240, Receive, 3, CAN::Unsigned8, 8, 4);
    project.editSpn(65240, Receive, 2, [](Spn &spn) {
        spn.varname.clear();
        spn.name.clear();
    });
    project.editSpn(65240, Receive, 3, [](Spn &spn) { spn.implementation = CANopen::ManagedVariable; });
    compare(Checker().checkJ1939(project),
            {"Special PGN 65240/0xfed8 is handled by the J1939 stack directly and may not be included in the "
             "signal definitions.\n"_error,
             "The PGN 65240 des not have a name."_strong,
             "PG (65240/0xfed8) A safety type needs to be assigned to this PGN."_error,
             "PG (65240/0xfed8) transmitted as SDM may not contain managed variables."_error,
             "PG (65240/0xfed8) contains unsuppported data types."_error,
             "PG (65240/0xfed8) shall be transmitted as SDM but SHM support is not activated."_strong,
             "PG (65240/0xfed8) transmitted as SDM may not exceed 64 bit."_error,
             "Neither BAM nor TP.CMDT supported but PGNs with length > 64 bit defined."_error,
             "The SPN 2 in PGN 65240 needs a variable name."_error,
             "The SPN 2 in PGN 65240 needs a name."_strong,
             "The SPN 2 in PGN 65240: position not in ascending order."_error,
             "SPN 3 in PGN 65240 overlaps in bit position with another SPN in the same PGN."_strong});
}

QTEST_GUILESS_MAIN(TestParameterGroups)
#include "tst_parametergroups.moc"
