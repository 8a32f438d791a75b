#include "bailuxhost/error.hpp"
#include "bailuxhost/matval.hpp"
#include "bailuxsko/construction.hpp"
#include "bailuxsko/frame/call.hpp"
#include "efiutl/messages.hpp"

#include <cstddef>
#include <cstdint>

namespace Efi::Matrix {

namespace {

/// A column of one unit on the diagonal; the zeros have its unit.
Qud::Handle diagonal_matrix_of_one_unit(const Qud::MatVal& v)
{
    const std::size_t n = v.Rows();
    const auto placed = [&](const double* source) -> Qud::SharedNumbers {
        if (!source)
            return nullptr;
        Qud::FreshNumbers numbers = Qud::zero_numbers(Qud::element_count(n, n));
        for (std::size_t i = 0; i < n; ++i)
            numbers[i * (n + 1)] = source[v.storage_index(i, 0)];
        return numbers;
    };
    return Qud::MatVal::make(v.Rows(), v.Rows(), placed(v.m_rarr), placed(v.m_iarr), v.m_dim);
}

/// A column of different units, or with texts or arrays; the zeros have no unit.
Qud::Handle diagonal_matrix_of_any(const Qud::MatVal& v)
{
    const std::uint32_t n = v.Rows();
    Qud::MatBuilder result(n, n);
    if (v.HasImag())
        result.want_imaginary();
    for (std::uint32_t j = 0; j < n; ++j)
        for (std::uint32_t i = 0; i < n; ++i) {
            if (i == j)
                result.set(i, j, v.element(i, 0));
            else
                result.set_number(i, j, 0.0, 0.0, Qud::Dim::identity);
        }
    return result.finish();
}

Qud::Handle diagonal_of(const Qud::MatVal& M)
{
    Qud::GrowableColumn elements;
    elements.reserve(M.Rows());
    for (std::size_t i = 0; i < M.Rows(); ++i)
        elements.PushRaw(M, i, i);
    return elements.reshape(M.Rows(), 1);
}

} // namespace

Qud::Handle diag(const Qud::Handle& x)
{
    return in_host_call([&] {
        const Qud::MatVal& M = Error::as_matrix(x, msg::must_be_vector_or_matrix, 1);
        if (M.Cols() == 1)
            return M.IsUniformScalar() ? diagonal_matrix_of_one_unit(M) : diagonal_matrix_of_any(M);
        if (!M.is_square())
            Evl::Run::AppException::Raise(msg::must_be_square, 1);
        return M.is_empty() ? Qud::MatVal::empty() : diagonal_of(M);
    });
}

} // namespace Efi::Matrix
