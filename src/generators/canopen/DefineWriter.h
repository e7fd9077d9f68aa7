#pragma once

#include <QLatin1StringView>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <span>

class CodeWriter;
class Dialect;
struct DefineLine;
struct DefineView;

/** What a setting says to its define. */
enum class DefineForm : quint8 {
    Switch, ///< a number above 0: "1u"
    Count, ///< a number above 0: itself
    Function, ///< a name, whatever it is: "1u"
    SpacedFunction, ///< as Function, with a blank before the value
};

/**
 * One define that may stand in the file: its name, and the setting or the number of the view that it
 * answers. One whose number is 0 is left out, as the stack, and tools beside it, ask whether it is there.
 */
struct DefineRow
{
    using Number = quint32 (*)(const DefineView &view);

    constexpr DefineRow(QStringView name, QLatin1StringView settingKey, DefineForm defineForm)
        : macro(name), setting(settingKey), form(defineForm)
    {
    }
    constexpr DefineRow(QStringView name, Number value) : macro(name), number(value) { }

    QStringView macro; ///< in the words of the V4 stack
    QLatin1StringView setting; ///< of GeneralSettings
    DefineForm form = DefineForm::Count;
    Number number = nullptr; ///< instead of a setting
};

/** Writes the lines of gen_define.h in the words of a dialect. */
class DefineWriter
{
public:
    DefineWriter(CodeWriter &out, const Dialect &dialect) : m_out(out), m_dialect(dialect) { }

    bool isV4() const;

    /** Fixed text of the file. */
    void text(const QString &v4Text);
    /** Fixed text that is the same in both dialects. */
    void plain(const QString &text);
    /** Text of the project: whole lines, ended by LF, without the marks of the user's own section. */
    void lines(const QString &text);

    void define(QStringView macro, const QString &value);
    void flag(QStringView macro) { define(macro, QStringLiteral("1u")); }
    /** A define that has a value also where that is 0. */
    void number(QStringView macro, quint32 value);
    /** A define that stands only for a number above 0. */
    void count(QStringView macro, quint32 value);
    /** One number per line. */
    void list(QStringView macro, const DefineView &view, quint32 DefineLine::*number);
    void rows(std::span<const DefineRow> rows, const DefineView &view);

private:
    void write(QStringView macro, QChar separator, const QString &value);
    void row(const DefineRow &row, const DefineView &view);

    CodeWriter &m_out;
    const Dialect &m_dialect;
};
