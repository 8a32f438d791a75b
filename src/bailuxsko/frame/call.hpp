#pragma once

#include "bailuxhost/error.hpp"
#include "bailuxhost/marshal.hpp"
#include "bailuxhost/matval.hpp"
#include "bailuxsko/frame/error_checks.hpp"
#include "bailuxsko/frame/guard.hpp"
#include "efiutl/context.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <exception>
#include <type_traits>

namespace Efi {

/// One call of an entry operation: its context, and the words in which entry operations are written.
class BAILUXSKO_API Call {
public:
    EfiCallContext* context() noexcept { return &m_context; }

    /// @throws "must be real matrix" (index)
    const Qud::MatVal& asRealMatrix(const Qud::Handle& value, int index) const
    {
        return Qud::DimVal::asRealMatrix(value, index);
    }
    /// @throws "must be scalar matrix" (index)
    const Qud::MatVal& asScalarMatrix(const Qud::Handle& value, int index) const
    {
        return Error::as_scalar_matrix(value, index);
    }

    /// The matrix as a worker's argument: a record of this call that points into the host's arrays.
    aMatrix* view(const Qud::MatVal& M);

    /// What the worker returns for these arguments. @throws "floating point exception" (0), and what the worker raises
    template <class Result, class... Parameters>
    Result guarded(Result (*worker)(EfiCallContext*, Parameters...), std::type_identity_t<Parameters>... arguments)
    {
        Result result{};
        const std::uint32_t faults =
            native_call<Result, EfiCallContext*, Parameters...>(result, worker, &m_context, arguments...);
        if (faults != 0)
            Throw(msg::floating_point_exception, 0);
        return result;
    }

    /// A native result (record, aComplex, Anyval) as a host value with the given unit.
    template <class Record>
    Qud::Handle dv(const Record* result, const Qud::Dim& unit = Qud::Dim::identity)
    {
        return EfiMarshal::UnMarshal(m_context.m_arena, result, unit);
    }

private:
    EfiCallContext m_context;
};

namespace detail {

/// What the exception in flight becomes for the host: its own errors stay, a native error and whatever else there is
/// get the host's form. Made while the call's context is still there, raised when it is gone.
BAILUXSKO_API std::exception_ptr host_error_of_current_exception() noexcept;

} // namespace detail

/// Runs the body of an entry operation that uses native routines. The call's context, and with it all memory of the
/// call, is gone before the host sees an error; nothing but the host's own error type gets out.
template <class Body>
auto in_call(Body&& body) -> std::invoke_result_t<Body&, Call&>
{
    std::exception_ptr error;
    {
        Call call;
        try {
            return body(call);
        } catch (...) {
            error = detail::host_error_of_current_exception();
        }
    }
    std::rethrow_exception(error);
}

/// The same for an entry operation that needs no native memory.
template <class Body>
auto in_host_call(Body&& body) -> std::invoke_result_t<Body&>
{
    try {
        return body();
    } catch (const Evl::Run::AppException&) {
        throw;
    } catch (...) {
        std::rethrow_exception(detail::host_error_of_current_exception());
    }
}

} // namespace Efi
