#include "generators/TemplateText.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QChar mark = u'$';

bool isNameCharacter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'_';
}

bool isName(QStringView text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), isNameCharacter);
}

QString lineOf(QStringView text, qsizetype position)
{
    return u"line %1: "_s.arg(text.first(position).count(u'\n') + 1);
}

/** Where the blanks and tabs begin that stand between the line's start and the position; -1 if more does. */
qsizetype indentStart(QStringView text, qsizetype position)
{
    qsizetype start = position;
    while (start > 0 && (text[start - 1] == u' ' || text[start - 1] == u'\t'))
        --start;
    return start == 0 || text[start - 1] == u'\n' ? start : -1;
}

} // namespace

TemplateText::TemplateText(const QString &text) : m_text(text)
{
    if (const QString problem = parse(); !problem.isEmpty())
        qFatal("flawed template: %s\n%s", qPrintable(problem), qPrintable(text));
}

QString TemplateText::flaw(const QString &text)
{
    TemplateText candidate;
    candidate.m_text = text;
    return candidate.parse();
}

// Cuts the text into pieces; gives what is wrong.
QString TemplateText::parse()
{
    const QStringView text(m_text);
    qsizetype begin = 0; // of the piece that is being read
    for (qsizetype open = text.indexOf(mark); open >= 0; open = text.indexOf(mark, begin)) {
        const qsizetype close = text.indexOf(mark, open + 1);
        if (close < 0)
            return lineOf(text, open) + u"a placeholder is not closed"_s;
        const QStringView name = text.sliced(open + 1, close - open - 1);
        if (name.isEmpty()) {
            m_pieces.append({.fixed = text.sliced(begin, open + 1 - begin)});
            begin = close + 1;
        } else if (isName(name)) {
            begin = addPlaceholder(begin, open, close);
        } else {
            return lineOf(text, open) + u"\"%1\" is no name"_s.arg(name);
        }
    }
    m_pieces.append({.fixed = text.sliced(begin)});
    return {};
}

/** Appends the piece that ends with a placeholder; gives where the next one begins. */
qsizetype TemplateText::addPlaceholder(qsizetype begin, qsizetype open, qsizetype close)
{
    const QStringView text(m_text);
    const QStringView name = text.sliced(open + 1, close - open - 1);
    if (!m_names.contains(name))
        m_names.append(name);
    const qsizetype start = indentStart(text, open);
    const qsizetype next = close + 1;
    const bool isLine = start >= 0 && next < text.size() && text[next] == u'\n';
    const qsizetype end = isLine ? start : open;
    m_pieces.append({.fixed = text.sliced(begin, end - begin),
                     .name = m_names.indexOf(name),
                     .indent = text.sliced(end, open - end),
                     .isLine = isLine});
    return isLine ? next + 1 : next;
}

QString TemplateText::mismatch(const QList<QStringView> &values) const
{
    QStringList problems;
    for (const QStringView name : m_names)
        if (!values.contains(name))
            problems.append(u"$%1$ has no value"_s.arg(name));
    for (qsizetype i = 0; i < values.size(); ++i) {
        if (!m_names.contains(values[i]))
            problems.append(u"there is no placeholder $%1$"_s.arg(values[i]));
        else if (values.indexOf(values[i]) < i)
            problems.append(u"$%1$ has two values"_s.arg(values[i]));
    }
    return problems.join(u"; "_s);
}
