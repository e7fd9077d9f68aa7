#include "generators/CodeWriter.h"

#include <QTextStream>
#include <QVarLengthArray>

#include <algorithm>
#include <array>
#include <charconv>

namespace {

constexpr qsizetype usualPlaceholders = 16; // more cost an allocation
constexpr std::size_t longestNumber = 20; // of 64 bits, with a sign

using BoundValues = QVarLengthArray<const TemplateValue *, usualPlaceholders>;

/** The values by the numbers of their placeholders; false if they do not fit each other. */
bool bind(const TemplateText &text, std::initializer_list<TemplateValue> values, BoundValues &bound)
{
    const QList<QStringView> &names = text.names();
    if (qsizetype(values.size()) != names.size())
        return false;
    qsizetype expected = 0; // values mostly come in the order of the placeholders
    for (const TemplateValue &value : values) {
        const qsizetype place = names[expected] == value.name() ? expected : names.indexOf(value.name());
        if (place < 0 || bound[place])
            return false;
        bound[place] = &value;
        ++expected;
    }
    return true;
}

[[noreturn]] void refuse(const TemplateText &text, std::initializer_list<TemplateValue> values)
{
    QList<QStringView> names;
    for (const TemplateValue &value : values)
        names.append(value.name());
    qFatal("template and values do not fit: %s", qPrintable(text.mismatch(names)));
}

} // namespace

CodeWriter::CodeWriter(QString &target) : m_text(&target)
{
    if (!target.isEmpty())
        m_last = target.back();
}

CodeWriter &CodeWriter::operator<<(QStringView text)
{
    if (m_indent.isEmpty()) {
        append(text);
        return *this;
    }
    while (!text.isEmpty()) {
        const qsizetype lineEnd = text.indexOf(u'\n');
        const QStringView line = lineEnd < 0 ? text : text.first(lineEnd + 1);
        if (m_last == u'\n' && lineEnd != 0)
            append(m_indent);
        append(line);
        text = text.sliced(line.size());
    }
    return *this;
}

void CodeWriter::append(QStringView text)
{
    if (text.isEmpty())
        return;
    if (m_text)
        m_text->append(text);
    else
        *m_stream << text;
    m_size += text.size();
    m_last = text.back();
}

void CodeWriter::write(qint64 number)
{
    writeNumber(number);
}

void CodeWriter::write(quint64 number)
{
    writeNumber(number);
}

template <typename T>
void CodeWriter::writeNumber(T number)
{
    std::array<char, longestNumber> digits;
    char *const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    std::array<char16_t, longestNumber> text;
    std::copy(digits.data(), end, text.begin());
    *this << QStringView(text.data(), end - digits.data());
}

void CodeWriter::fill(const TemplateText &text, std::initializer_list<TemplateValue> values)
{
    BoundValues bound(text.names().size(), nullptr);
    if (!bind(text, values, bound))
        refuse(text, values);
    for (const TemplateText::Piece &piece : text.pieces()) {
        *this << piece.fixed;
        if (piece.isLine)
            writeLine(piece.indent, *bound[piece.name]);
        else if (piece.name >= 0)
            std::visit([this](const auto &value) { write(value); }, bound[piece.name]->m_value);
    }
}

void CodeWriter::writeLine(QStringView indent, const TemplateValue &value)
{
    if (const auto *block = std::get_if<TemplateValue::Block>(&value.m_value)) {
        writeBlockLines(indent, *block);
        return;
    }
    *this << indent;
    std::visit([this](const auto &text) { write(text); }, value.m_value);
    *this << u"\n";
}

void CodeWriter::writeBlockLines(QStringView indent, const TemplateValue::Block &block)
{
    const qint64 before = m_size;
    const qsizetype outerIndent = m_indent.size();
    m_indent += indent;
    block.call(block.writer, *this);
    if (m_size != before && m_last != u'\n')
        *this << u"\n";
    m_indent.truncate(outerIndent);
}
