#include "generators/canopen/ValueTableWriter.h"

#include "generators/CText.h"
#include "generators/CodeWriter.h"
#include "generators/Dialect.h"
#include "generators/ObjectKey.h"
#include "generators/canopen/ObjectDictionaryView.h"
#include "generators/canopen/VariablePointers.h"

#include <array>

using namespace Qt::StringLiterals;

using CValues::RealPrecision;
using CValues::Table;

/** Tables of texts or blocks of data that the application owns, with two tables of lengths. */
struct TextTableForm
{
    Table table;
    QStringView head;
    QStringView lengthHead;
};

namespace {

constexpr std::array variableTables{Table::U8,  Table::U16, Table::U24, Table::U32, Table::U40, Table::U48,
                                    Table::U64, Table::I8,  Table::I16, Table::I24, Table::I32, Table::R32};

constexpr std::array constantTables{Table::U8,  Table::U16, Table::U32, Table::U24, Table::U40, Table::U48,
                                    Table::U64, Table::I8,  Table::I16, Table::I24, Table::I32, Table::R32};

constexpr std::array<TextTableForm, 4> textTables{{
    {Table::VisString, u"static VIS_STRING\tod_", u"static UNSIGNED32\tod_"},
    {Table::Utf8String, u"static VIS_STRING\tod_", u"static UNSIGNED32\tod_"},
    {Table::OctetString, u"static OCTET_STRING\t*od_", u"static UNSIGNED32 CORE_STORAGE_CLASS\tod_"},
    {Table::Domain, u"static CO_DOMAIN_PTR\tod_", u"static UNSIGNED32 CORE_STORAGE_CLASS\tod_"},
}};

constexpr auto separator = u",\n";

/** Types of eight signed bits stand with one more blank behind them. */
QString variableType(Table table)
{
    const QString type = CValues::form(table).type.toString();
    return table == Table::I8 ? QString(type + u' ') : type;
}

/** A text as an element; one of several literals has parentheses, as it would look like a missing comma. */
QString literalElement(const QString &value)
{
    constexpr auto seam = "\" \""_L1; // quotation marks of the text itself stand behind backslashes
    const QString literal = CText::literal(value);
    return literal.contains(seam) ? u'(' + literal + u')' : literal;
}

/** A text that a compiler need not take as a literal: an array without a name, ended like a literal. */
QString arrayElement(QStringView type, const QByteArray &bytes)
{
    constexpr int bytesOfLine = 16;
    QString result = u"(%1)(const char[]){"_s.arg(type);
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        result += i % bytesOfLine == 0 ? "\n\t\t"_L1 : " "_L1;
        result += CText::charElement(bytes.at(i)) + u',';
    }
    return result + u"\n\t\t0x00}"_s;
}

QString textElement(QStringView type, const QString &value)
{
    constexpr qsizetype longestLiteral = 4095; // ISO C99, 5.2.4.1
    const QByteArray bytes = CText::stringBytes(value);
    return bytes.size() > longestLiteral ? arrayElement(type, bytes) : literalElement(value);
}

} // namespace

void ValueTableWriter::writeManagedVariables(CodeWriter &out) const
{
    out << u"\n/* definition of managed variables */\n";
    for (const Table table : variableTables)
        if (!m_view.managed[table].isEmpty())
            writeManagedTable(out, table);
}

void ValueTableWriter::writeManagedTable(CodeWriter &out, Table table) const
{
    static const DialectTemplate declaration(
        u"static $type$ CORE_STORAGE_CLASS\tod_$table$[$count$]$specifier$$values$;\n"_s);
    static const TemplateText initialisers(uR"(= {
$rows$
})"_s);
    const QString &specifier = m_view.settings.memorySpecifier;
    const auto rows = [&](CodeWriter &list) { writeInitialisers(list, table); };
    const auto values = [&](CodeWriter &list) {
        if (m_view.settings.initVariables)
            list.fill(initialisers, {{u"rows", rows}});
    };
    out.fill(declaration.in(m_dialect),
             {{u"type", variableType(table)},
              {u"table", CValues::form(table).name},
              {u"count", m_view.managed[table].size()},
              {u"specifier", specifier.isEmpty() ? QString() : QString(u' ' + specifier + u' ')},
              {u"values", values}});
}

void ValueTableWriter::writeInitialisers(CodeWriter &out, Table table) const
{
    const bool multiLine = m_view.settings.isMultiLineForm();
    out.join(m_view.managed[table], table == Table::I32 ? u",\n " : separator,
             [&](const ManagedVariable &variable) {
                 out << CValues::entry(table, variable.initialValue, RealPrecision::Variables)
                     << ObjectKey::comment(variable.key, multiLine);
             });
}

