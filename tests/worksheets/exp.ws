# exp(x): e to the power of every element. Values are NumPy's.
exp(0)
#= 1
exp(1)
#~ 1e-15 2.718281828459045
exp(1 + 2i)
#~ 1e-15 -1.1312043837568135 + 2.4717266720048188i
exp(-inf)
#= 0
exp(1000)
#= inf
exp(NaN)
#= NaN

# Every element; nested arrays are entered.
exp([0.5, 1 + 2i])
#= [exp(0.5), exp(1 + 2i)]
exp([[0.5], 0.5])
#= [[exp(0.5)], exp(0.5)]
exp([])
#= []

exp(1 m)
#! "must be dimless" 1 exp
exp([1, 2] * s)
#! "must be dimless" 1 exp
exp([1, 2 kg])
#! "must be dimless" 1 exp
exp("x")
#! "must be a scalar or a matrix" 1 exp
exp([1, "x"])
#! "must be a scalar or a matrix" 1 exp
exp(sin)
#! "must be a scalar or a matrix" 1 exp
exp(1, 2)
#! "wrong number of arguments" -1 exp
