# Operators from tight to loose; binary ones group to the left, ^ to the right.
2 + 3 * 4
#= 14
2 * 3 ^ 2
#= 18
10 - 4 - 3
#= 3
24 / 4 / 2
#= 3
24 / 4 * 2
#= 12
2 ^ 3 ^ 2
#= 512
(2 ^ 3) ^ 2
#= 64
2 ^ -1
#= 0.5
2 ^ -2 ^ 2
#= 0.0625
2 ^ --1
#= 2
-2 ^ 2
#= -4
(-2) ^ 2
#= 4
2 * -3
#= -6
2 - -3
#= 5
2--3
#= 5
--3
#= 3
-3 m
#= -(3 m)
1 + 2 < 4
#= 1
1 < 2 == 1
#= 1
3 > 2 > 1
#= 0
1 + 2 == 3
#= 1
-[1, 2]'
#= [-1; -2]
2 ^ [1, 2][1]
#= 4
+3
#! syntax error column 1
2 * / 3
#! syntax error column 5
2 ^
#! syntax error column 4

# A number literal directly before a name.
5 kN
#= 5000 N
5kN
#= 5 * kN
5 m^2
#= 5 * (m^2)
10^3 N
#= (10^3) * N
6 m / 2 s
#= (6 * m) / (2 * s)
1/2 m
#= 1 / (2 * m)
2 m * 3 m
#= 6 m^2
-2 m^2
#= -(2 * m^2)
2^-1 m
#= 0.5 * m
4 m^-2
#= 4 / m^2
5 m^2 kg
#= 5 * m^2 * kg
2 pi
#= 2 * pi
2i m
#= 2i * m
v := [7, 8]
2 v[1]
#= 16
2 v'
#= [14; 16]
3 sqrt(4)
#= 6
2 m^2^2
#= 2 * m^4
# Nothing but a literal does so.
v m
#! syntax error column 3
(5) m
#! syntax error column 5
5 m s
#! syntax error column 5
2 (3)
#! syntax error column 3
2 [3]
#! "must be matrix" -1 "" column 3

# Calls, elements and transposes, applied from left to right in any order.
A := [1, 2; 3, 4]
A'[0, 1]
#= 3
A''
#= [1, 2; 3, 4]
(A')[1, 0] + A[1, 0]
#= 5
[A, 5][0][1, 1]
#= 4
[A, 5][0]'[1, 0]
#= 2
A[0, 1]^2
#= 4
k(x) := [x, 2 * x]
k(3)[1]
#= 6
k(3)'[1]
#= 6
pick(n) := if(n == 0, sin, cos)
pick(1)(0)
#= 1
(A)(1)
#! "not a function: A" -1 "" column 1
[1, 2](0)
#! "not a function: 1 by 2" -1 "" column 1
