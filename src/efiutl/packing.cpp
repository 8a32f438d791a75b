#include "efiutl/packing.hpp"

#include "efiutl/columns.hpp"
#include "efiutl/messages.hpp"

#include <algorithm>
#include <initializer_list>

namespace Efi {
namespace {

using Parts = std::initializer_list<const aMatrix*>;
using Array = double* aMatrix::*; // &aMatrix::m_rv or &aMatrix::m_iv

/// The parts' arrays follow each other without a gap, as the columns of one record.
bool lie_side_by_side(Parts parts, Array array)
{
    const aMatrix* left = nullptr;
    for (const aMatrix* right : parts) {
        if (right->*array == nullptr || right->m_anr != right->m_rows)
            return false;
        if (left != nullptr && left->*array + std::size_t{left->m_rows} * left->m_cols != right->*array)
            return false;
        left = right;
    }
    return true;
}

/// The second's array begins below the first's last row, both within columns just as long as the two together.
bool lie_stacked(const aMatrix* first, const aMatrix* second, Array array)
{
    const std::uint64_t rows = std::uint64_t{first->m_rows} + second->m_rows;
    return first->*array != nullptr && first->m_anr == rows && second->m_anr == rows &&
           first->*array + first->m_rows == second->*array;
}

/// Copies one part into columns of `ld` doubles; a part without the array counts as zeros.
void place(const aMatrix* part, Array array, double* to, std::size_t ld)
{
    for (std::size_t j = 0; j < part->m_cols; ++j) {
        if (part->*array != nullptr)
            std::copy_n(part->*array + j * part->m_anr, part->m_rows, to + j * ld);
        else
            std::fill_n(to + j * ld, part->m_rows, 0.0);
    }
}

bool any_complex(Parts parts)
{
    return std::any_of(parts.begin(), parts.end(), [](const aMatrix* part) { return part->m_iv != nullptr; });
}

double* joined_side_by_side(EfiCallContext* ctx, Parts parts, std::uint64_t count, Array array)
{
    if (lie_side_by_side(parts, array))
        return (*parts.begin())->*array;
    double* const joined = uncleared_doubles(ctx, count);
    double* to = joined;
    for (const aMatrix* part : parts) {
        place(part, array, to, part->m_rows);
        to += std::size_t{part->m_rows} * part->m_cols;
    }
    return joined;
}

bool pack_side_by_side(EfiCallContext* ctx, Parts parts, aMatrix** out)
{
    *out = nullptr;
    const std::uint32_t rows = (*parts.begin())->m_rows;
    std::uint64_t cols = 0;
    for (const aMatrix* part : parts) {
        if (part->m_rows != rows)
            return false;
        cols += part->m_cols;
    }
    if (cols > UINT32_MAX)
        return false;
    double* const real = joined_side_by_side(ctx, parts, rows * cols, &aMatrix::m_rv);
    double* const imaginary =
        any_complex(parts) ? joined_side_by_side(ctx, parts, rows * cols, &aMatrix::m_iv) : nullptr;
    *out = aMatrix::mk(ctx->m_arena, rows, static_cast<std::uint32_t>(cols), real, imaginary);
    return true;
}

double* joined_stacked(EfiCallContext* ctx, const aMatrix* first, const aMatrix* second, Array array)
{
    if (lie_stacked(first, second, array))
        return first->*array;
    const std::size_t rows = std::size_t{first->m_rows} + second->m_rows;
    double* const joined = uncleared_doubles(ctx, rows * first->m_cols);
    place(first, array, joined, rows);
    place(second, array, joined + first->m_rows, rows);
    return joined;
}

} // namespace

bool pack_two_r(EfiCallContext* ctx, aMatrix* first, aMatrix* second, aMatrix** out)
{
    return pack_side_by_side(ctx, {first, second}, out);
}

bool pack_three_c(EfiCallContext* ctx, aMatrix* first, aMatrix* second, aMatrix* third, aMatrix** out)
{
    return pack_side_by_side(ctx, {first, second, third}, out);
}

bool pack_two_rr(EfiCallContext* ctx, aMatrix* first, aMatrix* second, aMatrix** out)
{
    *out = nullptr;
    const std::uint64_t rows = std::uint64_t{first->m_rows} + second->m_rows;
    if (first->m_cols != second->m_cols || rows > UINT32_MAX)
        return false;
    double* const real = joined_stacked(ctx, first, second, &aMatrix::m_rv);
    double* const imaginary =
        any_complex({first, second}) ? joined_stacked(ctx, first, second, &aMatrix::m_iv) : nullptr;
    *out = aMatrix::mk(ctx->m_arena, static_cast<std::uint32_t>(rows), first->m_cols, real, imaginary);
    return true;
}

const char* MtoVcol(EfiCallContext* /*ctx*/, aMatrix* M, int column_number, aVector* v)
{
    if (M->m_rv == nullptr || v->m_rv == nullptr)
        return msg::null_pointer;
    if (column_number < 0 || static_cast<std::uint32_t>(column_number) >= M->m_cols)
        return msg::index_out_of_bounds;
    if (v->m_rows != M->m_rows || v->m_cols != 1)
        return msg::array_size_mismatch;
    const auto j = static_cast<std::size_t>(column_number);
    std::copy_n(column(M, j), M->m_rows, v->m_rv);
    if (v->m_iv != nullptr) {
        if (M->m_iv != nullptr)
            std::copy_n(column_i(M, j), M->m_rows, v->m_iv);
        else
            std::fill_n(v->m_iv, M->m_rows, 0.0);
    }
    return nullptr;
}

void zero_col(int column_number, int first_row, aMatrix* M)
{
    const auto j = static_cast<std::size_t>(column_number);
    const auto from = static_cast<std::size_t>(std::max(first_row, 0));
    if (column_number < 0 || j >= M->m_cols || from >= M->m_rows)
        return;
    std::fill(column(M, j) + from, column(M, j) + M->m_rows, 0.0);
    if (M->m_iv != nullptr)
        std::fill(column_i(M, j) + from, column_i(M, j) + M->m_rows, 0.0);
}

} // namespace Efi
