# inv(M): the inverse, strict or LAPACK's.

inv([2, 0; 0, 4])
#= [0.5, 0; 0, 0.25]
inv([1, 2; 3, 4])
#~ 1e-15 [-2, 1; 1.5, -0.5]
inv([4])
#= [0.25]
inv([0, 1; 1, 0])
#= [0, 1; 1, 0]
inv([0, 0, 1; 1, 0, 0; 0, 1, 0])
#= [0, 1, 0; 0, 0, 1; 1, 0, 0]
# From NumPy 1.24, numpy.linalg.inv.
inv([2, -1, 0; -1, 2, -1; 0, -1, 2])
#~ 1e-15 [0.75, 0.5, 0.25; 0.5, 1, 0.5; 0.25, 0.5, 0.75]

# Complex matrices; an imaginary array only where some imaginary part is not zero.
inv([1i, 0; 0, 2])
#= [0 - 1i, 0; 0, 0.5]
inv([1, 1i; -1i, 2])
#= [2, 0 - 1i; 1i, 1]
inv(complex([2, 0; 0, 4]))
#= [0.5, 0; 0, 0.25]
inv([0, 1i; 1i, 0])
#= [0, 0 - 1i; 0 - 1i, 0]

# The unit of every element is the inverse of that of its mirror image.
inv([2, 0; 0, 4] * m)
#= [0.5 m^-1, 0 m^-1; 0 m^-1, 0.25 m^-1]
inv([12 N/m, 6 N; 6 N, 4 N*m])
#~ 1e-15 [0.3333333333333333 m/N, -0.5 N^-1; -0.5 N^-1, 1 N^-1*m^-1]
inv([1 V, 2 ohm*A; 3 A, 4 A])
#~ 1e-15 [-2 V^-1, 1 A^-1; 1.5 V^-1, -0.5 A^-1]

# A block of a matrix.
B := [9, 9, 9; 9, 2, 0; 9, 0, 4]
inv(submatrix(B, 1, 2, 1, 2))
#= [0.5, 0; 0, 0.25]

# Strict: refused when a later pivot is small against the growth of the elimination.
inv([1, 2; 2, 4])
#! "singular matrix" -1 inv
inv([0])
#! "singular matrix" -1
inv([0, 0; 1e-300, 2])
#! "singular matrix" -1
inv([1, 2, 3; 4, 5, 6; 7, 8, 9])
#! "singular matrix" -1
inv([1, 1; 1, 1 + 2.220446049250313e-16])
#= [4503599627370497, -4503599627370496; -4503599627370496, 4503599627370496]
inv([1i, 2i; 2i, 4i])
#! "singular matrix" -1
# The first pivot is never tested, however small.
inv([1e-30])
#~ 1e-15 [1e30]

# Off: LAPACK inverts what is not exactly singular.
set strict_singularity_checking off
inv([2, 1; 1, 1])
#~ 1e-15 [1, -1; -1, 2]
inv([1, 2; 3, 4])
#~ 1e-14 [-2, 1; 1.5, -0.5]
inv([1i, 0; 0, 2])
#~ 1e-15 [-1i, 0; 0, 0.5]
inv(complex([2, 0; 0, 4]))
#~ 1e-15 complex([0.5, 0; 0, 0.25])
inv([12 N/m, 6 N; 6 N, 4 N*m])
#~ 1e-15 [0.3333333333333333 m/N, -0.5 N^-1; -0.5 N^-1, 1 N^-1*m^-1]
inv([1, 2; 2, 4])
#! "singularity" -1
inv([0])
#! "singularity" -1
inv([])
#! "invalid dimension" -1
inv([1, 2, 3; 4, 5, 6])
#! "must be square" 1
set strict_singularity_checking on

inv(5)
#! "must be scalar matrix" 1
inv("a")
#! "must be scalar matrix" 1
inv(sin)
#! "must be scalar matrix" 1
inv([1, 2, 3; 4, 5, 6])
#! "must be square" 1
inv([1; 2])
#! "must be square" 1
inv([])
#! "invalid dimension" -1
inv([1 m, 0; 0, 1 m])
#! "must be a linear algebra matrix" 1
inv([1, "a"; 2, 3])
#! "must be a linear algebra matrix" 1
inv([[1], 2; 2, 3])
#! "must be a linear algebra matrix" 1
inv([NaN, 1; 1, 1])
#! "floating point exception" 0
# Infinity as a pivot leaves nothing that is not small against the growth, a row of nothing but NaN nothing at all.
inv([inf, 1; 1, 1])
#! "singular matrix" -1
inv([NaN, 0; 0, 1])
#! "singular matrix" -1
inv([1, 1; inf, 1])
#! "floating point exception" 0
# Rows are scaled for the choice of pivots, not for the test.
inv([1e200, 0; 0, 1e-200])
#! "singular matrix" -1
inv([1e308, 1e308; -1e308, 1e308])
#! "floating point exception" 0
inv([1e-310])
#! "floating point exception" 0
