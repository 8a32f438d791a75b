# sqrt(x): the principal square root of every element. Complex values are NumPy's.
sqrt(16)
#= 4
sqrt(2)
#= 1.4142135623730951
sqrt([4, 9; 16, 2.25])
#= [2, 3; 4, 1.5]
sqrt(0.25)
#= 0.5

# Beyond the real line the principal value.
sqrt(-4)
#= 2i
sqrt([4, -9])
#= [2, 3i]
sqrt(3 + 4i)
#~ 1e-15 2 + 1i
sqrt(1 - 2i)
#~ 1e-15 1.272019649514069 - 0.7861513777574233i
sqrt(conj(-4))
#= 2i

sqrt(0)
#= 0
sqrt(-0.0)
#= -0.0
sqrt(inf)
#= inf
sqrt(NaN)
#= NaN
sqrt(-inf)
#= complex(0, inf)

# The unit is halved.
sqrt(9 m^2)
#= 3 m
sqrt([4 m^2, 9 s])
#= [2 m, 3 s^(1/2)]
sqrt(4 m)
#= 2 m^0.5

# Nested arrays are entered, texts are none of its business.
sqrt([[4, 9], 16])
#= [[2, 3], 4]
sqrt([])
#= []
sqrt("4")
#! "must be a scalar or a matrix" 1 sqrt
sqrt([4, "x"])
#! "must be a scalar or a matrix" 1 sqrt
sqrt([[4, "x"], 4])
#! "must be a scalar or a matrix" 1 sqrt
sqrt(sin)
#! "must be a scalar or a matrix" 1 sqrt
sqrt(1, 2)
#! "wrong number of arguments" -1 sqrt
sqrt()
#! "wrong number of arguments" -1 sqrt
