#pragma once

#include "bailuxhost/matval.hpp"
#include "bailuxhost/value.hpp"
#include "tests/support/matrix.hpp"

#include <bit>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

/// Host values for tests, and what there is to see of them.
namespace support {

using Numbers = std::initializer_list<std::initializer_list<double>>;

/// Real, row by row, of one unit; with imaginary parts when they are given.
inline Qud::Handle matrix(Numbers real, const Qud::Dim& unit = Qud::Dim::identity, Numbers imaginary = {})
{
    const auto rows = static_cast<std::uint32_t>(real.size());
    const std::uint32_t cols = rows == 0 ? 0 : static_cast<std::uint32_t>(real.begin()->size());
    const auto array = [&](Numbers numbers) {
        Qud::FreshNumbers elements = Qud::fresh_numbers(std::size_t{rows} * cols);
        std::size_t i = 0;
        for (const auto& row : numbers) {
            std::size_t j = 0;
            for (const double x : row)
                elements[i + j++ * rows] = x;
            ++i;
        }
        return elements;
    };
    Qud::SharedNumbers re = array(real);
    return Qud::MatVal::make(rows, cols, re, imaginary.size() == 0 ? nullptr : Qud::SharedNumbers(array(imaginary)),
                             unit);
}

/// The same elements as the test's own matrix has.
inline Qud::Handle value_of(Matrix A)
{
    const auto array = [&](double& (Matrix::*element)(std::size_t, std::size_t)) {
        Qud::FreshNumbers numbers = Qud::fresh_numbers(std::size_t{A.rows()} * A.cols());
        std::size_t k = 0;
        for (std::size_t j = 0; j < A.cols(); ++j)
            for (std::size_t i = 0; i < A.rows(); ++i)
                numbers[k++] = (A.*element)(i, j);
        return numbers;
    };
    Qud::SharedNumbers re = array(&Matrix::re);
    return Qud::MatVal::make(A.rows(), A.cols(), re, A.is_complex() ? Qud::SharedNumbers(array(&Matrix::im)) : nullptr);
}

/// Numbers without pattern between -0.5 and 0.5, the same every time; with imaginary parts when asked for.
inline Qud::Handle scattered(std::uint32_t rows, std::uint32_t cols, bool complex = false)
{
    std::uint64_t state = 88172645463325252U; // Marsaglia's xorshift
    const auto numbers = [&] {
        Qud::FreshNumbers array = Qud::fresh_numbers(std::size_t{rows} * cols);
        for (std::size_t k = 0; k < std::size_t{rows} * cols; ++k) {
            state ^= state << 13;
            state ^= state >> 7;
            state ^= state << 17;
            array[k] = static_cast<double>(state >> 11) / 9007199254740992.0 - 0.5;
        }
        return array;
    };
    Qud::SharedNumbers real = numbers();
    return Qud::MatVal::make(rows, cols, real, complex ? Qud::SharedNumbers(numbers()) : nullptr);
}

inline Qud::Handle number(double re, double im = 0.0, const Qud::Dim& unit = Qud::Dim::identity)
{
    return Qud::NumVal::make(re, im, unit);
}

inline Qud::Handle text(std::string characters)
{
    return Qud::StrVal::make(std::move(characters));
}

/// The bits of every element column by column, real parts first, then imaginary ones where there is an array.
inline std::vector<std::uint64_t> bits(const Qud::Handle& value)
{
    std::vector<std::uint64_t> all;
    const Qud::MatVal& M = *Qud::matrix_of(value);
    for (const bool imaginary : {false, true}) {
        if (imaginary && !M.HasImag())
            continue;
        for (std::size_t j = 0; j < M.Cols(); ++j)
            for (std::size_t i = 0; i < M.Rows(); ++i)
                all.push_back(std::bit_cast<std::uint64_t>(imaginary ? M.imag(i, j) : M.real(i, j)));
    }
    return all;
}

} // namespace support
