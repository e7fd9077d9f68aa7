#include "SrdoDevice.h"
#include "support/CCompiler.h"

using namespace Qt::StringLiterals;

namespace {

/** How a project is generated. */
struct Form
{
    const char *name;
    bool v4;
    bool isStatic;
    bool isForced; ///< multi-line form of a project with one line
    int lines;
};

constexpr Form forms[] = {
    {"single line", true, false, false, 1},
    {"single line, static", true, true, false, 1},
    {"older", false, false, false, 1},
    {"older, static", false, true, false, 1},
    {"forced multi-line", true, false, true, 1},
    {"forced, static", true, true, true, 1},
    {"two lines", true, false, false, 2},
    {"two lines, static", true, true, false, 2},
    {"older, two lines", false, false, false, 2},
    {"older, two lines, static", false, true, false, 2},
};

/** Around the functions of gen_srdo.c; the line is left out where the stack has one only. */
constexpr auto head = R"(#include <gen_define.h>
#include <co_srdo.h>
#include <stdio.h>
#include <string.h>
#define VARIABLE(declaration) declaration;
#include "application.h"

#ifdef CAN_MULTI_LINE
#define LINE LINE_NUMBER,
#else
#define LINE
#endif
)";

/** Moves the values of an SRDO there and back; prints the first thing that is wrong. */
constexpr auto mover = R"(
/* inverted objects, where an SRDO has them, are kept by the application */
typedef struct
{
    unsigned srdo; unsigned count; UNSIGNED16 index[4]; unsigned size[4]; UNSIGNED16 inverted[4];
} CASE_T;

static UNSIGNED8 *variable(UNSIGNED16 index)
{
    UNSIGNED8 *found = coGenSrdoGetVariable(LINE index, 0u);
    if (found != NULL)
        return found;
    switch (index) {
#define PLACE(number, name) case number: return (UNSIGNED8 *)&name;
    PLACES
    default: return NULL;
    }
}

static unsigned copyOut(const CASE_T *c, UNSIGNED8 *to)
{
    unsigned i, n = 0;
    for (i = 0; i < c->count; n += c->size[i++])
        memcpy(to + n, variable(c->index[i]), c->size[i]);
    return n;
}

static void copyIn(const CASE_T *c, const UNSIGNED8 *from)
{
    unsigned i, k, n = 0;
    for (i = 0; i < c->count; n += c->size[i++]) {
        memcpy(variable(c->index[i]), from + n, c->size[i]);
        for (k = 0; c->inverted[i] != 0 && k < c->size[i]; k++)
            variable(c->inverted[i])[k] = (UNSIGNED8)~from[n + k];
    }
}

static int hasInvertedCopies(const CASE_T *c)
{
    unsigned i, k;
    for (i = 0; i < c->count; i++)
        for (k = 0; c->inverted[i] != 0 && k < c->size[i]; k++)
            if ((variable(c->index[i])[k] ^ variable(c->inverted[i])[k]) != 0xff)
                return 0;
    return 1;
}

