#pragma once

#include <cstddef>

/// The lower triangle of a symmetric matrix as strips of eight rows, and its factorisation there.
namespace native {

/// Strip s holds rows 8 s to 8 s + 7, column after column up to the last one that has an element in it: eight elements
/// of a column side by side, which is how both factors of a product meet in a tile. Where the last strip is short, its
/// last row is repeated, and the blocks on the diagonal are symmetric until they are factored: what is computed beyond
/// the matrix repeats what is computed in it, and raises no flag of its own.
struct Strips {
    static constexpr std::size_t height = 8;

    double* m_elements;
    std::size_t m_n;

    std::size_t count() const { return (m_n + height - 1) / height; }
    double* strip(std::size_t s) const { return m_elements + offset(s); }
    /// The eight by eight elements where strip s meets the columns of rows 8 j to 8 j + 7.
    double* block(std::size_t s, std::size_t j) const { return strip(s) + j * height * height; }

    static constexpr std::size_t offset(std::size_t s) { return height * height / 2 * s * (s + 1); }
    static constexpr std::size_t size(std::size_t n) { return offset((n + height - 1) / height); }
};

/// M becomes L with M = L * L'; false at a pivot that is not above zero.
bool factorise_strips_baseline(const Strips& M);
bool factorise_strips_avx2(const Strips& M);
bool factorise_strips_avx512(const Strips& M);

} // namespace native
