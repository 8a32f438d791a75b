# abs(x): the magnitude of a number, the length of a column, the determinant of another square matrix.

abs(-3)
#= 3
abs(-0.0)
#= 0
abs(-3 m)
#= 3 m
abs(3 + 4i)
#= 5
abs(4i)
#= 4
abs(complex(-3, 0))
#= 3
abs(inf)
#= inf
abs(NaN)
#= NaN
# Without overflow on the way.
abs(3e200 + 4e200i)
#~ 1e-15 5e200
abs([3; 4])
#= 5
abs([1 + 2i; 2])
#= 3
abs([1, 2; 3, 4])
#= -2
# Not scaled: the squares of a column overflow.
abs([1e200; 1])
#= inf
abs([])
#= 1
abs([1 m; 2 s])
#! "must be scalar matrix" 1
abs([1, 2])
#! "must be square" 1
abs([1 m, 0; 0, 1 m])
#! "must be a linear algebra matrix" 1
abs("a")
#! "must be a scalar or a matrix" 1
