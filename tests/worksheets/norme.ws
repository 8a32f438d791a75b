# norme(M): the Euclidean norm, the square root of the sum of all squared magnitudes.

norme([1, -2; 3, 4])
#= sqrt(30)
norme([3, 0; 0, -4])
#= 5
norme([-3])
#= 3
norme([0, 0; 0, 0])
#= 0
norme([])
#= 0

# 3 + 4i adds 25 to the sum.
norme([3 + 4i, 0; 0, 0])
#= 5
norme([3i, 4; 12i, 0])
#= 13
norme(complex([3, 0; 0, -4]))
#= 5

norme([3, 0; 0, -4] * kg)
#= 5 kg
norme(submatrix([9, 9, 9; 9, 3, 0; 9, 0, 4], 1, 2, 1, 2))
#= 5

norme([1, 2, 3; 4, 5, 6])
#! "must be square" 1
norme([1, 2])
#! "must be square" 1
norme(3)
#! "must be scalar matrix" 1
norme("text")
#! "must be scalar matrix" 1
norme([1 m, 2; 3, 4])
#! "must be scalar matrix" 1
norme([[1], 2; 3, 4])
#! "must be scalar matrix" 1

# Nothing is scaled: a square beyond the largest number is a fault, one below the smallest is lost.
norme([1e200, 0; 0, 0])
#! "floating point exception" 0
norme([3e200 + 4e200i])
#! "floating point exception" 0
norme([1e-200, 0; 0, 0])
#= 0
# Infinity and NaN are squared and summed without a fault, for nothing is compared.
norme([1, inf; 1, 1])
#= inf
norme([1, 1; 1, NaN])
#= NaN
