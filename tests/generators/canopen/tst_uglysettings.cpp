#include "generators/canopen/UglyProjects.h"
#include "templates/TemplateKeys.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace UglyProjects;

namespace {

/** A setting that is C, as its author may have typed it. */
struct Text
{
    const char *name;
    QLatin1StringView key;
    QStringView value;
};

const Text texts[] = {
    {"defines without a line end", "user_defines"_L1, u"#define A 1"},
    {"defines of blanks", "user_defines"_L1, u" \n\t "},
    {"defines with other line ends", "user_defines"_L1, u"#define A 1\r\n#define B 2\r#define C 3"},
    {"defines that go on", "user_defines"_L1, u"#define A 1 \\"},
    {"defines that go on and on", "user_defines"_L1, u"#define A 1 \\\n\\\n"},
    {"the same define twice", "user_defines"_L1, u"#define A 1\n#define A 1\n"},
    {"defines with a mark", "user_defines"_L1, u"/* user-specific section: end */\n#define A 1"},
    {"defines of the hardware that go on", "hw_defines"_L1, u"#define A 1 \\  "},
    {"the end of a section as a define", "hw_defines"_L1, u"/* user-specific section: start */"},
    {"node-IDs with blanks", "co_node_id"_L1, u" 5 , , "},
    {"node-IDs in lines", "co_node_id"_L1, u"5,\n6\n"},
    {"a node-ID of a name", "co_node_id"_L1, u"(UNSIGNED8)(1u + 2u)"},
    {"a hexadecimal node-ID", "co_node_id"_L1, u"0X7F"},
    {"functions of nodes", "co_node_id_fct"_L1, u" NULL ,\n,"},
    {"an interval in lines", "co_timer_interval"_L1, u"1000\n+ 1\n"},
    {"an interval of blanks", "co_timer_interval"_L1, u" \n "},
    {"an interval of SRDOs in lines", "co_srdo_interval"_L1, u"1000\n"},
    {"headers with blanks", "applicationheader"_L1, u"  application.h\n\tapplication.h  "},
    {"headers with quotation marks", "applicationheader"_L1, u"\"application.h\""},
    {"a memory specifier with blanks", "static_memory_specifier"_L1, u" __attribute__((aligned(8))) "},
    {"a memory specifier in lines", "static_memory_specifier"_L1, u"__attribute__(\n(aligned(8)))\n"},
    {"a function with blanks", "fct_sync"_L1, u"  onSync\n"},
    {"a function of nobody", "fct_sync"_L1, u"NULL"},
    {"a function beyond ASCII", "fct_sync"_L1, u"b\u00e4r"},
    {"a profile in lines", "Profile"_L1, u"Profile=401\r\n447 : 3\n447-4\nnone\n401"},
};

/** Settings that are C themselves: their author answers for them. */
const QStringList &code()
{
    static const QStringList keys{
        u"user_defines"_s,      u"hw_defines"_s,     u"applicationheader"_s, u"static_memory_specifier"_s,
        u"co_node_id"_s,        u"co_node_id_fct"_s, u"co_timer_interval"_s, u"co_srdo_interval"_s,
        u"init_default_value"_s};
    return keys;
}

/** Settings of the protocols that this device does not speak. */
bool isOfDiagnosis(const QString &key)
{
    return key.startsWith("uds"_L1) || key.startsWith("isotp"_L1);
}

bool isNameOfFunction(const QString &key)
{
    return key.startsWith("fct_"_L1) || key.endsWith("_function"_L1);
}

/** Settings that hold numbers: those of a new project, and those that appear later. */
QStringList numberKeys()
{
    QStringList keys{u"lvx_generation_count"_s,
                     u"sdo_blocktransfer_block_size"_s,
                     u"sdo_blocktransfer_crc_supported"_s,
                     u"sdo_blocktransfer_min_data"_s,
                     u"sdo_client_queue_size"_s,
                     u"usdo_split_indication_supported"_s,
                     u"Profile"_s};
    for (const auto *const key : TemplateKeys::switchedOff)
        keys.append(QLatin1StringView(key));
    for (const auto *const key : TemplateKeys::unset)
        keys.append(QLatin1StringView(key));
    keys.removeIf([](const QString &key) {
        return code().contains(key) || isOfDiagnosis(key) || isNameOfFunction(key);
    });
    return keys;
}

} // namespace

/** Ugly settings and values, through a generation run and the compilers. */
class TestUglySettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { StoreTest::prepareApplication(); }
    void anyTextInASettingOfNumbersCompiles_data();
    void anyTextInASettingOfNumbersCompiles();
    void textsOfTheUserCompile_data();
    void textsOfTheUserCompile();
    void manyDefinesCompile();
    void everyValueCompiles_data();
    void everyValueCompiles();
};

