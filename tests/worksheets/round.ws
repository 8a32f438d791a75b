# round(x): every element rounded to the nearest whole number, halves away from zero.
round([1.4, 1.5, 2.5, -1.5, -2.5, -1.4])
#= [1, 2, 3, -2, -3, -1]
# The number below one half stays below.
round(0.49999999999999994)
#= 0
round(4503599627370497)
#= 4503599627370497
round(2.5 m)
#= 3 m
round([[1.5], 2.5])
#= [[2], 3]

# Real numbers only, one by one; an imaginary part of zero is none.
round(complex([1.5, 2.5]))
#= [round(1.5), round(2.5)]
round(1.5 + 2i)
#! "must be real" 1 round
round([1, 2i])
#! "must be real" 1 round
round([])
#= []
round("1.5")
#! "must be a scalar or a matrix" 1 round
round([1.5, "x"])
#! "must be a scalar or a matrix" 1 round
round()
#! "wrong number of arguments" -1 round
