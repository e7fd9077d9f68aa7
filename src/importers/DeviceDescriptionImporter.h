#pragma once

#include "canopen/EdsFinding.h"
#include "importers/BaseDataImporter.h"

#include <QMap>
#include <QSet>

/**
 * What the importers of device descriptions share.
 *
 * Objects that the line has already are replaced. Files of vendors are read as far as they can be
 * understood: what was assumed or left out is a line in the log and an entry of findings(); importError
 * tells only what ends the import.
 */
class DeviceDescriptionImporter : public BaseDataImporter
{
    Q_OBJECT

public:
    /** Larger files are refused; far more than the largest device description, in bytes. */
    static constexpr qint64 LargestFile = 64 * 1024 * 1024;

    /** Deviations from the format that the last read met; valid when the import has finished. */
    const QList<EdsFinding> &findings() const { return m_findings; }

    void doImport() final;

protected:
    using Rows = QMap<quint8, ObjectDataBase::SUBINDEX_DATA_T>;

    /** Reads the file; the store is held and the line's description settings are chosen. */
    virtual void read() = 0;

    /** For what the importer itself assumes. */
    EdsFindings &notes() { return m_notes; }
    /** Adds findings of a parser. */
    void tell(const QList<EdsFinding> &findings);

    /**
     * Writes an object over the one of the line; nothing happens any more once the project has refused
     * one, or when the importer is being deleted.
     *
     * An array or record without sub-index 0 gets one, with the highest number of the rows or, without
     * rows, the declared one; a sub-index 0 without value gets that number as well. An array without type
     * gets that of its elements.
     */
    void storeObject(quint16 index, ObjectDataBase::INDEX_DATA_T object, Rows rows, int declared = 0,
                     int sourceLine = 0);
    /** Counts an object that is not imported because of its index. */
    void skipObject() { ++m_skipped; }
    bool isRefused() const { return m_refused; }
    /** Objects of the line before the read. */
    const QSet<quint16> &existing() const { return m_existing; }

private:
    void completeRows(quint16 index, const ObjectDataBase::INDEX_DATA_T &object, Rows &rows, int declared,
                      int sourceLine);

    QList<EdsFinding> m_findings;
    EdsFindings m_notes;
    QSet<quint16> m_existing;
    int m_skipped = 0;
    bool m_refused = false;
};
