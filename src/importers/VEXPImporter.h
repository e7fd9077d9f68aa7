#pragma once

#include "importers/BaseDataImporter.h"

/**
 * Reads the objects of one line of another project (".vexp", ".vext" or ".vexp.bak").
 *
 * The source is opened as a store of its own and never changed. Objects of the target line with the
 * same index are replaced; texts, metadata and all attributes of the sub-indices come along.
 */
class VEXPImporter : public BaseDataImporter
{
    Q_OBJECT

public:
    /** Stands for the first line of the source project. */
    static constexpr quint8 FirstLine = quint8(-1);

    VEXPImporter() = default;
    ~VEXPImporter() override;

    /** The line of the source to read; FirstLine at first. A line that is not there is an error. */
    void setSourceLine(quint8 line) { m_sourceLine = line; }
    quint8 sourceLine() const { return m_sourceLine; }
    /** Whether implementation types come along (as at first) or become those of managed variables. */
    void setKeepImplementation(bool keep) { m_keepImplementation = keep; }
    bool keepImplementation() const { return m_keepImplementation; }

    void doImport() override;

private:
    bool openSource(ObjectDataBase &source);
    bool chooseLine(ObjectDataBase &source, quint8 &line);
    bool copyObject(ObjectDataBase &source, quint8 sourceLine, quint16 index);

    quint8 m_sourceLine = FirstLine;
    bool m_keepImplementation = true;
};
