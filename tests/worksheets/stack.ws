# stack(a, ...): from top to bottom.

stack([1, 2; 3, 4], [5, 6])
#= [1, 2; 3, 4; 5, 6]
stack(1, 2, [3; 4])
#= [1; 2; 3; 4]
stack(5)
#= [5]
stack([1, 2])
#= [1, 2]
stack("a", 1, ["b"; 2])
#= ["a"; 1; "b"; 2]
stack([[1, 2], 3], [4, "x"])
#= [[1, 2], 3; 4, "x"]

# Units stay with their elements; a matrix of one unit stays one.
stack([1 m, 2 m], [3 km, 4 km])
#= [1 m, 2 m; 3 km, 4 km]
stack([1 m, 2 m], [3, 4 s])
#= [1 m, 2 m; 3, 4 s]
stack(1 m, "a", 2 m)
#= [1 m; "a"; 2 m]

# An imaginary array only where some imaginary part is not zero.
stack([1, 2], [1i, 2])
#= [1, 2; 1i, 2]
stack(complex([1, 2]), [3, 4])
#= [1, 2; 3, 4]
stack(complex([1, 2]))
#= [1, 2]

# Blocks of matrices.
B := [1, 2, 3; 4, 5, 6; 7, 8, 9]
stack(submatrix(B, 1, 2, 1, 2), submatrix(B, 0, 0, 0, 1))
#= [5, 6; 8, 9; 1, 2]

stack([], [1, 2])
#= [1, 2]
stack([], [])
#= []

stack(1, [1, 2])
#! "array size mismatch" 2
stack([1, 2], [1, 2, 3])
#! "array size mismatch" 2
stack([1, 2], [])
#! "array size mismatch" 2
stack([1, 2], 3)
#! "argument dimension mismatch" 2
stack([1, 2], "a")
#! "argument dimension mismatch" 2
stack(1, 2, sin)
#! "must be string scalar or array" 3