static const char *move(const CASE_T *c, UNSIGNED8 seed)
{
    UNSIGNED8 values[8], other[8], normal[8] = {0}, inverted[8] = {0}, now[8];
    unsigned i, n = 0;
    for (i = 0; i < 8; i++) {
        values[i] = (UNSIGNED8)(seed == 0 ? 0 : seed * (i + 3u) + i);
        other[i] = (UNSIGNED8)~values[i];
    }
    copyIn(c, values);
    if (coGenSrdoTransmitMapping(LINE (UNSIGNED16)c->srdo, normal, inverted) != RET_OK)
        return "not transmitted";
    n = copyOut(c, now);
    if (memcmp(normal, values, n) != 0)
        return "normal message";
    for (i = 0; i < n; i++)
        if ((inverted[i] ^ normal[i]) != 0xff)
            return "inverted message";
    copyIn(c, other);
    for (i = 0; i < n * 8; i++) {
        inverted[i / 8] ^= (UNSIGNED8)(1u << (i % 8));
        if (coGenSrdoReceiveMapping(LINE (UNSIGNED16)c->srdo, normal, inverted) != MAP_ERROR)
            return "a flipped bit is not seen";
        inverted[i / 8] ^= (UNSIGNED8)(1u << (i % 8));
        normal[i / 8] ^= (UNSIGNED8)(1u << (i % 8));
        if (coGenSrdoReceiveMapping(LINE (UNSIGNED16)c->srdo, normal, inverted) != MAP_ERROR)
            return "a flipped bit is not seen in the normal message";
        normal[i / 8] ^= (UNSIGNED8)(1u << (i % 8));
        copyOut(c, now);
        if (memcmp(now, other, n) != 0 || !hasInvertedCopies(c))
            return "wrong values are taken";
    }
    if (coGenSrdoReceiveMapping(LINE (UNSIGNED16)c->srdo, normal, inverted) != RET_OK)
        return "not received";
    copyOut(c, now);
    if (!hasInvertedCopies(c))
        return "received inverted copies";
    return memcmp(now, values, n) == 0 ? "ok" : "received values";
}
)";

/** Sub-indices, bytes, of the SRDOs that move; those with inverted objects name the normal ones. */
constexpr auto cases = R"(
static const CASE_T all[] = {
    { 1, 4, { 0x2000, 0x2001, 0x2002, 0x2003 }, { 1, 2, 4, 1 }, { 0 } },
    { 2, 3, { 0x2004, 0x2005, 0x200c }, { 2, 4, 1 }, { 0 } },
    { 3, 3, { 0x2006, 0x200b, 0x2000 }, { 4, 3, 1 }, { 0 } },
    { 4, 1, { 0x2007 }, { 8 }, { 0 } },
    { 5, 2, { 0x2008, 0x2009 }, { 3, 5 }, { 0 } },
    { 6, 3, { 0x200a, 0x2003, 0x2000 }, { 6, 1, 1 }, { 0 } },
    { 7, 1, { 0x2010 }, { 2 }, { 0x2011 } },
    { 8, 2, { 0x2012, 0x2014 }, { 4, 3 }, { 0x2013, 0x2015 } },
    { 9, 2, { 0x2005, 0x2006 }, { 4, 4 }, { 0 } },
};
)";

QByteArray places(bool isStatic)
{
    QString text = u"#define PLACES"_s;
    for (const SrdoDevice::Variable &variable : SrdoDevice::variables)
        if (!isStatic || !SrdoDevice::canBeStatic(variable.type))
            text += u" PLACE(0x%1, %2)"_s.arg(variable.index, 0, 16).arg(QLatin1StringView(variable.name));
    return (text + u'\n').toUtf8();
}

void build(SrdoDesk &desk, const Form &form)
{
    desk.set(u"applicationheader"_s, u"application.h"_s);
    if (form.isStatic)
        desk.makeStatic();
    if (form.isForced)
        desk.setMisc(u"generateML"_s, u"true"_s);
    for (quint8 line = 0; line < form.lines; ++line) {
        SrdoDevice::addMovable(desk, line);
        SrdoDevice::addFaulty(desk, line);
        SrdoDevice::addEmpty(desk, line);
        desk.set(u"line%1type"_s.arg(line), u"1"_s);
    }
}

/** Names of variables that no compiler takes, or that mean something else in the file. */
constexpr auto badNames =
    "|a b|a;b|2nd|a-b|int|UNSIGNED8|retVal|tmpU8|srdo1|mapTable1|PLACE(|PLACE)(|x()y|/*|*/|"
    "\"|a\nb|a\\|()|(|a[|NULL|genSrdoTimer|größe";

QByteArray mapError(bool v4)
{
    return v4 ? "#define MAP_ERROR RET_MAP_ERROR\n" : "#define MAP_ERROR RET_CO_MAP_ERROR\n";
}

} // namespace

