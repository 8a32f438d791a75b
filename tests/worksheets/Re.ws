# Re(z): the real part of every element; the result is real.
Re(3 + 4i)
#= 3
Re([1 + 2i, 3; 4i, -5])
#= [1, 3; 0, -5]
Re(complex([1, 2]))
#= [1, 2]
Re(3 m + 4i * m)
#= 3 m
Re([[1 + 2i], 3i])
#= [[1], 0]
Re(-0.0)
#= -0.0
Re([])
#= []
Re("z")
#! "must be a scalar or a matrix" 1 Re
Re([1i, "z"])
#! "must be a scalar or a matrix" 1 Re
Re(1, 2)
#! "wrong number of arguments" -1 Re
