#pragma once

#include "bench/compare.hpp"
#include "bench/inputs.hpp"

#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

/// Peers that run beside us: NumPy and SciPy in a Python process with one thread, timed in turns with ours.
namespace bench {

/// A Python process that takes orders. Only the time inside its evaluations counts, not the talk with it.
class PythonPeer {
public:
    PythonPeer()
    {
        int to_peer[2];
        int from_peer[2];
        if (pipe(to_peer) != 0 || pipe(from_peer) != 0)
            return;
        if (fork() == 0) {
            dup2(to_peer[0], 0);
            dup2(from_peer[1], 1);
            close(to_peer[1]);
            close(from_peer[0]);
            setenv("OPENBLAS_NUM_THREADS", "1", 1);
            execlp("/usr/bin/python3", "python3", BENCH_FOLDER "/python_peer.py", static_cast<char*>(nullptr));
            _exit(127);
        }
        close(to_peer[0]);
        close(from_peer[1]);
        m_to = fdopen(to_peer[1], "w");
        m_from = fdopen(from_peer[0], "r");
    }
    ~PythonPeer()
    {
        std::fclose(m_to); // the process ends with its orders
        std::fclose(m_from);
    }
    PythonPeer(const PythonPeer&) = delete;
    PythonPeer& operator=(const PythonPeer&) = delete;

    /// The answer to an order, "" where there is no Python or no module of that name.
    std::string ask(const std::string& order)
    {
        std::fputs((order + "\n").c_str(), m_to);
        std::fflush(m_to);
        std::string answer;
        for (int c = std::fgetc(m_from); c != EOF && c != '\n'; c = std::fgetc(m_from))
            answer.push_back(static_cast<char>(c));
        return answer;
    }

    bool load(const char* name, std::size_t rows, std::size_t cols, const Numbers& numbers)
    {
        const std::string file = scratch();
        std::ofstream(file, std::ios::binary)
            .write(reinterpret_cast<const char*>(numbers.data()),
                   static_cast<std::streamsize>(numbers.size() * sizeof(double)));
        const std::string order =
            std::string("load ") + name + " " + std::to_string(rows) + " " + std::to_string(cols) + " " + file;
        const bool loaded = ask(order) == "loaded";
        std::filesystem::remove(file);
        return loaded;
    }

    Numbers result()
    {
        const std::string file = scratch();
        Numbers numbers;
        if (ask("result " + file) == "written") {
            numbers.resize(std::filesystem::file_size(file) / sizeof(double));
            std::ifstream(file, std::ios::binary)
                .read(reinterpret_cast<char*>(numbers.data()),
                      static_cast<std::streamsize>(numbers.size() * sizeof(double)));
        }
        std::filesystem::remove(file);
        return numbers;
    }

private:
    static std::string scratch()
    {
        return std::filesystem::temp_directory_path() / ("bench_" + std::to_string(getpid()) + ".doubles");
    }

    std::FILE* m_to = nullptr;
    std::FILE* m_from = nullptr;
};

/// One row against Python: `prepare` hands the peer its inputs, `expression` is what it evaluates, and `agree` looks at
/// our result and the numbers of its own. Without the modules that it needs the row says so.
template <class Prepare, std::invocable Ours, class Agree>
void compare_with_python(const Case& row, Prepare prepare, const std::string& expression, Ours ours, Agree agree)
{
    PythonPeer peer;
    if (!prepare(peer) || peer.ask("expression " + expression) != "compiled") {
        std::printf("%-26s %9zu %s is not installed\n", row.name, row.n, row.peer);
        return;
    }
    if (!agree(ours(), peer.result()))
        results_differ(row);
    time_in_turns(
        row, [&](std::size_t calls) { return seconds_per_call(ours, calls); },
        [&](std::size_t calls) { return std::stod(peer.ask("time " + std::to_string(calls))); });
}

} // namespace bench
