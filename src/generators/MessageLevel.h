#pragma once

#include <QString>

/** What a message of a check or a generation run counts for. */
enum class MessageLevel {
    Info,
    Correction, ///< the project was changed
    Hint,
    Warning,
    Error,
};

/**
 * The level of a rich text, told by the text alone: by its mark at the head, or for the messages of a run
 * by their wording.
 */
MessageLevel messageLevel(const QString &richText);
