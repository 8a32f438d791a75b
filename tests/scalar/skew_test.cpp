// What no worksheet can show of the skewness: bits, the switch between the two evaluations, their correction terms.
#include "bailuxsko/skew.hpp"

#include "bailuxhost/matval.hpp"
#include "tests/support/host_raises.hpp"
#include "tests/support/kinds.hpp"
#include "tests/support/values.hpp"

#include <bit>
#include <cmath>
#include <complex>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Qud::Handle;
using support::matrix;
using support::number;
using Complex = std::complex<double>;

constexpr double inf = std::numeric_limits<double>::infinity();

Complex skewness(const std::vector<Handle>& values)
{
    const Handle result = Efi::Matrix::skew(values);
    const Qud::NumVal& number = *Qud::as_number(result);
    EXPECT_EQ(number.m_dim, Qud::Dim::identity);
    return {number.re(), number.im()};
}

std::vector<std::uint64_t> bits(Complex z)
{
    const auto of = [](double x) { return std::isnan(x) ? ~std::uint64_t{0} : std::bit_cast<std::uint64_t>(x); };
    return {of(z.real()), of(z.imag())};
}

/// Sums in eight lanes, as the definition says it.
template <class Term>
double sum(const std::vector<Complex>& sample, Term term)
{
    double lane[8] = {};
    for (std::size_t k = 0; k < sample.size(); ++k)
        lane[k % 8] += term(sample[k].real(), sample[k].imag());
    double total = 0.0;
    for (const double x : lane)
        total += x;
    return total;
}

/// The ordinary evaluation, a loop a sum.
Complex plain_skewness(const std::vector<Complex>& sample)
{
    const auto n = static_cast<double>(sample.size());
    const double mr = sum(sample, [](double re, double) { return re; }) / n;
    const double mi = sum(sample, [](double, double im) { return im; }) / n;
    const auto over = [&](auto term) {
        return sum(sample, [&](double re, double im) { return term(re - mr, im - mi); });
    };
    const double sr = over([](double r, double) { return r; });
    const double si = over([](double, double i) { return i; });
    const double s2 = over([](double r, double i) { return r * r + i * i; });
    const double cr = over([](double r, double i) { return r * (r * r - i * i) - 2.0 * r * i * i; });
    const double ci = over([](double r, double i) { return i * (r * r - i * i) + 2.0 * r * i * r; });
    const double variance = (s2 - (si * si + sr * sr) / n) / (n - 1.0);
    const double divisor = std::sqrt(variance) * (n - 2.0) * (n - 1.0) * variance;
    return {cr * n / divisor, ci * n / divisor};
}

Handle column(const std::vector<Complex>& sample, bool with_imaginary)
{
    const auto n = static_cast<std::uint32_t>(sample.size());
    Qud::FreshNumbers re = Qud::fresh_numbers(n);
    Qud::FreshNumbers im = with_imaginary ? Qud::fresh_numbers(n) : nullptr;
    for (std::size_t k = 0; k < n; ++k) {
        re[k] = sample[k].real();
        if (im)
            im[k] = sample[k].imag();
    }
    return Qud::MatVal::make(n, 1, re, im);
}

/// The sample as numbers, columns and blocks inside larger matrices, cut at random.
std::vector<Handle> cut(const std::vector<Complex>& sample, bool with_imaginary, support::Random& random)
{
    std::vector<Handle> values;
    for (std::size_t first = 0; first < sample.size();) {
        const std::size_t count = std::min<std::size_t>(sample.size() - first, 1 + random() % 20);
        const std::vector<Complex> piece(&sample[first], &sample[first] + count);
        if (random() % 3 == 0) {
            for (const Complex& z : piece)
                values.push_back(number(z.real(), with_imaginary ? z.imag() : 0.0));
        } else if (random() % 2 == 0 && count % 2 == 0) { // two columns inside a matrix of traps
            Qud::FreshNumbers re = Qud::fresh_numbers(2 * count + 8);
            Qud::FreshNumbers im = with_imaginary ? Qud::fresh_numbers(2 * count + 8) : nullptr;
            const std::size_t rows = count / 2;
            std::fill_n(re.get(), 2 * count + 8, 1e300);
            if (im)
                std::fill_n(im.get(), 2 * count + 8, 1e300);
            for (std::size_t k = 0; k < count; ++k) {
                const std::size_t place = 3 + k / rows * (rows + 2) + k % rows;
                re[place] = piece[k].real();
                if (im)
                    im[place] = piece[k].imag();
            }
            Qud::MatVal::Parts parts;
            parts.rows = static_cast<std::uint32_t>(rows);
            parts.cols = 2;
            parts.anr = static_cast<std::uint32_t>(rows + 2);
            parts.offset = 3;
            parts.real = re;
            parts.imaginary = im;
            values.push_back(Qud::MatVal::make(std::move(parts)));
        } else {
            values.push_back(column(piece, with_imaginary));
        }
        first += count;
    }
    return values;
}

