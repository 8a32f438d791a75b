#include "bailuxsko/algebra/determinant.hpp"

#include "bailuxhost/matdim.hpp"
#include "bailuxsko/algebra/unit_details.hpp"
#include "bailuxsko/determinant.hpp"
#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/lapack/determinant.hpp"

#include <array>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <optional>
#include <utility>

namespace Efi {

using Evl::Run::AppException;

namespace {

Qud::Handle by_lapack(const Qud::MatVal& M)
{
    return in_call([&](Call& call) { return lapack::_determinant(call.context(), M); });
}

} // namespace

template <std::floating_point T>
T det_gb(const Qud::MatVal& M)
{
    const std::size_t n = M.Rows();
    if (n == 0)
        return 1;
    std::array<T, std::size_t{largest_fraction_free} * largest_fraction_free> packed;
    M.PackReal(packed.data());
    std::array<std::size_t, largest_fraction_free> r;
    std::iota(r.begin(), r.end(), std::size_t{0});
    const auto a = [&](std::size_t i, std::size_t j) -> T& { return packed[r[i] + j * n]; };

    T sign = 1;
    T previous = 1;
    for (std::size_t k = 0; k + 1 < n; ++k) {
        std::size_t p = k;
        while (p < n && a(p, k) == 0)
            ++p;
        if (p == n)
            return 0;
        if (p != k) {
            std::swap(r[k], r[p]);
            sign = -sign;
        }
        const T pivot = a(k, k);
        for (std::size_t i = k + 1; i < n; ++i)
            for (std::size_t j = k + 1; j < n; ++j)
                a(i, j) = (a(i, j) * pivot - a(i, k) * a(k, j)) / previous;
        previous = pivot;
    }
    return a(n - 1, n - 1) * sign;
}

template double det_gb<double>(const Qud::MatVal& M);

Qud::Handle cdet_gb(const Qud::MatVal& M)
{
    return by_lapack(M);
}

Qud::Handle det_impl(const Qud::MatVal& M)
{
    if (M.Rows() > largest_fraction_free)
        return by_lapack(M);
    if (M.get_HasImag() && !M.is_empty())
        return cdet_gb(M);
    return Qud::NumVal::make(det_gb<double>(M));
}

Qud::Handle Det(const Qud::MatVal& M)
{
    const double n = M.Rows();
    if (M.get_IsUniformScalar()) {
        Qud::Handle plain = det_impl(M); // its errors come before the unit's
        return Qud::DimVal::dv(std::move(plain), Qud::Dim::Pwr(M.m_dim, n));
    }
    const std::optional<Qud::MatDim> units = Qud::MatDim::make(M);
    const std::optional<Qud::Dim> unit = units ? Qud::MatDim::Det(*units, M.Rows()) : std::nullopt;
    if (!unit)
        AppException::Raise(msg::must_be_linear_algebra_matrix, 1, pattern_detail(M));
    const Qud::Handle plain = M.StripDimension();
    return Qud::DimVal::dv(det_impl(*Qud::matrix_of(plain)), *unit);
}

Qud::Handle abs_num(const Qud::NumVal& x)
{
    const double re = std::fabs(x.re());
    const double im = std::fabs(x.im());
    double magnitude = 0.0;
    if (x.im() == 0.0) {
        magnitude = re;
    } else if (x.re() == 0.0) {
        magnitude = im;
    } else {
        const double large = re > im ? re : im;
        const double small = re > im ? im : re;
        const double ratio = small / large;
        magnitude = large * std::sqrt(1.0 + ratio * ratio);
    }
    return Qud::NumVal::make(magnitude, 0.0, x.m_dim);
}

double vector_norm(const Qud::MatVal& v)
{
    const aMatrix column = v.view();
    double sum = 0.0;
    for (std::size_t i = 0; i < column.m_rows; ++i) {
        sum += column.m_rv[i] * column.m_rv[i];
        if (column.m_iv != nullptr)
            sum += column.m_iv[i] * column.m_iv[i];
    }
    return std::sqrt(sum);
}

Qud::Handle Norm(const Qud::MatVal& v)
{
    if (!v.get_IsUniformScalar())
        AppException::Raise(msg::must_be_scalar_matrix, 1);
    return Qud::NumVal::make(vector_norm(v), 0.0, v.m_dim);
}

Qud::Handle abs_mat(const Qud::MatVal& M)
{
    if (M.Cols() == 1)
        return Norm(M);
    if (!M.is_square())
        AppException::Raise(msg::must_be_square, 1);
    return Det(M);
}

namespace Matrix {

Qud::Handle abs(const Qud::Handle& x)
{
    return in_host_call([&] {
        if (const Qud::NumVal* const number = Qud::as_number(x))
            return abs_num(*number);
        return abs_mat(Error::as_matrix(x, msg::must_be_scalar_or_matrix, 1));
    });
}

Qud::Handle det(const Qud::Handle& x)
{
    return abs(x);
}

Qud::Handle det_f(const Qud::Handle& M)
{
    return in_host_call([&] {
        const Qud::MatVal& matrix = Error::as_matrix(M, msg::must_be_matrix, 1);
        if (!matrix.is_square())
            AppException::Raise(msg::must_be_square, 1);
        return Det(matrix);
    });
}

Qud::Handle abs_f(const Qud::Handle& x)
{
    return in_host_call([&] { return abs_num(Error::as_scalar(x, msg::must_be_scalar, 1)); });
}

Qud::Handle norm_f(const Qud::Handle& v)
{
    return in_host_call([&] { return Norm(Error::as_vector(v, msg::must_be_vector, 1)); });
}

} // namespace Matrix

} // namespace Efi
