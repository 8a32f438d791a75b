#include "bailuxsko/lapack/finite.hpp"

#include "bailuxhost/error.hpp"
#include "efiutl/messages.hpp"

#include <bit>
#include <cstddef>
#include <cstdint>

namespace lapack {

namespace {

/// In integers: they set no floating-point flag, and several elements are looked at together at every processor level.
bool is_finite(const double* x, std::size_t count)
{
    constexpr std::uint64_t exponent = 0x7FF0'0000'0000'0000;
    constexpr std::uint64_t exponent_step = 0x0010'0000'0000'0000;
    std::uint64_t carries = 0;
    for (std::size_t k = 0; k < count; ++k)
        carries |= (std::bit_cast<std::uint64_t>(x[k]) & exponent) + exponent_step; // all ones carry into the sign
    return carries >> 63 == 0;
}

bool is_finite(const double* part, const Qud::MatVal& M)
{
    if (M.Anr() == M.Rows())
        return is_finite(part, M.count());
    for (std::size_t j = 0; j < M.Cols(); ++j)
        if (!is_finite(part + j * M.Anr(), M.Rows()))
            return false;
    return true;
}

} // namespace

bool is_finite(const Qud::MatVal& M)
{
    return is_finite(M.m_rarr + M.m_offset, M) && (!M.HasImag() || is_finite(M.m_iarr + M.m_offset, M));
}

void refuse_not_finite(const Qud::MatVal& M)
{
    if (!is_finite(M))
        Evl::Run::AppException::Raise(msg::not_converging, -1, "the matrix holds an infinity or a NaN");
}

} // namespace lapack
