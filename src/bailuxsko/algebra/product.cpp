#include "bailuxsko/lapack/product.hpp"
#include "bailuxhost/matdim.hpp"
#include "bailuxsko/algebra/operations.hpp"
#include "bailuxsko/algebra/unit_details.hpp"
#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/kernels/small_product.hpp"

#include <optional>

namespace Efi {

namespace {

/// A left factor with more rows or columns is worth the set-up of BLAS.
constexpr std::uint32_t largest_small_factor = 10;

using Evl::Run::AppException;

Qud::MatDim pattern_of(const Qud::MatVal& M, int index)
{
    std::optional<Qud::MatDim> pattern = Qud::MatDim::make(M);
    if (!pattern)
        AppException::Raise(msg::must_be_linear_algebra_matrix, index, pattern_detail(M));
    return std::move(*pattern);
}

[[noreturn]] void refuse_units(const Qud::MatDim& a, const Qud::MatDim& b)
{
    AppException::Raise(msg::matrix_unit_mismatch, -1, sum_detail(a, b));
}

} // namespace

Qud::Handle EfiMult::ScalarMatrixMult(const Qud::MatVal& a, const Qud::MatVal& b)
{
    return in_call([&](Call& call) {
        if (!a.get_IsUniformScalar())
            AppException::Raise(msg::may_not_be_nested, 1);
        if (!b.get_IsUniformScalar())
            AppException::Raise(msg::may_not_be_nested, 2);
        if (a.Rows() <= largest_small_factor && a.Cols() <= largest_small_factor)
            return call.dv(call.guarded(native::dispatchmult, call.view(a), call.view(b)));
        return lapack::_gemm(call.context(), a, b);
    });
}

Qud::Handle EfiMult::CrazyMatrixMult(const Qud::MatVal& a, const Qud::MatVal& b)
{
    const Qud::MatDim units_a = pattern_of(a, 1);
    const Qud::MatDim units_b = pattern_of(b, 2);
    const Qud::Handle plain_a = a.StripDimension();
    const Qud::Handle plain_b = b.StripDimension();
    const Qud::Handle product = ScalarMatrixMult(*Qud::matrix_of(plain_a), *Qud::matrix_of(plain_b));
    if (const Qud::MatVal* const matrix = Qud::matrix_of(product)) {
        const std::optional<Qud::MatDim> units = Qud::MatDim::MMult(units_a, units_b);
        if (!units)
            refuse_units(units_a, units_b);
        return matrix->ApplyLinearDimension(*units);
    }
    const std::optional<Qud::Dim> unit = Qud::MatDim::DMult(units_a, units_b);
    if (!unit)
        refuse_units(units_a, units_b);
    return Qud::DimVal::dv(product, *unit);
}

} // namespace Efi
