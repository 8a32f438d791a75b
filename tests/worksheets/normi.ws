# normi(M): the largest sum of a row's magnitudes.

normi([1, -2; 3, 4])
#= 7
normi([-3])
#= 3
normi([0, 0; 0, -0.0])
#= 0
normi([])
#= 0
normi([1, -2, 3; 4, 5, -6; 0, 0, 7])
#= 15

# Complex elements count by their modulus.
normi([3 + 4i, 0; 0, 2])
#= 5
normi([1i, 2; 1, -1i])
#= 3
normi(complex([1, -2; 3, 4]))
#= 7
normi([0, 5e200i; 0, 0])
#= 5e200

normi([1, -2; 3, 4] * m / s)
#= 7 m / s
normi(submatrix([9, 9, 9; 9, 1, -2; 9, 3, 4], 1, 2, 1, 2))
#= 7

normi([1, 2, 3; 4, 5, 6])
#! "must be square" 1
normi([1, 2])
#! "must be square" 1
normi(3)
#! "must be scalar matrix" 1
normi("text")
#! "must be scalar matrix" 1
normi([1 m, 2; 3, 4])
#! "must be scalar matrix" 1
normi([[1], 2; 3, 4])
#! "must be scalar matrix" 1

normi([1, inf; 1, 1])
#= inf
normi([1e308, 1e308; 1, 1])
#! "floating point exception" 0
normi([1, 1; 1, NaN])
#! "floating point exception" 0
