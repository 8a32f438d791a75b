// sort, csort, rsort: what they accept; sortMat does the work.
#include "bailuxhost/error.hpp"
#include "bailuxhost/matval.hpp"
#include "bailuxsko/arrays/sort.hpp"
#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/sorting.hpp"
#include "efiutl/messages.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace Efi::Matrix {

namespace {

bool are_texts(const Qud::MatVal& keys)
{
    return keys.has_entries() && keys.entries()->size() == keys.count() &&
           std::all_of(keys.entries()->begin(), keys.entries()->end(),
                       [](const Qud::Entry& e) { return Error::is_string(e.value); });
}

/// Numbers of one unit, or texts. @throws message (1)
void require_comparable(const Qud::MatVal& keys, const char* message)
{
    if (!keys.IsUniformScalar() && !are_texts(keys))
        Evl::Run::AppException::Raise(message, 1);
}

/// A number of a row or column, counted from 0. @throws "must be integer", "must be dimless", "index out of bounds" (2)
std::size_t as_key(Qud::Origin origin, const Qud::Handle& value, std::uint32_t count)
{
    const double whole = Error::as_integer(value, 2);
    Qud::Dim::Id(Error::as_scalar(value, msg::must_be_scalar, 2).m_dim, 2);
    const double key = whole - origin.value;
    if (!(key >= 0.0 && key < count))
        Evl::Run::AppException::Raise(msg::index_out_of_bounds, 2);
    return static_cast<std::size_t>(key);
}

Qud::Handle sorted(const Qud::Handle& M, std::size_t k, int d)
{
    return sortMat(*Qud::matrix_of(Qud::MatVal::Canonicalize(M)), k, d);
}

} // namespace

Qud::Handle sort(const Qud::Handle& v)
{
    return in_host_call([&] {
        require_comparable(Error::as_vector(v, msg::must_be_vector, 1), msg::vector_must_be_uniform_or_strings);
        return sorted(v, 0, 1);
    });
}

Qud::Handle csort(Qud::Origin origin, const Qud::Handle& M, const Qud::Handle& j)
{
    return in_host_call([&] {
        const Qud::MatVal& source = Error::as_matrix(M, msg::must_be_matrix, 1);
        const std::size_t k = as_key(origin, j, source.Cols());
        if (source.Rows() > 0) {
            const Qud::Handle keys = source.SubMatrix(0, source.Rows() - 1, k, k);
            require_comparable(*Qud::matrix_of(keys), msg::col_must_be_uniform_or_strings);
        }
        return sorted(M, k, 1);
    });
}

Qud::Handle rsort(Qud::Origin origin, const Qud::Handle& M, const Qud::Handle& i)
{
    return in_host_call([&] {
        const Qud::MatVal& source = Error::as_matrix(M, msg::must_be_matrix, 1);
        const std::size_t k = as_key(origin, i, source.Rows());
        if (source.Cols() > 0) {
            const Qud::Handle keys = source.SubMatrix(k, k, 0, source.Cols() - 1);
            require_comparable(*Qud::matrix_of(keys), msg::row_must_be_uniform_or_strings);
        }
        return sorted(M, k, 0);
    });
}

} // namespace Efi::Matrix
