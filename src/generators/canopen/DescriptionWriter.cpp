#include "generators/canopen/DescriptionWriter.h"

#include "canopen/CANTypes.h"
#include "canopen/CANopenTypes.h"
#include "generators/CodeWriter.h"
#include "generators/Dialect.h"
#include "generators/ObjectKey.h"
#include "generators/canopen/ObjectDictionaryView.h"
#include "generators/canopen/TypeNames.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

struct Attribute
{
    QStringView word;
    bool (*applies)(const DictionarySubIndex &sub);
};

bool isNumeric(const DictionarySubIndex &sub)
{
    return sub.dataType < CAN::VisibleString || sub.dataType == CAN::Unsigned24;
}

constexpr std::array<Attribute, 10> attributes{{
    {u"CO_ATTR_NUM", isNumeric},
    {u"CO_ATTR_READ", [](const DictionarySubIndex &sub) { return sub.isReadable; }},
    {u"CO_ATTR_WRITE", [](const DictionarySubIndex &sub) { return sub.isWritable; }},
    {u"CO_ATTR_MAP_TR", [](const DictionarySubIndex &sub) { return sub.isPdoReadable; }},
    {u"CO_ATTR_MAP_REC", [](const DictionarySubIndex &sub) { return sub.isPdoWritable; }},
    {u"CO_ATTR_DEFVAL", [](const DictionarySubIndex &sub) { return sub.hasDefault; }},
    {u"CO_ATTR_LIMIT", [](const DictionarySubIndex &sub) { return sub.hasLimits; }},
    {u"CO_ATTR_STORE", [](const DictionarySubIndex &sub) { return sub.isStored; }},
    {u"CO_ATTR_COMPACT", [](const DictionarySubIndex &sub) { return sub.isCompact; }},
    {u"CO_ATTR_DYNOD", [](const DictionarySubIndex &sub) { return sub.isDynamic; }},
}};

QString attributeExpression(const DictionarySubIndex &sub)
{
    QString expression;
    for (const Attribute &attribute : attributes) {
        if (!attribute.applies(sub))
            continue;
        if (!expression.isEmpty())
            expression += " | "_L1;
        expression += attribute.word;
    }
    return expression.isEmpty() ? u"0u"_s : expression;
}

QStringView objectCodeMacro(int objectCode)
{
    switch (objectCode) {
    case CANopen::Var:
        return u"CO_ODTYPE_VAR";
    case CANopen::Array:
        return u"CO_ODTYPE_ARRAY";
    case CANopen::Record:
        return u"CO_ODTYPE_STRUCT";
    case CANopen::Domain:
        return u"CO_ODTYPE_DOM";
    default:
        return u"invalid"; // no object of a dictionary that a device can have
    }
}

QString hexIndex(quint16 index)
{
    return u"%1"_s.arg(index, 4, 16, '0'_L1);
}

/** Where limits stand; nothing where the stack does not check them. */
class Limits
{
public:
    Limits(const DictionarySubIndex &sub, bool areChecked) : m_sub(sub), m_areChecked(areChecked) { }

    void operator()(CodeWriter &out) const
    {
        static const TemplateText columns(u"u, (UNSIGNED16)$low$u, (UNSIGNED16)$up$"_s);
        if (m_areChecked)
            out.fill(columns, {{u"low", m_sub.lowLimitPosition}, {u"up", m_sub.upLimitPosition}});
    }

private:
    const DictionarySubIndex &m_sub;
    bool m_areChecked;
};

/** Where the value stands, or what its service is known by. */
class ValueField
{
public:
    ValueField(const DictionarySubIndex &sub, DictionaryKind kind) : m_sub(sub), m_kind(kind) { }

    void operator()(CodeWriter &out) const
    {
        static const TemplateText decimal(u"(UNSIGNED16)$value$u, "_s);
        if (m_kind == DictionaryKind::Virtual)
            out << u"(UNSIGNED16)0x%1u, "_s.arg(m_sub.valueField, 0, 16);
        else
            out.fill(decimal, {{u"value", m_sub.valueField}});
    }

private:
    const DictionarySubIndex &m_sub;
    DictionaryKind m_kind;
};

} // namespace

