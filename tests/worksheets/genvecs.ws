# genvecs(A, B, side): right or left generalised eigenvectors, column i for eigenvalue i of genvals.

A := [2, -1; -1, 1]
B := [1, 0; 0, 2]
V := genvecs(A, B)
complex(A * V - B * V * diag(genvals(A, B)))
#~ 1e-13 complex([0, 0; 0, 0])
# The largest component of a column is 1 in |re| + |im|.
max(Re(V), -Re(V))
#~ 1e-14 1
complex(genvecs(A, B, "R") - V)
#= complex([0, 0; 0, 0])
L := genvecs([1, 2; 3, 4], [5, 6; 7, 9], "L")
complex(conj(L') * [1, 2; 3, 4] - diag(genvals([1, 2; 3, 4], [5, 6; 7, 9])) * conj(L') * [5, 6; 7, 9])
#~ 1e-13 complex([0, 0; 0, 0])

# A conjugate pair has conjugate columns.
W := genvecs([0, -1; 1, 0], identity(2))
complex(submatrix(W, 0, 1, 0, 0) - conj(submatrix(W, 0, 1, 1, 1)))
#~ 1e-14 complex([0; 0])

# Where the sort turns a pair of eigenvalues, the columns follow.
T := [0, 1, 1; 0, 1, -2; 0, 2, 1]
complex(T * genvecs(T, identity(3)) - genvecs(T, identity(3)) * diag(genvals(T, identity(3))))
#~ 1e-13 complex(0 * T)

# A complex A takes the complex routine.
Z := [1 + 1i, 2; 3, 4 - 1i]
complex(Z * genvecs(Z, B) - B * genvecs(Z, B) * diag(genvals(Z, B)))
#~ 1e-13 complex([0, 0; 0, 0])

# Beside a real A the imaginary parts of B take no part.
complex(genvecs(A, [1 + 5i, 0; 0, 2 - 1i]) - V)
#= complex([0, 0; 0, 0])

# No unit.
genvecs([2, 0; 0, 1] * kN/m, identity(2) * kg)
#~ 1e-14 complex(identity(2))

genvecs(1, B)
#! "must be scalar matrix" 1
genvecs(A, "B", "x")
#! "must be scalar matrix" 2
genvecs([1, 2], B, "x")
#! "must be square" 1
genvecs(A, [1, 2], "x")
#! "must be square" 2
genvecs(A, identity(3), "x")
#! "array size mismatch" -1
genvecs(A, B, "x")
#! "invalid argument" 3
genvecs(A, B, "r")
#! "invalid argument" 3
genvecs(A, B, 0)
#! "must be string" 3
genvecs([5], [2])
#! "index out of bounds" -1
genvecs([], [], "L")
#! "invalid dimension" -1
genvecs([NaN, 0; 0, 1], B)
#! "not converging" -1
genvecs([1i, 0; 0, 1], [1, 0; 0, inf], "L")
#! "not converging" -1
genvecs(A)
#! "wrong number of arguments" -1