/** What C compilers make of the file, and what it does then. */
class TestSrdoCompiled : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void valuesComeBackAndFlippedBitsDoNot_data() { addForms(); }
    void valuesComeBackAndFlippedBitsDoNot();
    void whatCannotBeMovedIsRefused_data() { addForms(); }
    void whatCannotBeMovedIsRefused();
    void dataFollowTheProjectAndTheNodeId_data() { addForms(); }
    void dataFollowTheProjectAndTheNodeId();
    void theDictionaryFindsStaticVariables();
    void negativeZeroIsNotZero();
    void variablesThatAreNoCopiesAreNotTaken();
    void namesThatAreNoneOfCStillCompile_data();
    void namesThatAreNoneOfCStillCompile();
    void partsOfVariablesAndExpressionsAreMoved_data();
    void partsOfVariablesAndExpressionsAreMoved();
    void aProjectWithoutAnSrdoCompiles_data();
    void aProjectWithoutAnSrdoCompiles();
    void sharedVariablesAreThoseOfLineZero();

private:
    static void addForms();
    /** What a program prints, the same with each compiler; messages of a compiler where it is not built. */
    static QByteArray run(SrdoDesk &desk, const QByteArray &program);
};

void TestSrdoCompiled::addForms()
{
    QTest::addColumn<int>("number");
    for (int i = 0; i < int(std::size(forms)); ++i)
        QTest::newRow(forms[i].name) << i;
}

QByteArray TestSrdoCompiled::run(SrdoDesk &desk, const QByteArray &program)
{
    QByteArrayList printed;
    const QStringList compilers = CCompiler::programs();
    for (const QString &compiler : compilers) {
        const CCompiler c(compiler, desk.folder.path());
        if (!c.write(u"main.c"_s, program))
            return "main.c cannot be written";
        const QString messages = c.build({u"gen_srdo.c"_s, u"main.c"_s});
        if (!messages.isEmpty())
            return messages.toUtf8();
        printed.append(c.run().join('\n'));
    }
    return printed.first() == printed.last() ? printed.first() : printed.join("\nor\n");
}

void TestSrdoCompiled::valuesComeBackAndFlippedBitsDoNot()
{
    QFETCH(int, number);
    const Form &form = forms[number];
    SrdoDesk desk;
    build(desk, form);
    desk.srdoFile(form.v4);
    QCOMPARE(desk.error, QString());
    desk.writeDefines(form.v4);
    desk.write(u"application.h"_s, SrdoDevice::applicationHeader(form.isStatic));
    const QByteArray program = QByteArray("#define LINE_NUMBER ") + QByteArray::number(form.lines - 1) + "u\n"
        + head + mapError(form.v4) + places(form.isStatic) + mover + cases + R"(
int main(void)
{
    unsigned i, seed;
    for (i = 0; i < sizeof(all) / sizeof(all[0]); i++) {
        const char *result = "ok";
        for (seed = 0; seed < 256 && strcmp(result, "ok") == 0; seed += 5)
            result = move(&all[i], (UNSIGNED8)seed);
        printf("%u %s\n", all[i].srdo, result);
    }
    return 0;
}
)";
    QByteArrayList expected;
    for (int srdo = 1; srdo <= 9; ++srdo)
        expected.append(QByteArray::number(srdo) + " ok");
    QCOMPARE(run(desk, program), expected.join('\n'));
}

