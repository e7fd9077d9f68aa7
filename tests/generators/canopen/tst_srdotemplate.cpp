#include "SrdoDesk.h"
#include "generators/CodeWriter.h"
#include "generators/canopen/SrdoTemplate.h"

#include <QRegularExpression>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {

constexpr auto singleLine = "co_lib_sl/src/gen_srdo.tpl";
constexpr auto multiLine = "co_lib_ml/src/gen_srdo.tpl";

/** An installed stack with templates that say where they stand. */
class Stack
{
public:
    explicit Stack(const QStringList &templates = {QString::fromLatin1(singleLine),
                                                   QString::fromLatin1(multiLine)})
    {
        for (const QString &name : templates)
            write(name, "/* " + name.toUtf8() + " */\n__GEN_SRDO_RECEICE_MAPPING1__\n");
    }
    void write(const QString &name, const QByteArray &text) const
    {
        const QString path = folder.filePath(name);
        QFile file(path);
        if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly)
            || file.write(text) != text.size())
            qFatal("cannot write %s", qPrintable(path));
    }

    QTemporaryDir folder;
};

void setStackPath(const QString &path)
{
    QSettings settings(u"korvel"_s, QCoreApplication::applicationName());
    settings.setValue(u"General/costackpath"_s, path);
}

} // namespace

/** Where the template of gen_srdo.c comes from and how it is filled. */
class TestSrdoTemplate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void init() { setStackPath({}); }
    void cleanupTestCase() { setStackPath({}); }
    void theOwnTemplateHasEveryMarker_data();
    void theOwnTemplateHasEveryMarker();
    void noMarkerIsLeft();
    void theTemplateOfTheStackIsPreferred_data();
    void theTemplateOfTheStackIsPreferred();
    void aRelativeStackPathStartsAtTheProject();
    void aStackWithoutTemplateLeavesTheOwnOne();
    void withoutATemplateTheRunFails();
    void bothSpellingsOfTheReceiveMarkersAreFilled_data();
    void bothSpellingsOfTheReceiveMarkersAreFilled();
    void theLineArgumentStandsForItsWord_data();
    void theLineArgumentStandsForItsWord();
    void unknownMarkersStay();
    void textOfTheProjectIsNoMarker();
    void lineEndsAreNotDoubled();
    void writabilityIsThatOfTheFile();
    void withoutAProjectTheRunFails();
};

void TestSrdoTemplate::theOwnTemplateHasEveryMarker_data()
{
    QTest::addColumn<QString>("marker");
    for (const char *name :
         {"VEX_INFORMATION", "INIT_CONFIG_VALID", "INIT_NMT_STATE", "INIT_CONFIG_READY", "INIT_SRDO_TIMER",
          "DATA_DEFINITION", "GET_DATA_PTR", "INIT", "OD_VARIABLES", "RECEIVE_MAPPING1", "RECEIVE_MAPPING2",
          "TRANSMIT_MAPPING", "OD_ENTRY", "INCLUDES"})
        QTest::newRow(name) << u"__GEN_SRDO_%1__"_s.arg(QLatin1StringView(name));
}

void TestSrdoTemplate::theOwnTemplateHasEveryMarker()
{
    QFETCH(QString, marker);
    QCOMPARE(int(SrdoTemplate::read(false, {}).value_or(QString()).count(marker)), 1);
}

void TestSrdoTemplate::noMarkerIsLeft()
{
    SrdoDesk desk;
    desk.srdo(1, {u"0x20000008"_s});
    const QString text = desk.srdoFile();
    QVERIFY(text.contains(u"coGenSrdoTransmitMapping("_s));
    QVERIFY(!text.contains(u"__GEN_"_s));
}

void TestSrdoTemplate::theTemplateOfTheStackIsPreferred_data()
{
    QTest::addColumn<int>("lines");
    QTest::addColumn<bool>("isForced");
    QTest::addColumn<QString>("file");
    QTest::newRow("single line") << 1 << false << QString::fromLatin1(singleLine);
    QTest::newRow("several lines") << 2 << false << QString::fromLatin1(multiLine);
    QTest::newRow("forced multi-line") << 1 << true << QString::fromLatin1(multiLine);
}

void TestSrdoTemplate::theTemplateOfTheStackIsPreferred()
{
    QFETCH(int, lines);
    QFETCH(bool, isForced);
    QFETCH(QString, file);
    const Stack stack;
    setStackPath(QDir::toNativeSeparators(stack.folder.path()));
    SrdoDesk desk;
    if (isForced)
        desk.setMisc(u"generateML"_s, u"true"_s);
    for (quint8 line = 0; line < lines; ++line)
        desk.srdo(1, {}, line);
    const QString text = desk.srdoFile();
    QVERIFY2(text.startsWith(u"/* %1 */\n\tswitch ("_s.arg(file)), qPrintable(text));
}

void TestSrdoTemplate::aRelativeStackPathStartsAtTheProject()
{
    SrdoDesk desk;
    QVERIFY(QDir(desk.folder.path()).mkpath(u"stack/co_lib_sl/src"_s));
    desk.write(u"stack/co_lib_sl/src/gen_srdo.tpl"_s, "of the project\n");
    setStackPath(u"stack"_s);
    QCOMPARE(desk.srdoFile(), u"of the project\n"_s);
}

void TestSrdoTemplate::aStackWithoutTemplateLeavesTheOwnOne()
{
    const Stack stack({QString::fromLatin1(multiLine)});
    setStackPath(stack.folder.path());
    SrdoDesk desk;
    QVERIFY(desk.srdoFile().contains(u"coGenSrdoTransmitMapping("_s));
    setStackPath(u"/nowhere"_s);
    QVERIFY(desk.srdoFile().contains(u"coGenSrdoTransmitMapping("_s));
}

