# augment(a, ...): side by side.

augment([1, 2; 3, 4], [5, 6; 7, 8])
#= [1, 2, 5, 6; 3, 4, 7, 8]
augment([1; 2], [3; 4], [5; 6])
#= [1, 3, 5; 2, 4, 6]
augment([1, 2])
#= [1, 2]
augment(5)
#= [5]
augment("a")
#= ["a"]
augment(1, "two", 3)
#= [1, "two", 3]
augment(1, [2, 3], 4)
#= [1, 2, 3, 4]
augment(["a"; "b"], [1; 2])
#= ["a", 1; "b", 2]
augment([[1, 2], 3], [4])
#= [[1, 2], 3, 4]

# Units stay with their elements; a matrix of one unit stays one.
augment([1 m; 2 m], [3 ft; 4 ft])
#= [1 m, 3 ft; 2 m, 4 ft]
augment([1 m; 2 m], [3 s; 4])
#= [1 m, 3 s; 2 m, 4]
augment(1 m, 2 s, "a")
#= [1 m, 2 s, "a"]

# An imaginary array only where some imaginary part is not zero.
augment([1; 2], [1i; 2])
#= [1, 1i; 2, 2]
augment(complex([1; 2]), [3; 4])
#= [1, 3; 2, 4]
augment(1i, 2)
#= [1i, 2]

# Blocks of matrices.
B := [1, 2, 3; 4, 5, 6; 7, 8, 9]
augment(submatrix(B, 1, 2, 1, 2), submatrix(B, 0, 1, 0, 0))
#= [5, 6, 1; 8, 9, 4]
augment(submatrix([1, "a"; 2, "b"], 0, 1, 1, 1), [5; 6])
#= ["a", 5; "b", 6]

augment([], [1, 2])
#= [1, 2]
augment([], [])
#= []
augment([], 1)
#= [1]

augment([1; 2], [1; 2; 3])
#! "array size mismatch" 2
augment(1, 2, [1; 2])
#! "array size mismatch" 3
augment([1; 2], [])
#! "array size mismatch" 2
augment([1, 2; 3, 4], 5)
#! "argument dimension mismatch" 2
augment([1; 2], "a")
#! "argument dimension mismatch" 2
augment(1, sin)
#! "must be string scalar or array" 2
augment(sin)
#! "must be string scalar or array" 1
augment([1; 2], [1; 2; 3], sin)
#! "array size mismatch" 2
