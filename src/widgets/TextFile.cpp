#include "widgets/TextFile.h"

#include "canopen/LegacyText.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 readPiece = 1024LL * 1024;
constexpr qsizetype probedBytes = 64 * 1024;
constexpr int dumpWidth = 16; // bytes a line

bool isUtf16(QByteArrayView bytes)
{
    return bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF");
}

/** Text holds no zero bytes, whatever its encoding, apart from UTF-16. */
bool isBinary(const QByteArray &bytes)
{
    return !isUtf16(bytes) && QByteArrayView(bytes).first(std::min(bytes.size(), probedBytes)).contains('\0');
}

/** Ends a text that was cut off behind a whole line, so that no character is torn apart. */
void cutToWholeLines(QByteArray &bytes)
{
    if (isUtf16(bytes)) {
        bytes.truncate(bytes.size() & ~qsizetype(1));
        return;
    }
    const qsizetype lineEnd = bytes.lastIndexOf('\n');
    if (lineEnd >= 0)
        bytes.truncate(lineEnd + 1);
}

/** A character that a text document can hold in the middle of a line. */
QChar displayable(QChar character)
{
    switch (character.unicode()) {
    case 0:
        return QChar(0x2400); // the picture of NUL
    case 0xFDD0: // Qt's own marks of frames
    case 0xFDD1:
    case 0xFFFC: // stands for an embedded object
    case QChar::LineSeparator:
    case QChar::ParagraphSeparator:
        return QChar::ReplacementCharacter;
    default:
        return character;
    }
}

/** Puts the lines of a text together again with one kind of line end and none of them too long. */
class LineWriter
{
public:
    explicit LineWriter(TextFile &file) : m_file(file) { }

    void write(QStringView text)
    {
        m_file.text.reserve(text.size() + text.size() / TextFile::maximumLineLength + 1);
        for (qsizetype i = 0; i < text.size(); ++i) {
            const QChar character = text[i];
            if (character == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') {
                endLine(TextFile::LineEnd::CrLf);
                ++i;
            } else if (character == u'\n' || character == u'\r') {
                endLine(character == u'\n' ? TextFile::LineEnd::Lf : TextFile::LineEnd::Cr);
            } else {
                put(displayable(character));
            }
        }
    }

private:
    void endLine(TextFile::LineEnd end)
    {
        if (m_file.lineEnd != end)
            m_file.lineEnd = m_file.lineEnd == TextFile::LineEnd::None ? end : TextFile::LineEnd::Mixed;
        breakLine();
    }

    void put(QChar character)
    {
        if (m_length >= TextFile::maximumLineLength && !character.isLowSurrogate()) {
            breakLine();
            m_file.continuations.append(m_line);
        }
        m_file.text.append(character);
        ++m_length;
    }

    void breakLine()
    {
        m_file.text.append(u'\n');
        ++m_line;
        m_length = 0;
    }

    TextFile &m_file;
    int m_line = 0;
    qsizetype m_length = 0;
};

QString dumpLine(QByteArrayView bytes, qsizetype offset)
{
    QString hexadecimal;
    QString characters;
    for (qsizetype i = 0; i < dumpWidth; ++i) {
        if (i == dumpWidth / 2)
            hexadecimal += u' ';
        if (i >= bytes.size()) {
            hexadecimal += "   "_L1;
            continue;
        }
        const auto byte = uchar(bytes[i]);
        hexadecimal += u' ' + QString::number(byte, 16).rightJustified(2, u'0');
        characters += byte >= 0x20 && byte < 0x7F ? QChar(byte) : u'.';
    }
    return QString::number(offset, 16).rightJustified(8, u'0') + u' ' + hexadecimal + "  |"_L1 + characters
        + u'|';
}

void dump(QByteArrayView bytes, TextFile &file)
{
    file.shownSize = std::min<qint64>(bytes.size(), TextFile::maximumDumpBytes);
    QStringList lines;
    for (qsizetype offset = 0; offset < file.shownSize; offset += dumpWidth)
        lines.append(
            dumpLine(bytes.sliced(offset, std::min<qsizetype>(dumpWidth, file.shownSize - offset)), offset));
    file.text = lines.join(u'\n');
}

void decode(QByteArray bytes, TextFile &file)
{
    if (bytes.size() < file.size)
        cutToWholeLines(bytes);
    file.shownSize = bytes.size();
    const LegacyText::Decoded decoded = LegacyText::decode(bytes);
    bytes.clear(); // the memory of a big file is needed for its text
    file.encoding = LegacyText::encodingName(decoded.encoding);
    LineWriter(file).write(decoded.text);
}

TextFile::Failure failureOf(const QFileInfo &info)
{
    if (!info.exists())
        return TextFile::Failure::Missing;
    return info.isFile() ? TextFile::Failure::None : TextFile::Failure::NotAFile;
}

/** The beginning of an open file; what it is cut to is read even while the file grows. */
QByteArray readBeginning(QFile &source, const std::function<bool()> &isCancelled, TextFile &file)
{
    QByteArray bytes;
    bytes.reserve(std::min(file.size, TextFile::maximumBytes));
    while (bytes.size() < TextFile::maximumBytes) {
        if (isCancelled && isCancelled()) {
            file.failure = TextFile::Failure::Cancelled;
            return {};
        }
        const QByteArray piece = source.read(std::min(readPiece, TextFile::maximumBytes - bytes.size()));
        if (piece.isEmpty())
            break;
        bytes += piece;
    }
    if (source.error() != QFileDevice::NoError) {
        file.failure = TextFile::Failure::Unreadable;
        file.reason = source.errorString();
    }
    return bytes;
}

} // namespace

TextFile TextFile::read(const QString &path, const std::function<bool()> &isCancelled)
{
    const QFileInfo info(path);
    TextFile file{.path = path, .failure = failureOf(info)};
    if (file.failure != Failure::None)
        return file;
    file.size = info.size();
    file.modified = info.lastModified();
    QFile source(path);
    if (!source.open(QIODevice::ReadOnly)) {
        file.failure = Failure::Unreadable;
        file.reason = source.errorString();
        return file;
    }
    QByteArray bytes = readBeginning(source, isCancelled, file);
    file.size = std::max<qint64>(file.size, bytes.size());
    if (bytes.size() < maximumBytes)
        file.size = bytes.size(); // it has shrunk in the meantime
    if (file.failure != Failure::None)
        return file;
    file.binary = isBinary(bytes);
    if (file.binary)
        dump(bytes, file);
    else
        decode(std::move(bytes), file);
    return file;
}
