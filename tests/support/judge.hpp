#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <map>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace support {

/// What a ratio was measured on.
struct Measured {
    const char* function; ///< worksheet function or native routine
    const char* residual; ///< what the ratio is of
    const char* kind;     ///< of matrices
    std::size_t n;
};

/// The worst ratio of every function and residual, written to the file that WORST_RATIOS names when the program ends,
/// one a line: function, residual, ratio, kind, n, bound, and the worst of large matrices or -1.
class WorstRatios {
public:
    static WorstRatios& instance()
    {
        static WorstRatios all;
        return all;
    }

    void record(const Measured& measured, double ratio, double bound)
    {
        const auto [found, is_first] = m_worst.try_emplace({measured.function, measured.residual});
        Worst& worst = found->second;
        if (is_first || ratio > worst.ratio) {
            worst.ratio = ratio;
            worst.kind = measured.kind;
            worst.n = measured.n;
            worst.bound = bound;
        }
        if (measured.n >= large)
            worst.of_large = std::max(worst.of_large, ratio);
    }

private:
    static constexpr std::size_t large = 100;
    struct Worst {
        double ratio = 0.0;
        std::string kind{};
        std::size_t n = 0;
        double bound = 0.0;
        double of_large = -1.0;
    };

    WorstRatios() = default;
    ~WorstRatios()
    {
        const char* const file = std::getenv("WORST_RATIOS");
        if (file == nullptr)
            return;
        std::ofstream out(file);
        for (const auto& [key, worst] : m_worst)
            out << key.first << '\t' << key.second << '\t' << worst.ratio << '\t' << worst.kind << '\t' << worst.n
                << '\t' << worst.bound << '\t' << worst.of_large << '\n';
    }

    std::map<std::pair<std::string, std::string>, Worst> m_worst;
};

inline constexpr double usual_bound = 30.0;

/// Expects the ratio to be below the bound, and remembers the worst.
inline void judge(const Measured& measured, double ratio, double bound = usual_bound)
{
    WorstRatios::instance().record(measured, ratio, bound);
    EXPECT_LT(ratio, bound) << measured.function << ", " << measured.residual << ": " << measured.kind
                            << ", n = " << measured.n;
}

} // namespace support
