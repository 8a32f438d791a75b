#include "bailuxsko/frame/guard.hpp"

#include "bailuxsko/frame/call.hpp"

#include <gtest/gtest.h>

#include <cfenv>
#include <limits>
#include <vector>

namespace {

namespace fp = Efi::fp;

/// Opaque operands: the compiler must divide and multiply at run time.
volatile double zero = 0.0;
volatile double one = 1.0;
volatile double three = 3.0;
volatile double huge = std::numeric_limits<double>::max();
volatile double tiny = std::numeric_limits<double>::min();
volatile double not_a_number = std::numeric_limits<double>::quiet_NaN();

std::uint32_t masks()
{
    std::uint32_t current = 0;
    fp::_controlfp_s(&current, 0, 0);
    return current;
}

/// Puts the thread's masks and flags back when a test goes.
struct KeepEnvironment {
    std::uint32_t before = masks();
    ~KeepEnvironment()
    {
        std::uint32_t ignored = 0;
        fp::_clearfp();
        fp::_controlfp_s(&ignored, before, fp::exception_masks);
    }
};

// Workers of the shape (context, number): each returns something and raises the flag that its name says.
double overflows(EfiCallContext*, double x)
{
    return huge * huge * x;
}
double divides_by_zero(EfiCallContext*, double x)
{
    return x / zero;
}
double is_invalid(EfiCallContext*, double x)
{
    return x * (zero / zero);
}
double compares_nan(EfiCallContext*, double x)
{
    return not_a_number < x ? 1.0 : 2.0;
}
double is_inexact(EfiCallContext*, double x)
{
    return x / three;
}
double underflows(EfiCallContext*, double x)
{
    return x * tiny * tiny;
}
double reads_denormal(EfiCallContext*, double x)
{
    volatile double denormal = std::numeric_limits<double>::denorm_min();
    return denormal + x;
}
double equals_nan(EfiCallContext*, double x)
{
    return not_a_number == x ? 1.0 : 2.0;
}
double clean(EfiCallContext*, double x)
{
    return x + one;
}

struct Case {
    const char* name;
    double (*worker)(EfiCallContext*, double);
    std::uint32_t faults;
};

const Case cases[] = {
    {.name = "overflow", .worker = overflows, .faults = 0x4},
    {.name = "division by zero", .worker = divides_by_zero, .faults = 0x8},
    {.name = "invalid operation", .worker = is_invalid, .faults = 0x10},
    {.name = "ordered comparison with a NaN", .worker = compares_nan, .faults = 0x10},
    {.name = "inexact result", .worker = is_inexact, .faults = 0},
    {.name = "underflow", .worker = underflows, .faults = 0},
    {.name = "denormal operand", .worker = reads_denormal, .faults = 0},
    {.name = "equality with a NaN", .worker = equals_nan, .faults = 0},
    {.name = "no flag", .worker = clean, .faults = 0},
};

TEST(Guard, KeepsOverflowZeroDivideAndInvalidOnly)
{
    const KeepEnvironment keep;
    EfiCallContext context;
    for (const Case& c : cases) {
        double result = 0.0;
        EXPECT_EQ((Efi::native_call2<double, EfiCallContext*, double>(result, c.worker, &context, 1.0)), c.faults)
            << c.name;
    }
}

TEST(Guard, ClearsTheFlagsBeforeAndAfter)
{
    const KeepEnvironment keep;
    EfiCallContext context;
    volatile double left = divides_by_zero(&context, 1.0); // a flag left by a call outside the guard
    double result = left;
    ASSERT_NE(fp::_statusfp() & fp::zero_divide, 0U);
    EXPECT_EQ((Efi::native_call2<double, EfiCallContext*, double>(result, clean, &context, 1.0)), 0U);
    EXPECT_EQ((Efi::native_call2<double, EfiCallContext*, double>(result, overflows, &context, 1.0)), 0x4U);
    EXPECT_EQ(fp::_statusfp(), 0U) << "inexact and overflow are gone";
}

/// Sets all six masks to the given pattern, then optionally faults.
std::uint32_t masks_of_worker = 0;
double changes_masks(EfiCallContext*, double x)
{
    std::uint32_t ignored = 0;
    fp::_controlfp_s(&ignored, masks_of_worker, fp::exception_masks);
    return x;
}
double changes_masks_and_faults(EfiCallContext* context, double x)
{
    const double result = divides_by_zero(context, x);
    return changes_masks(context, result);
}

TEST(Guard, RestoresTheMasksWhateverTheWorkerSet)
{
    const KeepEnvironment keep;
    EfiCallContext context;
    double result = 0.0;
    // Every pattern, from and to: no operation runs while an exception is unmasked, so nothing traps.
    for (std::uint32_t pattern = 0; pattern < 64; ++pattern) {
        masks_of_worker = (pattern & 0x1F) | ((pattern & 0x20) != 0 ? fp::denormal : 0U);
        const std::uint32_t before = masks();
        EXPECT_EQ((Efi::native_call2<double, EfiCallContext*, double>(result, changes_masks, &context, 1.0)), 0U);
        EXPECT_EQ(masks(), before) << pattern;
    }
    masks_of_worker = fp::inexact | fp::underflow | fp::zero_divide | fp::denormal | fp::invalid;
    const std::uint32_t before = masks();
    EXPECT_EQ((Efi::native_call2<double, EfiCallContext*, double>(result, changes_masks_and_faults, &context, 1.0)),
              0x8U);
    EXPECT_EQ(masks(), before);
}

TEST(Guard, KeepsTheCallersOwnMasks)
{
    const KeepEnvironment keep;
    EfiCallContext context;
    std::uint32_t current = 0;
    fp::_controlfp_s(&current, 0, fp::underflow); // the caller wants underflow to trap
    ASSERT_EQ(current & fp::underflow, 0U);
    masks_of_worker = fp::exception_masks;
    double result = 0.0;
    EXPECT_EQ((Efi::native_call2<double, EfiCallContext*, double>(result, changes_masks, &context, 1.0)), 0U);
    EXPECT_EQ(masks(), fp::exception_masks & ~fp::underflow);
}

double raises_after_changing_masks(EfiCallContext* context, double x)
{
    changes_masks(context, x);
    Efi::Throw("domain error", 1);
}

TEST(Guard, AnErrorInsideTheWorkerSkipsTheRestore)
{
    const KeepEnvironment keep;
    EfiCallContext context;
    masks_of_worker = fp::exception_masks & ~fp::underflow;
    double result = 5.0;
    EXPECT_THROW((Efi::native_call2<double, EfiCallContext*, double>(result, raises_after_changing_masks, &context, 1)),
                 Efi::NativeError);
    EXPECT_EQ(masks(), masks_of_worker);
    EXPECT_EQ(result, 5.0);
}

aComplex* ends_and_faults(EfiCallContext* context, double x)
{
    auto* const result = static_cast<aComplex*>(context->m_arena->carve(sizeof(aComplex)));
    *result = {.m_re = divides_by_zero(context, x), .m_im = 0.0};
    return result;
}

TEST(Guard, AFaultDropsAFinishedResult)
{
    const KeepEnvironment keep;
    try {
        Efi::in_call([](Efi::Call& call) { return call.dv(call.guarded(ends_and_faults, 1.0)); });
        FAIL() << "a result came back";
    } catch (const Evl::Run::AppException& error) {
        EXPECT_EQ(error.message(), "floating point exception");
        EXPECT_EQ(error.index(), 0);
    }
}

TEST(Guard, StatusAndMasksAgreeWithTheCLibrary)
{
    const KeepEnvironment keep;
    EfiCallContext context;
    std::feclearexcept(FE_ALL_EXCEPT);
    EXPECT_EQ(fp::_statusfp(), 0U);
    volatile double result = is_invalid(&context, 1.0);
    EXPECT_EQ(fp::_statusfp(), 0x10U);
    EXPECT_EQ(std::fetestexcept(FE_ALL_EXCEPT & ~FE_INEXACT), FE_INVALID);
    result = underflows(&context, result == 0.0 ? result : 1.0);
    EXPECT_EQ(fp::_clearfp(), 0x13U);
    EXPECT_EQ(std::fetestexcept(FE_ALL_EXCEPT), 0);
    EXPECT_EQ(masks(), fp::exception_masks) << "a fresh thread has every exception masked";
}

// Three and four parameters go the same way.
aMatrix* scaled(EfiCallContext* context, aMatrix* A, double factor)
{
    double* const result = Efi::doubles(context, 1);
    result[0] = A->m_rv[0] * factor;
    return aMatrix::mk(context->m_arena, 1, 1, result, nullptr);
}
aMatrix* scaled_if(EfiCallContext* context, aMatrix* A, int factor, bool wanted)
{
    return scaled(context, A, wanted ? factor : 1.0);
}

TEST(Guard, HasInstancesForThreeAndFourParameters)
{
    EfiCallContext context;
    double seven = 7.0;
    aMatrix A{1, aMatrix::tag, 1, 1, &seven, nullptr};
    aMatrix* result = nullptr;
    EXPECT_EQ((Efi::native_call3<aMatrix*, EfiCallContext*, aMatrix*, double>(result, scaled, &context, &A, 2.0)), 0U);
    EXPECT_EQ(result->m_rv[0], 14.0);
    EXPECT_EQ(
        (Efi::native_call4<aMatrix*, EfiCallContext*, aMatrix*, int, bool>(result, scaled_if, &context, &A, 3, true)),
        0U);
    EXPECT_EQ(result->m_rv[0], 21.0);
}

} // namespace
