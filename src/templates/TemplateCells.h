#pragma once

#include <QList>
#include <QString>

/** One value of a template source with the place where it begins (columns count from 1). */
struct TemplateCell
{
    QString text;
    int column = 0;
    /** Written in quotes: such an empty text is meant, a bare empty cell stands for the usual value. */
    bool quoted = false;
};

/** A text row cut into its cells, or the first thing that is wrong with it. */
struct TemplateCells
{
    QList<TemplateCell> cells;
    QString error;
    int errorColumn = 0;

    /**
     * Cuts `text` at each separator that stands outside quotes; blanks around a cell do not count.
     *
     * A cell that begins with a double quote ends with one, and knows the escapes \" \\ \n \r \t.
     * `firstColumn` is the column of the text's first character.
     */
    static TemplateCells split(const QString &text, QChar separator, int firstColumn);
    /** The whole text as a single cell: bare text may hold any character then. */
    static TemplateCells single(const QString &text, int firstColumn);
};
