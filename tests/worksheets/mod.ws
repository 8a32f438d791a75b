# mod(a, b): the remainder of a / b with the sign of b.
mod(7, 3)
#= 1
mod([7, -7, 7.5, -7.5], 3)
#= [1, 2, 1.5, 1.5]
mod([7, -7, 7.5, -7.5], -2)
#= [-1, -1, -0.5, -1.5]
mod(7, [3, 4, 5])
#= [1, 3, 2]
mod([7, 8], [3, 5])
#= [1, 3]
# A remainder of zero has the sign of b too.
mod(6, 3)
#= 0
mod(6, -3)
#= -0.0
mod(-6, 3)
#= 0
mod(5, inf)
#= 5
mod(-5, inf)
#= inf
mod(5, 0)
#= NaN
mod(inf, 2)
#= NaN

mod(7 m, 300 cm)
#= 1 m
mod([7 m, 5 s], [3 m, 2 s])
#= [1 m, 1 s]
mod(7 m, 3)
#! "unit mismatch" 2 mod
mod([7, 8], 3 s)
#! "unit mismatch" 2 mod
mod([[7, 8], 9], 5)
#= [[2, 3], 4]
mod([1, 2], [1, 2, 3])
#! "array size mismatch" -1 mod
mod([], 3)
#= []

mod(1i, 3)
#! "must be real" 1 mod
mod(3, 1i)
#! "must be real" 2 mod
mod("7", 3)
#! "must be a scalar or a matrix" 1 mod
mod(7, "3")
#! "must be a scalar or a matrix" 2 mod
mod([7, 8], ["a", 3])
#! "must be a scalar or a matrix" 2 mod
mod(7)
#! "wrong number of arguments" -1 mod
