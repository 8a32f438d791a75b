// The adjusted Fisher-Pearson coefficient from the deviations of the mean (Joanes and Gill, The Statistician 47, 1998),
// with the corrected two-pass variance (Chan, Golub and LeVeque, The American Statistician 37, 1983).
// Ours: two evaluations. Where the mean is so large that the cube of a deviation could overflow, deviations are scaled
// before they are cubed.
#include "bailuxsko/skew.hpp"

#include "bailuxhost/error.hpp"
#include "bailuxhost/matval.hpp"
#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/scalar/sample.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/records.hpp"

#include <cmath>
#include <cstddef>

namespace Efi::Matrix {

namespace {

/// A mean of this magnitude in either part takes the scaled evaluation.
constexpr double large_mean = 1e102;

aComplex cube(double re, double im)
{
    const double difference = re * re - im * im;
    return {.m_re = re * difference - 2.0 * re * im * im, .m_im = im * difference + 2.0 * re * im * re};
}

struct RealSum {
    Lanes re{};

    void add(std::size_t k, double x, double) { re.lane[k] += x; }
};

struct ComplexSum {
    Lanes re{}, im{};

    void add(std::size_t k, double x, double y)
    {
        re.lane[k] += x;
        im.lane[k] += y;
    }
};

/// Sums of the deviations, of their squared magnitudes and of their cubes.
struct ComplexMoments {
    aComplex mean;
    Lanes first_re{}, first_im{}, second{}, third_re{}, third_im{};

    void add(std::size_t k, double re, double im)
    {
        const double dr = re - mean.m_re;
        const double di = im - mean.m_im;
        const aComplex d3 = cube(dr, di);
        first_re.lane[k] += dr;
        first_im.lane[k] += di;
        second.lane[k] += dr * dr + di * di;
        third_re.lane[k] += d3.m_re;
        third_im.lane[k] += d3.m_im;
    }
};

/// The same where all imaginary parts are 0. The bits are the same too as long as no square overflows.
struct RealMoments {
    double mean;
    Lanes first_re{}, second{}, third_re{};

    void add(std::size_t k, double re, double)
    {
        const double dr = re - mean;
        const double square = dr * dr;
        first_re.lane[k] += dr;
        second.lane[k] += square;
        third_re.lane[k] += dr * square;
    }
};

/// Sums of cubes of the deviations in units of the standard deviation.
struct ScaledCubes {
    aComplex mean;
    double deviation;
    Lanes re{}, im{};

    void add(std::size_t k, double x, double y)
    {
        const aComplex d3 = cube((x - mean.m_re) / deviation, (y - mean.m_im) / deviation);
        re.lane[k] += d3.m_re;
        im.lane[k] += d3.m_im;
    }
};

/// What there is to know of a sample before anything is added up.
struct Sample {
    std::span<const Qud::Handle> values;
    double size = 0.0;
    bool is_complex = false;
};

Sample checked(std::span<const Qud::Handle> values)
{
    Sample sample{.values = values};
    const Qud::Dim* unit = nullptr;
    int index = 0;
    for (const Qud::Handle& value : values) {
        ++index;
        const Qud::DimVal* const dimensioned = Qud::as_dimensioned(value);
        if (!dimensioned)
            Evl::Run::AppException::Raise(msg::must_be_scalar_or_matrix, index);
        const Qud::MatVal* const M = Qud::matrix_of(value);
        if (M && !M->IsUniformScalar())
            Evl::Run::AppException::Raise(msg::must_be_uniform_scalar_matrix, index);
        if (unit)
            Qud::Dim::Eq(*unit, dimensioned->m_dim, index);
        unit = &dimensioned->m_dim;
        sample.size += M ? static_cast<double>(M->count()) : 1.0;
        sample.is_complex |= M ? M->HasImag() : !Qud::as_number(value)->is_real();
    }
    if (sample.size < 3.0)
        Evl::Run::AppException::Raise(msg::not_enough_sample_points, -1);
    return sample;
}

aComplex mean_of(const Sample& sample)
{
    if (!sample.is_complex)
        return {.m_re = summed<false>(sample.values, RealSum{}).re.total() / sample.size, .m_im = 0.0};
    const ComplexSum sum = summed<true>(sample.values, ComplexSum{});
    return {.m_re = sum.re.total() / sample.size, .m_im = sum.im.total() / sample.size};
}

/// The ordinary evaluation, from the sums of powers of the deviations.
aComplex from_moments(const Sample& sample, aComplex first, double second, aComplex third)
{
    const double n = sample.size;
    const double rounding = (first.m_im * first.m_im + first.m_re * first.m_re) / n; // 0 but for rounding of the mean
    const double variance = (second - rounding) / (n - 1.0);
    const double divisor = std::sqrt(variance) * (n - 2.0) * (n - 1.0) * variance;
    return {.m_re = third.m_re * n / divisor, .m_im = third.m_im * n / divisor};
}

aComplex unscaled(const Sample& sample, aComplex mean)
{
    if (!sample.is_complex) {
        const RealMoments sums = summed<false>(sample.values, RealMoments{.mean = mean.m_re});
        if (const double second = sums.second.total(); std::isfinite(second))
            return from_moments(sample, {.m_re = sums.first_re.total(), .m_im = 0.0}, second,
                                {.m_re = sums.third_re.total(), .m_im = 0.0});
        // an infinite square times the imaginary part 0 is NaN: the complex form shows it
    }
    const ComplexMoments sums = summed<true>(sample.values, ComplexMoments{.mean = mean});
    return from_moments(sample, {.m_re = sums.first_re.total(), .m_im = sums.first_im.total()}, sums.second.total(),
                        {.m_re = sums.third_re.total(), .m_im = sums.third_im.total()});
}

/// The evaluation for large means. Its correction takes the real sum only, unlike the ordinary one's.
aComplex scaled(const Sample& sample, aComplex mean)
{
    const double n = sample.size;
    const ComplexMoments sums = summed<true>(sample.values, ComplexMoments{.mean = mean});
    const double first = sums.first_re.total();
    const double deviation = std::sqrt((sums.second.total() - first * first / n) / (n - 1.0));
    const ScaledCubes cubes = summed<true>(sample.values, ScaledCubes{.mean = mean, .deviation = deviation});
    const double factor = n / ((n - 2.0) * (n - 1.0));
    return {.m_re = cubes.re.total() * factor, .m_im = cubes.im.total() * factor};
}

} // namespace

Qud::Handle skew(std::span<const Qud::Handle> values)
{
    return in_host_call([&] {
        const Sample sample = checked(values);
        const aComplex mean = mean_of(sample);
        const bool is_ordinary = std::fabs(mean.m_re) < large_mean && std::fabs(mean.m_im) < large_mean; // not with NaN
        const aComplex skewness = is_ordinary ? unscaled(sample, mean) : scaled(sample, mean);
        return Qud::NumVal::make(skewness.m_re, skewness.m_im);
    });
}

} // namespace Efi::Matrix
