# atan(x): the angle between -pi/2 and pi/2 whose tangent is given, for every element. Values are NumPy's.
atan(0)
#= 0
atan(0.5)
#~ 1e-15 0.4636476090008061
atan(inf)
#~ 1e-15 pi / 2
atan(-2)
#~ 1e-15 -1.1071487177940904
atan(0.5 - 1i)
#~ 1e-15 0.9078874949608804 - 0.708303336014054i
atan(NaN)
#= NaN

# Every element; nested arrays are entered.
atan([0.5, 1 + 2i])
#= [atan(0.5), atan(1 + 2i)]
atan([[0.5], 0.5])
#= [[atan(0.5)], atan(0.5)]
atan([])
#= []

atan(1 m)
#! "must be dimless" 1 atan
atan([1, 2] * s)
#! "must be dimless" 1 atan
atan([1, 2 kg])
#! "must be dimless" 1 atan
atan("x")
#! "must be a scalar or a matrix" 1 atan
atan([1, "x"])
#! "must be a scalar or a matrix" 1 atan
atan(sin)
#! "must be a scalar or a matrix" 1 atan
atan(1, 2)
#! "wrong number of arguments" -1 atan
