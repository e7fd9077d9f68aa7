#pragma once

#include "canopen/CANopenTypes.h"
#include "fuzz/ImportBench.h"
#include "importers/DeviceDescriptionImporter.h"

/** What the fuzz programs of the importers of device descriptions share. */
namespace DescriptionBench {

inline void checkRows(ObjectDataBase &project, quint16 index)
{
    const QList<quint8> subs = project.getSubIndexList(ImportBench::line, index);
    ObjectDataBase::INDEX_DATA_T object;
    ImportBench::require(project.getIndex(ImportBench::line, index, object));
    const bool structured = object.objecttype == CANopen::Array || object.objecttype == CANopen::Record;
    ImportBench::require(!structured || subs.isEmpty() || subs.constFirst() == 0
                         || (subs.size() == 1 && subs.constFirst() == 0xFF));
    for (const quint8 sub : subs) {
        ObjectDataBase::SUBINDEX_DATA_T row;
        ImportBench::require(project.getSubIndex(ImportBench::line, index, sub, row)
                             && !row.accesstype.isEmpty());
    }
}

/** Imports the bytes as a file into an empty line, and aborts where the result contradicts itself. */
inline void run(DeviceDescriptionImporter &importer, const uchar *data, size_t size)
{
    ImportBench &bench = ImportBench::instance();
    bench.run(importer, data, size);
    const QList<EdsFinding> &findings = importer.findings();
    for (const EdsFinding &finding : findings)
        ImportBench::require(finding.line >= 0 && !finding.text.isEmpty());
    const QList<quint16> indices = bench.store().getIndexList(ImportBench::line);
    for (const quint16 index : indices)
        checkRows(bench.store(), index);
}

} // namespace DescriptionBench
