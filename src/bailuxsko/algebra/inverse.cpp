#include "bailuxsko/algebra/inverse.hpp"

#include "bailuxhost/matdim.hpp"
#include "bailuxhost/options.hpp"
#include "bailuxsko/algebra/unit_details.hpp"
#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/inverse.hpp"
#include "bailuxsko/kernels/inverse.hpp"
#include "bailuxsko/lapack/inverse.hpp"

#include <optional>
#include <utility>

namespace Efi {

using Evl::Run::AppException;

Qud::Handle matrix_inv(const Qud::MatVal& M)
{
    return in_call([&](Call& call) {
        if (Qud::RuntimeOptions::strict_singularity_checking)
            return call.dv(call.guarded(native::inv2, call.view(M), true));
        return M.get_HasImag() ? lapack::zinv(call.context(), M) : lapack::dinv(call.context(), M);
    });
}

Qud::Handle Inv(const Qud::MatVal& M)
{
    if (M.get_IsUniformScalar()) {
        Qud::Handle plain = matrix_inv(M); // its errors come before the unit's
        return Qud::DimVal::dv(std::move(plain), Qud::Dim::Pwr(M.m_dim, -1.0));
    }
    const std::optional<Qud::MatDim> units = Qud::MatDim::make(M);
    const std::optional<Qud::MatDim> inverted = units ? Qud::MatDim::Pwr(*units, -1.0) : std::nullopt;
    if (!inverted)
        AppException::Raise(msg::must_be_linear_algebra_matrix, 1, pattern_detail(M));
    const Qud::Handle plain = M.StripDimension();
    const Qud::Handle inverse = matrix_inv(*Qud::matrix_of(plain));
    return Qud::matrix_of(inverse)->ApplyLinearDimension(*inverted);
}

Qud::Handle Matrix::inv(const Qud::Handle& M)
{
    return in_host_call([&] {
        const Qud::MatVal& matrix = Error::as_matrix(M, msg::must_be_scalar_matrix, 1);
        if (!matrix.is_square())
            AppException::Raise(msg::must_be_square, 1);
        return Inv(matrix);
    });
}

} // namespace Efi
