#include "store/StoreTest.h"
#include "templates/TemplateParser.h"

using namespace Qt::StringLiterals;

namespace {

QByteArray head()
{
    return "[Template]\nedition = CANopen NodeSmith\n";
}

QStringList messagesOf(const QByteArray &source)
{
    TemplateParser parser;
    if (parser.parse(source, u"a.txt"_s))
        parser.finish();
    QStringList texts;
    for (const TemplateMessage &message : parser.messages())
        texts.append(message.toString());
    return texts;
}

} // namespace

class TemplateParserTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }

    void tellsWhereASourceIsWrong_data();
    void tellsWhereASourceIsWrong();
    void goesOnBehindAnError();
    void takesASectionOverSeveralSources();
    void namesTheSourceOfAKeyGivenInTwoSources();
    void doesNotMindLineEndsAndByteOrderMark_data();
    void doesNotMindLineEndsAndByteOrderMark();
    void fillsInWhatATypeTells();
    void keepsLimitsThatAreWrittenOut();
    void readsEveryFlag();
    void givesAVariableNameToApplicationStorageOnly();
    void derivesPagesAndSignalOrderOfAGroup();
};

void TemplateParserTest::tellsWhereASourceIsWrong_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("message");
    const QByteArray objects = head() + "[Objects 0]\n";
    const QByteArray var = objects + "0x2000 | VAR | UNSIGNED8 | A\n";
    const QByteArray groups = head() + "[PGNs 0]\n";
    const QByteArray group = groups + "65280 | transmit | 6 | 0 | 0 | A\n";
    const auto add = [](const char *name, const QByteArray &source, const char *message) {
        QTest::newRow(name) << source << QString::fromUtf8(message);
    };
    add("no edition", "[GeneralSettings]\na = 1",
        "a.txt:2:1: error: no source gives the edition in a section [Template]");
    add("row before the first section", "edition = X\n",
        "a.txt:1:1: error: a section such as [GeneralSettings] is expected here");
    add("unknown section", head() + "\n  [Foo]\n", "a.txt:4:3: error: unknown section \"Foo\"");
    add("saved settings are no section", head() + "[MiscSettings]\n",
        "a.txt:3:1: error: unknown section \"MiscSettings\"");
    add("open section", head() + "[Objects 0", "a.txt:3:1: error: the section name does not end with ]");
    add("line number missing", head() + "[Objects]",
        "a.txt:3:1: error: the section Objects needs a line number from 0 to 31");
    add("line number too high", head() + "[PGNs 32]",
        "a.txt:3:1: error: the section PGNs needs a line number from 0 to 31");
    add("line number too many", head() + "[GeneralSettings 0]",
        "a.txt:3:1: error: the section GeneralSettings takes no line number");
    add("second edition", head() + "edition = X", "a.txt:3:1: error: the edition is given a second time");
    add("unknown property", head() + " version = 1",
        "a.txt:3:2: error: unknown key \"version\"; edition is known");
    add("no equals sign", head() + "[J1939Settings]\nabc",
        "a.txt:4:1: error: a row of the form key = value is expected");
    add("no key", head() + "[J1939Settings]\n = 1",
        "a.txt:4:2: error: a row of the form key = value is expected");
    add("key twice", head() + "[J1939Settings]\na=1\na=2",
        "a.txt:5:1: error: the key \"a\" is given a second time");
    add("open quote", head() + "[J1939Settings]\na = \"1", "a.txt:4:5: error: the closing quote is missing");
    add("backslash at the end", head() + "[J1939Settings]\na = \"\\",
        "a.txt:4:6: error: unknown escape; \\\" \\\\ \\n \\r \\t are known");
    add("unknown escape", head() + "[J1939Settings]\na = \"\\x\"",
        "a.txt:4:6: error: unknown escape; \\\" \\\\ \\n \\r \\t are known");
    add("text behind a quote", head() + "[J1939Settings]\na = \"1\" 2",
        "a.txt:4:9: error: text behind the closing quote");
    add("not UTF-8", head() + "[J1939Settings]\na = \xe4", "a.txt:4:1: error: the line is not UTF-8 text");
    add("not UTF-8 in the middle", head() + "[J1939Settings]\na = \xe4 b",
        "a.txt:4:1: error: the line is not UTF-8 text");
    add("object columns", objects + "0x2000 | VAR | UNSIGNED8",
        "a.txt:4:1: error: 3 columns instead of: index | code | type | name | description");
    add("index no number", objects + "2000h | VAR | UNSIGNED8 | A",
        "a.txt:4:1: error: the index \"2000h\" is no number from 1 to 65535");
    add("index negative", objects + "-1 | VAR | UNSIGNED8 | A",
        "a.txt:4:1: error: the index \"-1\" is no number from 1 to 65535");
    add("index too high", objects + "0x10000 | VAR | UNSIGNED8 | A",
        "a.txt:4:1: error: the index \"0x10000\" is no number from 1 to 65535");
    add("object code", objects + "0x2000 | var | UNSIGNED8 | A",
        "a.txt:4:10: error: the object code \"var\" is none of: VAR, ARRAY, RECORD");
    add("object type", objects + "0x2000 | VAR | UINT8 | A",
        "a.txt:4:16: error: unknown data type \"UINT8\"");
    add("type as a number", objects + "0x2000 | VAR | 5 | A", "a.txt:4:16: error: unknown data type \"5\"");
    add("array without type", objects + "0x2000 | ARRAY | | A", "a.txt:4:18: error: unknown data type \"\"");
    add("object name", objects + "0x2000 | VAR | UNSIGNED8 | ", "a.txt:4:28: error: the name is missing");
    add("object twice", var + "    0 | UNSIGNED8 | ro | 0 | | | no | const | | A\n8192 | VAR | UNSIGNED8 | A",
        "a.txt:6:1: error: the object 0x2000 is given a second time");
    add("object without sub-index", var, "a.txt:4:1: error: the object 0x2000 has no sub-index");
    add("sub-index without object", objects + " 0 | UNSIGNED8 | ro | 0 | | | no | const | | A",
        "a.txt:4:2: error: an indented row needs a row of its object before it");
    add("sub-index columns", var + " 0 | UNSIGNED8",
        "a.txt:5:2: error: 2 columns instead of: sub | type | access | value | low | up | mapping | storage "
        "| flags | name | description");
    add("sub-index too high",
        objects + "0x2000 | RECORD | | A\n 256 | UNSIGNED8 | ro | 0 | | | no | const | | A",
        "a.txt:5:2: error: the sub-index \"256\" is no number from 0 to 255");
    add("sub-index of a VAR", var + " 1 | UNSIGNED8 | ro | 0 | | | no | const | | A",
        "a.txt:5:2: error: a VAR has sub-index 0 only");
    add("sub-index twice",
        var
            + " 0 | UNSIGNED8 | ro | 0 | | | no | const | | A\n 0 | UNSIGNED8 | ro | 0 | | | no | const | | "
              "A",
        "a.txt:6:2: error: the sub-index 0 is given a second time");
    add("access type", var + " 0 | UNSIGNED8 | r | 0 | | | no | const | | A",
        "a.txt:5:18: error: the access type \"r\" is none of: const, ro, rw, wo, rww, rwr");
    add("PDO mapping", var + " 0 | UNSIGNED8 | ro | 0 | | | yes | const | | A",
        "a.txt:5:31: error: the PDO mapping \"yes\" is none of: no, optional, default, RPDO, TPDO");
    add("storage", var + " 0 | UNSIGNED8 | ro | 0 | | | no | | | A",
        "a.txt:5:36: error: the storage \"\" is none of: managed, const, application, virtual");
    add("variable", var + " 0 | UNSIGNED8 | ro | 0 | | | no | application | | A",
        "a.txt:5:36: error: the storage application needs the name of a variable behind it");
    add("flag", var + " 0 | UNSIGNED8 | ro | 0 | | | no | const | eds,dflt | A",
        "a.txt:5:44: error: the flag \"dflt\" is none of: default, eds, limit, noread, nowrite, store");
    add("sub-index name", var + " 0 | UNSIGNED8 | ro | 0 | | | no | const | | \"\"",
        "a.txt:5:46: error: the name is missing");
    add("PGN columns", groups + "1 | transmit",
        "a.txt:4:1: error: 2 columns instead of: number | direction | priority | cycle | inhibit | name | "
        "description");
    add("PGN", groups + "0x40000 | transmit | 6 | 0 | 0 | A",
        "a.txt:4:1: error: the PGN \"0x40000\" is no number from 0 to 262143");
    add("direction", groups + "1 | 85 | 6 | 0 | 0 | A",
        "a.txt:4:5: error: the direction \"85\" is none of: transmit, receive");
    add("priority", groups + "1 | receive | 8 | 0 | 0 | A",
        "a.txt:4:15: error: the priority \"8\" is no number from 0 to 7");
    add("cycle time", groups + "1 | receive | 7 | x | 0 | A",
        "a.txt:4:19: error: the cycle time \"x\" is no number from 0 to 2147483647");
    add("PGN twice", group + "65280 | transmit | 6 | 0 | 0 | B",
        "a.txt:5:1: error: the PGN 65280 is given a second time");
    add("signal without PGN", groups + " 1 | UNSIGNED8 | 0 | | | managed | A",
        "a.txt:4:2: error: an indented row needs a row of its PGN before it");
    add("signal columns", group + " 1 | UNSIGNED8",
        "a.txt:5:2: error: 2 columns instead of: SPN | type | position | bits | value | storage | name | "
        "description");
    add("SPN", group + " 524288 | UNSIGNED8 | 0 | | | managed | A",
        "a.txt:5:2: error: the SPN \"524288\" is no number from 0 to 524287");
    add("position", group + " 1 | UNSIGNED8 | 14280 | | | managed | A",
        "a.txt:5:18: error: the position \"14280\" is no number from 0 to 14279");
    add("bits of a text", group + " 1 | VISIBLE_STRING | 0 | | | application v | A",
        "a.txt:5:27: error: the type has no width of its own, the number of bits is missing");
    add("SPN twice", group + " 1 | UNSIGNED8 | 0 | | | managed | A\n 1 | UNSIGNED8 | 8 | | | managed | B",
        "a.txt:6:2: error: the SPN 1 is given a second time");
}

