#include "bailuxsko/shape.hpp"

#include "bailuxsko/frame/call.hpp"

namespace Efi::Matrix {

Qud::Handle rows(const Qud::Handle& M)
{
    return in_host_call([&] {
        const Qud::MatVal* const matrix = Error::is_matrix(M);
        return Qud::NumVal::make(matrix ? matrix->Rows() : 0.0);
    });
}

Qud::Handle cols(const Qud::Handle& M)
{
    return in_host_call([&] {
        const Qud::MatVal* const matrix = Error::is_matrix(M);
        return Qud::NumVal::make(matrix ? matrix->Cols() : 0.0);
    });
}

Qud::Handle length(const Qud::Handle& v)
{
    return in_host_call([&] { return Qud::NumVal::make(Error::as_vector(v, msg::must_be_vector, 1).Rows()); });
}

Qud::Handle last(Qud::Origin origin, const Qud::Handle& v)
{
    return in_host_call([&] {
        const double rows = Error::as_vector(v, msg::must_be_vector, 1).Rows();
        return Qud::NumVal::make(rows + origin.value - 1.0);
    });
}

Qud::Handle transpose(const Qud::Handle& M)
{
    return in_host_call([&] { return Error::as_matrix(M, msg::must_be_matrix, 1).Transpose(); });
}

Qud::Handle cpMatrix(const Qud::Handle& M)
{
    return in_host_call([&] { return Error::as_matrix(M, msg::must_be_matrix, 1).copy(); });
}

} // namespace Efi::Matrix
