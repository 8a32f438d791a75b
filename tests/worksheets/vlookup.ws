# vlookup(z, A, c, modifier): what stands in column c beside the elements of the first column that are z.

A := [1, 10; 2, 20; 2, 30]
vlookup(2, A, 1)
#= [20; 30]
vlookup(2, A, 0)
#= [2; 2]
vlookup(1, A, 1)
#= [10]
vlookup(2, A, 1, "lt")
#= [10]
vlookup(2, A, 1, "not")
#= [10]
vlookup(1.4, A, 1, "near")
#= [10]
vlookup([0; 2], A, 1, "range")
#= [10; 20; 30]
is_even(element, z) := mod(element, 2) == 0
vlookup(0, A, 1, is_even)
#= [20; 30]
# Only the first column is searched.
vlookup(10, A, 1)
#! "no matching values found" -1
# Columns count from the origin.
set origin 1
vlookup(2, A, 1)
#= [2; 2]
vlookup(2, A, 2)
#= [20; 30]
vlookup(2, A, 0)
#! "index out of bounds" 3
set origin 0

# A table of texts, numbers and units.
bolts := ["M6", 10 mm, 8.8; "M8", 13 mm, "A2"; "M10", 16 mm, 8.8]
vlookup("M8", bolts, 1)
#= [13 mm]
vlookup("M8", bolts, 2)
#= ["A2"]
vlookup("M8", bolts, 1, "not")
#= [10 mm; 16 mm]
vlookup("m8", bolts, 1)
#! "no matching values found" -1
vlookup("x", read_csv("data/points.csv"), 1)
#= ["y"]
vlookup(1.5, read_csv("data/points.csv"), 1)
#= [2]
# Empty cells, nested arrays and numbers among the keys.
vlookup("", ["", 1; 5, 2; [1], 3; "", 4], 1)
#= [1; 4]
vlookup(5, ["", 1; 5, 2; [1], 3; "", 4], 1)
#= [2]
vlookup(5, ["", 1; 5, 2; [1], 3; "", 4; 6, [7, 8]], 1, "geq")
#= [2; [7, 8]]
vlookup(20, submatrix([0, 1, 2; 0, 20, 5; 0, 20, 6], 0, 2, 1, 2), 1)
#= [5; 6]
vlookup(1, [1, 5i; 1, 6], 1)
#= [5i; 6]
vlookup(2, [1, 5i; 2, 6], 1)
#= [6]

vlookup(2, A, 2)
#! "index out of bounds" 3
vlookup(2, A, -1)
#! "index out of bounds" 3
vlookup(2, A, 1e10)
#! "index out of bounds" 3
vlookup(2, [], 0)
#! "index out of bounds" 3
vlookup(2, A, 0.5)
#! "must be integer" 3
vlookup(2, A, "1")
#! "must be integer" 3
vlookup(2, A, NaN)
#! "must be integer" 3
vlookup(2, 2, 9)
#! "must be matrix" 2

set tol NaN
vlookup(2, A, 9)
#! "index out of bounds" 3
vlookup(2, A, 1)
#! "illegal TOL" -1
set tol 1e-3
vlookup(2, A, 1, "nonsense")
#! "invalid modifier" 4
vlookup(2, A, 1, A)
#! "invalid modifier" 4
vlookup(2, A, 1, sqrt)
#! "must be a function of 2 variables" 4
text(element, z) := "1"
vlookup(2, A, 1, text)
#! "This function must return an integer value" 4
fails(element, z) := sqrt("a")
vlookup(2, A, 1, fails)
#! "must be a scalar or a matrix" 1
vlookup(A, A, 1)
#! "must be a string or a scalar" 1
vlookup(inf, A, 1)
#! "must be scalar" 1
vlookup("a", A, 1, "near")
#! "must be scalar" 1
vlookup(2i, A, 1, "near")
#! "must be real" 1
vlookup("a", A, 1, "range")
#! "must be vector" 1
vlookup([1; 2; 3], A, 1, "range")
#! "invalid range" 1
vlookup([1; 2 m], A, 1, "range")
#! "must be of uniform units" 1
vlookup([1; 2i], A, 1, "range")
#! "must be real vector" 1
set origin 2147483647
vlookup(2, A, 2147483647)
#! "index out of bounds" -1
set origin 0
