# norm1(M): the largest sum of a column's magnitudes.

norm1([1, -2; 3, 4])
#= 6
norm1([-3])
#= 3
norm1([0, 0; 0, -0.0])
#= 0
norm1([])
#= 0

# Complex elements count by their modulus, which is taken without squaring large numbers.
norm1([3 + 4i, 0; 0, 2])
#= 5
norm1([1i, 2; 1, -1i])
#= 3
norm1(complex([1, -2; 3, 4]))
#= 6
norm1([5e200i])
#= 5e200
norm1([3e200 + 4e200i])
#~ 1e-15 5e200

norm1([1, -2; 3, 4] * kN)
#= 6000 N
norm1([1 ft, 2 ft; 3 ft, 4 ft])
#~ 1e-15 6 ft
# A block of a matrix.
norm1(submatrix([9, 9, 9; 9, 1, -2; 9, 3, 4], 1, 2, 1, 2))
#= 6

norm1([1, 2, 3; 4, 5, 6])
#! "must be square" 1
norm1([1; 2])
#! "must be square" 1
norm1(3)
#! "must be scalar matrix" 1
norm1("text")
#! "must be scalar matrix" 1
norm1(sin)
#! "must be scalar matrix" 1
norm1([1 m, 2; 3, 4])
#! "must be scalar matrix" 1
norm1([[1], 2; 3, 4])
#! "must be scalar matrix" 1
norm1(["a"])
#! "must be scalar matrix" 1
# What its elements are is asked before its shape.
norm1([1, "a"])
#! "must be scalar matrix" 1

# Infinity is a magnitude; a sum that overflows is a fault, and so is a comparison with NaN.
norm1([inf, 1; 1, 1])
#= inf
norm1([1e308, 1; 1e308, 1])
#! "floating point exception" 0
norm1([1, NaN; 1, 1])
#! "floating point exception" 0
norm1([1, NaN * 1i; 1, 1])
#! "floating point exception" 0
