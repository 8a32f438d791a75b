# vhlookup(rz, cz, A, modifier): the block where rows that begin with rz meet columns that begin with cz.

T := ["", 10, 20, 20; "a", 1, 2, 3; "b", 4, 5, 6; "a", 7, 8, 9]
vhlookup("b", 10, T)
#= [4]
vhlookup("b", 20, T)
#= [5, 6]
vhlookup("a", 10, T)
#= [1; 7]
vhlookup("a", 20, T)
#= [2, 3; 8, 9]
vhlookup("a", 20, T, "eq")
#= [2, 3; 8, 9]
# The modifier counts for keys that are no texts; a text is looked for as it is.
vhlookup("a", 15, T, "lt")
#= [1; 7]
vhlookup("b", 5, T, "gt")
#= [4, 5, 6]
vhlookup("b", 14, T, "near")
#= [4]
vhlookup("b", [15; 30], T, "range")
#= [5, 6]
vhlookup("b", 20, T, "not")
#= [4]
N := [0, 1, 2; 1, 11, 12; 2, 21, 22]
vhlookup(1, 1, N, "geq")
#= [11, 12; 21, 22]
vhlookup(2, 2, N)
#= [22]
vhlookup(1, 2, N, "not")
#= [0, 1; 2, 21]
# The corner belongs to both searches.
vhlookup(0, 0, N)
#= [0]
vhlookup(0, 2, N)
#= [2]
vhlookup("", "", T)
#= [""]
vhlookup("", 20, T)
#= [20, 20]
vhlookup(5, 5, [5])
#= [5]
# The origin changes nothing.
set origin 1
vhlookup("a", 20, T)
#= [2, 3; 8, 9]
set origin 0
# With both keys texts nobody reads the modifier, but it has to be a text other than "..".
K := ["", "x", "y"; "r", 1 m, 2 s; "s", "t", [3, 4]]
vhlookup("r", "y", K)
#= [2 s]
vhlookup("r", "x", K, "lt")
#= [1 m]
vhlookup("s", "y", K, "nonsense")
#= [[3, 4]]
vhlookup("s", "x", K, "")
#= ["t"]
vhlookup("r", "y", K, "..")
#! "invalid modifier" 4
vhlookup("r", "y", K, 5)
#! "invalid modifier" 4
vhlookup("r", "y", K, sin)
#! "invalid modifier" 4
f(element, z) := 1
vhlookup(1, 1, N, f)
#! "invalid modifier" 4
vhlookup(1, 1, N, "nonsense")
#! "invalid modifier" 4
vhlookup(1, 1, N, "..")
#! "invalid modifier" 4
# Rows and columns that are hit twice come twice, each element with its unit.
vhlookup("r", 1, ["", 1, 1; "r", 2 m, 3 s; "r", 4i, "x"])
#= [2 m, 3 s; 4i, "x"]
vhlookup(1, 1, [1, 2 m; 2, 3i])
#= [1]

# A text finds texts only, however it looks.
vhlookup("1", 1, N)
#! "no matching values found" -1
vhlookup(1, "1", N)
#! "no matching values found" -1
vhlookup("c", 10, T)
#! "no matching values found" -1
vhlookup("a", 30, T)
#! "no matching values found" -1
vhlookup("a", 10, [])
#! "no matching values found" -1
vhlookup(1, 1, [])
#! "no matching values found" -1

# Matrix, modifier, TOL, rows, columns: refused in this order.
set tol -1
vhlookup([1], [1], 5, 5)
#! "must be matrix" 3
vhlookup([1], [1], N, 5)
#! "invalid modifier" 4
vhlookup("r", "y", K)
#! "illegal TOL" -1
vhlookup([1], [1], N, "nonsense")
#! "illegal TOL" -1
set tol 1e-3
vhlookup([1], [1], N)
#! "must be a string or a scalar" 1
vhlookup(1, [1], N)
#! "must be a string or a scalar" 2
vhlookup(9, [1], N)
#! "no matching values found" -1
# A number that is not finite is named as argument 1 wherever it stands.
vhlookup(inf, 1, N)
#! "must be scalar" 1
vhlookup(1, inf, N)
#! "must be scalar" 1
vhlookup(1, [1], N, "lt")
#! "must be scalar" 2
vhlookup(1i, 1, N, "gt")
#! "must be real" 1
vhlookup(1, 1i, N, "gt")
#! "must be real" 2
vhlookup("", 5, T, "range")
#! "must be vector" 2
vhlookup(5, 5, N, "range")
#! "must be vector" 1
vhlookup([0; 1; 2], 1, N, "range")
#! "invalid range" 1
vhlookup([0; 1 m], 1, N, "range")
#! "must be of uniform units" 1
vhlookup([0; 1i], 1, N, "range")
#! "must be real vector" 1
vhlookup([0; 1], [0; 1i], N, "range")
#! "must be real vector" 2
set origin 2147483647
vhlookup(1, 1, N)
#! "index out of bounds" -1
set origin 0
