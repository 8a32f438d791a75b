# hlookup(z, A, r, modifier): what stands in row r below the elements of the first row that are z.

T := [10, 20, 30, 20; 1, 2, 3, 4; 5, 6, 7, 8]
hlookup(20, T, 1)
#= [2; 4]
hlookup(20, T, 2)
#= [6; 8]
hlookup(20, T, 0)
#= [20; 20]
hlookup(15, T, 1, "gt")
#= [2; 3; 4]
hlookup(26, T, 1, "near")
#= [3]
hlookup([15; 30], T, 2, "range")
#= [6; 7; 8]
is_ten(element, z) := element == 10
hlookup(0, T, 1, is_ten)
#= [1]
# Only the first row is searched.
hlookup(2, T, 1)
#! "no matching values found" -1
# Rows count from the origin.
set origin 1
hlookup(20, T, 1)
#= [20; 20]
hlookup(20, T, 3)
#= [6; 8]
hlookup(20, T, 0)
#! "index out of bounds" 3
hlookup(20, T, 4)
#! "index out of bounds" 3
set origin -10
hlookup(20, T, -9)
#= [2; 4]
set origin 0

# Texts, units and arrays go with their places.
U := ["a", "b", "a"; 1 m, 2 s, 3 m; "x", [1, 2], 4i]
hlookup("a", U, 1)
#= [1; 3] * m
hlookup("a", U, 2)
#= ["x"; 4i]
hlookup("b", U, 2)
#= [[1, 2]]
hlookup("a", U, 1, "not")
#= [2 s]
hlookup(2, submatrix(T, 1, 2, 1, 3), 1)
#= [6]

# A table of one row.
hlookup(2, [1, 2, 2], 0)
#= [2; 2]
hlookup(2, [2; 3], 1)
#= [3]

hlookup(20, T, 3)
#! "index out of bounds" 3
hlookup(20, T, -1)
#! "index out of bounds" 3
hlookup(20, T, 4294967296)
#! "index out of bounds" 3
hlookup(20, T, -1e300)
#! "index out of bounds" 3
hlookup(20, [], 0)
#! "index out of bounds" 3
hlookup(20, T, 0.5)
#! "must be integer" 3
hlookup(20, T, 1i)
#! "must be integer" 3
hlookup(20, T, inf)
#! "must be integer" 3
hlookup(20, T, "1")
#! "must be integer" 3
hlookup(20, T, [1])
#! "must be integer" 3
hlookup(20, T, sin)
#! "must be integer" 3
# Its unit is not looked at.
hlookup(20, T, 1 m)
#= [2; 4]
hlookup(20, 20, 0.5)
#! "must be matrix" 2
hlookup("a", "a", 0)
#! "must be matrix" 2

set tol -1
hlookup(20, T, 9, "nonsense")
#! "index out of bounds" 3
hlookup(20, T, 1, "nonsense")
#! "illegal TOL" -1
set tol 1e-3
hlookup(20, T, 1, "nonsense")
#! "invalid modifier" 4
hlookup(20, T, 1, 7)
#! "invalid modifier" 4
hlookup(20, T, 1, sqrt)
#! "must be a function of 2 variables" 4
half(element, z) := 0.5
hlookup(20, T, 1, half)
#! "This function must return an integer value" 4
hlookup(T, T, 1)
#! "must be a string or a scalar" 1
hlookup(NaN, T, 1)
#! "must be scalar" 1
hlookup("a", T, 1, "gt")
#! "must be scalar" 1
hlookup(inf, T, 1, "gt")
#! "must be real" 1
hlookup(20, T, 1, "range")
#! "must be vector" 1
hlookup([20], T, 1, "range")
#! "invalid range" 1
hlookup([20; "a"], T, 1, "range")
#! "must be of uniform units" 1
hlookup([20; NaN], T, 1, "range")
#! "must be real vector" 1
set origin 2147483647
hlookup(20, T, 2147483647)
#! "index out of bounds" -1
set origin 0
