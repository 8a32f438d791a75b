# skew(x, ...): the sample skewness of all numbers of the arguments.

skew(1, 2, 3)
#= 0
# SciPy: scipy.stats.skew(x, bias=False)
skew([1; 2; 10])
#~ 1e-15 1.6523167403329908
skew([2, 8, 0, 4; 1, 9, 9, 0])
#~ 1e-14 0.3305821804079746
skew(1, 2, 3, 4, 5, 6, 7, 8, 9, 100)
#~ 1e-15 3.1188957452390866
skew(-1, -2, -10)
#~ 1e-15 -1.6523167403329908

# However the numbers are split, and whatever block they stand in.
x := [2; 8; 0; 4; 1; 9; 9; 0; 7; 7; 3]
skew(x) == skew(x')
#= 1
skew(x) == skew(2, [8, 4; 0, 1], [9; 9], 0, [], [7, 7, 3])
#= 1
skew(x) == skew(2, 8, 0, 4, 1, 9, 9, 0, 7, 7, 3)
#= 1
skew(x) == skew(submatrix(augment(stack(0, x, 0), stack(5, x, 5)), 1, 11, 1, 1))
#= 1
skew(submatrix([9, 9, 9, 9; 9, 2, 1, 9; 9, 8, 9, 9; 9, 0, 9, 9; 9, 4, 0, 9; 9, 9, 9, 9], 1, 4, 1, 2))
#~ 1e-14 0.3305821804079746

# The unit must be one, and cancels.
skew([1 m; 2 m], 10 m)
#~ 1e-15 1.6523167403329908
skew([1 ft; 2 ft; 10 ft])
#~ 1e-14 1.6523167403329908
skew([1 m; 2 m], 10 s)
#! "unit mismatch" 2
skew([1; 2], 3, 10 s)
#! "unit mismatch" 3
skew(1 m, 2 m, 3 m, [])
#! "unit mismatch" 4
skew([1 m; 2 s; 3 m])
#! "must be uniform scalar matrix" 1
skew(1, 2, [3, "a"])
#! "must be uniform scalar matrix" 3
skew([[1, 2], [3, 4], [5, 6]])
#! "must be uniform scalar matrix" 1
skew(["a", "b", "c"])
#! "must be uniform scalar matrix" 1
skew(1, "2", 3)
#! "must be a scalar or a matrix" 2
skew(sin)
#! "must be a scalar or a matrix" 1
# The first argument at fault is named, whatever the fault.
skew(1, 2 m, "3")
#! "unit mismatch" 2
skew(1, "2", 3 m)
#! "must be a scalar or a matrix" 2

skew()
#! "not enough sample points" -1
skew([])
#! "not enough sample points" -1
skew(1, 2)
#! "not enough sample points" -1
skew([1; 2] * m)
#! "not enough sample points" -1

# Complex numbers: exact rational arithmetic but for the last root and quotient.
skew(1 + 1i, 2, 3i, 4 - 2i)
#~ 1e-15 -0.1152591754202391 - 0.48664985177434283i
skew([1 + 1i; 2], [3i, 4 - 2i])
#~ 1e-15 -0.1152591754202391 - 0.48664985177434283i
# (i x)^3 = -i x^3
skew([1i; 2i; 10i])
#~ 1e-15 -1.6523167403329908i
skew(complex([1; 2; 10])) == skew([1; 2; 10])
#= 1
skew(complex([1; 2]), 10) == skew([1; 2; 10])
#= 1

# Equal numbers: 0 / 0 in both parts, which is no error.
skew(5, 5, 5)
#= complex(NaN, NaN)
skew([5; 5; 5; 5] * kg)
#= complex(NaN, NaN)
# A later call does not see that.
inv([2, 0; 0, 4])
#= [0.5, 0; 0, 0.25]

# A mean of 1e102 or more scales the deviations before they are cubed.
skew([1; 2; 10] * 1e103)
#~ 1e-14 1.6523167403329908
skew([-1; -2; -10] * 1e150)
#~ 1e-14 -1.6523167403329908
skew([1i; 2i; 10i] * 1e103)
#~ 1e-14 -1.6523167403329908i
# So small a mean cubes them first: (1e120)^3 is too large.
Re(skew([-1e120; 1e120; 3]))
#= NaN
skew(1, 2, inf)
#= complex(NaN, NaN)
skew(1, 2, NaN)
#= complex(NaN, NaN)
