#include "fuzz/ImportBench.h"
#include "importers/CODBImporter.h"

/** Any bytes as a profile, with and without object copies: every object has its sub-index 0. */
extern "C" int LLVMFuzzerTestOneInput(const uchar *data, size_t size)
{
    if (size == 0)
        return 0;
    ImportBench &bench = ImportBench::instance();
    CODBImporter importer;
    importer.setIncludeCopies(data[0] % 2 != 0);
    bench.run(importer, data + 1, size - 1);
    const QList<quint16> indices = importer.importedObjects().keys();
    for (const quint16 index : indices)
        ImportBench::require(bench.store().subIndexExists(ImportBench::line, index, 0));
    return 0;
}
