#pragma once

#include <algorithm>
#include <array>
#include <concepts>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>
#include <time.h>

/// A benchmark sets ours beside a named peer on one input: it compares the two results first, then times both in
/// turns, so that a change of the processor's speed meets both, and prints the median round of each with the ratio.
namespace bench {

inline constexpr std::size_t rounds = 11;
inline constexpr double round_seconds = 0.01;

/// Makes the compiler believe that the value is looked at.
template <class T>
void keep(const T& value)
{
    asm volatile("" : : "r"(&value) : "memory");
}

inline std::string processor()
{
    std::ifstream cpuinfo("/proc/cpuinfo");
    for (std::string line; std::getline(cpuinfo, line);)
        if (line.starts_with("model name"))
            return line.substr(line.find(':') + 2);
    return "an unnamed processor";
}

/// The instruction level that the library's kernels choose on this processor.
inline const char* level()
{
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx512f") && __builtin_cpu_is("intel"))
        return "avx512";
    return __builtin_cpu_supports("avx2") ? "avx2" : "baseline";
#else
    return "baseline";
#endif
}

/// The first lines of the table: where it was measured and what the columns are. A run of several benchmarks sets
/// BENCH_CONTINUED after the first, so that all make one table.
inline void header(const char* title)
{
    if (std::getenv("BENCH_CONTINUED") != nullptr)
        return;
    std::printf(
        "%s: %s, %u threads, level %s; one thread used unless the peer's name says more; medians of %zu rounds of "
        "processor time\n",
        title, processor().c_str(), std::thread::hardware_concurrency(), level(), rounds);
    std::printf("%-26s %9s %10s %10s %7s %7s  %s\n", "operation", "size", "ours", "peer", "ratio", "at most",
                "peer is");
}

/// The time of this thread on the processor, which others on the machine do not lengthen; for what several threads or
/// processes do, the time that passes.
enum class Clock { processor, wall };

inline double now(Clock clock)
{
    timespec time{};
    clock_gettime(clock == Clock::wall ? CLOCK_MONOTONIC : CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// Seconds that one call takes, over `calls` calls.
template <class Operation>
double seconds_per_call(Operation& operation, std::size_t calls, Clock clock = Clock::processor)
{
    const double start = now(clock);
    for (std::size_t i = 0; i < calls; ++i)
        keep(operation());
    return (now(clock) - start) / static_cast<double>(calls);
}

/// How many calls fill a round, when `time(calls)` says how long one of so many takes.
template <class Time>
std::size_t calls_per_round(Time&& time)
{
    std::size_t calls = 1;
    while (time(calls) * static_cast<double>(calls) < round_seconds / 2)
        calls *= 2;
    return calls;
}

inline std::string duration(double seconds)
{
    struct Unit {
        double in_seconds;
        const char* name;
    };
    constexpr std::array units{Unit{1.0, "s"}, Unit{1e-3, "ms"}, Unit{1e-6, "us"}, Unit{1e-9, "ns"}};
    const Unit& unit =
        *std::find_if(units.begin(), units.end() - 1, [&](const Unit& u) { return seconds >= u.in_seconds; });
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.4g %s", seconds / unit.in_seconds, unit.name);
    return text.data();
}

/// The threads that both sides work on at the moment; with more than one it is the time that passes which counts.
inline unsigned threads_in_use = 1;

/// What a row of the table is about.
struct Case {
    const char* name;
    std::size_t n;
    const char* peer;
    double at_most = 0.0; ///< the ratio that we hold ourselves to; 0 where none is set
    Clock clock = Clock::processor;
};

/// What we hold ourselves to beside the LAPACK routine that a call runs; in smaller calls their own microsecond shows.
constexpr double at_most_beside_routine(std::size_t n)
{
    return n >= 200 ? 1.05 : 0.0;
}

[[noreturn]] inline void results_differ(const Case& row)
{
    std::printf("%-26s %9zu the results differ\n", row.name, row.n);
    std::exit(EXIT_FAILURE);
}

inline double median(std::array<double, rounds>& seconds)
{
    std::sort(seconds.begin(), seconds.end());
    return seconds[rounds / 2];
}

/// Times two operations in turns and prints their row; each is called with a number of calls and answers the seconds
/// that one took.
template <class Ours, class Peer>
void time_in_turns(const Case& row, Ours&& ours, Peer&& peer)
{
    const std::size_t our_calls = calls_per_round(ours);
    const std::size_t peer_calls = calls_per_round(peer);
    std::array<double, rounds> our_seconds{};
    std::array<double, rounds> peer_seconds{};
    for (std::size_t round = 0; round < rounds; ++round) {
        our_seconds[round] = ours(our_calls);
        peer_seconds[round] = peer(peer_calls);
    }
    const double our_median = median(our_seconds);
    const double peer_median = median(peer_seconds);
    std::array<char, 16> goal{};
    if (row.at_most > 0.0)
        std::snprintf(goal.data(), goal.size(), "%.2f", row.at_most);
    const std::string threads = threads_in_use > 1 ? ", " + std::to_string(threads_in_use) + " threads" : "";
    std::printf("%-26s %9zu %10s %10s %7.2f %7s  %s%s\n", row.name, row.n, duration(our_median).c_str(),
                duration(peer_median).c_str(), our_median / peer_median, goal.data(), row.peer, threads.c_str());
    std::fflush(stdout);
}

/// One row. `ours` and `peer` return their results; `agree` says whether the two are the same, and when they are not
/// the program ends: a wrong result has no speed.
template <std::invocable Ours, std::invocable Peer, class Agree>
void compare(const Case& row, Ours ours, Peer peer, Agree agree)
{
    if (!agree(ours(), peer()))
        results_differ(row);
    const Clock clock = threads_in_use > 1 ? Clock::wall : row.clock;
    time_in_turns(
        row, [&](std::size_t calls) { return seconds_per_call(ours, calls, clock); },
        [&](std::size_t calls) { return seconds_per_call(peer, calls, clock); });
}

} // namespace bench
