# comeval(A): all eigenvalues of a square matrix by the library's own code, in the order in which the algorithm finds
# them; the result always carries an imaginary array.

comeval([5])
#= complex([5])
comeval([2 + 3i])
#= [2 + 3i]

# A real matrix may have complex eigenvalues.
comeval([0, -1; 1, 0])
#~ 1e-15 [1i; -1i]
comeval([2, 1; 1, 2])
#~ 1e-15 complex([3; 1])
comeval([2, 1i; -1i, 2])
#~ 1e-15 complex([3; 1])

# What can be seen in the pattern of zeros is found without arithmetic: a triangular matrix has its diagonal.
comeval([1, 2, 3; 0, 4, 5; 0, 0, 6])
#= complex([1; 4; 6])
comeval(complex([1, 2; 0, 3], [4, 5; 0, 6]))
#= complex([1; 3], [4; 6])
# A lower triangle is turned around by exchanges of rows and columns.
comeval([1, 0, 0; 2, 3, 0; 4, 5, 6])
#= complex([6; 3; 1])
# So is a diagonal one found from its end, and nothing is sorted.
comeval([3, 0, 0; 0, 1, 0; 0, 0, 2])
#= complex([3; 1; 2])
# A row that is alone goes to the end, a column that is alone to the beginning.
comeval([2, 1, 5; 1, 2, 7; 0, 0, 9])
#~ 1e-15 complex([3; 1; 9])
comeval([9, 0, 0; 7, 2, 1; 5, 1, 2])
#~ 1e-15 complex([3; 1; 9])
comeval([2, 0, 1; 5, 9, 7; 1, 0, 2])
#= complex([9; 3; 1])

# By NumPy, in our order.
comeval([1, 2, 3; 4, 5, 6; 7, 8, 10])
#~ 1e-14 complex([16.707493316124744; -0.9057401795217589; 0.1982468633970087])
comeval([4, 1, 2; 1i, 3, 1; 2, 2, 1i])
#~ 1e-14 [-1.1699711997076825 + 0.9182063141641126i; 5.326954101820608 + 0.7414576507836492i;
#= 2.8430170978870817 - 0.6596639649477605i]
# A shift of zero leads nowhere here; after ten steps another one does: the third roots of 1.
comeval([0, 0, 1; 1, 0, 0; 0, 1, 0])
#~ 1e-15 [-0.5 + sqrt(0.75) * 1i; -0.5 - sqrt(0.75) * 1i; 1]
# Rows and columns far apart in size are balanced first.
comeval([1, 1e150; 1e-150, 1])
#~ 1e-15 complex([2; 0])

# The unit is that of the matrix.
comeval([2, 1; 1, 2] * s^-1)
#~ 1e-15 complex([3; 1] * s^-1)
comeval([0 m, 1 ft; 1 ft, 0 m])
#~ 1e-15 complex([1; -1] * ft)

# A block of a matrix is a matrix, and the argument stays as it is.
A := [9, 9, 9; 9, 0, -1; 9, 1, 0]
comeval(submatrix(A, 1, 2, 1, 2))
#~ 1e-15 [1i; -1i]
A
#= [9, 9, 9; 9, 0, -1; 9, 1, 0]

# 31 steps may go into one eigenvalue. Both matrices have three times the eigenvalue 0; the first one needs 31.
rows(comeval([0, 4, 0; 2, 0, -8; 0, 1, 0]))
#= 3
comeval([0, -1, 0; 1, 0, 1; 0, 1, 0])
#! "too many iterations" -1
comeval([0, -1, 0, 1; 1, 0, 1, 2; 0, 1, 0, 3; 0, 0, 0, 5])
#! "too many iterations" -1
# The norm of a rotation comes from plain squares: where these vanish, nothing converges.
comeval([1, 2; 3, 4] * 1e-170)
#! "too many iterations" -1
comeval([1, 2; 3, 4] * 1e-140)
#~ 1e-14 complex([5 - sqrt(33); 5 + sqrt(33)] * 5e-141)

# Nor with the smallest numbers, and balancing does not go on for ever with what cannot be halved.
comeval([1e-323, 5e-324; 5e-324, 1.5e-323])
#! "too many iterations" -1
comeval([1.5e-323, -1e-323; 5e-324, 0])
#! "too many iterations" -1

# What is not finite ends in an error, unless it stands on the diagonal and needs no step. A message wins over the fault.
comeval([1, NaN; 1, 1])
#! "too many iterations" -1
comeval([1, inf, 1; 1, 1, 1; 1, 1, 1])
#! "too many iterations" -1
comeval([1e308, 1e308; 1e308, 1e308])
#! "floating point exception" 0
comeval([inf, 1; 0, 2])
#= complex([inf; 2])
comeval([1, 1; 1, inf])
#= complex([1; inf])
comeval([NaN])
#= complex([NaN])

comeval([1, 2, 3; 4, 5, 6])
#! "must be square" 1
comeval([1, 2; 3, 4; 5, 6])
#! "must be square" 1
comeval([])
#! "invalid dimension" -1
comeval(3)
#! "must be scalar matrix" 1
comeval("text")
#! "must be scalar matrix" 1
comeval(["a", "b", "c"])
#! "must be scalar matrix" 1
comeval([[1], 2; 3, 4])
#! "must be scalar matrix" 1
comeval([1 m, 2; 3, 4])
#! "must be scalar matrix" 1
comeval([1 m, 0; 0, 1 m])
#! "must be scalar matrix" 1
comeval(sin)
#! "must be scalar matrix" 1
