#pragma once

#include "store/ObjectDataBase.h"

#include <QObject>
#include <QSharedPointer>
#include <QStringList>
#include <QTimer>

/**
 * Undo and redo by copies of the whole working database.
 *
 * A burst of writes ends 500 ms after its last statement; the state after it is then kept as a file.
 * Undo and redo put such a file in the place of the working database, so that whatever a form, an
 * importer or a dialog changed is covered without any code there. Not for use from other threads; a
 * worker's writes arrive queued. The history never reaches across setDataBase, nor across an open: a
 * store that goes on with another project begins a history of that project by itself.
 */
class UndoManager : public QObject
{
    Q_OBJECT

public:
    /** Reads the depth from the user's settings and clears away what crashed processes left behind. */
    explicit UndoManager(QObject *parent = nullptr);
    /** Deletes all copies. */
    ~UndoManager() override;

    /** Watches another store (or none) from its present state on. */
    void setDataBase(const QSharedPointer<ObjectDataBase> &store);

    /** While paused no copies are made and nothing is undone; each pause needs its resume. */
    void pause();
    void resume();
    /** Forgets the history, the present state included. */
    void clear();
    /** Keeps the present state; a failure switches undo off until the next project. */
    bool takeSnapshot();

public Q_SLOTS:
    void undo();
    void redo();
    void handleDatabaseWrite();
    void handleDebounceTimeout();

Q_SIGNALS:
    void canUndoChanged(bool canUndo);
    void canRedoChanged(bool canRedo);
    /** The oldest step has been dropped. */
    void historyLimitReached();
    /** The store holds another state now; it may differ from the project file. */
    void restored();

private:
    enum class Direction { Undo, Redo };

    void handleUpdate(const ObjectDataBase::ChangeSet &changes);
    bool followProject();
    void beginHistory();
    bool mayRestore() const;
    void step(Direction direction);
    void dropSnapshots();
    void announce();
    void removeStaleFolders() const;
    void createSnapshotFolder();
    QString nextSnapshotName();

    QSharedPointer<ObjectDataBase> m_store;
    QStringList m_undoStack; ///< the last file is the present state
    QStringList m_redoStack;
    QTimer m_timer;
    QString m_snapshotDir;
    quint64 m_sequence = 0;
    quint64 m_generation = 0; ///< of the project that the snapshots belong to
    quint64 m_history = 0; ///< raised whenever all snapshots are dropped
    int m_maxDepth;
    int m_pauseCount = 0;
    int m_folderLock = -1;
    bool m_burstOpen = false;
    bool m_snapshotFailed = false;
};
