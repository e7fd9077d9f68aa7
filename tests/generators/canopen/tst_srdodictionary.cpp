#include "SrdoDevice.h"
#include "support/CCompiler.h"

#include <QRandomGenerator>
#include <QRegularExpression>

#include <functional>

using namespace Qt::StringLiterals;

using Build = std::function<void(SrdoDesk &)>;
Q_DECLARE_METATYPE(Build)

namespace {

QString stackFile(const QString &name)
{
    return QStringLiteral(NODESMITH_TEST_GOLDEN "/../stack/") + name;
}

/** Says of variables of all types who holds them: the dictionary's tables or the SRDO source. */
constexpr auto program = R"(#include "od_runtime.h"
#include <co_srdo.h>
#include <stdio.h>
#ifdef CAN_MULTI_LINE
#define FIRST 0u,
#define SECOND 1u,
#define HAS_SECOND 1
#else
#define FIRST
#define SECOND
#define HAS_SECOND 0
#endif

RET_T coCanOpenStackInit(CO_EVENT_STORE_T pLoadFunction);

static void tell(UNSIGNED8 line, UNSIGNED16 index, const void *variable)
{
    OD_PLACE_T place;
    if (odFind(line, index, 0u, &place) == CO_FALSE)
        printf("%u %x missing\n", line, index);
    else
        printf("%u %x %s %d %d\n", line, index, place.row->specifier == CO_DSPEC_SRDO ? "srdo" : "dictionary",
               odVariable(&place) != NULL, variable != NULL);
}

int main(void)
{
    if (coCanOpenStackInit(NULL) != RET_OK)
        return 1;
    tell(0u, 0x2000u, coGenSrdoGetVariable(FIRST 0x2000u, 0u));
    tell(0u, 0x2006u, coGenSrdoGetVariable(FIRST 0x2006u, 0u));
    tell(0u, 0x2030u, coGenSrdoGetVariable(FIRST 0x2030u, 0u));
    if (HAS_SECOND)
        tell(1u, 0x2005u, coGenSrdoGetVariable(SECOND 0x2005u, 0u));
    return 0;
}
)";

/** The variables that a file does not define. */
QByteArray declarationsBeside(const QString &text)
{
    QString header;
    for (const SrdoDevice::Variable &variable : SrdoDevice::variables) {
        const QString name = QString::fromLatin1(variable.name);
        const bool isDefined = text.contains(QRegularExpression(u"\\nstatic \\w+ %1; /"_s.arg(name)));
        if (!isDefined)
            header += u"extern %1 %2;\n"_s.arg(QLatin1StringView(variable.cType), name);
    }
    return header.toUtf8();
}

/** Entries that hit, miss and nonsense, from a seed. */
class RandomSrdos
{
public:
    explicit RandomSrdos(quint32 seed) : m_random(seed) { }

    void build(SrdoDesk &desk)
    {
        if (m_random.bounded(2) == 1)
            desk.makeStatic();
        const int lines = m_random.bounded(1, 4);
        for (quint8 line = 0; line < lines; ++line) {
            desk.addLine(line);
            desk.set(u"line%1type"_s.arg(line), u"1"_s);
            for (const SrdoDevice::Variable &variable : SrdoDevice::variables)
                addVariable(desk, variable, line);
            for (int number = 1; number <= 64; number += m_random.bounded(1, 12))
                desk.srdo(number, entries(), line, {.cobId1 = choose(cobIds), .cobId2 = choose(cobIds)});
        }
    }

private:
    void addVariable(SrdoDesk &desk, const SrdoDevice::Variable &variable, quint8 line)
    {
        desk.variable(
            variable.index,
            {.type = variable.type,
             .implementation = m_random.bounded(6) == 0 ? m_random.bounded(4) : 2,
             .variable = m_random.bounded(6) == 0 ? choose(names) : QString::fromLatin1(variable.name),
             .shared = m_random.bounded(4) == 0},
            line);
    }
    QStringList entries()
    {
        QStringList result;
        for (int i = m_random.bounded(9); i > 0; --i) {
            const auto &variable =
                SrdoDevice::variables[m_random.bounded(int(std::size(SrdoDevice::variables)))];
            const quint32 entry = quint32(variable.index) << 16 | widthOf(variable);
            result.append(m_random.bounded(8) == 0 ? choose(nonsense) : u"0x%1"_s.arg(entry, 0, 16));
            if (m_random.bounded(2) == 0)
                result.append(result.last());
        }
        return result;
    }
    quint32 widthOf(const SrdoDevice::Variable &variable)
    {
        const QString digits =
            QString::fromLatin1(variable.cType).remove(u"UNSIGNED"_s).remove(u"INTEGER"_s).remove(u"REAL"_s);
        return m_random.bounded(10) == 0 ? m_random.bounded(256u) : digits.toUInt();
    }
    QString choose(const char *list)
    {
        const QStringList words = QString::fromUtf8(list).split(u'|');
        return words.at(m_random.bounded(int(words.size())));
    }

