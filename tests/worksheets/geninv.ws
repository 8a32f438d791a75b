# geninv(A): the generalised (Moore-Penrose) inverse. Singular values up to TOL, which is 1e-3 here, count as zero.

geninv([2])
#= [0.5]
geninv([3, 0; 0, 4; 0, 0])
#~ 1e-15 [1/3, 0, 0; 0, 0.25, 0]
geninv([3; 4])
#~ 1e-15 [0.12, 0.16]
# Where there is an inverse, it is that one.
geninv([1, 2; 3, 4])
#~ 1e-14 [-2, 1; 1.5, -0.5]
# (A' * A)^-1 * A' by hand.
geninv([1, 2; 3, 4; 5, 6])
#~ 1e-14 [-16, -4, 8; 13, 4, -5] / 12
# Of rank 1: A' over the sum of the squares.
geninv([1, 2; 2, 4])
#~ 1e-15 [1, 2; 2, 4] / 25
geninv([1, 1; 1, 1; 1, 1])
#~ 1e-15 [1, 1, 1; 1, 1, 1] / 6

# The four conditions that define it, on a matrix of rank 2.
A := [1, 2, 3; 2, 4, 6; 1, 0, 1; 3, 1, 4]
X := geninv(A)
[rows(X), cols(X)]
#= [3, 4]
A * X * A
#~ 1e-14 A
X * A * X
#~ 1e-14 X
A * X
#~ 1e-14 (A * X)'
X * A
#~ 1e-14 (X * A)'

# A matrix of zeros has one of zeros.
geninv([0, 0; 0, 0; 0, 0])
#= [0, 0, 0; 0, 0, 0]
geninv([])
#= []

# A singular value equal to TOL counts as zero, a larger one does not.
B := [2, 0; 0, 0.5; 0, 0]
set tol 0.5
geninv(B)
#~ 1e-16 [0.5, 0, 0; 0, 0, 0]
set tol 0.499
geninv(B)
#~ 1e-16 [0.5, 0, 0; 0, 2, 0]
set tol 2
geninv(B)
#= [0, 0, 0; 0, 0, 0]
set tol inf
geninv(B)
#= [0, 0, 0; 0, 0, 0]
set tol 0
geninv([1e-8])
#= [1 / 1e-8]
geninv([0, 0; 0, 0])
#= [0, 0; 0, 0]
# Below zero, nothing counts as zero, and a zero is divided by.
set tol -1
geninv(B)
#~ 1e-16 [0.5, 0, 0; 0, 2, 0]
geninv([0])
#! "floating point exception" 0
# A comparison with NaN is a fault; without a singular value there is none.
set tol NaN
geninv(B)
#! "floating point exception" 0
geninv([])
#= []
set tol 1e-3

# The result has the inverse unit. TOL is compared with singular values in SI units: 4 mm is 0.004 m, 0.5 mm is zero.
geninv([2; 0] * kN)
#~ 1e-16 [0.5, 0] / kN
geninv([4, 0; 0, 0.5] * mm)
#~ 1e-13 [250, 0; 0, 0] / m
geninv([4, 0; 0, 0.5] * m^2)
#~ 1e-16 [0.25, 0; 0, 2] / m^2
geninv([] * m)
#= []
geninv([1 m, 2 s])
#! "must be scalar matrix" 1
geninv([1 m, 0; 0, 1 m])
#! "must be scalar matrix" 1
# The power of a unit can leave its range; the number's own errors come first.
geninv([2] * m^30000)
#= [0.5] * m^-30000

# A block of a matrix is a matrix.
geninv(submatrix([9, 9, 9; 9, 3, 0; 9, 0, 4; 9, 0, 0], 1, 3, 1, 2))
#~ 1e-15 [1/3, 0, 0; 0, 0.25, 0]

geninv([1, 2, 3; 4, 5, 6])
#! "number of rows less than number of columns" -1
geninv([1, 2, 3; 4, 5, 6]')'
#~ 1e-14 [-17, 8; -2, 2; 13, -4] / 18
geninv(complex([1, 2, 3]))
#! "must be real matrix" 1
geninv([1i])
#! "must be real matrix" 1
geninv([[1], 2])
#! "must be scalar matrix" 1
geninv(["a"])
#! "must be scalar matrix" 1
geninv(3)
#! "must be scalar matrix" 1
geninv("text")
#! "must be scalar matrix" 1

geninv([1e160, 1e160; 2e160, 3e160])
#! "overflow" -1
geninv([NaN])
#! "floating point exception" 0
geninv([1e308; 1e308])
#! "floating point exception" 0
geninv([inf, 1; 1, 2])
#! "too many iterations" -1
geninv([1, 2; NaN, 1; 1, 1])
#! "too many iterations" -1
