#include "generators/canopen/DictionaryDesk.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;

/** The default values of string variables, and gen_user.h that offers the function for them. */
class TestObjDictStrings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        StoreTest::prepareApplication();
        qputenv("SOURCE_DATE_EPOCH", "1700000000");
    }
    void stringDefaultsAreCopiedByAFunction();
    void bytesOfAStringBreakTheLine();
    void bytesOfAStringSuitASignedChar();
    void whatCopiesIncludesTheHeaderForIt();
    void onlyVariableTextsHaveDefaults_data();
    void onlyVariableTextsHaveDefaults();
    void withoutTextsTheFunctionCopiesNothing();
    void variableNamesDoNotBreakComments();
    void theJ1939ServerHasNoStringDefaults();
    void theUserHeaderIsWritten();
    void theUserHeaderOfSeveralLines();
    void theUserHeaderIsTheSameForBothStacks();
    void withoutStringDefaultsTheUserHeaderIsDeleted();
    void aUserHeaderThatCannotBeWrittenFailsTheRun();
};

void TestObjDictStrings::stringDefaultsAreCopiedByAFunction()
{
    DictionaryDesk desk;
    desk.set(u"generate_string_defaults"_s, u"1"_s);
    desk.object(0x2000,
                {{.type = CAN::VisibleString,
                  .value = u"Pump"_s,
                  .implementation = CANopen::ApplicationVariable,
                  .variable = u"deviceName"_s},
                 {.type = CAN::VisibleString,
                  .value = QString(),
                  .implementation = CANopen::ApplicationVariable,
                  .variable = u"place"_s}});
    desk.variable(0x2abc,
                  {.type = CAN::OctetString,
                   .value = u"|x0102"_s,
                   .implementation = CANopen::ApplicationVariable,
                   .variable = u"KEY(1)"_s},
                  1);
    const QString text = desk.generate();
    QVERIFY2(text.contains(u"\n/* definition of string default values for variables */\n"
                           "static CORE_CONST char stringDefaultValues[] = {\n"
                           "/* deviceName */ \n0x50, 0x75, 0x6d, 0x70, \n"
                           "/* place */ \n\n"
                           "/* KEY(1) */ \n0x01, 0x02, \n"
                           "0x00}; \n\n"
                           "\n/* definition of application variables */\n"_s),
             qPrintable(text));
    QVERIFY(text.endsWith(u"\n\nRET_T userOverwriteStringDefaultvalues(void)\n"
                          "{\n"
                          "    /* 0: 8192 - 0 */\n"
                          "    memcpy(deviceName, &stringDefaultValues[0], 4);\n"
                          "    /* 0: 8192 - 1 */\n"
                          "    memcpy(place, &stringDefaultValues[4], 0);\n"
                          "    /* 1: 10940 - 0 */\n"
                          "    memcpy(KEY(1), &stringDefaultValues[4], 2);\n"
                          "\n    return(RET_OK);\n"
                          "}\n"_s));
    QVERIFY(desk.generate(false).contains("static CO_CONST char stringDefaultValues[] = {\n"_L1));
}

void TestObjDictStrings::bytesOfAStringBreakTheLine()
{
    DictionaryDesk desk;
    desk.set(u"generate_string_defaults"_s, u"1"_s);
    desk.variable(0x2000,
                  {.type = CAN::VisibleString,
                   .value = u"aaaaaaaaaaaaaab"_s,
                   .implementation = CANopen::ApplicationVariable,
                   .variable = u"v"_s});
    const QString line = u"0x61, "_s.repeated(13) + u'\n';
    QVERIFY(desk.generate().contains(QString(u"/* v */ \n"_s + line + u"0x61, 0x62, \n0x00}; \n\n"_s)));
}

void TestObjDictStrings::bytesOfAStringSuitASignedChar()
{
    DictionaryDesk desk;
    desk.set(u"generate_string_defaults"_s, u"1"_s);
    desk.variable(0x2000,
                  {.type = CAN::VisibleString,
                   .value = u"|x7f80ff"_s,
                   .implementation = CANopen::ApplicationVariable,
                   .variable = u"v"_s});
    QVERIFY(desk.generate().contains("/* v */ \n0x7f, (char)0x80, (char)0xff, \n0x00}; \n"_L1));
}

void TestObjDictStrings::whatCopiesIncludesTheHeaderForIt()
{
    DictionaryDesk desk;
    desk.set(u"generate_string_defaults"_s, u"1"_s);
    QVERIFY(!desk.generate().contains("string.h"_L1));
    desk.variable(0x2000,
                  {.type = CAN::VisibleString,
                   .value = u"a"_s,
                   .implementation = CANopen::ApplicationVariable,
                   .variable = u"v"_s});
    QVERIFY(desk.generate().contains(" */\n#include <string.h>\n#include <stdlib.h>\n\n"_L1));
    desk.write(u"no_stdlib_include.txt"_s, {});
    QVERIFY(!desk.generate().contains("string.h"_L1));
}

void TestObjDictStrings::onlyVariableTextsHaveDefaults_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("implementation");
    QTest::addColumn<bool>("copied");
    QTest::newRow("visible string") << int(CAN::VisibleString) << 2 << true;
    QTest::newRow("octet string") << int(CAN::OctetString) << 2 << true;
    QTest::newRow("constant") << int(CAN::VisibleString) << 1 << false;
    QTest::newRow("UTF-8 string") << int(CAN::Utf8String) << 2 << false;
    QTest::newRow("domain") << int(CAN::Domain) << 2 << false;
    QTest::newRow("number") << int(CAN::Unsigned8) << 2 << false;
}

