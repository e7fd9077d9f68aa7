#include "generators/CText.h"
#include "generators/CValues.h"
#include "generators/CodeWriter.h"
#include "support/CCompiler.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <bit>
#include <cmath>

using namespace Qt::StringLiterals;

using CValues::Bits;
using CValues::RealPrecision;
using CValues::Table;

namespace {

constexpr quint32 seed = 20260301;

/** Characters that have a meaning of their own somewhere in C, beside harmless ones. */
QString nastyText(QRandomGenerator &random, int length)
{
    static const QList<QString> pieces{
        u"a"_s,      u"F"_s,      u"0"_s,      u"9"_s,          u"g"_s,    u" "_s,    u"\""_s,
        u"\\"_s,     u"?"_s,      u"?"_s,      u"="_s,          u"/"_s,    u"*"_s,    u"'"_s,
        u"\n"_s,     u"\r"_s,     u"\t"_s,     u"%"_s,          u"\x01"_s, u"\x7f"_s, u"\x1b"_s,
        u"\u00e4"_s, u"\u20ac"_s, u"\u202e"_s, u"\U0001F600"_s, u"x"_s,    u"|"_s,    QString(QChar(0))};
    QString text;
    for (int i = 0; i < length; ++i)
        text += pieces.at(random.bounded(pieces.size()));
    return text;
}

QString hexText(QRandomGenerator &random, int length)
{
    QString text = u"|x"_s;
    for (int i = 0; i < length; ++i)
        text += u"%1"_s.arg(random.bounded(256), 2, 16, '0'_L1);
    return random.bounded(2) == 0 ? text : text.replace(2, text.size() - 2, text.sliced(2).toUpper());
}

/** The bytes that a text of the project stands for, found in another way than the generators do. */
QByteArray bytesOf(const QString &text)
{
    return text.startsWith(u"|x"_s) ? QByteArray::fromHex(text.sliced(2).toLatin1()) : text.toUtf8();
}

} // namespace

/** What gcc and clang make of generated literals, comments and numbers: the same bytes and values. */
class TestCompiledC : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void literalsAndByteListsKeepTheirBytes_data() { compilerRows(); }
    void literalsAndByteListsKeepTheirBytes();
    void commentsEndWhereTheyShall_data() { compilerRows(); }
    void commentsEndWhereTheyShall();
    void numbersKeepTheirValues_data() { compilerRows(); }
    void numbersKeepTheirValues();
    void realConstantsAreExact_data() { compilerRows(); }
    void realConstantsAreExact();
    void wideNumbersKeepTheirBytes_data() { compilerRows(); }
    void wideNumbersKeepTheirBytes();

private:
    static void compilerRows()
    {
        QTest::addColumn<QString>("compiler");
        for (const QString &program : CCompiler::programs())
            QTest::newRow(qPrintable(program)) << program;
    }
    static QStringList strings();
    static QByteArrayList compiledAndRun(const QString &compiler, const TemplateText &program,
                                         std::initializer_list<TemplateValue> values);
};

QByteArrayList TestCompiledC::compiledAndRun(const QString &compiler, const TemplateText &program,
                                             std::initializer_list<TemplateValue> values)
{
    QString text;
    CodeWriter(text).fill(program, values);
    const QTemporaryDir folder;
    const CCompiler c(compiler, folder.path());
    if (!c.write(u"main.c"_s, text.toUtf8()))
        return {"not written"};
    const QString messages = c.build({u"main.c"_s});
    if (messages.isEmpty())
        return c.run();
    qWarning().noquote() << messages.first(qMin(messages.size(), 2000));
    return {};
}

QStringList TestCompiledC::strings()
{
    QStringList list{
        QString(), u"|x"_s, u"plain"_s, u"|x00"_s, u"?\?=?\?/\n?\?'"_s, u"\u00e40\u00e4f\u00e4g"_s};
    QRandomGenerator random(seed);
    for (int i = 0; i < 300; ++i) {
        list.append(u"x"_s + nastyText(random, random.bounded(60))); // without the mark of bytes
        list.append(hexText(random, random.bounded(1, 60)));
    }
    return list;
}

