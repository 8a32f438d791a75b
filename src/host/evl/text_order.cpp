#include "bailuxhost/text_order.hpp"

#include <unicode/ucol.h>

#include <limits>
#include <memory>
#include <new>

namespace Evl {

namespace {

struct Close {
    void operator()(UCollator* collator) const noexcept { ucol_close(collator); }
};
using Collator = std::unique_ptr<UCollator, Close>;

/// The empty locale is the root, whatever the environment names; its data stand in the library itself, so that only
/// memory can be short.
Collator open_root()
{
    UErrorCode status = U_ZERO_ERROR;
    Collator collator(ucol_open("", &status));
    if (U_FAILURE(status))
        throw std::bad_alloc();
    ucol_setStrength(collator.get(), UCOL_TERTIARY);
    return collator;
}

std::int32_t length_of(std::string_view text)
{
    if (text.size() > std::numeric_limits<std::int32_t>::max())
        throw std::bad_alloc();
    return static_cast<std::int32_t>(text.size());
}

} // namespace

int text_order(std::string_view a, std::string_view b)
{
    // Equal texts need no collator: opening one costs more than a whole small worksheet.
    if (a == b)
        return 0;
    thread_local const Collator root = open_root();
    UErrorCode status = U_ZERO_ERROR;
    const UCollationResult order =
        ucol_strcollUTF8(root.get(), a.data(), length_of(a), b.data(), length_of(b), &status);
    if (U_FAILURE(status))
        throw std::bad_alloc();
    return order;
}

} // namespace Evl
