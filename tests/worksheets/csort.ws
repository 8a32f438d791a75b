# csort(M, j): the rows of M in ascending order of column j.

csort([3, 30; 1, 10; 2, 20], 0)
#= [1, 10; 2, 20; 3, 30]
csort([3, 10; 1, 30; 2, 20], 1)
#= [3, 10; 2, 20; 1, 30]
csort([3; 1; 2], 0)
#= [1; 2; 3]
csort([3, 1, 2], 1)
#= [3, 1, 2]
csort([3, "a"; 1, "b"], 0)
#= [1, "b"; 3, "a"]
csort([3, "b"; 1, "a"], 1)
#= [1, "a"; 3, "b"]
csort(["b", [1, 2]; "a", [3; 4]; "c", 5], 0)
#= ["a", [3; 4]; "b", [1, 2]; "c", 5]
csort([2, "x", 5; 3, 6, "y"; 1, [7], 8], 0)
#= [1, [7], 8; 2, "x", 5; 3, 6, "y"]

# Equal keys: the order that the heap leaves, worked out by hand for four of them.
csort([1, 10; 1, 11; 1, 12; 1, 13], 0)
#= [1, 11; 1, 13; 1, 10; 1, 12]
csort(["a", 10; "a", 11; "a", 12; "a", 13], 0)
#= ["a", 11; "a", 13; "a", 10; "a", 12]
csort([0, 10; -0.0, 11; 0, 12; -0.0, 13], 0)
#= [-0.0, 11; -0.0, 13; 0, 10; 0, 12]
# From a heap sort in Python.
csort([3, 0; 1, 1; 2, 2; 3, 3; 1, 4; 2, 5; 3, 6; 1, 7], 0)
#= [1, 7; 1, 4; 1, 1; 2, 5; 2, 2; 3, 3; 3, 0; 3, 6]
csort([3, 0; 2, 1; 1, 2; NaN, 3], 0)
#= [1, 2; 2, 1; NaN, 3; 3, 0]

# The key column has one unit; the others are free. Units and imaginary parts travel with their rows.
csort([3 m, 1 s; 1 m, 2 kg], 0)
#= [1 m, 2 kg; 3 m, 1 s]
csort([3, 1; 1, 2] * m, 0)
#= [1 m, 2 m; 3 m, 1 m]
csort([2 + 1i, 3i; 1, 4], 0)
#= [1, 4; 2 + 1i, 3i]
csort([2, 3i; 1, 4], 1)
#= [2, 3i; 1, 4]
csort(complex([2, 3; 1, 4]), 0)
#= complex([1, 4; 2, 3])

# Blocks of larger matrices.
B := [0, 0, 0, 0; 0, 3, "c", 1 m; 0, 1, "a", 2 s; 0, 2, "b", 3]
csort(submatrix(B, 1, 3, 1, 3), 0)
#= [1, "a", 2 s; 2, "b", 3; 3, "c", 1 m]
csort(submatrix(B, 1, 3, 1, 2), 1)
#= [1, "a"; 2, "b"; 3, "c"]

# A column counts from origin.
set origin 1
csort([3, 30; 1, 10], 1)
#= [1, 10; 3, 30]
csort([3, 30; 1, 10], 2)
#= [1, 10; 3, 30]
csort([3, 30; 1, 10], 0)
#! "index out of bounds" 2
csort([3, 30; 1, 10], 3)
#! "index out of bounds" 2
set origin -1
csort([3, 30; 1, 10], -1)
#= [1, 10; 3, 30]
set origin 0

csort(5, 0)
#! "must be matrix" 1
csort("a", 0)
#! "must be matrix" 1
csort(5, 1.5)
#! "must be matrix" 1
csort([3, 30; 1, 10], 1.5)
#! "must be integer" 2
csort([3, 30; 1, 10], 1i)
#! "must be integer" 2
csort([3, 30; 1, 10], inf)
#! "must be integer" 2
csort([3, 30; 1, 10], NaN)
#! "must be integer" 2
csort([3, 30; 1, 10], "a")
#! "must be integer" 2
csort([3, 30; 1, 10], [0])
#! "must be integer" 2
csort([3, 30; 1, 10], 1.5 m)
#! "must be integer" 2
csort([3, 30; 1, 10], 1 m)
#! "must be dimless" 2
csort([3, 30; 1, 10], 9 m)
#! "must be dimless" 2
csort([3, 30; 1, 10], 2)
#! "index out of bounds" 2
csort([3, 30; 1, 10], -1)
#! "index out of bounds" 2
csort([3, 30; 1, 10], 1e300)
#! "index out of bounds" 2
csort([3, 30; 1, 10], 4294967296)
#! "index out of bounds" 2
csort([], 0)
#! "index out of bounds" 2
csort([1 m, "a"; 2 s, "b"], 2)
#! "index out of bounds" 2
csort([1 m, "a"; 2 s, "b"], 0)
#! "col must have uniform dimension or all strings" 1
csort([1, "a"; "b", 2], 0)
#! "col must have uniform dimension or all strings" 1
csort([1, "a"; "b", 2], 1)
#! "col must have uniform dimension or all strings" 1
csort([1, [2]; 3, "a"], 1)
#! "col must have uniform dimension or all strings" 1
csort([[1], 2; [3], 4], 0)
#! "col must have uniform dimension or all strings" 1
csort([[1], 2], 0)
#! "col must have uniform dimension or all strings" 1
csort([1, 2])
#! "wrong number of arguments" -1
