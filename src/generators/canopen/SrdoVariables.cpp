#include "generators/canopen/SrdoVariables.h"

#include "generators/CText.h"
#include "generators/ObjectKey.h"
#include "generators/canopen/VariablePointers.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

/** Words of C99, and words of the stack and of the template that a variable cannot be called. */
constexpr std::array reservedWords{
    u"auto",
    u"break",
    u"case",
    u"char",
    u"const",
    u"continue",
    u"default",
    u"do",
    u"double",
    u"else",
    u"enum",
    u"extern",
    u"float",
    u"for",
    u"goto",
    u"if",
    u"inline",
    u"int",
    u"long",
    u"register",
    u"restrict",
    u"return",
    u"short",
    u"signed",
    u"sizeof",
    u"static",
    u"struct",
    u"switch",
    u"typedef",
    u"union",
    u"unsigned",
    u"void",
    u"volatile",
    u"while",
    u"_Bool",
    u"_Complex",
    u"_Imaginary",
    u"main",
    u"NULL",
    u"RET_T",
    u"RET_OK",
    u"BOOL_T",
    u"REAL32",
    u"canLine",
    u"srdoNr",
    u"pData",
    u"pSrdo",
    u"index",
    u"subIndex",
    u"pBufferNormal",
    u"retVal",
    u"ownNodeId",
    u"tmp",
    u"tmpU8",
    u"tmpU16",
    u"tmpU32",
    u"tmpU64",
    u"pNormal",
    u"pInverted",
    u"CAN_LINE",
    u"pBufferInverted",
};

bool isReserved(const QString &name)
{
    static const QRegularExpression numbered(
        u"^((UNSIGNED|INTEGER)\\d+|(srdo|mapTable)\\d+(_line\\d+)?|odEntry_\\w+|(gen|coGen)Srdo\\w*)$"_s);
    return std::ranges::find(reservedWords, QStringView(name)) != reservedWords.end()
        || numbered.match(name).hasMatch();
}

bool isPlainName(const QString &name)
{
    static const QRegularExpression plain(u"^[A-Za-z_][A-Za-z_0-9]*$"_s);
    return plain.match(name).hasMatch() && !isReserved(name);
}

/** A member or an element: "pump.state", "pump->state", "states[3]". */
bool isPartOfVariable(const QString &name)
{
    static const QRegularExpression part(
        u"^([A-Za-z_][A-Za-z_0-9]*)((\\.|->)[A-Za-z_][A-Za-z_0-9]*|\\[[A-Za-z_0-9]+\\])+$"_s);
    const QRegularExpressionMatch match = part.match(name);
    return match.hasMatch() && !isReserved(match.captured(1));
}

/** A macro call or another expression in parentheses that can stand in C, such as "PLACE(x)". */
bool isUsableExpression(const QString &name)
{
    static const QRegularExpression characters(u"^[A-Za-z_(&*][A-Za-z_0-9()\\[\\].&*+>-]*[)\\]]$"_s);
    if (!CText::isExpression(name) || !characters.match(name).hasMatch())
        return false;
    int depth = 0;
    for (qsizetype i = 0; i < name.size(); ++i) {
        depth += name[i] == u'(' ? 1 : name[i] == u')' ? -1 : 0;
        const bool isEmptyGroup = name[i] == u')' && i > 0 && name[i - 1] == u'(';
        if (depth < 0 || isEmptyGroup)
            return false;
    }
    return depth == 0;
}

/** A static that no table tells of could be set by nobody: its SRDO would carry zeros for ever. */
bool canBeStatic(const DictionarySubIndex &sub)
{
    const auto &tables = SrdoView::odEntryTables;
    return sub.isMappedInSrdo && std::ranges::find(tables, sub.table) != tables.end();
}

QString cType(const SrdoVariable &variable)
{
    return CValues::form(variable.form->table).type.toString();
}

} // namespace

SrdoVariables::SrdoVariables(const ObjectDictionaryView &dictionary, QList<SrdoVariable> &variables)
    : m_dictionary(dictionary), m_variables(variables)
{
    for (const DictionaryLine &line : dictionary.lines)
        for (const DictionaryObject &object : line.objects)
            for (const DictionarySubIndex &sub : object.subIndices)
                if (!sub.variable.isEmpty())
                    m_applicationNames.insert(sub.variable);
    collectAddresses();
}

