# Cholesky(M, pivot, upper): P and L in a column, with P' * M * P = L * L'. Without pivoting L alone, with M = L * L'.
# When upper is not 0, U with U' * U in the place of L.

Cholesky([4, 2; 2, 3], 0)
#~ 1e-15 [2, 0; 1, sqrt(2)]
Cholesky([4, 2; 2, 3], 0, 0)
#~ 1e-15 [2, 0; 1, sqrt(2)]
Cholesky([4, 2; 2, 3], 0, 1)
#~ 1e-15 [2, 1; 0, sqrt(2)]
Cholesky([9], 0)
#= [3]
Cholesky([9], 0, 1)
#= [3]

# The largest of what is left of the diagonal comes next.
Cholesky([4, 2; 2, 3])
#~ 1e-15 [identity(2); [2, 0; 1, sqrt(2)]]
Cholesky([3, 2; 2, 4])
#~ 1e-15 [[0, 1; 1, 0]; [2, 0; 1, sqrt(2)]]
Cholesky([3, 2; 2, 4], 1, 1)
#~ 1e-15 [[0, 1; 1, 0]; [2, 1; 0, sqrt(2)]]
Cholesky([9])
#= [[1]; [3]]

M := [2, 1, 0; 1, 5, 2; 0, 2, 9]
c := Cholesky(M)
c[0]
#= [0, 0, 1; 0, 1, 0; 1, 0, 0]
c[0]' * M * c[0] - c[1] * c[1]'
#~ 1e-14 [0, 0, 0; 0, 0, 0; 0, 0, 0]
u := Cholesky(M, 1, 1)
u[0]' * M * u[0] - u[1]' * u[1]
#~ 1e-14 [0, 0, 0; 0, 0, 0; 0, 0, 0]

# One triangle only is read, of an M that is not symmetric too; what stands in the other one does not matter.
Cholesky([4, 77; 2, 3], 0)
#~ 1e-15 [2, 0; 1, sqrt(2)]
Cholesky([4, 2; 77, 3], 0, 1)
#~ 1e-15 [2, 1; 0, sqrt(2)]
Cholesky([4, NaN; 2, 3], 0)
#~ 1e-15 [2, 0; 1, sqrt(2)]
Cholesky([3, inf; 2, 4])
#~ 1e-15 [[0, 1; 1, 0]; [2, 0; 1, sqrt(2)]]
Cholesky([3, 2; inf, 4], 1, 1)
#~ 1e-15 [[0, 1; 1, 0]; [2, 1; 0, sqrt(2)]]

# The zeros of the other triangle are exact.
Cholesky([4, 2; 2, 3], 0)[0, 1]
#= 0
Cholesky([4, 2; 2, 3], 0, 1)[1, 0]
#= 0

# Flags count as 0 or not, whatever their size; their unit is not looked at.
Cholesky([4, 2; 2, 3], 0, -7)
#~ 1e-15 [2, 1; 0, sqrt(2)]
Cholesky([4, 2; 2, 3], 0 m, 1e300)
#~ 1e-15 [2, 1; 0, sqrt(2)]
rows(Cholesky([4, 2; 2, 3], 3 m))
#= 2
cols(Cholesky([4, 2; 2, 3], 3 m))
#= 1

# Complex: the factor has an imaginary array, P has none. L * L' is meant with the conjugate transpose.
Cholesky([4, -2i; 2i, 3], 0)
#~ 1e-15 complex([2, 0; 0, sqrt(2)], [0, 0; 1, 0])
Cholesky([4, -2i; 2i, 3], 0, 1)
#~ 1e-15 complex([2, 0; 0, sqrt(2)], [0, -1; 0, 0])
Cholesky([3, -2i; 2i, 4])
#~ 1e-15 [[0, 1; 1, 0]; complex([2, 0; 0, sqrt(2)], [0, 0; -1, 0])]
Cholesky(complex([4, 2; 2, 3]), 0)
#~ 1e-15 complex([2, 0; 1, sqrt(2)])
# Imaginary parts on the diagonal are taken for zeros.
Cholesky([4 + 1i, -2i; 2i, 3], 0)
#~ 1e-15 complex([2, 0; 0, sqrt(2)], [0, 0; 1, 0])

# No unit; units that differ are refused.
Cholesky([4, 2; 2, 3] * m^2, 0)
#~ 1e-15 [2, 0; 1, sqrt(2)]
Cholesky([4 m^2, 2 m; 2 m, 3])
#! "must be scalar matrix" 1

# A block of a matrix is a matrix.
Cholesky(submatrix([9, 9, 9; 9, 4, 2; 9, 2, 3], 1, 2, 1, 2), 0)
#~ 1e-15 [2, 0; 1, sqrt(2)]

# Indefinite, negative, zero.
Cholesky([1, 2; 2, 1], 0)
#! "non-positive definite matrix" -1
Cholesky([1, 2; 2, 1])
#! "non-positive definite matrix" -1
Cholesky([-1], 0)
#! "non-positive definite matrix" -1
Cholesky([-1])
#! "non-positive definite matrix" -1
Cholesky([0], 0, 1)
#! "non-positive definite matrix" -1
Cholesky([1, 2i; -2i, 1], 0)
#! "non-positive definite matrix" -1
Cholesky([1, 2i; -2i, 1])
#! "non-positive definite matrix" -1

# Semidefinite and singular: with pivoting the rank shows.
Cholesky([1, 1; 1, 1])
#! "non-positive definite matrix" -1
Cholesky([4, 2, 2; 2, 1, 1; 2, 1, 1], 1, 1)
#! "non-positive definite matrix" -1
Cholesky(complex([1, 1; 1, 1]))
#! "non-positive definite matrix" -1
Cholesky([0, 0; 0, 0])
#! "non-positive definite matrix" -1

Cholesky(4)
#! "must be scalar matrix" 1
Cholesky("text")
#! "must be scalar matrix" 1
Cholesky([[1, 2], 3])
#! "must be scalar matrix" 1
Cholesky([4, 2, 1; 2, 3, 1])
#! "must be square" 1
Cholesky([4; 2], 0)
#! "must be square" 1
Cholesky([4, 2; 2, 3], 0.5)
#! "must be integer" 2
Cholesky([4, 2; 2, 3], "text")
#! "must be integer" 2
Cholesky([4, 2; 2, 3], inf)
#! "must be integer" 2
Cholesky([4, 2; 2, 3], 0, 0.5)
#! "must be integer" 3
Cholesky([4, 2; 2, 3], 0, [1])
#! "must be integer" 3
Cholesky([4, 2; 2, 3], 1, NaN)
#! "must be integer" 3

# Shape, then the flags from left to right, then the numbers.
Cholesky([4; 2], 0.5, 0.5)
#! "must be square" 1
Cholesky([-1], 0.5, 0.5)
#! "must be integer" 2
Cholesky([])
#! "invalid dimension" -1
Cholesky([], 0)
#! "invalid dimension" -1
Cholesky([], 0, 0.5)
#! "must be integer" 3
