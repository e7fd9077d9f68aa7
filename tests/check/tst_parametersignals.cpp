#include "check/CheckTest.h"

using namespace CheckTest;
using namespace CheckTest::Texts;

/** Signals in the parameter groups of a J1939 line (SAE J1939-71). */
class TestParameterSignals : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void signalsHaveNames_data();
    void signalsHaveNames() { checkJ1939Row(); }
    void signalsStandInTheOrderOfTheirBits_data();
    void signalsStandInTheOrderOfTheirBits() { checkJ1939Row(); }
    void signalsDoNotOverlap_data();
    void signalsDoNotOverlap() { checkJ1939Row(); }
    void variableNamesAreUsedOnce_data();
    void variableNamesAreUsedOnce() { checkJ1939Row(); }
};

namespace {

constexpr quint8 Receive = ObjectDataBase::Receive;
constexpr quint8 Transmit = ObjectDataBase::Transmit;

} // namespace

void TestParameterSignals::signalsHaveNames_data()
{
    const auto named = [](const char *name) {
        return [=](Project &p) { p.editSpn(61444, Receive, 190, [=](Spn &spn) { spn.name = name; }); };
    };
    const QString digit = "The name of SPN 190 in PGN 61444 should not start with a number."_strong;
    addRows({
        {"no variable",
         [](Project &p) { p.editSpn(61444, Receive, 190, [](Spn &spn) { spn.varname.clear(); }); },
         {"The SPN 190 in PGN 61444 needs a variable name."_error}},
        {"no variables are not the same variable",
         [](Project &p) {
             for (const quint32 number : {190, 899})
                 p.editSpn(61444, Receive, number, [](Spn &spn) { spn.varname.clear(); });
         },
         {"The SPN 190 in PGN 61444 needs a variable name."_error,
          "The SPN 899 in PGN 61444 needs a variable name."_error}},
        {"a blank is no variable",
         [](Project &p) {
             for (const quint32 number : {190, 899})
                 p.editSpn(61444, Receive, number, [](Spn &spn) { spn.varname = " "; });
         },
         {"The SPN 190 in PGN 61444 needs a variable name."_error,
          "The SPN 899 in PGN 61444 needs a variable name."_error}},
        {"managed variable",
         [](Project &p) {
             p.editSpn(61444, Receive, 190, [](Spn &spn) {
                 spn.varname.clear();
                 spn.implementation = CANopen::ManagedVariable;
             });
         },
         {}},
        {"no name", named(""), {"The SPN 190 in PGN 61444 needs a name."_strong}},
        {"digit in front", named("2nd speed"), {digit}},
        {"0 in front", named("0"), {digit}},
        {"digit behind", named("speed 2"), {}},
    });
}

void TestParameterSignals::signalsStandInTheOrderOfTheirBits_data()
{
    const auto positions = [](int first, int second) {
        return [=](Project &p) {
            p.editSpn(61444, Receive, 190, [=](Spn &spn) { spn.bitposition = first; });
            p.editSpn(61444, Receive, 899, [=](Spn &spn) { spn.bitposition = second; });
        };
    };
    addRows({
        {"descending", positions(8, 0), {"The SPN 899 in PGN 61444: position not in ascending order."_error}},
        {"with gaps", positions(8, 56), {}},
        {"not from 0", positions(40, 56), {}},
        {"descending against the one before alone",
         [=](Project &p) {
             positions(40, 0)(p);
             p.spn(61444, Receive, 1000, CAN::Unsigned8, 8, 8);
         },
         {"The SPN 899 in PGN 61444: position not in ascending order."_error}},
    });
}

void TestParameterSignals::signalsDoNotOverlap_data()
{
    const auto second = [](int position) {
        return [=](Project &p) {
            p.editSpn(61444, Receive, 899, [=](Spn &spn) { spn.bitposition = position; });
        };
    };
    const auto overlap = [](int spn) {
        return QStringLiteral("<strong>Warning: </strong>SPN %1 in PGN 61444 overlaps in bit position with "
                              "another SPN in the same PGN.")
            .arg(spn);
    };
    const auto text = [](int bits) {
        return [=](Project &p) {
            p.editSpn(61444, Receive, 190, [=](Spn &spn) {
                spn.datatype = CAN::VisStringAsteriks;
                spn.bitsize = bits;
            });
        };
    };
    addRows({
        {"last bit", second(15), {overlap(899)}},
        {"first bit", second(0), {overlap(899)}},
        {"next bit", second(16), {}},
        {"far away", second(60), {}},
        {"not with the one before",
         [=](Project &p) {
             p.editSpn(61444, Receive, 190, [](Spn &spn) {
                 spn.datatype = CAN::Unsigned32;
                 spn.bitsize = 32;
             });
             p.spn(61444, Receive, 1000, CAN::Unsigned8, 8, 24);
         },
         {overlap(899), overlap(1000)}},
        {"text that ends before the next", text(16), {}},
        {"text that reaches into the next", text(24), {overlap(899)}},
        {"same bits in another group",
         [](Project &p) { p.spn(65226, Transmit, 1000, CAN::Unsigned8, 8, 8); },
         {}},
    });
}

void TestParameterSignals::variableNamesAreUsedOnce_data()
{
    const auto used = [](int spn, int pgn, const char *name, int ownerSpn, int ownerPgn) {
        return QStringLiteral(
                   "<strong>Warning: </strong>SPN %1 in PGN %2: variable name '%3' is already used "
                   "by SPN %4 in PGN %5.")
            .arg(QString::number(spn), QString::number(pgn), QLatin1StringView(name),
                 QString::number(ownerSpn), QString::number(ownerPgn));
    };
    const auto name = [](const Project &p, quint32 pgn, quint8 direction, quint32 spn, const char *variable) {
        p.editSpn(pgn, direction, spn, [=](Spn &data) { data.varname = variable; });
    };
    addRows({
        {"in one group",
         [=](Project &p) {
             name(p, 61444, Receive, 190, "speed");
             name(p, 61444, Receive, 899, "speed");
         },
         {used(899, 61444, "speed", 190, 61444)}},
        {"in groups of both directions",
         [=](Project &p) {
             name(p, 61444, Receive, 899, "speed");
             name(p, 65226, Transmit, 1213, "speed");
         },
         {used(1213, 65226, "speed", 899, 61444)}},
        {"different by case",
         [=](Project &p) {
             name(p, 61444, Receive, 190, "speed");
             name(p, 61444, Receive, 899, "Speed");
         },
         {}},
        {"a name with placeholders",
         [=](Project &p) {
             name(p, 61444, Receive, 190, "%1%4");
             name(p, 61444, Receive, 899, "%1%4");
         },
         {used(899, 61444, "%1%4", 190, 61444)}},
    });
}

QTEST_GUILESS_MAIN(TestParameterSignals)
#include "tst_parametersignals.moc"
