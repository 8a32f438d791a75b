#pragma once

#include "bailuxhost/matval.hpp"
#include "bailuxsko/intel_mkl.hpp"

#include <cstddef>
#include <cstdint>
#include <initializer_list>

/// Factors as host matrices, from the array A with leading dimension ld in which a routine leaves several of them.
/// T is double or MKL_Complex16; a complex factor carries an imaginary array. All throw std::bad_alloc.
namespace lapack {

/// rows by cols: A on the diagonal and above, zeros below.
template <class T>
Qud::Handle upper_trapezoid(const T* A, std::size_t ld, std::uint32_t rows, std::uint32_t cols);

/// rows by cols: A below the diagonal, ones on it, zeros above. cols is not more than rows.
template <class T>
Qud::Handle unit_lower_trapezoid(const T* A, std::size_t ld, std::uint32_t rows, std::uint32_t cols);

/// n by n, all of A, which is packed.
template <class T>
Qud::Handle whole_square(const T* A, std::uint32_t n);

/// A column of nested matrices, without unit.
Qud::Handle nested_column(std::initializer_list<Qud::Handle> factors);

} // namespace lapack
