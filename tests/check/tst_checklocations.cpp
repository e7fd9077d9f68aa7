#include "check/CheckTest.h"

#include <QRegularExpression>

using namespace CheckTest;
using namespace CheckTest::Texts;

/** Each finding knows what it is about, so that a click on it can open that. */
class TestCheckLocations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void objectsAndSubIndicesAreKnown_data();
    void objectsAndSubIndicesAreKnown();
    void groupsAndSignalsAreKnown_data();
    void groupsAndSignalsAreKnown();
    void messagesAndTheirSignalsAreKnown_data();
    void messagesAndTheirSignalsAreKnown();
    void settingsAreKnown_data();
    void settingsAreKnown();
    void everyFindingAboutAnObjectLeadsThere();

private:
    static void addPlaces(const QList<QPair<const char *, QPair<Change, ProjectLocation>>> &rows);
    static void comparePlace(const Outcome &outcome, const ProjectLocation &expected);
};

namespace {

constexpr quint8 Receive = ObjectDataBase::Receive;
constexpr quint8 Transmit = ObjectDataBase::Transmit;
using Kind = ProjectLocation::Kind;

/** A place as a reader sees it; `shape` leaves out what a coarser place does not tell. */
QString text(const ProjectLocation &place, const ProjectLocation &shape)
{
    QStringList parts{QString::number(place.line)};
    switch (shape.kind) {
    case Kind::None:
    case Kind::Line:
        break;
    case Kind::Setting:
        return place.setting;
    case Kind::SubIndex:
        parts.append(QString::number(place.subIndex, 16));
        [[fallthrough]];
    case Kind::Object:
        parts.append(QString::number(place.index, 16));
        break;
    case Kind::Spn:
    case Kind::DataElement:
        parts.append(QString::number(place.element));
        [[fallthrough]];
    case Kind::Pgn:
    case Kind::CanId:
        parts.append(QString::number(place.number));
        parts.append(QString::number(place.direction));
    }
    return parts.join(u' ');
}

bool isAtLeast(Kind found, Kind wanted)
{
    const QList<QPair<Kind, Kind>> finer = {
        {Kind::Object, Kind::SubIndex}, {Kind::Pgn, Kind::Spn}, {Kind::CanId, Kind::DataElement}};
    return found == wanted || finer.contains({wanted, found});
}

} // namespace

void TestCheckLocations::addPlaces(const QList<QPair<const char *, QPair<Change, ProjectLocation>>> &rows)
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<ProjectLocation>("place");
    for (const auto &[name, row] : rows)
        QTest::newRow(name) << row.first << row.second;
}

void TestCheckLocations::comparePlace(const Outcome &outcome, const ProjectLocation &expected)
{
    QVERIFY2(outcome.messages.size() == 1, qPrintable(outcome.messages.join(u'\n')));
    const ProjectLocation place = outcome.locations.first();
    QVERIFY2(isAtLeast(place.kind, expected.kind), qPrintable(QString::number(int(place.kind))));
    QCOMPARE(text(place, expected), text(expected, expected));
}

void TestCheckLocations::objectsAndSubIndicesAreKnown_data()
{
    using Place = ProjectLocation;
    addPlaces({
        {"object", {[](Project &p) { p.rename(0x2001, ""); }, Place::ofObject(0, 0x2001)}},
        {"sub-index",
         {[](Project &p) { p.edit(0x2000, 2, [](Sub &s) { s.name.clear(); }); },
          Place::ofSubIndex(0, 0x2000, 2)}},
        {"value", {[](Project &p) { p.value(0x2000, 1, "?"); }, Place::ofSubIndex(0, 0x2000, 1)}},
        {"correction", {[](Project &p) { p.value(0x2000, 0, "9"); }, Place::ofObject(0, 0x2000)}},
        {"gap", {[](Project &p) { p.array(0x1016, {}); }, Place::ofObject(0, 0x1016)}},
        {"identity", {[](Project &p) { p.value(0x1018, 2, ""); }, Place::ofSubIndex(0, 0x1018, 2)}},
        {"mapping", {[](Project &p) { p.mapping(0x1600, {"0x2FFF0008"}); }, Place::ofObject(0, 0x1600)}},
        {"disabled PDO",
         {[](Project &p) {
              p.pdo(0x1801, "$NODEID+0x280", {"0x20010010"}, "rw");
              p.value(0x1A01, 0, "0");
          },
          Place::ofObject(0, 0x1801)}},
        {"COB-ID",
         {[](Project &p) { p.pdo(0x1404, "$NODEID+0x200", {"0x20000108"}); }, Place::ofObject(0, 0x1404)}},
        {"hint", {[](Project &p) { p.writeDefault(0x1400, 2, Never); }, Place::ofSubIndex(0, 0x1400, 2)}},
        {"event timer",
         {[](Project &p) {
              p.value(0x1800, 3, "100");
              p.value(0x1800, 5, "1");
          },
          Place::ofObject(0, 0x1800)}},
        {"SRDO", {[](Project &p) { p.array(0x1301, {"1"}); }, Place::ofObject(0, 0x1301)}},
        {"variable name",
         {[](Project &p) {
              p.implementation(0x2000, 2, CANopen::ApplicationVariable);
              p.varName(0x2000, 2, "a");
              p.varName(0x2001, 0, "a");
          },
          Place::ofSubIndex(0, 0x2001, 0)}},
        {"second line",
         {[](Project &p) {
              p.addLine(1, CANopenLine);
              p.rename(0x2001, "");
          },
          Place::ofObject(1, 0x2001)}},
    });
}

void TestCheckLocations::objectsAndSubIndicesAreKnown()
{
    QFETCH(Change, change);
    QFETCH(ProjectLocation, place);
    Project project;
    change(project);
    comparePlace(Checker().checkCANopen(project), place);
}

