#include "fuzz/DescriptionBench.h"
#include "importers/XDDImporter.h"

/** Any bytes as an XML device description; what fuzz_eds_import asks holds here too. */
extern "C" int LLVMFuzzerTestOneInput(const uchar *data, size_t size)
{
    XDDImporter importer;
    DescriptionBench::run(importer, data, size);
    return 0;
}
