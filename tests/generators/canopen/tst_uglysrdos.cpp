#include "check/CheckProject.h"
#include "generators/RunDesk.h"
#include "generators/canopen/CanopenGenerators.h"
#include "support/CCompiler.h"

#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

using CheckTest::Project;
using CheckTest::Sub;
using Build = std::function<void(Project &)>;
Q_DECLARE_METATYPE(Build)

namespace {

constexpr quint16 firstVariable = 0x2100;

/** Variables of the application, one behind the other from 0x2100. */
struct Variable
{
    int type;
    const char *name;
    const char *cType; ///< null where the header of the application has something of its own
};

constexpr Variable variables[] = {
    {CAN::Unsigned8, "level", "UNSIGNED8"},    {CAN::Unsigned8, "levelInverted", "UNSIGNED8"},
    {CAN::Unsigned16, "turns", "UNSIGNED16"},  {CAN::Unsigned32, "counter", "UNSIGNED32"},
    {CAN::Integer8, "offset", "INTEGER8"},     {CAN::Integer16, "angle", "INTEGER16"},
    {CAN::Integer32, "position", "INTEGER32"}, {CAN::Real32, "force", "REAL32"},
    {CAN::Unsigned24, "hours", "UNSIGNED24"},  {CAN::Unsigned40, "ticks", "UNSIGNED40"},
    {CAN::Unsigned48, "moment", "UNSIGNED48"}, {CAN::Unsigned64, "serial", "UNSIGNED64"},
    {CAN::Integer24, "slope", "INTEGER24"},    {CAN::Boolean, "stopped", "UNSIGNED8"},
    {CAN::Unsigned5, "mode", "UNSIGNED8"},     {CAN::Unsigned16, "PLACE(placed)", nullptr},
    {CAN::Unsigned64, "WIDE(wide)", nullptr},  {CAN::Integer16, "axis.speed", nullptr},
    {CAN::Real32, "forces[2]", nullptr},
};

constexpr auto applicationTypes = R"(#define PLACE(x) (&(x))
#define WIDE(x) (x)
typedef struct { INTEGER16 speed; } AXIS_T;
extern AXIS_T axis;
extern REAL32 forces[3];
extern UNSIGNED16 placed;
extern UNSIGNED64 wide;
)";

QString entry(quint16 index, int bits, int subIndex = 0)
{
    return u"0x%1"_s.arg(quint32(index) << 16 | quint32(subIndex) << 8 | quint32(bits), 8, 16, '0'_L1);
}

quint16 indexOf(int variable)
{
    return quint16(firstVariable + variable);
}

void put(const Project &project, quint16 index, quint8 number, int type, const QString &value)
{
    project.put(index, number, CheckTest::sub(u"Parameter"_s, type, u"rw"_s, value));
}

void addCommunication(const Project &project, int number, const QString &cobId1, const QString &cobId2)
{
    const auto index = quint16(0x1300 + number);
    project.object(index, CANopen::Record);
    project.put(index, 0, CheckTest::countSub(6));
    put(project, index, 1, CAN::Unsigned8, u"1"_s);
    put(project, index, 2, CAN::Unsigned16, u"25"_s);
    put(project, index, 3, CAN::Unsigned8, u"20"_s);
    put(project, index, 4, CAN::Unsigned8, u"254"_s);
    put(project, index, 5, CAN::Unsigned32, cobId1);
    put(project, index, 6, CAN::Unsigned32, cobId2);
}

void addMapping(const Project &project, int number, const QStringList &entries)
{
    const auto index = quint16(0x1380 + number);
    project.object(index, CANopen::Record);
    project.put(index, 0, CheckTest::countSub(int(entries.size())));
    for (int i = 0; i < entries.size(); ++i)
        put(project, index, quint8(i + 1), CAN::Unsigned32, entries.at(i));
}

void addSrdo(const Project &project, int number, const QStringList &entries,
             const QString &cobId1 = u"0x101"_s, const QString &cobId2 = u"0x102"_s)
{
    addCommunication(project, number, cobId1, cobId2);
    addMapping(project, number, entries);
}

