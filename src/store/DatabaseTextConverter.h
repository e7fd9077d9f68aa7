#pragma once

#include <QObject>
#include <QSharedPointer>
#include <QSqlDatabase>
#include <QVariant>

#include <functional>
#include <memory>
#include <set>
#include <tuple>
#include <utility>

class ConnectionGate;
class ObjectDataBase;
class QSettings;
class QSqlQuery;
class QSqlRecord;
class QTemporaryDir;

/**
 * Turns a store's working database into the text form of a project and back.
 *
 * The text is a QSettings file in INI format, meant for version control: sorted keys, texts instead of
 * pool ids. It is no copy of the database. Raw CAN messages, EnergyBus settings and connections never go
 * into it, the tables of CANopen and J1939 only where a line's type asks for them. A bad entry is
 * logged and left out, in either direction; the conversion goes on. What the form has no room for is told
 * by losses().
 */
class DatabaseTextConverter : public QObject
{
    Q_OBJECT

public:
    explicit DatabaseTextConverter(QObject *parent = nullptr);
    ~DatabaseTextConverter() override;

    /** The store and its connection; the gate is taken for every use of the latter. */
    void setDataBase(ObjectDataBase *store, const QSqlDatabase &database, ConnectionGate *gate);
    /** Deletes the file: nothing of a former text survives. */
    void setOutputFile(const QString &path);
    /**
     * Reads a private copy of the text, in which lines that are neither a group nor an entry are left out.
     *
     * QSettings shares what it parsed with the whole process for as long as size and time of the file stay
     * the same: a text that was written anew within one tick of the clock would be read as it was before.
     */
    void setInputFile(const QString &path);

    /** False only when the store or the file is not set; see isWritten. */
    bool convertSqlToText();
    /** False when the store or the file is not set or the file holds no group. */
    bool convertTextToSql();
    /** True when the text reached its file. */
    bool isWritten() const;
    /** What the text written last does not hold of the project, one sentence each. */
    QStringList losses() const { return m_losses; }

    void importPGNs(const QString &group);
    void importSPNs(const QString &group);
    void importUDSSettings(const QString &group);

    /** What is wrong with the input as a whole; empty when it is the text of a project. */
    QString defect() const;
    bool hasGroup(const QString &group) const;
    /** True when lines of the input had to be left out or mended. */
    bool hasBadLines() const;
    /** True when the input ends within a line, as a text does whose end is missing. */
    bool endsWithinLine() const { return m_endsWithinLine; }

    /**
     * SHA-256 over the text's own entries, in lower-case hexadecimal.
     *
     * The database that a text is read into differs from the one that it was written from (tables are
     * left out, pool ids and row numbers are new), so that its content hash could never be met again.
     * The entries can: sorted by key, each with its value, but for FileHash and TamperLog. Line ends,
     * comments and the order in the file do not count, as version control may change them.
     */
    QString entriesHash() const;
    /** The FileHash entry of the text. */
    QString storedHash() const;

private:
    struct TableFormat;
    struct TextColumn;
    using Values = QList<std::pair<QString, QVariant>>; ///< column and value, in the order of the file
    using RowUse = std::function<void(const QStringList &path, const Values &values)>;

    // --- Writing
    QStringList tableNames();
    void replaceNulls(const QStringList &tables);
    void replaceNulls(const QString &table, QSqlQuery &query);
    QStringList ignoredNames();
    void findLineTypes(bool &hasCanopen, bool &hasJ1939);
    bool isForOtherProtocol(const QString &table);
    void writeTable(const QString &table);
    void writeSettings(const QString &table);
    void writeRows(const QString &table, const TableFormat &format);
    void writeUniqueKeyTable(const QString &table);
    void writeAnyTable(const QString &table);
    QList<TextColumn> describe(const QSqlRecord &record, const TableFormat &format) const;
    QVariant fieldText(const QSqlQuery &query, const TextColumn &column) const;
    void seal();
    void tellLostTable(const QString &table);
    void tellLostNodes();
    void tellLostRow(const QString &table, const QString &path, int direction);
    void tellLostTexts(const QString &table);
    bool isOfLostGroup(const QString &table, const QString &path, int direction);
    void noteGroup(const QString &table, const QString &path, int lost, int kept);

    // --- Reading
    QList<int> importNodes();
    void importNode(quint8 line, const Values &values);
    QList<int> linesOfText(const QStringList &groups, bool hasNodes) const;
    void createLines(QList<int> lines);
    void dropDefaultServices();
    void reservePoolIds(const QStringList &groups);
    void importGroup(const QString &group);
    void importSettings(const QString &group, bool (ObjectDataBase::*set)(const QString &, const QString &));
    void importObjects(const QString &group);
    void importSubObjects(const QString &group);
    void importRows(const QString &group, QLatin1StringView kind, const QStringList &keys);
    void forEachRow(const QString &group, int pathLength, const RowUse &use) const;
    QStringList columnsOf(const QString &table) const;
    void insertRow(QSqlQuery &query, const QString &table, const QStringList &known, QStringList columns,
                   QVariantList bound, const Values &values);

    ObjectDataBase *m_store = nullptr;
    QSqlDatabase m_database;
    ConnectionGate *m_gate = nullptr;
    std::unique_ptr<QTemporaryDir> m_inputFolder;
    QSharedPointer<QSettings> m_settings;
    QString m_inputDefect;
    int m_badLines = 0;
    bool m_endsWithinLine = false;
    QStringList m_losses;
    std::set<std::tuple<int, QString, int>> m_lostGroups; ///< line, number and direction
};
