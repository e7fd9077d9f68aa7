#pragma once

#include "canopen/UDSSIDDefinitions.h"
#include "store/ProjectRecords.h"

#include <QList>
#include <QObject>
#include <QPair>
#include <QStringList>

#include <functional>
#include <memory>

class QSqlDatabase;
class QSqlQuery;

/**
 * The one gateway to a project's data.
 *
 * A store owns one SQLite connection to a private working file and offers typed operations over it.
 * Every write goes to the working file at once and is announced by updateNotify; there is no model in
 * memory but read caches. The project file itself is only touched by an open and a save.
 *
 * Operations report failure by their result and a debug line, never by a dialog. Values are bound, so
 * that any text (quotes, NUL, 4-byte UTF-8) is data. While the write lock is set every write gives
 * false at once and changes nothing. One thread at a time is inside the connection; the others wait.
 */
class ObjectDataBase : public QObject
{
    Q_OBJECT

public:
    using INDEX_DATA_T = ProjectRecords::IndexData;
    using SUBINDEX_DATA_T = ProjectRecords::SubIndexData;
    using SubEntry = ProjectRecords::SubEntry;
    using NODE_DATA_T = ProjectRecords::NodeData;
    using PGN = ProjectRecords::Pgn;
    using SPN = ProjectRecords::Spn;
    using CANID = ProjectRecords::CanId;
    using DataElement = ProjectRecords::DataElement;
    using ChangeSet = ProjectRecords::ChangeSet;
    using SubAddress = QPair<quint16, quint8>; ///< index, sub-index
    using IndexVisitor = std::function<void(quint16 index, const INDEX_DATA_T &data)>;
    using SubVisitor = std::function<void(quint16 index, quint8 subindex, const SUBINDEX_DATA_T &data)>;

    /** Values of ChangeSet::type; 5 and 8 are not used. */
    enum ChangeType {
        IndexChanged = 1,
        SubIndexChanged = 2,
        IndexRemoved = 3,
        SubIndexRemoved = 4,
        NodeChanged = 6,
        LineRemoved = 7,
        GeneralSettingChanged = 9,
        DescriptionSettingChanged = 10,
        EnergyBusSettingChanged = 11,
        MiscSettingChanged = 12,
        J1939SettingChanged = 13,
        ProjectChanged = 14,
        PgnChanged = 15,
        PgnRemoved = 16,
        CanIdChanged = 17,
        CanIdRemoved = 18,
        SpnChanged = 19,
        SpnRemoved = 20,
        DataElementChanged = 21,
    };

    /** Line numbers that never reach a saved file, and the largest number of lines of a project. */
    static constexpr quint8 ClipboardLine = 254;
    static constexpr quint8 ReferenceLine = 255;
    static constexpr int MaximumLines = 32;
    static constexpr quint16 ClipboardIndex = 0xF000;

    /** Directions of a PGN or CAN-ID; Both asks a list operation for either. */
    static constexpr quint8 BothDirections = 0;
    static constexpr quint8 Transmit = 85;
    static constexpr quint8 Receive = 119;

    static constexpr int DatabaseVersion = 107;

    explicit ObjectDataBase(QObject *parent = nullptr);
    /** Closes (see closeDataBase) and deletes every working file of this store. */
    ~ObjectDataBase() override;

    // --- Connection, lock and notification -------------------------------------------------------

    /** Makes an empty working file with all global tables and line 0. */
    bool createNewDataBase();
    /**
     * Copies the file to a private working file, migrates that and checks it; the file is only read.
     * False with lastError() when the file is no project or belongs to another edition.
     */
    bool openDataBase(const QString &path, bool migrate = true);
    /** Writes the working file to the path (empty: projectPath()); the former file becomes "<path>.bak". */
    bool saveProject(const QString &path);
    bool saveDatabaseAsSql(const QString &path);
    /** Writes the text form of the project (see DatabaseTextConverter); no backup is made. */
    bool saveDatabaseAsText(const QString &path);
    /** Opens a text project; a text that is none leaves the present project open and sets lastError(). */
    bool loadTextProject(const QString &path);
    /** Waits until no query runs, at most 5000 ms; a store that is still busy then stays open. */
    void closeDataBase();
    bool isOpen() const;

    /** Runs any one statement; its rows (at most ten columns, a blank behind each value) are sqlResult(). */
    bool executeSql(const QString &statement);
    /** Rows of the last executeSql, or its error text. */
    QStringList sqlResult() const;