void addVariable(const Project &project, quint16 index, int type, const QString &name, bool isShared = false)
{
    Sub data = CheckTest::sub(u"Safe value"_s, type, u"rw"_s, u"0"_s);
    data.implementation = CANopen::ApplicationVariable;
    data.varname = name;
    data.sharedlines = isShared;
    project.variable(index, data);
}

void addVariables(const Project &project, bool areShared = false)
{
    for (int i = 0; i < int(std::size(variables)); ++i)
        addVariable(project, indexOf(i), variables[i].type, QString::fromLatin1(variables[i].name),
                    areShared);
}

/** A line of the kind that has its variables, too. */
void addLine(Project &project, quint8 line)
{
    project.addLine(line, CheckTest::CANopenLine);
    project.varName(0x2001, 0, u"speed1"_s);
    addVariables(project);
}

QStringList oneOfEach()
{
    constexpr int bits[] = {8, 8, 16, 32, 8, 16, 32, 32, 24, 40, 48, 64, 24, 8, 8, 16, 64, 16, 32};
    static_assert(std::size(bits) == std::size(variables));
    QStringList entries;
    for (int i = 0; i < int(std::size(bits)); ++i)
        entries.append(entry(indexOf(i), bits[i]));
    return entries;
}

/** Several small SRDOs over all variables. */
void addGoodSrdos(const Project &project)
{
    const QStringList entries = oneOfEach();
    for (int i = 0; i < entries.size(); ++i)
        addSrdo(project, i + 1, {entries.at(i), entries.at(i)});
}

/** A run of the real generators, and what the compilers say to their sources. */
class SrdoUglyDesk : public RunDesk
{
public:
    explicit SrdoUglyDesk(const Project &project) : RunDesk(project.store)
    {
        GeneratorFactories factories;
        addCanopenGenerators(factories);
        handler.setFactories(factories);
    }

    QString messages() const
    {
        write(u"application.h"_s, applicationHeader());
        QString all = output.all.filter(u"ERROR - "_s).join(u'\n');
        const QStringList compilers = CCompiler::programs();
        for (const QString &compiler : compilers)
            all += CCompiler(compiler, folder.path()).check({u"gen_objdict.c"_s, u"gen_srdo.c"_s});
        return all;
    }

private:
    /** The application defines what the SRDO source does not. */
    QByteArray applicationHeader() const
    {
        const QByteArray source = read(u"gen_srdo.c"_s);
        QByteArray header = applicationTypes;
        const auto declare = [&](const char *cType, const char *name) {
            const QByteArray variable = QByteArray(cType).append(' ').append(name).append(';');
            if (!source.contains(QByteArray("static ").append(variable)))
                header.append("extern ").append(variable).append('\n');
        };
        declare("UNSIGNED16", "speed");
        declare("UNSIGNED16", "speed1");
        for (const Variable &variable : variables)
            if (variable.cType != nullptr)
                declare(variable.cType, variable.name);
        return header;
    }
};

} // namespace

/** Safety relevant data objects that nobody means to make, through a generation run and the compilers. */
class TestUglySrdos : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { StoreTest::prepareApplication(); }
    void everySrdoCompiles_data();
    void everySrdoCompiles();

private:
    static void addMappings();
    static void addLines();
    static void addNumbers();
    static void add(const char *name, const Build &build) { QTest::newRow(name) << build; }
};