void TemplateParserTest::tellsWhereASourceIsWrong()
{
    QFETCH(QByteArray, source);
    QFETCH(QString, message);
    QCOMPARE(messagesOf(source), QStringList{message});
}

void TemplateParserTest::goesOnBehindAnError()
{
    const QByteArray source = head()
        + "[Foo]\nrows = of it\nare = not read\n"
          "[Objects 0]\n"
          "0x2000 | VAR | WORD | A\n"
          "    0 | NOR THIS\n"
          "0x2001 | VAR | UNSIGNED8 | A\n"
          "    0 | UNSIGNED8 | rx | 0 | | | maybe | const | | A\n";
    QCOMPARE(
        messagesOf(source),
        (QStringList{
            u"a.txt:3:1: error: unknown section \"Foo\""_s,
            u"a.txt:7:16: error: unknown data type \"WORD\""_s,
            u"a.txt:10:21: error: the access type \"rx\" is none of: const, ro, rw, wo, rww, rwr"_s,
            u"a.txt:10:34: error: the PDO mapping \"maybe\" is none of: no, optional, default, RPDO, TPDO"_s,
        }));
}

void TemplateParserTest::takesASectionOverSeveralSources()
{
    TemplateParser parser;
    QVERIFY(parser.parse("[GeneralSettings]\na = 1\n", u"a.txt"_s));
    QVERIFY(parser.parse(head() + "[GeneralSettings]\nb =\n[GeneralSettings]\nc = 3", u"b.txt"_s));
    QVERIFY(parser.finish());
    QStringList rows;
    for (const TemplateProject::Setting &setting : parser.project().settings)
        rows.append(setting.key + u'=' + setting.value);
    QCOMPARE(rows, (QStringList{u"a=1"_s, u"b="_s, u"c=3"_s}));
    QCOMPARE(parser.project().edition, u"CANopen NodeSmith"_s);
}

