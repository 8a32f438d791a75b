#include "bailuxsko/lapack/copies.hpp"

#include <algorithm>

namespace lapack {

namespace {

/// The doubles of complex numbers: the real parts in the even places, the imaginary ones in the odd.
double* slots(MKL_Complex16* z)
{
    return reinterpret_cast<double*>(z);
}

void fill_real_slots(const double* re, double* z, std::size_t count)
{
    for (std::size_t k = 0; k < count; ++k)
        z[2 * k] = re[k];
}

void fill_both_slots(const double* re, const double* im, double* z, std::size_t count)
{
    for (std::size_t k = 0; k < count; ++k) {
        z[2 * k] = re[k];
        z[2 * k + 1] = im[k];
    }
}

void part(const MKL_Complex16* Z, double* re, double* im, std::size_t count)
{
    const auto* const z = reinterpret_cast<const double*>(Z);
    for (std::size_t k = 0; k < count; ++k) {
        re[k] = z[2 * k];
        im[k] = z[2 * k + 1];
    }
}

/// How many stretches of what length a copy consists of: one where both sides have no gap between columns.
struct Stretches {
    Stretches(std::size_t rows, std::size_t cols, std::size_t anr, std::size_t ld)
        : count(anr == rows && ld == rows ? 1 : cols), length(anr == rows && ld == rows ? rows * cols : rows)
    {
    }
    std::size_t count;
    std::size_t length;
};

} // namespace

void packMatval(const Qud::MatVal& M, double* D, std::size_t ld)
{
    if (ld == 0)
        ld = M.Rows();
    const double* const source = M.m_rarr + M.m_offset;
    const Stretches stretches(M.Rows(), M.Cols(), M.Anr(), ld);
    for (std::size_t j = 0; j < stretches.count; ++j)
        std::copy_n(source + j * M.Anr(), stretches.length, D + j * ld);
}

void cmat2mkl(const Qud::MatVal& M, MKL_Complex16* Z, std::size_t ld)
{
    if (ld == 0)
        ld = M.Rows();
    const double* const re = M.m_rarr + M.m_offset;
    const double* const im = M.HasImag() ? M.m_iarr + M.m_offset : nullptr;
    const Stretches stretches(M.Rows(), M.Cols(), M.Anr(), ld);
    for (std::size_t j = 0; j < stretches.count; ++j) {
        if (im)
            fill_both_slots(re + j * M.Anr(), im + j * M.Anr(), slots(Z + j * ld), stretches.length);
        else
            fill_real_slots(re + j * M.Anr(), slots(Z + j * ld), stretches.length);
    }
}

void mkl2cmat(const MKL_Complex16* Z, const aMatrix& M, std::size_t ld)
{
    if (ld == 0)
        ld = M.m_rows;
    const Stretches stretches(M.m_rows, M.m_cols, M.m_anr, ld);
    for (std::size_t j = 0; j < stretches.count; ++j)
        part(Z + j * ld, M.m_rv + j * M.m_anr, M.m_iv + j * M.m_anr, stretches.length);
}

MKL_Complex16* complex_copy(const Qud::MatVal& M, mkl_auto_ptr<MKL_Complex16>& buffer, std::size_t ld)
{
    if (ld == 0)
        ld = M.Rows();
    const bool is_written_whole = M.HasImag() && ld == M.Rows();
    const std::uint64_t count = std::uint64_t{ld} * M.Cols();
    MKL_Complex16* const Z = is_written_whole ? buffer.allocate_uncleared(count) : buffer.allocate(count);
    cmat2mkl(M, Z, ld);
    return Z;
}

MKL_Complex16* complex_copy_and_a_column(const Qud::MatVal& M, mkl_auto_ptr<MKL_Complex16>& buffer)
{
    MKL_Complex16* const Z = buffer.allocate(M.count() + M.Rows());
    cmat2mkl(M, Z, 0);
    return Z;
}

Qud::Handle complex_matrix(const MKL_Complex16* Z, std::uint32_t rows, std::uint32_t cols, std::size_t ld)
{
    Qud::FreshNumbers re = Qud::fresh_numbers(Qud::element_count(rows, cols));
    Qud::FreshNumbers im = Qud::fresh_numbers(Qud::element_count(rows, cols));
    mkl2cmat(Z,
             {.m_anr = rows, .m_tag = aMatrix::tag, .m_rows = rows, .m_cols = cols, .m_rv = re.get(), .m_iv = im.get()},
             ld);
    return Qud::MatVal::make(rows, cols, std::move(re), std::move(im));
}

} // namespace lapack
