#include "tools/DiffItemText.h"

#include "store/ObjectDataBase.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;
using ProjectDiff::State;

namespace {

constexpr QLatin1StringView separator{" - "};
constexpr QLatin1StringView hexPrefix{"0x"};
constexpr int hexBase = 16;
constexpr int indexDigits = 4;

struct StateWord
{
    State state;
    bool isAfterApply;
    const char *word;
};

// The words are unlike each other also in their last letters, in every language: they are read back.
constexpr std::array stateWords{
    StateWord{State::Different, false, QT_TRANSLATE_NOOP("DiffItemText", "different")},
    StateWord{State::Different, true, QT_TRANSLATE_NOOP("DiffItemText", "different")},
    StateWord{State::OnlyCurrent, false, QT_TRANSLATE_NOOP("DiffItemText", "current")},
    StateWord{State::OnlyCurrent, true, QT_TRANSLATE_NOOP("DiffItemText", "to be removed")},
    StateWord{State::OnlyOther, false, QT_TRANSLATE_NOOP("DiffItemText", "other")},
    StateWord{State::OnlyOther, true, QT_TRANSLATE_NOOP("DiffItemText", "to be added")},
};

// In the order of the parts.
constexpr std::array unnamed{
    QT_TRANSLATE_NOOP("DiffItemText", "unnamed object"),
    QT_TRANSLATE_NOOP("DiffItemText", "unnamed subindex"),
    QT_TRANSLATE_NOOP("DiffItemText", "unnamed PGN"),
    QT_TRANSLATE_NOOP("DiffItemText", "unnamed SPN"),
    QT_TRANSLATE_NOOP("DiffItemText", "unnamed CAN-ID"),
    QT_TRANSLATE_NOOP("DiffItemText", "unnamed signal"),
};

QString translated(const char *source)
{
    return QCoreApplication::translate("DiffItemText", source);
}

/** With the separator in front: names such as "Motor rated current" end with the same words. */
QString ending(const StateWord &stateWord)
{
    return separator + translated(stateWord.word);
}

QString numberText(DiffItemText::Part part, quint32 number)
{
    using Part = DiffItemText::Part;
    switch (part) {
    case Part::Object:
        return hexPrefix + QString::number(number, hexBase).rightJustified(indexDigits, u'0');
    case Part::Pgn:
    case Part::CanId:
        return hexPrefix + QString::number(number, hexBase);
    default:
        return QString::number(number);
    }
}

} // namespace

QString DiffItemText::directionText(quint8 direction)
{
    return direction == ObjectDataBase::Transmit ? translated(QT_TRANSLATE_NOOP("DiffItemText", "Transmit"))
                                                 : translated(QT_TRANSLATE_NOOP("DiffItemText", "Receive"));
}

QString DiffItemText::text(Part part, const ProjectDiff::Item &item, bool isAfterApply)
{
    QString result = numberText(part, item.number) + separator
        + (item.name.isEmpty() ? translated(unnamed.at(size_t(part))) : item.name);
    if (part == Part::Pgn || part == Part::CanId)
        result += u' ' + directionText(item.direction);
    for (const StateWord &stateWord : stateWords)
        if (stateWord.state == item.state && stateWord.isAfterApply == isAfterApply)
            result += ending(stateWord);
    return result;
}

State DiffItemText::state(const QString &text)
{
    for (const StateWord &stateWord : stateWords)
        if (text.endsWith(ending(stateWord)))
            return stateWord.state;
    return State::Equal;
}

bool DiffItemText::isParent(const QString &text)
{
    return text.startsWith(hexPrefix);
}

std::optional<quint32> DiffItemText::number(const QString &text)
{
    constexpr int decimal = 10;
    bool isNumber = false;
    const quint32 number =
        text.section(u' ', 0, 0).toUInt(&isNumber, isParent(text) ? 0 : decimal); // 0: as the prefix tells
    return isNumber ? std::optional(number) : std::nullopt;
}

DiffItemText::Actions DiffItemText::actions(const QString &text)
{
    switch (state(text)) {
    case State::Equal:
        return {};
    case State::Different:
        return isParent(text) ? Action::Import | Action::ImportComplete : Actions(Action::Import);
    case State::OnlyCurrent:
        return Action::Delete;
    case State::OnlyOther:
        return Action::Import;
    }
    return {};
}
