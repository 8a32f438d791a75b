#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

/// Several factors in one result record, and columns moved between records. Records that already lie in one array as
/// the result needs them (a caller may arrange that on purpose) are not copied: the result is a record over that array.
namespace Efi {

/// First and second side by side, complex if either is.
/// @return  false, and null in out, when the row counts differ
/// @throws  "out of memory" (-1)
BAILUXSKO_API bool pack_two_r(EfiCallContext* ctx, aMatrix* first, aMatrix* second, aMatrix** out);

/// First above second, complex if either is.
/// @return  false, and null in out, when the column counts differ
/// @throws  "out of memory" (-1)
BAILUXSKO_API bool pack_two_rr(EfiCallContext* ctx, aMatrix* first, aMatrix* second, aMatrix** out);

/// First, second and third side by side, complex if any is.
/// @return  false, and null in out, when the row counts differ
/// @throws  "out of memory" (-1)
BAILUXSKO_API bool pack_three_c(EfiCallContext* ctx, aMatrix* first, aMatrix* second, aMatrix* third, aMatrix** out);

/// Copies column `column` (counted from 0) of M into v, which has as many rows; imaginary parts where v can take them.
/// @return  null, or the text of what is wrong: "null pointer", "index out of bounds", "array size mismatch"
BAILUXSKO_API const char* MtoVcol(EfiCallContext* ctx, aMatrix* M, int column, aVector* v);

/// Sets M(i, column) to 0.0 for every i >= first_row, counted from 0; a column that is not there is left alone.
BAILUXSKO_API void zero_col(int column, int first_row, aMatrix* M);

} // namespace Efi
