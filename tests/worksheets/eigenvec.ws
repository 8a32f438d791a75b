# eigenvec(A, z): an eigenvector of length 1 to the eigenvalue z, by inverse iteration; always with an imaginary array.

eigenvec([1, 0, 0; 0, 2, 0; 0, 0, 3], 2)
#~ 1e-15 complex([0; 1; 0])
eigenvec([2, 1; 1, 2], 3)
#~ 1e-12 complex([1; 1] / sqrt(2))
eigenvec([5], 5)
#= complex([1])
eigenvec([5i], 5i)
#= complex([1])
eigenvec([0, 0; 0, 1], 0)
#~ 1e-15 complex([1; 0])

# The eigenvalue need not be exact.
eigenvec([2, 1; 1, 2], 3.001)
#~ 1e-12 complex([-1; -1] / sqrt(2))
# A multiple eigenvalue gives one vector of its space, a defective one the vector that there is.
eigenvec([1, 1; 0, 1], 1)
#~ 1e-11 complex([-1; 0])

# Complex: no phase is imposed on the vector, so A * v is looked at.
B := [0, -1; 1, 0]
v := eigenvec(B, 1i)
B * v
#~ 1e-11 1i * v
v' * conj(v)
#~ 1e-15 1
C := [4, 1, 2; 1i, 3, 1; 2, 2, 1i]
z := 5.326954101820608 + 0.7414576507836492i    # by NumPy
w := eigenvec(C, z)
C * w
#~ 1e-11 z * w

# By NumPy, its sign turned to ours.
eigenvec([1, 2, 3; 4, 5, 6; 7, 8, 10], 16.707493316124744)
#~ 1e-11 complex([0.223513357727852; 0.5039456275263903; 0.8343144391740168])

# Equal arguments give equal bits.
eigenvec(C, z) == eigenvec(C, z)
#= 1

# The vector has no unit; z has that of the matrix.
eigenvec([2, 1; 1, 2] * N/m, 3 N/m)
#~ 1e-12 complex([1; 1] / sqrt(2))
eigenvec([2, 1; 1, 2] * kN/m, 3000 N/m)
#~ 1e-12 complex([1; 1] / sqrt(2))
eigenvec([2, 1; 1, 2] * m, 3)
#! "unit mismatch" 2
eigenvec([2, 1; 1, 2], 3 m)
#! "unit mismatch" 2

# A block of a matrix is a matrix, and the argument stays as it is.
A := [9, 9, 9; 9, 2, 1; 9, 1, 2]
eigenvec(submatrix(A, 1, 2, 1, 2), 3)
#~ 1e-12 complex([1; 1] / sqrt(2))
A
#= [9, 9, 9; 9, 2, 1; 9, 1, 2]

# Far from every eigenvalue no start vector grows a hundredfold.
eigenvec([2, 1; 1, 2], 100)
#! "not converging" -1
# To 0.01 away from one, 1e-12 off on purpose, it grows by exactly 100: that is enough. One place further is not.
eigenvec([0.009999999999], 0)
#= complex([1])
eigenvec([0.009999999999000002], 0)
#! "not converging" -1
# The 1e-12 that keeps exact eigenvalues from making the matrix singular can do just that.
eigenvec([0, 0; 1, 1], 1e-12)
#! "singularity" -1
eigenvec([0, 0; 1, 1], 0)
#~ 1e-11 complex([1; -1] / sqrt(2))

# What is wrong with the arguments is named in this order.
eigenvec(3, "text")
#! "must be scalar matrix" 1
eigenvec([1, 2, 3; 4, 5, 6], "text")
#! "must be scalar" 2
eigenvec([1, 2, 3; 4, 5, 6], 1 m)
#! "unit mismatch" 2
eigenvec([1, 2, 3; 4, 5, 6], 1)
#! "must be square" 1
eigenvec([1, 2; 3, 4; 5, 6], 1)
#! "must be square" 1
eigenvec([], 1)
#! "invalid dimension" -1
eigenvec([2, 1; 1, 2], [3])
#! "must be scalar" 2
eigenvec(["a", "b"; "c", "d"], 1)
#! "must be scalar matrix" 1
eigenvec([[1], 2; 3, 4], 1)
#! "must be scalar matrix" 1
eigenvec([1 m, 2; 3, 4], 1)
#! "must be scalar matrix" 1

# Faults of the arithmetic: a comparison with NaN, a square beyond the largest number.
eigenvec([NaN, 1; 1, 1], 1)
#! "floating point exception" 0
eigenvec([1, 1; 1, 1], NaN)
#! "floating point exception" 0
eigenvec([inf, 1; 1, 1], 1)
#! "floating point exception" 0
eigenvec([1, 1; 1, 1], inf)
#! "floating point exception" 0
eigenvec([1, 1e160; 0, 1], 1)
#! "floating point exception" 0
# A message wins over the fault.
eigenvec([2, 1; 1, 2] * 1e160, 3e160)
#! "not converging" -1
