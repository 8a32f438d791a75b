#pragma once

#include "bailuxhost/matval.hpp"

#include <cstddef>
#include <span>

namespace Efi {

/// How many sums run side by side. Number k of a sample goes to lane k mod 8, however the sample is split into
/// arguments and columns, and the lanes are added up in ascending order: a sum has the same bits on every processor.
inline constexpr std::size_t lane_count = 8;

/// One sum in lanes.
struct Lanes {
    double lane[lane_count]{};

    double total() const noexcept
    {
        double sum = 0.0;
        for (const double x : lane)
            sum += x;
        return sum;
    }
};

/// Numbers that follow one another in memory.
struct Run {
    const double* re;
    const double* im; ///< null: all 0
    std::size_t count;
};

/// Hands the numbers of values (numbers and matrices) in their order to take(run). All runs but the last hold whole
/// rounds of lanes: what is left over of one column is filled up from the next.
/// @tparam is_complex  whether imaginary parts are wanted
template <bool is_complex, class Take>
class Rounds {
public:
    explicit Rounds(Take take) : m_take(take) {}

    void add_all(std::span<const Qud::Handle> values)
    {
        for (const Qud::Handle& value : values) {
            if (const Qud::NumVal* const number = Qud::as_number(value)) {
                const double re = number->re();
                const double im = number->im();
                add({.re = &re, .im = is_complex ? &im : nullptr, .count = 1});
            } else {
                add(*Qud::matrix_of(value));
            }
        }
        if (m_held > 0)
            flush();
    }

private:
    void add(const Qud::MatVal& M)
    {
        const bool is_packed = M.Anr() == M.Rows();
        const std::size_t columns = is_packed ? (M.Cols() > 0 ? 1 : 0) : M.Cols();
        for (std::size_t j = 0; j < columns; ++j)
            add({.re = M.m_rarr + M.storage_index(0, j),
                 .im = is_complex && M.HasImag() ? M.m_iarr + M.storage_index(0, j) : nullptr,
                 .count = is_packed ? M.count() : M.Rows()});
    }

    void add(Run run)
    {
        while (run.count > 0 && m_held > 0)
            hold_first_of(run);
        if (const std::size_t whole = run.count - run.count % lane_count; whole > 0) {
            m_take({.re = run.re, .im = run.im, .count = whole});
            run = after(run, whole);
        }
        while (run.count > 0)
            hold_first_of(run);
    }

    static Run after(const Run& run, std::size_t count)
    {
        return {.re = run.re + count, .im = run.im ? run.im + count : nullptr, .count = run.count - count};
    }

    void hold_first_of(Run& run)
    {
        m_re[m_held] = *run.re;
        m_im[m_held] = run.im ? *run.im : 0.0;
        run = after(run, 1);
        if (++m_held == lane_count)
            flush();
    }

    void flush()
    {
        m_take({.re = m_re, .im = is_complex ? m_im : nullptr, .count = m_held});
        m_held = 0;
    }

    Take m_take;
    std::size_t m_held = 0;
    double m_re[lane_count] = {};
    double m_im[lane_count] = {};
};

/// Calls sums.add(k, re, im) for every number, where k is its lane, and returns the sums.
template <bool is_complex, class Sums>
Sums summed(std::span<const Qud::Handle> values, Sums sums)
{
    const auto take = [&](const Run& run) {
        Sums local = sums; // so that the lanes can stay in registers
        const std::size_t whole = run.count - run.count % lane_count;
        for (std::size_t i = 0; i < whole; i += lane_count)
            for (std::size_t k = 0; k < lane_count; ++k)
                local.add(k, run.re[i + k], is_complex && run.im ? run.im[i + k] : 0.0);
        for (std::size_t k = 0; k < run.count - whole; ++k)
            local.add(k, run.re[whole + k], is_complex && run.im ? run.im[whole + k] : 0.0);
        sums = local;
    };
    Rounds<is_complex, decltype(take)>(take).add_all(values);
    return sums;
}

} // namespace Efi
