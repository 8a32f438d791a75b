#include "bailuxsko/algebra/mapping.hpp"
#include "bailuxsko/arithmetic.hpp"
#include "bailuxsko/frame/call.hpp"

#include <cmath>
#include <utility>

namespace Efi {

using Evl::Run::AppException;

namespace {

bool is_finite(aComplex z)
{
    return std::isfinite(z.m_re) && std::isfinite(z.m_im);
}

/// Here, other than in a product, an overflow is an error.
Qud::Handle square(const Qud::NumVal& x)
{
    const aComplex operand{.m_re = x.re(), .m_im = x.im()};
    const aComplex result = EfiSqr::apply(operand);
    if (is_finite(operand) && !is_finite(result))
        AppException::Raise(msg::floating_point_error, -1);
    return Qud::NumVal::make(result.m_re, result.m_im, Qud::Dim::Pwr(x.m_dim, 2.0));
}

} // namespace

Qud::Handle EfiSqr::opM(const Qud::MatVal& M)
{
    if (M.Cols() == 1)
        return mapmatrix<Rr<EfiSqr>>(M, [](const Qud::Dim& unit) { return Qud::Dim::Pwr(unit, 2.0); });
    if (!M.is_square())
        AppException::Raise(msg::must_be_square, 1);
    if (M.get_IsUniformScalar()) {
        Qud::Handle plain = EfiMult::ScalarMatrixMult(M, M); // its errors come before the unit's
        return Qud::DimVal::dv(std::move(plain), Qud::Dim::Mult(M.m_dim, M.m_dim));
    }
    return EfiMult::CrazyMatrixMult(M, M);
}

Qud::Handle Matrix::sqr(const Qud::Handle& x)
{
    return in_host_call([&] {
        if (const Qud::NumVal* const number = Qud::as_number(x))
            return square(*number);
        return EfiSqr::opM(Error::as_matrix(x, msg::must_be_scalar_or_vector, 1));
    });
}

} // namespace Efi
