#pragma once

#include <QByteArray>
#include <QStringDecoder>

class QIODevice;

/**
 * Reads a text file line by line with bounded memory.
 *
 * CR LF, LF and CR all end a line; lines without content are left out. A line that is longer than the
 * limit is left out too, so that a file without line ends costs neither memory nor time. UTF-16 with a
 * byte order mark is delivered as UTF-8, every other encoding as it stands.
 */
class TextLineReader
{
public:
    static constexpr qsizetype LongestLine = 65536; ///< bytes

    /** The device must be open and outlive the reader; the limit is in bytes. */
    explicit TextLineReader(QIODevice &device, qsizetype longestLine = LongestLine)
        : m_device(device), m_longestLine(longestLine)
    {
    }

    /** False at the end of the file. */
    bool next(QByteArray &line);
    /** Of the line that came last, from 1; lines that were left out count too. */
    qint64 lineNumber() const { return m_lineNumber; }
    /** How many lines were left out for their length. */
    qint64 tooLongLines() const { return m_tooLongLines; }
    /** Bytes taken from the device. */
    qint64 position() const { return m_position; }

private:
    bool fill();
    bool takePiece(QByteArray &line);
    void countEnd(char end);
    bool endLine(QByteArray &line, qint64 number);

    QIODevice &m_device;
    qsizetype m_longestLine;
    QByteArray m_chunk;
    QStringDecoder m_utf16;
    qsizetype m_offset = 0;
    qint64 m_position = 0;
    qint64 m_ends = 0;
    qint64 m_lineNumber = 0;
    qint64 m_tooLongLines = 0;
    bool m_tooLong = false;
    bool m_afterReturn = false;
};
