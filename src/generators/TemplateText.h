#pragma once

#include <QList>
#include <QString>
#include <QStringView>

/**
 * Fixed text with named placeholders, taken apart once and then filled any number of times.
 *
 *     static const TemplateText row(u"\t{ 0x$index$u, $count$u },\n"_s);
 *     out.fill(row, {{u"index", hexIndex}, {u"count", subs.size()}});
 *
 * A placeholder is a name between two dollar signs, "$$" stands for one of them. Everything else, each tab
 * and each blank at a line's end, reaches the output as it stands. See CodeWriter for the filling.
 */
class TemplateText
{
public:
    /** A stretch of fixed text and the placeholder behind it, if any. */
    struct Piece
    {
        QStringView fixed;
        qsizetype name = -1; ///< which of names(); -1 for none
        QStringView indent; ///< of a placeholder that is alone on its line: the blanks before it
        bool isLine = false; ///< the placeholder is alone on its line; the line end is not in the next piece
    };

    /** Ends the program on a text that has a flaw: a template is code. */
    explicit TemplateText(const QString &text);
    Q_DISABLE_COPY_MOVE(TemplateText)

    const QList<Piece> &pieces() const { return m_pieces; }
    /** Every placeholder once, in the order of their first appearance. */
    const QList<QStringView> &names() const { return m_names; }

    /** What is wrong with a text that shall be a template; empty when nothing is. */
    static QString flaw(const QString &text);
    /** Which placeholders lack a value and which values lack a placeholder; empty when all fit. */
    QString mismatch(const QList<QStringView> &values) const;

private:
    TemplateText() = default;
    QString parse();
    qsizetype addPlaceholder(qsizetype begin, qsizetype open, qsizetype close);

    QString m_text;
    QList<Piece> m_pieces;
    QList<QStringView> m_names;
};
