#pragma once

#include <QByteArray>
#include <QString>

/** Decodes text files whose encoding is told nowhere, as vendors of device descriptions write them. */
namespace LegacyText {

enum class Encoding {
    Ascii,
    Utf8,
    Utf16,
    Windows1252,
    CodePage850, ///< the German and Western letters of DOS
};

struct Decoded
{
    QString text;
    Encoding encoding = Encoding::Ascii;
};

/**
 * A byte order mark decides; otherwise valid UTF-8 is UTF-8. What remains is code page 850 where the bytes
 * of its umlauts stand beside letters and no Windows letter does, and Windows-1252 otherwise. Every byte
 * yields a character.
 */
Decoded decode(const QByteArray &bytes);

/** The encoding's name for a reader. */
QString encodingName(Encoding encoding);

} // namespace LegacyText
