# lookup(z, A, B, modifier): the elements of B where z is in A.

names := ["oak"; "steel"; "pine"; "steel"]
densities := [700; 7850; 500; 7860] * kg/m^3
lookup("steel", names, densities)
#= [7850; 7860] * kg/m^3
lookup("steel", names, densities, "not")
#= [700; 500] * kg/m^3
lookup(600 kg/m^3, densities, names, "gt")
#= ["oak"; "steel"; "steel"]

# Columns are searched one after the other, whatever the rows of the hits.
A := [3, 1; 1, 3]
B := [11, 12; 21, 22]
lookup(3, A, B)
#= [11; 22]
lookup(1, A, B)
#= [21; 12]
lookup(0, A, B, "gt")
#= [11; 21; 12; 22]
lookup(1.2, A, B, "near")
#= [21; 12]
lookup([2; 4], A, B, "range")
#= [11; 22]
is_odd(element, z) := mod(element, 2)
lookup(0, [1, 2; 3, 4], B, is_odd)
#= [11; 21]
lookup(1, [1], [5])
#= [5]
# The origin changes nothing.
set origin 7
lookup(1, A, B)
#= [21; 12]
lookup(0, [1, 2; 3, 4], B, is_odd)
#= [11; 21]
set origin -2147483648
lookup(1, A, B)
#= [21; 12]
set origin 0

# What is found may be anything and keeps its unit.
lookup(1, [1; 1; 1; 1; 2], [1 m; "two"; [3, 4]; 5i; 6])
#= [1 m; "two"; [3, 4]; 5i]
lookup(1, [1; 2; 1], [1 m; 2 s; 3 m])
#= [1; 3] * m
lookup(1, [1; 1; 2], [0; 1 m; 2 m])
#= [0; 1 m]
lookup(1, [1; 1], ["a"; [1 m, 2 m]])
#= ["a"; [1 m, 2 m]]
# An imaginary array only where some found imaginary part is not zero.
lookup(1, [1; 2], [5; 6i])
#= [5]
lookup(2, [1; 2], [5; 6i])
#= [6i]
lookup(1, [1; 1], complex([5; 6]))
#= [5; 6]
lookup(1, [1; 1], [NaN; -0.0])
#= [NaN; -0.0]

# Both are matrices of one shape.
lookup(1, 1, [1])
#! "must be matrix" 2
lookup(1, "a", 5)
#! "must be matrix" 2
lookup(1, [1], 1)
#! "must be matrix" 3
lookup(1, [1], "a")
#! "must be matrix" 3
lookup(1, [1, 2], [1; 2])
#! "array size mismatch" 3
lookup(1, [1; 2], [1; 2; 3])
#! "array size mismatch" 3
lookup(1, [], [1])
#! "array size mismatch" 3
lookup(1, [], [])
#! "no matching values found" -1
lookup(4, A, B)
#! "no matching values found" -1

# Shapes come before TOL, TOL before the modifier.
set tol -1
lookup(1, [1, 2], [1; 2], "nonsense")
#! "array size mismatch" 3
lookup(1, A, B, "nonsense")
#! "illegal TOL" -1
set tol inf
lookup(1, A, B)
#! "illegal TOL" -1
set tol 1e-3

# The modifier is the fourth argument.
lookup(1, A, B, "nonsense")
#! "invalid modifier" 4
lookup(1, A, B, 5)
#! "invalid modifier" 4
lookup(1, A, B, sqrt)
#! "must be a function of 2 variables" 4
text(element, z) := "1"
lookup(1, A, B, text)
#! "This function must return an integer value" 4
lookup(A, A, B)
#! "must be a string or a scalar" 1
lookup(inf, A, B)
#! "must be scalar" 1
lookup("a", A, B, "lt")
#! "must be scalar" 1
lookup(1i, A, B, "lt")
#! "must be real" 1
lookup(1, A, B, "range")
#! "must be vector" 1
lookup([1; 2; 3], A, B, "range")
#! "invalid range" 1
lookup([1 m; 2], A, B, "range")
#! "must be of uniform units" 1
lookup([1i; 2], A, B, "range")
#! "must be real vector" 1
set origin 2147483647
lookup(1, A, B)
#! "index out of bounds" -1
set origin 0

lookup(1, A)
#! "wrong number of arguments" -1
