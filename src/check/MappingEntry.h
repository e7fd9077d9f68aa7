#pragma once

#include <QString>

/** One entry of a PDO or SRDO mapping table (CiA 301): the mapped object and its length in bits. */
struct MappingEntry
{
    quint32 value = 0; ///< index in bits 31 to 16, sub-index in bits 15 to 8, length in bits 7 to 0

    /** A text that is no 32-bit number reads as the empty entry 0. */
    static MappingEntry fromText(const QString &text) { return {.value = text.toUInt(nullptr, 0)}; }

    quint16 index() const { return static_cast<quint16>(value >> 16); }
    quint8 subIndex() const { return static_cast<quint8>(value >> 8); }
    quint8 bits() const { return static_cast<quint8>(value); }
    bool mapsObject() const { return index() != 0; }
};
