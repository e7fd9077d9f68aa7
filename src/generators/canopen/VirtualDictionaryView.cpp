#include "generators/canopen/VirtualDictionaryView.h"

#include "generators/LineNames.h"
#include "generators/ObjectKey.h"
#include "generators/canopen/DescriptionRows.h"
#include "generators/canopen/ObjectDictionaryReader.h"
#include "generators/canopen/ValuePositions.h"

using namespace Qt::StringLiterals;

namespace {

QString variableName(quint32 key, bool multiLine)
{
    const QString index = u"%1"_s.arg(ObjectKey::index(key), 4, 16, '0'_L1);
    const QString name = u"V_%1_%2"_s.arg(index).arg(ObjectKey::subIndex(key));
    return name + LineNames::suffix(ObjectKey::line(key), multiLine);
}

/** Gives virtual sub-indices their variables; those that all lines share have the ones of line 0. */
class VariableList
{
public:
    explicit VariableList(VirtualDictionaryView &view) : m_view(view) { }

    void add(DictionarySubIndex &sub)
    {
        sub.isDynamic = m_view.dictionary.settings.dynamicDictionary;
        if (sub.isShared && ObjectKey::line(sub.key) != 0)
            sub.variablePosition = positionOfLine0(sub);
        else if (CValues::form(sub.table).notation != CValues::Notation::None)
            sub.variablePosition = append(sub);
    }

private:
    TablePosition append(const DictionarySubIndex &sub)
    {
        QList<VirtualVariable> &variables = m_view.variables[sub.table];
        const auto position = quint32(variables.size());
        const bool multiLine = m_view.dictionary.settings.multiLine;
        variables.append({.key = sub.key, .name = variableName(sub.key, multiLine)});
        return {.table = sub.table, .position = position};
    }

    std::optional<TablePosition> positionOfLine0(const DictionarySubIndex &sub) const
    {
        const DictionarySubIndex *owner =
            m_view.dictionary.subIndex(0, ObjectKey::index(sub.key), sub.number);
        return owner && owner->isVirtual ? owner->variablePosition : std::nullopt;
    }

    VirtualDictionaryView &m_view;
};

} // namespace

VirtualDictionaryView VirtualDictionaryView::read(ObjectDataBase &store,
                                                  const ObjectDictionaryRequest &request)
{
    VirtualDictionaryView view;
    readObjectDictionary(store, request, view.dictionary);
    assignValuePositions(view.dictionary);
    VariableList variables(view);
    for (DictionaryLine &line : view.dictionary.lines)
        for (DictionaryObject &object : line.objects)
            for (DictionarySubIndex &sub : object.subIndices)
                if (sub.isVirtual)
                    variables.add(sub);
    describeVirtualObjects(view.dictionary);
    return view;
}

QString VirtualDictionaryView::flaw() const
{
    for (const CValues::TableForm &form : CValues::tableForms) {
        QString flaw = ObjectDictionaryView::overflow(form, variables[form.table].size());
        if (!flaw.isEmpty())
            return flaw;
    }
    return dictionary.flaw();
}
