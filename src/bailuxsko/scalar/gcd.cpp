// Euclid's algorithm (Knuth, The Art of Computer Programming, volume 2, section 4.5.2), folded over any number of
// values. Ours: whole numbers up to 2^53 go through 64-bit integers, whose remainder is exact as the one of doubles is
// and twenty times as fast. In a long column the divisor so far mostly divides the next number too; that shows without
// any division, because the nearest whole quotient times the divisor is the number.
#include "bailuxsko/scalar/gcd.hpp"

#include "bailuxhost/matval.hpp"
#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/gcd.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace Efi {

namespace {

std::int64_t divisor_of_integers(std::int64_t a, std::int64_t b)
{
    while (b != 0)
        a = std::exchange(b, a % b);
    return a;
}

/// Whether 64-bit integers hold the number as it is. No conversion may meet a NaN or what is too large.
bool is_exact(double x)
{
    return std::fabs(x) <= max_fp_int && static_cast<double>(static_cast<std::int64_t>(x)) == x;
}

/// The number without its sign. @throws "significance lost", "must be integer" (index)
double whole(double x, int index)
{
    const double v = std::fabs(x);
    if (v > max_fp_int)
        Throw(msg::significance_lost, index);
    if (!is_exact(v)) // a NaN too
        Throw(msg::must_be_integer, index);
    return v;
}

/// GCD folded over a column that `running` has been folded with; the order does not matter to the result.
double divisor_of_column(double running, std::span<const double> column, int index)
{
    auto divisor = static_cast<std::int64_t>(running);
    double inverse = divisor == 0 ? 0.0 : 1.0 / running;
    for (const double x : column) {
        const double v = whole(x, index);
        const auto n = static_cast<std::int64_t>(v);
        // from 2^51 on the quotient may be off, and the number take the long way for nothing
        if (std::llrint(v * inverse) * divisor == n)
            continue;
        divisor = divisor_of_integers(divisor, n);
        inverse = 1.0 / static_cast<double>(divisor);
    }
    return static_cast<double>(divisor);
}

/// The fold so far.
class Fold {
public:
    explicit Fold(FoldOperation operation) : m_operation(operation) {}

    void add(const Qud::MatVal& M, int index)
    {
        Qud::Dim::Id(M.m_dim, index);
        for (std::size_t j = 0; j < M.Cols(); ++j) {
            const double* const column = M.m_rarr + M.storage_index(0, j);
            std::size_t i = 0;
            if (index == 1 && j == 0 && M.Rows() > 0)
                m_running = whole(column[i++], index);
            add_all({column + i, M.Rows() - i}, index);
        }
    }
    void add(const Qud::Handle& number, int index)
    {
        const double v = whole(Qud::DimVal::asReal(number, msg::must_be_integer, index), index);
        Qud::Dim::Id(Qud::as_number(number)->m_dim, index);
        m_running = index == 1 ? v : m_operation(m_running, v);
    }
    double result() const noexcept { return m_running; }

private:
    void add_all(std::span<const double> column, int index)
    {
        if (m_operation == GCD)
            m_running = divisor_of_column(m_running, column, index);
        else
            for (const double x : column)
                m_running = m_operation(m_running, whole(x, index));
    }

    FoldOperation m_operation;
    double m_running = 0.0;
};

} // namespace

double GCD(double a, double b)
{
    if (is_exact(a) && is_exact(b))
        return std::fabs(
            static_cast<double>(divisor_of_integers(static_cast<std::int64_t>(a), static_cast<std::int64_t>(b))));
    while (b != 0.0 && !std::isnan(b))
        a = std::exchange(b, std::fmod(a, b));
    return std::isnan(b) ? b : std::fabs(a);
}

double LCM(double a, double b)
{
    if (a > b)
        std::swap(a, b);
    const double multiple = a / GCD(a, b) * b; // the division first: a * b may be too large, 0 / 0 is NaN
    if (multiple > max_fp_int)
        Throw(msg::significance_lost, -1);
    return multiple;
}

Qud::Handle fold(std::span<const Qud::Handle> values, FoldOperation operation)
{
    return in_host_call([&] {
        Fold so_far(operation);
        int index = 0;
        for (const Qud::Handle& value : values) {
            ++index;
            if (Qud::matrix_of(value))
                so_far.add(Qud::DimVal::asRealMatrix(value, index), index);
            else
                so_far.add(value, index);
        }
        return Qud::NumVal::make(so_far.result());
    });
}

namespace Matrix {

Qud::Handle gcd(std::span<const Qud::Handle> values)
{
    return fold(values, GCD);
}

Qud::Handle lcm(std::span<const Qud::Handle> values)
{
    return fold(values, LCM);
}

} // namespace Matrix

} // namespace Efi
