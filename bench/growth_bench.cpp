// How time grows with size, and memory with inputs and outputs: the exponent of n between neighbouring sizes, and the
// peak of one call in a process of its own as a multiple of what goes in and comes out.
#include "bench/compare.hpp"
#include "bench/operations.hpp"

#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <fstream>
#include <string>
#include <vector>

namespace {

using bench::Handle;
using Call = Handle (*)(const Handle&);

double best_seconds(Call call, const Handle& input)
{
    auto operation = [&] { return call(input); };
    const std::size_t calls =
        bench::calls_per_round([&](std::size_t count) { return bench::seconds_per_call(operation, count); });
    double best = bench::seconds_per_call(operation, calls);
    for (int round = 0; round < 4; ++round)
        best = std::min(best, bench::seconds_per_call(operation, calls));
    return best;
}

std::size_t bytes_of(const Handle& value)
{
    const Qud::MatVal* const M = Qud::matrix_of(value);
    if (M == nullptr)
        return sizeof(double);
    std::size_t bytes = M->count() * sizeof(double) * (M->HasImag() ? 2 : 1);
    if (M->has_entries())
        for (const Qud::Entry& entry : *M->entries())
            bytes += bytes_of(entry.value);
    return bytes;
}

/// A line of the process's status, in bytes: "VmRSS:" what it holds now, "VmHWM:" the most that it has held.
double held(const std::string& which)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(which))
            return 1024.0 * std::stod(line.substr(which.size()));
    return NAN;
}

/// Lets the most that the process has held be what it holds now.
void forget_peak()
{
    std::ofstream("/proc/self/clear_refs") << 5;
}

/// The growth of a fresh process's peak over one call, input included, in units of input and output.
template <class MakeInput>
double peak_multiple(Call call, MakeInput make_input)
{
    int answer[2];
    if (pipe(answer) != 0)
        return NAN;
    if (fork() == 0) {
        double multiple = 0.0;
        {
            const Handle input = make_input();
            forget_peak();
            const double before = held("VmRSS:") - static_cast<double>(bytes_of(input));
            const Handle output = call(input);
            multiple = (held("VmHWM:") - before) / static_cast<double>(bytes_of(input) + bytes_of(output));
        }
        _exit(write(answer[1], &multiple, sizeof multiple) == sizeof multiple ? 0 : 1);
    }
    close(answer[1]);
    double multiple = NAN;
    if (read(answer[0], &multiple, sizeof multiple) != sizeof multiple)
        multiple = NAN;
    close(answer[0]);
    wait(nullptr);
    return multiple;
}

Handle matrix_input(const bench::MatrixOperation& operation, std::size_t n)
{
    return bench::host_matrix(n, n, bench::matrix_for(operation, n));
}

Handle column_input(const bench::ColumnOperation& operation, std::size_t n)
{
    return bench::host_matrix(n, 1, bench::column_for(operation, n));
}

/// One row: the time at the first size, the exponents from each size to the next, and the peak at the last.
template <class MakeInput>
void row(const char* name, const std::vector<std::size_t>& sizes, Call call, MakeInput make_input, double multiple)
{
    std::printf("%-18s", name);
    double before = 0.0;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        const double seconds = best_seconds(call, make_input(sizes[i]));
        if (i == 0)
            std::printf(" %12s", bench::duration(seconds).c_str());
        else
            std::printf(" %8.2f", std::log(seconds / before) /
                                      std::log(static_cast<double>(sizes[i]) / static_cast<double>(sizes[i - 1])));
        before = seconds;
        std::fflush(stdout);
    }
    std::printf(" %12s %10.2f\n", bench::duration(before).c_str(), multiple);
    std::fflush(stdout);
}

void columns(const std::vector<std::size_t>& sizes)
{
    std::printf("%-18s %12s", "operation", ("n = " + std::to_string(sizes[0])).c_str());
    for (std::size_t i = 1; i < sizes.size(); ++i)
        std::printf(" %8s", ("to " + std::to_string(sizes[i])).c_str());
    std::printf(" %12s %10s\n", "at the last", "peak / i+o");
}

} // namespace

int main()
{
    Efi::IntelMKL::setNumThreads(Qud::NumVal::make(1.0));
    std::printf("growth: exponents of n, and peak memory of one call over its inputs and outputs: %s, level %s\n",
                bench::processor().c_str(), bench::level());
    const std::vector<std::size_t> orders{100, 200, 500, 1000};
    const std::vector<std::size_t> lengths{10'000, 100'000, 1'000'000, 10'000'000};
    // All peaks first: a process begins with what its parent holds, and the timing leaves blocks behind.
    std::vector<double> peaks;
    for (const bench::MatrixOperation& operation : bench::matrix_operations)
        peaks.push_back(peak_multiple(operation.call, [&] { return matrix_input(operation, orders.back()); }));
    for (const bench::ColumnOperation& operation : bench::column_operations)
        peaks.push_back(peak_multiple(operation.call, [&] { return column_input(operation, lengths.back()); }));

    auto peak = peaks.begin();
    columns(orders);
    for (const bench::MatrixOperation& operation : bench::matrix_operations)
        row(
            operation.name, orders, operation.call, [&](std::size_t n) { return matrix_input(operation, n); }, *peak++);
    columns(lengths);
    for (const bench::ColumnOperation& operation : bench::column_operations)
        row(
            operation.name, lengths, operation.call, [&](std::size_t n) { return column_input(operation, n); },
            *peak++);
    return 0;
}