void TemplateParserTest::namesTheSourceOfAKeyGivenInTwoSources()
{
    TemplateParser parser;
    QVERIFY(parser.parse("[GeneralSettings]\na = 1\n", u"a.txt"_s));
    QVERIFY(!parser.parse("[GeneralSettings]\n\na = 1\n", u"b.txt"_s));
    QCOMPARE(parser.messages().size(), 1);
    QCOMPARE(parser.messages().constFirst().toString(),
             u"b.txt:3:1: error: the key \"a\" is given a second time"_s);
}

void TemplateParserTest::doesNotMindLineEndsAndByteOrderMark_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::newRow("unix") << QByteArray("[GeneralSettings]\n# x\n\nkey = a b\n");
    QTest::newRow("windows") << QByteArray("[GeneralSettings]\r\n# x\r\n\r\nkey = a b\r\n");
    QTest::newRow("no final line end") << QByteArray("[GeneralSettings]\n  # x\n\nkey=a b");
    QTest::newRow("byte order mark") << QByteArray("\xef\xbb\xbf[GeneralSettings]\n# x\n\nkey = a b");
}

void TemplateParserTest::doesNotMindLineEndsAndByteOrderMark()
{
    QFETCH(QByteArray, source);
    TemplateParser parser;
    QVERIFY(parser.parse(source, u"a.txt"_s));
    QCOMPARE(parser.project().settings.size(), 1);
    QCOMPARE(parser.project().settings.constFirst().key, u"key"_s);
    QCOMPARE(parser.project().settings.constFirst().value, u"a b"_s);
}

