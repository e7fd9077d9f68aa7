#pragma once

#include "check/CheckFindings.h"
#include "store/ObjectDataBase.h"

#include <deque>
#include <span>
#include <vector>

/**
 * What the walks over a whole line need of a sub-index. Its texts are judged when they are read: the walks
 * come by much later and would find every text far away in memory.
 */
struct SubIndexEntry
{
    quint16 index = 0;
    quint8 subIndex = 0;
    bool isNamed = false;
    bool hasLimits = false;
    bool isInLimits = false; ///< or has none
    bool isValueValid = false; ///< the default value reads as its data type demands
    bool isAccessTypeKnown = false;
    bool allowsWriting = false; ///< as the access type tells
    bool hasVariableName = false;
    bool isVariableNameValid = false; ///< an empty one is
    int dataType = 0;
    int implementation = 0;
};

/** An object of the line and its place among the entries. */
struct ObjectEntry
{
    quint16 index = 0;
    bool isNamed = false;
    int objectCode = 0;
    size_t first = 0;
    size_t count = 0;
};

/** The variable of an entry that is kept by the application. */
struct VariableUse
{
    size_t entry = 0;
    QString name; ///< without blanks around it, never empty
    size_t hash = 0; ///< of the name
};

/**
 * What the rules of one line work on: the store, the settings that several rules share and the line as
 * it was read at the beginning. No rule adds or removes an object; a rule that corrects a value writes it
 * to the store, where read() and value() find it.
 */
class LineCheck
{
public:
    /** Reads the settings and the line, and fills the store's record cache of the line. */
    LineCheck(quint8 line, ObjectDataBase &store, CheckFindings &findings, bool &emcyRoutingReported);

    ObjectDataBase &store;
    CheckFindings &findings;
    const quint8 line;
    bool &emcyRoutingReported; ///< outlives the line: one run tells that finding once

    QString projectPath; ///< folder of the project file
    bool limitCheckEnabled = false; ///< "limit_check" reads exactly 1
    bool bitwiseMapping = false; ///< "bitwise_mapping" is not 0
    bool canFd = false; ///< "canfd_supported" is 1
    bool disableAutoCorrection = false; ///< the user's setting, not the project's
    quint8 granularity = 8; ///< of PDO mappings, in bits
    quint16 pdoSizeLimit = 64; ///< in bits
    bool bitwiseMappingFound = false; ///< noted by checkPdoMapping for checkMappingGranularity
    bool dynamicMappingFound = false; ///< likewise

    /** Objects of the line in ascending order, both ends inclusive. */
    QList<quint16> indices(quint16 from, quint16 to) const;
    /** The same with what a walk needs of them. */
    std::span<const ObjectEntry> objects(quint16 from = 0, quint16 to = 0xFFFF) const;
    bool exists(quint16 index) const { return !objects(index, index).empty(); }
    bool exists(quint16 index, quint8 subIndex) const { return find(index, subIndex) != nullptr; }
    /** Sub-indices of an object in ascending order; empty for an object that is not there. */
    QList<quint8> subIndices(quint16 index) const;
    /** The same with what a walk needs of them; all of the line without an index. */
    std::span<const SubIndexEntry> entries() const { return m_entries; }
    std::span<const SubIndexEntry> entries(quint16 index) const;
    std::span<const SubIndexEntry> entries(const ObjectEntry &object) const
    {
        return entries().subspan(object.first, object.count);
    }
    /** The application's variables in the order of their entries. */
    const std::deque<VariableUse> &variables() const { return m_variables; }
    /** The present record of a sub-index; corrections of earlier rules show in it. */
    bool read(quint16 index, quint8 subIndex, ObjectDataBase::SUBINDEX_DATA_T &data) const;
    /** The present default value; empty for a sub-index that is not there. */
    QString value(quint16 index, quint8 subIndex) const;
    /** Whether EDS files show the default value: always, or because there is one; false for a missing row. */
    bool isDefaultInEds(quint16 index, quint8 subIndex) const;
    /** Takes a correction of the sub-index over into its entry. */
    void refresh(quint16 index, quint8 subIndex);
    /** False once the store is closed or holds another project than the one that was read. */
    bool isCurrent() const { return store.isOpen() && store.projectGeneration() == m_projectGeneration; }
    /** Lets the window repaint; false when the project has gone meanwhile. */
    bool serveEvents() const;

    ProjectLocation at(quint16 index) const { return ProjectLocation::ofObject(line, index); }
    ProjectLocation at(quint16 index, quint8 subIndex) const
    {
        return ProjectLocation::ofSubIndex(line, index, subIndex);
    }

private:
    void readSettings();
    void readLine();
    void addEntry(quint16 index, quint8 subIndex, const ObjectDataBase::SUBINDEX_DATA_T &data);
    const SubIndexEntry *find(quint16 index, quint8 subIndex) const;

    const quint64 m_projectGeneration;
    std::vector<ObjectEntry> m_objects;
    std::vector<SubIndexEntry> m_entries;
    std::deque<VariableUse> m_variables;
};

/** True when sub-index 0 of a PDO mapping object can be read and is "rw" (CiA 301: dynamic mapping). */
bool isDynamicMapping(const LineCheck &check, quint16 index);
/** Four lower-case hexadecimal digits, as messages show an index. */
QString indexText(quint16 index);
/** Two lower-case hexadecimal digits, as most messages show a sub-index. */
QString subIndexText(quint8 subIndex);
/** The number of a text with its base taken from its prefix ("0x", "0"); 0 for a text that is none. */
quint64 unsignedValue(const QString &text);