void TestSrdoCompiled::whatCannotBeMovedIsRefused()
{
    QFETCH(int, number);
    const Form &form = forms[number];
    SrdoDesk desk;
    build(desk, form);
    desk.srdoFile(form.v4);
    desk.writeDefines(form.v4);
    desk.write(u"application.h"_s, SrdoDevice::applicationHeader(form.isStatic));
    const QByteArray program = QByteArray("#define LINE_NUMBER ") + QByteArray::number(form.lines - 1) + "u\n"
        + head + mapError(form.v4) + R"(
static int isRefused(UNSIGNED16 srdo, RET_T error)
{
    UNSIGNED8 normal[9], inverted[9];
    memset(normal, 0x55, sizeof(normal));
    memset(inverted, 0x55, sizeof(inverted));
    return coGenSrdoTransmitMapping(LINE srdo, normal, inverted) == error
        && coGenSrdoReceiveNormal(LINE srdo, normal) == error
        && coGenSrdoReceiveInverted(LINE srdo, inverted) == error
        && normal[8] == 0x55 && inverted[8] == 0x55;
}
int main(void)
{
    UNSIGNED16 srdo;
    for (srdo = 20; srdo <= 29; srdo++)
        printf("%u %d\n", srdo, isRefused(srdo, MAP_ERROR));
    printf("empty %d %d\n", isRefused(40, RET_OK), isRefused(41, RET_OK));
    printf("none %d %d\n", isRefused(0, RET_PARAMETER_INVALID), isRefused(64, RET_PARAMETER_INVALID));
    return 0;
}
)";
    QByteArrayList expected;
    for (int srdo = SrdoDevice::firstFaulty; srdo <= SrdoDevice::lastFaulty; ++srdo)
        expected.append(QByteArray::number(srdo) + " 1");
    QCOMPARE(run(desk, program), (expected + QByteArrayList{"empty 1 1", "none 1 1"}).join('\n'));
}

void TestSrdoCompiled::dataFollowTheProjectAndTheNodeId()
{
    QFETCH(int, number);
    const Form &form = forms[number];
    SrdoDesk desk;
    build(desk, form);
    const auto line = quint8(form.lines - 1);
    desk.srdo(50, {u"0x20000008"_s}, line,
              {.direction = u"2"_s,
               .refreshTime = u"0x1f4"_s,
               .validationTime = u"100"_s,
               .cobId1 = u"0xff + 2 * $NODEID"_s,
               .cobId2 = u"0x100 + 2 * $NODEID"_s});
    desk.srdoFile(form.v4);
    desk.writeDefines(form.v4);
    desk.write(u"application.h"_s, SrdoDevice::applicationHeader(form.isStatic));
    const QByteArray program =
        QByteArray("#define LINE_NUMBER ") + QByteArray::number(line) + "u\n" + head + R"(
static void print(UNSIGNED8 node)
{
    const CO_SRDO_DATA_T *s;
    coGenSrdoInit(LINE node);
    s = coGenSrdoGetDataPtr(LINE 0x1332u);
    printf("%u %u %u %u %lx %lx %u %u %d %u %lx\n", s->direction, s->refreshTime, s->srvt, s->transType,
           (unsigned long)s->cobId1, (unsigned long)s->cobId2, s->mapCnt, s->mapLen,
           s->dataValid == CO_SRDO_DATA_UNKNOWN, s->maxMapCnt, (unsigned long)s->mapTable[0]);
}
int main(void)
{
    const CO_SRDO_DATA_T *s;
    print(1u);
    print(64u);
    s = coGenSrdoGetDataPtr(LINE 0x1301u);
    printf("%lx %lx %u %u %u\n", (unsigned long)s->cobId1, (unsigned long)s->cobId2, s->mapCnt, s->mapLen, s->maxMapCnt);
    s = coGenSrdoGetDataPtr(LINE 0x1328u);
    printf("%u %u %u %lx\n", s->mapCnt, s->mapLen, s->maxMapCnt, (unsigned long)s->mapTable[0]);
    printf("%d\n", coGenSrdoGetDataPtr(LINE 0x133fu) == NULL);
    coGenSrdoSetConfigValid(LINE 0xa5u);
    coGenSrdoSetConfigReady(LINE 1u);
    coGenSrdoSetNmtState(LINE CO_NMT_STATE_OPERATIONAL);
    coGenSrdoSetTimer(LINE coGenSrdoGetDataPtr(LINE 0x1301u));
#ifdef CAN_MULTI_LINE
#define ONLY_LINE LINE_NUMBER
#else
#define ONLY_LINE
#endif
    printf("%x %u %d %d\n", coGenSrdoGetConfigValid(ONLY_LINE), coGenSrdoGetConfigReady(ONLY_LINE),
           coGenSrdoGetNmtState(ONLY_LINE) == CO_NMT_STATE_OPERATIONAL,
           coGenSrdoGetTimer(ONLY_LINE) == coGenSrdoGetDataPtr(LINE 0x1301u));
    coGenSrdoInit(LINE 1u);
    printf("%x %d %d\n", coGenSrdoGetConfigValid(ONLY_LINE),
           coGenSrdoGetNmtState(ONLY_LINE) == CO_NMT_STATE_PREOP, coGenSrdoGetTimer(ONLY_LINE) == NULL);
    return 0;
}
)";
    QCOMPARE(run(desk, program),
             QByteArray("2 500 100 254 101 102 1 1 1 1 20000008\n"
                        "2 500 100 254 17f 180 1 1 1 1 20000008\n"
                        "101 102 4 8 4\n"
                        "0 0 0 0\n"
                        "1\n"
                        "a5 1 1 1\n"
                        "0 1 1"));
}

