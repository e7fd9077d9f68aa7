#include "check/CheckTest.h"

using namespace CheckTest;
using namespace CheckTest::Texts;

/** What the check says about one sub-index. */
class TestSubIndexRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void limitChecksNeedTheGlobalSetting_data();
    void limitChecksNeedTheGlobalSetting() { checkCANopenRow(); }
    void subIndicesOfArraysAndRecordsNeedAName_data();
    void subIndicesOfArraysAndRecordsNeedAName() { checkCANopenRow(); }
    void applicationVariablesNeedACName_data();
    void applicationVariablesNeedACName() { checkCANopenRow(); }
    void accessTypesAreTheSixWordsOfCia306_data();
    void accessTypesAreTheSixWordsOfCia306() { checkCANopenRow(); }
    void aManagedConstantIsNotWritten_data();
    void aManagedConstantIsNotWritten() { checkCANopenRow(); }
    void textsHaveNoManagedVariable_data();
    void textsHaveNoManagedVariable() { checkCANopenRow(); }
    void dataTypesAreKnown_data();
    void dataTypesAreKnown() { checkCANopenRow(); }
    void valuesStayInTheirLimits_data();
    void valuesStayInTheirLimits() { checkCANopenRow(); }
    void limitsOfWhichTheUpperOneSwitchesTheRuleOff_data();
    void limitsOfWhichTheUpperOneSwitchesTheRuleOff() { checkCANopenRow(); }
    void someTypesHaveNoLimitCheck_data();
    void someTypesHaveNoLimitCheck() { checkCANopenRow(); }
};

void TestSubIndexRules::limitChecksNeedTheGlobalSetting_data()
{
    const QString inactive =
        "Object 0x2001-0x00: Limit Check is activated, but it is deactivated in the global settings."_warning;
    const auto withSetting = [](const char *value) {
        return [=](Project &p) {
            p.limits(0x2001, 0, "0", "10");
            p.set("limit_check", value);
        };
    };
    addRows({
        {"setting 0", withSetting("0"), {inactive}},
        {"setting empty", withSetting(""), {inactive}},
        {"setting 2", withSetting("2"), {inactive}},
        {"setting no number", withSetting("yes"), {inactive}},
        {"setting 1", withSetting("1"), {}},
        {"no limit check", [](Project &p) { p.set("limit_check", "0"); }, {}},
        {"sub-index in hexadecimal",
         [](Project &p) {
             p.put(0x2000, 0x1C, sub("Late", CAN::Unsigned8, "rw", "0"));
             p.limits(0x2000, 0x1C, "0", "10");
             p.value(0x2000, 0, "28");
         },
         {"Object 0x2000-0x1c: Limit Check is activated, but it is deactivated in the global "
          "settings."_warning}},
    });
}

void TestSubIndexRules::subIndicesOfArraysAndRecordsNeedAName_data()
{
    const auto unname = [](quint16 index, quint8 subIndex) {
        return [=](Project &p) { p.edit(index, subIndex, [](Sub &s) { s.name.clear(); }); };
    };
    addRows({
        {"array, sub-index 0",
         unname(0x2000, 0),
         {"Object 0x2000-0x00: The object does not have a name. (Required for EDS)"_error}},
        {"array, sub-index 2",
         unname(0x2000, 2),
         {"Object 0x2000-0x02: The object does not have a name. (Required for EDS)"_error}},
        {"record",
         unname(0x1018, 1),
         {"Object 0x1018-0x01: The object does not have a name. (Required for EDS)"_error}},
        {"variable", unname(0x2001, 0), {}},
        {"other object code",
         [](Project &p) {
             p.array(0x2100, {"1"});
             p.object(0x2100, CANopen::Domain);
             p.edit(0x2100, 1, [](Sub &s) { s.name.clear(); });
         },
         {}},
    });
}

void TestSubIndexRules::applicationVariablesNeedACName_data()
{
    const QString missing = "Object 0x2001-0x00: The variable name is missing."_error;
    const QString invalid =
        "Object 0x2001-0x00: The variable name contains invalid characters like spaces or commas."_error;
    const auto named = [](const char *name) { return [=](Project &p) { p.varName(0x2001, 0, name); }; };
    addRows({
        {"none", named(""), {missing}},
        {"blank", named("a b"), {invalid}},
        {"blank at the end", named("a "), {invalid}},
        {"a single blank", named(" "), {invalid}},
        {"comma", named("a,b"), {invalid}},
        {"semicolon", named("a;"), {invalid}},
        {"all three, told once", named("a b,c;"), {invalid}},
        {"member of an array", named("data[3].value"), {}},
        {"variable of the project", named("data_{$i-0x2000}"), {}},
        {"managed variable with blanks",
         [](Project &p) {
             p.varName(0x2001, 0, "a b");
             p.implementation(0x2001, 0, CANopen::ManagedVariable);
         },
         {}},
        {"managed variable without name",
         [](Project &p) {
             p.varName(0x2001, 0, "");
             p.implementation(0x2001, 0, CANopen::ManagedVariable);
         },
         {}},
        {"virtual object without name",
         [](Project &p) {
             p.varName(0x2001, 0, "");
             p.implementation(0x2001, 0, CANopen::VirtualObject);
         },
         {}},
    });
}

