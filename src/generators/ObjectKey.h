#pragma once

#include <QString>

/** One number for a sub-index of the project, for the maps of generators: line, index, sub-index. */
namespace ObjectKey {

constexpr quint32 make(quint8 line, quint16 index, quint8 subIndex)
{
    return quint32(line) << 24 | quint32(index) << 8 | subIndex;
}

constexpr quint8 line(quint32 key)
{
    return quint8(key >> 24);
}

constexpr quint16 index(quint32 key)
{
    return quint16(key >> 8);
}

constexpr quint8 subIndex(quint32 key)
{
    return quint8(key);
}

/** The C comment behind a table entry, with "0x2000:3" in it or, in the multi-line form, "1-0x2000:3". */
QString comment(quint32 key, bool multiLine);

} // namespace ObjectKey