void TestSrdoCompiled::theDictionaryFindsStaticVariables()
{
    SrdoDesk desk;
    desk.makeStatic();
    desk.set(u"applicationheader"_s, u"application.h"_s);
    desk.write(u"application.h"_s, SrdoDevice::applicationHeader(true));
    SrdoDevice::addMovable(desk);
    SrdoDevice::addFaulty(desk);
    desk.variable(0x2200, {.type = CAN::Unsigned16}); // kept by the generated code
    desk.srdo(30, {u"0x22000010"_s});
    const QString text = desk.srdoFile();
    QVERIFY(text.contains(u"static UNSIGNED16 srdoVariable_2200_0; /* 0x2200:0 */\n"_s));
    desk.writeDefines();
    QByteArrayList expected;
    QByteArray calls;
    for (const SrdoDevice::Variable &variable : SrdoDevice::variables) {
        const QByteArray index = "0x" + QByteArray::number(variable.index, 16);
        calls += "    printf(\"" + index + " %d\\n\", coGenSrdoGetVariable(" + index + ", 0u) != NULL);\n";
        expected.append(index + (SrdoDevice::canBeStatic(variable.type) ? " 1" : " 0"));
    }
    calls += "    printf(\"%d%d%d\\n\", coGenSrdoGetVariable(0x2200, 0u) != NULL,\n"
             "        coGenSrdoGetVariable(0x2101, 0u) == NULL, coGenSrdoGetVariable(0x2000, 1u) == NULL);\n";
    QCOMPARE(run(desk, head + QByteArray("int main(void)\n{\n") + calls + "    return 0;\n}\n"),
             (expected + QByteArrayList{"111"}).join('\n'));
}

// The two are equal as floats, and one flipped bit apart.
void TestSrdoCompiled::negativeZeroIsNotZero()
{
    SrdoDesk desk;
    desk.makeStatic();
    desk.mapped(0x2000, CAN::Real32, u"force"_s);
    desk.srdo(1, {u"0x20000020"_s});
    desk.srdoFile();
    desk.writeDefines();
    QCOMPARE(run(desk, R"(#include <gen_define.h>
#include <co_srdo.h>
#include <stdio.h>
int main(void)
{
    const UNSIGNED8 normal[8] = { 0, 0, 0, 0 }, inverted[8] = { 0xff, 0xff, 0xff, 0x7f };
    printf("%d\n", coGenSrdoReceiveMapping(1u, normal, inverted) == RET_MAP_ERROR);
    return 0;
}
)"),
             QByteArray("1"));
}

