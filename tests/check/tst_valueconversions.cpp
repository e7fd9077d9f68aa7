#include "check/CheckTest.h"

using namespace CheckTest;
using namespace CheckTest::Texts;

/** Which texts have the form of a value, and what the check says about those that have not. */
class TestValueConversions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void textsAndTypesWithoutANumericFormAreValid_data();
    void textsAndTypesWithoutANumericFormAreValid();
    void unsignedTypesTakeNumbersAndNodeIdExpressions_data();
    void unsignedTypesTakeNumbersAndNodeIdExpressions();
    void signedTypesTakeSigned32BitNumbers_data();
    void signedTypesTakeSigned32BitNumbers();
    void realsTake32BitFloats_data();
    void realsTake32BitFloats();
    void failedConversionsAreToldFirstAndCountTwice_data();
    void failedConversionsAreToldFirstAndCountTwice() { checkCANopenRow(); }
    void theDefaultValueIsMeantNotTheCurrentOne();

private:
    static void addTexts(const QList<int> &types, const QList<QPair<const char *, bool>> &texts);
    static void compareTexts();
};

void TestValueConversions::addTexts(const QList<int> &types, const QList<QPair<const char *, bool>> &texts)
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isValid");
    for (const int type : types)
        for (const auto &[text, isValid] : texts)
            QTest::addRow("%d '%s'", type, text) << type << QString::fromLatin1(text) << isValid;
}

void TestValueConversions::compareTexts()
{
    QFETCH(int, type);
    QFETCH(QString, text);
    QTEST(ModelChecker::isValidValue(type, text), "isValid");
}

void TestValueConversions::textsAndTypesWithoutANumericFormAreValid_data()
{
    addTexts({0,  9,  10, 11, 12, 13,  14,  15,  17,  18,  19,  20,  21,  23,  26,  28,
              50, 51, 52, 53, 99, 106, 107, 112, 117, 118, 119, 120, 121, 124, 129, 65535},
             {{"", true}, {"text", true}, {"-1", true}, {"$nodeid", true}, {"1.5.1", true}});
}

void TestValueConversions::textsAndTypesWithoutANumericFormAreValid()
{
    compareTexts();
}

void TestValueConversions::unsignedTypesTakeNumbersAndNodeIdExpressions_data()
{
    addTexts({1, 5, 6, 7, 22, 24, 25, 27, 100, 101, 102, 103, 104, 105},
             {{"", true},
              {"0", true},
              {"4294967296", true}, // the form counts, not the range of the type
              {"18446744073709551615", true},
              {"18446744073709551616", false},
              {"0xFFFFFFFFFFFFFFFF", true},
              {"0x1FFFFFFFFFFFFFFFF", false},
              {"0x1F", true},
              {"0x1f", true},
              {"1F", false},
              {"0x", false},
              {"0xG", false},
              {"017", true},
              {"08", false}, // a leading 0 is the prefix of octal numbers
              {"-1", false},
              {"1.5", false},
              {"text", false},
              {"1,2", false},
              {"$NODEID+0x200", true},
              {"0x200+$NODEID", true},
              {"$NODEID", true},
              {"anything with $NODEID in it", true},
              {"$nodeid+0x200", false},
              {"$NodeId+0x200", false},
              {"NODEID+0x200", false}});
}

void TestValueConversions::unsignedTypesTakeNumbersAndNodeIdExpressions()
{
    compareTexts();
}

void TestValueConversions::signedTypesTakeSigned32BitNumbers_data()
{
    addTexts({2, 3, 4, 16},
             {{"", true},
              {"0", true},
              {"-5", true},
              {"100000", true},
              {"2147483647", true},
              {"2147483648", false},
              {"-2147483648", true},
              {"-2147483649", false},
              {"0x7FFFFFFF", true},
              {"0x80000000", false},
              {"-0x10", true},
              {"$NODEID", false},
              {"$NODEID+1", false},
              {"text", false},
              {"1.5", false}});
}

void TestValueConversions::signedTypesTakeSigned32BitNumbers()
{
    compareTexts();
}

void TestValueConversions::realsTake32BitFloats_data()
{
    addTexts({8},
             {{"", true},
              {"0", true},
              {"-1.5", true},
              {"1e10", true},
              {"3.4E+38", true},
              {"1e39", false},
              {"1,5", false},
              {"0x10", false},
              {"$NODEID", false},
              {"text", false}});
}

void TestValueConversions::realsTake32BitFloats()
{
    compareTexts();
}

void TestValueConversions::failedConversionsAreToldFirstAndCountTwice_data()
{
    const auto fail = [](quint16 index, quint8 subIndex) {
        return [=](Project &p) { p.value(index, subIndex, "?"); };
    };
    addRows({
        {"variable", fail(0x2001, 0), {"Value conversion failed with Object 0x2001-0x0."_error}},
        {"array", fail(0x2000, 2), {"Value conversion failed with Object 0x2000-0x2."_error}},
        {"sub-index in decimal",
         [](Project &p) {
             p.put(0x2000, 31, sub("Late", CAN::Unsigned8, "rw", "?"));
             p.value(0x2000, 0, "31");
         },
         {"Value conversion failed with Object 0x2000-0x31."_error}},
        {"below 0x1000, before all others",
         [=](Project &p) {
             fail(0x2001, 0)(p);
             p.variable(0x0005, sub("Type", CAN::Unsigned8, "ro", "?"));
         },
         {"Value conversion failed with Object 0x0005-0x0."_error,
          "Value conversion failed with Object 0x2001-0x0."_error}},
        {"before the rules for objects",
         [=](Project &p) {
             fail(0x2001, 0)(p);
             p.remove(0x1001);
         },
         {"Value conversion failed with Object 0x2001-0x0."_error,
          "Object 0x1001 (Error Register) does not exist, but it is mandatory according to CANopen "
          "specification."_error}},
        {"text", [](Project &p) { p.value(0x2002, 0, "?"); }, {}},
    });
}

void TestValueConversions::theDefaultValueIsMeantNotTheCurrentOne()
{
    Project project;
    project.edit(0x2001, 0, [](Sub &s) { s.currentvalue = "?"; });
    project.edit(0x1018, 1, [](Sub &s) { s.currentvalue = "0x2B7"; });
    project.edit(0x2000, 0, [](Sub &s) { s.currentvalue = "9"; });
    compare(Checker().checkCANopen(project), {});
}

QTEST_GUILESS_MAIN(TestValueConversions)
#include "tst_valueconversions.moc"
