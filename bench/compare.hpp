#pragma once

#include <algorithm>
#include <array>
#include <chrono>
#include <concepts>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <string>
#include <thread>

/// A benchmark sets ours beside a named peer on one input: it compares the two results first, then times both in
/// turns, so that a change of the processor's speed meets both, and prints the best round of each with the ratio.
namespace bench {

inline constexpr int rounds = 11;
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

/// The first lines of every table: where it was measured, with how many threads, and what the columns are.
inline void header(const char* title, unsigned threads = 1)
{
    std::printf("%s: %s, %u of %u threads, best of %d rounds\n", title, processor().c_str(), threads,
                std::thread::hardware_concurrency(), rounds);
    std::printf("%-24s %8s %12s %12s %7s  %s\n", "name", "n", "ours", "peer", "ratio", "peer is");
}

/// Seconds that one call takes, over `calls` calls.
template <class Operation>
double seconds_per_call(Operation& operation, std::size_t calls)
{
    const auto start = std::chrono::steady_clock::now();
    for (std::size_t i = 0; i < calls; ++i)
        keep(operation());
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() / static_cast<double>(calls);
}

/// How many calls fill a round.
template <class Operation>
std::size_t calls_per_round(Operation& operation)
{
    std::size_t calls = 1;
    for (double total = 0.0; total < round_seconds / 2; calls *= 2) {
        total = seconds_per_call(operation, calls) * static_cast<double>(calls);
        if (total >= round_seconds / 2)
            break;
    }
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

/// What a row of the table is about.
struct Case {
    const char* name;
    std::size_t n;
    const char* peer;
};

/// One row. `ours` and `peer` return their results; `agree` says whether the two are the same, and when they are not
/// the program ends: a wrong result has no speed.
template <std::invocable Ours, std::invocable Peer, class Agree>
void compare(const Case& row, Ours ours, Peer peer, Agree agree)
{
    if (!agree(ours(), peer())) {
        std::printf("%-24s %8zu the results differ\n", row.name, row.n);
        std::exit(EXIT_FAILURE);
    }
    const std::size_t our_calls = calls_per_round(ours);
    const std::size_t peer_calls = calls_per_round(peer);
    double our_best = std::numeric_limits<double>::infinity();
    double peer_best = our_best;
    for (int round = 0; round < rounds; ++round) {
        our_best = std::min(our_best, seconds_per_call(ours, our_calls));
        peer_best = std::min(peer_best, seconds_per_call(peer, peer_calls));
    }
    std::printf("%-24s %8zu %12s %12s %7.2f  %s\n", row.name, row.n, duration(our_best).c_str(),
                duration(peer_best).c_str(), our_best / peer_best, row.peer);
    std::fflush(stdout);
}

} // namespace bench
