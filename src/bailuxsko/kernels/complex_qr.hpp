#pragma once

#include "bailuxsko/kernels/balance.hpp"
#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

namespace native {

/// The eigenvalues of an upper Hessenberg matrix by the complex QR algorithm with shifts, in place: the matrix becomes
/// triangular. Eigenvalue k is the one that stands in row k of the diagonal at the end; nothing is sorted.
/// A matrix without an imaginary array gets one with the first step.
/// @param B           outside of it the matrix is triangular already
/// @param w_re, w_im  the eigenvalues, as many as there are rows
/// @param sines       as many doubles, for the rotations of a step
/// @throws  "too many iterations" (-1) when 31 steps do not bring out an eigenvalue
/// @see Martin and Wilkinson, The modified LR algorithm for complex Hessenberg matrices, Handbook for Automatic
///      Computation II, contribution II/16, whose unitary form this is; Francis, The QR transformation, Computer
///      Journal 4 (1961/62)
BAILUXSKO_API void complex_qr(EfiCallContext* ctx, aMatrix* A, const BalancedBlock& B, double* w_re, double* w_im,
                              double* sines);

} // namespace native
