#pragma once

#include "importers/BaseDataImporter.h"
#include "importers/CodbLine.h"

#include <QMap>

class TextLineReader;

/**
 * Reads the object databases of CiA 306-2 (".codb"), in which the CiA profiles come.
 *
 * Lines that are damaged are skipped, unknown data types are kept as type 0. Objects are read whole
 * before anything is written, so that a copy line may name an object outside of the range.
 */
class CODBImporter : public BaseDataImporter
{
    Q_OBJECT

public:
    CODBImporter() = default;
    ~CODBImporter() override;

    /** Whether "$aaaa=bbbb" lines make objects; not so at first. */
    void setIncludeCopies(bool include) { m_includeCopies = include; }
    bool includeCopies() const { return m_includeCopies; }

    void doImport() override;

private:
    struct Object
    {
        ObjectDataBase::INDEX_DATA_T data;
        QMap<quint8, ObjectDataBase::SUBINDEX_DATA_T> subs;
        /** Sub-index 0 where the file has no row for it. */
        ObjectDataBase::SUBINDEX_DATA_T defaultSub;
        bool declared = false; ///< has a row of its own, not only rows of sub-indices
    };

    void readLines(TextLineReader &reader, qint64 size);
    void takeObject(const CodbLine::Record &record);
    void takeSubIndex(const CodbLine::Record &record);
    void takeCopy(const CodbLine::Copy &copy);
    void writeObjects();
    static void completeObject(Object &object);
    bool writeObject(quint16 index, Object &object);
    void keepOwnership(quint16 index, quint8 subIndex, ObjectDataBase::SUBINDEX_DATA_T &sub);

    bool m_includeCopies = false;
    QMap<quint16, Object> m_objects;
};