void SrdoVariables::collectAddresses()
{
    for (const DictionaryLine &line : m_dictionary.lines)
        for (const QList<MappingTable> *tables : {&line.transmitTables, &line.receiveTables})
            for (const MappingTable &table : *tables)
                for (const MappingRow &row : table.rows)
                    m_dictionaryAddresses.insert(row.address);
    for (const CValues::TableForm &form : CValues::tableForms)
        for (const ApplicationVariable &variable : m_dictionary.application[form.table])
            m_dictionaryAddresses.insert(CText::address(variable.name, pointerKind(form.table)));
}

int SrdoVariables::add(quint8 line, quint16 index, quint8 subIndex)
{
    const DictionarySubIndex *mapped = m_dictionary.subIndex(line, index, subIndex);
    const DictionarySubIndex *sub = resolve(line, index, subIndex);
    if (!sub || sub->table != mapped->table)
        return -1;
    const auto known = m_places.constFind(sub->key);
    if (known != m_places.constEnd())
        return *known;
    const int place = create(*sub);
    m_places.insert(sub->key, place);
    return place;
}

/** A variable that all lines share is that of line 0. */
const DictionarySubIndex *SrdoVariables::resolve(quint8 line, quint16 index, quint8 subIndex) const
{
    const DictionarySubIndex *sub = m_dictionary.subIndex(line, index, subIndex);
    if (!sub || !sub->isShared || line == 0)
        return sub;
    const DictionarySubIndex *shared = m_dictionary.subIndex(0, index, subIndex);
    return shared ? shared : sub;
}

int SrdoVariables::create(const DictionarySubIndex &sub)
{
    SrdoVariable variable{.key = sub.key, .form = SrdoValueForm::of(sub.table)};
    if (!variable.form)
        return -1;
    if (sub.storage == StorageClass::Managed && canBeStatic(sub))
        declare(variable, {});
    else if (sub.storage != StorageClass::Application || !nameApplicationVariable(sub, variable))
        return -1;
    m_variables.append(variable);
    return int(m_variables.size() - 1);
}

bool SrdoVariables::nameApplicationVariable(const DictionarySubIndex &sub, SrdoVariable &variable)
{
    const CText::Pointer pointer = pointerKind(sub.table);
    if (isUsableExpression(sub.variable)) {
        variable.address = CText::address(sub.variable, pointer);
        variable.name =
            pointer == CText::Pointer::Variable ? QString(u"(*"_s + sub.variable + u')') : sub.variable;
        return true;
    }
    const QString address = CText::address(sub.variable, pointer);
    const bool isStatic = canBeStatic(sub) && !m_dictionaryAddresses.contains(address);
    if (isPartOfVariable(sub.variable) || (isPlainName(sub.variable) && !isStatic)) {
        variable.name = sub.variable;
        variable.address = address;
        return true;
    }
    if (!canBeStatic(sub))
        return false;
    declare(variable, isPlainName(sub.variable) ? sub.variable : QString());
    return true;
}

void SrdoVariables::declare(SrdoVariable &variable, const QString &wanted)
{
    const QString type = cType(variable);
    const bool isFree = !wanted.isEmpty() && m_types.value(wanted, type) == type;
    variable.name = isFree ? wanted : freeName(ownName(variable.key), type);
    variable.address = CText::address(variable.name);
    variable.isDeclared = true;
    m_types.insert(variable.name, type);
}

bool SrdoVariables::areOne(int first, int second) const
{
    return m_variables.at(first).name == m_variables.at(second).name;
}

void SrdoVariables::addTemporary(int place)
{
    SrdoVariable &variable = m_variables[place];
    if (!variable.temporary.isEmpty())
        return;
    // The bits of a REAL32 are kept: two floats can be equal without being the same, such as 0 and -0.
    const QString type =
        variable.form->kind == SrdoValueForm::Kind::Real ? variable.form->word.toString() : cType(variable);
    const QString wanted = (isPlainName(variable.name) ? variable.name : ownName(variable.key)) + u"_temp"_s;
    variable.temporary = freeName(wanted, type);
    m_types.insert(variable.temporary, type);
}

/** One name may stand for several objects; what they hold has one type. */
QString SrdoVariables::freeName(QString wanted, const QString &type) const
{
    while (m_applicationNames.contains(wanted) || m_types.value(wanted, type) != type)
        wanted += u'_';
    return wanted;
}

QString SrdoVariables::ownName(quint32 key) const
{
    const QString name =
        u"srdoVariable_%1_%2"_s.arg(ObjectKey::index(key), 4, 16, '0'_L1).arg(ObjectKey::subIndex(key));
    const bool namesLine = m_dictionary.settings.isMultiLineForm();
    return namesLine ? name + u"_line%1"_s.arg(ObjectKey::line(key)) : name;
}
