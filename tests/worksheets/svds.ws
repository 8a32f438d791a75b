# svds(M): the singular values of a matrix with at least as many rows as columns, the largest first.

svds([3, 0; 0, 4; 0, 0])
#~ 1e-15 [4; 3]
svds([2, 0; 0, -7])
#~ 1e-15 [7; 2]
svds([-5])
#~ 1e-15 [5]
svds([0])
#= [0]
svds([3; 4])
#~ 1e-15 [5]

# The eigenvalues of M' * M = [2, 1; 1, 2] are 3 and 1.
svds([1, 0; 0, 1; 1, 1])
#~ 1e-15 [sqrt(3); 1]

# A matrix of rank 1 has one that is not zero.
svds([1, 2; 2, 4; 3, 6])
#~ 1e-15 [sqrt(70); 0]

# Of a complex matrix they are real, and the result carries no imaginary array.
svds([3i])
#~ 1e-15 [3]
svds([1, 1i; -1i, 1])
#~ 1e-15 [2; 0]
svds(complex([3, 0; 0, 4]))
#~ 1e-15 [4; 3]

# They have no unit.
svds([3, 0; 0, 4] * kN)
#~ 1e-15 [4000; 3000]

# Numbers near the ends of the range are scaled on the way.
svds([3e300; 4e300])
#~ 1e-14 [5e300]
svds([3e-300; 4e-300])
#~ 1e-14 [5e-300]

# A block of a matrix is a matrix.
svds(submatrix([9, 9, 9; 9, 3, 0; 9, 0, 4], 1, 2, 1, 2))
#~ 1e-15 [4; 3]

# They are what SVD gives.
M := [2, -1, 0; 4, 3, 1; 0, 5, -2; 1, 1, 1]
svds(M) - SVD(M)[0]
#~ 1e-14 [0; 0; 0]
Z := [2, -1i; 4, 3 + 1i; 0, 5]
svds(Z) - SVD(Z)[0]
#~ 1e-14 [0; 0]

svds([1, 2, 3; 4, 5, 6])
#! "number of rows less than number of columns" -1
svds([1i, 2])
#! "number of rows less than number of columns" -1
svds(3)
#! "must be scalar matrix" 1
svds("text")
#! "must be scalar matrix" 1
svds([1 m, 2 s; 3, 4])
#! "must be scalar matrix" 1
svds([[1, 2], 3])
#! "must be scalar matrix" 1
svds([1, "text"])
#! "must be scalar matrix" 1
svds([])
#! "invalid dimension" -1

# What is not finite has no singular values.
svds([1, 2; NaN, 4])
#! "not converging" -1
svds([1, 2; 3, -inf])
#! "not converging" -1
svds([NaN])
#! "not converging" -1
svds(complex([1, 2; 3, 4], [0, 0; inf, 0]))
#! "not converging" -1
# The shape comes first.
svds([NaN, 1])
#! "number of rows less than number of columns" -1
