# eigenvecs(M, side): right or left eigenvectors, column i for eigenvalue i of eigenvals.

# Symmetric: orthonormal columns, real. Signs are LAPACK's, so the tests look at what does not depend on them.
S := [4, 1, 0; 1, 3, 1; 0, 1, 2]
V := eigenvecs(S)
V' * V
#~ 1e-14 identity(3)
S * V - V * diag(eigenvals(S))
#~ 1e-13 0 * S
abs(det(eigenvecs([2, 1; 1, 2])))
#~ 1e-14 1
eigenvecs(S, "L") - eigenvecs(S, "R")
#= 0 * S

# A rotation has conjugate columns of length 1.
R := [0, -1; 1, 0]
W := eigenvecs(R)
complex(submatrix(W, 0, 1, 0, 0) - conj(submatrix(W, 0, 1, 1, 1)))
#~ 1e-14 complex([0; 0])
complex(R * W - W * diag(eigenvals(R)))
#~ 1e-13 complex([0, 0; 0, 0])
norm_f(submatrix(W, 0, 1, 0, 0))
#~ 1e-14 1

# Where the sort turns a pair of eigenvalues, the columns follow.
T := [0, 1, 1; 0, 1, -2; 0, 2, 1]
Im(eigenvals(T))
#~ 1e-14 [-2; 2; 0]
complex(T * eigenvecs(T) - eigenvecs(T) * diag(eigenvals(T)))
#~ 1e-13 complex(0 * T)
complex(conj(eigenvecs(T, "L")') * T - diag(eigenvals(T)) * conj(eigenvecs(T, "L")'))
#~ 1e-13 complex(0 * T)

# Left eigenvectors: the conjugate transpose of one times M is the eigenvalue times it.
M := [1, 2; 3, 4]
L := eigenvecs(M, "L")
complex(conj(L') * M - diag(eigenvals(M)) * conj(L'))
#~ 1e-13 complex([0, 0; 0, 0])
complex(eigenvecs(M) - eigenvecs(M, "R"))
#= complex([0, 0; 0, 0])
# Of [2, 1; 0, 1] the right ones are (1, 0) and (1, -1) / sqrt(2), by hand; in moduli, since signs are free.
complex(sqr(submatrix(eigenvecs([2, 1; 0, 1]), 0, 1, 1, 1)))
#~ 1e-14 complex([0.5; 0.5])
complex(sqr(submatrix(eigenvecs([2, 1; 0, 1], "L"), 0, 1, 1, 1)))
#~ 1e-14 complex([0; 1])

# Complex matrices; those of a Hermitian one are complex too.
H := [2, 1i; -1i, 3]
Q := eigenvecs(H)
complex(conj(Q') * Q)
#~ 1e-14 complex(identity(2))
complex(H * Q - Q * diag(eigenvals(H)))
#~ 1e-13 complex([0, 0; 0, 0])
Z := [1 + 1i, 2; 3, 4 - 1i]
complex(Z * eigenvecs(Z) - eigenvecs(Z) * diag(eigenvals(Z)))
#~ 1e-13 complex([0, 0; 0, 0])

# No unit, whatever M has.
eigenvecs([2, 0; 0, 1] * MPa)
#~ 1e-14 identity(2)

eigenvecs(M, "l")
#! "invalid argument" 2
eigenvecs(M, "")
#! "invalid argument" 2
eigenvecs(M, "E")
#! "invalid argument" 2
eigenvecs(M, 1)
#! "must be string" 2
eigenvecs(M, ["L"])
#! "must be string" 2
# The side is looked at before the shape, the kind of M before both.
eigenvecs([1, 2], "l")
#! "invalid argument" 2
eigenvecs([1, 2], 5)
#! "must be string" 2
eigenvecs([1, 2])
#! "must be square" 1
eigenvecs([1, 2], "L")
#! "must be square" 1
eigenvecs("A", "l")
#! "must be scalar matrix" 1
eigenvecs([1 m, 2; 3, 4])
#! "must be scalar matrix" 1
eigenvecs(3)
#! "must be scalar matrix" 1
eigenvecs([7])
#! "index out of bounds" -1
eigenvecs([7i], "L")
#! "index out of bounds" -1
eigenvecs([])
#! "invalid dimension" -1
eigenvecs([1, inf; inf, 1])
#! "not converging" -1
eigenvecs([1, NaN; 2, 1], "L")
#! "not converging" -1
eigenvecs([1i, NaN; 2, 1])
#! "not converging" -1
eigenvecs()
#! "wrong number of arguments" -1
eigenvecs(M, "L", 1)
#! "wrong number of arguments" -1
