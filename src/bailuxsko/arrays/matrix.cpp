#include "bailuxhost/error.hpp"
#include "bailuxhost/matval.hpp"
#include "bailuxsko/construction.hpp"
#include "bailuxsko/frame/call.hpp"
#include "efiutl/messages.hpp"

#include <cstdint>
#include <limits>
#include <optional>

namespace Efi::Matrix {

namespace {

std::uint32_t as_size(const Qud::Handle& value, int index)
{
    const Qud::DimVal* const carrier = Qud::as_dimensioned(value);
    const std::optional<double> whole = carrier ? carrier->isInt() : std::nullopt;
    if (!whole || *whole <= 0.0)
        Evl::Run::AppException::Raise(msg::must_be_positive_integer, index);
    if (*whole > std::numeric_limits<std::int32_t>::max())
        Evl::Run::AppException::Raise(msg::matrix_too_big, index);
    return static_cast<std::uint32_t>(*whole);
}

} // namespace

Qud::Handle matrix(const Qud::Handle& m, const Qud::Handle& n, const Qud::Handle& f)
{
    return in_host_call([&] {
        const std::uint32_t rows = as_size(m, 1);
        const std::uint32_t cols = as_size(n, 2);
        const Qud::FunVal& element = Qud::FunVal::asFunctionN(f, 2, 3);
        Qud::MatBuilder result(rows, cols);
        for (std::uint32_t j = 0; j < cols; ++j)
            for (std::uint32_t i = 0; i < rows; ++i) {
                const Qud::Handle place[] = {Qud::NumVal::make(i), Qud::NumVal::make(j)};
                result.set(i, j, element.call(place), 3);
            }
        return result.finish();
    });
}

} // namespace Efi::Matrix
