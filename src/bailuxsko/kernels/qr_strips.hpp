#pragma once

#include "bailuxsko/kernels/qr_sweep.hpp"
#include "bailuxsko/kernels/zero_signs.hpp"

#include <cstddef>

/// R and Q' of a Givens QR as strips of eight columns, and the rotations of their rows there.
namespace native {

/// A strip holds all rows of eight columns, row after row, so that a rotation of two rows is a few vectors long. A
/// strip that the matrix does not fill repeats its last column. R's strips come first, those of Q' follow.
struct RowStrips {
    static constexpr std::size_t width = 8;

    double* m_elements;
    std::size_t m_rows;       // m
    std::size_t m_cols;       // n
    Rotation* m_rotations;    // room for saved_sweeps(m, n) of m rotations each
    std::size_t* m_zero_from; // a number for each strip of R
    ZeroSigns m_signs;        // followed, or not

    double* strip(std::size_t t) const { return m_elements + t * m_rows * width; }
    std::size_t strips_of_R() const { return (m_cols + width - 1) / width; }
    std::size_t strips_of_Q() const { return (m_rows + width - 1) / width; }
    std::size_t strips() const { return strips_of_R() + strips_of_Q(); }
};

/// How many sweeps are saved up before they are carried out outside their own columns.
std::size_t saved_sweeps(std::size_t m, std::size_t n);

/// Rotates R, at first A, to row-echelon form, and Q', at first the identity, alike. Where signs of zeros are followed,
/// zeros are not rotated as numbers; false then at a rotation that is not finite, which would not leave them zeros.
bool rotate_strips_baseline(const RowStrips& S);
bool rotate_strips_avx2(const RowStrips& S);
bool rotate_strips_avx512(const RowStrips& S);

} // namespace native
