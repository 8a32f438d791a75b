# cholesky(M): the lower triangular L with M = L * L'.
cholesky([4])
#= [2]
cholesky([4, 12, -16; 12, 37, -43; -16, -43, 98])
#= [2, 0, 0; 6, 1, 0; -8, 5, 3]

# Only the upper triangle is read: this is the matrix [4, 2; 2, 3].
cholesky([4, 2; 7, 3])
#= [2, 0; 1, sqrt(2)]
cholesky([4, 2; NaN, 3])
#= [2, 0; 1, sqrt(2)]
cholesky([4, 2; inf, 3])
#= [2, 0; 1, sqrt(2)]

# The zeros above the diagonal are +0, whatever stood there.
cholesky([4, -0.0; 0, 9])
#= [2, 0; -0.0, 3]

# The unit is halved.
cholesky([4, 2; 2, 3] * m^2)
#= [2, 0; 1, sqrt(2)] * m
cholesky([4] * m)
#= [2] * m^0.5
cholesky([4] * m^3 * s^-1)
#= [2] * m^1.5 * s^-0.5
cholesky([4] * (1 m)^(1 / 60000))
#! "unit power not representable" -1
# Numbers come before units.
cholesky([-4] * (1 m)^(1 / 60000))
#! "non-positive definite matrix" -1

cholesky([])
#= []

# A block of a matrix is a matrix.
B := [9, 9, 9; 9, 4, 2; 9, 7, 3]
cholesky(submatrix(B, 1, 2, 1, 2))
#= [2, 0; 1, sqrt(2)]

# L * L' is M.
f(i, j) := if(i == j, 30, 1) + i * j / 100
M := matrix(27, 27, f)
L := cholesky(M)
L * L'
#~ 1e-15 M
g(i, j) := 1 / (i + j + 1)
H := matrix(8, 8, g)
cholesky(H) * cholesky(H)'
#~ 1e-15 H

# A pivot must be above zero.
cholesky([0])
#! "non-positive definite matrix" -1
cholesky([-0.0])
#! "non-positive definite matrix" -1
cholesky([-1])
#! "non-positive definite matrix" -1
cholesky([4, 2; 2, -3])
#! "non-positive definite matrix" -1
# Semi-definite: the second pivot is exactly zero, or rounds to less.
cholesky([1, 1; 1, 1])
#! "non-positive definite matrix" -1
cholesky([3, 1; 1, 1 / 3])
#! "non-positive definite matrix" -1

cholesky([1, 2])
#! "must be square" 1
cholesky([1; 2])
#! "must be square" 1

cholesky(4)
#! "must be real matrix" 1
cholesky("text")
#! "must be real matrix" 1
cholesky(["a"])
#! "must be real matrix" 1
cholesky([[4], 2; 2, 3])
#! "must be real matrix" 1
cholesky([1 + 1i])
#! "must be real matrix" 1
cholesky(complex([4]))
#! "must be real matrix" 1
cholesky([4 m, 0; 0, 4 m])
#! "must be real matrix" 1
cholesky(sin)
#! "must be real matrix" 1

# Faults of the arithmetic: a comparison with NaN. Infinity may stand on the diagonal.
cholesky([NaN])
#! "floating point exception" 0
cholesky([4, NaN; 0, 4])
#! "floating point exception" 0
cholesky([inf, inf; inf, 1])
#! "floating point exception" 0
cholesky([inf])
#= [inf]
cholesky([inf, 1; 1, 4])
#= [inf, 0; 0, 2]
# A refusal wins over the overflow before it.
cholesky([1e-300, 1e300; 1e300, 1])
#! "non-positive definite matrix" -1
cholesky([1, inf; inf, 1])
#! "non-positive definite matrix" -1
