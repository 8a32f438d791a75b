# ceil(x): every element rounded up.
ceil([1.5, -1.5, 2, 0.5])
#= [2, -1, 2, 1]
ceil(-0.5)
#= -0.0
ceil(2.2 m)
#= 3 m
ceil([[1.5], 2.5])
#= [[2], 3]

# Real numbers only, one by one; an imaginary part of zero is none.
ceil(complex([1.5, 2.5]))
#= [ceil(1.5), ceil(2.5)]
ceil(1.5 + 2i)
#! "must be real" 1 ceil
ceil([1, 2i])
#! "must be real" 1 ceil
ceil([])
#= []
ceil("1.5")
#! "must be a scalar or a matrix" 1 ceil
ceil([1.5, "x"])
#! "must be a scalar or a matrix" 1 ceil
ceil()
#! "wrong number of arguments" -1 ceil
