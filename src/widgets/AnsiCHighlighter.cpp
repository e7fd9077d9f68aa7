#include "widgets/AnsiCHighlighter.h"

#include <QFileInfo>
#include <QPalette>

#include <array>

using namespace Qt::StringLiterals;
using AnsiCScanner::Kind;

namespace {

struct Look
{
    Kind kind;
    QRgb onLight;
    QRgb onDark;
    bool bold = false;
    bool italic = false;
};

constexpr std::array looks{
    Look{.kind = Kind::Keyword, .onLight = 0xff0b4fa8, .onDark = 0xff7cb7ff, .bold = true},
    Look{.kind = Kind::Type, .onLight = 0xff1f6f78, .onDark = 0xff6fd0c9},
    Look{.kind = Kind::Preprocessor, .onLight = 0xff8a4b08, .onDark = 0xffe8b36a},
    Look{.kind = Kind::IncludeFile, .onLight = 0xff2e7d32, .onDark = 0xff9ad28b},
    Look{.kind = Kind::String, .onLight = 0xff2e7d32, .onDark = 0xff9ad28b},
    Look{.kind = Kind::Character, .onLight = 0xff2e7d32, .onDark = 0xff9ad28b},
    Look{.kind = Kind::Number, .onLight = 0xff9c1c6b, .onDark = 0xfff092c8},
    Look{.kind = Kind::Comment, .onLight = 0xff616a74, .onDark = 0xff9aa5b1, .italic = true},
};

constexpr int darkestLightBase = 128; // lightness of the background, 0 to 255

} // namespace

AnsiCHighlighter::AnsiCHighlighter(QTextDocument *document) : QSyntaxHighlighter(document)
{
    makeFormats(m_dark);
}

void AnsiCHighlighter::setPalette(const QPalette &palette)
{
    const bool dark = palette.color(QPalette::Base).lightness() < darkestLightBase;
    if (dark == m_dark)
        return;
    m_dark = dark;
    makeFormats(dark);
    rehighlight();
}

bool AnsiCHighlighter::isSource(const QString &path)
{
    static const QStringList suffixes{u"c"_s,   u"h"_s,  u"cc"_s,  u"cpp"_s,
                                      u"cxx"_s, u"hh"_s, u"hpp"_s, u"hxx"_s};
    return suffixes.contains(QFileInfo(path).suffix().toLower());
}

void AnsiCHighlighter::highlightBlock(const QString &text)
{
    auto state = AnsiCScanner::State(std::max(0, previousBlockState())); // -1: the first line
    const QList<AnsiCScanner::Token> tokens = AnsiCScanner::scan(text, state);
    for (const AnsiCScanner::Token &token : tokens)
        setFormat(int(token.start), int(token.length), m_formats.value(token.kind));
    setCurrentBlockState(int(state));
}

void AnsiCHighlighter::makeFormats(bool dark)
{
    for (const Look &look : looks) {
        QTextCharFormat format;
        format.setForeground(QColor(dark ? look.onDark : look.onLight));
        if (look.bold)
            format.setFontWeight(QFont::Bold);
        format.setFontItalic(look.italic);
        m_formats.insert(look.kind, format);
    }
}
