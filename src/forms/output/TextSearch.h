#pragma once

#include <QString>

/** What the user wants to find in the messages. */
struct TextSearch
{
    QString text;
    Qt::CaseSensitivity cases = Qt::CaseInsensitive;
    bool wholeWords = false;

    /** The first place at or behind `from`, -1 for none; an empty text is nowhere. */
    qsizetype indexIn(const QString &where, qsizetype from = 0) const;
};