void TestUglySrdos::everySrdoCompiles_data()
{
    QTest::addColumn<Build>("build");
    add("good ones", [](Project &p) { addGoodSrdos(p); });
    add("64 of them", [](Project &p) {
        for (int number = 1; number <= 64; ++number)
            addSrdo(p, number, {entry(indexOf(number % 5), 8), entry(indexOf(number % 5), 8)});
    });
    add("gaps between them", [](Project &p) {
        for (const int number : {1, 7, 48, 49, 63, 64})
            addSrdo(p, number, {entry(indexOf(2), 16)});
    });
    add("one behind the last", [](Project &p) { addSrdo(p, 0x50, {entry(indexOf(0), 8)}); });
    add("one behind the last beside a mapping", [](Project &p) {
        addCommunication(p, 0x50, u"0"_s, u"0"_s);
        addMapping(p, 1, {entry(indexOf(0), 8)});
    });
    add("communication without mapping", [](Project &p) { addCommunication(p, 1, u"1"_s, u"2"_s); });
    add("an object without sub-indices", [](Project &p) {
        p.object(0x1301, CANopen::Record);
        p.object(0x1381, CANopen::Record);
    });
    addMappings();
    addLines();
    addNumbers();
}

void TestUglySrdos::addMappings()
{
    add("empty mappings", [](Project &p) {
        addSrdo(p, 1, {});
        addSrdo(p, 2, {QString(), QString()});
        addSrdo(p, 3, {u"0"_s});
    });
    add("mapped to itself", [](Project &p) {
        addSrdo(p, 1, {entry(0x1381, 32, 1), entry(0x1301, 8, 1), entry(0x1381, 8)});
    });
    add("the whole communication area", [](Project &p) {
        addSrdo(p, 1, {entry(0x1000, 32), entry(0x1018, 32, 1), entry(0x1301, 32, 5), entry(0x13FE, 8)});
        addSrdo(p, 2, {entry(0x1A00, 32, 1), entry(0x1800, 32, 1)});
    });
    add("all types in one", [](Project &p) { addSrdo(p, 1, oneOfEach()); });
    add("254 entries", [](Project &p) { addSrdo(p, 1, QStringList(254, entry(indexOf(3), 32))); });
    add("254 entries of 255 bits",
        [](Project &p) { addSrdo(p, 1, QStringList(254, entry(indexOf(3), 255))); });
    add("more entries than there are", [](Project &p) {
        addSrdo(p, 1, {entry(indexOf(0), 8)});
        p.value(0x1381, 0, u"255"_s);
    });
    add("gaps between the entries", [](Project &p) {
        addSrdo(p, 1, QStringList(8, entry(indexOf(0), 8)));
        for (const quint8 number : {1, 3, 7})
            p.removeSub(0x1381, number);
    });
    add("an entry far behind", [](Project &p) {
        addSrdo(p, 1, {entry(indexOf(0), 8)});
        for (const int number : {254, 255})
            put(p, 0x1381, quint8(number), CAN::Unsigned32, entry(indexOf(1), 8));
    });
    add("single bits", [](Project &p) { addSrdo(p, 1, QStringList(8, entry(indexOf(13), 1))); });
    add("texts and blocks", [](Project &p) {
        quint16 index = 0x2200;
        QStringList entries;
        for (const int type : {9, 10, 11, 15, 17, 18, 26, 124, 0, 200}) {
            Sub data = CheckTest::sub(u"Text"_s, type, u"rw"_s, u"x"_s);
            data.size = 8;
            p.variable(index, data);
            entries.append(entry(index++, 64));
        }
        for (int i = 0; i < entries.size(); ++i)
            addSrdo(p, i + 1, {entries.at(i)});
    });
    add("variables that PDOs send, too", [](Project &p) {
        addGoodSrdos(p);
        p.pdo(0x1802, u"$NODEID+0x380"_s,
              {entry(indexOf(0), 8), entry(indexOf(2), 16), entry(indexOf(7), 32)});
        p.pdo(0x1402, u"$NODEID+0x400"_s, {entry(indexOf(11), 64)});
        p.pdo(0x1803, u"$NODEID+0x480"_s, {entry(indexOf(3), 32)}, u"rw"_s);
    });
    add("one name for many objects", [](Project &p) {
        for (int i = 0; i < int(std::size(variables)); ++i)
            p.varName(indexOf(i), 0, u"level"_s);
        addGoodSrdos(p);
        for (int i = 1; i < int(std::size(variables)); ++i)
            p.type(indexOf(i), 0, CAN::Unsigned8, u"0"_s);
    });
    add("an array that is told in short", [](Project &p) {
        p.set(u"compact_array_description"_s, u"1"_s);
        p.array(0x2300, QStringList(200, u"0"_s));
        addSrdo(p, 1, {entry(0x2300, 32, 7), entry(0x2300, 32, 199)});
    });
}

