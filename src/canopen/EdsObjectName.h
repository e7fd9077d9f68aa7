#pragma once

#include <QStringView>

#include <optional>

/** The object or sub-index that the name of a section means. */
struct EdsObjectName
{
    quint16 index = 0;
    std::optional<uint> subIndex; ///< as the file tells it, up to 0xFFF
};

/** "1018", "0x1018", "1018sub1", "1018Sub0x01" in any case; empty for any other name. */
std::optional<EdsObjectName> edsObjectName(QStringView section);

/** The object of "2000Name", "2000Value" or "2000Denotation", the lists of a compact object. */
std::optional<quint16> edsListOwner(QStringView section);
