#pragma once

#include <cstdint>

/// Factorisation and solution for inverse iteration, element by element: slow, and obviously right.
namespace plain {

/// Crout's method: each element's sum is formed at once. The arguments are those of the fast form.
int Lludcmp(double** re, double** im, std::uint32_t n, int* exchanged, double* parity);
int Llubksb(double* const* re, double* const* im, std::uint32_t n, const int* exchanged, double* b_re, double* b_im);

} // namespace plain
