# expression -> unit: the result is the same, every number in it must agree.
1 m -> ft
#= 1 m
2 kN * 3 m -> kN*m
#= 6000 N * m
3 m/s -> ft/s
#= 3 m/s
[1, 2] * m -> km
#= [1, 2] * m
[[1 m], "x", 2 ft] -> in
#= [[1 m], "x", 2 ft]
9.81 m/s^2 -> ft/s^2
#= 9.81 m/s^2
5 -> 1
#= 5
90 deg -> deg
#= 90 deg
sqrt(2 m) -> m^(1/2)
#= sqrt(2 m)
1i * m -> mm
#= 1i * m
# A definition hides a unit here too.
span := 12 m
24 m -> span
#= 24 m

1 m -> s
#! "unit mismatch" -1 "" column 5
[1 m, 2 s] -> m
#! "unit mismatch" -1 "" column 12
[1 m, 0] -> m
#! "unit mismatch" -1
[[1 s], 2 m] -> m
#! "unit mismatch" -1
"text" -> m
#! "unit mismatch" -1 "" column 8
["a", "b"] -> m
#! "unit mismatch" -1
[] -> m
#! "unit mismatch" -1
sin -> m
#! "unit mismatch" -1
5 -> m
#! "unit mismatch" -1
1 m -> nobody
#! "undefined name: nobody" -1 "" column 8
1 m -> sin
#! "unit mismatch" -1
1 m -> "m"
#! "unit mismatch" -1
nobody -> m
#! "undefined name: nobody" -1 "" column 1
1 m ->
#! syntax error column 7
1 m -> m -> m
#! syntax error column 10
x := 1 m -> ft
#! syntax error column 10
1 m -> m + m
#! syntax error column 10
