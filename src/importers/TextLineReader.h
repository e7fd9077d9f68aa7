#pragma once

#include <QByteArray>

class QIODevice;

/**
 * Reads a text file line by line with bounded memory.
 *
 * CR LF, LF and CR all end a line; lines without content are left out. A line that is longer than the
 * limit is left out too, so that a file without line ends costs neither memory nor time.
 */
class TextLineReader
{
public:
    static constexpr qsizetype LongestLine = 65536; ///< bytes

    /** The device must be open and outlive the reader. */
    explicit TextLineReader(QIODevice &device) : m_device(device) { }

    /** False at the end of the file. */
    bool next(QByteArray &line);
    /** Bytes taken from the device. */
    qint64 position() const { return m_position; }

private:
    bool fill();
    bool takePiece(QByteArray &line);

    QIODevice &m_device;
    QByteArray m_chunk;
    qsizetype m_offset = 0;
    qint64 m_position = 0;
    bool m_tooLong = false;
};
