#include "generators/canopen/DefineWriter.h"

#include "generators/CodeWriter.h"
#include "generators/Dialect.h"
#include "generators/canopen/DefineView.h"
#include "generators/canopen/UserSection.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

/** What an unsigned number is in C. */
QString literal(quint32 value)
{
    return QString::number(value) + u'u';
}

} // namespace

bool DefineWriter::isV4() const
{
    return m_dialect.isV4();
}

void DefineWriter::text(const QString &v4Text)
{
    m_out << m_dialect.text(v4Text);
}

void DefineWriter::plain(const QString &text)
{
    m_out << text;
}

void DefineWriter::lines(const QString &text)
{
    QString plain = UserSection::withoutMarks(text);
    plain.replace("\r\n"_L1, "\n"_L1).replace(u'\r', u'\n').replace(QChar::ParagraphSeparator, u'\n');
    static const QRegularExpression blanksBehindBackslash(u"\\\\[ \\t]+\n"_s); // compilers warn of them
    if (!plain.endsWith(u'\n'))
        plain += u'\n';
    plain.replace(blanksBehindBackslash, u"\\\n"_s);
    m_out << plain;
    if (plain.trimmed().endsWith(u'\\')) // would draw in the line that follows
        m_out << u'\n';
}

void DefineWriter::write(QStringView macro, QChar separator, const QString &value)
{
    m_out << u"#define " << m_dialect.text(macro.toString()) << separator << value << u'\n';
}

void DefineWriter::define(QStringView macro, const QString &value)
{
    write(macro, u'\t', value);
}

void DefineWriter::number(QStringView macro, quint32 value)
{
    define(macro, literal(value));
}

void DefineWriter::count(QStringView macro, quint32 value)
{
    if (value > 0)
        number(macro, value);
}

void DefineWriter::list(QStringView macro, const DefineView &view, quint32 DefineLine::*number)
{
    QStringList values;
    for (const DefineLine &line : view.lines)
        values.append(literal(line.*number));
    define(macro, values.join(", "_L1));
}

void DefineWriter::rows(std::span<const DefineRow> rows, const DefineView &view)
{
    for (const DefineRow &defineRow : rows)
        row(defineRow, view);
}

void DefineWriter::row(const DefineRow &row, const DefineView &view)
{
    if (row.number) {
        count(row.macro, row.number(view));
        return;
    }
    const SettingValues &settings = view.general;
    switch (row.form) {
    case DefineForm::Switch:
        if (settings.isOn(row.setting))
            flag(row.macro);
        break;
    case DefineForm::Count:
        count(row.macro, settings.number(row.setting));
        break;
    case DefineForm::Function:
    case DefineForm::SpacedFunction:
        if (!settings.text(row.setting).isEmpty())
            write(row.macro, row.form == DefineForm::Function ? u'\t' : u' ', literal(1));
        break;
    }
}
