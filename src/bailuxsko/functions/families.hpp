#pragma once

#include "bailuxhost/function_row.hpp"

#include <span>

/// The rows of the function table, a family a file. A new function is one entry operation and one row in its family.
namespace Efi::families {

std::span<const Evl::FunctionRow> shape();
std::span<const Evl::FunctionRow> lu();
std::span<const Evl::FunctionRow> cholesky();
std::span<const Evl::FunctionRow> qr();
std::span<const Evl::FunctionRow> rref();
std::span<const Evl::FunctionRow> linear_systems();
std::span<const Evl::FunctionRow> lapack_factorisations();
std::span<const Evl::FunctionRow> lapack_eigenvalues();
std::span<const Evl::FunctionRow> norms();
std::span<const Evl::FunctionRow> arithmetic();
std::span<const Evl::FunctionRow> inverse();
std::span<const Evl::FunctionRow> determinant();
std::span<const Evl::FunctionRow> small_functions();
std::span<const Evl::FunctionRow> construction();
std::span<const Evl::FunctionRow> extremes();
std::span<const Evl::FunctionRow> sorting();
std::span<const Evl::FunctionRow> svd();
std::span<const Evl::FunctionRow> lookup();
std::span<const Evl::FunctionRow> divisors();
std::span<const Evl::FunctionRow> notations();
std::span<const Evl::FunctionRow> statistics();
std::span<const Evl::FunctionRow> eigenvalues();

} // namespace Efi::families
