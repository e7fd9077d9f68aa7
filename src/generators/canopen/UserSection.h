#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/**
 * The part of gen_define.h that belongs to the user and is taken over from the former file.
 *
 * It is bytes, not text: any encoding, any line ends. What a user may have written is rather kept than
 * lost: up to the last end mark where there are several, behind a start mark on its own line, up to the
 * end of the file where the end mark is missing.
 */
class UserSection
{
public:
    static constexpr QByteArrayView noticeLine =
        "/* do not modify comments starting with 'user-specific section:' */";
    static constexpr QByteArrayView startMark = "/* user-specific section: start */";
    static constexpr QByteArrayView endMark = "/* user-specific section: end */";
    /** What follows the section in the file. */
    static constexpr QByteArrayView fileEnd = "#endif /* GEN_DEFINE_H */";

    /**
     * The section of a file; an empty one where there is no file. None, with the reason, where the file
     * cannot be read or does not tell where the section begins.
     */
    static std::optional<UserSection> read(const QString &path, QString *reason);
    /** The section of a file's content; see read. */
    static std::optional<UserSection> parse(const QByteArray &content, QString *reason);

    /** What stands between the marks' lines, line ends included. */
    const QByteArray &bytes() const { return m_bytes; }
    /** For a reader. */
    QString text() const;
    /** The marks with the section between them, as the file has them. */
    QByteArray withMarks() const;

    /** A text from the project that holds no mark. */
    static QString withoutMarks(const QString &text);

private:
    QByteArray m_bytes;
};
