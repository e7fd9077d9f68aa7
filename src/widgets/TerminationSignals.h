#pragma once

#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <optional>

/**
 * Ends the event loop when the process is told to end, so that destructors still run.
 *
 * As long as the object lives, SIGHUP, SIGINT and SIGTERM leave every running event loop, boxes and
 * dialogs included, without asking about unsaved changes. The second signal of a kind has its usual
 * effect again, so that a program that is busy elsewhere can still be stopped. A signal that the caller
 * has switched off, as nohup does, stays off. One object at a time, made behind the application.
 */
class TerminationSignals
{
public:
    TerminationSignals();
    ~TerminationSignals();
    Q_DISABLE_COPY_MOVE(TerminationSignals)

    /** The number of the signal that came in, 0 for none. */
    static int received();
    /** What the process returns: 128 plus the signal that came in, as shells tell it; else the code given. */
    static int exitCode(int code);

private:
    static constexpr std::array handledSignals{SIGHUP, SIGINT, SIGTERM};

    void takeOver();
    void leaveEventLoops();

    std::array<struct sigaction, handledSignals.size()> m_former = {};
    std::optional<QSocketNotifier> m_notifier;
};
