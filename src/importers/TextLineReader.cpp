#include "importers/TextLineReader.h"

#include <QIODevice>

#include <algorithm>

namespace {

constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");
constexpr QByteArrayView utf16Marks[] = {QByteArrayView("\xFF\xFE"), QByteArrayView("\xFE\xFF")};

} // namespace

bool TextLineReader::next(QByteArray &line)
{
    line.clear();
    m_tooLong = false;
    while (m_offset < m_chunk.size() || fill()) {
        if (takePiece(line) && endLine(line, m_ends))
            return true;
    }
    return endLine(line, m_ends + 1);
}

// Whether the line that has come to its end is one to deliver.
bool TextLineReader::endLine(QByteArray &line, qint64 number)
{
    if (m_tooLong) {
        ++m_tooLongLines;
        line.clear();
        m_tooLong = false;
    }
    if (line.isEmpty())
        return false;
    m_lineNumber = number;
    return true;
}

// Takes what the chunk holds of the line; true when that is its end.
bool TextLineReader::takePiece(QByteArray &line)
{
    const auto begin = m_chunk.cbegin() + m_offset;
    const auto end = std::find_if(begin, m_chunk.cend(), [](char c) { return c == '\n' || c == '\r'; });
    const qsizetype length = end - begin;
    if (line.size() + length > m_longestLine) {
        m_tooLong = true;
        line.clear();
    }
    if (!m_tooLong)
        line.append(m_chunk.constData() + m_offset, length);
    m_offset += length;
    m_afterReturn = m_afterReturn && length == 0;
    if (end == m_chunk.cend())
        return false;
    countEnd(*end);
    ++m_offset;
    return true;
}

void TextLineReader::countEnd(char end)
{
    if (end == '\r' || !m_afterReturn)
        ++m_ends;
    m_afterReturn = end == '\r';
}

bool TextLineReader::fill()
{
    m_chunk = m_device.read(LongestLine);
    m_offset = 0;
    const bool isFirst = m_position == 0;
    m_position += m_chunk.size();
    const auto isMark = [this](QByteArrayView mark) { return m_chunk.startsWith(mark); };
    if (isFirst && std::any_of(std::begin(utf16Marks), std::end(utf16Marks), isMark))
        m_utf16 = QStringDecoder(QStringDecoder::Utf16);
    else if (isFirst && isMark(byteOrderMark))
        m_offset = byteOrderMark.size();
    if (m_utf16.isValid())
        m_chunk = QString(m_utf16.decode(m_chunk)).toUtf8();
    return !m_chunk.isEmpty();
}
