// Eight threads call all functions of the table on shared values, a ninth changes LAPACK's thread count meanwhile. The
// calls are found by trying: every function gets such arguments from the shared values as it takes, so a new row of the
// table takes part by itself.
#include "bailuxhost/error.hpp"
#include "bailuxhost/matval.hpp"
#include "bailuxsko/function_table.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <bit>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace {

using Qud::Handle;
using Qud::matrix_of;

using Numbers = std::vector<double>;

Numbers random_numbers(std::size_t count, unsigned seed)
{
    std::mt19937 random(seed);
    Numbers numbers(count);
    for (double& x : numbers)
        x = std::uniform_real_distribution<double>(-1.0, 1.0)(random);
    return numbers;
}

Handle matrix(std::uint32_t rows, const Numbers& re, const Numbers& im = {}, const Qud::Dim& unit = {})
{
    const auto array = [](const Numbers& numbers) {
        Qud::FreshNumbers copy = Qud::fresh_numbers(numbers.size());
        std::copy(numbers.begin(), numbers.end(), copy.get());
        return copy;
    };
    return Qud::MatVal::make(rows, static_cast<std::uint32_t>(re.size()) / rows, array(re),
                             im.empty() ? nullptr : array(im), unit);
}

/// Symmetric and positive definite.
Numbers definite(std::size_t n)
{
    Numbers A = random_numbers(n * n, 5);
    for (std::size_t j = 0; j < n; ++j)
        for (std::size_t i = 0; i <= j; ++i)
            A[i * n + j] = A[j * n + i] = A[j * n + i] + (i == j ? double(n + j) : 0.0);
    return A;
}

Handle texts(std::initializer_list<const char*> words)
{
    Qud::MatBuilder column(static_cast<std::uint32_t>(words.size()), 1);
    std::size_t i = 0;
    for (const char* const word : words)
        column.set(i++, 0, Qud::StrVal::make(word));
    return column.finish();
}

Handle sum_of_two()
{
    return std::make_shared<const Qud::FunVal>("f", 2, 2, [](std::span<const Handle> x) {
        const Qud::NumVal* const a = Qud::as_number(x[0]);
        const Qud::NumVal* const b = Qud::as_number(x[1]);
        return Qud::NumVal::make(a && b ? a->re() + 2 * b->re() : 0.0);
    });
}

/// The values that all threads share. Sizes lie beyond the smallest cases of kernels and drivers.
std::vector<Handle> shared_values()
{
    const Qud::Dim metre(Qud::Dim::Base::length);
    constexpr std::uint32_t n = 24;
    return {
        Qud::NumVal::make(2.0),
        sum_of_two(),
        matrix(n, definite(n)),
        matrix(n, random_numbers(n * n, 1), random_numbers(n * n, 2)),
        matrix(n, random_numbers(n * n, 3), {}, metre),
        matrix(40, random_numbers(40 * 10, 4)),
        matrix(n, random_numbers(n, 6)),
        matrix(3, {6.0, 15.0, 9.0}),
        matrix(3, {0.0, 2.0, 4.0, 2.0, 5.0, 6.0, 8.0, 9.0, 2.0}),
        Qud::NumVal::make(0.0),
        Qud::NumVal::make(1.5, -0.5),
        Qud::NumVal::make(3.0, 0.0, metre),
        Qud::StrVal::make("eq"),
        Qud::StrVal::make("1:02:03"),
        texts({"beta", "alpha", "gamma", "alpha"}),
    };
}

/// What a call came to: a value, or an error.
struct Outcome {
    Handle value;
    std::string message;
    int index = 0;
};

struct Call {
    const Evl::FunctionRow* function;
    std::vector<Handle> arguments;

    Outcome operator()() const
    {
        static const Evl::Settings settings{};
        try {
            return {function->entry(settings, arguments), {}, 0};
        } catch (const Evl::Run::AppException& error) {
            return {nullptr, error.message(), error.index()};
        }
    }
};

std::size_t elements(const Handle& value)
{
    return value && matrix_of(value) ? matrix_of(value)->count() : 1;
}

/// The arguments of the given number that come k-th when the first of them changes fastest.
std::vector<Handle> arguments_number(std::size_t k, std::size_t count, const std::vector<Handle>& values)
{
    std::vector<Handle> arguments(count);
    for (Handle& argument : arguments) {
        argument = values[k % values.size()];
        k /= values.size();
    }
    return arguments;
}

/// Some calls of one function with that many arguments: those that give a value, and one that is refused.
/// @return   how many give a value
std::size_t add_calls(const Evl::FunctionRow& function, std::size_t count, const std::vector<Handle>& values,
                      std::vector<Call>& calls)
{
    constexpr std::size_t most_tries = 3000;
    constexpr std::size_t most_elements = 5000;
    std::size_t with_value = 0;
    std::size_t refused = 0;
    const auto choices = static_cast<std::size_t>(std::pow(values.size(), count));
    for (std::size_t k = 0; k < std::min(choices, most_tries) && with_value < 5; ++k) {
        const Call call{&function, arguments_number(k, count, values)};
        const Outcome outcome = call();
        if (outcome.value && elements(outcome.value) <= most_elements && ++with_value <= 5)
            calls.push_back(call);
        if (!outcome.value && ++refused <= 1)
            calls.push_back(call);
    }
    return with_value;
}

