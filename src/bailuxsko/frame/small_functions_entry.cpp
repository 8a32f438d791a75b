#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/kernels/crossprod.hpp"
#include "bailuxsko/kernels/identity.hpp"
#include "bailuxsko/kernels/sums.hpp"
#include "bailuxsko/small_functions.hpp"

namespace Efi::Matrix {

Qud::Handle identity(const Qud::Handle& n)
{
    return in_call([&](Call& call) { return call.dv(call.guarded(native::identity, Error::as_size(n, 1))); });
}

Qud::Handle crossprod(const Qud::Handle& a, const Qud::Handle& b)
{
    return in_call([&](Call& call) {
        const auto three_elements = [](const Qud::Handle& v, int index) -> const Qud::MatVal& {
            const Qud::MatVal* const column = Error::is_vector(v, {.rows = 3, .cols = 1});
            if (!column)
                Throw(msg::must_be_three_element_vector, index);
            return *column;
        };
        const Qud::MatVal& u = three_elements(a, 1);
        const Qud::MatVal& v = three_elements(b, 2);
        if (!u.get_IsUniformScalar())
            Throw(msg::must_be_of_uniform_dimension, 1);
        if (!v.get_IsUniformScalar())
            Throw(msg::must_be_of_uniform_dimension, 2);
        aMatrix* const product = call.guarded(native::crossprod, call.view(u), call.view(v));
        return call.dv(product, Qud::Dim::Mult(u.m_dim, v.m_dim));
    });
}

Qud::Handle tr(const Qud::Handle& M)
{
    return in_call([&](Call& call) {
        const Qud::MatVal& matrix = call.asScalarMatrix(M, 1);
        return call.dv(call.guarded(native::tr, call.view(matrix)), matrix.m_dim);
    });
}

Qud::Handle sigmasum(const Qud::Handle& v)
{
    return in_call([&](Call& call) {
        const Qud::MatVal& vector = call.asScalarMatrix(v, 1);
        return call.dv(call.guarded(native::sigmasum, call.view(vector)), vector.m_dim);
    });
}

} // namespace Efi::Matrix
