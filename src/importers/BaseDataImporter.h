#pragma once

#include "canopen/CANopenSubindex.h"
#include "store/ObjectDataBase.h"

#include <QMap>
#include <QObject>
#include <QSharedPointer>

#include <atomic>

class QThread;

/**
 * What all file importers share: one file is read on a worker thread into a staging line of a store.
 *
 * Set the importer up, then call startImport() once per read; the setters are not for a running import.
 * The line must exist. The importer has no QObject parent, as it moves to its worker and back; it may be
 * deleted at any time, which ends a running read and waits for it.
 *
 * A format derives from this class, reads its file in doImport() within the scope of a Session, and
 * calls endWorker() first thing in its destructor.
 */
class BaseDataImporter : public QObject
{
    Q_OBJECT

public:
    using ObjectMap = QMap<quint16, ObjectDataBase::INDEX_DATA_T>;

    static constexpr quint8 StagingLine = ObjectDataBase::ReferenceLine;

    BaseDataImporter();
    ~BaseDataImporter() override;

    /** The line to read into; StagingLine, the default, is also what -1 as quint8 means. Always true. */
    bool setLine(quint8 line);
    /** False, with the former store kept, for a null pointer. */
    bool setDatabase(const QSharedPointer<ObjectDataBase> &database);
    /** False, with no file set any more, where the file does not exist or cannot be read. */
    bool setFile(const QString &fileName);
    /** First and last index to import; 0x1000 to 0xBFFF at first. */
    void setRange(quint32 first, quint32 last);

    /** Starts doImport() on the worker thread; false while an import runs. */
    bool startImport();
    /** True when nothing runs: the worker thread, where there is one, has ended. */
    bool isFinished() const;
    bool isBusy() const { return m_busy; }
    QString fileName() const { return m_fileName; }

    /** The objects of the last read by their index; valid when the import has finished. */
    const ObjectMap &importedObjects() const { return m_importedObjects; }

    /** Reads the file in the calling thread; startImport() calls it on the worker. */
    virtual void doImport() = 0;

    /**
     * Carries out what the file read last orders to do with a line once its objects are in it, mostly
     * nothing. False when one order failed, which the log tells; the others are carried out all the same.
     */
    virtual bool carryOutCommands(quint8 line);

    /**
     * The stored data type number of a value of so many bits, as XDD and text formats tell it.
     *
     * A width with a type of its own gives that type, an integer type where `isSigned` is set and the
     * width is a whole number of bytes; no width gives the text that ends with "*", more than 64 bits an
     * octet string. A width without a type gives 0, as do 9 and 15.
     */
    static quint16 dataTypeOfWidth(int bits, bool isSigned);

Q_SIGNALS:
    /** Percent; 0 at the start, 100 exactly once at the end, after a failed read too. */
    void progress(quint8 percent);
    void importError(const QString &error);
    void newIndex(const CANopen::CANopenIndex &index);
    void newSubIndex(const CANopenSubindex &subIndex);
    /** The store is free again; nothing follows. */
    void finished();

protected:
    /**
     * Holds the store for the length of a read.
     *
     * Other threads wait in the store meanwhile and its notifications are silent; whatever way the scope
     * is left, the rows still kept back are written and the store gets back the state that it had.
     */
    class Session
    {
    public:
        explicit Session(BaseDataImporter &importer);
        ~Session();
        Q_DISABLE_COPY_MOVE(Session)

        /** False when there is nothing to read into; the error is reported already. */
        bool isOpen() const { return m_open; }

    private:
        QString obstacle() const;

        BaseDataImporter &m_importer;
        bool m_open = false;
        bool m_signalsWereBlocked = false;
    };

    ObjectDataBase &database() const { return *m_database; }
    quint8 line() const { return m_line; }
    quint32 startIndex() const { return m_startIndex; }
    quint32 endIndex() const { return m_endIndex; }
    bool isInRange(quint32 index) const { return index >= m_startIndex && index <= m_endIndex; }
    /** True when the importer is being deleted; a read should then come to its end. */
    bool isCancelled() const;

    /** Writes an object; false when the store refused it. */
    bool addObject(quint16 index, const ObjectDataBase::INDEX_DATA_T &data);
    /** Takes a sub-index for writing; rows reach the store in bulk, at the latest with the Session's end. */
    void addSubIndex(quint16 index, quint8 subIndex, const ObjectDataBase::SUBINDEX_DATA_T &data);
    void writePendingRows();
    /** Reports done / total as a percentage below 100, when it has grown. */
    void reportProgress(qint64 done, qint64 total);
    /** Ends a running read and waits for its thread. */
    void endWorker();

private:
    void runOnWorker();
    void joinWorker();

    QSharedPointer<ObjectDataBase> m_database;
    QSharedPointer<QThread> m_worker;
    QThread *m_home = nullptr; ///< where the importer lives between two reads
    quint8 m_line = StagingLine;
    std::atomic<bool> m_started = false; ///< from startImport to the end of doImport
    std::atomic<bool> m_busy = false;
    std::atomic<bool> m_cancelled = false;
    std::atomic<bool> m_handedBack = false;
    QString m_fileName;
    quint32 m_startIndex = 0x1000;
    quint32 m_endIndex = 0xBFFF;
    ObjectMap m_importedObjects;
    QList<ObjectDataBase::SubEntry> m_pendingRows;
    int m_percent = 0;
};
