#pragma once

#include "generators/TemplateText.h"

#include <QString>
#include <QStringView>

#include <concepts>
#include <initializer_list>
#include <variant>

class CodeWriter;
class QTextStream;

/** Whole numbers; characters and truth values are none. */
template <typename T>
concept WholeNumber =
    std::integral<T> && !std::same_as<
        T,
        bool> && !std::same_as<T, char> && !std::same_as<T, wchar_t> && !std::same_as<T, char8_t> && !std::same_as<T, char16_t> && !std::same_as<T, char32_t>;

/** What writes a block of text: a lambda that calls the method for a loop or a variant. */
template <typename T>
concept BlockWriter = std::invocable<const T &, CodeWriter &>;

/**
 * The value of one placeholder for the length of one CodeWriter::fill: a text, a number or a block.
 *
 * It holds no text of its own; what it is made from must live until the call ends, as arguments do.
 */
class TemplateValue
{
public:
    TemplateValue(QStringView name, QStringView text) : m_name(name), m_value(text) { }
    TemplateValue(QStringView name, const QString &text) : m_name(name), m_value(QStringView(text)) { }
    template <WholeNumber T>
    TemplateValue(QStringView name, T number) : m_name(name), m_value(widened(number))
    {
    }
    template <BlockWriter T>
    TemplateValue(QStringView name, const T &block) : m_name(name), m_value(Block{&block, &call<T>})
    {
    }

    QStringView name() const { return m_name; }

private:
    friend class CodeWriter;

    struct Block
    {
        const void *writer;
        void (*call)(const void *, CodeWriter &);
    };

    template <typename T>
    static auto widened(T number)
    {
        if constexpr (std::signed_integral<T>)
            return qint64(number);
        else
            return quint64(number);
    }
    template <typename T>
    static void call(const void *writer, CodeWriter &out)
    {
        (*static_cast<const T *>(writer))(out);
    }

    QStringView m_name;
    std::variant<QStringView, qint64, quint64, Block> m_value;
};

/**
 * Writes the text of a generated file, piece by piece or by filling templates.
 *
 * A value stands where its placeholder does. A block does too; where its placeholder is alone on a line,
 * that line is the block's: every line of the block gets the placeholder's indent, a line end is added if
 * the block has left its last one open, and a block that writes nothing takes the line away.
 *
 * A placeholder without value, a value without placeholder or a second value end the program, in every
 * build: the two stand side by side in the source, so only an unfinished change can part them.
 */
class CodeWriter
{
public:
    /** Appends to the text. */
    explicit CodeWriter(QString &target);
    explicit CodeWriter(QTextStream &target) : m_stream(&target) { }
    Q_DISABLE_COPY_MOVE(CodeWriter)

    CodeWriter &operator<<(QStringView text);
    CodeWriter &operator<<(const QString &text) { return *this << QStringView(text); }
    CodeWriter &operator<<(QChar c) { return *this << QStringView(&c, 1); }
    template <WholeNumber T>
    CodeWriter &operator<<(T number)
    {
        write(TemplateValue::widened(number));
        return *this;
    }

    void fill(const TemplateText &text, std::initializer_list<TemplateValue> values = {});

    /** Calls `write` for every element, with the separator between two of them. */
    template <typename List, typename Write>
    void join(const List &list, QStringView separator, const Write &write)
    {
        bool first = true;
        for (const auto &element : list) {
            if (!first)
                *this << separator;
            first = false;
            write(element);
        }
    }

    /** Characters written so far. */
    qint64 size() const { return m_size; }

private:
    void append(QStringView text);
    void write(QStringView text) { *this << text; }
    void write(qint64 number);
    void write(quint64 number);
    template <typename T>
    void writeNumber(T number);
    void write(const TemplateValue::Block &block) { block.call(block.writer, *this); }
    void writeLine(QStringView indent, const TemplateValue &value);
    void writeBlockLines(QStringView indent, const TemplateValue::Block &block);

    QString *m_text = nullptr;
    QTextStream *m_stream = nullptr;
    QString m_indent;
    qint64 m_size = 0;
    QChar m_last = u'\n';
};
