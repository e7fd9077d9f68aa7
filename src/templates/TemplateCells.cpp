#include "templates/TemplateCells.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QChar quote = u'"';
constexpr QChar noSeparator;

QChar unescaped(QChar letter)
{
    switch (letter.unicode()) {
    case 'n':
        return u'\n';
    case 'r':
        return u'\r';
    case 't':
        return u'\t';
    case '"':
    case '\\':
        return letter;
    default:
        return {};
    }
}

class Scanner
{
public:
    Scanner(const QString &text, QChar separator, int firstColumn)
        : m_text(text), m_separator(separator), m_firstColumn(firstColumn)
    {
    }

    TemplateCells scan()
    {
        do {
            skipBlanks();
            const bool quoted = !atEnd() && m_text.at(m_pos) == quote;
            if (!(quoted ? scanQuoted() : scanBare()))
                return m_result;
        } while (nextCell());
        return m_result;
    }

private:
    bool atEnd() const { return m_pos >= m_text.size(); }
    int column(qsizetype pos) const { return m_firstColumn + int(pos); }
    bool isSeparator(QChar letter) const { return m_separator != noSeparator && letter == m_separator; }

    void skipBlanks()
    {
        while (!atEnd() && m_text.at(m_pos).isSpace() && !isSeparator(m_text.at(m_pos)))
            ++m_pos;
    }

    bool nextCell()
    {
        if (atEnd())
            return false;
        ++m_pos;
        return true;
    }

    bool fail(qsizetype pos, const QString &error)
    {
        m_result.error = error;
        m_result.errorColumn = column(pos);
        return false;
    }

    bool scanBare()
    {
        const qsizetype start = m_pos;
        while (!atEnd() && !isSeparator(m_text.at(m_pos)))
            ++m_pos;
        m_result.cells.append({m_text.sliced(start, m_pos - start).trimmed(), column(start), false});
        return true;
    }

    bool scanQuoted()
    {
        const qsizetype start = m_pos++;
        QString text;
        while (!atEnd() && m_text.at(m_pos) != quote) {
            if (m_text.at(m_pos) == u'\\' && !scanEscape())
                return false;
            text += m_escaped.isNull() ? m_text.at(m_pos) : m_escaped;
            m_escaped = QChar();
            ++m_pos;
        }
        if (atEnd())
            return fail(start, u"the closing quote is missing"_s);
        ++m_pos;
        skipBlanks();
        if (!atEnd() && !isSeparator(m_text.at(m_pos)))
            return fail(m_pos, u"text behind the closing quote"_s);
        m_result.cells.append({text, column(start), true});
        return true;
    }

    bool scanEscape()
    {
        const qsizetype start = m_pos++;
        m_escaped = atEnd() ? QChar() : unescaped(m_text.at(m_pos));
        return !m_escaped.isNull() || fail(start, uR"(unknown escape; \" \\ \n \r \t are known)"_s);
    }

    const QString &m_text;
    QChar m_separator;
    int m_firstColumn;
    qsizetype m_pos = 0;
    QChar m_escaped;
    TemplateCells m_result;
};

} // namespace

TemplateCells TemplateCells::split(const QString &text, QChar separator, int firstColumn)
{
    return Scanner(text, separator, firstColumn).scan();
}

TemplateCells TemplateCells::single(const QString &text, int firstColumn)
{
    return Scanner(text, noSeparator, firstColumn).scan();
}
