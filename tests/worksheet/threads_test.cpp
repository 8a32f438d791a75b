#include "results.hpp"

#include <pthread.h>

#include <array>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// Runs an operation on a thread with a stack of so many bytes.
template <class Operation>
void on_stack_of(std::size_t bytes, Operation operation)
{
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, bytes), 0);
    pthread_t thread{};
    const auto start = [](void* given) -> void* {
        (*static_cast<Operation*>(given))();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, start, &operation), 0);
    pthread_attr_destroy(&attributes);
    pthread_join(thread, nullptr);
}

} // namespace

TEST(SessionThreads, EachHasItsOwnNamesAndSettings)
{
    constexpr int rounds = 20;
    std::array<bool, 8> right{};
    std::vector<std::jthread> threads;
    for (std::size_t k = 0; k < right.size(); ++k)
        threads.emplace_back([k, &right] {
            right[k] = true;
            for (int round = 0; round < rounds; ++round) {
                worksheet::Session session;
                const std::string option = k % 2 == 0 ? "on" : "off";
                const std::vector<std::string> lines =
                    json_of(session, "set zero_over_zero_is_zero " + option + "\nset origin " + std::to_string(k) +
                                         "\nx := lu([4, 3; 6, " + std::to_string(k) + "])\n[7, 8][" +
                                         std::to_string(k) + "]\n0 / 0\n\"b\" < \"a\"");
                right[k] = right[k] && lines[3] == R"({"kind":"number","re":7.0,"im":0.0,"unit":""})" &&
                           lines[4].starts_with(k % 2 == 0 ? R"({"kind":"number","re":0.0)" : R"({"kind":"error")");
            }
        });
    threads.clear();
    for (std::size_t k = 0; k < right.size(); ++k)
        EXPECT_TRUE(right[k]) << k;
}

TEST(SessionThreads, RecursionEndsInAnErrorOnASmallStack)
{
    constexpr std::size_t bytes = 256 * 1024;
    std::vector<Outcome> outcomes;
    on_stack_of(bytes, [&] {
        outcomes = outcomes_of("f(n) := f(n + 1) + 1\nf(1)\ng(n) := if(n == 0, 0, 1 + g(n - 1))\ng(10)\n" +
                               std::string(900, '(') + "1" + std::string(900, ')') + "\n2");
    });
    ASSERT_EQ(outcomes.size(), 6U);
    EXPECT_EQ(outcomes[1], (Outcome{"nesting too deep", -1, "", 2, 1}));
    EXPECT_EQ(outcomes[3].message, "");
    EXPECT_EQ(outcomes[4].message, "nesting too deep");
    EXPECT_EQ(outcomes[5].message, "");
}

TEST(SessionThreads, ASessionMayMoveBetweenThreads)
{
    worksheet::Session session;
    result_of(session, "f(n) := f(n + 1) + 1");
    std::vector<Outcome> outcomes;
    std::jthread([&] { outcomes = outcomes_of(session, "f(1)"); }).join();
    EXPECT_EQ(outcomes[0].message, "nesting too deep");
    EXPECT_EQ(outcomes_of(session, "f(1)")[0].message, "nesting too deep");
}
