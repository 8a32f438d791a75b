// The start of the program: a worksheet of one number against a program that only links OpenBLAS.
#include "bench/compare.hpp"

#include <filesystem>
#include <spawn.h>
#include <sys/wait.h>
#include <vector>

namespace {

/// The exit status of a program that is run with its output discarded.
int run(std::vector<std::string> words)
{
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t discard;
    posix_spawn_file_actions_init(&discard);
    posix_spawn_file_actions_addopen(&discard, 1, "/dev/null", 1 /* write only */, 0);
    pid_t child = 0;
    int status = -1;
    if (posix_spawn(&child, arguments[0], &discard, nullptr, arguments.data(), environ) == 0)
        waitpid(child, &status, 0);
    posix_spawn_file_actions_destroy(&discard);
    return status;
}

} // namespace

int main()
{
    const std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    const std::string program = folder.parent_path() / "bin" / "bailuxsko";
    const std::string peer = folder / "startup_peer";

    bench::header("start-up");
    bench::compare(
        {.name = "eval 1", .n = 1, .peer = "main that calls ddot once"},
        [&] {
            return run({program, "eval", "1"});
        },
        [&] { return run({peer}); }, [](int ours, int peers) { return ours == 0 && peers == 0; });
}
