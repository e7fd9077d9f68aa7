#pragma once

#include <QDateTime>
#include <QList>
#include <QMetaType>
#include <QString>

#include <functional>

/**
 * A file of any kind and size as a reader sees it.
 *
 * The text has "\n" line ends only and no character that a text view would take for a line end or drop.
 * A line that is too long to be laid out in reasonable time comes in pieces. A binary file comes as a
 * hexadecimal dump of its beginning.
 */
struct TextFile
{
    enum class Failure {
        None,
        Missing,
        NotAFile, ///< a folder or a device
        Unreadable, ///< `reason` tells why
        Cancelled,
    };
    enum class LineEnd {
        None, ///< one line only
        Lf,
        CrLf,
        Cr,
        Mixed,
    };

    /** What is shown at most; a text view needs some ten times as much memory. */
    static constexpr qint64 maximumBytes = 64LL * 1024 * 1024;
    static constexpr qint64 maximumDumpBytes = 1024LL * 1024;
    static constexpr qsizetype maximumLineLength = 4096;

    QString path;
    Failure failure = Failure::None;
    QString reason;
    qint64 size = 0; ///< of the whole file in bytes
    qint64 shownSize = 0; ///< how many of them the text stands for
    QDateTime modified;
    bool binary = false;
    QString encoding;
    LineEnd lineEnd = LineEnd::None;
    QString text;
    /** Numbers (from 0) of the lines of `text` that only continue the line before; ascending. */
    QList<int> continuations;

    bool isComplete() const { return shownSize == size; }

    /** Reads a file; `isCancelled` is asked now and then and ends the reading with Failure::Cancelled. */
    static TextFile read(const QString &path, const std::function<bool()> &isCancelled = {});
};
Q_DECLARE_METATYPE(TextFile)