void DescriptionWriter::writeCounts(CodeWriter &out) const
{
    static const TemplateText counts(uR"(
/* number of objects */
#define CO_OD_ASSIGN_CNT $assignments$u
#define CO_OBJ_DESC_CNT $descriptions$u
)"_s);
    out.fill(counts, {{u"assignments", m_view.assignmentCount}, {u"descriptions", m_view.descriptionCount}});
}

void DescriptionWriter::writeDescriptions(CodeWriter &out) const
{
    static const DialectTemplate addressable(uR"(
/* description of the objects */
CORE_CONST CO_OBJECT_DESC_T CORE_CONST_STORAGE_CLASS od_description[CO_OBJ_DESC_CNT] = {
$rows$
};
)"_s);
    static const DialectTemplate virtualObjects(uR"(
/* description of the objects */
CORE_CONST CO_OBJECT_DESC_T CORE_CONST_STORAGE_CLASS vod_description[CO_VOBJ_DESC_CNT] = {
$rows$
};
)"_s);
    const DialectTemplate &table = m_kind == DictionaryKind::Virtual ? virtualObjects : addressable;
    const auto rows = [this](CodeWriter &list) {
        for (const DictionaryLine &line : m_view.lines)
            for (const DictionaryObject &object : line.objects)
                for (const DictionarySubIndex &sub : object.subIndices)
                    if (sub.isDescribed)
                        writeDescription(list, sub);
    };
    if (m_view.descriptionCount > 0)
        out.fill(table.in(m_dialect), {{u"rows", rows}});
}

void DescriptionWriter::writeDescription(CodeWriter &out, const DictionarySubIndex &sub) const
{
    static const TemplateText row(u"\t{ (UNSIGNED8)$sub$u, $type$, CO_DSPEC$specifier$, $value$$attributes$, "
                                  " (UNSIGNED16)$constant$$limits$u},/* $line$0x$index$:$sub$ */ \n"_s);
    const QString line =
        m_view.settings.isMultiLineForm() ? u"%1-"_s.arg(ObjectKey::line(sub.key)) : QString();
    out.fill(row,
             {{u"sub", sub.number},
              {u"type", typeMacro(sub.dataType, m_dialect)},
              {u"specifier", sub.specifier},
              {u"value", ValueField(sub, m_kind)},
              {u"attributes", attributeExpression(sub)},
              {u"constant", sub.constantPosition.value_or(TablePosition()).position},
              {u"limits", Limits(sub, m_view.settings.limitCheck)},
              {u"line", line},
              {u"index", hexIndex(ObjectKey::index(sub.key))}});
}

void DescriptionWriter::writeAssignments(CodeWriter &out) const
{
    static const DialectTemplate addressable(uR"(
/* object dictionary assignment */
CORE_CONST CO_OD_ASSIGN_T CORE_CONST_STORAGE_CLASS od_assign[CO_OD_ASSIGN_CNT] = {
$rows$
};
)"_s);
    static const DialectTemplate virtualObjects(uR"(
/* object dictionary assignment */
CORE_CONST CO_OD_ASSIGN_T CORE_CONST_STORAGE_CLASS vod_assign[CO_VOD_ASSIGN_CNT] = {
$rows$
};
)"_s);
    const DialectTemplate &table = m_kind == DictionaryKind::Virtual ? virtualObjects : addressable;
    const auto rows = [this](CodeWriter &list) {
        for (const DictionaryLine &line : m_view.lines)
            for (const DictionaryObject &object : line.objects)
                if (object.isAssigned)
                    writeAssignment(list, object);
    };
    if (m_view.assignmentCount > 0)
        out.fill(table.in(m_dialect), {{u"rows", rows}});
}

void DescriptionWriter::writeAssignment(CodeWriter &out, const DictionaryObject &object) const
{
    static const TemplateText row(u"\t{ 0x$index$u, $rows$u, $highest$u, $code$, $first$u },\n"_s);
    out.fill(row,
             {{u"index", hexIndex(object.index)},
              {u"rows", object.descriptionCount},
              {u"highest", object.highestSubIndex()},
              {u"code", objectCodeMacro(object.objectCode)},
              {u"first", object.firstDescription}});
}
