# pwr(x, y), x ^ y: numbers, whole powers of square matrices, columns, functions.

# Numbers: the principal value.
2^10
#= 1024
2^-1
#= 0.5
4^0.5
#= 2
0^0
#= 1
10^-3
#= 0.001
pwr(3, 4)
#= 81
(2 m)^3
#= 8 m^3
(4 m^2)^0.5
#= 2 m
(-4)^0.5
#= 2i
(8 m^3)^(1/3)
#~ 1e-15 2 m
(1 + 1i)^2
#= 2i
1i^2
#= -1
2^1i
#~ 1e-15 complex(0.7692389013639721, 0.6389612763136348)
2^3^2
#= 512
-2^2
#= -4
0^-1
#! "divide by zero" 2 ""
pwr(0, -0.5)
#! "divide by zero" 2
pwr(2, 1 m)
#! "must be dimless" 2
(2 m)^(1 m)
#! "must be dimless" 2
(2 m)^1i
#! "unit power not representable" -1
(0 m)^-1
#! "divide by zero" 2

# Whole powers of a square matrix.
[1, 1; 1, 0]^10
#= [89, 55; 55, 34]
[1, 2; 3, 4]^2
#= [7, 10; 15, 22]
[1, 2; 3, 4]^3
#= [37, 54; 81, 118]
[1, 2; 3, 4]^1
#= [1, 2; 3, 4]
[1, 2; 3, 4]^0
#= [1, 0; 0, 1]
[2, 0; 0, 4]^-1
#= [0.5, 0; 0, 0.25]
[2, 0; 0, 4]^-2
#= [0.25, 0; 0, 0.0625]
[2, 0; 0, 4]^-3
#= [0.125, 0; 0, 0.015625]
[1, 1; 0, 1]^10000
#= [1, 10000; 0, 1]
[1, 1; 0, 1]^-10000
#= [1, -10000; 0, 1]
[0, 1; 0, 0]^2
#= [0, 0; 0, 0]
[0, 1; 0, 0]^0
#= [1, 0; 0, 1]
[1i, 0; 0, 1]^2
#= [-1, 0; 0, 1]
[1i, 0; 0, 1]^3
#= [0 - 1i, 0; 0, 1]
[1i, 0; 0, 2]^-2
#= [-1, 0; 0, 0.25]
[0, 1i; 1i, 0]^4
#= [1, 0; 0, 1]
complex([1, 2; 3, 4])^1
#= [1, 2; 3, 4]
[1 + 1i, 0; 0, 1]^1
#= [1 + 1i, 0; 0, 1]
[]^0
#= []
[]^1
#= []
# A square that no product needs is not computed: the fourth power of 1e60 is the last.
[1e60, 0; 0, 1]^5
#~ 1e-15 [1e300, 0; 0, 1]

