#include "widgets/AnsiCScanner.h"

#include <algorithm>
#include <array>
#include <string_view>

using namespace Qt::StringLiterals;

namespace AnsiCScanner {

namespace {

constexpr std::array keywords = std::to_array<std::u16string_view>({
    u"CO_CONST", u"_Alignas",  u"_Alignof", u"_Generic",  u"_Noreturn", u"_Static_assert", u"auto",
    u"break",    u"case",      u"class",    u"const",     u"constexpr", u"continue",       u"default",
    u"delete",   u"do",        u"else",     u"enum",      u"extern",    u"false",          u"for",
    u"goto",     u"if",        u"inline",   u"namespace", u"new",       u"nullptr",        u"operator",
    u"private",  u"protected", u"public",   u"register",  u"restrict",  u"return",         u"sizeof",
    u"static",   u"struct",    u"switch",   u"template",  u"this",      u"throw",          u"true",
    u"try",      u"typedef",   u"typename", u"union",     u"using",     u"virtual",        u"volatile",
    u"while",
});

constexpr std::array types = std::to_array<std::u16string_view>({
    u"DOUBLE",     u"INTEGER16",  u"INTEGER24",  u"INTEGER32",  u"INTEGER40",
    u"INTEGER48",  u"INTEGER56",  u"INTEGER64",  u"INTEGER8",   u"REAL32",
    u"REAL64",     u"UNSIGNED16", u"UNSIGNED24", u"UNSIGNED32", u"UNSIGNED40",
    u"UNSIGNED48", u"UNSIGNED56", u"UNSIGNED64", u"UNSIGNED8",  u"VISIBLE_STRING",
    u"_Bool",      u"bool",       u"char",       u"double",     u"float",
    u"int",        u"long",       u"short",      u"signed",     u"unsigned",
    u"void",
});

static_assert(std::ranges::is_sorted(keywords) && std::ranges::is_sorted(types));

/** C and the stack end the names of types alike, but for the case. */
bool isType(std::u16string_view word)
{
    return word.ends_with(u"_t") || word.ends_with(u"_T") || std::ranges::binary_search(types, word);
}

bool isIdentifierStart(QChar character)
{
    return character.isLetter() || character == u'_';
}

bool isIdentifierPart(QChar character)
{
    return character.isLetterOrNumber() || character == u'_';
}

/** Runs over one line once, from left to right. */
class LineScanner
{
public:
    LineScanner(QStringView line, State state) : m_line(line), m_state(state) { }

    State state() const { return m_state; }

    QList<Token> scan()
    {
        continueFormerLine();
        if (m_state != State::Code)
            return m_tokens;
        scanDirective();
        while (m_at < m_line.size() && m_state == State::Code)
            scanNext();
        return m_tokens;
    }

private:
    QChar peek(qsizetype ahead = 0) const
    {
        return m_at + ahead < m_line.size() ? m_line[m_at + ahead] : QChar();
    }
    bool isContinued() const { return m_line.endsWith(u'\\'); }

    void add(qsizetype start, Kind kind)
    {
        if (m_at > start)
            m_tokens.append({start, m_at - start, kind});
    }

    void continueFormerLine()
    {
        switch (m_state) {
        case State::Code:
            break;
        case State::BlockComment:
            scanBlockComment(0);
            break;
        case State::LineComment:
            scanLineComment();
            break;
        case State::String:
            scanQuoted(0, u'"', Kind::String);
            break;
        }
    }

    void scanDirective()
    {
        if (m_at > 0) // behind the end of a comment no directive is expected
            return;
        while (peek().isSpace())
            ++m_at;
        if (peek() != u'#')
            return;
        const qsizetype start = m_at++;
        while (peek().isSpace())
            ++m_at;
        const qsizetype name = m_at;
        while (peek().isLetter())
            ++m_at;
        const bool isInclude = m_line.sliced(name, m_at - name).startsWith(u"include");
        add(start, Kind::Preprocessor);
        if (isInclude)
            scanIncludeFile();
    }

    void scanIncludeFile()
    {
        while (peek().isSpace())
            ++m_at;
        if (peek() != u'<')
            return;
        const qsizetype start = m_at;
        const qsizetype end = m_line.indexOf(u'>', m_at);
        m_at = end < 0 ? m_line.size() : end + 1;
        add(start, Kind::IncludeFile);
    }

    void scanNext()
    {
        const QChar character = peek();
        if (character == u'/' && peek(1) == u'*') {
            const qsizetype start = m_at;
            m_at += 2;
            scanBlockComment(start);
        } else if (character == u'/' && peek(1) == u'/') {
            scanLineComment();
        } else if (character == u'"' || character == u'\'') {
            const qsizetype start = m_at++;
            scanQuoted(start, character, character == u'"' ? Kind::String : Kind::Character);
        } else if (character.isDigit() || (character == u'.' && peek(1).isDigit())) {
            scanNumber();
        } else if (isIdentifierStart(character)) {
            scanWord();
        } else {
            ++m_at;
        }
    }

    void scanBlockComment(qsizetype start)
    {
        const qsizetype end = m_line.indexOf(u"*/", m_at);
        m_at = end < 0 ? m_line.size() : end + 2;
        m_state = end < 0 ? State::BlockComment : State::Code;
        add(start, Kind::Comment);
    }

    void scanLineComment()
    {
        const qsizetype start = m_at;
        m_at = m_line.size();
        m_state = isContinued() ? State::LineComment : State::Code;
        add(start, Kind::Comment);
    }

    /** The rest of a literal whose opening quote stands before the current place. */
    void scanQuoted(qsizetype start, QChar quote, Kind kind)
    {
        m_state = State::Code;
        while (m_at < m_line.size()) {
            const QChar character = m_line[m_at++];
            if (character == quote)
                break;
            if (character != u'\\')
                continue;
            if (m_at == m_line.size() && kind == Kind::String)
                m_state = State::String;
            m_at = std::min(m_at + 1, m_line.size());
        }
        add(start, kind);
    }

    /** A preprocessing number: signs belong to it behind an exponent. */
    void scanNumber()
    {
        const qsizetype start = m_at++;
        const bool hexadecimal = m_line[start] == u'0' && (peek() == u'x' || peek() == u'X');
        while (m_at < m_line.size()) {
            const QChar former = m_line[m_at - 1].toLower();
            const bool exponent = former == u'p' || (former == u'e' && !hexadecimal);
            if (!isIdentifierPart(peek()) && peek() != u'.'
                && !(exponent && (peek() == u'+' || peek() == u'-')))
                break;
            ++m_at;
        }
        add(start, Kind::Number);
    }

    void scanWord()
    {
        const qsizetype start = m_at;
        while (isIdentifierPart(peek()))
            ++m_at;
        const std::u16string_view word(m_line.utf16() + start, std::size_t(m_at - start));
        if (std::ranges::binary_search(keywords, word))
            add(start, Kind::Keyword);
        else if (isType(word))
            add(start, Kind::Type);
    }

    QStringView m_line;
    State m_state;
    qsizetype m_at = 0;
    QList<Token> m_tokens;
};

} // namespace

QList<Token> scan(QStringView line, State &state)
{
    LineScanner scanner(line, state);
    QList<Token> tokens = scanner.scan();
    state = scanner.state();
    return tokens;
}

} // namespace AnsiCScanner
