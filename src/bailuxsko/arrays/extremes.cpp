#include "bailuxsko/arrays/extremes.hpp"

#include "bailuxhost/error.hpp"
#include "bailuxhost/matval.hpp"
#include "bailuxhost/text_order.hpp"
#include "bailuxsko/extremes.hpp"
#include "bailuxsko/frame/call.hpp"
#include "efiutl/messages.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace Efi {

namespace {

using Evl::Run::AppException;

/// Of a function or an absent argument, which are neither numbers nor texts, there is none to disagree.
const Qud::Dim& uniform_dimension(const Qud::Handle& value)
{
    if (Error::is_string(value))
        return Qud::Dim::string_dim;
    const Qud::DimVal* const carrier = Qud::as_dimensioned(value);
    return carrier ? carrier->m_dim : Qud::Dim::identity;
}

bool holds_numbers(const Qud::Handle& value)
{
    const Qud::MatVal* const M = Qud::matrix_of(value);
    return M ? !M->has_entries() : Qud::as_number(value) != nullptr;
}

bool holds_no_number(const Qud::Handle& value)
{
    const Qud::MatVal* const M = Qud::matrix_of(value);
    return M ? M->has_entries() && M->entries()->size() == M->count() : Error::is_string(value);
}

/// What distinguishes the smallest from the largest.
struct Smallest {
    static constexpr double start = std::numeric_limits<double>::max();
    static constexpr auto of_array = vecmin;
    static bool wins(double x, double best) { return x < best; }
    static bool wins(const std::string& x, const std::string& best) { return Evl::text_order(x, best) < 0; }
};
struct Largest {
    static constexpr double start = std::numeric_limits<double>::lowest();
    static constexpr auto of_array = vecmax;
    static bool wins(double x, double best) { return x > best; }
    static bool wins(const std::string& x, const std::string& best) { return Evl::text_order(x, best) > 0; }
};

/// The best of what has been offered so far.
template <class Extreme>
struct Best {
    double value = Extreme::start;

    void offer(double x)
    {
        if (Extreme::wins(x, value))
            value = x;
    }
    /// A number that stands by itself.
    void offer_number(double x) { offer(std::isnan(x) ? 0.0 : x); }
    void offer_array(const double* numbers, const Qud::MatVal& M)
    {
        offer(Extreme::of_array(numbers, M.m_offset, M.Cols(), M.Rows(), M.Anr()));
    }
};

template <class Extreme>
Qud::Handle extreme_number(std::span<const Qud::Handle> values, const Qud::Dim& unit)
{
    Best<Extreme> re;
    Best<Extreme> im;
    bool is_complex = false;
    int k = 0;
    for (const Qud::Handle& value : values) {
        ++k;
        if (const Qud::MatVal* const M = Qud::matrix_of(value)) {
            if (M->is_empty())
                AppException::Raise(msg::invalid_dimension, k);
            re.offer_array(M->m_rarr, *M);
            if (M->HasImag()) {
                is_complex = true;
                im.offer_array(M->m_iarr, *M);
            }
        } else {
            const Qud::NumVal& z = *Qud::as_number(value);
            re.offer_number(z.re());
            if (!z.is_real()) {
                is_complex = true;
                im.offer_number(z.im());
            }
        }
    }
    return Qud::NumVal::make(re.value, is_complex ? im.value : 0.0, unit);
}

template <class Extreme>
Qud::Handle extreme_text(std::span<const Qud::Handle> values)
{
    const std::string* best = nullptr;
    const auto offer = [&](const std::string& text) {
        if (!best || Extreme::wins(text, *best))
            best = &text;
    };
    int position = 0;
    for (const Qud::Handle& value : values) {
        if (const Qud::MatVal* const M = Qud::matrix_of(value)) {
            for (const Qud::Entry& e : *M->entries())
                offer(Error::as_string(e.value, msg::may_not_be_nested, position));
        } else {
            offer(*value->get_IsString());
        }
        ++position;
    }
    return Qud::StrVal::make(*best);
}

template <class Extreme>
Qud::Handle extreme(std::span<const Qud::Handle> values)
{
    return in_host_call([&] {
        const Qud::Dim unit = UniformArgumentDimension(values);
        if (allNumbers(values))
            return extreme_number<Extreme>(values, unit);
        if (allStrings(values))
            return extreme_text<Extreme>(values);
        AppException::Raise(msg::cannot_mix_scalar_and_string, -1);
    });
}

} // namespace

Qud::Dim UniformArgumentDimension(std::span<const Qud::Handle> values)
{
    const Qud::Dim* common = nullptr;
    int k = 0;
    for (const Qud::Handle& value : values) {
        ++k;
        const Qud::Dim& own = uniform_dimension(value);
        if (own == Qud::Dim::mixed_matrix_dim)
            AppException::Raise(msg::vector_must_be_uniform_or_strings, k);
        if (!common) {
            common = &own;
            continue;
        }
        const bool one_is_text = *common == Qud::Dim::string_dim || own == Qud::Dim::string_dim;
        if (one_is_text && !Qud::Dim::Eq_b(*common, own))
            AppException::Raise(msg::cannot_mix_scalar_and_string, -1);
        Qud::Dim::Eq(*common, own, k);
    }
    return common ? *common : Qud::Dim::identity;
}

bool allNumbers(std::span<const Qud::Handle> values)
{
    return std::all_of(values.begin(), values.end(), holds_numbers);
}

bool allStrings(std::span<const Qud::Handle> values)
{
    return std::all_of(values.begin(), values.end(), holds_no_number);
}

namespace Matrix {

Qud::Handle min(std::span<const Qud::Handle> values)
{
    return extreme<Smallest>(values);
}

Qud::Handle max(std::span<const Qud::Handle> values)
{
    return extreme<Largest>(values);
}

} // namespace Matrix

} // namespace Efi
