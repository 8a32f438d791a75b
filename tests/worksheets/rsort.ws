# rsort(M, i): the columns of M in ascending order of row i.

rsort([3, 1, 2; 30, 10, 20], 0)
#= [1, 2, 3; 10, 20, 30]
rsort([3, 1, 2; 10, 30, 20], 1)
#= [3, 2, 1; 10, 20, 30]
rsort([3, 1, 2], 0)
#= [1, 2, 3]
rsort([3; 1; 2], 1)
#= [3; 1; 2]
rsort([3, 1; "a", "b"], 0)
#= [1, 3; "b", "a"]
rsort(["b", "a"; 1, 2], 0)
#= ["a", "b"; 2, 1]
rsort([3, 1, 2; "x", [4, 5], 6; 7, 8, "y"], 0)
#= [1, 2, 3; [4, 5], 6, "x"; 8, "y", 7]

# Equal keys: the order that the heap leaves, worked out by hand for four of them.
rsort([1, 1, 1, 1; 10, 11, 12, 13], 0)
#= [1, 1, 1, 1; 11, 13, 10, 12]
rsort([-0.0, 0; 10, 11], 0)
#= [-0.0, 0; 10, 11]
# From a heap sort in Python.
rsort([2, 1, 2, 1, 2, 1; 0, 1, 2, 3, 4, 5], 0)
#= [1, 1, 1, 2, 2, 2; 1, 3, 5, 4, 0, 2]
rsort([2, NaN, 1; 0, 1, 2], 0)
#= [NaN, 1, 2; 1, 2, 0]

# The key row has one unit; the others are free.
rsort([3 m, 1 m; 1 s, 2 kg], 0)
#= [1 m, 3 m; 2 kg, 1 s]
rsort([3, 1; 1, 2] * m, 0)
#= [1 m, 3 m; 2 m, 1 m]
rsort([2 + 1i, 1; 3i, 4], 0)
#= [1, 2 + 1i; 4, 3i]
rsort(complex([2, 1; 3, 4]), 0)
#= complex([1, 2; 4, 3])

# Blocks of larger matrices.
B := [0, 0, 0, 0; 0, 3, 1, 2; 0, "c", "a", 1 m; 0, 1 s, 2, [3]]
rsort(submatrix(B, 1, 3, 1, 3), 0)
#= [1, 2, 3; "a", 1 m, "c"; 2, [3], 1 s]

# A row counts from origin.
set origin 1
rsort([3, 1; 30, 10], 2)
#= [1, 3; 10, 30]
rsort([3, 1; 30, 10], 0)
#! "index out of bounds" 2
rsort([3, 1; 30, 10], 3)
#! "index out of bounds" 2
set origin 0

rsort(5, 0)
#! "must be matrix" 1
rsort("a", 0)
#! "must be matrix" 1
rsort([3, 1; 30, 10], 1.5)
#! "must be integer" 2
rsort([3, 1; 30, 10], "a")
#! "must be integer" 2
rsort([3, 1; 30, 10], 1 m)
#! "must be dimless" 2
rsort([3, 1; 30, 10], 2)
#! "index out of bounds" 2
rsort([3, 1; 30, 10], -1)
#! "index out of bounds" 2
rsort([3, 1; 30, 10], -1e300)
#! "index out of bounds" 2
rsort([], 0)
#! "index out of bounds" 2
rsort([1 m, 2 s; "a", "b"], 0)
#! "row must have uniform dimension or all strings" 1
rsort([1, "a"; 2, 3], 0)
#! "row must have uniform dimension or all strings" 1
rsort([[1], [2]; 2, 3], 0)
#! "row must have uniform dimension or all strings" 1
rsort(["a", [2]; 2, 3], 0)
#! "row must have uniform dimension or all strings" 1
rsort(1)
#! "wrong number of arguments" -1
