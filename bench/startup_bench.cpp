// Whole processes: the start of the program beside one that only links OpenBLAS and ICU, and beside NumPy's import;
// worksheets of many small statements beside Octave running the same.
#include "bench/compare.hpp"

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <spawn.h>
#include <sys/wait.h>
#include <vector>

namespace {

/// The exit status of a program that is run with its output discarded; one that cannot be started has -1.
int run(std::vector<std::string> words)
{
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t discard;
    posix_spawn_file_actions_init(&discard);
    for (const int output : {1, 2})
        posix_spawn_file_actions_addopen(&discard, output, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    int status = -1;
    if (posix_spawnp(&child, arguments[0], &discard, nullptr, arguments.data(), environ) == 0)
        waitpid(child, &status, 0);
    posix_spawn_file_actions_destroy(&discard);
    return status;
}

/// A row whose peer is another program; where that is not installed the row says so.
void processes(const bench::Case& row, const std::vector<std::string>& ours, const std::vector<std::string>& peer,
               const std::vector<std::string>& is_peer_installed)
{
    if (run(is_peer_installed) != 0) {
        std::printf("%-26s %9zu %s is not installed\n", row.name, row.n, row.peer);
        return;
    }
    bench::Case by_the_wall = row; // the work is done in other processes
    by_the_wall.clock = bench::Clock::wall;
    bench::compare(
        by_the_wall, [&] { return run(ours); }, [&] { return run(peer); },
        [](int status, int peers) { return status == 0 && peers == 0; });
}

/// The same small statements in the worksheet's language and in Octave's: a variable, a sum, a product of small
/// matrices, a function, an element.
void write_statements(std::size_t statements, const std::string& worksheet, const std::string& octave)
{
    std::ofstream ours(worksheet);
    std::ofstream theirs(octave);
    for (std::size_t k = 0; k < statements / 5; ++k) {
        ours << "x := " << k << "\ny := x + 2.5\nA := [x, 1; 2, y] * [1; 2]\nz := sqrt(y)\nw := A[1] + z\n";
        theirs << "x = " << k << ";\ny = x + 2.5;\nA = [x, 1; 2, y] * [1; 2];\nz = sqrt(y);\nw = A(2) + z;\n";
    }
}

} // namespace

int main()
{
    const std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    const std::string program = folder.parent_path() / "bin" / "bailuxsko";
    const std::string peer = folder / "startup_peer";

    bench::header("processes");
    processes({.name = "eval 1", .n = 1, .peer = "main that links OpenBLAS and ICU", .at_most = 1.5},
              {program, "eval", "1"}, {peer}, {peer});
    const std::vector<std::string> import{"/usr/bin/python3", "-c", "import numpy"};
    processes({.name = "eval 1", .n = 1, .peer = "NumPy's import", .at_most = 0.1}, {program, "eval", "1"}, import,
              import);

    constexpr std::size_t statements = 100'000;
    const std::filesystem::path scratch = std::filesystem::temp_directory_path();
    const std::string worksheet = scratch / "bailuxsko_bench.ws";
    const std::string octave = scratch / "bailuxsko_bench.m";
    write_statements(statements, worksheet, octave);
    processes({.name = "small statements", .n = statements, .peer = "Octave", .at_most = 0.1},
              {program, "run", worksheet}, {"octave-cli", "--no-init-file", octave}, {"octave-cli", "--version"});
    std::filesystem::remove(worksheet);
    std::filesystem::remove(octave);
    return 0;
}