TEST(Skew, BitsDependOnTheNumbersInTheirOrderOnly)
{
    support::Random random(7);
    for (const support::Kind& kind : support::kinds)
        for (const bool with_imaginary : {false, true})
            for (const std::size_t n : {3, 4, 7, 8, 9, 15, 16, 17, 31, 100, 257}) {
                std::vector<Complex> sample(n);
                for (Complex& z : sample)
                    z = {kind.element(random), with_imaginary ? kind.element(random) : 0.0};
                const Complex whole = skewness({column(sample, with_imaginary)});
                for (int round = 0; round < 5; ++round)
                    ASSERT_EQ(bits(skewness(cut(sample, with_imaginary, random))), bits(whole))
                        << kind.name << " " << n;
                const double mr = sum(sample, [](double re, double) { return re; }) / static_cast<double>(n);
                const double mi = sum(sample, [](double, double im) { return im; }) / static_cast<double>(n);
                if (std::fabs(mr) < 1e102 && std::fabs(mi) < 1e102) {
                    ASSERT_EQ(bits(whole), bits(plain_skewness(sample))) << kind.name << " " << n;
                }
            }
}

TEST(Skew, ArgumentsAreNotWrittenTo)
{
    const Handle M = matrix({{1, 2}, {3, 10}, {5, 6}}, Qud::Dim::identity, {{1, 0}, {0, 2}, {3, 0}});
    const std::vector<std::uint64_t> before = support::bits(M);
    skewness({M});
    EXPECT_EQ(support::bits(M), before);
}

TEST(Skew, AbsentArguments)
{
    const std::vector<Handle> values = {number(1), nullptr};
    EXPECT_EQ(support::host_raised_by([&] { Efi::Matrix::skew(values); }),
              (support::Raised{"must be a scalar or a matrix", 2}));
}

/// One number 8 m among seven zeros: the mean is m exactly, the skewness the root of 8, and (7 m)^3 more than a double
/// holds when m is 1e102.
std::vector<Handle> one_among_eight(double m, bool imaginary)
{
    std::vector<Handle> values(7, number(0));
    values.push_back(imaginary ? number(0.0, 8.0 * m) : number(8.0 * m));
    return values;
}

TEST(Skew, TheSwitchIsAtAMeanOf1e102)
{
    const double root = std::sqrt(8.0);
    for (const double m : {1e102, std::nextafter(1e102, inf), 1e110, 1e150}) {
        EXPECT_NEAR(skewness(one_among_eight(m, false)).real(), root, 1e-14);
        EXPECT_NEAR(skewness(one_among_eight(-m, false)).real(), -root, 1e-14);
        EXPECT_NEAR(skewness(one_among_eight(m, true)).imag(), -root, 1e-14); // i^3 = -i
        EXPECT_NEAR(skewness(one_among_eight(-m, true)).imag(), root, 1e-14);
    }
    const double below = std::nextafter(1e102, 0.0);
    EXPECT_FALSE(std::isfinite(skewness(one_among_eight(below, false)).real()));
    EXPECT_FALSE(std::isfinite(skewness(one_among_eight(-below, false)).real()));
    EXPECT_FALSE(std::isfinite(skewness(one_among_eight(below, true)).imag()));
    EXPECT_NEAR(skewness(one_among_eight(1e100, false)).real(), root, 1e-14);
}

TEST(Skew, AMeanThatIsNoNumberGivesNone)
{
    for (const double x : {double{NAN}, inf, -inf}) {
        EXPECT_TRUE(std::isnan(skewness({number(1), number(2), number(x)}).real()));
        EXPECT_TRUE(std::isnan(skewness({number(1), number(2), number(0, x)}).imag()));
    }
}

/// base + 0, 1, 3 units in the last place: the mean is rounded to base + 1, so that the deviations are -1, 0, 2. They
/// add up to 1, their squares to 5, their cubes to 7.
std::vector<Handle> off_mean(double base, bool imaginary_too)
{
    const double ulp = std::nextafter(base, inf) - base;
    std::vector<Handle> values;
    for (const double k : {0.0, 1.0, 3.0})
        values.push_back(number(base + k * ulp, imaginary_too ? base + k * ulp : 0.0));
    return values;
}

TEST(Skew, TheOrdinaryCorrectionTakesBothSums)
{
    const double real_variance = (5.0 - 1.0 / 3.0) / 2.0;
    EXPECT_NEAR(skewness(off_mean(0x1p52, false)).real(), 7.0 * 3.0 / 2.0 / std::pow(real_variance, 1.5), 1e-14);
    const double variance = (10.0 - 2.0 / 3.0) / 2.0;
    const Complex z = skewness(off_mean(0x1p52, true)); // (1 + i)^3 = -2 + 2i
    EXPECT_NEAR(z.real(), -14.0 * 3.0 / 2.0 / std::pow(variance, 1.5), 1e-14);
    EXPECT_NEAR(z.imag(), 14.0 * 3.0 / 2.0 / std::pow(variance, 1.5), 1e-14);
}

TEST(Skew, TheCorrectionForLargeMeansTakesTheRealSumOnly)
{
    const double real_variance = (5.0 - 1.0 / 3.0) / 2.0;
    EXPECT_NEAR(skewness(off_mean(0x1p340, false)).real(), 7.0 * 3.0 / 2.0 / std::pow(real_variance, 1.5), 1e-14);
    const double variance = (10.0 - 1.0 / 3.0) / 2.0;
    const Complex z = skewness(off_mean(0x1p340, true));
    EXPECT_NEAR(z.real(), -14.0 * 3.0 / 2.0 / std::pow(variance, 1.5), 1e-14);
    EXPECT_NEAR(z.imag(), 14.0 * 3.0 / 2.0 / std::pow(variance, 1.5), 1e-14);
}

} // namespace
