#pragma once

#include "importers/BaseDataImporter.h"

#include <memory>

/** The importers by the files that they read. */
namespace ImporterFactory {

enum class Use {
    Selection, ///< objects for a staging line, of which the user chooses
    Batch, ///< a whole device, its information included
};

/**
 * The importer for a file name suffix in any letter case, without line, store, range and file.
 *
 * Nullptr for a suffix that has none, and for Use::Batch also where the format describes no device.
 */
std::unique_ptr<BaseDataImporter> make(const QString &suffix, Use use);

} // namespace ImporterFactory
