# mult(a, b), a * b: numbers, a number with a matrix, matrices.

# Numbers, with their units.
2 * 3
#= 6
(2 m) * (3 s)
#= 6 m*s
(2 kN) * (0.5 m)
#= 1000 J
mult(2, -3.5)
#= -7

# Complex numbers by the plain formula; an operand without imaginary part takes part as a real.
(1 + 2i) * (3 - 1i)
#= 5 + 5i
2i * 2i
#= -4
(2 + 1i) * (2 - 1i)
#= 5
inf * 2
#= inf
inf * complex(2, 3)
#= complex(inf, inf)
complex(inf, 0) * complex(2, 0)
#= inf
complex(0, inf) * 2
#= complex(0, inf)
-0.0 * 3
#= -0.0

# What overflows is infinite, what underflows is small: no error of a number.
1e300 * 1e300
#= inf
1e-300 * 1e-300
#= 0
4.9e-324 * 1
#= 4.9e-324
0 * inf
#= NaN
NaN * 1
#= NaN

# A number with every element, from either side.
2 * [1, 2; 3, 4]
#= [2, 4; 6, 8]
[1, 2; 3, 4] * 2
#= [2, 4; 6, 8]
(2 m) * [1, 2; 3, 4]
#= [2 m, 4 m; 6 m, 8 m]
[1 m, 2 s] * (3 kg)
#= [3 kg*m, 6 kg*s]
[1, 2; 3, 4] * 1i
#= [1i, 2i; 3i, 4i]
(1 + 1i) * [1i, 2; 0, -1i]
#= [-1 + 1i, 2 + 2i; 0, 1 - 1i]
[] * 2
#= []
(2 m) * []
#= []

# An imaginary array only where some imaginary part is not zero.
complex([1, 2]) * 2
#= [2, 4]
[1i, 2i] * 1i
#= [-1, -2]
[1i, 2i] * (1 + 0i)
#= [1i, 2i]
# Element by element: infinity has no imaginary part here.
complex([inf, 1], [0, 1]) * (2 + 1i)
#= complex([inf, 1], [inf, 3])

# Blocks of a matrix.
B := [1, 2, 3; 4, 5, 6; 7, 8, 9]
submatrix(B, 1, 2, 0, 1) * 10
#= [40, 50; 70, 80]
submatrix(B, 1, 2, 0, 1) * submatrix(B, 0, 1, 1, 2)
#= [33, 42; 54, 69]

# Arrays among the elements are entered.
[[1, 2], 3] * 2
#= [[2, 4], 6]
2 m * [[1; 2], [3 s, 4]]
#= [[2 m; 4 m], [6 m*s, 8 m]]
[[[1, 2], 3], 4] * 1i
#= [[[1i, 2i], 3i], 4i]

# Products of matrices.
[1, 2; 3, 4] * [5, 6; 7, 8]
#= [19, 22; 43, 50]
[1, 2, 3; 4, 5, 6] * [1; 0; -1]
#= [-2; -2]
[1; 2] * [3, 4]
#= [3, 4; 6, 8]
[1, 2; 3, 4] * m * [5; 6] * N
#= [17 J; 39 J]
[1i, 2; 0, 1] * [1, 0; 1i, 1]
#= [3i, 2; 1i, 1]
[1i, 0; 0, 1i] * [1i, 0; 0, 1i]
#= [-1, 0; 0, -1]
complex([1, 2; 3, 4]) * [1, 0; 0, 1]
#= [1, 2; 3, 4]
[1, 2; 3, 4] * [1i, 0; 0, 1]
#= [1i, 2; 3i, 4]

# A row times a column is a number.
[1, 2, 3] * [4; 5; 6]
#= 32
[1 m, 2 m] * [3 N; 4 N]
#= 11 J
[2] * [3]
#= 6
[1i] * [1i]
#= -1
[1i, 1] * [1i; 1]
#= 0

# Two columns of one length: the inner product, the second one conjugated.
[1i; 0] * [1i; 0]
#= 1
[1; 2; 3] * [4; 5; 6]
#= 32
[1 + 1i; 2] * [2 - 1i; 1i]
#= 1 + 1i
[1; 2] * [1i; 1i]
#= 0 - 3i
[1i; 1i] * [1; 2]
#= 3i
[1 m; 2 m] * [3 m; 4 m]
#= 11 m^2

# A sum starts at +0: the products of zeros have no sign.
[-0.0, 0; 0, 1] * [1, 1; 1, 1]
#= [0, 0; 1, 1]

