# cond1(M): norm1 of the strict inverse times norm1 of M.

cond1([1, 0; 0, 1])
#= 1
cond1([1, 0; 0, 1e-3])
#~ 1e-15 1000
cond1([1, 2; 3, 4])
#~ 1e-15 21
cond1([-5])
#= 1
# The inverse is [0.5, 0, -0.25; 0, 0, 0.25; 0, 1, 0].
cond1([2, 2, 0; 0, 0, 1; 0, 4, 0])
#= 6
# The Hilbert matrix of 3 rows; its inverse holds 192 and 180 beside 36, and the column of 180 the largest sum, 408.
cond1([1, 1/2, 1/3; 1/2, 1/3, 1/4; 1/3, 1/4, 1/5])
#~ 1e-13 748

# Complex matrices, also where the inverse turns out real.
cond1([2i, 0; 0, 4])
#= 2
cond1(complex([2, 0; 0, 4]))
#= 2
# The determinant is -3 + i; the columns' sums are sqrt(5) + 2 and 3 + sqrt(2), those of the adjugate sqrt(2) + 2 and 3 + sqrt(5).
cond1([1 + 2i, 3; 2, 1 - 1i])
#~ 1e-14 (3 + sqrt(2)) * (3 + sqrt(5)) / sqrt(10)

# A condition has no unit.
cond1([1, 2; 3, 4] * kN / m)
#~ 1e-15 21
cond1(submatrix([9, 9, 9; 9, 1, 2; 9, 3, 4], 1, 2, 1, 2))
#~ 1e-15 21

# Singular, and what the strict inverse takes for singular, whatever the setting.
cond1([1, 2; 2, 4])
#! "singular matrix" -1
cond1([0])
#! "singular matrix" -1
cond1([1i, 2i; 2i, 4i])
#! "singular matrix" -1
cond1([1, 2; 0, 0.1 + 0.2 - 0.3])
#! "singular matrix" -1
set strict_singularity_checking off
cond1([1, 2; 0, 0.1 + 0.2 - 0.3])
#! "singular matrix" -1
set strict_singularity_checking on
cond1([inf, 1; 1, 1])
#! "singular matrix" -1
cond1([])
#! "invalid dimension" -1

cond1([1, 2, 3; 4, 5, 6])
#! "must be square" 1
cond1(3)
#! "must be scalar matrix" 1
cond1("text")
#! "must be scalar matrix" 1
cond1([1 m, 2; 3, 4])
#! "must be scalar matrix" 1
cond1([[1], 2; 3, 4])
#! "must be scalar matrix" 1

cond1([1, NaN; 1, 1])
#! "floating point exception" 0
cond1([1e-310])
#! "floating point exception" 0
