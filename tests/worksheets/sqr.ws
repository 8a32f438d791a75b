# sqr(x): the square of a number, of a column's elements, of a square matrix.

sqr(3)
#= 9
sqr(-3 m)
#= 9 m^2
sqr(2i)
#= -4
sqr(1 + 2i)
#= complex(-3, 4)
sqr(-0.0)
#= 0
sqr(inf)
#= inf
sqr(1e-200)
#= 0
sqr(NaN)
#= NaN
# Other than in a product, an overflow is an error.
sqr(1e200)
#! "floating point error" -1
sqr(1e200i)
#! "floating point error" -1

sqr([1; -2; 3])
#= [1; 4; 9]
sqr([1 m; 2 s])
#= [1 m^2; 4 s^2]
sqr([1 m; 2 m])
#= [1 m^2; 4 m^2]
sqr([1i; 1 + 1i])
#= [-1; 2i]
sqr([1i; 2])
#= [-1; 4]
sqr([1e200])
#= [inf]
sqr([[1, 2; 3, 4]; 3])
#= [[1, 4; 9, 16]; 9]

sqr([1, 2; 3, 4])
#= [7, 10; 15, 22]
sqr([1, 2; 3, 4] * m)
#= [7 m^2, 10 m^2; 15 m^2, 22 m^2]
sqr([0, 1i; 1i, 0])
#= [-1, 0; 0, -1]
sqr([1, 2 m; 3 m^-1, 4])
#= [7, 10 m; 15 m^-1, 22]

sqr([1, 2, 3])
#! "must be square" 1
sqr([])
#! "invalid dimension" -1
sqr([1e200, 0; 0, 1])
#! "floating point exception" 0
sqr([1 m, 0; 0, 1 m])
#! "must be a linear algebra matrix" 1
sqr([1 m, 2 s; 3 m, 4 s])
#! "matrix unit mismatch" -1
sqr([1, "a"; 2, 3])
#! "must be a linear algebra matrix" 1
sqr([1; "a"])
#! "must be a scalar or a matrix" 1
sqr("a")
#! "must be a scalar or a vector" 1
sqr(sin)
#! "must be a scalar or a vector" 1
# The numbers' errors come before the unit's.
sqr([1e200, 2; 3, 4] * m^35000)
#! "floating point exception" 0
sqr([1, 2; 3, 4] * m^35000)
#! "unit power not representable" -1
