#include "bailuxsko/lapack/structure.hpp"

#include <algorithm>
#include <cstddef>
#include <functional>

namespace lapack {

namespace {

/// Side of the blocks in which a matrix is compared with its transpose, so that both stay in the nearest cache.
constexpr std::size_t tile = 32;

/// A square block of rows [i, i_end) and columns [j, j_end), on or above the diagonal.
struct Tile {
    std::size_t i, i_end, j, j_end;
};

/// Whether combine(a(i, j), a(j, i)) is 0.0 for every i < j of the tile.
template <class Combine>
bool vanishes(const double* a, std::size_t anr, const Tile& t, Combine combine)
{
    unsigned differences = 0;
    for (std::size_t j = t.j; j < t.j_end; ++j)
        for (std::size_t i = t.i; i < std::min(t.i_end, j); ++i)
            differences += combine(a[i + j * anr], a[j + i * anr]) == 0.0 ? 0U : 1U; // a NaN is a difference
    return differences == 0;
}

/// The same for the whole matrix; stops after the first block that says no.
template <class Combine>
bool vanishes(const double* a, std::size_t anr, std::size_t n, Combine combine)
{
    for (std::size_t j = 0; j < n; j += tile)
        for (std::size_t i = 0; i <= j; i += tile)
            if (!vanishes(a, anr, Tile{i, std::min(i + tile, n), j, std::min(j + tile, n)}, combine))
                return false;
    return true;
}

} // namespace

bool isSymRealMatrix(const Qud::MatVal& M)
{
    return !M.HasImag() && M.is_square() && vanishes(M.m_rarr + M.m_offset, M.Anr(), M.Rows(), std::minus<double>());
}

bool isHermitianMatrix(const Qud::MatVal& M)
{
    if (!M.HasImag() || !M.is_square())
        return false;
    for (std::size_t i = 0; i < M.Rows(); ++i)
        if (M.imag(i, i) != 0.0)
            return false;
    return vanishes(M.m_rarr + M.m_offset, M.Anr(), M.Rows(), std::minus<double>()) &&
           vanishes(M.m_iarr + M.m_offset, M.Anr(), M.Rows(), std::plus<double>());
}

} // namespace lapack