void ValueTableWriter::writeConstants(CodeWriter &out) const
{
    out << u"\n/* definition of constants */\n";
    for (const Table table : constantTables)
        if (!m_view.constants[table].isEmpty())
            writeConstantTable(out, table);
    writeConstantTexts(out, Table::VisString, u"VIS_STRING");
    writeConstantTexts(out, Table::Utf8String, u"UTF8_STRING");
}

void ValueTableWriter::writeConstantTable(CodeWriter &out, Table table) const
{
    static const DialectTemplate definition(
        uR"(static CORE_CONST $type$ CORE_CONST_STORAGE_CLASS	od_const_$table$[$count$] = {
$rows$
};
)"_s);
    const QList<CValues::Bits> &values = m_view.constants[table];
    const auto rows = [&](CodeWriter &list) {
        list.join(values, separator, [&](CValues::Bits value) {
            list << CValues::entry(table, value, RealPrecision::Constants);
        });
    };
    out.fill(definition.in(m_dialect),
             {{u"type", CValues::form(table).type},
              {u"table", CValues::form(table).name},
              {u"count", values.size()},
              {u"rows", rows}});
}

void ValueTableWriter::writeConstantTexts(CodeWriter &out, Table table, QStringView type) const
{
    static const DialectTemplate definitions(
        uR"(static CORE_CONST $type$ CORE_CONST_STORAGE_CLASS	od_const_$table$[$count$] = {
$texts$
};
static CORE_CONST UNSIGNED32 CORE_CONST_STORAGE_CLASS	od_const_$table$_len[$count$] = {
$lengths$
};
)"_s);
    const QList<QString> &values = m_view.constantTexts[table];
    if (values.isEmpty())
        return;
    const auto texts = [&](CodeWriter &list) {
        list.join(values, separator,
                  [&](const QString &value) { list << u'\t' << textElement(type, value); });
    };
    const auto lengths = [&](CodeWriter &list) {
        list.join(values, separator, [&](const QString &value) {
            list << u'\t' << CText::stringBytes(value).size() << CValues::form(Table::U32).suffix;
        });
    };
    out.fill(definitions.in(m_dialect),
             {{u"type", type},
              {u"table", CValues::form(table).name},
              {u"count", values.size()},
              {u"texts", texts},
              {u"lengths", lengths}});
}

void ValueTableWriter::writeApplicationVariables(CodeWriter &out) const
{
    out << u"\n/* definition of application variables */\n";
    for (const Table table : variableTables)
        if (!m_view.application[table].isEmpty())
            writePointerTable(out, table);
    for (const TextTableForm &form : textTables)
        if (!m_view.application[form.table].isEmpty())
            writeTextTables(out, form);
}

void ValueTableWriter::writePointerTable(CodeWriter &out, Table table) const
{
    static const DialectTemplate definition(
        uR"(static $type$ CORE_CONST_STORAGE_CLASS * CORE_CONST 	od_ptr_$table$[$count$] = {
$rows$
};
)"_s);
    const QList<ApplicationVariable> &variables = m_view.application[table];
    const bool multiLine = m_view.settings.isMultiLineForm();
    const auto rows = [&](CodeWriter &list) {
        list.join(variables, separator, [&](const ApplicationVariable &variable) {
            list << CText::pointer(variable.name, pointerKind(table))
                 << ObjectKey::comment(variable.key, multiLine);
        });
    };
    out.fill(definition.in(m_dialect),
             {{u"type", variableType(table)},
              {u"table", CValues::form(table).name},
              {u"count", variables.size()},
              {u"rows", rows}});
}

void ValueTableWriter::writeTextTables(CodeWriter &out, const TextTableForm &form) const
{
    static const TemplateText definitions(uR"($head$$table$[$count$] = {
$variables$
};
$lengthHead$$table$_len[$count$] = {
$lengths$
};
$lengthHead$$table$_actLen[$count$] = {
$lengths$
};
)"_s);
    const QList<ApplicationVariable> &variables = m_view.application[form.table];
    const bool isDomain = form.table == Table::Domain;
    const auto pointers = [&](CodeWriter &list) {
        list.join(variables, separator, [&](const ApplicationVariable &variable) {
            list << (isDomain ? u"\tNULL"_s : CText::pointer(variable.name, CText::Pointer::FirstElement));
        });
    };
    const auto lengths = [&](CodeWriter &list) {
        list.join(variables, u"ul,\n", [&](const ApplicationVariable &variable) {
            list << u'\t' << (isDomain ? 0 : variable.size);
        });
        list << u"ul";
    };
    out.fill(definitions,
             {{u"head", form.head},
              {u"table", CValues::form(form.table).name},
              {u"count", variables.size()},
              {u"variables", pointers},
              {u"lengthHead", m_dialect.text(form.lengthHead.toString())},
              {u"lengths", lengths}});
}
