#include "generators/canopen/StackInitDictionary.h"

#include "generators/CodeWriter.h"
#include "generators/Dialect.h"
#include "generators/canopen/StackInitContext.h"

using namespace Qt::StringLiterals;

namespace {

/** A table of the object dictionary; a dictionary without rows has none. */
QString assignments(const ObjectDictionaryView &view, quint32 first)
{
    return view.assignmentCount > 0 ? u"&od_assign[%1]"_s.arg(first) : u"NULL"_s;
}

QString descriptions(const ObjectDictionaryView &view, const QString &table)
{
    return view.descriptionCount > 0 ? table : u"NULL"_s;
}

/** All tables, as the single-line form has them. */
void writeAllTables(CodeWriter &out, const ObjectDictionaryView &view)
{
    static const TemplateText call(
        u"coOdInitOdPtr($assign$, CO_OD_ASSIGN_CNT, $description$, CO_OBJ_DESC_CNT, NULL, "
        "&od_data_variables);\n"_s);
    out.fill(
        call,
        {{u"assign", assignments(view, 0)}, {u"description", descriptions(view, u"&od_description[0]"_s)}});
}

/** The tables as far as they tell of one line; its rows of od_assign count from the start of od_description.
 */
void writeLineTables(CodeWriter &out, const ObjectDictionaryView &view, const DictionaryLine &line)
{
    static const TemplateText call(
        u"coOdInitOdPtr(canLine, $assign$, $count$, $description$, CO_OBJ_DESC_CNT, NULL, "
        "&od_data_variables);\n"_s);
    out.fill(call,
             {{u"assign", assignments(view, line.firstAssignment)},
              {u"count", line.assignmentCount},
              {u"description", descriptions(view, u"od_description"_s)}});
}

void writeJ1939Line(CodeWriter &out, const StackInitLine &line)
{
    static const TemplateText branch(uR"(		case $line$:
		/* initialize object dictionary variables and pointers */
		coOdInitOdPtr(canLine, $assign$, $count$, $description$,$rows$, NULL, &od_data_variables);
		break;
)"_s);
    const ObjectDictionaryView &view = line.context.view;
    const DictionaryLine &tables = line.dictionary;
    out.fill(branch,
             {{u"line", line.number},
              {u"assign", assignments(view, tables.firstAssignment)},
              {u"count", tables.assignmentCount},
              {u"description", descriptions(view, u"od_description"_s)},
              {u"rows", tables.firstDescription + tables.descriptionCount}});
}

} // namespace

void writeUnplacedTables(CodeWriter &out, const StackInitContext &context)
{
    for (const QString &name : context.view.unplacedTables)
        out << u"(void)" << name << u";\n";
}

void writeObjectDictionaryInit(CodeWriter &out, const StackInitLine &line)
{
    static const TemplateText text(uR"(    /* initialize object dictionary variables and pointers */
    $call$
    $unplaced$
)"_s);
    const StackInitContext &context = line.context;
    const QList<quint8> &lines = context.view.generatorLines;
    const auto call = [&](CodeWriter &block) {
        if (context.isMultiLine())
            writeLineTables(block, context.view, line.dictionary);
        else
            writeAllTables(block, context.view);
    };
    const auto unplaced = [&](CodeWriter &block) {
        if (!context.isMultiLine() || line.number == lines.value(0, line.number))
            writeUnplacedTables(block, context);
    };
    out.fill(text, {{u"call", call}, {u"unplaced", unplaced}});
}

void writeJ1939ObjectDictionaryInit(CodeWriter &out, const StackInitContext &context)
{
    static const TemplateText singleLine(uR"(RET_T	j1939OdInit(void)
{
	$call$
	$unplaced$

	return(RET_OK);
}
)"_s);
    static const TemplateText multiLine(uR"(RET_T	j1939OdInit(
	UNSIGNED8 canLine
)
{
	switch (canLine) {
$lines$
	default:
	break;
	}
	$unplaced$

	return(RET_OK);
}
)"_s);
    const auto call = [&](CodeWriter &block) { writeAllTables(block, context.view); };
    const auto unplaced = [&](CodeWriter &block) { writeUnplacedTables(block, context); };
    const auto lines = [&](CodeWriter &block) {
        for (const quint8 line : context.view.generatorLines)
            writeJ1939Line(block, StackInitLine(context, line));
    };
    if (context.isMultiLine())
        out.fill(multiLine, {{u"lines", lines}, {u"unplaced", unplaced}});
    else
        out.fill(singleLine, {{u"call", call}, {u"unplaced", unplaced}});
}
