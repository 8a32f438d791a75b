# ln(x): the natural logarithm of every element, the principal value. Values are NumPy's.
ln(1)
#= 0
ln(10)
#~ 1e-15 2.3025850929940455
ln(0)
#= -inf
ln(inf)
#= inf
ln(NaN)
#= NaN
# A negative number lies on the upper side of the cut.
ln(-2)
#~ 1e-15 0.6931471805599453 + 3.141592653589793i
ln(conj(-2))
#~ 1e-15 0.6931471805599453 + 3.141592653589793i
ln(1 + 2i)
#~ 1e-15 0.8047189562170503 + 1.1071487177940904i
ln(5 percent)
#! "undefined name: percent" -1 "" column 6

# Every element; nested arrays are entered.
ln([0.5, 1 + 2i])
#= [ln(0.5), ln(1 + 2i)]
ln([[0.5], 0.5])
#= [[ln(0.5)], ln(0.5)]
ln([])
#= []

ln(1 m)
#! "must be dimless" 1 ln
ln([1, 2] * s)
#! "must be dimless" 1 ln
ln([1, 2 kg])
#! "must be dimless" 1 ln
ln("x")
#! "must be a scalar or a matrix" 1 ln
ln([1, "x"])
#! "must be a scalar or a matrix" 1 ln
ln(sin)
#! "must be a scalar or a matrix" 1 ln
ln(1, 2)
#! "wrong number of arguments" -1 ln
