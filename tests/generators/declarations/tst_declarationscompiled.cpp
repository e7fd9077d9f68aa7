#include "generators/RunDesk.h"
#include "generators/canopen/CanopenGenerators.h"
#include "generators/declarations/DeclarationDesk.h"
#include "support/CCompiler.h"

#include <QRandomGenerator>

using namespace Qt::StringLiterals;

namespace {

/** A name as it may stand in a project. */
QString anyName(QRandomGenerator &random)
{
    static const QStringList pieces{u"Speed"_s, u"speed"_s, u"SPEED"_s, u" "_s,  u"-"_s,  u"_"_s,  u"__"_s,
                                    u"2000"_s,  u"1"_s,     u"ä"_s,     u"转"_s, u"%"_s,  u"*/"_s, u"\\"_s,
                                    u"\n"_s,    u"\""_s,    u"$s"_s,    u"$I"_s, u"int"_s};
    QString name;
    for (int i = random.bounded(4); i > 0; --i)
        name += pieces.at(random.bounded(pieces.size()));
    return name;
}

/** Objects, groups and messages whose names often meet. */
void addAnything(DeclarationDesk &desk, quint32 seed)
{
    QRandomGenerator random(seed);
    for (int i = 0; i < 60; ++i) {
        QList<DeclarationDesk::Sub> subs;
        for (int sub = random.bounded(6); sub > 0; --sub)
            subs.append({.name = anyName(random)});
        desk.object(quint16(0x1FF0 + i), anyName(random), subs);
    }
    for (int i = 0; i < 30; ++i) {
        const quint32 number = random.bounded(0x20000u);
        const int direction = random.bounded(2) == 0 ? ObjectDataBase::Receive : ObjectDataBase::Transmit;
        desk.group(number, anyName(random), direction);
        for (int spn = random.bounded(4); spn > 0; --spn)
            desk.spn(number, random.bounded(20u), {.name = anyName(random), .pos = spn}, direction);
    }
    for (int i = 0; i < 10; ++i)
        desk.message(random.bounded(0x20000000u));
}

/** A device with an SDO server on its J1939 line, all variables its application's. */
class ServerDesk : public RunDesk
{
public:
    explicit ServerDesk(bool v4) : RunDesk({2})
    {
        GeneratorFactories factories;
        addCanopenGenerators(factories);
        addDeclarationGenerators(factories);
        handler.setFactories(factories);
        setJ1939(u"cia510serversupport"_s, u"1"_s);
        set(u"applicationheader"_s, u"gen_extern_decl.h"_s);
        if (v4)
            set(u"use_core_headers"_s, u"V4"_s);
        write(u"co_datatype.h"_s, "#include <core_datatype.h>\n");
    }

    void variable(quint16 index, int dataType, const QString &name, int size = 0)
    {
        store->addIndex(0, index, {.name = name, .datatype = dataType, .objecttype = CANopen::Var});
        store->addSubIndex(0, index, 0,
                           {.name = name,
                            .datatype = dataType,
                            .accesstype = u"rw"_s,
                            .defaultvalue = u"0"_s,
                            .size = size,
                            .implementation = CANopen::ApplicationVariable,
                            .varname = name});
    }
};

constexpr auto definitionsUnit = "#define PVX_USE_GENERATED_VARIABLES\n"
                                 "#include \"gen_var_decl.c\"\n"
                                 "#include \"gen_extern_decl.h\"\n"
                                 "#include \"gen_extern_decl.h\"\n";

} // namespace

/** What gcc and clang make of the declarations, with the warnings that a careful firmware project has on. */
class TestDeclarationsCompiled : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void everyIndexNameIsUniqueAndHasItsValue_data() { addCompilers(); }
    void everyIndexNameIsUniqueAndHasItsValue();
    void declarationsAndDefinitionsAgree_data() { addCompilers(); }
    void declarationsAndDefinitionsAgree();
    void theTablesPointToTheVariables_data() { addCompilers(); }
    void theTablesPointToTheVariables();

private:
    static void addCompilers()
    {
        QTest::addColumn<QString>("compiler");
        QTest::addColumn<bool>("v4");
        for (const QString &program : CCompiler::programs())
            for (const bool v4 : {true, false})
                QTest::addRow("%s, %s", qPrintable(program), v4 ? "V4" : "older") << program << v4;
    }
};

void TestDeclarationsCompiled::everyIndexNameIsUniqueAndHasItsValue()
{
    QFETCH(QString, compiler);
    QFETCH(bool, v4); // stands for the form here, which has no dialect
    DeclarationDesk desk({5});
    addAnything(desk, v4 ? 1 : 2);
    if (!v4)
        desk.forceMultiLine();
    const QStringList defines = desk.defines();
    QVERIFY(defines.size() > 100);
    QByteArray program = "#include \"gen_indices.h\"\n#include \"gen_indices.h\"\n#include <stdio.h>\n\n"
                         "int main(void)\n{\n";
    QByteArrayList values;
    QSet<QString> names;
    for (const QString &define : defines) {
        const QStringList words = define.split(u' ');
        names.insert(words.at(0));
        program += "    printf(\"%u\\n\", (unsigned)" + words.at(0).toLatin1() + ");\n";
        values.append(QByteArray::number(words.at(1).chopped(1).toUInt(nullptr, 0)));
    }
    QCOMPARE(names.size(), defines.size());
    const CCompiler c(compiler, desk.folder.path());
    QVERIFY(c.write(u"reader.c"_s, program + "    return S_NUMBER_OF_ENTRIES;\n}\n"));
    QCOMPARE(c.build({u"reader.c"_s}), QString());
    QCOMPARE(c.run(), values);
}

