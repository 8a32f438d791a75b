# log10(x): the logarithm to base 10 of every element, the principal value. Values are NumPy's.
log10(1000)
#= 3
log10(1e-300)
#= -300
log10(2)
#~ 1e-15 0.3010299956639812
log10(0)
#= -inf
log10(-10)
#~ 1e-15 1 + 1.3643763538418412i
log10(3 + 4i)
#~ 1e-15 0.6989700043360187 + 0.4027191962733731i
log10(NaN)
#= NaN

# Every element; nested arrays are entered.
log10([0.5, 1 + 2i])
#= [log10(0.5), log10(1 + 2i)]
log10([[0.5], 0.5])
#= [[log10(0.5)], log10(0.5)]
log10([])
#= []

log10(1 m)
#! "must be dimless" 1 log10
log10([1, 2] * s)
#! "must be dimless" 1 log10
log10([1, 2 kg])
#! "must be dimless" 1 log10
log10("x")
#! "must be a scalar or a matrix" 1 log10
log10([1, "x"])
#! "must be a scalar or a matrix" 1 log10
log10(sin)
#! "must be a scalar or a matrix" 1 log10
log10(1, 2)
#! "wrong number of arguments" -1 log10
