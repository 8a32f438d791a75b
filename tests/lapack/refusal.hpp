#pragma once

#include <type_traits>

/// A routine of the provider that only gives its verdict, wherever info stands among its parameters:
/// Refusal<-3, decltype(lapack::Routines::dgesv)>::routine.
template <int Verdict, class Pointer>
struct Refusal;

template <int Verdict, class... Parameters>
struct Refusal<Verdict, void (*)(Parameters...)> {
    static void routine(Parameters... parameters)
    {
        int* info = nullptr;
        const auto look = [&](auto parameter) {
            if constexpr (std::is_same_v<decltype(parameter), int*>)
                info = parameter; // the last of the writable integers
        };
        (look(parameters), ...);
        *info = Verdict;
    }
};