    /** Refuses all writes and holds other threads' reads until it is released. */
    void setWriteLock(bool locked);
    bool isWriteLocked() const;
    /** Lets only the calling thread (and those that called before it) go on. */
    void blockUpdates(bool blocked);
    /** Makes every successful writing statement emit databaseWriteExecuted. */
    void setTrackWrites(bool track);
    /** Number of operations that are inside the connection at this moment. */
    int runningQueries() const;

    /** Writes a compact copy of the working file to a new file; false with lastError() on failure. */
    bool vacuumInto(const QString &name);
    /** Goes on with the content of a copy; on failure the present content stays. */
    bool restoreSnapshot(const QString &path);

    QString lastError() const;
    QString projectPath() const;
    /** Another number for each project that was begun or opened here; a step back by undo keeps it. */
    quint64 projectGeneration() const;
    /** True when the opened file was changed by another program since it was saved. */
    bool isExternallyModified() const;
    /**
     * What the last save left out of the text form, as sentences; empty when the text holds all. The
     * program's own marks of sub-indices (wizard, changed by the user), which never go into it, do not count.
     */
    QStringList textLosses() const;
    /** SHA-256 over every table but FileHash and TamperLog, in lower-case hexadecimal. */
    QString contentHash();

    // --- String pool ----------------------------------------------------------------------------

    /** Pool id of a text, entered if need be; -1 on failure. Ids of texts with a quote are not unique. */
    int addString(const QString &text);
    QString getString(int id);
    /** Deletes the pool rows that no string-id column of any line refers to. */
    void removeUnusedStrings();
    void loadStrings();

    // --- Objects --------------------------------------------------------------------------------

    bool addIndex(quint8 line, quint16 index, const INDEX_DATA_T &data);
    bool getIndex(quint8 line, quint16 index, INDEX_DATA_T &data);
    QString getIndexName(quint8 line, quint16 index);
    /** Shows all objects of a line in ascending order; the visitor changes nothing in the store. */
    void visitIndices(quint8 line, const IndexVisitor &visit);
    /** Indices in ascending order, from `from` to `to` inclusive. */
    QList<quint16> getIndexList(quint8 line, quint16 from = 0, quint16 to = 0xFFFF);
    /** Indices whose column has the value; an unknown column gives an empty list. */
    QList<quint16> findIndices(quint8 line, const QString &column, const QString &value);
    bool indexExists(quint8 line, quint16 index);
    bool removeIndex(quint8 line, quint16 index);
    bool renameIndex(quint8 line, quint16 index, const QString &name);
    /** Writes one column, making the row if it is missing; sends no notification. */
    void setObjectIndexSqlValue(const QString &table, quint16 index, const QString &column,
                                const QVariant &value);

    /** Copies an object with its sub-indices over the target, which is removed first. */
    bool copyIndex(quint8 fromLine, quint16 fromIndex, quint8 toLine, quint16 toIndex);
    bool copyIndexFrom(ObjectDataBase &source, quint8 line, quint16 index, quint8 toLine, quint16 toIndex,
                       bool withSubs);
    /** Updates the target from another store; texts that the target has already are kept. */
    bool mergeIndexFrom(ObjectDataBase &source, quint8 line, quint16 index, quint8 toLine, quint16 toIndex);
    bool copyToClipboard(quint8 line, quint16 index);
    bool pasteFromClipboard(quint8 line, quint16 index);
    bool peekClipboard(INDEX_DATA_T &data);

    // --- Sub-indices ----------------------------------------------------------------------------

    bool addSubIndex(quint8 line, quint16 index, quint8 subindex, const SUBINDEX_DATA_T &data);
    /** Many rows in one transaction, without a notification per row; a failing row is logged and left out. */
    bool addSubIndices(const QList<SubEntry> &entries);
    bool getSubIndex(quint8 line, quint16 index, quint8 subindex, SUBINDEX_DATA_T &data);
    QList<quint8> getSubIndexList(quint8 line, quint16 index);
    int getSubIndexDatatype(quint8 line, quint16 index, quint8 subindex);
    QString getSubIndexDefault(quint8 line, quint16 index, quint8 subindex);
    QString getSubIndexName(quint8 line, quint16 index, quint8 subindex, bool preferDenotation = false);
    /** Sub-indices whose column has the value; `quoted` compares as text, otherwise as a number if it is one.
     */
    QList<SubAddress> findSubIndices(quint8 line, const QString &column, const QString &value, bool quoted);
    QList<SubAddress> getMappableSubs(quint8 line, quint8 excludedValue = PDOMapping::Forbidden);
    bool subIndexExists(quint8 line, quint16 index, quint8 subindex);
    bool removeSubIndex(quint8 line, quint16 index, quint8 subindex);
    bool renameSubIndex(quint8 line, quint16 index, quint8 subindex, const QString &name);
    bool setSubIndexDefault(quint8 line, quint16 index, quint8 subindex, const QString &value);
    /** Writes one column, making the row if it is missing; sends no notification. */
    void setSubindexSqlValue(const QString &table, quint16 index, quint8 subindex, const QString &column,
                             const QVariant &value);

