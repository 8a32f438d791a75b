#include "bailuxsko/lapack/fortran.hpp"
#include "bailuxsko/lapack/provider.hpp"
#include "efiutl/thread_count.hpp"

#include <cblas.h>
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>

extern "C" [[gnu::weak]] int openblas_get_num_threads();

namespace {

/// Puts the provider's thread count back.
class SameThreadsAfterwards {
public:
    SameThreadsAfterwards() = default;
    ~SameThreadsAfterwards() { lapack::MKL_Set_Num_Threads(m_count); }
    SameThreadsAfterwards(const SameThreadsAfterwards&) = delete;
    SameThreadsAfterwards& operator=(const SameThreadsAfterwards&) = delete;

private:
    int m_count = lapack::MKL_Get_Max_Threads();
};

void expect_provider_threads(int count)
{
    const int told = std::min(count, static_cast<int>(utl::GetNumberOfProcessors()));
    EXPECT_EQ(openblas_get_num_threads ? openblas_get_num_threads() : told, told);
}

TEST(Provider, StartsWithAsManyThreadsAsProcessors)
{
    EXPECT_EQ(lapack::MKL_Get_Max_Threads(), static_cast<int>(utl::GetNumberOfProcessors()));
    expect_provider_threads(lapack::MKL_Get_Max_Threads());
}

TEST(Provider, RemembersTheCountLastSet)
{
    const SameThreadsAfterwards same;
    for (const int count : {1, 3, 4, 2}) {
        lapack::MKL_Set_Num_Threads(count);
        EXPECT_EQ(lapack::MKL_Get_Max_Threads(), count);
        expect_provider_threads(count);
    }
}

TEST(Provider, IgnoresACountBelowOne)
{
    const SameThreadsAfterwards same;
    lapack::MKL_Set_Num_Threads(2);
    lapack::MKL_Set_Num_Threads(0);
    lapack::MKL_Set_Num_Threads(-5);
    EXPECT_EQ(lapack::MKL_Get_Max_Threads(), 2);
    expect_provider_threads(2);
}

TEST(Provider, IsToldAtMostTheNumberOfProcessors)
{
    const SameThreadsAfterwards same;
    lapack::MKL_Set_Num_Threads(std::numeric_limits<int>::max());
    EXPECT_EQ(lapack::MKL_Get_Max_Threads(), std::numeric_limits<int>::max());
    expect_provider_threads(std::numeric_limits<int>::max());
}

TEST(Provider, BlocksAreAlignedAndWritable)
{
    for (const std::size_t bytes : {0U, 1U, 8U, 100U, 4096U, 40000U, 5000000U})
        for (const int alignment : {16, 64, 4096}) {
            void* const block = lapack::MKL_malloc(bytes, alignment);
            ASSERT_NE(block, nullptr);
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % static_cast<unsigned>(std::max(alignment, 64)), 0U);
            std::fill_n(static_cast<char*>(block), bytes + 16, char(0x5A)); // the bytes beyond are the block's too
            lapack::MKL_free(block);
        }
    lapack::MKL_free(nullptr);
}

TEST(Provider, ABlockThatCannotBeHadIsNull)
{
    EXPECT_EQ(lapack::MKL_malloc(~std::size_t{0}, 16), nullptr);
    EXPECT_EQ(lapack::MKL_malloc(std::size_t{1} << 60, 16), nullptr);
}

TEST(Provider, ALargeBlockComesBack)
{
    constexpr std::size_t bytes = 1000000;
    void* const block = lapack::MKL_malloc(bytes, 16);
    lapack::MKL_free(block);
    void* const again = lapack::MKL_malloc(bytes, 16);
    EXPECT_EQ(again, block);
    lapack::MKL_free(again);
}

TEST(Xerbla, AnIllegalArgumentPrintsNothingAndTheProcessGoesOn)
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int n = -1;
    const int one = 1;
    int info = 0;
    int ipiv = 0;
    double x = 1.0;
    lapack::fortran::dgesv_(&n, &one, &x, &one, &ipiv, &x, &one, &info);
    cblas_dgemm(CblasColMajor, CblasNoTrans, CblasNoTrans, -1, 1, 1, 1.0, &x, 1, &x, 1, 0.0, &x, 1);
    cblas_dgemv(static_cast<CBLAS_ORDER>(100), CblasNoTrans, 1, 1, 1.0, &x, 1, &x, 1, 0.0, &x, 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(info, -1);
}

TEST(Xerbla, OursIsTheOneThatTheProviderCalls)
{
    for (const char* const name : {"xerbla_", "cblas_xerbla"}) {
        Dl_info found{};
        ASSERT_NE(dladdr(dlsym(RTLD_DEFAULT, name), &found), 0) << name;
        EXPECT_NE(std::string(found.dli_fname).find("libbailuxsko"), std::string::npos) << found.dli_fname;
    }
}

} // namespace
