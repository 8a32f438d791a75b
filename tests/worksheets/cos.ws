# cos(x): the cosine of every element. Values are NumPy's.
cos(0)
#= 1
cos(0.5)
#~ 1e-15 0.8775825618903725
cos(60 deg)
#~ 1e-15 0.5
cos(1 + 2i)
#~ 1e-15 2.0327230070196656 - 3.0518977991518i
cos(NaN)
#= NaN

# Every element; nested arrays are entered.
cos([0.5, 1 + 2i])
#= [cos(0.5), cos(1 + 2i)]
cos([[0.5], 0.5])
#= [[cos(0.5)], cos(0.5)]
cos([])
#= []

cos(1 m)
#! "must be dimless" 1 cos
cos([1, 2] * s)
#! "must be dimless" 1 cos
cos([1, 2 kg])
#! "must be dimless" 1 cos
cos("x")
#! "must be a scalar or a matrix" 1 cos
cos([1, "x"])
#! "must be a scalar or a matrix" 1 cos
cos(sin)
#! "must be a scalar or a matrix" 1 cos
cos(1, 2)
#! "wrong number of arguments" -1 cos