void TestCompiledC::literalsAndByteListsKeepTheirBytes()
{
    QFETCH(QString, compiler);
    const QStringList values = strings();
    QString literals;
    QString elements;
    QString sizes;
    for (const QString &value : values) {
        const QByteArray bytes = CText::stringBytes(value);
        literals += u"\t"_s + CText::literal(value) + u",\n"_s;
        for (const char byte : bytes)
            elements += CText::byteElement(quint8(byte)) + u", "_s;
        sizes += QString::number(bytes.size()) + u", "_s;
    }
    static const TemplateText program(uR"(#include <stdio.h>
static const char *const literals[] = {
$literals$
};
static const unsigned char elements[] = { $elements$ 0x00 };
static const unsigned sizes[] = { $sizes$ };
int main(void)
{
    const unsigned char *element = elements;
    unsigned i, k;
    for (i = 0; i < sizeof(sizes) / sizeof(sizes[0]); i++) {
        for (k = 0; k < sizes[i]; k++)
            printf("%02x", (unsigned)(unsigned char)literals[i][k]);
        printf(literals[i][sizes[i]] == 0 ? " " : " too long ");
        for (k = 0; k < sizes[i]; k++)
            printf("%02x", (unsigned)*element++);
        printf("\n");
    }
    return 0;
}
)"_s);
    const QByteArrayList lines = compiledAndRun(
        compiler, program, {{u"literals", literals}, {u"elements", elements}, {u"sizes", sizes}});
    QCOMPARE(lines.size(), values.size());
    for (qsizetype i = 0; i < values.size(); ++i)
        QCOMPARE(lines[i], bytesOf(values[i]).toHex() + ' ' + bytesOf(values[i]).toHex());
}

// Each comment stands before a declaration that the program needs, once inside a line and once at its end.
void TestCompiledC::commentsEndWhereTheyShall()
{
    QFETCH(QString, compiler);
    QStringList texts{QString(), u"*/"_s,    u"/*"_s,   u"*"_s,   u"/"_s,
                      u"C:\\"_s, u"C:\\ "_s, u"?\?/"_s, u"a\n"_s, u"\u202e\u2066"_s};
    QRandomGenerator random(seed);
    for (int i = 0; i < 300; ++i)
        texts.append(nastyText(random, random.bounded(1, 40)));
    QString declarations;
    QString sum;
    for (qsizetype i = 0; i < texts.size(); ++i) {
        const QString text = CText::comment(texts[i]);
        QVERIFY(!text.contains(u'\n'));
        declarations += u"/* "_s + text + u" */ static const int a"_s + QString::number(i) + u" = 1;\n"_s;
        declarations +=
            u"/*\n * "_s + text + u"\n */\nstatic const int b"_s + QString::number(i) + u" = 1;\n"_s;
        sum += u" + a%1 + b%1"_s.arg(i);
    }
    static const TemplateText program(uR"(#include <stdio.h>
$declarations$
int main(void)
{
    printf("%d\n", 0$sum$);
    return 0;
}
)"_s);
    const QByteArrayList lines =
        compiledAndRun(compiler, program, {{u"declarations", declarations}, {u"sum", sum}});
    QCOMPARE(lines, QByteArrayList{QByteArray::number(2 * texts.size())});
}

