#include "check/CheckTest.h"

using namespace CheckTest;
using namespace CheckTest::Texts;

/** Messages and signals of a raw CAN line. */
class TestRawCanRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void anIdentifierIsSentOrReceived_data();
    void anIdentifierIsSentOrReceived() { checkRawCanRow(); }
    void longIdentifiersHaveTheExtendedFlag_data();
    void longIdentifiersHaveTheExtendedFlag() { checkRawCanRow(); }
    void applicationSignalsHaveAVariable_data();
    void applicationSignalsHaveAVariable() { checkRawCanRow(); }
    void signalsDoNotOverlap_data();
    void signalsDoNotOverlap() { checkRawCanRow(); }
    void overlapsAreToldByTheNameOfTheSignal();
    void signalsFitThePayload_data();
    void signalsFitThePayload() { checkRawCanRow(); }
    void variableNamesAreUsedOnce_data();
    void variableNamesAreUsedOnce() { checkRawCanRow(); }
    void findingsOfAMessageStandInTheirOrder();
    void canopenAndJ1939DataOfTheLineDoNotMatter();
};

namespace {

constexpr quint8 Receive = ObjectDataBase::Receive;
constexpr quint8 Transmit = ObjectDataBase::Transmit;

Change message(quint32 id, quint8 direction)
{
    return [=](Project &p) {
        p.canId(id, direction);
        p.element(id, direction, 1, CAN::Unsigned8, 8, 0);
    };
}

/** 0x124 with signals of 64 bits and one of a single bit. */
Change payload(int wideSignals, bool hasBit)
{
    return [=](Project &p) {
        p.removeElement(0x124, Transmit, 1);
        for (int i = 0; i < wideSignals; ++i)
            p.element(0x124, Transmit, quint32(1 + i), CAN::Unsigned64, 64, 64 * i);
        if (hasBit)
            p.element(0x124, Transmit, 100, CAN::Boolean, 1, 64 * wideSignals);
    };
}

} // namespace

void TestRawCanRules::anIdentifierIsSentOrReceived_data()
{
    const auto both = [](const char *id) {
        return QStringLiteral("<strong>Warning: </strong>CAN-ID 0x%1 appears in both TX and RX — this is "
                              "unusual and may be a configuration error.")
            .arg(QLatin1StringView(id));
    };
    addRows({
        {"both", message(0x123, Transmit), {both("123")}},
        {"both of two",
         [](Project &p) {
             message(0x123, Transmit)(p);
             message(0x124, Receive)(p);
         },
         {both("123"), both("124")}},
        {"others", message(0x125, Receive), {}},
        {"on another line",
         [](Project &p) {
             p.addLine(1, RawCanLine);
             message(0x125, Receive)(p);
             p.line = 0;
             message(0x125, Transmit)(p);
         },
         {}},
    });
}

void TestRawCanRules::longIdentifiersHaveTheExtendedFlag_data()
{
    const auto tooHigh = [](const char *id) {
        return QStringLiteral("<strong><font color='red'>Error: </font></strong> CAN-ID 0x%1 is higher then "
                              "0x7ff, but extended flag is not set.")
            .arg(QLatin1StringView(id));
    };
    addRows({
        {"0x800", message(0x800, Receive), {tooHigh("800")}},
        {"0x1fffffff", message(0x1FFFFFFF, Transmit), {tooHigh("1fffffff")}},
        {"bit 30 is no flag", message(0x40000123, Transmit), {tooHigh("40000123")}},
        {"0x7ff", message(0x7FF, Receive), {}},
        {"extended", message(0x80000800, Receive), {}},
        {"highest extended", message(0x9FFFFFFF, Transmit), {}},
        {"short but extended", message(0x80000001, Receive), {}},
        {"receive before transmit",
         [](Project &p) {
             message(0x800, Transmit)(p);
             message(0x900, Receive)(p);
         },
         {tooHigh("900"), tooHigh("800")}},
    });
}

