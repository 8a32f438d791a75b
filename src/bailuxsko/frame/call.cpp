#include "bailuxsko/frame/call.hpp"

#include <new>
#include <stdexcept>

namespace Efi {

aMatrix* Call::view(const Qud::MatVal& M)
{
    auto* const record = static_cast<aMatrix*>(m_context.m_arena->carve(sizeof(aMatrix)));
    return new (record) aMatrix(M.view());
}

namespace detail {

namespace {

/// A message that finds no room on the heap becomes "out of memory", which needs none.
std::exception_ptr host_error(const char* message, int index) noexcept
{
    try {
        Evl::Run::AppException::Raise(message, index);
    } catch (const Evl::Run::AppException&) {
        return std::current_exception();
    } catch (...) {
        return std::make_exception_ptr(Evl::Run::AppException(msg::out_of_memory, -1));
    }
}

} // namespace

std::exception_ptr host_error_of_current_exception() noexcept
{
    try {
        throw;
    } catch (const Evl::Run::AppException&) {
        return std::current_exception();
    } catch (const NativeError& error) {
        return host_error(error.what(), error.index());
    } catch (const std::bad_alloc&) {
        return host_error(msg::out_of_memory, -1);
    } catch (const std::length_error&) {
        return host_error(msg::out_of_memory, -1); // a standard container asked beyond its largest size
    } catch (...) {
        return host_error(msg::unknown_error, -1);
    }
}

} // namespace detail

} // namespace Efi
