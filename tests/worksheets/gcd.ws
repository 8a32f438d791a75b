# gcd(a, ...): the greatest common divisor of all numbers of the arguments, signs aside.

gcd(-12, 18)
#= 6
gcd(84, 36, 60)
#= 12
gcd([84, 36; 60, 30])
#= 6
gcd(84, [36; -60], [[30]][0])
#= 6
gcd(17, 5)
#= 1
gcd(1000000007 * 999983, 999983 * 12)
#= 999983
# Neighbouring Fibonacci numbers take the most steps.
gcd(8944394323791464, 5527939700884757)
#= 1

# One number is its magnitude; zeros divide nothing.
gcd(-7)
#= 7
gcd([-7])
#= 7
gcd(-0.0)
#= 0
gcd(0, 0)
#= 0
gcd(0, -5)
#= 5
gcd(-5, 0)
#= 5
gcd([0; 0; 6], 4)
#= 2
gcd([])
#= 0
gcd([], 6)
#= 6

# Blocks of matrices.
B := [6, 10, 15; 12, 14, 21; 18, 22, 35]
gcd(submatrix(B, 0, 2, 0, 0))
#= 6
gcd(submatrix(B, 1, 2, 1, 1), 6)
#= 2

# Up to 2^53 doubles hold every whole number; more is refused, however large.
gcd(2^53)
#= 2^53
gcd(2^53, 2^20)
#= 2^20
gcd([9007199254740992; 6])
#= 2
gcd(2^53 + 2)
#! "significance lost" 1
gcd(1, [3; -1e300])
#! "significance lost" 2
gcd(inf)
#! "significance lost" 1
gcd(6, 4, -inf)
#! "significance lost" 3

gcd(2.5)
#! "must be integer" 1
gcd(4, 6, 2.5)
#! "must be integer" 3
gcd(4, [6; 2.5])
#! "must be integer" 2
gcd(1e-300)
#! "must be integer" 1
gcd(NaN)
#! "must be integer" 1
gcd([4; NaN])
#! "must be integer" 1
gcd(4, 2i)
#! "must be integer" 2
gcd("12")
#! "must be integer" 1
gcd(12, "12", 2.5)
#! "must be integer" 2
gcd(sin)
#! "must be integer" 1
# The size is looked at first, then the fraction, the unit last.
gcd(2.5 m)
#! "must be integer" 1
gcd(6 m)
#! "must be dimless" 1
gcd(4, [6; 8] * m)
#! "must be dimless" 2
gcd(4, [6.5; 8] * m)
#! "must be dimless" 2
gcd([1i; 2])
#! "must be real matrix" 1
gcd(4, complex([6; 8]))
#! "must be real matrix" 2
gcd([4, "a"])
#! "must be real matrix" 1
gcd([[4, 6], 8])
#! "must be real matrix" 1
gcd([4 m; 6])
#! "must be real matrix" 1
gcd()
#! "wrong number of arguments" -1
