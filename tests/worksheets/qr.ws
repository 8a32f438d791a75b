# qr(A): Q and R side by side, with A = Q * R, by rotations of neighbouring rows from the last one upwards.

# A rotation of a above b has t = a / b, s = 1 / sqrt(t^2 + 1) and c = t * s where b is the larger.
s := 1 / sqrt(1.5625)
c := 0.75 * s
qr([3; 4])
#= [c, -s, 3 * c + 4 * s; s, c, 0]
# Otherwise t = b / a, c = 1 / sqrt(t^2 + 1) and s = t * c. The larger element gives the sign.
qr([-4; 3])
#= [s, c, -4 * s + 3 * -c; -c, s, 0]
qr([3; -4])
#= [-c, -s, 3 * -c + -4 * s; s, -c, 0]
# On equality it is the upper one.
r := 1 / sqrt(2)
qr([-1; 1])
#= [r, r, -1 * r + 1 * -r; -r, r, 0]

# Where nothing is to be rotated, the diagonal keeps its signs.
qr([5])
#= [1, 5]
qr([-5])
#= [1, -5]
qr([-1, 2; 0, -3])
#= [1, 0, -1, 2; 0, 1, 0, -3]

# A zero matrix: Q is the identity.
qr([0])
#= [1, 0]
qr([0, 0, 0; 0, 0, 0])
#= [1, 0, 0, 0, 0; 0, 1, 0, 0, 0]

# A column of zeros is skipped: the second one is rotated into the first row.
q := 1 / sqrt(1.25)
p := 0.5 * q
qr([0, 1; 0, 2])
#= [p, -q, 0, p + 2 * q; q, p, 0, 0]

# A rotation takes the zeros on its left along: with a negative cosine they change sign.
qr([1, 0; 0, -1; 0, 2])
#= [1, 0, -0.0, 1, 0; 0, -p, -q, 0, p + 2 * q; 0, q, -p, -0.0, 0]

# A wide matrix is done when every row has its pivot, a tall one has zeros at the bottom.
qr([3, 1, 2])
#= [1, 3, 1, 2]
qr([0, 3, 1])
#= [1, 0, 3, 1]
submatrix(qr([1, 2; 3, 4; 5, 7; 2, 2]), 2, 3, 4, 5)
#~ 1e-15 [0, 0; 0, 0]

# A rank that is not full shows as zero rows.
submatrix(qr([1, 2; 2, 4]), 1, 1, 2, 3)
#= [0, 0]
# What is negligible beside its column is zero: within j * norm * eps / sqrt(rows left), the j counted from 1.
qr([1; 1e-17])
#= [1, 0, 1; 0, 1, 0]
qr([1, 1; 0, 4e-16])
#= [1, 0, 1, 1; 0, 1, 0, 0]
qr([1, 1; 0, 1e-15])
#= [1, 0, 1, 1; 0, 1, 0, 1e-15]
# A column without a pivot does not advance the row of the next one.
qr([1, 1, 1; 0, 1e-17, 2])
#= [1, 0, 1, 1, 1; 0, 1, 0, 0, 2]
# A column whose squares vanish counts as zero, and is left as it is.
qr([1e-200; 1e-200])
#= [1, 0, 1e-200; 0, 1, 1e-200]

# Q and R both have the root of the unit.
qr([3; 4] * m^2)
#= [c, -s, 3 * c + 4 * s; s, c, 0] * m
qr([5] * m)
#= [1, 5] * m^0.5
qr([5] * (1 m)^(1 / 60000))
#! "unit power not representable" -1

qr([])
#= []

# A block of a matrix is a matrix.
B := [9, 9, 9; 9, 9, 3; 9, 9, 4]
qr(submatrix(B, 1, 2, 2, 2))
#= [c, -s, 3 * c + 4 * s; s, c, 0]

# Q * R is A, and Q is orthogonal.
f(i, j) := sin(7 * i * i + 3 * j)
A := matrix(21, 19, f)
F := qr(A)
Q := submatrix(F, 0, 20, 0, 20)
R := submatrix(F, 0, 20, 21, 39)
Q * R
#~ 1e-14 A
Q * Q'
#~ 1e-14 identity(21)
g(i, j) := cos(i + j * j)
W := matrix(5, 40, g)
G := qr(W)
submatrix(G, 0, 4, 0, 4) * submatrix(G, 0, 4, 5, 44)
#~ 1e-14 W

qr([1i])
#! "must be real matrix" 1
qr(complex([1, 2]))
#! "must be real matrix" 1
qr(complex([]))
#! "must be real matrix" 1

qr(3)
#! "must be scalar matrix" 1
qr("text")
#! "must be scalar matrix" 1
qr(["a", "b"])
#! "must be scalar matrix" 1
qr([[1], 2])
#! "must be scalar matrix" 1
qr([1 m, 2])
#! "must be scalar matrix" 1
qr(sin)
#! "must be scalar matrix" 1

# Faults of the arithmetic: squares that overflow, a comparison with NaN, infinity times zero.
qr([1e200])
#! "floating point exception" 0
qr([NaN])
#! "floating point exception" 0
qr([1; NaN])
#! "floating point exception" 0
qr([1; inf])
#! "floating point exception" 0
# Beside an infinity every other element of the column is negligible.
qr([inf])
#= [1, inf]
qr([inf; 1])
#= [1, 0, inf; 0, 1, 0]
