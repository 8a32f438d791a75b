# lcm(a, ...): the least common multiple of all numbers of the arguments, signs aside.

lcm(4, 6)
#= 12
lcm(6, 4)
#= 12
lcm([4, 6; 10, 15])
#= 60
lcm(-4, [6; -10])
#= 60
lcm(1, 2, 3, 4, 5, 6, 7, 8, 9, 10)
#= 2520
lcm(-7)
#= 7
lcm([-7])
#= 7
lcm(0, 5)
#= 0
lcm(5, 0)
#= 0
lcm([])
#= 0
lcm([], 6)
#= 0
B := [2, 7, 4; 3, 7, 6; 5, 7, 10]
lcm(submatrix(B, 0, 1, 2, 2))
#= 12

# Of zeros alone it is 0 / 0, which is no error, and stays what it is.
lcm(0, 0)
#= NaN
lcm(0, 0, 5)
#= NaN
lcm([0; 0; 5; 7])
#= NaN
# A later call does not see that.
inv([2, 0; 0, 4])
#= [0.5, 0; 0, 0.25]

# Multiples, unlike arguments, name no argument when they leave the whole numbers that doubles hold.
lcm(2^53)
#= 2^53
lcm(2^53, 2)
#= 2^53
lcm(2^52, 3)
#! "significance lost" -1
lcm(2^53, 3)
#! "significance lost" -1
lcm([94906263; 94906265])
#= 9007198946437695
lcm(94906265, 94906267)
#! "significance lost" -1
lcm(2^53 + 2, 3)
#! "significance lost" 1
lcm(3, 2^53 + 2)
#! "significance lost" 2

lcm(4, 2.5)
#! "must be integer" 2
lcm("4")
#! "must be integer" 1
lcm(4, 1i)
#! "must be integer" 2
lcm(4, 6 s)
#! "must be dimless" 2
lcm([4; 6] * s)
#! "must be dimless" 1
lcm([4, "a"])
#! "must be real matrix" 1
