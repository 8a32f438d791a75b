#include "worksheet/operators/element.hpp"

#include "bailuxhost/error.hpp"
#include "bailuxhost/matval.hpp"
#include "efiutl/messages.hpp"

#include <fmt/format.h>

#include <array>

namespace worksheet {

namespace {

using Evl::Run::AppException;

/// The index counted from 0, of `count` places; `what` it counts is for people. The difference is taken in doubles: no
/// index wraps.
std::size_t place(double index, Qud::Origin origin, std::size_t count, const char* what)
{
    const double counted_from_0 = index - origin.value;
    if (count == 0)
        AppException::Raise(msg::index_out_of_bounds, -1);
    if (!(counted_from_0 >= 0.0 && counted_from_0 < static_cast<double>(count))) {
        const double last = origin.value + static_cast<double>(count - 1);
        AppException::Raise(msg::index_out_of_bounds, -1,
                            fmt::format("{} {:.15g} is not among {} to {:.15g}", what, index, origin.value, last));
    }
    return static_cast<std::size_t>(counted_from_0);
}

double whole(const Qud::Handle& value)
{
    const Qud::NumVal* const number = Qud::as_number(value);
    if (number == nullptr || !number->get_IsInt())
        AppException::Raise(msg::must_be_integer, -1,
                            number != nullptr && number->is_real() ? fmt::format("the index is {}", number->re()) : "");
    return number->re();
}

} // namespace

Qud::Handle element(const Qud::Handle& array, std::span<const Qud::Handle> indices, Qud::Origin origin)
{
    const Qud::MatVal* const A = Qud::matrix_of(array);
    if (A == nullptr)
        AppException::Raise(msg::must_be_matrix, -1);
    if (indices.size() == 2) {
        const std::array both{whole(indices[0]), whole(indices[1])};
        const std::size_t i = place(both[0], origin, A->Rows(), "row");
        return A->element(i, place(both[1], origin, A->Cols(), "column"));
    }
    if (A->Rows() != 1 && A->Cols() != 1)
        AppException::Raise(msg::must_be_vector, -1);
    const std::size_t k = place(whole(indices[0]), origin, A->count(), "index");
    return A->Cols() == 1 ? A->element(k, 0) : A->element(0, k);
}

} // namespace worksheet
