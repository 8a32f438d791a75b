# cond2(M): the largest singular value over the smallest; of a complex matrix norm2 of the strict inverse times norm2.

cond2([1, 0; 0, 1])
#= 1
cond2([-5])
#= 1
cond2([1, 0; 0, 1e-3])
#~ 1e-15 1000
cond2([3, 0; 0, -6])
#= 2
# The singular values are the roots of 15 + sqrt(221) and 15 - sqrt(221), their product is 2.
cond2([1, 2; 3, 4])
#~ 1e-14 (15 + sqrt(221)) / 2
# From NumPy 1.24, numpy.linalg.cond(A, 2).
cond2([1, 1/2, 1/3; 1/2, 1/3, 1/4; 1/3, 1/4, 1/5])
#~ 1e-12 524.0567775860627

cond2([3i, 0; 0, 6])
#~ 1e-15 2
cond2([1 + 2i, 3; 2, 1 - 1i])
#~ 1e-14 6.162277660168381
# A complex matrix whose inverse is real.
cond2(complex([1, 0; 0, 1e-3]))
#~ 1e-15 1000

# A condition has no unit.
cond2([3, 0; 0, -6] * kN / m)
#= 2
cond2(submatrix([9, 9, 9; 9, 3, 0; 9, 0, -6], 1, 2, 1, 2))
#= 2

# Only a smallest singular value of exactly zero is refused; rounding is not zero.
cond2([0, 0; 0, 0])
#! "singular matrix" -1
cond2([1, 0; 0, 0])
#! "singular matrix" -1
cond2([0])
#! "singular matrix" -1
cond2([1, 2; 2, 4]) > 1e15
#= 1
# A complex matrix is refused where its strict inverse is.
cond2(complex([1, 2; 2, 4]))
#! "singular matrix" -1
cond2([1i, 2i; 2i, 4i])
#! "singular matrix" -1

cond2([])
#! "invalid dimension" -1
cond2(complex([]))
#! "invalid dimension" -1
cond2([1, 2, 3; 4, 5, 6])
#! "must be square" 1
cond2(3)
#! "must be scalar matrix" 1
cond2("text")
#! "must be scalar matrix" 1
cond2([1 m, 2; 3, 4])
#! "must be scalar matrix" 1
cond2([[1], 2; 3, 4])
#! "must be scalar matrix" 1

cond2([1e155, 2e155; 3e155, -5e155])
#! "overflow" -1
cond2([NaN, 1; 1, 1])
#! "too many iterations" -1
cond2([1, NaN * 1i; 1, 1])
#! "too many iterations" -1
cond2([NaN])
#! "floating point exception" 0
# The quotient overflows.
cond2([1e-200, 0; 0, 1e200])
#! "floating point exception" 0
