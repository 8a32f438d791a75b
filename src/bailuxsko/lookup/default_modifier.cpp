// The worksheet's forms of match and the lookups, whose modifier may be left out.
#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/lookup.hpp"

namespace Efi::Matrix {

namespace {

/// The modifier, "eq" where none is given.
Qud::Handle given_or_equal(const Qud::Handle& modifier)
{
    return modifier ? modifier : Qud::StrVal::make("eq");
}

} // namespace

Qud::Handle Match(Qud::Origin origin, Qud::Tol tol, const Qud::Handle& z, const Qud::Handle& A,
                  const Qud::Handle& modifier)
{
    return in_host_call([&] { return EfiLookup::Match(origin, tol, z, A, given_or_equal(modifier)); });
}

Qud::Handle Lookup(Qud::Origin origin, Qud::Tol tol, const Qud::Handle& z, const Qud::Handle& A, const Qud::Handle& B,
                   const Qud::Handle& modifier)
{
    return in_host_call([&] { return EfiLookup::Lookup(origin, tol, z, A, B, given_or_equal(modifier)); });
}

Qud::Handle Hlookup(Qud::Origin origin, Qud::Tol tol, const Qud::Handle& z, const Qud::Handle& A, const Qud::Handle& r,
                    const Qud::Handle& modifier)
{
    return in_host_call([&] { return EfiLookup::Hlookup(origin, tol, z, A, r, given_or_equal(modifier)); });
}

Qud::Handle Vlookup(Qud::Origin origin, Qud::Tol tol, const Qud::Handle& z, const Qud::Handle& A, const Qud::Handle& c,
                    const Qud::Handle& modifier)
{
    return in_host_call([&] { return EfiLookup::Vlookup(origin, tol, z, A, c, given_or_equal(modifier)); });
}

Qud::Handle VHlookup(Qud::Origin origin, Qud::Tol tol, const Qud::Handle& rz, const Qud::Handle& cz,
                     const Qud::Handle& A, const Qud::Handle& modifier)
{
    return in_host_call([&] { return EfiLookup::VHlookup(origin, tol, rz, cz, A, given_or_equal(modifier)); });
}

} // namespace Efi::Matrix
