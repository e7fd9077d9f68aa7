#pragma once

#include <QList>
#include <QMetaType>
#include <QString>

/** A message without its tags: the text, and which parts of it stand out. */
struct MessageText
{
    struct Span
    {
        int start = 0;
        int length = 0;
        bool bold = false;
        bool italic = false;

        bool operator==(const Span &) const = default;
    };

    QString text;
    QList<Span> spans; ///< in the order of the text, none overlaps another

    /**
     * Reads the rich text of a message: `strong`, `b`, `em`, `i`, `font`, `span`, `p`, `u` and `br`, and the
     * entities of XML. Anything else between angle brackets belongs to the text, for names of the project
     * stand in messages as they are.
     */
    static MessageText fromRichText(const QString &richText);

    /** One text per line; a text without a line break is one line. */
    QList<MessageText> lines() const;

    bool operator==(const MessageText &) const = default;
};
Q_DECLARE_METATYPE(MessageText)
