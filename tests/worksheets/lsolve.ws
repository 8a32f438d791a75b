# lsolve(A, B): X with A * X = B; the least-squares solution of minimum norm when A is not square.

lsolve([2, 1; 1, 3], [3; 5])
#~ 1e-14 [0.8; 1.4]
lsolve([0, 1; 1, 0], [3, 4; 5, 6])
#= [5, 6; 3, 4]
lsolve([4], [2])
#= [0.5]

# A line through (0, 1), (1, 2), (2, 4): the normal equations are [3, 3; 3, 5] * x = [7; 10].
lsolve([1, 0; 1, 1; 1, 2], [1; 2; 4])
#~ 1e-14 [5/6; 1.5]

# More unknowns than equations: of all solutions the shortest.
lsolve([1, 1, 0; 0, 1, 1], [1; 2])
#~ 1e-14 [0; 1; 1]

# Dependent columns share the solution.
lsolve([1, 1; 1, 1; 1, 1], [2; 2; 2])
#~ 1e-14 [1; 1]

# A column that counts less than 1e-15 of the largest is dependent.
lsolve([1, 0; 0, 1e-16; 0, 0], [1; 1; 1])
#~ 1e-14 [1; 0]

# One complex argument makes the result complex, also when its imaginary parts are zero.
lsolve([1 + 1i], [2])
#~ 1e-14 [1 - 1i]
lsolve([2, 0; 0, 4], [2i; 4])
#= [1i; 1]
lsolve(complex([2]), [4])
#= complex([2])
lsolve([2], complex([4]))
#= complex([2])
lsolve([1i, 1i, 0; 0, 1i, 1i], [1; 2])
#~ 1e-14 [0i; -1i; -1i]
lsolve([1i; 1], [1i; 1])
#~ 1e-14 complex([1])

# One unit for each argument: the solution has their quotient.
lsolve([2, 0; 0, 4] * kN/m, [2; 4] * kN)
#= [1; 1] * m
lsolve([1; 2; 2] * s, [9; 9; 9] * m)
#~ 1e-13 [5] * m/s
lsolve([2] * m, [4])
#= [2] / m

# A unit per row and column: the unknowns are a length and an angle.
K := [2 N/m, 1 N; 1 N, 3 N*m]
lsolve(K, [3 N; 5 N*m])
#~ 1e-14 [0.8 m; 1.4]
lsolve(K, [3 N, 6 N*s; 5 N*m, 10 N*m*s])
#~ 1e-14 [0.8 m, 1.6 m*s; 1.4, 2.8 s]

# Rows of different units alone: the unknowns have one unit again.
lsolve([2 m, 1 m; 1 s, 3 s], [3 m; 5 s])
#~ 1e-14 [0.8; 1.4]
lsolve([1, 1 m, 0 m^2; 0 s, 1 m*s, 1 m^2*s], [1; 2 s])
#~ 1e-14 [0; 1/m; 1/m^2]

# A block of a matrix is a matrix.
lsolve(submatrix([9, 9, 9; 9, 2, 1; 9, 1, 3], 1, 2, 1, 2), [3; 5])
#~ 1e-14 [0.8; 1.4]

lsolve(1, [1])
#! "must be matrix" 1
lsolve("text", [1])
#! "must be matrix" 1
lsolve([1], 1)
#! "must be matrix" 2
lsolve(1, 1)
#! "must be matrix" 1
lsolve([1, 2; 3, 4], [1])
#! "array size mismatch" -1
lsolve([1; 2], [1; 2; 3])
#! "array size mismatch" -1
lsolve([], [])
#! "invalid dimension" -1
lsolve([], [1])
#! "array size mismatch" -1

# An exactly singular square matrix has no solution, whatever the right-hand side.
lsolve([1, 2; 2, 4], [1; 2])
#! "not converging" -1
lsolve([0], [0])
#! "not converging" -1
lsolve([1, 1i; 1i, -1], [1; 1])
#! "not converging" -1

# Units that no solution can have: those of A or B do not factor into rows and columns, or do not go together.
lsolve([2 m, 1 s; 1 m, 2 m], [1; 1])
#! "must be a linear algebra matrix" 1
lsolve([2, 1; 1, 2], [1 m, 1 s; 1 m, 1 m])
#! "must be a linear algebra matrix" 2
lsolve([2 m, 1 m; 1 s, 2 s], [1; 1])
#! "matrix unit mismatch" -1
lsolve([2 m^20000] , [1])
#= [0.5] / m^20000
lsolve([1 m^30000], [1 / m^30000])
#! "unit power not representable" -1

# Numbers come before units.
lsolve([1 m, 2 s; 2 m, 4 m], [1; 1])
#! "not converging" -1

# Texts and arrays are no numbers, and are looked at first.
lsolve(["text"], [1])
#! "must be a linear algebra matrix" 1
lsolve([0], ["text"])
#! "must be a linear algebra matrix" 2
lsolve([[1, 2], 3], [1])
#! "must be a linear algebra matrix" 1
