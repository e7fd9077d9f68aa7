#pragma once

#include <QString>

class ObjectDataBase;

/**
 * Carries differences from another project into the current one; each operation is false when the current
 * project could not be changed as wished.
 */
class DiffTransfer
{
public:
    /** After an Apply a taken sub-index keeps the values that the current project gave it. */
    DiffTransfer(ObjectDataBase &current, ObjectDataBase &other, quint8 line, bool isAfterApply);

    /** Puts the other project's object with all its sub-indices in the place of the own one. */
    bool importObject(quint16 index);
    /** Takes the sub-index over, together with its object where the current project lacks that. */
    bool importSubIndex(quint16 index, quint8 subindex);
    /** Takes the sub-index over with its values, whatever the current ones are. */
    bool importSubIndexComplete(quint16 index, quint8 subindex);
    bool removeObject(quint16 index);
    bool removeSubIndex(quint16 index, quint8 subindex);
    bool takeOverGeneralSetting(const QString &key);

private:
    bool replaceSubIndex(quint16 index, quint8 subindex, bool keepValues);

    ObjectDataBase &m_current;
    ObjectDataBase &m_other;
    quint8 m_line;
    bool m_isAfterApply;
};
