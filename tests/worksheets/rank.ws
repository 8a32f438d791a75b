# rank(A): the number of singular values above max(m, n) * 2.220446049250313e-16 times the largest one.

rank([1, 2; 3, 4])
#= 2
rank([1, 2; 2, 4])
#= 1
rank([1, 2, 3; 4, 5, 6; 7, 8, 9])
#= 2
rank([0, 0; 0, 0; 0, 0])
#= 0
rank([-0.0])
#= 0
rank([7])
#= 1
rank([])
#= 0

# A wide matrix has the rank of its transpose.
rank([1, 2, 3; 2, 4, 6])
#= 1
rank([1, 0, 2; 0, 1, 5])
#= 2
rank([0, 0, 3])
#= 1

# The tolerance is the larger dimension times the last place of the largest singular value; at the tolerance is below.
rank([1, 0; 0, 4.440892098500626e-16])
#= 1
rank([1, 0; 0, 4.440892098500627e-16])
#= 2
rank([1, 0; 0, 4.440892098500627e-16; 0, 0])
#= 1
rank([1, 0, 0; 0, 4.440892098500627e-16, 0])
#= 1
rank([1, 0; 0, 6.661338147750940e-16; 0, 0])
#= 2
# The scale itself does not matter.
rank([1e-200, 0; 0, 1e-210])
#= 2
rank([1e200, 0; 0, 1e190])
#= 2
rank([1e-150, 2e-150; 3e-150, 4e-150])
#= 2
rank([1e-310, 2e-310; 3e-310, 4e-310])
#= 2

# One unit or none; the rank has none.
rank([1, 2; 2, 4] * kN)
#= 1
rank([1 m, 2 ft])
#= 1
rank([1 m, 2 s])
#! "must be real matrix" 1

# A block of a matrix is a matrix.
rank(submatrix([9, 9, 9; 9, 1, 2; 9, 2, 4], 1, 2, 1, 2))
#= 1
rank(submatrix([9, 9, 9; 9, 1, 2; 9, 2, 4], 1, 1, 1, 2))
#= 1

rank([1i])
#! "must be real matrix" 1
rank(complex([1]))
#! "must be real matrix" 1
rank([[1], 2])
#! "must be real matrix" 1
rank(["a"])
#! "must be real matrix" 1
rank(3)
#! "must be real matrix" 1
rank("text")
#! "must be real matrix" 1

rank([1e160, 1e160; 2e160, 3e160])
#! "overflow" -1
rank([NaN])
#! "floating point exception" 0
rank([1e308; 1e308])
#! "floating point exception" 0
rank([1, 2; 3, inf])
#! "too many iterations" -1
rank([1, NaN, 1; 1, 1, 2])
#! "too many iterations" -1
