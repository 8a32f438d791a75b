// What a unit costs: every function that takes one on about 10^5 elements, with a unit and without.
#include "bench/compare.hpp"
#include "bench/operations.hpp"

namespace {

using bench::Handle;

const Qud::Dim metre(Qud::Dim::Base::length);

void row(const char* name, std::size_t n, Handle (*call)(const Handle&), const Handle& plain)
{
    const Handle with_unit = Qud::DimVal::dv(plain, metre);
    bench::compare(
        {.name = name, .n = n, .peer = "the same without unit", .at_most = 1.05}, [&] { return call(with_unit); },
        [&] { return call(plain); },
        [](const Handle& ours, const Handle& peer) {
            const Qud::MatVal* const M = Qud::matrix_of(ours);
            const Qud::MatVal* const P = Qud::matrix_of(peer);
            if (M == nullptr || P == nullptr)
                return Qud::as_number(ours)->re() == Qud::as_number(peer)->re();
            return M->Rows() == P->Rows() && M->Cols() == P->Cols();
        });
}

} // namespace

int main()
{
    Efi::IntelMKL::setNumThreads(Qud::NumVal::make(1.0));
    bench::header("units");
    constexpr std::size_t elements = 100'000;
    for (const bench::ColumnOperation& operation : bench::column_operations)
        if (operation.takes_units)
            row(operation.name, elements, operation.call,
                bench::host_matrix(elements, 1, bench::column_for(operation, elements)));
    constexpr std::size_t order = 316; // 316^2 are about as many
    for (const bench::MatrixOperation& operation : bench::matrix_operations)
        if (operation.takes_units)
            row(operation.name, order, operation.call,
                bench::host_matrix(order, order, bench::matrix_for(operation, order)));
    return 0;
}
