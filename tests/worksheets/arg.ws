# arg(z): the angle of every element in the complex plane; the result is real, without unit.
arg(1i)
#~ 1e-15 pi / 2
arg([1, -1, 1 - 1i, 0])
#~ 1e-15 [0, pi, -pi / 4, 0]
arg(conj(-1))
#~ 1e-15 pi
arg(1i * m)
#~ 1e-15 pi / 2
arg([1 m, 1i * s])
#~ 1e-15 [0, pi / 2]
arg([[1i], 1])
#~ 1e-15 [[pi / 2], 0]
arg([])
#= []
arg("z")
#! "must be a scalar or a matrix" 1 arg
arg([1i, "z"])
#! "must be a scalar or a matrix" 1 arg
arg(1, 2)
#! "wrong number of arguments" -1 arg
