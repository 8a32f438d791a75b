# norm2(M): the spectral norm, the largest singular value.

norm2([3, 0; 0, -5])
#= 5
norm2([-3])
#= 3
norm2([0, 0; 0, 0])
#= 0
# The singular values of [1, -2; 3, 4] are the roots of 15 + sqrt(125) and 15 - sqrt(125).
norm2([1, -2; 3, 4])
#~ 1e-15 sqrt(15 + sqrt(125))
# From NumPy 1.24, numpy.linalg.norm(A, 2).
norm2([1, 2; 3, 4])
#~ 1e-15 5.464985704219043
norm2([1, 1/2, 1/3; 1/2, 1/3, 1/4; 1/3, 1/4, 1/5])
#~ 1e-15 1.408318927123654
# The smallest numbers have a norm too.
norm2([1, 2; 3, 4] * 1e-310)
#~ 1e-12 5.464985704219043e-310
norm2([1e-323, 0; 0, 5e-324])
#= 1e-323
# A singular matrix has a norm too.
norm2([1, 2; 2, 4])
#~ 1e-15 5

# A complex matrix by the eigenvalues of M^H * M.
norm2([3i, 0; 0, -5])
#= 5
norm2([3 - 4i])
#~ 1e-15 5
norm2([1, 1i; 1i, -1])
#~ 1e-15 2
norm2(complex([3, 0; 0, -5]))
#= 5
norm2(complex([0, 0; 0, 0]))
#= 0
norm2([1 + 2i, 3; 2, 1 - 1i])
#~ 1e-15 4.414389310029773

norm2([3, 0; 0, -5] * kN)
#= 5000 N
norm2(submatrix([9, 9, 9; 9, 3, 0; 9, 0, -5], 1, 2, 1, 2))
#= 5

norm2([])
#! "invalid dimension" -1
norm2([1, 2, 3; 4, 5, 6])
#! "must be square" 1
norm2([1; 2])
#! "must be square" 1
norm2(3)
#! "must be scalar matrix" 1
norm2("text")
#! "must be scalar matrix" 1
norm2([1 m, 2; 3, 4])
#! "must be scalar matrix" 1
norm2([[1], 2; 3, 4])
#! "must be scalar matrix" 1

# Rotations take squares: real elements beyond 1e154 that have to be rotated are refused; complex ones are squared twice,
# and a fault from 1e77 on.
norm2([1e155, 2e155; 3e155, -5e155])
#! "overflow" -1
norm2([3e200, 0; 0, 1e200])
#= 3e200
norm2([1e90i, 1e90; 2e90, 1e90])
#! "floating point exception" 0
norm2([1e70i, 1e70; 1e70, 1e70i])
#~ 1e-15 2e70 / sqrt(2)

# Nothing converges where there is a NaN or an infinity, and a single one is compared.
norm2([NaN, 1; 1, 1])
#! "too many iterations" -1
norm2([inf, 1; 1, 1])
#! "too many iterations" -1
norm2([1i, NaN; 1, 1])
#! "too many iterations" -1
norm2([NaN])
#! "floating point exception" 0
norm2([inf])
#! "floating point exception" 0
