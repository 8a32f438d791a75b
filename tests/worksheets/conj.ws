# conj(z): the complex conjugate of every element.
conj(3 + 4i)
#= 3 - 4i
conj([1 + 2i, 3])
#= [1 - 2i, 3]
conj(3)
#= 3
conj(2 m + 1i * m)
#= 2 m - 1i * m
conj([[1 + 2i], 3])
#= [[1 - 2i], 3]
# Nothing imaginary is left: the result is real.
conj(complex([1, 2]))
#= [1, 2]
conj([])
#= []
conj("z")
#! "must be a scalar or a matrix" 1 conj
conj([1i, "z"])
#! "must be a scalar or a matrix" 1 conj
conj(1, 2)
#! "wrong number of arguments" -1 conj
