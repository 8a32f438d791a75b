#include "bailuxhost/marshal.hpp"

#include "bailuxhost/matval.hpp"

#include <algorithm>
#include <cstring>

namespace Efi {

namespace {

Qud::SharedNumbers copied_out(const double* source, const aMatrix& record)
{
    const std::size_t rows = record.m_rows;
    const std::size_t cols = record.m_cols;
    Qud::FreshNumbers numbers = Qud::fresh_numbers(Qud::element_count(rows, cols));
    if (rows == 0 || cols == 0)
        return numbers;
    if (record.m_anr == rows) {
        std::memcpy(numbers.get(), source, rows * cols * sizeof(double));
        return numbers;
    }
    for (std::size_t j = 0; j < cols; ++j)
        std::memcpy(numbers.get() + j * rows, source + j * record.m_anr, rows * sizeof(double));
    return numbers;
}

} // namespace

Qud::Handle EfiMarshal::UnMarshal(IquAllocator*, const aMatrix* result, const Qud::Dim& unit)
{
    Qud::SharedNumbers real = copied_out(result->m_rv, *result);
    Qud::SharedNumbers imaginary = result->m_iv ? copied_out(result->m_iv, *result) : nullptr;
    return Qud::MatVal::make(result->m_rows, result->m_cols, std::move(real), std::move(imaginary), unit);
}

Qud::Handle EfiMarshal::UnMarshal(IquAllocator*, const aComplex* result, const Qud::Dim& unit)
{
    return Qud::NumVal::make(result->m_re, result->m_im, unit);
}

Qud::Handle EfiMarshal::UnMarshal(IquAllocator* arena, const Anyval* result, const Qud::Dim& unit)
{
    return is_matrix(result) ? UnMarshal(arena, &result->m_matrix, unit) : UnMarshal(arena, &result->m_number, unit);
}

} // namespace Efi