void TestRawCanRules::applicationSignalsHaveAVariable_data()
{
    const auto kind = [](int implementation) {
        return [=](Project &p) {
            p.editElement(0x123, Receive, 2, [=](Element &element) {
                element.varname.clear();
                element.implementation = implementation;
            });
        };
    };
    addRows({
        {"application variable",
         kind(CANopen::ApplicationVariable),
         {" Variable name missing for signal # 2 in CAN-ID 0x123"_red}},
        {"managed variable", kind(CANopen::ManagedVariable), {}},
        {"a blank is no variable",
         [](Project &p) {
             for (const quint32 number : {1, 2})
                 p.editElement(0x123, Receive, number, [](Element &element) { element.varname = " "; });
         },
         {" Variable name missing for signal # 1 in CAN-ID 0x123"_red,
          " Variable name missing for signal # 2 in CAN-ID 0x123"_red}},
        {"no variables are not the same variable",
         [=](Project &p) {
             kind(CANopen::ApplicationVariable)(p);
             p.editElement(0x124, Transmit, 1, [](Element &element) { element.varname.clear(); });
         },
         {" Variable name missing for signal # 2 in CAN-ID 0x123"_red,
          " Variable name missing for signal # 1 in CAN-ID 0x124"_red}},
    });
}

void TestRawCanRules::signalsDoNotOverlap_data()
{
    const auto second = [](int position) {
        return [=](Project &p) {
            p.editElement(0x123, Receive, 2, [=](Element &element) { element.bitpos = position; });
        };
    };
    const QString overlap =
        " Signal '2' in CAN-ID 0x123 overlaps with another signal in the same message."_red;
    addRows({
        {"last bit", second(15), {overlap}},
        {"first bit", second(0), {overlap}},
        {"next bit", second(16), {}},
        {"far away", second(56), {}},
        {"a name with marks of rich text",
         [](Project &p) {
             p.editElement(0x123, Receive, 2, [](Element &element) {
                 element.name = "a<b & c";
                 element.bitpos = 0;
             });
         },
         {" Signal 'a&lt;b &amp; c' in CAN-ID 0x123 overlaps with another signal in the same message."_red}},
        {"before the first",
         [](Project &p) {
             p.editElement(0x123, Receive, 1, [](Element &element) { element.bitpos = 8; });
             p.editElement(0x123, Receive, 2, [](Element &element) { element.bitpos = 0; });
         },
         {}},
        {"text that ends before the next",
         [](Project &p) {
             p.editElement(0x123, Receive, 1, [](Element &e) { e.datatype = CAN::VisStringNull; });
         },
         {}},
        {"text that reaches into the next",
         [](Project &p) {
             p.editElement(0x123, Receive, 1, [](Element &e) {
                 e.datatype = CAN::VisStringNull;
                 e.bitsize = 17;
             });
         },
         {overlap}},
    });
}

void TestRawCanRules::overlapsAreToldByTheNameOfTheSignal()
{
    const Project project(RawCanLine);
    const QString overlap =
        " Signal '%1' in CAN-ID 0x123 overlaps with another signal in the same message."_red;
    project.editElement(0x123, Receive, 2, [](Element &element) {
        element.bitpos = 8;
        element.name = "Torque %1";
    });
    compare(Checker().checkRawCan(project), {QString(overlap).replace("%1", "Torque %1")});
    project.editElement(0x123, Receive, 2, [](Element &element) { element.name.clear(); });
    compare(Checker().checkRawCan(project), {overlap.arg(2)});
}

void TestRawCanRules::signalsFitThePayload_data()
{
    const auto fd = [](const Change &change) {
        return [=](Project &p) {
            p.set("canfd_supported", "1");
            change(p);
        };
    };
    const auto tooLong = [](int bits, int maximum) {
        return QStringLiteral(
                   "<strong><font color='red'>Error: </font></strong> CAN-ID 0x124: signals require "
                   "%1 bits but the maximum payload is %2 bits.")
            .arg(bits)
            .arg(maximum);
    };
    addRows({
        {"64 bits", payload(1, false), {}},
        {"65 bits", payload(1, true), {tooLong(65, 64)}},
        {"65 bits with FD", fd(payload(1, true)), {}},
        {"512 bits with FD", fd(payload(8, false)), {}},
        {"513 bits with FD", fd(payload(8, true)), {tooLong(513, 512)}},
        {"512 bits", payload(8, false), {tooLong(512, 64)}},
        {"no signals", [](Project &p) { p.canId(0x7FF, Receive); }, {}},
    });
}

