#include "bailuxhost/marshal.hpp"

#include "bailuxhost/matval.hpp"
#include "efiutl/block_pool.hpp"

#include <algorithm>
#include <cstring>

namespace Efi {

namespace {

/// Gives the block of an adopted array back to the pool.
struct GiveBack {
    IquAllocator::Adopted m_adopted;

    void operator()(const double*) const noexcept { block_pool::give(m_adopted.m_block, m_adopted.m_bytes); }
};

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

/// The numbers of a result: a large array that has an arena's block to itself is taken over, any other one copied.
Qud::SharedNumbers taken_out(IquAllocator* arena, const double* source, const aMatrix& record)
{
    const std::size_t bytes = Qud::element_count(record.m_rows, record.m_cols) * sizeof(double);
    if (arena != nullptr && record.m_anr == record.m_rows)
        if (const IquAllocator::Adopted adopted = arena->adopt(source, bytes); adopted.m_block != nullptr)
            return {source, GiveBack{adopted}};
    return copied_out(source, record);
}

} // namespace

Qud::Handle EfiMarshal::UnMarshal(IquAllocator* arena, const aMatrix* result, const Qud::Dim& unit)
{
    Qud::SharedNumbers real = taken_out(arena, result->m_rv, *result);
    Qud::SharedNumbers imaginary = result->m_iv ? taken_out(arena, result->m_iv, *result) : nullptr;
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
