#include "generators/canopen/DataVariablesWriter.h"

#include "generators/CodeWriter.h"
#include "generators/Dialect.h"
#include "generators/canopen/ObjectDictionaryView.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace {

/** The members of the stack's structure in their order, with the conditions that it has some of them on. */
constexpr std::array members{
    u"od_const_u8",
    u"od_const_u16",
    u"od_const_u32",
    u"od_const_r32",
    u"#ifdef CO_EXTENDED_DATA_TYPES",
    u"od_const_u24",
    u"od_const_u40",
    u"od_const_u48",
    u"od_const_u64",
    u"#endif /* CO_EXTENDED_DATA_TYPES */",
    u"od_u8",
    u"od_u16",
    u"od_u32",
    u"od_r32",
    u"#ifdef CO_EXTENDED_DATA_TYPES",
    u"od_u24",
    u"od_u40",
    u"od_u48",
    u"od_u64",
    u"#endif /* CO_EXTENDED_DATA_TYPES */",
    u"od_const_i8",
    u"od_const_i16",
    u"od_const_i32",
    u"od_i8",
    u"od_i16",
    u"od_i32",
    u"od_ptr_u8",
    u"od_ptr_u16",
    u"od_ptr_u32",
    u"#ifdef CO_EXTENDED_DATA_TYPES",
    u"od_ptr_u24",
    u"od_ptr_u40",
    u"od_ptr_u48",
    u"od_ptr_u64",
    u"#endif /* CO_EXTENDED_DATA_TYPES */",
    u"od_ptr_i8",
    u"od_ptr_i16",
    u"od_ptr_i32",
    u"od_ptr_r32",
    u"od_const_vis_string",
    u"od_const_vis_string_len",
    u"od_vis_string",
    u"od_vis_string_len",
    u"od_vis_string_actLen",
    u"#ifdef CO_UTF8_DATA_TYPE",
    u"od_const_utf8_string",
    u"od_const_utf8_string_len",
    u"od_utf8_string",
    u"od_utf8_string_len",
    u"od_utf8_string_actLen",
    u"#endif",
    u"od_octet_string",
    u"od_octet_string_len",
    u"od_octet_string_actLen",
    u"od_domain",
    u"od_domain_len",
    u"od_domain_actLen",
};

/** Names of the tables that the file defines. */
class WrittenTables
{
public:
    explicit WrittenTables(const ObjectDictionaryView &view)
    {
        for (const CValues::TableForm &form : CValues::tableForms) {
            const bool isText = form.notation == CValues::Notation::None;
            add(u"od_const_"_s + form.name, !view.constants[form.table].isEmpty());
            add(u"od_"_s + form.name, !view.managed[form.table].isEmpty());
            add((isText ? u"od_"_s : u"od_ptr_"_s) + form.name, !view.application[form.table].isEmpty());
            add(u"od_const_"_s + form.name, !view.constantTexts[form.table].isEmpty());
        }
    }

    /** The tables of lengths stand and fall with the table of texts. */
    bool contains(QString name) const
    {
        for (const auto suffix : {"_len"_L1, "_actLen"_L1})
            if (name.endsWith(suffix))
                name.chop(suffix.size());
        return m_names.contains(name);
    }

private:
    void add(const QString &name, bool isWritten)
    {
        if (isWritten)
            m_names.insert(name);
    }

    QSet<QString> m_names;
};

void writeMembers(CodeWriter &out, const WrittenTables &tables)
{
    QStringView before = u"   ";
    for (const QStringView member : members) {
        if (member.startsWith(u'#')) {
            out << member << u"\n";
            continue;
        }
        out << before;
        if (tables.contains(member.toString()))
            out << u"&" << member << u"[0]\n";
        else
            out << u"NULL\n";
        before = u"    , ";
    }
}

} // namespace

void writeDataVariables(CodeWriter &out, const ObjectDictionaryView &view, const Dialect &dialect)
{
    static const DialectTemplate structure(uR"(
/**********************************************************************/
/* Structure for all OD variables */
CORE_CONST CO_OD_DATA_VARIABLES_T od_data_variables = {
$members$
};
)"_s);
    const WrittenTables tables(view);
    out.fill(structure.in(dialect), {{u"members", [&](CodeWriter &list) { writeMembers(list, tables); }}});
}
