#include "bailuxsko/kernels/saved_rotations.hpp"

#include "bailuxsko/kernels/levels.hpp"
#include "bailuxsko/kernels/side_by_side.hpp"
#include "efiutl/columns.hpp"

#include <algorithm>

namespace native {
namespace {

using Sequence = SavedRotations::Sequence;
using side_by_side::Four;
using side_by_side::Two;

constexpr std::size_t strip_rows = 16;
constexpr std::size_t sweeps_at_once = 32; // whole ones: that many make the copies of a strip cheap

/// Rows of a matrix, column after column.
template <class Vector>
struct Strip {
    static constexpr std::size_t width = side_by_side::lanes<Vector>;
    static constexpr std::size_t vectors = strip_rows / width;
    using Column = Vector[vectors];

    double* m_columns;

    [[gnu::always_inline]] void load(Column& x, std::size_t j) const
    {
#pragma GCC unroll 8
        for (std::size_t g = 0; g < vectors; ++g)
            side_by_side::load(x[g], m_columns + j * strip_rows + g * width);
    }
    [[gnu::always_inline]] void store(const Column& x, std::size_t j) const
    {
#pragma GCC unroll 8
        for (std::size_t g = 0; g < vectors; ++g)
            side_by_side::store(x[g], m_columns + j * strip_rows + g * width);
    }
};

/// Column x stays in registers; the column that is done with goes to memory.
template <class Vector, bool neighbours>
[[gnu::always_inline]] inline void rotate_strip(const Strip<Vector>& strip, const Sequence& sequence,
                                                const double* cosine_and_sine)
{
    typename Strip<Vector>::Column x;
    strip.load(x, sequence.m_left);
    for (std::size_t t = 0; t < sequence.m_count; ++t) {
        const double c = cosine_and_sine[2 * t];
        const double s = cosine_and_sine[2 * t + 1];
        typename Strip<Vector>::Column z;
        typename Strip<Vector>::Column left;
        strip.load(z, sequence.m_right + t);
#pragma GCC unroll 8
        for (std::size_t g = 0; g < Strip<Vector>::vectors; ++g) {
            left[g] = x[g] * c + z[g] * s;
            z[g] = z[g] * c - x[g] * s;
        }
        if constexpr (neighbours)
            strip.store(left, sequence.m_left + t);
        else
            strip.store(z, sequence.m_right + t);
#pragma GCC unroll 8
        for (std::size_t g = 0; g < Strip<Vector>::vectors; ++g)
            x[g] = neighbours ? z[g] : left[g];
    }
    strip.store(x, neighbours ? sequence.m_left + sequence.m_count : sequence.m_left);
}

struct Saved {
    aMatrix* m_M;
    const Sequence* m_sequences;
    std::size_t m_count;
    const double* m_cosines_and_sines;
    double* m_strip;
};

template <class Vector>
[[gnu::always_inline]] inline void apply_to_strips(const Saved& S)
{
    aMatrix* const M = S.m_M;
    std::size_t first = M->m_cols;
    std::size_t end = 0;
    for (std::size_t q = 0; q < S.m_count; ++q) {
        const Sequence& sequence = S.m_sequences[q];
        first = std::min<std::size_t>(first, sequence.m_left);
        end = std::max<std::size_t>(end, sequence.m_right + sequence.m_count);
    }
    const Strip<Vector> strip{S.m_strip};
    for (std::size_t i = 0; i < M->m_rows; i += strip_rows) {
        const std::size_t rows = std::min(strip_rows, M->m_rows - i);
        for (std::size_t j = first; j < end; ++j) // a short strip repeats its last row
            for (std::size_t r = 0; r < strip_rows; ++r)
                strip.m_columns[r + j * strip_rows] = Efi::at(M, i + std::min(r, rows - 1), j);
        const double* rotations = S.m_cosines_and_sines;
        for (std::size_t q = 0; q < S.m_count; ++q) {
            if (S.m_sequences[q].m_neighbours)
                rotate_strip<Vector, true>(strip, S.m_sequences[q], rotations);
            else
                rotate_strip<Vector, false>(strip, S.m_sequences[q], rotations);
            rotations += std::size_t{2} * S.m_sequences[q].m_count;
        }
        for (std::size_t j = first; j < end; ++j)
            std::copy_n(strip.m_columns + j * strip_rows, rows, Efi::column(M, j) + i);
    }
}

void apply_baseline(const Saved& S)
{
    apply_to_strips<Two>(S);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] void apply_avx2(const Saved& S)
{
    apply_to_strips<Four>(S);
}
#else
constexpr auto apply_avx2 = apply_baseline;
#endif

} // namespace

SavedRotations::SavedRotations(EfiCallContext* ctx, aMatrix* M)
    : m_M(M), m_room(sweeps_at_once * M->m_cols),
      m_cosines_and_sines(Efi::uncleared_doubles(ctx, 2 * std::uint64_t{m_room})),
      m_strip(Efi::uncleared_doubles(ctx, strip_rows * std::uint64_t{M->m_cols})),
      m_sequences(static_cast<Sequence*>(ctx->m_arena->allocate_uncleared(most_sequences * sizeof(Sequence))))
{
}

void SavedRotations::begin(std::size_t left, std::size_t right, bool neighbours, std::size_t most)
{
    if (m_count == most_sequences || m_used + most > m_room)
        apply();
    m_sequences[m_count++] = {.m_left = static_cast<std::uint32_t>(left),
                              .m_right = static_cast<std::uint32_t>(right),
                              .m_count = 0,
                              .m_neighbours = neighbours};
}

void SavedRotations::apply()
{
    if (m_used > 0)
        at_level(apply_baseline, apply_avx2)({.m_M = m_M,
                                              .m_sequences = m_sequences,
                                              .m_count = m_count,
                                              .m_cosines_and_sines = m_cosines_and_sines,
                                              .m_strip = m_strip});
    m_used = 0;
    m_count = 0;
}

} // namespace native
