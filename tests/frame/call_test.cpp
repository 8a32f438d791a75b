#include "bailuxsko/frame/call.hpp"

#include "efiutl/arena_testing.hpp"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using Qud::Handle;

/// An error as the host sees it, and the arenas alive at the moment when it does.
struct Seen {
    std::string message;
    int index = 1000;
    Efi::LiveArenas live{-1, -1};
};

/// Listens where the host would: the destructor of a value that the failing body holds runs before, the handler after.
template <class Body>
Seen error_of(Body body)
{
    Seen seen;
    try {
        Efi::in_call(body);
        seen.message = "no error";
    } catch (const Evl::Run::AppException& error) {
        seen = {.message = error.message(), .index = error.index(), .live = Efi::live_arenas()};
    }
    return seen;
}

constexpr Efi::LiveArenas nothing{0, 0};

double raises(EfiCallContext* context, double)
{
    Efi::doubles(context, 1'000'000); // a block beyond the first, to be given back
    Efi::Throw("domain error", 1);
}

double divides(EfiCallContext*, double x)
{
    volatile double zero = 0.0;
    return x / zero;
}

TEST(Call, IsGoneBeforeTheHostSeesAnErrorOfTheWorker)
{
    const Seen seen = error_of([](Efi::Call& call) {
        call.guarded(raises, 1.0);
        return Handle();
    });
    EXPECT_EQ(seen.message, "domain error");
    EXPECT_EQ(seen.index, 1);
    EXPECT_EQ(seen.live, nothing);
}

TEST(Call, IsGoneBeforeTheHostSeesAFaultOfTheGuard)
{
    const Seen seen = error_of([](Efi::Call& call) {
        call.guarded(divides, 1.0);
        return Handle();
    });
    EXPECT_EQ(seen.message, "floating point exception");
    EXPECT_EQ(seen.index, 0);
    EXPECT_EQ(seen.live, nothing);
}

TEST(Call, IsGoneBeforeTheHostSeesAnErrorOfMarshalling)
{
    const Seen seen = error_of([](Efi::Call& call) {
        // A record whose arrays no memory could hold.
        const aMatrix* const absurd = aMatrix::mk(call.context()->m_arena, ~0U, ~0U, nullptr, nullptr);
        return call.dv(absurd);
    });
    EXPECT_EQ(seen.message, "out of memory");
    EXPECT_EQ(seen.index, -1);
    EXPECT_EQ(seen.live, nothing);
}

TEST(Call, IsGoneBeforeTheHostSeesARefusedArgument)
{
    const Seen seen = error_of([](Efi::Call& call) {
        call.asRealMatrix(Qud::StrVal::make("text"), 2);
        return Handle();
    });
    EXPECT_EQ(seen.message, "must be real matrix");
    EXPECT_EQ(seen.index, 2);
    EXPECT_EQ(seen.live, nothing);
}

TEST(Call, LetsNothingButTheHostsErrorOut)
{
    EXPECT_EQ(error_of([](Efi::Call&) -> Handle { throw std::bad_alloc(); }).message, "out of memory");
    EXPECT_EQ(error_of([](Efi::Call&) -> Handle { throw std::length_error("too long"); }).message, "out of memory");
    EXPECT_EQ(error_of([](Efi::Call&) -> Handle { throw std::runtime_error("odd"); }).message, "unknown error");
    EXPECT_EQ(error_of([](Efi::Call&) -> Handle { throw 7; }).message, "unknown error");
}

/// The host's own error with more to it: it must come out as the object that went in.
class LocatedError final : public Evl::Run::AppException {
public:
    LocatedError() : AppException("located", 4, "row 2") {}
    int column = 12;
};

TEST(Call, HandsTheHostsOwnErrorsThroughWhole)
{
    const auto located = [](auto&&...) -> Handle { throw LocatedError(); };
    for (const bool native : {true, false}) {
        try {
            native ? Efi::in_call(located) : Efi::in_host_call(located);
            FAIL();
        } catch (const LocatedError& error) {
            EXPECT_EQ(error.column, 12);
            EXPECT_EQ(error.detail(), "row 2");
        }
    }
}

