#pragma once

#include "store/Metadata.h"
#include "store/ObjectDataBase.h"
#include "store/PooledTexts.h"
#include "store/Schema.h"
#include "store/StoreQuery.h"
#include "store/SubIndexCache.h"

#include <QHash>
#include <QSet>
#include <QSqlDatabase>
#include <QVarLengthArray>

class DatabaseTextConverter;
class QFile;

/** State and internal operations of a store; what a caller may use is in ObjectDataBase. */
struct ObjectDataBase::Private
{
    explicit Private(ObjectDataBase *owner);

    struct SubName
    {
        QString name;
        QString denotation;
    };
    /** A group or message with its direction, in one number. */
    using MessageKey = quint64;
    /** The signals of a line, those of a message together; `Signal` is SPN or DataElement. */
    template <typename Signal>
    struct SignalCache
    {
        struct Message
        {
            QList<quint32> numbers; ///< in the order of the list operations
            QList<std::pair<quint32, Signal>> records;
        };
        QHash<MessageKey, Message> messages;
    };
    template <typename Signal>
    using SignalCaches = QMap<quint8, SignalCache<Signal>>; ///< by line

    static constexpr int closeTimeoutMs = 5000;

    /** The path as it is meant now; an open may change the current folder. Resources stay as they are. */
    static QString absolutePath(const QString &path);
    /** Why a file cannot be a project; empty when it may be one. */
    static QString fileReason(const QString &path);
    static bool copyBytes(QFile &source, QFile &target);
    static MessageKey messageKey(quint32 number, quint8 direction)
    {
        return (quint64(number) << 8) | direction;
    }

    // --- Connection
    bool resetProject();
    void silenceWrites();
    void abandonProject();
    void interrupt();
    bool runStatement(const QString &statement);
    bool openConnection(const QString &fileName);
    bool openWorkingFile(const QString &fileName, int cacheSize);
    void applyPragmas(int cacheSize);
    bool close(int milliseconds);
    QString newWorkingFile();
    /** The execution wrapper for statements that are not prepared ahead. */
    bool execute(QSqlQuery &query, const QString &text);
    bool run(const char *sql, int line = 0, const char *operation = __builtin_FUNCTION());
    void notify(ChangeSet changes);

    // --- Schema
    bool createGlobalTables();
    void createLineTables(quint8 line);
    bool createSubObjectsTable(int line, QSqlQuery &query);
    bool createUDSSettingsTable(int line, QSqlQuery &query);
    QStringList tableNames();

    // --- Migration of an opened file
    bool openCopy(const QString &workingFile, const QString &path, bool migrate);
    QString copyToWorkingFile(const QString &path);
    bool checkIsProject(const QString &path);
    int fileVersion();
    bool checkTool();
    void migrateSchema();
    void migrateLine(quint8 line, int version);
    void migrateContent();
    void decideLineType(quint8 line);
    void fillSpnDirections(quint8 line);
    void createMissingLine0Tables();
    void addColumns(const QString &table, std::span<const char *const> columns);
    QStringList columnNames(const QString &table);
    void completeSettings();
    void repairPositions();
    void repairBitPositions(quint8 line, quint8 direction);
    void repairSpnBitPositions(quint8 line, quint8 direction);
    bool updateMappingCounts();
    void repairLineSettings();
    bool matchesFileHash();
    void recordOutsideModification();
    void migrationExec(QSqlQuery *query, const QString &text);
    bool addUniqueColumnsToSubDatabase(int line, QSqlQuery &query);

    // --- Save
    bool prepareForSaving(const QString &target);
    bool removeReservedLine(quint8 line);
    bool writeProjectFile(const QString &path);
    bool copyWorkingFile(QFile &target);

    // --- Snapshots
    bool exchangeWorkingFile(const QString &snapshot);
    QString copySnapshot(const QString &snapshot);
    void discardWorkingFile(const QString &name);
    void forgetCaches();

    // --- Text form
    static bool isTextPath(const QString &path);
    bool writeTextFile(const QString &path);
    bool readText(DatabaseTextConverter &converter, const QString &path, bool isUnchanged);

    // --- UDS
    struct UdsService
    {
        bool active = false;
        QString sessions;
        QString userLevels;
        QString authentication;
    };
    UdsService udsService(quint8 line, UDS::SID sid);
    bool writeUdsService(quint8 line, UDS::SID sid, const UdsService &service);
    bool copyUdsSettings(quint8 fromLine, quint8 toLine);
    void insertDefaultServices(quint8 line);

    // --- Rows; `operation` names the caller in the log
    template <typename Row>
    bool internTexts(const Row &row, QVarLengthArray<int, 4> &ids);
    template <typename Row>
    bool writeRow(const QByteArray &sql, quint8 line, std::initializer_list<qint64> keys, const Row &row,
                  const char *operation = __builtin_FUNCTION());
    template <typename Row>
    bool updateRow(quint8 line, std::initializer_list<qint64> identity, const Row &row,
                   const char *operation = __builtin_FUNCTION());
    template <typename Row>
    bool insertOrUpdateRow(quint8 line, std::initializer_list<qint64> allKeys,
                           std::initializer_list<qint64> identity, const Row &row,
                           const char *operation = __builtin_FUNCTION());
    template <typename Row>
    bool readRow(quint8 line, std::initializer_list<qint64> identity, Row &row,
                 const char *operation = __builtin_FUNCTION());
    template <typename Row>
    bool rowExists(quint8 line, std::initializer_list<qint64> identity,
                   const char *operation = __builtin_FUNCTION());