void TemplateParserTest::fillsInWhatATypeTells()
{
    TemplateParser parser;
    QVERIFY(parser.parse("[Objects 3]\n"
                         "0x2000 | ARRAY | INTEGER16 | A | text of the object\n"
                         "    0 | UNSIGNED8 | const | 2 | | | no | const | | Highest\n"
                         "    1 | INTEGER16 | rw | 7 | | | RPDO | managed | | One | text of one\n"
                         "    2 | VISIBLE_STRING | ro | \xc3\xa4x | | | no | const | | Two\n",
                         u"a.txt"_s));
    const TemplateProject::Object object = parser.project().objects.value(0);
    QCOMPARE(object.line, 3);
    QCOMPARE(object.data.datatype, 3);
    QCOMPARE(object.data.objecttype, 8);
    QCOMPARE(object.data.category, 1);
    QCOMPARE(object.data.description, u"text of the object"_s);
    QCOMPARE(object.subIndices.size(), 3);
    const auto one = object.subIndices.at(1).data;
    QCOMPARE(one.lowlimit, u"-32768"_s);
    QCOMPARE(one.uplimit, u"32767"_s);
    QCOMPARE(one.size, 2);
    QCOMPARE(one.pdomapping, PDOMapping(PDOMapping::RPDO));
    QCOMPARE(one.allowedaccesstypes, u"const,ro,rw,wo,rww,rwr"_s);
    QCOMPARE(one.description, u"text of one"_s);
    const auto two = object.subIndices.at(2).data;
    QCOMPARE(two.lowlimit, QString());
    QCOMPARE(two.size, 3); // bytes of the UTF-8 text
}

void TemplateParserTest::keepsLimitsThatAreWrittenOut()
{
    TemplateParser parser;
    QVERIFY(parser.parse("[Objects 0]\n0x2000 | VAR | UNSIGNED8 | A\n"
                         "    0 | UNSIGNED8 | rw | 1 | 0x01 | \"\" | no | managed | limit | A\n",
                         u"a.txt"_s));
    const auto sub = parser.project().objects.constFirst().subIndices.constFirst().data;
    QCOMPARE(sub.lowlimit, u"0x01"_s);
    QCOMPARE(sub.uplimit, QString());
    QVERIFY(sub.limitineds);
}

