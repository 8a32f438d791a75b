#include "bailuxhost/matdim.hpp"
#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/intel_mkl.hpp"
#include "bailuxsko/lapack/driver.hpp"
#include "bailuxsko/lapack/solve.hpp"

#include <optional>
#include <string>
#include <utility>

namespace Efi::IntelMKL {

using Evl::Run::AppException;

namespace {

[[noreturn]] void raise_no_pattern(const Qud::MatVal& M, int index)
{
    const std::optional<Qud::PatternBreak> at = Qud::first_break(M);
    AppException::Raise(msg::must_be_linear_algebra_matrix, index, at ? at->text() : std::string());
}

/// Texts and nested arrays have no number to solve with. @throws "must be a linear algebra matrix" (index)
void refuse_entries(const Qud::MatVal& M, int index)
{
    if (M.has_entries())
        raise_no_pattern(M, index);
}

std::string name_of(const Qud::Dim& unit)
{
    return unit == Qud::Dim::identity ? "no unit" : unit.text();
}

/// The first row whose right-hand side is not in the unit that the rows before it lead to.
std::string mismatched_row(const Qud::MatDim& of_A, const Qud::MatDim& of_B)
{
    const auto quotient = [&](std::size_t k) { return Qud::Dim::Div(of_B.rows()[k], of_A.rows()[k]); };
    std::size_t k = 1;
    while (k + 1 < of_A.rows().size() && quotient(k) == quotient(0))
        ++k;
    const Qud::Dim needed = Qud::Dim::Mult(of_A.rows()[k], Qud::Dim::Mult(quotient(0), of_B.cols()[0]));
    return "row " + std::to_string(k + 1) + " of B has " + name_of(of_B.at(k, 0)) + " where " + name_of(needed) +
           " is needed";
}

/// The units of the solution, as they follow from those of A and B.
/// @throws "must be a linear algebra matrix" (1 for A, 2 for B), "matrix unit mismatch" (-1)
Qud::MatDim solution_pattern(const Qud::MatVal& A, const Qud::MatVal& B)
{
    const std::optional<Qud::MatDim> of_A = Qud::MatDim::make(A);
    const std::optional<Qud::MatDim> of_inverse = of_A ? Qud::MatDim::Pwr(*of_A, -1.0) : std::nullopt;
    if (!of_inverse)
        raise_no_pattern(A, 1);
    const std::optional<Qud::MatDim> of_B = Qud::MatDim::make(B);
    if (!of_B)
        raise_no_pattern(B, 2);
    std::optional<Qud::MatDim> of_X = Qud::MatDim::MMult(*of_inverse, *of_B);
    if (!of_X)
        AppException::Raise(msg::matrix_unit_mismatch, -1, mismatched_row(*of_A, *of_B));
    return *std::move(of_X);
}

} // namespace

Qud::Handle ScalarLsolve(const Qud::MatVal& A, const Qud::MatVal& B)
{
    return in_call([&](Call& call) {
        const bool is_complex = A.HasImag() || B.HasImag();
        if (A.is_square())
            return is_complex ? lapack::zgesv(call.context(), A, B) : lapack::dgesv(call.context(), A, B);
        return is_complex ? lapack::zgelss(call.context(), A, B) : lapack::dgelss(call.context(), A, B);
    });
}

Qud::Handle CrazyLsolve(const Qud::MatVal& A, const Qud::MatVal& B)
{
    return in_host_call([&] {
        refuse_entries(A, 1);
        refuse_entries(B, 2);
        const Qud::Handle plain_A = A.StripDimension();
        const Qud::Handle plain_B = B.StripDimension();
        // Numbers come first: a system that cannot be solved says so, whatever its units.
        const Qud::Handle X = ScalarLsolve(*Qud::matrix_of(plain_A), *Qud::matrix_of(plain_B));
        return Qud::matrix_of(X)->ApplyLinearDimension(solution_pattern(A, B));
    });
}

Qud::Handle lsolve(const Qud::Handle& a, const Qud::Handle& b)
{
    return in_host_call([&] {
        const Qud::MatVal& A = Error::as_matrix(a, msg::must_be_matrix, 1);
        const Qud::MatVal& B = Error::as_matrix(b, msg::must_be_matrix, 2);
        lapack::require_equal_rows(A, B);
        if (!A.IsUniformScalar() || !B.IsUniformScalar())
            return CrazyLsolve(A, B);
        Qud::Handle X = ScalarLsolve(A, B);
        return Qud::DimVal::dv(std::move(X), Qud::Dim::Mult(Qud::Dim::Pwr(A.m_dim, -1.0), B.m_dim));
    });
}

} // namespace Efi::IntelMKL
