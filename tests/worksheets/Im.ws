# Im(z): the imaginary part of every element; the result is real.
Im(3 + 4i)
#= 4
Im([1 + 2i, 3; 4i, -5])
#= [2, 0; 4, 0]
Im(complex([1, 2]))
#= [0, 0]
Im(3 m + 4i * m)
#= 4 m
Im([[1 + 2i], 3i])
#= [[2], 3]
Im([])
#= []
Im("z")
#! "must be a scalar or a matrix" 1 Im
Im([1i, "z"])
#! "must be a scalar or a matrix" 1 Im
Im(1, 2)
#! "wrong number of arguments" -1 Im
