// A host of ten lines: a matrix of its own goes in, the factors of it come out.
#include "bailuxhost/matval.hpp"
#include "bailuxsko/lu.hpp"

#include <cstdio>

int main()
{
    const Qud::FreshNumbers elements = Qud::zero_numbers(4);
    elements[0] = elements[3] = 1.0;
    const Qud::Handle PLU = Efi::Matrix::lu(Qud::MatVal::make(2, 2, elements));
    std::printf("%u by %u\n", Qud::matrix_of(PLU)->Rows(), Qud::matrix_of(PLU)->Cols());
}
