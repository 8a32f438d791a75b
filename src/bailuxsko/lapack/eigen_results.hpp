#pragma once

#include "bailuxhost/matval.hpp"
#include "bailuxsko/intel_mkl.hpp"
#include "efiutl/api.hpp"

#include <cstdint>
#include <span>
#include <string_view>

/// What the eigenvalue drivers do around their routines.
namespace lapack {

/// What a general routine is asked for, in its own letters.
struct Sides {
    explicit Sides(std::string_view mode) : left(mode == "L" ? 'V' : 'N'), right(mode == "R" ? 'V' : 'N') {}

    bool wanted() const noexcept { return left == 'V' || right == 'V'; }
    /// The leading dimension that goes with a side that is wanted or not.
    static int leading(char side, int n) noexcept { return side == 'V' ? n : 1; }

    char left;
    char right;
};

/// Eigenvalues as a column in the drivers' order; `imaginary` may be null.
BAILUXSKO_API Qud::Handle ordered_values(std::uint32_t n, const Qud::SharedNumbers& real,
                                         const Qud::SharedNumbers& imaginary);

/// The eigenvector matrix V, with its columns in the order of the eigenvalues whose real parts these are.
BAILUXSKO_API Qud::Handle ordered_vectors(std::uint32_t n, const Qud::SharedNumbers& real, const Qud::MatVal& V);

/// Complex eigenvalues, or where V is not null their eigenvectors V, n by n, in the drivers' order.
BAILUXSKO_API Qud::Handle ordered_complex(std::uint32_t n, const MKL_Complex16* values, const MKL_Complex16* V);

/// x / y by LAPACK's own division, which neither overflows nor underflows where the quotient does not.
BAILUXSKO_API MKL_Complex16 quotient(MKL_Complex16 x, MKL_Complex16 y);

/// The complex eigenvectors that a real routine packs into V, n by n: a column whose eigenvalue has an imaginary part
/// is the real part of a pair of conjugates, and the next one the imaginary part. A pair is unpacked only where its
/// second column exists.
BAILUXSKO_API Qud::Handle unpacked_pairs(std::uint32_t n, const double* V, const double* imaginary);

/// Eigenvalues (alphar + i alphai) / beta in place of alphar and alphai, infinite ones as the largest finite numbers.
BAILUXSKO_API void divide_by_beta(std::span<double> alphar, std::span<double> alphai, std::span<const double> beta);

} // namespace lapack
