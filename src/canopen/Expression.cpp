#include "canopen/Expression.h"

#include <QString>
#include <QtNumeric>

#include <limits>

namespace {

using Value = std::optional<qint64>;

struct Token
{
    char16_t kind = 0; ///< the character of an operator, '0' for a number, 0 for
                       ///< the end, '?' for anything else
    qint64 number = 0;
};

class Scanner
{
public:
    explicit Scanner(QStringView text) : m_rest(text) { }

    Token next()
    {
        m_rest = m_rest.trimmed();
        if (m_rest.isEmpty())
            return {};
        const char16_t first = m_rest.front().unicode();
        if (first >= u'0' && first <= u'9')
            return number();
        m_rest = m_rest.sliced(1);
        return {QStringView(u"+-*/()").contains(QChar(first)) ? first : u'?', 0};
    }

private:
    Token number()
    {
        const bool hexadecimal = m_rest.startsWith(u"0x", Qt::CaseInsensitive);
        qsizetype length = hexadecimal ? 2 : 0;
        while (length < m_rest.size() && m_rest[length].isLetterOrNumber())
            ++length;
        const QStringView digits = m_rest.first(length).sliced(hexadecimal ? 2 : 0);
        m_rest = m_rest.sliced(length);
        bool ok = false;
        const qint64 value = digits.toLongLong(&ok, hexadecimal ? 16 : 10);
        return ok ? Token{u'0', value} : Token{u'?', 0};
    }

    QStringView m_rest;
};

/** Recursive descent over sum, product, factor; an empty value runs through to
 * the top. */
class Parser
{
public:
    explicit Parser(QStringView text) : m_scanner(text), m_token(m_scanner.next()) { }

    Value parse()
    {
        const Value result = sum();
        return m_token.kind == 0 ? result : std::nullopt;
    }

private:
    void advance() { m_token = m_scanner.next(); }

    Value sum()
    {
        Value left = product();
        while (left && (m_token.kind == u'+' || m_token.kind == u'-')) {
            const char16_t sign = m_token.kind;
            advance();
            left = apply(sign, *left, product());
        }
        return left;
    }

    Value product()
    {
        Value left = factor();
        while (left && (m_token.kind == u'*' || m_token.kind == u'/')) {
            const char16_t sign = m_token.kind;
            advance();
            left = apply(sign, *left, factor());
        }
        return left;
    }

    Value factor()
    {
        bool negative = false;
        while (m_token.kind == u'-' || m_token.kind == u'+') {
            negative ^= m_token.kind == u'-';
            advance();
        }
        const Value value = m_token.kind == u'(' ? group() : number();
        return negative && value ? apply(u'-', 0, value) : value;
    }

    Value group()
    {
        if (m_depth == maxExpressionDepth)
            return {};
        ++m_depth;
        advance();
        const Value value = sum();
        --m_depth;
        if (m_token.kind != u')')
            return {};
        advance();
        return value;
    }

    Value number()
    {
        if (m_token.kind != u'0')
            return {};
        const qint64 value = m_token.number;
        advance();
        return value;
    }

    static Value apply(char16_t sign, qint64 left, Value right)
    {
        if (!right)
            return {};
        qint64 result = 0;
        switch (sign) {
        case u'+':
            return qAddOverflow(left, *right, &result) ? Value() : result;
        case u'-':
            return qSubOverflow(left, *right, &result) ? Value() : result;
        case u'*':
            return qMulOverflow(left, *right, &result) ? Value() : result;
        default:
            return quotient(left, *right);
        }
    }

    static Value quotient(qint64 left, qint64 right)
    {
        const bool overflow = left == std::numeric_limits<qint64>::min() && right == -1;
        return right == 0 || overflow ? Value() : left / right;
    }

    Scanner m_scanner;
    Token m_token;
    int m_depth = 0;
};

} // namespace

std::optional<qint64> evaluateExpression(QStringView text)
{
    return Parser(text).parse();
}
