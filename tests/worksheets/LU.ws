# LU(M): P, L and U in a column, with P * M = L * U; the largest element of a column becomes the pivot.

LU([4, 3; 6, 3])
#~ 1e-15 [[0, 1; 1, 0]; [1, 0; 2/3, 1]; [6, 3; 0, 1]]
LU([2, 1; 4, 3])
#= [[0, 1; 1, 0]; [1, 0; 0.5, 1]; [4, 3; 0, -0.5]]
LU([5])
#= [[1]; [1]; [5]]

# Of equal magnitudes the first one stays.
LU([1, 2; -1, 3])
#= [[1, 0; 0, 1]; [1, 0; -1, 1]; [1, 2; 0, 5]]

# Wide: L is square.
LU([1, 2, 3; 4, 5, 6])
#= [[0, 1; 1, 0]; [1, 0; 0.25, 1]; [4, 5, 6; 0, 0.75, 1.5]]
LU([2, 4, 6])
#= [[1]; [1]; [2, 4, 6]]

# Tall: U is square, P has as many rows as M.
LU([4, 3; 8, 2; 2, 1])
#= [[0, 1, 0; 1, 0, 0; 0, 0, 1]; [1, 0; 0.5, 1; 0.25, 0.25]; [8, 2; 0, 2]]
LU([2; 4; 1])
#= [[0, 1, 0; 1, 0, 0; 0, 0, 1]; [1; 0.5; 0.25]; [4]]

# Three rows that move in a circle: P is no exchange of two.
LU([0, 0, 3; 4, 0, 0; 0, 2, 0])
#= [[0, 1, 0; 0, 0, 1; 1, 0, 0]; identity(3); [4, 0, 0; 0, 2, 0; 0, 0, 3]]

# A singular matrix has factors, with a zero on the diagonal of U.
LU([1, 2; 2, 4])
#= [[0, 1; 1, 0]; [1, 0; 0.5, 1]; [2, 4; 0, 0]]
LU([0])
#= [[1]; [1]; [0]]
LU([0, 0; 0, 0; 0, 0])
#= [identity(3); [1, 0; 0, 1; 0, 0]; [0, 0; 0, 0]]

# Complex: L and U have imaginary arrays, P has none.
LU([1i, 1; 2, 1i])
#= [[0, 1; 1, 0]; [1, 0; 0.5i, 1]; [2, 1i; 0, 1.5 + 0i] + complex([0, 0; 0, 0])]
LU(complex([2, 1; 4, 3]))
#= [[0, 1; 1, 0]; complex([1, 0; 0.5, 1]); complex([4, 3; 0, -0.5])]

M := [2, -1, 0, 3; 4, 3, 1, 0; 0, 5, -2, 7]
f := LU(M)
f[0] * M - f[1] * f[2]
#~ 1e-14 [0, 0, 0, 0; 0, 0, 0, 0; 0, 0, 0, 0]

# None of the three has a unit; units that differ are refused.
LU([2, 1; 4, 3] * N)
#= [[0, 1; 1, 0]; [1, 0; 0.5, 1]; [4, 3; 0, -0.5]]
LU([1 m, 2 s; 3 m, 4 s])
#! "must be scalar matrix" 1

# The column is counted from the origin, a block of a matrix is a matrix.
set origin 1
LU(submatrix([9, 9, 9; 9, 2, 1; 9, 4, 3], 2, 3, 2, 3))[3]
#= [4, 3; 0, -0.5]
set origin 0

# What is not finite is taken as it is.
LU([inf])
#= [[1]; [1]; [inf]]
LU([1, NaN; 2, 3])[2][0, 0]
#= 2

LU(3)
#! "must be scalar matrix" 1
LU("text")
#! "must be scalar matrix" 1
LU([[1, 2], 3])
#! "must be scalar matrix" 1
LU([1, "text"])
#! "must be scalar matrix" 1
LU([])
#! "invalid dimension" -1
