#include "table_check.hpp"
#include "worksheet_check.hpp"

#include <cstdio>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

/// run_worksheet_tests FILE...            each statement of the worksheets gives what the comment under it says
/// run_worksheet_tests --raises FILE...   the function rows name what the worksheets raise, and nothing else
/// run_worksheet_tests --examples FOLDER  every row's example succeeds; FOLDER holds the files they read
namespace {

int report(const std::vector<std::string>& faults)
{
    for (const std::string& fault : faults)
        std::printf("%s\n", fault.c_str());
    return faults.empty() ? 0 : 1;
}

int run(const std::vector<std::string_view>& arguments)
{
    if (arguments.size() == 2 && arguments[0] == "--examples")
        return report(run_examples(std::string(arguments[1])));
    const bool only_raises = !arguments.empty() && arguments[0] == "--raises";
    std::vector<std::string> failures;
    std::set<RaisedError> raised;
    std::size_t statements = 0;
    for (std::size_t k = only_raises ? 1 : 0; k < arguments.size(); ++k) {
        CheckedWorksheet checked = check_worksheet(arguments[k]);
        failures.insert(failures.end(), checked.failures.begin(), checked.failures.end());
        raised.merge(checked.raised);
        statements += checked.statements;
    }
    if (only_raises)
        return report(compare_raises(raised));
    std::printf("%zu statements, %zu failures\n", statements, failures.size());
    return report(failures);
}

} // namespace

int main(int count, char** arguments)
{
    try {
        return run({arguments + 1, arguments + count});
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 2;
    }
}