# More than 10 rows or columns on the left: the same values by BLAS.
ramp(i, j) := i + 2 - j
L := matrix(11, 2, ramp)
L * [1, 1; 0, 1]
#= [2, 3; 3, 5; 4, 7; 5, 9; 6, 11; 7, 13; 8, 15; 9, 17; 10, 19; 11, 21; 12, 23]
submatrix(L, 0, 10, 1, 1) * submatrix(L, 0, 10, 0, 0)
#= 572
submatrix(L, 0, 10, 1, 1)' * submatrix(L, 0, 10, 0, 0)
#= 572
(submatrix(L, 0, 10, 1, 1) * m) * (submatrix(L, 0, 10, 0, 0) * s)
#= 572 m*s
(submatrix(L, 0, 10, 1, 1) * 1i) * submatrix(L, 0, 10, 0, 0)
#= 572i
submatrix(L, 0, 10, 1, 1) * (submatrix(L, 0, 10, 0, 0) * 1i)
#= 0 - 572i
# There a complex factor always gives an imaginary array.
ones(i, j) := 1
complex(matrix(11, 1, ones)) * [1, 2]
#= complex(stack([1, 2], [1, 2], [1, 2], [1, 2], [1, 2], [1, 2], [1, 2], [1, 2], [1, 2], [1, 2], [1, 2]))

# A unit per row and column: the inner units must agree.
[1 N, 2 N*m; 3 N*m, 4 N*m^2] * [1 m; 2]
#= [5 N*m; 11 N*m^2]
[2 N/m, 3 N] * [1 m; 2]
#= 8 N
[1 m; 2 s] * [3 s; 4 m]
#= 11 m*s
[1 m, 2 s; 3 m, 4 s] * [1, 2; 3 m/s, 4 m/s]
#= [7 m, 10 m; 15 m, 22 m]
mult([1 m, 2 s], [1; 2])
#! "matrix unit mismatch" -1
[1 m, 2 s; 3 m, 4 s] * [1, 2; 3, 4]
#! "matrix unit mismatch" -1
[1 m; 2 s] * [3 m; 4 m]
#! "matrix unit mismatch" -1
# A zero without unit breaks a matrix of lengths.
[1 m, 0; 0, 1 m] * [1; 1]
#! "must be a linear algebra matrix" 1
[1, 2] * [1 m, 1; 1, 1]
#! "must be a linear algebra matrix" 2
# The product comes first: what fails there is reported.
[1 m, 2 s] * [1, 2]
#! "array size mismatch" -1

# Texts and arrays inside a product.
mult([[1], 2; 3, 4], [1; 2])
#! "must be a linear algebra matrix" 1
mult([1, 2], ["a"; 2])
#! "must be a linear algebra matrix" 2
["a", 2] * ["a"; 2]
#! "must be a linear algebra matrix" 1

mult([1, 2, 3], [1, 2])
#! "array size mismatch" -1
[1; 2] * [1; 2; 3]
#! "array size mismatch" -1
L * L
#! "array size mismatch" -1
mult([], [])
#! "invalid dimension" -1
[] * [1]
#! "invalid dimension" -1
L * []
#! "invalid dimension" -1

# Faults of a small product; a large one, by BLAS, gives the value.
mult([1e200, 0], [1e200; 0])
#! "floating point exception" 0
[inf, 1] * [0; 1]
#! "floating point exception" 0
[NaN, 1] * [1; 1]
#= NaN
[1e-200, 1] * [1e-200; 1]
#= 1
(matrix(11, 1, ones) * 1e200)' * (matrix(11, 1, ones) * 1e200)
#= inf

# Kinds: the second argument is looked at first.
"a" * 2
#! "must be a scalar or a matrix" 1 ""
mult(2, "a")
#! "must be a scalar or a matrix" 2 mult
"a" * "b"
#! "must be a scalar or a matrix" 2
mult("a", 2)
#! "must be a scalar or a matrix" 1 mult
sin * 2
#! "must be a scalar or a matrix" 1
[1, "a"] * 2
#! "must be a scalar or a matrix" 1
2 * [1, "a"]
#! "must be a scalar or a matrix" 2
[[1, "a"], 2] * 2
#! "must be a scalar or a matrix" 1
# The numbers' errors come before the unit's: u*u cannot be represented.
u := m^35000
u * u
#! "unit power not representable" -1
([1, 2, 3] * u) * ([1, 2] * u)
#! "array size mismatch" -1
([1e200, 2; 3, 4] * u) * ([1e200, 2; 3, 4] * u)
#! "floating point exception" 0
([1, 2; 3, 4] * u) * ([1, 2; 3, 4] * u)
#! "unit power not representable" -1