void TestUglySettings::anyTextInASettingOfNumbersCompiles_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("lines");
    const auto add = [](const char *name, const QString &value) {
        QTest::addRow("%s", name) << value << 1;
        if (value.isEmpty() || value == "1"_L1 || value.contains(u','))
            QTest::addRow("%s, several lines", name) << value << 3;
    };
    add("empty", {});
    add("blanks", u"  "_s);
    add("one", u"1"_s);
    add("two", u"2"_s);
    add("blanks around", u" 1 "_s);
    add("a line end", u"1\n"_s);
    add("two lines", u"1\n2"_s);
    add("negative", u"-1"_s);
    add("hexadecimal", u"0x1"_s);
    add("octal", u"01"_s);
    add("large", u"200"_s);
    add("too large", u"4294967296"_s);
    add("a fraction", u"1.5"_s);
    add("a short list", u"1,2"_s);
    add("a long list", u"1,2,1,2,1,2"_s);
    add("a list with gaps", u",1,,"_s);
    add("a list of blanks", u" , , "_s);
    add("a name", u"MANY"_s);
    add("quotation marks", u"\"1"_s);
    add("the end of a comment", u"1*/"_s);
    add("the begin of a comment", u"/*1"_s);
    add("a backslash", u"1\\"_s);
    add("a directive", u"1\n#error 1"_s);
    add("a placeholder", u"%1$value$"_s);
    add("letters beyond ASCII", u"\u00e4\u20ac"_s);
}

void TestUglySettings::anyTextInASettingOfNumbersCompiles()
{
    QFETCH(QString, value);
    QFETCH(int, lines);
    for (const bool v4 : {true, false}) {
        Project project;
        addServices(project);
        for (int line = 1; line < lines; ++line) {
            project.addLine(quint8(line), CheckTest::CANopenLine);
            project.varName(0x2001, 0, u"speed1"_s);
            addServices(project);
        }
        const QStringList keys = numberKeys();
        for (const QString &key : keys)
            project.set(key, value);
        chooseStack(project, v4);
        UglyDesk desk(project);
        QCOMPARE(desk.run(), RunDesk::Result::Completed);
        const QString messages = desk.messages();
        QVERIFY2(messages.isEmpty(), qPrintable(messages));
    }
}

void TestUglySettings::textsOfTheUserCompile_data()
{
    QTest::addColumn<int>("number");
    for (std::size_t i = 0; i < std::size(texts); ++i)
        QTest::newRow(texts[i].name) << int(i);
}

void TestUglySettings::textsOfTheUserCompile()
{
    QFETCH(int, number);
    for (const bool v4 : {true, false}) {
        Project project;
        chooseStack(project, v4);
        project.set(texts[number].key, texts[number].value.toString());
        UglyDesk desk(project);
        QCOMPARE(desk.run(), RunDesk::Result::Completed);
        const QString messages = desk.messages();
        QVERIFY2(messages.isEmpty(), qPrintable(messages));
    }
}

void TestUglySettings::manyDefinesCompile()
{
    constexpr int count = 250;
    Project project;
    chooseStack(project, true);
    QString defines;
    for (int i = 0; i < count; ++i)
        defines += u"#define USER_%1 %1\n"_s.arg(i);
    project.set(u"user_defines"_s, defines);
    UglyDesk desk(project);
    desk.run();
    QVERIFY(desk.read(u"gen_define.h"_s).contains(defines.toUtf8()));
    QCOMPARE(desk.messages(), QString());
}

void TestUglySettings::everyValueCompiles_data()
{
    QTest::addColumn<QString>("value");
    for (const QString &value : {u""_s,
                                 u" "_s,
                                 u"-1"_s,
                                 u"-99999999999999999999"_s,
                                 u"99999999999999999999"_s,
                                 u"0x1FFFFFFFFFFFFFFFFF"_s,
                                 u"0x"_s,
                                 u"08"_s,
                                 u"1e400"_s,
                                 u"-1e-400"_s,
                                 u"nan"_s,
                                 u"inf"_s,
                                 u"1,5"_s,
                                 u"$NODEID+"_s,
                                 u"$NODEID+0x80000000"_s,
                                 u"$NodeId + 1"_s,
                                 u"\"\\*/\n"_s,
                                 u"|x"_s,
                                 u"|x0"_s,
                                 u"|xzz"_s,
                                 u"?\?/\\"_s,
                                 u"\u00e4f"_s,
                                 u"%1 $x$ %"_s,
                                 QString(u'a').repeated(5000)})
        QTest::addRow("%s", value.size() > 40 ? "long" : qPrintable(value.simplified())) << value;
}

void TestUglySettings::everyValueCompiles()
{
    QFETCH(QString, value);
    Project project;
    chooseStack(project, true);
    project.set(u"special_virtual_objects"_s, u"1"_s);
    for (const QString &key : {u"limit_check"_s, u"init_static_variables"_s})
        project.set(key, u"1"_s);
    addServices(project);
    quint16 index = 0x3000;
    for (const int type : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 12, 15, 16, 17, 22, 24, 25, 27, 101, 124, 999})
        for (const int kind : {0, 1, 3}) {
            Sub data = CheckTest::sub(value, type, u"rw"_s, value);
            data.implementation = kind;
            data.lowlimit = value;
            data.uplimit = value;
            data.limitineds = true;
            project.variable(index++, data);
        }
    for (const quint16 service :
         {0x1005, 0x1010, 0x1014, 0x1016, 0x1017, 0x1028, 0x1201, 0x1400, 0x1600, 0x1800, 0x1A00})
        for (const quint8 number : project.store->getSubIndexList(0, service))
            project.value(service, number, value);
    UglyDesk desk(project);
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    const QString messages = desk.messages();
    QVERIFY2(messages.isEmpty(), qPrintable(messages));
}

QTEST_GUILESS_MAIN(TestUglySettings)
#include "tst_uglysettings.moc"