    // --- String pool
    PooledTexts texts() { return {*q, pool}; }
    bool collectUsedStringIds(QSet<int> &used);
    QList<std::pair<int, int>> unusedStringRanges(const QSet<int> &used);

    // --- Settings: one implementation for the five tables
    struct SettingsTable
    {
        const char *select;
        const char *update;
        const char *insert;
        const char *keys;
        int changeType;
    };
    static const SettingsTable general, description, energyBus, j1939, misc;
    QString setting(const SettingsTable &table, const QString &key);
    bool settingExists(const SettingsTable &table, const QString &key);
    bool setSetting(const SettingsTable &table, const QString &key, const QString &value,
                    quint8 noticeLine = 0);
    QStringList settingKeys(const SettingsTable &table);
    QString descriptionKey(const QString &key) const;
    void inheritLineSettings(quint8 line);
    void removeLineElements(const SettingsTable &table, quint8 line);

    // --- Messages with their signals; `Kind` is J1939Messages or RawCanMessages
    QList<quint32> numberList(const char *sql, quint8 line, std::initializer_list<qint64> values,
                              const char *operation = __builtin_FUNCTION());
    QString pooledName(const char *sql, quint8 line, std::initializer_list<qint64> values,
                       const char *operation = __builtin_FUNCTION());
    bool change(const char *sql, quint8 line, std::initializer_list<qint64> values, const char *operation);
    template <typename Kind>
    void signalsHaveChanged(quint8 line);
    template <typename Kind>
    bool addMessage(quint8 line, quint32 number, const typename Kind::Message &message,
                    const char *operation = __builtin_FUNCTION());
    template <typename Kind>
    bool removeMessage(quint8 line, quint32 number, quint8 direction,
                       const char *operation = __builtin_FUNCTION());
    template <typename Kind>
    bool addSignal(quint8 line, quint32 message, quint8 direction, quint32 number,
                   const typename Kind::Signal &data, const char *operation = __builtin_FUNCTION());
    template <typename Kind>
    bool removeSignal(quint8 line, quint32 message, quint8 direction, quint32 number,
                      const char *operation = __builtin_FUNCTION());
    template <typename Kind>
    using MessageList = QList<std::pair<quint32, typename Kind::Message>>;
    template <typename Kind>
    using SignalList = QList<std::pair<quint32, typename Kind::Signal>>;
    template <typename Kind>
    MessageList<Kind> messagesOf(quint8 line, quint8 direction);
    template <typename Kind>
    QHash<quint32, SignalList<Kind>> signalsOf(quint8 line, quint8 direction);
    template <typename Kind>
    bool insertMessage(quint8 line, quint32 number, const typename Kind::Message &message,
                       const SignalList<Kind> &members);
    template <typename Kind>
    bool copyMessages(ObjectDataBase &source, quint8 fromLine, quint8 toLine, quint32 first, quint32 last,
                      quint8 direction);

    // --- Signal caches: nullptr for what is not cached
    template <typename Kind>
    void fillSignalCache(quint8 line, const char *operation = __builtin_FUNCTION());
    template <typename Signal>
    static const Signal *cachedSignal(const SignalCaches<Signal> &caches, quint8 line, MessageKey message,
                                      quint32 number);
    template <typename Signal>
    static const SignalCache<Signal> *cachedLine(const SignalCaches<Signal> &caches, quint8 line);

    // --- Objects
    bool copySubIndices(ObjectDataBase &source, quint8 line, quint16 index, quint8 toLine, quint16 toIndex);
    template <typename Row>
    bool writeColumn(int line, const Schema::Column<Row> &column, const QVariant &value,
                     std::initializer_list<qint64> identity);
    void fillSubCache(quint8 line, quint16 index, const SubVisitor &visit);
    void updateSubCaches(quint8 line, quint16 index, quint8 subindex, const SUBINDEX_DATA_T &data);
    void dropSubFromCaches(quint8 line, quint16 index, quint8 subindex);
    void dropObjectFromCaches(quint8 line, quint16 index);
    void dropLineCaches(quint8 line);
    qsizetype rowCount(quint8 line);

    StoreConnection connection;
    ObjectDataBase *q;
    QSqlDatabase db;
    std::atomic<bool> open = false;
    QString connectionName;
    QString lastError;
    QString projectPath;
    std::atomic<quint8> descriptionLine = 0;
    std::atomic<quint64> generation = 0;
    QStringList tempFiles;
    QStringList sqlResult;
    QStringList textLosses;
    QMap<quint8, SubIndexCache> subCache;
    QMap<quint8, QHash<quint32, SubName>> subNameCache;
    SignalCaches<SPN> spnCache;
    SignalCaches<DataElement> elementCache;
    StringPool pool;
    bool poolLoaded = false; ///< the pool holds every text of the project
    bool externallyModified = false;
};
