# rref(A): the reduced row echelon form, by elimination with partial pivoting.
rref([1, 2; 2, 4])
#= [1, 2; 0, 0]
rref([0, 1; 1, 0])
#= [1, 0; 0, 1]
rref([1, 2, 3; 4, 5, 6])
#= [1, 0, -1; 0, 1, 2]
rref([2, 0; 0, 4])
#= [1, 0; 0, 1]
rref([8])
#= [1]
rref([1; 2; 4])
#= [1; 0; 0]
rref([4, 2, 1])
#= [1, 0.5, 0.25]
rref([0, 4, 2, 1])
#= [0, 1, 0.5, 0.25]

rref([0, 0; 0, 0])
#= [0, 0; 0, 0]
rref([0])
#= [0]
rref([0, 2; 0, 4])
#= [0, 1; 0, 0]

# A solution and what is free in it.
rref([1, 2, -1, 4; 2, 4, 0, 6; 1, 2, 1, 2])
#= [1, 2, 0, 3; 0, 0, 1, -1; 0, 0, 0, 0]

# Of equal magnitudes the upper row is the pivot row: the lower one keeps the difference, which is negligible here.
rref([1, 0.25; 1, 0.25 + 2^-43])
#= [1, 0.25; 0, 2^-43]
rref([1, 0.25; -1, -0.25 + 2^-43])
#= [1, 0.25; 0, 2^-43]

# What is passed over as negligible is not set to zero. A square matrix is measured by its own norm ...
rref([1, 1e-13; 0, 1e-13])
#= [1, 1e-13; 0, 1e-13]
rref([1e-20, 0; 0, 2e-20])
#= [1, 0; 0, 1]
rref([1e20, 1; 0, 1])
#= [1, 1e-20; 0, 1]
# ... of its two norms, here 1 and 2, by the smaller one: 3e-12 is a pivot and 1e-12 is none.
rref([1, 0; 1, 3e-12])
#= [1, 0; 0, 1]
rref([1, 1; 0, 3e-12])
#= [1, 0; 0, 1]
rref([1, 0; 1, 1e-12])
#= [1, 0; 0, 1e-12]
# Any other shape is measured absolutely, by 1e-12 times its larger dimension.
rref([1e-13, 2e-13, 3e-13; 4e-13, 5e-13, 6e-13])
#= [1e-13, 2e-13, 3e-13; 4e-13, 5e-13, 6e-13]
rref([2e-12, 1e-12])
#= [2e-12, 1e-12]
rref([3e-12, 1.5e-12])
#= [1, 0.5]
# A passed-over column takes part in the exchange of rows, and in nothing else.
rref([1e-13, 1, 1; 2e-13, 4, 2])
#= [2e-13, 1, 0; 1e-13, 0, 1]
# Columns left of a pivot are neither scaled nor cleared in its row.
rref([1e-13, 2, 4])
#= [1e-13, 1, 2]

# The solution of a system beside its identity.
f(i, j) := if(i == j, 5, sin(i - 2 * j))
A := matrix(40, 40, f)
x := matrix(40, 1, f)
B := rref(augment(A, A * x))
submatrix(B, 0, 39, 0, 39)
#= identity(40)
submatrix(B, 0, 39, 40, 40)
#~ 1e-12 x

# A block of a matrix is a matrix.
C := [9, 9, 9; 9, 0, 1; 9, 1, 0]
rref(submatrix(C, 1, 2, 1, 2))
#= [1, 0; 0, 1]

rref([])
#! "invalid dimension" -1
rref(complex([1, 2]))
#! "must be real matrix" 1
rref([1i])
#! "must be real matrix" 1

# The numbers must have no unit. The elimination, with its errors, comes first.
rref([1, 2; 3, 4] * m)
#! "must be dimless" 1
rref([1i] * m)
#! "must be real matrix" 1
rref([NaN] * m)
#! "floating point exception" 0

rref(3)
#! "must be scalar matrix" 1
rref("text")
#! "must be scalar matrix" 1
rref(["a", "b"])
#! "must be scalar matrix" 1
rref([[1], 2])
#! "must be scalar matrix" 1
rref([1 m, 2])
#! "must be scalar matrix" 1
rref(sin)
#! "must be scalar matrix" 1

# Faults of the arithmetic: a comparison with NaN, sums of a norm or a reciprocal that overflow.
rref([NaN])
#! "floating point exception" 0
rref([1, NaN])
#= [1, NaN]
rref([NaN, 1])
#! "floating point exception" 0
rref([1e308, 1e308; 1, 1])
#! "floating point exception" 0
rref([1e-310])
#! "floating point exception" 0
rref([1, inf; 1, inf; 1, 1])
#! "floating point exception" 0
# Beside an infinite norm everything is negligible. An infinite pivot has the reciprocal zero.
rref([inf, 1; 1, 1])
#= [inf, 1; 1, 1]
rref([inf, 1])
#= [1, 0]