TEST(Call, ConvertsErrorsOfOperationsWithoutNativeMemoryToo)
{
    try {
        Efi::in_host_call([]() -> Handle { Efi::Throw("invalid dimension", -1); });
        FAIL();
    } catch (const Evl::Run::AppException& error) {
        EXPECT_EQ(error.message(), "invalid dimension");
        EXPECT_EQ(error.index(), -1);
    }
}

TEST(Call, ViewsPointIntoTheHostsArraysAndLeaveItsRecordAlone)
{
    const Handle whole = Qud::MatVal::make(4, 3, Qud::zero_numbers(12), Qud::zero_numbers(12));
    const Handle block = Qud::matrix_of(whole)->SubMatrix(1, 2, 1, 2);
    const Qud::MatVal& M = *Qud::matrix_of(block);
    Efi::Call call;
    const aMatrix* const view = call.view(M);
    EXPECT_EQ(view->m_rv, M.m_rarr + 5);
    EXPECT_EQ(view->m_iv, M.m_iarr + 5);
    EXPECT_EQ(M.m_rarr, Qud::matrix_of(whole)->m_rarr) << "a block shares its arrays";
    EXPECT_EQ(view->m_anr, 4U);
    EXPECT_EQ(view->m_tag, aMatrix::tag);
    EXPECT_EQ(view->m_rows, 2U);
    EXPECT_EQ(view->m_cols, 2U);
    EXPECT_NE(view, &M.Data);
    EXPECT_EQ(M.Data.m_rv, nullptr);
    EXPECT_EQ(M.Data.m_iv, nullptr);
}

TEST(Call, AViewOfARealMatrixHasNoImaginaryArray)
{
    const Handle whole = Qud::MatVal::make(2, 2, Qud::zero_numbers(4));
    Efi::Call call;
    EXPECT_EQ(call.view(*Qud::matrix_of(whole))->m_iv, nullptr);
}

TEST(Call, ResultsAreCopiedOutOfTheArena)
{
    Handle result;
    {
        Efi::Call call;
        double* const numbers = Efi::doubles(call.context(), 6);
        for (int k = 0; k < 6; ++k)
            numbers[k] = k;
        aMatrix* const record = aMatrix::mk(call.context()->m_arena, 2, 2, numbers, nullptr);
        record->m_anr = 3; // columns 0, 1 and 3, 4 of the array
        result = call.dv(record, Qud::Dim(Qud::Dim::Base::time));
        numbers[0] = 99.0;
    }
    const Qud::MatVal& M = *Qud::matrix_of(result);
    EXPECT_EQ(M.real(0, 0), 0.0);
    EXPECT_EQ(M.real(1, 0), 1.0);
    EXPECT_EQ(M.real(0, 1), 3.0);
    EXPECT_EQ(M.real(1, 1), 4.0);
    EXPECT_FALSE(M.HasImag());
    EXPECT_EQ(M.m_dim.text(), "s");
    EXPECT_EQ(M.Anr(), 2U);
}

TEST(Call, ATaggedResultIsToldApart)
{
    Efi::Call call;
    Anyval number{.m_number = {.m_re = 3.0, .m_im = -4.0}};
    const Handle scalar = call.dv(&number);
    EXPECT_EQ(Qud::as_number(scalar)->im(), -4.0);
    double five = 5.0;
    double six = 6.0;
    Anyval matrix{.m_matrix = {1, aMatrix::tag, 1, 1, &five, &six}};
    const Handle array = call.dv(&matrix);
    EXPECT_EQ(Qud::matrix_of(array)->real(0, 0), 5.0);
    EXPECT_EQ(Qud::matrix_of(array)->imag(0, 0), 6.0);
}

} // namespace
