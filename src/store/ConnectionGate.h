#pragma once

#include <QList>
#include <QtGlobal>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <vector>

/**
 * Lets one thread at a time into a store's SQLite connection.
 *
 * SQLite's handle and the caches beside it belong to whoever holds the lease; a thread may take the
 * lease again while it holds it. While updates are blocked only the exempt threads get in; any other
 * thread waits and keeps its own event loop going, so that a window repaints while a worker runs.
 *
 * What an operation wants to announce is put off until the outermost lease has ended: a listener may
 * then use the store, and finds it with the whole change made.
 */
class ConnectionGate
{
public:
    /** Holds the connection for the length of a scope. */
    class Lease
    {
    public:
        explicit Lease(ConnectionGate &gate) : m_gate(gate) { m_gate.enter(); }
        ~Lease() { m_gate.leave(); }
        Q_DISABLE_COPY_MOVE(Lease)

    private:
        ConnectionGate &m_gate;
    };

    /** A lease for an operation that writes; false, and no lease, while writes are locked. */
    class WriteLease
    {
    public:
        explicit WriteLease(ConnectionGate &gate) : m_gate(gate), m_granted(gate.enterForWriting()) { }
        ~WriteLease()
        {
            if (m_granted)
                m_gate.leave();
        }
        Q_DISABLE_COPY_MOVE(WriteLease)
        explicit operator bool() const { return m_granted; }

    private:
        ConnectionGate &m_gate;
        bool m_granted;
    };

    void enter();
    bool enterForWriting();
    void leave();
    /** As enter, but heeds no blocking and gives up after the time; false when it did. */
    bool tryEnter(int milliseconds);

    /** Runs the action once the calling thread holds no lease any more; at once if it holds none. */
    void afterLease(std::function<void()> action);

    /** Adds the calling thread to the exempt ones or takes it out, then blocks or unblocks. */
    void setUpdatesBlocked(bool blocked);

    /** Waits for an operation that is under way in another thread, then refuses or admits writes. */
    void setWriteLocked(bool locked);
    bool isWriteLocked() const { return m_writeLocked.load(); }
    /** Leases that are held at this moment, those taken again included. */
    int queriesRunning() const { return m_queriesRunning.load(); }

private:
    bool mustWait(Qt::HANDLE thread) const;
    bool wait(std::unique_lock<std::mutex> &lock, Qt::HANDLE thread, bool untilLocked);
    void serveEvents(std::unique_lock<std::mutex> &lock);
    void take(Qt::HANDLE thread);

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::atomic<bool> m_writeLocked = false;
    std::atomic<int> m_queriesRunning = 0;
    QList<Qt::HANDLE> m_exemptThreads;
    std::vector<std::function<void()>> m_afterLease;
    bool m_updatesBlocked = false;
    Qt::HANDLE m_holder = nullptr;
    int m_depth = 0;
};
