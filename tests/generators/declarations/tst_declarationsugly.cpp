#include "canopen/CANTypes.h"
#include "canopen/CANopenTypes.h"
#include "canopen/COHelper.h"
#include "generators/RunDesk.h"
#include "generators/declarations/DeclarationGenerators.h"
#include "support/CCompiler.h"
#include "support/UglyTexts.h"

using namespace Qt::StringLiterals;

namespace {

/** A run over a project whose texts are as bad as they come. */
class UglyDesk : public RunDesk
{
public:
    UglyDesk(const QList<int> &lineTypes, quint32 seed) : RunDesk(lineTypes), m_random(seed)
    {
        GeneratorFactories factories;
        addDeclarationGenerators(factories);
        handler.setFactories(factories);
        write(u"co_datatype.h"_s, "#include <core_datatype.h>\n");
        write(u"gen_define.h"_s, "/* nothing is needed of it */\n");
    }

    void fill(quint8 line, int objects)
    {
        for (int i = 0; i < objects; ++i)
            addObject(line, quint16(m_random.bounded(0x1000, 0x10000)));
        for (int i = 0; i < objects / 2; ++i) {
            addGroup(line);
            addMessage(line);
        }
    }

private:
    QString text() { return UglyTexts::any(m_random); }
    MetadataMap metadata(const QString &key)
    {
        return m_random.bounded(4) == 0 ? MetadataMap{{key, text()}} : MetadataMap();
    }
    int dataType()
    {
        static const QList<quint16> types = COHelper::stringDataTypeIndexMap.keys();
        int type = types.at(m_random.bounded(types.size()));
        while (type == CAN::Real64 || (type > CAN::Real64 && type <= CAN::Integer64)
               || type == CAN::Unsigned56)
            type = types.at(m_random.bounded(types.size())); // the stack has no such C types
        return type;
    }
    int direction() { return m_random.bounded(2) == 0 ? ObjectDataBase::Receive : ObjectDataBase::Transmit; }

    void addObject(quint8 line, quint16 index)
    {
        store->addIndex(line, index,
                        {.name = text(),
                         .objecttype = CANopen::Record,
                         .description = text(),
                         .metadata = metadata(u"objectdefine"_s)});
        for (int sub = m_random.bounded(4); sub >= 0; --sub)
            store->addSubIndex(line, index, quint8(m_random.bounded(256)),
                               {.name = text(),
                                .datatype = dataType(),
                                .accesstype = u"rw"_s,
                                .defaultvalue = text(),
                                .size = m_random.bounded(-5, 300),
                                .implementation = m_random.bounded(4),
                                .varname = text(),
                                .metadata = metadata(u"subdefine"_s)});
    }
    void addGroup(quint8 line)
    {
        const quint32 number = m_random.bounded(0x20000u);
        ObjectDataBase::PGN group = StoreTest::samplePgn(direction(), text());
        group.multisourceaddress = m_random.bounded(-1, 6);
        store->addPGN(line, number, group);
        for (int i = m_random.bounded(3); i >= 0; --i)
            store->addSPN(line, number, quint8(group.direction), m_random.bounded(100u),
                          {.datatype = dataType(),
                           .implementation = m_random.bounded(4),
                           .varname = text(),
                           .name = text(),
                           .bitsize = m_random.bounded(-9, 300)});
    }
    void addMessage(quint8 line)
    {
        const quint32 id = m_random.bounded(0x20000000u);
        const ObjectDataBase::CANID message = StoreTest::sampleCanId(direction());
        store->addCANID(line, id, message);
        store->addDataElement(line, id, quint8(message.direction), 1,
                              {.datatype = dataType(),
                               .implementation = m_random.bounded(4),
                               .varname = text(),
                               .name = text(),
                               .bitsize = m_random.bounded(-9, 300)});
    }

    QRandomGenerator m_random;
};

/** The names and values of a header's defines with a value. */
QList<std::pair<QByteArray, QByteArray>> definesOf(const QByteArray &header)
{
    QList<std::pair<QByteArray, QByteArray>> defines;
    const QByteArrayList lines = header.split('\n');
    for (const QByteArray &line : lines) {
        const QByteArrayList words = line.simplified().split(' ');
        if (line.startsWith("#define ") && line.contains('\t'))
            defines.append({words.at(1), words.at(2).chopped(1)});
    }
    return defines;
}

} // namespace

/** The declarations of projects with texts that would break a careless generator. */
class TestDeclarationsUgly : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void anyProjectGivesCThatCompiles_data();
    void anyProjectGivesCThatCompiles();
    void aProjectOf250LinesGivesCThatCompiles();

private:
    static void compile(const UglyDesk &desk, const QString &program);
};

void TestDeclarationsUgly::compile(const UglyDesk &desk, const QString &program)
{
    const auto defines = definesOf(desk.read(u"gen_indices.h"_s));
    QVERIFY(defines.size() > 20);
    QByteArray source = "#include <core_datatype.h>\n#include \"gen_indices.h\"\n#include \"gen_indices.h\"\n"
                        "#include \"gen_extern_decl.h\"\n#define PVX_USE_GENERATED_VARIABLES\n"
                        "#include \"gen_var_decl.c\"\n#include <stdio.h>\n\nint main(void)\n{\n";
    QByteArrayList values;
    QSet<QByteArray> names;
    for (const auto &[name, value] : defines) {
        names.insert(name);
        source += "    printf(\"%u\\n\", (unsigned)" + name + ");\n";
        values.append(QByteArray::number(value.toUInt(nullptr, 0)));
    }
    QCOMPARE(names.size(), defines.size());
    const CCompiler c(program, desk.folder.path());
    QVERIFY(c.write(u"main.c"_s, source + "    return 0;\n}\n"));
    QCOMPARE(c.build({u"main.c"_s}).left(2000), QString());
    QCOMPARE(c.run(), values);
}

void TestDeclarationsUgly::anyProjectGivesCThatCompiles_data()
{
    QTest::addColumn<QString>("compiler");
    QTest::addColumn<QList<int>>("types");
    QTest::addColumn<quint32>("seed");
    quint32 seed = 0;
    for (const QString &program : CCompiler::programs())
        for (const QList<int> &types :
             {QList<int>{5}, QList<int>{6}, QList<int>{7}, QList<int>{1, 2, 4}, QList<int>{7, 5, 6, 1}})
            QTest::addRow("%s, project %u", qPrintable(program), ++seed) << program << types << seed;
}

void TestDeclarationsUgly::anyProjectGivesCThatCompiles()
{
    QFETCH(QString, compiler);
    QFETCH(QList<int>, types);
    QFETCH(quint32, seed);
    UglyDesk desk(types, seed);
    for (int line = 0; line < types.size(); ++line)
        desk.fill(quint8(line), 40);
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    compile(desk, compiler);
}

void TestDeclarationsUgly::aProjectOf250LinesGivesCThatCompiles()
{
    constexpr int lineCount = 250;
    static const QList<int> types{5, 6, 7, 1, 2, 4};
    QList<int> lineTypes;
    for (int line = 0; line < lineCount; ++line)
        lineTypes.append(types.at(line % types.size()));
    UglyDesk desk(lineTypes, 4711);
    for (int line = 0; line < lineCount; ++line)
        desk.fill(quint8(line), 2);
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    const QByteArray indices = desk.read(u"gen_indices.h"_s);
    QVERIFY(indices.contains("\n#define L0_I_"));
    QVERIFY(indices.contains("\n#define L249_I_"));
    compile(desk, u"gcc"_s);
}

QTEST_GUILESS_MAIN(TestDeclarationsUgly)
#include "tst_declarationsugly.moc"