void TestSubIndexRules::accessTypesAreTheSixWordsOfCia306_data()
{
    QList<Row> rows;
    for (const char *word : {"ro", "const", "rw", "rwr", "rww", "wo"})
        rows.append({word, [=](Project &p) { p.access(0x1017, 0, word); }, {}});
    for (const char *word : {"", "RW", "Ro", "w", "rw ", "rwrw", "CONST", "read"})
        rows.append({"'" + QByteArray(word) + "' is none",
                     [=](Project &p) { p.access(0x1017, 0, word); },
                     {QStringLiteral("<strong>Error: </strong>Object 0x1017-0x00: The access type '%1' is "
                                     "invalid. Use ro, rw, const, wo, rww or rwr instead.")
                          .arg(QLatin1StringView(word))}});
    addRows(rows);
}

void TestSubIndexRules::aManagedConstantIsNotWritten_data()
{
    const QString written =
        "Object 0x1017-0x00: The implementation type is Managed Const, but the access type "
        "allows write access."_error;
    const auto constant = [](const char *access) {
        return [=](Project &p) {
            p.access(0x1017, 0, access);
            p.implementation(0x1017, 0, CANopen::ManagedConst);
        };
    };
    addRows({
        {"rw", constant("rw"), {written}},
        {"wo", constant("wo"), {written}},
        {"rww", constant("rww"), {written}},
        {"rwr", constant("rwr"), {written}},
        {"const", constant("const"), {}},
        {"ro", constant("ro"), {}},
        {"unknown word with a small w",
         constant("wx"),
         {"Object 0x1017-0x00: The access type 'wx' is invalid. Use ro, rw, const, wo, rww or rwr "
          "instead."_error,
          written}},
        {"unknown word with a capital W",
         constant("W"),
         {"Object 0x1017-0x00: The access type 'W' is invalid. Use ro, rw, const, wo, rww or rwr "
          "instead."_error}},
        {"virtual object", [](Project &p) { p.implementation(0x1017, 0, CANopen::VirtualObject); }, {}},
    });
}

void TestSubIndexRules::textsHaveNoManagedVariable_data()
{
    const auto text = [](int type, int implementation) {
        return [=](Project &p) {
            p.type(0x2002, 0, type, "abc");
            p.implementation(0x2002, 0, implementation);
        };
    };
    const QString visible = "Object 0x2002-0x00: The implementation type 'Managed Variable' is not possible "
                            "for visible strings. Use 'Managed Const' or 'Variable' instead."_error;
    const QString utf8 = "Object 0x2002-0x00: The implementation type 'Managed Variable' is not possible "
                         "for UTF8 strings. Use 'Managed Const' or 'Variable' instead."_error;
    addRows({
        {"octet string, managed variable",
         text(CAN::OctetString, CANopen::ManagedVariable),
         {"Object 0x2002-0x00: The implementation type 'Managed Variable' is not possible for octet "
          "strings."_error}},
        {"octet string, constant", text(CAN::OctetString, CANopen::ManagedConst), {}},
        {"octet string, virtual", text(CAN::OctetString, CANopen::VirtualObject), {}},
        {"visible string, managed variable", text(CAN::VisibleString, CANopen::ManagedVariable), {visible}},
        {"visible string, constant", text(CAN::VisibleString, CANopen::ManagedConst), {}},
        {"UTF-8 string, managed variable", text(CAN::Utf8String, CANopen::ManagedVariable), {utf8}},
        {"UTF-8 string, constant", text(CAN::Utf8String, CANopen::ManagedConst), {}},
        {"Unicode string, managed variable", text(CAN::UnicodeString, CANopen::ManagedVariable), {}},
    });
}

void TestSubIndexRules::dataTypesAreKnown_data()
{
    addRows({
        {"none",
         [](Project &p) { p.type(0x2002, 0, CAN::NoDataType, "0"); },
         {"Object 0x2002-0x00: Unknown or unsupported datatype."_error}},
        {"domain", [](Project &p) { p.type(0x2002, 0, CAN::Domain, ""); }, {}},
        {"domain as a managed variable",
         [](Project &p) {
             p.type(0x2002, 0, CAN::Domain, "");
             p.implementation(0x2002, 0, CANopen::ManagedVariable);
         },
         {}},
        {"a number without a name", [](Project &p) { p.type(0x2002, 0, 99, "text"); }, {}},
    });
}