void TestDeclarationsCompiled::declarationsAndDefinitionsAgree()
{
    QFETCH(QString, compiler);
    QFETCH(bool, v4);
    DeclarationDesk desk({7, 7});
    desk.group(61444, u"EEC1"_s);
    desk.group(65259, u"Sources"_s, ObjectDataBase::Receive, 1, 3);
    for (int type = 0; type <= CAN::Unsigned29; ++type) {
        if (type >= CAN::Real64 && type <= CAN::Integer64)
            continue; // types that no table of the stack has
        if (type == CAN::Unsigned56)
            continue;
        desk.applicationVariable(quint16(0x2000 + type), u"object%1"_s.arg(type), type, 5);
        desk.spn(61444, quint32(type), applicationSpn(u"spn%1"_s.arg(type), type, 12));
        desk.spn(65259, quint32(type), applicationSpn(u"sources%1"_s.arg(type), type, 64),
                 ObjectDataBase::Receive, 1);
    }
    const QString header = desk.declarations(v4);
    QVERIFY(header.count("\nextern "_L1) > 80);
    const CCompiler c(compiler, desk.folder.path());
    QVERIFY(c.write(u"gen_define.h"_s, "/* nothing is needed of it */\n"));
    QVERIFY(c.write(u"co_datatype.h"_s, "#include <core_datatype.h>\n"));
    QVERIFY(c.write(u"variables.c"_s, definitionsUnit));
    QVERIFY(c.write(u"main.c"_s, R"(#include <core_datatype.h>
#include <stdio.h>
#include "gen_extern_decl.h"
int main(void)
{
    spn5 = 3u;
    sources5[2] = 4u;
    object9[4] = 'x';
    printf("%u %u %u\n", (unsigned)sizeof(sources120), (unsigned)sizeof(spn9), (unsigned)(spn5 + sources5[2]));
    return object5;
}
)"));
    // Without the switch the file defines nothing that the other unit has not defined.
    QCOMPARE(c.build({u"main.c"_s, u"variables.c"_s, u"gen_var_decl.c"_s}), QString());
    QCOMPARE(c.run(), QByteArrayList({"24 2 7"}));
}

void TestDeclarationsCompiled::theTablesPointToTheVariables()
{
    QFETCH(QString, compiler);
    QFETCH(bool, v4);
    ServerDesk desk(v4);
    desk.variable(0x2000, CAN::Unsigned16, u"speed"_s);
    desk.variable(0x2001, CAN::Boolean, u"flag"_s);
    desk.variable(0x2002, CAN::VisibleString, u"text"_s, 3);
    desk.variable(0x2003, CAN::OctetString, u"bytes"_s, 2);
    desk.variable(0x2004, CAN::Integer32, u"position"_s);
    desk.variable(0x2005, CAN::Unsigned40, u"ticks"_s);
    desk.variable(0x2006, CAN::Real32, u"level"_s);
    desk.variable(0x2007, CAN::Integer24, u"angle"_s);
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    const CCompiler c(compiler, desk.folder.path());
    QVERIFY(c.write(u"variables.c"_s, definitionsUnit));
    QVERIFY(c.write(u"main.c"_s, R"(#include "od_runtime.h"
#include <j1939_cam11_cam21.h>
#include <string.h>
#include "gen_extern_decl.h"
int main(void)
{
    const UNSIGNED40 fortyBits = { { 7u, 0u, 0u, 0u, 0u } };
    if (j1939OdInit() != RET_OK)
        return 1;
    speed = 4711u;
    flag = 1u;
    memcpy(text, "abc", sizeof(text));
    memcpy(bytes, "\x01\x02", sizeof(bytes));
    position = -815;
    ticks = fortyBits;
    level = 1.0f;
    odPrint();
    return 0;
}
)"));
    const QString stack = QStringLiteral(NODESMITH_TEST_GOLDEN "/../stack/");
    QCOMPARE(c.build({u"gen_objdict.c"_s, u"variables.c"_s, u"main.c"_s, stack + u"od_runtime.c"_s,
                      stack + u"od_services.c"_s}),
             QString());
    const QByteArray printed = c.run().join('\n');
    for (const char *value : {" 4711 ", "/t616263 ", "/t0102 ", " -815 ", " 7 ", " f3f800000 "})
        QVERIFY2(printed.contains(value), printed.constData());
}

QTEST_GUILESS_MAIN(TestDeclarationsCompiled)
#include "tst_declarationscompiled.moc"
