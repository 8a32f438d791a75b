#pragma once

#include "bailuxsko/kernels/qr_sweep.hpp"

#include <cmath>
#include <cstddef>
#include <cstdint>

/// The signs of elements that are known to be zero, while their rows are rotated: a bit an element, a byte for the
/// eight columns of a strip, so that a rotation of zeros is a few operations on words.
namespace native {

class ZeroSigns {
public:
    static constexpr std::size_t strips_of_word = 8;

    ZeroSigns() = default;
    /// @param words  room for size(rows, ...) words, all clear: +0 throughout
    ZeroSigns(std::uint64_t* words, std::size_t strips_of_R, std::size_t strips_of_Q)
        : m_words(words), m_words_of_R(words_of(strips_of_R)), m_words_of_row(m_words_of_R + words_of(strips_of_Q))
    {
    }
    static std::size_t size(std::size_t rows, std::size_t strips_of_R, std::size_t strips_of_Q)
    {
        return rows * (words_of(strips_of_R) + words_of(strips_of_Q));
    }

    bool are_followed() const { return m_words != nullptr; }

    /// Rotates row i with the one above it, in the first strips of R and of Q'. A product of a zero has the sign that
    /// both factors make, a sum of zeros is -0 only if both are, and so is a difference if just the first one is.
    [[gnu::always_inline]] void rotate(Rotation G, std::size_t i, std::size_t strips_of_R,
                                       std::size_t strips_of_Q) const
    {
        const std::uint64_t c = std::signbit(G.c) ? ~std::uint64_t{0} : 0;
        const std::uint64_t s = std::signbit(G.s) ? ~std::uint64_t{0} : 0;
        std::uint64_t* const lower = m_words + i * m_words_of_row;
        std::uint64_t* const upper = lower - m_words_of_row;
        const auto rotate_words = [=](std::size_t first, std::size_t count) {
            for (std::size_t k = first; k < first + count; ++k) {
                const std::uint64_t u = upper[k];
                const std::uint64_t w = lower[k];
                upper[k] = (u ^ c) & (w ^ s);
                lower[k] = (w ^ c) & ~(u ^ s);
            }
        };
        rotate_words(0, words_of(strips_of_R));
        rotate_words(m_words_of_R, words_of(strips_of_Q));
    }

    /// The zeros of a row of R's strip t, or of that of Q'.
    void write_R(std::size_t i, std::size_t t, double* zeros) const { write(i, 0, t, zeros); }
    void write_Q(std::size_t i, std::size_t t, double* zeros) const { write(i, m_words_of_R, t, zeros); }

    /// Takes over the signs of a row of R's strip t.
    void read_R(std::size_t i, std::size_t t, const double* zeros) const
    {
        std::uint64_t signs = 0;
        for (std::size_t j = 0; j < 8; ++j)
            signs |= std::uint64_t{std::signbit(zeros[j])} << j;
        std::uint64_t& word = m_words[i * m_words_of_row + t / strips_of_word];
        word = (word & ~(std::uint64_t{0xFF} << shift(t))) | signs << shift(t);
    }

private:
    static std::size_t words_of(std::size_t strips) { return (strips + strips_of_word - 1) / strips_of_word; }
    static std::size_t shift(std::size_t t) { return t % strips_of_word * 8; }

    void write(std::size_t i, std::size_t first_word, std::size_t t, double* zeros) const
    {
        const std::uint64_t word = m_words[i * m_words_of_row + first_word + t / strips_of_word];
        for (std::size_t j = 0; j < 8; ++j)
            zeros[j] = (word >> (shift(t) + j) & 1) != 0 ? -0.0 : 0.0;
    }

    std::uint64_t* m_words = nullptr;
    std::size_t m_words_of_R = 0;
    std::size_t m_words_of_row = 0;
};

} // namespace native