void TestCompiledC::numbersKeepTheirValues()
{
    QFETCH(QString, compiler);
    QRandomGenerator random(seed);
    QString tables;
    QString prints;
    QByteArrayList expected;
    const auto add = [&](Table table, const QList<qint64> &values) {
        const CValues::TableForm &form = CValues::form(table);
        tables += u"static const "_s + form.type + u" t_"_s + form.name + u"[] = {\n"_s;
        for (const qint64 value : values) {
            tables += CValues::entry(table, Bits(value), RealPrecision::Constants) + u",\n"_s;
            expected.append(QByteArray::number(value));
        }
        tables += u"};\n"_s;
        prints += u"    for (i = 0; i < sizeof(t_%1) / sizeof(t_%1[0]); i++)\n"
                  "        printf(\"%lld\\n\", (long long)t_%1[i]);\n"_s.arg(form.name);
    };
    const qint64 any = random.bounded(65536);
    add(Table::U8, {0, 1, 127, 128, 255});
    add(Table::U16, {0, any, 65535});
    add(Table::U32, {0, any * 65536, 2147483648LL, 4294967295LL});
    add(Table::I8, {-128, -1, 0, 127});
    add(Table::I16, {-32768, -1, 0, 32767});
    add(Table::I32, {-2147483648LL, -any, 0, 2147483647});
    static const TemplateText program(uR"(#include <stdio.h>
#include <core_datatype.h>
$tables$
int main(void)
{
    unsigned i;
$prints$
    return 0;
}
)"_s);
    QCOMPARE(compiledAndRun(compiler, program, {{u"tables", tables}, {u"prints", prints}}), expected);
}

void TestCompiledC::realConstantsAreExact()
{
    QFETCH(QString, compiler);
    QList<quint32> values{0U, 0x3F800000U, 0x7F7FFFFFU, 0xFF7FFFFFU, 0x00800000U, 0x3DCCCCCDU};
    QRandomGenerator random(seed);
    while (values.size() < 500) {
        const quint32 bits = random.generate();
        if (std::isnormal(std::bit_cast<float>(bits)))
            values.append(bits);
    }
    QString rows;
    QByteArrayList expected;
    for (const quint32 bits : std::as_const(values)) {
        rows += CValues::entry(Table::R32, bits, RealPrecision::Constants) + u",\n"_s;
        expected.append(QByteArray::number(bits, 16));
    }
    static const TemplateText program(uR"(#include <stdio.h>
#include <string.h>
#include <core_datatype.h>
static const REAL32 values[] = {
$rows$
};
int main(void)
{
    unsigned i;
    UNSIGNED32 bits;
    for (i = 0; i < sizeof(values) / sizeof(values[0]); i++) {
        memcpy(&bits, &values[i], sizeof(bits));
        printf("%x\n", (unsigned)bits);
    }
    return 0;
}
)"_s);
    QCOMPARE(compiledAndRun(compiler, program, {{u"rows", rows}}), expected);
}

void TestCompiledC::wideNumbersKeepTheirBytes()
{
    QFETCH(QString, compiler);
    QRandomGenerator random(seed);
    QString tables;
    QString prints;
    QByteArrayList expected;
    for (const Table table : {Table::U24, Table::U40, Table::U48, Table::U64, Table::I24}) {
        const CValues::TableForm &form = CValues::form(table);
        const int bits = 8 * form.macroBytes;
        tables += u"static const "_s + form.type + u" t_"_s + form.name + u"[] = {\n"_s;
        for (const Bits value : {Bits(0), Bits(1), ~Bits(0), random.generate64(), random.generate64()}) {
            tables += CValues::entry(table, value, RealPrecision::Variables) + u",\n"_s;
            expected.append(QByteArray::number(quint64(bits < 64 ? value & ((Bits(1) << bits) - 1) : value)));
        }
        tables += u"};\n"_s;
        prints += u"    for (i = 0; i < 5; i++)\n"
                  "        print(t_%1[i].val, sizeof(t_%1[i].val));\n"_s.arg(form.name);
    }
    static const TemplateText program(uR"(#include <stdio.h>
#include <core_datatype.h>
$tables$
static void print(const UNSIGNED8 *bytes, unsigned count)
{
    unsigned long long value = 0;
    while (count > 0)
        value = value << 8 | bytes[--count];
    printf("%llu\n", value);
}
int main(void)
{
    unsigned i;
$prints$
    return 0;
}
)"_s);
    QCOMPARE(compiledAndRun(compiler, program, {{u"tables", tables}, {u"prints", prints}}), expected);
}

QTEST_GUILESS_MAIN(TestCompiledC)
#include "tst_compiledc.moc"