void TestRawCanRules::variableNamesAreUsedOnce_data()
{
    const auto used = [](int signal, const char *id, const char *name, int owner, const char *ownerId) {
        return QStringLiteral("<strong>Warning: </strong>Signal %1 in CAN-ID 0x%2: variable name '%3' is "
                              "already used by signal %4 in CAN-ID 0x%5.")
            .arg(QString::number(signal), QLatin1StringView(id), QLatin1StringView(name),
                 QString::number(owner), QLatin1StringView(ownerId));
    };
    const auto name = [](const Project &p, quint32 id, quint8 direction, quint32 number,
                         const char *variable) {
        p.editElement(id, direction, number, [=](Element &element) { element.varname = variable; });
    };
    addRows({
        {"in one message",
         [=](Project &p) {
             name(p, 0x123, Receive, 1, "state");
             name(p, 0x123, Receive, 2, "state");
         },
         {used(2, "123", "state", 1, "123")}},
        {"in messages of both directions",
         [=](Project &p) {
             name(p, 0x123, Receive, 2, "state");
             name(p, 0x124, Transmit, 1, "state");
         },
         {used(1, "124", "state", 2, "123")}},
        {"different by case",
         [=](Project &p) {
             name(p, 0x123, Receive, 1, "state");
             name(p, 0x123, Receive, 2, "State");
         },
         {}},
        {"a name with placeholders",
         [=](Project &p) {
             name(p, 0x123, Receive, 1, "%4%1");
             name(p, 0x123, Receive, 2, "%4%1");
         },
         {used(2, "123", "%4%1", 1, "123")}},
    });
}

void TestRawCanRules::findingsOfAMessageStandInTheirOrder()
{
    Project project(RawCanLine);
    for (const quint8 direction : {Transmit, Receive}) {
        project.canId(0x800, direction);
        project.element(0x800, direction, 1, CAN::Unsigned64, 64, 0);
        project.element(0x800, direction, 2, CAN::Unsigned8, 8, 56);
        project.element(0x800, direction, 3, CAN::Unsigned8, 8, 64);
    }
    project.editElement(0x800, Receive, 1, [](Element &element) { element.varname.clear(); });
    project.editElement(0x800, Receive, 2, [](Element &element) { element.bitpos = 0; });
    project.editElement(0x800, Receive, 3, [](Element &element) { element.varname = "v291_1_119"; });
    const QString standard = " CAN-ID 0x800 is higher then 0x7ff, but extended flag is not set."_red;
    const QString overlap =
        " Signal '2' in CAN-ID 0x800 overlaps with another signal in the same message."_red;
    const QString tooLong = " CAN-ID 0x800: signals require 80 bits but the maximum payload is 64 bits."_red;
    compare(Checker().checkRawCan(project),
            {QStringLiteral("<strong>Warning: </strong>CAN-ID 0x800 appears in both TX and RX — this is "
                            "unusual and may be a configuration error."),
             standard, " Variable name missing for signal # 1 in CAN-ID 0x800"_red, overlap, tooLong,
             "Signal 3 in CAN-ID 0x800: variable name 'v291_1_119' is already used by signal 1 in CAN-ID "
             "0x123."_strong,
             standard, overlap, tooLong});
}

void TestRawCanRules::canopenAndJ1939DataOfTheLineDoNotMatter()
{
    Project project(CANopenAndRawCan);
    project.remove(0x1000);
    project.set("co_node_id", "");
    project.pgn(60928, Receive, "");
    project.setJ1939("identitynumber", "");
    compare(Checker().checkRawCan(project), {});
}

QTEST_GUILESS_MAIN(TestRawCanRules)
#include "tst_rawcanrules.moc"
