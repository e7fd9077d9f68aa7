#pragma once

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <ctime>
#include <functional>
#include <vector>

/** Alternating measurement of two ways to do one job. */
namespace Pairs {

/** Seconds that a job takes, on the clock and of this thread's processor time. */
struct Seconds
{
    double wall = 0;
    double cpu = 0;
};

inline double threadCpuSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) + 1e-9 * double(now.tv_nsec);
}

inline Seconds seconds(const std::function<void()> &job)
{
    const auto wall = std::chrono::steady_clock::now();
    const double cpu = threadCpuSeconds();
    job();
    return {std::chrono::duration<double>(std::chrono::steady_clock::now() - wall).count(),
            threadCpuSeconds() - cpu};
}

inline double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

/**
 * Runs both sides `rounds` times, each round starting with the other side than the one before, and
 * reports the medians in milliseconds and the median ratio of measured to reference. On a busy machine
 * cpu_ratio is the steadier of the two ratios.
 *
 * Each side prepares itself, untimed, and returns the seconds of its timed part.
 */
inline void compare(benchmark::State &state, double goal, const std::function<Seconds()> &measured,
                    const std::function<Seconds()> &reference, int rounds = 9)
{
    for ([[maybe_unused]] auto _ : state) {
        std::vector<double> measuredTimes;
        std::vector<double> referenceTimes;
        std::vector<double> ratios;
        std::vector<double> cpuRatios;
        for (int round = 0; round < rounds; ++round) {
            const bool measuredFirst = round % 2 == 0;
            const Seconds first = measuredFirst ? measured() : reference();
            const Seconds second = measuredFirst ? reference() : measured();
            const Seconds &own = measuredFirst ? first : second;
            const Seconds &other = measuredFirst ? second : first;
            measuredTimes.push_back(own.wall);
            referenceTimes.push_back(other.wall);
            ratios.push_back(own.wall / other.wall);
            cpuRatios.push_back(own.cpu / other.cpu);
        }
        state.SetIterationTime(median(measuredTimes));
        state.counters["measured_ms"] = 1000 * median(measuredTimes);
        state.counters["reference_ms"] = 1000 * median(referenceTimes);
        state.counters["ratio"] = median(ratios);
        state.counters["cpu_ratio"] = median(cpuRatios);
        state.counters["goal"] = goal;
    }
}

} // namespace Pairs
