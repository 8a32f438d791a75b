#include "efiutl/records.hpp"

#include <cstdio>

int main()
{
    double elements[] = {1.0, 2.0, 3.0, 4.0};
    const aMatrix A{.m_anr = 2, .m_tag = aMatrix::tag, .m_rows = 2, .m_cols = 2, .m_rv = elements, .m_iv = nullptr};
    std::printf("%u by %u\n", A.m_rows, A.m_cols);
}
