# + and -: units agree; a number meets every element, matrices of one shape go element by element.
1 + 2
#= 3
1 m + 20 cm
#= 1.2 m
[1, 2] + 10
#= [11, 12]
10 - [1, 2]
#= [9, 8]
[1, 2; 3, 4] - [4, 3; 2, 1]
#= [-3, -1; 1, 3]
[1 m, 2 s] + [3 m, 4 s]
#= [4 m, 6 s]
[1, 2] * m + 1 m
#= [2, 3] * m
[] + 1
#= []
[] + []
#= []
[] - 2 m
#= []
[[1, 2], 3] + 1
#= [[2, 3], 4]
[[1, 2], 3] + [1, [5; 6]]
#= [[2, 3], [8; 9]]
1e308 + 1e308
#= inf
inf - inf
#= NaN

# Complex numbers: a zero imaginary part takes no part.
1 + 2i + 3i
#= 1 + 5i
(1 + 2i) - (1 + 2i)
#= 0
5 - 2i
#{"kind":"number","re":5.0,"im":-2.0,"unit":""}
complex(1, inf) + 1
#{"kind":"number","re":2.0,"im":"inf","unit":""}
[1, 2i] - [1, 2i]
#{"kind":"matrix","rows":1,"cols":2,"complex":false,"unit":"","data":[[0.0,0.0]]}

# The sign: a real number keeps its imaginary part +0.
-3
#{"kind":"number","re":-3.0,"im":0.0,"unit":""}
-0.0
#{"kind":"number","re":-0.0,"im":0.0,"unit":""}
-(1 + 2i)
#= -1 - 2i
-[1, 2i]
#= [-1, -2i]
-[1 m, 2 s]
#= [-1 m, -2 s]
-[[1, 2], 3]
#= [[-1, -2], -3]
-complex(1, 0)
#{"kind":"number","re":-1.0,"im":0.0,"unit":""}

1 + 1 m
#! "unit mismatch" -1 "" column 3
[1, 2] + 1 m
#! "unit mismatch" -1 "" column 8
[1 m, 2 s] + [1 m, 2 m]
#! "unit mismatch" -1
0 + 1 m
#! "unit mismatch" -1
[1, 2] + [1, 2, 3]
#! "array size mismatch" -1 "" column 8
[1, 2] - [1; 2]
#! "array size mismatch" -1
[1, 2] - []
#! "array size mismatch" -1
"a" + 1
#! "must be a scalar or a matrix" 1 "" column 5
1 + "a"
#! "must be a scalar or a matrix" 2 "" column 3
"a" + "b"
#! "must be a scalar or a matrix" 1
[1, "a"] + 1
#! "must be a scalar or a matrix" 1
1 - [1, "a"]
#! "must be a scalar or a matrix" 2
sin - 1
#! "must be a scalar or a matrix" 1
-"a"
#! "must be a scalar or a matrix" 1 "" column 1
-[1, ["a"]]
#! "must be a scalar or a matrix" 1
2 * -sin
#! "must be a scalar or a matrix" 1 "" column 5
