#pragma once

#include "store/ProjectRecords.h"

#include <QByteArray>

/** The blobs that carry the free texts of objects and sub-indices. */
namespace Metadata {
/** Entry count, then key and value of each entry in key order, as QDataStream version 17 writes them. */
QByteArray toBlob(const MetadataMap &metadata);
/** What can be read of a blob; a damaged one gives the entries before the damage. */
MetadataMap fromBlob(const QByteArray &blob);
} // namespace Metadata