    static constexpr auto names = "|a b|tmp|int|x;|2x|\"|*/|retVal|srdo1";
    static constexpr auto nonsense =
        "|x|0xffffffff|0x00050008|0x20000008|99999999999|-1|0x13810008|0x20000108";
    static constexpr auto cobIds = "|0x101|$NODEID|0xff + 2 * $NODEID|$NODEID + x|4294967296|x * $NODEID";

    QRandomGenerator m_random;
};

} // namespace

/** The SRDO source beside the object dictionary, and mappings that nobody would write. */
class TestSrdoDictionary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void everyVariableHasOneHolder_data();
    void everyVariableHasOneHolder();
    void aVariableThatTheDictionaryNamesIsTheApplications_data();
    void aVariableThatTheDictionaryNamesIsTheApplications();
    void anyMappingCompiles_data();
    void anyMappingCompiles();
};

void TestSrdoDictionary::everyVariableHasOneHolder_data()
{
    QTest::addColumn<bool>("v4");
    QTest::addColumn<int>("lines");
    QTest::addColumn<bool>("isStatic");
    for (const bool v4 : {true, false})
        for (const int lines : {1, 2})
            for (const bool isStatic : {true, false})
                QTest::addRow("%s, %d line(s), %s", v4 ? "V4" : "older", lines,
                              isStatic ? "static" : "of the application")
                    << v4 << lines << isStatic;
}

void TestSrdoDictionary::everyVariableHasOneHolder()
{
    QFETCH(bool, v4);
    QFETCH(int, lines);
    QFETCH(bool, isStatic);
    SrdoDesk desk;
    desk.set(u"applicationheader"_s, u"application.h"_s);
    if (isStatic)
        desk.makeStatic();
    for (quint8 line = 0; line < lines; ++line) {
        SrdoDevice::addMovable(desk, line);
        desk.mapped(0x2030, CAN::Unsigned8, u"alone"_s, line); // in no SRDO
        desk.set(u"line%1type"_s.arg(line), u"1"_s);
    }
    desk.generate(v4);
    desk.srdoFile(v4);
    desk.writeDefines(v4);
    desk.write(u"application.h"_s, SrdoDevice::applicationHeader(isStatic) + "VARIABLE(UNSIGNED8 alone)\n");
    desk.write(
        u"application.c"_s,
        "#include <gen_define.h>\n#include <co_canopen.h>\n#define VARIABLE(declaration) declaration;\n"
        "#include \"application.h\"\n");
    desk.write(u"gen_indication.h"_s, "/* without indications */\n");
    QByteArray expected =
        isStatic ? "0 2000 srdo 0 1\n0 2006 srdo 0 1\n" : "0 2000 dictionary 1 0\n0 2006 dictionary 1 0\n";
    expected += "0 2030 dictionary 1 0";
    if (lines == 2)
        expected += isStatic ? "\n1 2005 srdo 0 1" : "\n1 2005 dictionary 1 0";
    const QStringList compilers = CCompiler::programs();
    for (const QString &compiler : compilers) {
        const CCompiler c(compiler, desk.folder.path());
        QVERIFY(c.write(u"main.c"_s, program));
        QCOMPARE(c.build({u"gen_objdict.c"_s, u"gen_srdo.c"_s, u"application.c"_s, u"main.c"_s,
                          stackFile(u"od_runtime.c"_s), stackFile(u"od_services.c"_s)}),
                 QString());
        QCOMPARE(c.run().join('\n'), expected);
    }
}

