#include "store/ConnectionGate.h"

#include <QCoreApplication>
#include <QThread>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

void ConnectionGate::enter()
{
    const Qt::HANDLE self = QThread::currentThreadId();
    std::unique_lock lock(m_mutex);
    wait(lock, self, false);
    take(self);
}

bool ConnectionGate::enterForWriting()
{
    const Qt::HANDLE self = QThread::currentThreadId();
    std::unique_lock lock(m_mutex);
    if (!wait(lock, self, true))
        return false;
    take(self);
    return true;
}

// Gives false only with untilLocked: the write lock was set before the thread got in.
bool ConnectionGate::wait(std::unique_lock<std::mutex> &lock, Qt::HANDLE thread, bool untilLocked)
{
    while (true) {
        if (untilLocked && m_writeLocked)
            return false;
        if (m_holder == thread || (!mustWait(thread) && m_depth == 0))
            return true;
        if (mustWait(thread))
            serveEvents(lock);
        else
            m_changed.wait(lock);
    }
}

bool ConnectionGate::tryEnter(int milliseconds)
{
    const Qt::HANDLE self = QThread::currentThreadId();
    std::unique_lock lock(m_mutex);
    const auto mayEnter = [&] { return m_depth == 0 || m_holder == self; };
    if (!m_changed.wait_for(lock, std::chrono::milliseconds(milliseconds), mayEnter))
        return false;
    take(self);
    return true;
}

void ConnectionGate::leave()
{
    std::vector<std::function<void()>> actions;
    {
        const std::lock_guard lock(m_mutex);
        --m_queriesRunning;
        if (--m_depth > 0)
            return;
        m_holder = nullptr;
        actions.swap(m_afterLease);
    }
    m_changed.notify_all();
    for (const auto &action : actions)
        action();
}

void ConnectionGate::afterLease(std::function<void()> action)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_depth > 0 && m_holder == QThread::currentThreadId()) {
            m_afterLease.push_back(std::move(action));
            return;
        }
    }
    action();
}

void ConnectionGate::setWriteLocked(bool locked)
{
    const Qt::HANDLE self = QThread::currentThreadId();
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return m_depth == 0 || m_holder == self; });
    m_writeLocked = locked;
}

void ConnectionGate::setUpdatesBlocked(bool blocked)
{
    const Qt::HANDLE self = QThread::currentThreadId();
    {
        const std::lock_guard lock(m_mutex);
        if (!blocked)
            m_exemptThreads.removeAll(self);
        else if (!m_exemptThreads.contains(self))
            m_exemptThreads.append(self);
        m_updatesBlocked = blocked;
    }
    m_changed.notify_all();
}

bool ConnectionGate::mustWait(Qt::HANDLE thread) const
{
    return m_updatesBlocked && !m_exemptThreads.contains(thread);
}

// A bounded wait instead of a bare processEvents loop: the waiting thread stays responsive without
// burning the core that the worker needs.
void ConnectionGate::serveEvents(std::unique_lock<std::mutex> &lock)
{
    m_changed.wait_for(lock, 5ms);
    lock.unlock();
    QCoreApplication::processEvents();
    lock.lock();
}

void ConnectionGate::take(Qt::HANDLE thread)
{
    m_holder = thread;
    ++m_depth;
    ++m_queriesRunning;
}
