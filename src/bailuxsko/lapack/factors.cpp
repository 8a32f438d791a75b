#include "bailuxsko/lapack/factors.hpp"

#include <algorithm>
#include <type_traits>
#include <utility>

namespace lapack {

namespace {

/// The arrays of a factor in the making, filled from the first element to the last one.
template <class T>
class Factor {
public:
    Factor(std::uint32_t rows, std::uint32_t cols)
        : m_rows(rows), m_cols(cols), m_re(Qud::fresh_numbers(Qud::element_count(rows, cols))),
          m_im(is_complex ? Qud::fresh_numbers(Qud::element_count(rows, cols)) : nullptr)
    {
    }

    /// The next elements, all the same.
    void fill(std::size_t count, double value)
    {
        std::fill_n(m_re.get() + m_filled, count, value);
        if constexpr (is_complex)
            std::fill_n(m_im.get() + m_filled, count, 0.0);
        m_filled += count;
    }

    /// The next elements, from an array of LAPACK's.
    void copy(const T* source, std::size_t count)
    {
        if constexpr (is_complex)
            for (std::size_t k = 0; k < count; ++k) {
                m_re[m_filled + k] = source[k].real();
                m_im[m_filled + k] = source[k].imag();
            }
        else
            std::copy_n(source, count, m_re.get() + m_filled);
        m_filled += count;
    }

    Qud::Handle finish() { return Qud::MatVal::make(m_rows, m_cols, std::move(m_re), std::move(m_im)); }

private:
    static constexpr bool is_complex = std::is_same_v<T, MKL_Complex16>;

    std::uint32_t m_rows;
    std::uint32_t m_cols;
    Qud::FreshNumbers m_re;
    Qud::FreshNumbers m_im;
    std::size_t m_filled = 0;
};

} // namespace

template <class T>
Qud::Handle upper_trapezoid(const T* A, std::size_t ld, std::uint32_t rows, std::uint32_t cols)
{
    Factor<T> U(rows, cols);
    for (std::size_t j = 0; j < cols; ++j) {
        const std::size_t above = std::min<std::size_t>(j + 1, rows);
        U.copy(A + j * ld, above);
        U.fill(rows - above, 0.0);
    }
    return U.finish();
}

template <class T>
Qud::Handle unit_lower_trapezoid(const T* A, std::size_t ld, std::uint32_t rows, std::uint32_t cols)
{
    Factor<T> L(rows, cols);
    for (std::size_t j = 0; j < cols; ++j) {
        L.fill(j, 0.0);
        L.fill(1, 1.0);
        L.copy(A + j * ld + j + 1, rows - j - 1);
    }
    return L.finish();
}

template <class T>
Qud::Handle whole_square(const T* A, std::uint32_t n)
{
    Factor<T> Q(n, n);
    Q.copy(A, std::size_t{n} * n);
    return Q.finish();
}

template Qud::Handle upper_trapezoid(const double*, std::size_t, std::uint32_t, std::uint32_t);
template Qud::Handle upper_trapezoid(const MKL_Complex16*, std::size_t, std::uint32_t, std::uint32_t);
template Qud::Handle unit_lower_trapezoid(const double*, std::size_t, std::uint32_t, std::uint32_t);
template Qud::Handle unit_lower_trapezoid(const MKL_Complex16*, std::size_t, std::uint32_t, std::uint32_t);
template Qud::Handle whole_square(const double*, std::uint32_t);
template Qud::Handle whole_square(const MKL_Complex16*, std::uint32_t);

Qud::Handle nested_column(std::initializer_list<Qud::Handle> factors)
{
    Qud::MatBuilder column(static_cast<std::uint32_t>(factors.size()), 1);
    std::size_t i = 0;
    for (const Qud::Handle& factor : factors)
        column.set(i++, 0, factor);
    return column.finish();
}

} // namespace lapack
