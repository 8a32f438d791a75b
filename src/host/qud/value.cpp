#include "bailuxhost/value.hpp"

#include "bailuxhost/error.hpp"
#include "bailuxhost/matval.hpp"
#include "efiutl/messages.hpp"

#include <cmath>

namespace Qud {

Value::~Value() = default;

bool NumVal::get_IsInt() const noexcept
{
    return is_real() && std::isfinite(m_re) && std::trunc(m_re) == m_re;
}

std::optional<double> DimVal::isInt() const noexcept
{
    if (kind() != Kind::number)
        return std::nullopt;
    const NumVal& number = static_cast<const NumVal&>(*this);
    return number.get_IsInt() ? std::optional<double>(number.re()) : std::nullopt;
}

double DimVal::asReal(const Handle& value, const char* message, int index)
{
    const NumVal* const number = as_number(value);
    if (!number || !number->is_real())
        Evl::Run::AppException::Raise(message, index);
    return number->re();
}

const MatVal& DimVal::asRealMatrix(const Handle& value, int index)
{
    const MatVal* const matrix = matrix_of(value);
    if (!matrix || !matrix->IsUniformScalar() || matrix->HasImag())
        Evl::Run::AppException::Raise(msg::must_be_real_matrix, index);
    return *matrix;
}

Handle DimVal::dv(Handle value, const Dim& unit)
{
    const DimVal* const carrier = as_dimensioned(value);
    if (!carrier || unit.is_marker() || carrier->m_dim == unit)
        return value;
    if (const NumVal* const number = as_number(value))
        return NumVal::make(number->re(), number->im(), unit);
    return matrix_of(value)->with_units(unit);
}

const FunVal& FunVal::asFunctionN(const Handle& value, std::size_t count, int index)
{
    const FunVal* const function = as_function(value);
    if (!function || !function->takes(count))
        Evl::Run::AppException::Raise(msg::must_be_function_of_two_variables, index);
    return *function;
}

} // namespace Qud
