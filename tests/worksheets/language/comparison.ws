# == and != compare any two values exactly.
1 == 1
#= 1
1 == 2
#= 0
1 != 2
#= 1
0 == -0.0
#= 1
NaN == NaN
#= 0
NaN != NaN
#= 1
0.1 + 0.2 == 0.3
#= 0
1 m == 100 cm
#= 1
1 m == 1
#= 0
1 m == 1 s
#= 0
1 + 2i == 1 + 2i
#= 1
1 + 2i == 1
#= 0
"a" == "a"
#= 1
"a" == "b"
#= 0
"a" == 1
#= 0
1 == [1]
#= 0
[1, 2] == [1, 2]
#= 1
[1, 2] == [1; 2]
#= 0
[1, 2] == [1, 3]
#= 0
[1, NaN] == [1, NaN]
#= 0
[1 m, 2 s] == [1 m, 2 s]
#= 1
[1 m, 2 s] == [1 m, 2 m]
#= 0
[1, "a", [2, 3]] == [1, "a", [2, 3]]
#= 1
[1, "a", [2, 3]] == [1, "a", [2, 4]]
#= 0
[1, "a"] == [1, 2]
#= 0
[] == []
#= 1
# No imaginary array counts as zeros.
[1, 2] == complex([1, 2])
#= 1
[1, 2i] == [1, 2]
#= 0
sin == sin
#= 1
sin == 1
#= 0

# Ordering: real numbers of one unit, or two texts as sort has them.
1 < 2
#= 1
2 <= 2
#= 1
3 > 2
#= 1
2 >= 3
#= 0
1 m < 1 ft
#= 0
1 < NaN
#= 0
1 >= NaN
#= 0
-0.0 < 0
#= 0
-inf < inf
#= 1
1 + 0i < 2
#= 1
"a" < "b"
#= 1
"a" < "B"
#= 1
"a" < "A"
#= 1
"z" < "é"
#= 0
"a" <= "a"
#= 1

1 m < 1 s
#! "unit mismatch" -1 "" column 5
1 < 1 m
#! "unit mismatch" -1
1i < 2
#! "must be real" 1 "" column 4
2 < 1i
#! "must be real" 2
"a" < 1
#! "must be real" 1
1 < "a"
#! "must be real" 2
[1] < 2
#! "must be real" 1
2 >= [1]
#! "must be real" 2
sin < 1
#! "must be real" 1
