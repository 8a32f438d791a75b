# det(x), the same as abs(x): the determinant of a square matrix, the length of a column, the magnitude of a number.

det([1, 2; 3, 4])
#= -2
det([2, 0, 0; 0, 3, 0; 0, 0, 4])
#= 24
det([0, 1; 1, 0])
#= -1
det([0, 0, 1; 0, 1, 0; 1, 0, 0])
#= -1
# Integers stay whole up to 4 rows. From NumPy 1.24, numpy.linalg.det, rounded.
det([6, -3, 5, 7; 4, 2, 3, 1; -8, 5, -9, 2; 1, 1, 0, 3])
#= 35
det([1, 2, 3; 4, 5, 6; 7, 8, 9])
#= 0
det([0, 1, 2; 0, 3, 4; 0, 5, 6])
#= 0
# From the definition: the determinant of diag(1, 2, 3, 4, 5) with its first two rows exchanged.
det([0, 2, 0, 0, 0; 1, 0, 0, 0, 0; 0, 0, 3, 0, 0; 0, 0, 0, 4, 0; 0, 0, 0, 0, 5])
#= -120
det([1, 1, 1, 1, 1; 1, 1, 1, 1, 1; 0, 0, 1, 0, 0; 0, 0, 0, 1, 0; 0, 0, 0, 0, 1])
#= 0
det([1i, 0; 0, 1i])
#= -1
det([1, 1i; 1i, 1])
#= 2
det(complex([1, 2; 3, 4]))
#~ 1e-15 -2
det([])
#= 1

# A column is a vector: its length, also of one element.
det([3; 4])
#= 5
det([-3])
#= 3
det([3i; 4])
#= 5
det([3 m; 4 m])
#= 5 m
# A number: its magnitude.
det(-3 m)
#= 3 m
det(3 + 4i)
#= 5

# Units.
det([1, 2; 3, 4] * m)
#= -2 m^2
det([12 N/m, 6 N; 6 N, 4 N*m])
#= 12 N^2
det([1 m, 2 s; 3 m, 4 s])
#= -2 m*s
det([1 m, 0; 0, 1 m])
#! "must be a linear algebra matrix" 1
det([1, "a"; 2, 3])
#! "must be a linear algebra matrix" 1
det([1 m; 2 s])
#! "must be scalar matrix" 1
det([1; "a"])
#! "must be scalar matrix" 1

# Not guarded: NaN and overflow are values.
det([NaN, 1; 1, 1])
#= NaN
det([1e200, 0; 0, 1e200])
#= inf
det([1, 2, 3])
#! "must be square" 1
det("a")
#! "must be a scalar or a matrix" 1
det(sin)
#! "must be a scalar or a matrix" 1
