#pragma once

#include "bailuxsko/frame/floating_point.hpp"

#include <cstdint>

namespace Efi {

/// The faults that the guard reports. Inexact results, underflow and denormals are nobody's error.
inline constexpr std::uint32_t guarded_faults = fp::overflow | fp::zero_divide | fp::invalid;

/// Calls a worker between two looks at the floating-point status: clears the flags, keeps the exception masks, calls,
/// reads the flags, clears them again and puts the masks back. Returns the faults that happened, zero for none.
/// Catches nothing: an error raised inside the worker leaves at once, and masks and flags stay as the worker left them.
template <class Result, class... Parameters>
std::uint32_t native_call(Result& result, Result (*worker)(Parameters...), Parameters... arguments)
{
    // The compiler must not see through the call: it would move arithmetic across the register accesses.
    asm volatile("" : "+r"(worker) : : "memory");
    const std::uint32_t control = fp::begin();
    result = worker(arguments...);
    const std::uint32_t faults = fp::end(control) & guarded_faults;
    return faults;
}

template <class Result, class Context, class A>
std::uint32_t native_call2(Result& result, Result (*worker)(Context, A), Context context, A a)
{
    return native_call<Result, Context, A>(result, worker, context, a);
}

template <class Result, class Context, class A, class B>
std::uint32_t native_call3(Result& result, Result (*worker)(Context, A, B), Context context, A a, B b)
{
    return native_call<Result, Context, A, B>(result, worker, context, a, b);
}

template <class Result, class Context, class A, class B, class C>
std::uint32_t native_call4(Result& result, Result (*worker)(Context, A, B, C), Context context, A a, B b, C c)
{
    return native_call<Result, Context, A, B, C>(result, worker, context, a, b, c);
}

} // namespace Efi