# The exponent's bound.
pwr([1, 1; 0, 1], 10001)
#! "domain error" 1
[1, 1; 0, 1]^-10001
#! "domain error" 1
[1, 1; 0, 1]^1e10
#! "domain error" 1
[1, 1; 0, 1]^-1e300
#! "domain error" 1
# A negative power inverts first.
pwr([1, 2; 2, 4], -10001)
#! "singular matrix" -1
[1, 2; 2, 4]^-1
#! "singular matrix" -1
[1, 2; 2, 4]^-2
#! "singular matrix" -1
pwr([1, 2; 3, 4], 2.5)
#! "must be integer" 2
[1, 2; 3, 4]^1i
#! "must be integer" 2
[1, 2; 3, 4]^inf
#! "must be integer" 2
[1, 2; 3, 4]^NaN
#! "must be integer" 2
pwr([1, 2, 3; 4, 5, 6], 2)
#! "must be square" 1
[1, 2]^2
#! "must be square" 1
[1, 2]^2.5
#! "must be square" 1
pwr([], 2)
#! "invalid dimension" -1
[]^-1
#! "invalid dimension" -1
[]^-2
#! "invalid dimension" -1
pwr([1e200, 0; 0, 1], 2)
#! "floating point exception" 0
[NaN, 1; 1, 1]^-1
#! "floating point exception" 0
[NaN, 1; 1, 1]^1
#= [NaN, 1; 1, 1]
# M^0 is an identity matrix, which has at most 4096 rows.
column := matrix(4097, 1, mult)
pwr(column * column', 0)
#! "matrix too big" 1
set strict_singularity_checking off
# Not strict: -1 goes to LAPACK, other negative powers to the library's own inverse without its test.
pwr([1, 2; 2, 4], -1)
#! "singularity" -1
[1, 2; 2, 4]^-2
#! "singular matrix" -1
# Nearly singular: refused only by the strict test.
S := [1, 2, 3; 4, 5, 6; 7, 8, 9.000000000000002]
rows(S^-2)
#= 3
set strict_singularity_checking on
S^-2
#! "singular matrix" -1

# Units.
([1, 2; 3, 4] * m)^2
#= [7 m^2, 10 m^2; 15 m^2, 22 m^2]
([2, 0; 0, 4] * m)^-1
#= [0.5 m^-1, 0 m^-1; 0 m^-1, 0.25 m^-1]
([2, 0; 0, 4] * m)^-2
#= [0.25 m^-2, 0 m^-2; 0 m^-2, 0.0625 m^-2]
([1, 2; 3, 4] * m)^0
#= [1, 0; 0, 1]
# A unit per row and column: column k times row k must be one unit for all k.
[1, 2 m; 3 m^-1, 4]^2
#= [7, 10 m; 15 m^-1, 22]
[1, 2 m; 3 m^-1, 4]^0
#= [1, 0 m; 0 m^-1, 1]
[2 s, 0 s*m; 0 s/m, 4 s]^-2
#= [0.25 s^-2, 0 m*s^-2; 0 m^-1*s^-2, 0.0625 s^-2]
[1 N, 2 N*m; 3 N*m, 4 N*m^2]^1
#= [1 N, 2 N*m; 3 N*m, 4 N*m^2]
[12 N/m, 6 N; 6 N, 4 N*m]^-1
#~ 1e-15 [0.3333333333333333 m/N, -0.5 N^-1; -0.5 N^-1, 1 N^-1*m^-1]
[1 N, 2 N*m; 3 N*m, 4 N*m^2]^2
#! "must be self multiplicable" 1
[1 N, 2 N*m; 3 N*m, 4 N*m^2]^0
#! "must be self multiplicable" 1
[1 m, 0; 0, 1 m]^2
#! "must be self multiplicable" 1
[1 m, 0; 0, 1 m]^1
#! "must be self multiplicable" 1
pwr([1 m, 0; 0, 1 m], -1)
#! "must be a linear algebra matrix" 1
pwr([1, "a"; 2, 3], 2)
#! "must be self multiplicable" 1
[[1], 2; 2, 3]^2
#! "must be self multiplicable" 1

# A column is raised element by element.
[4; 9]^0.5
#= [2; 3]
[1; 2; 3]^2
#= [1; 4; 9]
[1; 2; 3]^-1
#= [1; 0.5; 1 / 3]
[1; 2; -3]^2.5
#~ 1e-15 complex([1; 5.656854249492381; 0], [0; 0; 15.588457268119896])
[-4; 4]^0.5
#= [2i; 2]
[1i; 2]^2
#= [-1; 4]
complex([1; 2])^2
#= [1; 4]
[-0.0; 3]^2
#= [0; 9]
[4 m^2; 9 m^2]^0.5
#= [2 m; 3 m]
[2 m; 3 s]^2
#= [4 m^2; 9 s^2]
[5]^3
#= [125]
[2; 3]^0
#= [1; 1]
[2 m; 3 s]^0
#= [1; 1]
[[1, 2; 3, 4]; 3]^2
#= [[1, 4; 9, 16]; 9]
B := [1, 2; 3, 4]
submatrix(B, 0, 1, 1, 1)^2
#= [4; 16]
[0; 1]^-1
#! "divide by zero" 2
[0]^-1
#! "divide by zero" 2
[1; 2]^(1 m)
#! "must be dimless" 2
[1; "a"]^2
#! "must be a scalar or a matrix" 1
[1 m; 2]^1i
#! "unit power not representable" -1

# A number to the power of every element of a column.
2^[1; 2; 3]
#= [2; 4; 8]
(-1)^[0.5; 2]
#= [1i; 1]
1i^[2; 4]
#= [-1; 1]
(2 m)^[1; 2]
#= [2 m; 4 m^2]
(4 m)^[0.5; 0.5]
#= [2 m^(1/2); 2 m^(1/2)]
2^[[1; 2]; 3]
#= [[2; 4]; 8]
2^[0.5 m / m]
#= [1.4142135623730951]
pwr(2, [1, 2])
#! "must be vector" 2
2^[]
#! "must be vector" 2
2^[[1, 2]; 3]
#! "must be vector" 2
2^[1; "a"]
#! "must be a scalar or a matrix" 2
2^[1 m; 2 m]
#! "must be dimless" 2
2^[1 m; 2]
#! "must be dimless" 2
0^[1; -1]
#! "divide by zero" 2

# The power of a function is the function of the powers.
(sin^2)(1) + (cos^2)(1)
#~ 1e-15 1
square_of_sum(a, b) := a + b
both := square_of_sum^2
both(1, 2)
#= 9
matrix(2, 2, square_of_sum^2)
#= [0, 1; 1, 4]
rows^-1
#{"kind":"function","name":"rows^-1","params":1}
(rows^2)^3
#{"kind":"function","name":"(rows^2)^3","params":1}
((rows^2)^3)([1; 1])
#= 64
sin^(1 m)
#! "must be dimless" 2
(sin^-1)(0)
#! "divide by zero" 2

# Kinds: the second argument is looked at first.
pwr([1, 2; 3, 4], [1, 2; 3, 4])
#! "must be scalar" 2
[1; 2]^[1; 2]
#! "must be scalar" 2
pwr("a", 2)
#! "must be a scalar or a matrix" 1
2^"a"
#! "must be a scalar or a matrix" 2
"a"^"b"
#! "must be a scalar or a matrix" 2
"a"^[1; 2]
#! "must be a scalar or a matrix" 1
sin^[1; 2]
#! "must be a scalar or a matrix" 1
pwr(2, sin)
#! "must be a scalar or a matrix" 2
sin^sin
#! "must be a scalar or a matrix" 2
# The numbers' errors come before the unit's.
([1, 2; 3, 4] * m)^40000
#! "domain error" 1
([1, 2; 2, 4] * m^35000)^-2
#! "singular matrix" -1
([1, 2; 3, 4] * m^35000)^2
#! "unit power not representable" -1
