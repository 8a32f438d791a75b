#pragma once

#include "efiutl/api.hpp"
#include "efiutl/records.hpp"

#include <cstddef>

namespace native {

/// Rows and columns m_low to m_end - 1 of a balanced matrix, which is block triangular: what stands before and behind
/// them on the diagonal are eigenvalues already.
struct BalancedBlock {
    std::size_t m_low;
    std::size_t m_end;
};

/// Balances a square matrix in place: exchanges rows and columns so that eigenvalues which can be seen stand apart,
/// then scales the rest by powers of 2, so that its rows and columns are of about the same size.
/// @param record  as many doubles as there are rows: outside the block the number, counted from 1, of the row and
///                column that came there, inside it the factor of the row and column
/// @see Parlett and Reinsch, Balancing a matrix for calculation of eigenvalues and eigenvectors,
///      Handbook for Automatic Computation II, contribution II/11
BAILUXSKO_API BalancedBlock balance(aMatrix* A, double* record);

} // namespace native
