#pragma once

#include "bailuxsko/lapack/routines.hpp"

#include <utility>

/// A routine or service of the provider, replaced until the end of the scope: Replaced<&lapack::Routines::dgesv>.
template <auto Member>
class Replaced {
    using Pointer = std::remove_cvref_t<decltype(std::declval<lapack::Routines&>().*Member)>;

public:
    explicit Replaced(Pointer routine) : m_before(std::exchange(lapack::routines().*Member, routine)) {}
    ~Replaced() { lapack::routines().*Member = m_before; }
    Replaced(const Replaced&) = delete;
    Replaced& operator=(const Replaced&) = delete;

private:
    Pointer m_before;
};
