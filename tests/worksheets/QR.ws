# QR(M, pivot): P, Q and R in a column, with M * P = Q * R; Q and R with M = Q * R when pivot is 0.

# The reflector turns the first column to -5; the last column of a square matrix is not reflected.
QR([3, 1; 4, 2], 0)
#~ 1e-15 [[-0.6, -0.8; -0.8, 0.6]; [-5, -2.2; 0, 0.4]]
QR([3, 1; 4, 2])
#~ 1e-15 [identity(2); [-0.6, -0.8; -0.8, 0.6]; [-5, -2.2; 0, 0.4]]

# The longest column comes first.
QR([1, 3; 2, 4])
#~ 1e-15 [[0, 1; 1, 0]; [-0.6, -0.8; -0.8, 0.6]; [-5, -2.2; 0, 0.4]]
QR([1, 3; 2, 4])[0]
#= [0, 1; 1, 0]

# pivot counts as 0 or not, whatever its size; its unit is not looked at.
rows(QR([1, 3; 2, 4], 5))
#= 3
rows(QR([1, 3; 2, 4], -1))
#= 3
rows(QR([1, 3; 2, 4], 1e300))
#= 3
rows(QR([1, 3; 2, 4], 2 m))
#= 3
rows(QR([1, 3; 2, 4], 0 m))
#= 2
rows(QR([1, 3; 2, 4], -0.0))
#= 2

# Tall: Q is square all the same, R has the shape of M and zeros below the diagonal.
T := [1, 2; 2, -1; 2, 0; 4, 5]
q := QR(T, 0)
q[0] * q[1] - T
#~ 1e-14 [0, 0; 0, 0; 0, 0; 0, 0]
q[0]' * q[0]
#~ 1e-14 identity(4)
rows(q[0]) * 10 + cols(q[0])
#= 44
q[1][0, 0]
#~ 1e-15 -5
submatrix(q[1], 1, 3, 0, 0)
#= [0; 0; 0]
submatrix(q[1], 2, 3, 1, 1)
#= [0; 0]
p := QR(T)
T * p[0] - p[1] * p[2]
#~ 1e-14 [0, 0; 0, 0; 0, 0; 0, 0]
p[0]
#= [0, 1; 1, 0]
p[2][0, 0]
#~ 1e-15 -sqrt(30)
p[1]' * p[1]
#~ 1e-14 identity(4)

# A tall column whose rows are more than 16 times its columns.
t(i, j) := i + 1
C := matrix(40, 1, t)
c := QR(C)
c[0]
#= [1]
c[1] * c[2] - C
#~ 1e-12 0 * C
c[2][0, 0]
#~ 1e-14 -sqrt(22140)
rows(QR(C, 0)[0]) * 100 + cols(QR(C, 0)[0])
#= 4040

# Wide.
W := [3, 1, 5; 4, 2, 7]
w := QR(W)
w[0]
#= [0, 0, 1; 0, 1, 0; 1, 0, 0]
W * w[0] - w[1] * w[2]
#~ 1e-14 [0, 0, 0; 0, 0, 0]
w[2][0, 0]
#~ 1e-15 -sqrt(74)
w[2][1, 0]
#= 0
v := QR(W, 0)
v[0] * v[1] - W
#~ 1e-14 [0, 0, 0; 0, 0, 0]

QR([7], 0)
#= [[1]; [7]]
QR([0, 0; 0, 0])
#~ 1e-15 [identity(2); identity(2); [0, 0; 0, 0]]

# The diagonal of R shows the rank: the third column is the sum of the others.
R := QR([1, 4, 5; 2, 5, 7; 3, 6, 9])[2]
abs(R[2, 2]) < 1e-14
#= 1
abs(R[1, 1]) > 0.5
#= 1

# Complex: Q and R have imaginary arrays, P has none.
Z := [1i, 2; 2, 3 + 1i; 1, -1i]
z := QR(Z)
z[0]
#= [0, 1; 1, 0]
Z * z[0] - z[1] * z[2]
#~ 1e-14 complex([0, 0; 0, 0; 0, 0])
complex(conj(z[1])' * z[1])
#~ 1e-14 complex(identity(3))
z[2][1, 0]
#= 0
y := QR(Z, 0)
y[0] * y[1] - Z
#~ 1e-14 complex([0, 0; 0, 0; 0, 0])
QR(complex([3, 1; 4, 2]), 0)
#~ 1e-15 [complex([-0.6, -0.8; -0.8, 0.6]); complex([-5, -2.2; 0, 0.4])]

# No unit; units that differ are refused.
QR([3, 1; 4, 2] * m, 0)
#~ 1e-15 [[-0.6, -0.8; -0.8, 0.6]; [-5, -2.2; 0, 0.4]]
QR([1 m, 2 s; 3 m, 4 s])
#! "must be scalar matrix" 1

# The column is counted from the origin, a block of a matrix is a matrix.
set origin 1
QR(submatrix([9, 9, 9; 9, 3, 1; 9, 4, 2], 2, 3, 2, 3), 0)[2]
#~ 1e-15 [-5, -2.2; 0, 0.4]
set origin 0

# What is not finite is taken as it is.
QR([NaN], 0)[1]
#= [NaN]
rows(QR([1, NaN; inf, 2]))
#= 3

QR(3)
#! "must be scalar matrix" 1
QR("text", 0)
#! "must be scalar matrix" 1
QR([[1, 2], 3])
#! "must be scalar matrix" 1
QR([1, 2; 3, 4], 0.5)
#! "must be integer" 2
QR([1, 2; 3, 4], "text")
#! "must be integer" 2
QR([1, 2; 3, 4], [1])
#! "must be integer" 2
QR([1, 2; 3, 4], 1i)
#! "must be integer" 2
QR([1, 2; 3, 4], inf)
#! "must be integer" 2
QR([1, 2; 3, 4], NaN)
#! "must be integer" 2
QR(3, 0.5)
#! "must be scalar matrix" 1
QR([], 0.5)
#! "must be integer" 2
QR([])
#! "invalid dimension" -1
QR([], 0)
#! "invalid dimension" -1