// The receiver of an SRDO with two objects that have nothing to do with each other stays in its safe state.
void TestSrdoCompiled::variablesThatAreNoCopiesAreNotTaken()
{
    SrdoDesk desk;
    desk.makeStatic();
    desk.mapped(0x2000, CAN::Unsigned16, u"speed"_s);
    desk.mapped(0x2001, CAN::Unsigned16, u"torque"_s);
    desk.srdo(1, {u"0x20000010"_s, u"0x20010010"_s});
    desk.srdoFile();
    desk.writeDefines();
    QCOMPARE(run(desk, R"(#include <gen_define.h>
#include <co_srdo.h>
#include <stdio.h>
int main(void)
{
    UNSIGNED16 *speed = coGenSrdoGetVariable(0x2000u, 0u), *torque = coGenSrdoGetVariable(0x2001u, 0u);
    UNSIGNED8 normal[8], inverted[8];
    *speed = 0x1234u;
    *torque = 0x5678u;
    printf("%d", coGenSrdoTransmitMapping(1u, normal, inverted) == RET_OK);
    *speed = 1u;
    printf(" %d", coGenSrdoReceiveMapping(1u, normal, inverted) == RET_MAP_ERROR);
    printf(" %x %x", *speed, *torque);
    *torque = (UNSIGNED16)~0x1234u;
    *speed = 0x1234u;
    printf(" %d", coGenSrdoTransmitMapping(1u, normal, inverted) == RET_OK);
    *speed = *torque = 1u;
    printf(" %d", coGenSrdoReceiveMapping(1u, normal, inverted) == RET_OK);
    printf(" %x %x\n", *speed, *torque);
    return 0;
}
)"),
             QByteArray("1 1 1 5678 1 1 1234 edcb"));
}

void TestSrdoCompiled::namesThatAreNoneOfCStillCompile_data()
{
    QTest::addColumn<bool>("isStatic");
    QTest::newRow("static: the variable gets another name") << true;
    QTest::newRow("of the application: the variable cannot be reached") << false;
}

void TestSrdoCompiled::namesThatAreNoneOfCStillCompile()
{
    QFETCH(bool, isStatic);
    SrdoDesk desk;
    if (isStatic)
        desk.makeStatic();
    const QStringList names = QString::fromUtf8(badNames).split(u'|');
    for (int i = 0; i < names.size(); ++i) {
        desk.mapped(quint16(0x2000 + i), CAN::Unsigned8, names.at(i));
        desk.srdo(i + 1, {u"0x%1"_s.arg((0x2000u + quint32(i)) << 16 | 8, 0, 16)});
    }
    desk.srdoFile();
    desk.writeDefines();
    const QByteArray program = "#define SRDOS " + QByteArray::number(names.size()) + R"(u
#include <gen_define.h>
#include <co_srdo.h>
#include <stdio.h>
int main(void)
{
    UNSIGNED8 normal[8], inverted[8];
    UNSIGNED16 i;
    for (i = 1u; i <= SRDOS; i++)
        printf("%d", coGenSrdoTransmitMapping(i, normal, inverted) == RET_OK);
    printf("\n");
    return 0;
}
)";
    QCOMPARE(run(desk, program), QByteArray(names.size(), isStatic ? '1' : '0'));
}

void TestSrdoCompiled::partsOfVariablesAndExpressionsAreMoved_data()
{
    QTest::addColumn<bool>("isStatic");
    QTest::newRow("static") << true;
    QTest::newRow("of the application") << false;
}

