#include "fuzz/ImportBench.h"
#include "importers/CsvImporter.h"

/** Any bytes as a table: it is read to its end, and its commands name objects and can be carried out. */
extern "C" int LLVMFuzzerTestOneInput(const uchar *data, size_t size)
{
    ImportBench &bench = ImportBench::instance();
    CsvImporter importer;
    bench.run(importer, data, size);
    for (const CsvCommands::Copy &copy : importer.copyCommands()) {
        ImportBench::require(copy.first.index != 0 && copy.second.index != 0);
        ImportBench::require(copy.first.subIndex.has_value() == copy.second.subIndex.has_value());
        ImportBench::require(!copy.first.subIndex || copy.first != copy.second);
    }
    for (const CsvCommands::Delete &removal : importer.deleteCommands())
        ImportBench::require(removal.index != 0);
    const bool success = importer.carryOutCommands(ImportBench::line);
    for (const CsvCommands::Delete &removal : importer.deleteCommands()) {
        const bool isThere = removal.subIndex
            ? bench.store().subIndexExists(ImportBench::line, removal.index, *removal.subIndex)
            : bench.store().indexExists(ImportBench::line, removal.index);
        ImportBench::require(!success || !isThere);
    }
    return 0;
}
