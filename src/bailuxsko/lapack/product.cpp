#include "bailuxsko/lapack/product.hpp"

#include "bailuxhost/error.hpp"
#include "bailuxsko/lapack/copies.hpp"
#include "bailuxsko/lapack/driver.hpp"
#include "efiutl/messages.hpp"

#include <algorithm>
#include <cblas.h>

namespace lapack {

namespace {

/// Whether the product is the inner product of two columns. @throws "array size mismatch" (-1) where there is none
bool is_inner_product(const Qud::MatVal& A, const Qud::MatVal& B)
{
    if (A.Cols() == 1 && B.Cols() == 1 && A.Rows() == B.Rows())
        return true;
    if (A.Cols() != B.Rows())
        Evl::Run::AppException::Raise(msg::array_size_mismatch, -1);
    return false;
}

const double* first(const Qud::MatVal& M)
{
    return M.m_rarr + M.m_offset;
}

/// BLAS only reads its factors, so they need no copies: a host matrix lies as BLAS wants it.
Qud::Handle real_product(const Qud::MatVal& A, const Qud::MatVal& B)
{
    const int m = dimension(A.Rows());
    const int k = dimension(A.Cols());
    const int n = dimension(B.Cols());
    const int lda = dimension(A.Anr());
    const int ldb = dimension(B.Anr());
    if (is_inner_product(A, B))
        return Qud::NumVal::make(cblas_ddot(m, first(A), 1, first(B), 1));

    Qud::FreshNumbers c = result_numbers(std::uint64_t{A.Rows()} * B.Cols());
    if (n > 1) {
        cblas_dgemm(CblasColMajor, CblasNoTrans, CblasNoTrans, m, n, k, 1.0, first(A), lda, first(B), ldb, 0.0, c.get(),
                    m);
    } else {
        std::fill_n(c.get(), A.Rows(), 0.0); // some providers multiply by beta what stands there
        cblas_dgemv(CblasColMajor, CblasNoTrans, m, k, 1.0, first(A), lda, first(B), 1, 0.0, c.get(), 1);
    }
    return m == 1 && n == 1 ? Qud::NumVal::make(c[0]) : Qud::MatVal::make(A.Rows(), B.Cols(), std::move(c));
}

Qud::Handle complex_product(const Qud::MatVal& A, const Qud::MatVal& B)
{
    const int m = dimension(A.Rows());
    const int k = dimension(A.Cols());
    const int n = dimension(B.Cols());
    const bool inner = is_inner_product(A, B);
    mkl_auto_ptr<MKL_Complex16> left;
    mkl_auto_ptr<MKL_Complex16> right;
    const MKL_Complex16* const a = complex_copy(A, left);
    const MKL_Complex16* const b = complex_copy(B, right);
    if (inner) {
        MKL_Complex16 sum;
        cblas_zdotc_sub(m, b, 1, a, 1, &sum); // the first operand is the conjugated one
        return Qud::NumVal::make(sum.real(), sum.imag());
    }

    mkl_auto_ptr<MKL_Complex16> product;
    MKL_Complex16* const c = product.allocate(std::uint64_t{A.Rows()} * B.Cols());
    constexpr MKL_Complex16 one = 1.0;
    constexpr MKL_Complex16 zero = 0.0;
    if (n > 1)
        cblas_zgemm(CblasColMajor, CblasNoTrans, CblasNoTrans, m, n, k, &one, a, m, b, k, &zero, c, m);
    else
        cblas_zgemv(CblasColMajor, CblasNoTrans, m, k, &one, a, m, b, 1, &zero, c, 1);
    return m == 1 && n == 1 ? Qud::NumVal::make(c[0].real(), c[0].imag()) : complex_matrix(c, A.Rows(), B.Cols());
}

} // namespace

Qud::Handle _gemm(EfiCallContext*, const Qud::MatVal& A, const Qud::MatVal& B)
{
    const DriverScope scope;
    refuse_empty(A);
    refuse_empty(B);
    return A.HasImag() || B.HasImag() ? complex_product(A, B) : real_product(A, B);
}

} // namespace lapack
