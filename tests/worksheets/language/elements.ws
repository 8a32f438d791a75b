# A[i, j] and v[i], counted from origin.
A := [1, 2, 3; 4, 5, 6]
A[0, 0]
#= 1
A[1, 2]
#= 6
[7, 8, 9][2]
#= 9
[7; 8; 9][1]
#= 8
[5][0]
#= 5
[1 m, 2 s][1]
#= 2 s
[1, "a", [2, 3]][1]
#= "a"
[1, "a", [2, 3]][2]
#= [2, 3]
[1 + 2i, 3][0]
#= 1 + 2i
complex([1, 2])[0]
#= 1
# A whole number is whole in SI; its unit is not looked at.
A[1 m, 200 cm]
#= 6

A[2, 0]
#! "index out of bounds" -1 "" column 2
A[0, 3]
#! "index out of bounds" -1
A[-1, 0]
#! "index out of bounds" -1
A[1e300, 0]
#! "index out of bounds" -1
A[4294967296, 0]
#! "index out of bounds" -1
[1, 2][2]
#! "index out of bounds" -1
A[0]
#! "must be vector" -1 "" column 2
[][0]
#! "must be vector" -1 "" column 3
[][0, 0]
#! "index out of bounds" -1
A[0.5, 0]
#! "must be integer" -1
A[0, "1"]
#! "must be integer" -1
A[1i, 0]
#! "must be integer" -1
A[inf, 0]
#! "must be integer" -1
A[NaN, 0]
#! "must be integer" -1
A[[0], 0]
#! "must be integer" -1
5[0]
#! "must be matrix" -1 "" column 2
sin[0]
#! "must be matrix" -1
A[]
#! syntax error column 3
A[0, 1, 2]
#! syntax error column 7
A[nobody, 0]
#! "undefined name: nobody" -1 "" column 3
