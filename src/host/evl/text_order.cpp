#include "bailuxhost/text_order.hpp"

#include "bailuxhost/error.hpp"
#include "efiutl/messages.hpp"

#include <dlfcn.h>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <unicode/ucol.h>

namespace Evl {

namespace {

/// ICU's collation, loaded when the first two texts are ordered: linked in, it would add a third to the start of every
/// program that never compares a text. Never unloaded.
struct Icu {
    decltype(&::ucol_open) open;
    decltype(&::ucol_close) close;
    decltype(&::ucol_setStrength) set_strength;
    decltype(&::ucol_strcollUTF8) compare;
};

constexpr char icu_library[] = "libicui18n.so." U_ICU_VERSION_SHORT;

[[noreturn]] void raise_no_icu()
{
    const char* const reason = dlerror();
    Run::AppException::Raise(msg::cannot_order_texts, -1, reason ? reason : icu_library);
}

/// A function of ICU, whose exported names end with the version.
template <class Function>
void find(void* library, const char* name, Function*& function)
{
    const std::string versioned = std::string(name) + "_" + U_ICU_VERSION_SHORT;
    function = reinterpret_cast<Function*>(dlsym(library, versioned.c_str()));
    if (!function)
        raise_no_icu();
}

Icu load_icu()
{
    void* const library = dlopen(icu_library, RTLD_NOW | RTLD_LOCAL);
    if (!library)
        raise_no_icu();
    Icu icu{};
    find(library, "ucol_open", icu.open);
    find(library, "ucol_close", icu.close);
    find(library, "ucol_setStrength", icu.set_strength);
    find(library, "ucol_strcollUTF8", icu.compare);
    return icu;
}

const Icu& icu()
{
    static const Icu functions = load_icu();
    return functions;
}

struct Close {
    void operator()(UCollator* collator) const noexcept { icu().close(collator); }
};
using Collator = std::unique_ptr<UCollator, Close>;

/// The empty locale is the root, whatever the environment names; its data stand in the library itself, so that only
/// memory can be short.
Collator open_root()
{
    UErrorCode status = U_ZERO_ERROR;
    Collator collator(icu().open("", &status));
    if (U_FAILURE(status))
        throw std::bad_alloc();
    icu().set_strength(collator.get(), UCOL_TERTIARY);
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
    if (a == b)
        return 0;
    thread_local const Collator root = open_root();
    UErrorCode status = U_ZERO_ERROR;
    const UCollationResult order = icu().compare(root.get(), a.data(), length_of(a), b.data(), length_of(b), &status);
    if (U_FAILURE(status))
        throw std::bad_alloc();
    return order;
}

} // namespace Evl