void TestCheckLocations::groupsAndSignalsAreKnown_data()
{
    using Place = ProjectLocation;
    addPlaces({
        {"group without signals",
         {[](Project &p) { p.pgn(65000, Transmit); }, Place::ofPgn(0, 65000, Transmit)}},
        {"group of the stack",
         {[](Project &p) {
              p.pgn(60928, Receive);
              p.spn(60928, Receive, 1, CAN::Unsigned8, 8, 0);
          },
          Place::ofPgn(0, 60928, Receive)}},
        {"signal",
         {[](Project &p) { p.editSpn(61444, Receive, 899, [](Spn &spn) { spn.name.clear(); }); },
          Place::ofSpn(0, 61444, Receive, 899)}},
        {"signal that overlaps",
         {[](Project &p) { p.editSpn(61444, Receive, 899, [](Spn &spn) { spn.bitposition = 0; }); },
          Place::ofSpn(0, 61444, Receive, 899)}},
        {"variable name",
         {[](Project &p) {
              const QString name = "v61444_190_119";
              p.editSpn(65226, Transmit, 1213, [=](Spn &spn) { spn.varname = name; });
          },
          Place::ofSpn(0, 65226, Transmit, 1213)}},
        {"second line",
         {[](Project &p) {
              p.addLine(1, J1939Line);
              p.pgn(65000, Receive);
          },
          Place::ofPgn(1, 65000, Receive)}},
        {"setting", {[](Project &p) { p.setJ1939("function", ""); }, Place::ofSetting("function")}},
    });
}

void TestCheckLocations::groupsAndSignalsAreKnown()
{
    QFETCH(Change, change);
    QFETCH(ProjectLocation, place);
    Project project(J1939Line);
    change(project);
    comparePlace(Checker().checkJ1939(project), place);
}

void TestCheckLocations::messagesAndTheirSignalsAreKnown_data()
{
    using Place = ProjectLocation;
    const auto message = [](quint32 id, quint8 direction) {
        return [=](Project &p) { p.canId(id, direction); };
    };
    addPlaces({
        {"identifier", {message(0x800, Transmit), Place::ofCanId(0, 0x800, Transmit)}},
        {"payload",
         {[](Project &p) { p.element(0x124, Transmit, 2, CAN::Unsigned64, 64, 32); },
          Place::ofCanId(0, 0x124, Transmit)}},
        {"signal",
         {[](Project &p) { p.editElement(0x123, Receive, 2, [](Element &e) { e.varname.clear(); }); },
          Place::ofDataElement(0, 0x123, Receive, 2)}},
        {"signal that overlaps",
         {[](Project &p) { p.editElement(0x123, Receive, 2, [](Element &e) { e.bitpos = 0; }); },
          Place::ofDataElement(0, 0x123, Receive, 2)}},
        {"second line",
         {[=](Project &p) {
              p.addLine(1, RawCanLine);
              message(0x801, Receive)(p);
          },
          Place::ofCanId(1, 0x801, Receive)}},
    });
}

void TestCheckLocations::messagesAndTheirSignalsAreKnown()
{
    QFETCH(Change, change);
    QFETCH(ProjectLocation, place);
    Project project(RawCanLine);
    change(project);
    comparePlace(Checker().checkRawCan(project), place);
}

void TestCheckLocations::settingsAreKnown_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::newRow("timer") << "co_timer_interval"
                           << "";
    QTest::newRow("block size") << "sdo_blocktransfer_block_size"
                                << "128";
    QTest::newRow("number of the stack") << "event_pdo"
                                         << "x";
    QTest::newRow("UDS number") << "uds_rdbip_canid"
                                << "x";
    QTest::newRow("receive buffer") << "receivebuffersize"
                                    << "";
    QTest::newRow("node-ID function") << "co_node_id_fct"
                                      << "node(";
}

void TestCheckLocations::settingsAreKnown()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    Project project;
    project.set(key, value);
    comparePlace(Checker().checkAll(project), ProjectLocation::ofSetting(key));
}

// The first object that a message names, but for those that tell that an object is missing.
void TestCheckLocations::everyFindingAboutAnObjectLeadsThere()
{
    Project project;
    const QList<quint16> indices = project.store->getIndexList(0);
    for (const quint16 index : indices) {
        const QList<quint8> subIndices = project.store->getSubIndexList(0, index);
        for (const quint8 subIndex : subIndices)
            project.edit(index, subIndex, [](Sub &s) {
                s.name.clear();
                s.accesstype = "none";
                s.implementation = CANopen::ApplicationVariable;
                s.varname = "a b";
                s.defaultvalue = "?";
                s.datatype = CAN::Unsigned8;
                s.defaultineds = false;
            });
        project.rename(index, "");
    }
    project.pdo(0x1402, "0x301", {"0x2FFF0101", "0x20000110", "0"});
    project.array(0x1381, {"0x2FFF0101"});
    const Outcome outcome = Checker().checkCANopen(project);
    QVERIFY(outcome.messages.size() > 100);
    static const QRegularExpression object("Object 0x([0-9a-f]{4})");
    for (int i = 0; i < outcome.messages.size(); ++i) {
        const QRegularExpressionMatch match = object.match(outcome.messages.at(i));
        const ProjectLocation place = outcome.locations.at(i);
        if (!match.hasMatch())
            continue;
        QVERIFY2(place.kind == Kind::Object || place.kind == Kind::SubIndex,
                 qPrintable(outcome.messages.at(i)));
        QVERIFY2(QString::number(place.index, 16) == match.captured(1), qPrintable(outcome.messages.at(i)));
    }
}

QTEST_GUILESS_MAIN(TestCheckLocations)
#include "tst_checklocations.moc"
