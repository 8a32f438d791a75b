# Where errors are: the call, the operator, the name, the bracket; function only for worksheet functions.
1 + lu([1, 2, 3])
#! "must be square" 1 lu column 5
1 + (2 + sqrt("a"))
#! "must be a scalar or a matrix" 1 sqrt column 10
[1, sqrt("a")]
#! "must be a scalar or a matrix" 1 sqrt column 5
lu(sqrt("a"))
#! "must be a scalar or a matrix" 1 sqrt column 4
1 + 2 * "a"
#! "must be a scalar or a matrix" 2 "" column 7
"ä" + 1
#! "must be a scalar or a matrix" 1 "" column 5
[1,
 2] + "a"
#! "must be a scalar or a matrix" 2 "" column 9
5 nobody
#! "undefined name: nobody" -1 "" column 3
x := "a"
5 x
#! "must be a scalar or a matrix" 2 "" column 3
1 / 0
#! "divide by zero" 2 "" column 3
2 ^ "a"
#! "must be a scalar or a matrix" 2 "" column 3
[1, 2]^2
#! "must be square" 1 "" column 7
3 + [1, 2; 3, 4][5, 5]
#! "index out of bounds" -1 "" column 17
3'
#! "must be matrix" 1 "" column 2
lu()
#! "wrong number of arguments" -1 lu column 1
2 + lu([1], [2])
#! "wrong number of arguments" -1 lu column 5

# Inside the body of a user's function: the call in the statement; the worksheet function that raised it.
f(x) := 1 + sqrt(x)
2 * f("a")
#! "must be a scalar or a matrix" 1 sqrt column 5
g(x) := f(x) + 1
10 + g("a")
#! "must be a scalar or a matrix" 1 sqrt column 6
h(x) := x / 0
3 + h(1)
#! "divide by zero" 2 "" column 5
k(x) := lu()
k(1)
#! "wrong number of arguments" -1 lu column 1
w(x) := nobody + x
1 - w(1)
#! "undefined name: nobody" -1 "" column 5
# The arguments are the statement's own.
f(sqrt("a"))
#! "must be a scalar or a matrix" 1 sqrt column 3
f(nobody)
#! "undefined name: nobody" -1 "" column 3
p(x) := x[7]
p([1, 2])
#! "index out of bounds" -1 "" column 1
# Called back by a worksheet function: the call of that one.
1 * matrix(2, 2, f2)
#! "undefined name: f2" -1 "" column 18
f2(i, j) := sqrt("a")
0 + matrix(2, 2, f2)
#! "must be a scalar or a matrix" 1 sqrt column 5
f3(i, j) := sin
matrix(2, 2, f3)
#! "must be string scalar or array" 3 matrix column 1
matrix(2, 2, sin)
#! "must be a function of 2 variables" 3 matrix column 1
matrix(2, 2, mod)
#= [NaN, 0; NaN, 0]
f4(i, j) := mod(i, j * m)
matrix(2, 2, f4)
#! "unit mismatch" 2 mod column 1
s := sqrt
s("a")
#! "must be a scalar or a matrix" 1 sqrt column 1
s(1, 2)
#! "wrong number of arguments" -1 sqrt column 1
