# svd(A): U above V, with A = U * diag(w) * V' and the singular values w in descending order.

# By hand: each reflection turns the sign, and the columns follow the order of the singular values 4 and 3.
svd([3, 0; 0, 4; 0, 0])
#~ 1e-16 [0, -1; -1, 0; 0, 0; 0, -1; -1, 0]
svd([5])
#= [-1; -1]
# A singular value that comes out negative turns the sign of its column of V, not of U.
svd([-5])
#= [-1; 1]
svd([3; 4])
#~ 1e-15 [-0.6; -0.8; -1]

# A column of zeros: its singular value is split off by rotating the element above the diagonal away.
svd([0, 1; 0, 0])
#= [-1, 0; 0, 1; 0, 1; -1, 0]

# Nothing to reflect and nothing to iterate: the leading columns of the identity.
svd([0, 0; 0, 0; 0, 0])
#= [1, 0; 0, 1; 0, 0; 1, 0; 0, 1]
svd([0])
#= [1; 1]

# Equal singular values keep their order among themselves as long as no larger one is exchanged past them.
svd([2, 0; 0, 2])
#~ 1e-16 [-1, 0; 0, -1; -1, 0; 0, -1]
svd([1, 0, 0; 0, 1, 0; 0, 0, 3])
#~ 1e-16 [0, 0, -1; 0, -1, 0; -1, 0, 0; 0, 0, -1; 0, -1, 0; -1, 0, 0]

# 3 by 2 gives 5 by 2. The singular values are NumPy's (numpy.linalg.svd).
A := [1, 2; 3, 4; 5, 6]
F := svd(A)
[rows(F), cols(F)]
#= [5, 2]
U := submatrix(F, 0, 2, 0, 1)
V := submatrix(F, 3, 4, 0, 1)
U * diag([9.52551809156511; 0.5143005806586441]) * V'
#~ 1e-14 A
U' * U
#~ 1e-15 identity(2)
V' * V
#~ 1e-15 identity(2)
# Columns are determined but for their sign, which U and V share.
[U[0, 0] * V[0, 0], U[0, 1] * V[0, 1]]
#~ 1e-13 [0.14242040947973922, -0.6934236524692378]

# Dependent columns: U and V are orthogonal all the same.
G := svd([1, 2, 3; 2, 4, 6; 1, 0, 1; 3, 1, 4])
submatrix(G, 0, 3, 0, 2)' * submatrix(G, 0, 3, 0, 2)
#~ 1e-15 identity(3)
submatrix(G, 4, 6, 0, 2)' * submatrix(G, 4, 6, 0, 2)
#~ 1e-15 identity(3)

# Only the scale of the matrix is far out: U and V are those of the moderate one.
svd(A * 1e150)
#~ 1e-14 F
svd(A * 1e-150)
#~ 1e-14 F

# A block of a matrix is a matrix; the origin plays no part.
svd(submatrix([9, 9, 9; 9, 3, 0; 9, 0, 4; 9, 0, 0], 1, 3, 1, 2))
#~ 1e-16 [0, -1; -1, 0; 0, 0; 0, -1; -1, 0]
set origin 1
svd([-5])
#= [-1; 1]
set origin 0

# What cannot be decomposed: a complex matrix before its shape is looked at, then an empty one, then a wide one.
svd(complex([1, 2; 3, 4]))
#! "must be real matrix" 1
svd(complex([1, 2, 3]))
#! "must be real matrix" 1
svd([1i])
#! "must be real matrix" 1
svd(complex([]))
#! "must be real matrix" 1
svd([])
#! "invalid dimension" -1
svd([1, 2, 3; 4, 5, 6])
#! "number of rows less than number of columns" -1

# A unit is refused, but after all that the decomposition itself refuses.
svd([1, 2; 3, 4] * m)
#! "must be dimless" 1
svd([1, 2] * m)
#! "number of rows less than number of columns" -1
svd([NaN] * m)
#! "floating point exception" 0
svd([1; 1] * m / m)
#~ 1e-15 [-sqrt(0.5); -sqrt(0.5); -1]
svd([180, 90] * deg)
#! "number of rows less than number of columns" -1

# Only one unit and only numbers.
svd([1 m, 2 s])
#! "must be scalar matrix" 1
svd([[1], 2])
#! "must be scalar matrix" 1
svd(["a"; "b"])
#! "must be scalar matrix" 1
svd(3)
#! "must be scalar matrix" 1
svd("text")
#! "must be scalar matrix" 1
svd(sin)
#! "must be scalar matrix" 1

# Rotations take squares: elements beyond 1e154 that have to be rotated are refused, others are not.
svd([1e160, 1e160; 2e160, 3e160])
#! "overflow" -1
svd([1e200, 0; 0, 3e200])
#~ 1e-16 [0, -1; -1, 0; 0, -1; -1, 0]
# A sum of magnitudes that overflows.
svd([1e308; 1e308])
#! "floating point exception" 0

# NaN and infinities end in an error: of the arithmetic, or because nothing ever converges.
svd([NaN])
#! "floating point exception" 0
svd([inf])
#! "floating point exception" 0
svd([NaN, 1; 1, 1])
#! "too many iterations" -1
svd([1, 1; 1, NaN])
#! "too many iterations" -1
svd([inf, 1; 1, 2])
#! "too many iterations" -1
svd([0, 0; 0, NaN])
#! "floating point exception" 0
