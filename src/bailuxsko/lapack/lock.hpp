#pragma once

#include "efiutl/api.hpp"

#include <mutex>

namespace lapack {

/// A critical section that its holder may enter again.
class BAILUXSKO_API Mutex {
public:
    void enter() { m_section.lock(); }
    void leave() noexcept { m_section.unlock(); }
    /// Enters when no other thread is inside; says whether it did.
    bool try_enter() { return m_section.try_lock(); }

private:
    std::recursive_mutex m_section;
};

/// Inside a Mutex from here to the end of the scope.
class Lock {
public:
    explicit Lock(Mutex& mutex) : m_mutex(mutex) { m_mutex.enter(); }
    ~Lock() { m_mutex.leave(); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

private:
    Mutex& m_mutex;
};

/// Guards the change of the shared thread count. Lives from load to unload.
BAILUXSKO_API extern Mutex g_MKL_mutex;

} // namespace lapack
