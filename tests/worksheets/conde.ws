# conde(M): norme of the strict inverse times norme of M.

# Not 1 for the identity: both norms are sqrt(n).
conde([1, 0; 0, 1])
#~ 1e-15 2
# sqrt(1 + 1e-6) * sqrt(1 + 1e6), which is 1e3 + 1e-3.
conde([1, 0; 0, 1e-3])
#~ 1e-15 1000.001
conde([1, 2; 3, 4])
#~ 1e-15 15
conde([-5])
#= 1
# The inverse is [0.5, 0, -0.25; 0, 0, 0.25; 0, 1, 0].
conde([2, 2, 0; 0, 0, 1; 0, 4, 0])
#= 5 * sqrt(1.375)
# The Hilbert matrix of 3 rows: its squares and those of its inverse, in exact fractions.
conde([1, 1/2, 1/3; 1/2, 1/3, 1/4; 1/3, 1/4, 1/5])
#~ 1e-13 sqrt(55368621 / 200)

# Complex matrices, also where the inverse turns out real.
conde([2i, 0; 0, 4])
#~ 1e-15 2.5
conde(complex([2, 0; 0, 4]))
#~ 1e-15 2.5
# The determinant is -3 + i; the squares add up to 20, as those of the adjugate do.
conde([1 + 2i, 3; 2, 1 - 1i])
#~ 1e-14 20 / sqrt(10)

# A condition has no unit.
conde([1, 2; 3, 4] * kN / m)
#~ 1e-15 15
conde(submatrix([9, 9, 9; 9, 1, 2; 9, 3, 4], 1, 2, 1, 2))
#~ 1e-15 15

# Singular, and what the strict inverse takes for singular, whatever the setting.
conde([1, 2; 2, 4])
#! "singular matrix" -1
conde([0])
#! "singular matrix" -1
conde([1i, 2i; 2i, 4i])
#! "singular matrix" -1
conde([1, 2; 0, 0.1 + 0.2 - 0.3])
#! "singular matrix" -1
set strict_singularity_checking off
conde([1, 2; 0, 0.1 + 0.2 - 0.3])
#! "singular matrix" -1
set strict_singularity_checking on
conde([inf, 1; 1, 1])
#! "singular matrix" -1
conde([])
#! "invalid dimension" -1

conde([1, 2, 3; 4, 5, 6])
#! "must be square" 1
conde(3)
#! "must be scalar matrix" 1
conde("text")
#! "must be scalar matrix" 1
conde([1 m, 2; 3, 4])
#! "must be scalar matrix" 1
conde([[1], 2; 3, 4])
#! "must be scalar matrix" 1

conde([1, NaN; 1, 1])
#! "floating point exception" 0
conde([1e-310])
#! "floating point exception" 0