    /** Fills the record cache of a line, of one object or (index 0) of all. */
    void cacheAllSubs(quint8 line, quint16 index = 0);
    /**
     * Fills the record cache of a whole line and shows the records on the way, in ascending order of index
     * and sub-index; the visitor changes nothing in the store.
     */
    void cacheAllSubs(quint8 line, const SubVisitor &visit);
    /** Fills the name cache of a line, of one object or (index 0) of all. */
    void cacheSubNames(quint8 line, quint16 index = 0);
    void clearSubCache();
    void clearSubNameCache();

    // --- Metadata -------------------------------------------------------------------------------

    MetadataMap getObjectMetadata(quint8 line, quint16 index);
    bool setObjectMetadata(quint8 line, quint16 index, const MetadataMap &metadata);
    /** The non-empty metadata of all sub-indices of a line. */
    QMap<SubAddress, MetadataMap> getAllSubMetadata(quint8 line);
    bool setSubMetadata(quint8 line, quint16 index, quint8 subindex, const MetadataMap &metadata);

    // --- Settings: an absent key reads as an empty text -----------------------------------------

    QString getGeneralSetting(const QString &key);
    bool setGeneralSetting(const QString &key, const QString &value);
    QStringList getGeneralSettingKeys();
    bool generalSettingExists(const QString &key);
    /** Element `line` of a per-line list; behind its end the last element. */
    QString getGeneralSettingForLine(const QString &key, quint8 line);
    /** Element `line` of a per-line list as it stands; behind its end empty. For checks, not for use. */
    QString getGeneralSettingEntry(const QString &key, quint8 line);
    bool setGeneralSettingForLine(const QString &key, const QString &value, quint8 line);
    static const QStringList &perLineSettingKeys();

    /** Keys of the description settings mean the line chosen by setDescriptionLine. */
    QString getDescriptionSetting(const QString &key);
    bool setDescriptionSetting(const QString &key, const QString &value);
    QStringList getDescriptionSettingKeys();
    bool descriptionSettingExists(const QString &key);
    void setDescriptionLine(quint8 line);
    quint8 descriptionLine() const;
    /** Makes `line` the description line and enters the defaults that it lacks. */
    void addDefaultDescriptionSettings(quint8 line);

    QString getEnergyBusSetting(const QString &key);
    bool setEnergyBusSetting(const QString &key, const QString &value);
    QStringList getEnergyBusSettingKeys();
    bool energyBusSettingExists(const QString &key);
    bool removeEnergyBusSetting(const QString &key);

    QString getJ1939Setting(const QString &key);
    bool setJ1939Setting(const QString &key, const QString &value);
    QStringList getJ1939SettingKeys();
    bool j1939SettingExists(const QString &key);

    QString getMiscSetting(const QString &key);
    bool setMiscSetting(const QString &key, const QString &value);
    QStringList getMiscSettingKeys();
    bool miscSettingExists(const QString &key);

    /** Takes general and description settings over from another store, dropping the own ones. */
    bool replaceSettingsFrom(ObjectDataBase &other);

    // --- Lines and nodes ------------------------------------------------------------------------

    /** Line numbers in ascending order, the reserved ones included when present. */
    QList<quint8> getLines();
    /** Makes a line with all its tables and inherited settings, or updates its node record. */
    bool addNode(quint8 line, const NODE_DATA_T &node);
    bool getNode(quint8 line, NODE_DATA_T &node);
    bool nodeExists(quint8 line);
    void setNodeSqlValue(quint8 line, const QString &column, const QVariant &value);
    bool removeLine(quint8 line);
    /** Takes the line's element out of every comma list and moves the later lines' elements down. */
    void removeLineSettings(quint8 line);
    /** Copies objects in the index range and all PGNs; UDS settings only within one store. */
    bool copyLine(ObjectDataBase &source, quint8 fromLine, quint8 toLine, quint16 indexFrom, quint16 indexTo);
    bool removeConsumerConnection(quint8 line, quint16 index, quint8 subindex);
    bool removeConnections(quint8 line, quint16 index);

