#include "bailuxhost/matval.hpp"
#include "bailuxsko/construction.hpp"
#include "bailuxsko/frame/call.hpp"

#include <cstdint>

namespace Efi::Matrix {

Qud::Handle matrix(const Qud::Handle& m, const Qud::Handle& n, const Qud::Handle& f)
{
    return in_host_call([&] {
        const std::uint32_t rows = Error::as_size(m, 1);
        const std::uint32_t cols = Error::as_size(n, 2);
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
