# floor(x): every element rounded down.
floor([1.5, -1.5, 2, -0.5])
#= [1, -2, 2, -1]
floor(-0.0)
#= -0.0
floor([inf, -inf, NaN])
#= [inf, -inf, NaN]
# The unit stays; what is rounded is the number of SI units.
floor(2.7 m)
#= 2 m
floor(2.7 km)
#= 2700 m
floor([1.5 m, 2.5 s])
#= [1 m, 2 s]
floor([[1.5], 2.5])
#= [[1], 2]

# Real numbers only, one by one; an imaginary part of zero is none.
floor(complex([1.5, 2.5]))
#= [floor(1.5), floor(2.5)]
floor(1.5 + 2i)
#! "must be real" 1 floor
floor([1, 2i])
#! "must be real" 1 floor
floor([])
#= []
floor("1.5")
#! "must be a scalar or a matrix" 1 floor
floor([1.5, "x"])
#! "must be a scalar or a matrix" 1 floor
floor()
#! "wrong number of arguments" -1 floor
