# eigenvals(M): the eigenvalues of a square matrix, largest real part first.

# Symmetric to the last bit: real, the largest first.
eigenvals([2, 1; 1, 2])
#~ 1e-14 [3; 1]
eigenvals([4, 0, 0; 0, -7, 0; 0, 0, 5])
#= [5; 4; -7]
eigenvals([0, 0; 0, 0])
#= [0; 0]
# The roots of x^3 - 9 x^2 + 24 x - 18 are 3 and 3 + sqrt(3), 3 - sqrt(3).
eigenvals([4, 1, 0; 1, 3, 1; 0, 1, 2])
#~ 1e-14 [3 + sqrt(3); 3; 3 - sqrt(3)]

# The same but for one unit in the last place: the general routine, with an imaginary array of zeros.
eigenvals([2, 1; 1.0000000000000002, 2])
#~ 1e-14 complex([3; 1])
eigenvals([1, 2; 3, 4])
#~ 1e-14 complex([(5 + sqrt(33))/2; (5 - sqrt(33))/2])
eigenvals([3, 1; 0, 5])
#~ 1e-14 complex([5; 3])

# A conjugate pair has one real part and keeps LAPACK's order, +i first.
eigenvals([0, -1; 1, 0])
#~ 1e-14 [1i; -1i]
eigenvals([1, 2, 0; -2, 1, 0; 0, 0, 3])
#~ 1e-14 [3 + 0i; 1 + 2i; 1 - 2i]
# Among others the sort may turn it: LAPACK delivers 0, 1 + 2i, 1 - 2i here (SciPy), and the heap takes the pair apart.
eigenvals([0, 1, 1; 0, 1, -2; 0, 2, 1])
#~ 1e-14 [1 - 2i; 1 + 2i; 0i]

# Hermitian to the last bit: real.
eigenvals([2, 1i; -1i, 2])
#~ 1e-14 [3; 1]
eigenvals(complex([2, 1; 1, 2]))
#~ 1e-14 [3; 1]
eigenvals([5, 3 + 4i; 3 - 4i, 5])
#~ 1e-14 [10; 0]

# Any other complex matrix: ordered by the real part alone.
eigenvals([2 + 1i, 0; 0, 3])
#~ 1e-14 [3 + 0i; 2 + 1i]
eigenvals([1i, 0, 0; 0, 2 - 5i, 0; 0, 0, -1])
#~ 1e-14 [2 - 5i; 1i; -1 + 0i]
eigenvals([0, 1; 1i, 0])
#~ 1e-14 [sqrt(1i); -sqrt(1i)]

# The unit of M: principal stresses by hand, (165 + 125)/2 and (165 - 125)/2.
eigenvals([120, 50; 50, 45] * MPa)
#~ 1e-14 [145; 20] * MPa
eigenvals([0, -1; 1, 0] / s)
#~ 1e-14 [1i; -1i] / s

# A block of a matrix.
A := [9, 9, 9; 9, 2, 1; 9, 1, 2]
eigenvals(submatrix(A, 1, 2, 1, 2))
#~ 1e-14 [3; 1]
A
#= [9, 9, 9; 9, 2, 1; 9, 1, 2]

# A 1-by-1 matrix leaves nothing to order.
eigenvals([5])
#! "index out of bounds" -1
eigenvals([5i])
#! "index out of bounds" -1
eigenvals([])
#! "invalid dimension" -1
eigenvals([1, 2])
#! "must be square" 1
eigenvals([1, 2; 3, 4; 5, 6])
#! "must be square" 1
eigenvals(5)
#! "must be scalar matrix" 1
eigenvals("A")
#! "must be scalar matrix" 1
eigenvals([1, "a"; 2, 3])
#! "must be scalar matrix" 1
eigenvals([1, [1, 2]; 2, 3])
#! "must be scalar matrix" 1
eigenvals([1 m, 1; 1, 1])
#! "must be scalar matrix" 1
# The kind is looked at before the shape.
eigenvals([1 m, 1])
#! "must be scalar matrix" 1

# What is not finite is refused before LAPACK sees it, in a symmetric matrix, a general one, a complex one.
eigenvals([1, NaN; NaN, 1])
#! "not converging" -1
eigenvals([inf, 0; 0, 1])
#! "not converging" -1
eigenvals([1, 2; -inf, 1])
#! "not converging" -1
eigenvals([1i, 2; NaN, 1])
#! "not converging" -1
eigenvals([NaN])
#! "not converging" -1
eigenvals()
#! "wrong number of arguments" -1
