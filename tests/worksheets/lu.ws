# lu(A): P, L and U side by side, with P * A = L * U.

# The last of equally scaled rows becomes the pivot row.
lu([1, 0; 1, 0.5])
#= [0, 1, 1, 0, 1, 0.5; 1, 0, 1, 1, 0, -0.5]

# A complex matrix keeps the first of them, also when every imaginary part is zero.
lu(complex([1, 0; 1, 0.5]))
#= complex([1, 0, 1, 0, 1, 0; 0, 1, 1, 1, 0, 0.5])

# Rows compete by their share of their largest element, not by size: 4 of 4 beats 8 of 9.
lu([2, 1, 1; 4, 3, 3; 8, 7, 9])
#= [0, 1, 0, 1, 0, 0, 4, 3, 3; 1, 0, 0, 0.5, 1, 0, 0, -0.5, -0.5; 0, 0, 1, 2, -2, 1, 0, 0, 2]

# A whole row may be scaled without changing the choice.
lu([1e-200, 2e-200; 3, 3])
#= [0, 1, 1, 0, 3, 3; 1, 0, 1e-200 / 3, 1, 0, 2e-200 - 1e-200 / 3 * 3]

lu([5])
#= [1, 1, 5]
lu([-3])
#= [1, 1, -3]
lu([0])
#! "singular matrix" -1

# Complex pivots by modulus, multipliers by Smith's division.
lu([1i, 1; 1, 1i])
#= [1, 0, 1, 0, 1i, 1; 0, 1, 0 - 1i, 1, 0, 2i]
lu([1, 0; 0, 3 + 4i])
#= [1, 0, 1, 0, 1, 0; 0, 1, 0, 1, 0, 3 + 4i]
lu([3 + 4i])
#= [1 + 0i, 1, 3 + 4i]

# The factors have no unit.
lu([4, 3; 6, 3] * kN)
#= lu([4000, 3000; 6000, 3000])
lu([1 m, 1 ft])
#! "must be square" 1

# A block of a matrix is a matrix.
B := [9, 9, 9; 9, 1, 0; 9, 1, 0.5]
lu(submatrix(B, 1, 2, 1, 2))
#= [0, 1, 1, 0, 1, 0.5; 1, 0, 1, 1, 0, -0.5]

# P * A is L * U.
A := [0.5, -3, 2, 7; 4, 4, 0.1, -2; -1, 6, 3, 3; 2, 2, 2, -8]
F := lu(A)
P := submatrix(F, 0, 3, 0, 3)
P * A
#~ 1e-15 submatrix(F, 0, 3, 4, 7) * submatrix(F, 0, 3, 8, 11)
# One 1 in each row and column of P.
P * P'
#= [1, 0, 0, 0; 0, 1, 0, 0; 0, 0, 1, 0; 0, 0, 0, 1]

C := [1 + 2i, 3, -1i; 2, 1 - 1i, 4; 0.5i, 2, 1]
G := lu(C)
submatrix(G, 0, 2, 0, 2) * C
#~ 1e-15 submatrix(G, 0, 2, 3, 5) * submatrix(G, 0, 2, 6, 8)

# Refused before any elimination, whatever the other rows hold.
lu([0, 0; 1e-300, 2])
#! "singular matrix" -1
lu([1, 2, 3; 0, 0, 0; 4, 5, 6])
#! "singular matrix" -1
lu(complex([1, 2; 0, 0]))
#! "singular matrix" -1

# Found singular by a pivot of exactly zero.
lu([1, 2; 2, 4])
#! "singular matrix" -1
lu([1i, 2i; 2i, 4i])
#! "singular matrix" -1
# A tiny pivot is not zero: nothing but the exact test refuses a matrix here. (The second row scales to less than 1.)
lu([1, 1; 1, 1 + 2.220446049250313e-16])
#= [1, 0, 1, 0, 1, 1; 0, 1, 1, 1, 0, 2.220446049250313e-16]

# A wide matrix is refused at the argument, a tall one by the factorisation.
lu([1, 2, 3; 4, 5, 6])
#! "must be square" 1
lu([1, 2; 3, 4; 5, 6])
#! "must be square" -1
lu([1i, 2; 3, 4; 5, 6])
#! "must be square" -1
lu([])
#! "invalid dimension" -1

lu(3)
#! "must be scalar matrix" 1
lu("text")
#! "must be scalar matrix" 1
lu(["a", "b"; "c", "d"])
#! "must be scalar matrix" 1
lu([[1], 2; 3, 4])
#! "must be scalar matrix" 1
lu([1 m, 2; 3, 4])
#! "must be scalar matrix" 1
lu([1 m, 0; 0, 1 m])
#! "must be scalar matrix" 1
lu(sin)
#! "must be scalar matrix" 1

# Faults of the arithmetic: a comparison with NaN, infinity times zero, a reciprocal beyond the largest number.
lu([NaN, 1; 1, 1])
#! "floating point exception" 0
lu([inf, 1; 1, 1])
#! "floating point exception" 0
lu([1e-310])
#! "floating point exception" 0
lu([1e308, 1; -1e308, 1e308] * 1.5)
#= [0, 1, 1, 0, -1.5e308, 1.5e308; 1, 0, -1, 1, 0, 1.5e308]
