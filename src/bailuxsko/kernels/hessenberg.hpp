#pragma once

#include "bailuxsko/kernels/balance.hpp"
#include "efiutl/api.hpp"
#include "efiutl/records.hpp"

namespace native {

/// Reduces a balanced matrix to upper Hessenberg form in place, by reflections that keep its eigenvalues. Below the
/// subdiagonal stays what the reflections left there.
/// @param u_re, u_im  m_end doubles each, for the vector of a reflection
/// @see Martin and Wilkinson, Similarity reduction of a general matrix to Hessenberg form,
///      Handbook for Automatic Computation II, contribution II/13
BAILUXSKO_API void reduce_to_hessenberg(aMatrix* A, const BalancedBlock& B, double* u_re, double* u_im);

} // namespace native