void TestSrdoDictionary::aVariableThatTheDictionaryNamesIsTheApplications_data()
{
    QTest::addColumn<Build>("build");
    QTest::addColumn<bool>("isNamed");
    const auto row = [](const char *name, bool isNamed, const Build &build) {
        QTest::newRow(name) << build << isNamed;
    };
    row("by nobody", false, [](SrdoDesk &) {});
    row("for a transmit PDO", true, [](SrdoDesk &desk) { desk.pdo(0x1800, {u"0x20000008"_s}); });
    row("for a receive PDO", true, [](SrdoDesk &desk) { desk.pdo(0x1400, {u"0x20000008"_s}); });
    row("for another object", true, [](SrdoDesk &desk) { desk.mapped(0x2001, CAN::Unsigned8, u"state"_s); });
    row("for a PDO with another mapping at another time", false,
        [](SrdoDesk &desk) { desk.pdo(0x1800, {u"0x20000008"_s}, u"rw"_s); });
}

// A static of one file is out of sight of the other.
void TestSrdoDictionary::aVariableThatTheDictionaryNamesIsTheApplications()
{
    QFETCH(Build, build);
    QFETCH(bool, isNamed);
    SrdoDesk desk;
    desk.set(u"applicationheader"_s, u"application.h"_s);
    desk.makeStatic();
    desk.mapped(0x2000, CAN::Unsigned8, u"state"_s);
    desk.srdo(1, {u"0x20000008"_s});
    build(desk);
    QCOMPARE(desk.generate().contains(u"&(state)"_s), isNamed);
    QCOMPARE(desk.srdoFile().contains(u"static UNSIGNED8 state;"_s), !isNamed);
    desk.writeDefines();
    desk.write(u"application.h"_s, isNamed ? "extern UNSIGNED8 state;\n" : "");
    desk.write(u"gen_indication.h"_s, "/* without indications */\n");
    const QByteArray comparison =
        isNamed ? "coGenSrdoGetVariable(0x2000u, 0u) == &state" : "coGenSrdoGetVariable(0x2000u, 0u) != NULL";
    const QStringList compilers = CCompiler::programs();
    for (const QString &compiler : compilers) {
        const CCompiler c(compiler, desk.folder.path());
        QVERIFY(c.write(u"main.c"_s,
                        "#include <gen_define.h>\n#include <co_srdo.h>\n#include <stdio.h>\n"
                            + QByteArray(isNamed ? "UNSIGNED8 state;\n" : "")
                            + "int main(void)\n{\n    printf(\"%d\\n\", " + comparison
                            + ");\n    return 0;\n}\n"));
        QCOMPARE(c.build({u"gen_objdict.c"_s, u"gen_srdo.c"_s, u"main.c"_s, stackFile(u"od_runtime.c"_s),
                          stackFile(u"od_services.c"_s)}),
                 QString());
        QCOMPARE(c.run().join('\n'), QByteArray("1"));
    }
}

void TestSrdoDictionary::anyMappingCompiles_data()
{
    QTest::addColumn<quint32>("seed");
    constexpr quint32 projects = 12;
    for (quint32 seed = 1; seed <= projects; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void TestSrdoDictionary::anyMappingCompiles()
{
    QFETCH(quint32, seed);
    SrdoDesk desk;
    desk.set(u"applicationheader"_s, u"application.h"_s);
    RandomSrdos(seed).build(desk);
    const bool v4 = seed % 2 == 0;
    const QString text = desk.srdoFile(v4);
    QCOMPARE(desk.error, QString());
    desk.writeDefines(v4);
    desk.write(u"application.h"_s, declarationsBeside(text));
    const QStringList compilers = CCompiler::programs();
    for (const QString &compiler : compilers)
        QCOMPARE(CCompiler(compiler, desk.folder.path()).check({u"gen_srdo.c"_s}), QString());
}

QTEST_GUILESS_MAIN(TestSrdoDictionary)
#include "tst_srdodictionary.moc"
