#include "generators/canopen/UserSection.h"

#include "canopen/LegacyText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

using namespace Qt::StringLiterals;

namespace {

bool isLineEnd(char byte)
{
    return byte == '\n' || byte == '\r';
}

bool isBlank(char byte)
{
    return byte == ' ' || byte == '\t';
}

/** Length of the line end at a position: CR LF, LF or CR; 0 where the line goes on. */
qsizetype lineEndAt(QByteArrayView content, qsizetype position)
{
    if (position >= content.size() || !isLineEnd(content[position]))
        return 0;
    return content.sliced(position).startsWith("\r\n") ? 2 : 1;
}

/** Where the section begins behind a mark: on the next line, unless the mark's line has more on it. */
qsizetype behindLine(QByteArrayView content, qsizetype behindMark)
{
    qsizetype position = behindMark;
    while (position < content.size() && isBlank(content[position]))
        ++position;
    if (position == content.size())
        return position;
    const qsizetype lineEnd = lineEndAt(content, position);
    return lineEnd > 0 ? position + lineEnd : behindMark;
}

/** Where the section ends before a mark: with the line before, unless the mark's line has more on it. */
qsizetype beforeLine(QByteArrayView content, qsizetype mark)
{
    qsizetype position = mark;
    while (position > 0 && isBlank(content[position - 1]))
        --position;
    return position == 0 || isLineEnd(content[position - 1]) ? position : mark;
}

/** Where the section begins; -1 where nothing tells it. */
qsizetype sectionBegin(QByteArrayView content, qsizetype end)
{
    if (const qsizetype start = content.indexOf(UserSection::startMark); start >= 0)
        return behindLine(content, start + UserSection::startMark.size());
    const qsizetype notice = content.first(end).lastIndexOf(UserSection::noticeLine);
    return notice < 0 ? -1 : behindLine(content, notice + UserSection::noticeLine.size());
}

QByteArrayView withoutLineEnd(QByteArrayView text)
{
    if (text.endsWith("\r\n"))
        return text.chopped(2);
    return text.isEmpty() || !isLineEnd(text.back()) ? text : text.chopped(1);
}

/** The rest of a file that has lost its end mark, without the end of the file and the empty line before. */
QByteArrayView withoutFileEnd(QByteArrayView rest)
{
    if (!rest.trimmed().endsWith(UserSection::fileEnd))
        return rest;
    const QByteArrayView kept = rest.first(rest.lastIndexOf(UserSection::fileEnd));
    const QByteArrayView shorter = withoutLineEnd(kept);
    return shorter.isEmpty() || isLineEnd(shorter.back()) ? shorter : kept;
}

/** A file in UTF-16 or UTF-32 becomes UTF-8, as the new one is; the bytes of all others stay. */
QByteArray inBytes(const QByteArray &content)
{
    const auto encoding = QStringConverter::encodingForData(content, u'/');
    if (!encoding || *encoding == QStringConverter::Utf8)
        return content;
    QStringDecoder decoder(*encoding);
    const QString text = decoder(content);
    return text.toUtf8();
}

} // namespace

std::optional<UserSection> UserSection::read(const QString &path, QString *reason)
{
    const QFileInfo info(path);
    if (!info.exists())
        return UserSection();
    QFile file(path);
    const QByteArray content = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    if (file.error() == QFileDevice::NoError)
        return parse(content, reason);
    *reason = u"The file %1 in %2 cannot be read, so its user-specific section would be lost (%3)"_s.arg(
        info.fileName(), QDir::toNativeSeparators(info.absolutePath()), file.errorString());
    return std::nullopt;
}

std::optional<UserSection> UserSection::parse(const QByteArray &content, QString *reason)
{
    const QByteArray all = inBytes(content);
    const qsizetype end = all.lastIndexOf(endMark);
    const qsizetype begin = sectionBegin(all, end < 0 ? all.size() : end);
    UserSection section;
    if (begin < 0 && end < 0)
        return section;
    if (begin < 0) {
        *reason =
            u"The line \"%1\" is missing, so it is unknown where the user-specific section begins"_s.arg(
                QLatin1StringView(startMark));
        return std::nullopt;
    }
    if (end >= begin)
        section.m_bytes = all.first(std::max(begin, beforeLine(all, end))).sliced(begin);
    else
        section.m_bytes = withoutFileEnd(QByteArrayView(all).sliced(begin)).toByteArray();
    return section;
}

QString UserSection::text() const
{
    return LegacyText::decode(m_bytes).text;
}

QByteArray UserSection::withMarks() const
{
    const bool isOpen = !m_bytes.isEmpty() && !isLineEnd(m_bytes.back());
    return noticeLine.toByteArray() + '\n' + startMark.toByteArray() + '\n' + m_bytes + (isOpen ? "\n" : "")
        + endMark.toByteArray() + '\n';
}

QString UserSection::withoutMarks(const QString &text)
{
    QString result = text;
    for (const QByteArrayView mark : {startMark, endMark}) {
        const QString plain = QString::fromLatin1(mark);
        result.replace(plain, QString(plain).remove(u':'));
    }
    return result;
}
