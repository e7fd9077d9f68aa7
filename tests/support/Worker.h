#pragma once

#include <QThread>

#include <atomic>
#include <climits>
#include <functional>
#include <memory>

/**
 * A thread for tests whose end a race detector sees.
 *
 * QThread::wait orders the thread's work before what follows, but inside Qt, which is not instrumented; the
 * flag says the same where the detector looks. Starts at once; the destructor waits.
 */
class Worker
{
public:
    explicit Worker(std::function<void()> job)
        : m_thread(QThread::create([this, job = std::move(job)] {
              job();
              m_ended.store(true, std::memory_order_release);
          }))
    {
        m_thread->start();
    }
    ~Worker() { wait(ULONG_MAX); }
    Q_DISABLE_COPY_MOVE(Worker)

    /** False when the job has not ended in time. */
    bool wait(unsigned long milliseconds = 30000)
    {
        return m_thread->wait(milliseconds) && m_ended.load(std::memory_order_acquire);
    }
    bool isRunning() const { return m_thread->isRunning(); }
    QThread *thread() const { return m_thread.get(); }

private:
    std::atomic<bool> m_ended = false;
    std::unique_ptr<QThread> m_thread;
};
