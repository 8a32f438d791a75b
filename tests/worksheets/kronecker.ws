# kronecker(a, b): block (i, j) is a(i, j) times b.

kronecker([1, 2; 3, 4], [0, 5; 6, 7])
#= [0, 5, 0, 10; 6, 7, 12, 14; 0, 15, 0, 20; 18, 21, 24, 28]
kronecker([1, 2], [1; 1])
#= [1, 2; 1, 2]
kronecker([2], [3])
#= [6]
kronecker([1 m, 2 m], [3 s])
#= [3 m*s, 6 m*s]
kronecker([1 m, 2 s], [1; 2 kg])
#= [1 m, 2 s; 2 m*kg, 4 s*kg]
kronecker([1i, 2], [1i; 1])
#= [-1, 2i; 1i, 2]
kronecker([1i], [1i])
#= [-1]
kronecker(complex([1, 2]), [3])
#= [3, 6]
kronecker([2, 3], [1i, 1])
#= [2i, 2, 3i, 3]
B := [9, 9, 9; 9, 1, 2; 9, 3, 4]
kronecker([1, -1], submatrix(B, 1, 2, 1, 2))
#= [1, 2, -1, -2; 3, 4, -3, -4]
kronecker([[1, 2], 3], [2, 1])
#= [[2, 4], [1, 2], 6, 3]
kronecker([2], [[1, 2], 3])
#= [[2, 4], 6]
kronecker([[1, 2]], [[3; 4]])
#= [11]
kronecker([], [1, 2])
#= []
kronecker([1, 2], [])
#= []

kronecker([[1, 2]], [[1, 2]])
#! "array size mismatch" -1
kronecker(["a"], [1])
#! "must be a scalar or a matrix" 1
kronecker([1], [1, "a"])
#! "must be a scalar or a matrix" 2
kronecker(["a"], ["a"])
#! "must be a scalar or a matrix" 2
kronecker(2, [1])
#! "must be matrix" 1
kronecker([1], 2)
#! "must be matrix" 2
kronecker("a", "b")
#! "must be matrix" 1
# Arrays among the elements meet in `mult`, which refuses them in its own words.
kronecker([[1, "a"]], [[1; 2]])
#! "must be a linear algebra matrix" 1
kronecker([[1, 2]], [[1; "a"]])
#! "must be a linear algebra matrix" 2
kronecker([[1 m, 2]], [[1; 2]])
#! "matrix unit mismatch" -1
kronecker([[1, 2]], [[]])
#! "invalid dimension" -1
kronecker([[1e200, 1]], [[1e200; 1]])
#! "floating point exception" 0
