# genvals(A, B): the generalised eigenvalues, A * x = lambda * B * x, largest real part first.

genvals([2, 0; 0, 3], [1, 0; 0, 2])
#~ 1e-14 complex([2; 1.5])
# By hand: det(A - x B) = 2 x^2 - 5 x + 1.
genvals([2, -1; -1, 1], [1, 0; 0, 2])
#~ 1e-14 complex([(5 + sqrt(17))/4; (5 - sqrt(17))/4])
# With the identity they are the eigenvalues; also symmetric matrices give an imaginary array.
genvals([2, 1; 1, 2], identity(2))
#~ 1e-14 complex([3; 1])
genvals([0, -1; 1, 0], identity(2))
#~ 1e-14 [1i; -1i]

# An infinite eigenvalue is the largest finite number with the sign of its numerator.
genvals([2, 0; 0, 3], [1, 0; 0, 0])
#= complex([1.7976931348623157e308; 2])
genvals([2, 0; 0, -3], [1, 0; 0, 0])
#= complex([2; -1.7976931348623157e308])
# 0 over 0 is 0.
genvals([2, 0; 0, 0], [1, 0; 0, 0])
#= complex([2; 0])
genvals([1, 2; 3, 4], [0, 0; 0, 0])
#~ 1e-14 complex([1.7976931348623157e308; -1.7976931348623157e308])

# A complex A takes the complex routine; B may be real then.
genvals([2i, 0; 0, 3], [1, 0; 0, 2])
#~ 1e-14 [1.5 + 0i; 2i]
genvals([2i, 0; 0, 3], [1i, 0; 0, 2i])
#~ 1e-14 [2 + 0i; -1.5i]
# There an infinite eigenvalue is what the division gives: no finite number stands in for it.
floor(0 * Re(genvals([2i, 0; 0, 3], [1, 0; 0, 0])))
#{"kind":"matrix","rows":2,"cols":1,"complex":false,"unit":"","data":[["nan"],[0.0]]}

# A real A drops the imaginary parts of B.
genvals([2, 0; 0, 3], [1 + 5i, 0; 0, 2 - 1i])
#~ 1e-14 complex([2; 1.5])
genvals([2, 0; 0, 3], complex([1, 0; 0, 2]))
#~ 1e-14 complex([2; 1.5])
genvals(complex([2, 0; 0, 3]), [1 + 1i, 0; 0, 2])
#~ 1e-14 [1.5 + 0i; 1 - 1i]

# No unit, and A and B need not have the same.
genvals([2, 0; 0, 3] * kN/m, [1, 0; 0, 2] * kg)
#~ 1e-14 complex([2000; 1500])

genvals(1, [1, 0; 0, 1])
#! "must be scalar matrix" 1
genvals([1, 0; 0, 1], "B")
#! "must be scalar matrix" 2
genvals([1 m, 0; 0, 1], [1 m, 0; 0, 1])
#! "must be scalar matrix" 1
genvals([1, 0; 0, 1], [[1], 0; 0, 1])
#! "must be scalar matrix" 2
genvals([1, 2], "B")
#! "must be scalar matrix" 2
genvals([1, 2], [1, 2])
#! "must be square" 1
genvals([1, 0; 0, 1], [1, 2])
#! "must be square" 2
genvals([1, 0; 0, 1], identity(3))
#! "array size mismatch" -1
genvals([5], [2])
#! "index out of bounds" -1
genvals([5i], [2])
#! "index out of bounds" -1
genvals([], [])
#! "invalid dimension" -1
genvals([NaN, 0; 0, 1], identity(2))
#! "not converging" -1
genvals(identity(2), [1, inf; 0, 1])
#! "not converging" -1
genvals([1i, 0; 0, 1], [1, -inf; 0, 1])
#! "not converging" -1
genvals(identity(2))
#! "wrong number of arguments" -1
