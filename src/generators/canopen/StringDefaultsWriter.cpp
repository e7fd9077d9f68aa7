#include "generators/canopen/StringDefaultsWriter.h"

#include "generators/CText.h"
#include "generators/CodeWriter.h"
#include "generators/Dialect.h"
#include "generators/ObjectKey.h"
#include "generators/canopen/ObjectDictionaryView.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int widthOfByte = 6; // "0x00, "
constexpr int widthOfLine = 72;

void writeBytes(CodeWriter &out, const QByteArray &bytes)
{
    int width = 0;
    for (const char byte : bytes) {
        out << CText::charElement(byte) << u", ";
        width += widthOfByte;
        if (width <= widthOfLine)
            continue;
        out << u"\n";
        width = 0;
    }
    out << u"\n";
}

} // namespace

// An array that nothing is copied from would be an unused one to the compiler.
void StringDefaultsWriter::writeValues(CodeWriter &out) const
{
    static const DialectTemplate definition(uR"(
/* definition of string default values for variables */
static CORE_CONST char stringDefaultValues[] = {
$values$
0x00}; 

)"_s);
    const auto values = [this](CodeWriter &list) {
        for (const StringDefault &value : m_view.stringDefaults) {
            list << u"/* " << CText::comment(value.name) << u" */ \n";
            writeBytes(list, value.bytes);
        }
    };
    if (!m_view.stringDefaults.isEmpty())
        out.fill(definition.in(m_dialect), {{u"values", values}});
}

void StringDefaultsWriter::writeFunction(CodeWriter &out) const
{
    static const TemplateText function(uR"(

RET_T userOverwriteStringDefaultvalues(void)
{
$copies$

    return(RET_OK);
}
)"_s);
    static const TemplateText copy(uR"(    /* $line$: $index$ - $sub$ */
    memcpy($name$, &stringDefaultValues[$offset$], $length$);
)"_s);
    const auto copies = [this](CodeWriter &list) {
        for (const StringDefault &value : m_view.stringDefaults)
            list.fill(copy,
                      {{u"line", ObjectKey::line(value.key)},
                       {u"index", ObjectKey::index(value.key)},
                       {u"sub", ObjectKey::subIndex(value.key)},
                       {u"name", value.name},
                       {u"offset", value.offset},
                       {u"length", value.bytes.size()}});
    };
    if (m_view.settings.stringDefaults && !m_view.settings.forJ1939Server)
        out.fill(function, {{u"copies", copies}});
}
