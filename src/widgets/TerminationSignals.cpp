#include "widgets/TerminationSignals.h"

#include <QCoreApplication>
#include <QDebug>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int signalExitBase = 128; // what POSIX shells add to the number of a signal

// A signal handler may touch lock-free atomics and call write(), little else.
std::atomic<int> receivedSignal = 0;
std::atomic<int> wakeUpEnd = -1;
static_assert(std::atomic<int>::is_always_lock_free);

extern "C" void rememberSignal(int signal)
{
    const int error = errno;
    receivedSignal = signal;
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = write(wakeUpEnd, &byte, sizeof byte);
    errno = error;
}

} // namespace

TerminationSignals::TerminationSignals()
{
    receivedSignal = 0;
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        qWarning("Signals end the program at once: %s", std::strerror(errno));
        return;
    }
    wakeUpEnd = ends[1];
    m_notifier.emplace(ends[0], QSocketNotifier::Read);
    QObject::connect(&*m_notifier, &QSocketNotifier::activated, &*m_notifier, [this] { leaveEventLoops(); });
    takeOver();
}

TerminationSignals::~TerminationSignals()
{
    if (!m_notifier)
        return;
    for (std::size_t i = 0; i < handledSignals.size(); ++i)
        sigaction(handledSignals[i], &m_former[i], nullptr);
    const int readEnd = int(m_notifier->socket());
    m_notifier.reset();
    close(readEnd);
    close(wakeUpEnd.exchange(-1));
}

int TerminationSignals::received()
{
    return receivedSignal;
}

int TerminationSignals::exitCode(int code)
{
    return received() == 0 ? code : signalExitBase + received();
}

void TerminationSignals::takeOver()
{
    struct sigaction action = {};
    action.sa_handler = rememberSignal;
    action.sa_flags = int(SA_RESTART | SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < handledSignals.size(); ++i) {
        sigaction(handledSignals[i], nullptr, &m_former[i]);
        if (m_former[i].sa_handler != SIG_IGN)
            sigaction(handledSignals[i], &action, nullptr);
    }
}

void TerminationSignals::leaveEventLoops()
{
    std::array<char, 16> bytes{};
    while (read(int(m_notifier->socket()), bytes.data(), bytes.size()) > 0) { }
    qWarning("Ended by signal %d", received());
    QCoreApplication::exit(exitCode(0));
}
