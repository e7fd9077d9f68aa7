#pragma once

#include <QString>

/** A finding in a template source; line and column count characters from 1, 0 means the whole file. */
struct TemplateMessage
{
    QString file;
    int line = 0;
    int column = 0;
    QString text;

    /** The form that editors and build logs understand: "file:line:column: error: text". */
    QString toString() const;
};