void TemplateParserTest::readsEveryFlag()
{
    const auto read = [](const QByteArray &flags) {
        TemplateParser parser;
        parser.parse(
            "[Objects 0]\n0x2000 | VAR | UNSIGNED8 | A\n 0 | UNSIGNED8 | rw | 1 | | | no | managed | " + flags
                + " | A\n",
            u"a.txt"_s);
        const auto sub = parser.project().objects.value(0).subIndices.value(0).data;
        return QList<bool>{sub.defaultineds, sub.writedefaulttoeds == 1,
                           sub.limitineds,   sub.refuseread,
                           sub.refusewrite,  sub.nvstorage};
    };
    QCOMPARE(read(""), QList<bool>(6, false));
    QCOMPARE(read("default"), (QList<bool>{true, false, false, false, false, false}));
    QCOMPARE(read("eds"), (QList<bool>{false, true, false, false, false, false}));
    QCOMPARE(read("limit"), (QList<bool>{false, false, true, false, false, false}));
    QCOMPARE(read("noread"), (QList<bool>{false, false, false, true, false, false}));
    QCOMPARE(read("nowrite"), (QList<bool>{false, false, false, false, true, false}));
    QCOMPARE(read("store"), (QList<bool>{false, false, false, false, false, true}));
    QCOMPARE(read("store, nowrite,noread , limit,eds,default"), QList<bool>(6, true));
}

void TemplateParserTest::givesAVariableNameToApplicationStorageOnly()
{
    TemplateParser parser;
    QVERIFY(parser.parse("[Objects 0]\n0x2000 | RECORD | | A\n"
                         "    0 | UNSIGNED8 | rw | 2 | | | no | managed | | A\n"
                         "    1 | UNSIGNED8 | rw | 1 | | | no | application  data[0].x | | A\n"
                         "    2 | UNSIGNED8 | rw | 1 | | | no | virtual | | A\n",
                         u"a.txt"_s));
    const auto subs = parser.project().objects.constFirst().subIndices;
    QCOMPARE(subs.at(0).data.implementation, 0);
    QCOMPARE(subs.at(0).data.varname, u" "_s);
    QCOMPARE(subs.at(1).data.implementation, 2);
    QCOMPARE(subs.at(1).data.varname, u"data[0].x"_s);
    QCOMPARE(subs.at(2).data.implementation, 3);
    QCOMPARE(parser.project().objects.constFirst().data.datatype, 0);
}

void TemplateParserTest::derivesPagesAndSignalOrderOfAGroup()
{
    TemplateParser parser;
    QVERIFY(parser.parse("[PGNs 1]\n0x1F004 | receive | 3 | 20 | 5 | A | text\n"
                         "    10 | UNSIGNED2 | 0 | | | managed | X\n"
                         "    11 | VISIBLE_STRING | 8 | 24 | abc | application v | Y | text of Y\n",
                         u"a.txt"_s));
    const TemplateProject::ParameterGroup group = parser.project().groups.value(0);
    QCOMPARE(group.line, 1);
    QCOMPARE(group.number, 0x1F004U);
    QCOMPARE(group.data.edp_dp_key, 1);
    QCOMPARE(group.data.direction, 119);
    QCOMPARE(group.data.cycletime_ms, 20);
    QCOMPARE(group.data.inhibittime_ms, 5);
    QCOMPARE(group.spns.size(), 2);
    QCOMPARE(group.spns.at(0).data.bitsize, 2);
    QCOMPARE(group.spns.at(1).data.bitsize, 24);
    QCOMPARE(group.spns.at(1).data.bitposition, 8);
    QCOMPARE(group.spns.at(1).data.pos, 1);
    QCOMPARE(group.spns.at(1).data.desc, u"text of Y"_s);
}

QTEST_GUILESS_MAIN(TemplateParserTest)
#include "tst_templateparser.moc"