    // --- J1939 ----------------------------------------------------------------------------------

    bool addPGN(quint8 line, quint32 number, const PGN &pgn);
    bool getPGN(quint8 line, quint32 number, quint8 direction, PGN &pgn);
    QString getPGNName(quint8 line, quint32 number, quint8 direction);
    int getPGNMappingCount(quint8 line, quint32 number, quint8 direction);
    /** Numbers in ascending order; `safeOnly` leaves the groups out that are safety messages. */
    QList<quint32> getPGNList(quint8 line, quint8 direction, bool safeOnly = false);
    bool removePGN(quint8 line, quint32 number, quint8 direction);
    bool setPGNMappingCount(quint8 line, quint32 number, quint8 direction, int count);
    bool addSPN(quint8 line, quint32 number, quint8 direction, quint32 spn, const SPN &data);
    bool getSPN(quint8 line, quint32 number, quint8 direction, quint32 spn, SPN &data);
    QString getSPNName(quint8 line, quint32 number, quint8 direction, quint32 spn);
    int getSPNDatatype(quint8 line, quint32 number, quint8 direction, quint32 spn);
    /** SPN numbers of a group in the order of their positions. */
    QList<quint32> getSPNList(quint8 line, quint32 number, quint8 direction);
    bool removeSPN(quint8 line, quint32 number, quint8 direction, quint32 spn);
    bool copyPGNs(ObjectDataBase &source, quint8 fromLine, quint8 toLine, quint32 fromNumber,
                  quint32 toNumber, quint8 direction);
    /** Counts the signals of every group of all lines and enters what differs. */
    bool updateMappingCounts();
    void cacheAllSpns(quint8 line);
    void clearSpnCache();

    // --- Raw CAN --------------------------------------------------------------------------------

    bool addCANID(quint8 line, quint32 id, const CANID &canid);
    bool getCANID(quint8 line, quint32 id, quint8 direction, CANID &canid);
    QString getCANIDName(quint8 line, quint32 id, quint8 direction);
    QList<quint32> getCANIDList(quint8 line, quint8 direction);
    bool removeCANID(quint8 line, quint32 id, quint8 direction);
    bool addDataElement(quint8 line, quint32 canid, quint8 direction, quint32 number,
                        const DataElement &data);
    bool getDataElement(quint8 line, quint32 canid, quint8 direction, quint32 number, DataElement &data);
    QString getDataElementName(quint8 line, quint32 canid, quint8 direction, quint32 number);
    QList<quint32> getDataElementList(quint8 line, quint32 canid, quint8 direction);
    bool removeDataElement(quint8 line, quint32 canid, quint8 direction, quint32 number);
    /** Fills the signal cache of a line; without it every read of a signal walks all signals of the line. */
    void cacheAllDataElements(quint8 line);
    void clearDataElementCache();
    bool copyCANIDs(ObjectDataBase &source, quint8 fromLine, quint8 toLine, quint32 fromId, quint32 toId,
                    quint8 direction);

    // --- UDS (ISO 14229-1): settings per line and service ------------------------------------------

    bool isUDSServiceActive(quint8 line, UDS::SID sid);
    /** Services of the line that are active, in table order. */
    QList<UDS::SID> getUDSActiveServices(quint8 line);
    QString getUDSServiceSessions(quint8 line, UDS::SID sid);
    QString getUDSServiceUserLevels(quint8 line, UDS::SID sid);
    QString getUDSAuthentication(quint8 line, UDS::SID sid);
    bool setUDSServiceActive(quint8 line, UDS::SID sid, bool active);
    bool setUDSServiceSessions(quint8 line, UDS::SID sid, const QString &sessions);
    bool setUDSServiceUserLevels(quint8 line, UDS::SID sid, const QString &userLevels);
    bool setUDSAuthentication(quint8 line, UDS::SID sid, const QString &authentication);

Q_SIGNALS:
    void updateNotify(ObjectDataBase::ChangeSet changes);
    /** The file being opened belongs to another edition. */
    void wrongTool();
    void blockStateChanged(bool blockupdates);
    /** One writing statement has succeeded; only while tracking is on. */
    void databaseWriteExecuted();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
