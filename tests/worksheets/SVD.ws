# SVD(M): singular values S, U and V' in a column, with M = U * diag(S) * V'.

rows(SVD([1, 2; 3, 4]))
#= 3
cols(SVD([1, 2; 3, 4]))
#= 1

# U has the shape of M, V' is square; the rows of V' are the right singular vectors.
M := [2, -1, 0; 4, 3, 1; 0, 5, -2; 1, 1, 1]
d := SVD(M)
S := d[0]
U := d[1]
Vt := d[2]
U * diag(S) * Vt - M
#~ 2e-14 [0, 0, 0; 0, 0, 0; 0, 0, 0; 0, 0, 0]
U' * U
#~ 1e-14 identity(3)
Vt * Vt'
#~ 1e-14 identity(3)
rows(S) * 10 + cols(S)
#= 31
rows(U) * 10 + cols(U)
#= 43
# NumPy 1.24, numpy.linalg.svd(M, compute_uv=False)
S
#~ 1e-13 [6.486269994247561; 4.366435367925141; 1.364750431198393]

# M' * M = [5, 3; 3, 5]: v1 = (1, 1) / sqrt(2) to the value sqrt(8), v2 = (1, -1) / sqrt(2) to sqrt(2).
e := SVD([1, 2; 2, 1])
e[0]
#~ 1e-15 [3; 1]
e := SVD([2, 1; 1, 2; 0, 0])
e[0]
#~ 1e-15 [3; 1]
abs(e[2][0, 0])
#~ 1e-15 sqrt(0.5)
e[2][0, 1] / e[2][0, 0]
#~ 1e-15 1
e[2][1, 1] / e[2][1, 0]
#~ 1e-15 -1
e[1][2, 0]
#~ 1e-15 0

# Complex: U and V' have imaginary arrays, V' is the conjugate transpose; the values are real.
Z := [2, -1i; 4, 3 + 1i; 0, 5]
z := SVD(Z)
z[1] * diag(z[0]) * z[2] - Z
#~ 1e-14 complex([0, 0; 0, 0; 0, 0])
complex(conj(z[1])' * z[1])
#~ 1e-14 complex(identity(2))
complex(z[2] * conj(z[2])')
#~ 1e-14 complex(identity(2))
Im(z[0])
#= [0; 0]
c := SVD(complex([3, 0; 0, 4]))
complex(c[1] * diag(c[0]) * c[2])
#~ 1e-15 complex([3, 0; 0, 4])

# One column: LAPACK's reflector turns it to -norm, so its U is -M / norm and its V' is -1; both signs are changed.
SVD([3; 4])
#~ 1e-15 [[5]; [0.6; 0.8]; [1]]
SVD([-3; -4]) - [[5]; [0.6; 0.8]; [-1]]
#~ 1e-15 [[0]; [0; 0]; [0]]
SVD([3i; 4i])[1] * SVD([3i; 4i])[2]
#~ 1e-15 [0.6i; 0.8i]
# A single number is not reflected: LAPACK's U is 1, and V' has the sign of the number.
SVD([7])
#~ 1e-15 [[7]; [-1]; [-1]]
SVD([-7])
#~ 1e-15 [[7]; [-1]; [1]]
SVD(complex([7]))
#~ 1e-15 [[7]; complex([-1]); complex([-1])]

# None of the three has a unit.
SVD([3; 4] * kN)
#~ 1e-12 [[5000]; [0.6; 0.8]; [1]]

# The column is counted from the origin.
set origin 1
SVD([3; 4])[1]
#~ 1e-15 [5]
set origin 0

# A block of a matrix is a matrix.
SVD(submatrix([9, 9; 9, 3; 9, 4], 1, 2, 1, 1))
#~ 1e-15 [[5]; [0.6; 0.8]; [1]]

# Dependent columns: the vectors are orthogonal all the same.
r := SVD([1, 2; 2, 4; 3, 6])
r[1]' * r[1]
#~ 1e-14 identity(2)

SVD([1, 2, 3; 4, 5, 6])
#! "number of rows less than number of columns" -1
SVD(3)
#! "must be scalar matrix" 1
SVD("text")
#! "must be scalar matrix" 1
SVD([1 m, 2 s; 3, 4])
#! "must be scalar matrix" 1
SVD([[1, 2], 3])
#! "must be scalar matrix" 1
SVD([])
#! "invalid dimension" -1
SVD([1, 2; inf, 4])
#! "not converging" -1
SVD([NaN; 1])
#! "not converging" -1
SVD(complex([1, 2; 3, 4], [NaN, 0; 0, 0]))
#! "not converging" -1
