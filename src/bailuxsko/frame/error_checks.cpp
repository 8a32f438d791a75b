#include "bailuxsko/frame/error_checks.hpp"

#include "bailuxhost/error.hpp"
#include "efiutl/messages.hpp"

#include <limits>
#include <optional>

namespace Efi::Error {

namespace {

bool fits(const Qud::MatVal& M, ofsize_t shape) noexcept
{
    return (shape.cols == -1 || shape.cols == M.Cols()) && (shape.rows == -1 || shape.rows == M.Rows());
}

template <class T>
const T& present(const T* found, const char* message, int index)
{
    if (!found)
        Evl::Run::AppException::Raise(message, index);
    return *found;
}

} // namespace

bool is_string(const Qud::Handle& value) noexcept
{
    const std::string* text = nullptr;
    return is_string(value, &text);
}

bool is_string(const Qud::Handle& value, const std::string** text) noexcept
{
    const std::string* const found = value ? value->get_IsString() : nullptr;
    if (found)
        *text = found;
    return found != nullptr;
}

const std::string& as_string(const Qud::Handle& value, const char* message, int index)
{
    const std::string* text = nullptr;
    is_string(value, &text);
    return present(text, message, index);
}

double as_dimless_real(const Qud::Handle& value, int index)
{
    const Qud::NumVal* const number = Qud::as_number(value);
    if (!number || !number->is_real() || number->m_dim != Qud::Dim::identity)
        Evl::Run::AppException::Raise(msg::must_be_real, index);
    return number->re();
}

double as_integer(const Qud::Handle& value, int index)
{
    const Qud::DimVal* const carrier = Qud::as_dimensioned(value);
    const std::optional<double> whole = carrier ? carrier->isInt() : std::nullopt;
    return present(whole ? &*whole : nullptr, msg::must_be_integer, index);
}

std::uint32_t as_size(const Qud::Handle& value, int index)
{
    const Qud::NumVal* const number = Qud::as_number(value);
    if (!number || !number->get_IsInt() || number->re() <= 0.0)
        Evl::Run::AppException::Raise(msg::must_be_positive_integer, index);
    if (number->re() > std::numeric_limits<std::int32_t>::max())
        Evl::Run::AppException::Raise(msg::matrix_too_big, index);
    return static_cast<std::uint32_t>(number->re());
}

const Qud::MatVal* is_matrix(const Qud::Handle& value, ofsize_t shape) noexcept
{
    const Qud::MatVal* const matrix = Qud::matrix_of(value);
    return matrix && fits(*matrix, shape) ? matrix : nullptr;
}

const Qud::MatVal* is_vector(const Qud::Handle& value, ofsize_t shape) noexcept
{
    const Qud::MatVal* const column = is_matrix(value, vector_shape);
    return column && fits(*column, shape) ? column : nullptr;
}

const Qud::MatVal& as_matrix(const Qud::Handle& value, const char* message, int index)
{
    return present(is_matrix(value), message, index);
}

const Qud::MatVal& as_vector(const Qud::Handle& value, const char* message, int index)
{
    return present(is_matrix(value, vector_shape), message, index);
}

const Qud::NumVal& as_scalar(const Qud::Handle& value, const char* message, int index)
{
    return present(Qud::as_number(value), message, index);
}

const Qud::MatVal& as_scalar_matrix(const Qud::Handle& value, int index)
{
    const Qud::MatVal* const matrix = is_matrix(value);
    return present(matrix && matrix->IsUniformScalar() ? matrix : nullptr, msg::must_be_scalar_matrix, index);
}

const Qud::MatVal& as_square_smatrix(const Qud::Handle& value, int index)
{
    const Qud::MatVal& matrix = as_scalar_matrix(value, index);
    return present(matrix.is_square() ? &matrix : nullptr, msg::must_be_square, index);
}

} // namespace Efi::Error
