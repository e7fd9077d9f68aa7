#pragma once

#include <QList>
#include <QStringView>

/** Splits lines of C into the tokens that are worth a colour; what is C++ beyond that is known as well. */
namespace AnsiCScanner {

enum class Kind {
    Keyword,
    Type, ///< types of the language, of stdint.h and of the stack
    Preprocessor, ///< the directive's name with its hash
    IncludeFile, ///< the file's name between angle brackets
    String, ///< string literals
    Character, ///< character constants
    Number,
    Comment,
};

struct Token
{
    qsizetype start = 0; ///< in characters from the beginning of the line
    qsizetype length = 0;
    Kind kind = Kind::Keyword;

    bool operator==(const Token &) const = default;
};

/** What a line leaves open for the next one. The numbers are the block states of the highlighter. */
enum class State {
    Code = 0,
    BlockComment = 1,
    LineComment = 2, ///< continued by a backslash at the line's end
    String = 3, ///< likewise
};

/** The tokens of one line, in order; `state` is that behind the line before and becomes that behind this. */
QList<Token> scan(QStringView line, State &state);

} // namespace AnsiCScanner
