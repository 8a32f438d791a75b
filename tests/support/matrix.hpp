#pragma once

#include "efiutl/columns.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

#include <bit>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <vector>

namespace support {

/// A matrix that owns its elements, for tests. Between its columns stand traps when the leading dimension leaves room.
class Matrix {
public:
    static constexpr double trap = 1e300;
    using Rows = std::initializer_list<std::initializer_list<double>>;

    Matrix() = default;
    Matrix(std::uint32_t rows, std::uint32_t cols, std::uint32_t ld)
        : m_rows(rows), m_cols(cols), m_ld(ld), m_re(std::size_t{ld} * cols, trap)
    {
    }
    Matrix(std::uint32_t rows, std::uint32_t cols) : Matrix(rows, cols, rows) {}

    /// Real, row by row.
    Matrix(Rows rows) // NOLINT(google-explicit-constructor): tables read better
        : Matrix(static_cast<std::uint32_t>(rows.size()),
                 rows.size() == 0 ? 0 : static_cast<std::uint32_t>(rows.begin()->size()))
    {
        fill(m_re, rows);
    }
    /// Complex: real and imaginary parts row by row.
    static Matrix complex(Rows real, Rows imaginary)
    {
        Matrix A(real);
        A.make_complex();
        A.fill(A.m_im, imaginary);
        return A;
    }

    std::uint32_t rows() const { return m_rows; }
    std::uint32_t cols() const { return m_cols; }
    bool is_complex() const { return !m_im.empty(); }
    double& re(std::size_t i, std::size_t j) { return m_re[i + j * m_ld]; }
    double& im(std::size_t i, std::size_t j) { return m_im[i + j * m_ld]; }
    void make_complex() { m_im.assign(m_re.size(), 0.0); }

    /// A record over the elements, which is how routines see a host's matrix.
    aMatrix record()
    {
        return {.m_anr = m_ld,
                .m_tag = aMatrix::tag,
                .m_rows = m_rows,
                .m_cols = m_cols,
                .m_rv = m_re.data(),
                .m_iv = is_complex() ? m_im.data() : nullptr};
    }

    /// Everything there is to see of the elements, traps included: equal bits or not.
    std::vector<std::uint64_t> bits() const
    {
        std::vector<std::uint64_t> all;
        for (const std::vector<double>* part : {&m_re, &m_im})
            for (const double x : *part)
                all.push_back(std::bit_cast<std::uint64_t>(x));
        return all;
    }

private:
    void fill(std::vector<double>& part, Rows rows)
    {
        std::size_t i = 0;
        for (const auto& row : rows) {
            std::size_t j = 0;
            for (const double x : row)
                part[i + j++ * m_ld] = x;
            ++i;
        }
    }

    std::uint32_t m_rows = 0;
    std::uint32_t m_cols = 0;
    std::uint32_t m_ld = 0;
    std::vector<double> m_re;
    std::vector<double> m_im;
};

/// The elements column by column, of a packed record or as one would hold them.
inline std::vector<double> real(const aMatrix* A)
{
    return {A->m_rv, A->m_rv + std::size_t{A->m_rows} * A->m_cols};
}

inline std::vector<double> real(Matrix A)
{
    const aMatrix record = A.record();
    return real(&record);
}

inline std::vector<double> imaginary(const aMatrix* A)
{
    return A->m_iv == nullptr ? std::vector<double>{}
                              : std::vector<double>{A->m_iv, A->m_iv + std::size_t{A->m_rows} * A->m_cols};
}

inline std::vector<double> imaginary(Matrix A)
{
    const aMatrix record = A.record();
    return imaginary(&record);
}

} // namespace support