void TestSrdoTemplate::withoutATemplateTheRunFails()
{
    SrdoDesk desk;
    desk.write(u"gen_srdo.c"_s, "of a former run\n");
    desk.source = [](bool, const QString &) { return std::nullopt; };
    QCOMPARE(desk.srdoFile(), u"of a former run\n"_s);
    QCOMPARE(desk.error, u"Template file not found."_s);
}

void TestSrdoTemplate::bothSpellingsOfTheReceiveMarkersAreFilled_data()
{
    QTest::addColumn<QString>("marker");
    QTest::addColumn<QString>("other");
    QTest::newRow("normal message") << u"__GEN_SRDO_RECEIVE_MAPPING1__"_s
                                    << u"__GEN_SRDO_RECEICE_MAPPING1__"_s;
    QTest::newRow("inverted message")
        << u"__GEN_SRDO_RECEIVE_MAPPING2__"_s << u"__GEN_SRDO_RECEICE_MAPPING2__"_s;
}

void TestSrdoTemplate::bothSpellingsOfTheReceiveMarkersAreFilled()
{
    QFETCH(QString, marker);
    QFETCH(QString, other);
    SrdoDesk desk;
    desk.mapped(0x2000, CAN::Unsigned8, u"state"_s);
    desk.srdo(1, {u"0x20000008"_s});
    const QString block = desk.block(marker);
    QVERIFY(block.contains(u"pData[0]"_s));
    QCOMPARE(desk.block(other), block);
}

void TestSrdoTemplate::theLineArgumentStandsForItsWord_data()
{
    QTest::addColumn<bool>("isMultiLine");
    QTest::addColumn<QString>("expected");
    QTest::newRow("multi-line") << true << u"f(canLine, CAN_LINE_ARRAY_DECL, MY_CAN_LINE, canLine)\n"_s;
    QTest::newRow("single line") << false << u"f(CAN_LINE, CAN_LINE_ARRAY_DECL, MY_CAN_LINE, CAN_LINE)\n"_s;
}

void TestSrdoTemplate::theLineArgumentStandsForItsWord()
{
    QFETCH(bool, isMultiLine);
    QFETCH(QString, expected);
    SrdoDesk desk;
    desk.srdo(1, {});
    if (isMultiLine)
        desk.srdo(1, {}, 1);
    desk.source = [](bool, const QString &) {
        return u"f(CAN_LINE, CAN_LINE_ARRAY_DECL, MY_CAN_LINE, CAN_LINE)\n"_s;
    };
    QCOMPARE(desk.srdoFile(), expected);
}

void TestSrdoTemplate::unknownMarkersStay()
{
    SrdoDesk desk;
    QCOMPARE(desk.block(u"__GEN_SRDO_FUTURE__ __GEN_SRDO_INIT_NMT__"_s),
             u"__GEN_SRDO_FUTURE__ __GEN_SRDO_INIT_NMT__\n"_s);
}

void TestSrdoTemplate::textOfTheProjectIsNoMarker()
{
    SrdoDesk desk;
    desk.set(u"applicationheader"_s, u"__GEN_SRDO_INIT__ CAN_LINE"_s);
    desk.srdo(1, {}, 1);
    QCOMPARE(
        desk.block(u"__GEN_SRDO_INCLUDES__"_s),
        u"\n/* application header file(s) */\n#include \"__GEN_SRDO_INIT__\"\n#include \"CAN_LINE\"\n"_s);
}

void TestSrdoTemplate::lineEndsAreNotDoubled()
{
    const QHash<QString, SrdoTemplate::Block> blocks{
        {u"__GEN_SRDO_INIT__"_s, [](CodeWriter &out) { out << u"a;\nb;\n"; }},
        {u"__GEN_SRDO_OD_ENTRY__"_s, [](CodeWriter &) {}}};
    QCOMPARE(SrdoTemplate::filled(u"{\n__GEN_SRDO_INIT__\n}\n"_s, blocks, false), u"{\na;\nb;\n}\n"_s);
    QCOMPARE(SrdoTemplate::filled(u"{ __GEN_SRDO_INIT__ }"_s, blocks, false), u"{ a;\nb;\n }"_s);
    QCOMPARE(SrdoTemplate::filled(u"x\n__GEN_SRDO_OD_ENTRY__\ny"_s, blocks, false), u"x\ny"_s);
    QCOMPARE(SrdoTemplate::filled(u"x __GEN_SRDO_OD_ENTRY__\ny"_s, blocks, false), u"x \ny"_s);
    QCOMPARE(SrdoTemplate::filled(QString(), blocks, false), QString());
}

void TestSrdoTemplate::writabilityIsThatOfTheFile()
{
    SrdoDesk desk;
    SrdoGeneratorStatic generator(false);
    generator.setOutputDir(desk.folder.path());
    QVERIFY(generator.isOutputWritable());
    QVERIFY(!desk.exists(u"gen_srdo.c"_s));
    desk.srdoFile();
    QVERIFY(generator.isOutputWritable());
    QVERIFY(desk.exists(u"gen_srdo.c"_s));
}

void TestSrdoTemplate::withoutAProjectTheRunFails()
{
    QTemporaryDir folder;
    SrdoGenerator generator(false);
    generator.setOutputDir(folder.path());
    QVERIFY(generator.startGeneration() == GeneratorStatus::Success);
    generator.waitForEnd();
    QVERIFY(generator.isFailed());
    QVERIFY(!QFile::exists(folder.filePath(u"gen_srdo.c"_s)));
}

QTEST_GUILESS_MAIN(TestSrdoTemplate)
#include "tst_srdotemplate.moc"
