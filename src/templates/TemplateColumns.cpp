#include "templates/TemplateColumns.h"

#include "canopen/COHelper.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

TemplateColumns::TemplateColumns(QList<TemplateCell> cells, Report report)
    : m_cells(std::move(cells)), m_report(std::move(report))
{
}

void TemplateColumns::fail(qsizetype cell, const QString &text)
{
    m_ok = false;
    m_report(column(cell), text);
}

bool TemplateColumns::hasColumns(qsizetype needed, qsizetype possible, const QString &heading)
{
    if (m_cells.size() >= needed && m_cells.size() <= possible)
        return true;
    fail(0, u"%1 columns instead of: %2"_s.arg(m_cells.size()).arg(heading));
    return false;
}

QString TemplateColumns::text(qsizetype cell, const QString &what)
{
    QString text = m_cells.at(cell).text;
    if (text.isEmpty())
        fail(cell, u"the %1 is missing"_s.arg(what));
    return text;
}

QString TemplateColumns::optionalText(qsizetype cell) const
{
    return cell < m_cells.size() ? m_cells.at(cell).text : QString();
}

bool TemplateColumns::isBlank(qsizetype cell) const
{
    return m_cells.at(cell).text.isEmpty() && !m_cells.at(cell).quoted;
}

quint32 TemplateColumns::number(qsizetype cell, const QString &what, quint32 low, quint32 high)
{
    const QString text = m_cells.at(cell).text;
    const bool hex = text.startsWith("0x"_L1, Qt::CaseInsensitive);
    bool isNumber = false;
    const quint32 value = hex ? text.sliced(2).toUInt(&isNumber, 16) : text.toUInt(&isNumber);
    if (isNumber && value >= low && value <= high)
        return value;
    fail(cell, u"the %1 \"%2\" is no number from %3 to %4"_s.arg(what, text).arg(low).arg(high));
    return 0;
}

const TemplateWord *TemplateColumns::find(qsizetype cell, const QString &text, const QString &what,
                                          std::span<const TemplateWord> words)
{
    const auto found = std::find_if(words.begin(), words.end(), [&](const TemplateWord &candidate) {
        return text == QLatin1StringView(candidate.word);
    });
    if (found != words.end())
        return &*found;
    QStringList known;
    for (const TemplateWord &candidate : words)
        known.append(QLatin1StringView(candidate.word));
    fail(cell, u"the %1 \"%2\" is none of: %3"_s.arg(what, text, known.join(u", ")));
    return nullptr;
}

int TemplateColumns::word(qsizetype cell, const QString &what, std::span<const TemplateWord> words)
{
    const TemplateWord *found = find(cell, m_cells.at(cell).text, what, words);
    return found ? found->value : 0;
}

int TemplateColumns::words(qsizetype cell, const QString &what, std::span<const TemplateWord> words)
{
    int value = 0;
    const QStringList parts = m_cells.at(cell).text.split(u',', Qt::SkipEmptyParts);
    for (const QString &part : parts) {
        const TemplateWord *found = find(cell, part.trimmed(), what, words);
        value |= found ? found->value : 0;
    }
    return value;
}

CAN::CANopenDataType TemplateColumns::dataType(qsizetype cell)
{
    const QString text = m_cells.at(cell).text;
    const CAN::CANopenDataType type = COHelper::mapDataTypeString(text);
    // The vocabulary also takes numbers; a source that is read like a table names its types.
    if (type == CAN::NoDataType || COHelper::index2DataTypeString(type) != text)
        fail(cell, u"unknown data type \"%1\""_s.arg(text));
    return type;
}
