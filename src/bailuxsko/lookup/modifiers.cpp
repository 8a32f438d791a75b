// What the modifier of match and the lookups asks for.
#include "bailuxhost/error.hpp"
#include "bailuxsko/frame/error_checks.hpp"
#include "bailuxsko/lookup/match.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <string>

namespace Efi {

namespace {

using Evl::Run::AppException;

/// @param index  of the target among the arguments
range_pred as_range(const Qud::Handle& target, double tol, int index)
{
    const Qud::MatVal& bounds = Error::as_vector(target, msg::must_be_vector, index);
    if (bounds.Rows() != 2)
        AppException::Raise(msg::invalid_range, index);
    if (!bounds.IsUniformScalar())
        AppException::Raise(msg::must_be_of_uniform_units, index);
    for (const std::size_t i : {0, 1})
        if (bounds.imag(i, 0) != 0.0 || !ISFINITE(bounds.real(i, 0)))
            AppException::Raise(msg::must_be_real_vector, index);
    return {bounds.real(0, 0), bounds.real(1, 0), bounds.m_dim, tol};
}

const Qud::NumVal& as_real_target(const Qud::Handle& target, int index)
{
    const Qud::NumVal& number = Error::as_scalar(target, msg::must_be_scalar, index);
    if (!number.is_real() || !ISFINITE(number.re()))
        Throw(msg::must_be_real, index);
    return number;
}

} // namespace

double as_tolerance(Qud::Tol tol)
{
    if (!ISFINITE(tol.value) || tol.value < 0.0)
        AppException::Raise(msg::illegal_tol, -1);
    return tol.value;
}

void Match(indicesList& hits, EfiCallContext* ctx, const Qud::Handle& target, const Qud::MatVal* M, IndexRange cols,
           IndexRange rows, const Qud::Handle& modifier, Qud::Tol tol, Qud::Origin origin,
           const ArgumentIndices& indices)
{
    if (M == nullptr)
        AppException::Raise(msg::must_be_matrix, indices.matrix);
    const double tolerance = as_tolerance(tol);
    const auto scan = [&](const comparison_pred& predicate) { Match(hits, ctx, *M, cols, rows, predicate, origin); };
    if (Qud::as_function(modifier) != nullptr)
        return scan(user_pred(modifier, target, indices.modifier));
    const std::string& word = Error::as_string(modifier, msg::invalid_modifier, indices.modifier);
    if (word == "range")
        return scan(as_range(target, tolerance, indices.target));
    if (word == "eq" || word == "not") {
        if (Qud::as_number(target) == nullptr && !Error::is_string(target))
            Throw(msg::must_be_string_or_scalar, indices.target);
        return word == "eq" ? scan(eq_pred(target, tolerance)) : scan(neq_pred(target, tolerance));
    }
    if (word != "lt" && word != "gt" && word != "leq" && word != "geq" && word != "near")
        Throw(msg::invalid_modifier, indices.modifier);
    const Qud::NumVal& number = as_real_target(target, indices.target);
    if (word == "lt")
        scan(lt_pred(number.re(), number.m_dim, tolerance));
    else if (word == "gt")
        scan(gt_pred(number.re(), number.m_dim, tolerance));
    else if (word == "leq")
        scan(le_pred(number.re(), number.m_dim, tolerance));
    else if (word == "geq")
        scan(ge_pred(number.re(), number.m_dim, tolerance));
    else
        Match(hits, ctx, number.re(), number.m_dim, *M, cols, rows, tol, origin);
}

} // namespace Efi
