#include "bailuxsko/eigenvalues.hpp"

#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/lapack/driver.hpp"
#include "bailuxsko/lapack/eigenvalues.hpp"
#include "bailuxsko/lapack/structure.hpp"

#include <string>
#include <string_view>

namespace Efi::IntelMKL {

using Evl::Run::AppException;

namespace {

constexpr std::string_view values_only = "E";

/// "R" when absent. @throws "must be string", then "invalid argument" (index)
std::string_view side_of(const Qud::Handle& side, int index)
{
    if (!side)
        return "R";
    const std::string& text = Error::as_string(side, msg::must_be_string, index);
    if (text != "L" && text != "R")
        AppException::Raise(msg::invalid_argument, index, "a side is \"L\" or \"R\"");
    return text;
}

void require_square(const Qud::MatVal& M, int index)
{
    if (!M.is_square())
        AppException::Raise(msg::must_be_square, index);
}

Qud::Handle eigen(const Qud::MatVal& M, std::string_view mode)
{
    return in_call([&](Call& call) {
        if (M.HasImag())
            return lapack::isHermitianMatrix(M) ? lapack::zheev(call.context(), M, mode)
                                                : lapack::zgeev(call.context(), M, mode);
        return lapack::isSymRealMatrix(M) ? lapack::dsyev(call.context(), M, mode)
                                          : lapack::dgeev(call.context(), M, mode);
    });
}

/// Two square matrices of one size.
struct Pair {
    Pair(const Qud::Handle& a, const Qud::Handle& b)
        : A(Error::as_scalar_matrix(a, 1)), B(Error::as_scalar_matrix(b, 2))
    {
        require_square(A, 1);
        require_square(B, 2);
        lapack::require_equal_rows(A, B);
    }
    const Qud::MatVal& A;
    const Qud::MatVal& B;
};

Qud::Handle generalised(const Pair& pair, std::string_view mode)
{
    return in_call([&](Call& call) {
        // A alone decides: the imaginary parts of B take no part beside a real A.
        return pair.A.HasImag() ? lapack::zggev(call.context(), pair.A, pair.B, mode)
                                : lapack::dggev(call.context(), pair.A, pair.B, mode);
    });
}

} // namespace

Qud::Handle eigenvals(const Qud::Handle& m)
{
    return in_host_call([&] {
        const Qud::MatVal& M = Error::as_square_smatrix(m, 1);
        return Qud::DimVal::dv(eigen(M, values_only), M.m_dim);
    });
}

Qud::Handle eigenvecs(const Qud::Handle& m, const Qud::Handle& side)
{
    return in_host_call([&] {
        const Qud::MatVal& M = Error::as_scalar_matrix(m, 1);
        const std::string_view mode = side_of(side, 2);
        require_square(M, 1);
        return eigen(M, mode);
    });
}

Qud::Handle genvals(const Qud::Handle& a, const Qud::Handle& b)
{
    return in_host_call([&] { return generalised(Pair(a, b), values_only); });
}

Qud::Handle genvecs(const Qud::Handle& a, const Qud::Handle& b, const Qud::Handle& side)
{
    return in_host_call([&] {
        const Pair pair(a, b);
        return generalised(pair, side_of(side, 3));
    });
}

} // namespace Efi::IntelMKL
