# asin(x): the angle whose sine is given, for every element. Values are NumPy's.
asin(0)
#= 0
asin(1)
#~ 1e-15 pi / 2
asin(0.5)
#~ 1e-15 0.5235987755982989
# Beyond -1 and 1 the principal value, from the upper side of the cut.
asin(2)
#~ 1e-15 1.5707963267948966 + 1.3169578969248166i
asin(-2)
#~ 1e-15 -1.5707963267948966 + 1.3169578969248166i
asin(0.5 - 1i)
#~ 1e-15 0.34943906285721327 - 0.9261330313501825i
asin(NaN)
#= NaN

# Every element; nested arrays are entered.
asin([0.5, 1 + 2i])
#= [asin(0.5), asin(1 + 2i)]
asin([[0.5], 0.5])
#= [[asin(0.5)], asin(0.5)]
asin([])
#= []

asin(1 m)
#! "must be dimless" 1 asin
asin([1, 2] * s)
#! "must be dimless" 1 asin
asin([1, 2 kg])
#! "must be dimless" 1 asin
asin("x")
#! "must be a scalar or a matrix" 1 asin
asin([1, "x"])
#! "must be a scalar or a matrix" 1 asin
asin(sin)
#! "must be a scalar or a matrix" 1 asin
asin(1, 2)
#! "wrong number of arguments" -1 asin
