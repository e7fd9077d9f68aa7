#include "fuzz/DescriptionBench.h"
#include "importers/EDSImporter.h"

/**
 * Any bytes as an EDS or DCF file: the project then holds exactly the objects that were told, each array and
 * record with rows begins at sub-index 0, and every row has an access type.
 */
extern "C" int LLVMFuzzerTestOneInput(const uchar *data, size_t size)
{
    EDSImporter importer;
    importer.setDcfMode(size % 2 == 1);
    importer.setImportFileInfo(true);
    DescriptionBench::run(importer, data, size);
    return 0;
}
