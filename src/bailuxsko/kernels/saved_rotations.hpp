#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

#include <cstddef>
#include <cstdint>

namespace native {

/// Plane rotations of the columns of a matrix, saved up and applied in their order to a strip of rows at a time: rows
/// are independent of each other, and a strip stays in cache over many rotations. Takes no memory once it is made.
class BAILUXSKO_API SavedRotations {
public:
    /// @throws "out of memory" (-1)
    SavedRotations(EfiCallContext* ctx, aMatrix* M);

    /// What follows rotates neighbours: columns l and l + 1, then l + 1 and l + 2, ..., at most `most` times.
    void begin_neighbours(std::size_t l, std::size_t most) { begin(l, l + 1, true, most); }
    /// What follows rotates one column with columns l, l + 1, ..., at most `most` times.
    void begin_one_with(std::size_t one, std::size_t l, std::size_t most) { begin(one, l, false, most); }

    /// x * c + z * s and z * c - x * s for the columns x and z whose turn it is.
    void rotate(double c, double s)
    {
        double* const next = m_cosines_and_sines + 2 * m_used++;
        next[0] = c;
        next[1] = s;
        ++m_sequences[m_count - 1].m_count;
    }

    /// Applies what is saved.
    void apply();

    struct Sequence {
        std::uint32_t m_left;
        std::uint32_t m_right;
        std::uint32_t m_count;
        bool m_neighbours;
    };

private:
    static constexpr std::size_t most_sequences = 128;

    void begin(std::size_t left, std::size_t right, bool neighbours, std::size_t most);

    aMatrix* m_M;
    std::size_t m_room; // for rotations
    std::size_t m_used = 0;
    std::size_t m_count = 0; // of sequences
    double* m_cosines_and_sines;
    double* m_strip;
    Sequence* m_sequences;
};

} // namespace native
