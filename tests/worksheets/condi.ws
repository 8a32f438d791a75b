# condi(M): normi of the strict inverse times normi of M.

condi([1, 0; 0, 1])
#= 1
condi([1, 0; 0, 1e-3])
#~ 1e-15 1000
condi([1, 2; 3, 4])
#~ 1e-15 21
condi([-5])
#= 1
# The inverse is [0.5, 0, -0.25; 0, 0, 0.25; 0, 1, 0].
condi([2, 2, 0; 0, 0, 1; 0, 4, 0])
#= 4
# The Hilbert matrix of 3 rows; its inverse holds 192 and 180 beside 36, and the row of 180 the largest sum, 408.
condi([1, 1/2, 1/3; 1/2, 1/3, 1/4; 1/3, 1/4, 1/5])
#~ 1e-13 748

# Complex matrices, also where the inverse turns out real.
condi([2i, 0; 0, 4])
#= 2
condi(complex([2, 0; 0, 4]))
#= 2
# The determinant is -3 + i; the rows' sums are sqrt(5) + 3 and 2 + sqrt(2), those of the adjugate sqrt(2) + 3 and 2 + sqrt(5).
condi([1 + 2i, 3; 2, 1 - 1i])
#~ 1e-14 (sqrt(5) + 3) * (sqrt(2) + 3) / sqrt(10)

# A condition has no unit.
condi([1, 2; 3, 4] * kN / m)
#~ 1e-15 21
condi(submatrix([9, 9, 9; 9, 1, 2; 9, 3, 4], 1, 2, 1, 2))
#~ 1e-15 21

# Singular, and what the strict inverse takes for singular, whatever the setting.
condi([1, 2; 2, 4])
#! "singular matrix" -1
condi([0])
#! "singular matrix" -1
condi([1i, 2i; 2i, 4i])
#! "singular matrix" -1
condi([1, 2; 0, 0.1 + 0.2 - 0.3])
#! "singular matrix" -1
set strict_singularity_checking off
condi([1, 2; 0, 0.1 + 0.2 - 0.3])
#! "singular matrix" -1
set strict_singularity_checking on
condi([inf, 1; 1, 1])
#! "singular matrix" -1
condi([])
#! "invalid dimension" -1

condi([1, 2, 3; 4, 5, 6])
#! "must be square" 1
condi(3)
#! "must be scalar matrix" 1
condi("text")
#! "must be scalar matrix" 1
condi([1 m, 2; 3, 4])
#! "must be scalar matrix" 1
condi([[1], 2; 3, 4])
#! "must be scalar matrix" 1

condi([1, NaN; 1, 1])
#! "floating point exception" 0
condi([1e-310])
#! "floating point exception" 0
