#include "generators/canopen/StackInitContext.h"

namespace {

const DictionaryLine &dictionaryOf(const ObjectDictionaryView &view, quint8 line)
{
    static const DictionaryLine withoutObjects;
    const DictionaryLine *found = view.line(line);
    return found ? *found : withoutObjects;
}

/** Texts, and numbers that are structures in C, can be no argument of a function that wants a number. */
bool isNumberInC(CValues::Table table)
{
    const CValues::TableForm &form = CValues::form(table);
    return form.notation != CValues::Notation::None && form.macroBytes == 0;
}

} // namespace

StackInitLine::StackInitLine(const StackInitContext &stack, quint8 line)
    : context(stack), number(line), dictionary(dictionaryOf(stack.view, line)),
      settings(stack.settings.line(line))
{
}

QString StackInitLine::constant(quint16 index, quint8 sub, const QString &otherwise) const
{
    const DictionarySubIndex *found = dictionary.subIndex(index, sub);
    const bool isArgument = found && found->constantPosition && isNumberInC(found->constantPosition->table);
    return isArgument ? context.view.constantElement(number, index, sub) : otherwise;
}
