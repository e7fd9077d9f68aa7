#include "importers/TextLineReader.h"

#include <QIODevice>

#include <algorithm>

namespace {

constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");

} // namespace

bool TextLineReader::next(QByteArray &line)
{
    line.clear();
    m_tooLong = false;
    while (m_offset < m_chunk.size() || fill()) {
        if (!takePiece(line))
            continue;
        if (!m_tooLong && !line.isEmpty())
            return true;
        line.clear();
        m_tooLong = false;
    }
    return !m_tooLong && !line.isEmpty();
}

// Takes what the chunk holds of the line; true when that is its end.
bool TextLineReader::takePiece(QByteArray &line)
{
    const auto begin = m_chunk.cbegin() + m_offset;
    const auto end = std::find_if(begin, m_chunk.cend(), [](char c) { return c == '\n' || c == '\r'; });
    const qsizetype length = end - begin;
    if (line.size() + length > LongestLine) {
        m_tooLong = true;
        line.clear();
    }
    if (!m_tooLong)
        line.append(m_chunk.constData() + m_offset, length);
    m_offset += length;
    if (end == m_chunk.cend())
        return false;
    ++m_offset;
    return true;
}

bool TextLineReader::fill()
{
    m_chunk = m_device.read(LongestLine);
    m_offset = m_position == 0 && m_chunk.startsWith(byteOrderMark) ? byteOrderMark.size() : 0;
    m_position += m_chunk.size();
    return !m_chunk.isEmpty();
}