void TestUglySrdos::addLines()
{
    add("forced multi-line", [](Project &p) {
        p.setMisc(u"generateML"_s, u"true"_s);
        addGoodSrdos(p);
    });
    add("several lines", [](Project &p) {
        addGoodSrdos(p);
        for (const quint8 line : {1, 2, 31}) {
            addLine(p, line);
            addGoodSrdos(p);
        }
    });
    add("a line without an SRDO", [](Project &p) {
        addGoodSrdos(p);
        addLine(p, 1);
    });
    add("a first line without an SRDO", [](Project &p) {
        addLine(p, 1);
        addGoodSrdos(p);
    });
    add("a lone line that is not the first", [](Project &p) {
        addLine(p, 3);
        addGoodSrdos(p);
        p.store->removeLine(0);
    });
    add("variables that lines share", [](Project &p) {
        addVariables(p, true);
        addGoodSrdos(p);
        addLine(p, 1);
        addVariables(p, true);
        addGoodSrdos(p);
    });
    add("variables that lines share, mapped by the second only", [](Project &p) {
        addVariables(p, true);
        addLine(p, 1);
        addVariables(p, true);
        addGoodSrdos(p);
    });
}

void TestUglySrdos::addNumbers()
{
    add("COB-IDs without end", [](Project &p) {
        const QStringList ids =
            u"4294967295|4294967296|0xffffffffffffffffffff|-1|x|0x|$NODEID|$NODEID+|$NODEID*"
            "|0xff + 99999999999 * $NODEID|99999999999 + 2 * $NODEID|1+1|*/|\"|0x101\n"_s.split(u'|');
        for (int i = 0; i < ids.size(); ++i)
            addSrdo(p, i + 1, {entry(indexOf(0), 8)}, ids.at(i), ids.at(ids.size() - 1 - i));
    });
    add("numbers that have no room", [](Project &p) {
        addSrdo(p, 1, {entry(indexOf(0), 8)});
        for (const quint8 number : {0, 1, 2, 3, 4})
            p.value(0x1301, number, u"99999"_s);
        p.value(0x1381, 0, u"70000"_s);
        p.array(0x13FF, {u"0x12345"_s});
    });
    add("texts for numbers", [](Project &p) {
        addSrdo(p, 1, {entry(indexOf(0), 8), u"x"_s, u"*/"_s, u"-1"_s});
        for (const quint8 number : {0, 1, 2, 3, 4})
            p.value(0x1301, number, u"*/ \" \\"_s);
        p.value(0x1381, 0, u"many"_s);
        p.array(0x13FF, {u"none"_s});
    });
}

void TestUglySrdos::everySrdoCompiles()
{
    QFETCH(Build, build);
    for (const QString &core : {u"V4"_s, u"V3"_s})
        for (const QString &isStatic : {u"0"_s, u"1"_s}) {
            Project project;
            project.set(u"use_core_headers"_s, core);
            project.set(u"new_init_structure"_s, core == "V4"_L1 ? u"1"_s : u"0"_s);
            project.set(u"applicationheader"_s, u"application.h"_s);
            project.set(u"static_srdo_data"_s, isStatic);
            addVariables(project);
            build(project);
            SrdoUglyDesk desk(project);
            QCOMPARE(desk.run(), RunDesk::Result::Completed);
            QVERIFY(desk.exists(u"gen_srdo.c"_s));
            const QString messages = desk.messages();
            QVERIFY2(messages.isEmpty(), qPrintable(core + u", static: "_s + isStatic + u'\n' + messages));
        }
}

QTEST_GUILESS_MAIN(TestUglySrdos)
#include "tst_uglysrdos.moc"
