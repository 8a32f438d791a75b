// The Kronecker product: matrices of plain scalars in one pass over the columns of the result, others element by
// element.
#include "bailuxsko/algebra/mapping.hpp"
#include "bailuxsko/arithmetic.hpp"
#include "bailuxsko/frame/call.hpp"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>

namespace Efi {

namespace {

/// The number of rows or columns of the result.
std::uint32_t extent(std::uint32_t a, std::uint32_t b)
{
    const std::uint64_t product = std::uint64_t{a} * b;
    if (product > std::numeric_limits<std::uint32_t>::max())
        throw std::bad_alloc();
    return static_cast<std::uint32_t>(product);
}

/// One element of a with a column of b, into `re` and, unless both are real, `im`. Answers whether some imaginary part
/// is not zero.
bool multiply_column(aComplex x, const MatrixOperand& b, std::size_t j, double* re, double* im, std::size_t count)
{
    const Repeated<aComplex> element{x};
    if (im == nullptr) {
        VectorizePointers<EfiMult>(Repeated<double>{x.m_re}, b.real(j), re, count);
        return false;
    }
    return b.is_complex() ? VectorizeCplxVCplx<EfiMult>(element, b.complex(j), re, im, count)
                          : VectorizeRealVCplx<EfiMult>(element, b.real(j), re, im, count);
}

Qud::Handle product_of_plain(const Qud::MatVal& a, const Qud::MatVal& b)
{
    Qud::MatVal::Parts parts;
    parts.rows = extent(a.Rows(), b.Rows());
    parts.cols = extent(a.Cols(), b.Cols());
    const std::size_t count = Qud::element_count(parts.rows, parts.cols);
    const bool complex = a.HasImag() || b.HasImag();
    Qud::FreshNumbers re = Qud::fresh_numbers(count);
    Qud::FreshNumbers im = complex ? Qud::fresh_numbers(count) : nullptr;
    const MatrixOperand factor(b);
    bool found = false;
    std::size_t place = 0;
    for (std::size_t j = 0; j < a.Cols(); ++j)
        for (std::size_t l = 0; l < b.Cols(); ++l)
            for (std::size_t i = 0; i < a.Rows(); ++i) {
                const aComplex x{.m_re = a.real(i, j), .m_im = a.imag(i, j)};
                found |=
                    multiply_column(x, factor, l, re.get() + place, complex ? im.get() + place : nullptr, b.Rows());
                place += b.Rows();
            }
    parts.real = std::move(re);
    if (found)
        parts.imaginary = std::move(im);
    return with_units(std::move(parts), Qud::Dim::Mult(a.m_dim, b.m_dim));
}

/// Texts are looked for first, those of the second matrix before those of the first.
void refuse_texts(const Qud::MatVal& M, int index)
{
    if (M.has_entries())
        for (const Qud::Entry& e : *M.entries())
            if (!Qud::matrix_of(e.value))
                refuse_text(index);
}

Qud::Handle product_of_any(const Qud::MatVal& a, const Qud::MatVal& b)
{
    refuse_texts(b, 2);
    refuse_texts(a, 1);
    Qud::MatBuilder result(extent(a.Rows(), b.Rows()), extent(a.Cols(), b.Cols()));
    for (std::size_t j = 0; j < a.Cols(); ++j)
        for (std::size_t i = 0; i < a.Rows(); ++i) {
            const Qud::Handle x = a.element(i, j);
            for (std::size_t l = 0; l < b.Cols(); ++l)
                for (std::size_t k = 0; k < b.Rows(); ++k)
                    result.set(i * b.Rows() + k, j * b.Cols() + l, Matrix::mult(x, b.element(k, l)));
        }
    return result.finish();
}

} // namespace

Qud::Handle Matrix::kronecker(const Qud::Handle& a, const Qud::Handle& b)
{
    return in_host_call([&] {
        const Qud::MatVal& left = Error::as_matrix(a, msg::must_be_matrix, 1);
        const Qud::MatVal& right = Error::as_matrix(b, msg::must_be_matrix, 2);
        if (left.is_empty() || right.is_empty())
            return Qud::MatVal::empty();
        return left.get_IsUniformScalar() && right.get_IsUniformScalar() ? product_of_plain(left, right)
                                                                         : product_of_any(left, right);
    });
}

} // namespace Efi
