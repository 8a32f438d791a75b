# acos(x): the angle whose cosine is given, for every element. Values are NumPy's.
acos(1)
#= 0
acos(0.5)
#~ 1e-15 1.0471975511965976
acos(-1)
#~ 1e-15 pi
# Beyond -1 and 1 the principal value, from the upper side of the cut.
acos(2)
#~ 1e-15 0 - 1.3169578969248166i
acos(-2)
#~ 1e-15 3.141592653589793 - 1.3169578969248166i
acos(1 + 2i)
#~ 1e-15 1.1437177404024206 - 1.528570919480998i
acos(NaN)
#= NaN

# Every element; nested arrays are entered.
acos([0.5, 1 + 2i])
#= [acos(0.5), acos(1 + 2i)]
acos([[0.5], 0.5])
#= [[acos(0.5)], acos(0.5)]
acos([])
#= []

acos(1 m)
#! "must be dimless" 1 acos
acos([1, 2] * s)
#! "must be dimless" 1 acos
acos([1, 2 kg])
#! "must be dimless" 1 acos
acos("x")
#! "must be a scalar or a matrix" 1 acos
acos([1, "x"])
#! "must be a scalar or a matrix" 1 acos
acos(sin)
#! "must be a scalar or a matrix" 1 acos
acos(1, 2)
#! "wrong number of arguments" -1 acos