void TestObjDictStrings::onlyVariableTextsHaveDefaults()
{
    QFETCH(int, type);
    QFETCH(int, implementation);
    DictionaryDesk desk;
    desk.set(u"generate_string_defaults"_s, u"1"_s);
    desk.variable(0x2000,
                  {.type = type, .value = u"7"_s, .implementation = implementation, .variable = u"v"_s});
    QTEST(desk.generate().contains("memcpy(v, &stringDefaultValues[0], 1);"_L1), "copied");
}

void TestObjDictStrings::withoutTextsTheFunctionCopiesNothing()
{
    DictionaryDesk desk;
    desk.set(u"generate_string_defaults"_s, u"1"_s);
    const QString text = desk.generate();
    QVERIFY(
        text.endsWith(u"\n\nRET_T userOverwriteStringDefaultvalues(void)\n{\n\n    return(RET_OK);\n}\n"_s));
    QVERIFY(!text.contains("stringDefaultValues[]"_L1)); // nothing would use it
    desk.set(u"generate_string_defaults"_s, u"0"_s);
    QVERIFY(!desk.generate().contains("userOverwriteStringDefaultvalues"_L1));
}

void TestObjDictStrings::variableNamesDoNotBreakComments()
{
    DictionaryDesk desk;
    desk.set(u"generate_string_defaults"_s, u"1"_s);
    desk.variable(0x2000,
                  {.type = CAN::VisibleString,
                   .value = u"a"_s,
                   .implementation = CANopen::ApplicationVariable,
                   .variable = u"(char *)p[2*/*two*/2]"_s});
    QVERIFY(!desk.generate().contains("/* (char *)p[2*/"_L1));
}

void TestObjDictStrings::theJ1939ServerHasNoStringDefaults()
{
    DictionaryDesk desk;
    desk.forJ1939Server = true;
    desk.set(u"generate_string_defaults"_s, u"1"_s);
    desk.variable(0x2000,
                  {.type = CAN::VisibleString,
                   .value = u"a"_s,
                   .implementation = CANopen::ApplicationVariable,
                   .variable = u"v"_s});
    const QString text = desk.generate();
    QVERIFY(text.contains("#include <gen_user.h>\n"_L1));
    QVERIFY(!text.contains("stringDefaultValues"_L1));
    QVERIFY(!text.contains("userOverwriteStringDefaultvalues"_L1));
}

void TestObjDictStrings::theUserHeaderIsWritten()
{
    DictionaryDesk desk;
    desk.set(u"generate_string_defaults"_s, u"1"_s);
    QVERIFY(Generated::includes(desk.generate())
                .contains("#include <gen_indication.h>\n#include <gen_user.h>\n\n"_L1));
    QCOMPARE(desk.read(u"gen_user.h"_s), uR"(/*
 * gen_user.h for Pump - generated by CANopen NodeSmith 4.3.2
 */

/* protect against multiple inclusion of the file */
#ifndef GEN_USER_H
#define GEN_USER_H 1

#include <gen_define.h>
#include <co_canopen.h>
/* prototype for function to overwrite predefined connection set */
RET_T userOverwriteCobIdSettings(void);

/* prototype for function to set default values of strings */
RET_T userOverwriteStringDefaultvalues(void);

#endif /* GEN_USER */
)"_s);
}

void TestObjDictStrings::theUserHeaderOfSeveralLines()
{
    DictionaryDesk desk;
    desk.set(u"generate_string_defaults"_s, u"2"_s);
    desk.variable(0x2000, {}, 1);
    desk.generate();
    QVERIFY(desk.read(u"gen_user.h"_s)
                .contains("RET_T userOverwriteCobIdSettings(void);\n"
                          "RET_T userOverwriteCobIdSettingsLine(UNSIGNED8 canLine);\n\n"_L1));
}

void TestObjDictStrings::theUserHeaderIsTheSameForBothStacks()
{
    DictionaryDesk desk;
    desk.set(u"generate_string_defaults"_s, u"1"_s);
    desk.generate();
    const QString v4 = desk.read(u"gen_user.h"_s);
    desk.generate(false);
    QCOMPARE(desk.read(u"gen_user.h"_s), v4);
}

void TestObjDictStrings::withoutStringDefaultsTheUserHeaderIsDeleted()
{
    DictionaryDesk desk;
    desk.write(u"gen_user.h"_s, "of an earlier run");
    QVERIFY(!desk.generate().contains("gen_user.h"_L1));
    QVERIFY(!desk.exists(u"gen_user.h"_s));
}

void TestObjDictStrings::aUserHeaderThatCannotBeWrittenFailsTheRun()
{
    DictionaryDesk desk;
    desk.set(u"generate_string_defaults"_s, u"1"_s);
    QVERIFY(QDir(desk.folder.path()).mkdir(u"gen_user.h"_s));
    QVERIFY(desk.generate().endsWith(u"}\n"_s)); // this file is whole all the same
    QVERIFY2(desk.error.contains("gen_user.h"_L1), qPrintable(desk.error));
}

QTEST_GUILESS_MAIN(TestObjDictStrings)
#include "tst_objdictstrings.moc"