void TestSubIndexRules::valuesStayInTheirLimits_data()
{
    const QString outside = "Object 0x1017-0x00: The defaultvalue is not in the range of the limits."_error;
    const auto limited = [](const char *low, const char *value, const char *up, int type = CAN::Unsigned16) {
        return [=](Project &p) {
            p.set("limit_check", "1");
            p.type(0x1017, 0, type, value);
            p.limits(0x1017, 0, low, up);
        };
    };
    addRows({
        {"inside", limited("1", "5", "10"), {}},
        {"at the lower limit", limited("5", "5", "10"), {}},
        {"at the upper limit", limited("1", "10", "10"), {}},
        {"below", limited("5", "4", "10"), {outside}},
        {"above", limited("5", "11", "10"), {outside}},
        {"hexadecimal", limited("0x10", "15", "0x20"), {outside}},
        {"hexadecimal inside", limited("0x10", "0x1F", "0x20"), {}},
        {"negative numbers", limited("-10", "-11", "-5", CAN::Integer16), {outside}},
        {"negative inside", limited("-10", "-7", "-5", CAN::Integer16), {}},
        {"limits the wrong way round", limited("10", "7", "5"), {outside}},
        {"lower limit that is no number counts as 0", limited("x", "-1", "5", CAN::Integer16), {outside}},
        {"value that is no number counts as 0", limited("1", "$NODEID+1", "5"), {outside}},
        {"empty value counts as 0", limited("1", "", "5"), {outside}},
        {"empty value inside", limited("0", "", "5"), {}},
        {"64 bits", limited("0", "9223372036854775807", "9223372036854775806", CAN::Unsigned64), {outside}},
        {"no limit check",
         [=](Project &p) {
             limited("5", "1", "10")(p);
             p.edit(0x1017, 0, [](Sub &s) { s.limitineds = false; });
         },
         {}},
    });
}

void TestSubIndexRules::limitsOfWhichTheUpperOneSwitchesTheRuleOff_data()
{
    const auto limited = [](const char *low, const char *value, const char *up) {
        return [=](Project &p) {
            p.set("limit_check", "1");
            p.type(0x1017, 0, CAN::Unsigned32, value);
            p.limits(0x1017, 0, low, up);
        };
    };
    const QString outside = "Object 0x1017-0x00: The defaultvalue is not in the range of the limits."_error;
    addRows({
        {"0x7FFFFF, value inside", limited("0", "10", "0x7FFFFF"), {}},
        {"0x7FFFFF, value above", limited("0", "0x900000", "0x7FFFFF"), {}},
        {"0x7FFFFF, value below", limited("20", "10", "0x7fffff"), {}},
        {"8388607, value above", limited("0", "0x900000", "8388607"), {}},
        {"0x7FFFFE, value above", limited("0", "0x900000", "0x7FFFFE"), {outside}},
        {"0x800000, value above", limited("0", "0x900000", "0x800000"), {outside}},
        {"empty", limited("5", "4", ""), {}},
        {"no number", limited("5", "4", "max"), {}},
        {"beyond signed 64 bits", limited("5", "4", "0xFFFFFFFFFFFFFFFF"), {}},
    });
}

void TestSubIndexRules::someTypesHaveNoLimitCheck_data()
{
    const auto limited = [](int type, int implementation = CANopen::ManagedConst) {
        return [=](Project &p) {
            p.set("limit_check", "1");
            p.type(0x2002, 0, type, "20");
            p.implementation(0x2002, 0, implementation);
            p.limits(0x2002, 0, "0", "10");
        };
    };
    const QString outside = "Object 0x2002-0x00: The defaultvalue is not in the range of the limits."_error;
    addRows({
        {"octet string", limited(CAN::OctetString), {}},
        {"visible string", limited(CAN::VisibleString), {}},
        {"domain", limited(CAN::Domain), {}},
        {"octet string with its own error",
         limited(CAN::OctetString, CANopen::ManagedVariable),
         {"Object 0x2002-0x00: The implementation type 'Managed Variable' is not possible for octet "
          "strings."_error}},
        {"UTF-8 string", limited(CAN::Utf8String), {outside}},
        {"unknown type",
         limited(CAN::NoDataType),
         {"Object 0x2002-0x00: Unknown or unsupported datatype."_error, outside}},
        {"UNSIGNED8", limited(CAN::Unsigned8), {outside}},
    });
}

QTEST_GUILESS_MAIN(TestSubIndexRules)
#include "tst_subindexrules.moc"
