# matrix(m, n, f): the values of f at every place.

sum(i, j) := i + j
matrix(2, 3, sum)
#= [0, 1, 2; 1, 2, 3]
matrix(1, 1, sum)
#= [0]
# Counted from 0 whatever the origin is.
set origin 1
matrix(2, 3, sum)
#= [0, 1, 2; 1, 2, 3]
set origin 0

# Any function that can be called with two arguments.
matrix(2, 2, augment)
#= [[0, 0], [0, 1]; [1, 0], [1, 1]]
matrix(2, 2, complex)
#= [0, 1i; 1, 1 + 1i]

# Whatever the values are, they keep their units.
length_of(i, j) := (i + 1) * m
matrix(2, 1, length_of)
#= [1 m; 2 m]
mixed(i, j) := if(i == 0, 1 m, 2 s)
matrix(2, 2, mixed)
#= [1 m, 1 m; 2 s, 2 s]
text(i, j) := "x"
matrix(1, 2, text)
#= ["x", "x"]
array(i, j) := [i, j]
matrix(2, 1, array)
#= [[0, 0]; [1, 0]]
real_part(i, j) := complex(i, 0)
matrix(2, 1, real_part)
#= [0; 1]

# Calls go down the columns: the first one that fails shows the order.
late(i, j) := if(j == 1, [1, 2][0, 5], if(i == 1, [1][1, 0] + "row 1 of column 0", 1))
matrix(2, 2, late)
#! "index out of bounds" -1
order(i, j) := if(i == 1, 1 / 0, if(j == 1, 1 m + 1 s, 1))
matrix(2, 2, order)
#! "divide by zero" 2

# Sizes: whole, positive, of any unit.
matrix(2 m, 1, sum)
#= [0; 1]
matrix(0, 1, sum)
#! "must be positive integer" 1
matrix(-1, 1, sum)
#! "must be positive integer" 1
matrix(1.5, 1, sum)
#! "must be positive integer" 1
matrix(1i, 1, sum)
#! "must be positive integer" 1
matrix(inf, 1, sum)
#! "must be positive integer" 1
matrix(NaN, 1, sum)
#! "must be positive integer" 1
matrix("2", 1, sum)
#! "must be positive integer" 1
matrix([2], 1, sum)
#! "must be positive integer" 1
matrix(1, 0, sum)
#! "must be positive integer" 2
matrix(1, 0.5, sum)
#! "must be positive integer" 2
matrix(1, "a", sum)
#! "must be positive integer" 2
matrix(0, 0, 5)
#! "must be positive integer" 1
matrix(1e10, 1, sum)
#! "matrix too big" 1
matrix(1, 1e300, sum)
#! "matrix too big" 2
matrix(2147483647, 2147483647, sum)
#! "out of memory" -1

matrix(2, 2, sqrt)
#! "must be a function of 2 variables" 3
one(x) := x
matrix(2, 2, one)
#! "must be a function of 2 variables" 3
matrix(2, 2, 5)
#! "must be a function of 2 variables" 3
matrix(2, 2, "sum")
#! "must be a function of 2 variables" 3
gives_function(i, j) := sin
matrix(2, 2, gives_function)
#! "must be string scalar or array" 3