void TestSrdoCompiled::partsOfVariablesAndExpressionsAreMoved()
{
    QFETCH(bool, isStatic);
    SrdoDesk desk;
    desk.set(u"applicationheader"_s, u"application.h"_s);
    if (isStatic)
        desk.makeStatic();
    desk.mapped(0x2000, CAN::Unsigned8, u"state.level"_s);
    desk.mapped(0x2001, CAN::Integer16, u"values[1]"_s);
    desk.mapped(0x2002, CAN::Unsigned8, u"ADDRESS(plain)"_s);
    desk.mapped(0x2003, CAN::Unsigned24, u"WIDE(wide)"_s);
    desk.srdo(1, {u"0x20000008"_s, u"0x20010010"_s, u"0x20020008"_s, u"0x20030018"_s});
    const QString text = desk.srdoFile();
    QVERIFY(text.contains(u"(*ADDRESS(plain))"_s));
    desk.writeDefines();
    desk.write(u"application.h"_s, R"(#ifndef VARIABLE
#define VARIABLE(declaration) extern declaration;
#endif
#define ADDRESS(x) (&(x))
#define WIDE(x) (x)
typedef struct { UNSIGNED8 level; } STATE_T;
VARIABLE(STATE_T state)
VARIABLE(INTEGER16 values[2])
VARIABLE(UNSIGNED8 plain)
VARIABLE(UNSIGNED24 wide)
)");
    QCOMPARE(run(desk, QByteArray(head) + R"(
int main(void)
{
    UNSIGNED8 normal[8] = { 0 }, inverted[8] = { 0 };
    unsigned i;
    state.level = 1; values[1] = -2; plain = 3; wide.val[0] = 4; wide.val[2] = 5;
    printf("%d:", coGenSrdoTransmitMapping(1u, normal, inverted) == RET_OK);
    for (i = 0; i < 7; i++)
        printf(" %02x", normal[i]);
    state.level = 0; values[1] = 0; plain = 0; wide.val[0] = 0; wide.val[2] = 0;
    printf(" %d:", coGenSrdoReceiveMapping(1u, normal, inverted) == RET_OK);
    printf(" %d %d %d %d %d\n", state.level, values[1], plain, wide.val[0], wide.val[2]);
    return 0;
}
)"),
             QByteArray("1: 01 fe ff 03 04 00 05 1: 1 -2 3 4 5"));
}

void TestSrdoCompiled::aProjectWithoutAnSrdoCompiles_data()
{
    QTest::addColumn<bool>("isMultiLine");
    QTest::newRow("single line") << false;
    QTest::newRow("two lines") << true;
}

void TestSrdoCompiled::aProjectWithoutAnSrdoCompiles()
{
    QFETCH(bool, isMultiLine);
    SrdoDesk desk;
    desk.variable(0x2000, {});
    if (isMultiLine) {
        desk.variable(0x2000, {}, 1);
        desk.set(u"line1type"_s, u"1"_s);
    }
    desk.array(0x1350, {{}}); // counts as an SRDO, but is behind the last one
    desk.srdoFile();
    desk.writeDefines();
    const QByteArray program = QByteArray("#define LINE_NUMBER 0u\n") + head + R"(
int main(void)
{
    UNSIGNED8 message[8] = { 0 };
    coGenSrdoInit(LINE 1u);
    printf("%d %d\n", coGenSrdoGetDataPtr(LINE 0x1301u) == NULL,
           coGenSrdoReceiveMapping(LINE 1u, message, message) == RET_PARAMETER_INVALID);
    return 0;
}
)";
    desk.write(u"application.h"_s, {});
    QCOMPARE(run(desk, program), QByteArray("1 1"));
}

void TestSrdoCompiled::sharedVariablesAreThoseOfLineZero()
{
    SrdoDesk desk;
    desk.makeStatic();
    desk.addLine(1);
    desk.set(u"line1type"_s, u"1"_s);
    for (const quint8 line : {quint8(0), quint8(1)}) {
        desk.variable(0x2000,
                      {.implementation = CANopen::ApplicationVariable, .variable = u"v_$l"_s, .shared = true},
                      line);
        desk.srdo(1, {u"0x20000008"_s}, line);
    }
    const QString text = desk.srdoFile();
    QVERIFY(!text.contains(u"v_1"_s));
    desk.writeDefines();
    QCOMPARE(run(desk, R"(#include <gen_define.h>
#include <co_srdo.h>
#include <stdio.h>
int main(void)
{
    UNSIGNED8 *first = coGenSrdoGetVariable(0u, 0x2000, 0u), *second = coGenSrdoGetVariable(1u, 0x2000, 0u);
    printf("%d %d\n", first != NULL, first == second);
    return 0;
}
)"),
             QByteArray("1 1"));
}

QTEST_GUILESS_MAIN(TestSrdoCompiled)
#include "tst_srdocompiled.moc"
