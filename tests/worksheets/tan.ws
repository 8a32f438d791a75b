# tan(x): the tangent of every element. Values are NumPy's.
tan(0)
#= 0
tan(0.5)
#~ 1e-15 0.5463024898437905
tan(45 deg)
#~ 1e-15 1
tan(1 + 2i)
#~ 1e-14 0.03381282607989669 + 1.0147936161466335i
tan(NaN)
#= NaN

# Every element; nested arrays are entered.
tan([0.5, 1 + 2i])
#= [tan(0.5), tan(1 + 2i)]
tan([[0.5], 0.5])
#= [[tan(0.5)], tan(0.5)]
tan([])
#= []

tan(1 m)
#! "must be dimless" 1 tan
tan([1, 2] * s)
#! "must be dimless" 1 tan
tan([1, 2 kg])
#! "must be dimless" 1 tan
tan("x")
#! "must be a scalar or a matrix" 1 tan
tan([1, "x"])
#! "must be a scalar or a matrix" 1 tan
tan(sin)
#! "must be a scalar or a matrix" 1 tan
tan(1, 2)
#! "wrong number of arguments" -1 tan
