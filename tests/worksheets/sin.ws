# sin(x): the sine of every element. Values are NumPy's.
sin(0)
#= 0
sin(0.5)
#~ 1e-15 0.47942553860420295
sin(30 deg)
#~ 1e-15 0.5
sin(1e6)
#~ 1e-15 -0.349993502171293
sin(1 + 2i)
#~ 1e-15 3.165778513216168 + 1.9596010414216063i
sin(inf)
#= NaN

# Every element; nested arrays are entered.
sin([0.5, 1 + 2i])
#= [sin(0.5), sin(1 + 2i)]
sin([[0.5], 0.5])
#= [[sin(0.5)], sin(0.5)]
sin([])
#= []

sin(1 m)
#! "must be dimless" 1 sin
sin([1, 2] * s)
#! "must be dimless" 1 sin
sin([1, 2 kg])
#! "must be dimless" 1 sin
sin("x")
#! "must be a scalar or a matrix" 1 sin
sin([1, "x"])
#! "must be a scalar or a matrix" 1 sin
sin(sin)
#! "must be a scalar or a matrix" 1 sin
sin(1, 2)
#! "wrong number of arguments" -1 sin