std::vector<Call> calls_of_all_functions()
{
    const std::vector<Handle> values = shared_values();
    std::vector<Call> calls;
    for (const Evl::FunctionRow& function : Efi::functions()) {
        if (function.name == "setNumThreads" || function.name == "getMaxThreads")
            continue;
        std::size_t with_value = 0;
        for (std::size_t count = function.least; count <= std::min(function.most, function.least + 2); ++count)
            with_value += add_calls(function, count, values, calls);
        EXPECT_GT(with_value, 0U) << function.name << " takes none of the shared values";
    }
    return calls;
}

bool is_near(double x, double y, double allowed)
{
    return std::bit_cast<std::uint64_t>(x) == std::bit_cast<std::uint64_t>(y) || (std::isnan(x) && std::isnan(y)) ||
           std::fabs(x - y) <= allowed;
}

double largest(const Qud::MatVal& M)
{
    double norm = 0.0;
    for (std::size_t j = 0; j < M.Cols(); ++j)
        for (std::size_t i = 0; i < M.Rows(); ++i)
            norm = std::max(norm, std::hypot(M.real(i, j), M.imag(i, j)));
    return norm;
}

/// Of one kind and shape, with the same units and texts, and numbers that differ by at most `tolerance` of the largest.
bool same(const Handle& a, const Handle& b, double tolerance);

bool same(const Qud::MatVal& A, const Qud::MatVal& B, double tolerance)
{
    if (A.Rows() != B.Rows() || A.Cols() != B.Cols() || A.HasImag() != B.HasImag() || A.m_dim != B.m_dim)
        return false;
    const double allowed = tolerance == 0.0 ? 0.0 : tolerance * largest(A);
    for (std::size_t j = 0; j < A.Cols(); ++j)
        for (std::size_t i = 0; i < A.Rows(); ++i) {
            const Handle* const nested = A.entry(i, j);
            if ((nested == nullptr) != (B.entry(i, j) == nullptr))
                return false;
            if (nested ? !same(*nested, *B.entry(i, j), tolerance)
                       : !is_near(A.real(i, j), B.real(i, j), allowed) || !is_near(A.imag(i, j), B.imag(i, j), allowed))
                return false;
        }
    return true;
}

bool same(const Handle& a, const Handle& b, double tolerance)
{
    if (a->kind() != b->kind())
        return false;
    if (matrix_of(a))
        return same(*matrix_of(a), *matrix_of(b), tolerance);
    if (const Qud::NumVal* const x = Qud::as_number(a)) {
        const Qud::NumVal* const y = Qud::as_number(b);
        const double allowed = tolerance * std::hypot(x->re(), x->im());
        return x->m_dim == y->m_dim && is_near(x->re(), y->re(), allowed) && is_near(x->im(), y->im(), allowed);
    }
    return !Qud::as_text(a) || Qud::as_text(a)->text() == Qud::as_text(b)->text();
}

bool same(const Outcome& a, const Outcome& b, double tolerance)
{
    if (!a.value || !b.value)
        return !a.value && !b.value && a.message == b.message && a.index == b.index;
    return same(a.value, b.value, tolerance);
}

void set_threads(int count)
{
    const auto rows = Efi::functions();
    const auto row = std::find_if(rows.begin(), rows.end(), [](const auto& r) { return r.name == "setNumThreads"; });
    Call{&*row, {Qud::NumVal::make(count)}}();
}

/// All calls on eight threads, each in an order of its own, while a ninth sets one count after the other; what differs
/// from the outcomes on one thread.
std::vector<std::string> differing(const std::vector<Call>& calls, std::vector<int> counts, double tolerance)
{
    set_threads(1);
    std::vector<Outcome> alone;
    for (const Call& call : calls)
        alone.push_back(call());

    std::atomic<bool> is_done = false;
    std::thread ninth([&] {
        for (std::size_t k = 0; !is_done; ++k) {
            set_threads(counts[k % counts.size()]);
            std::this_thread::yield();
        }
    });
    std::vector<std::vector<std::string>> found(8);
    std::vector<std::thread> eight;
    for (std::size_t t = 0; t < found.size(); ++t)
        eight.emplace_back([&, t] {
            for (std::size_t k = 0; k < calls.size(); ++k) {
                const std::size_t at = (k + t * calls.size() / 8) % calls.size();
                if (!same(alone[at], calls[at](), tolerance))
                    found[t].emplace_back(calls[at].function->name);
            }
        });
    for (std::thread& thread : eight)
        thread.join();
    is_done = true;
    ninth.join();
    set_threads(1);

    std::vector<std::string> all;
    for (const std::vector<std::string>& names : found)
        all.insert(all.end(), names.begin(), names.end());
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    return all;
}

TEST(FunctionThreads, GiveTheBitsOfOneThreadWhileTheProviderHasOne)
{
    const std::vector<Call> calls = calls_of_all_functions();
    EXPECT_GT(calls.size(), 2 * Efi::functions().size());
    EXPECT_EQ(differing(calls, {1}, 0.0), std::vector<std::string>{});
}

TEST(FunctionThreads, GiveTheNumbersOfOneThreadWhateverTheProviderHas)
{
    EXPECT_EQ(differing(calls_of_all_functions(), {2, 1, 3}, 1e-9), std::vector<std::string>{});
}

} // namespace
